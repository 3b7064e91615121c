// tests/stack_test.cpp - the stack that calls need, measured on threads whose stack is painted before
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/mman.h>

#include <complex>
#include <cstdio>
#include <cstring>
#include <functional>
#include <numeric>
#include <string>
#include <vector>

#include "orvel/orvel.h"
#include "tests/interface/calls.h"
#include "tests/levels.h"

namespace {

constexpr std::size_t room = 1 << 20;
constexpr unsigned char paint = 0xa5;

// Bytes of the stack that a call touches, less those of a thread that does nothing.
std::size_t stack_of(const std::function<void()>& call)
{
    static unsigned char* const stack = static_cast<unsigned char*>(
        mmap(nullptr, room, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    const auto deepest = [](const std::function<void()>& work) {
        std::memset(stack, paint, room);
        pthread_attr_t attributes;
        pthread_attr_init(&attributes);
        pthread_attr_setstack(&attributes, stack, room);
        pthread_t thread;
        const auto run = [](void* given) -> void* {
            (*static_cast<const std::function<void()>*>(given))();
            return nullptr;
        };
        EXPECT_EQ(pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work)), 0);
        pthread_join(thread, nullptr);
        pthread_attr_destroy(&attributes);
        std::size_t untouched = 0;
        while (stack[untouched] == paint) ++untouched;
        return room - untouched;
    };
    return deepest(call) - deepest([] {});
}

template <class T>
std::vector<T> numbers(std::size_t count)
{
    std::vector<T> v(count);
    for (std::size_t k = 0; k < count; ++k) v[k] = T(static_cast<float>(k * 7919 % 1009) / 500 - 1);
    return v;
}

double f(const double* x) { return 1 / (*x * *x + 1e-6); }

using Z = orvel_dcomplex;
const int32_t one = 1;

struct Row {
    const char* name;
    std::function<void()> call;
};

template <class T, class Transform>
Row transform(const char* name, Transform* routine, int32_t n)
{
    return {name, [=] {
                auto x = numbers<T>(static_cast<std::size_t>(n));
                routine(&n, x.data(), x.data());
            }};
}

// A routine of a square matrix with a dominant diagonal, of a copy of it, and of a vector of twice its order.
template <class T, class Call>
Row matrix(const char* name, int32_t n, Call call)
{
    return {name, [=] {
                auto a = numbers<T>(static_cast<std::size_t>(n * n)), c = a;
                auto x = numbers<T>(static_cast<std::size_t>(2 * n));
                for (int32_t k = 0; k < n; ++k)
                    a[static_cast<std::size_t>(k * (n + 1))] += T(static_cast<float>(n));
                call(a.data(), c.data(), x.data());
            }};
}

// The calls with the largest arrays of their own, family by family.
std::vector<Row> transforms(int32_t n)
{
    return {transform<double>("DFFTRF", DFFTRF, n), transform<double>("DFFTRB", DFFTRB, n),
            transform<float>("FFTRF", FFTRF, n), transform<Z>("DFFTCF", DFFTCF, n),
            transform<orvel_complex>("FFTCB", FFTCB, n)};
}

std::vector<Row> matrices(int32_t n)
{
    static const Z alpha(2, 1);
    static const double two = 2;
    const int32_t back = -2;
    using D = double*;
    using C = Z*;
    return {
        matrix<double>("DLSARG", n, [=](D a, D, D x) { DLSARG(&n, a, &n, x, &one, x); }),
        matrix<Z>("DLSACG", n, [=](C a, C, C x) { DLSACG(&n, a, &n, x, &one, x); }),
        matrix<double>("DLINRG", n, [=](D a, D c, D) { DLINRG(&n, a, &n, c, &n); }),
        matrix<Z>("DLINCG", n, [=](C a, C c, C) { DLINCG(&n, a, &n, c, &n); }),
        matrix<Z>("DLINCT", n, [=](C a, C c, C) { DLINCT(&n, a, &n, &one, c, &n); }),
        matrix<double>("DGEMM", n,
                       [=](D a, D c, D) { DGEMM("T", "N", &n, &n, &n, &two, a, &n, a, &n, &two, c, &n); }),
        matrix<Z>("ZGEMM", n,
                  [=](C a, C c, C) { ZGEMM("C", "N", &n, &n, &n, &alpha, a, &n, a, &n, &alpha, c, &n); }),
        matrix<Z>("ZHEMM", n,
                  [=](C a, C c, C) { ZHEMM("R", "U", &n, &n, &alpha, a, &n, a, &n, &alpha, c, &n); }),
        matrix<Z>("ZTRSM", n, [=](C a, C c, C) { ZTRSM("R", "U", "C", "U", &n, &n, &alpha, a, &n, c, &n); }),
        matrix<double>("DTRMM", n,
                       [=](D a, D c, D) { DTRMM("L", "L", "T", "U", &n, &n, &two, a, &n, c, &n); }),
        matrix<Z>("ZHER2K", n,
                  [=](C a, C c, C) { ZHER2K("U", "N", &n, &n, &alpha, a, &n, a, &n, &two, c, &n); }),
        matrix<Z>("ZHEMV", n,
                  [=](C a, C, C x) { ZHEMV("U", &n, &alpha, a, &n, x, &back, &alpha, x, &back); }),
        matrix<Z>("ZTRSV", n, [=](C a, C, C x) { ZTRSV("U", "N", "U", &n, a, &n, x, &back); })};
}

// All routines, with small arguments.
std::vector<Row> routines()
{
    std::vector<Row> rows;
    for (const orvel_test::RoutineEntry& routine : orvel_test::routines)
        if (orvel_test::is_callable(routine))
            rows.push_back({routine.name, [&] { orvel_test::OrdinaryCall(routine, 1).run(); }});
    return rows;
}

std::vector<Row> others()
{
    static const int32_t n = 10000, off = 0, twister = 9;
    return {{"DQDAGS",
             [] {
                 const double a = -1, b = 1, tolerance = 1e-10, zero = 0;
                 double result, error;
                 DQDAGS(f, &a, &b, &zero, &tolerance, &result, &error);
             }},
            {"DCSINT",
             [] {
                 auto y = numbers<double>(n), x = y, breaks = y, c = numbers<double>(4 * n);
                 std::iota(x.begin(), x.end(), 0.0);
                 DCSINT(&n, x.data(), y.data(), breaks.data(), c.data());
             }},
            transform<double>("DSVRGN", DSVRGN, n),
            {"DRNUN",
             [] {
                 RNOPT(&twister);
                 DRNUN(&n, numbers<double>(n).data());
             }},
            {"message", [] {
                 ERSET(&off, &one, &off);
                 NDAYS(&off, &off, &one);
             }}};
}

}  // namespace

