// tests/hostile/scalars.cpp - sizes, leading dimensions, increments, letters and texts of a call; who shares
// an array
#include <cctype>
#include <climits>
#include <cstring>

#include "tests/hostile/arguments.h"

namespace hostile {

namespace {

constexpr int64_t odd_integers[] = {0,       1,           2,       -1,          -2,         3,
                                    INT_MIN, INT_MIN + 1, INT_MAX, INT_MAX - 1, 1000000000, -1000000000,
                                    46341,   65536,       65537,   1 << 30};

constexpr std::string_view texts[] = {"MATH",
                                      "math",
                                      "ON",
                                      "on",
                                      "OFF",
                                      "SET",
                                      "set",
                                      "GET",
                                      "LAPACK",
                                      "LINPAK",
                                      "HOSTILE",
                                      "NAME ",
                                      "",
                                      " ",
                                      "x",
                                      "a text with %(I1), %(R2) and %(L3).  It goes on behind a period. ",
                                      "%(",
                                      "%(I",
                                      "%(L1)%(L1)%(L1)",
                                      "%/%/ %/x",
                                      ".  ",
                                      "%(C1)%(Z9)%(D1)",
                                      " -17",
                                      "2147483648",
                                      "+0",
                                      "12x",
                                      "N\0b",
                                      "%(I1) = 1.5E+3, -7 (8, =9",
                                      "a name of more than thirty-two characters, which is cut"};

int64_t any_integer(Draw& draw)
{
    if (draw.one_in(4)) return static_cast<int32_t>(draw.bits() >> 32 >> draw.below(31));
    return draw.one_of(odd_integers) + (draw.one_in(8) ? draw.between(-1, 1) : 0);
}

int64_t size(Draw& draw, bool is_large)
{
    if (is_large) return draw.between(300, 640);
    const int64_t kind = draw.below(100);
    if (kind < 6) return 0;
    if (kind < 18) return 1;
    if (kind < 80) return draw.between(2, 8);
    if (kind < 97) return draw.between(9, 40);
    return draw.one_in(4) ? draw.between(100, 180) : draw.between(30, 100);
}

int64_t other_integer(Draw& draw)
{
    const int64_t kind = draw.below(10);
    if (kind < 6) return draw.between(1, 12);
    if (kind < 8) return draw.between(-8, 8);
    return static_cast<int32_t>(draw.bits() >> 32 >> draw.below(31));
}

// One of "a,b,c".
std::string_view one_choice(const char* choices, Draw& draw)
{
    std::string_view rest = choices;
    for (int64_t skip = draw.below(1 + std::count(rest.begin(), rest.end(), ',')); skip > 0; --skip)
        rest.remove_prefix(rest.find(',') + 1);
    return rest.substr(0, rest.find(','));
}

std::string_view any_text(Draw& draw)
{
    static char room[1200];
    if (!draw.one_in(8)) return draw.one_of(texts);
    const auto length = static_cast<std::size_t>(draw.one_in(4) ? draw.below(1200) : draw.below(40));
    for (std::size_t k = 0; k < length; ++k)
        room[k] = static_cast<char>(draw.one_in(3) ? draw.below(256) : "%(I1) .,/L9=-E"[draw.below(14)]);
    return {room, length};
}

bool is_integer(char type) { return type == 'i' || type == 'l'; }

}  // namespace

// Sizes, increments, letters and other integers, texts.
void Arguments::choose_scalars(Draw& draw, Mood mood)
{
    for (int k = 0; k < routine_.count; ++k) {
        const Argument& a = argument(k);
        if (a.type == 't' && a.is_array) {
            texts_[k] = any_text(draw);
        } else if (a.type == 't') {
            texts_[k] = a.kind == Kind::choice ? one_choice(a.choices, draw) : draw.one_of(texts);
            if (texts_[k].empty()) texts_[k] = "?";
            if (mood >= Mood::odd_sizes && draw.one_in(6)) texts_[k] = draw.one_of({"X", "\0", "\xff", "n"});
            values_[k] = std::toupper(static_cast<unsigned char>(texts_[k][0]));
        } else if (is_integer(a.type) && !a.is_array && a.kind != Kind::leading) {
            constexpr int64_t increments[] = {1, 1, 1, -1, 2, -2, 3, -3, 5, 0};
            integers_[k] = a.kind == Kind::increment ? draw.one_of(increments)
                           : a.kind == Kind::size    ? size(draw, is_large_)
                                                     : other_integer(draw);
            if (a.kind == Kind::choice) integers_[k] = std::atoi(one_choice(a.choices, draw).data());
            values_[k] = static_cast<double>(integers_[k]);
        }
    }
}

// The rows of the array that a leading dimension belongs to, and some more.
void Arguments::choose_leading(Draw& draw, Mood mood)
{
    constexpr double mark = 1e9 + 7;
    for (int k = 0; k < routine_.count; ++k) {
        if (argument(k).kind != Kind::leading) continue;
        double rows = 1;
        values_[k] = mark;
        for (int j = 0; j < routine_.count; ++j)
            if (argument(j).shape != nullptr && shape_of(j).stride == mark)
                rows = std::max(rows, shape_of(j).length);
        const bool is_far = mood >= Mood::odd_sizes && draw.one_in(32);
        integers_[k] = static_cast<int64_t>(std::min(rows, 2e9)) + (is_far ? 100000000 : draw.below(4));
        integers_[k] = std::min<int64_t>(integers_[k], INT_MAX);
        values_[k] = static_cast<double>(integers_[k]);
    }
}

// Arguments that may be the same array; vectors of kernels may overlap as well.
void Arguments::choose_aliases(Draw& draw)
{
    const bool is_kernel = std::string_view(routine_.header) == "kernels.h";
    for (int k = 0; k < routine_.count; ++k) {
        const Argument& a = argument(k);
        int other = a.may_be;
        for (int j = 0; j < k && is_kernel && a.shape != nullptr; ++j)
            if (argument(j).shape != nullptr && argument(j).type == a.type && draw.one_in(8)) other = j;
        if (other < 0 || owner_[other] != other || argument(other).type != a.type || !draw.one_in(3))
            continue;
        if (argument(other).is_array != a.is_array) continue;
        owner_[k] = other;
        if (is_kernel) offset_[k] = static_cast<std::size_t>(draw.below(6)) * size_of(a.type);
        if (a.equal[0] < 0) continue;
        int64_t &first = integers_[a.equal[0]], &second = integers_[a.equal[1]];
        first = second = std::max(first, second);
        values_[a.equal[0]] = values_[a.equal[1]] = static_cast<double>(first);
    }
}

void Arguments::choose_odd_integers(Draw& draw, Mood mood)
{
    if (mood < Mood::odd_sizes) return;
    int numbers[most_arguments], count = 0;
    for (int k = 0; k < routine_.count; ++k)
        if (is_integer(argument(k).type) && !argument(k).is_array) numbers[count++] = k;
    for (int64_t times = count > 0 ? draw.between(1, 2) : 0; times > 0; --times) {
        const int k = numbers[draw.below(count)];
        integers_[k] = draw.one_in(4) ? integers_[k] + draw.between(-2, 2) : any_integer(draw);
        if (argument(k).kind == Kind::increment && !draw.one_in(8))
            integers_[k] %= 100;  // far ones cost pages
        values_[k] = static_cast<double>(static_cast<int32_t>(integers_[k]));
        if (argument(k).type == 'i') integers_[k] = static_cast<int32_t>(integers_[k]);
    }
    limit_time();
}

// Steps of zero stay in one place, where no page ends a loop of 2^31 of them.
void Arguments::limit_time()
{
    bool stays = false, moves = false;
    for (int k = 0; k < routine_.count; ++k)
        if (argument(k).kind == Kind::increment) (integers_[k] == 0 ? stays : moves) = true;
    for (int k = 0; k < routine_.count && stays && !moves; ++k) {
        if (argument(k).kind != Kind::size) continue;
        integers_[k] %= 100000;
        values_[k] = static_cast<double>(integers_[k]);
    }
}

}  // namespace hostile
