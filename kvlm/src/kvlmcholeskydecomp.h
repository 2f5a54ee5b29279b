// Cholesky decomposition: orders 3 to 6 unrolled, all others by the same recurrence where the factor lies.
//
// The factor has the reciprocals of its diagonal on the diagonal. Nothing above the diagonal is read or written.
#ifndef KVLMCHOLESKYDECOMP_H
#define KVLMCHOLESKYDECOMP_H

#include "kvlm_groups.h"
#include "kvlm_rows.h"
#include "kvlm_systems.h"

namespace kvlm {

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

// What a diagonal element must exceed, by kernel. N is 0 for all orders that are not unrolled.
template <int N, class D>
constexpr typename D::Element diagonalThreshold()
{
    // Settled: order 3 in the pointer description, with the 32f roundoff at 64f too.
    if constexpr (D::isTable)
        return N == 3 ? unitRoundoff<float> : 0;
    // Settled: strided arrays at 64f, from order 6 on and below 3.
    else if constexpr (!D::isList && !D::isSingle && !hasAdjacentRows<D>() && sizeof(typename D::Element) == 8)
        return N == 6 || N == 0 ? unitRoundoff<double> : 0;
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
template <class T, int N>
struct GroupFactor {
    Lanes<T> l[N][N];

    KVLM_INLINE Lanes<T> operator()(int i, int j) const { return l[i][j]; }
    KVLM_INLINE void set(int i, int j, Lanes<T> x) { l[i][j] = x; }
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

template <class Order, class S, class Factor>
KVLM_INLINE KvlStatus choleskyObject(Order n, typename Factor::T threshold, const S &src, Factor &&f)
{
    const auto a = [&](int i, int j) KVLM_INLINED { return get(src.at(i, j)); };
    return cholesky(n, threshold, a, f) ? kvlOk : kvlErrNotPositiveDefinite;
}

template <int N, class S, class D>
KVLM_INLINE KvlStatus choleskySmall(const S &s, const D &d, ptrdiff_t i)
{
    const auto dst = viewOf(d, i, N);
    return choleskyObject(Fixed<N>(), diagonalThreshold<N, D>(), viewOf(s, i, N),
                          StoredFactor<N, std::remove_const_t<decltype(dst)>>{dst, {}});
}

template <class S, class D>
__attribute__((noinline)) KvlStatus choleskyGeneral(const S &s, const D &d, int n, ptrdiff_t i)
{
    const auto dst = viewOf(d, i, n);
    return choleskyObject(n, diagonalThreshold<0, D>(), viewOf(s, i, n),
                          FactorInPlace<std::remove_const_t<decltype(dst)>>{dst});
}

template <int N, class S, class D>
__attribute__((noinline)) KvlStatus choleskyBatch(const S &givenS, const D &givenD, int count)
{
    using T = typename D::Element;
    const S s = givenS;
    const D d = givenD;
    const ObjectsApart<T, LowerTriangle> apart(d, N, N);
    return inGroups<T>(
        count,
        [&](ptrdiff_t i) KVLM_INLINED {
            if (!apart(d, i))
                return false;
            GroupFactor<T, N> f;
            loadObjects<LowerTriangle>(s, i, f.l);
            if (!cholesky(Fixed<N>(), Lanes<T>::all(diagonalThreshold<N, D>()), f, f))
                return false;
            storeObjects<LowerTriangle>(d, i, f.l);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED { return choleskySmall<N>(s, d, i); });
}

template <class S, class D>
KVLM_INLINE KvlStatus choleskyDecomp(const S &s, const D &d, Length n)
{
    return bySmallOrder(
        n.length, [&](auto order) KVLM_INLINED { return choleskySmall<order>(s, d, 0); },
        [&]() KVLM_INLINED { return choleskyGeneral(s, d, n.length, 0); });
}

template <class S, class D>
KVLM_INLINE KvlStatus choleskyDecompBatch(const S &s, const D &d, Length n, Count count)
{
    return bySmallOrder(
        n.length, [&](auto order) KVLM_INLINED { return choleskyBatch<order>(s, d, count.count); },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count.count; ++i)
                if (const KvlStatus status = choleskyGeneral(s, d, n.length, i))
                    return status;
            return KvlStatus(kvlOk);
        });
}

// All of them settled.
constexpr Limits choleskyLimits32f = {7500, 7500, 2000, 2000, 2000};
constexpr Limits choleskyLimits64f = {2000, 2000, 2000, 720, 2000};

} // namespace kvlm

#define CHOLESKY_M(X, D, T)  X##_M_##D(const T, src), X##_M_##D(T, dst), X##_LENGTH(widthHeight)
#define CHOLESKY_MA(X, D, T) X##_MA_##D(const T, src), X##_MA_##D(T, dst), X##_LENGTH(widthHeight), X##_COUNT

#endif
