// Sums of products of two operands over their elements, ascending: of one object, or of a batch in lanes.
#ifndef KVLM_LOOPS_INNER_PRODUCTS_H
#define KVLM_LOOPS_INNER_PRODUCTS_H

#include "frame/layout.h"
#include "lanes/batches.h"

namespace kvlm {

// Element (r, c) of the objects from i on, one in each lane of V; of a single one in all.
template <class V, class X>
KVLM_INLINE V elementsAt(const X &x, ptrdiff_t i, int width, int r, int c)
{
    using E = typename X::Element;
    const auto place = [&](ptrdiff_t l) KVLM_INLINED { return viewOf(x, i + l, width).at(r, c); };
    if constexpr (X::isSingle)
        return V::all(get(place(0)));
    else if (inPlanes(x))
        return V::load(place(0));
    else
        return gather<V>(groupOf<E, V::count>(place));
}

// The same of N elements in a row.
template <class X, int N, class V>
KVLM_INLINE void runAt(const X &x, ptrdiff_t i, int width, int r, int c, V (&v)[N])
{
    if constexpr (X::isSingle || !hasAdjacentRows<X>())
#pragma GCC unroll 4
        for (int k = 0; k < N; ++k)
            v[k] = elementsAt<V>(x, i, width, r, c + k);
    else
        loadRuns<N>(
            groupOf<typename X::Element, V::count>([&](int l) KVLM_INLINED { return x.view(i + l).at(r, c); }).p, v);
}

// The factor beside an operand: another one, or the operand itself.
struct Itself {};

template <class B>
constexpr bool isItself = std::is_same_v<B, Itself>;

// The sums of so many groups of objects, plus the products of row r. Several hide the latency of a long sum.
template <int Groups, class A, class B, class V, class Width>
KVLM_INLINE void addRow(V (&sum)[Groups], const A &a, const B &b, ptrdiff_t i, Width width, int r)
{
    constexpr int run = V::count / V::blocks;
    int c = 0;
    for (; c + run <= width; c += run)
#pragma GCC unroll 4
        for (int g = 0; g < Groups; ++g) {
            V x[run], y[run];
            runAt(a, i + g * V::count, width, r, c, x);
            if constexpr (!isItself<B>)
                runAt(b, i + g * V::count, width, r, c, y);
#pragma GCC unroll 4
            for (int k = 0; k < run; ++k)
                sum[g] = sum[g] + x[k] * (isItself<B> ? x : y)[k];
        }
    for (; c < width; ++c)
#pragma GCC unroll 4
        for (int g = 0; g < Groups; ++g) {
            V x = elementsAt<V>(a, i + g * V::count, width, r, c), y = x;
            if constexpr (!isItself<B>)
                y = elementsAt<V>(b, i + g * V::count, width, r, c);
            sum[g] = sum[g] + x * y;
        }
}

// The sum of products of one object, from +0 on, row by row.
template <class T, class A, class B>
KVLM_INLINE T innerProduct(const A &a, const B &b, ptrdiff_t i, int width, int height)
{
    T sum = 0;
    for (int r = 0; r < height; ++r)
        for (int c = 0; c < width; ++c) {
            const T x = get(viewOf(a, i, width).at(r, c));
            if constexpr (isItself<B>)
                sum += x * x;
            else
                sum += x * get(viewOf(b, i, width).at(r, c));
        }
    return sum;
}

// The same of a batch, finished by `root`.
template <class Root, class A, class B, class T, class Width>
KVLM_NOINLINE KvlStatus innerProducts(const A &givenA, const B &givenB, T *dst, Width width, int height, int count)
{
    const A a = givenA;
    const B b = givenB;
    const auto one = [&](ptrdiff_t i) KVLM_INLINED {
        Loose<T>::store(dst + i, Root()(innerProduct<T>(a, b, i, width, height)));
        return KvlStatus(kvlOk);
    };
    return wideThenNarrow<T>(
        count,
        [&](auto number, int first, int end) KVLM_INLINED {
            using V = typename decltype(number)::Number;
            constexpr int most = V::blocks == 1 ? 4 : 2;
            const auto groups = [&](ptrdiff_t i, auto together) KVLM_INLINED {
                constexpr int n = decltype(together){};
                V sum[n] = {};
                for (int r = 0; r < height; ++r)
                    addRow(sum, a, b, i, width, r);
#pragma GCC unroll 4
                for (int g = 0; g < n; ++g)
                    Root()(sum[g]).store(dst + i + g * V::count);
            };
            return inSeveralGroups<V, most>(
                first, end,
                [&](ptrdiff_t i, int parts) KVLM_INLINED {
                    if (parts == most)
                        groups(i, Fixed<most>());
                    else
                        for (int g = 0; g < parts; ++g)
                            groups(i + g * V::count, Fixed<1>());
                    return true;
                },
                one);
        },
        hasAdjacentRows<A>() || inPlanes(a));
}

// ---- Roots of sums of squares ------------------------------------------------------------------------------------

struct NoRoot {
    template <class V>
    KVLM_INLINE V operator()(V s) const
    {
        return s;
    }
};

struct ExactRoot {
    template <class V>
    KVLM_INLINE V operator()(V s) const
    {
        return squareRoot(s);
    }
};

// The processor's approximate reciprocal root and one Newton step. Settled: of 0 it makes NaN.
struct RoughRoot {
    template <class V>
    KVLM_INLINE V operator()(V s) const
    {
        const V r = roughReciprocalRoot(s);
        return s * (r * (number<V>(0.5f) * (number<V>(3) - s * (r * r))));
    }
};

} // namespace kvlm

#endif
