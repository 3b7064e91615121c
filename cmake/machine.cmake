# cmake/machine.cmake - what the library needs of the machine and of the compiler, asked before anything is built

include(CheckCXXSourceCompiles)

function(refuse)
  string(JOIN " " line ${ARGN})
  message(FATAL_ERROR " ${line}")  # the space keeps it on one line
endfunction()

# ---- compilers: shuffles of vectors by constants, and enough of C++20 -----------------------------------

set(oldest_GNU 12)
set(oldest_Clang 14)
set(compiler "${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}")
set(known "please take g++ ${oldest_GNU} or clang++ ${oldest_Clang}, or a later one: -DCMAKE_CXX_COMPILER=g++")
if(NOT DEFINED oldest_${CMAKE_CXX_COMPILER_ID})
  refuse("The compiler ${compiler} is not supported:" ${known})
elseif(CMAKE_CXX_COMPILER_VERSION VERSION_LESS oldest_${CMAKE_CXX_COMPILER_ID})
  refuse("The compiler ${compiler} is too old:" ${known})
endif()

# ---- the machine ----------------------------------------------------------------------------------------

if(NOT CMAKE_CXX_BYTE_ORDER STREQUAL LITTLE_ENDIAN)
  refuse("This machine stores the high byte of a number first, which is not supported: please build for a"
    "little-endian one.")
elseif(NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
  refuse("Addresses of this machine have not 64 bits, which is not supported: please build for a 64-bit machine, without"
    "-m32 or -mx32.")
elseif(NOT CMAKE_EXECUTABLE_FORMAT STREQUAL ELF)
  refuse("Shared libraries of this system are not in the ELF format, which is not supported: please build on Linux.")
endif()

# The library is made of plain code; for the wide types see the tables that are made at compile time.
check_cxx_source_compiles("
  #include <cfloat>
  #include <limits>
  template <class T> constexpr bool has(int digits, int exponent)
  {
      using Limits = std::numeric_limits<T>;
      return Limits::is_iec559 && Limits::radix == 2 && Limits::digits >= digits && Limits::max_exponent >= exponent;
  }
  static_assert(has<float>(24, 128) && !has<float>(25, 128) && has<double>(53, 1024) && !has<double>(54, 1024));
  static_assert(has<long double>(64, 16384));
  static_assert(FLT_EVAL_METHOD == 0);
  int main() {}" ORVEL_HAS_NUMBERS)
if(NOT ORVEL_HAS_NUMBERS)
  refuse("The formats of float, double and long double are not IEEE's of 32, 64 and at least 80 bits, computed as they are"
    "stored: please drop options such as -mlong-double-64 and -mfpmath=387.")
endif()

check_cxx_source_compiles("
  #ifdef __FAST_MATH__
  #error
  #endif
  #ifdef __FINITE_MATH_ONLY__
  static_assert(!__FINITE_MATH_ONLY__);
  #endif
  int main() {}" ORVEL_HAS_EXACT_ARITHMETIC)
if(NOT ORVEL_HAS_EXACT_ARITHMETIC)
  refuse("Options that change arithmetic are not supported: please drop -ffast-math, -Ofast and -ffinite-math-only.")
endif()

# ---- OpenMP ---------------------------------------------------------------------------------------------

find_package(OpenMP QUIET COMPONENTS CXX)
if(NOT OpenMP_CXX_FOUND)
  refuse("${compiler} has no OpenMP: please install its run-time library, which Debian calls libgomp1 for g++ and"
    "libomp-14-dev for clang++-14.")
endif()

# The public headers return std::complex from functions with C linkage; Fortran and C see a type of their own.
set(no_linkage_warning $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Wno-return-type-c-linkage>)
