// The solver that follows the LU decomposition: orders 3 to 6 unrolled, with reciprocals of the diagonal, all others
// with divisions. Both orders of operations are settled.
#ifndef KVLMLUBACKSUBST_H
#define KVLMLUBACKSUBST_H

#include "kvlm_groups.h"
#include "kvlm_packed.h"
#include "kvlm_rows.h"
#include "kvlm_systems.h"

namespace kvlm {

// The factors of one matrix, or of a group, with their rows in the order of the pivots.
template <class V, int N>
struct Factors {
    V lu[N][N];
    V reciprocal[N];

    KVLM_INLINE void invertDiagonal()
    {
        if constexpr (N == 3 && std::is_same_v<V, float>) {
            // One division for all three.
            float unused;
            const auto diagonal = Lanes<float>::gather(&lu[0][0], &lu[1][1], &lu[2][2], &lu[2][2]);
            (Lanes<float>::all(1) / diagonal).scatter(&reciprocal[0], &reciprocal[1], &reciprocal[2], &unused);
            return;
        }
#pragma GCC unroll 6
        for (int i = 0; i < N; ++i)
            reciprocal[i] = number<V>(1) / lu[i][i];
    }
    // From the right-hand side, in the same order, to the solution.
    KVLM_INLINE void solve(V (&x)[N]) const
    {
#pragma GCC unroll 6
        for (int i = 1; i < N; ++i) {
            // Settled: the first column comes last.
#pragma GCC unroll 6
            for (int j = 1; j < i; ++j)
                x[i] = x[i] - lu[i][j] * x[j];
            x[i] = x[i] - lu[i][0] * x[0];
        }
#pragma GCC unroll 6
        for (int i = N - 1; i >= 0; --i) {
#pragma GCC unroll 6
            for (int j = N - 1; j > i; --j)
                x[i] = x[i] - lu[i][j] * x[j];
            x[i] = x[i] * reciprocal[i];
        }
    }
};

template <class T, int N, class A>
KVLM_INLINE void loadFactors(const A &a, ptrdiff_t i, const int *pivot, Factors<T, N> &f)
{
    const auto view = viewOf(a, i, N);
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r)
#pragma GCC unroll 6
        for (int c = 0; c < N; ++c)
            f.lu[r][c] = get(view.at(pivot[r], c));
    f.invertDiagonal();
}

template <class T, int N, class B, class D>
KVLM_INLINE void solveObject(const Factors<T, N> &f, const int *pivot, const B &b, const D &d, ptrdiff_t i)
{
    const auto src = viewOf(b, i, N);
    const auto dst = viewOf(d, i, N);
    T x[N];
#pragma GCC unroll 6
    for (int j = 0; j < N; ++j)
        x[j] = get(src.at(0, pivot[j]));
    f.solve(x);
#pragma GCC unroll 6
    for (int j = 0; j < N; ++j)
        put(dst.at(0, j), x[j]);
}

// All other orders, one system. y is written to dst as it comes.
template <class A, class B, class D>
__attribute__((noinline)) void solveByDivision(const A &a, const int *pivot, const B &b, const D &d, int n)
{
    using T = std::remove_pointer_t<decltype(d.at(0, 0))>;
    put(d.at(0, 0), get(b.at(0, pivot[0])));
    for (int i = 1; i < n; ++i) {
        T sum = 0;
        for (int j = 0; j < i; ++j)
            sum += get(a.at(pivot[i], j)) * get(d.at(0, j));
        put(d.at(0, i), get(b.at(0, pivot[i])) - sum);
    }
    put(d.at(0, n - 1), get(d.at(0, n - 1)) / get(a.at(pivot[n - 1], n - 1)));
    for (int i = n - 2; i >= 0; --i) {
        T sum = 0;
        for (int j = i + 1; j < n; ++j)
            sum += get(a.at(pivot[i], j)) * get(d.at(0, j));
        put(d.at(0, i), (get(d.at(0, i)) - sum) / get(a.at(pivot[i], i)));
    }
}

// One system
template <class A, class B, class D>
KVLM_INLINE KvlStatus luSolve(const A &a, Runs<const int> pivots, const B &b, const D &d, Length length)
{
    const int n = length.length, *const pivot = pivots.base;
    return bySmallOrder(
        n,
        [&](auto order) KVLM_INLINED {
            Factors<typename D::Element, order> f;
            loadFactors(a, 0, pivot, f);
            solveObject(f, pivot, b, d, 0);
            return KvlStatus(kvlOk);
        },
        [&]() KVLM_INLINED {
            solveByDivision(viewOf(a, 0, n), pivot, viewOf(b, 0, n), viewOf(d, 0, n), n);
            return KvlStatus(kvlOk);
        });
}

