# Completion of varnhold-doctor for fish.
complete -c varnhold-doctor -f
complete -c varnhold-doctor -a files -d 'The settings files'
complete -c varnhold-doctor -a fleet -d 'Each bot'
complete -c varnhold-doctor -a chains -d 'Chains and groups'
complete -c varnhold-doctor -a keepalive -d 'Which chains are kept warm'
complete -c varnhold-doctor -a system -d 'What the fleet stands on'
complete -c varnhold-doctor -a watch -d 'The fleet, kept up to date'
complete -c varnhold-doctor -l json -d 'The report for programs'
complete -c varnhold-doctor -l data -r -a '(__fish_complete_directories)' -d 'Look at the settings files in a folder'
complete -c varnhold-doctor -l without -x -a 'claude gemini openai mistral qwen deepseek openrouter cerebras ollama local' -d 'Who answers while a provider fails'
complete -c varnhold-doctor -l no-colour -d 'No colours'
complete -c varnhold-doctor -l help -d 'Show how to use this'
complete -c varnhold-doctor -l version -d 'Show the version'
