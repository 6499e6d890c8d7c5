# Bash completion for vantrel-calc: options, rate codes, display modes, notations, gauges and
# sample rates.
_vantrel_calc() {
    local current=${COMP_WORDS[COMP_CWORD]}
    local previous=${COMP_WORDS[COMP_CWORD-1]}
    local word
    # Once "--" or an expression has been given, everything after it is an expression.
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [ "$word" = "--" ] && return 0
    done
    case $previous in
        -r | --rate)
            COMPREPLY=($(compgen -W "24 25 30 23d 29d 23n 29n 48 50 60 59d 47n 59n 72 96 95n 100 119n 119d 120" -- "$current"))
            return 0 ;;
        -d | --display)
            COMPREPLY=($(compgen -W "time number film disk feet samples realtime rational ticks" -- "$current"))
            return 0 ;;
        -n | --notation)
            COMPREPLY=($(compgen -W "classic smpte" -- "$current"))
            return 0 ;;
        --gauge)
            COMPREPLY=($(compgen -W "35mm-4perf 35mm-3perf 35mm-2perf 16mm 65mm-5perf" -- "$current"))
            return 0 ;;
        --sample-rate)
            COMPREPLY=($(compgen -W "44100 48000 96000" -- "$current"))
            return 0 ;;
        --edl | --timeline)
            COMPREPLY=($(compgen -f -- "$current"))
            return 0 ;;
        --disk | --film)
            return 0 ;;
    esac
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "-r --rate -d --display -n --notation -l --lazy -b --beautify
            -j --json --gauge --sample-rate --exact-rates --wrap --timeline --edl --disk --film -h --help
            --version --" \
            -- "$current"))
    fi
}
complete -F _vantrel_calc vantrel-calc
