#!/usr/bin/env bash
# tests/packaging/python.sh BUILD PYTHON - the Python package finds its own library: installed, after its prefix was moved,
# and in a wheel; it says how long the first call takes
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "$1") python=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
unset ORVEL_LIBRARY LD_LIBRARY_PATH PYTHONPATH

# works FOLDER LIBRARY: the package in FOLDER solves a system with LIBRARY
works() {
    (cd "$scratch" && PYTHONPATH=$1 "$python" - "$2") <<'END'
import time, sys
start = time.perf_counter()
import orvel
x = orvel.lsarg([[2.0, 1.0], [1.0, 3.0]], [3.0, 4.0])
took = time.perf_counter() - start
assert x.tolist() == [1, 1] and orvel.library_path == sys.argv[1], orvel.library_path
print(f"{orvel.library_path.rpartition('/')[0]}: {took:.3f} s from the import to the first result")
END
}
cmake --install "$build" --prefix "$scratch/first" >/dev/null
mv "$scratch/first" "$scratch/second"
folder=$(dirname "$(find "$scratch/second" -path '*/orvel/_interface.json' -printf '%h\n')")
library=$(find "$scratch/second" -name liborvel.so.1)
works "$folder" "$library"
[ -e "$folder/orvel/py.typed" ] && [ -e "$folder/orvel/__init__.pyi" ]

cmake --build "$build" --target wheel >/dev/null
"$python" -m zipfile -e "$build"/orvel-*.whl "$scratch/wheel"
works "$scratch/wheel" "$scratch/wheel/orvel/liborvel.so.1"
