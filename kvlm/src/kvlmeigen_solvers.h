// Solvers of the substitutions for eigenvectors: (B - (w.re + i*w.im)*I)*x = scale*b for a diagonal block B of 1 x 1 or
// 2 x 2, real or complex, with scale at most 1 against overflow (after LAPACK's laln2).
#ifndef KVLMEIGEN_SOLVERS_H
#define KVLMEIGEN_SOLVERS_H

#include "lanes/lanes.h"

namespace kvlm::eigen {

// The eigenvalue, the least magnitude of a pivot, and the overflow guard that goes with the order. No pivot is below
// the solvers' own floor of twice the smallest normal number, as w.least never is.
template <class T>
struct Eigenvalue {
    T re, im, least, most;
};

template <class T>
constexpr T solverMost = 1 / (2 * smallestNormal<T>);

// The right side and then the solution: real, or with its imaginary parts; `size` is its largest element.
template <class T, int Parts>
struct Unknowns {
    T x[2][Parts];
    T scale, size;
};

template <class T>
KVLM_INLINE T larger(T x, T y)
{
    return x > y ? x : y;
}

template <class T>
KVLM_INLINE void solveOne(T diagonal, const Eigenvalue<T> &w, Unknowns<T, 1> &u)
{
    T pivot = diagonal - w.re;
    if (!(magnitude(pivot) >= w.least))
        pivot = w.least;
    T &x = u.x[0][0];
    const T size = magnitude(x);
    const bool guarded = size > 1 && !(magnitude(pivot) >= 1) && size > solverMost<T> * magnitude(pivot);
    u.scale = guarded ? 1 / size : T(1);
    x = (x * u.scale) / pivot;
    u.size = magnitude(x);
}

// The quotient times a scale, by the plain formula.
template <class T>
KVLM_INLINE void divide(T (&x)[2], T re, T im, T scale)
{
    const T factor = scale / (re * re + im * im);
    const T first = (x[0] * re + x[1] * im) * factor;
    x[1] = (x[1] * re - x[0] * im) * factor;
    x[0] = first;
}

template <class T>
KVLM_INLINE T sizeOf(const T (&x)[2])
{
    return magnitude(x[0]) + magnitude(x[1]);
}

template <class T>
KVLM_INLINE void solveOne(T diagonal, const Eigenvalue<T> &w, Unknowns<T, 2> &u)
{
    T re = diagonal - w.re, im = -w.im, pivot = magnitude(re) + magnitude(im);
    if (!(pivot >= w.least)) {
        re = pivot = w.least;
        im = 0;
    }
    T(&x)[2] = u.x[0];
    const T size = magnitude(x[1]) + magnitude(x[0]);
    // Settled: the guard of the order, not that of the solvers.
    const bool guarded = size > 1 && !(pivot >= 1) && size > w.most * pivot;
    u.scale = guarded ? 1 / size : T(1);
    divide(x, re, im, u.scale);
    u.size = sizeOf(x);
}

// Of a block, its elements (0, 0), (1, 0), (0, 1), (1, 1) less the eigenvalue: entry p ^ k stands where entry k stands
// once rows and columns are exchanged so that entry p comes first. Columns are exchanged for p > 1, rows for odd p.
template <class T>
struct Crown {
    T re[4], im[4];

    KVLM_INLINE Crown(const T (&block)[4], const Eigenvalue<T> &w)
        : re{block[0] - w.re, block[1], block[2], block[3] - w.re}, im{-w.im, 0, 0, -w.im}
    {
    }

