// Eigenvectors from a Schur form: substitution, backward for the right set and forward for the left one, product with
// the Schur vectors, normalisation (Golub and Van Loan, Matrix Computations, 7.6.4; LAPACK's trevc).
#ifndef KVLMEIGEN_VECTORS_H
#define KVLMEIGEN_VECTORS_H

#include "kvlmeigen_reflector.h"
#include "kvlmeigen_solvers.h"

namespace kvlm::eigen {

// How the work on one object ends, and whether the objects behind it are still worked.
struct Outcome {
    KvlStatus status = kvlOk;
    bool stops = false;
};

// Settled: a complex 2 x 2 block that vanishes has a status, a real one ends the call in silence.
template <int Parts>
constexpr Outcome vanishedBlock = {Parts == 2 ? kvlErrSmallPivot : kvlOk, true};

template <class T, class Order>
class EigenvectorSet {
public:
    // `sums` holds the sums of the magnitudes above the diagonal; re and im are work vectors.
    KVLM_INLINE EigenvectorSet(Columns<T, Order> t, Columns<T, Order> q, const T *sums, T *re, T *im)
        : n(t.n), t(t), q(q), sums(sums), x{re, im}, least(static_cast<T>(int(n)) * (tiny / unitRoundoff<T>)),
          most((1 - unitRoundoff<T>) / least)
    {
    }

    // The vectors take the place of q, from the last to the first, or from the first to the last.
    KVLM_INLINE Outcome makeRight()
    {
        for (int j = n - 1; j >= 0;) {
            const bool isPair = startsPair(j - 1);
            const Outcome outcome = isPair ? makeRightPair(j) : makeRightReal(j);
            if (outcome.stops)
                return outcome;
            j -= 1 + isPair;
        }
        return {};
    }

    KVLM_INLINE Outcome makeLeft()
    {
        for (int j = 0; j < n;) {
            const bool isPair = startsPair(j);
            const Outcome outcome = isPair ? makeLeftPair(j) : makeLeftReal(j);
            if (outcome.stops)
                return outcome;
            j += 1 + isPair;
        }
        return {};
    }

private:
    static constexpr T tiny = smallestNormal<T>;

    // Whether a 2 x 2 block begins at j, which may lie outside.
    KVLM_INLINE bool startsPair(int j) const { return j >= 0 && j < n - 1 && magnitude(t(j + 1, j)) > tiny; }
    KVLM_INLINE Eigenvalue<T> realAt(int j) const
    {
        return {t(j, j), 0, larger(magnitude(t(j, j)) * unitRoundoff<T>, least), most};
    }
    KVLM_INLINE Eigenvalue<T> pairAt(int j, int above, int below) const
    {
        const T im = squareRoot(magnitude(t(above, below))) * squareRoot(magnitude(t(below, above)));
        return {t(j, j), im, larger((magnitude(t(j, j)) + magnitude(im)) * unitRoundoff<T>, least), most};
    }

    KVLM_INLINE Outcome makeRightReal(int j)
    {
        x[0][j] = 1;
        for (int k = 0; k < j; ++k)
            x[0][k] = -t(k, j);
        const Outcome outcome = substituteBackward<1>(realAt(j), j, j);
        if (!outcome.stops && j > 0)
            combine(j, 0, 0, j);
        return outcome;
    }

    KVLM_INLINE Outcome makeRightPair(int j)
    {
        const int i = j - 1;
        const Eigenvalue<T> w = pairAt(j, i, j);
        const bool largeAbove = magnitude(t(i, j)) > magnitude(t(j, i));
        x[0][i] = largeAbove ? T(1) : -w.im / t(j, i);
        x[1][j] = largeAbove ? w.im / t(i, j) : T(1);
        x[0][j] = x[1][i] = 0;
        for (int k = 0; k < i; ++k) {
            x[0][k] = -x[0][i] * t(k, i);
            x[1][k] = -x[1][j] * t(k, j);
        }
        const Outcome outcome = substituteBackward<2>(w, i, j);
        if (outcome.stops)
            return outcome;
        combine(i, 0, 0, i);
        combine(j, 1, 0, i);
        const T factor = 1 / largestOfPair(i);
        scaleColumn(i, factor);
        scaleColumn(j, factor);
        return {};
    }

