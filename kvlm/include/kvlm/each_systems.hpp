/**
 * @file each_systems.hpp
 * Decompositions and solutions of arrays of systems, with a status for each object: see each.hpp.
 */
#ifndef KVLM_EACH_SYSTEMS_HPP
#define KVLM_EACH_SYSTEMS_HPP

#include "each_factors.hpp"

namespace kvlm {
namespace each {
namespace detail {

/// Factors that go to the caller.
template <class Factor, class F>
class Decompose : public Factor {
public:
    template <class A>
    Decompose(const A &a, const F &f, int *table = nullptr) : Factor(a), factors(f), pivots(table)
    {
        this->source.avoid(factors);
    }
    int most() const { return std::min(this->source.most(), factors.most()); }
    void load(int first, int objects)
    {
        this->in = this->source.load(first, objects);
        if constexpr (Factor::isTriangle)
            this->out = factors.load(first, objects); // what it leaves alone must stand in a copy, too
        else
            this->out = factors.open(first, objects);
        if constexpr (Factor::hasPivots)
            this->pivot = pivots + static_cast<std::ptrdiff_t>(first) * this->n;
    }
    void store(int first, int objects) { factors.store(first, objects); }

private:
    Block<F> factors;
    int *const pivots;
};

/// Factors that stay here. Right-hand sides and solutions are the columns of b and x.
template <class Factor, class B, class X>
class Solve : public Conditioned<Factor> {
public:
    using typename Factor::T;
    static constexpr KvlStatus failure = Factor::failure;

    template <class A>
    Solve(const A &a, const B &rightSides, const X &solutions, T *numbers)
        : Conditioned<Factor>(a, numbers), right(rightSides), solution(solutions), sides(columnsOf(rightSides))
    {
        right.avoid(solution);
    }
    int most() const
    {
        const int fitting = std::min(factors.capacity / (this->height * this->width), pivots.capacity / this->width);
        return std::max(1, std::min({this->source.most(), right.most(), solution.most(), fitting}));
    }
    void load(int start, int objects)
    {
        first = start;
        this->in = this->source.load(start, objects);
        this->out = packed<T>(factors.get(numberOf(objects, this->height, this->width)), this->height, this->width);
        if constexpr (Factor::hasPivots)
            this->pivot = pivots.get(numberOf(objects, this->width));
        b = right.load(start, objects);
        x = solution.open(start, objects);
    }
    void store(int start, int objects) { solution.store(start, objects); }

    void complete(int objects)
    {
        for (int k = 0; k < sides; ++k)
            this->substitute(b.column(k), x.column(k), objects);
    }
    bool areGood(int i, int objects) const
    {
        return Factor::areGood(i, objects) && areZeroOrNormal(b, i, objects, this->height, sides) &&
               (areBounded(x, i, objects, this->width, sides, greatest<T>) || (objects == 1 && isSolved(i)));
    }
    KvlStatus again(int i)
    {
        const int rows = this->height;
        for (int k = 0; k < sides; ++k) {
            double *a, *behind;
            const bool isInput = this->read(i, a, behind, rows + this->extra());
            for (int r = 0; r < rows; ++r)
                behind[r] = b(i, r, k);
            if (!isInput || !areFinite(behind, rows) || !this->solveAgain(a, behind, behind + rows))
                return failure;
            for (int r = 0; r < this->width; ++r)
                x(i, r, k) = static_cast<T>(behind[r]);
        }
        return isSolved(i) ? kvlOk : failure;
    }
    /// A failure of any kind leaves NaN.
    void finish(int i, KvlStatus &status)
    {
        if (!this->isRegular(first, i) && status == kvlOk)
            status = kvlErrSingular;
        if (status != kvlOk)
            this->writeNaN(x, i, this->width, sides);
    }

private:
    bool isSolved(int i) const
    {
        return forAll(this->width * sides, [&](int k) { return isFinite(x(i, k / sides, k % sides)); });
    }

