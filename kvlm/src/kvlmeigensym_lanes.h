// Symmetric eigenproblems of orders 3 to 6, one object per lane: all lanes sweep together, each over the block that it
// has come to, and those with less to do wait behind masks. What is out of the ordinary in any lane (a rotation that
// vanishes, very many sweeps, a singular matrix) gives the group up.
#ifndef KVLMEIGENSYM_LANES_H
#define KVLMEIGENSYM_LANES_H

#include "kvlmeigensym.h"

namespace kvlm::eigensym {

// V is a register of the numbers that Kind works with.
template <class Kind, int N, class V>
class SymmetricGroup {
    using T = typename Kind::Element;
    static_assert(Kind::skipsSmallSum && Kind::skipsSmallDifference && !Kind::hasWideRoot && !Kind::comparesWithZero);

public:
    static constexpr int columns = Kind::hasVectors ? N : 1;

    V a[N][N], values[N], vectors[N][columns]; // vector c is column c

    // False, with nothing to be used, if an object needs the other way.
    KVLM_INLINE bool solve()
    {
        reduce();
        fromTop = greater(magnitude(a[N - 1][N - 1]), magnitude(a[0][0]));
#pragma GCC unroll 6
        for (int i = 0; i < N; ++i)
            d[i] = choose(fromTop, a[i][i], a[N - 1 - i][N - 1 - i]);
#pragma GCC unroll 6
        for (int i = 0; i < N - 1; ++i)
            e[i] = choose(fromTop, a[i + 1][i], a[N - 1 - i][N - 2 - i]);
        mirrorVectors();
#pragma GCC unroll 6
        for (int i = 0; i < N - 1; ++i)
            resolved[i] = V::all(0);
        product = V::all(1);
        for (int sweeps = 0; findBlocks(); ++sweeps)
            if (sweeps == maxSweeps || !sweep())
                return false;
        return finish();
    }

private:
    static KVLM_INLINE V bound()
    {
        return V::all(Kind::epsilon);
    }

    KVLM_INLINE void reduce()
    {
#pragma GCC unroll 4
        for (int k = 1; k < N - 1; ++k) {
            V u[N], sum = V::all(0);
#pragma GCC unroll 6
            for (int r = k; r < N; ++r) {
                u[r] = a[r][k - 1];
                sum = sum + u[r] * u[r];
            }
            const V norm = squareRoot(sum), x = u[k];
            const V positive = greater(x, bound()), tiny = without(atLeast(bound(), magnitude(x)), positive);
            u[k] = roundedTo<T>(choose(positive, x + norm, choose(tiny, norm, x - norm)));
            const V h =
                choose(positive, (sum + norm * x) * V::all(2), choose(tiny, sum + sum, (sum - norm * x) * V::all(2)));
            const V active =
                without(greater(sum, bound()) & greater(h, bound()), atLeast(bound(), magnitude(norm - x)));
#pragma GCC unroll 6
            for (int r = k; r < N; ++r)
                u[r] = u[r] & active;
            reflect(k, u, (V::all(2) / h) & active, active);
        }
    }

    // Lanes that are not active subtract +0 everywhere: that changes nothing.
    KVLM_INLINE void reflect(int k, const V (&u)[N], V f, V active)
    {
        const auto line = [&](auto at) KVLM_INLINED {
            V sum = V::all(0);
#pragma GCC unroll 6
            for (int r = k; r < N; ++r)
                sum = sum + at(r) * u[r];
            const V t = (sum * f) & active;
#pragma GCC unroll 6
            for (int r = k; r < N; ++r)
                at(r) = roundedTo<T>(at(r) - u[r] * t);
        };
#pragma GCC unroll 6
        for (int c = k - 1; c < N; ++c)
            line([&](int r) KVLM_INLINED -> V & { return a[r][c]; });
#pragma GCC unroll 6
        for (int r = k - 1; r < N; ++r)
            line([&](int c) KVLM_INLINED -> V & { return a[r][c]; });
        if constexpr (Kind::hasVectors) {
            if (k > 1) {
#pragma GCC unroll 6
                for (int r = 1; r < N; ++r)
                    line([&](int c) KVLM_INLINED -> V & { return vectors[r][c]; });
                return;
            }
#pragma GCC unroll 6
            for (int r = 0; r < N; ++r) {
                vectors[0][r] = vectors[r][0] = V::all(r == 0);
                if (r == 0)
                    continue;
                vectors[r][r] = roundedTo<T>(V::all(1) - f * u[r] * u[r]);
#pragma GCC unroll 6
                for (int c = r + 1; c < N; ++c)
                    vectors[r][c] = vectors[c][r] = roundedTo<T>(u[r] * negative(f) * u[c]) & active;
            }
        }
    }

