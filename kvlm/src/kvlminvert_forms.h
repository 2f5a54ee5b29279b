// The inverses of orders 3 to 6, on a group or on one object that is in all lanes.
#ifndef KVLMINVERT_FORMS_H
#define KVLMINVERT_FORMS_H

#include "lanes/batches.h"
#include "loops/elimination.h"

namespace kvlm::inversion {

// A working copy, inverted in place, and the traits of its kernels.
template <class V, int N, bool Adjacent>
struct Inverse {
    using T = typename NumberTraits<V>::Element;
    static constexpr bool is32f = sizeof(T) == 4;
    static constexpr bool hasBlocks = Adjacent && is32f && N >= 5;
    static constexpr bool hasRoughReciprocal = Adjacent && is32f;
    static constexpr bool hasFullProducts = Adjacent && !is32f && N == 4;
    // Settled: the order of the sum in the determinant, and twice the threshold at 64f.
    static constexpr bool evenRowsFirst = Adjacent && N <= 4;
    static constexpr T least = (Adjacent && !is32f && N <= 4 ? 4 : 2) * N * N * N * smallestNormal<T>;
    static constexpr int scratchRows = hasBlocks ? N - 4 : 0;

    V a[N][N];
};

// Whether adjacent elements make a difference.
template <class T, int N>
constexpr bool hasAdjacentForm = sizeof(T) == 4 || N <= 4;

// 12 bits of the reciprocal and one Newton step. Settled in this order of operations.
template <class V>
KVLM_INLINE V refinedReciprocal(V x)
{
    const V r = roughReciprocal(x);
    return (r + r) - (x * r) * r;
}

// Minors of one row and column less, from minors of the first rows and of the last rows by the set of their columns.
template <class V, int N>
KVLM_INLINE void sharedMinors(const V (&a)[N][N], V (&minor)[N][N])
{
    constexpr int all = (1 << N) - 1;
    V first[1 << N], last[1 << N];
#pragma GCC unroll 6
    for (int c = 0; c < N; ++c) {
        first[1 << c] = a[0][c];
        last[1 << c] = a[N - 1][c];
    }
#pragma GCC unroll 6
    for (int rows = 2; rows < N; ++rows)
#pragma GCC unroll 64
        for (int columns = 0; columns < all; ++columns)
            if (__builtin_popcount(columns) == rows) {
                V &low = first[columns], &high = last[columns];
                int before = 0;
#pragma GCC unroll 6
                for (int c = 0; c < N; ++c)
                    if (columns >> c & 1) {
                        const V x = a[N - rows][c] * last[columns & ~(1 << c)];
                        high = before == 0 ? x : before % 2 ? high - x : high + x;
                        ++before;
                    }
                int behind = 0;
#pragma GCC unroll 6
                for (int c = N - 1; c >= 0; --c)
                    if (columns >> c & 1) {
                        const V x = a[rows - 1][c] * first[columns & ~(1 << c)];
                        low = behind == 0 ? x : behind % 2 ? low - x : low + x;
                        ++behind;
                    }
            }
#pragma GCC unroll 6
    for (int j = 0; j < N; ++j) {
        const int others = all & ~(1 << j);
        minor[0][j] = last[others];
        minor[N - 1][j] = first[others];
#pragma GCC unroll 6
        for (int i = 1; i < N - 1; ++i) {
            bool begun = false;
#pragma GCC unroll 64
            for (int columns = 0; columns < all; ++columns)
                if (__builtin_popcount(columns) == i && (columns & ~others) == 0) {
                    const int rest = others & ~columns;
                    int inversions = 0;
#pragma GCC unroll 6
                    for (int c = 0; c < N; ++c)
                        if (columns >> c & 1)
                            inversions += __builtin_popcount(rest & ((1 << c) - 1));
                    const V x = first[columns] * last[rest];
                    minor[i][j] = !begun ? x : inversions % 2 ? minor[i][j] - x : minor[i][j] + x;
                    begun = true;
                }
        }
    }
}

// Order 4, each minor as the sum of its six products of three. Those of two are shared: of the last rows for the minors
// of the first two rows, and of the first rows for those of the last two.
template <class V>
struct FullProducts {
    const V (&a)[4][4];
    V pair[2][4][4];

