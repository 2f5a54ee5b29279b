// The solver that follows the QR decomposition: square orders 3 to 6 unrolled, all other shapes by a loop whose
// triangular part takes its terms in another order. Both are settled.
#ifndef KVLMQRBACKSUBST_H
#define KVLMQRBACKSUBST_H

#include "kvlm_reflectors.h"

namespace kvlm {

// The factor -2 / (v, v) of each reflector, anew from its stored tail.
template <class V, int W, class Height>
KVLM_INLINE void reflectorFactors(const V (*a)[W], Height given, V *beta)
{
    const int height = given;
#pragma GCC unroll 6
    for (int k = 0; k < W; ++k) {
        V q = number<V>(1);
#pragma GCC unroll 6
        for (int i = k + 1; i < height; ++i)
            q = q + a[i][k] * a[i][k];
        beta[k] = number<V>(-2) / q;
    }
}

// From the right-hand side b to the solution, which takes the place of its first elements.
template <class V, int W, class Height>
KVLM_INLINE void reflectAndSubstitute(const V (*a)[W], const V *beta, Height given, V *b)
{
    constexpr bool unrolled = isFixed<Height>;
    const int height = given;
#pragma GCC unroll 6
    for (int k = 0; k < W; ++k) {
        if (k == W - 1 && height == W)
            break;
        V t = b[k];
#pragma GCC unroll 6
        for (int i = k + 1; i < height; ++i)
            t = t + b[i] * a[i][k];
        t = t * beta[k];
        b[k] = b[k] + t;
#pragma GCC unroll 6
        for (int i = k + 1; i < height; ++i)
            b[i] = b[i] + a[i][k] * t;
    }
    b[W - 1] = b[W - 1] / a[W - 1][W - 1];
#pragma GCC unroll 6
    for (int i = W - 2; i >= 0; --i) {
        if (unrolled && i > 0) {
#pragma GCC unroll 6
            for (int j = W - 1; j > i; --j)
                b[i] = b[i] - a[i][j] * b[j];
        } else if (unrolled) {
            V s = a[0][W - 1] * b[W - 1];
#pragma GCC unroll 6
            for (int j = W - 2; j > 0; --j)
                s = s + a[0][j] * b[j];
            b[0] = b[0] - s;
        } else {
            V s = number<V>(0);
#pragma GCC unroll 6
            for (int j = i + 1; j < W; ++j)
                s = s + a[i][j] * b[j];
            b[i] = b[i] - s;
        }
        b[i] = b[i] / a[i][i];
    }
}

template <class V, int W>
KVLM_INLINE auto rowsOf(const V *elements)
{
    return reinterpret_cast<const V(*)[W]>(elements);
}

// One copy of the code for all descriptions, one matrix for each right-hand side or for all.
template <class V, int W, class Height>
__attribute__((noinline)) void solveAnew(const V *a, Height height, V *b)
{
    V beta[W];
    reflectorFactors(rowsOf<V, W>(a), height, beta);
    reflectAndSubstitute(rowsOf<V, W>(a), beta, height, b);
}

template <class V, int W, class Height>
__attribute__((noinline)) void solvePrepared(const V *a, const V *beta, Height height, V *b)
{
    reflectAndSubstitute(rowsOf<V, W>(a), beta, height, b);
}

// The system of one object
template <class Width, class Height, class A, class B, class D>
KVLM_INLINE void qrSolveObject(const A &a, const B &b, const D &d, Width width, Height height, ptrdiff_t i)
{
    using V = Lanes<typename D::Element>;
    V factor[capacity<Height, Width>], x[capacity<Height, Fixed<1>>];
    loadObject(a, i, int(height), int(width), factor);
    loadObject(asColumn(b), i, height, Fixed<1>(), x);
    knowingWidth(width, [&](auto w) KVLM_INLINED { solveAnew<V, w>(factor, height, x); });
    storeObject(asColumn(d), i, width, Fixed<1>(), x);
}

// All other shapes, one system
template <class A, class B, class D, class T>
__attribute__((noinline)) void qrSolveGeneral(const A &factor, const B &b, const D &d, T *work, TallShape shape)
{
    const int width = shape.width, height = shape.height;
    const auto a = [&](int i, int j) KVLM_INLINED { return get(factor.at(i, j)); };
    for (int i = 0; i < height; ++i)
        put(work + i, get(b.at(0, i)));
    for (int k = 0; k < reflectorsOf(width, height); ++k) {
        T t = get(work + k), q = 1;
        for (int i = k + 1; i < height; ++i) {
            const T v = a(i, k);
            t += get(work + i) * v;
            q += v * v;
        }
        t *= -2 / q;
        put(work + k, get(work + k) + t);
        for (int i = k + 1; i < height; ++i)
            put(work + i, get(work + i) + a(i, k) * t);
    }
    const int last = width - 1;
    put(d.at(0, last), get(work + last) / a(last, last));
    for (int i = last - 1; i >= 0; --i) {
        T s = 0;
        for (int j = i + 1; j < width; ++j)
            s += a(i, j) * get(d.at(0, j));
        put(d.at(0, i), (get(work + i) - s) / a(i, i));
    }
}

// One matrix, many right-hand sides
template <class Width, class Height, class A, class B, class D>
__attribute__((noinline)) KvlStatus qrVectors(const A &a, const B &givenB, const D &givenD, Width width, Height height,
                                              int count)
{
    using T = typename D::Element;
    using V = Lanes<T>;
    const auto b = asColumn(givenB);
    const auto d = asColumn(givenD);
    V factor[capacity<Height, Width>];
    loadObject(a, 0, int(height), int(width), factor);
    const ObjectsApart<T> apart(d, width, 1);
    V beta[lanesWidth], x[capacity<Height, Fixed<1>>];
    knowingWidth(width, [&](auto w) KVLM_INLINED { reflectorFactors(rowsOf<V, w>(factor), height, beta); });
    const auto solve = [&]() KVLM_INLINED {
        knowingWidth(width, [&](auto w) KVLM_INLINED { solvePrepared<V, w>(factor, beta, height, x); });
    };
    return inGroups<T>(
        count,
        [&](ptrdiff_t i) KVLM_INLINED {
            if (!apart(d, i))
                return false;
            moveObjects<Load, Whole>(b, i, height, Fixed<1>(), x);
            solve();
            moveObjects<Store, Whole>(d, i, width, Fixed<1>(), x);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED {
            loadObject(b, i, height, Fixed<1>(), x);
            solve();
            storeObject(d, i, width, Fixed<1>(), x);
            return KvlStatus(kvlOk);
        });
}

// A matrix for each right-hand side
template <class Width, class Height, class A, class B, class D>
__attribute__((noinline)) KvlStatus qrSystems(const A &givenA, const B &givenB, const D &givenD, Width width,
                                              Height height, int count)
{
    using T = typename D::Element;
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    constexpr int registers = registersFor<Height>;
    using V = Several<T, registers>;
    const ObjectsApart<T, Whole, registers> apart(asColumn(d), width, 1);
    return inWideGroups<T, registers>(
        count,
        [&](ptrdiff_t i, int parts) KVLM_INLINED {
            if (!apart(d, i, parts))
                return false;
            V factor[capacity<Height, Width>], x[capacity<Height, Fixed<1>>];
            loadParts<Whole>(a, i, parts, movedSize<A>(height), movedSize<A>(width), factor);
            loadParts<Whole>(asColumn(b), i, parts, height, Fixed<1>(), x);
            knowingWidth(width, [&](auto w) KVLM_INLINED { solveAnew<V, w>(factor, height, x); });
            storeParts<Whole>(asColumn(d), i, parts, width, Fixed<1>(), x);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED {
            qrSolveObject(a, b, d, width, height, i);
            return KvlStatus(kvlOk);
        });
}

template <class A, class B, class D, class T>
KVLM_INLINE KvlStatus qrSolveAll(const A &a, bool oneMatrix, const B &b, const D &d, T *work, TallShape shape,
                                 int count)
{
    const int width = shape.width, height = shape.height;
    for (ptrdiff_t i = 0; i < count; ++i)
        qrSolveGeneral(viewOf(a, oneMatrix ? 0 : i, width), viewOf(b, i, height), viewOf(d, i, width), work, shape);
    return kvlOk;
}

template <class A, class B, class D, class T>
KVLM_INLINE KvlStatus qrSolve(const A &a, Buffer<T> buffer, const B &b, const D &d, TallShape shape)
{
    return byTallShape(
        shape,
        [&](auto width, auto height) KVLM_INLINED {
            qrSolveObject(a, b, d, width, height, 0);
            return KvlStatus(kvlOk);
        },
        [&]() KVLM_INLINED { return qrSolveAll(a, true, b, d, buffer.base, shape, 1); });
}

template <class A, class B, class D, class T>
KVLM_INLINE KvlStatus qrSolveVectors(const A &a, Buffer<T> buffer, const B &b, const D &d, TallShape shape, Count count)
{
    return byTallShape(
        shape, [&](auto width, auto height) KVLM_INLINED { return qrVectors(a, b, d, width, height, count.count); },
        [&]() KVLM_INLINED { return qrSolveAll(a, true, b, d, buffer.base, shape, count.count); });
}

template <class A, class B, class D, class T>
KVLM_INLINE KvlStatus qrSolveBatch(const A &a, Buffer<T> buffer, const B &b, const D &d, TallShape shape, Count count)
{
    return byTallShape(
        shape, [&](auto width, auto height) KVLM_INLINED { return qrSystems(a, b, d, width, height, count.count); },
        [&]() KVLM_INLINED { return qrSolveAll(a, false, b, d, buffer.base, shape, count.count); });
}

KVLM_INLINE int qrVectorsWork(unsigned width, unsigned height, unsigned count)
{
    return wrapped(width * height + (width + height) * count);
}

KVLM_INLINE int qrSystemsWork(unsigned width, unsigned height, unsigned count)
{
    return wrapped((width * height + width + height) * count);
}

constexpr Limits qrSolveLimits = {2800, 2800, 1800, 1800, 1800};

} // namespace kvlm

#define QR_MV(X, D, T)                                                                                                 \
    X##_M_##D(const T, src1), X##_BUFFER(T, buffer, size_t(height)), X##_V_##D(const T, src2), X##_V_##D(T, dst),      \
        X##_TALL
#define QR_MVA(X, D, T)                                                                                                \
    X##_M_##D(const T, src1), X##_BUFFER(T, buffer, size_t(height)), X##_VA_##D(const T, src2), X##_VA_##D(T, dst),    \
        X##_TALL, X##_COUNT
#define QR_MAVA(X, D, T)                                                                                               \
    X##_MA_##D(const T, src1), X##_BUFFER(T, buffer, size_t(height)), X##_VA_##D(const T, src2), X##_VA_##D(T, dst),   \
        X##_TALL, X##_COUNT

#endif
