/**
 * @file each_systems.hpp
 * Decompositions, inverses, determinants and solutions of arrays of systems, with a status for each object: see
 * each.hpp.
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
        this->out =
            factors.load(first, objects); // what a Cholesky decomposition leaves alone must stand in a copy, too
        if constexpr (Factor::hasPivots)
            this->pivot = pivots + static_cast<std::ptrdiff_t>(first) * this->n;
    }
    void store(int first, int objects) { factors.store(first, objects); }

private:
    Block<F> factors;
    int *const pivots;
};

/// Factors that stay here, for one right-hand side each.
template <class Factor, class B, class X>
class Solve : public Conditioned<Factor> {
public:
    using typename Factor::T;
    static constexpr KvlStatus failure = Factor::failure;

    template <class A>
    Solve(const A &a, const B &b, const X &x, T *numbers) : Conditioned<Factor>(a, numbers), right(b), solution(x)
    {
        right.avoid(solution);
    }
    int most() const
    {
        return std::max(1, std::min({this->source.most(), right.most(), solution.most(),
                                     factors.capacity / (this->height * this->width)}));
    }
    void load(int start, int objects)
    {
        first = start;
        const int h = this->height, w = this->width;
        this->in = this->source.load(start, objects);
        this->out = packed<T>(factors.get(static_cast<std::size_t>(objects) * h * w), h, w);
        if constexpr (Factor::hasPivots)
            this->pivot = pivots.get(static_cast<std::size_t>(objects) * w);
        b = right.load(start, objects);
        x = solution.open(start, objects);
    }
    void store(int start, int objects) { solution.store(start, objects); }

    bool areGood(int objects)
    {
        this->substitute(b, x, objects);
        return Factor::areGood(objects) && areAllShort(x, objects, this->width, 1, greatest<T>);
    }
    bool isGood(int i) const { return Factor::isGood(i) && isSolved(i); }
    KvlStatus again(int i)
    {
        const int h = this->height, w = this->width;
        double *a, *behind;
        bool isDone = this->read(i, a, behind, h + this->extra());
        for (int r = 0; r < h; ++r)
            behind[r] = b(i, r, 0);
        isDone = isDone && areFinite(behind, h) && this->solveAgain(a, behind, behind + h);
        this->write(x, i, w, 1, [&](int r, int) { return isDone ? behind[r] : notANumber<double>; });
        return isDone && isSolved(i) ? kvlOk : failure;
    }
    void finish(int i, KvlStatus &status)
    {
        if (!this->isRegular(first, i) && status == kvlOk)
            status = kvlErrSingular;
        if (status != kvlOk)
            this->writeNaN(x, i, this->width, 1);
    }

private:
    bool isSolved(int i) const
    {
        bool isFiniteAll = true;
        for (int r = 0; r < this->width; ++r)
            isFiniteAll &= isFinite(x(i, r, 0));
        return isFiniteAll;
    }

    Block<B> right;
    Block<X> solution;
    Strided<const T> b;
    Strided<T> x;
    Room<T> factors;
    Room<int, 256> pivots;
    int first = 0;
};

template <class A, class F>
class Invert : public Conditioned<Source<A>> {
public:
    using typename Source<A>::T;
    static constexpr int lag = 0;
    static constexpr KvlStatus failure = kvlErrSingular;

    Invert(const A &a, const F &inverse, T *numbers) : Conditioned<Source<A>>(a, numbers), destination(inverse)
    {
        this->source.avoid(destination);
    }
    int most() const { return std::min(this->source.most(), destination.most()); }
    void load(int start, int objects)
    {
        first = start;
        this->in = this->source.load(start, objects);
        out = destination.open(start, objects);
    }
    void store(int start, int objects) { destination.store(start, objects); }

    KvlStatus call(int i, int objects)
    {
        if (!isByCofactors())
            return kvlOk;
        T unused[1];
        return callWith(Systems<T>::invert, matrices(this->in.from(i)), std::tuple(unused + 0), matrices(out.from(i)),
                        std::tuple(n, objects));
    }
    void mark(int i) { out(i, n - 1, n - 1) = markOf<T>(); }
    bool isMarked(int i) const { return isMark(out(i, n - 1, n - 1)); }
    bool areGood(int objects) const
    {
        // Products of six such elements are far from any limit.
        constexpr T limit = sizeof(T) == 4 ? T(0x1p36) : T(0x1p320);
        return isByCofactors() && areAllShort(this->in, objects, n, n, limit);
    }
    bool isGood(int i) const
    {
        if (!isByCofactors())
            return false;
        // An overflow in the determinant leaves zeros.
        bool areFinite = true, isThere = false;
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < n; ++c) {
                areFinite &= isFinite(out(i, r, c));
                isThere |= r == 0 && isWithin(out(i, r, c), leastSafe<T>, greatest<T>);
            }
        return areFinite && isThere;
    }
    KvlStatus again(int i)
    {
        double *a, *behind;
        bool isDone = this->read(i, a, behind, n * n + 3 * n);
        int *const rows = this->rowNumbers, *const columns = this->columnNumbers;
        double *const inverse = behind + 2 * n;
        if (isDone) {
            equilibrate(a, n, n, rows, columns);
            int *const table = pivots.get(static_cast<std::size_t>(n));
            isDone = factorLU(a, table, n);
            if (isDone)
                invertLU(a, table, n, behind, behind + n, inverse);
        }
        this->write(out, i, n, n, [&](int r, int c) {
            const double value = isDone ? shifted(inverse[r * n + c], -columns[r] - rows[c]) : notANumber<double>;
            isDone = isDone && isFinite(static_cast<T>(value));
            return value;
        });
        return isDone ? kvlOk : failure;
    }
    void finish(int i, KvlStatus &status)
    {
        if (!this->isRegular(first, i) && status == kvlOk)
            status = failure;
        if (status != kvlOk)
            this->writeNaN(out, i, n, n);
    }

private:
    /// The C functions serve orders 3 to 6; the others they make slowly, and without zeros. Who asks for conditions
    /// gets the inverse that they are taken from.
    bool isByCofactors() const { return 3 <= n && n <= 6 && !this->conditions; }

    Block<F> destination;
    Strided<T> out;
    Room<int, 64> pivots;
    int first = 0;
    const int n = this->width;
};

template <class A>
class Determinant : public Source<A> {
public:
    using typename Source<A>::T;
    static constexpr int lag = 0;

    Determinant(const A &a, T *values) : Source<A>(a), all(values) {}
    void load(int first, int objects)
    {
        this->in = this->source.load(first, objects);
        out = all + first;
    }
    void store(int, int) {}

    KvlStatus call(int i, int objects)
    {
        T unused[1];
        return n < 3 || n > 6 ? kvlOk
                              : callWith(Systems<T>::determinant, matrices(this->in.from(i)),
                                         std::tuple(n, unused + 0, out + i, objects));
    }
    void mark(int) {}
    bool isMarked(int) const { return false; }
    bool areGood(int objects) const
    {
        return forAll(objects, [this](int i) { return isGood(i); });
    }
    bool isGood(int i) const
    {
        // Minors of what gives such a determinant can't have lost anything to underflow or overflow.
        constexpr T least = sizeof(T) == 4 ? T(0x1p-60) : T(0x1p-500);
        return 3 <= n && n <= 6 && isWithin(out[i], least, 1 / least);
    }
    KvlStatus again(int i)
    {
        double *a, *behind;
        const bool isInput = this->read(i, a, behind, 0);
        out[i] = isInput ? static_cast<T>(value(a)) : notANumber<T>;
        return isInput ? kvlOk : kvlErrSingular;
    }

private:
    double value(double *a)
    {
        int *const rows = this->rowNumbers, *const columns = this->columnNumbers;
        equilibrate(a, n, n, rows, columns);
        int exponent = 0;
        for (int k = 0; k < n; ++k)
            exponent += rows[k] + columns[k];
        int *const table = rows;
        if (!factorLU(a, table, n))
            return 0;
        double product = 1;
        for (int k = 0; k < n; ++k) {
            int part;
            product = std::frexp(product * a[table[k] * n + k], &part);
            exponent += part;
        }
        for (int k = 0; k < n; ++k) // the sign of the permutation, which becomes the identity
            while (table[k] != k) {
                std::swap(table[k], table[table[k]]);
                product = -product;
            }
        return shifted(product, exponent);
    }

    T *const all;
    T *out = nullptr;
    const int n = this->width;
};

/// Matrices a with right-hand sides b and solutions x.
template <class Factor, class A, class B, class X>
int solve(const A &a, const B &b, const X &x, KvlStatus *statuses, ElementOf<A> *conditions, bool hasShape)
{
    const bool doFit =
        hasShape && b.size() == a.rows() && x.size() == a.columns() && b.count() == a.count() && x.count() == a.count();
    const KvlStatus status = check(statuses, a.count(), std::min(a.rows(), a.columns()), doFit);
    return status != kvlOk ? status : run(Solve<Factor, B, X>(a, b, x, conditions), statuses);
}

} // namespace detail

/**
 * P*A = L*U by Gaussian elimination with partial pivoting (Golub and Van Loan, Matrix Computations, 3.4), in the form
 * of kvlmLUDecomp, for kvlmLUBackSubst: n ints of `pivots` for each object, no row is moved.
 *
 * A pivot that is zero is kvlErrSingular, whatever the size of the elements; so is an element that is not finite. The
 * table of an object that failed is 0, 1, 2, ... The second attempt is in double, scaled up. |P*A - L*U| is a small
 * multiple of n*epsilon*|A|.
 */
