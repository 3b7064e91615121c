// random/twister.cpp - options 8 and 9: Mersenne twisters of 32 and 64 bits; RNGE32, RNSE32, RNIN32 and
// theirs
//
// Source: M. Matsumoto, T. Nishimura, Mersenne twister: a 623-dimensionally equidistributed uniform
// pseudo-random number generator, ACM Transactions on Modeling and Computer Simulation 8, 1998;
// T. Nishimura, Tables of 64-bit Mersenne twisters, the same 10, 2000.
#include <algorithm>

#include "frame/export.h"
#include "frame/routine.h"
#include "random/random.h"
#include "util/util.h"

extern "C" {
constinit __thread uint32_t MT_MASK1 ORVEL_VISIBLE = 0;
constinit __thread uint32_t MT_MASK2 ORVEL_VISIBLE = 0;
constinit __thread uint64_t MT_MASK3[2] ORVEL_VISIBLE = {0, 0};
extern __thread uint32_t mt_mask1_ ORVEL_ALIAS(MT_MASK1);
extern __thread uint32_t mt_mask2_ ORVEL_ALIAS(MT_MASK2);
extern __thread uint64_t mt_mask3_[2] ORVEL_ALIAS(MT_MASK3);
}

namespace orvel::random {

namespace {

// The two twisters, with the places where the thread keeps them.
struct Twister32 : Twister<uint32_t> {
    using Word = uint32_t;
    using Signed = int32_t;
    static constexpr std::string_view key_name = "KEY LENGTH";
    using Init = Routine<float, "RNIN32">;
    using Get = Routine<float, "RNGE32">;
    using Set = Routine<float, "RNSE32">;

    static orvel_mt_state1& place(Stream& g) { return *g.place32; }
    static Word* words(Stream& g) { return g.words32->word; }
    static void refill(Word* w) { state_loops().refill32(w); }
    template <class T>
    static void numbers(const Word* w, int64_t n, T* r)
    {
        isa::of_type<T>(number_loops()).from_words32(w, n, r);
    }
    static void write_masks()
    {
        MT_MASK1 = 0x80000000u;
        MT_MASK2 = 0x7FFFFFFFu;
    }
};

struct Twister64 : Twister<uint64_t> {
    using Word = uint64_t;
    using Signed = int64_t;
    static constexpr std::string_view key_name = "key length";
    using Init = Routine<float, "RNIN64">;
    using Get = Routine<float, "RNGE64">;
    using Set = Routine<float, "RNSE64">;

