#!/usr/bin/env bash
# tests/packaging/again.sh BUILD - a second build of the shared libraries, from sources in another folder and without a
# compiler cache, has the bytes of the first, which may have come out of one
set -euo pipefail
cd "$(dirname "$0")/../.."
first=$(realpath "$1")
room=$(mktemp -d)
trap 'rm -rf "$room"' EXIT
unset CMAKE_C_COMPILER_LAUNCHER CMAKE_CXX_COMPILER_LAUNCHER
mkdir "$room/elsewhere"
git ls-files -co --exclude-standard -z | tar -c --null -T - | tar -x -C "$room/elsewhere"
option() { sed -n "s/^\($1\):[A-Z]*=/\1=/p" "$first/CMakeCache.txt"; }
cmake -G Ninja -S "$room/elsewhere" -B "$room/again" "-D$(option CMAKE_BUILD_TYPE)" "-D$(option CMAKE_CXX_COMPILER)" \
    "-D$(option CMAKE_CXX_FLAGS)" "-D$(option Python3_EXECUTABLE)"
cmake --build "$room/again" --target orvel orvel_blas
for library in liborvel.so liborvel_blas.so; do
    cmp "$first/$library" "$room/again/$library"
    if grep -qF -e "$PWD" "$first/$library"; then echo "$library names the folder it was built in"; exit 1; fi
done
echo "two builds in two folders are the same bytes"
