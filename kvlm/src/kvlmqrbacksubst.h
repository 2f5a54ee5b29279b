// The solver that follows the QR decomposition: square orders 3 to 6 unrolled, all other shapes by a loop whose
// triangular part takes its terms in another order. Both are settled.
#ifndef KVLMQRBACKSUBST_H
#define KVLMQRBACKSUBST_H

#include "loops/tall.h"

namespace kvlm::qr {

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
KVLM_NOINLINE void solveAnew(const V *a, Height height, V *b)
{
    V beta[W];
    reflectorFactors(rowsOf<V, W>(a), height, beta);
    reflectAndSubstitute(rowsOf<V, W>(a), beta, height, b);
}

template <class V, int W, class Height>
KVLM_NOINLINE void solvePrepared(const V *a, const V *beta, Height height, V *b)
{
    reflectAndSubstitute(rowsOf<V, W>(a), beta, height, b);
}

// System i. A single matrix is that of all systems.
template <class Width, class Height, class T>
KVLM_NOINLINE void qrSolveObject(const Objects<const T> &a, const Objects<const T> &b, const Objects<T> &d, Width width,
                                 Height height, ptrdiff_t i)
{
    using V = Lanes<T>;
    V factor[capacity<Height, Width>], x[capacity<Height, Fixed<1>>];
    loadObject(a, i, height, width, factor);
    loadObject(b, i, 1, height, x);
    knowingWidth(width, [&](auto w) KVLM_INLINED { solveAnew<V, w>(factor, height, x); });
    storeObject(d, i, 1, width, x);
}

// All other shapes, one system
template <class A, class B, class D, class T>
KVLM_NOINLINE void qrSolveGeneral(const A &factor, const B &b, const D &d, T *work, TallShape shape)
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

// One matrix, many right-hand sides: those from `first` to `end`, a group in each V.
template <class V, class Width, class Height, class T>
KVLM_NOINLINE KvlStatus qrVectorGroups(const Objects<const T> &a, const Objects<const T> &b, const Objects<T> &d,
                                       Width width, Height height, int first, int end)
{
    V factor[capacity<Height, Width>];
    loadObject(a, 0, height, width, factor);
    const SizedGroups<Load, const T, OneRow<Height>, Height> source(b, {}, height);
    const SizedGroups<Store, T, OneRow<Width>, Width> result(d, {}, width);
    const GroupsApart<T, Whole, V::count / Lanes<T>::count> apart(d, 1, width);
    V beta[lanesWidth], x[capacity<Height, Fixed<1>>];
    knowingWidth(width, [&](auto w) KVLM_INLINED { reflectorFactors(rowsOf<V, w>(factor), height, beta); });
    const auto solve = [&]() KVLM_INLINED {
        knowingWidth(width, [&](auto w) KVLM_INLINED { solvePrepared<V, w>(factor, beta, height, x); });
    };
    const auto one = [&](ptrdiff_t i) KVLM_INLINED {
        loadObject(b, i, 1, height, x);
        solve();
        storeObject(d, i, 1, width, x);
        return KvlStatus(kvlOk);
    };
    return inSeveralGroups<V, 1>(
        first, end,
        [&](ptrdiff_t i, int) KVLM_INLINED {
            if (!apart(i))
                return false;
            source.move(i, static_cast<V *>(x));
            solve();
            result.move(i, static_cast<const V *>(x));
            return true;
        },
        one);
}

// Measured: vectors of three elements take longer to fill than they save.
template <class Width, class Height, class T>
KVLM_NOINLINE KvlStatus qrVectors(const Objects<const T> &a, const Objects<const T> &b, const Objects<T> &d,
                                  Width width, Height height, int count)
{
    return wideThenNarrow<T, !std::is_same_v<Height, Fixed<3>>>(
        count, [&](auto number, int first, int end) KVLM_INLINED {
            return qrVectorGroups<typename decltype(number)::Number>(a, b, d, width, height, first, end);
        });
}

// A matrix for each right-hand side: the systems from `first` to `count`, a group in each V.
template <class V, class Width, class Height, class T>
KVLM_NOINLINE KvlStatus qrSystemGroups(const Objects<const T> &a, const Objects<const T> &b, const Objects<T> &d,
                                       Width width, Height height, int first, int count)
{
    using Register = NumberOf<decltype(partOf(std::declval<V *>(), 0))>;
    constexpr int most = NumberTraits<V>::registers, registers = Register::count / Lanes<T>::count;
    const SizedGroups<Load, const T, Height, Width> matrices(a, height, width);
    const SizedGroups<Load, const T, OneRow<Height>, Height> source(b, {}, height);
    const SizedGroups<Store, T, OneRow<Width>, Width> result(d, {}, width);
    const GroupsApart<T, Whole, most * registers> apart(d, 1, width);
    return inSeveralGroups<Register, most>(
        first, count,
        [&](ptrdiff_t i, int parts) KVLM_INLINED {
            if (!apart(i, parts * registers))
                return false;
            V factor[capacity<Height, Width>], x[capacity<Height, Fixed<1>>];
            loadParts(matrices, i, parts, factor);
            loadParts(source, i, parts, x);
            knowingWidth(width, [&](auto w) KVLM_INLINED { solveAnew<V, w>(factor, height, x); });
            storeParts(result, i, parts, x);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED {
            qrSolveObject(a, b, d, width, height, i);
            return KvlStatus(kvlOk);
        });
}

template <class Width, class Height, class T>
KVLM_NOINLINE KvlStatus qrSystems(const Objects<const T> &a, const Objects<const T> &b, const Objects<T> &d,
                                  Width width, Height height, int count)
{
    // Measured: a wide register has to hold more objects than the narrow ones whose latencies overlap.
    constexpr bool isWorthwhile = !isFixed<Height> || Wide<T>::blocks > registersFor<Height>;
    return wideThenNarrow<T, isWorthwhile>(count, [&](auto number, int first, int end) KVLM_INLINED {
        using V = typename decltype(number)::Number;
        using Systems = std::conditional_t<V::blocks == 1, Several<T, registersFor<Height>>, V>;
        return qrSystemGroups<Systems>(a, b, d, width, height, first, end);
    });
}

template <class T>
KVLM_NOINLINE KvlStatus qrSolveObjects(const Objects<const T> &a, T *work, const Objects<const T> &b,
                                       const Objects<T> &d, TallShape shape, int count)
{
    return byTallShape(
        shape,
        [&](auto width, auto height) KVLM_INLINED {
            if (count == 1)
                return qrSolveObject(a, b, d, width, height, 0), KvlStatus(kvlOk);
            return a.isSingle ? qrVectors(a, b, d, width, height, count) : qrSystems(a, b, d, width, height, count);
        },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count; ++i)
                withViews([&](const auto &factor, const auto &src, const auto &dst)
                              KVLM_INLINED { qrSolveGeneral(factor, src, dst, work, shape); },
                          i, a, b, d);
            return KvlStatus(kvlOk);
        });
}

template <class A, class B, class D, class T>
KVLM_INLINE KvlStatus qrSolve(const A &a, Buffer<T> buffer, const B &b, const D &d, TallShape shape,
                              Count count = Count(1))
{
    return qrSolveObjects(objectsOf(a, shape.width), buffer.base, objectsOf(b, shape.height), objectsOf(d, shape.width),
                          shape, count.count);
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

// Compiled once, in kvlmqrbacksubst_mava.cpp.
#define QR_SOLVERS(linkage, T)                                                                                         \
    linkage template KvlStatus qrSolveObjects(const Objects<const T> &, T *, const Objects<const T> &,                 \
                                              const Objects<T> &, TallShape, int);
KVLM_FOR_ELEMENTS(QR_SOLVERS, extern)

} // namespace kvlm::qr

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
