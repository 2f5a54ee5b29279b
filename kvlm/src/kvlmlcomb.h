// Scaled sums of vectors: saxpy and linear combinations.
#ifndef KVLMLCOMB_H
#define KVLMLCOMB_H

#include "frame/rows.h"
#include "loops/vectors.h"

namespace kvlm::lcomb {

template <class T>
struct ScaledPlus {
    T factor;

    template <class V>
    KVLM_INLINE V operator()(V a, V b) const
    {
        return a * number<V>(factor) + b;
    }
};

template <class T>
struct ScaledPlusScaled {
    T first, second;

    template <class V>
    KVLM_INLINE V operator()(V a, V b) const
    {
        return a * number<V>(first) + b * number<V>(second);
    }
};

template <class A, class B, class D, class T>
KVLM_INLINE KvlStatus saxpy(const A &a, Constant<T> val, const B &b, const D &d, Length length, Count count = Count(1))
{
    return vectorwise(ScaledPlus<T>{val.value}, a, b, d, length, count);
}

template <class A, class B, class D, class T>
KVLM_INLINE KvlStatus linearCombination(const A &a, Constant<T> val1, const B &b, Constant<T> val2, const D &d,
                                        Length length, Count count = Count(1))
{
    return vectorwise(ScaledPlusScaled<T>{val1.value, val2.value}, a, b, d, length, count);
}

constexpr Limits saxpyLimits = {40000, 40000, 40000, 40000, 40000};

} // namespace kvlm::lcomb

#define SAXPY(X, D, T, V1, V2, VD)                                                                                     \
    X##_##V1##_##D(const T, src1), X##_C(T, val), X##_##V2##_##D(const T, src2), X##_##VD##_##D(T, dst), X##_LENGTH(len)
#define SAXPY_VV(X, D, T)   SAXPY(X, D, T, V, V, V)
#define SAXPY_VAV(X, D, T)  SAXPY(X, D, T, VA, V, VA), X##_COUNT
#define SAXPY_VVA(X, D, T)  SAXPY(X, D, T, V, VA, VA), X##_COUNT
#define SAXPY_VAVA(X, D, T) SAXPY(X, D, T, VA, VA, VA), X##_COUNT

#define LCOMB(X, D, T, V1, V2, VD)                                                                                     \
    X##_##V1##_##D(const T, src1), X##_C(T, val1), X##_##V2##_##D(const T, src2), X##_C(T, val2),                      \
        X##_##VD##_##D(T, dst), X##_LENGTH(len)
#define LCOMB_VV(X, D, T)   LCOMB(X, D, T, V, V, V)
#define LCOMB_VAV(X, D, T)  LCOMB(X, D, T, VA, V, VA), X##_COUNT
#define LCOMB_VAVA(X, D, T) LCOMB(X, D, T, VA, VA, VA), X##_COUNT

#define SCALED_SUM_MEMBER(name, CLASS, T, algorithm)                                                                   \
    OBJECT_KERNELS(name, CLASS, T, algorithm)                                                                          \
    OBJECT_FUNCTIONS(name, CLASS, T, UsualOrder)
#define SCALED_SUMS_MEMBER(name, CLASS, T, algorithm, work, limits)                                                    \
    BATCH_KERNELS(name, CLASS, T, algorithm)                                                                           \
    BATCH_FUNCTIONS(name, CLASS, T, UsualOrder, work(len, count), limits)

#endif