    Block<B> right;
    Block<X> solution;
    Strided<const T> b;
    Strided<T> x;
    Room<T, inCache / sizeof(T)> factors;
    Room<int, 1536> pivots;
    const int sides;
    int first = 0;
};

/// Matrices a with right-hand sides b and solutions x.
template <class Factor, class A, class B, class X>
int solve(const A &a, const B &b, const X &x, KvlStatus *statuses, ElementOf<A> *conditions, bool hasShape)
{
    const bool doFit = hasShape && rowsOf(b) == a.rows() && rowsOf(x) == a.columns() && columnsOf(b) == columnsOf(x) &&
                       columnsOf(b) > 0 && b.count() == a.count() && x.count() == a.count();
    const KvlStatus status =
        check(statuses && isThere(a) && isThere(b) && isThere(x), a.count(), std::min(a.rows(), a.columns()), doFit);
    return status != kvlOk ? status : run(Solve<Factor, B, X>(a, b, x, conditions), statuses);
}

} // namespace detail

/**
 * P*A = L*U by Gaussian elimination with partial pivoting (Golub and Van Loan, Matrix Computations, 3.4), in the form
 * of kvlmLUDecomp, for kvlmLUBackSubst: n ints of `pivots` for each object, no row is moved.
 *
 * A pivot that is zero, or too small for the type, is kvlErrSingular, whatever the size of the elements; so is an
 * element that is not finite. The table of an object that failed is 0, 1, 2, ... The second attempt is in double,
 * scaled up. |P*A - L*U| is a small multiple of n*epsilon*|A|.
 */
template <class A, class F>
int luDecompose(const A &a, const F &factors, int *pivots, KvlStatus *statuses)
{
    using namespace detail;
    const KvlStatus status = check(statuses && pivots && isThere(a) && isThere(factors), a.count(), a.rows(),
                                   isSquare(a) && isAlike(a, factors));
    return status != kvlOk ? status : run(Decompose<LU<A>, F>(a, factors, pivots), statuses);
}

/**
 * A = L*L' of positive definite matrices (Golub and Van Loan, Matrix Computations, 4.2), in the form of
 * kvlmCholeskyDecomp, for kvlmCholeskyBackSubst: reciprocals on the diagonal. Only what stands on and below the
 * diagonal is read and written.
 *
 * kvlErrNotPositiveDefinite for a pivot that is not positive: what the C function refuses, or what is tiny or huge, is
 * tried in double with the diagonal scaled to 1. The pivots have rounding errors; with values between -n*epsilon*|A|
 * and n*epsilon*|A| a matrix may have either status. It is also the status of what is not finite.
 */
template <class A, class F>
int choleskyDecompose(const A &a, const F &factors, KvlStatus *statuses)
{
    using namespace detail;
    const KvlStatus status =
        check(statuses && isThere(a) && isThere(factors), a.count(), a.rows(), isSquare(a) && isAlike(a, factors));
    return status != kvlOk ? status : run(Decompose<Cholesky<A>, F>(a, factors), statuses);
}

/**
 * A = Q*R by Householder reflections, columns() <= rows() (Golub and Van Loan, Matrix Computations, 5.2), in the form
 * of kvlmQRDecomp, for kvlmQRBackSubst.
 *
 * kvlErrSingular only where R would have a zero on its diagonal, however small the elements are: the second attempt
 * scales each column by a power of two, which R takes back. Column by column |A - Q*R| is a small multiple of
 * n*epsilon times the length of the column of A.
 */
template <class A, class F>
int qrDecompose(const A &a, const F &factors, KvlStatus *statuses)
{
    using namespace detail;
    const KvlStatus status = check(statuses && isThere(a) && isThere(factors), a.count(), a.columns(),
                                   a.columns() <= a.rows() && isAlike(a, factors));
    return status != kvlOk ? status : run(Decompose<QR<A>, F>(a, factors), statuses);
}

/**
 * A*x = b by LU factors, which are not kept. b and x are vectors, or matrices of as many columns: right-hand sides and
 * their solutions, all of which have failed if one has. x may be b.
 *
 * kvlErrSingular for a zero pivot, for what is not finite in A or b, for a solution that the type can't hold; and, if
 * `conditions` is given, for a reciprocal condition number below epsilon: it gets 1/(|A|*|A^-1|) in the 1-norm, from
 * the inverse (an estimate as by Higham, ACM Algorithm 674, would cost as much at small orders). That costs several
 * times the solution.
 *
 * The second attempt is in double, with rows and columns scaled by powers of two. The backward error is that of partial
 * pivoting, a small multiple of n*epsilon, with LAPACK's gesv.
 */
template <class A, class B, class X>
int solve(const A &a, const B &b, const X &x, KvlStatus *statuses, detail::ElementOf<A> *conditions = nullptr)
{
    return detail::solve<detail::LU<A>>(a, b, x, statuses, conditions, detail::isSquare(a));
}

/** The same for positive definite matrices by Cholesky factors: only the lower triangle is read, and the status of a
 * failure is kvlErrNotPositiveDefinite, but kvlErrSingular of what is singular by its condition number. */
template <class A, class B, class X>
int solvePositiveDefinite(const A &a, const B &b, const X &x, KvlStatus *statuses,
                          detail::ElementOf<A> *conditions = nullptr)
{
    return detail::solve<detail::Cholesky<A>>(a, b, x, statuses, conditions, detail::isSquare(a));
}

/**
 * The x with the least |A*x - b|, rows() >= columns(), by QR factors, which are not kept (Golub and Van Loan, Matrix
 * Computations, 5.3). b has rows() elements, or rows, x columns().
 *
 * kvlErrSingular for a zero on the diagonal of R, for what is not finite, for a solution that the type can't hold; and,
 * if `conditions` is given, for a reciprocal condition number of R, in the 1-norm, below epsilon. The second attempt
 * scales each column, and b, by powers of two.
 */
template <class A, class B, class X>
int leastSquares(const A &a, const B &b, const X &x, KvlStatus *statuses, detail::ElementOf<A> *conditions = nullptr)
{
    return detail::solve<detail::QR<A>>(a, b, x, statuses, conditions, a.columns() <= a.rows());
}

} // namespace each
} // namespace kvlm

#endif
