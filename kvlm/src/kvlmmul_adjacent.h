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

// A vector as rows are multiplied by it: registers of it as it lies, and what is left of odd orders in all lanes.
template <class T, int N>
struct RowFactor {
    static constexpr int lanes = Lanes<T>::count;
    static_assert(N % lanes < 2);
    Lanes<T> parts[(N + 1) / lanes];

    KVLM_INLINE explicit RowFactor(const T *p)
    {
#pragma GCC unroll 3
        for (int g = 0; g < N / lanes; ++g)
            parts[g] = Lanes<T>::load(p + g * lanes);
        if constexpr (N % lanes == 1)
            parts[N / lanes] = Lanes<T>::all(Loose<T>::load(p + N - 1));
    }
};

// Sums of as many rows as a register has lanes, from row r on, row(l) times x(l): the products as they lie, then
// sorted, a row in each lane. last is what is left of the vectors of odd orders.
template <class T, int N, Sum Order, class Row, class Factor>
KVLM_INLINE Lanes<T> rowSums(int r, Row row, Factor x, Lanes<T> last)
{
    using V = Lanes<T>;
    constexpr int lanes = V::count;
    V sum, half;
#pragma GCC unroll 3
    for (int k = 0; k + lanes <= N; k += lanes) {
        V p[lanes];
#pragma GCC unroll 4
        for (int l = 0; l < lanes; ++l)
            p[l] = V::load(row(l) + k) * x(l).parts[k / lanes];
        transpose(p);
#pragma GCC unroll 4
        for (int l = 0; l < lanes; ++l)
            addProduct<Order, N>(k + l, r, sum, half, p[l]);
    }
    if constexpr (N % lanes == 1)
        addProduct<Order, N>(N - 1, r, sum, half, V::gather(row(0) + N - 1, row(1) + N - 1) * last);
    return sum;
}

// Two objects of odd order: their rows two at a time, the last one of the first with the first one of the second.
template <int N, Sum Order, class T, class View>
KVLM_INLINE void rowPairs(const View &a, const View &b, const RowFactor<T, N> &x, const RowFactor<T, N> &y,
                          Lanes<T> lastOfBoth, T *dstA, T *dstB)
{
    eachIndex(Fixed<N>(), [&](auto pair) KVLM_INLINED {
        constexpr int first = 2 * decltype(pair){}, r = first % N;
        const Lanes<T> sums = rowSums<T, N, Order>(
            r, [&](int l) KVLM_INLINED { return first + l < N ? a.at(first + l, 0) : b.at(first + l - N, 0); },
            [&](int l) KVLM_INLINED -> const auto & { return first + l < N ? x : y; },
            r == N - 1  ? lastOfBoth
            : first < N ? x.parts[N / 2]
                        : y.parts[N / 2]);
        if constexpr (r < N - 1)
            sums.store((first < N ? dstA : dstB) + r);
        else
            sums.scatter(dstA + r, dstB);
    });
}

// An array of matrices read by rows: those of doubles, and of order 4.
template <int N, Sum Order, class A, class X, class D>
KVLM_NOINLINE void productsByRows(const A &givenA, const X &givenX, const D &givenD, int count)
{
    using T = typename D::Element;
    using Factor = RowFactor<T, N>;
    constexpr int lanes = Lanes<T>::count, parts = (N + 1) / lanes;
    const A a = givenA;
    const X x = givenX;
    const D d = givenD;
    const Factor single(x.object(0));
    int i = 0;
    if constexpr (N % lanes == 1 && X::isSingle) {
        for (; count - i >= 2; i += 2)
            rowPairs<N, Order>(a.view(i), a.view(i + 1), single, single, single.parts[N / 2], d.object(i),
                               d.object(i + 1));
    } else if constexpr (N % lanes == 1) {
        for (; count - i >= 2; i += 2) {
            const Factor first(x.object(i)), second(x.object(i + 1));
            rowPairs<N, Order>(a.view(i), a.view(i + 1), first, second,
                               unpackLow(first.parts[N / 2], second.parts[N / 2]), d.object(i), d.object(i + 1));
        }
    }
    for (; i < count; ++i) {
        const Factor vector = X::isSingle ? single : Factor(x.object(i));
        const auto matrix = a.view(i);
        T *const y = d.object(i);
        const auto sums = [&](int r) KVLM_INLINED {
            return rowSums<T, N, Order>(
                r, [&](int l) KVLM_INLINED { return matrix.at(r + l < N ? r + l : N - 1, 0); },
                [&](int) KVLM_INLINED -> const auto & { return vector; }, vector.parts[parts - 1]);
        };
#pragma GCC unroll 3
        for (int r = 0; r + lanes <= N; r += lanes)
            sums(r).store(y + r);
        if constexpr (N % lanes == 1)
            sums(N - 1).storeOne(y + N - 1);
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
                for (; count - i >= several; i += several)
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
