// Frobenius norms: sums of squares from left to right, row by row, but for 32f with adjacent elements.
#ifndef KVLMFROBNORM_H
#define KVLMFROBNORM_H

#include "frame/rows.h"
#include "loops/inner_products.h"
#include "loops/sums.h"

#include <limits.h>

namespace kvlm::frobnorm {

// f(x, elements): a batch of matrices whose rows lie behind one another, as vectors. Of orders 3 to 6, if the objects
// do so too, the compiler knows length and distance. False, and no call, where rows lie elsewhere.
template <class X, class F>
KVLM_INLINE bool asVectors(const X &x, Shape shape, F f)
{
    using E = typename X::Element;
    const int64_t elements = static_cast<int64_t>(shape.width) * shape.height;
    if (x.rowStride != shape.width * static_cast<int64_t>(sizeof(E)) || elements > INT_MAX)
        return false;
    const auto vectors = x.withSteps(None(), x.elemStride);
    bySmallOrder(
        shape.width == shape.height ? shape.width : 0,
        [&](auto order) KVLM_INLINED {
            constexpr int n = order * order;
            if constexpr (!X::isList)
                if (objectsPacked(x, n))
                    return f(Strided<E, Fixed<n * sizeof(E)>, None, Unit<E>>(x.base, {}, {}, {}), Fixed<n>());
            f(vectors, Fixed<n>());
        },
        [&]() KVLM_INLINED { f(vectors, static_cast<int>(elements)); });
    return true;
}

// ---- In eight lanes, at 32f: element k, counted row by row, is summed in lane k mod 8 ----------------------------

// Settled: a sum of squares of at most 2^-23 gives a norm of 0, and so does NaN.
struct LimitedRoot {
    static constexpr float limit = 1.1920929e-07f;

    KVLM_INLINE float operator()(float s) const { return s > limit ? RoughRoot()(s) : 0; }
    KVLM_INLINE Lanes<float> operator()(Lanes<float> s) const
    {
        return RoughRoot()(s) & greater(s, Lanes<float>::all(limit));
    }
};

KVLM_INLINE Lanes<float> loadAtMostFour(const float *p, int n)
{
    using At = Loose<float>;
    const auto element = [&](int k) KVLM_INLINED { return k < n ? At::load(p + k) : 0; };
    return n >= 4 ? Lanes<float>::load(p) : Lanes<float>{_mm_setr_ps(element(0), element(1), element(2), 0)};
}

// The lower four lanes plus the upper four.
template <class Length>
KVLM_INLINE Lanes<float> lanedSquares(const float *p, Length n)
{
    using V = Lanes<float>;
    const auto square = [](V x) KVLM_INLINED { return x * x; };
    V low = V::all(0), high = low;
    int k = 0;
    for (; n - k >= 8; k += 8) {
        low = low + square(V::load(p + k));
        high = high + square(V::load(p + k + 4));
    }
    if (k < n)
        low = low + square(loadAtMostFour(p + k, n - k));
    if (k + 4 < n)
        high = high + square(loadAtMostFour(p + k + 4, n - k - 4));
    return low + high;
}

template <class View>
KVLM_INLINE Lanes<float> lanedSquares(const View &x, int width, int height)
{
    if (x.elemStride == static_cast<int>(sizeof(float)) && x.rowStride == width * static_cast<int64_t>(sizeof(float)) &&
        width <= INT_MAX / height)
        return lanedSquares(x.base, width * height);
    float lanes[8] = {};
    unsigned k = 0;
    for (int r = 0; r < height; ++r)
        for (int c = 0; c < width; ++c, ++k) {
            const float e = get(x.at(r, c));
            lanes[k % 8] += e * e;
        }
    return Lanes<float>::load(lanes) + Lanes<float>::load(lanes + 4);
}

template <class S>
KVLM_INLINE KvlStatus lanedNorm(const S &src, Shape shape, PerObject<float> dst)
{
    put(dst.base, LimitedRoot()(folded(lanedSquares(src.view(0), shape.width, shape.height))));
    return kvlOk;
}

template <class SquaresOf>
KVLM_INLINE KvlStatus lanedNorms(float *dst, int count, SquaresOf squaresOf)
{
    return inGroups<float>(
        count,
        [&](ptrdiff_t i) KVLM_INLINED {
            Lanes<float> x[] = {squaresOf(i), squaresOf(i + 1), squaresOf(i + 2), squaresOf(i + 3)};
            transpose(x);
            LimitedRoot()((x[0] + x[2]) + (x[1] + x[3])).store(dst + i);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED {
            put(dst + i, LimitedRoot()(folded(squaresOf(i))));
            return KvlStatus(kvlOk);
        });
}

template <class S>
KVLM_INLINE KvlStatus lanedNorms(const S &src, Shape shape, PerObject<float> dst, Count count)
{
    const auto ofVectors = [&](const auto &x, auto elements) KVLM_INLINED {
        lanedNorms(dst.base, count.count,
                   [&](ptrdiff_t i) KVLM_INLINED { return lanedSquares(x.object(i), elements); });
    };
    if (!asVectors(src, shape, ofVectors))
        lanedNorms(dst.base, count.count,
                   [&](ptrdiff_t i) KVLM_INLINED { return lanedSquares(src.view(i), shape.width, shape.height); });
    return kvlOk;
}

// ---- From left to right ------------------------------------------------------------------------------------------

template <class S, class T>
KVLM_INLINE KvlStatus frobeniusNorm(const S &src, Shape shape, PerObject<T> dst)
{
    put(dst.base, squareRoot(innerProduct<T>(src, src, 0, shape.width, shape.height)));
    return kvlOk;
}

template <class S, class T>
KVLM_INLINE KvlStatus frobeniusNorms(const S &src, Shape shape, PerObject<T> dst, Count count)
{
    const auto ofVectors = [&](const auto &x, auto elements) KVLM_INLINED {
        innerProducts<ExactRoot>(x, Itself(), dst.base, elements, 1, count.count);
    };
    if constexpr (hasAdjacentRows<S>()) {
        if (asVectors(src, shape, ofVectors))
            return kvlOk;
    } else if constexpr (S::isTable)
        if (isAdjacent(src, shape.width, shape.height))
            return frobeniusNorms(asAdjacent<int>(src, shape.width), shape, dst, count);
    return innerProducts<ExactRoot>(src, Itself(), dst.base, shape.width, shape.height, count.count);
}

KVLM_INLINE int frobeniusWork(unsigned width, unsigned height, unsigned count)
{
    return wrapped(width * height * count);
}

} // namespace kvlm::frobnorm

#define FROBENIUS_M(X, D, T)  X##_M_##D(const T, src), X##_SHAPE, X##_PER_OBJECT(T, dst, 1)
#define FROBENIUS_MA(X, D, T) X##_MA_##D(const T, src), X##_SHAPE, X##_PER_OBJECT(T, dst, 1), X##_COUNT

#endif
