// Element-wise work on a batch of strided or listed operands: dst(i, r, c) = op(A(i, r, c), B(i, r, c)).
//
// Settled: only objects have an order. Which element of one object is written first depends on the loop that is taken.
#ifndef KVLM_LOOPS_STRIDED_H
#define KVLM_LOOPS_STRIDED_H

#include "loops/runs.h"

#include <limits.h>

namespace kvlm {

// A copy of a single matrix of known size, in the order in which it lies. It belongs to the loop that reads it: the
// compiler knows that nothing writes it there, and keeps of it in registers what they hold.
template <class T, int W, int H>
struct LocalCopy {
    alignas(16) T elements[W * H];

    template <class X>
    KVLM_INLINE explicit LocalCopy(const X &x)
    {
        constexpr bool packed =
            X::adjacentInColumns
                ? std::is_same_v<decltype(X::elemStride), Fixed<H * sizeof(T)>>
                : X::adjacentInRows && (H == 1 || std::is_same_v<decltype(X::rowStride), Fixed<W * sizeof(T)>>);
        if constexpr (packed) // in whole registers, as they will be read
            memcpy(elements, x.base, sizeof elements);
        else
            for (int r = 0; r < H; ++r)
                for (int c = 0; c < W; ++c)
                    elements[X::adjacentInColumns ? c * H + r : r * W + c] = get(x.at(r, c));
    }
    template <class X>
    KVLM_INLINE auto viewLike(const X &) const
    {
        if constexpr (X::adjacentInColumns)
            return View<const T, Unit<const T>, Fixed<H * sizeof(T)>>{elements, {}, {}};
        else
            return View<const T, Fixed<W * sizeof(T)>, Unit<const T>>{elements, {}, {}};
    }
};

// The loop over objects, a function of its own for each shape: it has the registers for itself.
//
// Operands come by reference and are copied here: passed by value, their fields would be stored one by one and loaded
// again as whole registers, which stalls.
template <class T, class Op, class A, class B, class D, class W, class H>
KVLM_NOINLINE void objects(Op op, const A &givenA, const B &givenB, const D &givenD, W width, H height, int count)
{
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    constexpr bool known = !std::is_same_v<W, int> && !std::is_same_v<H, int>;
    if constexpr (known && A::isSingle && !D::isSingle) {
        const auto single = a.view(0);
        const LocalCopy<T, W{}, H{}> copy(single);
        for (int i = 0; i < count; ++i)
            object<T>(op, copy.viewLike(single), b.view(i), d.view(i), width, height);
    } else if constexpr (known && B::isSingle && !D::isSingle) {
        const auto single = b.view(0);
        const LocalCopy<T, W{}, H{}> copy(single);
        for (int i = 0; i < count; ++i)
            object<T>(op, a.view(i), copy.viewLike(single), d.view(i), width, height);
    } else {
        int i = 0;
        if constexpr (worksAsRun<T, typename D::View, W> && std::is_same_v<W, Fixed<3>> && !D::isSingle) {
            // As many objects as a register has lanes fill nine registers.
            constexpr int several = Lanes<T>::count;
            if (objectsPacked(a, 9) && objectsPacked(b, 9) && objectsPacked(d, 9))
                for (; i + several <= count; i += several)
                    packedOdd<T, 3, several>(op, a.view(i), b.view(i), d.view(i));
        }
        for (; i < count; ++i)
            object<T>(op, a.view(i), b.view(i), d.view(i), width, height);
    }
}

// A packed copy of a small single operand, made once for the batch.
template <class T>
struct PackedCopy {
    T elements[smallObject];
    int rowStride;

