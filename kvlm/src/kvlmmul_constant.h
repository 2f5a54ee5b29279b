// Scaling by constants: one product per element.
#ifndef KVLMMUL_CONSTANT_H
#define KVLMMUL_CONSTANT_H

#include "frame/rows.h"
#include "loops/elementwise.h"
#include "loops/vectors.h"

namespace kvlm::mul {

// An operation on one element: the second operand of the loops is the first once more, and is not read.
template <class T>
struct Scale {
    T factor;

    template <class V>
    KVLM_INLINE V operator()(V a, V) const
    {
        return a * number<V>(factor);
    }
};

template <char Letter, class A, class T, class D>
KVLM_INLINE KvlStatus scale(const A &src, Constant<T> val, const D &dst, Shape shape, Count count = Count(1))
{
    return elementwiseBy<Letter, Letter>(Scale<T>{val.value}, src, src, dst, shape, count);
}

KVLM_INLINE int scaleWork(unsigned width, unsigned height, unsigned count)
{
    return wrapped(2 * width * height * count);
}

// Settled: the limits of 32f and 64f differ, and not in the same way.
template <class T>
constexpr Limits scaleLimits = {35000, 35000, 17000, 35000, sizeof(T) == 4 ? 15000 : 35000};
template <class T>
constexpr Limits scaleVectorLimits = sizeof(T) == 4 ? Limits{6, 6, 6, 6, 6} : Limits{36864, 18432, 9216, 18432, 18432};
constexpr Limits constantsLimits = {36864, 36864, 9216, 18432, 18432};

} // namespace kvlm::mul

#define MUL_MC(X, D, T)  X##_M_##D(const T, src), X##_C(T, val), X##_M_##D(T, dst), X##_SHAPE
#define MUL_MAC(X, D, T) X##_MA_##D(const T, src), X##_C(T, val), X##_MA_##D(T, dst), X##_SHAPE, X##_COUNT

#endif
