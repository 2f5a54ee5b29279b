// Symmetric eigenproblems: order 2 in closed form, one matrix of any order, what members of both families are made of.
#ifndef KVLMEIGENSYM_H
#define KVLMEIGENSYM_H

#include "frame/rows.h"
#include "frame/work.h"
#include "kvlmeigensym_iteration.h"

namespace kvlm::eigensym {

// Where vectors are not wanted.
struct NoVectors {};

// Order 2. Settled: with a negative trace the values ascend.
template <class Kind, class Src, class Vectors>
KVLM_INLINE KvlStatus solvePair(const Src &src, typename Kind::Element *values, Vectors &vectors)
{
    using T = typename Kind::Element;
    using W = typename Kind::Work;
    constexpr W epsilon = Kind::epsilon;
    const W a = get(src.at(0, 0)), b = get(src.at(0, 1)), c = get(src.at(1, 1));
    const W determinant = a * c - b * b;
    if (epsilon >= magnitude(determinant))
        return kvlErrSingular;
    const W trace = c + a, difference = a - c, twice = b + b;
    const W r = squareRoot(difference * difference + twice * twice);
    W first, second;
    if (trace > epsilon) {
        first = W(0.5) * (r + trace);
        second = determinant / first;
    } else if (trace >= -epsilon) {
        first = W(0.5) * r;
        second = W(-0.5) * r;
    } else {
        first = W(0.5) * (trace - r);
        second = determinant / first;
    }
    put(values, static_cast<T>(first));
    put(values + 1, static_cast<T>(second));
    if constexpr (Kind::hasVectors) {
        const bool positive = difference >= -epsilon;
        const W w = positive ? difference + r : difference - r;
        W cosine = 1, sine = 0;
        if (magnitude(w) > magnitude(twice)) {
            const W q = -twice / w;
            sine = 1 / squareRoot(q * q + 1);
            cosine = q * sine;
        } else if (!(epsilon >= magnitude(twice))) {
            const W q = -w / twice;
            cosine = 1 / squareRoot(q * q + 1);
            sine = q * cosine;
        }
        if (positive == (trace > epsilon || trace >= -epsilon)) {
            const W other = cosine;
            cosine = -sine;
            sine = other;
        }
        put(vectors.at(0, 0), static_cast<T>(cosine));
        put(vectors.at(1, 0), static_cast<T>(sine));
        put(vectors.at(0, 1), static_cast<T>(-sine));
        put(vectors.at(1, 1), static_cast<T>(cosine));
    }
    return kvlOk;
}

// Orders 3 to 6, in one copy for all descriptions.
template <class Kind, int N, class Vectors>
KVLM_NOINLINE KvlStatus solveSmall(typename Kind::Element (&matrix)[N * N], typename Kind::Element *values,
                                   Vectors &vectors)
{
    return SymmetricProblem<Kind, N, Vectors>(N, matrix, values, vectors).solve();
}

template <class Kind, int N, class T>
KVLM_NOINLINE KvlStatus solveLocally(const Objects<const T> &s, const Objects<T> *d, T *values, ptrdiff_t i)
{
    T matrix[N * N];
    readObject(s, i, N, N, matrix);
    if constexpr (Kind::hasVectors) {
        LocalVectors<T, N> vectors;
        const KvlStatus status = solveSmall<Kind, N>(matrix, values, vectors);
        for (int r = 0; r < N; ++r)
            for (int c = 0; c < N; ++c)
                matrix[r * N + c] = *vectors.at(r, c);
        writeObject(*d, i, N, N, matrix);
        return status;
    } else {
        NoVectors none;
        return solveSmall<Kind, N>(matrix, values, none);
    }
}

// All other orders from 3 on, in the caller's buffer.
template <class Kind, class T, class Vectors>
KVLM_NOINLINE KvlStatus solveInBuffer(const Objects<const T> &s, ptrdiff_t i, T *buffer, T *values, Vectors &vectors,
                                      int n)
{
    readObject(s, i, n, n, buffer);
    return SymmetricProblem<Kind, 0, Vectors>(n, buffer, values, vectors).solve();
}

// The orders that are not unrolled.
template <class Kind, class T, class Vectors>
KVLM_INLINE KvlStatus solveOther(const Objects<const T> &s, ptrdiff_t i, T *buffer, T *values, Vectors vectors, int n)
{
    if (n == 1) {
        put(values, get(s.at(i, 0, 0)));
        if constexpr (Kind::hasVectors)
            put(vectors.at(0, 0), T(1));
        return kvlOk;
    }
    if (n == 2)
        return withViews([&](const auto &src) KVLM_INLINED { return solvePair<Kind>(src, values, vectors); }, i, s);
    return solveInBuffer<Kind>(s, i, buffer, values, vectors, n);
}

// Object i of any order; `d` is null where vectors are not wanted.
template <class Kind, class T>
KVLM_NOINLINE KvlStatus solveGeneral(const Objects<const T> &s, const Objects<T> *d, T *buffer, T *values, int n,
                                     ptrdiff_t i)
{
    if constexpr (Kind::hasVectors)
        return withViews([&](const auto &dst) KVLM_INLINED { return solveOther<Kind>(s, i, buffer, values, dst, n); },
                         i, *d);
    else
        return solveOther<Kind>(s, i, buffer, values, NoVectors(), n);
}

template <class T>
using ValuesOfOne = SymmetricKind<T, false, false>;
template <class T>
using ValuesOfArray = SymmetricKind<T, false, true>;
template <class T>
using VectorsOfOne = SymmetricKind<T, true, false>;
template <class T>
using VectorsOfArray = SymmetricKind<T, true, true>;

// One matrix: values alone, then with vectors.
template <class Kind, class T>
KVLM_NOINLINE KvlStatus solveOne(const Objects<const T> &s, const Objects<T> *d, T *buffer, T *values, int n)
{
    return bySmallOrder(
        n, [&](auto order) KVLM_INLINED { return solveLocally<Kind, order>(s, d, values, 0); },
        [&]() KVLM_INLINED { return solveGeneral<Kind>(s, d, buffer, values, n, 0); });
}

template <class S, class T>
KVLM_INLINE KvlStatus eigenValuesSym(const S &s, Buffer<T> buffer, PerObject<T> values, Length n)
{
    return solveOne<ValuesOfOne<T>, T>(objectsOf(s, n.length), nullptr, buffer.base, values.base, n.length);
}

template <class Kind, class S, class D, class T>
KVLM_INLINE KvlStatus eigenVectorsSymOfKind(const S &s, Buffer<T> buffer, const D &d, PerObject<T> values, Length n)
{
    const auto vectors = objectsOf(d, n.length);
    return solveOne<Kind, T>(objectsOf(s, n.length), &vectors, buffer.base, values.base, n.length);
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus eigenVectorsSym(const S &s, Buffer<T> buffer, const D &d, PerObject<T> values, Length n)
{
    return eigenVectorsSymOfKind<VectorsOfOne<T>>(s, buffer, d, values, n);
}

KVLM_INLINE int symmetricValuesWork(unsigned n, unsigned count)
{
    return wrapped(n * (n + 1) * count);
}

KVLM_INLINE int symmetricVectorsWork(unsigned n, unsigned count)
{
    return wrapped(n * (2 * n + 1) * count);
}

constexpr Limits symmetricVectorsLimits = {1700, 1700, 1700, 1700, 1700};

// The elements of a working matrix.
KVLM_INLINE size_t squareElements(int n)
{
    return static_cast<size_t>(n) * static_cast<size_t>(n);
}

} // namespace kvlm::eigensym

#define SYM_VALUES_M(X, D, T)                                                                                          \
    X##_M_##D(const T, src), X##_BUFFER(T, buffer, squareElements(widthHeight)), X##_PER_OBJECT(T, dst, widthHeight),  \
        X##_LENGTH(widthHeight)
#define SYM_VALUES_MA(X, D, T)                                                                                         \
    X##_MA_##D(const T, src), X##_BUFFER(T, buffer, squareElements(widthHeight)), X##_PER_OBJECT(T, dst, widthHeight), \
        X##_LENGTH(widthHeight), X##_COUNT
#define SYM_VECTORS_M(X, D, T)                                                                                         \
    X##_M_##D(const T, src), X##_BUFFER(T, buffer, squareElements(widthHeight)), X##_M_##D(T, dst),                    \
        X##_PER_OBJECT(T, dstValues, widthHeight), X##_LENGTH(widthHeight)
#define SYM_VECTORS_MA(X, D, T)                                                                                        \
    X##_MA_##D(const T, src), X##_BUFFER(T, buffer, squareElements(widthHeight)), X##_MA_##D(T, dst),                  \
        X##_PER_OBJECT(T, dstValues, widthHeight), X##_LENGTH(widthHeight), X##_COUNT

#endif
