# Completion of launchctl for fish.
function __varnhold_launchctl_labels
    set -l words (commandline -opc)
    $words[1] list 2>/dev/null | tail -n +2 | cut -f 3-
end
function __varnhold_launchctl_targets
    __varnhold_launchctl_labels | string replace -r '^' "gui/"(id -u)/
end
set -l verbs list bootstrap bootout kickstart stop
for command in launchctl varnhold-launchctl
    complete -c $command -f
    complete -c $command -n "not __fish_seen_subcommand_from $verbs" -l help -d 'Show how to use this'
    complete -c $command -n "not __fish_seen_subcommand_from $verbs" -l version -d 'Show the version'
    complete -c $command -n "not __fish_seen_subcommand_from $verbs" -a list -d 'Show loaded jobs'
    complete -c $command -n "not __fish_seen_subcommand_from $verbs" -a bootstrap -d 'Load property lists'
    complete -c $command -n "not __fish_seen_subcommand_from $verbs" -a bootout -d 'End a job and forget it'
    complete -c $command -n "not __fish_seen_subcommand_from $verbs" -a kickstart -d 'Start a loaded job'
    complete -c $command -n "not __fish_seen_subcommand_from $verbs" -a stop -d 'Ask a job to end'
    complete -c $command -n "__fish_seen_subcommand_from list stop" -a '(__varnhold_launchctl_labels)'
    complete -c $command -n "__fish_seen_subcommand_from bootout kickstart" -a '(__varnhold_launchctl_targets)'
    complete -c $command -n "__fish_seen_subcommand_from kickstart" -s k -d 'Kill a running instance first'
    complete -c $command -n "__fish_seen_subcommand_from bootstrap" -F -a '(echo gui/(id -u))'
end
