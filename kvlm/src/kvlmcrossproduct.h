// Cross products of vectors of three elements.
#ifndef KVLMCROSSPRODUCT_H
#define KVLMCROSSPRODUCT_H

#include "frame/rows.h"
#include "frame/work.h"
#include "lanes/batches.h"

namespace kvlm::cross {

template <class V>
KVLM_INLINE void crossProductOf(const V (&a)[3], const V (&b)[3], V (&c)[3])
{
    c[0] = a[1] * b[2] - a[2] * b[1];
    c[1] = a[2] * b[0] - a[0] * b[2];
    c[2] = a[0] * b[1] - a[1] * b[0];
}

template <class T>
KVLM_NOINLINE void crossProductObject(const Objects<const T> &a, const Objects<const T> &b, const Objects<T> &d,
                                      ptrdiff_t i)
{
    withViews(
        [&](const auto &viewA, const auto &viewB, const auto &dst) KVLM_INLINED {
            T x[3], y[3], z[3];
#pragma GCC unroll 3
            for (int k = 0; k < 3; ++k) {
                x[k] = Loose<T>::load(viewA.at(0, k));
                y[k] = Loose<T>::load(viewB.at(0, k));
            }
            crossProductOf(x, y, z);
#pragma GCC unroll 3
            for (int k = 0; k < 3; ++k)
                Loose<T>::store(dst.at(0, k), z[k]);
        },
        i, a, b, d);
}

// Two packed vectors of doubles: in the place of each coordinate the next one, and the one before it.
struct Neighbours {
    Lanes<double> next[3], before[3];
};

template <class Packed>
KVLM_INLINE Neighbours neighboursOf(const Packed &source, ptrdiff_t i)
{
    const double *const p = source.base + 3 * i;
    Lanes<double> x[3];
    loadRegisters(p, x);
    return {{Lanes<double>::load(p + 1), twoOf<0, 4>(x), twoOf<5, 3>(x)},
            {twoOf<2, 0>(x), twoOf<1, 5>(x), Lanes<double>::load(p + 3)}};
}

// A single vector twice.
KVLM_INLINE Neighbours neighboursOf(const SingleVector<double, 3> &source, ptrdiff_t)
{
    const auto &x = source.elements;
    const Lanes<double> xy = unpackLow(x[0], x[1]), yz = unpackLow(x[1], x[2]), zx = unpackLow(x[2], x[0]);
    return {{yz, xy, zx}, {zx, yz, xy}};
}

template <bool SingleA, bool SingleB, class T>
KVLM_NOINLINE void crossProducts(const Objects<const T> &a, const Objects<const T> &b, const Objects<T> &d, int count)
{
    const VectorSource<T, 3, SingleA> sourceA(a);
    const VectorSource<T, 3, SingleB> sourceB(b);
    const auto one = [&](ptrdiff_t i) KVLM_INLINED { crossProductObject(a, b, d, i); };
    if constexpr (sizeof(T) == 8)
        if (const GroupResult<T, 1, 3> result(d); result.isPacked() && sourceA.isPacked() && sourceB.isPacked()) {
            const NeverFails<decltype(one)> always{one};
            T *const dst = result.asPacked().base;
            loopOf(
                [=, &always](const auto &knownA, const auto &knownB) KVLM_INLINED {
                    return inGroups<T>(
                        count,
                        [&](ptrdiff_t i) KVLM_INLINED {
                            const Neighbours x = neighboursOf(knownA, i), y = neighboursOf(knownB, i);
                            Lanes<T> z[3];
#pragma GCC unroll 3
                            for (int k = 0; k < 3; ++k)
                                z[k] = x.next[k] * y.before[k] - x.before[k] * y.next[k];
                            storeRegisters(dst + 3 * i, z);
                            return true;
                        },
                        always);
                },
                sourceA.asPacked(), sourceB.asPacked());
            return;
        }
    vectorsByLayout<3, true>(
        d, count,
        [](ptrdiff_t i, auto &z, const auto &knownA, const auto &knownB) KVLM_INLINED {
            NumberOf<decltype(z)> x[3], y[3];
            knownA.move(i, x);
            knownB.move(i, y);
            crossProductOf(x, y, z);
        },
        one, sourceA, sourceB);
}

template <class A, class B, class D>
KVLM_INLINE KvlStatus crossProduct(const A &src1, const B &src2, const D &dst, Count count = Count(1))
{
    const auto a = objectsOf(src1, 3);
    const auto b = objectsOf(src2, 3);
    const auto d = objectsOf(dst, 3);
    if constexpr (D::isSingle)
        crossProductObject(a, b, d, 0);
    else
        crossProducts<A::isSingle, B::isSingle>(a, b, d, count.count);
    return kvlOk;
}

KVLM_INLINE int crossWithOneWork(unsigned count)
{
    return wrapped(2 * count + 1);
}

KVLM_INLINE int crossArraysWork(unsigned count)
{
    return wrapped(3 * count);
}

} // namespace kvlm::cross

#define CROSS_VV(X, D, T)   X##_V_##D(const T, src1), X##_V_##D(const T, src2), X##_V_##D(T, dst)
#define CROSS_VAV(X, D, T)  X##_VA_##D(const T, src1), X##_V_##D(const T, src2), X##_VA_##D(T, dst), X##_COUNT
#define CROSS_VVA(X, D, T)  X##_V_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_COUNT
#define CROSS_VAVA(X, D, T) X##_VA_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_COUNT

#endif
