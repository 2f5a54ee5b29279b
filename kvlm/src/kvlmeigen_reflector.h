// What the steps of the general eigenproblem work on: matrices by columns in scratch, and elementary reflectors (Golub
// and Van Loan, Matrix Computations, 5.1; LAPACK's larfg), without its guard against overflow.
//
// Sums begin with +0 and are formed one product after the other. 32f is computed in 32f, but for the places where a
// double stands here.
#ifndef KVLMEIGEN_REFLECTOR_H
#define KVLMEIGEN_REFLECTOR_H

#include "lanes/lanes.h"

namespace kvlm::eigen {

// A square matrix by columns, of an order that is Fixed or an int: (i, j) is row i of column j.
template <class T, class Order>
struct Columns {
    using Element = T;
    static constexpr int step = 1; // from one element of a column to the next

    T *base;
    Order n;

    KVLM_INLINE T *column(ptrdiff_t j) const { return base + j * int(n); }
    KVLM_INLINE T &operator()(ptrdiff_t i, ptrdiff_t j) const { return column(j)[i]; }
};

// The norm of a pair of magnitudes. Settled: nothing is scaled, the quotient of the squares may overflow.
template <class T>
KVLM_INLINE T pairNorm(T x, T y)
{
    const T big = x > y ? x : y, small = x > y ? y : x;
    if (!(small >= smallestNormal<T>))
        return big;
    const T quotient = (small * small) / (big * big);
    return big * static_cast<T>(squareRoot(1 + static_cast<double>(quotient)));
}

// Makes I - tau*v*v' with v = (1, x), which takes (alpha, x) to (beta, 0): beta stands in the place of alpha, what v
// has behind its 1 in that of x. Returns tau: 0, with alpha and x as they were, for an x that vanishes.
template <class T, class Length>
KVLM_INLINE T makeReflector(T &alpha, T *x, Length length)
{
    if (length < 1)
        return 0;
    T sum = 0;
    eachIndex(length, [&](int k) KVLM_INLINED { sum += x[k] * x[k]; });
    const T norm = squareRoot(sum);
    if (!(norm >= smallestNormal<T>))
        return 0;
    const T whole = pairNorm(magnitude(alpha), norm), beta = alpha >= 0 ? -whole : whole;
    const T tau = (beta - alpha) / beta, scale = 1 / (alpha - beta);
    eachIndex(length, [&](int k) KVLM_INLINED { x[k] = scale * x[k]; });
    alpha = beta;
    return tau;
}

} // namespace kvlm::eigen

#endif
