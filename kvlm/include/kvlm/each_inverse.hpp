/**
 * @file each_inverse.hpp
 * Inverses and determinants of arrays of matrices, with a status for each object: see each.hpp.
 */
#ifndef KVLM_EACH_INVERSE_HPP
#define KVLM_EACH_INVERSE_HPP

#include "each_factors.hpp"

namespace kvlm {
namespace each {
namespace detail {

/// Products of six elements whose squares have a sum up to this are far from any limit.
template <class T>
constexpr T mostSquares = sizeof(T) == 4 ? T(0x1p36) : T(0x1p320);
/// The same for an inverse: the lengths of a row of the matrix and of the column of its inverse have a product of at
/// least 1, as have those of a column and a row. So six rows or columns have a product that is a normal number.
template <class T>
constexpr T mostInverseSquares = sizeof(T) == 4 ? T(0x1p40) : T(0x1p340);

/// The same for their product, of what is far from singular to working precision: 1/16 of what singular matrices get,
/// by rounding errors, in place of infinity.
template <class T>
constexpr T mostProducts = 1 / (256 * std::numeric_limits<T>::epsilon() * std::numeric_limits<T>::epsilon());

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
        if (n == 2)
            return invertTwo(this->in.from(i), out.from(i), objects), kvlOk;
        T unused[1];
        return callWith(Systems<T>::invert, matrices(this->in.from(i)), std::tuple(unused + 0), matrices(out.from(i)),
                        std::tuple(n, objects));
    }
    void mark(int i) { out(i, n - 1, n - 1) = markOf<T>(); }
    bool isMarked(int i) const { return isMark(out(i, n - 1, n - 1)); }
    bool areGood(int i, int objects) const
    {
        if (!isByCofactors())
            return false;
        const T matrix = sumOfSquares(this->in, i, objects, n, n), inverse = sumOfSquares(out, i, objects, n, n);
        return isWithin(matrix, T(0), mostSquares<T>) && isWithin(inverse, T(0), mostInverseSquares<T>) &&
               matrix * inverse <= mostProducts<T>;
    }
    KvlStatus again(int i)
    {
        double *a, *behind;
        const int more = n * n + 3 * n;
        bool isDone = this->read(i, a, behind, more);
        if (isDone) {
            const bool columnsFirst = columnsDifferMore(a, n, n);
            isDone = invertScaled(a, behind, columnsFirst);
            if (!isDone) {
                this->read(i, a, behind, more);
                isDone = invertScaled(a, behind, !columnsFirst);
            }
        }
        const double *const inverse = behind + 2 * n;
        const int *const rows = this->rowNumbers, *const columns = this->columnNumbers;
        return this->finishWrite(out, i, isDone,
                                 [&](int r, int c) { return shifted(inverse[r * n + c], -columns[r] - rows[c]); })
                   ? kvlOk
                   : failure;
    }
    void finish(int i, KvlStatus &status)
    {
        if (!this->isRegular(first, i) && status == kvlOk)
            status = failure;
        if (status != kvlOk)
            this->writeNaN(out, i, n, n);
    }

private:
    /// The C functions serve orders 3 to 6; larger ones they make slowly, and without zeros. Who asks for conditions
    /// gets the inverse that they are taken from.
    bool isByCofactors() const { return 2 <= n && n <= 6 && !this->conditions; }
    /// The inverse of the scaled matrix, behind two vectors. False if it is singular, to working precision.
    bool invertScaled(double *a, double *behind, bool columnsFirst)
    {
        double *const inverse = behind + 2 * n;
        equilibrate(a, n, n, this->rowNumbers, this->columnNumbers, columnsFirst);
        const double size = squares(a, numberOf(n, n));
        int *const table = pivots.get(numberOf(n));
        if (!factorLU(a, table, n))
            return false;
        invertLU(a, table, n, behind, behind + n, inverse);
        // A pivot that is a rounding error stands for zero.
        constexpr double most = 1 / std::numeric_limits<double>::epsilon();
        return size * squares(inverse, numberOf(n, n)) <= most * most;
    }

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
        if (3 <= n && n <= 6)
            return callWith(Systems<T>::determinant, matrices(this->in.from(i)),
                            std::tuple(n, unused + 0, out + i, objects));
        if (n == 2)
            for (int k = i; k < i + objects; ++k)
                out[k] = static_cast<T>(determinantOfTwo(this->in, k));
        return kvlOk;
    }
    void mark(int i) { out[i] = markOf<T>(); }
    bool isMarked(int i) const { return isMark(out[i]); }
    bool areGood(int i, int objects) const
    {
        // Minors of what gives such a determinant, and is short, can't have lost much to underflow or overflow.
        constexpr T least = sizeof(T) == 4 ? T(0x1p-40) : T(0x1p-400);
        return 2 <= n && n <= 6 && areMiddling(out + i, numberOf(objects), least) &&
               areBounded(this->in, i, objects, n, n, mostSquares<T>);
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

} // namespace detail

/**
 * The inverse. Orders 2 to 6 are by cofactors, those from 3 on kvlmInvert's, fast, with an error of a small multiple of
 * n*epsilon*condition for matrices that are not ill-conditioned; for those that are it grows with the square of the
 * condition. By cofactors the condition is that of the matrix with rows and columns of like sizes; floats of order 5
 * and 6 whose elements are adjacent are inverted by blocks, with a pivot from the first row alone, where it is the
 * condition of the matrix as it is. What products of n elements could underflow or overflow in, what has a product
 * |A|*|A^-1| above 1/(16*epsilon) in the Frobenius norm, all other orders, and all if `conditions` is given, are by LU
 * factors in double of the matrix with rows and columns scaled by powers of two, which is as exact as the condition
 * allows.
 *
 * `conditions`, if not null, gets 1/(|A|*|A^-1|) in the 1-norm for each object, from that inverse; 0 for a singular
 * one, NaN for what is not finite. Objects below epsilon then count as singular, too.
 *
 * kvlErrSingular for a zero pivot, for |A|*|A^-1| of the scaled matrix above 1/epsilon of double, as what is singular
 * gets by rounding errors, for what is not finite, and for an inverse that the type can't hold.
 */
template <class A, class F>
int invert(const A &a, const F &inverses, KvlStatus *statuses, detail::ElementOf<A> *conditions = nullptr)
{
    using namespace detail;
    const KvlStatus status =
        check(statuses && isThere(a) && isThere(inverses), a.count(), a.rows(), isSquare(a) && isAlike(a, inverses));
    return status != kvlOk ? status : run(Invert<A, F>(a, inverses, conditions), statuses);
}

/**
 * One determinant for each object, in `values`. The determinant of a singular matrix is of the size of the rounding
 * error, with status kvlOk; one that the type can't hold is infinite or 0; only what is not finite gets kvlErrSingular,
 * and NaN.
 *
 * Orders 2 to 6 are by minors, those from 3 on kvlmDet's, if the value is far from the limits of the type; all else is
 * by LU factors in double. The error is a small multiple of n*epsilon times the product of the lengths of the rows.
 */
template <class A>
int determinant(const A &a, detail::ElementOf<A> *values, KvlStatus *statuses)
{
    using namespace detail;
    const KvlStatus status = check(statuses && values && isThere(a), a.count(), a.rows(), isSquare(a));
    return status != kvlOk ? status : run(Determinant<A>(a, values), statuses);
}

} // namespace each
} // namespace kvlm

#endif
