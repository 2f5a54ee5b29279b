/**
 * @file each_symmetric.hpp
 * Eigenproblems of arrays of symmetric matrices, with a status for each object: see each.hpp.
 */
#ifndef KVLM_EACH_SYMMETRIC_HPP
#define KVLM_EACH_SYMMETRIC_HPP

#include "each_block.hpp"
#include "each_lanes.hpp"

namespace kvlm {
namespace each {
namespace detail {

/// Symmetric matrices of order N, or of `order` where N is 0, one in each lane, magnitudes up to about 1.
template <class T, int N, bool hasVectors>
class SymmetricQL {
public:
    using W = Lanes<T>;

    static constexpr std::size_t roomFor(int n) { return numberOf(n, 2 * n + 3); }

    SymmetricQL(int order, W *room) : n(N ? N : order), a(room), v(a + n * n), d(v + n * n), e(d + n), u(e + n) {}

    /// Element (r, c) of the source, of which the lower triangle is read.
    W &source(int r, int c) { return a[r * n + c]; }
    const W &value(int i) const { return d[i]; }
    const W &vector(int i, int r) const { return v[i * n + r]; }

    /// Leaves the values in descending order. False if the limit of sweeps is met, as no finite matrix does.
    bool solve()
    {
        if (hasVectors)
            for (int i = 0; i < n; ++i)
                for (int r = 0; r < n; ++r)
                    v[i * n + r] = T(i == r);
        for (int k = 0; k + 2 < n; ++k)
            reflect(k);
        for (int i = 0; i < n; ++i) {
            d[i] = a[i * n + i];
            e[i] = i + 1 < n ? a[(i + 1) * n + i] : W(0);
        }
        for (int l = 0; l + 1 < n; ++l)
            for (int sweeps = 0; sweep(l); ++sweeps)
                if (sweeps == 60)
                    return false;
        sort();
        return true;
    }

private:
    /// Squares from here on are exact enough; what has smaller ones counts as zero.
    static constexpr T least = std::numeric_limits<T>::min() / std::numeric_limits<T>::epsilon();
    static constexpr T leastRoot = sizeof(T) == 4 ? T(0x1p-48) : T(0x1p-480);

    /// Householder: clears column k below the sub-diagonal (Golub and Van Loan, Matrix Computations, 8.3.1).
    void reflect(int k)
    {
        W tail = 0;
        for (int i = k + 2; i < n; ++i)
            tail = tail + a[i * n + k] * a[i * n + k];
        const auto hasTail = tail > W(least);
        const W first = a[(k + 1) * n + k], length = root(first * first + tail);
        const W beta = select(first > W(0), W(0) - length, length);
        const W factor = select(hasTail, W(1) / (beta * (beta - first)), W(0));
        u[k + 1] = first - beta;
        for (int i = k + 2; i < n; ++i)
            u[i] = a[i * n + k];
        a[(k + 1) * n + k] = select(hasTail, beta, first);

        // A - u*q' - q*u', with q in e.
        W product = 0;
        for (int i = k + 1; i < n; ++i) {
            W s = 0;
            for (int j = k + 1; j < n; ++j)
                s = s + (j <= i ? a[i * n + j] : a[j * n + i]) * u[j];
            e[i] = s * factor;
            product = product + e[i] * u[i];
        }
        const W half = product * factor * W(T(0.5));
        for (int i = k + 1; i < n; ++i)
            e[i] = e[i] - half * u[i];
        for (int i = k + 1; i < n; ++i)
            for (int j = k + 1; j <= i; ++j)
                a[i * n + j] = a[i * n + j] - (u[i] * e[j] + e[i] * u[j]);

        if (hasVectors)
            for (int r = 1; r < n; ++r) {
                W s = 0;
                for (int i = k + 1; i < n; ++i)
                    s = s + v[i * n + r] * u[i];
                s = s * factor;
                for (int i = k + 1; i < n; ++i)
                    v[i * n + r] = v[i * n + r] - s * u[i];
            }
    }

