// Dot products and Euclidean norms: which kernel forms its sums in which order, and the loops over vectors.
#ifndef KVLMDOTPRODUCT_H
#define KVLMDOTPRODUCT_H

#include "frame/rows.h"
#include "loops/inner_products.h"
#include "loops/sums.h"

#include <limits.h>

namespace kvlm::dot {

// How a kernel forms its sums: in which order at lengths 3 to 6, and from which length on in eight lanes (where all
// operands lie on multiples of 16 bytes, where not). All others go from left to right and begin with +0, which those of
// lengths 3 to 6 do not.
struct SumPlan {
    Sum order[4];
    int alignedLanesFrom, lanesFrom;
    bool oneProductAlone; // length 1 does not begin with +0 either
};

constexpr int never = INT_MAX;
constexpr Sum left = Sum::fromLeft, pairs = Sum::pairs, evenOdd = Sum::evenOdd;

// clang-format off
inline constexpr SumPlan
    //                order at 3, 4, 5, 6                    lanes from
    dotVector32f   = {{left, left, left, left},              11, 11,       false},
    dotVector64f   = {{evenOdd, evenOdd, evenOdd, evenOdd},  9, 9,         false},
    dotArrays32f   = {{left, left, left, left},              8, 11,        false},
    dotArrays64f   = {{evenOdd, evenOdd, evenOdd, evenOdd},  8, 9,         false},
    dotWithOne32f  = {{left, pairs, left, left},             never, never, false},
    dotWithOne64f  = {{left, evenOdd, evenOdd, evenOdd},     never, never, false},
    norm32f        = {{left, pairs, pairs, pairs},           11, 11,       false},
    norm64f        = {{evenOdd, evenOdd, evenOdd, evenOdd},  9, 9,         false},
    sequential     = {{left, left, left, left},              never, never, false},
    sequentialOne  = {{left, left, left, left},              never, never, true};
// clang-format on

// The addresses and object strides of operands with adjacent elements, ORed; of a list there is no telling.
template <class X>
KVLM_INLINE uintptr_t placeBits(const X &x)
{
    if constexpr (X::isList)
        return 1;
    else
        return reinterpret_cast<uintptr_t>(x.base) | static_cast<unsigned>(int(x.objStride));
}

// The sums of a group, whose N products for each object lie behind one another. Where the order of the sums allows it,
// parts of them are formed before elements change places.
template <Sum Order, class V, int N>
KVLM_INLINE V packedSums(V (&p)[N])
{
    constexpr int lanes = V::count / V::blocks;
    if constexpr (Order == Sum::evenOdd && lanes == 2 && (N == 4 || N == 6)) {
        const auto half = [](const V *x) KVLM_INLINED { return N == 4 ? x[0] + x[1] : (x[1] + x[2]) + x[0]; };
        const V first = half(p), second = half(p + N / 2);
        return unpackLow(first, second) + unpackHigh(first, second);
    } else if constexpr (Order == Sum::pairs && lanes == 4 && N == 4) {
        const auto evenPlusOdd = [](V x, V y) KVLM_INLINED {
            return shuffled<_MM_SHUFFLE(2, 0, 2, 0)>(x, y) + shuffled<_MM_SHUFFLE(3, 1, 3, 1)>(x, y);
        };
        return evenPlusOdd(evenPlusOdd(p[0], p[1]), evenPlusOdd(p[2], p[3]));
    } else {
        sortElements(p);
        return sumOf<Order>(p, 0);
    }
}

// Of lengths 3 to 6. The second factor is the first once more where the sums are of squares.
template <Sum Order, bool Squares, bool SingleB, int N, class Root, class T>
KVLM_NOINLINE KvlStatus shortSums(const Objects<const T> &a, const Objects<const T> &b, T *dst, int count)
{
    const auto one = [&](ptrdiff_t i) KVLM_INLINED {
        withViews(
            [&](const auto &viewA, const auto &viewB) KVLM_INLINED {
                T p[N];
#pragma GCC unroll 6
                for (int k = 0; k < N; ++k)
                    p[k] = Loose<T>::load(viewA.at(0, k)) * Loose<T>::load(viewB.at(0, k));
                Loose<T>::store(dst + i, Root()(sumOf<Order>(p, 0)));
            },
            i, a, b);
        return KvlStatus(kvlOk);
    };
    if (a.isSingle)
        return one(0);
    // sum(i, p) of the group from object i on, of which p are to be the products.
    const auto sumsOf = [=, &one](auto takesWide, auto sum) KVLM_INLINED {
        return inAnyGroups<T, takesWide>(
            count,
            [&](ptrdiff_t i, auto number) KVLM_INLINED {
                typename decltype(number)::Number p[N];
                Root()(sum(i, p)).store(dst + i);
                return true;
            },
            one);
    };
    const auto multiply = [](auto &p, const auto &x, const auto &y) KVLM_INLINED {
#pragma GCC unroll 6
        for (int k = 0; k < N; ++k)
            p[k] = x[k] * (Squares ? x : y)[k];
    };
    const GroupSource<T, 1, N> sourceA(a);
    const VectorSource<T, N, SingleB> sourceB(b);
    // Of packed vectors the products are sorted, not the factors. Measured: two factors take longer to fill 64 bytes
    // than is saved.
    constexpr bool fillsFast = Squares || sizeof(Wide<T>) <= 32;
    if constexpr (!SingleB)
        if (sourceA.isPacked() && sourceB.isPacked()) {
            const T *const first = sourceA.asPacked().base, *const second = sourceB.asPacked().base;
            return sumsOf(Fixed<fillsFast>(), [=](ptrdiff_t i, auto &p) KVLM_INLINED {
                std::decay_t<decltype(p[0])> x[N], y[N];
                loadRegisters(first + i * N, x);
                loadRegisters(second + i * N, y);
                multiply(p, x, y);
                return packedSums<Order>(p);
            });
        }
    return byExactLayout(
        [=](const auto &knownA, const auto &knownB) KVLM_INLINED {
            constexpr bool takesWide = liesInPlanes<std::decay_t<decltype(knownA)>>;
            return sumsOf(Fixed<takesWide>(), [&](ptrdiff_t i, auto &p) KVLM_INLINED {
                std::decay_t<decltype(p[0])> x[N], y[N];
                knownA.move(i, x);
                if (!Squares)
                    knownB.move(i, y);
                multiply(p, x, y);
                return sumOf<Order>(p, 0);
            });
        },
        sourceA, sourceB);
}

template <class A, class B>
KVLM_INLINE const auto &lastFactor(const A &a, const B &b)
{
    if constexpr (isItself<B>)
        return a;
    else
        return b;
}

template <const SumPlan &Plan, class Root, class A, class B, class T>
KVLM_INLINE KvlStatus longSums(const A &a, const B &b, T *dst, int n, int count)
{
    const auto sequential = [&](ptrdiff_t i)
                                KVLM_INLINED { Loose<T>::store(dst + i, Root()(innerProduct<T>(a, b, i, n, 1))); };
    if constexpr (Plan.lanesFrom != never) {
        const auto &last = lastFactor(a, b);
        const bool aligned = (placeBits(a) | placeBits(last) | reinterpret_cast<uintptr_t>(dst)) % 16 == 0;
        if (n >= (aligned ? Plan.alignedLanesFrom : Plan.lanesFrom)) {
            for (ptrdiff_t i = 0; i < count; ++i) {
                const int lead = leadOf(last.object(i));
                if (lead < 0)
                    sequential(i);
                else
                    Loose<T>::store(dst + i, Root()(lanedSum(a.object(i), last.object(i), n, lead)));
            }
            return kvlOk;
        }
    }
    if constexpr (A::isSingle)
        return sequential(0), kvlOk;
    else
        return innerProducts<Root>(a, b, dst, n, 1, count);
}

template <const SumPlan &Plan, class Root, class ShortRoot, class A, class B, class T>
KVLM_INLINE KvlStatus sumsOfProducts(const A &a, const B &b, T *dst, int n, int count)
{
    if constexpr (Plan.oneProductAlone)
        if (n == 1) {
            for (ptrdiff_t i = 0; i < count; ++i)
                put(dst + i, get(viewOf(a, i, 1).at(0, 0)) * get(viewOf(b, i, 1).at(0, 0)));
            return kvlOk;
        }
    return bySmallOrder(
        n,
        [&](auto known) KVLM_INLINED {
            constexpr int N = decltype(known){};
            const auto &last = lastFactor(a, b);
            constexpr bool singleB = !A::isSingle && std::decay_t<decltype(last)>::isSingle;
            return shortSums<Plan.order[N - 3], isItself<B>, singleB, N, ShortRoot>(objectsOf(a, N), objectsOf(last, N),
                                                                                    dst, count);
        },
        [&]() KVLM_INLINED { return longSums<Plan, Root>(a, b, dst, n, count); });
}

template <const SumPlan &Plan, class A, class B, class T>
KVLM_INLINE KvlStatus dotProduct(const A &a, const B &b, PerObject<T> dst, Length length, Count count = Count(1))
{
    return sumsOfProducts<Plan, NoRoot, NoRoot>(a, b, dst.base, length.length, count.count);
}

// ShortRoot is that of lengths 3 to 6.
template <const SumPlan &Plan, class ShortRoot, class A, class T>
KVLM_INLINE KvlStatus norm(const A &a, PerObject<T> dst, Length length, Count count = Count(1))
{
    return sumsOfProducts<Plan, ExactRoot, ShortRoot>(a, Itself(), dst.base, length.length, count.count);
}

KVLM_INLINE int dotWithOneWork(unsigned len, unsigned count)
{
    return wrapped(len * count + len);
}

KVLM_INLINE int dotArraysWork(unsigned len, unsigned count)
{
    return wrapped(2 * len * count);
}

KVLM_INLINE int normWork(unsigned len, unsigned count)
{
    return wrapped(len * count);
}

// Settled: in the pointer description the two types differ.
template <class T>
constexpr Limits dotLimits = {40000, 20000, sizeof(T) == 4 ? 20000 : 40000, 40000, 20000};
constexpr Limits normLimits = {20000, 20000, 20000, 20000, 20000};

} // namespace kvlm::dot

