// frame/scratch.h - working storage of one call
#pragma once

#include <cstdint>
#include <cstdlib>

namespace orvel {

// An uninitialised array on the heap, aligned to 64 bytes, freed with the object. Sizes are formed in 64 bits
// and checked; a negative count is 0. Failure is a false, never an abort.
template <class T>
class Scratch {
public:
    Scratch() = default;
    ~Scratch() { std::free(data_); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    [[nodiscard]] bool allocate(int64_t count) { return allocate(count, 1); }

    [[nodiscard]] bool allocate(int64_t rows, int64_t columns)
    {
        constexpr int64_t alignment = 64;
        int64_t bytes = 0;
        if (__builtin_mul_overflow(rows > 0 ? rows : 0, columns > 0 ? columns : 0, &bytes) ||
            __builtin_mul_overflow(bytes, static_cast<int64_t>(sizeof(T)), &bytes) ||
            __builtin_add_overflow(bytes, alignment - 1, &bytes))
            return false;
        bytes = bytes < alignment ? alignment : bytes / alignment * alignment;
        std::free(data_);
        data_ = static_cast<T*>(std::aligned_alloc(alignment, static_cast<std::size_t>(bytes)));
        return data_ != nullptr;
    }

    operator T*() { return data_; }

private:
    T* data_ = nullptr;
};

// The same, on the stack up to `Room` elements.
template <class T, int64_t Room = 32>
class SmallScratch {
public:
    SmallScratch() = default;
    SmallScratch(const SmallScratch&) = delete;
    SmallScratch& operator=(const SmallScratch&) = delete;

    [[nodiscard]] bool allocate(int64_t count) { return allocate(count, 1); }

    [[nodiscard]] bool allocate(int64_t rows, int64_t columns)
    {
        int64_t count = 0;
        data_ = reinterpret_cast<T*>(room_);
        if (!__builtin_mul_overflow(rows > 0 ? rows : 0, columns > 0 ? columns : 0, &count) && count <= Room)
            return true;
        if (!heap_.allocate(rows, columns)) return false;
        data_ = heap_;
        return true;
    }

    operator T*() { return data_; }

private:
    alignas(64) unsigned char room_[Room * static_cast<int64_t>(sizeof(T))];
    T* data_ = nullptr;
    Scratch<T> heap_;
};

}  // namespace orvel
