// Symmetric eigenproblems, one object from order 3 on: Householder's reduction to tridiagonal form and implicit QL or
// QR sweeps with Wilkinson's shift (Golub and Van Loan, Matrix Computations, 8.3; Parlett, The Symmetric Eigenvalue
// Problem, chapter 8), for every kind of kernel.
//
// All tests are absolute: nothing is scaled by the matrix, and a product of eigenvalues that is merely small counts as
// singular. Settled, like every comparison as it stands here.
#ifndef KVLMEIGENSYM_ITERATION_H
#define KVLMEIGENSYM_ITERATION_H

#include "lanes/batches.h"
#include "loops/elimination.h"

namespace kvlm::eigensym {

// What differs between the kernels. All of it is settled.
template <class T, bool HasVectors, bool OfArray>
struct SymmetricKind {
    using Element = T;
    // Vectors of arrays: numbers are kept in 32f, but computed in 64f.
    using Work = std::conditional_t<HasVectors && OfArray, double, T>;
    static constexpr bool hasVectors = HasVectors;
    static constexpr bool skipsSmallSum = OfArray;
    static constexpr bool skipsSmallDifference = OfArray || HasVectors;
    static constexpr bool rotatesByReciprocal = HasVectors && OfArray;
    static constexpr bool hasWideRoot = HasVectors && !OfArray && sizeof(T) == 4;
    static constexpr bool multipliesAtStops = !HasVectors;
    static constexpr bool comparesWithZero = false;
    static constexpr Work epsilon = unitRoundoff<T>;
};

// Settled: one kernel chooses its shift by the sign alone, going down.
struct SignedShiftKind : SymmetricKind<float, true, false> {
    static constexpr bool comparesWithZero = true;
};

constexpr int maxSweeps = 30;

// The vectors of an order that is known, until they are stored: each in a row of its own.
template <class T, int N>
struct LocalVectors {
    T vector[N][N];

    KVLM_INLINE T *at(int r, int c) { return &vector[c][r]; }
};

// An order that the compiler knows, or with 0 any.
template <int N>
struct KnownOrder {
    static constexpr int n = N;
    explicit KnownOrder(int) {}
};
template <>
struct KnownOrder<0> {
    const int n;
    explicit KnownOrder(int n) : n(n) {}
};

// The working matrix, row by row, and where results go. Vectors has at(r, c).
template <class Kind, int N, class Vectors>
class SymmetricProblem : KnownOrder<N> {
    using T = typename Kind::Element;
    using W = typename Kind::Work;
    static constexpr W epsilon = Kind::epsilon;

public:
    KVLM_INLINE SymmetricProblem(int n, T *matrix, T *values, Vectors &vectors)
        : KnownOrder<N>(n), matrix(matrix), values(values), vectors(vectors)
    {
    }

    // From what is in the working matrix.
    KVLM_INLINE KvlStatus solve()
    {
        if constexpr (Kind::hasVectors) {
#pragma GCC unroll 6
            for (int r = 0; r < n; ++r)
#pragma GCC unroll 6
                for (int c = 0; c < n; ++c)
                    put(vectors.at(r, c), T(r == c));
        }
        reduce();
        const bool fromTop = magnitude(matrix[n * n - 1]) > magnitude(matrix[0]);
        packBand(fromTop);
        W product = 1;
        if (!iterate(fromTop, product))
            return kvlErrNoConvergence;
        return finish(fromTop, product);
    }

private:
    using KnownOrder<N>::n;

    KVLM_INLINE W element(int r, int c) const
    {
        return matrix[r * n + c];
    }