    KVLM_INLINE Outcome makeLeftReal(int j)
    {
        x[0][j] = 1;
        for (int k = j + 1; k < n; ++k)
            x[0][k] = -t(j, k);
        const Outcome outcome = substituteForward<1>(realAt(j), j, j + 1);
        if (outcome.stops)
            return outcome;
        if (j < n - 1)
            combine(j, 0, j + 1, n);
        // Settled: the left set alone has its real vectors scaled.
        T size = 0;
        for (int r = 0; r < n; ++r)
            size = larger(magnitude(q(r, j)), size);
        if (size > tiny)
            scaleColumn(j, 1 / size);
        return {};
    }

    KVLM_INLINE Outcome makeLeftPair(int j)
    {
        const int i = j + 1;
        Eigenvalue<T> w = pairAt(j, i, j);
        // Settled: at equal magnitudes the other start than in the right set.
        const bool largeAbove = magnitude(t(j, i)) >= magnitude(t(i, j));
        x[0][j] = largeAbove ? w.im / t(j, i) : T(1);
        x[1][i] = largeAbove ? T(1) : -w.im / t(i, j);
        x[0][i] = x[1][j] = 0;
        for (int k = i + 1; k < n; ++k) {
            x[0][k] = -x[0][j] * t(j, k);
            x[1][k] = -x[1][i] * t(i, k);
        }
        w.im = -w.im;
        const Outcome outcome = substituteForward<2>(w, j, i + 1);
        if (outcome.stops)
            return outcome;
        combine(j, 0, i + 1, n);
        combine(i, 1, i + 1, n);
        const T size = largestOfPair(j);
        if (size > tiny) {
            scaleColumn(j, 1 / size);
            scaleColumn(i, 1 / size);
        }
        return {};
    }

    template <int Parts>
    KVLM_INLINE bool solve(int k, bool isTwo, bool isTransposed, const Eigenvalue<T> &w, Unknowns<T, Parts> &u) const
    {
        if (!isTwo) {
            solveOne(t(k, k), w, u);
            return true;
        }
        const T below = t(k + 1, k), right = t(k, k + 1);
        const T block[] = {t(k, k), isTransposed ? right : below, isTransposed ? below : right, t(k + 1, k + 1)};
        return solveTwo(block, w, u);
    }

    template <int Parts>
    KVLM_INLINE void multiply(int from, int to, T factor)
    {
        for (int part = 0; part < Parts; ++part)
            for (int k = from; k < to; ++k)
                x[part][k] = x[part][k] * factor;
    }
    // The vector so far takes part in the scaling of a solution.
    template <int Parts>
    KVLM_INLINE void follow(T scale, int from, int to)
    {
        if (!(tiny >= magnitude(scale - 1)))
            multiply<Parts>(from, to, scale);
    }
    KVLM_INLINE T sumBeside(int k, bool isTwo) const { return isTwo ? larger(sums[k], sums[k + 1]) : sums[k]; }

    // Elements first - 1 to 0 of the vector that ends at `last`.
    template <int Parts>
    KVLM_INLINE Outcome substituteBackward(const Eigenvalue<T> &w, int first, int last)
    {
        for (int k = first - 1; k >= 0; --k) {
            const bool isTwo = startsPair(k - 1);
            k -= isTwo;
            Unknowns<T, Parts> u = {};
            for (int e = 0; e <= isTwo; ++e)
                for (int part = 0; part < Parts; ++part)
                    u.x[e][part] = x[part][k + e];
            if (!solve(k, isTwo, false, w, u))
                return vanishedBlock<Parts>;
            // Settled: first the vector follows, then the solution alone is divided.
            follow<Parts>(u.scale, 0, last + 1);
            if (u.size > 1 && sumBeside(k, isTwo) > most / u.size)
                for (auto &element : u.x)
                    for (T &part : element)
                        part = part / u.size;
            for (int e = 0; e <= isTwo; ++e)
                for (int part = 0; part < Parts; ++part) {
                    x[part][k + e] = u.x[e][part];
                    for (int r = 0; r < k; ++r)
                        x[part][r] = x[part][r] - u.x[e][part] * t(r, k + e);
                }
        }
        return {};
    }

