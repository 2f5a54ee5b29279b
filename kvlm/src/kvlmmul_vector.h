// Matrix by vector, and the same plus a vector: orders 3 to 6 by rows where elements are adjacent, else with one object
// per lane; all others in blocks.
#ifndef KVLMMUL_VECTOR_H
#define KVLMMUL_VECTOR_H

#include "frame/layout.h"
#include "frame/rows.h"
#include "kvlmmul_adjacent.h"
#include "kvlmmul_general.h"
#include "kvlmmul_limits.h"
#include "loops/sums.h"

namespace kvlm::mul {

KVLM_INLINE bool objectsPacked(NoTerm, int64_t)
{
    return true;
}

// The order of the sums of adjacent elements, where it is not from the left.
template <class T>
constexpr Sum laneOrder = sizeof(T) == 4 ? Sum::quads : Sum::pairs;

// y = a*x of one object, or of a group.
template <Sum Order, class A, class V, int N>
KVLM_INLINE void vectorSums(A a, const V (&x)[N], V (&y)[N])
{
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r) {
        V p[N];
#pragma GCC unroll 6
        for (int k = 0; k < N; ++k)
            p[k] = a(r, k) * x[k];
        y[r] = sumOf<Order>(p, r);
    }
}

template <class T, int N>
KVLM_INLINE void addTerm(const T (&b)[N], T (&y)[N])
{
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r)
        y[r] = y[r] + b[r];
}

template <class T, int N, class View>
KVLM_INLINE void readVector(const View &view, int r, T (&v)[N])
{
#pragma GCC unroll 6
    for (int c = 0; c < N; ++c)
        v[c] = Loose<T>::load(view.at(r, c));
}

// One object of order N.
template <int N, Sum Order, class T>
KVLM_NOINLINE void vectorProduct(const Objects<const T> &a, const Objects<const T> &x, const Objects<const T> *term,
                                 const Objects<T> &d, ptrdiff_t i)
{
    withViews(
        [&](const auto &matrix, const auto &vector, const auto &dst) KVLM_INLINED {
            T m[N][N], v[N], y[N];
#pragma GCC unroll 6
            for (int r = 0; r < N; ++r)
                readVector(matrix, r, m[r]);
            readVector(vector, 0, v);
            vectorSums<Order>([&](int r, int k) KVLM_INLINED { return m[r][k]; }, v, y);
            if (term) {
                T b[N];
                withViews([&](const auto &view) KVLM_INLINED { readVector(view, 0, b); }, i, *term);
                addTerm(b, y);
            }
#pragma GCC unroll 6
            for (int r = 0; r < N; ++r)
                Loose<T>::store(dst.at(0, r), y[r]);
        },
        i, a, x, d);
}

// A batch of vectors by one matrix, one object per lane: plus a term for each, plus one for all, or alone.
template <int N, Sum Order, class T, class... Terms>
KVLM_NOINLINE KvlStatus vectorsByMatrix(const Objects<const T> &a, const Objects<const T> &x,
                                        const Objects<const T> *term, const Objects<T> &d, int count,
                                        const Terms &...terms)
{
    const OfAllObjects<T, N, N> matrix(a);
    return vectorsByLayout<N>(
        d, count,
        [&](ptrdiff_t i, auto &y, const auto &source, const auto &...addends) KVLM_INLINED {
            using V = NumberOf<decltype(y)>;
            V v[N];
            source.move(i, v);
            vectorSums<Order>([&](int r, int k) KVLM_INLINED { return matrix.template at<V>(r, k); }, v, y);
            ((addends.move(i, v), addTerm(v, y)), ...);
        },
        [&](ptrdiff_t i) KVLM_INLINED { vectorProduct<N, Order>(a, x, term, d, i); }, GroupSource<T, 1, N>(x),
        terms...);
}

