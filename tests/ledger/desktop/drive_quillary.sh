#!/usr/bin/env bash
# Starts the real desktop program on the demo farm under a virtual X server, adds and edits a pay with
# synthetic key presses only, commits it to the cashbook, looks at the leave tab and the history,
# closes it, and checks both databases. With QUILLARY_SHOTS set to a folder and xwd installed, the
# screen is kept there at each stage (X window dumps turned into PNG).
#   drive_quillary.sh QUILLARY QUILLARY_CLI
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)

if [ "${1:-}" = "--inside" ]; then
    # Inside the X server: the program and the keys.
    quillary=$2
    log=$3
    "$quillary" Quillary >>"$log" 2>&1 &
    pid=$!
    # shellcheck source=../../desktop_real/xsession.sh
    source "$here/../../desktop_real/xsession.sh"
    # The first employee has no pay yet: the program asks for the first pay date; today's stands.
    prompt=$(window '^Pay Date$') || fail_step "no first-pay prompt"
    focus "$prompt"
    press Return
    gone '^Pay Date$' || fail_step "the first-pay prompt did not close"
    main=$(window '^Quillary$') || fail_step "no main window"
    focus "$main"
    sleep 0.5
    press alt+a  # Add Pay: the second pay
    press alt+1  # the payment lines; the grid takes the focus on its first line
    press Right  # to the units
    xdotool type --delay 120 40
    press Return
    press alt+6  # the payslip view: leaving the grid stores the lines
    press alt+c  # Commit: the dialog proposes a reference, selected, and the cashbook box is ticked
    dialog=$(window '^Commit Pay$') || fail_step "no commit dialog"
    focus "$dialog"
    xdotool type --delay 120 X1
    picture commit-dialog "$dialog"
    press Return # Commit, the default button
    gone '^Commit Pay$' || fail_step "the commit dialog did not close"
    focus "$main"
    sleep 0.5
    picture committed-pay
    press alt+v  # the leave tab
    picture leave-tab
    press alt+w
    press alt+q  # the history, beside the screen
    history=$(window '^History$') || fail_step "no history window"
    picture history
    focus "$history"
    press Escape
    gone '^History$' || fail_step "the history did not close"
    focus "$main"
    sleep 0.3
    press alt+l  # Close
    ends
    exit 0
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
unset DBUS_STARTER_BUS_TYPE
"$cli" init --demo >/dev/null
# The commit prints no payslip here: the print would open the report screen.
printf '\n[WAGE]\nPrintPaySlip=N\n' >>"$work/Fernhold/Common/Fernhold.ini"
wage=$work/data/Wage32.db
farm=$work/data/Farm32.db
log=$work/session.log
: >"$log"
if ! xvfb-run -a -s "-screen 0 1280x800x24" bash "$0" --inside "$quillary" "$log"; then
    echo "the session failed:"
    cat "$log"
    exit 1
fi

fail() {
    echo "FAILED: $*"
    cat "$log"
    exit 1
}
q() { sqlite3 "$wage" "$1"; }
pays=$(q "SELECT COUNT(*) FROM Wages WHERE EmployeeID = 1")
[ "$pays" = 2 ] || fail "expected 2 pays for the first employee, found $pays"
last=$(q "SELECT WageID FROM Wages WHERE EmployeeID = 1 ORDER BY Date DESC LIMIT 1")
units=$(q "SELECT DetailHours FROM PaymentDetails WHERE WageID = $last ORDER BY rowid LIMIT 1")
[ "$(printf '%.0f' "$units")" = 40 ] || fail "expected 40 units on the first line, found $units"
line=$(q "SELECT printf('%.2f', Payment - 40 * EquivPayRate) FROM PaymentDetails WHERE WageID = $last ORDER BY rowid LIMIT 1")
[ "$line" = 0.00 ] || fail "the line's amount is not 40 times its rate (difference $line)"
gross=$(q "SELECT printf('%.2f', w.Gross - (SELECT SUM(Payment) FROM PaymentDetails p WHERE p.WageID = w.WageID)) FROM Wages w WHERE WageID = $last")
[ "$gross" = 0.00 ] || fail "the pay's gross is not the sum of its lines (difference $gross)"
reference=$(q "SELECT Reference || '|' || (PaymentDate IS NOT NULL) FROM Wages WHERE WageID = $last")
[ "$reference" = "X1|1" ] || fail "expected the second pay committed as X1 with its payment date, found $reference"
open=$(q "SELECT COUNT(*) FROM Wages WHERE Reference IS NULL")
[ "$open" = 1 ] || fail "expected the first pay still uncommitted, found $open open pays"
posted=$(sqlite3 "$farm" "SELECT printf('%.2f', Amount) FROM Transactions WHERE Reference = 'X1' ORDER BY TransactionsID LIMIT 1")
takehome=$(q "SELECT printf('%.2f', -TakeHome) FROM Wages WHERE WageID = $last")
[ -n "$posted" ] && [ "$posted" = "$takehome" ] || fail "expected the cashbook withdrawal $takehome for X1, found '$posted'"
if [ -n "${QUILLARY_SHOTS:-}" ]; then
    for f in "$QUILLARY_SHOTS"/*.xwd; do
        [ -e "$f" ] && python3 "$here/xwd2png.py" "$f" "${f%.xwd}.png" && rm -f "$f"
    done
fi
echo "ok: two pays; the second has 40 units on its first line, a gross that adds up, and is committed as X1 with its withdrawal in the cashbook"
