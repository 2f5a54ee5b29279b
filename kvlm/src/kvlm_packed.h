// Batches of packed vectors of 3 to 6 elements: a group of them fills as many registers, and shuffles sort the
// elements.
#ifndef KVLM_PACKED_H
#define KVLM_PACKED_H

#include "kvlm_groups.h"

namespace kvlm {

// Element j of each object, from registers that hold the objects one behind the other.
template <int N, int J>
KVLM_INLINE Lanes<double> elementOfEach(const Lanes<double> (&x)[N])
{
    return {_mm_shuffle_pd(x[J / 2].v, x[(N + J) / 2].v, J % 2 | (N + J) % 2 << 1)};
}

template <int N, int J>
KVLM_INLINE Lanes<float> elementOfEach(const Lanes<float> (&x)[N])
{
    return fourOf<J, N + J, 2 * N + J, 3 * N + J>(x);
}

template <class T, int N>
KVLM_INLINE void sortElements(Lanes<T> (&x)[N])
{
    Lanes<T> sorted[N];
    eachIndex(Fixed<N>(), [&](auto j) KVLM_INLINED { sorted[j] = elementOfEach<N, decltype(j){}>(x); });
#pragma GCC unroll 6
    for (int j = 0; j < N; ++j)
        x[j] = sorted[j];
}

KVLM_INLINE void sortElements(Lanes<float> (&x)[3])
{
    const __m128 middle = _mm_shuffle_ps(x[0].v, x[1].v, _MM_SHUFFLE(1, 0, 2, 1)),
                 ends = _mm_shuffle_ps(x[1].v, x[2].v, _MM_SHUFFLE(2, 1, 3, 2));
    x[0].v = _mm_shuffle_ps(x[0].v, ends, _MM_SHUFFLE(2, 0, 3, 0));
    x[1].v = _mm_shuffle_ps(middle, ends, _MM_SHUFFLE(3, 1, 2, 0));
    x[2].v = _mm_shuffle_ps(middle, x[2].v, _MM_SHUFFLE(3, 0, 3, 1));
}

KVLM_INLINE void sortElements(Lanes<float> (&x)[4])
{
    transpose(x);
}

// The lower (0) or the upper (1) half of a, then of b.
template <int A, int B>
KVLM_INLINE __m128 halves(Lanes<float> a, Lanes<float> b)
{
    return _mm_shuffle_ps(a.v, b.v, (A ? 0xe : 0x4) | (B ? 0xe0 : 0x40));
}

// Two neighbouring elements of an object are in one half of a register.
KVLM_INLINE void sortElements(Lanes<float> (&x)[6])
{
    const __m128 first[] = {halves<0, 1>(x[0], x[1]), halves<1, 0>(x[0], x[2]), halves<0, 1>(x[1], x[2])},
                 last[] = {halves<0, 1>(x[3], x[4]), halves<1, 0>(x[3], x[5]), halves<0, 1>(x[4], x[5])};
#pragma GCC unroll 3
    for (int j = 0; j < 3; ++j) {
        x[2 * j].v = _mm_shuffle_ps(first[j], last[j], _MM_SHUFFLE(2, 0, 2, 0));
        x[2 * j + 1].v = _mm_shuffle_ps(first[j], last[j], _MM_SHUFFLE(3, 1, 3, 1));
    }
}

// The way back, of three elements.
KVLM_INLINE void packElements(Lanes<float> (&x)[3])
{
    const __m128 xy = _mm_shuffle_ps(x[0].v, x[1].v, _MM_SHUFFLE(2, 0, 2, 0)),
                 yz = _mm_shuffle_ps(x[1].v, x[2].v, _MM_SHUFFLE(3, 1, 3, 1)),
                 zx = _mm_shuffle_ps(x[2].v, x[0].v, _MM_SHUFFLE(3, 1, 2, 0));
    x[0].v = _mm_shuffle_ps(xy, zx, _MM_SHUFFLE(2, 0, 2, 0));
    x[1].v = _mm_shuffle_ps(yz, xy, _MM_SHUFFLE(3, 1, 2, 0));
    x[2].v = _mm_shuffle_ps(zx, yz, _MM_SHUFFLE(3, 1, 3, 1));
}

// Pairs of neighbouring elements come together first, of two objects at a time.
KVLM_INLINE void packElements(Lanes<float> (&x)[6])
{
    Lanes<float> low[3], high[3];
#pragma GCC unroll 3
    for (int j = 0; j < 3; ++j) {
        low[j].v = _mm_unpacklo_ps(x[2 * j].v, x[2 * j + 1].v);
        high[j].v = _mm_unpackhi_ps(x[2 * j].v, x[2 * j + 1].v);
    }
    x[0].v = halves<0, 0>(low[0], low[1]);
    x[1].v = halves<0, 1>(low[2], low[0]);
    x[2].v = halves<1, 1>(low[1], low[2]);
    x[3].v = halves<0, 0>(high[0], high[1]);
    x[4].v = halves<0, 1>(high[2], high[0]);
    x[5].v = halves<1, 1>(high[1], high[2]);
}

template <int N, int First>
KVLM_INLINE Lanes<float> packedFrom(const Lanes<float> (&x)[N])
{
    constexpr auto place = [](int e) { return e % N * 4 + e / N; };
    return fourOf<place(First), place(First + 1), place(First + 2), place(First + 3)>(x);
}

template <int N, int First>
KVLM_INLINE Lanes<double> packedFrom(const Lanes<double> (&x)[N])
{
    constexpr int next = First + 1;
    return {_mm_shuffle_pd(x[First % N].v, x[next % N].v, First / N | next / N << 1)};
}

template <class T, int N>
KVLM_INLINE void packElements(Lanes<T> (&x)[N])
{
    Lanes<T> packed[N];
    eachIndex(Fixed<N>(), [&](auto r) KVLM_INLINED { packed[r] = packedFrom<N, decltype(r){} * Lanes<T>::count>(x); });
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r)
        x[r] = packed[r];
}

