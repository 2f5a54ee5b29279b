// Matrix by vector, and the same plus a vector: orders 3 to 6 by rows where elements are adjacent, else with one object
// per lane; all others in blocks.
#ifndef KVLMMUL_VECTOR_H
#define KVLMMUL_VECTOR_H

#include "kvlm_packed.h"
#include "kvlm_rows.h"
#include "kvlm_sums.h"
#include "kvlmmul_adjacent.h"
#include "kvlmmul_general.h"
#include "kvlmmul_limits.h"

namespace kvlm {

template <int N>
KVLM_INLINE bool hasPackedObjects(NoTerm)
{
    return true;
}

template <int N>
KVLM_INLINE NoTerm asPacked(NoTerm)
{
    return {};
}

// The term of an object: nothing, or a vector's element.
template <class E>
struct TermOf {
    E operand;

    template <class V, int N>
    KVLM_INLINE void addGroup(ptrdiff_t i, V (&y)[N]) const
    {
        V b[1][N];
        loadVectors(operand, i, b);
#pragma GCC unroll 6
        for (int r = 0; r < N; ++r)
            y[r] = y[r] + b[0][r];
    }
    template <class T, int N>
    KVLM_INLINE void addOne(ptrdiff_t i, T (&y)[N]) const
    {
        const auto view = viewOf(operand, i, N);
#pragma GCC unroll 6
        for (int r = 0; r < N; ++r)
            y[r] = y[r] + Loose<T>::load(view.at(0, r));
    }
};

template <>
struct TermOf<NoTerm> {
    NoTerm operand;

    template <class V, int N>
    KVLM_INLINE void addGroup(ptrdiff_t, V (&)[N]) const
    {
    }
    template <class T, int N>
    KVLM_INLINE void addOne(ptrdiff_t, T (&)[N]) const
    {
    }
};

// y = op(a)*x of one object, or of a group.
template <char Letter, Sum Order, class V, int N>
KVLM_INLINE void vectorSums(const V (&a)[N][N], const V (&x)[N], V (&y)[N])
{
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r) {
        V p[N];
#pragma GCC unroll 6
        for (int k = 0; k < N; ++k)
            p[k] = (Letter == 'm' ? a[r][k] : a[k][r]) * x[k];
        y[r] = sumOf<Order>(p, r);
    }
}

template <class T, int N, class X>
KVLM_INLINE void loadNumbers(const X &x, ptrdiff_t i, T *v, int rows)
{
    const auto view = viewOf(x, i, N);
#pragma GCC unroll 6
    for (int r = 0; r < rows; ++r)
#pragma GCC unroll 6
        for (int c = 0; c < N; ++c)
            v[r * N + c] = Loose<T>::load(view.at(r, c));
}

// A batch of order N, or one object.
template <int N, char Letter, Sum Order, class A, class X, class E, class D>
__attribute__((noinline)) KvlStatus vectorProducts(const A &givenA, const X &givenX, const E &givenTerm,
                                                   const D &givenD, int count)
{
    using T = typename D::Element;
    using V = Lanes<T>;
    const A a = givenA;
    const X x = givenX;
    const D d = givenD;
    const TermOf<E> term = {givenTerm};
    const auto one = [&](ptrdiff_t i) KVLM_INLINED {
        T matrix[N][N], vector[N], y[N];
        loadNumbers<T, N>(a, i, matrix[0], N);
        loadNumbers<T, N>(x, i, vector, 1);
        vectorSums<Letter, Order>(matrix, vector, y);
        term.addOne(i, y);
        const auto view = viewOf(d, i, N);
#pragma GCC unroll 6
        for (int r = 0; r < N; ++r)
            Loose<T>::store(view.at(0, r), y[r]);
    };
    if constexpr (D::isSingle)
        return one(0), kvlOk;
    else {
        V matrix[N][N], vector[1][N];
        if constexpr (A::isSingle)
            loadObject(a, 0, matrix);
        if constexpr (X::isSingle)
            loadObject(x, 0, vector);
        return vectorsInGroups<N>(
            d, count,
            [&](ptrdiff_t i, V(&y)[1][N]) KVLM_INLINED {
                if constexpr (!A::isSingle)
                    loadObjects(a, i, matrix);
                if constexpr (!X::isSingle)
                    loadVectors(x, i, vector);
                vectorSums<Letter, Order>(matrix, vector[0], y[0]);
                term.addGroup(i, y[0]);
            },
            one);
    }
}

