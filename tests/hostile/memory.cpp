// tests/hostile/memory.cpp - guarded storage of arguments, and of the scratch that routines ask for
#include "tests/hostile/memory.h"

#include <sys/mman.h>

#include <cstdlib>
#include <cstring>

namespace hostile {

namespace {

constexpr std::size_t room = std::size_t{1} << 25, margin = 64, small = std::size_t{1} << 20;
constexpr double most_sparse_blocks = 64;
constexpr std::size_t most_in_image = std::size_t{1} << 28;

unsigned char* map(std::size_t bytes, int protection)
{
    void* const found = mmap(nullptr, bytes, protection, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (found == MAP_FAILED) std::abort();
    return static_cast<unsigned char*>(found);
}

// Readable and writable, between two pages that are neither.
unsigned char* guarded(std::size_t bytes)
{
    unsigned char* const all = map(bytes + 2 * page, PROT_NONE);
    if (mprotect(all + page, bytes, PROT_READ | PROT_WRITE) != 0) std::abort();
    return all + page;
}

unsigned char* slot(int argument)
{
    static unsigned char* slots[most_arguments];
    if (slots[argument] == nullptr) slots[argument] = guarded(room);
    return slots[argument];
}

unsigned char* nowhere(int argument)
{
    static unsigned char* const reserved =
        map(static_cast<std::size_t>(largest_span) * most_arguments, PROT_NONE);
    return reserved + static_cast<std::size_t>(largest_span) * static_cast<std::size_t>(argument);
}

unsigned char* const images = guarded(most_in_image);
std::size_t images_used = 0;

// Calls body(place in the storage, place in the image, bytes) for each block.
template <class Body>
void each_block(const Storage& s, Body body)
{
    const auto bytes = static_cast<std::size_t>(s.length) * s.element;
    for (int64_t b = 0; b < s.blocks; ++b)
        body(static_cast<std::size_t>(b * s.stride) * s.element, static_cast<std::size_t>(b) * bytes, bytes);
}

void place_sparsely(Storage& s)
{
    s.is_sparse = true;
    s.mapped = (s.span() + page - 1) / page * page + 2 * page;
    for (int run = 0; run < 2; ++run) {
        s.mapping[run] = map(s.mapped, PROT_NONE);
        s.data[run] = s.mapping[run] + (run == 0 ? s.mapped - page - s.span() : page);
        each_block(s, [&](std::size_t at, std::size_t, std::size_t bytes) {
            const auto first = reinterpret_cast<uintptr_t>(s.data[run] + at) / page * page;
            const auto last = reinterpret_cast<uintptr_t>(s.data[run] + at + bytes - 1) / page * page;
            mprotect(reinterpret_cast<void*>(first), last - first + page, PROT_READ | PROT_WRITE);
        });
    }
}

bool is_all(const unsigned char* from, const unsigned char* to, unsigned char value)
{
    for (; from < to; ++from)
        if (*from != value) return false;
    return true;
}

}  // namespace

void place(Storage& s, int argument, Shape shape, std::size_t element, std::size_t offset_from_guard)
{
    const bool is_one_element = shape.length == 1 && shape.stride == 0;  // taken many times
    if (shape.blocks < 1 || shape.length < 1 ||
        (shape.blocks > 1 && shape.stride < shape.length && !is_one_element))
        shape = {};
    const double count = shape.blocks * shape.length, size = static_cast<double>(element),
                 span = ((shape.blocks - 1) * shape.stride + shape.length) * size;
    s.element = element;
    s.is_unreal = count * size > static_cast<double>(most_bytes) || span > largest_span ||
                  (span > static_cast<double>(most_bytes) && shape.blocks > most_sparse_blocks);
    s.is_sparse = false;
    s.image = images + images_used;
    if (s.is_unreal) {
        s.blocks = 1;
        s.length = s.stride = static_cast<int64_t>(std::min(span, largest_span) / size);
        s.data[0] = s.data[1] = nowhere(argument);
        return;
    }
    s.blocks = static_cast<int64_t>(shape.stride == 0 ? std::min(shape.blocks, 1.0) : shape.blocks);
    s.length = static_cast<int64_t>(shape.length);
    s.stride = static_cast<int64_t>(shape.stride);
    images_used += (s.cells() + 63) / 64 * 64;
    if (images_used > most_in_image) std::abort();
    if (s.span() > most_bytes) return place_sparsely(s);
    s.data[0] = slot(argument) + room - s.span() - offset_from_guard;
    s.data[1] = slot(argument) + offset_from_guard;
}

void release(Storage& s)
{
    if (s.is_sparse)
        for (unsigned char* mapping : s.mapping) munmap(mapping, s.mapped);
    s.is_sparse = false;
}

void release_images() { images_used = 0; }

void prepare(const Storage& s, int run, unsigned char garbage)
{
    if (s.is_unreal) return;
    unsigned char* const data = s.data[run];
    if (!s.is_sparse) std::memset(data - (run == 0 ? margin : 0), garbage, s.span() + margin);
    const bool is_read = s.role != Role::out && s.role != Role::scratch;
    if (!is_read && !s.is_sparse) return;
    each_block(s, [&](std::size_t at, std::size_t in_image, std::size_t bytes) {
        if (is_read)
            std::memcpy(data + at, s.image + in_image, bytes);
        else
            std::memset(data + at, garbage, bytes);
    });
}

const char* fault_after(const Storage& s, int run, unsigned char garbage)
{
    if (s.is_unreal) return nullptr;
    const unsigned char* const data = s.data[run];
    const char* fault = nullptr;
    if (!s.is_sparse) {
        const unsigned char* const beyond = run == 0 ? data - margin : data + s.span();
        if (!is_all(beyond, beyond + margin, garbage)) return "was written outside";
        const auto bytes = static_cast<std::size_t>(s.length) * s.element;
        for (int64_t b = 0; b + 1 < s.blocks && s.stride > s.length; ++b) {
            const unsigned char* const end =
                data + static_cast<std::size_t>(b * s.stride) * s.element + bytes;
            if (!is_all(end, end + static_cast<std::size_t>(s.stride - s.length) * s.element, garbage))
                return "was written between its columns or elements";
        }
    }
    if (s.role == Role::in)
        each_block(s, [&](std::size_t at, std::size_t in_image, std::size_t bytes) {
            if (std::memcmp(data + at, s.image + in_image, bytes) != 0) fault = "is input and has changed";
        });
    return fault;
}

namespace {

template <class R>
bool is_nan(const unsigned char* p)
{
    R number;
    std::memcpy(&number, p, sizeof number);
    return number != number;
}

// Whether both are no numbers. Which one an operation makes of two depends on the order of its operands,
// which is the compiler's.
bool are_nan(const unsigned char* a, const unsigned char* b, char type)
{
    if (type == 's' || type == 'c') return is_nan<float>(a) && is_nan<float>(b);
    return (type == 'd' || type == 'z') && is_nan<double>(a) && is_nan<double>(b);
}

}  // namespace

bool agree(const Storage& s, char type, const unsigned char (&garbage)[2], int64_t& where)
{
    if (s.is_unreal || s.role == Role::in || s.role == Role::scratch) return true;
    bool same = true;
    const bool may_stay = s.role == Role::out;  // elements that neither run has written
    each_block(s, [&](std::size_t at, std::size_t in_image, std::size_t bytes) {
        const unsigned char *const a = s.data[0] + at, *const b = s.data[1] + at;
        if (!same || std::memcmp(a, b, bytes) == 0) return;
        const std::size_t size = type == 's' || type == 'c' ? sizeof(float) : sizeof(double);
        for (std::size_t k = 0; k < bytes && same; ++k)
            if (a[k] != b[k] && !(may_stay && a[k] == garbage[0] && b[k] == garbage[1]) &&
                !are_nan(a + k / size * size, b + k / size * size, type)) {
                same = false;
                where = static_cast<int64_t>((in_image + k) / s.element);
            }
    });
    return same;
}

bool is_untouched(const Storage& s, int run, unsigned char garbage)
{
    if (s.is_unreal || s.role == Role::scratch || s.role == Role::in) return true;
    bool same = true;
    each_block(s, [&](std::size_t at, std::size_t in_image, std::size_t bytes) {
        const unsigned char* const data = s.data[run] + at;
        same = same && (s.role == Role::out ? is_all(data, data + bytes, garbage)
                                            : std::memcmp(data, s.image + in_image, bytes) == 0);
    });
    return same;
}

bool has_odd_number(const Storage& s, int run, char type, unsigned char garbage)
{
    const bool is_single = type == 's' || type == 'c';
    bool found = false;
    if (s.is_unreal) return true;
    each_block(s, [&](std::size_t at, std::size_t, std::size_t bytes) {
        for (std::size_t k = 0; k < bytes; k += is_single ? 4 : 8) {
            double x = 0;
            float y = 0;
            const unsigned char* const number = s.data[run] + at + k;
            if (is_all(number, number + (is_single ? 4 : 8), garbage)) continue;
            if (is_single)
                std::memcpy(&y, number, sizeof y);
            else
                std::memcpy(&x, number, sizeof x);
            found = found || !std::isfinite(x) || !std::isfinite(y);
        }
    });
    return found;
}

// ---- requests ----------------------------------------------------------------------------------------

Requests requests{};

namespace {

constexpr int scratch_slots = 32;
// More is refused: arrays of that size end a call anyway.
constexpr std::size_t most_given = std::size_t{1} << 26;
struct Given {
    unsigned char* begin;
    std::size_t size;
    bool is_mapped;
} given[scratch_slots];

// The end of what is given is the end of a page; the library asks for multiples of its alignment.
unsigned char* give(std::size_t size)
{
    static unsigned char* slots[scratch_slots];
    for (int k = 0; k < scratch_slots; ++k) {
        if (given[k].begin != nullptr) continue;
        const bool is_large = size > small;
        unsigned char* base = nullptr;
        if (is_large) {
            base = guarded((size + page - 1) / page * page);
        } else {
            if (slots[k] == nullptr) slots[k] = guarded(small);
            base = slots[k];
        }
        const std::size_t whole = is_large ? (size + page - 1) / page * page : small;
        given[k] = {base + whole - size, size, is_large};
        const std::size_t before = whole - size >= margin ? margin : 0;
        std::memset(given[k].begin - before, requests.garbage, before + (is_large ? page : size));
        ++requests.outstanding;
        return given[k].begin;
    }
    return nullptr;
}

void take_back(Given& g)
{
    const auto gap = reinterpret_cast<uintptr_t>(g.begin) % page;
    if (gap >= margin && !is_all(g.begin - margin, g.begin, requests.garbage)) requests.is_overrun = true;
    if (g.is_mapped) {
        const std::size_t whole = (g.size + page - 1) / page * page;
        munmap(g.begin + g.size - whole - page, whole + 2 * page);
    } else {
        std::memset(g.begin, static_cast<unsigned char>(~requests.garbage),
                    std::min<std::size_t>(g.size, 512));
    }
    g.begin = nullptr;
    --requests.outstanding;
}

}  // namespace

void forget_requests()
{
    for (Given& g : given)
        if (g.begin != nullptr) take_back(g);
}

}  // namespace hostile

// The linker sends the requests of the library here.
extern "C" void* __real_aligned_alloc(std::size_t alignment, std::size_t size);
extern "C" void __real_free(void* p);

extern "C" void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size)
{
    using namespace hostile;
    if (!requests.is_watching) return __real_aligned_alloc(alignment, size);
    const int k = ++requests.count;
    requests.bytes = size;
    if (k == requests.refused || (requests.lasting && k > requests.refused) || size > most_given)
        return nullptr;
    return give(size);
}

extern "C" void __wrap_free(void* p)
{
    using namespace hostile;
    for (Given& g : given)
        if (p != nullptr && g.begin == p) return take_back(g);
    __real_free(p);
}
