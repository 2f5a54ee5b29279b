// The reduction of a general matrix to Hessenberg form by Householder's reflectors, one column at a time, and the
// product of these reflectors (Golub and Van Loan, Matrix Computations, 7.4; LAPACK's gehd2 and orghr).
#ifndef KVLMEIGEN_HESSENBERG_H
#define KVLMEIGEN_HESSENBERG_H

#include "kvlmeigen_reflector.h"

namespace kvlm::eigen {

// Subtracts tau*v*v'*C from C, columns `first` to n - 1 and the rows from `top` on; v has n - top elements.
template <class T, class Order>
KVLM_INLINE void reflectColumns(Columns<T, Order> c, int top, int first, const T *v, T tau)
{
    const int n = c.n, length = n - top;
#pragma GCC unroll 5
    for (int j = first; j < n; ++j) {
        T *const x = c.column(j) + top;
        T sum = 0;
#pragma GCC unroll 5
        for (int r = 0; r < length; ++r)
            sum += x[r] * v[r];
#pragma GCC unroll 5
        for (int r = 0; r < length; ++r)
            x[r] = x[r] - (tau * v[r]) * sum;
    }
}

// Subtracts tau*C*v*v' from columns `first` to n - 1.
template <class T, class Order>
KVLM_INLINE void reflectRows(Columns<T, Order> c, int first, const T *v, T tau)
{
    const int n = c.n, length = n - first;
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i) {
        T sum = 0;
#pragma GCC unroll 5
        for (int k = 0; k < length; ++k)
            sum += c(i, first + k) * v[k];
        const T t = tau * sum;
#pragma GCC unroll 5
        for (int k = 0; k < length; ++k)
            c(i, first + k) = c(i, first + k) - t * v[k];
    }
}

// The reflectors stay below the sub-diagonal, their factors in `tau`.
template <class T, class Order>
KVLM_INLINE void reduceToHessenberg(Columns<T, Order> h, T *tau)
{
    const int n = h.n;
#pragma GCC unroll 5
    for (int k = 0; k < n - 1; ++k) {
        T *const v = h.column(k) + k + 1;
        T beta = *v;
        tau[k] = makeReflector(beta, v + 1, n - k - 2);
        *v = 1;
        if (magnitude(tau[k]) > smallestNormal<T>) {
            reflectRows(h, k + 1, v, tau[k]);
            reflectColumns(h, k + 1, k + 1, v, tau[k]);
        }
        *v = beta;
    }
}

// Q, the product of the reflectors.
template <class T, class Order>
KVLM_INLINE void formReflections(Columns<T, Order> h, const T *tau, Columns<T, Order> q)
{
    const int n = h.n;
#pragma GCC unroll 6
    for (int j = 0; j < n; ++j)
#pragma GCC unroll 6
        for (int i = 0; i < n; ++i)
            q(i, j) = i == j ? T(1) : i > j && j > 0 ? h(i, j - 1) : T(0);
#pragma GCC unroll 5
    for (int p = n - 1; p > 0; --p) {
        const T factor = tau[p - 1];
        T *const v = q.column(p) + p;
        if (magnitude(factor) > smallestNormal<T>)
            reflectColumns(q, p, p + 1, v, factor);
#pragma GCC unroll 5
        for (int r = 1; r < n - p; ++r)
            v[r] = -factor * v[r];
        *v = 1 - factor;
    }
}

// What the reflectors leave in H.
template <class T, class Order>
KVLM_INLINE void clearBelowHessenberg(Columns<T, Order> h)
{
    const int n = h.n;
#pragma GCC unroll 6
    for (int j = 0; j < n - 2; ++j)
#pragma GCC unroll 6
        for (int i = j + 2; i < n; ++i)
            h(i, j) = 0;
}

} // namespace kvlm::eigen

#endif