// The same of packed vectors with a term for each: it is added where it lies, and does not change places.
template <int N, Sum Order, class T, class One>
KVLM_NOINLINE KvlStatus packedVectorsByMatrix(const Objects<const T> &a, const T *x, const T *term, T *d, int count,
                                              const One &one)
{
    const OfAllObjects<T, N, N> matrix(a);
    return inAnyGroups<T, true>(
        count,
        [=](ptrdiff_t i, auto number) KVLM_INLINED {
            using V = typename decltype(number)::Number;
            V v[N], y[N];
            loadRegisters(x + i * N, v);
            sortElements(v);
            vectorSums<Order>([&](int r, int k) KVLM_INLINED { return matrix.template at<V>(r, k); }, v, y);
            packElements(y);
            loadRegisters(term + i * N, v);
            addTerm(v, y);
            storeRegisters(d + i * N, y);
            return true;
        },
        one);
}

// A batch of vectors, or a single one, by a matrix for each.
template <int N, Sum Order, class T, class Vectors>
KVLM_NOINLINE KvlStatus vectorsByMatrices(const Objects<const T> &a, const Objects<const T> &x, const Objects<T> &d,
                                          int count, const Vectors &vectors)
{
    return vectorsByLayout<N>(
        d, count,
        [](ptrdiff_t i, auto &y, const auto &matrices, const auto &source) KVLM_INLINED {
            NumberOf<decltype(y)> matrix[N][N], v[N];
            matrices.move(i, matrix[0]);
            source.move(i, v);
            vectorSums<Order>([&](int r, int k) KVLM_INLINED { return matrix[r][k]; }, v, y);
        },
        [&](ptrdiff_t i) KVLM_INLINED { vectorProduct<N, Order, T>(a, x, nullptr, d, i); }, GroupSource<T, N, N>(a),
        vectors);
}

template <int N, Sum Order, class T>
KVLM_INLINE KvlStatus vectorProducts(const Objects<const T> &a, const Objects<const T> &x, const Objects<const T> *term,
                                     const Objects<T> &d, int count)
{
    if (!a.isSingle)
        return x.isSingle ? vectorsByMatrices<N, Order>(a, x, d, count, SingleVector<T, N>(x))
                          : vectorsByMatrices<N, Order>(a, x, d, count, GroupSource<T, 1, N>(x));
    if (!term)
        return vectorsByMatrix<N, Order>(a, x, term, d, count);
    if (term->isSingle)
        return vectorsByMatrix<N, Order>(a, x, term, d, count, SingleVector<T, N>(*term));
    const GroupSource<T, 1, N> terms(*term), sources(x);
    const GroupResult<T, 1, N> results(d);
    if (terms.isPacked() && sources.isPacked() && results.isPacked()) {
        const auto one = [&](ptrdiff_t i) KVLM_INLINED { vectorProduct<N, Order>(a, x, term, d, i); };
        return packedVectorsByMatrix<N, Order>(a, sources.asPacked().base, terms.asPacked().base,
                                               results.asPacked().base, count, NeverFails<decltype(one)>{one});
    }
    return vectorsByMatrix<N, Order>(a, x, term, d, count, terms);
}

// Orders 3 to 6.
template <Sum Order, class T>
KVLM_NOINLINE KvlStatus productsInLanes(const Objects<const T> &a, const Objects<const T> &x,
                                        const Objects<const T> *term, const Objects<T> &d, int n, int count)
{
    return bySmallOrder(
        n,
        [&](auto order) KVLM_INLINED {
            if (d.isSingle)
                return vectorProduct<order, Order>(a, x, term, d, 0), KvlStatus(kvlOk);
            return vectorProducts<order, Order>(a, x, term, d, count);
        },
        []() KVLM_INLINED { return KvlStatus(kvlOk); });
}

// Compiled once, in kvlmmul_vector_32f.cpp and its like: for any strides, for adjacent elements.
#define PRODUCTS_IN_LANES(linkage, T)                                                                                  \
    linkage template KvlStatus productsInLanes<Sum::fromLeft>(const Objects<const T> &, const Objects<const T> &,      \
                                                              const Objects<const T> *, const Objects<T> &, int, int); \
    linkage template KvlStatus productsInLanes<laneOrder<T>>(const Objects<const T> &, const Objects<const T> &,       \
                                                             const Objects<const T> *, const Objects<T> &, int, int);
