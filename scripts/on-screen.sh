# For scripts that use the real program on a screen of its own, with the demo songs of the release
# build as its library. To be sourced from the project's folder: sets home (where the program's files are),
# starts the screen and a window manager, and gives keys() and window().
# shellcheck shell=bash

home=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$home"' EXIT
mkdir -p "$home/sonnel"
cp -r build/release/bin/Karaoke "$home"
cat >"$home/sonnel/settings.conf" <<END
[Opzioni]
OpenDir=$home/Karaoke/
[Font]
Nome=Liberation Sans
END
export HOME=$home XDG_CONFIG_HOME=$home XDG_DATA_HOME=$home XDG_RUNTIME_DIR=$home SONNEL_AUDIO=none
unset WAYLAND_DISPLAY

Xvfb -displayfd 3 -screen 0 1000x640x24 -nolisten tcp 3>"$home/display" >/dev/null 2>&1 &
until [ -s "$home/display" ]; do sleep 0.05; done
DISPLAY=:$(cat "$home/display")
export DISPLAY
openbox >/dev/null 2>&1 &
until xdotool get_num_desktops >/dev/null 2>&1; do sleep 0.05; done

keys() { xdotool key --clearmodifiers "$@"; }

# window TITLE: waits until a window whose title begins so is there and takes the keys; $window is it.
# Windows that come and go while they are looked for are no error.
window() {
    for _ in $(seq "$((${patience:-30} * 10))"); do
        window=$(xdotool search --onlyvisible --name "^$1" 2>/dev/null | tail -1) || true
        [ -n "$window" ] && [ "$(xdotool getactivewindow 2>/dev/null)" = "$window" ] && return
        sleep 0.1
    done
    echo "The window \"$1\" does not come to the front." >&2
    exit 1
}