// A batch that is known to be packed.
template <class T, int N>
using PackedVectors = Strided<T, Fixed<N * sizeof(T)>, None, Unit<T>>;

template <class X>
constexpr bool isPackedVectors = false;
template <class T, int N>
constexpr bool isPackedVectors<Strided<T, Fixed<N>, None, Unit<T>>> = true;

// A single vector is packed in any case.
template <int N, class X>
KVLM_INLINE bool hasPackedObjects(const X &x)
{
    if constexpr (!hasAdjacentRows<X>() || X::isList)
        return false;
    else
        return X::isSingle || x.objStride == N * static_cast<int>(sizeof(typename X::Element));
}

template <int N, class X>
KVLM_INLINE auto asPacked(const X &x)
{
    if constexpr (X::isSingle)
        return x;
    else
        return PackedVectors<typename X::Element, N>(x.base, {}, {}, {});
}

// f(x...), with types that say so if the vectors of N elements are packed in all of them.
template <int N, class F, class... X>
KVLM_INLINE auto knowingPackedVectors(F f, const X &...x)
{
    if constexpr ((hasAdjacentRows<X>() && ...) && !(X::isList || ...))
        if ((hasPackedObjects<N>(x) && ...))
            return f(asPacked<N>(x)...);
    return f(x...);
}

template <class T, int N>
KVLM_INLINE void loadRegisters(const T *p, Lanes<T> (&v)[N])
{
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r)
        v[r] = Lanes<T>::load(p + r * Lanes<T>::count);
}

// The vectors from object i on, one in each lane; a single one in all.
template <class X, class T, int N>
KVLM_INLINE void loadVectors(const X &x, ptrdiff_t i, Lanes<T> (&v)[1][N])
{
    if constexpr (isPackedVectors<X>) {
        loadRegisters(x.object(i), v[0]);
        sortElements(v[0]);
    } else if constexpr (X::isSingle)
        loadObject(x, 0, v);
    else
        loadObjects(x, i, v);
}

template <class X, class T, int N>
KVLM_INLINE void storeVectors(const X &x, ptrdiff_t i, Lanes<T> (&v)[1][N])
{
    if constexpr (isPackedVectors<X>) {
        packElements(v[0]);
#pragma GCC unroll 6
        for (int r = 0; r < N; ++r)
            v[0][r].store(x.object(i) + r * Lanes<T>::count);
    } else
        storeObjects(x, i, v);
}

// Vectors of N elements, a group at a time: compute(i, x) makes those of a group, one(i) makes and stores one.
template <int N, class D, class Compute, class One>
KVLM_INLINE KvlStatus vectorsInGroups(const D &d, int count, Compute compute, One one)
{
    using T = typename D::Element;
    const Apart<1, N, T> apart(d);
    return inGroups<T>(
        count,
        [&](ptrdiff_t i) KVLM_INLINED {
            if (!apart(d, i))
                return false;
            Lanes<T> x[1][N];
            compute(i, x);
            storeVectors(d, i, x);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED {
            one(i);
            return KvlStatus(kvlOk);
        });
}

} // namespace kvlm

#endif
