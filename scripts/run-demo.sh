#!/usr/bin/env bash
# Starts the desktop program on the demo data, kept in a folder of its own under the build tree.
set -euo pipefail
build=${1:-build}
export FERNHOLD_DOCUMENTS=${FERNHOLD_DOCUMENTS:-$PWD/$build/demo-data}
mkdir -p "$FERNHOLD_DOCUMENTS"
"$build/app/cli/quillary-cli" init --demo >/dev/null 2>&1 || true
# The grid colours a new installation of the suite would bring; a missing key would show black.
ini="$FERNHOLD_DOCUMENTS/Fernhold/Common/Fernhold.ini"
if [ -f "$ini" ] && ! grep -q '^\[COLOURS\]' "$ini"; then
    printf '\n[COLOURS]\nGridHeader=51,102,1\nGridSelectedRow=255,226,128\nGridEvenRow=255,255,255\nGridOddRow=234,242,222\n' >>"$ini"
fi
if [ -x "$build/app/quillary/quillary" ]; then
    exec "$build/app/quillary/quillary" "Quillary"
fi
"$build/app/cli/quillary-cli" help
