// QR decomposition by Householder reflections, the same steps for all shapes.
#ifndef KVLMQRDECOMP_H
#define KVLMQRDECOMP_H

#include "loops/panels.h"
#include "loops/tall.h"

namespace kvlm::qr {

// Measured: fewer do not hide their latencies, more gain nothing.
constexpr int mostGroups = 8, tallGroups = 4;

// The reflector of a column of a group: the squared length of the column, the factor that makes the column the vector,
// that vector's products with the columns.
template <class V, int W>
struct Reflector {
    V s, f, t[W];

    // From row k, column k of a group on.
    KVLM_INLINE void scale(const V (*a)[W], int k)
    {
        using T = typename NumberTraits<V>::Element;
        const V root = squareRoot(s) ^ without(V::all(T(-0.0)), greater(a[k][k], V::all(0)));
        f = V::all(1) / (a[k][k] + root);
    }
    // With its own column too.
    template <class Height>
    KVLM_INLINE void multiply(V (*a)[W], int k, Height height)
    {
        const V factor = f;
        V sum[W], q = V::all(1);
#pragma GCC unroll 6
        for (int j = k; j < W; ++j)
            sum[j] = a[k][j];
#pragma GCC unroll 6
        for (int i = k + 1; i < height; ++i) {
            const V v = a[i][k] * factor;
            q = q + v * v;
#pragma GCC unroll 6
            for (int j = k; j < W; ++j)
                sum[j] = sum[j] + a[i][j] * v;
            a[i][k] = v;
        }
        const V beta = V::all(-2) / q;
#pragma GCC unroll 6
        for (int j = k; j < W; ++j)
            t[j] = sum[j] * beta;
    }
    // On the way the squared length of the next column, below row k.
    template <class Height>
    KVLM_INLINE V reflect(V (*a)[W], int k, Height height) const
    {
        V square = V::all(0);
#pragma GCC unroll 6
        for (int j = k; j < W; ++j)
            a[k][j] = a[k][j] + t[j];
#pragma GCC unroll 6
        for (int i = k + 1; i < height; ++i) {
#pragma GCC unroll 6
            for (int j = k + 1; j < W; ++j)
                a[i][j] = a[i][j] + a[i][k] * t[j];
            if (k + 1 < W)
                square = square + a[i][k + 1] * a[i][k + 1];
        }
        return square;
    }
};

// On copies of groups, or of one object that is in all lanes; one copy of the code for all descriptions. All groups
// take each step before any takes the next: so the roots and divisions of one are hidden behind the sums of the others.
// The number of columns that were reflected: all, or those before one in which an object is zero to working precision.
template <class V, int W, class Height>
KVLM_NOINLINE int reflectKnown(V *elements, int groups, Height given)
{
    using T = typename NumberTraits<V>::Element;
    const int height = given;
    const V least = V::all(unitRoundoff<T>);
    Reflector<V, W> reflectors[mostGroups];
    const auto each = [&](auto step) KVLM_INLINED {
#pragma GCC unroll 1
        for (int g = 0; g < groups; ++g)
            step(reinterpret_cast<V(*)[W]>(elements) + ptrdiff_t(g) * height, reflectors[g]);
    };
    V fails = V::all(0);
    const auto keepSquare = [&](V s, Reflector<V, W> &now) KVLM_INLINED {
        // Settled: the squared length itself is compared.
        fails = fails | greater(least, magnitude(s));
        now.s = s;
    };
    each([&](const V(*a)[W], Reflector<V, W> &now) KVLM_INLINED {
        V s = V::all(0);
#pragma GCC unroll 6
        for (int i = 0; i < height; ++i)
            s = s + a[i][0] * a[i][0];
        keepSquare(s, now);
    });
#pragma GCC unroll 6
    for (int k = 0; k < W; ++k) {
        if (k == W - 1 && height == W)
            break;
        if (any(fails))
            return k;
        each([&](const V(*a)[W], Reflector<V, W> &now) KVLM_INLINED { now.scale(a, k); });
        each([&](V(*a)[W], Reflector<V, W> &now) KVLM_INLINED { now.multiply(a, k, height); });
        each([&](V(*a)[W], Reflector<V, W> &now) KVLM_INLINED {
            const V s = now.reflect(a, k, height);
            if (k + 1 < W)
                keepSquare(s, now);
        });
    }
    return reflectorsOf(W, height);
}

template <class V, class Width, class Height>
KVLM_INLINE bool reflectColumns(V *a, int groups, Width width, Height height)
{
    return knowingWidth(width, [&](auto w) KVLM_INLINED { return reflectKnown<V, w>(a, groups, height); }) ==
           reflectorsOf(width, height);
}

// What a failure leaves of the columns from the failing one on is stored too.
template <class Width, class Height, class T>
KVLM_NOINLINE KvlStatus reflectObject(const Objects<const T> &s, const Objects<T> &d, Width width, Height height,
                                      ptrdiff_t i)
{
    Lanes<T> a[capacity<Height, Width>];
    loadObject(s, i, height, width, a);
    const bool complete = reflectColumns(a, 1, width, height);
    storeObject(d, i, height, width, a);
    return complete ? kvlOk : kvlErrZeroDivisor;
}

// All other shapes
template <class Src, class Dst, class T>
KVLM_NOINLINE KvlStatus reflectInPlace(const Src &src, const Dst &dst, T *v, TallShape shape)
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
        if (magnitude(s) < unitRoundoff<T>)
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

// The same on a copy.
template <class T>
KVLM_NOINLINE KvlStatus reflectPanels(Panels<T> &x, TallShape shape)
{
    using V = Lanes<T>;
    auto &a = x.a;
    const int width = shape.width, height = shape.height;
    V v[Panels<T>::most];
    const auto step = [&](int k, auto lane, auto registers) KVLM_INLINED {
        T s = 0;
#pragma GCC unroll 1
        for (int i = k; i < height; ++i)
            s += a[i][k] * a[i][k];
        if (magnitude(s) < unitRoundoff<T>)
            return false;
        const T root = squareRoot(s), f = 1 / (a[k][k] + (a[k][k] > 0 ? root : -root));
        T q = 1;
        V t[registers];
        const auto eachRegister = [&](int i, auto body) KVLM_INLINED {
            eachIndex(registers, [&](auto g) KVLM_INLINED { body(g, a[i] + k - lane + g * V::count); });
        };
        eachRegister(k, [&](auto g, const T *p) KVLM_INLINED { t[g] = V::load(p); });
#pragma GCC unroll 1
        for (int i = k + 1; i < height; ++i) {
            const T x = a[i][k] * f;
            q += x * x;
            v[i] = V::all(x);
            eachRegister(i, [&](auto g, const T *p) KVLM_INLINED { t[g] = t[g] + V::load(p) * v[i]; });
        }
        const V beta = V::all(-2 / q);
        const auto add = [&](auto g, V head, V x, V y, T *p)
                             KVLM_INLINED { (g == 0 ? joined<lane>(x, head, y) : y).store(p); };
        eachRegister(k, [&](auto g, T *p) KVLM_INLINED {
            t[g] = t[g] * beta;
            const V x = V::load(p), y = x + t[g];
            add(g, y, x, y, p);
        });
#pragma GCC unroll 1
        for (int i = k + 1; i < height; ++i)
            eachRegister(i, [&](auto g, T *p) KVLM_INLINED {
                const V x = V::load(p);
                add(g, v[i], x, x + v[i] * t[g], p);
            });
        return true;
    };
    return eachColumn<T>(reflectorsOf(width, height), width, step) ? kvlOk : kvlErrZeroDivisor;
}

template <class T>
KVLM_INLINE KvlStatus reflectGeneral(const Objects<const T> &s, const Objects<T> &d, T *buffer, TallShape shape,
                                     ptrdiff_t i)
{
    return withViews(
        [&](const auto &src, const auto &dst) KVLM_INLINED {
            if (shape.height > Panels<T>::most)
                return reflectInPlace(src, dst, buffer, shape);
            Panels<T> x(src, shape.height, shape.width);
            const KvlStatus status = reflectPanels(x, shape);
            x.store(dst, shape.height, shape.width);
            return status;
        },
        i, s, d);
}

// The objects from `first` to `count`, of which a register V holds so many.
template <class V, class Width, class Height, class T>
KVLM_NOINLINE KvlStatus reflectGroups(const Objects<const T> &s, const Objects<T> &d, Width width, Height height,
                                      int first, int count)
{
    constexpr int most = (isFixed<Height> ? mostGroups : tallGroups) / V::blocks, lanes = V::count;
    constexpr int registers = lanes / Lanes<T>::count;
    V a[most * capacity<Height, Width>];
    const SizedGroups<Load, const T, Height, Width> source(s, height, width);
    const SizedGroups<Store, T, Height, Width> result(d, height, width);
    const GroupsApart<T, Whole, most * registers> apart(d, height, width);
    const GroupsApart<T, Whole, registers> apartInGroup(d, height, width);
    return inSeveralGroups<V, most>(
        first, count,
        [&](ptrdiff_t from, int groups) KVLM_INLINED {
            if (!(groups > 1 ? apart(from, groups * registers) : apartInGroup(from)))
                return false;
            const auto each = [&](auto move) KVLM_INLINED {
#pragma GCC unroll 1
                for (int g = 0; g < groups; ++g)
                    move(from + g * lanes, a + ptrdiff_t(g) * height * width);
            };
            each([&](ptrdiff_t i, V *to) KVLM_INLINED { source.move(i, to); });
            if (!reflectColumns(a, groups, width, height))
                return false;
            each([&](ptrdiff_t i, const V *from) KVLM_INLINED { result.move(i, from); });
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED { return reflectObject(s, d, width, height, i); });
}

template <class Width, class Height, class T>
KVLM_NOINLINE KvlStatus reflectBatch(const Objects<const T> &s, const Objects<T> &d, Width width, Height height,
                                     int count)
{
    return wideThenNarrow<T>(count, [&](auto number, int first, int end) KVLM_INLINED {
        return reflectGroups<typename decltype(number)::Number>(s, d, width, height, first, end);
    });
}

template <class T>
KVLM_NOINLINE KvlStatus reflectObjects(const Objects<const T> &s, const Objects<T> &d, T *buffer, TallShape shape,
                                       int count)
{
    return byTallShape(
        shape,
        [&](auto width, auto height) KVLM_INLINED {
            return count == 1 ? reflectObject(s, d, width, height, 0) : reflectBatch(s, d, width, height, count);
        },
        [&]() KVLM_INLINED {
            return untilOneFails(count,
                                 [&](ptrdiff_t i) KVLM_INLINED { return reflectGeneral(s, d, buffer, shape, i); });
        });
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus qrDecomp(const S &s, Buffer<T> buffer, const D &d, TallShape shape, Count count = Count(1))
{
    return reflectObjects(objectsOf(s, shape.width), objectsOf(d, shape.width), buffer.base, shape, count.count);
}

KVLM_INLINE int qrWork(unsigned width, unsigned height, unsigned count)
{
    return wrapped(width * height * 2 * count);
}

constexpr Limits qrLimits = {2800, 2800, 1800, 1800, 1800};

// Compiled once, in kvlmqrdecomp_ma.cpp.
#define QR_DECOMPOSITIONS(linkage, T)                                                                                  \
    linkage template KvlStatus reflectObjects(const Objects<const T> &, const Objects<T> &, T *, TallShape, int);
KVLM_FOR_ELEMENTS(QR_DECOMPOSITIONS, extern)

} // namespace kvlm::qr

#define QR_M(X, D, T) X##_M_##D(const T, src), X##_BUFFER(T, buffer, size_t(height)), X##_M_##D(T, dst), X##_TALL
#define QR_MA(X, D, T)                                                                                                 \
    X##_MA_##D(const T, src), X##_BUFFER(T, buffer, size_t(height)), X##_MA_##D(T, dst), X##_TALL, X##_COUNT

#endif
