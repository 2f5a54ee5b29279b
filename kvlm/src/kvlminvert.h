// Inverses: orders 3 to 6 by cofactors, or where elements are adjacent in 32f and the order is 5 or 6 by blocks; all
// others by one elimination for each minor. Which kernel tests what against which threshold is settled.
#ifndef KVLMINVERT_H
#define KVLMINVERT_H

#include "kvlm_elimination.h"
#include "kvlm_groups.h"
#include "kvlm_rows.h"
#include "kvlm_systems.h"
#include "kvlminvert_forms.h"

namespace kvlm {

template <int N, class S, class D>
KVLM_INLINE KvlStatus invertObject(const S &s, const D &d, ptrdiff_t i)
{
    using T = typename D::Element;
    Inverse<T, N, hasAdjacentRows<D>()> work;
    loadObject(s, i, work.a);
    if (invert(work)) {
        storeObject(d, i, work.a);
        return kvlOk;
    }
    // Settled: the rows that served as scratch.
    if constexpr (work.scratchRows > 0)
        for (int r = 0; r < work.scratchRows; ++r)
            for (int c = 0; c < N; ++c)
                work.a[r][c].storeOne(viewOf(d, i, N).at(r, c));
    return kvlErrSingular;
}

template <int N, class S, class D>
__attribute__((noinline)) KvlStatus invertBatch(const S &givenS, const D &givenD, int count)
{
    using T = typename D::Element;
    const S s = givenS;
    const D d = givenD;
    const Apart<N, N, T> apart(d);
    return inGroups<T>(
        count,
        [&](ptrdiff_t i) KVLM_INLINED {
            if (!apart(d, i))
                return false;
            Inverse<T, N, hasAdjacentRows<D>()> work;
            loadObjects(s, i, work.a);
            if (!invert(work))
                return false;
            storeObjects(d, i, work.a);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED { return invertObject<N>(s, d, i); });
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
__attribute__((noinline)) KvlStatus invertByElimination(const Src &src, T *buffer, const Dst &dst, int n)
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

template <class S, class D, class T>
KVLM_INLINE KvlStatus invertCommon(const S &s, Buffer<T> buffer, const D &d, Length n)
{
    return invertByElimination(viewOf(s, 0, n.length), buffer.base, viewOf(d, 0, n.length), n.length);
}

// Order 1. Settled: a NaN is singular to the members on one matrix, those on arrays pass it on.
template <bool One, class Src, class Dst>
KVLM_INLINE KvlStatus invertElement(const Src &src, const Dst &dst)
{
    const auto x = get(src.at(0, 0));
    const auto least = zeroThreshold<std::remove_const_t<decltype(x)>>(1);
    if (One ? !(magnitude(x) > least) : magnitude(x) <= least)
        return kvlErrSingular;
    put(dst.at(0, 0), 1 / x);
    return kvlOk;
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus invertOne(const S &s, Buffer<T> buffer, const D &d, Length length)
{
    return bySmallOrder(
        length.length, [&](auto order) KVLM_INLINED { return invertObject<order>(s, d, 0); },
        [&]() KVLM_INLINED {
            return length.length == 1 ? invertElement<true>(viewOf(s, 0, 1), viewOf(d, 0, 1))
                                      : invertCommon(s, buffer, d, length);
        });
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus invertArray(const S &s, Buffer<T> buffer, const D &d, Length length, Count count)
{
    const int n = length.length;
    return bySmallOrder(
        n,
        [&](auto order) KVLM_INLINED {
            const auto batch = [&](const auto &s, const auto &d)
                                   KVLM_INLINED { return invertBatch<order>(s, d, count.count); };
            // Measured: it is worth a second copy of the shortest form only.
            if constexpr (order == 3)
                return knowingPacked<3>(s, d, batch);
            else
                return batch(s, d);
        },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count.count; ++i) {
                const auto src = viewOf(s, i, n);
                const auto dst = viewOf(d, i, n);
                if (const KvlStatus status =
                        n == 1 ? invertElement<false>(src, dst) : invertByElimination(src, buffer.base, dst, n))
                    return status;
            }
            return KvlStatus(kvlOk);
        });
}

// Order 1 stays with the caller.
KVLM_INLINE int invertWork(unsigned n, unsigned count)
{
    return n == 1 ? 0 : wrapped(2 * n * count);
}

} // namespace kvlm

#define INVERT_M(X, D, T)                                                                                              \
    X##_M_##D(const T, src), X##_BUFFER(T, buffer, eliminationElements(widthHeight)), X##_M_##D(T, dst),               \
        X##_LENGTH(widthHeight)
#define INVERT_MA(X, D, T)                                                                                             \
    X##_MA_##D(const T, src), X##_BUFFER(T, buffer, eliminationElements(widthHeight)), X##_MA_##D(T, dst),             \
        X##_LENGTH(widthHeight), X##_COUNT

#endif
