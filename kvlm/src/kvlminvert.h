// Inverses: orders 3 to 6 by cofactors, or where elements are adjacent in 32f and the order is 5 or 6 by blocks; all
// others by one elimination for each minor. Which kernel tests what against which threshold is settled.
#ifndef KVLMINVERT_H
#define KVLMINVERT_H

#include "frame/rows.h"
#include "frame/work.h"
#include "kvlminvert_forms.h"
#include "lanes/batches.h"
#include "loops/elimination.h"

namespace kvlm::inversion {

template <int N, bool Adjacent, class T>
KVLM_NOINLINE KvlStatus invertObject(const Objects<const T> &s, const Objects<T> &d, ptrdiff_t i)
{
    Inverse<Lanes<T>, N, Adjacent> work;
    loadObject(s, i, work.a);
    if (invert(work)) {
        storeObject(d, i, work.a);
        return kvlOk;
    }
    // Settled: the rows that served as scratch.
    if constexpr (work.scratchRows > 0)
        storeObject(d, i, work.scratchRows, N, work.a[0]);
    return kvlErrSingular;
}

template <int N, bool Adjacent, class T>
KVLM_NOINLINE KvlStatus invertBatch(const Objects<const T> &s, const Objects<T> &d, int count)
{
    return groupsByLayout(
        AnyGroupApart<T>(d, N, N), count,
        [](ptrdiff_t i, auto number, const auto &source, const auto &result) KVLM_INLINED {
            Inverse<typename decltype(number)::Number, N, Adjacent> work;
            source.move(i, work.a[0]);
            if (!invert(work))
                return false;
            result.move(i, work.a[0]);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED { return invertObject<N, Adjacent>(s, d, i); }, GroupSource<T, N, N>(s),
        GroupResult<T, N, N>(d));
}

// The determinant of what an elimination holds, with the settled difference between the matrix itself and its minors:
// a minor that is judged to be zero becomes the threshold. False if the matrix failed.
template <bool OfMinor, class T>
KVLM_INLINE bool eliminatedDeterminant(Elimination<T> &work, int n, T least, T &value)
{
    T sign = 1;
    value = 1;
    for (int k = 0; k < n - 1; ++k) {
        if (work.bringPivot(k, n))
            sign = -sign;
        const T pivot = work.at(k, k);
        if (magnitude(pivot) < least) {
            value = least;
            return OfMinor;
        }
        const T reciprocal = 1 / pivot;
        work.eliminate(k, n, [&](T x) KVLM_INLINED { return x * reciprocal; });
        value *= pivot;
    }
    const T last = work.at(n - 1, n - 1);
    if constexpr (OfMinor) {
        value = magnitude(last) <= least ? least : value * (last * sign);
        return true;
    }
    value *= sign * last;
    return !(magnitude(value) <= least);
}

// Order 2 and those above 6.
template <class Src, class Dst, class T>
KVLM_NOINLINE KvlStatus invertByElimination(const Src &src, T *buffer, const Dst &dst, int n)
{
    const T least = zeroThreshold<T>(n);
    Elimination<T> work(buffer, n);
    T determinant, minor;
    work.load(n, [&](int r, int c) KVLM_INLINED { return get(src.at(r, c)); });
    if (!eliminatedDeterminant<false>(work, n, least, determinant))
        return kvlErrSingular;
    const T reciprocal = 1 / determinant;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            work.load(n - 1, [&](int r, int c) KVLM_INLINED { return get(src.at(r + (r >= i), c + (c >= j))); });
            eliminatedDeterminant<true>(work, n - 1, least, minor);
            put(dst.at(j, i), minor * reciprocal * ((i + j) % 2 ? T(-1) : T(1)));
        }
    return kvlOk;
}

template <class T>
KVLM_INLINE KvlStatus invertGeneral(const Objects<const T> &s, T *buffer, const Objects<T> &d, int n, ptrdiff_t i)
{
    return withViews([&](const auto &src, const auto &dst)
                         KVLM_INLINED { return invertByElimination(src, buffer, dst, n); },
                     i, s, d);
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus invertCommon(const S &s, Buffer<T> buffer, const D &d, Length n)
{
    return invertGeneral(objectsOf(s, n.length), buffer.base, objectsOf(d, n.length), n.length, 0);
}

// Order 1. Settled: a NaN is singular to the members on one matrix, those on arrays pass it on.
template <class T>
KVLM_INLINE KvlStatus invertElement(const Objects<const T> &s, const Objects<T> &d, ptrdiff_t i)
{
    const T x = get(s.at(i, 0, 0)), least = zeroThreshold<T>(1);
    if (s.isSingle ? !(magnitude(x) > least) : magnitude(x) <= least)
        return kvlErrSingular;
    put(d.at(i, 0, 0), 1 / x);
    return kvlOk;
}

// `Adjacent` is a kernel for adjacent elements.
template <bool Adjacent, class T>
KVLM_NOINLINE KvlStatus invertObjects(const Objects<const T> &s, T *buffer, const Objects<T> &d, int n, int count)
{
    return bySmallOrder(
        n,
        [&](auto order) KVLM_INLINED {
            constexpr int N = order;
            constexpr bool adjacent = Adjacent && hasAdjacentForm<T, N>;
            return count == 1 ? invertObject<N, adjacent>(s, d, 0) : invertBatch<N, adjacent>(s, d, count);
        },
        [&]() KVLM_INLINED {
            return untilOneFails(count, [&](ptrdiff_t i) KVLM_INLINED {
                return n == 1 ? invertElement(s, d, i) : invertGeneral(s, buffer, d, n, i);
            });
        });
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus inverse(const S &s, Buffer<T> buffer, const D &d, Length n, Count count = Count(1))
{
    return invertObjects<hasAdjacentRows<D>()>(objectsOf(s, n.length), buffer.base, objectsOf(d, n.length), n.length,
                                               count.count);
}

// One matrix of order N with adjacent elements.
template <int N, class S, class D>
KVLM_INLINE KvlStatus invertAdjacent(const S &s, const D &d)
{
    return invertObject<N, hasAdjacentForm<typename D::Element, N>>(objectsOf(s, N), objectsOf(d, N), 0);
}

// Order 1 stays with the caller.
KVLM_INLINE int invertWork(unsigned n, unsigned count)
{
    return n == 1 ? 0 : wrapped(2 * n * count);
}

// Compiled once, in kvlminvert_ma.cpp.
#define INVERSES(linkage, T)                                                                                           \
    linkage template KvlStatus invertObjects<false>(const Objects<const T> &, T *, const Objects<T> &, int, int);      \
    linkage template KvlStatus invertObjects<true>(const Objects<const T> &, T *, const Objects<T> &, int, int);       \
    linkage template KvlStatus invertObject<3, hasAdjacentForm<T, 3>>(const Objects<const T> &, const Objects<T> &,    \
                                                                      ptrdiff_t);                                      \
    linkage template KvlStatus invertObject<4, hasAdjacentForm<T, 4>>(const Objects<const T> &, const Objects<T> &,    \
                                                                      ptrdiff_t);                                      \
    linkage template KvlStatus invertObject<5, hasAdjacentForm<T, 5>>(const Objects<const T> &, const Objects<T> &,    \
                                                                      ptrdiff_t);                                      \
    linkage template KvlStatus invertObject<6, hasAdjacentForm<T, 6>>(const Objects<const T> &, const Objects<T> &,    \
                                                                      ptrdiff_t);
KVLM_FOR_ELEMENTS(INVERSES, extern)

} // namespace kvlm::inversion

#define INVERT_M(X, D, T)                                                                                              \
    X##_M_##D(const T, src), X##_BUFFER(T, buffer, eliminationElements(widthHeight)), X##_M_##D(T, dst),               \
        X##_LENGTH(widthHeight)
#define INVERT_MA(X, D, T)                                                                                             \
    X##_MA_##D(const T, src), X##_BUFFER(T, buffer, eliminationElements(widthHeight)), X##_MA_##D(T, dst),             \
        X##_LENGTH(widthHeight), X##_COUNT

#endif
