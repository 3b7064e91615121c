#!/usr/bin/env bash
# tests/packaging/headers.sh BUILD - every public header compiles alone, as C11 and as C++17, without a warning; those
# that are made lie in the folder of the build
set -euo pipefail
cd "$(dirname "$0")/../.."
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
flags="-pedantic -Wall -Wextra -Werror -Iinclude -I$1/include -fsyntax-only"
count=0
for header in include/orvel/*.h include/orvel/*.hpp "$1"/include/orvel/*.hpp; do
    printf '#include "orvel/%s"\nint main(void) { return 0; }\n' "$(basename "$header")" >"$scratch/alone.c"
    [[ $header == *.hpp ]] || gcc -std=c11 $flags "$scratch/alone.c"
    g++ -std=c++17 $flags -Wshadow -Wconversion -x c++ "$scratch/alone.c"
    count=$((count + 1))
done
echo "$count headers compile alone"
