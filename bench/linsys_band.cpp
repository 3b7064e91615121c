// bench/linsys_band.cpp - band systems, general and positive definite, against LAPACK routines, one thread
// each
#include <benchmark/benchmark.h>

#include <complex>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "bench/peers.h"
#include "orvel/orvel.h"
#include "tests/numbers.h"

namespace {

// KL = KU = k; one array for A, one for the factors of either side.
template <class T>
struct BandSystem {
    static constexpr int32_t n = 10000;
    int32_t k, lda, ldfac;
    std::vector<T> a, fact, b, x;
    std::vector<int32_t> ipvt = std::vector<int32_t>(n);

    explicit BandSystem(int32_t width) : k(width), lda(2 * k + 1), ldfac(3 * k + 1), b(n), x(n)
    {
        a.resize(std::size_t{1} * static_cast<std::size_t>(lda) * n);
        fact.resize(static_cast<std::size_t>(ldfac) * n);
        std::mt19937 random(7);
        std::uniform_real_distribution<float> uniform(-1, 1);
        for (T& e : a) e = T(uniform(random));
        for (T& e : b) e = T(uniform(random));
    }
    // As the peers want it: the diagonals that fill are above A.
    void copy()
    {
        for (std::size_t j = 0; j < n; ++j)
            std::memcpy(
                static_cast<void*>(&fact[j * static_cast<std::size_t>(ldfac) + static_cast<std::size_t>(k)]),
                &a[j * static_cast<std::size_t>(lda)], sizeof(T) * static_cast<std::size_t>(lda));
    }
};

template <class T>
void add(const std::string& name, int32_t k, const std::string& who,
         std::function<void(BandSystem<T>&)> prepare, std::function<void(BandSystem<T>&)> run)
{
    benchmark::RegisterBenchmark((name + "|n = 10000, k = " + std::to_string(k) + "|" + who).c_str(),
                                 [=](benchmark::State& state) {
                                     BandSystem<T> s(k);
                                     prepare(s);
                                     for (auto _ : state) run(s);
                                     state.SetItemsProcessed(state.iterations());
                                 });
}

const int32_t one = 1;

template <class T>
using Gbtrf = void(const int32_t*, const int32_t*, const int32_t*, const int32_t*, T*, const int32_t*,
                   int32_t*, int32_t*);
template <class T>
using Gbtrs = void(const char*, const int32_t*, const int32_t*, const int32_t*, const int32_t*, const T*,
                   const int32_t*, const int32_t*, T*, const int32_t*, int32_t*);

template <class T, class Factor, class Solve>
void add_all(const std::string& p, Factor factor, Solve solve)
{
    for (const int32_t k : {2, 20, 200}) {
        const auto ours = [=](BandSystem<T>& s) {
            factor(&s.n, s.a.data(), &s.lda, &s.k, &s.k, s.fact.data(), &s.ldfac, s.ipvt.data());
        };
        add<T>(
            p + "band factor", k, "ours", [](BandSystem<T>&) {}, ours);
        add<T>(p + "band solve", k, "ours", ours, [=](BandSystem<T>& s) {
            solve(&s.n, s.fact.data(), &s.ldfac, &s.k, &s.k, s.ipvt.data(), s.b.data(), &one, s.x.data());
        });
        for (const bench::Peer& peer : bench::peers()) {
            auto* const gbtrf = peer.find<Gbtrf<T>>(p + "gbtrf_");
            auto* const gbtrs = peer.find<Gbtrs<T>>(p + "gbtrs_");
            if (gbtrf == nullptr || gbtrs == nullptr) continue;
            const auto theirs = [=](BandSystem<T>& s) {
                int32_t info = 0;
                s.copy();
                gbtrf(&s.n, &s.n, &s.k, &s.k, s.fact.data(), &s.ldfac, s.ipvt.data(), &info);
            };
            add<T>(
                p + "band factor", k, peer.name, [](BandSystem<T>&) {}, theirs);
            add<T>(p + "band solve", k, peer.name, theirs, [=](BandSystem<T>& s) {
                int32_t info = 0;
                s.x = s.b;
                gbtrs("N", &s.n, &s.k, &s.k, &one, s.fact.data(), &s.ldfac, s.ipvt.data(), s.x.data(), &s.n,
                      &info);
            });
        }
    }
}

template <class T>
using Pbtrf = void(const char*, const int32_t*, const int32_t*, T*, const int32_t*, int32_t*);
template <class T>
using Pbtrs = void(const char*, const int32_t*, const int32_t*, const int32_t*, const T*, const int32_t*, T*,
                   const int32_t*, int32_t*);

// KD = k, the upper part of a diagonally dominant band.
template <class T, class Factor, class Solve>
void add_definite(const std::string& p, Factor factor, Solve solve)
{
    const auto dominant = [](BandSystem<T>& s) {
        s.lda = s.k + 1;
        for (std::size_t j = 0; j < BandSystem<T>::n; ++j)
            s.a[j * static_cast<std::size_t>(s.lda) + static_cast<std::size_t>(s.k)] =
                T(static_cast<float>(4 * s.k));
    };
    for (const int32_t k : {2, 20, 200}) {
        const auto ours = [=](BandSystem<T>& s) {
            factor(&s.n, s.a.data(), &s.lda, &s.k, s.fact.data(), &s.lda);
        };
        const auto ready = [=](BandSystem<T>& s) { dominant(s), ours(s); };
        add<T>(p + "definite band factor", k, "ours", dominant, ours);
        add<T>(p + "definite band solve", k, "ours", ready,
               [=](BandSystem<T>& s) { solve(&s.n, s.fact.data(), &s.lda, &s.k, s.b.data(), s.x.data()); });
        for (const bench::Peer& peer : bench::peers()) {
            auto* const pbtrf = peer.find<Pbtrf<T>>(p + "pbtrf_");
            auto* const pbtrs = peer.find<Pbtrs<T>>(p + "pbtrs_");
            if (pbtrf == nullptr || pbtrs == nullptr) continue;
            const auto theirs = [=](BandSystem<T>& s) {
                int32_t info = 0;
                std::memcpy(static_cast<void*>(s.fact.data()), s.a.data(),
                            sizeof(T) * static_cast<std::size_t>(s.lda) * BandSystem<T>::n);
                pbtrf("U", &s.n, &s.k, s.fact.data(), &s.lda, &info);
            };
            add<T>(p + "definite band factor", k, peer.name, dominant, theirs);
            add<T>(
                p + "definite band solve", k, peer.name, [=](BandSystem<T>& s) { dominant(s), theirs(s); },
                [=](BandSystem<T>& s) {
                    int32_t info = 0;
                    s.x = s.b;
                    pbtrs("U", &s.n, &s.k, &one, s.fact.data(), &s.lda, s.x.data(), &s.n, &info);
                });
        }
    }
}

const int registered = [] {
    add_all<double>("d", DLFTRB, DLFSRB);
    add_all<float>("s", LFTRB, LFSRB);
    add_all<std::complex<double>>("z", DLFTCB, DLFSCB);
    add_all<std::complex<float>>("c", LFTCB, LFSCB);
    add_definite<double>("d", DLFTQS, DLFSQS);
    add_definite<float>("s", LFTQS, LFSQS);
    add_definite<std::complex<double>>("z", DLFTQH, DLFSQH);
    add_definite<std::complex<float>>("c", LFTQH, LFSQH);
    return 0;
}();

}  // namespace
