#!/usr/bin/env bash
# tests/packaging/headers.sh - every public header compiles alone, as C11 and as C++17, without a warning
set -euo pipefail
cd "$(dirname "$0")/../.."
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
for header in include/orvel/*.h; do
    printf '#include "orvel/%s"\nint main(void) { return 0; }\n' "$(basename "$header")" >"$scratch/alone.c"
    gcc -std=c11 -pedantic -Wall -Wextra -Werror -Iinclude -fsyntax-only "$scratch/alone.c"
    g++ -std=c++17 -pedantic -Wall -Wextra -Werror -Iinclude -fsyntax-only -x c++ "$scratch/alone.c"
done
echo "$(ls include/orvel/*.h | wc -l) headers compile alone"
