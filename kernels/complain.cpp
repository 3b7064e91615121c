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

bool complain_of_side(char precision, std::string_view kernel, const char* side, int32_t m, int32_t n,
                      int32_t lda)
{
    const bool left = is_letter(side, 'L'), right = is_letter(side, 'R');
    const auto bad = [&](int32_t code, std::string_view text,
                         std::initializer_list<frame::Parameter> parameters) {
        complain_as(precision, kernel, code, text, parameters);
        return true;
    };
    if (left && (lda < m || lda <= 0))
        return bad(
            4,
            "LDA must be greater than or equal to M and greater than zero when SIDE = L, but LDA = %(I1) and M = %(I2) are given.",
            {i(1, lda), i(2, m)});
    if (right && (lda < n || lda <= 0))
        return bad(
            5,
            "LDA must be greater than or equal to N and greater than zero when SIDE = R, but LDA = %(I1) and N = %(I2) are given.",
            {i(1, lda), i(2, n)});
    if (!left && !right)
        return bad(6, "SIDE must be set equal to L or R while %(L1) is given.", {l(1, {side, 1})});
    return false;
}

namespace {

int32_t same_letter(const char* ca, const char* cb) { return upper(*ca) == upper(*cb) ? -1 : 0; }

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT(L1AME, l1ame_, 2, orvel::kernels::same_letter);
