// General eigenproblems of orders 3 to 6, one object per lane: reduction and sweeps are made for all lanes together,
// each over its own active block behind masks; blocks are resolved object by object. What is out of the ordinary in any
// lane (so many sweeps that an exceptional shift is due) gives the group up.
#ifndef KVLMEIGEN_LANES_H
#define KVLMEIGEN_LANES_H

#include "kvlmeigen_schur.h"
#include "lanes/several.h"

namespace kvlm::eigen {

// How many objects a number stands for.
template <class V>
constexpr int lanesOf = sizeof(V) / sizeof(typename NumberTraits<V>::Element);

// One object of a group whose matrices are arrays of numbers, by columns.
template <class V, int N>
struct LaneColumns {
    using T = typename NumberTraits<V>::Element;
    using Element = T;
    static constexpr int step = lanesOf<V>;
    static constexpr Fixed<N> n = {};

    T *base;

    KVLM_INLINE T *column(ptrdiff_t j) const { return base + j * N * step; }
    KVLM_INLINE T &operator()(ptrdiff_t i, ptrdiff_t j) const { return column(j)[i * step]; }
};

// A function of numbers, to a number or a mask, computed in 64f.
template <class F, class V, size_t... K>
KVLM_INLINE V applied(F f, const V *x, std::index_sequence<K...>)
{
    return f(x[K]...);
}

template <class F, class V, class... X>
KVLM_INLINE V inDoubles(F f, V x, X... more)
{
    if constexpr (std::is_same_v<typename NumberTraits<V>::Element, double>)
        return f(x, more...);
    else {
        constexpr size_t count = 1 + sizeof...(X);
        const V given[] = {x, more...};
        NumberWith<V, double> low[count], high[count];
#pragma GCC unroll 4
        for (size_t k = 0; k < count; ++k)
            widen(given[k], low[k], high[k]);
        return narrow(applied(f, low, std::make_index_sequence<count>()),
                      applied(f, high, std::make_index_sequence<count>()));
    }
}

template <class F, class T, int Registers, class... X>
KVLM_INLINE Several<T, Registers> inDoubles(F f, const Several<T, Registers> &x, const X &...more)
{
    return Several<T, Registers>::of([&](int p) KVLM_INLINED { return inDoubles(f, x.part[p], more.part[p]...); });
}

template <class V>
KVLM_INLINE V pairNorms(const V &x, const V &y)
{
    using T = typename NumberTraits<V>::Element;
    const V first = greater(x, y), big = choose(first, x, y), small = choose(first, y, x);
    const auto root = [](auto q) KVLM_INLINED { return squareRoot(decltype(q)::all(1) + q); };
    const V scaled = big * inDoubles(root, (small * small) / (big * big));
    return choose(atLeast(small, V::all(smallestNormal<T>)), scaled, big);
}

template <class V, class Length>
KVLM_INLINE V makeReflectors(V &alpha, V *x, Length length)
{
    using T = typename NumberTraits<V>::Element;
    V sum = V::all(0);
    eachIndex(length, [&](int k) KVLM_INLINED { sum = sum + x[k] * x[k]; });
    const V norm = squareRoot(sum), alive = atLeast(norm, V::all(smallestNormal<T>));
    const V whole = pairNorms(magnitude(alpha), norm);
    const V beta = whole ^ (atLeast(alpha, V::all(0)) & V::all(T(-0.0)));
    const V tau = (beta - alpha) / beta, scale = V::all(1) / (alpha - beta);
    eachIndex(length, [&](int k) KVLM_INLINED { x[k] = choose(alive, scale * x[k], x[k]); });
    alpha = choose(alive, beta, alpha);
    return tau & alive;
}

// V is a register or several.
template <class V, int N, bool HasSchur>
class GeneralGroup {
    using T = typename NumberTraits<V>::Element;
    static constexpr int sweepsBeforeShift = 10;

public:
    static constexpr int lanes = lanesOf<V>;

    // Element (i, j) of H is columns[j][i]; the vectors of the Schur form lie behind it.
    V columns[HasSchur ? 2 * N : N][N];
    T re[lanes][N], im[lanes][N];

    KVLM_INLINE V *source() { return columns[0]; } // H is the source by rows
    KVLM_INLINE LaneColumns<V, N> object(int lane, int block) const
    {
        return {const_cast<T *>(reinterpret_cast<const T *>(columns[block * N])) + lane};
    }

