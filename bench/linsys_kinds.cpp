// bench/linsys_kinds.cpp - triangular and positive definite systems against LAPACK routines and Eigen, one
// thread each
#include <algorithm>
#include <complex>
#include <functional>
#include <string>
#include <vector>

#include "bench/linsys_eigen.h"
#include "bench/peers.h"
#include "bench/systems.h"
#include "orvel/orvel.h"

namespace {

using orvel_test::Real;

using bench::System;

template <class T>
void add(const std::string& name, int32_t n, const std::string& who, std::function<void(System<T>&)> run)
{
    bench::add_system<T, bench::fill_definite<T>>(name, n, who, run);
}

const int32_t one = 1, two = 2;

template <class T>
using Potrf = void(const char*, const int32_t*, T*, const int32_t*, int32_t*);
template <class T>
using Potrs = void(const char*, const int32_t*, const int32_t*, const T*, const int32_t*, T*, const int32_t*,
                   int32_t*);
template <class T>
using Pocon = void(const char*, const int32_t*, const T*, const int32_t*, const Real<T>*, Real<T>*, T*, void*,
                   int32_t*);
template <class T>
using Lanhe = Real<T>(const char*, const char*, const int32_t*, const T*, const int32_t*, Real<T>*);
template <class T>
using Trcon = void(const char*, const char*, const char*, const int32_t*, const T*, const int32_t*, Real<T>*,
                   T*, void*, int32_t*);
template <class T>
using Trtrs = void(const char*, const char*, const char*, const int32_t*, const int32_t*, const T*,
                   const int32_t*, T*, const int32_t*, int32_t*);
template <class T>
using Posvx = void(const char*, const char*, const int32_t*, const int32_t*, T*, const int32_t*, T*,
                   const int32_t*, char*, Real<T>*, T*, const int32_t*, T*, const int32_t*, Real<T>*,
                   Real<T>*, Real<T>*, T*, void*, int32_t*);

// The routines of a peer for one precision.
template <class T>
struct Lapack {
    std::string name;
    Potrf<T>*potrf, *potri;
    Potrs<T>* potrs;
    Pocon<T>* pocon;
    Lanhe<T>* lanhe;
    Trcon<T>* trcon;
    Trtrs<T>* trtrs;
    Posvx<T>* posvx;

