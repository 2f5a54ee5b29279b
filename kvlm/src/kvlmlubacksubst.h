// The solver that follows the LU decomposition: orders 3 to 6 unrolled, with reciprocals of the diagonal, all others
// with divisions. Both orders of operations are settled.
#ifndef KVLMLUBACKSUBST_H
#define KVLMLUBACKSUBST_H

#include "frame/rows.h"
#include "frame/work.h"
#include "lanes/batches.h"
#include "lanes/row_groups.h"

namespace kvlm::lu {

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

template <class T, int N, class View>
KVLM_INLINE void loadFactors(const View &view, const int *pivot, Factors<T, N> &f)
{
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r)
#pragma GCC unroll 6
        for (int c = 0; c < N; ++c)
            f.lu[r][c] = get(view.at(pivot[r], c));
    f.invertDiagonal();
}

template <class T, int N, class Src, class Dst>
KVLM_INLINE void solveWith(const Factors<T, N> &f, const int *pivot, const Src &src, const Dst &dst)
{
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
KVLM_NOINLINE void solveByDivision(const A &a, const int *pivot, const B &b, const D &d, int n)
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

// System i. A single matrix is that of all systems.
template <int N, class T>
KVLM_NOINLINE void solveSystem(const Objects<const T> &a, const int *pivot, const Objects<const T> &b,
                               const Objects<T> &d, ptrdiff_t i)
{
    withViews(
        [&](const auto &matrix, const auto &src, const auto &dst) KVLM_INLINED {
            Factors<T, N> f;
            loadFactors(matrix, pivot, f);
            solveWith(f, pivot, src, dst);
        },
        i, a, b, d);
}

template <class V, class T, int N>
KVLM_INLINE Factors<V, N> inAllLanes(const Factors<T, N> &f)
{
    Factors<V, N> all;
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r) {
        all.reciprocal[r] = V::all(f.reciprocal[r]);
#pragma GCC unroll 6
        for (int c = 0; c < N; ++c)
            all.lu[r][c] = V::all(f.lu[r][c]);
    }
    return all;
}

// One matrix, many right-hand sides
template <int N, class T>
KVLM_NOINLINE KvlStatus solveVectors(const Objects<const T> &a, const int *pivot, const Objects<const T> &b,
                                     const Objects<T> &d, int count)
{
    using V = Lanes<T>;
    Factors<T, N> f;
    withViews([&](const auto &matrix) KVLM_INLINED { loadFactors(matrix, pivot, f); }, 0, a);
    const Factors<V, N> all = inAllLanes<V>(f);
    int order[N];
    memcpy(order, pivot, sizeof order);
    return vectorsByLayout<N>(
        d, count,
        [&](ptrdiff_t i, auto &x, const auto &source) KVLM_INLINED {
            using Number = NumberOf<decltype(x)>;
            Number given[N];
            source.move(i, given);
#pragma GCC unroll 6
            for (int j = 0; j < N; ++j)
                x[j] = given[order[j]];
            if constexpr (Number::blocks == 1)
                all.solve(x);
            else
                inAllLanes<Number>(f).solve(x);
        },
        [&](ptrdiff_t i) KVLM_INLINED {
            withViews([&](const auto &src, const auto &dst) KVLM_INLINED { solveWith(f, order, src, dst); }, i, b, d);
        },
        GroupSource<T, 1, N>(b));
}

// Measured: registers of 16 floats take longer to fill with rows of 4 or 6 than they save.
template <class V, int N, class Rows>
constexpr bool isWorthFilling = V::count < 16 || N % 2 == 1 || !Rows::hasPackedRows;

