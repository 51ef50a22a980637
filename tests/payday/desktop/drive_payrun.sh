#!/usr/bin/env bash
# The demo week paid from the main screen's Pay Run button with key presses only, on an 800x600
# screen without a window manager: the run's pays added, one confirmation, the payslips written as PDF
# files, no window per pay; then F1 shows the program's own help (no browser here). With QUILLARY_SHOTS
# set to a folder, each window is kept there as a picture.
#   drive_payrun.sh QUILLARY QUILLARY_CLI
set -euo pipefail

if [ "${1:-}" = "--inside" ]; then
    quillary=$2
    log=$3
    "$quillary" Quillary >>"$log" 2>&1 &
    pid=$!
    window() { # the first visible window whose title matches, waiting up to 30 s
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
    other() { # a visible window that is neither the main window nor the pay run
        for id in $(xdotool search --onlyvisible --name '.' 2>/dev/null); do
            [ "$id" != "$main" ] && [ "$id" != "$run" ] && { echo "$id"; return 0; }
        done
        return 0
    }
    press() {
        xdotool key --clearmodifiers "$@"
        sleep 0.4
    }
    shot() {
        [ -n "${QUILLARY_SHOTS:-}" ] && command -v xwd >/dev/null || return 0
        sleep 0.3
        xwd -id "$2" -silent >"$QUILLARY_SHOTS/$1.xwd" || true
    }
    prompt=$(window '^Pay Date$') || { echo "no first-pay prompt" >>"$log"; exit 1; }
    xdotool windowfocus --sync "$prompt"
    press Return
    main=$(window '^Quillary$') || { echo "no main window" >>"$log"; exit 1; }
    xdotool windowfocus --sync "$main"
    sleep 0.5
    shot main-800x600 "$main"
    press alt+r # Pay Run
    run=$(window '^Pay Run$') || { echo "no pay run window" >>"$log"; exit 1; }
    xdotool windowfocus --sync "$run"
    press alt+a # add the pays of the run
    sleep 2
    xdotool windowfocus --sync "$run"
    shot pay-run "$run"
    press alt+m # commit: one confirmation
    sleep 1
    confirm=$(other)
    [ -n "$confirm" ] || { echo "no confirmation" >>"$log"; exit 1; }
    shot confirmation "$confirm"
    xdotool windowfocus --sync "$confirm"
    press Return # Yes
    sleep 4
    done=$(other)
    [ -n "$done" ] || { echo "no account of the run" >>"$log"; exit 1; }
    shot committed "$done"
    xdotool windowfocus --sync "$done"
    press Return
    xdotool windowfocus --sync "$run"
    press Escape
    xdotool windowfocus --sync "$main"
    press F1
    help=$(window '^Quillary Help$') || { echo "F1 showed no help" >>"$log"; exit 1; }
    shot help "$help"
    xdotool windowfocus --sync "$help"
    press Escape
    xdotool windowfocus --sync "$main"
    press alt+l
    for _ in $(seq 100); do
        kill -0 "$pid" 2>/dev/null || exit 0
        sleep 0.1
    done
    echo "the program did not end after Close" >>"$log"
    kill "$pid"
    exit 1
fi

quillary=$1
cli=$2
for tool in xvfb-run xdotool sqlite3; do
    command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export FERNHOLD_DOCUMENTS=$work
export QT_QPA_PLATFORM=xcb
export QUILLARY_HELP_VIEWER=1 # as on a desktop without a browser
unset DBUS_STARTER_BUS_TYPE BROWSER
"$cli" init --demo >/dev/null
printf '\n[PAYRUN]\nPayslips=1\nPayslipFolder=%s\n' "$work/slips" >>"$work/Fernhold/Common/Fernhold.ini"
log=$work/session.log
: >"$log"
if ! xvfb-run -a -s "-screen 0 800x600x24" bash "$0" --inside "$quillary" "$log"; then
    echo "the session failed:"
    cat "$log"
    exit 1
fi
fail() {
    echo "FAILED: $*"
    cat "$log"
    exit 1
}
wage=$work/data/Wage32.db
committed=$(sqlite3 "$wage" "SELECT COUNT(*) FROM Wages WHERE length(Reference) > 0")
[ "$committed" = 5 ] || fail "expected the 5 pays of the run committed, found $committed"
slips=$(find "$work/slips" -name 'Payslip *.pdf' | wc -l)
[ "$slips" = 5 ] || fail "expected 5 payslip PDF files, found $slips"
if command -v pdftotext >/dev/null; then
    for f in "$work/slips"/*.pdf; do
        pdftotext "$f" - | grep -q "Payslip For" || fail "$f is not a payslip"
    done
fi
if [ -n "${QUILLARY_SHOTS:-}" ]; then
    for f in "$QUILLARY_SHOTS"/*.xwd; do
        [ -e "$f" ] && python3 "$(dirname "$0")/../../ledger/desktop/xwd2png.py" "$f" "${f%.xwd}.png" && rm -f "$f"
    done
fi
echo "ok: the demo week paid from the Pay Run button with one confirmation, 5 payslips as PDF files, help without a browser"
