// LU decomposition with partial pivoting: orders 3 to 6 unrolled, all others in a common routine.
//
// The two are settled designs of their own and differ in threshold, in its strictness, in when the interchange is made,
// in the element that the final test reads and in what stands in memory after a failure.
#ifndef KVLMLUDECOMP_H
#define KVLMLUDECOMP_H

#include "kvlm_groups.h"
#include "kvlm_rows.h"
#include "kvlm_systems.h"

namespace kvlm {

// The working copies of a group, or of one object that is in all lanes. A table of each lane's own can't be followed,
// so the rows themselves change places: row k is that of table[k] in memory.
template <class T, int N>
struct Rows {
    Lanes<T> a[N][N];
    Lanes<T> table[N];

    KVLM_INLINE Rows()
    {
#pragma GCC unroll 6
        for (int r = 0; r < N; ++r)
            table[r] = Lanes<T>::all(T(r));
    }
    // The element that is last in memory.
    KVLM_INLINE Lanes<T> last() const
    {
        Lanes<T> x = Lanes<T>::all(0);
#pragma GCC unroll 6
        for (int i = 0; i < N; ++i)
            x = x | (a[i][N - 1] & equal(table[i], Lanes<T>::all(N - 1)));
        return x;
    }
    // The first of the largest elements becomes the pivot.
    KVLM_INLINE void bringPivot(int k)
    {
        Lanes<T> best = magnitude(a[k][k]);
        Choice<T, N> choice;
#pragma GCC unroll 6
        for (int i = k + 1; i < N; ++i) {
            const Lanes<T> candidate = magnitude(a[i][k]);
            choice.taken[i] = greater(candidate, best);
            best = larger(candidate, best);
        }
        choice.settle(k);
        choice.exchange(k, [&](int i) KVLM_INLINED -> Lanes<T> & { return table[i]; });
#pragma GCC unroll 6
        for (int j = 0; j < N; ++j)
            choice.exchange(k, [&](int i) KVLM_INLINED -> Lanes<T> & { return a[i][j]; });
    }
    // The table of each lane.
    KVLM_INLINE void tables(int (&pivots)[Lanes<T>::count][N]) const
    {
#pragma GCC unroll 6
        for (int k = 0; k < N; ++k) {
            int row[Lanes<T>::count];
            table[k].storeInts(row);
#pragma GCC unroll 4
            for (int l = 0; l < Lanes<T>::count; ++l)
                pivots[l][k] = row[l];
        }
    }
};

// Orders 3 to 6, in one copy for all descriptions. The number of rows of U that are final: all of them, or those before
// the step in which an object failed.
template <class T, int N>
__attribute__((noinline)) int factor(Rows<T, N> &rows)
{
    auto &a = rows.a;
    const auto least = Lanes<T>::all(2 * smallestNormal<T>);
#pragma GCC unroll 6
    for (int k = 0; k < N - 1; ++k) {
        rows.bringPivot(k);
        if (any(notAtLeast(magnitude(a[k][k]), least)))
            return k;
        const auto reciprocal = Lanes<T>::all(1) / a[k][k];
#pragma GCC unroll 6
        for (int i = k + 1; i < N; ++i) {
            a[i][k] = a[i][k] * reciprocal;
#pragma GCC unroll 6
            for (int j = k + 1; j < N; ++j)
                a[i][j] = a[i][j] - a[i][k] * a[k][j];
        }
    }
    // Settled: the last element in memory is tested, whichever row is the last pivot row.
    return any(less(magnitude(rows.last()), least)) ? N - 1 : N;
}

template <int N, class S, class D>
KVLM_INLINE KvlStatus factorObject(const S &s, const D &d, int *pivot, ptrdiff_t i)
{
    using T = typename D::Element;
    const auto dst = viewOf(d, i, N);
    Rows<T, N> rows;
    loadObject(s, i, rows.a);
    const int final = factor(rows);
    int pivots[Lanes<T>::count][N];
    rows.tables(pivots);
    memcpy(pivot, pivots[0], sizeof pivots[0]);
    // Settled: what is final stands in dst after a failure, in the pointer description nothing.
    for (int k = 0; k < final && !(D::isTable && final < N); ++k)
#pragma GCC unroll 6
        for (int j = 0; j < N; ++j)
            rows.a[k][j].storeOne(dst.at(pivots[0][k], j));
    return final < N ? kvlErrSingular : kvlOk;
}

template <int N, class S, class D>
KVLM_INLINE bool factorGroup(const S &s, const D &d, int *pivot, ptrdiff_t i)
{
    using T = typename D::Element;
    Rows<T, N> rows;
    loadObjects(s, i, rows.a);
    if (factor(rows) < N)
        return false;
    int pivots[Lanes<T>::count][N];
    rows.tables(pivots);
    memcpy(pivot, pivots, sizeof pivots);
    storeRows(d, i, pivots, rows.a);
    return true;
}

// All other orders. Settled: the table keeps no interchange of a step that fails, and at 64f a NaN is always taken.
template <class Src, class Dst>
__attribute__((noinline)) KvlStatus factorInPlace(const Src &src, const Dst &dst, int *pivot, int n)
{
    using T = std::remove_pointer_t<decltype(dst.at(0, 0))>;
    constexpr T least = unitRoundoff<T>;
    for (int i = 0; i < n; ++i) {
        pivot[i] = i;
        for (int j = 0; j < n; ++j)
            put(dst.at(i, j), get(src.at(i, j)));
    }
    for (int k = 0; k < n - 1; ++k) {
        T best = magnitude(get(dst.at(pivot[k], k)));
        int found = k;
        for (int i = k + 1; i < n; ++i) {
            const T candidate = magnitude(get(dst.at(pivot[i], k)));
            if (candidate > best || (sizeof(T) == 8 && candidate != candidate)) {
                best = candidate;
                found = i;
            }
        }
        if (sizeof(T) == 8 ? !(best > least) : best <= least)
            return kvlErrSingular;
        const int row = pivot[found];
        pivot[found] = pivot[k];
        pivot[k] = row;
        const T reciprocal = 1 / get(dst.at(row, k));
        for (int i = k + 1; i < n; ++i)
            put(dst.at(pivot[i], k), get(dst.at(pivot[i], k)) * reciprocal);
        for (int i = k + 1; i < n; ++i) {
            const T multiplier = get(dst.at(pivot[i], k));
            for (int j = k + 1; j < n; ++j)
                put(dst.at(pivot[i], j), get(dst.at(pivot[i], j)) - multiplier * get(dst.at(row, j)));
        }
    }
    return magnitude(get(dst.at(pivot[n - 1], n - 1))) <= least ? kvlErrSingular : kvlOk;
}

template <class S, class D>
KVLM_INLINE KvlStatus factorCommon(const S &s, Runs<int> pivot, const D &d, Length n)
{
    return factorInPlace(viewOf(s, 0, n.length), viewOf(d, 0, n.length), pivot.base, n.length);
}

template <int N, class S, class D>
__attribute__((noinline)) KvlStatus factorBatch(const S &givenS, int *pivot, const D &givenD, int count)
{
    const S s = givenS;
    const D d = givenD;
    const Apart<N, N, typename D::Element> apart(d);
    return inGroups<typename D::Element>(
        count, [&](ptrdiff_t i) KVLM_INLINED { return apart(d, i) && factorGroup<N>(s, d, pivot + i * N, i); },
        [&](ptrdiff_t i) KVLM_INLINED { return factorObject<N>(s, d, pivot + i * N, i); });
}

template <class S, class D>
KVLM_INLINE KvlStatus luDecomp(const S &s, Runs<int> pivot, const D &d, Length length)
{
    const int n = length.length;
    return bySmallOrder(
        n, [&](auto order) KVLM_INLINED { return factorObject<order>(s, d, pivot.base, 0); },
        [&]() KVLM_INLINED { return factorCommon(s, pivot, d, length); });
}

template <class S, class D>
KVLM_INLINE KvlStatus luDecompBatch(const S &s, Runs<int> pivot, const D &d, Length length, Count count)
{
    const int n = length.length;
    return bySmallOrder(
        n, [&](auto order) KVLM_INLINED { return factorBatch<order>(s, pivot.base, d, count.count); },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count.count; ++i)
                if (const KvlStatus status = factorInPlace(viewOf(s, i, n), viewOf(d, i, n), pivot.base + i * n, n))
                    return status;
            return KvlStatus(kvlOk);
        });
}

} // namespace kvlm

#define LU_M(X, D, T)                                                                                                  \
    X##_M_##D(const T, src), X##_RUNS(int, pivot, widthHeight), X##_M_##D(T, dst), X##_LENGTH(widthHeight)
#define LU_MA(X, D, T)                                                                                                 \
    X##_MA_##D(const T, src), X##_RUNS(int, pivot, widthHeight), X##_MA_##D(T, dst), X##_LENGTH(widthHeight), X##_COUNT

#endif
