// Cholesky and QR of one object and their solvers, written as plain loops over its elements: every rounding in its
// order, what stands in memory after a failure, and the settled oddities.
#pragma once

#include "oracle.h"

namespace oracle {

// The smallest diagonal element that fails.
template <class T>
ORACLE_RESULT T choleskyThreshold(int n, bool isArray, bool isAdjacent, char description)
{
    if (description == 'P')
        return n == 3 ? T(FLT_EPSILON) : 0;
    const bool exception = sizeof(T) == 8 && isArray && description == 'S' && !isAdjacent;
    return exception && (n < 3 || n > 5) ? T(DBL_EPSILON) : 0;
}

inline ORACLE_RESULT double reciprocalRoot(double s)
{
    return 1 / std::sqrt(s);
}

inline ORACLE_RESULT float reciprocalRoot(float s)
{
    const float y = _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(s)));
    float x = s * y;
    x = x * y;
    x = x - 3;
    x = y * x;
    return x * -0.5f;
}

template <class T>
KvlStatus choleskyFactor(int n, const T *a, T *l, T threshold)
{
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) {
            T s = a[i * n + j];
            for (int k = 0; k < j; ++k)
                s -= l[i * n + k] * l[j * n + k];
            if (i == j && !(s > threshold))
                return kvlErrNotPositiveDefinite;
            l[i * n + j] = i == j ? reciprocalRoot(s) : s * l[j * n + j];
        }
    return kvlOk;
}

template <class T>
void choleskySolve(int n, const T *l, const T *b, T *x)
{
    std::vector<T> y(b, b + n);
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < i; ++j)
            y[i] -= l[i * n + j] * y[j];
        y[i] *= l[i * n + i];
    }
    for (int i = n; i-- > 0;) {
        for (int j = n; --j > i;)
            y[i] -= l[j * n + i] * y[j];
        y[i] *= l[i * n + i];
    }
    std::copy(y.begin(), y.end(), x);
}

inline int reflectors(int width, int height)
{
    return height > width ? width : width - 1;
}

template <class T>
KvlStatus qrFactor(int width, int height, const T *src, T *a)
{
    const auto at = [&](int i, int j) -> T & { return a[i * width + j]; };
    std::vector<T> v(height);
    std::copy(src, src + width * height, a);
    for (int k = 0; k < reflectors(width, height); ++k) {
        T s = 0, q = 1;
        for (int i = k; i < height; ++i)
            s += at(i, k) * at(i, k);
        if ((sizeof(T) == 4 ? T(FLT_EPSILON) : T(DBL_EPSILON)) > std::fabs(s))
            return kvlErrZeroDivisor;
        const T root = std::sqrt(s), alpha = at(k, k) + (at(k, k) > 0 ? root : -root), f = 1 / alpha;
        v[k] = 1;
        for (int i = k + 1; i < height; ++i) {
            v[i] = at(i, k) * f;
            q += v[i] * v[i];
        }
        const T beta = -2 / q;
        for (int j = k; j < width; ++j) {
            T t = at(k, j);
            for (int i = k + 1; i < height; ++i)
                t += at(i, j) * v[i];
            t *= beta;
            for (int i = k; i < height; ++i)
                at(i, j) += v[i] * t;
        }
        for (int i = k + 1; i < height; ++i)
            at(i, k) = v[i];
    }
    return kvlOk;
}

template <class T>
void qrSolve(int width, int height, const T *a, const T *rightHandSide, T *solution)
{
    const auto at = [&](int i, int j) { return a[i * width + j]; };
    std::vector<T> b(rightHandSide, rightHandSide + height), x(width);
    for (int k = 0; k < reflectors(width, height); ++k) {
        T t = b[k], q = 1;
        for (int i = k + 1; i < height; ++i) {
            t += b[i] * at(i, k);
            q += at(i, k) * at(i, k);
        }
        t *= -2 / q;
        b[k] += t;
        for (int i = k + 1; i < height; ++i)
            b[i] += at(i, k) * t;
    }
    const int last = width - 1;
    const bool unrolled = width == height && isUnrolled(width);
    for (int i = last; i >= 0; --i) {
        T s = 0;
        if (!unrolled) {
            for (int j = i + 1; j < width; ++j)
                s += at(i, j) * x[j];
            x[i] = (i < last ? b[i] - s : b[i]) / at(i, i);
        } else if (i > 0) {
            s = b[i];
            for (int j = last; j > i; --j)
                s -= at(i, j) * x[j];
            x[i] = s / at(i, i);
        } else {
            s = at(0, last) * x[last];
            for (int j = last - 1; j > 0; --j)
                s += at(0, j) * x[j];
            x[0] = (b[0] - s) / at(0, 0);
        }
    }
    std::copy(x.begin(), x.end(), solution);
}

} // namespace oracle
