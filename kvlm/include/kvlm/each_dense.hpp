/**
 * @file each_dense.hpp
 * The second attempt at a system: textbook methods in double on one object, equilibrated by powers of two. Matrices are
 * packed row by row.
 */
#ifndef KVLM_EACH_DENSE_HPP
#define KVLM_EACH_DENSE_HPP

#include "each_block.hpp"

#include <cmath>

namespace kvlm {
namespace each {
namespace detail {

/// The exponent e of the largest magnitude, 2^(e-1) <= max < 2^e; 0 for zeros.
inline int exponentOf(const double *x, int count, int stride = 1)
{
    double largest = 0;
    for (int k = 0; k < count; ++k)
        largest = std::max(largest, std::fabs(x[static_cast<std::ptrdiff_t>(k) * stride]));
    if (largest >= std::numeric_limits<double>::min())
        return static_cast<int>(magnitudeBits(largest) >> 52) - 1022;
    int exponent = 0;
    std::frexp(largest, &exponent);
    return exponent;
}
inline bool areFinite(const double *x, int count)
{
    for (int k = 0; k < count; ++k)
        if (!isFinite(x[k]))
            return false;
    return true;
}
/// x * 2^exponent, rounded once.
inline double shifted(double x, int exponent)
{
    if (exponent < -1022 || exponent > 1023)
        return std::ldexp(x, exponent);
    const std::uint64_t bits = static_cast<std::uint64_t>(exponent + 1023) << 52;
    double factor;
    std::memcpy(&factor, &bits, sizeof(bits));
    return x * factor;
}
inline void scale(double *x, int count, int exponent, int stride = 1)
{
    for (int k = 0; k < count; ++k, x += stride)
        *x = shifted(*x, exponent);
}

/// The exponent of right-hand sides that leaves room for what grows, and for what is small beside the rest.
inline constexpr int exponentOfSides = 400;

/// The same of elements that are divided by 2^exponents.
inline int exponentOf(const double *x, const int *exponents, int count, int stride = 1)
{
    int largest = std::numeric_limits<int>::min();
    for (int k = 0; k < count; ++k, x += stride)
        if (*x != 0)
            largest = std::max(largest, exponentOf(x, 1) - exponents[k]);
    return largest == std::numeric_limits<int>::min() ? 0 : largest;
}

/// Divides x by 2^exponents and all of it by another power of two, to magnitudes of that exponent: returns its own.
inline int normalize(double *x, const int *exponents, int n)
{
    const int up = exponentOf(x, exponents, n) - exponentOfSides;
    for (int k = 0; k < n; ++k)
        x[k] = shifted(x[k], -up - exponents[k]);
    return up;
}

/// Brings rows, then columns, or columns, then rows, to magnitudes in [1/2, 1): a(r, c) was 2^(rows[r] + columns[c])
/// times as large. Both at once: what is large in its column may vanish beside its row.
inline void equilibrate(double *a, int height, int width, int *rows, int *columns, bool columnsFirst = false)
{
    if (columnsFirst)
        for (int c = 0; c < width; ++c)
            columns[c] = exponentOf(a + c, height, width);
    for (int r = 0; r < height; ++r)
        rows[r] = columnsFirst ? exponentOf(a + r * width, columns, width) : exponentOf(a + r * width, width);
    for (int c = 0; c < width; ++c) {
        if (!columnsFirst)
            columns[c] = exponentOf(a + c, rows, height, width);
        for (int r = 0; r < height; ++r)
            a[r * width + c] = shifted(a[r * width + c], -rows[r] - columns[c]);
    }
}
/// Whether columns differ more in size than rows, whose sizes they would hide.
inline bool columnsDifferMore(const double *a, int height, int width)
{
    const auto spread = [a](int count, int step, int length, int stride) {
        int least = std::numeric_limits<int>::max(), most = std::numeric_limits<int>::min();
        for (int k = 0; k < count; ++k) {
            const int exponent = exponentOf(a + k * step, length, stride);
            least = std::min(least, exponent);
            most = std::max(most, exponent);
        }
        return most - least;
    };
    return spread(width, 1, height, width) > spread(height, width, width, 1);
}

/// P*A = L*U by partial pivoting, rows in place, in the form of kvlmLUDecomp (Golub and Van Loan, Matrix Computations,
/// 3.4). False if a pivot is zero.
inline bool factorLU(double *a, int *pivot, int n)
{
    for (int k = 0; k < n; ++k)
        pivot[k] = k;
    for (int k = 0; k < n; ++k) {
        int best = k;
        for (int i = k + 1; i < n; ++i)
            if (std::fabs(a[pivot[i] * n + k]) > std::fabs(a[pivot[best] * n + k]))
                best = i;
        std::swap(pivot[k], pivot[best]);
        const double *top = a + pivot[k] * n;
        if (top[k] == 0)
            return false;
        for (int i = k + 1; i < n; ++i) {
            double *row = a + pivot[i] * n;
            const double factor = row[k] /= top[k];
            for (int j = k + 1; j < n; ++j)
                row[j] -= rounded(factor * top[j]);
        }
    }
    return true;
}
/// x from the factors; x may be b only for a pivot table in natural order.
inline void solveLU(const double *a, const int *pivot, int n, const double *b, double *x)
{
    for (int i = 0; i < n; ++i) {
        x[i] = b[pivot[i]];
        for (int j = 0; j < i; ++j)
            x[i] -= a[pivot[i] * n + j] * x[j];
    }
    for (int i = n - 1; i >= 0; --i) {
        for (int j = i + 1; j < n; ++j)
            x[i] -= a[pivot[i] * n + j] * x[j];
        x[i] /= a[pivot[i] * n + i];
    }
}
/// The inverse from the factors, column by column; `unit` has n elements.
inline void invertLU(const double *a, const int *pivot, int n, double *unit, double *column, double *inverse)
{
    for (int c = 0; c < n; ++c) {
        for (int r = 0; r < n; ++r)
            unit[r] = r == c;
        solveLU(a, pivot, n, unit, column);
        for (int r = 0; r < n; ++r)
            inverse[r * n + c] = column[r];
    }
}

/// L below the diagonal and the reciprocals of its diagonal, as kvlmCholeskyDecomp (Golub and Van Loan, Matrix
/// Computations, 4.2). False if a pivot is not positive.
inline bool factorCholesky(double *a, int n)
{
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) {
            double s = a[i * n + j];
            for (int k = 0; k < j; ++k)
                s -= a[i * n + k] * a[j * n + k];
            if (i == j && !(s > 0))
                return false;
            a[i * n + j] = i == j ? 1 / std::sqrt(s) : s * a[j * n + j];
        }
    return true;
}

/// x from such factors, in place of b.
inline void solveCholesky(const double *a, int n, double *b)
{
    for (int r = 0; r < n; ++r) {
        for (int c = 0; c < r; ++c)
            b[r] -= a[r * n + c] * b[c];
        b[r] *= a[r * n + r];
    }
    for (int r = n - 1; r >= 0; --r) {
        for (int c = r + 1; c < n; ++c)
            b[r] -= a[c * n + r] * b[c];
        b[r] *= a[r * n + r];
    }
}

/// Applies the reflector in column k, its tail below the diagonal, to the columns behind it; q is the square of its
/// length.
inline void reflect(double *a, int k, int height, int width, double q)
{
    for (int j = k + 1; j < width; ++j) {
        double t = a[k * width + j];
        for (int i = k + 1; i < height; ++i)
            t += a[i * width + j] * a[i * width + k];
        t *= -2 / q;
        a[k * width + j] += t;
        for (int i = k + 1; i < height; ++i)
            a[i * width + j] += a[i * width + k] * t;
    }
}
/// R and the tails of the reflectors, as kvlmQRDecomp (Golub and Van Loan, Matrix Computations, 5.2). False if R has a
/// zero on the diagonal.
inline bool factorQR(double *a, int height, int width)
{
    const int reflectors = height > width ? width : width - 1;
    for (int k = 0; k < width; ++k) {
        double *const top = a + k * width;
        if (k == reflectors)
            return top[k] != 0;
        // What cancellation left in a column can be small enough for its squares to vanish.
        const int up = exponentOf(top + k, height - k, width);
        scale(top + k, height - k, -up, width);
        double s = 0;
        for (int i = k; i < height; ++i)
            s += a[i * width + k] * a[i * width + k];
        if (s == 0)
            return false;
        const double root = top[k] > 0 ? std::sqrt(s) : -std::sqrt(s), first = top[k] + root;
        double q = 1;
        for (int i = k + 1; i < height; ++i) {
            const double v = a[i * width + k] /= first;
            q += v * v;
        }
        top[k] = shifted(-root, up);
        reflect(a, k, height, width, q);
    }
    return true;
}
/// The least squares solution stands in b[0] to b[width-1] afterwards.
inline void solveQR(const double *a, int height, int width, double *b)
{
    const int reflectors = height > width ? width : width - 1;
    for (int k = 0; k < reflectors; ++k) {
        double t = b[k], q = 1;
        for (int i = k + 1; i < height; ++i) {
            const double v = a[i * width + k];
            t += b[i] * v;
            q += v * v;
        }
        t *= -2 / q;
        b[k] += t;
        for (int i = k + 1; i < height; ++i)
            b[i] += a[i * width + k] * t;
    }
    for (int i = width - 1; i >= 0; --i) {
        for (int j = i + 1; j < width; ++j)
            b[i] -= a[i * width + j] * b[j];
        b[i] /= a[i * width + i];
    }
}

/// The largest sum of magnitudes of a column.
inline double norm1(const double *a, int n)
{
    double norm = 0;
    for (int c = 0; c < n; ++c) {
        double sum = 0;
        for (int r = 0; r < n; ++r)
            sum += std::fabs(a[r * n + c]);
        norm = std::max(norm, sum);
    }
    return norm;
}
/// 1/(|A|*|A^-1|) in the 1-norm, from the inverse itself: at these orders an estimator (Higham, ACM Algorithm 674,
/// 1988) would need as many solutions. A, of magnitudes near 1, is overwritten; `room` has n*n + 2n elements. 0 if
/// singular.
inline double reciprocalCondition(double *a, int *pivot, int n, double *room)
{
    const double norm = norm1(a, n);
    if (!factorLU(a, pivot, n))
        return 0;
    invertLU(a, pivot, n, room, room + n, room + 2 * n);
    const double condition = norm * norm1(room + 2 * n, n);
    return isFinite(condition) ? 1 / condition : 0;
}

} // namespace detail
} // namespace each
} // namespace kvlm

#endif
