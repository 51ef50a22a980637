#!/usr/bin/env bash
# A farm started from nothing in the real desktop program, by key presses alone, under a virtual X
# server without a window manager: on an empty payroll the set-up assistant (the farm, the paying bank
# account and the Tax Information accounts, the first employee), then a second employee added in the
# employee editor from the Employees list (Ctrl+Shift+E), then the Pay Run button's key: the pays of
# 30 April 2026 added and committed with one confirmation; F2 on the employee's name, or a double-click
# on its caption, opens the editor.
# Afterwards quillary-cli shows both employees and a committed pay each, with PAYE above 0. With
# QUILLARY_SHOTS set to a folder, each window is kept there as a PNG picture.
#   first_farm_by_keys.sh QUILLARY QUILLARY_CLI
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)

if [ "${1:-}" = "--inside" ]; then
    quillary=$2
    log=$3
    "$quillary" Quillary >>"$log" 2>&1 &
    pid=$!
    # Quicker keys than the other sessions: this one types a whole farm.
    XSESSION_PAUSE=0.15
    XSESSION_TYPE_DELAY=15
    # shellcheck source=xsession.sh
    source "$here/xsession.sh"

    # 1. The assistant: the farm and its payroll contact.
    setup=$(window '^Setting Up Your Payroll$') || fail_step "no set-up assistant on an empty payroll"
    focus "$setup"
    typed "Kowhai Flats Dairy"; press Tab
    typed "12 River Road"; press Tab
    typed "Te Awamutu"; press Tab
    typed "3800"; press Tab
    typed "49-091-850"; press Tab Tab # no GST number
    typed "Pat Payroll"; press Tab
    typed "07 871 0000"; press Tab
    typed "pat@kowhai.example.nz"
    picture 1-assistant-farm "$setup"
    press alt+n
    # 2. The paying account, then the cashbook accounts of Tax Information, kept as offered.
    sleep 0.5
    typed "01-0902-0068389-00"
    press alt+x
    tax=$(window '^Tax Information$') || fail_step "Tax Information did not open from the assistant"
    focus "$tax"
    picture 2-tax-information "$tax"
    press Return
    gone '^Tax Information$' || fail_step "Tax Information did not close"
    focus "$setup"
    picture 3-assistant-bank "$setup"
    press alt+n
    # 3. The first employee: a weekly farm hand on M, KiwiSaver 3.5%, paid into an account.
    sleep 0.5
    typed "Mere"; press Tab
    typed "Tane"; press Tab
    typed "1/04/2026"; press Tab Tab Tab # tax code M and weekly as offered
    typed "26.50"; press Tab Tab
    typed "120000039"
    press Tab Tab Tab Tab Tab Tab # date of birth, address, city, email, occupation, to the hours
    typed "40"
    press Tab Down Down Down # KiwiSaver: no, opted-out, 3, 3.5
    press Tab Tab Tab Tab    # status, start date, employer rate, to the account
    typed "01-0902-0068389-00"
    picture 4-assistant-employee "$setup"
    press alt+f
    gone '^Setting Up Your Payroll$' || fail_step "the assistant did not finish"

    # The ledger asks for the date of the new employee's first pay.
    prompt=$(window '^Pay Date$') || fail_step "no first-pay prompt"
    focus "$prompt"
    typed "30/04/2026"
    picture 5-first-pay-date "$prompt"
    press Return
    gone '^Pay Date$' || fail_step "the first-pay prompt did not close"
    main=$(window '^Quillary$') || fail_step "no main window after the assistant"
    focus "$main"
    picture 6-main "$main"

    # The employee editor from the Employees list: a monthly manager on M SL with a salary, KiwiSaver 4%
    # and the employer's superannuation scheme.
    press ctrl+shift+e
    list=$(window '^Employees$') || fail_step "Ctrl+Shift+E showed no employee list"
    focus "$list"
    press alt+a
    editor=$(window '^New Employee$') || fail_step "Add showed no employee editor"
    focus "$editor"
    typed "Sam"; press Tab
    typed "Brown"; press Tab
    typed "2026-04-01"; press Tab ctrl+a
    typed "M SL"; press Tab End Tab Tab # monthly; past the hourly rate
    typed "78000"; press Tab
    typed "120000012"
    press Tab Tab Tab Tab Tab ctrl+a # to the occupation
    typed "Farm Manager"
    press Tab Tab End Up Up Up # KiwiSaver 10, 8, 6, 4
    press Tab Tab Tab Tab Tab Tab Tab Tab Tab # to the employer's contributions
    typed "Employer Superannuation=2%"
    picture 7-editor "$editor"
    press alt+s
    gone '^New Employee$' || fail_step "the editor did not save the employee"
    focus "$list"
    picture 8-employees "$list"
    press alt+c
    gone '^Employees$' || fail_step "the employee list did not close"

    # The pay run of 30 April 2026: the day section to the 1st first, so that every month takes it.
    focus "$main"
    press alt+r
    run=$(window '^Pay Run$') || fail_step "no pay run window"
    focus "$run"
    press alt+d Home
    xdotool key --delay 10 $(printf 'Down %.0s' $(seq 31))
    press ctrl+a
    typed "1 Apr 2026"
    press Home
    xdotool key --delay 10 $(printf 'Up %.0s' $(seq 29))
    press alt+p
    sleep 1
    press alt+a # the pays of the run
    sleep 3
    focus "$run"
    picture 9-pay-run "$run"
    press alt+m # commit: one confirmation
    sleep 1
    confirm=$(other "$main" "$run") || fail_step "no confirmation of the commit"
    picture 10-confirmation "$confirm"
    focus "$confirm"
    press Return
    sleep 3
    done=$(other "$main" "$run") || fail_step "no account of the committed run"
    picture 11-committed "$done"
    focus "$done"
    press Return
    focus "$run"
    press Escape
    gone '^Pay Run$' || fail_step "the pay run did not close"

    # F2 on the employee's name opens the editor for the shown employee.
    focus "$main"
    press alt+e F2
    shown=$(window '^Employee$') || fail_step "F2 on the name opened no editor"
    picture 12-editor-of-shown "$shown"
    focus "$shown"
    press Escape
    gone '^Employee$' || fail_step "the editor did not close"
    # So does a double-click on the Employee caption beside the name (the one mouse action here).
    focus "$main"
    eval "$(xdotool getwindowgeometry --shell "$main")"
    xdotool mousemove --sync $((X + 30)) $((Y + 56)) click --repeat 2 --delay 80 1
    shown=$(window '^Employee$') || fail_step "a double-click on the Employee caption opened no editor"
    focus "$shown"
    press Escape
    gone '^Employee$' || fail_step "the editor did not close"
    focus "$main"
    press alt+l
    ends
    exit 0