// One matrix, many right-hand sides
template <int N, class A, class B, class D>
__attribute__((noinline)) KvlStatus solveVectors(const A &a, const int *pivot, const B &givenB, const D &givenD,
                                                 int count)
{
    using T = typename D::Element;
    using V = Lanes<T>;
    const B b = givenB;
    const D d = givenD;
    Factors<T, N> f;
    loadFactors(a, 0, pivot, f);
    Factors<V, N> all;
    int order[N];
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r) {
        order[r] = pivot[r];
        all.reciprocal[r] = V::all(f.reciprocal[r]);
#pragma GCC unroll 6
        for (int c = 0; c < N; ++c)
            all.lu[r][c] = V::all(f.lu[r][c]);
    }
    return vectorsInGroups<N>(
        d, count,
        [&](ptrdiff_t i, V(&x)[1][N]) KVLM_INLINED {
            V given[1][N];
            loadObjects(b, i, given);
#pragma GCC unroll 6
            for (int j = 0; j < N; ++j)
                x[0][j] = given[0][order[j]];
            all.solve(x[0]);
        },
        [&](ptrdiff_t i) KVLM_INLINED { solveObject(f, order, b, d, i); });
}

template <class A, class B, class D>
KVLM_INLINE KvlStatus luSolveVectors(const A &a, Runs<const int> pivots, const B &b, const D &d, Length length,
                                     Count count)
{
    const int n = length.length, *const pivot = pivots.base;
    return bySmallOrder(
        n, [&](auto order) KVLM_INLINED { return solveVectors<order>(a, pivot, b, d, count.count); },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count.count; ++i)
                solveByDivision(viewOf(a, 0, n), pivot, viewOf(b, i, n), viewOf(d, i, n), n);
            return KvlStatus(kvlOk);
        });
}

// A matrix for each right-hand side
template <int N, class A, class B, class D>
__attribute__((noinline)) KvlStatus solveBatch(const A &givenA, const int *pivot, const B &givenB, const D &givenD,
                                               int count)
{
    using T = typename D::Element;
    using V = Lanes<T>;
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    const auto one = [&](ptrdiff_t i) KVLM_INLINED {
        Factors<T, N> f;
        loadFactors(a, i, pivot + i * N, f);
        solveObject(f, pivot + i * N, b, d, i);
    };
    // Measured: three rows of three floats are not worth a group.
    if constexpr (N == 3 && sizeof(T) == 4) {
        for (ptrdiff_t i = 0; i < count; ++i)
            one(i);
        return kvlOk;
    }
    return vectorsInGroups<N>(
        d, count,
        [&](ptrdiff_t i, V(&x)[1][N]) KVLM_INLINED {
            int order[V::count][N];
            memcpy(order, pivot + i * N, sizeof order);
            Factors<V, N> f;
            loadRows(a, i, order, f.lu);
            f.invertDiagonal();
#pragma GCC unroll 6
            for (int j = 0; j < N; ++j)
                x[0][j] = gather(
                    groupOf<const T>([&](int l) KVLM_INLINED { return viewOf(b, i + l, N).at(0, order[l][j]); }));
            f.solve(x[0]);
        },
        one);
}

template <class A, class B, class D>
KVLM_INLINE KvlStatus luSolveBatch(const A &a, Runs<const int> pivots, const B &b, const D &d, Length length,
                                   Count count)
{
    const int n = length.length, *const pivot = pivots.base;
    return bySmallOrder(
        n, [&](auto order) KVLM_INLINED { return solveBatch<order>(a, pivot, b, d, count.count); },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count.count; ++i)
                solveByDivision(viewOf(a, i, n), pivot + i * n, viewOf(b, i, n), viewOf(d, i, n), n);
            return KvlStatus(kvlOk);
        });
}

constexpr Limits luSolveLimits = {1700, 1700, 1700, 1700, 1700};

} // namespace kvlm

#define LU_MV(X, D, T)                                                                                                 \
    X##_M_##D(const T, src1), X##_RUNS(const int, pivot, 0), X##_V_##D(const T, src2), X##_V_##D(T, dst),              \
        X##_LENGTH(widthHeight)
#define LU_MVA(X, D, T)                                                                                                \
    X##_M_##D(const T, src1), X##_RUNS(const int, pivot, 0), X##_VA_##D(const T, src2), X##_VA_##D(T, dst),            \
        X##_LENGTH(widthHeight), X##_COUNT
#define LU_MAVA(X, D, T)                                                                                               \
    X##_MA_##D(const T, src1), X##_RUNS(const int, pivot, widthHeight), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), \
        X##_LENGTH(widthHeight), X##_COUNT

#endif
