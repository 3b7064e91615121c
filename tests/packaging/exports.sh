#!/usr/bin/env bash
# tests/packaging/exports.sh BUILD - the shared library exports the listed names and nothing else, and needs no
# library beyond the language run-times
set -euo pipefail
cd "$(dirname "$0")/../.."
library=$1/liborvel.so
diff <(grep -v '^#' tools/exports.txt | tr ' ' '\n' | sort) \
    <(nm -D --defined-only "$library" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }' | sort)
upper_and_lower() { nm "$library" | awk -v n="$1" '$3 == n { print $1 }'; }
while read -r upper lower; do
    [ -z "$lower" ] || [ "$(upper_and_lower "$upper")" = "$(upper_and_lower "$lower")" ] ||
        { echo "$upper and $lower differ"; exit 1; }
done < <(grep -v '^#' tools/exports.txt)
needed=$(objdump -p "$library" | awk '$1 == "NEEDED" { print $2 }' | grep -vE '^(libgomp|libstdc\+\+|libm|libgcc_s|libc|libpthread|ld-linux.*)\.so' || true)
[ -z "$needed" ] || { echo "needs $needed"; exit 1; }
objdump -p "$library" | grep -q 'SONAME.*liborvel.so.1$'
! readelf -d "$library" | grep -q STATIC_TLS || { echo "needs static TLS"; exit 1; }
echo "exports are those of tools/exports.txt"