    // Elements `next` to n - 1 of the vector that begins at `first`.
    template <int Parts>
    KVLM_INLINE Outcome substituteForward(const Eigenvalue<T> &w, int first, int next)
    {
        T largest = 1, bound = most;
        for (int k = next; k < n; ++k) {
            const bool isTwo = startsPair(k);
            if (sumBeside(k, isTwo) > bound) {
                multiply<Parts>(first, n, 1 / largest);
                largest = 1;
                bound = most;
            }
            Unknowns<T, Parts> u = {};
            for (int e = 0; e <= isTwo; ++e)
                for (int part = 0; part < Parts; ++part) {
                    T sum = 0;
                    for (int i = next; i < k; ++i)
                        sum += t(i, k + e) * x[part][i];
                    u.x[e][part] = x[part][k + e] - sum;
                }
            if (!solve(k, isTwo, true, w, u))
                return vanishedBlock<Parts>;
            follow<Parts>(u.scale, first, n);
            for (int e = 0; e <= isTwo; ++e)
                for (int part = 0; part < Parts; ++part) {
                    x[part][k + e] = u.x[e][part];
                    largest = larger(magnitude(u.x[e][part]), largest);
                }
            bound = most / largest;
            k += isTwo;
        }
        return {};
    }

    // Column j becomes the combination of columns `from` to `to` - 1, if there are any, and itself.
    KVLM_INLINE void combine(int j, int part, int from, int to)
    {
        const T factor = x[part][j];
        for (int r = 0; r < n; ++r) {
            T sum = 0;
            for (int k = from; k < to; ++k)
                sum += x[part][k] * q(r, k);
            const T own = factor * q(r, j);
            q(r, j) = from < to ? own + sum : own;
        }
    }
    KVLM_INLINE void scaleColumn(int j, T factor)
    {
        for (int r = 0; r < n; ++r)
            q(r, j) = q(r, j) * factor;
    }
    KVLM_INLINE T largestOfPair(int j) const
    {
        T size = 0;
        for (int r = 0; r < n; ++r)
            size = larger(magnitude(q(r, j)) + magnitude(q(r, j + 1)), size);
        return size;
    }

    const Order n;
    const Columns<T, Order> t, q;
    const T *const sums;
    T *const x[2];
    const T least, most;
};

// Settled: 32f takes the processor's approximate reciprocal root and one Newton step.
KVLM_INLINE float reciprocalRootOf(float s)
{
    const float y = roughReciprocalRoot(s);
    return (-0.5f * y) * (s * y * y - 3);
}

KVLM_INLINE double reciprocalRootOf(double s)
{
    return 1 / squareRoot(s);
}

// Vectors of Euclidean length 1; a pair is turned so that its largest element is real, up to rounding.
template <class T, class Order>
class Normalisation {
public:
    KVLM_INLINE Normalisation(Columns<T, Order> q, const T *imaginary) : n(q.n), q(q), imaginary(imaginary) {}

    KVLM_INLINE void run() const
    {
        for (int j = 0; j < n; ++j)
            if (magnitude(get(imaginary + j)) >= smallestNormal<T>) {
                normalisePair(q.column(j), q.column(j + 1));
                ++j;
            } else
                normaliseReal(q.column(j));
    }

private:
    KVLM_INLINE T squares(const T *u) const
    {
        T sum = 0;
        for (int r = 0; r < n; ++r)
            sum += u[r] * u[r];
        return sum;
    }

    KVLM_INLINE void normaliseReal(T *u) const
    {
        const T sum = squares(u);
        if (smallestNormal<T> >= magnitude(sum))
            return;
        const T factor = reciprocalRootOf(sum);
        for (int r = 0; r < n; ++r)
            u[r] = u[r] * factor;
    }

    KVLM_INLINE void normalisePair(T *u, T *v) const
    {
        const T factor = reciprocalRootOf(squares(u) + squares(v));
        for (int r = 0; r < n; ++r) {
            u[r] = u[r] * factor;
            v[r] = v[r] * factor;
        }
        int k = 0;
        for (int r = 1; r < n; ++r)
            if (u[r] * u[r] + v[r] * v[r] > u[k] * u[k] + v[k] * v[k])
                k = r;
        const T f = u[k], g = v[k], norm = squareRoot(f * f + g * g);
        T cosine = f / norm, sine = g / norm;
        if (cosine < 0 && magnitude(f) > magnitude(g)) {
            cosine = -cosine;
            sine = -sine;
        }
        for (int r = 0; r < n; ++r) {
            const T x = u[r], y = v[r];
            u[r] = cosine * x + sine * y;
            v[r] = cosine * y - sine * x;
        }
    }

    const Order n;
    const Columns<T, Order> q;
    const T *const imaginary;
};

} // namespace kvlm::eigen

#endif
