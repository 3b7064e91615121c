// bench/kernels_matrices.cpp - matrix kernels against OpenBLAS and BLIS, one thread each
#include <benchmark/benchmark.h>

#include <complex>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "bench/peers.h"
#include "orvel/orvel.h"

namespace {

constexpr std::size_t largest = 3000 * 3000;

// The same matrices for every kernel and library: entries of 1/n size, a diagonal of 1, so that repeated
// solutions and products neither overflow nor vanish.
template <class T>
T* matrix(int which, int32_t n)
{
    static std::vector<T> data[3];
    std::vector<T>& a = data[which];
    if (a.empty()) a.resize(largest);
    std::mt19937 random(static_cast<unsigned>(which));
    std::uniform_real_distribution<float> uniform(-1, 1);
    const auto order = static_cast<std::size_t>(n);
    for (std::size_t k = 0; k < order * order; ++k) a[k] = T(uniform(random) / static_cast<float>(n));
    for (std::size_t k = 0; k < order; ++k) a[k * (order + 1)] = T(1);
    return a.data();
}

using Call = std::function<void()>;

void add(const std::string& name, int32_t n, const std::string& who, std::function<Call()> prepare)
{
    benchmark::RegisterBenchmark((name + "|n = " + std::to_string(n) + "|" + who).c_str(),
                                 [prepare](benchmark::State& state) {
                                     const Call call = prepare();
                                     for (auto _ : state) call();
                                     state.SetItemsProcessed(state.iterations());
                                 });
}

// Ours and the peers', which have the same arguments; `run` binds them to a function.
template <class F, class Run>
void add_all(const std::string& label, const std::string& fortran, F* ours, int32_t n, Run run)
{
    add(label, n, "ours", [=] { return run(ours); });
    for (const bench::Peer& peer : bench::peers())
        if (F* theirs = peer.find<F>(fortran)) add(label, n, peer.name, [=] { return run(theirs); });
}

template <class T, class F>
void add_gemm(const std::string& name, F* ours)
{
    for (const int32_t n : {8, 16, 64, 256, 1000, 2000})
        for (const char* ops : {"NN", "TN", "NT", "TT"}) {
            if (n == 2000 && std::string(ops) != "NN") continue;
            add_all(name + "gemm " + ops, name + "gemm_", ours, n, [=](F* f) -> Call {
                T *a = matrix<T>(0, n), *b = matrix<T>(1, n), *c = matrix<T>(2, n);
                return [=] {
                    const T one(1), zero(0);
                    f(ops, ops + 1, &n, &n, &n, &one, a, &n, b, &n, &zero, c, &n);
                };
            });
        }
}

constexpr int32_t small_and_large[] = {8, 16, 64, 256, 1000};

template <class T, class F>
void add_triangular(const std::string& name, F* ours)
{
    for (const int32_t n : small_and_large)
        for (const char* how : {"LLN", "LUN", "RLN", "LLT"})
            add_all(name + " " + how, name + "_", ours, n, [=](F* f) -> Call {
                T *a = matrix<T>(0, n), *b = matrix<T>(1, n);
                return [=] {
                    const T one(1);
                    f(how, how + 1, how + 2, "N", &n, &n, &one, a, &n, b, &n);
                };
            });
}

template <class T, class F>
void add_two_letters(const std::string& name, F* ours, const char* letters)  // SYMM, SYR2K
{
    for (const int32_t n : small_and_large)
        add_all(name + " " + letters, name + "_", ours, n, [=](F* f) -> Call {
            T *a = matrix<T>(0, n), *b = matrix<T>(1, n), *c = matrix<T>(2, n);
            return [=] {
                const T one(1), zero(0);
                f(letters, letters + 1, &n, &n, &one, a, &n, b, &n, &zero, c, &n);
            };
        });
}

template <class T, class F>
void add_syrk(const std::string& name, F* ours)
{
    for (const int32_t n : small_and_large)
        for (const char* how : {"LN", "UT"})
            add_all(name + " " + how, name + "_", ours, n, [=](F* f) -> Call {
                T *a = matrix<T>(0, n), *c = matrix<T>(2, n);
                return [=] {
                    const T one(1), zero(0);
                    f(how, how + 1, &n, &n, &one, a, &n, &zero, c, &n);
                };
            });
}

const int32_t vector_orders[] = {200, 1000, 3000};
const int32_t step = 1;

template <class T, class F>
void add_gemv(const std::string& name, F* ours)
{
    for (const int32_t n : vector_orders)
        for (const char* trans : {"N", "T"})
            add_all(name + " " + trans, name + "_", ours, n, [=](F* f) -> Call {
                T *a = matrix<T>(0, n), *x = matrix<T>(1, 1500), *y = matrix<T>(2, 1500);
                return [=] {
                    const T tiny(1e-3f), one(1);
                    f(trans, &n, &n, &tiny, a, &n, x, &step, &one, y, &step);
                };
            });
}

template <class T, class F>
void add_symv(const std::string& name, F* ours)
{
    for (const int32_t n : vector_orders)
        for (const char* uplo : {"L", "U"})
            add_all(name + " " + uplo, name + "_", ours, n, [=](F* f) -> Call {
                T *a = matrix<T>(0, n), *x = matrix<T>(1, 1500), *y = matrix<T>(2, 1500);
                return [=] {
                    const T tiny(1e-3f), one(1);
                    f(uplo, &n, &tiny, a, &n, x, &step, &one, y, &step);
                };
            });
}

template <class T, class F>
void add_ger(const std::string& name, F* ours)
{
    for (const int32_t n : vector_orders)
        add_all(name, name + "_", ours, n, [=](F* f) -> Call {
            T *a = matrix<T>(0, n), *x = matrix<T>(1, 1500), *y = matrix<T>(2, 1500);
            return [=] {
                const T tiny(1e-6f);
                f(&n, &n, &tiny, x, &step, y, &step, a, &n);
            };
        });
}

template <class T, class F>
void add_trsv(const std::string& name, F* ours)
{
    for (const int32_t n : vector_orders)
        for (const char* how : {"LN", "UN", "LT", "UT"})
            add_all(name + " " + how, name + "_", ours, n, [=](F* f) -> Call {
                T *a = matrix<T>(0, n), *x = matrix<T>(1, 1500);
                return [=] { f(how, how + 1, "N", &n, a, &n, x, &step); };
            });
}

const int registered = [] {
    add_gemm<double>("d", DGEMM);
    add_gemm<float>("s", SGEMM);
    add_gemm<orvel_dcomplex>("z", ZGEMM);
    add_gemm<orvel_complex>("c", CGEMM);
    add_triangular<double>("dtrsm", DTRSM);
    add_triangular<float>("strsm", STRSM);
    add_triangular<orvel_dcomplex>("ztrsm", ZTRSM);
    add_triangular<double>("dtrmm", DTRMM);
    add_syrk<double>("dsyrk", DSYRK);
    add_syrk<float>("ssyrk", SSYRK);
    add_syrk<orvel_dcomplex>("zsyrk", ZSYRK);
    add_two_letters<orvel_complex>("csyr2k", CSYR2K, "LN");
    add_two_letters<double>("dsymm", DSYMM, "LL");
    add_two_letters<double>("dsyr2k", DSYR2K, "LN");
    add_gemv<double>("dgemv", DGEMV);
    add_gemv<float>("sgemv", SGEMV);
    add_gemv<orvel_dcomplex>("zgemv", ZGEMV);
    add_gemv<orvel_complex>("cgemv", CGEMV);
    add_symv<double>("dsymv", DSYMV);
    add_ger<double>("dger", DGER);
    add_trsv<double>("dtrsv", DTRSV);
    return 0;
}();

}  // namespace
