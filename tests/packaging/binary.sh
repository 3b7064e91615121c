#!/usr/bin/env bash
# tests/packaging/binary.sh BUILD - what the loader does with the shared libraries: all that it relocates is read-only
# before the program runs, nothing is both written and executed, nothing is looked up in folders of this build; nothing
# is called that reads or writes numbers or letters as the locale of the program has them; the blocks of state have the
# places and the sizes that programs were compiled with
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$1
bad=0
complain() { echo "$*"; bad=1; }

for library in "$build"/liborvel.so "$build"/liborvel_blas.so; do
    segments=$(readelf -lW "$library")
    dynamic=$(readelf -dW "$library")
    grep -q 'GNU_RELRO' <<<"$segments" || complain "$library: no segment becomes read-only"
    grep -qE '\(FLAGS(_1)?\).*NOW' <<<"$dynamic" || complain "$library: addresses are bound lazily"
    grep -qE 'GNU_STACK .* RW +0x' <<<"$segments" || complain "$library: the stack is executable"
    ! grep -E 'LOAD .* (RWE|WE)' <<<"$segments" || complain "$library: a segment is written and executed"
    ! grep -E '\((RPATH|RUNPATH)\)' <<<"$dynamic" || complain "$library: folders of its own"
    ! nm -D --undefined-only "$library" |
        grep -E ' (v?s?n?f?d?w?(printf|scanf)|_?_?wcsto|strto|ato[fil]|setlocale|localeconv|nl_langinfo|isw?(alnum|alpha|digit|space|print|punct|upper|lower|ctype)|tow?(upper|lower)|_ZNS[oit]|_ZNKSt5ctype)' ||
        complain "$library: what it prints may depend on the locale"
    ! grep -E '\(TEXTREL\)|TEXTREL' <<<"$dynamic" || complain "$library: code is relocated"
done

compile="-Iinclude -fsyntax-only -pedantic -Werror tests/packaging/layout.c"
gcc -std=c11 $compile || complain "the blocks lie elsewhere in C"
g++ -std=c++17 -x c++ $compile || complain "the blocks lie elsewhere in C++"
blocks=$(sed -n 's/^BLOCK(\([A-Z0-9_]*\), \([0-9]*\));$/\1 \2/p' tests/packaging/layout.c | sort)
diff <(echo "$blocks") <(readelf --dyn-syms -W "$build/liborvel.so" |
    awk '$4 == "TLS" && $5 == "GLOBAL" { sub(/@.*/, "", $8); if ($8 !~ /[a-z]/) print $8, $3 }' | sort) ||
    complain "the library's blocks (>) have not the documented sizes (<)"
[ $bad -eq 0 ] && echo "relocations become read-only, blocks have their places"
exit $bad
