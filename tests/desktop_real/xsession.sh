# Sourced by the scripts that drive the real desktop program under a virtual X server with key presses
# only (no mouse, no window manager). Needs $pid (the program) and $log (where failures are written);
# QUILLARY_SHOTS, when set, is a folder for a picture of each step.

# The first visible window whose title matches, waiting up to 30 s (a loaded machine may take time).
window() {
    local id
    for _ in $(seq 300); do
        id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n 1 || true)
        if [ -n "$id" ]; then
            echo "$id"
            return 0
        fi
        kill -0 "$pid" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}

# Waits up to 30 s until no visible window has the title.
gone() {
    for _ in $(seq 300); do
        xdotool search --onlyvisible --name "$1" >/dev/null 2>&1 || return 0
        kill -0 "$pid" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}

# A visible window of the program other than the ones given, waiting up to 30 s.
other() {
    local id known
    for _ in $(seq 300); do
        for id in $(xdotool search --onlyvisible --pid "$pid" --name '.' 2>/dev/null); do
            known=0
            for k in "$@"; do [ "$id" = "$k" ] && known=1; done
            [ "$known" = 0 ] && { echo "$id"; return 0; }
        done
        sleep 0.1
    done
    return 1
}

# The pause after each key press and the delay between typed characters, in case a script needs them
# shorter (XSESSION_PAUSE seconds, XSESSION_TYPE_DELAY milliseconds, set before sourcing).
press() {
    xdotool key --clearmodifiers "$@"
    sleep "${XSESSION_PAUSE:-0.4}"
}

typed() {
    xdotool type --delay "${XSESSION_TYPE_DELAY:-40}" "$1"
    sleep 0.3
}

focus() {
    xdotool windowfocus --sync "$1" 2>/dev/null || true
    sleep 0.2
}

fail_step() {
    echo "$*" >>"$log"
    kill "$pid" 2>/dev/null || true
    exit 1
}

# The window lies wholly on the screen (so are its buttons); its geometry goes to the log.
on_screen() { # NAME ID
    local x y w h sw sh
    eval "$(xdotool getwindowgeometry --shell "$2" | grep -E '^(X|Y|WIDTH|HEIGHT)=')"
    x=$X y=$Y w=$WIDTH h=$HEIGHT
    read -r sw sh < <(xdotool getdisplaygeometry)
    echo "window $1: ${w}x${h} at $x,$y on ${sw}x${sh}" >>"$log"
    if [ "$x" -lt 0 ] || [ "$y" -lt 0 ] || [ $((x + w)) -gt "$sw" ] || [ $((y + h)) -gt "$sh" ]; then
        fail_step "the window $1 (${w}x${h} at $x,$y) does not fit on the ${sw}x${sh} screen"
    fi
}

# A picture of the window, or of the whole screen without an id, when pictures are wanted.
picture() { # NAME [ID]
    [ -n "${QUILLARY_SHOTS:-}" ] && command -v xwd >/dev/null || return 0
    sleep 0.3
    if [ -n "${2:-}" ]; then
        xwd -id "$2" -silent >"$QUILLARY_SHOTS/$1.xwd" || true
    else
        xwd -root -silent >"$QUILLARY_SHOTS/$1.xwd" || true
    fi
}

# The check that the window fits on the screen, and its picture.
shot() { # NAME ID
    on_screen "$1" "$2"
    picture "$1" "$2"
}

# The program ends by itself within 10 s (after its Close).
ends() {
    for _ in $(seq 100); do
        kill -0 "$pid" 2>/dev/null || return 0
        sleep 0.1
    done
    fail_step "the program did not end after Close"
}
