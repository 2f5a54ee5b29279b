// Matrix by matrix: which way a product goes, the work estimates, the limits, and the rows of the members.
#ifndef KVLMMUL_MATRIX_H
#define KVLMMUL_MATRIX_H

#include "frame/layout.h"
#include "frame/rows.h"
#include "kvlmmul_general.h"
#include "kvlmmul_lanes.h"
#include "kvlmmul_limits.h"
#include "kvlmmul_small.h"

namespace kvlm::mul {

// The square orders whose sums begin with the first product, as a set. All other sums begin with +0, which shows in
// the sign of a zero.
template <int... Orders>
constexpr int orders = ((1 << Orders) | ... | 0);

// Settled traits of a kernel, in the same set. Order 3 also for sizes of 1, 2 and 3 whose bitwise OR is 3: it takes
// nine entries of every table.
constexpr int threeByOr = 1;
// Order 4 where src1 is 4 x 4 and the height of src2 is 3, and for no true order 4: it reads a fourth row of src2 and
// stores a fourth element in each row of dst, which the next row overwrites if dst is packed.
constexpr int fourByThree = 2;

constexpr int none = orders<>, three = orders<3>, upTo5 = orders<3, 4, 5>, upTo6 = orders<3, 4, 5, 6>,
              upTo6But4 = orders<3, 5, 6>;

// The operand of one product as that of a batch of one.
template <class D, class X>
KVLM_INLINE auto inBatch(const X &x)
{
    using T = typename X::Element;
    if constexpr (!D::isSingle)
        return x;
    else if constexpr (X::isTable)
        return Table<T, int>(x.table, x.shift, 0);
    else
        return Strided<T, int, decltype(x.rowStride), decltype(x.elemStride)>(x.base, 0, x.rowStride, x.elemStride);
}

// A table whose rows are read as columns, if there is one, gets its entries in the order in which they are read: one
// instance of what multiplies serves all letters.
template <int N, bool FromZero, class A, class B, class D>
KVLM_INLINE void tableProducts(const A &a, const B &b, const D &d, int first, int count)
{
    const auto inOrder = [](const auto &places, const auto &x)
                             KVLM_INLINED { return inRows(places.table(x.objStride), Fixed<N>()); };
    using Place = Places<const typename D::Element>;
    if constexpr (isTransposed<A>) {
        const Place places(a, N, N);
        tableProducts<N, FromZero>(inOrder(places, a), b, d, first, count);
    } else if constexpr (isTransposed<B>) {
        const Place places(b, N, N);
        tableProducts<N, FromZero>(a, inOrder(places, b), d, first, count);
    } else
        productObjects<N, FromZero>(a, b, d, first, count);
}

// Order N, the objects from `first` on. a, b and d are read as they are.
template <int N, bool FromZero, class A, class B, class D>
KVLM_INLINE void squareProducts(const A &a, const B &b, const D &d, int first, int count)
{
    if constexpr (D::isTable)
        tableProducts<N, FromZero>(a, b, d, first, count);
    else if constexpr (!D::View::adjacentInRows)
        productObjects<N, FromZero>(anySteps(a), anySteps(b), anySteps(d), first, count);
    else {
        if constexpr (!D::isList)
            if (linesPacked(a, N, N) && linesPacked(b, N, N) && linesPacked(d, N, N))
                return productObjects<N, FromZero>(withPackedLines<N>(a), withPackedLines<N>(b), withPackedLines<N>(d),
                                                   first, count);
        productObjects<N, FromZero>(anySteps(a), b, d, first, count);
    }
}

// Tables of packed objects, if dst is no source: settled, in tables it may be one.
template <int N, bool FromZero, char LetterA, char LetterB, class A, class B, class D>
KVLM_INLINE bool adjacentTables(const A &a, const B &b, const D &d, int first, int count)
{
    if (!isAdjacent(a, N, N) || !isAdjacent(b, N, N) || !isAdjacent(d, N, N))
        return false;
    const auto src1 = asAdjacent<int>(a, N);
    const auto src2 = asAdjacent<int>(b, N);
    const auto dst = asAdjacent<int>(d, N);
    const Extent n = {N, N, count};
    if (!operandsApart(src1, dst, n) || !operandsApart(src2, dst, n))
        return false;
    constexpr Fixed<N> width;
    squareProducts<N, FromZero>(readAs<LetterA>(src1, width), readAs<LetterB>(src2, width), dst, first, count);
    return true;
}

// Any sizes.
template <class A, class B, class D>
KVLM_INLINE void anyProducts(const A &a, const B &b, const D &d, int height, int inner, int width, int count)
{
    using T = typename D::Element;
    for (int i = 0; i < count; ++i)
        if constexpr (D::isTable)
            productGeneral<T>(anySteps(a).view(i), anySteps(b).view(i), NoTerm(), anySteps(d).view(i), height, inner,
                              width);
        else
            productGeneral<T>(anySteps(a).view(i), b.view(i), NoTerm(), d.view(i), height, inner, width);
}

// One product or a batch of them. The sums of the orders in Begun begin with the first product.
template <char LetterA, char LetterB, int Begun, class A, class B, class D>
KVLM_INLINE KvlStatus multiply(const A &src1, Shape shape1, const B &src2, Shape shape2, SizeMatch, const D &dst,
                               Count count = Count(1))
{
    const auto a = inBatch<D>(src1);
    const auto b = inBatch<D>(src2);
    const auto d = inBatch<D>(dst);
    const int w1 = shape1.width, h1 = shape1.height, w2 = shape2.width, h2 = shape2.height;
    int done = 0;
    const auto square = [&](auto order) KVLM_INLINED {
        constexpr int n = order;
        constexpr bool fromZero = !(Begun >> n & 1);
        if constexpr (D::isTable)
            if (done < count.count && adjacentTables<n, fromZero, LetterA, LetterB>(a, b, d, done, count.count))
                return KvlStatus(kvlOk);
        const auto first = readAs<LetterA>(a, order);
        const auto second = readAs<LetterB>(b, order);
        const auto result = readAs<'m'>(d, order);
        if (done < count.count)
            squareProducts<n, fromZero>(first, second, result, done, count.count);
        return KvlStatus(kvlOk);
    };
    if constexpr ((Begun & threeByOr) != 0)
        if ((w1 | h1 | w2 | h2) == 3)
            return square(Fixed<3>());
    if constexpr ((Begun & fourByThree) != 0)
        if (w1 == 4 && h1 == 4 && h2 == 3) {
            productObjects<4, false>(anySteps(readAs<LetterA>(a, w1)), readAs<LetterB>(b, w2), d, 0, count.count);
            return kvlOk;
        }
    const int n = w1 == h1 && w1 == w2 && w1 == h2 ? w1 : 0;
    done = productsInGroups<Begun & upTo6>(readAs<LetterA>(a, n), readAs<LetterB>(b, n), readAs<'m'>(d, n), n,
                                           count.count);
    return bySmallOrder(n, square, [&]() KVLM_INLINED {
        const int width = LetterB == 'm' ? w2 : h2;
        anyProducts(readAs<LetterA>(a, w1), readAs<LetterB>(b, w2), readAs<'m'>(d, width), LetterA == 'm' ? h1 : w1,
                    LetterA == 'm' ? w1 : h1, width, count.count);
        return KvlStatus(kvlOk);
    });
}

// The traffic of elements: those of a single operand count once.
template <char LetterA, char LetterB, bool ArrayA, bool ArrayB>
KVLM_INLINE int productWork(unsigned w1, unsigned h1, unsigned w2, unsigned h2, unsigned count)
{
    const unsigned result = (LetterA == 'm' ? h1 : w1) * (LetterB == 'm' ? w2 : h2);
    return wrapped(w1 * h1 * (ArrayA ? count : 1) + w2 * h2 * (ArrayB ? count : 1) + result * count);
}

} // namespace kvlm::mul

