// Gaxpy, the general product and sum A*x + b: classes, work estimates, limits.
#ifndef KVLMGAXPY_H
#define KVLMGAXPY_H

#include "kvlmmul_vector.h"

namespace kvlm::mul {

template <Sum Order, class A, class X, class B, class D>
KVLM_INLINE KvlStatus gaxpy(const A &src1, Shape shape, const X &src2, Length, SizeMatch, const B &src3, Length,
                            SizeMatch, const D &dst, Count count = Count(1))
{
    return multiplyAndAdd<'m', Order>(src1, shape, src2, src3, dst, count);
}

// Settled: the matrix does not count.
KVLM_INLINE int gaxpyWork(unsigned src2Len, unsigned src3Len, unsigned count)
{
    return wrapped((src2Len + 2 * src3Len) * count);
}

KVLM_INLINE int gaxpyWorkWithOne(unsigned src2Len, unsigned src3Len, unsigned count)
{
    return wrapped(src2Len * count + src3Len + src3Len * count);
}

constexpr Limits gaxpyLimits = {5000, 5000, 5000, 5000, 5000};

} // namespace kvlm::mul

#define GAXPY(X, D, T, V2, V3, VD)                                                                                     \
    X##_M_##D(const T, src1), X##_SHAPE, X##_##V2##_##D(const T, src2), X##_LENGTH_MATCHED(src2Len, src2Len == width), \
        X##_##V3##_##D(const T, src3), X##_LENGTH_MATCHED(src3Len, src3Len == height), X##_##VD##_##D(T, dst)
#define GAXPY_MV(X, D, T)   GAXPY(X, D, T, V, V, V)
#define GAXPY_MVA(X, D, T)  GAXPY(X, D, T, VA, VA, VA), X##_COUNT
#define GAXPY_MVAV(X, D, T) GAXPY(X, D, T, VA, V, VA), X##_COUNT

#define GAXPY_OBJECT_KERNELS(name, CLASS, T)                                                                           \
    KERNEL(own##name, CLASS, U, T, gaxpy<laneOrder<T>>)                                                                \
    KERNEL(own##name##_S2, CLASS, S, T, gaxpy<Sum::fromLeft>)                                                          \
    KERNEL(own##name##_P, CLASS, P, T, gaxpy<Sum::fromLeft>)
#define GAXPY_BATCH_KERNELS(name, CLASS, T)                                                                            \
    GAXPY_OBJECT_KERNELS(name, CLASS, T)                                                                               \
    KERNEL(own##name##_L, CLASS, LU, T, gaxpy<laneOrder<T>>)                                                           \
    KERNEL(own##name##_LS2, CLASS, LS, T, gaxpy<Sum::fromLeft>)

#endif