template <class A, class F>
int lu(const A &a, const F &factors, int *pivots, KvlStatus *statuses)
{
    using namespace detail;
    const KvlStatus status = check(statuses && pivots, a.count(), a.rows(), isSquare(a) && isAlike(a, factors));
    return status != kvlOk ? status : run(Decompose<LU<A>, F>(a, factors, pivots), statuses);
}

/**
 * A = L*L' of positive definite matrices (Golub and Van Loan, Matrix Computations, 4.2), in the form of
 * kvlmCholeskyDecomp, for kvlmCholeskyBackSubst: reciprocals on the diagonal. Only what stands on and below the
 * diagonal is read and written.
 *
 * kvlErrNotPositiveDefinite for a pivot that is not positive, in arithmetic that is exact enough to tell: what the C
 * function refuses, or what is tiny or huge, is tried in double with the diagonal scaled to 1. It is also the status of
 * what is not finite.
 */
template <class A, class F>
int cholesky(const A &a, const F &factors, KvlStatus *statuses)
{
    using namespace detail;
    const KvlStatus status = check(statuses, a.count(), a.rows(), isSquare(a) && isAlike(a, factors));
    return status != kvlOk ? status : run(Decompose<Cholesky<A>, F>(a, factors), statuses);
}

/**
 * A = Q*R by Householder reflections, columns() <= rows() (Golub and Van Loan, Matrix Computations, 5.2), in the form
 * of kvlmQRDecomp, for kvlmQRBackSubst.
 *
 * kvlErrSingular only where a zero stands on the diagonal of R, however small the elements are: the second attempt
 * scales each column by a power of two, which R takes back. Column by column |A - Q*R| is a small multiple of
 * n*epsilon times the length of the column of A.
 */
