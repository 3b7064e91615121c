// tests/linsys/kinds.h - matrices of a kind, and arrays that end at a page that must not be touched
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

#include "tests/linsys/members.h"

// Name<T>, the members of a kind of matrix by the type of its elements; the names of complex ones end in C.
#define ORVEL_TEST_MEMBERS_OF(Name, T, p, K)                              \
    template <>                                                           \
    struct Name<T> {                                                      \
        [[maybe_unused]] static constexpr auto solve = p##LSL##K;         \
        [[maybe_unused]] static constexpr auto refined_solve = p##LSA##K; \
        [[maybe_unused]] static constexpr auto factor = p##LFT##K;        \
        [[maybe_unused]] static constexpr auto condition = p##LFC##K;     \
        [[maybe_unused]] static constexpr auto back = p##LFS##K;          \
        [[maybe_unused]] static constexpr auto refine = p##LFI##K;        \
        [[maybe_unused]] static constexpr auto determinant = p##LFD##K;   \
    }
#define ORVEL_TEST_KIND(Name, K, C)                        \
    template <class T>                                     \
    struct Name;                                           \
    ORVEL_TEST_MEMBERS_OF(Name, float, , K);               \
    ORVEL_TEST_MEMBERS_OF(Name, double, D, K);             \
    ORVEL_TEST_MEMBERS_OF(Name, std::complex<float>, , C); \
    ORVEL_TEST_MEMBERS_OF(Name, std::complex<double>, D, C)

namespace orvel_test {

// Numbers that begin behind one forbidden page and end, but for what aligns them, at another.
template <class T>
class Guarded {
public:
    explicit Guarded(const std::vector<T>& values) : size_(values.size())
    {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        const std::size_t bytes = size_ * sizeof(T), whole = (bytes + page - 1) / page * page;
        mapped_ = whole + 2 * page;
        base_ = static_cast<char*>(mmap(nullptr, mapped_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        mprotect(base_ + page, whole, PROT_READ | PROT_WRITE);
        first_ = reinterpret_cast<T*>(base_ + page + whole - bytes);
        std::uninitialized_copy(values.begin(), values.end(), first_);
    }
    ~Guarded() { munmap(base_, mapped_); }
    Guarded(const Guarded&) = delete;
    Guarded& operator=(const Guarded&) = delete;

    T* data() { return first_; }
    std::vector<T> values() const { return {first_, first_ + size_}; }

private:
    std::size_t size_, mapped_;
    char* base_;
    T* first_;
};

template <class T>
bool is_number(T x)
{
    return !std::isnan(std::real(x)) && !std::isnan(std::imag(x));
}

// The magnitude that norms are made of.
template <class T>
long double size_of(T x)
{
    return std::abs(static_cast<long double>(std::real(x))) +
           std::abs(static_cast<long double>(std::imag(x)));
}

// The largest |A x - b| / (|A| |x| + |b|) of a row; A(i, j) is element(i, j).
template <class T, class Element>
long double backward_error(int32_t n, Element element, const std::vector<T>& x, const std::vector<T>& b)
{
    long double worst = 0;
    for (int32_t i = 0; i < n; ++i) {
        auto residual = wide(b[static_cast<std::size_t>(i)]);
        long double size = std::abs(residual);
        for (int32_t j = 0; j < n; ++j) {
            const auto e = wide(element(i, j)), factor = wide(x[static_cast<std::size_t>(j)]);
            residual -= e * factor;
            size += std::abs(e) * std::abs(factor);
        }
        if (!(std::abs(residual) <= worst * size)) worst = std::abs(residual) / size;
    }
    return worst;
}

// 1 / (norm of A * norm of its inverse), from the elements.
template <class A, class Inverse>
long double reciprocal_condition(int32_t n, A a, Inverse inverse)
{
    long double norm = 0, norm_of_inverse = 0;
    for (int32_t j = 0; j < n; ++j) {
        long double sum = 0, sum_of_inverse = 0;
        for (int32_t i = 0; i < n; ++i) sum += size_of(a(i, j)), sum_of_inverse += size_of(inverse(i, j));
        norm = std::max(norm, sum);
        norm_of_inverse = std::max(norm_of_inverse, sum_of_inverse);
    }
    return 1 / norm / norm_of_inverse;
}

}  // namespace orvel_test
