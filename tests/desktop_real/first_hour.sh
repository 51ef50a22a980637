#!/usr/bin/env bash
# A new user's first hour with the real desktop program on the demo farm, on an 800x600 screen without
# a window manager, by key presses alone: a backup from Tools; the Email Settings pointed at a local
# SMTP server; the demo week paid from the Pay Run button with one confirmation, its five payslips
# emailed, its Payday Files window; a committed pay's payslip previewed, saved as PDF and emailed from
# the preview; the history; F1 showing the program's own help (no browser here); the backup restored
# from Tools. Every window it meets must lie wholly on the screen. With QUILLARY_SHOTS set to a
# folder, each step is kept there as a PNG.
#   first_hour.sh QUILLARY QUILLARY_CLI
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)

if [ "${1:-}" = "--inside" ]; then
    quillary=$2
    log=$3
    inbox=$4
    work=$5
    port=$6
    "$quillary" Quillary >>"$log" 2>&1 &
    pid=$!
    # shellcheck source=xsession.sh
    source "$here/xsession.sh"
    mails() { find "$inbox" -name '*.eml' | wc -l; }
    wait_mails() { # N: waits up to 30 s for N messages at the server
        for _ in $(seq 300); do
            [ "$(mails)" -ge "$1" ] && return 0
            sleep 0.1
        done
        fail_step "expected $1 messages at the mail server, found $(mails)"
    }

    prompt=$(window '^Pay Date$') || fail_step "no first-pay prompt"
    focus "$prompt"
    press Return
    gone '^Pay Date$' || fail_step "the first-pay prompt did not close"
    main=$(window '^Quillary$') || fail_step "no main window"
    focus "$main"
    sleep 0.5
    shot 01-main "$main"

    # Tools > Backup Data: the file box proposes a dated archive in the backup folder.
    press ctrl+t
    menu=$(other "$main") || fail_step "Ctrl+T opened no Tools menu"
    shot 02-tools-menu "$menu"
    press Return # Backup Data, the first entry
    box=$(window '^Backup Data$') || fail_step "no Backup Data file box"
    focus "$box"
    shot 03-backup-file "$box"
    press ctrl+a
    typed "$work/before-the-run.tar"
    press Return
    said=$(other "$main") || fail_step "the backup said nothing"
    shot 04-backup-done "$said"
    focus "$said"
    press Return
    [ -s "$work/before-the-run.tar" ] || fail_step "no backup archive was written"

    # Pay Run: the slips go by email; the mail server set in Email Settings by keys.
    focus "$main"
    press alt+r
    run=$(window '^Pay Run$') || fail_step "no pay run window"
    focus "$run"
    press alt+s End # Payslips: Email each to its employee
    press alt+v     # Mail server...
    settings=$(window '^Email Settings$') || fail_step "no Email Settings window"
    focus "$settings"
    press alt+s ctrl+a
    typed 127.0.0.1
    press alt+e Home # Security: none (its usual port comes with it)
    press alt+p ctrl+a
    typed "$port"
    press alt+u ctrl+a BackSpace
    press alt+f ctrl+a
    typed wages@tussock.example.com
    shot 05-email-settings "$settings"
    press alt+o
    gone '^Email Settings$' || fail_step "Email Settings did not close on OK"
    focus "$run"
    press alt+a # add the pays of the run
    sleep 2
    focus "$run"
    shot 06-pay-run "$run"
    press alt+m # commit: one confirmation
    confirm=$(other "$main" "$run") || fail_step "no confirmation"
    shot 07-confirmation "$confirm"
    focus "$confirm"
    press Return # Yes
    wait_mails 5
    gone '^Sending Email$' || fail_step "the sending window stayed"
    sleep 1
    account=$(other "$main" "$run") || fail_step "no account of the run"
    shot 08-run-done "$account"
    focus "$account"
    press Return
    focus "$run"
    press alt+f # Payday files of the run
    files=$(window '^Payday Files$') || fail_step "no Payday Files window"
    shot 08b-payday-files "$files"
    focus "$files"
    press Escape
    gone '^Payday Files$' || fail_step "Payday Files did not close"
    focus "$run"
    press alt+c # Close
    gone '^Pay Run$' || fail_step "the pay run did not close"

    # The shown pay is committed now: its Pay Slip button opens the report screen, then the preview.
    focus "$main"
    sleep 0.5
    shot 09-main-after-run "$main"
    press alt+p
    sleep 1
    screen=$(other "$main") || fail_step "Pay Slip opened nothing"
    shot 10-pay-slip "$screen"
    focus "$screen"
    press Return # OK: the payslip goes to the report screen
    reports=$(window '^Reports$') || fail_step "no report screen"
    focus "$reports"
    shot 11-report-screen "$reports"
    press alt+s # Screen: the preview
    sleep 1
    preview=$(other "$main" "$reports") || fail_step "no preview"
    focus "$preview"
    shot 12-preview "$preview"
    press ctrl+s # Save PDF
    box=$(window '^Save PDF$') || fail_step "no Save PDF file box"
    focus "$box"
    shot 13-save-pdf "$box"
    press ctrl+a
    typed "$work/saved-payslip.pdf"
    press Return
    gone '^Save PDF$' || fail_step "the Save PDF file box did not close"
    [ -s "$work/saved-payslip.pdf" ] || fail_step "Save PDF wrote no file"
    focus "$preview"
    press ctrl+e # Email this payslip
    wait_mails 6
    gone '^Sending Email$' || fail_step "the sending window stayed"
    said=$(other "$main" "$reports" "$preview") || fail_step "the email said nothing"
    shot 14-emailed "$said"
    focus "$said"
    press Return
    focus "$preview"
    press Escape
    sleep 0.5
    focus "$reports"
    press alt+b # Back
    gone '^Reports$' || fail_step "the report screen did not close"

    # The history of the shown employee.
    focus "$main"
    press alt+q
    history=$(window '^History$') || fail_step "no history window"
    shot 14b-history "$history"
    focus "$history"
    press Escape
    gone '^History$' || fail_step "the history did not close"

    # F1: the program's own help, no browser being there.
    focus "$main"
    press F1
    help=$(window '^Quillary Help$') || fail_step "F1 showed no help"
    shot 15-help "$help"
    focus "$help"
    press Escape
    gone '^Quillary Help$' || fail_step "the help did not close"

    # Tools > Restore Data: the archive made before the run.
    focus "$main"
    press ctrl+t
    menu=$(other "$main") || fail_step "Ctrl+T opened no Tools menu"
    press Down Return # Restore Data, the second entry
    box=$(window '^Restore Data$') || fail_step "no Restore Data file box"
    focus "$box"
    shot 16-restore-file "$box"
    typed "$work/before-the-run.tar"
    press Return
    sleep 0.5
    ask=$(other "$main") || fail_step "the restore asked nothing"
    shot 17-restore-ask "$ask"
    focus "$ask"
    press alt+y # Yes (No is the default)
    sleep 1
    said=$(other "$main") || fail_step "the restore said nothing"
    shot 18-restored "$said"
    focus "$said"
    press Return
    focus "$main"
    sleep 0.5
    shot 19-main-restored "$main"
    press alt+l # Close
    ends
    exit 0
