// QR decomposition by Householder reflections, the same steps for all shapes.
#ifndef KVLMQRDECOMP_H
#define KVLMQRDECOMP_H

#include "kvlm_reflectors.h"

namespace kvlm {

// On copies of a group, or of one object that is in all lanes; one copy of the code for all descriptions. The number of
// columns that were reflected: all, or those before one in which an object is zero to working precision.
template <class V, int W, class Height>
__attribute__((noinline)) int reflectKnown(V *elements, Height given)
{
    using T = typename NumberTraits<V>::Element;
    const auto a = reinterpret_cast<V(*)[W]>(elements);
    const int height = given;
    const V least = V::all(unitRoundoff<T>), zero = V::all(0);
    V s = zero;
#pragma GCC unroll 6
    for (int i = 0; i < height; ++i)
        s = s + a[i][0] * a[i][0];
#pragma GCC unroll 6
    for (int k = 0; k < W; ++k) {
        if (k == W - 1 && height == W)
            break;
        // Settled: the squared length itself is compared.
        if (any(greater(least, magnitude(s))))
            return k;
        const V root = squareRoot(s) ^ without(V::all(T(-0.0)), greater(a[k][k], zero));
        const V f = V::all(1) / (a[k][k] + root);
        // The products of the reflector with its own column and with those behind it.
        V t[W], q = V::all(1);
#pragma GCC unroll 6
        for (int j = k; j < W; ++j)
            t[j] = a[k][j];
#pragma GCC unroll 6
        for (int i = k + 1; i < height; ++i) {
            const V v = a[i][k] * f;
            q = q + v * v;
#pragma GCC unroll 6
            for (int j = k; j < W; ++j)
                t[j] = t[j] + a[i][j] * v;
            a[i][k] = v;
        }
        const V beta = V::all(-2) / q;
#pragma GCC unroll 6
        for (int j = k; j < W; ++j) {
            t[j] = t[j] * beta;
            a[k][j] = a[k][j] + t[j];
        }
        // On the way the squared length of the next column.
        s = zero;
#pragma GCC unroll 6
        for (int i = k + 1; i < height; ++i) {
#pragma GCC unroll 6
            for (int j = k + 1; j < W; ++j)
                a[i][j] = a[i][j] + a[i][k] * t[j];
            if (k + 1 < W)
                s = s + a[i][k + 1] * a[i][k + 1];
        }
    }
    return reflectorsOf(W, height);
}

template <class V, class Width, class Height>
KVLM_INLINE bool reflectColumns(V *a, Width width, Height height)
{
    return knowingWidth(width, [&](auto w) KVLM_INLINED { return reflectKnown<V, w>(a, height); }) ==
           reflectorsOf(width, height);
}

// What a failure leaves of the columns from the failing one on is stored too.
template <class Width, class Height, class S, class D>
KVLM_INLINE KvlStatus reflectObject(const S &s, const D &d, Width width, Height height, ptrdiff_t i)
{
    Lanes<typename D::Element> a[capacity<Height, Width>];
    loadObject(s, i, int(height), int(width), a);
    const bool complete = reflectColumns(a, width, height);
    storeObject(d, i, int(height), int(width), a);
    return complete ? kvlOk : kvlErrZeroDivisor;
}

// All other shapes
template <class Src, class Dst, class T>
__attribute__((noinline)) KvlStatus reflectInPlace(const Src &src, const Dst &dst, T *v, TallShape shape)
{
    const int width = shape.width, height = shape.height;
    const auto a = [&](int i, int j) KVLM_INLINED { return get(dst.at(i, j)); };
    for (int i = 0; i < height; ++i)
        for (int j = 0; j < width; ++j)
            put(dst.at(i, j), get(src.at(i, j)));
    for (int k = 0; k < reflectorsOf(width, height); ++k) {
        T s = 0;
        for (int i = k; i < height; ++i)
            s += a(i, k) * a(i, k);
        if (unitRoundoff < T >> magnitude(s))
            return kvlErrZeroDivisor;
        const T root = squareRoot(s), f = 1 / (a(k, k) + (a(k, k) > 0 ? root : -root));
        T q = 1;
        put(v + k, T(1));
        for (int i = k + 1; i < height; ++i) {
            const T x = a(i, k) * f;
            put(v + i, x);
            q += x * x;
        }
        const T beta = -2 / q;
        for (int j = k; j < width; ++j) {
            T t = a(k, j);
            for (int i = k + 1; i < height; ++i)
                t += a(i, j) * get(v + i);
            t *= beta;
            for (int i = k; i < height; ++i)
                put(dst.at(i, j), a(i, j) + get(v + i) * t);
        }
        for (int i = k + 1; i < height; ++i)
            put(dst.at(i, k), get(v + i));
    }
    return kvlOk;
}

template <class Width, class Height, class S, class D>
__attribute__((noinline)) KvlStatus reflectBatch(const S &givenS, const D &givenD, Width width, Height height,
                                                 int count)
{
    using T = typename D::Element;
    const S s = givenS;
    const D d = givenD;
    constexpr int registers = registersFor<Height>;
    const ObjectsApart<T, Whole, registers> apart(d, height, width);
    return inWideGroups<T, registers>(
        count,
        [&](ptrdiff_t i, int parts) KVLM_INLINED {
            if (!apart(d, i, parts))
                return false;
            Several<T, registers> a[capacity<Height, Width>];
            loadParts<Whole>(s, i, parts, movedSize<S>(height), movedSize<S>(width), a);
            if (!reflectColumns(a, width, height))
                return false;
            storeParts<Whole>(d, i, parts, movedSize<D>(height), movedSize<D>(width), a);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED { return reflectObject(s, d, width, height, i); });
}

template <class S, class T, class D>
KVLM_INLINE KvlStatus qrDecomp(const S &s, Buffer<T> buffer, const D &d, TallShape shape)
{
    return byTallShape(
        shape, [&](auto width, auto height) KVLM_INLINED { return reflectObject(s, d, width, height, 0); },
        [&]() KVLM_INLINED {
            return reflectInPlace(viewOf(s, 0, shape.width), viewOf(d, 0, shape.width), buffer.base, shape);
        });
}

template <class S, class T, class D>
KVLM_INLINE KvlStatus qrDecompBatch(const S &s, Buffer<T> buffer, const D &d, TallShape shape, Count count)
{
    return byTallShape(
        shape, [&](auto width, auto height) KVLM_INLINED { return reflectBatch(s, d, width, height, count.count); },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count.count; ++i)
                if (const KvlStatus status =
                        reflectInPlace(viewOf(s, i, shape.width), viewOf(d, i, shape.width), buffer.base, shape))
                    return status;
            return KvlStatus(kvlOk);
        });
}

KVLM_INLINE int qrWork(unsigned width, unsigned height, unsigned count)
{
    return wrapped(width * height * 2 * count);
}

constexpr Limits qrLimits = {2800, 2800, 1800, 1800, 1800};

} // namespace kvlm

#define QR_M(X, D, T) X##_M_##D(const T, src), X##_BUFFER(T, buffer, size_t(height)), X##_M_##D(T, dst), X##_TALL
#define QR_MA(X, D, T)                                                                                                 \
    X##_MA_##D(const T, src), X##_BUFFER(T, buffer, size_t(height)), X##_MA_##D(T, dst), X##_TALL, X##_COUNT

#endif