    KVLM_INLINE explicit FullProducts(const V (&a)[4][4]) : a(a)
    {
#pragma GCC unroll 2
        for (int half = 0; half < 2; ++half)
#pragma GCC unroll 4
            for (int j = 0; j < 4; ++j)
#pragma GCC unroll 4
                for (int k = 0; k < 4; ++k)
                    pair[half][j][k] = a[2 - 2 * half][j] * a[3 - 2 * half][k];
    }
    KVLM_INLINE void minors(int c, V (&minor)[4][4]) const
    {
        const int j = c == 0, k = 1 + (c <= 1), l = 2 + (c <= 2);
#pragma GCC unroll 4
        for (int i = 0; i < 4; ++i) {
            const V(&x)[4] = a[i ^ 1];
            const V(&p)[4][4] = pair[i / 2];
            minor[i][c] =
                x[j] * p[k][l] + x[k] * p[l][j] + x[l] * p[j][k] - x[j] * p[l][k] - x[k] * p[j][l] - x[l] * p[k][j];
        }
    }
};

// The determinant by the first column.
template <bool EvenRowsFirst, class V, int N>
KVLM_INLINE V expandFirstColumn(const V (&a)[N][N], const V (&minor)[N][N])
{
    const auto term = [&](int i) KVLM_INLINED { return a[i][0] * minor[i][0]; };
    if constexpr (EvenRowsFirst && N == 3)
        return (term(0) + term(2)) - term(1);
    else if constexpr (EvenRowsFirst)
        return (term(0) + term(2)) - (term(1) + term(3));
    else {
        V sum = (N % 2 ? a[N - 1][0] : number<V>(0) - a[N - 1][0]) * minor[N - 1][0];
#pragma GCC unroll 6
        for (int i = N - 2; i >= 0; --i)
            sum = i % 2 ? sum - term(i) : sum + term(i);
        return sum;
    }
}

// Each way of inverting returns false, before any division, if a lane fails.
template <class V, int N, bool Adjacent>
KVLM_INLINE bool invertByCofactors(Inverse<V, N, Adjacent> &work)
{
    using Traits = Inverse<V, N, Adjacent>;
    V minor[N][N];
    if constexpr (Traits::hasFullProducts) {
        const FullProducts<V> products(work.a);
#pragma GCC unroll 4
        for (int c = 0; c < 4; ++c)
            products.minors(c, minor);
    } else
        sharedMinors(work.a, minor);
    const V d = expandFirstColumn<Traits::evenRowsFirst>(work.a, minor);
    if (any(notAtLeast(magnitude(d), V::all(Traits::least))))
        return false;
    V r;
    if constexpr (Traits::hasRoughReciprocal)
        r = refinedReciprocal(d);
    else
        r = V::all(1) / d;
#pragma GCC unroll 6
    for (int i = 0; i < N; ++i)
#pragma GCC unroll 6
        for (int j = 0; j < N; ++j)
            work.a[j][i] = ((i + j) % 2 ? V::all(0) - minor[i][j] : minor[i][j]) * r;
    return true;
}

// What is behind the first N - 4 rows and columns, by cofactors.
template <class V, int N>
KVLM_INLINE bool invertLastFour(Inverse<V, N, true> &work)
{
    constexpr int first = N - 4;
    auto &a = work.a;
    Inverse<V, 4, true> last;
    V minor[4][4];
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i)
#pragma GCC unroll 4
        for (int j = 0; j < 4; ++j)
            last.a[i][j] = a[first + i][first + j];
    sharedMinors(last.a, minor);
    const V d = expandFirstColumn<true>(last.a, minor);
    if (any(notAtLeast(magnitude(d), V::all(Inverse<V, N, true>::least))))
        return false;
    const V r = refinedReciprocal(d);
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i)
#pragma GCC unroll 4
        for (int j = 0; j < 4; ++j)
            a[first + j][first + i] = ((i + j) % 2 ? V::all(0) - minor[i][j] : minor[i][j]) * r;
    return true;
}