    // False, with nothing to be used, if an object needs the other way.
    KVLM_INLINE bool solve() { return solve(std::make_integer_sequence<int, lanes>()); }

private:
    using Iteration = QRIteration<LaneColumns<V, N>, HasSchur>;
    // The active block of each lane, and the sweeps after which it was found.
    struct Blocks {
        T tops[lanes], bottoms[lanes];
        int found[lanes];
    };

    template <int... Lane>
    KVLM_INLINE bool solve(std::integer_sequence<int, Lane...>)
    {
        reduce();
        Iteration iterations[] = {Iteration(object(Lane, 0), object(Lane, HasSchur), re[Lane], im[Lane])...};
        Blocks blocks = {{}, {(void(Lane), T(N - 1))...}, {}};
        top = V::all(0);
        bottom = at(N - 1);
        for (int sweeps = 0;; ++sweeps) {
            // Measured: with few lanes the iterations find their blocks faster one by one.
            if (!(lanes > 2 * Lanes<T>::count ? findTogether(iterations, blocks, sweeps)
                                              : findEach(iterations, blocks)))
                return false;
            if (lowest < 0)
                return true;
            sweep();
        }
    }

    // The blocks to sweep over next; false if one needs an exceptional shift.
    KVLM_INLINE bool findEach(Iteration (&iterations)[lanes], Blocks &blocks)
    {
        lowest = -1;
        for (int lane = 0; lane < lanes; ++lane) {
            Iteration &one = iterations[lane];
            if (one.bottom >= 0 && one.advance() && ++one.sweeps > sweepsBeforeShift)
                return false;
            blocks.tops[lane] = static_cast<T>(one.top);
            blocks.bottoms[lane] = static_cast<T>(one.bottom);
            lowest = one.bottom > lowest ? one.bottom : lowest;
        }
        top = V::load(blocks.tops);
        bottom = V::load(blocks.bottoms);
        return true;
    }

    // The same, where only lanes that have something to resolve leave it to their iterations.
    KVLM_INLINE bool findTogether(Iteration (&iterations)[lanes], Blocks &blocks, int sweeps)
    {
        unsigned bits = deflate(blocks.tops);
        if (bits) {
            for (; bits; bits &= bits - 1) {
                const int lane = __builtin_ctz(bits);
                Iteration &one = iterations[lane];
                const int before = one.bottom;
                one.top = static_cast<int>(blocks.tops[lane]);
                one.advance();
                blocks.tops[lane] = static_cast<T>(one.top);
                blocks.bottoms[lane] = static_cast<T>(one.bottom);
                blocks.found[lane] = one.bottom < before ? sweeps : blocks.found[lane];
            }
            top = V::load(blocks.tops);
            bottom = V::load(blocks.bottoms);
            while (lowest >= 0 && !any(atLeast(bottom, at(lowest))))
                --lowest;
        }
        for (int lane = 0; sweeps >= sweepsBeforeShift && lane < lanes; ++lane)
            if (iterations[lane].bottom >= 0 && sweeps - blocks.found[lane] >= sweepsBeforeShift)
                return false;
        return true;
    }

    // Moves the tops down as each iteration would; the lanes that then have a block to resolve, or that need their
    // iteration for it.
    KVLM_INLINE unsigned deflate(T (&tops)[lanes])
    {
        V found = top, special = V::all(0);
#pragma GCC unroll 5
        for (int k = 1; k < N; ++k) {
            const V inBlock = greater(at(k), top) & atLeast(bottom, at(k));
            V bound = V::all(Iteration::epsilon);
            if constexpr (HasSchur) {
                const V size = magnitude(h(k - 1, k - 1)) + magnitude(h(k, k)), relative = size * bound,
                        least = V::all(Iteration::leastBound(N));
                special = special | (inBlock & notGreater(size, V::all(smallestNormal<T>)));
                bound = choose(greater(relative, least), relative, least);
            }
            found = choose(inBlock & notGreater(magnitude(h(k, k - 1)), bound), at(k), found);
        }
        top = choose(special, top, found);
#pragma GCC unroll 5
        for (int k = 1; k < N; ++k)
            h(k, k - 1) = without(h(k, k - 1), equal(top, at(k)));
        top.store(tops);
        return laneBits(special | (atLeast(top + V::all(1), bottom) & atLeast(bottom, V::all(0))));
    }

