// Matrix by vector with adjacent elements, orders 3 to 6: vectors are rows, multiplied by the transposed matrix, whose
// rows are in registers. A single matrix serves several vectors at once.
#ifndef KVLMMUL_ADJACENT_H
#define KVLMMUL_ADJACENT_H

#include "kvlmmul_small.h"
#include "lanes/batches.h"
#include "loops/sums.h"

namespace kvlm::mul {

// Rows of a term, to sums in whole registers and to what is left of each row, which may share a register with
// another's.
template <class T, int N, class E, int Rows, int Groups, int Rests>
KVLM_INLINE void addTermRows(const E &term, Lanes<T> (&sum)[Rows][Groups], Lanes<T> (&rest)[Rests])
{
    using Shape = RowShape<T, N>;
    using V = Lanes<T>;
    constexpr int bundles = Rows / Shape::together, rests = bundles + Rows % Shape::together;
#pragma GCC unroll 4
    for (int i = 0; i < Rows; ++i) {
        const Row<T, N> b = RightFactor<T, N, E>{term}.row(i);
#pragma GCC unroll 3
        for (int g = 0; g < Groups; ++g)
            sum[i][g] = sum[i][g] + b.group[g];
    }
#pragma GCC unroll 4
    for (int i = 0; i < rests; ++i) {
        const bool bundle = i < bundles;
        const int first = bundle ? i * Shape::together : bundles * Shape::together + i - bundles;
        if constexpr (Shape::left == 1) {
            const auto at = [&](int l) KVLM_INLINED { return term.at(first + (bundle ? l : 0), N - 1); };
            if constexpr (V::count == 2)
                rest[i] = rest[i] + V::gather(at(0), at(1));
            else
                rest[i] = rest[i] + V::gather(at(0), at(1), at(2), at(3));
        } else if constexpr (Shape::left == 2)
            rest[i].v = _mm_add_ps(
                rest[i].v, _mm_movelh_ps(loadTwo(term.at(first, N - 2)).v, loadTwo(term.at(first + bundle, N - 2)).v));
    }
}

// `Rows` vectors, each a row of its operand: y = x*a + term.
template <class T, int N, Sum Order, int Rows, class Left, class Right, class E, class View>
KVLM_INLINE void vectorRows(const Left &x, const Right &a, const E &term, const View &y)
{
    using Shape = RowShape<T, N>;
    using V = Lanes<T>;
    constexpr int together = Shape::together, bundles = Rows / together, single = Rows % together;
    V sum[Rows][Shape::groups], half[Rows][Shape::groups], rest[bundles + single], halfRest[bundles + single];
#pragma GCC unroll 6
    for (int k = 0; k < N; ++k) {
        const Row<T, N> row = a.row(k);
        V all[Rows];
        x.column(0, k, all);
        if constexpr (Shape::left) {
#pragma GCC unroll 4
            for (int i = 0; i < bundles; ++i)
                addProduct<Order, N>(k, N - 1, rest[i], halfRest[i],
                                     besideEachOther<together>(all + i * together) * row.rest);
#pragma GCC unroll 4
            for (int i = 0; i < single; ++i)
                addProduct<Order, N>(k, N - 1, rest[bundles + i], halfRest[bundles + i],
                                     all[bundles * together + i] * row.rest);
        }
#pragma GCC unroll 4
        for (int i = 0; i < Rows; ++i)
#pragma GCC unroll 3
            for (int g = 0; g < Shape::groups; ++g)
                addProduct<Order, N>(k, 0, sum[i][g], half[i][g], all[i] * row.group[g]);
    }
    if constexpr (!std::is_same_v<E, NoTerm>)
        addTermRows<T, N>(term, sum, rest);
#pragma GCC unroll 4
    for (int i = 0; i < Rows; ++i)
#pragma GCC unroll 3
        for (int g = 0; g < Shape::groups; ++g)
            storeGroup<N>(y, i, g * V::count, sum[i][g]);
    if constexpr (Shape::left) {
#pragma GCC unroll 4
        for (int i = 0; i < bundles; ++i)
            storeRest<T, N, together>(y, i * together, rest[i]);
#pragma GCC unroll 4
        for (int i = 0; i < single; ++i)
            storeRest<T, N, 1>(y, bundles * together + i, rest[bundles + i]);
    }
}

// Several vectors of an array as the rows of one view; one of them, or a single one, as its only row.
template <class X>
KVLM_INLINE auto asRows(const X &x, ptrdiff_t i)
{
    using T = typename X::Element;
    if constexpr (X::isSingle || X::isList)
        return View<T, int, Unit<T>>{x.object(i), 0, {}};
    else
        return View<T, int, Unit<T>>{x.object(i), x.objStride, {}};
}

KVLM_INLINE NoTerm asRows(NoTerm, ptrdiff_t)
{
    return {};
}

// A single vector, each of its elements in all lanes.
template <class T, int N>
struct HeldRow {
    Lanes<T> each[N];

