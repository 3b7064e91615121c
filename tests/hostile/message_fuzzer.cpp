// tests/hostile/message_fuzzer.cpp - templates, parameters and message files of any bytes, for libFuzzer
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "orvel/frame.h"
#include "orvel/host.h"

namespace {

// Bytes from the front of the input.
class Input {
public:
    Input(const uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    int32_t number()
    {
        uint32_t x = 0;
        const std::size_t n = std::min(size_, sizeof x);
        std::memcpy(&x, data_, n);
        skip(n);
        return static_cast<int32_t>(x);
    }
    int32_t small() { return number() % 12; }
    std::string text()
    {
        const std::size_t n = std::min<std::size_t>(static_cast<uint32_t>(number()) % 2000, size_);
        std::string all(reinterpret_cast<const char*>(data_), n);
        skip(n);
        return all;
    }
    bool is_empty() const { return size_ == 0; }

private:
    void skip(std::size_t n) { data_ += n, size_ -= n; }

    const uint8_t* data_;
    std::size_t size_;
};

void post_by_hand(Input& in)
{
    const std::string name = in.text(), message = in.text();
    E1PSH(name.data(), name.size());
    for (int k = 0; k < 4 && !in.is_empty(); ++k) {
        const int32_t id = in.small(), whole = in.number();
        const std::string text = in.text();
        const double real = static_cast<double>(whole) * 1e-5;
        E1STI(&id, &whole);
        E1STD(&id, &real);
        E1STL(&id, text.data(), text.size());
        E1STA(&id, &whole, text.data(), text.size());
    }
    const int32_t type = in.small() - 2, code = in.number();
    E1MES(&type, &code, message.data(), message.size());
    E1UCS();
    E1PRT();
    E1POP(name.data(), name.size());
}

// The rest of the input is the message file.
void post_from_file(Input& in)
{
    orvel_s_epack single[30];
    orvel_d_epack real[30];
    for (int k = 0; k < 30; ++k) {
        single[k] = {k == 0 ? 1 + std::abs(in.small()) % 4 : in.small(), 1.5f};
        real[k] = {single[k].whole, -2.5e-7};
    }
    const int32_t count = std::abs(in.number() % 31);
    const std::string file = in.text() + in.text();
    if (FILE* const to = std::fopen("messages.daf", "w")) {
        std::fwrite(file.data(), 1, file.size(), to);
        std::fclose(to);
    }
    S_ERROR_POST(single, &count);
    D_ERROR_POST(real, &count);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    static char folder[] = "/tmp/orvel.XXXXXX";
    if (mkdtemp(folder) == nullptr || chdir(folder) != 0) std::abort();
    setenv("TAL_F90_MSG", folder, 1);
    orvel_bind_unit(
        6, [](void*, int32_t, const char*, size_t) {}, nullptr);
    orvel_set_stop_handler([](void*, int32_t, int32_t code) { throw code; }, nullptr);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size)
{
    Input in(data, size);
    const int32_t all = 0, keep = -1, initial = 2;
    ERSET(&all, &keep, &initial);
    try {
        in.number() % 2 == 0 ? post_by_hand(in) : post_from_file(in);
    } catch (int32_t) {  // a stop
    }
    orvel_reset();
    return 0;
}
