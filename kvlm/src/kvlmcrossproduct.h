// Cross products of vectors of three elements.
#ifndef KVLMCROSSPRODUCT_H
#define KVLMCROSSPRODUCT_H

#include "lanes/batches.h"
#include "frame/rows.h"
#include "frame/work.h"

namespace kvlm {

template <class V>
KVLM_INLINE void crossProductOf(const V (&a)[3], const V (&b)[3], V (&c)[3])
{
    c[0] = a[1] * b[2] - a[2] * b[1];
    c[1] = a[2] * b[0] - a[0] * b[2];
    c[2] = a[0] * b[1] - a[1] * b[0];
}

// A batch, or one object.
template <class T>
KVLM_NOINLINE KvlStatus crossProducts(const Objects<const T> &a, const Objects<const T> &b,
                                                  const Objects<T> &d, int count)
{
    const auto one = [&](ptrdiff_t i) KVLM_INLINED {
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
    };
    if (d.isSingle)
        return one(0), kvlOk;
    const VectorSource<T, 3> sourceA(a), sourceB(b);
    return vectorsInGroups<3>(
        d, count,
        [&](ptrdiff_t i, Lanes<T>(&z)[1][3]) KVLM_INLINED {
            Lanes<T> x[1][3], y[1][3];
            sourceA.load(i, x);
            sourceB.load(i, y);
            crossProductOf(x[0], y[0], z[0]);
        },
        one);
}

template <class A, class B, class D>
KVLM_INLINE KvlStatus crossProduct(const A &a, const B &b, const D &d, Count count = Count(1))
{
    return crossProducts(objectsOf(a, 3), objectsOf(b, 3), objectsOf(d, 3), count.count);
}

KVLM_INLINE int crossWithOneWork(unsigned count)
{
    return wrapped(2 * count + 1);
}

KVLM_INLINE int crossArraysWork(unsigned count)
{
    return wrapped(3 * count);
}

// Compiled once, in kvlmcrossproduct_vava.cpp.
#define CROSS_PRODUCTS(linkage, T) \
    linkage template KvlStatus crossProducts(const Objects<const T> &, const Objects<const T> &, const Objects<T> &, int);
KVLM_FOR_ELEMENTS(CROSS_PRODUCTS, extern)

} // namespace kvlm

#define CROSS_VV(X, D, T)   X##_V_##D(const T, src1), X##_V_##D(const T, src2), X##_V_##D(T, dst)
#define CROSS_VAV(X, D, T)  X##_VA_##D(const T, src1), X##_V_##D(const T, src2), X##_VA_##D(T, dst), X##_COUNT
#define CROSS_VVA(X, D, T)  X##_V_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_COUNT
#define CROSS_VAVA(X, D, T) X##_VA_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_COUNT

#endif
