// LU decomposition and its solver as plain loops with fixed bounds, on a copy of the object.
#ifndef KVLM_BENCHMARKS_LU_H
#define KVLM_BENCHMARKS_LU_H

#include "bench.h"

#include <cmath>

namespace bench {

/// Returns the sign of the permutation.
template <class T, int N>
BENCH_INLINE T factorLoop(T (&a)[N][N], int *p)
{
    T sign = 1;
    for (int r = 0; r < N; ++r)
        p[r] = r;
    for (int k = 0; k < N - 1; ++k) {
        int best = k;
        for (int r = k + 1; r < N; ++r)
            if (std::abs(a[r][k]) > std::abs(a[best][k]))
                best = r;
        if (best != k) {
            for (int c = 0; c < N; ++c)
                std::swap(a[k][c], a[best][c]);
            std::swap(p[k], p[best]);
            sign = -sign;
        }
        const T reciprocal = 1 / a[k][k];
        for (int r = k + 1; r < N; ++r) {
            const T m = a[r][k] *= reciprocal;
            for (int c = k + 1; c < N; ++c)
                a[r][c] -= m * a[k][c];
        }
    }
    return sign;
}

template <class T, int N>
BENCH_INLINE void solveLoop(const T (&lu)[N][N], T (&x)[N])
{
    for (int r = 1; r < N; ++r)
        for (int c = 0; c < r; ++c)
            x[r] -= lu[r][c] * x[c];
    for (int r = N - 1; r >= 0; --r) {
        for (int c = r + 1; c < N; ++c)
            x[r] -= lu[r][c] * x[c];
        x[r] /= lu[r][r];
    }
}

} // namespace bench

#endif
