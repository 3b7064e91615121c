// tests/hostile/arguments.h - arguments of a routine, made from their kinds and shapes and from a seed
#pragma once

#include <string_view>

#include "tests/hostile/call.h"
#include "tests/hostile/draw.h"
#include "tests/hostile/memory.h"

namespace hostile {

class Arguments {
public:
    Arguments(const Routine& routine, Draw& draw, Mood mood, bool is_large = false);
    ~Arguments();
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    // Addresses as the trampoline takes them.
    void* const* addresses(int run);

    const Storage& storage(int k) const { return storages_[owner_[k]]; }
    bool owns(int k) const { return owner_[k] == k; }
    bool is_data(int k) const { return argument(k).role != Role::function && argument(k).type != 'a'; }
    const Argument& argument(int k) const { return routine_.arguments[k]; }
    double value(int k) const { return values_[k]; }
    bool is_impossible() const { return is_impossible_; }  // an array is larger than can be reserved
    bool is_ascending() const { return is_ascending_; }    // what has to be
    bool is_unreal() const { return is_unreal_; }          // an array ends the call when it is touched

private:
    void choose_scalars(Draw& draw, Mood mood);
    void choose_leading(Draw& draw, Mood mood);
    void choose_aliases(Draw& draw);
    void choose_odd_integers(Draw& draw, Mood mood);
    void limit_time();
    Shape shape_of(int k) const;
    void place_one(int k, Draw& draw);
    void fill_one(int k, Draw& draw, Mood mood);
    int64_t diagonal_row(const Argument& a, const Storage& s) const;
    void initialise_tables(Draw& draw, Mood mood);

    const Routine& routine_;
    double values_[most_arguments] = {};
    int64_t integers_[most_arguments] = {};
    std::string_view texts_[most_arguments];
    int owner_[most_arguments];
    double spans_[most_arguments] = {};
    std::size_t offset_[most_arguments] = {};
    Storage storages_[most_arguments];
    void* addresses_[most_arguments] = {};
    const bool is_large_;
    bool is_ascending_ = true, is_impossible_ = false, is_unreal_ = false;
};

std::size_t size_of(char type);
bool shape_ascending(const Storage& s, const Argument& a, Draw& draw);  // most of the time
// A matrix, whose diagonal is in this row.
void make_dominant(const Storage& s, const Argument& a, int64_t row);

// Fills `count` numbers of a type in the manner of the mood.
void fill_numbers(unsigned char* to, char type, int64_t count, Draw& draw, Mood mood);

// ---- functions of the user, and of the host ----------------------------------------------------------

void choose_function(Draw& draw, Mood mood);
void restart_function();  // both runs see the same
float single_function(const float* x);
double double_function(const double* x);
void* host_function(const Routine& routine, const Argument& argument, Draw& draw);

}  // namespace hostile