    KVLM_INLINE explicit HeldRow(const T *p)
    {
#pragma GCC unroll 6
        for (int k = 0; k < N; ++k)
            each[k] = Lanes<T>::all(Loose<T>::load(p + k));
    }
    KVLM_INLINE void column(int, int k, Lanes<T> (&all)[1]) const
    {
        all[0] = each[k];
    }
};

// Sums of `Rows` rows of a matrix times a vector: the products as they lie, then sorted, a row in each lane.
template <class T, int N, Sum Order, int Rows, class Matrix>
KVLM_INLINE Lanes<T> rowSums(const Matrix &a, const Lanes<T> (&x)[(N + 1) / Lanes<T>::count], int r)
{
    using V = Lanes<T>;
    constexpr int lanes = V::count;
    V sum, half;
#pragma GCC unroll 3
    for (int k = 0; k + lanes <= N; k += lanes) {
        V p[lanes];
#pragma GCC unroll 4
        for (int l = 0; l < lanes; ++l)
            p[l] = l < Rows ? V::load(a.at(r + l, k)) * x[k / lanes] : p[0];
        transpose(p);
#pragma GCC unroll 4
        for (int l = 0; l < lanes; ++l)
            addProduct<Order, N>(k + l, r, sum, half, p[l]);
    }
    if constexpr (N % lanes == 1)
        addProduct<Order, N>(N - 1, r, sum, half, V::gather(a.at(r, N - 1), a.at(r + Rows - 1, N - 1)) * x[N / lanes]);
    return sum;
}

// An array of matrices read by rows: those of doubles, and of order 4.
template <int N, Sum Order, class A, class X, class D>
KVLM_NOINLINE void productsByRows(const A &givenA, const X &givenX, const D &givenD, int count)
{
    using T = typename D::Element;
    using V = Lanes<T>;
    constexpr int lanes = V::count;
    static_assert(N % lanes < 2);
    const A a = givenA;
    const X x = givenX;
    const D d = givenD;
    V parts[(N + 1) / lanes];
    const auto load = [&](const T *p) KVLM_INLINED {
#pragma GCC unroll 3
        for (int g = 0; g < N / lanes; ++g)
            parts[g] = V::load(p + g * lanes);
        if constexpr (N % lanes == 1)
            parts[N / lanes] = V::all(Loose<T>::load(p + N - 1));
    };
    load(x.object(0));
    for (int i = 0; i < count; ++i) {
        if constexpr (!X::isSingle)
            load(x.object(i));
        const auto matrix = a.view(i);
        T *const y = d.object(i);
#pragma GCC unroll 3
        for (int r = 0; r + lanes <= N; r += lanes)
            rowSums<T, N, Order, lanes>(matrix, parts, r).store(y + r);
        if constexpr (N % lanes == 1)
            rowSums<T, N, Order, 1>(matrix, parts, N - 1).storeOne(y + N - 1);
    }
}

// Vectors that share a register for what is left of them, and sums enough to fill the processor's pipes.
template <class T, int N>
constexpr int vectorsAtOnce = RowShape<T, N>::left ? RowShape<T, N>::together : 2;

// The batch, or one product. Objects that overlap are written one after the other.
template <int N, Sum Order, class A, class X, class E, class D>
KVLM_NOINLINE void adjacentProducts(const A &givenA, const X &givenX, const E &givenTerm, const D &givenD, int count)
{
    using T = typename D::Element;
    const A a = givenA;
    const X x = givenX;
    const E term = givenTerm;
    const D d = givenD;
    const auto one = [&](const auto &right, ptrdiff_t i) KVLM_INLINED {
        vectorRows<T, N, Order, 1>(leftFactor<T, N>(asRows(x, i)), right, asRows(term, i), asRows(d, i));
    };
    if constexpr (A::isSingle && !D::isSingle) {
        constexpr int several = vectorsAtOnce<T, N>;
        const MadeRightFactor<T, N> right(a.view(0));
        int i = 0;
        if constexpr (!D::isList)
            if (d.objStride >= N * static_cast<int>(sizeof(T)))
                for (; i + several <= count; i += several)
                    vectorRows<T, N, Order, several>(leftFactor<T, N>(asRows(x, i)), right, asRows(term, i),
                                                     asRows(d, i));
        for (; i < count; ++i)
            one(right, i);
    } else if constexpr (X::isSingle && !D::isSingle) {
        const HeldRow<T, N> row(x.base);
        for (int i = 0; i < count; ++i)
            vectorRows<T, N, Order, 1>(row, rightFactor<T, N>(a.view(i)), NoTerm(), asRows(d, i));
    } else
        for (int i = 0; i < count; ++i)
            one(rightFactor<T, N>(a.view(i)), i);
}

} // namespace kvlm::mul

#endif
