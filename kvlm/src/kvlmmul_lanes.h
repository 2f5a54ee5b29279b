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

// How a factor is read: from where it lies, copied group by group, or a single one in all lanes.
enum class Factor { inPlace, copied, single };

// A factor of a few groups of objects in full, beside the registers.
template <class T, int N, Factor How, int Groups>
struct GroupFactor {
    Lanes<T> element[How == Factor::single ? 1 : Groups][N * N];

    KVLM_INLINE explicit GroupFactor(const Places<const T, N> &places)
    {
        if constexpr (How == Factor::single)
            for (int k = 0; k < N * N; ++k)
                element[0][k] = Lanes<T>::all(get(places.at(k, 0)));
    }
    KVLM_INLINE void load(const Places<const T, N> &places, ptrdiff_t first)
    {
        if constexpr (How == Factor::copied)
            for (int k = 0; k < N * N; ++k) {
                const T *const place = places.at(k, first);
                eachIndex(Fixed<Groups>(),
                          [&](int g) KVLM_INLINED { element[g][k] = Lanes<T>::load(place + g * Lanes<T>::count); });
            }
    }
    KVLM_INLINE const Lanes<T> *group(int g) const { return element[How == Factor::single ? 0 : g]; }
};

// Groups of objects that are done together: one position's elements fill a cache line, which is read once however many
// other positions compete for its place in the cache.
constexpr int groupsTogether = 4;

// The whole groups of a batch, so many together; returns up to which object that is.
template <class T, int N, bool FromZero, Factor HowA, Factor HowB, int Groups>
__attribute__((noinline)) int productGroups(const Places<const T, N> &a, const Places<const T, N> &b,
                                            const Places<T, N> &d, int first, int count)
{
    constexpr int objects = Groups * Lanes<T>::count;
    GroupFactor<T, N, HowA, Groups> left(a);
    GroupFactor<T, N, HowB, Groups> right(b);
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
                    row[k] = HowA == Factor::inPlace ? Lanes<T>::load(a.at(r * N + k, at)) : x[r * N + k];
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
            // dst may be src1: its rows are read before they are written, its columns are copied.
            constexpr Factor howA = A::isSingle ? Factor::single : isTurned<A> ? Factor::copied : Factor::inPlace;
            constexpr Factor howB = B::isSingle ? Factor::single : Factor::copied;
            int done = 0;
            if (ObjectsApart<T, Whole, groupsTogether>(table, N, N)(table, 0))
                done = productGroups<T, N, FromZero, howA, howB, groupsTogether>(placesA, placesB, places, 0, count);
            if (ObjectsApart<T>(table, N, N)(table, 0))
                done = productGroups<T, N, FromZero, howA, howB, 1>(placesA, placesB, places, done, count);
            return done;
        }
    return 0;
}

} // namespace kvlm

#endif
