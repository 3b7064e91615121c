// tests/hostile/arguments.cpp - the arrays of a call: their places and what is in them
#include "tests/hostile/arguments.h"

#include <cctype>
#include <climits>
#include <cstring>

#include "orvel/orvel.h"

namespace hostile {

namespace {

bool is_integer(char type) { return type == 'i' || type == 'l'; }

}  // namespace

std::size_t size_of(char type)
{
    switch (type) {
        case 't':
            return 1;
        case 'i':
        case 's':
            return 4;
        case 'z':
        case 'q':
            return 16;
        default:
            return 8;
    }
}

Arguments::Arguments(const Routine& routine, Draw& draw, Mood mood, bool is_large)
    : routine_(routine), is_large_(is_large)
{
    for (int k = 0; k < most_arguments; ++k) owner_[k] = k;
    choose_scalars(draw, mood);
    choose_leading(draw, mood);
    choose_aliases(draw);
    choose_odd_integers(draw, mood);
    for (int k = 0; k < routine.count; ++k)
        if (is_data(k)) place_one(k, draw);
    for (int k = 0; k < routine.count; ++k)
        if (is_data(k) && owns(k)) fill_one(k, draw, mood);
    if (!is_unreal_) initialise_tables(draw, mood);
    for (int k = 0; k < routine.count; ++k) {
        const Argument& a = argument(k);
        if (a.type == 'f') addresses_[k] = reinterpret_cast<void*>(single_function);
        if (a.type == 'g') addresses_[k] = reinterpret_cast<void*>(double_function);
        if (a.type == 'a') addresses_[k] = host_function(routine, a, draw);
    }
}

Arguments::~Arguments()
{
    for (int k = 0; k < routine_.count; ++k) release(storages_[k]);
    release_images();
}

void* const* Arguments::addresses(int run)
{
    int places = routine_.count;
    for (int k = 0; k < routine_.count; ++k) {
        if (is_data(k)) addresses_[k] = storage(k).data[run] + offset_[k];
        if (argument(k).type == 't' && argument(k).is_array)
            addresses_[places++] = reinterpret_cast<void*>(texts_[k].size());
    }
    return addresses_;
}

Shape Arguments::shape_of(int k) const
{
    const Argument& a = argument(k);
    if (a.shape != nullptr) return a.shape(values_);
    const double length = a.type == 't' && a.is_array ? static_cast<double>(texts_[k].size() + 1) : 1;
    return {1, length, length};
}

void Arguments::place_one(int k, Draw& draw)
{
    const Argument& a = argument(k);
    Storage& s = storages_[owner_[k]];
    Shape shape = shape_of(k);
    const std::size_t element = size_of(a.type);
    if (a.type == 't' && a.is_array && std::string_view(routine_.header) != "host.h") shape.length -= 1;
    const auto end_of = [](Shape x) {
        return x.blocks < 1 || x.length < 1 ? 0 : (x.blocks - 1) * x.stride + x.length;
    };
    double& span = spans_[owner_[k]];
    span = std::max(span, end_of(shape) + static_cast<double>(offset_[k] / element));
    if (owner_[k] != k) {  // all in one array without gaps, which is compared as a whole
        shape = {1, span, span};
        release(s);
    }
    s.role = owner_[k] != k ? Role::inout : a.role;
    const std::size_t components = a.type == 'c' || a.type == 'z' ? 2 : 1;
    place(s, owner_[k], shape, element, draw.one_in(4) ? element / components * (components - 1) : 0);
    is_impossible_ = is_impossible_ || span * static_cast<double>(element) > largest_span;
    is_unreal_ = is_unreal_ || s.is_unreal;
}

void Arguments::fill_one(int k, Draw& draw, Mood mood)
{
    const Argument& a = argument(k);
    Storage& s = storages_[k];
    if (s.is_unreal) return;
    const int64_t count = s.blocks * s.length;
    if (!a.is_array && is_integer(a.type)) {
        std::memcpy(s.image, &integers_[k], s.element);
    } else if (a.type == 't') {
        for (int64_t j = 0; j < count; ++j)
            s.image[j] = static_cast<std::size_t>(j) < texts_[k].size()
                             ? static_cast<unsigned char>(texts_[k][static_cast<std::size_t>(j)])
                             : 0;
    } else if (a.type == 'p' || a.type == 'q') {
        for (int64_t j = 0; j < count; ++j) {
            const auto whole = static_cast<int32_t>(draw.one_in(8) ? static_cast<int64_t>(draw.bits())
                                                                   : draw.between(-1, 4));
            std::memset(s.image + static_cast<std::size_t>(j) * s.element, 0x40, s.element);
            std::memcpy(s.image + static_cast<std::size_t>(j) * s.element, &whole, sizeof whole);
        }
    } else if (s.role != Role::out && s.role != Role::scratch) {
        fill_numbers(s.image, a.type, count, draw, mood);
        if (mood == Mood::odd_data && draw.one_in(2))
            return void(is_ascending_ = is_ascending_ && !a.is_ascending);
        is_ascending_ = is_ascending_ && (!a.is_ascending || shape_ascending(s, a, draw));
        if (mood == Mood::ordinary || !draw.one_in(3)) make_dominant(s, a, diagonal_row(a, s));
    } else {
        is_ascending_ = is_ascending_ && !a.is_ascending;
    }
}

// Where the diagonal of a matrix stands: -1 for one whose rows and columns are those of the array.
int64_t Arguments::diagonal_row(const Argument&, const Storage& s) const
{
    const auto number = [&](std::string_view name) -> int64_t {
        for (int k = 0; k < routine_.count; ++k)
            if (argument(k).name == name) return integers_[k];
        return -1;
    };
    const int64_t kl = number("KL"), ku = number("KU"), kd = number("KD"), k = number("K");
    if (kl >= 0 && ku >= 0 && s.length == kl + ku + 1) return ku;
    if (kl >= 0 && ku >= 0 && s.length == 2 * kl + ku + 1) return kl + ku;
    if (kd >= 0 && s.length == kd + 1) return kd;
    for (int j = 0; j < routine_.count && k >= 0 && s.length == k + 1 && s.length != s.blocks; ++j)
        if (argument(j).name == std::string_view("UPLO")) return values_[j] == 'U' ? k : 0;
    return -1;
}

// Work vectors of transforms are those of the length, as long as nobody has spoiled them.
void Arguments::initialise_tables(Draw& draw, Mood mood)
{
    const std::string_view name = routine_.name;
    const bool is_double = name[0] == 'D';
    const std::string_view worker = name.substr(is_double ? 1 : 0);
    if (std::string_view(routine_.header) != "fft.h" || worker[1] < '2' || worker[1] > '3') return;
    auto n = static_cast<int32_t>(integers_[0]);
    if (n < 1 || (mood == Mood::anything && draw.one_in(2))) return;
    if (mood == Mood::odd_data && draw.one_in(4)) n = static_cast<int32_t>(draw.between(1, n));
    static unsigned char table[1 << 20];
    const std::size_t element = is_double ? 8 : 4;
    if (static_cast<std::size_t>(4 * n + 15) * element > sizeof table) return;
    if (worker[3] == 'C')
        is_double ? DFFTCI(&n, reinterpret_cast<double*>(table)) : FFTCI(&n, reinterpret_cast<float*>(table));
    else
        is_double ? DFFTRI(&n, reinterpret_cast<double*>(table)) : FFTRI(&n, reinterpret_cast<float*>(table));
    for (int k = 1; k < routine_.count; ++k) {
        const std::string_view array = argument(k).name;
        const std::size_t from = array == "WA"    ? static_cast<std::size_t>(n)
                                 : array == "FAC" ? static_cast<std::size_t>(2 * n)
                                                  : 0;
        if (!array.starts_with('W') && array != "FAC") continue;
        Storage& s = storages_[k];
        std::memcpy(s.image, table + from * element, std::min(s.cells(), sizeof table - from * element));
        if (mood != Mood::ordinary && draw.one_in(3))
            fill_numbers(s.image + s.element * static_cast<std::size_t>(draw.below(s.length)),
                         argument(k).type, 1, draw, Mood::odd_data);
    }
}

}  // namespace hostile
