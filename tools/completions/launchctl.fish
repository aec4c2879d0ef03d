# Completion of launchctl for fish.
function __varnhold_launchctl_labels
    launchctl list 2>/dev/null | tail -n +2 | cut -f 3-
end
function __varnhold_launchctl_targets
    __varnhold_launchctl_labels | string replace -r '^' "gui/"(id -u)/
end
set -l verbs list bootstrap bootout kickstart stop
complete -c launchctl -f
complete -c launchctl -n "not __fish_seen_subcommand_from $verbs" -l help -d 'Show how to use this'
complete -c launchctl -n "not __fish_seen_subcommand_from $verbs" -l version -d 'Show the version'
complete -c launchctl -n "not __fish_seen_subcommand_from $verbs" -a list -d 'Show loaded jobs'
complete -c launchctl -n "not __fish_seen_subcommand_from $verbs" -a bootstrap -d 'Load property lists'
complete -c launchctl -n "not __fish_seen_subcommand_from $verbs" -a bootout -d 'End a job and forget it'
complete -c launchctl -n "not __fish_seen_subcommand_from $verbs" -a kickstart -d 'Start a loaded job'
complete -c launchctl -n "not __fish_seen_subcommand_from $verbs" -a stop -d 'Ask a job to end'
complete -c launchctl -n "__fish_seen_subcommand_from list stop" -a '(__varnhold_launchctl_labels)'
complete -c launchctl -n "__fish_seen_subcommand_from bootout kickstart" -a '(__varnhold_launchctl_targets)'
complete -c launchctl -n "__fish_seen_subcommand_from kickstart" -s k -d 'Kill a running instance first'
complete -c launchctl -n "__fish_seen_subcommand_from bootstrap" -F -a '(echo gui/(id -u))'
