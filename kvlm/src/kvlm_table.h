// Element-wise work on a batch in the pointer description: a table with one pointer per element position.
#ifndef KVLM_TABLE_H
#define KVLM_TABLE_H

#include "kvlm_runs.h"

namespace kvlm {

// No entry of the table lies within a run over the objects that begins at another. Tables in no order are looked into
// only where that costs less than the work.
template <class T, class D>
inline bool entriesDisjoint(const D &d, ptrdiff_t positions, int count)
{
    const uintptr_t run = count * sizeof(T);
    const auto behind = [&](ptrdiff_t p, ptrdiff_t q) KVLM_INLINED {
        const uintptr_t first = reinterpret_cast<uintptr_t>(d.at(q, 0)),
                        second = reinterpret_cast<uintptr_t>(d.at(p, 0));
        return second >= first && second - first >= run;
    };
    ptrdiff_t ascending = 1;
    while (ascending < positions && behind(ascending, ascending - 1))
        ++ascending;
    if (ascending == positions)
        return true;
    if (positions > 2 * static_cast<ptrdiff_t>(count) + 1)
        return false;
    for (ptrdiff_t p = ascending; p < positions; ++p)
        for (ptrdiff_t q = 0; q < p; ++q)
            if (!behind(p, q) && !behind(q, p))
                return false;
    return true;
}

// Where the table of an operand has the element that its letter reads as (r, c).
template <char Letter>
KVLM_INLINE ptrdiff_t positionOf(ptrdiff_t r, ptrdiff_t c, ptrdiff_t width, ptrdiff_t height)
{
    return Letter == 't' ? c * height + r : r * width + c;
}

// A single operand's elements, read once for the batch.
template <char Letter, class T, int W, int H>
struct TableCopy {
    T elements[W * H];

    KVLM_INLINE explicit TableCopy(const Table<const T, None> &x)
    {
        for (int r = 0; r < H; ++r)
            for (int c = 0; c < W; ++c)
                elements[r * W + c] = get(x.at(positionOf<Letter>(r, c, W, H), 0));
    }
    KVLM_INLINE T operator()(int, int r, int c) const { return elements[r * W + c]; }
};

template <class T, char LetterA, char LetterB, class Op, class A, class B, class D, class W, class H>
__attribute__((noinline)) void tableObjects(Op op, const A &givenA, const B &givenB, const D &givenD, W width, H height,
                                            int count)
{
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    const auto elementA = [&](int i, int r, int c)
                              KVLM_INLINED { return get(a.at(positionOf<LetterA>(r, c, width, height), i)); };
    const auto elementB = [&](int i, int r, int c)
                              KVLM_INLINED { return get(b.at(positionOf<LetterB>(r, c, width, height), i)); };
    const auto sweep = [&](const auto &x, const auto &y) KVLM_INLINED {
        for (int i = 0; i < count; ++i)
            for (int r = 0; r < height; ++r)
                for (int c = 0; c < width; ++c)
                    put(d.at(positionOf<'m'>(r, c, width, height), i), op(x(i, r, c), y(i, r, c)));
    };
    constexpr bool known = !std::is_same_v<W, int> && !D::isSingle;
    if constexpr (known && A::isSingle)
        sweep(TableCopy<LetterA, T, W{}, H{}>(a), elementB);
    else if constexpr (known && B::isSingle)
        sweep(elementA, TableCopy<LetterB, T, W{}, H{}>(b));
    else
        sweep(elementA, elementB);
}

template <class T, char LetterA, char LetterB, class Op, class A, class B, class D>
KVLM_INLINE void tables(Op op, const A &a, const B &b, const D &d, int width, int height, int count)
{
    if constexpr (!D::isSingle)
        if (count >= worthLines && objectsAdjacent(a) && objectsAdjacent(b) && objectsAdjacent(d) &&
            entriesDisjoint<T>(d, static_cast<ptrdiff_t>(width) * height, count)) {
            for (int r = 0; r < height; ++r)
                for (int c = 0; c < width; ++c)
                    run<T>(op, lineOf(a, a.at(positionOf<LetterA>(r, c, width, height), 0)),
                           lineOf(b, b.at(positionOf<LetterB>(r, c, width, height), 0)),
                           d.at(positionOf<'m'>(r, c, width, height), 0), static_cast<ptrdiff_t>(count));
            return;
        }
    bySquareOrder(width, height,
                  [&](auto w, auto h) KVLM_INLINED { tableObjects<T, LetterA, LetterB>(op, a, b, d, w, h, count); });
}

} // namespace kvlm

#endif