// A vector operand as the columns of a matrix: one object, or all of a batch.
template <class X>
KVLM_INLINE auto asColumn(const X &x, ptrdiff_t i)
{
    using T = typename X::Element;
    if constexpr (X::isTable)
        return EntryView<T, int, int>{x.table, static_cast<Offset>(x.shiftOf(i)), 1, 0};
    else
        return View<T, decltype(x.elemStride), int>{x.object(i), x.elemStride, 0};
}

KVLM_INLINE NoTerm asColumn(NoTerm, ptrdiff_t)
{
    return {};
}

template <class X>
KVLM_INLINE auto asColumns(const X &x)
{
    return View<typename X::Element, decltype(x.elemStride), int>{x.base, x.elemStride, int(x.objStride)};
}

KVLM_INLINE NoTerm asColumns(NoTerm)
{
    return {};
}

// Any sizes: a column for each object.
template <class A, class X, class E, class D>
KVLM_INLINE void anyVectorProducts(const A &a, const X &x, const E &term, const D &d, int height, int inner, int count)
{
    using T = typename D::Element;
    if constexpr (A::isSingle && !D::isSingle && !D::isTable && !D::isList)
        if (d.objStride >= (height - 1) * static_cast<int64_t>(int(d.elemStride)) + static_cast<int64_t>(sizeof(T)))
            return productGeneral<T>(anySteps(a).view(0), asColumns(x), asColumns(term), asColumns(d), height, inner,
                                     count);
    for (int i = 0; i < count; ++i)
        productGeneral<T>(anySteps(a).view(i), asColumn(x, i), asColumn(term, i), asColumn(d, i), height, inner, 1);
}

// dst = op(src1)*src2 + term, one or a batch.
template <char Letter, Sum Order, class A, class X, class E, class D>
KVLM_INLINE KvlStatus multiplyAndAdd(const A &src1, Shape shape, const X &src2, const E &term, const D &dst,
                                     Count count)
{
    const int width = shape.width, height = shape.height;
    const auto square = [&](auto order) KVLM_INLINED {
        constexpr bool contiguous = A::View::adjacentInRows;
        // Measured: but for order 4, rows of floats are better summed with an object in each lane, and so are packed
        // vectors that share a matrix.
        constexpr bool inLanes = !A::isSingle && Letter == 'm' && sizeof(typename D::Element) == 4 && order != 4;
        if constexpr (contiguous && A::isSingle && !D::isSingle && !D::isList && order != 4)
            if (hasPackedObjects<order>(src2) && hasPackedObjects<order>(term) && hasPackedObjects<order>(dst))
                return vectorProducts<order, 'm', Order>(anySteps(readAs<Letter>(src1, width)), asPacked<order>(src2),
                                                         asPacked<order>(term), asPacked<order>(dst), count.count);
        if constexpr (contiguous && !inLanes && Letter == 'm' && !A::isSingle) {
            productsByRows<order, Order>(src1, src2, dst, count.count);
            return KvlStatus(kvlOk);
        } else if constexpr (contiguous && !inLanes) {
            constexpr char transposed = Letter == 'm' ? 't' : 'm';
            const auto a = readAs<transposed>(src1, width);
            if (!A::isSingle && rowsPacked<order>(a))
                adjacentProducts<order, Order>(withPackedRows<order>(a), src2, term, dst, count.count);
            else
                adjacentProducts<order, Order>(a, src2, term, dst, count.count);
            return KvlStatus(kvlOk);
        } else if constexpr (!A::isTable && !contiguous) // one instance for both letters
            return vectorProducts<order, 'm', Order>(anySteps(readAs<Letter>(src1, width)), src2, term, dst,
                                                     count.count);
        else
            return vectorProducts<order, Letter, Order>(src1, src2, term, dst, count.count);
    };
    return bySmallOrder(width == height ? width : 0, square, [&]() KVLM_INLINED {
        anyVectorProducts(readAs<Letter>(src1, width), src2, term, dst, Letter == 'm' ? height : width,
                          Letter == 'm' ? width : height, count.count);
        return KvlStatus(kvlOk);
    });
}