    /// One implicit QL sweep with Wilkinson's shift for value l, from the first negligible e[m] up (Golub and Van Loan,
    /// 8.3.5; EISPACK's tql2). Lanes whose d[l] is a value are left alone; false if all are.
    bool sweep(int l)
    {
        // In u: all ones where i < m.
        LaneMask<T> isOpen = W(1) > W(0);
        const LaneMask<T> all = isOpen;
        W last = d[l];
        for (int i = l; i + 1 < n; ++i) {
            const W size = magnitude(e[i]);
            isOpen = isOpen & (size > W(std::numeric_limits<T>::epsilon()) * (magnitude(d[i]) + magnitude(d[i + 1]))) &
                     (size > W(leastRoot));
            if (i == l && !any(isOpen))
                return false;
            u[i] = select(isOpen, W(1), W(0));
            last = select(isOpen, d[i + 1], last);
        }
        LaneMask<T> isRunning = u[l] > W(0);
        const W below = select(isRunning, e[l], W(1));
        W g = (d[l + 1] - d[l]) / (below + below), r = root(g * g + W(1));
        g = last - d[l] + below / (g + select(g > W(0), r, W(0) - r));
        W s = 1, c = 1, p = 0;
        isRunning = all;
        LaneMask<T> isBegun = !all;
        for (int i = n - 2; i >= l; --i) {
            const LaneMask<T> isIn = (u[i] > W(0)) & isRunning;
            const W f = s * e[i], b = c * e[i], square = f * f + g * g;
            const LaneMask<T> isRegular = square > W(least), turns = isIn & isRegular, ends = isIn & !isRegular;
            r = root(square);
            // e[m] becomes 0; where f and g count as zero, the block splits, and what was turned so far stands in e[i].
            e[i + 1] = select(turns & isBegun, r, select(isIn, W(0), e[i + 1]));
            e[i] = select(ends, b, e[i]);
            const W inverse = W(1) / select(isRegular, r, W(1));
            s = select(turns, f * inverse, s);
            c = select(turns, g * inverse, c);
            const W next = d[i + 1] - p, t = (d[i] - next) * s + (c + c) * b, change = s * t;
            d[i + 1] = select(turns, next + change, select(ends, next, d[i + 1]));
            p = select(turns, change, p);
            g = select(turns, c * t - b, g);
            isRunning = isRunning & !ends;
            isBegun = turns;
            if (hasVectors) {
                const W sine = select(turns, s, W(0)), cosine = select(turns, c, W(1));
                for (int k = 0; k < n; ++k) {
                    const W x = v[i * n + k], y = v[(i + 1) * n + k];
                    v[(i + 1) * n + k] = sine * x + cosine * y;
                    v[i * n + k] = cosine * x - sine * y;
                }
            }
        }
        const LaneMask<T> isWhole = (u[l] > W(0)) & isRunning;
        d[l] = select(isWhole, d[l] - p, d[l]);
        e[l] = select(isWhole, g, e[l]);
        return true;
    }

    void sort()
    {
        for (int i = 0; i + 1 < n; ++i)
            for (int j = i + 1; j < n; ++j) {
                const LaneMask<T> isLess = d[j] > d[i];
                exchange(isLess, d[i], d[j]);
                if (hasVectors)
                    for (int k = 0; k < n; ++k)
                        exchange(isLess, v[i * n + k], v[j * n + k]);
            }
    }
    static void exchange(const LaneMask<T> &where, W &x, W &y)
    {
        const W old = x;
        x = select(where, y, x);
        y = select(where, old, y);
    }