    template <class X>
    PackedCopy(const X &x, int width, int height) : rowStride(width * static_cast<int>(sizeof(T)))
    {
        const auto single = x.view(0);
        bySquareOrder(width, height, [&](auto w, auto h) KVLM_INLINED {
            for (int r = 0; r < h; ++r)
                for (int c = 0; c < w; ++c)
                    elements[r * w + c] = get(single.at(r, c));
        });
    }
    Strided<const T, None, int, Unit<const T>> operand() const { return {elements, {}, rowStride, {}}; }
};

// ---- Elements adjacent in rows or columns ------------------------------------------------------------------------

// A packed batch of objects of N elements with a single one of as many, which is repeated so often that it fills whole
// registers, and enough of them to hide the loop.
template <class T, int N>
constexpr int patternCopies = N % Lanes<T>::count == 0 ? 2 : Lanes<T>::count;

template <class T, bool SingleFirst, int N, class Op>
KVLM_NOINLINE void patternRuns(Op op, const T *single, const T *array, T *d, int count)
{
    constexpr int copies = patternCopies<T, N>;
    alignas(16) T pattern[N * copies];
    for (int k = 0; k < copies; ++k)
        memcpy(pattern + k * N, single, N * sizeof(T));

    const auto runOf = [&](auto length) KVLM_INLINED {
        if constexpr (SingleFirst)
            run<T>(op, pattern, array, d, length);
        else
            run<T>(op, array, pattern, d, length);
        array += length;
        d += length;
    };
    for (; count >= copies; count -= copies)
        runOf(Fixed<N * copies>());
    for (; count > 0; --count)
        runOf(Fixed<N>());
}

// d adjacent in rows, a and b in rows or in columns.
template <class T, class Op, class A, class B, class D>
KVLM_INLINE void contiguous(Op op, const A &a, const B &b, const D &d, int width, int height, int count)
{
    constexpr bool rowsOnly = A::View::adjacentInRows && B::View::adjacentInRows;
    constexpr bool singleA = A::isSingle && !D::isSingle, singleB = B::isSingle && !D::isSingle;
    const int64_t elements = static_cast<int64_t>(width) * height;

    if constexpr (!rowsOnly && (singleA ? B::View::adjacentInRows : singleB && A::View::adjacentInRows))
        if (isSmall(width, height)) {
            if constexpr (singleA)
                return contiguous<T>(op, PackedCopy<T>(a, width, height).operand(), b, d, width, height, count);
            else
                return contiguous<T>(op, a, PackedCopy<T>(b, width, height).operand(), d, width, height, count);
        }

    const bool packed = linesPacked(a, width, height) && linesPacked(b, width, height) && linesPacked(d, width, height);
    const bool packedBatch =
        packed && objectsPacked(a, elements) && objectsPacked(b, elements) && objectsPacked(d, elements);
    if constexpr (rowsOnly && !D::isList && !singleA && !singleB)
        if (packedBatch)
            return run<T>(op, a.base, b.base, d.base, static_cast<ptrdiff_t>(elements * count));

    bySquareOrder(width, height, [&](auto w, auto h) KVLM_INLINED {
        using W = decltype(w);
        if constexpr (!std::is_same_v<W, int>) {
            constexpr int order = W{};
            constexpr bool shortOrder = order == 3 || (order == 4 && sizeof(T) == 4);
            if constexpr (rowsOnly && !D::isList && (singleA || singleB)) {
                const auto &single = singleA ? a.base : b.base, &array = singleA ? b.base : a.base;
                if constexpr (shortOrder)
                    if (packedBatch)
                        return patternRuns<T, singleA, order * order>(op, single, array, d.base, count);
            }
            if (packed) {
                if constexpr (rowsOnly)
                    return objects<T>(op, a, b, d, Fixed<order * order>(), Fixed<1>(), count);
                else
                    return objects<T>(op, withPackedLines<order>(a), withPackedLines<order>(b),
                                      withPackedLines<order>(d), w, h, count);
            }
        }
        if (rowsOnly && packed && elements <= INT_MAX)
            objects<T>(op, a, b, d, static_cast<int>(elements), Fixed<1>(), count);
        else
            objects<T>(op, a, b, d, w, h, count);
    });
}

// ---- Any strides -------------------------------------------------------------------------------------------------

// f(x) with x's adjacency in its type. False, and no call, where x's elements are adjacent in neither direction.
template <class T, class X, class F>
KVLM_INLINE bool byAdjacency(const X &x, int width, int height, F f)
{
    constexpr int adjacent = sizeof(T);
    if (x.elemStride == adjacent)
        return f(x.withSteps(x.rowStride, Unit<const T>()));
    if (x.rowStride == adjacent)
        return f(x.withSteps(Unit<const T>(), x.elemStride));
    if constexpr (X::isSingle)
        if (isSmall(width, height))
            return f(PackedCopy<T>(x, width, height).operand());
    return false;
}

template <class T, class Op, class A, class B, class D>
KVLM_NOINLINE void strided(Op op, const A &givenA, const B &givenB, const D &givenD, int width, int height, int count)
{
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    constexpr int adjacent = sizeof(T);
    if (workInPlanes<T>(op, a, b, d, {width, height, count}))
        return;
    if (d.rowStride == adjacent && d.elemStride != adjacent)
        return strided<T>(op, transposed(a), transposed(b), transposed(d), height, width, count);
    if (d.elemStride == adjacent && byAdjacency<T>(a, width, height, [&](const auto &typedA) KVLM_INLINED {
            return byAdjacency<T>(b, width, height, [&](const auto &typedB) KVLM_INLINED {
                contiguous<T>(op, typedA, typedB, d.withSteps(d.rowStride, Unit<T>()), width, height, count);
                return true;
            });
        }))
        return;
    bySquareOrder(width, height, [&](auto w, auto h) KVLM_INLINED { objects<T>(op, a, b, d, w, h, count); });
}

} // namespace kvlm

#endif