template <class A, class F>
int qr(const A &a, const F &factors, KvlStatus *statuses)
{
    using namespace detail;
    const KvlStatus status = check(statuses, a.count(), a.columns(), a.columns() <= a.rows() && isAlike(a, factors));
    return status != kvlOk ? status : run(Decompose<QR<A>, F>(a, factors), statuses);
}

/**
 * The inverse. Orders 3 to 6 are kvlmInvert's, by cofactors: fast, with an error of a small multiple of
 * n*epsilon*condition for matrices that are not ill-conditioned, of up to that times the condition once more for those
 * that are. All others, and all if `conditions` is given, are by LU factors in double of the matrix with rows and
 * columns scaled by powers of two, which is as exact as the condition allows.
 *
 * `conditions`, if not null, gets 1/(|A|*|A^-1|) in the 1-norm for each object, from that inverse; 0 for a singular
 * one, NaN for what is not finite. Objects below epsilon then count as singular, too.
 *
 * kvlErrSingular for a zero pivot, what is not finite, and an inverse that the type can't hold.
 */
template <class A, class F>
int inverse(const A &a, const F &inverses, KvlStatus *statuses, detail::ElementOf<A> *conditions = nullptr)
{
    using namespace detail;
    const KvlStatus status = check(statuses, a.count(), a.rows(), isSquare(a) && isAlike(a, inverses));
    return status != kvlOk ? status : run(Invert<A, F>(a, inverses, conditions), statuses);
}

/**
 * One determinant for each object, in `values`. A singular matrix has the determinant 0 and status kvlOk, a determinant
 * that the type can't hold is infinite or 0; only what is not finite gets kvlErrSingular, and NaN.
 *
 * Orders 3 to 6 are kvlmDet's, by minors, if the value is far from the limits of the type; all else is by LU factors in
 * double. The error is a small multiple of n*epsilon times the product of the lengths of the rows.
 */
template <class A>
int determinant(const A &a, detail::ElementOf<A> *values, KvlStatus *statuses)
{
    using namespace detail;
    const KvlStatus status = check(statuses && values, a.count(), a.rows(), isSquare(a));
    return status != kvlOk ? status : run(Determinant<A>(a, values), statuses);
}

/**
 * A*x = b by LU factors, which are not kept, one right-hand side for each object. x may be b.
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
 * Computations, 5.3). b has rows() elements, x columns().
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