    // Householder's reduction, on the full square. The vector u stands in `values`.
    KVLM_INLINE void reduce()
    {
#pragma GCC unroll 4
        for (int k = 1; k < n - 1; ++k) {
            W sum = 0;
#pragma GCC unroll 6
            for (int r = k; r < n; ++r)
                sum += element(r, k - 1) * element(r, k - 1);
            if (Kind::skipsSmallSum && !(sum > epsilon))
                continue;
            const W norm = squareRoot(sum), a = element(k, k - 1);
#pragma GCC unroll 6
            for (int r = k + 1; r < n; ++r)
                put(values + r, matrix[r * n + k - 1]);
            if (Kind::skipsSmallDifference && epsilon >= magnitude(norm - a))
                continue;
            W h;
            if (a > epsilon) {
                put(values + k, static_cast<T>(a + norm));
                h = (sum + norm * a) * 2;
            } else if (epsilon >= magnitude(a)) {
                put(values + k, static_cast<T>(norm));
                h = sum + sum;
            } else {
                put(values + k, static_cast<T>(a - norm));
                h = (sum - norm * a) * 2;
            }
            if (h > epsilon)
                reflect(k, 2 / h);
        }
    }

    // From both sides, by I - f*u*u'.
    KVLM_INLINE void reflect(int k, W f)
    {
        const auto u = [&](int r) KVLM_INLINED { return static_cast<W>(get(values + r)); };
        const auto line = [&](auto at) KVLM_INLINED {
            W sum = 0;
#pragma GCC unroll 6
            for (int r = k; r < n; ++r)
                sum += static_cast<W>(get(at(r))) * u(r);
            const W t = sum * f;
#pragma GCC unroll 6
            for (int r = k; r < n; ++r)
                put(at(r), static_cast<T>(static_cast<W>(get(at(r))) - u(r) * t));
        };
#pragma GCC unroll 6
        for (int c = k - 1; c < n; ++c)
            line([&](int r) KVLM_INLINED { return matrix + r * n + c; });
#pragma GCC unroll 6
        for (int r = k - 1; r < n; ++r)
            line([&](int c) KVLM_INLINED { return matrix + r * n + c; });
        if constexpr (Kind::hasVectors) {
            if (k > 1) {
#pragma GCC unroll 6
                for (int r = 1; r < n; ++r)
                    line([&](int c) KVLM_INLINED { return vectors.at(r, c); });
                return;
            }
#pragma GCC unroll 6
            for (int r = 1; r < n; ++r) {
                put(vectors.at(r, r), static_cast<T>(1 - f * u(r) * u(r)));
#pragma GCC unroll 6
                for (int c = r + 1; c < n; ++c) {
                    const T x = static_cast<T>(u(r) * -f * u(c));
                    put(vectors.at(r, c), x);
                    put(vectors.at(c, r), x);
                }
            }
        }
    }

    // Diagonal and sub-diagonal to the first two rows, in the order of the iteration: going up it is the mirror image
    // of going down.
    KVLM_INLINE void packBand(bool fromTop)
    {
        d = matrix;
        e = matrix + n;
#pragma GCC unroll 6
        for (int i = 1; i < n; ++i)
            d[i] = matrix[i * n + i];
#pragma GCC unroll 6
        for (int i = 1; i < n - 1; ++i)
            e[i] = matrix[(i + 1) * n + i];
        if (fromTop)
            return;
        const auto reverse = [](T *x, int length) KVLM_INLINED {
            for (int i = 0; i < length / 2; ++i) {
                const T other = x[i];
                x[i] = x[length - 1 - i];
                x[length - 1 - i] = other;
            }
        };
        reverse(d, n);
        reverse(e, n - 1);
    }
    KVLM_INLINE int position(int i, bool fromTop) const
    {
        return fromTop ? i : n - 1 - i;
    }

    // QL from the top, or QR from the bottom. False if the sweeps do not suffice.
    KVLM_INLINE bool iterate(bool fromTop, W &product)
    {
        for (int l = 0; l < n; ++l)
            for (int sweeps = 0;; ++sweeps) {
                int m = l;
                while (m < n - 1 && magnitude(T(0.5) * e[m]) > epsilon)
                    ++m;
                // Settled: also where a search stops at a split, and then again and again; the last position has none.
                if (Kind::multipliesAtStops && !fromTop && m < n - 1) {
                    put(values + position(m, fromTop), d[m]);
                    product = product * d[m];
                }
                if (m == l)
                    break;
                if (sweeps == maxSweeps)
                    return false;
                sweep(l, m, fromTop);
            }
        if (Kind::multipliesAtStops && !fromTop)
            product = product * d[n - 1];
        return true;
    }

