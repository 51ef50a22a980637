#!/usr/bin/env bash
# check_deb.sh BUILD_DIR: makes the package with CPack into a folder of its own, unpacks it with
# dpkg -x (as an install would place it, without installing), checks what it holds and declares, and
# starts the unpacked quillary-cli.
set -euo pipefail
build=$1
for tool in cpack dpkg-deb; do
    command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cpack --config "$build/CPackConfig.cmake" -G DEB -B "$work/out" >"$work/cpack.log" 2>&1 || {
    cat "$work/cpack.log"
    exit 1
}
deb=$(find "$work/out" -maxdepth 1 -name 'quillary_*.deb' | head -n 1)
[ -n "$deb" ] || { echo "FAILED: no .deb made"; cat "$work/cpack.log"; exit 1; }
dpkg-deb -x "$deb" "$work/root"
for f in usr/bin/quillary usr/bin/quillary-cli usr/bin/ql_payslip.rpt usr/share/quillary/Help/quillary.html \
    usr/share/applications/quillary.desktop usr/share/icons/hicolor/256x256/apps/quillary.png; do
    [ -e "$work/root/$f" ] || { echo "FAILED: the package lacks $f"; exit 1; }
done
depends=$(dpkg-deb -f "$deb" Depends)
for d in libqt6widgets6 libsqlite3-0 qt6-qpa-plugins; do
    case "$depends" in *"$d"*) ;; *) echo "FAILED: Depends lacks $d: $depends"; exit 1 ;; esac
done
export FERNHOLD_DOCUMENTS=$work/docs
out=$("$work/root/usr/bin/quillary-cli" help)
case "$out" in *"payslip"*) ;; *) echo "FAILED: quillary-cli help from the package said: $out"; exit 1 ;; esac
# The unpacked program makes its data where it is told.
"$work/root/usr/bin/quillary-cli" init --demo >/dev/null
[ -e "$work/docs/data/Wage32.db" ] || { echo "FAILED: init from the package made no payroll database"; exit 1; }
echo "ok: $(basename "$deb") unpacked; quillary-cli help runs from it; Depends: $depends"
