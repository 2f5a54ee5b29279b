/**
 * @file systems.hpp
 * Decompositions, solvers, inverse, eigenvalues and eigenvectors, of square matrices but for QR. As in functions.hpp
 * kvlm.h says what each does; results come behind the sources, scratch last.
 */
#ifndef KVLM_SYSTEMS_HPP
#define KVLM_SYSTEMS_HPP

#include "functions.hpp"

#include <algorithm>

namespace kvlm {

/** The bytes of scratch for general matrices of this order: of values alone, of values and vectors. */
template <class T>
KVLM_HPP_INLINE Status eigenvaluesScratch(int order, int &bytes)
{
    return detail::forType<T>(kvlmEigenValuesGetBufSize_32f, kvlmEigenValuesGetBufSize_64f)(order, &bytes);
}
template <class T>
KVLM_HPP_INLINE Status eigenvectorsScratch(int order, int &bytes)
{
    return detail::forType<T>(kvlmEigenValuesVectorsGetBufSize_32f, kvlmEigenValuesVectorsGetBufSize_64f)(order,
                                                                                                          &bytes);
}

namespace detail {

template <class A>
constexpr std::size_t orderOf(const A &a)
{
    return static_cast<std::size_t>(std::max<int>(rowsOf(a), 0));
}
/// Of the determinant and the inverse: n*n elements, then n ints.
template <class A>
constexpr std::size_t eliminationBytes(const A &a)
{
    return orderOf(a) * (orderOf(a) * sizeof(ElementOf<A>) + sizeof(int));
}
template <class A>
constexpr std::size_t squareBytes(const A &a)
{
    return orderOf(a) * orderOf(a) * sizeof(ElementOf<A>);
}

template <class A>
std::size_t bytesOf(Status (*scratchOf)(int, int &), const A &a)
{
    int bytes = 0;
    return scratchOf(rowsOf(a), bytes).ok() ? static_cast<std::size_t>(std::max(bytes, 0)) : 0;
}

/// Both parts have room for the values.
template <class F, class A, class T>
bool fitsEigen(const A &a, const Run<T> &re, const Run<T> &im)
{
    const std::ptrdiff_t values = forAll(rowsOf(a), a);
    return F::isSquare(a) && re.holds(values) && im.holds(values);
}
template <Operation O, class A, class Vectors, class T>
KVLM_HPP_INLINE Status oneSide(const A &a, const Vectors &vectors, Run<T> re, Run<T> im, Scratch<T> scratch)
{
    using F = Form<O, Kind::m, Vectors, A>;
    const bool fits =
        fitsEigen<F>(a, re, im) && F::fitsSquare(a, vectors) && scratch.holds(bytesOf(eigenvectorsScratch<T>, a));
    return F::call(fits, a, vectors, re, im, rowsOf(a), countOf(a), scratch);
}

} // namespace detail

/**
 * @name Determinant, inverse and decompositions
 * @{
 */
/** One element for each matrix. */
template <class A>
KVLM_HPP_INLINE Status determinant(const A &a, RunOf<A> dst, ScratchOf<A> scratch)
{
    using namespace detail;
    using F = Form<Operation::Det, Kind::c, Plain, A>;
    const bool fits = F::isSquare(a) && dst.holds(forAll(1, a)) && scratch.holds(eliminationBytes(a));
    return F::call(fits, a, rowsOf(a), scratch, dst, countOf(a));
}
/** dst = the inverse of a, kvlErrSingular where there is none. */
template <class A, class Dst>
KVLM_HPP_INLINE Status invert(const A &a, const Dst &dst, ScratchOf<A> scratch)
{
    using namespace detail;
    using F = Form<Operation::Invert, Kind::m, Dst, A>;
    return F::call(F::fitsSquare(a, dst) && scratch.holds(eliminationBytes(a)), a, scratch, dst, rowsOf(a),
                   countOf(dst));
}
/** Factors in the form that luSolve reads, with their pivots: n ints for each matrix. */
template <class A, class Factors>
KVLM_HPP_INLINE Status luDecompose(const A &a, const Factors &factors, Run<int> pivots)
{
    using namespace detail;
    using F = Form<Operation::LUDecomp, Kind::m, Factors, A>;
    const bool fits = F::fitsSquare(a, factors) && pivots.holds(forAll(rowsOf(a), a));
    return F::call(fits, a, pivots, factors, rowsOf(a), countOf(factors));
}
/** a x = b, for one matrix and one vector, one matrix and many vectors, or a matrix for each vector; so all solvers. */
template <class Factors, class B, class X>
KVLM_HPP_INLINE Status luSolve(const Factors &factors, Run<const int> pivots, const B &b, const X &x)
{
    using namespace detail;
    using F = Form<Operation::LUBackSubst, Kind::v, X, Factors, B>;
    const bool fits = F::isSquare(factors) && F::same(rowsOf(factors), rowsOf(b)) && F::sameShape(b, x) &&
                      sameCount(factors, b, x) && pivots.holds(forAll(rowsOf(factors), factors));
    return F::call(fits, factors, pivots, b, x, rowsOf(factors), countOf(x));
}
/** Of symmetric positive definite matrices; the diagonal of the factor holds reciprocals, for choleskySolve. */
template <class A, class Factor>
KVLM_HPP_INLINE Status choleskyDecompose(const A &a, const Factor &factor)
{
    using namespace detail;
    using F = Form<Operation::CholeskyDecomp, Kind::m, Factor, A>;
    return F::call(F::fitsSquare(a, factor), a, factor, rowsOf(a), countOf(factor));
}
/** a x = b from the factor of a. */
template <class Factor, class B, class X>
KVLM_HPP_INLINE Status choleskySolve(const Factor &factor, const B &b, const X &x)
{
    using namespace detail;
    using F = Form<Operation::CholeskyBackSubst, Kind::v, X, Factor, B>;
    const bool fits =
        F::isSquare(factor) && F::same(rowsOf(factor), rowsOf(b)) && F::sameShape(b, x) && sameCount(factor, b, x);
    return F::call(fits, factor, b, x, rowsOf(factor), countOf(x));
}
/** Of matrices with at least as many rows as columns. */
template <class A, class Factors>
KVLM_HPP_INLINE Status qrDecompose(const A &a, const Factors &factors, ScratchOf<A> scratch)
{
    using namespace detail;
    using F = Form<Operation::QRDecomp, Kind::m, Factors, A>;
    const bool fits =
        F::sameShape(a, factors) && sameCount(a, factors) && scratch.holds(orderOf(a) * sizeof(typename F::T));
    return F::call(fits, a, scratch, factors, shape(a), countOf(factors));
}
/** x of the smallest residual: b has the rows of the factors, x their columns. */
template <class Factors, class B, class X>
KVLM_HPP_INLINE Status qrSolve(const Factors &factors, const B &b, const X &x, ScratchOf<Factors> scratch)
{
    using namespace detail;
    using F = Form<Operation::QRBackSubst, Kind::v, X, Factors, B>;
    const bool fits = F::same(rowsOf(factors), rowsOf(b)) && F::same(columnsOf(factors), rowsOf(x)) &&
                      sameCount(factors, b, x) && scratch.holds(orderOf(factors) * sizeof(typename F::T));
    return F::call(fits, factors, scratch, b, x, shape(factors), countOf(x));
}
/** @} */

/**
 * @name Eigenvalues and eigenvectors
 * Values are n adjacent elements for each matrix, vectors the columns of a matrix.
 * @{
 */
/** Of symmetric matrices, descending. */
template <class A>
KVLM_HPP_INLINE Status eigenvaluesSym(const A &a, RunOf<A> values, ScratchOf<A> scratch)
{
    using namespace detail;
    using F = Form<Operation::EigenValuesSym, Kind::c, Plain, A>;
    const bool fits = F::isSquare(a) && values.holds(forAll(rowsOf(a), a)) && scratch.holds(squareBytes(a));
    return F::call(fits, a, scratch, values, rowsOf(a), countOf(a));
}
/** The same with orthonormal vectors. */
template <class A, class Vectors>
KVLM_HPP_INLINE Status eigenvectorsSym(const A &a, const Vectors &vectors, RunOf<A> values, ScratchOf<A> scratch)
{
    using namespace detail;
    using F = Form<Operation::EigenValuesVectorsSym, Kind::m, Vectors, A>;
    const bool fits = F::fitsSquare(a, vectors) && values.holds(forAll(rowsOf(a), a)) && scratch.holds(squareBytes(a));
    return F::call(fits, a, scratch, vectors, values, rowsOf(a), countOf(a));
}
/** Of general matrices: real and imaginary parts. */
template <class A>
KVLM_HPP_INLINE Status eigenvalues(const A &a, RunOf<A> re, RunOf<A> im, ScratchOf<A> scratch)
{
    using namespace detail;
    using F = Form<Operation::EigenValues, Kind::c, Plain, A>;
    const bool fits = fitsEigen<F>(a, re, im) && scratch.holds(bytesOf(eigenvaluesScratch<typename F::T>, a));
    return F::call(fits, a, re, im, rowsOf(a), countOf(a), scratch);
}
/** Both sets of vectors, which are those of the transposed matrix: what is usually called a right eigenvector of a is a
 * column of `left`. */
template <class A, class Right, class Left>
KVLM_HPP_INLINE Status eigenvectors(const A &a, const Right &right, const Left &left, RunOf<A> re, RunOf<A> im,
                                    ScratchOf<A> scratch)
{
    using namespace detail;
    using F = Form<Operation::EigenValuesVectors, Kind::m, Right, A>;
    using OfLeft = Form<Operation::EigenValuesVectors, Kind::m, Left, A>;
    const bool fits = fitsEigen<F>(a, re, im) && F::fitsSquare(a, right) && F::fitsSquare(a, left) &&
                      scratch.holds(bytesOf(eigenvectorsScratch<typename F::T>, a));
    if constexpr (OfLeft::fault == Fault::none)
        return F::call(fits, a, right, left, re, im, rowsOf(a), countOf(a), scratch);
    else
        return kvlOk; // does not compile
}
/** The first of them alone. */
template <class A, class Right>
KVLM_HPP_INLINE Status eigenvectorsRight(const A &a, const Right &right, RunOf<A> re, RunOf<A> im, ScratchOf<A> scratch)
{
    return detail::oneSide<detail::Operation::EigenValuesVectorsRight>(a, right, re, im, scratch);
}
/** The second. */
template <class A, class Left>
KVLM_HPP_INLINE Status eigenvectorsLeft(const A &a, const Left &left, RunOf<A> re, RunOf<A> im, ScratchOf<A> scratch)
{
    return detail::oneSide<detail::Operation::EigenValuesVectorsLeft>(a, left, re, im, scratch);
}
/** @} */

} // namespace kvlm

#endif
