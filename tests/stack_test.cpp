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

// The calls with the largest arrays of their own, family by family.
std::vector<Row> transforms(int32_t n)
{
    return {{"DFFTRF",
             [=] {
                 auto x = numbers<double>(n);
                 DFFTRF(&n, x.data(), x.data());
             }},
            {"DFFTRB",
             [=] {
                 auto x = numbers<double>(n);
                 DFFTRB(&n, x.data(), x.data());
             }},
            {"FFTRF",
             [=] {
                 auto x = numbers<float>(n);
                 FFTRF(&n, x.data(), x.data());
             }},
            {"DFFTCF",
             [=] {
                 auto x = numbers<Z>(n);
                 DFFTCF(&n, x.data(), x.data());
             }},
            {"FFTCB", [=] {
                 auto x = numbers<orvel_complex>(n);
                 FFTCB(&n, x.data(), x.data());
             }}};
}
std::vector<Row> solvers(int32_t n)
{
    const auto square = static_cast<std::size_t>(n * n);
    return {{"DLSARG",
             [=] {
                 auto a = numbers<double>(square), x = numbers<double>(n);
                 DLSARG(&n, a.data(), &n, x.data(), &one, x.data());
             }},
            {"DLSACG",
             [=] {
                 auto a = numbers<Z>(square), x = numbers<Z>(n);
                 DLSACG(&n, a.data(), &n, x.data(), &one, x.data());
             }},
            {"DLINRG",
             [=] {
                 auto a = numbers<double>(square);
                 DLINRG(&n, a.data(), &n, a.data(), &n);
             }},
            {"DLINCG",
             [=] {
                 auto a = numbers<Z>(square);
                 DLINCG(&n, a.data(), &n, a.data(), &n);
             }},
            {"DLINCT", [=] {
                 auto a = numbers<Z>(square);
                 for (int32_t k = 0; k < n; ++k) a[static_cast<std::size_t>(k * (n + 1))] = 3;
                 DLINCT(&n, a.data(), &n, &one, a.data(), &n);
             }}};
}
std::vector<Row> kernels(int32_t n)
{
    const auto square = static_cast<std::size_t>(n * n);
    static const Z alpha(2, 1);
    static const double two = 2;
    const int32_t back = -2;
    return {{"DGEMM",
             [=] {
                 auto a = numbers<double>(square), c = a;
                 DGEMM("T", "N", &n, &n, &n, &two, a.data(), &n, a.data(), &n, &two, c.data(), &n);
             }},
            {"ZGEMM",
             [=] {
                 auto a = numbers<Z>(square), c = a;
                 ZGEMM("C", "N", &n, &n, &n, &alpha, a.data(), &n, a.data(), &n, &alpha, c.data(), &n);
             }},
            {"ZHEMM",
             [=] {
                 auto a = numbers<Z>(square), c = a;
                 ZHEMM("R", "U", &n, &n, &alpha, a.data(), &n, a.data(), &n, &alpha, c.data(), &n);
             }},
            {"ZTRSM",
             [=] {
                 auto a = numbers<Z>(square), c = a;
                 ZTRSM("R", "U", "C", "U", &n, &n, &alpha, a.data(), &n, c.data(), &n);
             }},
            {"DTRMM",
             [=] {
                 auto a = numbers<double>(square), c = a;
                 DTRMM("L", "L", "T", "U", &n, &n, &two, a.data(), &n, c.data(), &n);
             }},
            {"ZHER2K",
             [=] {
                 auto a = numbers<Z>(square), c = a;
                 ZHER2K("U", "N", &n, &n, &alpha, a.data(), &n, a.data(), &n, &two, c.data(), &n);
             }},
            {"ZHEMV",
             [=] {
                 auto a = numbers<Z>(square), x = numbers<Z>(2 * n);
                 ZHEMV("U", &n, &alpha, a.data(), &n, x.data(), &back, &alpha, x.data(), &back);
             }},
            {"ZTRSV", [=] {
                 auto a = numbers<Z>(square), x = numbers<Z>(2 * n);
                 ZTRSV("U", "N", "U", &n, a.data(), &n, x.data(), &back);
             }}};
}
std::vector<Row> others(int32_t n)
{
    const int32_t terminal = 5;
    return {{"DQDAGS",
             [] {
                 double a = -1, b = 1, tolerance = 1e-10, zero = 0, result, error;
                 DQDAGS(f, &a, &b, &zero, &tolerance, &result, &error);
             }},
            {"DUVMIF",
             [] {
                 double guess = 0.5, step = 0.1, bound = 10, accuracy = 1e-6, x;
                 const int32_t most = 100;
                 DUVMIF([](const double* t) { return (*t - 1) * (*t - 1); }, &guess, &step, &bound, &accuracy,
                        &most, &x);
             }},
            {"DCSINT",
             [=] {
                 auto y = numbers<double>(n), x = y, breaks = y;
                 std::iota(x.begin(), x.end(), 0.0);
                 std::vector<double> c(4 * y.size());
                 DCSINT(&n, x.data(), y.data(), breaks.data(), c.data());
             }},
            {"DSVRGN",
             [=] {
                 auto x = numbers<double>(n), y = x;
                 DSVRGN(&n, x.data(), y.data());
             }},
            {"DRNUN",
             [=] {
                 auto x = numbers<double>(n);
                 DRNUN(&n, x.data());
             }},
            {"RNOPT 9",
             [=] {
                 const int32_t option = 9;
                 RNOPT(&option);
                 auto x = numbers<double>(n);
                 DRNUN(&n, x.data());
             }},
            {"DGAMMA",
             [] {
                 const double x = -10.5;
                 DGAMMA(&x);
             }},
            {"message", [=] {
                 const int32_t off = 0, all = 0;
                 ERSET(&all, &one, &off);
                 const int32_t bad = 0;
                 NDAYS(&bad, &bad, &terminal);
             }}};
}

}  // namespace

TEST(Stack, OfACallIsAtMost64KB)
{
    orvel_bind_unit(
        6, [](void*, int32_t, const char*, size_t) {}, nullptr);
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
        for (const int32_t n : {255, 1024, 2048, 4096, 8192, 10007, 16384, 131072, 6561, 1 << 21})
            measure(transforms(n), n);
        for (const int32_t n : {3, 32, 33, 100, 300}) measure(solvers(n), n);
        for (const int32_t n : {8, 33, 100, 161, 300}) measure(kernels(n), n);
        measure(others(10000), 10000);
        std::printf("%s: at most %zu bytes, by %s\n", level.c_str(), most, deepest.c_str());
    });
    orvel_bind_unit(6, nullptr, nullptr);
}
