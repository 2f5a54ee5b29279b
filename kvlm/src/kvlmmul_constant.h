// Scaling by constants: one product per element.
#ifndef KVLMMUL_CONSTANT_H
#define KVLMMUL_CONSTANT_H

#include "kvlm_elementwise.h"
#include "kvlm_rows.h"

namespace kvlm {

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

// A vector as a matrix of one row.
template <class X>
KVLM_INLINE auto asRow(const X &x, int length)
{
    using T = typename X::Element;
    if constexpr (X::isTable)
        return x;
    else {
        const int row = wrapped(unsigned(length) * unsigned(int(x.elemStride)));
        if constexpr (X::isList)
            return List<T, int, decltype(x.elemStride)>(x.list, x.shift, row, x.elemStride);
        else
            return Strided<T, decltype(x.objStride), int, decltype(x.elemStride)>(x.base, x.objStride, row,
                                                                                  x.elemStride);
    }
}

template <class A, class T, class D>
KVLM_INLINE KvlStatus scaleVector(const A &src, Constant<T> val, const D &dst, Length length, Count count = Count(1))
{
    const int n = length.length;
    return scale<'m'>(asRow(src, n), val, asRow(dst, n), Shape(n, 1), count);
}

// The objects of a batch one after the other, each by its constant.
template <class A, class C, class D, class N>
__attribute__((noinline)) void scaleObjects(const A &givenA, const C &givenConstants, const D &givenD, N length,
                                            int count)
{
    using T = typename D::Element;
    const A a = givenA;
    const C constants = givenConstants;
    const D d = givenD;
    for (int i = 0; i < count; ++i) {
        const Scale<T> op = {get(constants.object(i))};
        const auto src = viewOf(a, i, length);
        const auto dst = viewOf(d, i, length);
        if constexpr (!D::View::adjacentInRows)
            for (int j = 0; j < length; ++j)
                put(dst.at(0, j), get(src.at(0, j)) * op.factor);
        else
            run<T>(op, src.at(0, 0), src.at(0, 0), dst.at(0, 0), length);
    }
}

struct Times {
    template <class V>
    KVLM_INLINE V operator()(V a, V b) const
    {
        return a * b;
    }
};

// Objects side by side: a run over the objects at each position. False if they do not lie so.
template <class A, class C, class D>
KVLM_INLINE bool scaleInLines(const A &a, const C &constants, const D &d, int length, int count)
{
    using T = typename D::Element;
    if constexpr (!D::isList && !D::View::adjacentInRows)
        if (count >= worthLines && objectsAdjacent(a) && objectsAdjacent(constants) && objectsAdjacent(d)) {
            bool apart;
            if constexpr (D::isTable)
                apart = entriesDisjoint<T>(d, length, count);
            else
                apart = length == 1 || d.elemStride >= count * static_cast<int64_t>(sizeof(T));
            if (apart)
                for (int j = 0; j < length; ++j)
                    run<T>(Times(), lineOf(a, viewOf(a, 0, length).at(0, j)), constants.object(0),
                           viewOf(d, 0, length).at(0, j), static_cast<ptrdiff_t>(count));
            return apart;
        }
    return false;
}

// A constant for each object.
template <class A, class C, class D>
KVLM_INLINE KvlStatus scaleByEach(const A &src, const C &val, const D &dst, Length length, Count count)
{
    const int n = length.length;
    if (scaleInLines(src, val, dst, n, count.count))
        return kvlOk;
    switch (n) {
    case 3:
        return scaleObjects(src, val, dst, Fixed<3>(), count.count), kvlOk;
    case 4:
        return scaleObjects(src, val, dst, Fixed<4>(), count.count), kvlOk;
    case 5:
        return scaleObjects(src, val, dst, Fixed<5>(), count.count), kvlOk;
    case 6:
        return scaleObjects(src, val, dst, Fixed<6>(), count.count), kvlOk;
    default:
        return scaleObjects(src, val, dst, n, count.count), kvlOk;
    }
}

KVLM_INLINE int scaleWork(unsigned width, unsigned height, unsigned count)
{
    return wrapped(2 * width * height * count);
}

KVLM_INLINE int vectorByConstantsWork(unsigned len, unsigned count)
{
    return wrapped(len * count + len + count);
}

KVLM_INLINE int vectorsByConstantsWork(unsigned len, unsigned count)
{
    return wrapped(2 * len * count + count);
}

// Settled: the limits of 32f and 64f differ, and not in the same way.
template <class T>
constexpr Limits scaleLimits = {35000, 35000, 17000, 35000, sizeof(T) == 4 ? 15000 : 35000};
template <class T>
constexpr Limits scaleVectorLimits = sizeof(T) == 4 ? Limits{6, 6, 6, 6, 6} : Limits{36864, 18432, 9216, 18432, 18432};
constexpr Limits constantsLimits = {36864, 36864, 9216, 18432, 18432};

} // namespace kvlm

#define MUL_MC(X, D, T)  X##_M_##D(const T, src), X##_C(T, val), X##_M_##D(T, dst), X##_SHAPE
#define MUL_MAC(X, D, T) X##_MA_##D(const T, src), X##_C(T, val), X##_MA_##D(T, dst), X##_SHAPE, X##_COUNT
#define MUL_VC(X, D, T)  X##_V_##D(const T, src), X##_C(T, val), X##_V_##D(T, dst), X##_LENGTH(len)
#define MUL_VAC(X, D, T) X##_VA_##D(const T, src), X##_C(T, val), X##_VA_##D(T, dst), X##_LENGTH(len), X##_COUNT
#define MUL_VCA(X, D, T)                                                                                               \
    X##_V_##D(const T, src), X##_CA_##D(const T, val), X##_VA_##D(T, dst), X##_LENGTH(len), X##_COUNT
#define MUL_VACA(X, D, T)                                                                                              \
    X##_VA_##D(const T, src), X##_CA_##D(const T, val), X##_VA_##D(T, dst), X##_LENGTH(len), X##_COUNT

#endif
