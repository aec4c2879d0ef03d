# Completion of varnhold-doctor for bash.
_varnhold_doctor() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local providers="claude gemini openai mistral qwen deepseek openrouter cerebras ollama local"
    COMPREPLY=()
    case $previous in
        --data)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$word")
            return
            ;;
        --without)
            mapfile -t COMPREPLY < <(compgen -W "$providers" -- "$word")
            return
            ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "files fleet chains keepalive system watch --json --data \
        --without --no-colour --help --version" -- "$word")
}
complete -F _varnhold_doctor varnhold-doctor