    KVLM_INLINE void sweep(int l, int m, bool fromTop)
    {
        W g = (W(d[l + 1]) - d[l]) / (2 * W(e[l]));
        W root;
        if constexpr (Kind::hasWideRoot) {
            const float square = g * g;
            root = static_cast<float>(squareRoot(static_cast<double>(square) + 1));
        } else
            root = squareRoot(g * g + 1);
        const W bound = Kind::comparesWithZero && fromTop ? W(0) : epsilon;
        g = (W(d[m]) - d[l]) + e[l] / (g > bound ? g + root : g - root);
        W s = 1, c = 1, p = 0, q = 0;
        for (int i = m - 1; i >= l; --i) {
            const W f = s * e[i], b = c * e[i], r = squareRoot(f * f + g * g);
            if (i != m - 1)
                e[i + 1] = static_cast<T>(r);
            if (!(magnitude(r) > epsilon)) {
                d[i + 1] = static_cast<T>(d[i + 1] - p);
                e[m - 1] = 0;
                return;
            }
            if constexpr (Kind::rotatesByReciprocal) {
                const W reciprocal = 1 / r;
                rotate(i, fromTop, g, f, [&](W x) KVLM_INLINED { return x * reciprocal; });
                s = f * reciprocal;
                c = reciprocal * g;
            } else {
                s = f / r;
                c = g / r;
                if constexpr (Kind::hasVectors)
                    rotate(i, fromTop, c, s, [](W x) KVLM_INLINED { return x; });
            }
            g = d[i + 1] - p;
            q = (d[i] - g) * s + (c + c) * b;
            p = q * s;
            d[i + 1] = static_cast<T>(g + p);
            g = q * c - b;
        }
        // Settled: the first position from the top is updated in any case.
        if (magnitude(q) > epsilon || (fromTop && l == 0)) {
            d[l] = static_cast<T>(d[l] - p);
            e[l] = static_cast<T>(g);
        }
    }

    // Columns i and i + 1 of the vectors turn with the matrix.
    template <class Scaled>
    KVLM_INLINE void rotate(int i, bool fromTop, W c, W s, Scaled scaled)
    {
        const int near = position(i, fromTop), far = position(i + 1, fromTop);
#pragma GCC unroll 6
        for (int r = 0; r < n; ++r) {
            const W x = scaled(get(vectors.at(r, near))), y = scaled(get(vectors.at(r, far)));
            put(vectors.at(r, near), static_cast<T>(c * x - s * y));
            put(vectors.at(r, far), static_cast<T>(s * x + c * y));
        }
    }

    // The values to their places, the test, the order.
    KVLM_INLINE KvlStatus finish(bool fromTop, W product)
    {
        for (int i = 0; i < n; ++i) {
            const T x = d[position(i, fromTop)];
            put(values + i, x);
            if (!Kind::multipliesAtStops || fromTop)
                product = product * x;
        }
        if (epsilon >= magnitude(product))
            return kvlErrSingular;
        for (int i = 0; i < n - 1; ++i) {
            int largest = i;
            for (int j = i + 1; j < n; ++j)
                if (get(values + j) > get(values + largest))
                    largest = j;
            if (largest != i) {
                exchange(values + i, values + largest);
                if constexpr (Kind::hasVectors)
                    for (int r = 0; r < n; ++r)
                        exchange(vectors.at(r, i), vectors.at(r, largest));
            }
        }
        return kvlOk;
    }
    static KVLM_INLINE void exchange(T *x, T *y)
    {
        const T other = get(x);
        put(x, get(y));
        put(y, other);
    }

    T *matrix, *values;
    Vectors &vectors;
    T *d = nullptr, *e = nullptr;
};

} // namespace kvlm::eigensym

#endif
