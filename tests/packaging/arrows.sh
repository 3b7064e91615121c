#!/usr/bin/env bash
# tests/packaging/arrows.sh - folders include only what lies below them
set -euo pipefail
cd "$(dirname "$0")/../.."
declare -A below=(
    [isa]="" [frame]="" [blas]="frame" [kernels]="frame" [linsys]="frame kernels" [interp]="frame kernels util"
    [quad]="frame kernels" [zeros]="frame kernels" [optim]="frame kernels" [fft]="frame kernels"
    [special]="frame kernels" [random]="frame kernels util" [util]="frame kernels"
)
bad=0
for folder in "${!below[@]}"; do
    while IFS=: read -r file _ line; do
        target=$(sed -E 's/.*"([a-z]+)\/.*/\1/' <<<"$line")
        [[ " $folder isa ${below[$folder]} orvel " == *" $target "* ]] || { echo "$file includes $target"; bad=1; }
    done < <(grep -rnE '^#include "[a-z]+/' "$folder")
done
# Hot loops include their own folder and the ground room, where nothing is emitted that levels could share.
if grep -nE '^#include "' {fft,interp,kernels,linsys,random,util}/isa/* | grep -vE '^([a-z]+)/isa/[^:]*:[0-9]+:#include "(\1/isa|isa)/'; then bad=1; fi
# Only one place indexes tables by the level, see isa/levels.h.
if grep -rnE 'chosen_level|\[(isa::)?level\(\)\]' --include=*.cpp --include=*.h . | grep -vE '^./(isa|build)/'; then bad=1; fi
# The test of the level in use knows every table.
while read -r table; do
    grep -q ", $table);" tests/isa/levels_test.cpp || { echo "tests/isa/levels_test.cpp lacks $table"; bad=1; }
done < <(grep -rhoE '^ORVEL_(OUTER_)?LEVEL_TABLE\(.*, [a-z0-9_]+\);' --include=*.h */isa | sed -E 's/.*, ([a-z0-9_]+)\);/\1/')
[ $bad -eq 0 ] && echo "includes point downwards only"
exit $bad
