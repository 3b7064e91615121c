// tests/hostile/refusals.cpp - every request for storage refused, once and lastingly
#include <cstdio>
#include <cstring>

#include "tests/hostile/run.h"

namespace hostile {

namespace {

// A message with its lines joined.
std::string in_one_line(const std::string& message)
{
    std::string line;
    for (std::size_t k = 0; k < message.size(); ++k)
        if (k > 0 && message.compare(k, 5, "\n ***") == 0)
            k += 14, line += ' ';
        else
            line += message[k];
    return line;
}

// Whether the line is "... ERROR code from ROUTINE. text", parameters aside.
bool says(const std::string& line, const char* routine, const Refusal& refusal)
{
    std::size_t at = line.find("ERROR " + std::to_string(refusal.code) + " from " + routine + ".");
    for (const char *piece = refusal.text, *end = nullptr; at != std::string::npos; piece = end) {
        end = std::strstr(piece, "%(");
        const std::string words(piece,
                                end != nullptr ? static_cast<std::size_t>(end - piece) : std::strlen(piece));
        at = line.find(words, at);
        if (end == nullptr) break;
        end = std::strchr(end, ')') + 1;
    }
    return at != std::string::npos;
}

// Constructors of splines may leave some, PERMU leaves a copy of its input, and only X is promised where a
// factorization or a correction goes before.
bool is_kept(const Routine& routine, const Argument& a)
{
    const std::string_view name = routine.name, header = routine.header;
    return header != "interp.h" && !name.ends_with("PERMU") &&
           (routine.is_front || a.name == std::string_view("X"));
}

std::string fault_of_refusal(const Routine& routine, Arguments& arguments, Surroundings around)
{
    Outcome o;
    if (std::string fault = fault_of_run(routine, arguments, 1, around, o); !fault.empty()) return fault;
    const std::string line = in_one_line(o.text);
    const bool is_refused = line.find("The required storage cannot be allocated.") != std::string::npos;
    for (int k = 0; k < routine.count; ++k) {
        int64_t where = 0;
        const Storage& s = arguments.storage(k);
        if (!arguments.is_data(k) || !arguments.owns(k)) continue;
        const std::string name = arguments.argument(k).name;
        if (!is_refused && std::string_view(routine.header) != "fft.h" &&
            !agree(s, arguments.argument(k).type, around.garbage, where))
            return name + " depends on whether memory can be had";  // transforms have a slow way without it
        if (is_refused && is_kept(routine, arguments.argument(k)) && !is_untouched(s, 1, around.garbage[1]))
            return name + " is touched though storage was refused";
    }
    if (!is_refused) return {};
    if (o.severity != 5) return "a refusal has the type " + std::to_string(o.severity);
    for (int k = 0; k < routine.refusal_count; ++k)
        if (o.code == routine.refusals[k].code && says(line, routine.name, routine.refusals[k])) return {};
    for (const Routine& other : routines())  // passed up
        for (int k = 0; k < other.refusal_count; ++k)
            if (o.code == other.refusals[k].code && says(line, other.name, other.refusals[k])) return {};
    return "a refusal is not as documented: " + line;
}

// Makes the call with each request refused in turn; counts the refusals.
Fault refuse_requests(const Routine& routine, uint64_t seed, bool is_large, int& provoked)
{
    Draw draw(mixed(seed));
    Surroundings around = surroundings(routine, seed, draw, Mood::ordinary);
    around.is_quiet = around.is_flagged = around.has_context = false;
    around.switches = 2;  // everything is printed, nothing stops
    choose_function(draw, Mood::ordinary);
    restore_blocks();
    most_bytes = std::size_t{1} << (is_large ? 24 : 17);
    Arguments arguments(routine, draw, Mood::ordinary, is_large);
    Outcome whole;
    if (std::string fault = fault_of_run(routine, arguments, 0, around, whole); !fault.empty())
        return {fault};
    for (around.refused = 1; around.refused <= whole.requests; ++around.refused)
        for (const bool lasting : {false, true}) {
            around.lasting = lasting;
            ++provoked;
            const std::string fault = fault_of_refusal(routine, arguments, around);
            if (!fault.empty())
                return {fault + ", request " + std::to_string(around.refused) +
                        (lasting ? " and later" : "")};
        }
    return {};
}

}  // namespace

// Every routine that is documented to report it is brought to it.
int refuse_all(uint64_t first_seed)
{
    constexpr uint64_t seeds = 60;
    int faults = 0, total = 0, count = 0;
    for (const Routine& routine : routines()) {
        const bool is_worker = routine.name[1] == '2' || routine.name[2] == '2';  // has the family's errors
        const std::string_view header = routine.header;
        const bool is_kernel = header == "kernels.h" || header == "matrices.h";
        const uint64_t most_seeds = is_worker ? 6000 : 60000;
        int provoked = 0;
        for (uint64_t k = 0; k < seeds || (provoked == 0 && routine.refusal_count > 0 && k < most_seeds);
             ++k) {
            const uint64_t seed = mixed(first_seed + k) / 8;
            const bool asks_inside = routine.is_front && routine.refusal_count > 0;
            const bool is_large = k < 4 && (is_kernel || (k == 0 && asks_inside));
            const Fault fault = refuse_requests(routine, seed, is_large, provoked);
            if (fault.what.empty()) continue;
            if (++faults < 100) std::printf("FAULT %s %lu: %s\n", routine.name, seed, fault.what.c_str());
            break;
        }
        total += provoked;
        count += provoked > 0 ? 1 : 0;
        if (provoked > 0 || routine.refusal_count == 0 || is_worker) continue;
        ++faults;
        std::printf("FAULT %s: asks for no storage, though it may report that there is none\n", routine.name);
    }
    std::printf("%d refusals in %d routines, %d faults\n", total, count, faults);
    return faults == 0 ? 0 : 1;
}

}  // namespace hostile
