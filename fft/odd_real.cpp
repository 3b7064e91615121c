// fft/odd_real.cpp - real transforms of odd length
//
// A length r M with a first factor r up to 13 is that of r parts of length M, two of which are real and
// imaginary part of one complex transform. Its N numbers are the roots of the complex transform, and behind
// them the roots that join the parts. Primes, and products of larger factors, are complex transforms of the
// whole length; they keep the roots 1..(N - 1) / 2, cosine and sine in turn. Both take scratch from the heap;
// without it they are direct sums.
#include "fft/odd_real.h"

#include <algorithm>

#include "fft/chirp.h"
#include "fft/transform.h"
#include "frame/scratch.h"

namespace orvel::fft {

namespace {

bool has_parts(const Factors& f) { return f.count > 1 && f.factor[0] <= most_parts; }

// The factors of a part.
Factors part_of(const Factors& f)
{
    Factors h;
    h.n = f.n / f.factor[0];
    for (int32_t k = 1; k < f.count; ++k) h.append(f.factor[k]);
    return h;
}

// Numbers in the tables of the complex transform of a part.
int64_t numbers_of_tables(const Factors& h)
{
    return h.count == 1 && h.n > largest_general ? h.n + 1 : 2 * (h.n - h.factor[0]);
}

// The parts of a transform, with storage.
template <class R>
class InParts {
public:
    InParts(const Factors& f, const R* stored) : h_(part_of(f)), tables_(stored)
    {
        x_ = {h_.n, static_cast<int>(f.factor[0]), nullptr, stored + numbers_of_tables(h_), circle_, nullptr};
        roots<R>(x_.r, 0, 1, x_.r, 2, circle_, circle_ + 1);
    }

    [[nodiscard]] bool allocate()
    {
        const int64_t m = x_.m;
        if (!memory_.allocate(x_.r + 5, m)) return false;
        x_.parts = memory_;
        given_ = x_.parts + (x_.r + 1) * m;
        spare_ = given_ + 2 * m;
        return true;
    }

    void forward(const R* in, R* out)
    {
        const int64_t m = x_.m, r = x_.r;
        for (int64_t i = 0; i < r; i += i == 0 ? 1 : 2) {
            for (int64_t j = 0; j < m; ++j) {
                given_[j] = in[j * r + i];
                given_[m + j] = i == 0 ? R(0) : in[j * r + i + 1];
            }
            run(given_, x_.parts + (i + 1) / 2 * 2 * m, true);
        }
        x_.c = out;
        isa::of_type<R>(odd_part_loops()).join(x_);
    }

    void backward(const R* in, R* out)
    {
        const int64_t m = x_.m, r = x_.r;
        x_.c = const_cast<R*>(in);
        isa::of_type<R>(odd_part_loops()).split(x_);
        for (int64_t i = 0; i < r; i += i == 0 ? 1 : 2) {
            run(x_.parts + (i + 1) / 2 * 2 * m, given_, false);
            for (int64_t j = 0; j < m; ++j) {
                out[j * r + i] = given_[j];
                if (i > 0) out[j * r + i + 1] = given_[m + j];
            }
        }
    }

private:
    void run(R* from, R* to, bool forward)
    {
        transform<R>(h_, tables_,
                     {split_format(from, x_.m, forward), split_format(to, x_.m, forward), spare_});
    }

