#!/usr/bin/env bash
# tests/packaging/drivers.sh BUILD - the reference test programs of the standard kernels (Debian: libblas-test), run
# on liborvel_blas. Error exits are left out, because ours are posted errors; so are the packed kernels, which it lacks.
set -euo pipefail
build=$(cd "$1" && pwd)
programs=$(dpkg -L libblas-test | sed -n 's|/xblat1d$||p')
room=$(mktemp -d)
trap 'rm -r "$room"' EXIT
ln -s "$build/liborvel_blas.so" "$room/libblas.so.3"
for p in s d c z; do
    for r in spmv tpmv tpsv spr spr2 hpmv hpr hpr2; do echo "void ${p}${r}_(void) {}"; done
done | cc -shared -fPIC -x c - -o "$room/lacking.so"
cd "$room"
export LD_LIBRARY_PATH="$room:$build" LD_PRELOAD=

total=0
for p in s d c z; do
    "$programs/xblat1$p" >level1
    ! grep -q FAIL level1 || { cat level1; exit 1; }
    total=$((total + $(grep -c -- '----- PASS' level1)))
    for level in 2 3; do
        sed -E 's/^T( +LOGICAL FLAG, T TO TEST ERROR)/F\1/; s/^(.(SPMV|TPMV|TPSV|SPR2?|HPMV|HPR2?) +)T/\1F/' \
            "$programs/${p}blat$level.in" >in
        LD_PRELOAD="$room/lacking.so" "$programs/xblat$level$p" <in >out
        cat "${p}blat$level.out" >>out 2>/dev/null || true
        passed=$(grep -c 'PASSED THE COMPUTATIONAL TESTS' out)
        [ "$passed" -eq "$(grep -cE '^[SDCZ].{5} T ' in)" ] || { cat out; exit 1; }
        total=$((total + passed))
    done
done
echo "$total routines pass the reference tests of the standard kernels"
