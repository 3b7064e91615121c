// tests/hostile/memory.h - where the arrays of a call lie: in front of and behind pages that nobody may touch
#pragma once

#include <cstddef>
#include <cstdint>

#include "tests/hostile/description.h"

namespace hostile {

inline constexpr std::size_t page = 4096;
inline constexpr int most_arguments = 24;

// The storage of one array. Each of the two runs of a call has its own: the first one ends where a page that
// nobody may touch begins, the second one begins behind such a page.
struct Storage {
    std::size_t element = 0;
    int64_t blocks = 0, length = 0, stride = 0;  // as of a Shape
    Role role = Role::in;
    bool is_unreal = false;          // too large to exist, or to be gone through: any touch ends the call
    bool is_sparse = false;          // pages with elements are there, those between are not
    unsigned char* image = nullptr;  // the elements as the call finds them, without what is between
    unsigned char* data[2] = {};
    unsigned char* mapping[2] = {};
    std::size_t mapped = 0;

    std::size_t cells() const { return static_cast<std::size_t>(blocks * length) * element; }
    std::size_t span() const
    {
        return blocks == 0 ? 0 : static_cast<std::size_t>((blocks - 1) * stride + length) * element;
    }
};

// An array of more bytes is too large to be gone through.
inline std::size_t most_bytes = std::size_t{1} << 17;

// The largest array that can be reserved; beyond it there is none.
inline constexpr double largest_span = 0x1p40;

// Takes the shape over, without elements where the blocks would overlap; finds a place for it and room for
// its image. Places of a call are given back by release().
void place(Storage& s, int argument, Shape shape, std::size_t element, std::size_t offset_from_guard);
void release(Storage& s);
void release_images();

// Fills the storage of a run with garbage, and with its elements where the routine reads them.
void prepare(const Storage& s, int run, unsigned char garbage);

// What is wrong with the storage after a run: null, or a few words.
const char* fault_after(const Storage& s, int run, unsigned char garbage);

// Whether the two runs have left the same elements; where they differ, which. One NaN is as good as another.
bool agree(const Storage& s, char type, const unsigned char (&garbage)[2], int64_t& where);

// Whether the storage is as prepare() has left it.
bool is_untouched(const Storage& s, int run, unsigned char garbage);

// Whether a number of the type s, d, c or z that the routine has written is infinite or NaN.
bool has_odd_number(const Storage& s, int run, char type, unsigned char garbage);

// ---- requests of the library for storage, while a call is under way ----------------------------------

struct Requests {
    bool is_watching;
    unsigned char garbage;
    int count, refused;  // so far; the one that is refused, 0 for none
    bool lasting;        // all later ones are refused, too
    int outstanding;
    std::size_t bytes;  // of the last one
    bool is_overrun;
};
extern Requests requests;
void forget_requests();  // those of a call that has been left by a jump

}  // namespace hostile