    Factors h_;
    const R* tables_;
    R circle_[2 * most_parts];
    OddParts<R> x_;
    R *given_, *spare_;
    SmallScratch<R, 1024> memory_;
};

// ---- complex transforms of the whole length ------------------------------------------------------------

template <class R>
struct Root {
    R cosine, sine;
};

template <class R>
Root<R> root_at(int64_t n, const R* circle, int64_t k)
{
    if (k == 0) return {1, 0};
    const R* const root = circle + 2 * (std::min(k, n - k) - 1);
    return {root[0], k <= n - k ? root[1] : -root[1]};
}

template <class R>
void tables_from_circle(const Factors& f, const R* circle, R* tables)
{
    const auto put = [&](int64_t k, R* cosine, R* sine) {
        const Root<R> root = root_at(f.n, circle, k);
        *cosine = root.cosine;
        *sine = root.sine;
    };
    if (f.count == 1)
        return for_chirp(f.n, [&](int64_t j, int64_t at) { put(at, tables + 2 * j, tables + 2 * j + 1); });
    int64_t l = 1;
    for (int32_t k = 0; k < f.count; ++k) {
        const int64_t r = f.factor[k], step = f.n / (l * r);
        for (int64_t i = 1; k > 0 && i < r; ++i, tables += 2 * l)
            for (int64_t e = 0; e < l; ++e) put(i * e * step, tables + e, tables + l + e);
        l *= r;
    }
}

// Both ways; false where there is no memory.
template <class R, bool forward>
[[nodiscard]] bool transform_whole(const Factors& f, const R* in, R* out, const R* circle)
{
    const int64_t n = f.n;
    Scratch<R> memory;
    if (!memory.allocate(8, n)) return false;
    R *const re = memory, *const im = re + n, *const result = im + n, *const spare = result + 2 * n,
             *const tables = spare + 2 * n;
    re[0] = in[0];
    im[0] = 0;
    for (int64_t k = 1; k <= n / 2; ++k) {
        re[k] = forward ? in[k] : in[2 * k - 1];
        re[n - k] = forward ? in[n - k] : in[2 * k - 1];
        im[k] = forward ? R(0) : in[2 * k];
        im[n - k] = forward ? R(0) : -in[2 * k];
    }
    tables_from_circle<R>(f, circle, tables);
    transform<R>(f, tables, {split_format(re, n, forward), split_format(result, n, forward), spare});
    out[0] = result[0];
    for (int64_t k = 1; k <= n / 2; ++k) {
        out[forward ? 2 * k - 1 : k] = result[k];
        out[forward ? 2 * k : n - k] = result[forward ? n + k : n - k];
    }
    return true;
}

// ---- direct sums ---------------------------------------------------------------------------------------

template <class R>
void forward_by_sums(int64_t n, const R* in, R* out, R* scratch)
{
    std::copy(in, in + n, scratch);
    for (int64_t k = 0; k <= n / 2; ++k) {
        R re = 0, im = 0;
        for_multiples<R>(n, k, n, [&](int64_t j, R cosine, R sine) {
            re += scratch[j] * cosine;
            im -= scratch[j] * sine;
        });
        out[k == 0 ? 0 : 2 * k - 1] = re;
        if (k > 0) out[2 * k] = im;
    }
}

template <class R>
void backward_by_sums(int64_t n, const R* in, R* out, R* scratch)
{
    std::copy(in, in + n, scratch);
    for (int64_t j = 0; j < n; ++j) {
        R sum = 0;
        for_multiples<R>(n, j, n / 2 + 1, [&](int64_t k, R cosine, R sine) {
            if (k > 0) sum += scratch[2 * k - 1] * cosine - scratch[2 * k] * sine;
        });
        out[j] = scratch[0] + 2 * sum;
    }
}

}  // namespace

template <class R>
void store_odd_roots(const Factors& f, R* stored)
{
    if (!has_parts(f)) return roots<R>(f.n, 1, 1, f.n / 2, 2, stored, stored + 1);
    const Factors h = part_of(f);
    store_tables<R>(h, stored);
    const int64_t half = (h.n - 1) / 2;
    R* twiddles = stored + numbers_of_tables(h);
    for (int64_t i = 1; i < f.factor[0] - 1; ++i, twiddles += 2 * half)
        roots<R>(f.n, i, i, half, 1, twiddles, twiddles + half);
}

template <class R, bool forward>
void odd_transform(const Factors& f, const R* in, R* out, R* scratch, const R* stored)
{
    if (has_parts(f)) {
        InParts<R> parts(f, stored);
        if (parts.allocate()) return forward ? parts.forward(in, out) : parts.backward(in, out);
    } else if (transform_whole<R, forward>(f, in, out, stored)) {
        return;
    }
    (forward ? forward_by_sums<R> : backward_by_sums<R>)(f.n, in, out, scratch);
}

template void store_odd_roots(const Factors&, float*);
template void store_odd_roots(const Factors&, double*);
template void odd_transform<float, true>(const Factors&, const float*, float*, float*, const float*);
template void odd_transform<float, false>(const Factors&, const float*, float*, float*, const float*);
template void odd_transform<double, true>(const Factors&, const double*, double*, double*, const double*);
template void odd_transform<double, false>(const Factors&, const double*, double*, double*, const double*);

}  // namespace orvel::fft
