// bench/linsys.cpp - general dense systems against LAPACK routines and Eigen, one thread each
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
    bench::add_system<T, bench::fill_general<T>>(name, n, who, run);
}

const int32_t one = 1;

template <class T>
using Getrf = void(const int32_t*, const int32_t*, T*, const int32_t*, int32_t*, int32_t*);
template <class T>
using Getrs = void(const char*, const int32_t*, const int32_t*, const T*, const int32_t*, const int32_t*, T*,
                   const int32_t*, int32_t*);
template <class T>
using Getri = void(const int32_t*, T*, const int32_t*, const int32_t*, T*, const int32_t*, int32_t*);
template <class T>
using Gecon = void(const char*, const int32_t*, const T*, const int32_t*, const Real<T>*, Real<T>*, T*, void*,
                   int32_t*);
template <class T>
using Lange = Real<T>(const char*, const int32_t*, const int32_t*, const T*, const int32_t*, Real<T>*);

// The routines of a peer for one precision.
template <class T>
struct Lapack {
    std::string name;
    Getrf<T>* getrf;
    Getrs<T>* getrs;
    Getri<T>* getri;
    Gecon<T>* gecon;
    Lange<T>* lange;

    Lapack(const bench::Peer& peer, const std::string& p)
        : name(peer.name), getrf(peer.find<Getrf<T>>(p + "getrf_")), getrs(peer.find<Getrs<T>>(p + "getrs_")),
          getri(peer.find<Getri<T>>(p + "getri_")), gecon(peer.find<Gecon<T>>(p + "gecon_")),
          lange(peer.find<Lange<T>>(p + "lange_"))
    {}
    void factor(System<T>& s) const
    {
        int32_t info = 0;
        s.copy();
        getrf(&s.n, &s.n, s.fact.data(), &s.n, s.ipvt.data(), &info);
    }
    void condition(System<T>& s) const
    {
        int32_t info = 0;
        Real<T> rcond = 0;
        const Real<T> norm = lange("1", &s.n, &s.n, s.a.data(), &s.n, s.rwork.data());
        factor(s);
        void* const work = sizeof(T) == sizeof(Real<T>) ? static_cast<void*>(s.iwork.data())
                                                        : static_cast<void*>(s.rwork.data());
        gecon("1", &s.n, s.fact.data(), &s.n, &norm, &rcond, s.wk.data(), work, &info);
    }
    void solve(System<T>& s) const
    {
        int32_t info = 0;
        factor(s);
        s.x = s.b;
        getrs("N", &s.n, &one, s.fact.data(), &s.n, s.ipvt.data(), s.x.data(), &s.n, &info);
    }
    void invert(System<T>& s) const
    {
        int32_t info = 0;
        const auto room = static_cast<int32_t>(s.wk.size());
        factor(s);
        getri(&s.n, s.fact.data(), &s.n, s.ipvt.data(), s.wk.data(), &room, &info);
    }
};

using Gesvx = void(const char*, const char*, const int32_t*, const int32_t*, double*, const int32_t*, double*,
                   const int32_t*, int32_t*, char*, double*, double*, double*, const int32_t*, double*,
                   const int32_t*, double*, double*, double*, double*, int32_t*, int32_t*);

void set_estimate(int32_t flag)
{
    const int32_t set = 2, option = 17;
    IUMAG("MATH", &set, &option, &one, &flag, 4);
}

template <class T, class Factor, class Condition, class Solve, class Invert>
void add_all(const std::string& p, Factor* lftrg, Condition* lfcrg, Solve* lslrg, Invert* linrg)
{
    for (const int32_t n : {8, 16, 100, 300, 1000, 2000}) {
        add<T>(p + "factor", n, "ours",
               [=](System<T>& s) { lftrg(&s.n, s.a.data(), &s.n, s.fact.data(), &s.n, s.ipvt.data()); });
        add<T>(p + "condition", n, "ours", [=](System<T>& s) {
            Real<T> rcond = 0;
            lfcrg(&s.n, s.a.data(), &s.n, s.fact.data(), &s.n, s.ipvt.data(), &rcond);
        });
        add<T>(p + "solve", n, "ours",
               [=](System<T>& s) { lslrg(&s.n, s.a.data(), &s.n, s.b.data(), &one, s.x.data()); });
        add<T>(p + "solve, no estimate", n, "ours", [=](System<T>& s) {
            set_estimate(1);
            lslrg(&s.n, s.a.data(), &s.n, s.b.data(), &one, s.x.data());
            set_estimate(2);
        });
        add<T>(p + "inverse", n, "ours",
               [=](System<T>& s) { linrg(&s.n, s.a.data(), &s.n, s.fact.data(), &s.n); });
        for (const bench::Peer& peer : bench::peers()) {
            const Lapack<T> lapack(peer, p);
            if (lapack.getrf == nullptr) continue;
            add<T>(p + "factor", n, lapack.name, [=](System<T>& s) { lapack.factor(s); });
            add<T>(p + "condition", n, lapack.name, [=](System<T>& s) { lapack.condition(s); });
            add<T>(p + "solve", n, lapack.name, [=](System<T>& s) { lapack.solve(s); });
            add<T>(p + "solve, no estimate", n, lapack.name, [=](System<T>& s) { lapack.solve(s); });
            add<T>(p + "inverse", n, lapack.name, [=](System<T>& s) { lapack.invert(s); });
        }
        add<T>(p + "factor", n, "Eigen",
               [=](System<T>& s) { bench::eigen_factor(s.n, s.a.data(), s.fact.data(), s.ipvt.data()); });
    }
}

void add_refined()
{
    for (const int32_t n : {16, 100, 300, 1000, 2000}) {
        add<double>("drefined solve", n, "ours",
                    [](System<double>& s) { DLSARG(&s.n, s.a.data(), &s.n, s.b.data(), &one, s.x.data()); });
        for (const bench::Peer& peer : bench::peers())
            if (auto* gesvx = peer.find<Gesvx>("dgesvx_"))
                add<double>("drefined solve", n, peer.name, [=](System<double>& s) {
                    int32_t info = 0;
                    char equed = 'N';
                    double rcond = 0, ferr = 0, berr = 0;
                    std::vector<double>& r = s.rwork;
                    gesvx("N", "N", &s.n, &one, s.a.data(), &s.n, s.fact.data(), &s.n, s.ipvt.data(), &equed,
                          r.data(), r.data(), s.b.data(), &s.n, s.x.data(), &s.n, &rcond, &ferr, &berr,
                          s.wk.data(), s.iwork.data(), &info);
                });
    }
}

const int registered = [] {
    add_all<double>("d", DLFTRG, DLFCRG, DLSLRG, DLINRG);
    add_all<float>("s", LFTRG, LFCRG, LSLRG, LINRG);
    add_all<std::complex<double>>("z", DLFTCG, DLFCCG, DLSLCG, DLINCG);
    add_all<std::complex<float>>("c", LFTCG, LFCCG, LSLCG, LINCG);
    add_refined();
    return 0;
}();

}  // namespace