    // Columns in the order of the iteration, and back.
    KVLM_INLINE void mirrorVectors()
    {
        if constexpr (Kind::hasVectors)
#pragma GCC unroll 6
            for (int r = 0; r < N; ++r)
#pragma GCC unroll 3
                for (int c = 0; c < N / 2; ++c) {
                    V &left = vectors[r][c], &right = vectors[r][N - 1 - c];
                    const V change = without(left ^ right, fromTop);
                    left = left ^ change;
                    right = right ^ change;
                }
    }

    // The first block of each lane that is still coupled: inBlock[i] says that e[i] is. Whether there is any.
    KVLM_INLINE bool findBlocks()
    {
        V before = V::all(0), previous = V::all(0);
#pragma GCC unroll 5
        for (int i = 0; i < N - 1; ++i) {
            const V coupled = greater(magnitude(V::all(0.5) * e[i]), bound());
            inBlock[i] = without(coupled, without(before, previous));
            before = before | coupled;
            if (Kind::multipliesAtStops) {
                const V notCoupled = equal(V::all(0), V::all(0)) ^ before;
                const V passed = without(notCoupled, resolved[i]), split = without(previous, coupled);
                product = choose(without(passed | split, fromTop), product * d[i], product);
                resolved[i] = notCoupled;
            }
            previous = inBlock[i];
        }
        return any(before);
    }

    // False if a rotation vanishes.
    KVLM_INLINE bool sweep()
    {
        const V none = V::all(0), one = V::all(1);
        V first[N - 1], diagonal = none, next = none, coupling = none, last = none;
#pragma GCC unroll 5
        for (int i = 0; i < N - 1; ++i) {
            first[i] = i == 0 ? inBlock[0] : without(inBlock[i], inBlock[i - 1]);
            diagonal = diagonal | (d[i] & first[i]);
            next = next | (d[i + 1] & first[i]);
            coupling = coupling | (e[i] & first[i]);
            last = last | (d[i + 1] & (i == N - 2 ? inBlock[i] : without(inBlock[i], inBlock[i + 1])));
        }
        V g = (next - diagonal) / (V::all(2) * coupling);
        const V root = squareRoot(g * g + one);
        g = (last - diagonal) + coupling / choose(greater(g, bound()), g + root, g - root);
        V s = one, c = one, p = none, q = none;
#pragma GCC unroll 5
        for (int i = N - 2; i >= 0; --i) {
            const V active = inBlock[i];
            const V f = s * e[i], b = c * e[i], r = squareRoot(f * f + g * g);
            if (any(active & notGreater(magnitude(r), bound())))
                return false;
            if (i < N - 2)
                e[i + 1] = choose(active & inBlock[i + 1], roundedTo<T>(r), e[i + 1]);
            V sine, cosine;
            if constexpr (Kind::rotatesByReciprocal) {
                const V reciprocal = one / r;
                rotate(i, g, f, reciprocal);
                sine = f * reciprocal;
                cosine = reciprocal * g;
            } else {
                sine = f / r;
                cosine = g / r;
            }
            const V old = d[i + 1] - p, change = (d[i] - old) * sine + (cosine + cosine) * b, moved = change * sine;
            d[i + 1] = choose(active, roundedTo<T>(old + moved), d[i + 1]);
            s = choose(active, sine, s);
            c = choose(active, cosine, c);
            p = choose(active, moved, p);
            q = choose(active, change, q);
            g = choose(active, change * cosine - b, g);
        }
        const V ends = greater(magnitude(q), bound());
#pragma GCC unroll 5
        for (int i = 0; i < N - 1; ++i) {
            const V update = first[i] & (i == 0 ? ends | fromTop : ends);
            d[i] = choose(update, roundedTo<T>(d[i] - p), d[i]);
            e[i] = choose(update, roundedTo<T>(g), e[i]);
        }
        return true;
    }

    KVLM_INLINE void rotate(int i, V c, V s, V scale)
    {
#pragma GCC unroll 6
        for (int r = 0; r < N; ++r) {
            V &near = vectors[r][i], &far = vectors[r][i + 1];
            const V x = near * scale, y = far * scale;
            near = choose(inBlock[i], roundedTo<T>(c * x - s * y), near);
            far = choose(inBlock[i], roundedTo<T>(s * x + c * y), far);
        }
    }

    KVLM_INLINE bool finish()
    {
        if (Kind::multipliesAtStops)
            product = choose(fromTop, V::all(1), product * d[N - 1]);
#pragma GCC unroll 6
        for (int i = 0; i < N; ++i) {
            values[i] = choose(fromTop, d[i], d[N - 1 - i]);
            product = Kind::multipliesAtStops ? choose(fromTop, product * values[i], product) : product * values[i];
        }
        mirrorVectors();
        if (any(atLeast(bound(), magnitude(product))))
            return false;
#pragma GCC unroll 5
        for (int i = 0; i < N - 1; ++i) {
            V best = values[i];
            Choice<V, N> choice;
#pragma GCC unroll 5
            for (int j = i + 1; j < N; ++j) {
                choice.taken[j] = greater(values[j], best);
                best = larger(values[j], best);
            }
            choice.settle(i);
            choice.exchange(i, [&](int j) KVLM_INLINED -> V & { return values[j]; });
            if constexpr (Kind::hasVectors)
#pragma GCC unroll 6
                for (int r = 0; r < N; ++r)
                    choice.exchange(i, [&](int j) KVLM_INLINED -> V & { return vectors[r][j]; });
        }
        return true;
    }