fi

quillary=$1
cli=$2
for tool in xvfb-run xdotool python3; do
    command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export FERNHOLD_DOCUMENTS=$work
export QT_QPA_PLATFORM=xcb
unset DBUS_STARTER_BUS_TYPE
"$cli" init >/dev/null
log=$work/session.log
: >"$log"
session_ok=1
xvfb-run -a -s "-screen 0 1024x768x24" bash "$0" --inside "$quillary" "$log" || session_ok=0
if [ -n "${QUILLARY_SHOTS:-}" ]; then
    for f in "$QUILLARY_SHOTS"/*.xwd; do
        [ -e "$f" ] && python3 "$here/../ledger/desktop/xwd2png.py" "$f" "${f%.xwd}.png" && rm -f "$f"
    done
fi
if [ "$session_ok" = 0 ]; then
    echo "the session failed:"
    cat "$log"
    exit 1
fi

# What the program wrote, as quillary-cli shows it.
"$cli" employee show 1 >"$work/e1.json"
"$cli" employee show 2 >"$work/e2.json"
"$cli" pays 1 >"$work/p1.json"
"$cli" pays 2 >"$work/p2.json"
python3 - "$work" <<'EOF'
import json, sys
work = sys.argv[1]
def load(name):
    with open(f"{work}/{name}.json") as f:
        return json.load(f)
problems = []
e1, e2 = load("e1"), load("e2")
def expect(what, got, want):
    if got != want:
        problems.append(f"{what}: {got!r}, expected {want!r}")
expect("employee 1", (e1["FirstName"], e1["LastName"], e1["TaxCode"], e1["PayInterval"], e1["KiwiSaverRate"],
                      e1["Account"]), ("Mere", "Tane", "M", "Weekly", 3.5, "01-0902-0068389-00"))
expect("employee 2", (e2["FirstName"], e2["LastName"], e2["TaxCode"], e2["PayInterval"], e2["YearlyTotal"],
                      e2["KiwiSaverRate"], e2["Occupation"]),
       ("Sam", "Brown", "M SL", "Monthly", 78000, 4, "Farm Manager"))
expect("employee 2's contributions", [(c["Name"], c["Rate"]) for c in e2["Contributions"]],
       [("Employer Superannuation", 2)])
for n in ("p1", "p2"):
    pays = [p for p in load(n) if p.get("Reference")]
    expect(f"committed pays of {n}", [p["Date"] for p in pays], ["2026-04-30"])
    for p in pays:
        if not p["PAYE"] > 0:
            problems.append(f"pay {p['WageID']} of employee {p['EmployeeID']} was committed with PAYE {p['PAYE']}"
                            f" on a gross of {p['Gross']}")
if problems:
    print("FAILED:\n  " + "\n  ".join(problems))
    sys.exit(1)
EOF
echo "ok: a farm set up from nothing by keys alone: the assistant, the employee editor and a pay run committed with PAYE on every pay"
