// Sums of products of two operands over their elements, ascending: of one object, or of a group in its lanes.
#ifndef KVLM_INNERPRODUCTS_H
#define KVLM_INNERPRODUCTS_H

#include "kvlm_groups.h"

namespace kvlm {

// Element (r, c) of the objects from i on, one in each lane; of a single one in all.
template <class X>
KVLM_INLINE auto elementsAt(const X &x, ptrdiff_t i, int width, int r, int c)
{
    using E = typename X::Element;
    using V = Lanes<std::remove_const_t<E>>;
    const auto place = [&](ptrdiff_t l) KVLM_INLINED { return viewOf(x, i + l, width).at(r, c); };
    if constexpr (X::isSingle)
        return V::all(get(place(0)));
    else if (sideBySide(x))
        return V::load(place(0));
    else
        return gather(groupOf<E>(place));
}

// The same of as many elements in a row as a register has lanes.
template <class X, int N, class T>
KVLM_INLINE void runAt(const X &x, ptrdiff_t i, int width, int r, int c, Lanes<T> (&v)[N])
{
    if constexpr (X::isSingle || !hasAdjacentRows<X>())
#pragma GCC unroll 4
        for (int k = 0; k < N; ++k)
            v[k] = elementsAt(x, i, width, r, c + k);
    else
        loadRuns<N>(groupOf<const T>([&](int l) KVLM_INLINED { return x.view(i + l).at(r, c); }).p, v);
}

// sum + a(r, 0)*b(r, 0) + ...
template <class A, class B, class T>
KVLM_INLINE void addRow(Lanes<T> &sum, const A &a, const B &b, ptrdiff_t i, int width, int r)
{
    constexpr int lanes = Lanes<T>::count;
    int c = 0;
    for (; c + lanes <= width; c += lanes) {
        Lanes<T> x[lanes], y[lanes];
        runAt(a, i, width, r, c, x);
        runAt(b, i, width, r, c, y);
#pragma GCC unroll 4
        for (int k = 0; k < lanes; ++k)
            sum = sum + x[k] * y[k];
    }
    for (; c < width; ++c)
        sum = sum + elementsAt(a, i, width, r, c) * elementsAt(b, i, width, r, c);
}

template <class A, class B, class T>
KVLM_INLINE void addRow(T &sum, const A &a, const B &b, ptrdiff_t i, int width, int r)
{
    const auto x = viewOf(a, i, width);
    const auto y = viewOf(b, i, width);
    for (int c = 0; c < width; ++c)
        sum += get(x.at(r, c)) * get(y.at(r, c));
}

// From +0 on, row by row: V is the element type, or its lanes.
template <class V, class A, class B>
KVLM_INLINE V innerProduct(const A &a, const B &b, ptrdiff_t i, int width, int height)
{
    V sum = number<V>(0);
    for (int r = 0; r < height; ++r)
        addRow(sum, a, b, i, width, r);
    return sum;
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
