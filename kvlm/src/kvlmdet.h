// Determinants: orders 3 to 6 by minors, without pivoting or test, all others by elimination in the caller's buffer.
#ifndef KVLMDET_H
#define KVLMDET_H

#include "frame/rows.h"
#include "frame/work.h"
#include "lanes/batches.h"
#include "loops/elimination.h"

namespace kvlm::det {

// Minors of the first rows, by the set of their columns: those of two rows, of three, and at last the whole.
template <class V, int N>
KVLM_INLINE V determinant(const V (&a)[N][N])
{
    V minor[1 << N];
#pragma GCC unroll 6
    for (int k = 1; k < N; ++k)
#pragma GCC unroll 6
        for (int j = 0; j < k; ++j)
            minor[1 << j | 1 << k] = a[0][j] * a[1][k] - a[0][k] * a[1][j];
#pragma GCC unroll 6
    for (int r = 2; r < N; ++r)
#pragma GCC unroll 64
        for (int columns = 0; columns < 1 << N; ++columns)
            if (__builtin_popcount(columns) == r + 1) {
                int left = r;
                V sum = number<V>(0);
#pragma GCC unroll 6
                for (int c = N - 1; c >= 0; --c)
                    if (columns >> c & 1) {
                        const V &rest = minor[columns & ~(1 << c)];
                        const bool negative = (r - left) % 2 == 1;
                        if (left == r)
                            sum = a[r][c] * rest;
                        else if (negative && left == 0)
                            sum = sum + (number<V>(0) - a[r][c]) * rest;
                        else if (negative)
                            sum = sum - a[r][c] * rest;
                        else
                            sum = sum + a[r][c] * rest;
                        --left;
                    }
                minor[columns] = sum;
            }
    return minor[(1 << N) - 1];
}

// One copy of the long forms for all descriptions.
template <class V, int N>
KVLM_NOINLINE void determinantInto(const V (&a)[N][N], V &result)
{
    result = determinant(a);
}

template <class V, int N>
KVLM_INLINE V determinantOf(const V (&a)[N][N])
{
    if constexpr (N <= 4)
        return determinant(a);
    V result;
    determinantInto(a, result);
    return result;
}

template <int N, class T>
KVLM_NOINLINE void determinantObject(const Objects<const T> &s, T *dst, ptrdiff_t i)
{
    T a[N][N];
    readObject(s, i, N, N, a[0]);
    put(dst, determinantOf(a));
}

// All other orders. A determinant judged to be zero is stored as +0 by the members on one matrix. Those on arrays go on
// with a sign of 0 instead, which may leave a negative zero or a NaN: settled.
template <bool One, class Maximum, class View, class T>
KVLM_NOINLINE void determinantByElimination(const View &src, T *buffer, T *dst, int n)
{
    const T least = zeroThreshold<T>(n);
    T result = 1, sign = 1;
    Elimination<T> work(buffer, n);
    work.load(n, [&](int i, int j) KVLM_INLINED { return get(src.at(i, j)); });
    for (int k = 0; k < n - 1; ++k) {
        if (work.template bringPivot<Maximum>(k, n))
            sign = -sign;
        const T pivot = work.at(k, k);
        if (magnitude(pivot) < least) {
            sign = 0;
            break;
        }
        work.eliminate(k, n, [&](T x) KVLM_INLINED { return x / pivot; });
        result = pivot * result;
        put(dst, result);
    }
    const T last = work.at(n - 1, n - 1);
    const bool zero = magnitude(last) <= least || (One && sign == 0);
    put(dst, zero ? T(0) : result * (last * sign));
}

template <bool One, class Maximum, class T>
KVLM_INLINE void determinantGeneral(const Objects<const T> &s, T *buffer, T *dst, int n, ptrdiff_t i)
{
    withViews([&](const auto &src) KVLM_INLINED { determinantByElimination<One, Maximum>(src, buffer, dst + i, n); }, i,
              s);
}

// One matrix, in any description.
template <class S, class T>
KVLM_INLINE KvlStatus detOne(const S &operand, Length n, Buffer<T> buffer, PerObject<T> dst)
{
    const auto s = objectsOf(operand, n.length);
    return bySmallOrder(
        n.length, [&](auto order) KVLM_INLINED { return determinantObject<order>(s, dst.base, 0), KvlStatus(kvlOk); },
        [&]() KVLM_INLINED {
            return determinantGeneral<true, T>(s, buffer.base, dst.base, n.length, 0), KvlStatus(kvlOk);
        });
}

template <int N, class T>
KVLM_NOINLINE KvlStatus determinantBatch(const Objects<const T> &s, T *dst, int count)
{
    const auto one = [&](ptrdiff_t i) KVLM_INLINED { return determinantObject<N>(s, dst + i, i), KvlStatus(kvlOk); };
    return byLayout(
        [=, &one, &s](const auto &source) KVLM_INLINED {
            return inAnyGroups<T, true>(
                count,
                [&](ptrdiff_t i, auto number) KVLM_INLINED {
                    typename decltype(number)::Number a[N][N];
                    source.move(i, a[0]);
                    determinantOf(a).store(dst + i);
                    return true;
                },
                one, source.fillsWide && !s.hasAdjacentColumns());
        },
        GroupSource<T, N, N>(s));
}

template <class T>
KVLM_NOINLINE KvlStatus detObjects(const Objects<const T> &s, T *buffer, T *dst, int n, int count)
{
    return bySmallOrder(
        n, [&](auto order) KVLM_INLINED { return determinantBatch<order>(s, dst, count); },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count; ++i)
                determinantGeneral<false, T>(s, buffer, dst, n, i);
            return KvlStatus(kvlOk);
        });
}

template <class S, class T>
KVLM_INLINE KvlStatus detBatch(const S &s, Length n, Buffer<T> buffer, PerObject<T> dst, Count count)
{
    return detObjects(objectsOf(s, n.length), buffer.base, dst.base, n.length, count.count);
}

KVLM_INLINE int detWork(unsigned n, unsigned count)
{
    return wrapped(n * count);
}

} // namespace kvlm::det

#define DET_M(X, D, T)                                                                                                 \
    X##_M_##D(const T, src), X##_LENGTH(widthHeight), X##_BUFFER(T, buffer, eliminationElements(widthHeight)),         \
        X##_PER_OBJECT(T, dst, 1)
#define DET_MA(X, D, T)                                                                                                \
    X##_MA_##D(const T, src), X##_LENGTH(widthHeight), X##_BUFFER(T, buffer, eliminationElements(widthHeight)),        \
        X##_PER_OBJECT(T, dst, 1), X##_COUNT

// The hand-scheduled kernels of orders 3 to 6, with adjacent elements, in extended precision.
#define DET_EXTENDED(T, type, order)                                                                                   \
    FUNCTION(a6_Det_m_##type##_##order##x##order, const T *src, int srcRowStride, T *dst)

#endif
