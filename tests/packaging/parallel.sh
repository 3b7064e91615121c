#!/usr/bin/env bash
# tests/packaging/parallel.sh BUILD - problems in parts print the same with 1, 2 and 4 ranks or threads, and ScaLAPACK
# calls the kernels of liborvel_blas. What is not installed is left out, and said.
set -euo pipefail
programs=$(cd "$1" && pwd)/examples
room=$(mktemp -d)
trap 'rm -r "$room"' EXIT
export OMP_NUM_THREADS=1 OMPI_ALLOW_RUN_AS_ROOT=1 OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1
export OMPI_MCA_rmaps_base_oversubscribe=1 OMPI_MCA_btl_vader_single_copy_mechanism=none  # in a container, too
fail() { echo "parallel: $*" >&2; exit 1; }

# same NAME: the output with 2 and 4 workers is that with one, and has the three totals.
same() {
    local workers
    grep -q '^ systems .*[0-9]' "$room/1" || fail "$1 prints no totals"
    for workers in 2 4; do
        diff "$room/1" "$room/$workers" || fail "$1 differs with $workers workers"
    done
    echo "$1 prints the same with 1, 2 and 4 workers"
}

for name in parts_openmp_cpp parts_openmp_f90; do
    [ -x "$programs/$name" ] || { echo "$name is not built"; continue; }
    for workers in 1 2 4; do OMP_NUM_THREADS=$workers "$programs/$name" >"$room/$workers"; done
    same "$name"
    cp "$room/1" "$room/${name##*_}"
done
for name in parts_mpi_cpp parts_mpi_f90; do
    [ -x "$programs/$name" ] || { echo "$name is not built"; continue; }
    for workers in 1 2 4; do timeout 120 mpirun -n $workers "$programs/$name" >"$room/$workers"; done
    same "$name"
    if [ -e "$room/${name##*_}" ]; then
        diff "$room/1" "$room/${name##*_}" || fail "$name and the threads differ"
    fi
done
if [ -x "$programs/block_cyclic" ]; then
    for workers in 1 2 4; do timeout 120 mpirun -n $workers "$programs/block_cyclic" || fail "block_cyclic"; done
    LD_DEBUG=bindings LD_DEBUG_OUTPUT=$room/bindings timeout 120 mpirun -x LD_DEBUG -x LD_DEBUG_OUTPUT -n 1 \
        "$programs/block_cyclic" >/dev/null
    for kernel in dgemm_ dtrsm_ idamax_; do
        cat "$room"/bindings.* | grep "libscalapack[^ ]* .*to .*/liborvel_blas[^ ]* .*\`$kernel'" >/dev/null ||
            fail "ScaLAPACK does not call our $kernel"
    done
    echo "ScaLAPACK calls the kernels of liborvel_blas"
else
    echo "block_cyclic is not built"
fi
