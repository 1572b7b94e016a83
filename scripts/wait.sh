# shellcheck shell=bash
# Sourced by scripts that wait for other programs.

# wait_for SECONDS COMMAND...: waits until the command succeeds; false where it does not in time.
wait_for() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < end)) || return 1
        sleep 0.1
    done
}

# start_display SIZE LOG: an invisible display, whose server chooses a free number. Sets DISPLAY and
# display_pid; false where it does not come up.
start_display() {
    local number
    number=$(mktemp)
    Xvfb -displayfd 3 -screen 0 "$1" -nolisten tcp 3>"$number" >"$2" 2>&1 &
    # shellcheck disable=SC2034 # for who starts it
    display_pid=$!
    wait_for 60 test -s "$number" || return 1
    DISPLAY=:$(<"$number")
    export DISPLAY
    rm "$number"
}
