// Cross products of vectors of three elements.
#ifndef KVLMCROSSPRODUCT_H
#define KVLMCROSSPRODUCT_H

#include "kvlm_packed.h"
#include "kvlm_rows.h"
#include "kvlm_vectors.h"

namespace kvlm {

template <class V>
KVLM_INLINE void crossProductOf(const V (&a)[3], const V (&b)[3], V (&c)[3])
{
    c[0] = a[1] * b[2] - a[2] * b[1];
    c[1] = a[2] * b[0] - a[0] * b[2];
    c[2] = a[0] * b[1] - a[1] * b[0];
}

template <class A, class B, class D>
__attribute__((noinline)) KvlStatus crossProducts(const A &givenA, const B &givenB, const D &givenD, int count)
{
    using T = typename D::Element;
    using V = Lanes<T>;
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    const auto one = [&](ptrdiff_t i) KVLM_INLINED {
        T x[3], y[3], z[3];
#pragma GCC unroll 3
        for (int k = 0; k < 3; ++k) {
            x[k] = Loose<T>::load(viewOf(a, i, 3).at(0, k));
            y[k] = Loose<T>::load(viewOf(b, i, 3).at(0, k));
        }
        crossProductOf(x, y, z);
#pragma GCC unroll 3
        for (int k = 0; k < 3; ++k)
            Loose<T>::store(viewOf(d, i, 3).at(0, k), z[k]);
    };
    if constexpr (D::isSingle)
        return one(0), kvlOk;
    else {
        V x[1][3], y[1][3];
        if constexpr (A::isSingle)
            loadVectors(a, 0, x);
        if constexpr (B::isSingle)
            loadVectors(b, 0, y);
        return vectorsInGroups<3>(
            d, count,
            [&](ptrdiff_t i, V(&z)[1][3]) KVLM_INLINED {
                if constexpr (!A::isSingle)
                    loadVectors(a, i, x);
                if constexpr (!B::isSingle)
                    loadVectors(b, i, y);
                crossProductOf(x[0], y[0], z[0]);
            },
            one);
    }
}

template <class A, class B, class D>
KVLM_INLINE KvlStatus crossProduct(const A &a, const B &b, const D &d, Count count = Count(1))
{
    return knowingPackedVectors<3>([&](const auto &...x) KVLM_INLINED { return crossProducts(x..., count.count); }, a,
                                   b, d);
}

KVLM_INLINE int crossWithOneWork(unsigned count)
{
    return wrapped(2 * count + 1);
}

KVLM_INLINE int crossArraysWork(unsigned count)
{
    return wrapped(3 * count);
}

} // namespace kvlm

#define CROSS_VV(X, D, T)   X##_V_##D(const T, src1), X##_V_##D(const T, src2), X##_V_##D(T, dst)
#define CROSS_VAV(X, D, T)  X##_VA_##D(const T, src1), X##_V_##D(const T, src2), X##_VA_##D(T, dst), X##_COUNT
#define CROSS_VVA(X, D, T)  X##_V_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_COUNT
#define CROSS_VAVA(X, D, T) X##_VA_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_COUNT

#endif
