# A virtual display with a window manager. To be sourced.

# start_display 1280x768: exports DISPLAY. stop_display ends what runs on it.
start_display() {
    local ready
    ready="$(mktemp)"
    # The server picks a free number and tells it.
    Xvfb -displayfd 3 -screen 0 "$1x24" -nolisten tcp 3>"$ready" >/dev/null 2>&1 &
    display_server="$!"
    for _ in $(seq 1 100); do
        [ -s "$ready" ] && break
        sleep 0.1
    done
    DISPLAY=":$(tr -d '[:space:]' <"$ready")"
    rm -f "$ready"
    export DISPLAY
    unset WAYLAND_DISPLAY
    openbox >/dev/null 2>&1 &
    display_manager="$!"
    sleep 0.5
}

stop_display() {
    # shellcheck disable=SC2046
    kill $(jobs -p) 2>/dev/null || true
    kill "${display_manager:-}" "${display_server:-}" 2>/dev/null || true
    wait 2>/dev/null || true
}

# wait_for_window <process>: prints the number of its main window.
wait_for_window() {
    local found
    for _ in $(seq 1 100); do
        found="$(xdotool search --all --onlyvisible --pid "$1" --name 'v1\.1\.2' 2>/dev/null | head -n 1)" || true
        if [ -n "$found" ]; then
            echo "$found"
            return 0
        fi
        kill -0 "$1" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}