// Classes, by the letters and by which operands are arrays.
#define PRODUCT(X, D, T, M1, M2, MD, fits)                                                                             \
    X##_##M1##_##D(const T, src1), X##_SHAPE_OF(src1), X##_##M2##_##D(const T, src2), X##_SHAPE_MATCHED(src2, fits),   \
        X##_##MD##_##D(T, dst)
#define FITS_MM           (src1Width == src2Height)
#define FITS_TM           (src1Height == src2Height)
#define FITS_MT           (src1Width == src2Width)
#define FITS_TT           (src1Height == src2Width)
#define MUL_MM(X, D, T)   PRODUCT(X, D, T, M, M, M, FITS_MM)
#define MUL_TM(X, D, T)   PRODUCT(X, D, T, M, M, M, FITS_TM)
#define MUL_MT(X, D, T)   PRODUCT(X, D, T, M, M, M, FITS_MT)
#define MUL_TT(X, D, T)   PRODUCT(X, D, T, M, M, M, FITS_TT)
#define MUL_MAM(X, D, T)  PRODUCT(X, D, T, MA, M, MA, FITS_MM), X##_COUNT
#define MUL_TAM(X, D, T)  PRODUCT(X, D, T, MA, M, MA, FITS_TM), X##_COUNT
#define MUL_MAT(X, D, T)  PRODUCT(X, D, T, MA, M, MA, FITS_MT), X##_COUNT
#define MUL_TAT(X, D, T)  PRODUCT(X, D, T, MA, M, MA, FITS_TT), X##_COUNT
#define MUL_MMA(X, D, T)  PRODUCT(X, D, T, M, MA, MA, FITS_MM), X##_COUNT
#define MUL_TMA(X, D, T)  PRODUCT(X, D, T, M, MA, MA, FITS_TM), X##_COUNT
#define MUL_MTA(X, D, T)  PRODUCT(X, D, T, M, MA, MA, FITS_MT), X##_COUNT
#define MUL_TTA(X, D, T)  PRODUCT(X, D, T, M, MA, MA, FITS_TT), X##_COUNT
#define MUL_MAMA(X, D, T) PRODUCT(X, D, T, MA, MA, MA, FITS_MM), X##_COUNT
#define MUL_TAMA(X, D, T) PRODUCT(X, D, T, MA, MA, MA, FITS_TM), X##_COUNT
#define MUL_MATA(X, D, T) PRODUCT(X, D, T, MA, MA, MA, FITS_MT), X##_COUNT
#define MUL_TATA(X, D, T) PRODUCT(X, D, T, MA, MA, MA, FITS_TT), X##_COUNT

// The kernels of a member, each with the orders whose sums begin with the first product.
#define OBJECT_PRODUCTS(name, CLASS, T, A, B, plain, strided, pointer)                                                 \
    KERNEL(own##name, CLASS, U, T, (multiply<A, B, plain>))                                                            \
    KERNEL(own##name##_S2, CLASS, S, T, (multiply<A, B, strided>))                                                     \
    KERNEL(own##name##_P, CLASS, P, T, (multiply<A, B, pointer>))
#define LIST_PRODUCTS(name, CLASS, T, A, B, list, listStrided)                                                         \
    KERNEL(own##name##_L, CLASS, LU, T, (multiply<A, B, list>))                                                        \
    KERNEL(own##name##_LS2, CLASS, LS, T, (multiply<A, B, listStrided>))

#define BATCH_PRODUCT_FUNCTIONS(name, CLASS, T, A, B, arrayA, arrayB)                                                  \
    BATCH_FUNCTIONS(name, CLASS, T, MatchAfterSizes,                                                                   \
                    (productWork<A, B, arrayA, arrayB>(src1Width, src1Height, src2Width, src2Height, count)),          \
                    productLimits<T>)

#endif
