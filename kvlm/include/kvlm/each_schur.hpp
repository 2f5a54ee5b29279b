/**
 * @file each_schur.hpp
 * The second attempt at a general eigenproblem: the real Schur form in double, and vectors from its complex form.
 */
#ifndef KVLM_EACH_SCHUR_HPP
#define KVLM_EACH_SCHUR_HPP

#include "each_dense.hpp"

#include <complex>

namespace kvlm {
namespace each {
namespace detail {

/// Eigenvalues and vectors of one matrix of order n, magnitudes about 1, packed row by row. Memory is the caller's.
class Schur {
public:
    using Complex = std::complex<double>;

    /// The matrix is overwritten; the basis has room for n*n elements, or is null if no vectors are wanted; the
    /// reflector has room for n.
    Schur(int order, double *matrix, double *basis, double *reflector) : n(order), t(matrix), z(basis), v(reflector) {}

    /// The values, pairs side by side with the positive imaginary part first. False if the limit of sweeps is met.
    bool solve(double *re, double *im)
    {
        if (z) {
            std::fill_n(z, n * n, 0.0);
            for (int i = 0; i < n; ++i)
                z[i * n + i] = 1;
        }
        for (int k = 0; k + 2 < n; ++k)
            reduce(k);
        double norm = 0;
        for (int k = 0; k < n * n; ++k)
            norm = std::max(norm, std::fabs(t[k]));
        int sweeps = 0;
        for (int high = n - 1; high >= 0;) {
            int low = high;
            for (; low > 0; --low) {
                if (!(std::fabs(at(low, low - 1)) > epsilon * norm)) {
                    at(low, low - 1) = 0;
                    break;
                }
            }
            if (low >= high - 1) {
                if (low == high) {
                    re[high] = at(high, high);
                    im[high] = 0;
                } else {
                    resolve(low, re + low, im + low);
                }
                high = low - 1;
                sweeps = 0;
            } else {
                if (++sweeps > 300)
                    return false;
                sweep(low, high, sweeps % 10 == 0);
            }
        }
        return true;
    }

    /// Turns the Schur form into a complex triangular one, u*t*u^H; c and u have room for n*n elements each.
    void makeComplex(const double *im, Complex *c, Complex *u)
    {
        std::copy_n(t, n * n, c);
        std::copy_n(z, n * n, u);
        for (int k = 0; k + 1 < n; ++k) {
            if (im[k] <= 0)
                continue;
            const double half = (at(k, k) - at(k + 1, k + 1)) / 2, below = at(k + 1, k);
            const Complex x(half, im[k]);
            const double length = std::hypot(std::abs(x), below);
            const Complex cosine = x / length, sine = below / length;
            for (int j = k; j < n; ++j)
                turn(c[k * n + j], c[(k + 1) * n + j], std::conj(cosine), sine, -sine, cosine);
            for (int i = 0; i < n; ++i) {
                if (i < k + 2)
                    turn(c[i * n + k], c[i * n + k + 1], cosine, sine, -sine, std::conj(cosine));
                turn(u[i * n + k], u[i * n + k + 1], cosine, sine, -sine, std::conj(cosine));
            }
            c[(k + 1) * n + k] = 0;
        }
    }

    /// Vector j of unit length, its largest element real: A*x = w*x, or y^H*A = w*y^H. x and room have n elements. The
    /// vector of a real value is real.
    void vector(bool isLeft, int j, bool isReal, const Complex *c, const Complex *u, Complex *x, Complex *room) const
    {
        double norm = 0;
        for (int k = 0; k < n * n; ++k)
            norm = std::max(norm, std::abs(c[k]));
        const double least = std::max(epsilon * norm, std::numeric_limits<double>::min());
        std::fill_n(room, n, Complex(0));
        room[j] = 1;
        const int step = isLeft ? 1 : -1;
        for (int i = j + step; 0 <= i && i < n; i += step) {
            Complex sum = 0, divisor = c[i * n + i] - c[j * n + j];
            for (int k = j; k != i; k += step)
                sum += room[k] * (isLeft ? c[k * n + i] : c[i * n + k]);
            if (std::abs(divisor) < least)
                divisor = least;
            room[i] = -sum / divisor;
            const double size = std::abs(room[i]);
            if (size > 1e100)
                for (int k = 0; k < n; ++k)
                    room[k] /= size;
        }
        Complex largest = 0;
        for (int i = 0; i < n; ++i) {
            x[i] = 0;
            for (int k = 0; k < n; ++k)
                x[i] += u[i * n + k] * (isLeft ? std::conj(room[k]) : room[k]);
            if (std::norm(x[i]) > std::norm(largest))
                largest = x[i];
        }
        double squares = 0;
        for (int i = 0; i < n; ++i) {
            x[i] *= std::conj(largest) / std::norm(largest);
            if (isReal)
                x[i] = x[i].real();
            squares += std::norm(x[i]);
        }
        for (int i = 0; i < n; ++i)
            x[i] /= std::sqrt(squares);
    }

private:
    static constexpr double epsilon = std::numeric_limits<double>::epsilon();

    double &at(int r, int c) { return t[r * n + c]; }

    static void turn(Complex &x, Complex &y, Complex xx, Complex xy, Complex yx, Complex yy)
    {
        const Complex old = x;
        x = xx * old + xy * y;
        y = yx * old + yy * y;
    }

