/**
 * @file each_general.hpp
 * Eigenproblems of arrays of general matrices, with a status for each object: see each.hpp.
 */
#ifndef KVLM_EACH_GENERAL_HPP
#define KVLM_EACH_GENERAL_HPP

#include "each_factors.hpp"
#include "each_schur.hpp"

namespace kvlm {
namespace each {
namespace detail {

enum class Vectors { none, right, left, both };

/// The C functions of an element type. They work on the transpose of what they are given, and are given transposes.
template <class T>
struct Eigen;
#define KVLM_EACH_EIGEN(T, suffix)                                                                                     \
    template <>                                                                                                        \
    struct Eigen<T> {                                                                                                  \
        static constexpr auto values = kvlmEigenValues_ma_##suffix;                                                    \
        static constexpr auto right = kvlmEigenValuesVectorsRight_ma_##suffix;                                         \
        static constexpr auto left = kvlmEigenValuesVectorsLeft_ma_##suffix;                                           \
        static constexpr auto both = kvlmEigenValuesVectors_ma_##suffix;                                               \
        static constexpr auto multiply = kvlmMul_mama_##suffix;                                                        \
        static constexpr auto multiplyTransposed = kvlmMul_tama_##suffix;                                              \
    };
KVLM_EACH_EIGEN(float, 32f)
KVLM_EACH_EIGEN(double, 64f)
#undef KVLM_EACH_EIGEN

template <class A, class R, class L, Vectors which>
class General {
public:
    using T = ElementOf<A>;
    static constexpr int lag = 0;
    static constexpr bool hasRight = which == Vectors::right || which == Vectors::both;
    static constexpr bool hasLeft = which == Vectors::left || which == Vectors::both;

    General(const A &matrices, const R &toRight, const L &toLeft, T *toRe, T *toIm)
        : n(matrices.rows()), source(matrices), rightVectors(toRight), leftVectors(toLeft), allRe(toRe), allIm(toIm),
          buffer(scratch.get(numberOf(n, 3 * n + 5)))
    {
    }
    int count() const { return source.count(); }
    /// Whole groups, as the C functions form them.
    int most() const
    {
        const int fitting = std::max(1, copies.capacity / (n * n));
        return fitting > 16 ? fitting - fitting % 16 : fitting;
    }
    int work() const { return 4 * n * n + 4 * n; }
    bool isAsked() const { return false; }
    void complete(int) {}
    void finish(int, KvlStatus) {}

    /// Copies that are scaled by powers of two to magnitudes in [1, 2): the C functions have absolute tests.
    void load(int first, int objects)
    {
        const std::size_t elements = numberOf(objects, n, n);
        a = packed(copies.get(elements), n, n);
        right = packed(rights.get(elements), n, n);
        left = packed(lefts.get(elements), n, n);
        const auto in = source.load(first, objects);
        for (int i = 0; i < objects; ++i) {
            decltype(magnitudeBits(T())) largest = 0;
            for (int r = 0; r < n; ++r)
                for (int c = 0; c < n; ++c)
                    largest = std::max(largest, magnitudeBits(in(i, r, c)));
            T size;
            std::memcpy(&size, &largest, sizeof(size));
            powers[i] = Power<T>(size);
            for (int r = 0; r < n; ++r)
                for (int c = 0; c < n; ++c)
                    a(i, r, c) = in(i, r, c) * powers[i].factor;
        }
        re = allRe + static_cast<std::ptrdiff_t>(first) * n;
        im = allIm + static_cast<std::ptrdiff_t>(first) * n;
        for (int i = 0; i < objects; ++i)
            mark(i);
    }
    void store(int first, int objects)
    {
        for (int i = 0; i < objects; ++i)
            for (int k = i * n; k < (i + 1) * n; ++k) {
                // Beside a large imaginary part each of a pair may have a rounding error of its own.
                re[k] = im[k] < 0 ? re[k - 1] : re[k] * powers[i].reciprocal;
                im[k] *= powers[i].reciprocal;
            }
        if constexpr (hasRight)
            copy(right, rightVectors, first, objects);
        if constexpr (hasLeft)
            copy(left, leftVectors, first, objects);
    }

