// The QR iteration: double-step sweeps with implicit shifts over the active block of a Hessenberg matrix, which fall
// apart into 1 x 1 and 2 x 2 blocks (Golub and Van Loan, Matrix Computations, 7.5; LAPACK's lahqr).
#ifndef KVLMEIGEN_SCHUR_H
#define KVLMEIGEN_SCHUR_H

#include "kvlmeigen_block.h"

namespace kvlm::eigen {

// The eigenvalues alone, or, with HasSchur, also the Schur form in h and its vectors in q, which is the reflections
// before and lies right behind h. Matrix is Columns, or one object of a group.
template <class Matrix, bool HasSchur>
class QRIteration {
    using T = typename Matrix::Element;
    using Order = std::remove_const_t<decltype(Matrix::n)>;

public:
    static constexpr T epsilon = unitRoundoff<T>;
    static KVLM_INLINE constexpr T leastBound(int n) { return static_cast<T>(n) * (smallestNormal<T> / epsilon); }

    KVLM_INLINE QRIteration(Matrix h, Matrix q, T *re, T *im)
        : n(h.n), h(h), q(q), re(re), im(im), sweepsLeft(sweepsPerRow * int(n)), bottom(n - 1)
    {
    }

    // False if the sweeps do not suffice: what is resolved then stands in re and im.
    KVLM_INLINE bool run()
    {
        while (advance()) {
            sweep();
            if (++sweeps >= sweepsLeft)
                return false;
        }
        return true;
    }

    // Resolves blocks until one needs a sweep; false if none is left.
    KVLM_INLINE bool advance()
    {
        while (bottom >= 0) {
            deflate();
            if (top < bottom - 1)
                return true;
            resolve();
            sweepsLeft -= sweeps;
            sweeps = 0;
            bottom = top - 1;
            // Settled: until then the search of one sweep goes no further up than that of the sweep before.
            top = 0;
        }
        return false;
    }

private:
    static constexpr int sweepsPerRow = 30;

    // Moves top down to the block that ends at bottom.
    KVLM_INLINE void deflate()
    {
        int k = bottom;
        while (k > top && magnitude(h(k, k - 1)) > bound(k))
            --k;
        top = k;
        if (top > 0)
            h(top, top - 1) = 0;
    }

    // Settled: for the eigenvalues alone absolute, with the vectors relative to the neighbours on the diagonal.
    KVLM_INLINE T bound(int k) const
    {
        if constexpr (HasSchur) {
            T size = magnitude(h(k - 1, k - 1)) + magnitude(h(k, k));
            if (!(size > smallestNormal<T>))
                blockNorm(h.column(top) + top * h.step, h.step, int(n), top, bottom, size);
            const T relative = size * epsilon, least = leastBound(n);
            return relative > least ? relative : least;
        } else
            return epsilon;
    }

    // Settled: column j is counted from that of `top` and j + 1 long, where from 0 was meant; so for top > 0 it runs
    // into what lies behind h.
    static KVLM_NOINLINE void blockNorm(const T *corner, int step, int n, int top, int bottom, T &norm)
    {
        norm = 0;
        for (int j = top; j <= bottom; ++j) {
            const T *const x = corner + static_cast<ptrdiff_t>(j) * n * step;
            T sum = 0;
            for (int i = 0; i <= j; ++i)
                sum += magnitude(x[i * step]);
            norm = sum > norm ? sum : norm;
        }
    }

    struct Shifts {
        T h44, h33, product;
    };

    KVLM_INLINE Shifts shifts() const
    {
        const int i = bottom;
        T h44 = h(i, i);
        if (sweeps == 10 || sweeps == 20) {
            const T s = magnitude(h(i, i - 1)) + magnitude(h(i - 1, i - 2));
            h44 = T(0.75) * s + h44;
            return {h44, h44, (T(-0.4375) * s) * s};
        }
        const T h33 = h(i - 1, i - 1), product = h(i, i - 1) * h(i - 1, i);
        const T half = T(0.5) * (h33 - h44), discriminant = half * half + product;
        if (!(discriminant > 0))
            return {h44, h33, product};
        const T root = squareRoot(discriminant), mean = T(0.5) * (h44 + h33);
        const T far = mean + (mean >= 0 ? root : -root);
        h44 = magnitude(h33) > magnitude(h44) ? (h33 * h44 - product) / far : far;
        return {h44, h44, 0};
    }

    // The row at which two small sub-diagonal elements let a sweep begin, and the column that it begins with.
    KVLM_INLINE int start(const Shifts &shift, T (&v)[3]) const
    {
        using Wide = double;
        for (int m = bottom - 2;; --m) {
            const T h11 = h(m, m), h22 = h(m + 1, m + 1), a = shift.h44 - h11, b = shift.h33 - h11;
            const T v1 = (b * a - shift.product) / h(m + 1, m) + h(m, m + 1), v2 = h22 - h11 - a - b,
                    v3 = h(m + 2, m + 1);
            const T s = static_cast<T>(magnitude(Wide(v1)) + magnitude(Wide(v2)) + magnitude(Wide(v3)));
            v[0] = v1 / s;
            v[1] = v2 / s;
            v[2] = v3 / s;
            if (m == top)
                return m;
            const Wide small = magnitude(Wide(h(m, m - 1))) * (magnitude(Wide(v[1])) + magnitude(Wide(v[2])));
            const T around =
                static_cast<T>(magnitude(Wide(h11)) + magnitude(Wide(h22)) + magnitude(Wide(h(m - 1, m - 1))));
            if (!(small > Wide((magnitude(v[0]) * around) * epsilon)))
                return m;
        }
    }

