// Products of square matrices of order 3 to 6 whose objects lie side by side: one object per lane.
#ifndef KVLMMUL_LANES_H
#define KVLMMUL_LANES_H

#include "kvlm_groups.h"
#include "kvlmmul_small.h"

namespace kvlm {

// A factor of a group of objects in full, in registers or beside them. A single one is in all lanes, once.
template <class T, int N>
struct GroupFactor {
    Lanes<T> element[N][N];

    template <class X>
    KVLM_INLINE void load(const X &x, ptrdiff_t first)
    {
        const auto view = x.view(X::isSingle ? 0 : first);
#pragma GCC unroll 6
        for (int r = 0; r < N; ++r)
#pragma GCC unroll 6
            for (int c = 0; c < N; ++c)
                element[r][c] = X::isSingle ? Lanes<T>::all(get(view.at(r, c))) : Lanes<T>::load(view.at(r, c));
    }
};

// Where the elements of object 0 are, in the order in which they are read: one form for all descriptions.
template <class T, int N, class Obj>
struct Places {
    T *entries[N * N];
    Obj objStride;

    template <class X>
    KVLM_INLINE explicit Places(const X &x) : objStride(x.objStride)
    {
        const auto view = x.view(0);
#pragma GCC unroll 6
        for (int r = 0; r < N; ++r)
#pragma GCC unroll 6
            for (int c = 0; c < N; ++c)
                entries[r * N + c] = view.at(r, c);
    }
    auto operand() const
    {
        return Entries<T, Obj, Fixed<N>, Fixed<1>>(Table<T, Obj>(entries, 0, objStride), {}, {});
    }
};

// The whole groups of a batch; returns how many objects that were. Objects of d lie apart.
template <class T, int N, bool FromZero, class ObjA, class ObjB>
__attribute__((noinline)) int productGroups(const Places<const T, N, ObjA> &placesA,
                                            const Places<const T, N, ObjB> &placesB, const Places<T, N, int> &placesD,
                                            int count)
{
    using V = Lanes<T>;
    const auto a = placesA.operand();
    const auto b = placesB.operand();
    const auto d = placesD.operand();
    GroupFactor<T, N> left, right;
    if (a.isSingle)
        left.load(a, 0);
    if (b.isSingle)
        right.load(b, 0);
    int i = 0;
    for (; i + V::count <= count; i += V::count) {
        if (!a.isSingle)
            left.load(a, i);
        if (!b.isSingle)
            right.load(b, i);
        const auto view = d.view(i);
        for (int r = 0; r < N; ++r)
#pragma GCC unroll 6
            for (int c = 0; c < N; ++c) {
                V sum;
#pragma GCC unroll 6
                for (int k = 0; k < N; ++k)
                    accumulate<FromZero>(k, sum, left.element[r][k] * right.element[k][c]);
                sum.store(view.at(r, c));
            }
    }
    return i;
}

template <class X>
KVLM_INLINE bool groupsLie(const X &x)
{
    if constexpr (X::isSingle)
        return true;
    else
        return sideBySide(x);
}

// As many objects as can be done in groups, from the first on.
template <int N, bool FromZero, class A, class B, class D>
KVLM_INLINE int productsInGroups(const A &a, const B &b, const D &d, int count)
{
    using T = typename D::Element;
    if constexpr (!D::isSingle && !D::isList && !D::View::adjacentInRows)
        if (count >= Lanes<T>::count && groupsLie(a) && groupsLie(b) && sideBySide(d)) {
            const Places<T, N, int> places(d);
            if (Apart<N, N, T>(places.operand())(d, 0))
                return productGroups<T, N, FromZero>(Places<const T, N, decltype(a.objStride)>(a),
                                                     Places<const T, N, decltype(b.objStride)>(b), places, count);
        }
    return 0;
}

} // namespace kvlm

#endif