    KvlStatus call(int i, int objects)
    {
        const Strided<T> at = a.from(i);
        const auto transposes = std::tuple<const T *, int, int, int>(at.base, at.object, at.element, at.row);
        const std::tuple results(re + i * n, im + i * n);
        KvlStatus status;
        if constexpr (which == Vectors::none)
            status = callWith(Eigen<T>::values, transposes, results, std::tuple(n, objects, buffer));
        else if constexpr (which == Vectors::right)
            status =
                callWith(Eigen<T>::right, transposes, matrices(right.from(i)), results, std::tuple(n, objects, buffer));
        else if constexpr (which == Vectors::left)
            status =
                callWith(Eigen<T>::left, transposes, matrices(left.from(i)), results, std::tuple(n, objects, buffer));
        else
            status = callWith(Eigen<T>::both, transposes, matrices(right.from(i)), matrices(left.from(i)), results,
                              std::tuple(n, objects, buffer));
        return status == kvlOk && isMarked(i + objects - 1) ? kvlErrSmallPivot : status; // some stop without a word
    }
    void mark(int i) { marked(i) = markOf<T>(); }
    bool isMarked(int i) const { return isMark(marked(i)); }

    bool areGood(int first, int objects)
    {
        // Larger values may be too large when they are scaled back.
        const T most = std::numeric_limits<T>::max() / static_cast<T>(4 * n);
        if (!forAll(objects, [&](int i) { return powers[first + i].reciprocal <= most; }))
            return false;
        if constexpr (which == Vectors::none)
            return forAll(objects, [&](int i) { return haveTraces(first + i); });
        else
            return (!hasRight || haveVectors(right, first, objects, false)) &&
                   (!hasLeft || haveVectors(left, first, objects, true));
    }
    KvlStatus again(int i)
    {
        const std::size_t square = numberOf(n, n);
        double *const t = reals.get(2 * square + numberOf(3, n)), *const z = t + square, *const values = z + square;
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < n; ++c)
                t[r * n + c] = a(i, r, c);
        Schur schur(n, t, which == Vectors::none ? nullptr : z, values + 2 * n);
        bool isDone = areFinite(t, n * n) && schur.solve(values, values + n);
        for (int k = 0; isDone && k < 2 * n; ++k)
            isDone = isFinite(static_cast<T>(values[k]) * powers[i].reciprocal);
        for (int k = 0; k < n; ++k) {
            re[i * n + k] = isDone ? static_cast<T>(values[k]) : notANumber<T>;
            im[i * n + k] = isDone ? static_cast<T>(values[n + k]) : notANumber<T>;
        }
        if constexpr (which != Vectors::none) {
            Schur::Complex *const c = complexes.get(2 * square + numberOf(2, n)), *const u = c + square,
                                  *const x = u + square;
            if (isDone)
                schur.makeComplex(values + n, c, u);
            for (int k = 0; k < n; ++k) {
                const bool isPair = isDone && values[n + k] > 0;
                for (const bool isLeft : {false, true})
                    if (isLeft ? hasLeft : hasRight) {
                        if (isDone)
                            schur.vector(isLeft, k, !isPair, c, u, x, x + n);
                        write(isLeft ? left : right, i, k, isPair, isDone ? x : nullptr);
                    }
                k += isPair;
            }
        }
        return isDone ? kvlOk : kvlErrNoConvergence;
    }

private:
    T &marked(int i) const
    {
        if constexpr (which == Vectors::none)
            return re[i * n];
        else
            return hasRight ? right(i, 0, 0) : left(i, 0, 0);
    }
    template <class To>
    void copy(const Strided<T> &from, Block<To> &block, int first, int objects)
    {
        for (int start = 0; start < objects; start += block.most()) {
            const int part = std::min(block.most(), objects - start);
            const auto to = block.open(first + start, part);
            for (int i = 0; i < part; ++i)
                for (int r = 0; r < n; ++r)
                    for (int c = 0; c < n; ++c)
                        to(i, r, c) = from(start + i, r, c);
            block.store(first + start, part);
        }
    }
    void write(const Strided<T> &to, int i, int k, bool isPair, const Schur::Complex *x) const
    {
        for (int r = 0; r < n; ++r) {
            to(i, r, k) = x ? static_cast<T>(x[r].real()) : notANumber<T>;
            if (isPair)
                to(i, r, k + 1) = static_cast<T>(x[r].imag());
        }
    }

