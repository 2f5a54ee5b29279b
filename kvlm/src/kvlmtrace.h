// Traces: the diagonal from left to right.
#ifndef KVLMTRACE_H
#define KVLMTRACE_H

#include "frame/rows.h"
#include "loops/inner_products.h"

namespace kvlm::traces {

// e(0) + e(1) + ...; sums of orders that are not unrolled begin with +0.
template <class V, class Order, class Element>
KVLM_INLINE V sumOfDiagonal(Order n, Element e)
{
    V sum = number<V>(0);
    eachIndex(n, [&](int k) KVLM_INLINED {
        const V x = e(k);
        sum = isFixed<Order> && k == 0 ? x : sum + x;
    });
    return sum;
}

template <class Order, class S, class T>
KVLM_INLINE void trace(const S &s, Order n, T *dst, ptrdiff_t i)
{
    const auto src = viewOf(s, i, n);
    put(dst + i, sumOfDiagonal<T>(n, [&](int k) KVLM_INLINED { return get(src.at(k, k)); }));
}

template <class Order, class S, class T>
KVLM_NOINLINE KvlStatus tracesInPlanes(const S &s, Order n, T *dst, int count)
{
    const auto one = [&](ptrdiff_t i) KVLM_INLINED { trace(s, n, dst, i); };
    return inAnyGroups<T, true>(
        count,
        [&](ptrdiff_t i, auto number) KVLM_INLINED {
            using V = typename decltype(number)::Number;
            const auto src = viewOf(s, i, n);
            sumOfDiagonal<V>(n, [&](int k) KVLM_INLINED { return V::load(src.at(k, k)); }).store(dst + i);
            return true;
        },
        NeverFails<decltype(one)>{one});
}

// Apart from planes, so that nothing here has an address: the compiler keeps all of it in registers.
template <class Order, class S, class T>
KVLM_NOINLINE KvlStatus traces(const S &givenS, Order n, T *dst, int count)
{
    if constexpr (!S::isSingle && !S::isList)
        if (inPlanes(givenS))
            return tracesInPlanes(givenS, n, dst, count);
    const S s = givenS;
    if constexpr (S::isTable && isFixed<Order>) {
        T const *places[n]; // the table's entries, read once
        for (int k = 0; k < n; ++k)
            places[k] = s.at(k * n + k, 0);
        for (ptrdiff_t i = 0; i < count; ++i)
            put(dst + i,
                sumOfDiagonal<T>(n, [&](int k) KVLM_INLINED { return get(moved(places[k], steps(i, s.objStride))); }));
    } else {
        for (ptrdiff_t i = 0; i < count; ++i)
            trace(s, n, dst, i);
    }
    return kvlOk;
}

template <class S, class T>
KVLM_INLINE KvlStatus trace(const S &src, Length length, PerObject<T> dst, Count count = Count(1))
{
    const int n = length.length;
    return bySmallOrder(
        n, [&](auto order) KVLM_INLINED { return traces(src, order, dst.base, count.count); },
        [&]() KVLM_INLINED { return traces(src, n, dst.base, count.count); });
}

KVLM_INLINE int traceWork(unsigned n, unsigned count)
{
    return wrapped(n * count);
}

} // namespace kvlm::traces

#define TRACE_M(X, D, T)  X##_M_##D(const T, src), X##_LENGTH(widthHeight), X##_PER_OBJECT(T, dst, 1)
#define TRACE_MA(X, D, T) X##_MA_##D(const T, src), X##_LENGTH(widthHeight), X##_PER_OBJECT(T, dst, 1), X##_COUNT

#endif
