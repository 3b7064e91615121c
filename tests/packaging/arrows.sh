#!/usr/bin/env bash
# tests/packaging/arrows.sh - folders include only what lies below them
set -euo pipefail
cd "$(dirname "$0")/../.."
declare -A allowed=(
    [frame]="frame" [blas]="frame" [kernels]="frame kernels" [linsys]="frame kernels linsys" [interp]="frame kernels util interp"
    [quad]="frame kernels quad" [zeros]="frame kernels zeros" [optim]="frame kernels optim"
    [fft]="frame kernels fft" [special]="frame kernels special" [random]="frame kernels util random"
    [util]="frame kernels util"
)
bad=0
for folder in "${!allowed[@]}"; do
    [ -d "$folder" ] || continue
    while IFS=: read -r file _ line; do
        target=$(sed -E 's/.*"([a-z]+)\/.*/\1/' <<<"$line")
        [[ " ${allowed[$folder]} orvel " == *" $target "* ]] || { echo "$file includes $target"; bad=1; }
    done < <(grep -rnE '^#include "[a-z]+/' "$folder")
done
# Only one place indexes tables by the level, see frame/levels.h.
if grep -rnE 'frame::level\(\)' kernels linsys interp quad zeros optim fft special random util; then bad=1; fi
[ $bad -eq 0 ] && echo "includes point downwards only"
exit $bad
