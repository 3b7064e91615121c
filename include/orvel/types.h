/* include/orvel/types.h - argument types and linkage words of the public interface
 *
 * Every argument goes by reference. INTEGER is int32_t, REAL float, DOUBLE PRECISION double, LOGICAL
 * int32_t (-1 true, 0 false; bit 0 is the truth value). A character argument is a pointer whose length
 * follows, by value, after all other arguments: one length per character argument, in order.
 *
 * A call needs at most 64 KB of stack, beside what the user's own functions take.
 */
#ifndef ORVEL_TYPES_H
#define ORVEL_TYPES_H

#include <stddef.h>
#include <stdint.h>

/* The version of these headers; orvel_version() tells that of the library that a program runs with. The
 * number is 10000 major + 100 minor + patch. */
#define ORVEL_VERSION "1.0.0"
#define ORVEL_VERSION_NUMBER 10000

#ifdef __cplusplus
#include <complex>
typedef std::complex<float> orvel_complex;
typedef std::complex<double> orvel_dcomplex;
#ifdef __clang__ /* which warns that C has no std::complex; it is the _Complex of C there */
#define ORVEL_BEGIN \
    extern "C" {    \
    _Pragma("clang diagnostic push") _Pragma("clang diagnostic ignored \"-Wreturn-type-c-linkage\"")
#define ORVEL_END                   \
    _Pragma("clang diagnostic pop") \
    }
#else
#define ORVEL_BEGIN extern "C" {
#define ORVEL_END }
#endif
#else
typedef float _Complex orvel_complex;
typedef double _Complex orvel_dcomplex;
#define ORVEL_BEGIN
#define ORVEL_END
#endif

ORVEL_BEGIN

/* A function of the caller's of one real argument. It may call any routine of the library, the one that calls
 * it too; errors that such routines post are reported as those of a call by the user. It may throw a C++
 * exception, which leaves the routine with its storage freed and nothing printed. */
typedef float (*orvel_function)(const float* x);
typedef double (*orvel_dfunction)(const double* x);

/* The address of a routine of any type, and one of an argument of any type. */
typedef void (*orvel_routine)(void);
typedef const void* orvel_address;

ORVEL_END

/* Storage class of the blocks of state: one copy in each thread. The GNU word is used where it exists,
 * because a C++ thread_local from another library is reached through a wrapper that C does not have. */
#if defined(__GNUC__)
#define ORVEL_PER_THREAD __thread
#elif defined(__cplusplus)
#define ORVEL_PER_THREAD thread_local
#else
#define ORVEL_PER_THREAD _Thread_local
#endif

#endif
