// fft/isa/composites.h - short lengths with factors beside 2, as one or two steps, and their roots
#pragma once

#include <stdint.h>

namespace orvel::fft {

// Transforms of length `first` for each of `second` columns, and then of length `second`; a length that one
// step takes has a second one of 1. The steps are the same at all levels, which have tables in common; they
// are the fastest ones measured.
struct Composite {
    int first, second;

    constexpr int length() const { return first * second; }
};
inline constexpr Composite composites[] = {
    {2, 1},   {3, 1},   {5, 1},   {6, 1},   {7, 1},   {9, 1},   {10, 1},  {12, 1},  {14, 1},  {15, 1},
    {6, 3},   {4, 5},   {7, 3},   {4, 6},   {5, 5},   {9, 3},   {4, 7},   {6, 5},   {7, 5},   {4, 9},
    {4, 10},  {6, 7},   {9, 5},   {12, 4},  {7, 7},   {10, 5},  {6, 9},   {4, 14},  {15, 4},  {9, 7},
    {10, 7},  {8, 9},   {15, 5},  {4, 20},  {9, 9},   {12, 7},  {15, 6},  {12, 8},  {14, 7},  {25, 4},
    {15, 7},  {12, 9},  {8, 14},  {8, 15},  {25, 5},  {14, 9},  {15, 9},  {20, 7},  {12, 12}, {15, 10},
    {8, 20},  {12, 14}, {25, 7},  {15, 12}, {12, 16}, {14, 14}, {20, 10}, {15, 14}, {14, 16}, {15, 15},
    {12, 20}, {25, 10}, {20, 14}, {20, 15}, {20, 16}, {25, 14}, {15, 25}, {20, 20}, {20, 25}};
inline constexpr int composite_count = sizeof composites / sizeof composites[0];
inline constexpr int longest_composite = 500;

// What the steps of a length n take. Cosines and sines are those of 2 pi k / n. Rows have those of k = b * j
// for j < first, for each 0 < b < second: first the cosines, then the sines. Halves are those of k / 2 < n /
// 4 for a real sequence of twice the length.
template <class R>
struct CompositePlace {
    int place, n;
    const R *rows, *halves;
};

}  // namespace orvel::fft
