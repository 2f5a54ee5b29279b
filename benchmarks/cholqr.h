// Cholesky and QR decompositions and their solvers as plain loops with fixed bounds, and where Eigen's are found.
#ifndef CHOLQR_H
#define CHOLQR_H

#include "bench.h"

#include <cmath>

namespace bench {

struct Cholesky {
    static constexpr const char *name = "Cholesky";
    static constexpr bool isPositive = true;
    // Plain loops with fixed bounds, reciprocals on the diagonal like the library's.
    template <class T, int N>
    BENCH_INLINE static void factor(T (&a)[N][N])
    {
        for (int i = 0; i < N; ++i) {
            for (int j = 0; j < i; ++j) {
                T s = a[i][j];
                for (int k = 0; k < j; ++k)
                    s -= a[i][k] * a[j][k];
                a[i][j] = s * a[j][j];
            }
            T s = a[i][i];
            for (int k = 0; k < i; ++k)
                s -= a[i][k] * a[i][k];
            a[i][i] = 1 / std::sqrt(s);
        }
    }
    template <class T, int N>
    BENCH_INLINE static void solve(const T (&l)[N][N], T (&x)[N])
    {
        for (int i = 0; i < N; ++i) {
            for (int j = 0; j < i; ++j)
                x[i] -= l[i][j] * x[j];
            x[i] *= l[i][i];
        }
        for (int i = N - 1; i >= 0; --i) {
            for (int j = i + 1; j < N; ++j)
                x[i] -= l[j][i] * x[j];
            x[i] *= l[i][i];
        }
    }
    // Eigen has the diagonal itself.
    static bool isCompared(int r, int c) { return r > c; }
    template <class T>
    static std::tuple<> scratch()
    {
        return {};
    }
    static auto sizes(int width, int) { return std::make_tuple(width); }
};

struct QR {
    static constexpr const char *name = "QR";
    static constexpr bool isPositive = false;
    // Plain loops with fixed bounds.
    template <class T, int H, int W>
    BENCH_INLINE static void factor(T (&a)[H][W])
    {
        T v[H];
        for (int k = 0; k < (H > W ? W : W - 1); ++k) {
            T s = 0, q = 1;
            for (int i = k; i < H; ++i)
                s += a[i][k] * a[i][k];
            const T root = std::sqrt(s), f = 1 / (a[k][k] + (a[k][k] > 0 ? root : -root));
            v[k] = 1;
            for (int i = k + 1; i < H; ++i) {
                v[i] = a[i][k] * f;
                q += v[i] * v[i];
            }
            const T beta = -2 / q;
            for (int j = k; j < W; ++j) {
                T t = a[k][j];
                for (int i = k + 1; i < H; ++i)
                    t += a[i][j] * v[i];
                t *= beta;
                for (int i = k; i < H; ++i)
                    a[i][j] += v[i] * t;
            }
            for (int i = k + 1; i < H; ++i)
                a[i][k] = v[i];
        }
    }
    template <class T, int H, int W>
    BENCH_INLINE static void solve(const T (&a)[H][W], T (&b)[H])
    {
        for (int k = 0; k < (H > W ? W : W - 1); ++k) {
            T t = b[k], q = 1;
            for (int i = k + 1; i < H; ++i) {
                t += b[i] * a[i][k];
                q += a[i][k] * a[i][k];
            }
            t *= -2 / q;
            b[k] += t;
            for (int i = k + 1; i < H; ++i)
                b[i] += a[i][k] * t;
        }
        for (int i = W - 1; i >= 0; --i) {
            for (int j = i + 1; j < W; ++j)
                b[i] -= a[i][j] * b[j];
            b[i] /= a[i][i];
        }
    }
    // Reflections may differ in sign.
    static bool isCompared(int r, int c) { return r <= c; }
    template <class T>
    static std::tuple<T *> scratch()
    {
        return {Memory<T>::place(3, 64)};
    }
    static auto sizes(int width, int height) { return std::make_tuple(width, height); }
};

/// Eigen, packed. What is called is compiled order by order, in cholqr_eigen.cpp: all orders at once would take the
/// compiler minutes and gigabytes.
template <class Family, class T, int H, int W>
struct EigenPeer {
    static int factor(const T *a, T *d, int count);
    /// Of right-hand sides b, with factors of the given number of matrices: one for all, or one for each.
    static std::function<int(const T *b, T *x, int count)> solver(const T *a, int matrices);
};

} // namespace bench

#endif
