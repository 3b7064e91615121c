#!/usr/bin/env bash
# tests/packaging/refusals.sh - what cannot work is refused when the build is configured, in one line that says what to do
set -euo pipefail
cd "$(dirname "$0")/../.."
room=$(mktemp -d)
trap 'rm -r "$room"' EXIT
count=0

# refused WORDS OPTION...: cmake fails, and the line says so.
refused() {
    local words=$1
    shift
    rm -rf "$room/build"
    if cmake -S . -B "$room/build" -G Ninja -DCMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY "$@" >"$room/log" 2>&1; then
        echo "refusals: accepted with $*" >&2
        exit 1
    fi
    if ! grep -iE "$words.*: please " "$room/log" >/dev/null; then
        cat "$room/log"
        echo "refusals: $* is not refused with the words: $words" >&2
        exit 1
    fi
    count=$((count + 1))
}

printf '#!/bin/sh\nexec c++ -Wno-builtin-macro-redefined -D__GNUC__=11 "$@"\n' >"$room/old"
chmod +x "$room/old"
refused 'too old' -DCMAKE_CXX_COMPILER="$room/old"
refused 'compiler Other .*not supported' \
    -DCMAKE_CXX_COMPILER_ID_RUN=1 -DCMAKE_CXX_COMPILER_FORCED=1 -DCMAKE_CXX_COMPILER_ID=Other
refused 'no OpenMP' -DCMAKE_DISABLE_FIND_PACKAGE_OpenMP=ON
refused 'options that change arithmetic' -DCMAKE_CXX_FLAGS=-ffast-math
if [ "$(uname -m)" = x86_64 ]; then
    refused '64 bits' -DCMAKE_CXX_FLAGS=-m32
    refused 'formats of float' -DCMAKE_CXX_FLAGS=-mlong-double-64
fi
if command -v aarch64-linux-gnu-g++ >/dev/null; then
    refused 'high byte' -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/aarch64.cmake" -DCMAKE_CXX_FLAGS=-mbig-endian
fi
echo "$count kinds of machines and compilers are refused"
