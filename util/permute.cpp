// util/permute.cpp - PERMU, PERMA and P2RMA: permutations of vectors, rows and columns
#include <algorithm>

#include "frame/export.h"
#include "frame/routine.h"
#include "frame/scratch.h"
#include "kernels/level1.h"
#include "orvel/util.h"

namespace orvel::util {

namespace {

// Posts an error for every entry outside 1..n.
template <class Frame>
void check_entries(Frame& me, int32_t code, int32_t n, const int32_t* ipermu)
{
    for (int32_t k = 0; k < n; ++k)
        if (ipermu[k] < 1 || ipermu[k] > n)
            me.post(terminal, code,
                    "IPERMU(%(I1)) = %(I3) is not allowed.  It must be between 1 and N = %(I2).",
                    {i(1, k + 1), i(2, n), i(3, ipermu[k])});
}

// Follows the cycles of an index whose entries are negative until they are visited. Where entries repeat, a
// cycle ends at one that has been visited.
template <class T>
void permute_forward(int64_t n, T* x, int32_t* index)
{
    for (int64_t start = 0; start < n; ++start) {
        if (index[start] > 0) continue;
        const T first = x[start];
        int64_t k = start;
        while (true) {
            index[k] = -index[k];
            const int64_t next = index[k] - 1;
            if (index[next] > 0) {
                x[k] = next == start ? first : x[next];
                break;
            }
            x[k] = x[next];
            k = next;
        }
    }
}

template <class T>
void permute_backward(int64_t n, T* x, int32_t* index)
{
    for (int64_t start = 0; start < n; ++start) {
        T carried = x[start];
        for (int64_t k = start; index[k] < 0;) {
            index[k] = -index[k];
            k = index[k] - 1;
            std::swap(carried, x[k]);
        }
    }
}

template <class T>
void permu(const int32_t* n, const T* x, const int32_t* ipermu, const int32_t* ipath, T* xpermu)
{
    Routine<T, "PERMU"> me;
    if (*n < 1)
        me.post(terminal, 1,
                "The length of the arrays X and XPERMU must be positive while N = %(I1) is given.",
                {i(1, *n)});
    if (*ipath != 1 && *ipath != 2)
        me.post(terminal, 2, "IPATH must be equal to 1 or 2 while a value of %(I1) is given.",
                {i(1, *ipath)});
    if (me.failed()) return;

    if (x != xpermu) kernels::copy<T>(*n, x, 1, xpermu, 1);
    check_entries(me, 3, *n, ipermu);
    if (me.failed()) return;

    Scratch<int32_t> index;
    if (!index.allocate(*n))
        return me.no_storage(
            10, "The required storage cannot be allocated.  Workspace allocation was based on N = %(I1).",
            {i(1, *n)});
    for (int32_t k = 0; k < *n; ++k) index[k] = -ipermu[k];
    if (*ipath == 1)
        permute_forward<T>(*n, xpermu, index);
    else
        permute_backward<T>(*n, xpermu, index);
}

// Two arrays that are either the same or do not overlap.
template <class T>
struct Matrices {
    int64_t rows, columns;
    const T* a;
    int64_t lda;
    T* aper;
    int64_t ldaper;
    bool same() const { return a == aper; }
};

template <class T>
void permute_rows(const Matrices<T>& m, const int32_t* ipermu, T* work)
{
    for (int64_t j = 0; j < m.columns; ++j) {
        const T* from = m.a + j * m.lda;
        if (m.same()) {
            kernels::copy<T>(m.rows, from, 1, work, 1);
            from = work;
        }
        T* to = m.aper + j * m.ldaper;
        for (int64_t k = 0; k < m.rows; ++k) to[k] = from[ipermu[k] - 1];
    }
}

template <class T>
void copy_column(const Matrices<T>& m, const T* from, T* to)
{
    kernels::copy<T>(m.rows, from, 1, to, 1);
}

template <class T>
void permute_columns(const Matrices<T>& m, const int32_t* ipermu)
{
    for (int64_t j = 0; j < m.columns; ++j)
        copy_column(m, m.a + (ipermu[j] - 1) * m.lda, m.aper + j * m.ldaper);
}

// Moves each cycle of the columns once. `walk` has zeros; the walk from a column marks what it meets by its
// number. Where entries repeat, it may meet a cycle behind its start, or one of an earlier walk, which has
// been moved.
template <class T>
void permute_columns_in_place(const Matrices<T>& m, const int32_t* ipermu, T* work, int32_t* walk)
{
    const auto next = [&](int64_t j) { return int64_t{ipermu[j]} - 1; };
    for (int64_t start = 0; start < m.columns; ++start) {
        const auto number = static_cast<int32_t>(start + 1);
        int64_t first = start;
        for (; walk[first] == 0; first = next(first)) walk[first] = number;
        if (walk[first] != number || next(first) == first) continue;
        copy_column(m, m.a + first * m.lda, work);
        int64_t to = first;
        for (int64_t from; (from = next(to)) != first; to = from)
            copy_column(m, m.a + from * m.lda, m.aper + to * m.ldaper);
        copy_column(m, work, m.aper + to * m.ldaper);
    }
}

// In PERMA and P2RMA.
template <class Frame>
void no_storage(Frame& me, int32_t nca)
{
    me.no_storage(10,
                  "The required storage cannot be allocated.  Workspace allocation was based on NCA = %(i1).",
                  {i(1, nca)});
}

template <class T>
void p2rma(frame::State& s, const int32_t* nra, const int32_t* nca, const T* a, const int32_t* lda,
           const int32_t* ipermu, const int32_t* ipath, T* aper, const int32_t* ldaper, T* work)
{
    Routine<T, "P2RMA"> me(s);
    if (*nra < 1)
        me.post(terminal, 1, "The number of rows of a matrix must be positive while NRA = %(I1) is given.",
                {i(1, *nra)});
    if (*nca < 1)
        me.post(terminal, 2, "The number of columns of a matrix must be positive while NCA = %(I1) is given.",
                {i(1, *nca)});
    if (*lda < 1)
        me.post(terminal, 3, "The leading dimension of a matrix must be positive while LDA = %(I1) is given.",
                {i(1, *lda)});
    if (*nra > *lda)
        me.post(
            terminal, 4,
            "The number of rows of A must be less than or equal to its leading dimension while NRA = %(I1) and LDA = %(I2) are given.",
            {i(1, *nra), i(2, *lda)});
    if (*nra > *ldaper)
        me.post(
            terminal, 5,
            "The number of rows of A must be less than or equal to the leading dimension of APER, while NRA = %(I1) and LDAPER = %(I2) are given.",
            {i(1, *nra), i(2, *ldaper)});
    if (*ldaper < 1)
        me.post(terminal, 6,
                "The leading dimension of a matrix must be positive while LDAPER = %(I1) is given.",
                {i(1, *ldaper)});
    if (*ipath != 1 && *ipath != 2)
        me.post(terminal, 7, "IPATH must be equal to 1 or 2 a value of %(I1) is given.", {i(1, *ipath)});
    if (me.failed()) return;
    check_entries(me, 8, *ipath == 1 ? *nra : *nca, ipermu);
    if (me.failed()) return;

    const Matrices<T> m{*nra, *nca, a, *lda, aper, *ldaper};
    if (*ipath == 1) return permute_rows(m, ipermu, work);
    if (!m.same()) return permute_columns(m, ipermu);
    Scratch<int32_t> walk;
    if (!walk.allocate(*nca)) return no_storage(me, *nca);
    std::fill_n(static_cast<int32_t*>(walk), *nca, 0);
    permute_columns_in_place<T>(m, ipermu, work, walk);
}

template <class T>
void perma(const int32_t* nra, const int32_t* nca, const T* a, const int32_t* lda, const int32_t* ipermu,
           const int32_t* ipath, T* aper, const int32_t* ldaper)
{
    Routine<T, "PERMA"> me;
    if (*nca < 1)
        return me.post(terminal, 1,
                       "The number of columns of a matrix must be positive while NCA = %(i1) is given.",
                       {i(1, *nca)});
    Scratch<T> work;
    // A count that is refused below needs no storage.
    if (!work.allocate(*nra > *lda || *nra > *ldaper ? 0 : *nra)) return no_storage(me, *nca);
    p2rma<T>(me.state(), nra, nca, a, lda, ipermu, ipath, aper, ldaper, work);
}

}  // namespace

}  // namespace orvel::util

ORVEL_EXPORT_REALS(PERMU, permu_, DPERMU, dpermu_, 5, orvel::util::permu);
ORVEL_EXPORT_REALS(P2RMA, p2rma_, DP2RMA, dp2rma_, 9, orvel::util::p2rma);
ORVEL_EXPORT_REALS(PERMA, perma_, DPERMA, dperma_, 8, orvel::util::perma);
