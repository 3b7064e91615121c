// linsys/options.cpp - IUMAG: the calling thread's store of option values
#include "frame/export.h"
#include "frame/routine.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

constinit thread_local Options store = {{0, 1}, 2};

bool is_math(std::string_view chapter) { return chapter == "MATH" || chapter == "math"; }

void iumag(const char* chapter, const int32_t* iact, const int32_t* iopt, const int32_t* nvals,
           int32_t* ivals, std::size_t length)
{
    Routine<float, "IUMAG", "IUMAG"> me;
    const std::string_view name = frame::without_trailing_blanks(frame::text_argument(chapter, length));
    if (!is_math(name))
        me.post(terminal, 1, "The name of the chapter must be MATH while %(L1) is given.", {l(1, name)});
    if (*iact != 1 && *iact != 2)
        me.post(terminal, 2, "The action IACT must be 1 to read or 2 to set while %(I1) is given.",
                {i(1, *iact)});
    if (*iopt != 16 && *iopt != 17)
        me.post(terminal, 3, "The option IOPT must be 16 or 17 while %(I1) is given.", {i(1, *iopt)});
    if (me.failed()) return;
    int32_t* const values = *iopt == 16 ? store.padding : &store.condition_flag;
    const int32_t count = *iopt == 16 ? 2 : 1;
    if (*nvals != count)
        return me.post(terminal, 4, "Option IOPT = %(I1) has %(I2) values while NVALS = %(I3) is given.",
                       {i(1, *iopt), i(2, count), i(3, *nvals)});
    for (int32_t k = 0; k < count; ++k)
        (*iact == 1 ? ivals[k] : values[k]) = *iact == 1 ? values[k] : ivals[k];
}

}  // namespace

const Options& options() { return store; }

}  // namespace orvel::linsys

ORVEL_EXPORT(IUMAG, iumag_, 6, orvel::linsys::iumag);
