// Products of square matrices of order 3 to 6: each row of the result is the sum of the rows of the second factor,
// weighted by a row of the first. Every element is p0 + p1 + ..., from left to right.
#ifndef KVLMMUL_SMALL_H
#define KVLMMUL_SMALL_H

#include "kvlmmul_factors.h"

namespace kvlm::mul {

// Equal elements of neighbouring rows, of which each is in all lanes, as they stand beside the rests of the rows.
template <int Rows>
KVLM_INLINE Lanes<double> besideEachOther(const Lanes<double> *x)
{
    return Rows == 1 ? x[0] : Lanes<double>{_mm_shuffle_pd(x[0].v, x[1].v, 0)};
}

template <int Rows>
KVLM_INLINE Lanes<float> besideEachOther(const Lanes<float> *x)
{
    if constexpr (Rows == 1)
        return x[0];
    else if constexpr (Rows == 2)
        return {_mm_movelh_ps(x[0].v, x[1].v)};
    else
        return {_mm_movelh_ps(_mm_unpacklo_ps(x[0].v, x[1].v), _mm_unpacklo_ps(x[2].v, x[3].v))};
}

// sum += product, or the beginning of a sum: the first product, or +0 + the first product.
template <bool FromZero, class V>
KVLM_INLINE void accumulate(int k, V &sum, V product)
{
    if (k > 0)
        sum = sum + product;
    else
        sum = FromZero ? number<V>(0) + product : product;
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
                accumulate<FromZero>(k, rest[i], besideEachOther<together>(all + i * together) * row.rest);
#pragma GCC unroll 3
            for (int i = 0; i < single; ++i)
                accumulate<FromZero>(k, rest[bundles + i], all[bundles * together + i] * row.rest);
        }
#pragma GCC unroll 6
        for (int i = 0; i < Rows; ++i)
#pragma GCC unroll 3
            for (int g = 0; g < Shape::groups; ++g)
                accumulate<FromZero>(k, sum[i][g], all[i] * row.group[g]);
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

// As many rows at once as there are registers for their sums; at order 6 better for two rows of the first factor, if
// those of the second need not be made again.
template <class T, int N, class Right, class View>
constexpr int rowsAtOnce()
{
    constexpr bool made = std::is_same_v<Right, MadeRightFactor<T, N>>;
    if (sizeof(void *) == 4)
        return 2;
    if (sizeof(T) == 8 && N > 4)
        return 3;
    return made && N == 6 && View::adjacentInRows ? 2 : N;
}

template <class T, int N, bool FromZero, class Left, class Right, class View>
KVLM_INLINE void productObject(const Left &a, const Right &b, const View &d)
{
    constexpr int rows = rowsAtOnce<T, N, Right, View>(), rest = N % rows;
#pragma GCC unroll 3
    for (int r = 0; r + rows <= N; r += rows)
        productRows<T, N, FromZero, rows>(a, b, d, r);
    if constexpr (rest)
        productRows<T, N, FromZero, rest>(a, b, d, N - rest);
}

// An object as it is read: where it lies, or a copy of it.
template <class T, int N, bool Copied>
struct Held {
    template <class View>
    KVLM_INLINE explicit Held(const View &)
    {
    }
    template <class View>
    KVLM_INLINE View view(const View &x) const
    {
        return x;
    }
};

template <class T, int N>
struct Held<T, N, true> {
    T elements[N][N];

    template <class View>
    KVLM_INLINE explicit Held(const View &x)
    {
        for (int r = 0; r < N; ++r)
            for (int c = 0; c < N; ++c)
                elements[r][c] = Loose<T>::load(x.at(r, c));
    }
    template <class X>
    KVLM_INLINE auto view(const X &) const
    {
        return View<const T, Fixed<N * sizeof(T)>, Unit<const T>>{elements[0], {}, {}};
    }
};

// The objects of a batch from `first` on; a single factor is made once. In tables dst may be a source: settled, all of
// an object is read before the first element is stored.
template <int N, bool FromZero, class A, class B, class D>
KVLM_NOINLINE void productObjects(const A &givenA, const B &givenB, const D &givenD, int first, int count)
{
    using T = typename D::Element;
    using Factor = Held<T, N, D::isTable && rowsAtOnce<T, N, void, typename D::View>() < N>;
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    const auto product = [&](int i, const auto &left, const auto &right)
                             KVLM_INLINED { productObject<T, N, FromZero>(left, right, d.view(i)); };
    const auto leftOf = [](const Factor &held, const auto &x) KVLM_INLINED { return leftFactor<T, N>(held.view(x)); };
    const auto rightOf = [](const Factor &held, const auto &x) KVLM_INLINED { return rightFactor<T, N>(held.view(x)); };
    // Measured: the 36 pairs of order 6 are read as fast from the object itself.
    if constexpr (A::isSingle && N * N * sizeof(T) < 288) {
        const MadeLeftFactor<T, N> left(a.view(0));
        for (int i = first; i < count; ++i) {
            const auto y = b.view(i);
            const Factor heldY(y);
            product(i, left, rightOf(heldY, y));
        }
    } else if constexpr (B::isSingle) {
        const MadeRightFactor<T, N> right(b.view(0));
        for (int i = first; i < count; ++i) {
            const auto x = a.view(i);
            const Factor heldX(x);
            product(i, leftOf(heldX, x), right);
        }
    } else
        for (int i = first; i < count; ++i) {
            const auto x = a.view(i);
            const auto y = b.view(i);
            const Factor heldX(x), heldY(y);
            product(i, leftOf(heldX, x), rightOf(heldY, y));
        }
}

} // namespace kvlm::mul

#endif
