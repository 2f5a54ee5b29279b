// The factors of a product of order 3 to 6 in registers: columns of the first, each element in all lanes, and rows of
// the second.
#ifndef KVLMMUL_FACTORS_H
#define KVLMMUL_FACTORS_H

#include "frame/read.h"
#include "lanes/lanes.h"

namespace kvlm::mul {

// One element in all lanes. Integer shuffles need no copy of what they shuffle.
KVLM_INLINE Lanes<float> broadcast(Lanes<float> v, int lane)
{
    const __m128i x = _mm_castps_si128(v.v);
    switch (lane) {
    case 0:
        return {_mm_castsi128_ps(_mm_shuffle_epi32(x, 0x00))};
    case 1:
        return {_mm_castsi128_ps(_mm_shuffle_epi32(x, 0x55))};
    case 2:
        return {_mm_castsi128_ps(_mm_shuffle_epi32(x, 0xaa))};
    default:
        return {_mm_castsi128_ps(_mm_shuffle_epi32(x, 0xff))};
    }
}

KVLM_INLINE Lanes<double> broadcast(Lanes<double> v, int lane)
{
    const __m128i x = _mm_castpd_si128(v.v);
    return {_mm_castsi128_pd(lane == 0 ? _mm_shuffle_epi32(x, 0x44) : _mm_shuffle_epi32(x, 0xee))};
}

// Two or three neighbours; the other lanes are 0.
KVLM_INLINE Lanes<float> loadTwo(const float *p)
{
    return Lanes<float>::loadFirst<2>(p);
}

KVLM_INLINE Lanes<double> loadTwo(const double *p)
{
    return Lanes<double>::load(p);
}

KVLM_INLINE Lanes<float> loadThree(const float *p)
{
    return {_mm_movelh_ps(loadTwo(p).v, _mm_set_ss(Loose<float>::load(p + 2)))};
}

// A row of N elements: whole registers, or three floats in one, and what is left. The elements that are left in
// neighbouring rows share a register.
template <class T, int N>
struct RowShape {
    static constexpr int lanes = Lanes<T>::count;
    static constexpr int groups = N == 3 && lanes == 4 ? 1 : N / lanes;
    static constexpr int left = N == 3 && lanes == 4 ? 0 : N % lanes;
    static constexpr int together = left ? lanes / left : 1; // rows whose rests are computed together
};

// A row of the second factor. The rest is repeated as often as it goes into a register.
template <class T, int N>
struct Row : RowShape<T, N> {
    Lanes<T> group[RowShape<T, N>::groups];
    Lanes<T> rest;
};

// A packed object of three times three.
template <class View>
constexpr bool isNine = false;
template <class T>
constexpr bool isNine<View<const T, Fixed<3 * sizeof(T)>, Unit<const T>>> = true;
template <class T>
constexpr bool isNine<View<const T, Unit<const T>, Fixed<3 * sizeof(T)>>> = true;

// ---- The second factor

// Read row by row, as it is used.
template <class T, int N, class View>
struct RightFactor {
    using V = Lanes<T>;
    View x;

    KVLM_INLINE Row<T, N> row(int k) const
    {
        Row<T, N> row;
#pragma GCC unroll 3
        for (int g = 0; g < row.groups; ++g)
            row.group[g] = group(k, g * V::count);
        if constexpr (row.left == 1)
            row.rest = V::all(Loose<T>::load(x.at(k, N - 1)));
        else if constexpr (row.left == 2) {
            const V pair = two(k, N - 2);
            row.rest.v = _mm_movelh_ps(pair.v, pair.v);
        }
        return row;
    }

private:
    KVLM_INLINE V two(int k, int c) const
    {
        if constexpr (View::adjacentInRows)
            return loadTwo(x.at(k, c));
        else if constexpr (sizeof(T) == 8)
            return V::gather(x.at(k, c), x.at(k, c + 1));
        else
            return {
                _mm_unpacklo_ps(_mm_set_ss(Loose<T>::load(x.at(k, c))), _mm_set_ss(Loose<T>::load(x.at(k, c + 1))))};
    }
    KVLM_INLINE V group(int k, int c) const
    {
        if constexpr (sizeof(T) == 8)
            return two(k, c);
        else if constexpr (N == 3 && isNine<View>)
            // Three floats and one beside them in the same object.
            return k < 2 ? V::load(x.at(k, 0))
                         : V{_mm_castsi128_ps(_mm_srli_si128(_mm_castps_si128(V::load(x.at(1, 2)).v), sizeof(float)))};
        else if constexpr (N == 3 && View::adjacentInRows)
            return loadThree(x.at(k, 0));
        else if constexpr (N == 3)
            return {_mm_movelh_ps(two(k, 0).v, _mm_set_ss(Loose<T>::load(x.at(k, 2))))};
        else if constexpr (View::adjacentInRows)
            return V::load(x.at(k, c));
        else
            return V::gather(x.at(k, c), x.at(k, c + 1), x.at(k, c + 2), x.at(k, c + 3));
    }
};

// All rows made at once: of a factor that serves a whole batch, or whose columns become rows.
template <class T, int N>
struct MadeRightFactor : RowShape<T, N> {
    using V = Lanes<T>;
    using Shape = RowShape<T, N>;
    Row<T, N> rows[N];