    /// Turns v, of `length` elements, into that of the reflector I - factor*v*v' which maps it to (beta, 0, ...).
    double reflector(int length, double &beta)
    {
        // Squares of what is left of a column may vanish, or their reciprocals overflow.
        const int up = exponentOf(v, length);
        scale(v, length, -up);
        double tail = 0;
        for (int i = 1; i < length; ++i)
            tail += v[i] * v[i];
        const double first = v[0], root = std::sqrt(first * first + tail);
        const double turned = tail > 0 ? std::copysign(root, -first) : first;
        beta = shifted(turned, up);
        v[0] = first - turned;
        return tail > 0 ? 1 / (turned * (turned - first)) : 0;
    }
    /// Applies it from both sides, to rows k to k + length - 1 from column `left` on, to columns down to row bottom
    /// - 1.
    void apply(double factor, int length, int k, int left, int bottom)
    {
        for (int j = left; j < n; ++j) {
            double s = 0;
            for (int i = 0; i < length; ++i)
                s += v[i] * at(k + i, j);
            s *= factor;
            for (int i = 0; i < length; ++i)
                at(k + i, j) -= s * v[i];
        }
        applyRight(t, bottom, factor, length, k);
        if (z)
            applyRight(z, n, factor, length, k);
    }
    void applyRight(double *matrix, int rows, double factor, int length, int k)
    {
        for (int r = 0; r < rows; ++r) {
            double *const row = matrix + r * n + k;
            double s = 0;
            for (int i = 0; i < length; ++i)
                s += v[i] * row[i];
            s *= factor;
            for (int i = 0; i < length; ++i)
                row[i] -= s * v[i];
        }
    }

    /// A step of the reduction to Hessenberg form (Golub and Van Loan, Matrix Computations, 7.4.3).
    void reduce(int k)
    {
        for (int i = k + 1; i < n; ++i)
            v[i - k - 1] = at(i, k);
        double beta;
        const double factor = reflector(n - k - 1, beta);
        apply(factor, n - k - 1, k + 1, k + 1, n);
        at(k + 1, k) = beta;
        for (int i = k + 2; i < n; ++i)
            at(i, k) = 0;
    }

    /// A double-step QR sweep with implicit shifts (Golub and Van Loan, 7.5; EISPACK's hqr2).
    void sweep(int low, int high, bool isExceptional)
    {
        // The shifts are x + sqrt(w) and x - sqrt(w).
        const double corner = at(high, high), half = (at(high - 1, high - 1) - corner) / 2;
        double x = corner + half, w = half * half + at(high, high - 1) * at(high - 1, high);
        if (isExceptional) {
            const double s = std::fabs(at(high, high - 1)) + std::fabs(at(high - 1, high - 2));
            x = corner + 0.75 * s;
            w = -0.4375 * s * s;
        } else if (w > 0) { // real: twice the one that is nearer to the corner
            const double far = half + std::copysign(std::sqrt(w), half);
            x = corner - at(high, high - 1) * at(high - 1, high) / far;
            w = 0;
        }
        // It may start at two small elements in a row: beyond them rounding would take its toll of the shifts.
        int start = high - 2;
        for (;; --start) {
            const double top = at(start, start), below = at(start + 1, start), next = at(start + 1, start + 1);
            v[0] = (top - x) * (top - x) - w + at(start, start + 1) * below;
            v[1] = below * (top - x + (next - x));
            v[2] = below * at(start + 2, start + 1);
            if (start == low)
                break;
            const double beside = std::fabs(at(start - 1, start - 1)) + std::fabs(top) + std::fabs(next);
            if (std::fabs(at(start, start - 1)) * (std::fabs(v[1]) + std::fabs(v[2])) <=
                epsilon * beside * std::fabs(v[0]))
                break;
        }
        for (int k = start; k < high; ++k) {
            const int length = std::min(3, high - k + 1);
            if (k > start)
                for (int i = 0; i < length; ++i)
                    v[i] = at(k + i, k - 1);
            double beta;
            const double factor = reflector(length, beta);
            apply(factor, length, k, k, std::min(k + 4, high + 1));
            if (k > start) {
                at(k, k - 1) = beta;
                for (int i = 1; i < length; ++i)
                    at(k + i, k - 1) = 0;
            } else if (k > low) {
                at(k, k - 1) *= 1 - factor * v[0] * v[0];
            }
        }
    }

    /// The values of the 2 x 2 block at k; it becomes triangular if they are real.
    void resolve(int k, double *re, double *im)
    {
        const double a = at(k, k), b = at(k, k + 1), c = at(k + 1, k), d = at(k + 1, k + 1);
        const double half = (a - d) / 2, square = half * half + b * c;
        if (square < 0) {
            re[0] = re[1] = (a + d) / 2;
            im[0] = std::sqrt(-square);
            im[1] = -im[0];
            return;
        }
        const double far = half + std::copysign(std::sqrt(square), half), length = std::hypot(far, c);
        const double cosine = far / length, sine = c / length;
        for (int j = k; j < n; ++j)
            turn(at(k, j), at(k + 1, j), cosine, sine);
        for (int i = 0; i < k + 2; ++i)
            turn(at(i, k), at(i, k + 1), cosine, sine);
        if (z)
            for (int i = 0; i < n; ++i)
                turn(z[i * n + k], z[i * n + k + 1], cosine, sine);
        at(k, k) = re[0] = d + far;
        at(k + 1, k + 1) = re[1] = far != 0 ? d - b * c / far : d;
        at(k + 1, k) = 0;
        im[0] = im[1] = 0;
    }
    static void turn(double &x, double &y, double cosine, double sine)
    {
        const double old = x;
        x = cosine * old + sine * y;
        y = cosine * y - sine * old;
    }

    const int n;
    double *const t, *const z, *const v;
};

} // namespace detail
} // namespace each
} // namespace kvlm

#endif
