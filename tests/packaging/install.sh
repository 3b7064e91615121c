#!/usr/bin/env bash
# tests/packaging/install.sh BUILD - the installed package serves projects in C, in C++ and in Fortran, by CMake, by
# pkg-config and by plain flags, shared and static, and the programs of the README
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "$1")
source=$PWD
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cmake --install "$build" --prefix "$scratch/first" >/dev/null
mv "$scratch/first" "$scratch/prefix"  # what is installed can be moved
libraries=$(dirname "$(find "$scratch/prefix" -name liborvel.so)")
modules=$libraries/orvel/modules
export PKG_CONFIG_PATH=$libraries/pkgconfig CMAKE_PREFIX_PATH=$scratch/prefix

cat >"$scratch/standard.f90" <<'END'
program standard
  double precision :: x(3), ddot
  external :: dset, ddot
  call dset(3, 2d0, x, 1)
  print '(f5.1)', ddot(3, x, 1, x, -1)
end program standard
END
sed '1s/$/; use orvel_kernels/; s/, ddot$//; /external/d' "$scratch/standard.f90" >"$scratch/module.f90"

# consumer LANGUAGE [PROGRAM SOURCE TARGET]...: a project in one language only
consumer() {
    local folder=$scratch/$1
    mkdir "$folder"
    printf 'cmake_minimum_required(VERSION 3.22)\nproject(consumer LANGUAGES %s)\nset(CMAKE_CXX_STANDARD 20)\n%s\n' \
        "$1" "find_package(orvel 1.0 REQUIRED)" >"$folder/CMakeLists.txt"
    shift
    while [ $# -gt 0 ]; do
        printf 'add_executable(%s %s)\ntarget_link_libraries(%s %s m)\n' "$1" "$2" "$1" "$3" >>"$folder/CMakeLists.txt"
        shift 3
    done
    cmake -S "$folder" -B "$folder/build" -G Ninja >"$folder/log" 2>&1 &&
        cmake --build "$folder/build" >>"$folder/log" 2>&1 || { cat "$folder/log"; exit 1; }
}
alpha=$source/examples/alpha/alpha
checks=$source/examples/checks.f90
consumer C shared $alpha.c orvel::orvel static $alpha.c orvel::static
consumer CXX shared $alpha.cpp orvel::orvel static $alpha.cpp orvel::static
consumer Fortran shared "$checks $alpha.f90" orvel::fortran blas "$scratch/standard.f90" orvel::blas \
    blas_static "$scratch/standard.f90" orvel::blas_static

export LD_LIBRARY_PATH=$libraries
plain="-I$scratch/prefix/include -L$libraries"
gcc "$alpha.c" $(pkg-config --cflags --libs orvel) -lm -o "$scratch/c_by_pkg_config"
g++ -std=c++20 "$alpha.cpp" $(pkg-config --cflags --libs orvel) -o "$scratch/cxx_by_pkg_config"
gfortran "$checks" "$alpha.f90" $(pkg-config --cflags --libs orvel) -J"$scratch" -o "$scratch/fortran_by_pkg_config"
gcc $plain "$alpha.c" -lorvel -lm -o "$scratch/c_by_flags"
g++ -std=c++20 $plain "$alpha.cpp" -lorvel -o "$scratch/cxx_by_flags"
gfortran -I"$modules" -L"$libraries" "$checks" "$alpha.f90" -lorvel -J"$scratch" -o "$scratch/fortran_by_flags"
gcc "$alpha.c" $(pkg-config --static --cflags orvel) "$libraries/liborvel.a" \
    $(pkg-config --static --libs-only-l orvel | sed 's/-lorvel//') -o "$scratch/c_static"
gfortran "$scratch/module.f90" $(pkg-config --cflags --libs orvel_blas) -o "$scratch/module"

data=examples/data/alpha_counts.txt
"$scratch/c_by_pkg_config" $data >"$scratch/expected"
grep -q 'chi-square  12.96' "$scratch/expected"
for program in C/build/{shared,static} CXX/build/{shared,static} Fortran/build/shared \
    {cxx,fortran}_by_pkg_config {c,cxx,fortran}_by_flags c_static; do
    "$scratch/$program" $data | diff "$scratch/expected" - || { echo "$program prints something else"; exit 1; }
done
for program in Fortran/build/{blas,blas_static} module; do
    [ "$("$scratch/$program")" = " 12.0" ] || { echo "$program fails"; exit 1; }
done
for program in {C,CXX}/build/static Fortran/build/blas_static c_static; do
    ! ldd "$scratch/$program" | grep liborvel || { echo "$program is not static"; exit 1; }
done
"$scratch/prefix/bin/orvel" explain " *** TERMINAL ERROR 6 from GAMMA.  The argument for the function can not be a
 ***          negative integer. Argument X = -3.000000E+00." | grep '^Cause: X is a negative integer' >/dev/null
if command -v groff >/dev/null; then
    cd "$scratch/prefix/share/man"
    said=$(for page in man3/*; do groff -man -Tutf8 -ww -z "$page" 2>&1; done)
    [ -z "$said" ] || { echo "$said"; exit 1; }
    cd "$source"
fi
mkdir "$scratch/readme"
package=$(dirname "$(find "$scratch/prefix" -path '*/orvel/__init__.py')")
PATH=/usr/bin:$PATH PYTHONPATH=$(dirname "$package") /usr/bin/python3 tests/packaging/readme.py "$scratch/readme"
echo "installed package serves consumers"
