// The solver that follows the Cholesky decomposition: orders 3 to 6 unrolled, all others by the same two passes where
// the solution lies. No step divides.
#ifndef KVLMCHOLESKYBACKSUBST_H
#define KVLMCHOLESKYBACKSUBST_H

#include "kvlm_groups.h"
#include "kvlm_packed.h"
#include "kvlm_rows.h"
#include "kvlm_systems.h"

namespace kvlm {

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
    V (&x)[1][N];

    KVLM_INLINE V operator()(int i) const { return x[0][i]; }
    KVLM_INLINE void set(int i, V value) { x[0][i] = value; }
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
template <int N, class A, class B, class D>
KVLM_INLINE void choleskySolveSmall(const A &a, const B &b, const D &d, ptrdiff_t i)
{
    const auto rightHandSide = elementsOf(viewOf(b, i, N));
    const auto dst = viewOf(d, i, N);
    typename D::Element solution[1][N];
    SmallSolution<typename D::Element, N> x{solution};
    choleskySolve(
        Fixed<N>(), elementsOf(viewOf(a, i, N)), [&](int j) KVLM_INLINED { return rightHandSide(0, j); }, x);
#pragma GCC unroll 6
    for (int j = 0; j < N; ++j)
        put(dst.at(0, j), x(j));
}

template <class A, class B, class D>
__attribute__((noinline)) void choleskySolveGeneral(const A &a, const B &b, const D &d, int n, ptrdiff_t i)
{
    const auto rightHandSide = elementsOf(viewOf(b, i, n));
    const auto dst = viewOf(d, i, n);
    SolutionInPlace<std::remove_const_t<decltype(dst)>> x{dst};
    choleskySolve(
        n, elementsOf(viewOf(a, i, n)), [&](int j) KVLM_INLINED { return rightHandSide(0, j); }, x);
}

template <int N, class A, class B, class D>
__attribute__((noinline)) KvlStatus choleskySystems(const A &givenA, const B &givenB, const D &givenD, int count)
{
    using V = Lanes<typename D::Element>;
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    const auto one = [&](ptrdiff_t i) KVLM_INLINED { choleskySolveSmall<N>(a, b, d, i); };
    const auto solve = [&](const V(&l)[N][N], ptrdiff_t i, V(&x)[1][N]) KVLM_INLINED {
        loadObjects(b, i, x);
        SmallSolution<V, N> solution{x};
        choleskySolve(
            Fixed<N>(), [&](int r, int c) KVLM_INLINED { return l[r][c]; }, solution, solution);
    };
    V l[N][N];
    if constexpr (A::isSingle) {
        const auto factor = elementsOf(viewOf(a, 0, N));
        eachElement<LowerTriangle>(Fixed<N>(), Fixed<N>(),
                                   [&](int, int r, int c) KVLM_INLINED { l[r][c] = V::all(factor(r, c)); });
        return vectorsInGroups<N>(
            d, count, [&](ptrdiff_t i, V(&x)[1][N]) KVLM_INLINED { solve(l, i, x); }, one);
    } else
        return vectorsInGroups<N>(
            d, count,
            [&](ptrdiff_t i, V(&x)[1][N]) KVLM_INLINED {
                loadObjects<LowerTriangle>(a, i, l);
                solve(l, i, x);
            },
            one);
}

template <class A, class B, class D>
KVLM_INLINE KvlStatus choleskySolveOne(const A &a, const B &b, const D &d, Length n)
{
    return bySmallOrder(
        n.length,
        [&](auto order) KVLM_INLINED {
            choleskySolveSmall<order>(a, b, d, 0);
            return KvlStatus(kvlOk);
        },
        [&]() KVLM_INLINED {
            choleskySolveGeneral(a, b, d, n.length, 0);
            return KvlStatus(kvlOk);
        });
}

// One matrix for all right-hand sides, or one for each.
template <class A, class B, class D>
KVLM_INLINE KvlStatus choleskySolveBatch(const A &a, const B &b, const D &d, Length n, Count count)
{
    return bySmallOrder(
        n.length, [&](auto order) KVLM_INLINED { return choleskySystems<order>(a, b, d, count.count); },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count.count; ++i)
                choleskySolveGeneral(a, b, d, n.length, i);
            return KvlStatus(kvlOk);
        });
}

// All of them settled.
constexpr Limits choleskyVectorsLimits32f = {1200, 1200, 720, 720, 720};
constexpr Limits choleskyVectorsLimits64f = {720, 720, 720, 720, 720};
constexpr Limits choleskySystemsLimits32f = {2050, 1700, 1700, 1700, 1700};
constexpr Limits choleskySystemsLimits64f = {1700, 1700, 2050, 1700, 1700};

} // namespace kvlm

#define CHOLESKY_MV(X, D, T)                                                                                           \
    X##_M_##D(const T, src1), X##_V_##D(const T, src2), X##_V_##D(T, dst), X##_LENGTH(widthHeight)
#define CHOLESKY_MVA(X, D, T)                                                                                          \
    X##_M_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_LENGTH(widthHeight), X##_COUNT
#define CHOLESKY_MAVA(X, D, T)                                                                                         \
    X##_MA_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_LENGTH(widthHeight), X##_COUNT

#endif