// A matrix for each right-hand side
template <int N, class T>
KVLM_NOINLINE KvlStatus solveSystems(const Objects<const T> &a, const int *pivot, const Objects<const T> &b,
                                     const Objects<T> &d, int count)
{
    const auto one = [&](ptrdiff_t i) KVLM_INLINED { solveSystem<N>(a, pivot + i * N, b, d, i); };
    // Measured: three rows of three floats are not worth a narrow group.
    if constexpr (N == 3 && sizeof(T) == 4 && !hasWide<T>) {
        eachObject(
            count,
            [&](ptrdiff_t i, const auto &matrix, const auto &src, const auto &dst) KVLM_INLINED {
                Factors<T, N> f;
                loadFactors(matrix, pivot + i * N, f);
                solveWith(f, pivot + i * N, src, dst);
            },
            a, b, d);
        return kvlOk;
    }
    return vectorsByLayout<N>(
        d, count,
        [&](ptrdiff_t i, auto &x, const auto &factors, const auto &source) KVLM_INLINED
        -> std::enable_if_t<isWorthFilling<NumberOf<decltype(x)>, N, std::decay_t<decltype(factors)>>> {
            using V = NumberOf<decltype(x)>;
            int order[V::count][N];
            memcpy(order, pivot + i * N, sizeof order);
            Factors<V, N> f;
            factors.move(i, order, f.lu);
            f.invertDiagonal();
            V column[N][1];
            source.move(i, order, column);
#pragma GCC unroll 6
            for (int j = 0; j < N; ++j)
                x[j] = column[j][0];
            f.solve(x);
        },
        one, RowGroups<Load, const T, N>(a), RowGroups<Load, const T, 1>(b.transposed()));
}

template <class T>
KVLM_NOINLINE KvlStatus solveFactored(const Objects<const T> &a, const int *pivot, const Objects<const T> &b,
                                      const Objects<T> &d, int n, int count)
{
    return bySmallOrder(
        n,
        [&](auto order) KVLM_INLINED {
            if (count == 1)
                return solveSystem<order>(a, pivot, b, d, 0), KvlStatus(kvlOk);
            return a.isSingle ? solveVectors<order>(a, pivot, b, d, count) : solveSystems<order>(a, pivot, b, d, count);
        },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count; ++i)
                withViews([&](const auto &matrix, const auto &src, const auto &dst)
                              KVLM_INLINED { solveByDivision(matrix, pivot + (a.isSingle ? 0 : i * n), src, dst, n); },
                          i, a, b, d);
            return KvlStatus(kvlOk);
        });
}

template <class A, class B, class D>
KVLM_INLINE KvlStatus luSolve(const A &a, PerObject<const int> pivots, const B &b, const D &d, Length n,
                              Count count = Count(1))
{
    return solveFactored(objectsOf(a, n.length), pivots.base, objectsOf(b, n.length), objectsOf(d, n.length), n.length,
                         count.count);
}

constexpr Limits luSolveLimits = {1700, 1700, 1700, 1700, 1700};

// Compiled once, in kvlmlubacksubst_mava.cpp.
#define LU_SOLVERS(linkage, T)                                                                                         \
    linkage template KvlStatus solveFactored(const Objects<const T> &, const int *, const Objects<const T> &,          \
                                             const Objects<T> &, int, int);
KVLM_FOR_ELEMENTS(LU_SOLVERS, extern)

} // namespace kvlm::lu

#define LU_MV(X, D, T)                                                                                                 \
    X##_M_##D(const T, src1), X##_PER_OBJECT(const int, pivot, 0), X##_V_##D(const T, src2), X##_V_##D(T, dst),        \
        X##_LENGTH(widthHeight)
#define LU_MVA(X, D, T)                                                                                                \
    X##_M_##D(const T, src1), X##_PER_OBJECT(const int, pivot, 0), X##_VA_##D(const T, src2), X##_VA_##D(T, dst),      \
        X##_LENGTH(widthHeight), X##_COUNT
#define LU_MAVA(X, D, T)                                                                                               \
    X##_MA_##D(const T, src1), X##_PER_OBJECT(const int, pivot, widthHeight), X##_VA_##D(const T, src2),               \
        X##_VA_##D(T, dst), X##_LENGTH(widthHeight), X##_COUNT

#endif