KVLM_FOR_ELEMENTS(PRODUCTS_IN_LANES, extern)

// A vector operand as the columns of a matrix: one object, or all of a batch.
template <class X>
KVLM_INLINE auto asColumn(const X &x, ptrdiff_t i)
{
    using T = typename X::Element;
    if constexpr (X::isTable)
        return TableView<T, int, int>{x.table, static_cast<Offset>(x.shiftOf(i)), 1, 0};
    else
        return View<T, int, int>{x.object(i), x.elemStride, 0};
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

// How products of an order that is unrolled are worked: with one object per lane, as sums along the rows of a matrix,
// or as rows by the columns of a matrix, which are in registers. Measured:
//
//   elements    matrices   read as   32f                 64f
//   adjacent    one        m, t      columns             columns
//   adjacent    an array   m         lanes, rows at 4    rows
//   adjacent    an array   t         columns             columns
//   any         any        m, t      lanes               lanes
//
// Packed vectors that share a matrix of adjacent elements are in lanes, but for order 4.
enum class Way { lanes, rows, columns };

template <class A>
constexpr Way wayOf(char letter, int order)
{
    if (!hasAdjacentRows<A>())
        return Way::lanes;
    if (A::isSingle || letter == 't')
        return Way::columns;
    return sizeof(typename A::Element) == 4 && order != 4 ? Way::lanes : Way::rows;
}

// dst = op(src1)*src2 + term of order n, one or a batch.
template <char Letter, Sum Order, class A, class X, class E, class D>
KVLM_INLINE void multiplyInLanes(const A &src1, const X &src2, const E &term, const D &dst, int n, int count)
{
    const auto matrices = objectsOf(src1, n), a = Letter == 't' ? matrices.transposed() : matrices;
    const auto x = objectsOf(src2, n);
    const auto d = objectsOf(dst, n);
    if constexpr (std::is_same_v<E, NoTerm>)
        productsInLanes<Order, typename D::Element>(a, x, nullptr, d, n, count);
    else {
        const auto b = objectsOf(term, n);
        productsInLanes<Order>(a, x, &b, d, n, count);
    }
}

template <int N, char Letter, Sum Order, class A, class X, class E, class D>
KVLM_INLINE void multiplyByWay(const A &src1, const X &src2, const E &term, const D &dst, int count)
{
    constexpr Way way = wayOf<A>(Letter, N);
    constexpr bool vectorsShare = A::isSingle && !D::isSingle && !D::isList;
    if constexpr (way == Way::lanes)
        multiplyInLanes<Letter, Order>(src1, src2, term, dst, N, count);
    else if constexpr (way == Way::rows)
        productsByRows<N, Order>(src1, src2, dst, count);
    else {
        if constexpr (vectorsShare && N != 4)
            if (objectsPacked(src2, N) && objectsPacked(dst, N) && objectsPacked(term, N))
                return multiplyInLanes<Letter, Order>(src1, src2, term, dst, N, count);
        const auto a = readAs < Letter == 'm' ? 't' : 'm' > (src1, N);
        if (!A::isSingle && linesPacked(a, N, N))
            adjacentProducts<N, Order>(withPackedLines<N>(a), src2, term, dst, count);
        else
            adjacentProducts<N, Order>(a, src2, term, dst, count);
    }
}

// The same of any order.
template <char Letter, Sum Order, class A, class X, class E, class D>
KVLM_INLINE KvlStatus multiplyAndAdd(const A &src1, Shape shape, const X &src2, const E &term, const D &dst,
                                     Count count)
{
    const int width = shape.width, height = shape.height;
    return bySmallOrder(
        width == height ? width : 0,
        [&](auto order) KVLM_INLINED {
            return multiplyByWay<order, Letter, Order>(src1, src2, term, dst, count.count), KvlStatus(kvlOk);
        },
        [&]() KVLM_INLINED {
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

} // namespace kvlm::mul

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
