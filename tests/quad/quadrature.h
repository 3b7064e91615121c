// tests/quad/quadrature.h - one call of an integrator with its lists, in either precision
#pragma once

#include <algorithm>
#include <array>
#include <vector>

#include "tests/support.h"

namespace orvel_test {

template <class T>
struct Quadrature {
    using Function = T (*)(const T*);
    static constexpr bool wide = sizeof(T) == 8;
    static constexpr auto rule = [] {
        if constexpr (wide)
            return std::array{DQ4AG, DQ9AG, DQ5AG, DQ6AG, DQ7AG, DQ8AG};
        else
            return std::array{Q4AG, Q9AG, Q5AG, Q6AG, Q7AG, Q8AG};
    }();

    T result = -7, error = -7;
    int32_t neval = -7, pieces = -7;
    std::vector<T> lo, hi, res, err;
    std::vector<int32_t> order;

    // Irule 0 is the extrapolating integrator.
    Quadrature(int32_t irule, Function f, T a, T b, T errabs, T errrel, int32_t maxsub)
        : lo(std::max(maxsub, 1)), hi(lo), res(lo), err(lo), order(lo.size())
    {
        const auto call = [&](auto* extrapolating, auto* plain) {
            if (irule == 0)
                extrapolating(f, &a, &b, &errabs, &errrel, &result, &error, &maxsub, &neval, &pieces,
                              lo.data(), hi.data(), res.data(), err.data(), order.data());
            else
                plain(f, &a, &b, &errabs, &errrel, &irule, &result, &error, &maxsub, &neval, &pieces,
                      lo.data(), hi.data(), res.data(), err.data(), order.data());
        };
        if constexpr (wide)
            call(DQ2AGS, DQ2AG);
        else
            call(Q2AGS, Q2AG);
    }
    static void front(Function f, T a, T b, T errrel, T* result, T* error, int32_t irule)
    {
        const T zero = 0;
        if constexpr (wide)
            irule == 0 ? DQDAGS(f, &a, &b, &zero, &errrel, result, error)
                       : DQDAG(f, &a, &b, &zero, &errrel, &irule, result, error);
        else
            irule == 0 ? QDAGS(f, &a, &b, &zero, &errrel, result, error)
                       : QDAG(f, &a, &b, &zero, &errrel, &irule, result, error);
    }
};

}  // namespace orvel_test
