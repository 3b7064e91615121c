#!/usr/bin/env bash
# tests/packaging/isa.sh BUILD - the objects of the instruction-set levels define their tables and nothing else: code
# that the linker could merge with that of another level would bring its instructions onto every machine
set -euo pipefail
cd "$1"
count=0
while read -r object; do
    bad=$(nm -C --defined-only "$object" | awk '$2 !~ /^[tdrb]$/ && !/ [DR] orvel::[a-z0-9_:]+$/')
    undefined=$(nm -u "$object" | grep -vE '_GLOBAL_OFFSET_TABLE_|mem(cpy|set|move)$' || true)
    [ -z "$bad$undefined" ] || { printf '%s:\n%s\n%s\n' "$object" "$bad" "$undefined"; exit 1; }
    [ "$(nm -C "$object" | grep -cE ' [DR] ')" -ge 1 ] || { echo "$object: no table"; exit 1; }
    count=$((count + 1))
done < <(ninja -t inputs liborvel.so | grep -E '/[a-z]+/isa/[^/]*\.o$')  # not what an older tree has left
[ "$count" -gt 0 ]
echo "$count objects of instruction-set levels define their tables only"
