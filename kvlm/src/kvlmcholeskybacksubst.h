// The solver that follows the Cholesky decomposition: orders 3 to 6 unrolled, all others by the same two passes where
// the solution lies. No step divides.
#ifndef KVLMCHOLESKYBACKSUBST_H
#define KVLMCHOLESKYBACKSUBST_H

#include "frame/rows.h"
#include "frame/work.h"
#include "lanes/batches.h"

namespace kvlm::cholesky {

// Forward with the factor l(i, j), backward with its transpose. b(i) is the right-hand side; x(i) is an element of the
// solution, x.set(i, value) computes one, in either pass.
template <class Order, class Factor, class B, class X>
KVLM_INLINE void choleskySolve(Order order, Factor l, B b, X &x)
{
    const int n = order;
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i) {
        auto s = b(i);
#pragma GCC unroll 6
        for (int j = 0; j < i; ++j)
            s = s - l(i, j) * x(j);
        x.set(i, s * l(i, i));
    }
#pragma GCC unroll 6
    for (int i = n - 1; i >= 0; --i) {
        auto s = x(i);
#pragma GCC unroll 6
        for (int j = n - 1; j > i; --j)
            s = s - l(j, i) * x(j);
        x.set(i, s * l(i, i));
    }
}

template <class V, int N>
struct SmallSolution {
    V (&x)[N];

    KVLM_INLINE V operator()(int i) const { return x[i]; }
    KVLM_INLINE void set(int i, V value) { x[i] = value; }
};

template <class View>
struct SolutionInPlace {
    View view;

    KVLM_INLINE auto operator()(int i) const { return get(view.at(0, i)); }
    template <class T>
    KVLM_INLINE void set(int i, T value)
    {
        put(view.at(0, i), value);
    }
};

// The elements of an object, read one by one.
template <class View>
KVLM_INLINE auto elementsOf(const View &view)
{
    return [=](int i, int j) KVLM_INLINED { return get(view.at(i, j)); };
}

// System i. A single matrix is that of all systems.
template <int N, class T>
KVLM_NOINLINE void choleskySolveSmall(const Objects<const T> &a, const Objects<const T> &b, const Objects<T> &d,
                                      ptrdiff_t i)
{
    withViews(
        [&](const auto &factor, const auto &src, const auto &dst) KVLM_INLINED {
            T solution[N];
            SmallSolution<T, N> x{solution};
            choleskySolve(
                Fixed<N>(), elementsOf(factor), [&](int j) KVLM_INLINED { return get(src.at(0, j)); }, x);
#pragma GCC unroll 6
            for (int j = 0; j < N; ++j)
                put(dst.at(0, j), x(j));
        },
        i, a, b, d);
}

template <class T>
KVLM_NOINLINE void choleskySolveGeneral(const Objects<const T> &a, const Objects<const T> &b, const Objects<T> &d,
                                        int n, ptrdiff_t i)
{
    withViews(
        [&](const auto &factor, const auto &src, auto dst) KVLM_INLINED {
            SolutionInPlace<decltype(dst)> x{dst};
            choleskySolve(
                n, elementsOf(factor), [&](int j) KVLM_INLINED { return get(src.at(0, j)); }, x);
        },
        i, a, b, d);
}

template <int N, class T>
KVLM_NOINLINE KvlStatus choleskySystems(const Objects<const T> &a, const Objects<const T> &b, const Objects<T> &d,
                                        int count)
{
    const auto one = [&](ptrdiff_t i) KVLM_INLINED { choleskySolveSmall<N>(a, b, d, i); };
    const auto solve = [](auto l, auto &x) KVLM_INLINED {
        SmallSolution<NumberOf<decltype(x)>, N> solution{x};
        choleskySolve(Fixed<N>(), l, solution, solution);
    };
    const GroupSource<T, 1, N> rightHandSides(b);
    if (a.isSingle) {
        const OfAllObjects<T, N, N> factor(a);
        return vectorsByLayout<N>(
            d, count,
            [&](ptrdiff_t i, auto &x, const auto &source) KVLM_INLINED {
                source.move(i, x);
                solve([&](int r, int c) KVLM_INLINED { return factor.template at<NumberOf<decltype(x)>>(r, c); }, x);
            },
            one, rightHandSides);
    }
    return vectorsByLayout<N>(
        d, count,
        [&](ptrdiff_t i, auto &x, const auto &factors, const auto &source) KVLM_INLINED {
            NumberOf<decltype(x)> l[N][N];
            factors.move(i, l[0]);
            source.move(i, x);
            solve([&](int r, int c) KVLM_INLINED { return l[r][c]; }, x);
        },
        one, GroupSource<T, N, N, LowerTriangle>(a), rightHandSides);
}

template <class T>
KVLM_NOINLINE KvlStatus choleskySolveObjects(const Objects<const T> &a, const Objects<const T> &b, const Objects<T> &d,
                                             int n, int count)
{
    return bySmallOrder(
        n,
        [&](auto order) KVLM_INLINED {
            if (count == 1)
                return choleskySolveSmall<order>(a, b, d, 0), KvlStatus(kvlOk);
            return choleskySystems<order>(a, b, d, count);
        },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count; ++i)
                choleskySolveGeneral(a, b, d, n, i);
            return KvlStatus(kvlOk);
        });
}

// One matrix for all right-hand sides, or one for each.
template <class A, class B, class D>
KVLM_INLINE KvlStatus choleskySolve(const A &a, const B &b, const D &d, Length length, Count count = Count(1))
{
    const int n = length.length;
    return choleskySolveObjects(objectsOf(a, n), objectsOf(b, n), objectsOf(d, n), n, count.count);
}

// All of them settled.
constexpr Limits choleskyVectorsLimits32f = {1200, 1200, 720, 720, 720};
constexpr Limits choleskyVectorsLimits64f = {720, 720, 720, 720, 720};
constexpr Limits choleskySystemsLimits32f = {2050, 1700, 1700, 1700, 1700};
constexpr Limits choleskySystemsLimits64f = {1700, 1700, 2050, 1700, 1700};

// Compiled once, in kvlmcholeskybacksubst_mava.cpp.
#define CHOLESKY_SOLVERS(linkage, T)                                                                                   \
    linkage template KvlStatus choleskySolveObjects(const Objects<const T> &, const Objects<const T> &,                \
                                                    const Objects<T> &, int, int);
KVLM_FOR_ELEMENTS(CHOLESKY_SOLVERS, extern)

} // namespace kvlm::cholesky

#define CHOLESKY_MV(X, D, T)                                                                                           \
    X##_M_##D(const T, src1), X##_V_##D(const T, src2), X##_V_##D(T, dst), X##_LENGTH(widthHeight)
#define CHOLESKY_MVA(X, D, T)                                                                                          \
    X##_M_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_LENGTH(widthHeight), X##_COUNT
#define CHOLESKY_MAVA(X, D, T)                                                                                         \
    X##_MA_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_LENGTH(widthHeight), X##_COUNT

#endif