#define DOT_VV(X, D, T) X##_V_##D(const T, src1), X##_V_##D(const T, src2), X##_PER_OBJECT(T, dst, 1), X##_LENGTH(len)
#define DOT_VAV(X, D, T)                                                                                               \
    X##_VA_##D(const T, src1), X##_V_##D(const T, src2), X##_PER_OBJECT(T, dst, 1), X##_LENGTH(len), X##_COUNT
#define DOT_VAVA(X, D, T)                                                                                              \
    X##_VA_##D(const T, src1), X##_VA_##D(const T, src2), X##_PER_OBJECT(T, dst, 1), X##_LENGTH(len), X##_COUNT
#define NORM_V(X, D, T)  X##_V_##D(const T, src), X##_PER_OBJECT(T, dst, 1), X##_LENGTH(len)
#define NORM_VA(X, D, T) X##_VA_##D(const T, src), X##_PER_OBJECT(T, dst, 1), X##_LENGTH(len), X##_COUNT

// A member on arrays, by the plans of the plain and the list kernel, and of _S2.
#define DOT_ARRAYS(name, CLASS, T, plain, strided, work)                                                               \
    KERNEL(own##name, CLASS, U, T, dotProduct<plain>)                                                                  \
    KERNEL(own##name##_S2, CLASS, S, T, dotProduct<strided>)                                                           \
    KERNEL(own##name##_P, CLASS, P, T, dotProduct<sequential>)                                                         \
    KERNEL(own##name##_L, CLASS, LU, T, dotProduct<plain>)                                                             \
    KERNEL(own##name##_LS2, CLASS, LS, T, dotProduct<sequential>)                                                      \
    BATCH_FUNCTIONS(name, CLASS, T, UsualOrder, work(len, count), dotLimits<T>)

#endif