    template <class View>
    KVLM_INLINE explicit MadeRightFactor(const View &x)
    {
        if constexpr (View::adjacentInColumns && isNine<View> && sizeof(T) == 4) {
            const __m128 first = V::load(x.base).v, second = V::load(x.base + 4).v;
            const __m128 last = _mm_set_ss(Loose<T>::load(x.base + 8));
            const __m128 middle = _mm_shuffle_ps(first, second, _MM_SHUFFLE(3, 0, 1, 1));
            const __m128 third = _mm_shuffle_ps(first, second, _MM_SHUFFLE(1, 1, 2, 2));
            rows[0].group[0].v = _mm_shuffle_ps(first, second, _MM_SHUFFLE(2, 2, 3, 0));
            rows[1].group[0].v = _mm_shuffle_ps(middle, middle, _MM_SHUFFLE(3, 3, 2, 0));
            rows[2].group[0].v = _mm_shuffle_ps(third, last, _MM_SHUFFLE(0, 0, 2, 0));
        } else if constexpr (View::adjacentInColumns) {
#pragma GCC unroll 3
            for (int g = 0; g < Shape::groups; ++g)
                transposeColumns(x, g);
#pragma GCC unroll 6
            for (int k = 0; k < N; ++k)
                if constexpr (Shape::left == 1)
                    rows[k].rest = V::all(Loose<T>::load(x.at(k, N - 1)));
                else if constexpr (Shape::left == 2)
                    rows[k].rest = V::gather(x.at(k, N - 2), x.at(k, N - 1), x.at(k, N - 2), x.at(k, N - 1));
        } else
#pragma GCC unroll 6
            for (int k = 0; k < N; ++k)
                rows[k] = RightFactor<T, N, View>{x}.row(k);
    }
    KVLM_INLINE const Row<T, N> &row(int k) const
    {
        return rows[k];
    }

private:
    // The columns of one register's width become rows, block by block.
    template <class View>
    KVLM_INLINE void transposeColumns(const View &x, int g)
    {
        constexpr int lanes = V::count, columns = N < lanes ? N : lanes;
#pragma GCC unroll 3
        for (int k = 0; k < N; k += lanes) {
            V v[lanes];
            const int rest = N - k;
#pragma GCC unroll 4
            for (int j = 0; j < lanes; ++j) {
                const T *const p = x.at(k, g * lanes + (j < columns ? j : 0));
                v[j] = rest >= lanes ? V::load(p) : rest == 1 ? V::all(Loose<T>::load(p)) : partOf<N % lanes>(p);
            }
            transpose(v);
#pragma GCC unroll 4
            for (int j = 0; j < lanes; ++j)
                if (k + j < N)
                    rows[k + j].group[g] = v[j];
        }
    }
    template <int Rest>
    static KVLM_INLINE V partOf(const T *p)
    {
        if constexpr (Rest == 3)
            return loadThree(p);
        else
            return loadTwo(p);
    }
};

template <class T, int N, class View>
KVLM_INLINE auto rightFactor(const View &x)
{
    if constexpr (View::adjacentInColumns)
        return MadeRightFactor<T, N>(x);
    else
        return RightFactor<T, N, View>{x};
}

// ---- The first factor: column(r, k, x) makes x[i] element (r + i, k) in all lanes.

// Read element by element, or, where they are adjacent in columns, in pieces of columns, as it is used.
template <class T, int N, class View>
struct LeftFactor {
    View x;

