// Standardisation of a 2 x 2 block of a quasi-triangular matrix: either upper triangular, or with equal diagonal
// elements and a complex pair of eigenvalues (after LAPACK's lanv2, from which it departs where "settled" stands).
#ifndef KVLMEIGEN_BLOCK_H
#define KVLMEIGEN_BLOCK_H

#include "kvlmeigen_reflector.h"

namespace kvlm::eigen {

// ( a b )
// ( g d )
template <class T>
struct Block {
    T a, b, g, d;
};

// x' = cosine*x + sine*y, y' = cosine*y - sine*x
template <class T>
struct Rotation {
    T cosine = 0, sine = 0;

    KVLM_INLINE void apply(T &x, T &y) const
    {
        const T first = cosine * x + sine * y, second = cosine * y - sine * x;
        x = first;
        y = second;
    }
    KVLM_INLINE void turnByRightAngle()
    {
        const T old = cosine;
        cosine = -sine;
        sine = old;
    }
};

// The product of the roots of two magnitudes, rounded once.
template <class T>
KVLM_INLINE T productOfRoots(T x, T y)
{
    return static_cast<T>(squareRoot(static_cast<double>(x)) * squareRoot(static_cast<double>(y)));
}

template <class T>
KVLM_INLINE bool isNegative(T x)
{
    return !(x >= 0);
}

// Equal diagonal elements, by a rotation. p is half their difference before it.
template <bool HasRotation, class T>
KVLM_INLINE void equaliseDiagonal(Block<T> &x, T difference, T p, Rotation<T> &rotation)
{
    constexpr T tiny = smallestNormal<T>;
    const T sigma = x.b + x.g, size = magnitude(sigma), norm = pairNorm(magnitude(difference), size);
    const T cs = static_cast<T>(squareRoot((static_cast<double>(size / norm) + 1) * 0.5));
    const T quotient = -p / (norm * cs), sn = sigma < 0 ? -quotient : quotient;
    const T aa = x.a * cs + x.b * sn, bb = x.b * cs - x.a * sn, cc = x.g * cs + x.d * sn, dd = x.d * cs - x.g * sn;
    const T a = aa * cs + cc * sn, b = bb * cs + dd * sn, g = cc * cs - aa * sn;
    const T mean = T(0.5) * ((a - bb * sn) + dd * cs);
    rotation.cosine = cs;
    rotation.sine = sn;
    x = {mean, b, g, mean};
    if (!(magnitude(b) > tiny && magnitude(g) > tiny)) {
        // Settled: also where b is alive, which is dropped.
        x.b = -g;
        x.g = 0;
        rotation.turnByRightAngle();
    } else if (isNegative(b) == isNegative(g)) {
        // Settled: the diagonal splits by p, which is not computed again from b and g.
        x.a = isNegative(g) ? mean - p : mean + p;
        x.d = isNegative(g) ? mean + p : mean - p;
        x.b = b - g;
        x.g = 0;
        if constexpr (HasRotation) {
            // Settled: the sine is not that of the sum of both angles.
            const T rootOfB = squareRoot(magnitude(b)), rootOfG = squareRoot(magnitude(g));
            const T factor = 1 / squareRoot(magnitude(b + g));
            rotation.cosine = (cs * rootOfB - sn * rootOfG) * factor;
            rotation.sine = (cs * rootOfB + sn * rootOfG) * factor;
        }
    }
}

// Returns the imaginary part of the pair, 0 for two real eigenvalues. g is above tiny: it was no reason to deflate.
template <bool HasRotation, class T>
KVLM_INLINE T standardise(Block<T> &x, Rotation<T> &rotation)
{
    constexpr T tiny = smallestNormal<T>;
    const T difference = x.a - x.d;
    if (!(magnitude(x.b) > tiny)) {
        x = {x.d, -x.g, 0, x.a};
        rotation.cosine = 0;
        rotation.sine = 1;
    } else if (!(magnitude(difference) > tiny)) {
        // Settled: a complex pair whatever the signs, and with equal signs the rotation of the block before.
        if (isNegative(x.b) != isNegative(x.g)) {
            rotation.cosine = 1;
            rotation.sine = 0;
        }
    } else {
        const T p = T(0.5) * difference, sizeOfB = magnitude(x.b), sizeOfG = magnitude(x.g);
        const T most = sizeOfB > sizeOfG ? sizeOfB : sizeOfG, least = sizeOfB > sizeOfG ? sizeOfG : sizeOfB;
        const T scale = magnitude(p) > most ? magnitude(p) : most;
        const T signedLeast = isNegative(x.b) == isNegative(x.g) ? least : -least;
        const T discriminant = (p / scale) * p + (most / scale) * signedLeast;
        if (discriminant >= 4 * unitRoundoff<T>) {
            const T root = productOfRoots(scale, discriminant), z = p > 0 ? p + root : p - root;
            if constexpr (HasRotation) {
                const T norm = pairNorm(magnitude(z), sizeOfG);
                rotation.cosine = z / norm;
                rotation.sine = x.g / norm;
            }
            x = {x.d + z, x.b - x.g, 0, x.d - signedLeast * (most / z)};
        } else
            equaliseDiagonal<HasRotation>(x, difference, p, rotation);
    }
    return magnitude(x.g) > tiny ? productOfRoots(magnitude(x.b), magnitude(x.g)) : T(0);
}

} // namespace kvlm::eigen

#endif
