// Cholesky decomposition: orders 3 to 6 unrolled, all others by the same recurrence where the factor lies.
//
// The factor has the reciprocals of its diagonal on the diagonal. Nothing above the diagonal is read or written.
#ifndef KVLMCHOLESKYDECOMP_H
#define KVLMCHOLESKYDECOMP_H

#include "frame/rows.h"
#include "frame/work.h"
#include "lanes/batches.h"

namespace kvlm::cholesky {

// 1 / sqrt(s). Settled: at 32f the processor's approximation and one Newton step, neither root nor division.
template <class V>
KVLM_INLINE V reciprocalRoot(V s)
{
    if constexpr (sizeof(typename NumberTraits<V>::Element) == 8)
        return number<V>(1) / squareRoot(s);
    else {
        const V y = roughReciprocalRoot(s);
        return (y * (s * y * y - number<V>(3))) * number<V>(-0.5f);
    }
}

// What a diagonal element must exceed, by the destination's description.
template <class D>
constexpr typename D::Element diagonalThreshold(int n)
{
    // Settled: order 3 in the pointer description, with the 32f roundoff at 64f too.
    if constexpr (D::isTable)
        return n == 3 ? unitRoundoff<float> : 0;
    // Settled: strided arrays at 64f, from order 6 on and below 3.
    else if constexpr (!D::isList && !D::isSingle && !hasAdjacentRows<D>() && sizeof(typename D::Element) == 8)
        return n >= 6 || n < 3 ? unitRoundoff<double> : 0;
    else
        return 0;
}

// The recurrence, row by row, on a source a(i, j) and a factor f: f(i, j) is an element, f.set(i, j, x) computes one.
// False if the object, or one of a group, is not positive definite; NaN is not.
template <class V, class Order, class Source, class Factor>
KVLM_INLINE bool cholesky(Order order, V threshold, Source a, Factor &f)
{
    const int n = order;
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i) {
#pragma GCC unroll 6
        for (int j = 0; j < i; ++j) {
            V s = a(i, j);
#pragma GCC unroll 6
            for (int k = 0; k < j; ++k)
                s = s - f(i, k) * f(j, k);
            f.set(i, j, s * f(j, j));
        }
        V s = a(i, i);
#pragma GCC unroll 6
        for (int k = 0; k < i; ++k)
            s = s - f(i, k) * f(i, k);
        if (any(notGreater(s, threshold)))
            return false;
        f.set(i, i, reciprocalRoot(s));
    }
    return true;
}

// Where the factor is while it is computed: in registers, to be stored when it is complete,
template <class V, int N>
struct GroupFactor {
    V l[N][N];

    KVLM_INLINE V operator()(int i, int j) const { return l[i][j]; }
    KVLM_INLINE void set(int i, int j, V x) { l[i][j] = x; }
};

// in registers, each element stored at once,
template <int N, class View>
struct StoredFactor {
    using T = std::remove_pointer_t<decltype(View().at(0, 0))>;
    View view;
    T l[N][N];

    KVLM_INLINE T operator()(int i, int j) const { return l[i][j]; }
    KVLM_INLINE void set(int i, int j, T x)
    {
        l[i][j] = x;
        put(view.at(i, j), x);
    }
};

// or in memory.
template <class View>
struct FactorInPlace {
    using T = std::remove_pointer_t<decltype(View().at(0, 0))>;
    View view;

    KVLM_INLINE T operator()(int i, int j) const { return get(view.at(i, j)); }
    KVLM_INLINE void set(int i, int j, T x) { put(view.at(i, j), x); }
};

template <class Order, class View, class Factor>
KVLM_INLINE KvlStatus factorView(Order n, typename Factor::T threshold, const View &src, Factor &&f)
{
    const auto a = [&](int i, int j) KVLM_INLINED { return get(src.at(i, j)); };
    return cholesky(n, threshold, a, f) ? kvlOk : kvlErrNotPositiveDefinite;
}

template <int N, class T>
KVLM_NOINLINE KvlStatus choleskyObject(const Objects<const T> &s, const Objects<T> &d, T threshold, ptrdiff_t i)
{
    return withViews(
        [&](const auto &src, auto dst) KVLM_INLINED {
            return factorView(Fixed<N>(), threshold, src, StoredFactor<N, decltype(dst)>{dst, {}});
        },
        i, s, d);
}

template <class T>
KVLM_NOINLINE KvlStatus choleskyGeneral(const Objects<const T> &s, const Objects<T> &d, T threshold, int n, ptrdiff_t i)
{
    return withViews([&](const auto &src, auto dst)
                         KVLM_INLINED { return factorView(n, threshold, src, FactorInPlace<decltype(dst)>{dst}); },
                     i, s, d);
}

template <int N, class T>
KVLM_NOINLINE KvlStatus choleskyBatch(const Objects<const T> &s, const Objects<T> &d, T threshold, int count)
{
    return groupsByLayout(
        AnyGroupApart<T, LowerTriangle>(d, N, N), count,
        [=](ptrdiff_t i, auto number, const auto &source, const auto &result) KVLM_INLINED {
            using V = typename decltype(number)::Number;
            GroupFactor<V, N> f;
            source.move(i, f.l[0]);
            if (!cholesky(Fixed<N>(), V::all(threshold), f, f))
                return false;
            result.move(i, f.l[0]);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED { return choleskyObject<N>(s, d, threshold, i); },
        GroupSource<T, N, N, LowerTriangle>(s), GroupResult<T, N, N, LowerTriangle>(d));
}

template <class T>
KVLM_NOINLINE KvlStatus choleskyObjects(const Objects<const T> &s, const Objects<T> &d, T threshold, int n, int count)
{
    return bySmallOrder(
        n,
        [&](auto order) KVLM_INLINED {
            return count == 1 ? choleskyObject<order>(s, d, threshold, 0)
                              : choleskyBatch<order>(s, d, threshold, count);
        },
        [&]() KVLM_INLINED {
            return untilOneFails(count,
                                 [&](ptrdiff_t i) KVLM_INLINED { return choleskyGeneral(s, d, threshold, n, i); });
        });
}

template <class S, class D>
KVLM_INLINE KvlStatus choleskyDecomp(const S &s, const D &d, Length length, Count count = Count(1))
{
    const int n = length.length;
    return choleskyObjects(objectsOf(s, n), objectsOf(d, n), diagonalThreshold<D>(n), n, count.count);
}

// All of them settled.
constexpr Limits choleskyLimits32f = {7500, 7500, 2000, 2000, 2000};
constexpr Limits choleskyLimits64f = {2000, 2000, 2000, 720, 2000};

// Compiled once, in kvlmcholeskydecomp_ma.cpp.
#define CHOLESKY_DECOMPOSITIONS(linkage, T)                                                                            \
    linkage template KvlStatus choleskyObjects(const Objects<const T> &, const Objects<T> &, T, int, int);
KVLM_FOR_ELEMENTS(CHOLESKY_DECOMPOSITIONS, extern)

} // namespace kvlm::cholesky

#define CHOLESKY_M(X, D, T)  X##_M_##D(const T, src), X##_M_##D(T, dst), X##_LENGTH(widthHeight)
#define CHOLESKY_MA(X, D, T) X##_MA_##D(const T, src), X##_MA_##D(T, dst), X##_LENGTH(widthHeight), X##_COUNT

#endif