    template <int Rows>
    KVLM_INLINE void column(int r, int k, Lanes<T> (&all)[Rows]) const
    {
        constexpr int lanes = Lanes<T>::count, whole = Rows / lanes * lanes, rest = Rows - whole;
        const auto spread = [&](int i, Lanes<T> part, int n) KVLM_INLINED {
#pragma GCC unroll 4
            for (int j = 0; j < n; ++j)
                all[i + j] = broadcast(part, j);
        };
        if constexpr (View::adjacentInColumns) {
#pragma GCC unroll 3
            for (int i = 0; i < whole; i += lanes)
                spread(i, Lanes<T>::load(x.at(r + i, k)), lanes);
            if constexpr (rest == 3)
                spread(whole, loadThree(x.at(r + whole, k)), 3);
            else if constexpr (rest == 2)
                spread(whole, loadTwo(x.at(r + whole, k)), 2);
            else if constexpr (rest == 1)
                all[whole] = Lanes<T>::all(Loose<T>::load(x.at(r + whole, k)));
        } else
#pragma GCC unroll 6
            for (int i = 0; i < Rows; ++i)
                if constexpr (View::adjacentInRows && N == 6 && lanes == 4) // the compiler loads each part once
                    all[i] = broadcast(k < 4 ? Lanes<T>::load(x.at(r + i, 0)) : loadTwo(x.at(r + i, 4)), k % 4);
                else
                    all[i] = Lanes<T>::all(Loose<T>::load(x.at(r + i, k)));
    }
};

// A small packed object, all of it in registers. Steps count elements.
template <class T, int N, int RowStep, int ColumnStep>
struct PackedLeftFactor {
    static constexpr int lanes = Lanes<T>::count, registers = (N * N + lanes - 1) / lanes;
    Lanes<T> v[registers];

    KVLM_INLINE explicit PackedLeftFactor(const T *p)
    {
#pragma GCC unroll 5
        for (int k = 0; k < N * N / lanes; ++k)
            v[k] = Lanes<T>::load(p + k * lanes);
        if constexpr (N % 2 == 1)
            v[registers - 1] = Lanes<T>::all(Loose<T>::load(p + N * N - 1));
    }
    template <int Rows>
    KVLM_INLINE void column(int r, int k, Lanes<T> (&all)[Rows]) const
    {
#pragma GCC unroll 6
        for (int i = 0; i < Rows; ++i) {
            const int e = (r + i) * RowStep + k * ColumnStep;
            all[i] = N % 2 == 1 && e == N * N - 1 ? v[registers - 1] : broadcast(v[e / lanes], e % lanes);
        }
    }
};

// One factor for a whole batch: every register that it will fill is made once.
template <class T, int N>
struct MadeLeftFactor {
    Lanes<T> each[N][N];

    template <class View>
    KVLM_INLINE explicit MadeLeftFactor(const View &x)
    {
        for (int r = 0; r < N; ++r)
            for (int k = 0; k < N; ++k)
                each[r][k] = Lanes<T>::all(Loose<T>::load(x.at(r, k)));
    }
    template <int Rows>
    KVLM_INLINE void column(int r, int k, Lanes<T> (&all)[Rows]) const
    {
#pragma GCC unroll 6
        for (int i = 0; i < Rows; ++i)
            all[i] = each[r + i][k];
    }
};

template <class T, int N, class View>
KVLM_INLINE auto leftFactor(const View &x)
{
    using Packed = Fixed<N * sizeof(T)>;
    constexpr bool small = N * N * sizeof(T) <= 72 && sizeof(void *) == 8; // i386 has half the registers
    if constexpr (small && std::is_same_v<View, kvlm::View<const T, Packed, Unit<const T>>>)
        return PackedLeftFactor<T, N, N, 1>(x.base);
    else if constexpr (small && std::is_same_v<View, kvlm::View<const T, Unit<const T>, Packed>>)
        return PackedLeftFactor<T, N, 1, N>(x.base);
    else
        return LeftFactor<T, N, View>{x};
}

} // namespace kvlm::mul

#endif
