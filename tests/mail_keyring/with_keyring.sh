#!/usr/bin/env bash
# Runs a program on a private session bus with an unlocked gnome-keyring as its Secret Service, in a
# home of its own, so that the user's keyring is never touched. 77 (skipped) without the tools.
#   with_keyring.sh PROGRAM [ARGUMENTS...]
set -euo pipefail
for tool in dbus-run-session gnome-keyring-daemon; do
    command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done
home=$(mktemp -d)
# The daemon may still be leaving when the bus ends.
trap 'rm -rf "$home" 2>/dev/null || { sleep 1; rm -rf "$home" 2>/dev/null; } || true' EXIT
mkdir -p "$home/share" "$home/config" "$home/cache" "$home/run"
chmod 700 "$home/run"
export HOME=$home XDG_DATA_HOME=$home/share XDG_CONFIG_HOME=$home/config XDG_CACHE_HOME=$home/cache
export XDG_RUNTIME_DIR=$home/run
# No display: nothing may ask the user for a keyring password.
unset DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS QUILLARY_SMTP_PASSWORD
dbus-run-session -- bash -c '
    printf %s quillary-test | gnome-keyring-daemon --foreground --unlock --components=secrets >/dev/null 2>&1 &
    daemon=$!
    trap "kill $daemon 2>/dev/null; wait $daemon 2>/dev/null" EXIT
    for _ in $(seq 100); do
        dbus-send --session --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus \
            org.freedesktop.DBus.NameHasOwner string:org.freedesktop.secrets 2>/dev/null | grep -q "boolean true" && break
        kill -0 $daemon 2>/dev/null || { echo "skipped: gnome-keyring-daemon did not start"; exit 77; }
        sleep 0.1
    done
    "$@"' keyring "$@"
