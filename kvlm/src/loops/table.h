// Element-wise work on a batch in the pointer description: a table with one pointer per element position.
#ifndef KVLM_LOOPS_TABLE_H
#define KVLM_LOOPS_TABLE_H

#include "loops/strided.h"

namespace kvlm {

// A single operand's elements, read once for the batch.
template <class T, int W, int H>
struct TableCopy {
    T elements[W * H];

    template <class View>
    KVLM_INLINE explicit TableCopy(const View &x)
    {
        for (int r = 0; r < H; ++r)
            for (int c = 0; c < W; ++c)
                elements[r * W + c] = get(x.at(r, c));
    }
    KVLM_INLINE T operator()(int, int r, int c) const { return elements[r * W + c]; }
};

template <class T, class Op, class A, class B, class D, class W, class H>
KVLM_NOINLINE void tableObjects(Op op, const A &givenA, const B &givenB, const D &givenD, W width, H height, int count)
{
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    const auto elementA = [&](int i, int r, int c) KVLM_INLINED { return get(a.view(i).at(r, c)); };
    const auto elementB = [&](int i, int r, int c) KVLM_INLINED { return get(b.view(i).at(r, c)); };
    const auto sweep = [&](const auto &x, const auto &y) KVLM_INLINED {
        for (int i = 0; i < count; ++i)
            for (int r = 0; r < height; ++r)
                for (int c = 0; c < width; ++c)
                    put(d.view(i).at(r, c), op(x(i, r, c), y(i, r, c)));
    };
    constexpr bool known = !std::is_same_v<W, int> && !D::isSingle;
    if constexpr (known && A::isSingle)
        sweep(TableCopy<T, W{}, H{}>(a.view(0)), elementB);
    else if constexpr (known && B::isSingle)
        sweep(elementA, TableCopy<T, W{}, H{}>(b.view(0)));
    else
        sweep(elementA, elementB);
}

// dst = op(A, B), A and B read as their letters say.
template <class T, char LetterA, char LetterB, class Op, class A, class B, class D>
KVLM_INLINE void tables(Op op, const A &tableA, const B &tableB, const D &tableD, int width, int height, int count)
{
    const int widthA = LetterA == 'm' ? width : height, widthB = LetterB == 'm' ? width : height;
    const auto a = readAs<LetterA>(tableA, widthA);
    const auto b = readAs<LetterB>(tableB, widthB);
    const auto d = readAs<'m'>(tableD, width);
    if (workInPlanes<T>(op, a, b, d, {width, height, count}))
        return;
    if (isAdjacent(tableA, width, height) && isAdjacent(tableB, width, height) && isAdjacent(tableD, width, height))
        return contiguous<T>(op, readAs<LetterA>(asAdjacent<int>(tableA, widthA), widthA),
                             readAs<LetterB>(asAdjacent<int>(tableB, widthB), widthB), asAdjacent<int>(tableD, width),
                             width, height, count);
    // Of small objects there is one loop for all letters.
    if constexpr (LetterA == 't')
        if (isSmall(width, height))
            return tables<T, 'm', LetterB>(op, Places<const T>(a, width, height).table(a.objStride), tableB, tableD,
                                           width, height, count);
    if constexpr (LetterB == 't')
        if (isSmall(width, height))
            return tables<T, LetterA, 'm'>(op, tableA, Places<const T>(b, width, height).table(b.objStride), tableD,
                                           width, height, count);
    if constexpr (LetterA == 'm' && LetterB == 'm')
        bySquareOrder(width, height, [&](auto w, auto h) KVLM_INLINED {
            tableObjects<T>(op, readAs<'m'>(tableA, w), readAs<'m'>(tableB, w), readAs<'m'>(tableD, w), w, h, count);
        });
    else
        tableObjects<T>(op, anySteps(a), anySteps(b), anySteps(d), width, height, count);
}

} // namespace kvlm

#endif