    static orvel_mt_state1& place(Stream& g) { return *g.place64; }
    static Word* words(Stream& g) { return g.words64->word; }
    static void refill(Word* w) { state_loops().refill64(w); }
    template <class T>
    static void numbers(const Word* w, int64_t n, T* r)
    {
        isa::of_type<T>(number_loops()).from_words64(w, n, r);
    }
    static void write_masks()
    {
        MT_MASK3[0] = 0xFFFFFFFF80000000u;
        MT_MASK3[1] = 0x7FFFFFFFu;
    }
};

template <class Word>
constexpr int shift = 8 * sizeof(Word) - 2;

template <class M>
void seed_twister(Stream& g, int32_t seed)
{
    using Word = typename M::Word;
    Word* const w = M::words(g);
    w[0] = static_cast<Word>(static_cast<typename M::Signed>(seed));
    for (int32_t k = 1; k < M::length; ++k)
        w[k] = M::seeding * (w[k - 1] ^ (w[k - 1] >> shift<Word>)) + static_cast<Word>(k);
    M::place(g) = {1, M::length + 1};
    M::write_masks();
}

template <class M>
void seed_by_key(Stream& g, const typename M::Signed* key, int32_t length)
{
    using Word = typename M::Word;
    seed_twister<M>(g, seed_of_keys);
    Word* const w = M::words(g);
    int32_t k = 1, j = 0;
    const auto mixed = [&](Word factor) { return w[k] ^ ((w[k - 1] ^ (w[k - 1] >> shift<Word>)) * factor); };
    const auto next = [&] {
        if (++k < M::length) return;
        w[0] = w[M::length - 1];
        k = 1;
    };
    for (int32_t n = std::max(M::length, length); n > 0; --n) {
        w[k] = mixed(M::first_key) + static_cast<Word>(key[j]) + static_cast<Word>(j);
        next();
        j = j + 1 < length ? j + 1 : 0;
    }
    for (int32_t n = M::length - 1; n > 0; --n) {
        w[k] = mixed(M::second_key) - static_cast<Word>(k);
        next();
    }
    w[0] = Word{1} << (8 * sizeof(Word) - 1);
}

template <class M, class T>
void fill(Stream& g, int64_t n, T* r, int32_t seed)
{
    orvel_mt_state1& place = M::place(g);
    typename M::Word* const w = M::words(g);
    if (place.ready != 1 || place.position > M::length + 1) [[unlikely]]
        seed_twister<M>(g, seed);
    int32_t at = std::max(place.position, 1) - 1;
    while (n > 0) {
        if (at >= M::length) {
            M::refill(w);
            at = 0;
        }
        const auto count = static_cast<int32_t>(std::min<int64_t>(n, M::length - at));
        if (count == 1)
            *r = static_cast<T>(deviate(w[at]));
        else
            M::numbers(w + at, count, r);
        at += count;
        r += count;
        n -= count;
    }
    place.position = at + 1;
}

template <class M, class T>
void from_twister(const int32_t* nr, T* r)
{
    fill<M>(stream(), *nr, r, M::default_seed);
}

template <class M>
void r1in(const int32_t* iseed)
{
    seed_twister<M>(stream(), *iseed);
}

template <class M>
void rnin(const typename M::Signed* key, const int32_t* len)
{
    typename M::Init me;
    int32_t code = 1;
    util::c1iarg(me.state(), *len, M::key_name, 1, 0, code);
    if (me.failed() || *len == 1) return;
    seed_by_key<M>(stream(), key, *len);
}

template <class M>
void rnge(typename M::Signed* mtable)
{
    M::Get::visit(frame::state());
    Stream& g = stream();
    mtable[0] = M::place(g).ready == 1 ? M::place(g).position : M::length + 2;
    std::copy_n(M::words(g), M::length, mtable + 1);
}

// "Never filled" is restored as such: the next draw seeds the twister. A position below 1 that does not fit
// the block is stored as one that does; both count as 1.
template <class M>
void rnse(const typename M::Signed* mtable)
{
    M::Set::visit(frame::state());
    if (mtable[0] > M::length + 2) return;
    Stream& g = stream();
    const auto position = static_cast<int32_t>(std::max<typename M::Signed>(mtable[0], INT32_MIN));
    M::place(g) = {position == M::length + 2 ? 0 : 1, position};
    std::copy_n(mtable + 1, M::length, M::words(g));
}

}  // namespace

template <class Word, class T>
void fill_twister(Stream& g, int64_t n, T* r, int32_t seed)
{
    fill<std::conditional_t<sizeof(Word) == 4, Twister32, Twister64>>(g, n, r, seed);
}

template void fill_twister<uint32_t>(Stream&, int64_t, float*, int32_t);
template void fill_twister<uint32_t>(Stream&, int64_t, double*, int32_t);
template void fill_twister<uint64_t>(Stream&, int64_t, float*, int32_t);
template void fill_twister<uint64_t>(Stream&, int64_t, double*, int32_t);

}  // namespace orvel::random

using orvel::random::Twister32;
using orvel::random::Twister64;

ORVEL_EXPORT(R1IN32, r1in32_, 1, orvel::random::r1in<Twister32>);
ORVEL_EXPORT(R1IN64, r1in64_, 1, orvel::random::r1in<Twister64>);
ORVEL_EXPORT(R1T32, r1t32_, 2, (orvel::random::from_twister<Twister32, float>));
ORVEL_EXPORT(R1T64, r1t64_, 2, (orvel::random::from_twister<Twister64, float>));
ORVEL_EXPORT(DR1T32, dr1t32_, 2, (orvel::random::from_twister<Twister32, double>));
ORVEL_EXPORT(DR1T64, dr1t64_, 2, (orvel::random::from_twister<Twister64, double>));
ORVEL_EXPORT(RNIN32, rnin32_, 2, orvel::random::rnin<Twister32>);
ORVEL_EXPORT(RNIN64, rnin64_, 2, orvel::random::rnin<Twister64>);
ORVEL_EXPORT(RNGE32, rnge32_, 1, orvel::random::rnge<Twister32>);
ORVEL_EXPORT(RNGE64, rnge64_, 1, orvel::random::rnge<Twister64>);
ORVEL_EXPORT(RNSE32, rnse32_, 1, orvel::random::rnse<Twister32>);
ORVEL_EXPORT(RNSE64, rnse64_, 1, orvel::random::rnse<Twister64>);