    KVLM_INLINE V &h(int i, int j)
    {
        return columns[j][i];
    }
    KVLM_INLINE V &q(int i, int j)
    {
        return columns[N + j][i];
    }

    // Subtracts what is not masked: +0 changes nothing.
    static KVLM_INLINE void reduceBy(V &x, V product, V mask)
    {
        x = x - (product & mask);
    }

    KVLM_INLINE void reflectColumns(V (*c)[N], int top, int first, const V *v, V tau, V mask)
    {
#pragma GCC unroll 5
        for (int j = first; j < N; ++j) {
            V sum = V::all(0);
#pragma GCC unroll 5
            for (int r = top; r < N; ++r)
                sum = sum + c[j][r] * v[r];
#pragma GCC unroll 5
            for (int r = top; r < N; ++r)
                reduceBy(c[j][r], (tau * v[r]) * sum, mask);
        }
    }

    // To Hessenberg form; with HasSchur also the product of the reflectors.
    KVLM_INLINE void reduce()
    {
        V taus[N], masks[N];
#pragma GCC unroll 4
        for (int k = 0; k < N - 2; ++k) {
            V *const v = columns[k]; // from row k + 1 on
            V beta = v[k + 1];
            const V tau = taus[k] = makeReflectors(beta, v + k + 2, N - k - 2);
            const V mask = masks[k] = greater(magnitude(tau), V::all(smallestNormal<T>));
            v[k + 1] = V::all(1);
#pragma GCC unroll 6
            for (int i = 0; i < N; ++i) {
                V sum = V::all(0);
#pragma GCC unroll 5
                for (int c = k + 1; c < N; ++c)
                    sum = sum + h(i, c) * v[c];
                const V t = tau * sum;
#pragma GCC unroll 5
                for (int c = k + 1; c < N; ++c)
                    reduceBy(h(i, c), t * v[c], mask);
            }
            reflectColumns(columns, k + 1, k + 1, v, tau, mask);
            v[k + 1] = beta;
        }
        if constexpr (HasSchur) {
#pragma GCC unroll 6
            for (int j = 0; j < N; ++j)
#pragma GCC unroll 6
                for (int i = 0; i < N; ++i)
                    q(i, j) = i > j && j > 0 ? h(i, j - 1) : V::all(i == j);
#pragma GCC unroll 4
            for (int p = N - 2; p > 0; --p) {
                V *const v = columns[N + p];
                reflectColumns(columns + N, p, p + 1, v, taus[p - 1], masks[p - 1]);
#pragma GCC unroll 5
                for (int r = p + 1; r < N; ++r)
                    v[r] = (taus[p - 1] ^ V::all(T(-0.0))) * v[r];
                v[p] = V::all(1) - taus[p - 1];
            }
        }
#pragma GCC unroll 4
        for (int j = 0; j < N - 2; ++j)
#pragma GCC unroll 4
            for (int i = j + 2; i < N; ++i)
                h(i, j) = V::all(0);
    }

    static KVLM_INLINE V at(int k)
    {
        return V::all(static_cast<T>(k));
    }