TEST(Stack, OfACallIsAtMost64KB)
{
    orvel_bind_unit(
        6, [](void*, int32_t, const char*, size_t) {}, nullptr);
    orvel_set_thread_defaults(0, -1, 0);
    orvel_test::on_every_level([](const std::string& level) {
        std::size_t most = 0;
        std::string deepest;
        const auto measure = [&](const std::vector<Row>& rows, int32_t n) {
            for (const Row& row : rows) {
                const std::size_t bytes = stack_of(row.call);
                EXPECT_LE(bytes, std::size_t{64} << 10) << row.name << " " << n;
                if (bytes <= most) continue;
                most = bytes;
                deepest = row.name + std::string(" of ") + std::to_string(n);
            }
        };
        for (const int32_t n : {255, 2048, 4096, 6561, 8192, 10007, 16384, 131072, 1 << 21})
            measure(transforms(n), n);
        for (const int32_t n : {3, 8, 32, 33, 100, 161, 300}) measure(matrices(n), n);
        measure(routines(), 0);
        measure(others(), 0);
        std::printf("%s: at most %zu bytes, by %s\n", level.c_str(), most, deepest.c_str());
    });
    orvel_set_thread_defaults(0, 2, 2);
    orvel_bind_unit(6, nullptr, nullptr);
}
