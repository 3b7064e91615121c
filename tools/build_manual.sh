#!/usr/bin/env bash
# tools/build_manual.sh OUT - builds the HTML manual in OUT/html; a warning is an error
set -euo pipefail
cd "$(dirname "$0")/.."
python=/usr/bin/python3
[ -x $python ] || python=python3
rm -rf "$1"
mkdir -p "$1"
$python tools/handbook.py "$1/source"
$python -m sphinx -q -W --keep-going -b html -j 2 "$1/source" "$1/html"
rm -rf "$1/source" "$1/html/.doctrees"