    // What the scalar code says in the same order, up to row `lowest`.
    KVLM_INLINE void sweep()
    {
        const V none = V::all(0), half = V::all(T(0.5)), epsilon = V::all(unitRoundoff<T>);
        V h44 = none, h33 = none, below = none, above = none;
#pragma GCC unroll 4
        for (int i = 2; i < N; ++i) {
            const V here = equal(bottom, at(i));
            h44 = h44 | (h(i, i) & here);
            h33 = h33 | (h(i - 1, i - 1) & here);
            below = below | (h(i, i - 1) & here);
            above = above | (h(i - 1, i) & here);
        }
        V product = below * above;
        const V difference = half * (h33 - h44), discriminant = difference * difference + product;
        const V isReal = greater(discriminant, none), root = squareRoot(discriminant), mean = half * (h44 + h33);
        const V far = mean + (root ^ without(V::all(T(-0.0)), atLeast(mean, none)));
        const V shift = choose(greater(magnitude(h33), magnitude(h44)), (h33 * h44 - product) / far, far);
        h44 = choose(isReal, shift, h44);
        h33 = choose(isReal, shift, h33);
        product = without(product, isReal);

        V start[3] = {none, none, none}, searching = greater(bottom, none);
        first = none;
#pragma GCC unroll 4
        for (int m = N - 3; m >= 0; --m) {
            if (m > lowest - 2)
                continue;
            const V here = searching & atLeast(bottom, at(m + 2));
            const V h11 = h(m, m), h22 = h(m + 1, m + 1), a = h44 - h11, b = h33 - h11;
            V v[] = {(b * a - product) / h(m + 1, m) + h(m, m + 1), h22 - h11 - a - b, h(m + 2, m + 1)};
            const auto sum = [](auto x, auto y, auto z)
                                 KVLM_INLINED { return magnitude(x) + magnitude(y) + magnitude(z); };
            const V s = inDoubles(sum, v[0], v[1], v[2]);
#pragma GCC unroll 3
            for (int k = 0; k < 3; ++k) {
                v[k] = v[k] / s;
                start[k] = choose(here, v[k], start[k]);
            }
            first = choose(here, at(m), first);
            if (m == 0)
                break;
            const V right = (magnitude(v[0]) * inDoubles(sum, h11, h22, h(m - 1, m - 1))) * epsilon;
            const auto isSmall = [](auto x, auto y, auto z, auto bound) KVLM_INLINED {
                return notGreater(magnitude(x) * (magnitude(y) + magnitude(z)), bound);
            };
            const V stops = equal(top, at(m)) | inDoubles(isSmall, h(m, m - 1), v[1], v[2], right);
            searching = without(searching, here & stops);
        }

#pragma GCC unroll 5
        for (int k = 0; k < N - 1; ++k)
            if (k < lowest)
                step(k, start);
    }

    // The reflector of rows and columns k to k + 2; where row k + 1 is the last of the block, of these two alone.
    KVLM_INLINE void step(int k, const V (&start)[3])
    {
        const V active = atLeast(at(k), first) & greater(bottom, at(k)), begins = equal(first, at(k));
        const V three = active & greater(bottom, at(k + 1)), goesOn = without(active, begins);
        if (!any(active))
            return;
        const bool hasThird = k + 2 < N;
        V v[3] = {start[0], start[1], start[2]};
        if (k > 0) {
#pragma GCC unroll 3
            for (int e = 0; e < 2 + hasThird; ++e)
                v[e] = choose(begins, start[e], h(k + e, k - 1));
        }
        v[2] = hasThird ? v[2] & three : V::all(0);
        const V t1 = makeReflectors(v[0], v + 1, Fixed<2>());
        if (k > 0) {
            V &sub = h(k, k - 1);
            sub = choose(goesOn, v[0], sub ^ (active & begins & greater(at(k), top) & V::all(T(-0.0))));
#pragma GCC unroll 3
            for (int e = 1; e < 2 + hasThird; ++e)
                h(k + e, k - 1) = without(h(k + e, k - 1), e == 1 ? goesOn : goesOn & three);
        }
        const V t2 = t1 * v[1], t3 = t1 * v[2];
        const auto turn = [&](V &x, V &y, V &z, V where, V third) KVLM_INLINED {
            V sum = v[1] * y + x;
            if (hasThird)
                sum = choose(third, sum + v[2] * z, sum);
            reduceBy(x, t1 * sum, where);
            reduceBy(y, t2 * sum, where);
            if (hasThird)
                reduceBy(z, t3 * sum, third);
        };
        const int third = hasThird ? k + 2 : k;
#pragma GCC unroll 6
        for (int j = k; j < N; ++j)
            if (HasSchur || j <= lowest)
                turn(h(k, j), h(k + 1, j), h(third, j), active, three);
#pragma GCC unroll 6
        for (int i = 0; i < (k + 4 < N ? k + 4 : N); ++i) {
            const V where = i < k + 2 ? active : i == k + 2 ? three : three & atLeast(bottom, at(k + 3));
            if (i <= lowest)
                turn(h(i, k), h(i, k + 1), h(i, third), where, where & three);
        }
        if constexpr (HasSchur)
#pragma GCC unroll 6
            for (int i = 0; i < N; ++i)
                turn(q(i, k), q(i, k + 1), q(i, third), active, three);
    }

    int lowest = N - 1; // of all lanes
    V top, bottom, first;
};

// In one copy for all descriptions.
template <class V, int N, bool HasSchur>
KVLM_NOINLINE bool solveGroup(GeneralGroup<V, N, HasSchur> &group)
{
    return group.solve();
}

} // namespace kvlm::eigen

#endif
