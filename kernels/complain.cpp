// kernels/complain.cpp - errors of the matrix kernels, and the comparison of letters
#include "frame/export.h"
#include "frame/stack.h"
#include "kernels/matrix.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

void complain_as(char precision, std::string_view kernel, int32_t code, std::string_view text,
                 std::initializer_list<frame::Parameter> parameters)
{
    char name[frame::name_room] = {precision};
    kernel.copy(name + 1, sizeof name - 1);
    const frame::PaddedName padded{std::string_view(name, kernel.size() + 1)};
    frame::State& s = frame::state();
    frame::push(s, padded);
    frame::post(s, 'R', frame::terminal, code, text, parameters);
    frame::pop(s, padded);
}

namespace {

int32_t same_letter(const char* ca, const char* cb) { return upper(*ca) == upper(*cb) ? -1 : 0; }

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT(L1AME, l1ame_, 2, orvel::kernels::same_letter);