    KVLM_INLINE void sweep()
    {
        T v[3];
        const int first = start(shifts(), v);
        for (int k = first; k < bottom - 1; ++k) {
            if (k > first) {
                v[0] = h(k, k - 1);
                v[1] = h(k + 1, k - 1);
                v[2] = h(k + 2, k - 1);
            }
            const T tau = makeReflector(v[0], v + 1, Fixed<2>());
            if (k > first) {
                h(k, k - 1) = v[0];
                h(k + 1, k - 1) = 0;
                h(k + 2, k - 1) = 0;
            } else if (k > top)
                h(k, k - 1) = -h(k, k - 1);
            reflectThree(k, v[1], v[2], tau);
        }
        const int k = bottom - 1;
        v[0] = h(k, k - 1);
        v[1] = h(k + 1, k - 1);
        const T tau = makeReflector(v[0], v + 1, Fixed<1>());
        h(k, k - 1) = v[0];
        h(k + 1, k - 1) = 0;
        reflectTwo(k, v[1], tau);
    }

    // The rows and columns that a step reaches: with HasSchur to the borders of the matrix.
    KVLM_INLINE int firstRow() const { return HasSchur ? 0 : top; }
    KVLM_INLINE int lastColumn() const { return HasSchur ? int(n) - 1 : bottom; }

    // By I - t1*v*v', v = (1, v2, v3), in rows and columns k to k + 2.
    KVLM_INLINE void reflectThree(int k, T v2, T v3, T t1)
    {
        const T t2 = t1 * v2, t3 = t1 * v3;
        const auto turn = [&](T &x, T &y, T &z) KVLM_INLINED {
            const T sum = (v2 * y + x) + v3 * z;
            x = x - t1 * sum;
            y = y - t2 * sum;
            z = z - t3 * sum;
        };
        for (int j = k; j <= lastColumn(); ++j) {
            T *const x = h.column(j) + k;
            turn(x[0], x[1], x[2]);
        }
        const int last = k + 3 < bottom ? k + 3 : bottom;
        T *const x = h.column(k), *const y = h.column(k + 1), *const z = h.column(k + 2);
        for (int i = firstRow(); i <= last; ++i)
            turn(x[i], y[i], z[i]);
        if constexpr (HasSchur)
            eachIndex(n, [&](int i) KVLM_INLINED { turn(q(i, k), q(i, k + 1), q(i, k + 2)); });
    }

    KVLM_INLINE void reflectTwo(int k, T v2, T t1)
    {
        const T t2 = t1 * v2;
        const auto turn = [&](T &x, T &y) KVLM_INLINED {
            const T sum = v2 * y + x;
            x = x - t1 * sum;
            y = y - t2 * sum;
        };
        for (int j = k; j <= lastColumn(); ++j)
            turn(h(k, j), h(k + 1, j));
        for (int i = firstRow(); i <= bottom; ++i)
            turn(h(i, k), h(i, k + 1));
        if constexpr (HasSchur)
            eachIndex(n, [&](int i) KVLM_INLINED { turn(q(i, k), q(i, k + 1)); });
    }

    // The eigenvalues of the block from top to bottom.
    KVLM_INLINE void resolve()
    {
        const int i = bottom, k = bottom - 1;
        if (top == bottom) {
            store(i, h(i, i), 0);
            return;
        }
        Block<T> block = {h(k, k), h(k, i), h(i, k), h(i, i)};
        const T imaginary = standardise<HasSchur>(block, rotation);
        if constexpr (HasSchur) {
            h(k, k) = block.a;
            h(k, i) = block.b;
            h(i, k) = block.g;
            h(i, i) = block.d;
            for (int j = i + 1; j < n; ++j)
                rotation.apply(h(k, j), h(i, j));
            for (int r = 0; r < k; ++r)
                rotation.apply(h(r, k), h(r, i));
            eachIndex(n, [&](int r) KVLM_INLINED { rotation.apply(q(r, k), q(r, i)); });
        }
        store(k, block.a, imaginary);
        store(i, block.d, -imaginary);
    }
    KVLM_INLINE void store(int i, T real, T imaginary)
    {
        put(re + i, real);
        put(im + i, imaginary);
    }

    const Order n;
    const Matrix h, q;
    T *const re, *const im;
    int sweepsLeft;
    Rotation<T> rotation;

public:
    int top = 0, bottom, sweeps = 0; // of the active block
};

} // namespace kvlm::eigen

#endif
