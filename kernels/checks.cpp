// kernels/checks.cpp - errors of the matrix kernels; L1AME: comparison of letters
#include "kernels/checks.h"

#include "frame/export.h"
#include "frame/stack.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

bool Checks::post(int32_t code, std::string_view text,
                  std::initializer_list<frame::Parameter> parameters) const
{
    char name[frame::name_room] = {precision};
    kernel.copy(name + 1, sizeof name - 1);
    const frame::PaddedName padded{std::string_view(name, kernel.size() + 1)};
    frame::State& s = frame::state();
    frame::push(s, padded);
    frame::post(s, 'R', frame::terminal, code, text, parameters);
    frame::pop(s, padded);
    return true;
}

namespace {

int32_t same_letter(const char* ca, const char* cb) { return upper(*ca) == upper(*cb) ? -1 : 0; }

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT(L1AME, l1ame_, 2, orvel::kernels::same_letter);