    /// Sums of the values and of their squares must be the traces of A and A*A. That doesn't see a block whose values
    /// nearly meet: they count as not good.
    bool haveTraces(int i) const
    {
        const T *const m = a.base + i * n * n, *const x = re + i * n, *const y = im + i * n;
        T sum = 0, sumOfSquares = 0, norm = 0, nearest = std::numeric_limits<T>::max();
        for (int r = 0; r < n; ++r) {
            sum -= m[r * n + r];
            for (int c = 0; c < n; ++c) {
                sumOfSquares -= m[r * n + c] * m[c * n + r];
                norm += m[r * n + c] * m[r * n + c];
            }
        }
        for (int k = 0; k < n; ++k) {
            sum += x[k];
            sumOfSquares += x[k] * x[k] - y[k] * y[k];
            for (int j = 0; j < k; ++j)
                nearest = std::min(nearest, (x[k] - x[j]) * (x[k] - x[j]) + (y[k] - y[j]) * (y[k] - y[j]));
        }
        const T tolerance = static_cast<T>(8 * n) * std::numeric_limits<T>::epsilon();
        return isFinite(sumOfSquares) && sum * sum <= tolerance * tolerance * norm &&
               std::fabs(sumOfSquares) <= tolerance * norm && nearest > 4 * tolerance * norm;
    }
    /// Whether A*X - X*W, or its like from the left, is small, and all vectors have length 1.
    bool haveVectors(const Strided<T> &vectors, int first, int objects, bool isLeft)
    {
        const Strided<T> product = packed(products.get(numberOf(objects, n, n)), n, n);
        // Single objects never go to a team, which these calls would be worth by themselves.
        const int atOnce = threads_omp_of_n_kvl > 1 ? 1 : objects;
        for (int i = 0; i < objects; i += atOnce)
            callWith(isLeft ? Eigen<T>::multiplyTransposed : Eigen<T>::multiply, matrices(a.from(first + i)),
                     std::tuple(n, n), matrices(vectors.from(first + i)), std::tuple(n, n), matrices(product.from(i)),
                     std::tuple(atOnce));
        return forAll(objects, [&](int i) {
            return haveVectors(product.base + i * n * n, vectors.base + (first + i) * n * n, first + i, isLeft);
        });
    }
    bool haveVectors(const T *product, const T *x, int i, bool isLeft) const
    {
        const T *const m = a.base + i * n * n, *const w = re + i * n;
        T norm = 0, residual = 0, length = 0;
        int lengths = n;
        for (int k = 0; k < n; ++k) {
            // The other column of a pair.
            const T y = im[i * n + k], sign = isLeft ? -y : y;
            const int other = y > 0 ? k + 1 : y < 0 ? k - 1 : k;
            lengths -= y > 0;
            for (int at = k; at < n * n; at += n) {
                const T rest = product[at] - w[k] * x[at] + sign * x[at - k + other];
                residual += rest * rest;
                length += x[at] * x[at];
                norm += m[at] * m[at];
            }
        }
        const T tolerance = static_cast<T>(4 * n) * std::numeric_limits<T>::epsilon();
        return isFinite(residual) && residual <= tolerance * tolerance * norm &&
               std::fabs(length - static_cast<T>(lengths)) < T(0.01);
    }

