// Element-wise work on one object: runs of adjacent elements, tiles of registers, and any other strides.
#ifndef KVLM_LOOPS_RUNS_H
#define KVLM_LOOPS_RUNS_H

#include "frame/layout.h"
#include "lanes/shuffles.h"

namespace kvlm {

struct Plus {
    template <class V>
    KVLM_INLINE V operator()(V a, V b) const
    {
        return a + b;
    }
};

struct Minus {
    template <class V>
    KVLM_INLINE V operator()(V a, V b) const
    {
        return a - b;
    }
};

struct Times {
    template <class V>
    KVLM_INLINE V operator()(V a, V b) const
    {
        return a * b;
    }
};

// A source of a run: adjacent elements, or one number in the place of each.
template <class T>
struct Same {
    T value;
};

template <class T>
KVLM_INLINE T elementAt(const T *p, ptrdiff_t k)
{
    return get(p + k);
}

template <class T>
KVLM_INLINE T elementAt(Same<T> x, ptrdiff_t)
{
    return x.value;
}

// The first N lanes count.
template <int N, class T>
KVLM_INLINE Lanes<T> lanesAt(const T *p, ptrdiff_t k)
{
    return Lanes<T>::template loadFirst<N>(p + k);
}

template <int, class T>
KVLM_INLINE Lanes<T> lanesAt(Same<T> x, ptrdiff_t)
{
    return Lanes<T>::all(x.value);
}

// d[k] = op(a[k], b[k]), k < n.
template <class T, class Op, class A, class B>
KVLM_INLINE void run(Op op, A a, B b, T *d, ptrdiff_t n)
{
    constexpr int lanes = Lanes<T>::count;
    ptrdiff_t k = 0;
#pragma GCC unroll 4
    for (; k + lanes <= n; k += lanes)
        op(lanesAt<lanes>(a, k), lanesAt<lanes>(b, k)).store(d + k);
    for (; k < n; ++k)
        put(d + k, op(elementAt(a, k), elementAt(b, k)));
}

// The same without a loop: a short loop's end is what the processor cannot foresee.
template <class T, class Op, class A, class B, int N>
KVLM_INLINE void run(Op op, A a, B b, T *d, Fixed<N>)
{
    constexpr int lanes = Lanes<T>::count, whole = N - N % lanes;
#pragma GCC unroll 32
    for (int k = 0; k < whole; k += lanes)
        op(lanesAt<lanes>(a, k), lanesAt<lanes>(b, k)).store(d + k);
    if constexpr (N % 4 >= 2 && lanes == 4)
        op(lanesAt<2>(a, whole), lanesAt<2>(b, whole)).template storeFirst<2>(d + whole);
    if constexpr (N % 2 == 1)
        put(d + N - 1, op(elementAt(a, N - 1), elementAt(b, N - 1)));
}

// Fewer objects than this are not worth work plane by plane.
constexpr int worthPlanes = 4;

// The plane that begins at an element, as the source of a run.
template <class T, class X>
KVLM_INLINE auto planeOf(const X &, T *first)
{
    if constexpr (X::isSingle)
        return Same<std::remove_const_t<T>>{get(first)};
    else
        return first;
}

// dst = op(A, B) plane by plane, if all operands are in planes and those of d are apart; false, and nothing is done,
// otherwise.
template <class T, class Op, class A, class B, class D>
KVLM_INLINE bool workInPlanes(Op op, const A &a, const B &b, const D &d, Extent n)
{
    if constexpr (!D::isList && !D::isSingle)
        if (n.count >= worthPlanes && inPlanes(a) && inPlanes(b) && inPlanes(d) && planesApart(d, n)) {
            for (int r = 0; r < n.height; ++r)
                for (int c = 0; c < n.width; ++c)
                    run<T>(op, planeOf(a, a.view(0).at(r, c)), planeOf(b, b.view(0).at(r, c)), d.view(0).at(r, c),
                           static_cast<ptrdiff_t>(n.count));
            return true;
        }
    return false;
}

// R rows of C elements of an operand, behind element (r, c), as they are stored: where the operand's elements are
// adjacent in columns, these are C registers of R elements, and a transposition makes R rows of them.
template <class T>
struct Tile {
    Lanes<T> row[Lanes<T>::count];
};

template <class T, int R, int C, class View>
KVLM_INLINE Tile<T> storedTile(const View &x, int r, int c)
{
    Tile<T> block = {};
    if constexpr (View::adjacentInRows)
        for (int k = 0; k < R; ++k)
            block.row[k] = Lanes<T>::template loadFirst<C>(x.at(r + k, c));
    else
        for (int k = 0; k < C; ++k)
            block.row[k] = Lanes<T>::template loadFirst<R>(x.at(r, c + k));
    return block;
}

template <class T, int R, int C, class Op, class A, class B, class D>
KVLM_INLINE void blockAt(Op op, const A &a, const B &b, const D &d, int r, int c)
{
    constexpr bool transposeLate = A::adjacentInColumns && B::adjacentInColumns;
    Tile<T> x = storedTile<T, R, C>(a, r, c), y = storedTile<T, R, C>(b, r, c);
    if constexpr (A::adjacentInColumns && !transposeLate)
        transpose(x.row);
    if constexpr (B::adjacentInColumns && !transposeLate)
        transpose(y.row);
    for (int k = 0; k < (transposeLate ? C : R); ++k)
        x.row[k] = op(x.row[k], y.row[k]);
    if constexpr (transposeLate)
        transpose(x.row);
    for (int k = 0; k < R; ++k)
        x.row[k].template storeFirst<C>(d.at(r + k, c));
}

// R rows from row r on: blocks, then single elements.
template <class T, int R, class Op, class A, class B, class D, class W>
KVLM_INLINE void blockRows(Op op, const A &a, const B &b, const D &d, int r, W width)
{
    constexpr int L = Lanes<T>::count;
    int c = 0;
    if constexpr (R > 1) {
        for (; c + L <= width; c += L)
            blockAt<T, R, L>(op, a, b, d, r, c);
        if constexpr (L == 4)
            if (c + 2 <= width) {
                blockAt<T, R, 2>(op, a, b, d, r, c);
                c += 2;
            }
    }
    for (; c < width; ++c)
        for (int k = 0; k < R; ++k)
            put(d.at(r + k, c), op(get(a.at(r + k, c)), get(b.at(r + k, c))));
}

// One object, elements of d adjacent in rows, those of a and b in rows or in columns.
template <class T, class Op, class A, class B, class D, class W, class H>
KVLM_INLINE void blocks(Op op, const A &a, const B &b, const D &d, W width, H height)
{
    constexpr int L = Lanes<T>::count;
    int r = 0;
    for (; r + L <= height; r += L)
        blockRows<T, L>(op, a, b, d, r, width);
    if constexpr (L == 4)
        if (r + 2 <= height) {
            blockRows<T, 2>(op, a, b, d, r, width);
            r += 2;
        }
    for (; r < height; ++r)
        blockRows<T, 1>(op, a, b, d, r, width);
}

// A packed object of odd order N fills no blocks: it is worked as one run, rows becoming columns in the registers. So
// are M packed objects behind one another.
template <class T, int N, int M, class Op, class A, class B, class D>
KVLM_INLINE void packedOdd(Op op, const A &a, const B &b, const D &d)
{
    using V = Lanes<T>;
    constexpr int elements = M * N * N, last = elements - 1, registers = elements / V::count;
    constexpr bool transposeLate = A::adjacentInColumns && B::adjacentInColumns;
    V x[registers], y[registers];
    for (int k = 0; k < registers; ++k) {
        x[k] = V::load(a.base + k * V::count);
        y[k] = V::load(b.base + k * V::count);
    }
    if constexpr (A::adjacentInColumns && !transposeLate)
        transposePacked(x, Fixed<N>());
    if constexpr (B::adjacentInColumns && !transposeLate)
        transposePacked(y, Fixed<N>());
    for (int k = 0; k < registers; ++k)
        x[k] = op(x[k], y[k]);
    if constexpr (transposeLate)
        transposePacked(x, Fixed<N>());
    T end = 0;
    if constexpr (elements % 2 == 1)
        end = op(get(a.base + last), get(b.base + last));
    for (int k = 0; k < registers; ++k)
        x[k].store(d.base + k * V::count);
    if constexpr (elements % 2 == 1)
        put(d.base + last, end);
}

// Order 5 in 32f is faster in blocks.
template <class T, class D, class W>
constexpr bool worksAsRun = false;
template <class T, class D, int N>
constexpr bool worksAsRun<T, D, Fixed<N>> = std::is_same_v<decltype(D::rowStride), Fixed<N * sizeof(T)>> &&
                                            (sizeof(T) == 8 ? N % 2 == 1 : N == 3);

// One object, by whatever its strides' types tell.
template <class T, class Op, class A, class B, class D, class W, class H>
KVLM_INLINE void object(Op op, const A &a, const B &b, const D &d, W width, H height)
{
    if constexpr (D::adjacentInRows && A::adjacentInRows && B::adjacentInRows) {
        for (int r = 0; r < height; ++r)
            run<T>(op, a.at(r, 0), b.at(r, 0), d.at(r, 0), width);
    } else if constexpr (D::adjacentInRows && (A::adjacentInRows || A::adjacentInColumns) &&
                         (B::adjacentInRows || B::adjacentInColumns)) {
        if constexpr (worksAsRun<T, D, W>)
            packedOdd<T, W{}, 1>(op, a, b, d);
        else
            blocks<T>(op, a, b, d, width, height);
    } else {
        for (int r = 0; r < height; ++r)
            for (int c = 0; c < width; ++c)
                put(d.at(r, c), op(get(a.at(r, c)), get(b.at(r, c))));
    }
}

// f(width, height), with sizes that the compiler knows for the square orders 3 to 6.
template <class F>
KVLM_INLINE void bySquareOrder(int width, int height, F f)
{
    bySmallOrder(
        width == height ? width : 0, [&](auto order) KVLM_INLINED { f(order, order); },
        [&]() KVLM_INLINED { f(width, height); });
}

} // namespace kvlm

#endif