// The pivot of row K, chosen by columns: the largest comes to column K. Whether it is one in all lanes.
template <int K, class V, int N>
KVLM_INLINE bool bringColumn(Inverse<V, N, true> &work, Choice<V, N> &choice)
{
    auto &a = work.a;
    // Of equal candidates the last is taken. Settled: not the last of all at order 5.
    V best = magnitude(a[K][K]);
#pragma GCC unroll 6
    for (int j = K + 1; j < N; ++j) {
        const V candidate = magnitude(a[K][j]);
        choice.taken[j] = N == 5 && j == 4 ? greater(candidate, best) : atLeast(candidate, best);
        best = larger(candidate, best);
    }
    if (any(notAtLeast(best, V::all(Inverse<V, N, true>::least))))
        return false;
    choice.settle(K);
#pragma GCC unroll 6
    for (int i = K; i < N; ++i)
        choice.exchange(K, [&](int j) KVLM_INLINED -> V & { return a[i][j]; });
    return true;
}

// From the inverse of the Schur complement, which stands behind row and column K, to that of the whole: r is the
// pivot's reciprocal, w the column below it times r, and row K still holds what is beside the pivot.
template <int K, class V, int N>
KVLM_INLINE void bordered(V (&a)[N][N], V r, const V (&w)[N])
{
    const auto &b = a[K];
    V u[N], row[N], corner = number<V>(0);
#pragma GCC unroll 6
    for (int i = K + 1; i < N; ++i) {
        u[i] = a[i][K + 1] * (number<V>(0) - w[K + 1]);
        row[i] = b[K + 1] * a[K + 1][i];
#pragma GCC unroll 6
        for (int j = K + 2; j < N; ++j) {
            u[i] = u[i] + a[i][j] * (number<V>(0) - w[j]);
            row[i] = row[i] + b[j] * a[j][i];
        }
        corner = i == K + 1 ? b[i] * u[i] : corner + b[i] * u[i];
    }
    a[K][K] = r - r * corner;
#pragma GCC unroll 6
    for (int i = K + 1; i < N; ++i) {
        a[i][K] = u[i];
        a[K][i] = (number<V>(0) - r) * row[i];
    }
}

// What is behind the first K rows and columns: a pivot of the first row, and the Schur complement of order N - 1 - K.
template <int K, class V, int N>
KVLM_INLINE bool invertByBlocks(Inverse<V, N, true> &work)
{
    auto &a = work.a;
    if constexpr (N - K == 4)
        return invertLastFour(work);
    else {
        Choice<V, N> choice;
        if (!bringColumn<K>(work, choice))
            return false;
        const V r = refinedReciprocal(a[K][K]);
        a[K][K] = r; // settled: it is what a failure further on leaves
        V w[N];
#pragma GCC unroll 6
        for (int i = K + 1; i < N; ++i) {
            w[i] = r * a[i][K];
#pragma GCC unroll 6
            for (int j = K + 1; j < N; ++j)
                a[i][j] = a[i][j] - a[K][j] * w[i];
        }
        if (!invertByBlocks<K + 1>(work))
            return false;
        bordered<K>(a, r, w);
#pragma GCC unroll 6
        for (int j = K; j < N; ++j)
            choice.exchange(K, [&](int i) KVLM_INLINED -> V & { return a[i][j]; });
        return true;
    }
}

// One copy of the long forms for all descriptions.
template <class V, int N, bool Adjacent>
KVLM_NOINLINE bool invertLong(Inverse<V, N, Adjacent> &work)
{
    if constexpr (Inverse<V, N, Adjacent>::hasBlocks)
        return invertByBlocks<0>(work);
    else
        return invertByCofactors(work);
}

template <class V, int N, bool Adjacent>
KVLM_INLINE bool invert(Inverse<V, N, Adjacent> &work)
{
    if constexpr (N <= 4)
        return invertByCofactors(work);
    else
        return invertLong(work);
}

} // namespace kvlm::inversion

#endif