    const int n;
    Block<A> source;
    Block<R> rightVectors;
    Block<L> leftVectors;
    T *const allRe, *const allIm;
    T *re = nullptr, *im = nullptr;
    Strided<T> a, right, left;
    Room<T> copies, rights, lefts, products;
    Power<T> powers[1024];
    Room<T, 256> scratch;
    T *const buffer;
    Room<double, 128> reals;
    Room<Schur::Complex, 128> complexes;
};

template <Vectors which, class A, class R, class L, class T>
int general(const A &a, const R &right, const L &left, T *re, T *im, KvlStatus *statuses)
{
    const KvlStatus status = check(re && im && statuses && isThere(a) && isThere(right) && isThere(left), a.count(),
                                   a.rows(), isSquare(a) && isAlike(a, right) && isAlike(a, left));
    return status != kvlOk ? status : run(General<A, R, L, which>(a, right, left, re, im), statuses);
}

} // namespace detail

/**
 * Eigenvalues of general matrices: real and imaginary parts, n adjacent elements each for an object. Complex pairs
 * stand side by side, the positive imaginary part first; there is no other order.
 *
 * Any finite matrix has its values; only what is not finite, or has a value that the type can't hold, gets
 * kvlErrNoConvergence. They are those of a matrix A + E
 * with |E| a small multiple of n*epsilon*|A|, as LAPACK's geev gives them, and real pairs are real.
 *
 * By kvlmEigenValues on copies that are scaled by powers of two. What it leaves must have the traces of A and A*A and
 * no two values that nearly meet; anything else is done again in double, by Hessenberg reduction and double-step QR
 * sweeps with a small sub-diagonal counting beside the norm (Golub and Van Loan, Matrix Computations, 7.5; EISPACK's
 * hqr2, LAPACK's lahqr for the shifts).
 */
template <class A>
int eigenvalues(const A &a, detail::ElementOf<A> *re, detail::ElementOf<A> *im, KvlStatus *statuses)
{
    return detail::general<detail::Vectors::none>(a, a, a, re, im, statuses);
}
/**
 * The same with right vectors, A*x = w*x, of Euclidean length 1: of a real value at k, column k of `right`; of a pair
 * at k and k + 1, x = u + i*v belongs to the value at k, with u in column k and v in column k + 1. (The C functions
 * call these left vectors.) `right` may be a. Of a pair whose imaginary parts are too small for the type, and zeros,
 * the columns are those of the pair still.
 *
 * By kvlmEigenValuesVectorsRight and its like. |A*x - w*x| of all vectors together must be below 4*n*epsilon*|A|;
 * anything else is done again in double, with vectors by back substitution in the complex Schur form (Golub and Van
 * Loan, 7.6.4).
 */
template <class A, class R>
int eigenvectors(const A &a, const R &right, detail::ElementOf<A> *re, detail::ElementOf<A> *im, KvlStatus *statuses)
{
    return detail::general<detail::Vectors::right>(a, right, right, re, im, statuses);
}
/** With left vectors, y^H*A = w*y^H, stored in the same way. */
template <class A, class L>
int leftEigenvectors(const A &a, const L &left, detail::ElementOf<A> *re, detail::ElementOf<A> *im, KvlStatus *statuses)
{
    return detail::general<detail::Vectors::left>(a, left, left, re, im, statuses);
}
/** With both. `right` and `left` must not overlap. */
template <class A, class R, class L>
int eigenvectors(const A &a, const R &right, const L &left, detail::ElementOf<A> *re, detail::ElementOf<A> *im,
                 KvlStatus *statuses)
{
    return detail::general<detail::Vectors::both>(a, right, left, re, im, statuses);
}

} // namespace each
} // namespace kvlm

#endif
