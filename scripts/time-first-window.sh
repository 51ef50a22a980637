#!/usr/bin/env bash
# Times a stranger's first hour: `git clone`, `make run` until the main window is on the screen, then
# `make test`. No compiler cache, so the figures are those of a fresh machine with the packages installed.
# Usage: scripts/time-first-window.sh REPOSITORY [WORK_FOLDER]
set -euo pipefail
repo=${1:?usage: time-first-window.sh REPOSITORY [WORK_FOLDER]}
work=${2:-$(mktemp -d)}
export CCACHE_DISABLE=1
now() { date +%s.%N; }
since() { awk -v a="$1" -v b="$(now)" 'BEGIN { printf "%.0f", b - a }'; }

start=$(now)
git clone -q "$repo" "$work/quillary"
cd "$work/quillary"
echo "clone: $(since "$start") s"

# `make run` under a virtual screen; the first window of the program ends the clock.
xvfb-run -a -s '-screen 0 1280x800x24' bash -c '
    make run >"$0/make-run.log" 2>&1 &
    make=$!
    until xdotool search --onlyvisible --name "." >/dev/null 2>&1; do
        kill -0 $make 2>/dev/null || { echo "make run ended without a window" >&2; exit 1; }
        sleep 1
    done
    pkill -x quillary || true
    wait $make || true' "$work"
echo "clone to first window: $(since "$start") s"

tests=$(now)
make test >"$work/make-test.log" 2>&1 || { tail -30 "$work/make-test.log"; exit 1; }
echo "make test after make run: $(since "$tests") s"
grep -E 'tests passed|Total Test time' "$work/make-test.log" || true
echo "clone to tests passed: $(since "$start") s"
