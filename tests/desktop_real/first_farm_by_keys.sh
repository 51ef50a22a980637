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
    fail() {
        echo "$*" >>"$log"
        kill "$pid" 2>/dev/null || true
        exit 1
    }
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
    gone() { # waits up to 30 s until no visible window has the title
        for _ in $(seq 300); do
            xdotool search --onlyvisible --name "$1" >/dev/null 2>&1 || return 0
            sleep 0.1
        done
        return 1
    }
    # Without a window manager nobody gives a window the focus back when the one above it closes.
    focus() {
        xdotool windowfocus --sync "$1"
        sleep 0.2
    }
    press() {
        xdotool key --clearmodifiers "$@"
        sleep 0.15
    }
    type() {
        xdotool type --delay 15 "$1"
    }
    shot() { # one window by its id, when pictures are wanted
        [ -n "${QUILLARY_SHOTS:-}" ] && command -v xwd >/dev/null || return 0
        sleep 0.4
        xwd -id "$2" -silent >"$QUILLARY_SHOTS/$1.xwd" || true
    }
    other() { # a visible window other than the ones given
        for id in $(xdotool search --onlyvisible --name '.' 2>/dev/null); do
            case " $* " in *" $id "*) ;; *) echo "$id"; return 0 ;; esac
        done
        return 0
    }

    # 1. The assistant: the farm and its payroll contact.
    setup=$(window '^Setting Up Your Payroll$') || fail "no set-up assistant on an empty payroll"
    focus "$setup"
    type "Kowhai Flats Dairy"; press Tab
    type "12 River Road"; press Tab
    type "Te Awamutu"; press Tab
    type "3800"; press Tab
    type "49-091-850"; press Tab Tab # no GST number
    type "Pat Payroll"; press Tab
    type "07 871 0000"; press Tab
    type "pat@kowhai.example.nz"
    shot 1-assistant-farm "$setup"
    press alt+n
    # 2. The paying account, then the cashbook accounts of Tax Information, kept as offered.
    sleep 0.5
    type "01-0902-0068389-00"
    press alt+x
    tax=$(window '^Tax Information$') || fail "Tax Information did not open from the assistant"
    focus "$tax"
    shot 2-tax-information "$tax"
    press Return
    gone '^Tax Information$' || fail "Tax Information did not close"
    focus "$setup"
    shot 3-assistant-bank "$setup"
    press alt+n
    # 3. The first employee: a weekly farm hand on M, KiwiSaver 3.5%, paid into an account.
    sleep 0.5
    type "Mere"; press Tab
    type "Tane"; press Tab
    type "1/04/2026"; press Tab Tab Tab # tax code M and weekly as offered
    type "26.50"; press Tab Tab
    type "120000039"
    press Tab Tab Tab Tab Tab Tab # date of birth, address, city, email, occupation, to the hours
    type "40"
    press Tab Down Down Down # KiwiSaver: no, opted-out, 3, 3.5
    press Tab Tab Tab Tab    # status, start date, employer rate, to the account
    type "01-0902-0068389-00"
    shot 4-assistant-employee "$setup"
    press alt+f
    gone '^Setting Up Your Payroll$' || fail "the assistant did not finish"

    # The ledger asks for the date of the new employee's first pay.
    prompt=$(window '^Pay Date$') || fail "no first-pay prompt"
    focus "$prompt"
    type "30/04/2026"
    shot 5-first-pay-date "$prompt"
    press Return
    gone '^Pay Date$' || fail "the first-pay prompt did not close"
    main=$(window '^Quillary$') || fail "no main window after the assistant"
    focus "$main"
    shot 6-main "$main"

    # The employee editor from the Employees list: a monthly manager on M SL with a salary, KiwiSaver 4%
    # and the employer's superannuation scheme.
    press ctrl+shift+e
    list=$(window '^Employees$') || fail "Ctrl+Shift+E showed no employee list"
    focus "$list"
    press alt+a
    editor=$(window '^New Employee$') || fail "Add showed no employee editor"
    focus "$editor"
    type "Sam"; press Tab
    type "Brown"; press Tab
    type "2026-04-01"; press Tab ctrl+a
    type "M SL"; press Tab End Tab Tab # monthly; past the hourly rate
    type "78000"; press Tab
    type "120000012"
    press Tab Tab Tab Tab Tab ctrl+a # to the occupation
    type "Farm Manager"
    press Tab Tab End Up Up Up # KiwiSaver 10, 8, 6, 4
    press Tab Tab Tab Tab Tab Tab Tab Tab Tab # to the employer's contributions
    type "Employer Superannuation=2%"
    shot 7-editor "$editor"
    press alt+s
    gone '^New Employee$' || fail "the editor did not save the employee"
    focus "$list"
    shot 8-employees "$list"
    press alt+c
    gone '^Employees$' || fail "the employee list did not close"

    # The pay run of 30 April 2026: the day section to the 1st first, so that every month takes it.
    focus "$main"
    press alt+r
    run=$(window '^Pay Run$') || fail "no pay run window"
    focus "$run"
    press alt+d Home
    xdotool key --delay 10 $(printf 'Down %.0s' $(seq 31))
    press ctrl+a
    type "1 Apr 2026"
    press Home
    xdotool key --delay 10 $(printf 'Up %.0s' $(seq 29))
    press alt+p
    sleep 1
    press alt+a # the pays of the run
    sleep 3
    focus "$run"
    shot 9-pay-run "$run"
    press alt+m # commit: one confirmation
    sleep 1
    confirm=$(other "$main" "$run")
    [ -n "$confirm" ] || fail "no confirmation of the commit"
    shot 10-confirmation "$confirm"
    focus "$confirm"
    press Return
    sleep 3
    done=$(other "$main" "$run")
    [ -n "$done" ] || fail "no account of the committed run"
    shot 11-committed "$done"
    focus "$done"
    press Return
    focus "$run"
    press Escape
    gone '^Pay Run$' || fail "the pay run did not close"

    # F2 on the employee's name opens the editor for the shown employee.
    focus "$main"
    press alt+e F2
    shown=$(window '^Employee$') || fail "F2 on the name opened no editor"
    shot 12-editor-of-shown "$shown"
    focus "$shown"
    press Escape
    gone '^Employee$' || fail "the editor did not close"
    # So does a double-click on the Employee caption beside the name (the one mouse action here).
    focus "$main"
    eval "$(xdotool getwindowgeometry --shell "$main")"
    xdotool mousemove --sync $((X + 30)) $((Y + 56)) click --repeat 2 --delay 80 1
    shown=$(window '^Employee$') || fail "a double-click on the Employee caption opened no editor"
    focus "$shown"
    press Escape
    gone '^Employee$' || fail "the editor did not close"
    focus "$main"
    press alt+l
    for _ in $(seq 100); do
        kill -0 "$pid" 2>/dev/null || exit 0
        sleep 0.1
    done
    fail "the program did not end after Close"
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
