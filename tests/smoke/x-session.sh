# Sourced by the smoke tests with their arguments: runs the test again inside a fresh X server,
# then gives the calculator preferences and an instance socket of its own in the scratch folder
# $work, so that a copy the user runs meanwhile is neither read nor disturbed.
if [ -z "${VANTREL_X_SESSION:-}" ]; then
    export VANTREL_X_SESSION=1
    exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$@"
fi

work=$(mktemp -d)
export XDG_CONFIG_HOME=$work/config
export XDG_RUNTIME_DIR=$work/run
mkdir -m 700 "$XDG_RUNTIME_DIR"