    V d[N], e[N - 1], inBlock[N - 1], resolved[N - 1], fromTop, product;
};

// One copy for all descriptions.
template <class Kind, int N, class V>
KVLM_NOINLINE bool solveGroup(SymmetricGroup<Kind, N, V> &group)
{
    return group.solve();
}

// Groups of V::count objects: x[r][c] holds the matrices on entry and the vectors on return.
template <class Kind, int N, class V>
KVLM_INLINE bool solveGroup(V (&x)[N][N], V (&values)[N])
{
    using Group = SymmetricGroup<Kind, N, NumberWith<V, typename Kind::Work>>;
    Group group;
    if constexpr (std::is_same_v<typename NumberTraits<V>::Element, typename Kind::Work>) {
        memcpy(group.a, x, sizeof x);
        if (!solveGroup(group))
            return false;
        memcpy(values, group.values, sizeof values);
        if constexpr (Kind::hasVectors)
            memcpy(x, group.vectors, sizeof x);
    } else {
        Group other;
#pragma GCC unroll 6
        for (int r = 0; r < N; ++r)
#pragma GCC unroll 6
            for (int c = 0; c < N; ++c)
                widen(x[r][c], group.a[r][c], other.a[r][c]);
        if (!solveGroup(group) || !solveGroup(other))
            return false;
#pragma GCC unroll 6
        for (int r = 0; r < N; ++r) {
            values[r] = narrow(group.values[r], other.values[r]);
#pragma GCC unroll 6
            for (int c = 0; c < N; ++c)
                x[r][c] = narrow(group.vectors[r][c], other.vectors[r][c]);
        }
    }
    return true;
}

// A batch of an order that is unrolled; `d` is null where vectors are not wanted.
template <class Kind, int N, class T>
KVLM_NOINLINE KvlStatus solveBatch(const Objects<const T> &s, const Objects<T> *d, T *values, int count)
{
    const SharedGroups<Load, const T, Fixed<N>, Fixed<N>> source(s, {}, {});
    const auto groups = [&](auto isApart, auto store) KVLM_INLINED {
        return inAnyGroups<T, true>(
            count,
            [&](ptrdiff_t i, auto number) KVLM_INLINED {
                using V = typename decltype(number)::Number;
                V x[N][N], value[N];
                if (!isApart(i, number))
                    return false;
                source.move(i, x[0]);
                if (!solveGroup<Kind>(x, value))
                    return false;
                store(i, x[0]);
                storeRuns<N>(groupOf<T, V::count>([&](int l) KVLM_INLINED { return values + (i + l) * N; }).p, value);
                return true;
            },
            [&](ptrdiff_t i) KVLM_INLINED { return solveLocally<Kind, N>(s, d, values + i * N, i); });
    };
    if constexpr (Kind::hasVectors) {
        const AnyGroupApart<T> apart(*d, N, N);
        const SharedGroups<Store, T, Fixed<N>, Fixed<N>> result(*d, {}, {});
        return groups(apart, [&](ptrdiff_t i, auto *x) KVLM_INLINED { result.move(i, x); });
    } else
        return groups([](ptrdiff_t, auto) KVLM_INLINED { return true; }, [](ptrdiff_t, auto *) KVLM_INLINED {});
}

// An array of matrices: values alone, then with vectors.
template <class Kind, class T>
KVLM_NOINLINE KvlStatus solveArray(const Objects<const T> &s, const Objects<T> *d, T *buffer, T *values, int n,
                                   int count)
{
    return bySmallOrder(
        n, [&](auto order) KVLM_INLINED { return solveBatch<Kind, order>(s, d, values, count); },
        [&]() KVLM_INLINED {
            return untilOneFails(count, [&](ptrdiff_t i) KVLM_INLINED {
                return solveGeneral<Kind>(s, d, buffer, values + i * n, n, i);
            });
        });
}

template <class S, class T>
KVLM_INLINE KvlStatus eigenValuesSymBatch(const S &s, Buffer<T> buffer, PerObject<T> values, Length n, Count count)
{
    return solveArray<ValuesOfArray<T>, T>(objectsOf(s, n.length), nullptr, buffer.base, values.base, n.length,
                                           count.count);
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus eigenVectorsSymBatch(const S &s, Buffer<T> buffer, const D &d, PerObject<T> values, Length n,
                                           Count count)
{
    const auto vectors = objectsOf(d, n.length);
    return solveArray<VectorsOfArray<T>, T>(objectsOf(s, n.length), &vectors, buffer.base, values.base, n.length,
                                            count.count);
}

} // namespace kvlm::eigensym

#endif
