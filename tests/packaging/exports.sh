#!/usr/bin/env bash
# tests/packaging/exports.sh BUILD - the shared libraries export the names of the public headers and nothing else, and need no
# library beyond the language run-times
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$1
listed() { sed -n 's/^  \([A-Za-z].*\);$/\1/p' "$build/$1.map" | sort; }
exported() { nm -D --defined-only "$1" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }' | sort; }
library=$build/liborvel.so
diff <(listed orvel) <(exported "$library")
diff <(listed orvel_blas) <(exported "$build/liborvel_blas.so")
nm -D --defined-only "$library" | sed 's/@.*//' | awk '
    { address[$3] = $1; spelled[tolower($3)] = $3 }
    END { for (lower in address) if (lower ~ /_$/) {
        upper = spelled[substr(lower, 1, length(lower) - 1)]
        if (address[upper] != address[lower]) { print upper " and " lower " differ"; bad = 1 } }
        exit bad }'
both=$(comm -12 <(listed orvel) <(listed orvel_blas))
[ -z "$both" ] || { echo "in both libraries: $both"; exit 1; }

# Every name of liborvel_blas jumps to the upper-case one of liborvel, with nothing done on the way.
jumps=$(objdump -dr "$build"/CMakeFiles/orvel_blas_objects.dir/blas/*.o | awk '
    /^[0-9a-f]+ <.*>:$/ { name = $2; gsub(/[<>:]/, "", name); steps = 0 }
    /^ +[0-9a-f]+:\t/ && !/\t(nop|endbr64|xchg +%ax,%ax|cs nopw|data16)/ { ++steps; jump = /\tjmp/ }
    /R_X86_64_/ { target = $3; sub(/[-+]0x.*/, "", target); if (steps == 1 && jump && toupper(target "_") == toupper(name)) print name }')
diff <(listed orvel_blas) <(sort <<<"$jumps")

# What the last release exported stays; what is new is in the list of a release with a higher second number.
version() { sed -n 's/^#define ORVEL_VERSION "\([0-9]*\.[0-9]*\).*/\1/p' include/orvel/types.h; }
released=$(sed -n '1s/^# \([0-9]*\.[0-9]*\).*/\1/p' docs/exports.txt)
gone=$(comm -23 <(grep -v '^#' docs/exports.txt | sort) <({ listed orvel; listed orvel_blas; } | sort))
new=$(comm -13 <(grep -v '^#' docs/exports.txt | sort) <({ listed orvel; listed orvel_blas; } | sort))
if [ -n "$gone" ] && [ "${released%.*}" = "$(version | cut -d. -f1)" ]; then echo "no more exported:" $gone; exit 1; fi
if [ -n "$new" ] && [ "$released" = "$(version)" ]; then
    echo "exported, but not in docs/exports.txt of $released:" $new
    exit 1
fi

for file in "$library" "$build/liborvel_blas.so"; do
    needed=$(objdump -p "$file" | awk '$1 == "NEEDED" { print $2 }' |
        grep -vE '^(liborvel|libg?omp|libstdc\+\+|libm|libgcc_s|libc|libpthread|ld-linux.*)\.so' || true)
    [ -z "$needed" ] || { echo "$file needs $needed"; exit 1; }
    soname=$(objdump -p "$file" | awk '$1 == "SONAME" { print $2 }')
    [ "$soname" = "$(basename "$file").1" ] || { echo "$file is called $soname"; exit 1; }
done
! objdump -p "$library" | grep 'NEEDED.*liborvel' || { echo "liborvel needs its own forwarders"; exit 1; }
! readelf -d "$library" | grep STATIC_TLS || { echo "needs static TLS"; exit 1; }
echo "exports are the names of the public headers"
