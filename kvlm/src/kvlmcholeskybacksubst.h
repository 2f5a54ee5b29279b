// The solver that follows the Cholesky decomposition: orders 3 to 6 unrolled, all others by the same two passes where
// the solution lies. No step divides.
#ifndef KVLMCHOLESKYBACKSUBST_H
#define KVLMCHOLESKYBACKSUBST_H

#include "kvlm_groups.h"
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
    V x[1][N];

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

// System i
template <int N, class A, class B, class D>
KVLM_INLINE void choleskySolveSmall(const A &a, ptrdiff_t matrix, const B &b, const D &d, ptrdiff_t i)
{
    const auto rightHandSide = elementsOf(viewOf(b, i, N));
    const auto dst = viewOf(d, i, N);
    SmallSolution<typename D::Element, N> x;
    choleskySolve(
        Fixed<N>(), elementsOf(viewOf(a, matrix, N)), [&](int j) KVLM_INLINED { return rightHandSide(0, j); }, x);
#pragma GCC unroll 6
    for (int j = 0; j < N; ++j)
        put(dst.at(0, j), x(j));
}

template <class A, class B, class D>
__attribute__((noinline)) void choleskySolveGeneral(const A &a, ptrdiff_t matrix, const B &b, const D &d, int n,
                                                    ptrdiff_t i)
{
    const auto rightHandSide = elementsOf(viewOf(b, i, n));
    const auto dst = viewOf(d, i, n);
    SolutionInPlace<std::remove_const_t<decltype(dst)>> x{dst};
    choleskySolve(
        n, elementsOf(viewOf(a, matrix, n)), [&](int j) KVLM_INLINED { return rightHandSide(0, j); }, x);
}

template <int N, class T, class Factor, class B, class D>
KVLM_INLINE void choleskySolveGroup(const Factor &l, const B &b, const D &d, ptrdiff_t i)
{
    SmallSolution<Lanes<T>, N> x;
    loadObjects(b, i, x.x);
    choleskySolve(Fixed<N>(), l, x, x);
    storeObjects(d, i, x.x);
}

// One matrix, many right-hand sides
template <int N, class A, class B, class D>
__attribute__((noinline)) KvlStatus choleskyVectors(const A &a, const B &givenB, const D &givenD, int count)
{
    using T = typename D::Element;
    using V = Lanes<T>;
    const B b = givenB;
    const D d = givenD;
    const auto factor = elementsOf(viewOf(a, 0, N));
    V all[N][N];
#pragma GCC unroll 6
    for (int i = 0; i < N; ++i)
#pragma GCC unroll 6
        for (int j = 0; j <= i; ++j)
            all[i][j] = V::all(factor(i, j));
    const Apart<1, N, T> apart(d);
    return inGroups<T>(
        count,
        [&](ptrdiff_t i) KVLM_INLINED {
            if (!apart(d, i))
                return false;
            choleskySolveGroup<N, T>([&](int r, int c) KVLM_INLINED { return all[r][c]; }, b, d, i);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED {
            choleskySolveSmall<N>(a, 0, b, d, i);
            return KvlStatus(kvlOk);
        });
}

// A matrix for each right-hand side
template <int N, class A, class B, class D>
__attribute__((noinline)) KvlStatus choleskySystems(const A &givenA, const B &givenB, const D &givenD, int count)
{
    using T = typename D::Element;
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    const Apart<1, N, T> apart(d);
    return inGroups<T>(
        count,
        [&](ptrdiff_t i) KVLM_INLINED {
            if (!apart(d, i))
                return false;
            Lanes<T> l[N][N];
            loadObjects<LowerTriangle>(a, i, l);
            choleskySolveGroup<N, T>([&](int r, int c) KVLM_INLINED { return l[r][c]; }, b, d, i);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED {
            choleskySolveSmall<N>(a, i, b, d, i);
            return KvlStatus(kvlOk);
        });
}

template <class A, class B, class D>
KVLM_INLINE KvlStatus choleskySolveOne(const A &a, const B &b, const D &d, Length n)
{
    return bySmallOrder(
        n.length,
        [&](auto order) KVLM_INLINED {
            choleskySolveSmall<order>(a, 0, b, d, 0);
            return KvlStatus(kvlOk);
        },
        [&]() KVLM_INLINED {
            choleskySolveGeneral(a, 0, b, d, n.length, 0);
            return KvlStatus(kvlOk);
        });
}

template <class A, class B, class D>
KVLM_INLINE KvlStatus choleskySolveVectors(const A &a, const B &b, const D &d, Length n, Count count)
{
    return bySmallOrder(
        n.length, [&](auto order) KVLM_INLINED { return choleskyVectors<order>(a, b, d, count.count); },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count.count; ++i)
                choleskySolveGeneral(a, 0, b, d, n.length, i);
            return KvlStatus(kvlOk);
        });
}

template <class A, class B, class D>
KVLM_INLINE KvlStatus choleskySolveBatch(const A &a, const B &b, const D &d, Length n, Count count)
{
    return bySmallOrder(
        n.length, [&](auto order) KVLM_INLINED { return choleskySystems<order>(a, b, d, count.count); },
        [&]() KVLM_INLINED {
            for (ptrdiff_t i = 0; i < count.count; ++i)
                choleskySolveGeneral(a, i, b, d, n.length, i);
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
