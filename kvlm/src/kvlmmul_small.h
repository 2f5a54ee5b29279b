// Products of square matrices of order 3 to 6: each row of the result is the sum of the rows of the second factor,
// weighted by a row of the first. Every element is p0 + p1 + ..., from left to right.
#ifndef KVLMMUL_SMALL_H
#define KVLMMUL_SMALL_H

#include "kvlmmul_factors.h"

namespace kvlm {

// Equal elements of neighbouring rows, of which each is in all lanes, as they stand beside the rests of the rows.
template <int Rows>
KVLM_INLINE Lanes<double> sideBySide(const Lanes<double> *x)
{
    return Rows == 1 ? x[0] : Lanes<double>{_mm_shuffle_pd(x[0].v, x[1].v, 0)};
}

template <int Rows>
KVLM_INLINE Lanes<float> sideBySide(const Lanes<float> *x)
{
    if constexpr (Rows == 1)
        return x[0];
    else if constexpr (Rows == 2)
        return {_mm_movelh_ps(x[0].v, x[1].v)};
    else
        return {_mm_movelh_ps(_mm_unpacklo_ps(x[0].v, x[1].v), _mm_unpacklo_ps(x[2].v, x[3].v))};
}

// sum + product, or the beginning of a sum: the first product, or +0 + the first product.
template <bool FromZero, class V>
KVLM_INLINE V accumulated(int k, V sum, V product)
{
    if (k > 0)
        return sum + product;
    return FromZero ? number<V>(0) + product : product;
}

// In a packed object of order 3 a later row overwrites what an earlier one stores beyond its own elements.
template <int N, class View>
KVLM_INLINE void storeGroup(const View &d, int r, int c, Lanes<float> v)
{
    constexpr bool overlapping = std::is_same_v<View, kvlm::View<float, Fixed<3 * sizeof(float)>, Unit<float>>>;
    if constexpr (View::adjacentInRows) {
        if (N > 3 || (overlapping && r < 2))
            v.store(d.at(r, c));
        else {
            v.storeFirst<2>(d.at(r, c));
            Lanes<float>{_mm_movehl_ps(v.v, v.v)}.storeOne(d.at(r, c + 2));
        }
    } else
#pragma GCC unroll 4
        for (int j = 0; j < (N == 3 ? 3 : 4); ++j)
            Loose<float>::store(d.at(r, c + j), v.v[j]);
}

template <int N, class View>
KVLM_INLINE void storeGroup(const View &d, int r, int c, Lanes<double> v)
{
    if constexpr (View::adjacentInRows)
        v.store(d.at(r, c));
    else
        v.scatter(d.at(r, c), d.at(r, c + 1));
}

template <class T, int N, int Rows, class View>
KVLM_INLINE void storeRest(const View &d, int r, Lanes<T> rest)
{
    constexpr int left = RowShape<T, N>::left;
    if constexpr (left == 2 && View::adjacentInRows) {
        rest.template storeFirst<2>(d.at(r, N - 2));
        if constexpr (Rows == 2)
            Lanes<T>{_mm_movehl_ps(rest.v, rest.v)}.template storeFirst<2>(d.at(r + 1, N - 2));
    } else
#pragma GCC unroll 4
        for (int j = 0; j < left * Rows; ++j)
            Loose<T>::store(d.at(r + j / left, N - left + j % left), rest.v[j]);
}

// `Rows` rows from row r on.
template <class T, int N, bool FromZero, int Rows, class Left, class Right, class View>
KVLM_INLINE void productRows(const Left &a, const Right &b, const View &d, int r)
{
    using Shape = RowShape<T, N>;
    using V = Lanes<T>;
    constexpr int together = Shape::together, bundles = Rows / together, single = Rows % together;
    V sum[Rows][Shape::groups], rest[bundles + single];
#pragma GCC unroll 6
    for (int k = 0; k < N; ++k) {
        const Row<T, N> row = b.row(k);
        V all[Rows];
        a.column(r, k, all);
        if constexpr (Shape::left) {
#pragma GCC unroll 3
            for (int i = 0; i < bundles; ++i)
                rest[i] = accumulated<FromZero>(k, rest[i], sideBySide<together>(all + i * together) * row.rest);
#pragma GCC unroll 3
            for (int i = 0; i < single; ++i)
                rest[bundles + i] = accumulated<FromZero>(k, rest[bundles + i], all[bundles * together + i] * row.rest);
        }
#pragma GCC unroll 6
        for (int i = 0; i < Rows; ++i)
#pragma GCC unroll 3
            for (int g = 0; g < Shape::groups; ++g)
                sum[i][g] = accumulated<FromZero>(k, sum[i][g], all[i] * row.group[g]);
    }
#pragma GCC unroll 6
    for (int i = 0; i < Rows; ++i)
#pragma GCC unroll 3
        for (int g = 0; g < Shape::groups; ++g)
            storeGroup<N>(d, r + i, g * V::count, sum[i][g]);
    if constexpr (Shape::left) {
#pragma GCC unroll 3
        for (int i = 0; i < bundles; ++i)
            storeRest<T, N, together>(d, r + i * together, rest[i]);
#pragma GCC unroll 3
        for (int i = 0; i < single; ++i)
            storeRest<T, N, 1>(d, r + bundles * together + i, rest[bundles + i]);
    }
}

// As many rows at once as there are registers for their sums.
template <class T, int N>
constexpr int rowsAtOnce = sizeof(void *) == 4       ? 2
                           : sizeof(T) == 4 || N < 5 ? N
                                                     : 3;

template <class T, int N, bool FromZero, class Left, class Right, class View>
KVLM_INLINE void productObject(const Left &a, const Right &b, const View &d)
{
    constexpr int rows = rowsAtOnce<T, N>, rest = N % rows;
#pragma GCC unroll 3
    for (int r = 0; r + rows <= N; r += rows)
        productRows<T, N, FromZero, rows>(a, b, d, r);
    if constexpr (rest)
        productRows<T, N, FromZero, rest>(a, b, d, N - rest);
}

// The objects of a batch from `first` on; a single factor is made once.
template <int N, bool FromZero, class A, class B, class D>
__attribute__((noinline)) void productObjects(const A &givenA, const B &givenB, const D &givenD, int first, int count)
{
    using T = typename D::Element;
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    // Measured: the 36 pairs of order 6 are read as fast from the object itself.
    if constexpr (A::isSingle && N * N * sizeof(T) < 288) {
        const MadeLeftFactor<T, N> left(a.view(0));
        for (int i = first; i < count; ++i)
            productObject<T, N, FromZero>(left, rightFactor<T, N>(b.view(i)), d.view(i));
    } else if constexpr (B::isSingle) {
        const MadeRightFactor<T, N> right(b.view(0));
        for (int i = first; i < count; ++i)
            productObject<T, N, FromZero>(leftFactor<T, N>(a.view(i)), right, d.view(i));
    } else
        for (int i = first; i < count; ++i)
            productObject<T, N, FromZero>(leftFactor<T, N>(a.view(i)), rightFactor<T, N>(b.view(i)), d.view(i));
}

} // namespace kvlm

#endif
