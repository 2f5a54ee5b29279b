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

template <bool SingleA, bool SingleB, class T>
KVLM_NOINLINE void crossProducts(const Objects<const T> &a, const Objects<const T> &b, const Objects<T> &d, int count)
{
    vectorsByLayout<3, true>(
        d, count,
        [](ptrdiff_t i, auto &z, const auto &sourceA, const auto &sourceB) KVLM_INLINED {
            NumberOf<decltype(z)> x[3], y[3];
            sourceA.move(i, x);
            sourceB.move(i, y);
            crossProductOf(x, y, z);
        },
        [&](ptrdiff_t i) KVLM_INLINED { crossProductObject(a, b, d, i); }, VectorSource<T, 3, SingleA>(a),
        VectorSource<T, 3, SingleB>(b));
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
