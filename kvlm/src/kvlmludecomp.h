// LU decomposition with partial pivoting: orders 3 to 6 unrolled, all others in a common routine, up to 16 on a copy.
//
// The two are settled designs of their own and differ in threshold, in its strictness, in when the interchange is made,
// in the element that the final test reads and in what stands in memory after a failure.
#ifndef KVLMLUDECOMP_H
#define KVLMLUDECOMP_H

#include "frame/rows.h"
#include "frame/work.h"
#include "lanes/batches.h"
#include "lanes/row_groups.h"
#include "loops/panels.h"

namespace kvlm::lu {

// The working copies of a group, or of one object that is in all lanes. A table of each lane's own can't be followed,
// so the rows themselves change places: row k is that of table[k] in memory.
template <class V, int N>
struct Rows {
    using T = typename NumberTraits<V>::Element;

    V a[N][N];
    V table[N];

    KVLM_INLINE Rows()
    {
#pragma GCC unroll 6
        for (int r = 0; r < N; ++r)
            table[r] = V::all(T(r));
    }
    // The element that is last in memory.
    KVLM_INLINE V last() const
    {
        V x = V::all(0);
#pragma GCC unroll 6
        for (int i = 0; i < N; ++i)
            x = x | (a[i][N - 1] & equal(table[i], V::all(N - 1)));
        return x;
    }
    // The first of the largest elements becomes the pivot.
    KVLM_INLINE void bringPivot(int k)
    {
        V best = magnitude(a[k][k]);
        Choice<V, N> choice;
#pragma GCC unroll 6
        for (int i = k + 1; i < N; ++i) {
            const V candidate = magnitude(a[i][k]);
            choice.taken[i] = greater(candidate, best);
            best = larger(candidate, best);
        }
        choice.settle(k);
        choice.exchange(k, [&](int i) KVLM_INLINED -> V & { return table[i]; });
#pragma GCC unroll 6
        for (int j = 0; j < N; ++j)
            choice.exchange(k, [&](int i) KVLM_INLINED -> V & { return a[i][j]; });
    }
    // The table of each lane.
    KVLM_INLINE void tables(int (&pivots)[V::count][N]) const
    {
#pragma GCC unroll 6
        for (int k = 0; k < N; ++k) {
            int row[V::count];
            table[k].storeInts(row);
#pragma GCC unroll 16
            for (int l = 0; l < V::count; ++l)
                pivots[l][k] = row[l];
        }
    }
};

// Orders 3 to 6, in one copy for all descriptions. The number of rows of U that are final: all of them, or those before
// the step in which an object failed.
template <class V, int N>
KVLM_NOINLINE int factor(Rows<V, N> &rows)
{
    using T = typename NumberTraits<V>::Element;
    auto &a = rows.a;
    const auto least = V::all(2 * smallestNormal<T>);
#pragma GCC unroll 6
    for (int k = 0; k < N - 1; ++k) {
        rows.bringPivot(k);
        if (any(notAtLeast(magnitude(a[k][k]), least)))
            return k;
        const auto reciprocal = V::all(1) / a[k][k];
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

// One object of a batch, or alone.
template <int N, class T>
KVLM_NOINLINE KvlStatus factorObject(const Objects<const T> &s, const Objects<T> &d, int *pivot, ptrdiff_t i)
{
    Rows<Lanes<T>, N> rows;
    loadObject(s, i, rows.a);
    const int final = factor(rows);
    int pivots[Lanes<T>::count][N];
    rows.tables(pivots);
    memcpy(pivot, pivots[0], sizeof pivots[0]);
    // Settled: what is final stands in dst after a failure, in the pointer description nothing.
    for (int k = 0; k < final && !(d.table && final < N); ++k)
        for (int j = 0; j < N; ++j)
            rows.a[k][j].storeOne(d.at(i, pivots[0][k], j));
    return final < N ? kvlErrSingular : kvlOk;
}

// The row that step k takes, the first of the largest at(k) to at(n - 1); -1 if it fails. Settled: at 64f a NaN is
// always taken. Measured: branches are better foreseen than waited for.
template <class At>
KVLM_INLINE int pivotOf(int k, int n, At at)
{
    using T = decltype(at(k));
    constexpr T least = unitRoundoff<T>;
    const auto isLarger = [](T x, T best) KVLM_INLINED { return x > best || (sizeof(T) == 8 && x != x); };
    T best = magnitude(at(k));
    int found = k;
    for (int i = k + 1;; ++i) {
        T candidate = 0;
        while (i < n && !isLarger(candidate = magnitude(at(i)), best))
            ++i;
        if (i >= n)
            return (sizeof(T) == 8 ? best > least : !(best <= least)) ? found : -1;
        best = candidate;
        found = i;
    }
}

// All other orders. Settled: the table keeps no interchange of a step that fails.
template <class Src, class Dst>
KVLM_NOINLINE KvlStatus factorInPlace(const Src &src, const Dst &dst, int *pivot, int n)
{
    using T = std::remove_pointer_t<decltype(dst.at(0, 0))>;
    for (int i = 0; i < n; ++i) {
        pivot[i] = i;
        for (int j = 0; j < n; ++j)
            put(dst.at(i, j), get(src.at(i, j)));
    }
    for (int k = 0; k < n - 1; ++k) {
        const int found = pivotOf(k, n, [&](int i) KVLM_INLINED { return get(dst.at(pivot[i], k)); });
        if (found < 0)
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
    return magnitude(get(dst.at(pivot[n - 1], n - 1))) <= unitRoundoff<T> ? kvlErrSingular : kvlOk;
}

// The same on a copy.
template <class T>
KVLM_NOINLINE KvlStatus factorPanels(Panels<T> &x, int *pivot, int n)
{
    using V = Lanes<T>;
    T *rows[Panels<T>::most];
#pragma GCC unroll 1
    for (int i = 0; i < n; ++i)
        rows[i] = x.a[i];
    const bool complete = eachColumn<T>(n - 1, n, [&](int k, auto lane, auto registers) KVLM_INLINED {
        const int found = pivotOf(k, n, [&](int i) KVLM_INLINED { return rows[i][k]; });
        if (found < 0)
            return false;
        std::swap(rows[k], rows[found]);
        const T *const row = rows[k] + k - lane;
        V u[registers];
        eachIndex(registers, [&](auto g) KVLM_INLINED { u[g] = V::load(row + g * V::count); });
        const T reciprocal = 1 / row[lane];
#pragma GCC unroll 1
        for (int i = k + 1; i < n; ++i) {
            T *const p = rows[i] + k - lane;
            const V m = V::all(p[lane] * reciprocal);
            eachIndex(registers, [&](auto g) KVLM_INLINED {
                const V x = V::load(p + g * V::count), y = x - m * u[g];
                (g == 0 ? joined<lane>(x, m, y) : y).store(p + g * V::count);
            });
        }
        return true;
    });
#pragma GCC unroll 1
    for (int k = 0; k < n; ++k)
        pivot[k] = static_cast<int>(static_cast<size_t>(rows[k] - x.a[0]) / Panels<T>::most);
    return complete && !(magnitude(rows[n - 1][n - 1]) <= unitRoundoff<T>) ? kvlOk : kvlErrSingular;
}

template <class T>
KVLM_INLINE KvlStatus factorGeneral(const Objects<const T> &s, const Objects<T> &d, int *pivot, int n, ptrdiff_t i)
{
    return withViews(
        [&](const auto &src, const auto &dst) KVLM_INLINED {
            if (n > Panels<T>::most)
                return factorInPlace(src, dst, pivot, n);
            Panels<T> x(src, n, n);
            const KvlStatus status = factorPanels(x, pivot, n);
            x.store(dst, n, n);
            return status;
        },
        i, s, d);
}

template <class S, class D>
KVLM_INLINE KvlStatus factorCommon(const S &s, PerObject<int> pivot, const D &d, Length n)
{
    return factorGeneral(objectsOf(s, n.length), objectsOf(d, n.length), pivot.base, n.length, 0);
}

template <int N, class T>
KVLM_NOINLINE KvlStatus factorBatch(const Objects<const T> &s, int *pivots, const Objects<T> &d, int count)
{
    return groupsByLayout(
        AnyGroupApart<T>(d, N, N), count,
        [=](ptrdiff_t i, auto number, const auto &source, const auto &result) KVLM_INLINED {
            using V = typename decltype(number)::Number;
            Rows<V, N> rows;
            source.move(i, rows.a[0]);
            if (factor(rows) < N)
                return false;
            int order[V::count][N];
            rows.tables(order);
            memcpy(pivots + i * N, order, sizeof order);
            result.move(i, order, rows.a);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED { return factorObject<N>(s, d, pivots + i * N, i); }, GroupSource<T, N, N>(s),
        RowGroups<Store, T, N>(d));
}

template <class T>
KVLM_NOINLINE KvlStatus factorObjects(const Objects<const T> &s, int *pivots, const Objects<T> &d, int n, int count)
{
    return bySmallOrder(
        n,
        [&](auto order) KVLM_INLINED {
            return count == 1 ? factorObject<order>(s, d, pivots, 0) : factorBatch<order>(s, pivots, d, count);
        },
        [&]() KVLM_INLINED {
            return untilOneFails(count,
                                 [&](ptrdiff_t i) KVLM_INLINED { return factorGeneral(s, d, pivots + i * n, n, i); });
        });
}

template <class S, class D>
KVLM_INLINE KvlStatus luDecomp(const S &s, PerObject<int> pivot, const D &d, Length n, Count count = Count(1))
{
    return factorObjects(objectsOf(s, n.length), pivot.base, objectsOf(d, n.length), n.length, count.count);
}

// Compiled once, in kvlmludecomp_ma.cpp.
#define LU_DECOMPOSITIONS(linkage, T)                                                                                  \
    linkage template KvlStatus factorObjects(const Objects<const T> &, int *, const Objects<T> &, int, int);
KVLM_FOR_ELEMENTS(LU_DECOMPOSITIONS, extern)

} // namespace kvlm::lu

#define LU_M(X, D, T)                                                                                                  \
    X##_M_##D(const T, src), X##_PER_OBJECT(int, pivot, widthHeight), X##_M_##D(T, dst), X##_LENGTH(widthHeight)
#define LU_MA(X, D, T)                                                                                                 \
    X##_MA_##D(const T, src), X##_PER_OBJECT(int, pivot, widthHeight), X##_MA_##D(T, dst), X##_LENGTH(widthHeight),    \
        X##_COUNT

#endif
