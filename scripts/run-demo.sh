#!/usr/bin/env bash
# Starts the desktop program on the demo data, kept in a folder of its own under the build tree.
set -euo pipefail
build=${1:-build}
export FERNHOLD_DOCUMENTS=${FERNHOLD_DOCUMENTS:-$PWD/$build/demo-data}
mkdir -p "$FERNHOLD_DOCUMENTS"
"$build/app/cli/quillary-cli" init --demo >/dev/null 2>&1 || true
if [ -x "$build/app/quillary/quillary" ]; then
    exec "$build/app/quillary/quillary" "Quillary"
fi
"$build/app/cli/quillary-cli" help