    const int n;
    W *const a, *const v, *const d, *const e, *const u;
};

/// As many objects at a time as there are lanes.
template <int N, bool hasVectors, class A, class F, class T>
int symmetric(const A &a, const F &vectors, T *values, KvlStatus *statuses)
{
    using QL = SymmetricQL<T, N, hasVectors>;
    constexpr int lanes = Lanes<T>::count;
    const int n = N ? N : a.rows(), count = a.count();
    Block<A> source(a);
    Block<F> destination(vectors);
    Room<Lanes<T>, N ? static_cast<int>(QL::roomFor(N)) : 300> room;
    QL ql(n, room.get(QL::roomFor(n)));
    int failures = 0;
    T reciprocals[lanes];
    const int most = std::min({lanes, source.most(), destination.most()});
    for (int first = 0, objects; first < count; first += objects) {
        objects = std::min(most, count - first);
        const auto in = source.load(first, objects);
        for (int lane = 0; lane < lanes; ++lane) {
            const int i = std::min(lane, objects - 1);
            decltype(magnitudeBits(T())) largest = 0;
            for (int r = 0; r < n; ++r)
                for (int c = 0; c <= r; ++c)
                    largest = std::max(largest, magnitudeBits(in(i, r, c)));
            T size;
            std::memcpy(&size, &largest, sizeof(size));
            const bool isInput = isFinite(size);
            const Power<T> power(size);
            for (int r = 0; r < n; ++r)
                for (int c = 0; c <= r; ++c)
                    ql.source(r, c).set(lane, isInput ? in(i, r, c) * power.factor : T(0));
            reciprocals[lane] = isInput ? power.reciprocal : notANumber<T>;
        }
        const bool isSolved = ql.solve();
        const auto out = destination.open(first, objects);
        for (int i = 0; i < objects; ++i) {
            // Not only what is not finite fails here, but also the largest values, the first or the last.
            const bool isDone = isSolved && isFinite(ql.value(0).get(i) * reciprocals[i]) &&
                                isFinite(ql.value(n - 1).get(i) * reciprocals[i]);
            statuses[first + i] = isDone ? kvlOk : kvlErrNoConvergence;
            failures += !isDone;
            for (int k = 0; k < n; ++k) {
                values[static_cast<std::ptrdiff_t>(first + i) * n + k] =
                    isDone ? ql.value(k).get(i) * reciprocals[i] : notANumber<T>;
                if constexpr (hasVectors)
                    for (int r = 0; r < n; ++r)
                        // Lanes that are done turn by no angle, which leaves the signs of zeros open.
                        out(i, r, k) = isDone ? ql.vector(k, r).get(i) + T(0) : notANumber<T>;
            }
        }
        if constexpr (hasVectors)
            destination.store(first, objects);
    }
    return failures;
}
template <bool hasVectors, class A, class F, class T>
int symmetricOfOrder(const A &a, const F &vectors, T *values, KvlStatus *statuses)
{
    switch (a.rows()) {
    case 3:
        return symmetric<3, hasVectors>(a, vectors, values, statuses);
    case 4:
        return symmetric<4, hasVectors>(a, vectors, values, statuses);
    case 5:
        return symmetric<5, hasVectors>(a, vectors, values, statuses);
    case 6:
        return symmetric<6, hasVectors>(a, vectors, values, statuses);
    default:
        return symmetric<0, hasVectors>(a, vectors, values, statuses);
    }
}

} // namespace detail

/**
 * Eigenvalues of symmetric matrices, in descending order, n adjacent elements of `values` for each object. The lower
 * triangle is read.
 *
 * Any finite matrix has its values: singular, zero, clustered, tiny and huge ones. Only what is not finite, or has a
 * value that the type can't hold, gets kvlErrNoConvergence. Values are within a small multiple of n*epsilon*|A|.
 *
 * The C functions' test for zero can't be mended from outside, as only vectors would show a wrong value. So the method
 * is here: eight floats, or four doubles, are scaled by powers of two and solved at once, one matrix in each lane, by
 * Householder's tridiagonalisation and implicit QL sweeps with Wilkinson's shift (Golub and Van Loan, Matrix
 * Computations, 8.3; EISPACK's tred2 and tql2).
 */
template <class A>
int eigenvaluesSym(const A &a, detail::ElementOf<A> *values, KvlStatus *statuses)
{
    const KvlStatus status =
        detail::check(values && statuses && detail::isThere(a), a.count(), a.rows(), detail::isSquare(a));
    return status != kvlOk ? status : detail::symmetricOfOrder<false>(a, a, values, statuses);
}

/**
 * The same with vectors: column k of `vectors`, elements (0, k) to (n-1, k), belongs to value k. |A*v - w*v| is a small
 * multiple of n*epsilon*|A|, the departure from orthogonality of n*epsilon. `vectors` may be a.
 */
template <class A, class F>
int eigenvectorsSym(const A &a, const F &vectors, detail::ElementOf<A> *values, KvlStatus *statuses)
{
    const KvlStatus status = detail::check(values && statuses && detail::isThere(a) && detail::isThere(vectors),
                                           a.count(), a.rows(), detail::isSquare(a) && detail::isAlike(a, vectors));
    return status != kvlOk ? status : detail::symmetricOfOrder<true>(a, vectors, values, statuses);
}

} // namespace each
} // namespace kvlm

#endif
