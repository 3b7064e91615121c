// tests/interface/calls.h - a call of any routine with ordinary arguments, made from the description of it
#pragma once

#include <cstring>
#include <random>
#include <string_view>
#include <vector>

#include "routines.h"

namespace orvel_test {

inline float square(const float* x) { return *x * *x; }
inline double square(const double* x) { return *x * *x; }

// Arguments of a routine. Every one is an address, and lengths of texts follow as what has the size of one.
class OrdinaryCall {
public:
    OrdinaryCall(const RoutineEntry& routine, unsigned seed) : routine_(routine)
    {
        std::mt19937 random(seed);
        for (int k = 0; k < routine.count; ++k) {
            const Argument& a = routine.arguments[k];
            const std::string_view type = a.type;
            storage_.emplace_back(is_array(a) ? a.elements * size_of(type) : 16);
            void* address = storage_.back().data();
            if (type == "single function")
                address = reinterpret_cast<void*>(static_cast<float (*)(const float*)>(square));
            else if (type == "double function")
                address = reinterpret_cast<void*>(static_cast<double (*)(const double*)>(square));
            else if (type == "character")
                std::strcpy(static_cast<char*>(address), *a.text ? a.text : "1");
            else if (is_array(a))
                fill(a, address, random);
            else
                set(a, address, a.value);
            addresses_[k] = address;
        }
        int places = routine.count;
        for (int k = 0; k < routine.count; ++k)
            if (routine.arguments[k].type == std::string_view("character") && is_array(routine.arguments[k]))
                addresses_[places++] =
                    reinterpret_cast<void*>(std::strlen(static_cast<char*>(addresses_[k])));
    }

    void run() { run(std::make_index_sequence<most>()); }

    template <class Visit>
    void visit_results(Visit visit) const
    {
        for (int k = 0; k < routine_.count; ++k) {
            const std::string_view role = routine_.arguments[k].role;
            if (role == "out" || role == "inout" || role == "in/out") visit(storage_[k]);
        }
    }

private:
    static constexpr int most = 24;

    static bool is_array(const Argument& a) { return *a.shape != 0; }
    static std::size_t size_of(std::string_view type)
    {
        return type == "integer" || type == "single" ? 4 : type == "double complex" ? 16 : 8;
    }
    static void set(const Argument& a, void* address, double value, int index = 0)
    {
        const std::string_view type = a.type;
        if (type == "integer")
            static_cast<int32_t*>(address)[index] = static_cast<int32_t>(value);
        else if (type == "long")
            static_cast<int64_t*>(address)[index] = static_cast<int64_t>(value);
        else if (type == "single" || type == "complex")
            static_cast<float*>(address)[index] = static_cast<float>(value);
        else if (type == "double" || type == "double complex")
            static_cast<double*>(address)[index] = value;
    }
    // Integers count from 1, as permutations do.
    static void fill(const Argument& a, void* address, std::mt19937& random)
    {
        const std::string_view type = a.type;
        std::uniform_real_distribution<double> uniform(-1, 1);
        const int parts = type.ends_with("complex") ? 2 : 1;
        for (int i = 0; i < a.elements * parts; ++i)
            set(a, address, type == "integer" || type == "long" ? i + 1 : uniform(random), i);
    }

    template <std::size_t... k>
    void run(std::index_sequence<k...>)
    {
        using Anything = void (*)(decltype(static_cast<void>(k), static_cast<void*>(nullptr))...);
        reinterpret_cast<Anything>(routine_.address)(addresses_[k]...);
    }

    const RoutineEntry& routine_;
    std::vector<std::vector<unsigned char>> storage_;
    void* addresses_[most] = {};
};

// Those that take addresses and neither stop the program nor change how errors are handled.
inline bool is_callable(const RoutineEntry& routine)
{
    const std::string_view header = routine.header;
    return header != "frame.h" && header != "host.h";
}

}  // namespace orvel_test
