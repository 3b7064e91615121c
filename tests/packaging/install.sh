#!/usr/bin/env bash
# tests/packaging/install.sh BUILD - the installed package serves consumers by CMake and by pkg-config, from C, C++
# and Fortran, shared and static
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "$1")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cmake --install "$build" --prefix "$scratch/prefix" >/dev/null
export PKG_CONFIG_PATH=$(dirname "$(find "$scratch/prefix" -name orvel.pc)")
export LD_LIBRARY_PATH=$(dirname "$PKG_CONFIG_PATH")

cp examples/alpha/alpha.c examples/alpha/alpha.cpp examples/alpha/alpha.f90 "$scratch"
cat >"$scratch/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.22)
project(consumer LANGUAGES C CXX)
set(CMAKE_CXX_STANDARD 20)
find_package(orvel 1.0 REQUIRED)
add_executable(shared alpha.cpp)
target_link_libraries(shared orvel::orvel)
add_executable(static alpha.cpp)
target_link_libraries(static orvel::static)
enable_language(Fortran)
add_executable(blas standard.f90)
target_link_libraries(blas orvel::blas)
add_executable(blas_static standard.f90)
target_link_libraries(blas_static orvel::blas_static)
END
cat >"$scratch/standard.f90" <<'END'
program standard
  double precision :: x(3), ddot
  external :: dset, ddot
  call dset(3, 2d0, x, 1)
  print '(f5.1)', ddot(3, x, 1, x, -1)
end program standard
END
cmake -S "$scratch" -B "$scratch/build" -G Ninja -DCMAKE_PREFIX_PATH="$scratch/prefix" >"$scratch/log" 2>&1 &&
    cmake --build "$scratch/build" >>"$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }
gcc "$scratch/alpha.c" $(pkg-config --cflags --libs orvel) -lm -o "$scratch/by_pkg_config"
modules=$(dirname "$(find "$scratch/prefix" -name orvel_special.mod)")
gfortran -I"$modules" "$scratch/alpha.f90" $(pkg-config --libs orvel) -o "$scratch/by_fortran"
sed '1s/$/; use orvel_kernels/; s/, ddot$//; /external/d' "$scratch/standard.f90" >"$scratch/module.f90"
gfortran -I"$modules" "$scratch/module.f90" $(pkg-config --libs orvel_blas) -o "$scratch/by_module"
for program in build/blas build/blas_static by_module; do
    [ "$("$scratch/$program")" = " 12.0" ] || { echo "$program fails"; exit 1; }
done

data=examples/data/alpha_counts.txt
"$scratch/by_pkg_config" $data >"$scratch/expected"
grep -q 'chi-square  12.96' "$scratch/expected"
for program in build/shared build/static by_fortran; do
    "$scratch/$program" $data | diff "$scratch/expected" -
done
! ldd "$scratch/build/static" "$scratch/build/blas_static" | grep liborvel
echo "installed package serves consumers"