    Lapack(const bench::Peer& peer, const std::string& p)
        : name(peer.name), potrf(peer.find<Potrf<T>>(p + "potrf_")), potri(peer.find<Potrf<T>>(p + "potri_")),
          potrs(peer.find<Potrs<T>>(p + "potrs_")), pocon(peer.find<Pocon<T>>(p + "pocon_")),
          lanhe(peer.find<Lanhe<T>>(p + (p == "s" || p == "d" ? "lansy_" : "lanhe_"))),
          trcon(peer.find<Trcon<T>>(p + "trcon_")), trtrs(peer.find<Trtrs<T>>(p + "trtrs_")),
          posvx(peer.find<Posvx<T>>(p + "posvx_"))
    {}
    static void* work(System<T>& s)
    {
        return sizeof(T) == sizeof(Real<T>) ? static_cast<void*>(s.iwork.data())
                                            : static_cast<void*>(s.rwork.data());
    }
    void factor(System<T>& s) const
    {
        int32_t info = 0;
        s.copy();
        potrf("U", &s.n, s.fact.data(), &s.n, &info);
    }
    void condition(System<T>& s) const
    {
        int32_t info = 0;
        Real<T> rcond = 0;
        const Real<T> norm = lanhe("1", "U", &s.n, s.a.data(), &s.n, s.rwork.data());
        factor(s);
        pocon("U", &s.n, s.fact.data(), &s.n, &norm, &rcond, s.wk.data(), work(s), &info);
    }
    void solve(System<T>& s) const
    {
        int32_t info = 0;
        factor(s);
        s.x = s.b;
        potrs("U", &s.n, &one, s.fact.data(), &s.n, s.x.data(), &s.n, &info);
    }
    void refined(System<T>& s) const
    {
        int32_t info = 0;
        char equed = 'N';
        Real<T> rcond = 0, ferr = 0, berr = 0;
        posvx("N", "U", &s.n, &one, s.a.data(), &s.n, s.fact.data(), &s.n, &equed, s.rwork.data(), s.b.data(),
              &s.n, s.x.data(), &s.n, &rcond, &ferr, &berr, s.wk.data(), work(s), &info);
    }
    void invert(System<T>& s) const
    {
        int32_t info = 0;
        factor(s);
        potri("U", &s.n, s.fact.data(), &s.n, &info);
    }
    void triangle(System<T>& s) const
    {
        int32_t info = 0;
        s.x = s.b;
        trtrs("U", "N", "N", &s.n, &one, s.a.data(), &s.n, s.x.data(), &s.n, &info);
    }
    void triangle_condition(System<T>& s) const
    {
        int32_t info = 0;
        Real<T> rcond = 0;
        trcon("1", "U", "N", &s.n, s.a.data(), &s.n, &rcond, s.wk.data(), work(s), &info);
    }
};

#define ORVEL_BENCH_KINDS(T, p, P, K, RT)                                                               \
    void add_##p(int32_t n)                                                                             \
    {                                                                                                   \
        add<T>(#p "cholesky", n, "ours",                                                                \
               [](System<T>& s) { P##LFT##K(&s.n, s.a.data(), &s.n, s.fact.data(), &s.n); });           \
        add<T>(#p "cholesky", n, "Eigen",                                                               \
               [](System<T>& s) { bench::eigen_cholesky(s.n, s.a.data(), s.fact.data()); });            \
        add<T>(#p "cholesky, condition", n, "ours", [](System<T>& s) {                                  \
            Real<T> rcond = 0;                                                                          \
            P##LFC##K(&s.n, s.a.data(), &s.n, s.fact.data(), &s.n, &rcond);                             \
        });                                                                                             \
        add<T>(#p "definite solve", n, "ours",                                                          \
               [](System<T>& s) { P##LSL##K(&s.n, s.a.data(), &s.n, s.b.data(), s.x.data()); });        \
        add<T>(#p "definite refined solve", n, "ours",                                                  \
               [](System<T>& s) { P##LSA##K(&s.n, s.a.data(), &s.n, s.b.data(), s.x.data()); });        \
        add<T>(#p "triangle", n, "ours",                                                                \
               [](System<T>& s) { P##LSL##RT(&s.n, s.a.data(), &s.n, s.b.data(), &two, s.x.data()); }); \
        add<T>(#p "triangle, condition", n, "ours", [](System<T>& s) {                                  \
            Real<T> rcond = 0;                                                                          \
            P##LFC##RT(&s.n, s.a.data(), &s.n, &two, &rcond);                                           \
        });                                                                                             \
        add_peers<T>(#p, n);                                                                            \
    }

template <class T>
void add_peers(const std::string& p, int32_t n)
{
    for (const bench::Peer& peer : bench::peers()) {
        const Lapack<T> lapack(peer, p);
        if (lapack.potrf == nullptr) continue;
        add<T>(p + "cholesky", n, lapack.name, [=](System<T>& s) { lapack.factor(s); });
        add<T>(p + "cholesky, condition", n, lapack.name, [=](System<T>& s) { lapack.condition(s); });
        add<T>(p + "definite solve", n, lapack.name, [=](System<T>& s) { lapack.solve(s); });
        add<T>(p + "definite refined solve", n, lapack.name, [=](System<T>& s) { lapack.refined(s); });
        if constexpr (sizeof(T) == sizeof(Real<T>))
            add<T>(p + "definite inverse", n, lapack.name, [=](System<T>& s) { lapack.invert(s); });
        add<T>(p + "triangle", n, lapack.name, [=](System<T>& s) { lapack.triangle(s); });
        add<T>(p + "triangle, condition", n, lapack.name,
               [=](System<T>& s) { lapack.triangle_condition(s); });
    }
}

ORVEL_BENCH_KINDS(double, d, D, DS, RT)
ORVEL_BENCH_KINDS(float, s, , DS, RT)
ORVEL_BENCH_KINDS(std::complex<double>, z, D, DH, CT)
ORVEL_BENCH_KINDS(std::complex<float>, c, , DH, CT)

const int registered = [] {
    for (const int32_t n : {16, 100, 300, 1000, 2000}) {
        add_d(n), add_s(n), add_z(n), add_c(n);
        add<double>("ddefinite inverse", n, "ours",
                    [](System<double>& s) { DLINDS(&s.n, s.a.data(), &s.n, s.fact.data(), &s.n); });
        add<float>("sdefinite inverse", n, "ours",
                   [](System<float>& s) { LINDS(&s.n, s.a.data(), &s.n, s.fact.data(), &s.n); });
    }
    return 0;
}();

}  // namespace