template <char Letter, Sum Order, class A, class X, class D>
KVLM_INLINE KvlStatus multiplyVector(const A &src1, Shape shape, const X &src2, Length, SizeMatch, const D &dst,
                                     Count count = Count(1))
{
    return multiplyAndAdd<Letter, Order>(src1, shape, src2, NoTerm(), dst, count);
}

// The traffic of elements: those of a single operand count once.
template <char Letter, bool ArrayA, bool ArrayX>
KVLM_INLINE int vectorWork(unsigned width, unsigned height, unsigned count)
{
    const unsigned x = Letter == 'm' ? width : height, y = Letter == 'm' ? height : width;
    return wrapped(width * height * (ArrayA ? count : 1) + x * (ArrayX ? count : 1) + y * count);
}

} // namespace kvlm

// Classes, by the letter and by which operands are arrays.
#define PRODUCT_V(X, D, T, M1, V2, VD, size)                                                                           \
    X##_##M1##_##D(const T, src1), X##_SHAPE, X##_##V2##_##D(const T, src2), X##_LENGTH_MATCHED(len, len == size),     \
        X##_##VD##_##D(T, dst)
#define MUL_MV(X, D, T)   PRODUCT_V(X, D, T, M, V, V, width)
#define MUL_TV(X, D, T)   PRODUCT_V(X, D, T, M, V, V, height)
#define MUL_MVA(X, D, T)  PRODUCT_V(X, D, T, M, VA, VA, width), X##_COUNT
#define MUL_TVA(X, D, T)  PRODUCT_V(X, D, T, M, VA, VA, height), X##_COUNT
#define MUL_MAV(X, D, T)  PRODUCT_V(X, D, T, MA, V, VA, width), X##_COUNT
#define MUL_TAV(X, D, T)  PRODUCT_V(X, D, T, MA, V, VA, height), X##_COUNT
#define MUL_MAVA(X, D, T) PRODUCT_V(X, D, T, MA, VA, VA, width), X##_COUNT
#define MUL_TAVA(X, D, T) PRODUCT_V(X, D, T, MA, VA, VA, height), X##_COUNT

// The kernels and public functions of a member; the order of the sums of squares is that of the kernel.
#define VECTOR_KERNELS(name, CLASS, T, letter, plain)                                                                  \
    KERNEL(own##name, CLASS, U, T, (plain))                                                                            \
    KERNEL(own##name##_S2, CLASS, S, T, (multiplyVector<letter, Sum::fromLeft>))                                       \
    KERNEL(own##name##_P, CLASS, P, T, (multiplyVector<letter, Sum::fromLeft>))
#define OBJECT_BY_VECTOR(name, CLASS, T, letter, plain)                                                                \
    VECTOR_KERNELS(name, CLASS, T, letter, (multiplyVector<letter, Sum::plain>))                                       \
    OBJECT_FUNCTIONS(name, CLASS, T, MatchAfterSizes)
#define BATCH_BY_VECTOR(name, CLASS, T, letter, arrayA, arrayX, plain, list)                                           \
    VECTOR_KERNELS(name, CLASS, T, letter, plain)                                                                      \
    KERNEL(own##name##_L, CLASS, LU, T, (multiplyVector<letter, Sum::list>))                                           \
    KERNEL(own##name##_LS2, CLASS, LS, T, (multiplyVector<letter, Sum::fromLeft>))                                     \
    BATCH_FUNCTIONS(name, CLASS, T, MatchAfterSizes, (vectorWork<letter, arrayA, arrayX>(width, height, count)),       \
                    productLimits<T>)

#endif
