// Products of square matrices of order 3 to 6 whose objects lie side by side: one object per lane.
#ifndef KVLMMUL_LANES_H
#define KVLMMUL_LANES_H

#include "kvlm_groups.h"
#include "kvlmmul_small.h"

namespace kvlm {

// Where the elements of object 0 are, in the order in which they are read. Those of the other objects follow them.
template <class T, int N>
struct Places {
    T *entries[N * N];

    template <class X>
    KVLM_INLINE explicit Places(const X &x)
    {
        const auto view = x.view(0);
        for (int k = 0; k < N * N; ++k)
            entries[k] = view.at(k / N, k % N);
    }
    KVLM_INLINE T *at(int k, ptrdiff_t i) const { return moved(entries[k], steps(i, sizeof(T))); }
};

// What is kept of a factor beside the registers: nothing, as it is read where it lies, a few groups of objects at a
// time, or a single one in all lanes.
enum class Kept { nothing, groups, single };

template <class T, int N, Kept What, int Groups>
struct KeptFactor {
    Lanes<T> element[What == Kept::groups ? Groups : 1][N * N];

    KVLM_INLINE explicit KeptFactor(const Places<const T, N> &places)
    {
        if constexpr (What == Kept::single)
            for (int k = 0; k < N * N; ++k)
                element[0][k] = Lanes<T>::all(get(places.at(k, 0)));
    }
    KVLM_INLINE void load(const Places<const T, N> &places, ptrdiff_t first)
    {
        if constexpr (What == Kept::groups)
            for (int k = 0; k < N * N; ++k) {
                const T *const place = places.at(k, first);
                eachIndex(Fixed<Groups>(),
                          [&](int g) KVLM_INLINED { element[g][k] = Lanes<T>::load(place + g * Lanes<T>::count); });
            }
    }
    KVLM_INLINE const Lanes<T> *group(int g) const { return element[What == Kept::groups ? g : 0]; }
};

// Groups of objects that are done together: one position's elements fill a cache line, which is read once however many
// other positions compete for its place in the cache.
constexpr int groupsTogether = 4;

// The whole groups of a batch, so many together; returns up to which object that is.
template <class T, int N, bool FromZero, Kept KeptA, Kept KeptB, int Groups>
__attribute__((noinline)) int productGroups(const Places<const T, N> &a, const Places<const T, N> &b,
                                            const Places<T, N> &d, int first, int count)
{
    constexpr int objects = Groups * Lanes<T>::count;
    if (count - first < objects)
        return first;
    KeptFactor<T, N, KeptA, Groups> left(a);
    KeptFactor<T, N, KeptB, Groups> right(b);
    int i = first;
    for (; count - i >= objects; i += objects) {
        left.load(a, i);
        right.load(b, i);
        for (int r = 0; r < N; ++r)
            for (int g = 0; g < Groups; ++g) {
                const ptrdiff_t at = i + g * Lanes<T>::count;
                const Lanes<T> *const x = left.group(g), *const y = right.group(g);
                Lanes<T> row[N];
#pragma GCC unroll 6
                for (int k = 0; k < N; ++k)
                    row[k] = KeptA == Kept::nothing ? Lanes<T>::load(a.at(r * N + k, at)) : x[r * N + k];
#pragma GCC unroll 6
                for (int c = 0; c < N; ++c) {
                    Lanes<T> sum;
#pragma GCC unroll 6
                    for (int k = 0; k < N; ++k)
                        accumulate<FromZero>(k, sum, row[k] * y[k * N + c]);
                    sum.store(d.at(r * N + c, at));
                }
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
            Places<T, N> places(d);
            const Table<T, int> table(places.entries, 0, sizeof(T));
            const Places<const T, N> placesA(a), placesB(b);
            // dst may be src1, whose rows are read before they are written, but not all of its columns.
            constexpr Kept keptA = A::isSingle ? Kept::single : isTurned<A> ? Kept::groups : Kept::nothing;
            constexpr Kept keptB = B::isSingle ? Kept::single : Kept::groups;
            int done = 0;
            if (ObjectsApart<T, Whole, groupsTogether>(table, N, N)(table, 0))
                done = productGroups<T, N, FromZero, keptA, keptB, groupsTogether>(placesA, placesB, places, 0, count);
            if (Apart<N, N, T>(table)(table, 0))
                done = productGroups<T, N, FromZero, keptA, keptB, 1>(placesA, placesB, places, done, count);
            return done;
        }
    return 0;
}

} // namespace kvlm

#endif
