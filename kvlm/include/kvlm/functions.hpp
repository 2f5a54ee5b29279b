/**
 * @file functions.hpp
 * The operations. Sources come first, then results, then scratch. What is computed, in which order it is rounded, what
 * a destination may overlap, and the statuses are those of the C functions, which kvlm.h describes; what is said here
 * is what C++ adds.
 */
#ifndef KVLM_FUNCTIONS_HPP
#define KVLM_FUNCTIONS_HPP

#include "call.hpp"

namespace kvlm {
namespace detail {

/// dst = a op b, element by element. Where C has the operands in the other order alone they change places: sums and
/// products have the same bits.
template <Operation O, class A, class B, class Dst>
KVLM_HPP_INLINE Status elementwise(const A &a, const B &b, const Dst &dst)
{
    if constexpr (O != Operation::Sub && !hasFunction<O, Dst, A, B> && hasFunction<O, Dst, B, A>) {
        return elementwise<O>(b, a, dst);
    } else {
        using F = Form<O, isMatrix<A> || isMatrix<B> ? Kind::m : Kind::v, Dst, A, B>;
        const bool fits = F::sameShape(a, dst) && F::sameShape(b, dst) && sameCount(a, b, dst);
        if constexpr (isConstant<A>) // the vector stands before the constant in any case
            return F::call(fits, b, a, dst, shape(dst), countOf(dst));
        else
            return F::call(fits, a, b, dst, shape(dst), countOf(dst));
    }
}

/// dst = a b, a matrix by a matrix or a vector, each with its shape.
template <class A, class B, class Dst>
KVLM_HPP_INLINE Status product(const A &a, const B &b, const Dst &dst)
{
    using F = Form<Operation::Mul, isVector<B> ? Kind::v : Kind::m, Dst, A, B>;
    const bool fits = F::same(columnsOf(a), rowsOf(b)) && F::same(rowsOf(a), rowsOf(dst)) &&
                      F::same(columnsOf(b), columnsOf(dst)) && sameCount(a, b, dst);
    return F::call(fits, a, stored(a), b, stored(b), dst, countOf(dst));
}

/// An array into another description, or the same.
template <class A, class Dst>
KVLM_HPP_INLINE Status copied(const A &a, const Dst &dst)
{
    constexpr bool isCopy = isArray(kindOf<A>) && kindOf<A> == kindOf<Dst> && (isVector<A> || kindOf<A> == Kind::ma);
    static_assert(isCopy, "kvlm: copy() is from an array of vectors or matrices to one of the same kind");
    if constexpr (isCopy) {
        using T = ElementOf<A>;
        static_assert(Operand<Dst>::isWritable, "kvlm: the elements of the destination are const");
        static_assert(std::is_same_v<T, ElementOf<Dst>>, "kvlm: the elements of the operands are of different types");
        if constexpr (Operand<Dst>::isWritable && std::is_same_v<T, ElementOf<Dst>>) {
            constexpr auto function =
                Functions<Operation::Copy, code(kindOf<A>)>::template get<T, A::description, Dst::description>();
            if (!(Sizes<true>::sameShape(a, dst) && sameCount(a, dst)))
                return kvlErrSizeMatch;
            return std::apply(function, std::tuple_cat(described<T>(a), described<T>(dst), shape(dst), countOf(dst)));
        }
    }
    return kvlOk;
}

} // namespace detail

/** What goes with the elements of an operand: results without strides, scratch, a constant. */
template <class A>
using RunOf = Run<detail::ElementOf<A>>;
template <class A>
using ScratchOf = Scratch<detail::ElementOf<A>>;
template <class A>
using ConstantOf = detail::ElementOf<A>;

/**
 * @name Sums, differences, products
 * @{
 */
/** dst = a + b, of vectors, matrices, vectors and constants. */
template <class A, class B, class Dst>
KVLM_HPP_INLINE Status add(const A &a, const B &b, const Dst &dst)
{
    using namespace detail;
    return elementwise<Operation::Add>(a, b, dst);
}
/** dst = a - b, likewise. */
template <class A, class B, class Dst>
KVLM_HPP_INLINE Status subtract(const A &a, const B &b, const Dst &dst)
{
    using namespace detail;
    return elementwise<Operation::Sub>(a, b, dst);
}
/** dst = a b: matrix by matrix, matrix by vector, vector or matrix by constant. */
template <class A, class B, class Dst>
KVLM_HPP_INLINE Status multiply(const A &a, const B &b, const Dst &dst)
{
    using namespace detail;
    if constexpr (isConstant<A> || isConstant<B>)
        return elementwise<Operation::Mul>(a, b, dst);
    else
        return product(a, b, dst);
}
/** dst = a x + b, a being a matrix. */
template <class A, class X, class B, class Dst>
KVLM_HPP_INLINE Status gaxpy(const A &a, const X &x, const B &b, const Dst &dst)
{
    using namespace detail;
    using F = Form<Operation::Gaxpy, Kind::v, Dst, A, X, B>;
    const bool fits = F::same(columnsOf(a), rowsOf(x)) && F::same(rowsOf(a), rowsOf(b)) &&
                      F::same(rowsOf(b), rowsOf(dst)) && sameCount(a, x, b, dst);
    return F::call(fits, a, stored(a), x, stored(x), b, stored(b), dst, countOf(dst));
}
/** dst = x val + y, of vectors, val being a number. */
template <class X, class Y, class Dst>
KVLM_HPP_INLINE Status saxpy(const X &x, ConstantOf<X> val, const Y &y, const Dst &dst)
{
    using namespace detail;
    using F = Form<Operation::Saxpy, Kind::v, Dst, X, Y>;
    const bool fits = F::sameShape(x, dst) && F::sameShape(y, dst) && sameCount(x, y, dst);
    return F::call(fits, x, val, y, dst, shape(dst), countOf(dst));
}
/** dst = x a + y b, of vectors, a and b being numbers. */
template <class X, class Y, class Dst>
KVLM_HPP_INLINE Status linearCombination(const X &x, ConstantOf<X> a, const Y &y, ConstantOf<X> b, const Dst &dst)
{
    using namespace detail;
    constexpr auto o = Operation::LComb;
    if constexpr (!hasFunction<o, Dst, X, Y> && hasFunction<o, Dst, Y, X>) {
        return linearCombination(y, b, x, a, dst);
    } else {
        using F = Form<o, Kind::v, Dst, X, Y>;
        const bool fits = F::sameShape(x, dst) && F::sameShape(y, dst) && sameCount(x, y, dst);
        return F::call(fits, x, a, y, b, dst, shape(dst), countOf(dst));
    }
}
/** dst = a x b, of vectors of three elements. */
template <class A, class B, class Dst>
KVLM_HPP_INLINE Status cross(const A &a, const B &b, const Dst &dst)
{
    using namespace detail;
    using F = Form<Operation::CrossProduct, Kind::v, Dst, A, B>;
    const bool fits = F::same(rowsOf(a), fixed<3>) && F::same(rowsOf(b), fixed<3>) && F::same(rowsOf(dst), fixed<3>) &&
                      sameCount(a, b, dst);
    return F::call(fits, a, b, dst, countOf(dst));
}
/** Points of three elements by a homogeneous 4 x 4 matrix, with division, in float and the standard description. */
template <class A, class Points, class Dst>
KVLM_HPP_INLINE Status affineTransform3DH(const A &a, const Points &points, const Dst &dst)
{
    using namespace detail;
    using F = Form<Operation::AffineTransform3DH, Kind::v, Dst, A, Points>;
    const bool fits = F::same(rowsOf(a), fixed<4>) && F::same(columnsOf(a), fixed<4>) &&
                      F::same(rowsOf(points), fixed<3>) && F::same(rowsOf(dst), fixed<3>) && sameCount(points, dst);
    return F::call(fits, a, points, dst, countOf(dst));
}
/** @} */

/**
 * @name Numbers of vectors and matrices
 * dst is a run: one element for each object.
 * @{
 */
/** The dot product of two vectors. */
template <class A, class B>
KVLM_HPP_INLINE Status dot(const A &a, const B &b, RunOf<A> dst)
{
    using namespace detail;
    constexpr auto o = Operation::DotProduct;
    if constexpr (!hasFunction<o, Plain, A, B> && hasFunction<o, Plain, B, A>) {
        return dot(b, a, dst);
    } else {
        using F = Form<o, Kind::c, Plain, A, B>;
        const bool fits = F::sameShape(a, b) && sameCount(a, b) && dst.holds(forAll(1, a, b));
        return F::call(fits, a, b, dst, rowsOf(a), countOf(a, b));
    }
}
/** The Euclidean norm of a vector. */
template <class A>
KVLM_HPP_INLINE Status l2Norm(const A &a, RunOf<A> dst)
{
    using namespace detail;
    using F = Form<Operation::L2Norm, Kind::c, Plain, A>;
    return F::call(dst.holds(forAll(1, a)), a, dst, rowsOf(a), countOf(a));
}
/** The root of the sum of all squares of a matrix. */
template <class A>
KVLM_HPP_INLINE Status frobeniusNorm(const A &a, RunOf<A> dst)
{
    using namespace detail;
    using F = Form<Operation::FrobNorm, Kind::c, Plain, A>;
    return F::call(dst.holds(forAll(1, a)), a, stored(a), dst, countOf(a));
}
/** The sum of the diagonal of a square matrix. */
template <class A>
KVLM_HPP_INLINE Status trace(const A &a, RunOf<A> dst)
{
    using namespace detail;
    using F = Form<Operation::Trace, Kind::c, Plain, A>;
    const bool fits = F::isSquare(a) && dst.holds(forAll(1, a));
    return F::call(fits, a, rowsOf(a), dst, countOf(a));
}
/** @} */

/**
 * @name Moving elements
 * @{
 */
/** An array into another description, or the same. */
template <class A, class Dst>
KVLM_HPP_INLINE Status copy(const A &a, const Dst &dst)
{
    using namespace detail;
    return copied(a, dst);
}
/** Into adjacent elements, object after object, row by row as a is read. */
template <class A>
KVLM_HPP_INLINE Status extract(const A &a, RunOf<A> dst)
{
    using namespace detail;
    using F = Form<Operation::Extract, Kind::c, Plain, A>;
    const std::ptrdiff_t elements = std::ptrdiff_t(rowsOf(a)) * columnsOf(a);
    return F::call(dst.holds(forAll(elements, a)), a, dst, shape(a), countOf(a));
}
/** dst = identity matrices, cut or filled with zeros where they are not square. */
template <class Dst>
KVLM_HPP_INLINE Status loadIdentity(const Dst &dst)
{
    using namespace detail;
    using F = Form<Operation::LoadIdentity, Kind::m, Dst, Dst>;
    return F::call(true, dst, shape(dst), countOf(dst));
}
/** dst = the transpose of a: moves elements, where transposed() only changes how they are read. */
template <class A, class Dst>
KVLM_HPP_INLINE Status transpose(const A &a, const Dst &dst)
{
    using namespace detail;
    using F = Form<Operation::Transpose, Kind::m, Dst, A>;
    const bool fits = F::same(rowsOf(a), columnsOf(dst)) && F::same(columnsOf(a), rowsOf(dst)) && sameCount(a, dst);
    return F::call(fits, a, stored(a), dst, countOf(dst));
}
/** @} */

} // namespace kvlm

#endif