fi

quillary=$1
cli=$2
for tool in xvfb-run xdotool sqlite3 tar; do
    command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done
python=/usr/bin/python3
[ -x "$python" ] || python=python3
"$python" -c 'import aiosmtpd' 2>/dev/null || { echo "skipped: python3-aiosmtpd is not installed"; exit 77; }
work=$(mktemp -d)
sink_pid=
cleanup() {
    [ -n "$sink_pid" ] && kill "$sink_pid" 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT
export FERNHOLD_DOCUMENTS=$work
export QT_QPA_PLATFORM=xcb
export QUILLARY_HELP_VIEWER=1 # as on a desktop without a browser
# No session bus: no suite menu listens, and no keyring runs.
unset DBUS_STARTER_BUS_TYPE DBUS_SESSION_BUS_ADDRESS BROWSER QUILLARY_SMTP_PASSWORD
"$cli" init --demo >/dev/null
printf '\n[PAYRUN]\nPayslips=0\n' >>"$work/Fernhold/Common/Fernhold.ini"

# The local SMTP server, kept alive by an open pipe for up to 4 minutes.
inbox=$work/inbox
mkfifo "$work/sink.in"
"$python" "$here/../support/smtp_sink.py" "$inbox" 240 <"$work/sink.in" >"$work/sink.port" 2>"$work/sink.err" &
sink_pid=$!
exec 9>"$work/sink.in"
for _ in $(seq 100); do [ -s "$work/sink.port" ] && break; sleep 0.1; done
port=$(head -n 1 "$work/sink.port")
[ -n "$port" ] || { echo "FAILED: the local SMTP server did not start"; cat "$work/sink.err"; exit 1; }

log=$work/session.log
: >"$log"
status=0
xvfb-run -a -s "-screen 0 800x600x24" bash "$0" --inside "$quillary" "$log" "$inbox" "$work" "$port" || status=$?
if [ -n "${QUILLARY_SHOTS:-}" ]; then
    for f in "$QUILLARY_SHOTS"/*.xwd; do
        [ -e "$f" ] && python3 "$here/../ledger/desktop/xwd2png.py" "$f" "${f%.xwd}.png" && rm -f "$f"
    done
fi
fail() {
    echo "FAILED: $*"
    cat "$log"
    exit 1
}
[ "$status" = 0 ] || fail "the session failed"

# Five payslip emails of the run, one to each employee with that employee's slip, then the previewed one.
n=$(find "$inbox" -name '*.eml' | wc -l)
[ "$n" = 6 ] || fail "expected 6 messages at the mail server, found $n"
backup_wage=$work/restored-check
mkdir -p "$backup_wage"
wage=$work/data/Wage32.db
farm=$work/data/Farm32.db
recipients=
for i in 1 2 3 4 5 6; do
    to=$(tr -d '\r' <"$inbox/$i.rcpt" | head -n 1)
    subject=$(cat "$inbox/$i.subject")
    case "$subject" in "Payslip "*" from "*) ;; *) fail "message $i has the subject '$subject'" ;; esac
    pdfs=$(find "$inbox" -name "$i-*.pdf" | wc -l)
    [ "$pdfs" = 1 ] || fail "message $i carries $pdfs PDF files"
    pdf=$(find "$inbox" -name "$i-*.pdf")
    text=$(pdftotext -layout "$pdf" - | tr -s ' ')
    # The addressee's own slip: the address kept for the employee whose name the slip bears.
    name=$(sqlite3 "$farm" "SELECT trim(ContactFirstName) || ' ' || trim(ContactLastName) FROM Addresses WHERE EmailAddress = '$to'")
    [ -n "$name" ] || fail "message $i went to $to, an address no employee has"
    case "$text" in *"Payslip For $name"*) ;; *) fail "message $i to $to carries no payslip for $name" ;; esac
    case "$text" in *"Reference: "[0-9A-Za-z]*) ;; *) fail "the slip of message $i has no reference" ;; esac
    [ "$i" -le 5 ] && recipients="$recipients$to"$'\n'
done
distinct=$(printf '%s' "$recipients" | sort -u | grep -c .)
[ "$distinct" = 5 ] || fail "the run's 5 messages went to $distinct addresses"
pdftotext "$work/saved-payslip.pdf" - | grep -q "Payslip For" || fail "the saved PDF is not a payslip"
grep -qi "password" "$work/Fernhold/Common/Fernhold.ini" && fail "a password stands in the settings file"

# The restore brought back the data as it stood before the run, and kept the run's in a safety copy.
committed=$(sqlite3 "$wage" "SELECT COUNT(*) FROM Wages WHERE length(Reference) > 0")
[ "$committed" = 0 ] || fail "after the restore $committed pays are committed; before the run there were none"
safety=$(find "$work" -path '*Backups*' -name 'Before restore*.tar' | head -n 1)
[ -n "$safety" ] || fail "no safety copy of the replaced data"
tar -xf "$safety" -C "$backup_wage"
kept=$(find "$backup_wage" -name 'Wage32.db' | head -n 1)
[ -n "$kept" ] || fail "the safety copy holds no payroll database"
committed=$(sqlite3 "$kept" "SELECT COUNT(*) FROM Wages WHERE length(Reference) > 0")
[ "$committed" = 5 ] || fail "the safety copy holds $committed committed pays, not the run's 5"
grep '^window' "$log"
echo "ok: backup, the demo week paid from Pay Run with one confirmation, 5 payslips emailed to their employees, one slip saved as PDF and emailed from its preview, help without a browser, restore; every window on the 800x600 screen"
