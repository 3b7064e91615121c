// tests/hostile/surroundings.cpp - blocks, switches, units, options, level: the same in both runs of a call
#include "tests/hostile/surroundings.h"

#include <fenv.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

#include "isa/levels.h"
#include "orvel/orvel.h"
#include "tests/hostile/functions.h"

namespace hostile {

namespace isa = orvel::isa;

Levels levels = Levels::as_listed;

namespace {

std::vector<Block> state;  // of the thread
std::vector<unsigned char> initial, after_first;

void keep(std::vector<unsigned char>& to)
{
    to.clear();
    for (const Block& b : state) {
        const auto* const bytes = static_cast<const unsigned char*>(b.address);
        to.insert(to.end(), bytes, bytes + b.size);
    }
}

// Three records as a message file has them.
void write_messages(const std::string& folder)
{
    std::ofstream file(folder + "/messages.daf");
    for (std::string record : {"The values %(I1) and %(R1) are bad.", "%(D1)%/%(I2) %(L1)", ""}) {
        record.resize(1024, ' ');
        file << record;
    }
    setenv("TAL_F90_MSG", folder.c_str(), 1);
}

}  // namespace

void keep_blocks() { keep(after_first); }

bool blocks_are_as_kept()
{
    const unsigned char* from = after_first.data();
    for (const Block& b : state) {
        if (std::memcmp(b.address, from, b.size) != 0) return false;
        from += b.size;
    }
    return true;
}

void restore_blocks()
{
    const unsigned char* from = initial.data();
    for (const Block& b : state) {
        std::memcpy(b.address, from, b.size);
        from += b.size;
    }
}

void restore_state(const Surroundings& around)
{
    restore_blocks();
    Draw draw(around.corruption);
    for (int64_t times = around.is_corrupted ? draw.between(1, 40) : 0; times > 0; --times) {
        const Block& b = state[static_cast<std::size_t>(draw.below(static_cast<int64_t>(state.size())))];
        const auto at = static_cast<std::size_t>(draw.below(static_cast<int64_t>(b.size) / 4)) * 4;
        const auto bits =
            static_cast<uint32_t>(draw.one_in(2) ? draw.bits() : static_cast<uint64_t>(draw.between(-2, 60)));
        std::memcpy(static_cast<unsigned char*>(b.address) + at, &bits, std::min(sizeof bits, b.size - at));
    }
    for (int32_t& stops : ERCOM1.stptab)
        if (!around.is_corrupted && around.switches >= 0) stops = around.switches & 1;
    for (int32_t& prints : ERCOM1.prttab)
        if (!around.is_corrupted && around.switches >= 0) prints = around.switches >> 1;
}

void use_level(int level, bool may_have_changed)
{
    static int in_use = -1;
    if (level != in_use || may_have_changed) isa::use_level(isa::level_name(level));
    in_use = level;
}

// What has no exported block: units, options, a counter.
void restore_settings(const Surroundings& around)
{
    constexpr int32_t units[] = {5, 6, 6};
    for (int32_t k = 1; k <= 3; ++k) {
        int32_t unit = units[k - 1];
        const int32_t set = -k;
        UMACH(&set, &unit);
    }
    const int32_t read = 2, sixteen = 16, seventeen = 17, two = 2, one = 1;
    int32_t padding[] = {0, 1}, flag = around.condition_flag;
    IUMAG("MATH", &read, &sixteen, &two, padding, 4);
    IUMAG("MATH", &read, &seventeen, &one, &flag, 4);
    N1RNOF(&read);
}

// Where break points do not ascend, the piece that is found depends on the one that was found before.
void forget_piece()
{
    const int32_t order = 1, count = 1;
    const float x = -1, point = 0;
    int32_t left;
    P3DER(&order, &count, &point, &x, &left);
}

bool takes_function(const Routine& routine)
{
    const auto is_one = [](const Argument& a) { return a.type == 'f' || a.type == 'g'; };
    return std::any_of(routine.arguments, routine.arguments + routine.count, is_one);
}

Surroundings surroundings(const Routine& routine, uint64_t seed, Draw& draw, Mood mood)
{
    const std::string_view header = routine.header;
    constexpr unsigned char garbage[][2] = {{0xff, 0x00}, {0x5a, 0xc3}, {0x7f, 0x01}, {0x80, 0x3f}};
    const auto& pair = garbage[draw.below(4)];
    Surroundings s{};
    s.level[0] = static_cast<int>(seed % static_cast<uint64_t>(level_count()));
    s.level[1] = routine.is_same_on_all_levels || levels == Levels::others ? (s.level[0] + 1) % level_count()
                                                                           : s.level[0];
    std::memcpy(s.garbage, pair, sizeof pair);
    s.is_quiet = draw.one_in(4);
    s.has_context = takes_function(routine) && draw.one_in(3);
    s.is_flagged = mood == Mood::ordinary;
    s.is_corrupted =
        mood != Mood::ordinary && draw.one_in(header == "random.h" || header == "frame.h" ? 3 : 20);
    s.rounding = mood != Mood::ordinary && draw.one_in(16)
                     ? draw.one_of({FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO})
                     : FE_TONEAREST;
    s.switches = static_cast<int>(draw.between(-1, 3));
    s.refused = mood != Mood::ordinary && draw.one_in(8) ? static_cast<int>(draw.between(1, 4)) : 0;
    s.lasting = s.refused != 0 && draw.one_in(2);
    s.condition_flag = mood == Mood::ordinary ? 2 : draw.one_of({2, 2, 1, 1, 0});
    s.corruption = draw.bits();
    return s;
}

int level_count() { return isa::level_count(); }

void set_up_process(const std::string& folder)
{
    write_messages(folder);
    state = blocks();
    set_up_host();
    const int32_t seed = 123457;
    RNSET(&seed);
    CPSEC();
    E1PSH("HOSTILE ", 8);  // misuse of the stack has something to go wrong with
    keep(initial);
}

}  // namespace hostile
