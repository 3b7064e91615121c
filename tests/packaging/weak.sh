#!/usr/bin/env bash
# tests/packaging/weak.sh BUILD - objects compiled for an instruction-set level define no weak symbol
set -euo pipefail
cd "$(dirname "$0")/../.."
objects=$(find "$1" -path '*/isa/*.o' ! -path '*/orvel_objects.dir/*')
[ -n "$objects" ] || { echo "no objects of instruction-set levels"; exit 1; }
weak=$(nm --defined-only $objects | awk '$2 ~ /^[WwVu]$/')
[ -z "$weak" ] || { echo "weak symbols: $weak"; exit 1; }
echo "$(wc -w <<<"$objects") objects of instruction-set levels without weak symbols"