    // The first of the largest entries.
    KVLM_INLINE int pivot(T &most) const
    {
        int p = 0;
        most = magnitude(re[0]) + magnitude(im[0]);
        for (int k = 1; k < 4; ++k) {
            const T size = magnitude(re[k]) + magnitude(im[k]);
            if (size > most) {
                most = size;
                p = k;
            }
        }
        return p;
    }
};

template <class T, int Parts>
KVLM_INLINE void exchangeIf(bool condition, Unknowns<T, Parts> &u)
{
    if (condition)
        for (int part = 0; part < Parts; ++part)
            std::swap(u.x[0][part], u.x[1][part]);
}

// Against overflow where the block is next used.
template <class T, int Parts>
KVLM_INLINE void guardSolution(T most, Unknowns<T, Parts> &u)
{
    if (!(most > 1 && u.size > 1 && u.size > solverMost<T> / most))
        return;
    const T factor = most / solverMost<T>;
    for (auto &element : u.x)
        for (T &x : element)
            x = x * factor;
    u.scale = u.scale * factor;
    u.size = u.size * factor;
}

// False if the block vanishes: nothing is put in its place.
template <class T>
KVLM_INLINE bool solveTwo(const T (&block)[4], const Eigenvalue<T> &w, Unknowns<T, 1> &u)
{
    const Crown<T> crown(block, w);
    T most;
    const int p = crown.pivot(most);
    if (!(most >= w.least))
        return false;
    const T below = crown.re[p ^ 1], right = crown.re[p ^ 2];
    const T reciprocal = 1 / crown.re[p], factor = below * reciprocal;
    T second = crown.re[p ^ 3] - right * factor;
    if (magnitude(second) < w.least)
        second = w.least;
    exchangeIf(p & 1, u);
    T &x1 = u.x[0][0], &x2 = u.x[1][0];
    x2 = x2 - factor * x1;
    const T bound = larger(magnitude(x1 * (second * reciprocal)), magnitude(x2)), size = magnitude(second);
    u.scale = size < 1 && bound > 1 && bound > solverMost<T> * size ? 1 / bound : T(1);
    x2 = (x2 * u.scale) / second;
    x1 = (u.scale * x1) * reciprocal - (reciprocal * right) * x2;
    exchangeIf(p > 1, u);
    u.size = larger(magnitude(x1), magnitude(x2));
    guardSolution(most, u);
    return true;
}

template <class T>
KVLM_INLINE bool solveTwo(const T (&block)[4], const Eigenvalue<T> &w, Unknowns<T, 2> &u)
{
    const Crown<T> crown(block, w);
    T most;
    const int p = crown.pivot(most);
    if (!(most >= w.least))
        return false;
    const T re = crown.re[p], im = crown.im[p];
    const T belowRe = crown.re[p ^ 1], belowIm = crown.im[p ^ 1], rightRe = crown.re[p ^ 2], rightIm = crown.im[p ^ 2];
    T reciprocal[2], factor[2], right[2], second[2];
    if (p == 1 || p == 2) {
        reciprocal[0] = 1 / re;
        reciprocal[1] = 0;
        factor[0] = belowRe * reciprocal[0];
        factor[1] = belowIm * reciprocal[0];
        right[0] = rightRe * reciprocal[0];
        right[1] = rightIm * reciprocal[0];
        second[0] = crown.re[p ^ 3] - rightRe * factor[0] + rightIm * factor[1];
        second[1] = -rightRe * factor[1] - rightIm * factor[0];
    } else {
        if (magnitude(re) > magnitude(im)) {
            const T t = im / re;
            reciprocal[0] = 1 / (re * (1 + t * t));
            reciprocal[1] = -t * reciprocal[0];
        } else {
            const T t = re / im;
            reciprocal[1] = -1 / (im * (1 + t * t));
            reciprocal[0] = -t * reciprocal[1];
        }
        factor[0] = belowRe * reciprocal[0];
        factor[1] = belowRe * reciprocal[1];
        right[0] = rightRe * reciprocal[0];
        right[1] = rightRe * reciprocal[1];
        second[0] = crown.re[p ^ 3] - rightRe * factor[0];
        second[1] = crown.im[p ^ 3] - rightRe * factor[1];
    }
    T size = sizeOf(second);
    if (size < w.least) {
        second[0] = size = w.least;
        second[1] = 0;
    }
    exchangeIf(p & 1, u);
    T(&x1)[2] = u.x[0], (&x2)[2] = u.x[1];
    x2[0] = x2[0] - factor[0] * x1[0] + factor[1] * x1[1];
    x2[1] = x2[1] - factor[1] * x1[0] - factor[0] * x1[1];
    const T bound = larger(sizeOf(x1) * (size * sizeOf(reciprocal)), sizeOf(x2));
    u.scale = 1;
    if (size < 1 && bound > 1 && bound > solverMost<T> * size) {
        u.scale = 1 / bound;
        for (T *x : {&x1[0], &x1[1], &x2[0], &x2[1]})
            *x = *x * u.scale;
    }
    divide(x2, second[0], second[1], T(1));
    const T first = reciprocal[0] * x1[0] - reciprocal[1] * x1[1] - right[0] * x2[0] + right[1] * x2[1];
    x1[1] = reciprocal[1] * x1[0] + reciprocal[0] * x1[1] - right[1] * x2[0] - right[0] * x2[1];
    x1[0] = first;
    exchangeIf(p > 1, u);
    u.size = larger(sizeOf(x1), sizeOf(x2));
    guardSolution(most, u);
    return true;
}

} // namespace kvlm::eigen

#endif
