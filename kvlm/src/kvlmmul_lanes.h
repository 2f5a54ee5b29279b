// Products of square matrices of order 3 to 6 whose objects are in planes: one object per lane.
#ifndef KVLMMUL_LANES_H
#define KVLMMUL_LANES_H

#include "kvlmmul_small.h"
#include "lanes/batches.h"

namespace kvlm::mul {

// What is kept of a factor beside the registers: nothing, as it is read where it lies, a few groups of objects at a
// time, or a single one in all lanes.
enum class Kept { nothing, groups, single };

template <class V, int N, Kept What, int Groups>
struct KeptFactor {
    using T = typename NumberTraits<V>::Element;
    V element[What == Kept::groups ? Groups : 1][N * N];

    KVLM_INLINE explicit KeptFactor(const T *const *planes)
    {
        if constexpr (What == Kept::single)
            for (int k = 0; k < N * N; ++k)
                element[0][k] = V::all(get(planes[k]));
    }
    KVLM_INLINE void load(const T *const *planes, ptrdiff_t first)
    {
        if constexpr (What == Kept::groups)
            for (int k = 0; k < N * N; ++k) {
                const T *const place = planes[k] + first;
                eachIndex(Fixed<Groups>(), [&](int g) KVLM_INLINED { element[g][k] = V::load(place + g * V::count); });
            }
    }
    KVLM_INLINE const V *group(int g) const { return element[What == Kept::groups ? g : 0]; }
};

// Groups of objects that are done together: one position's elements fill a cache line, which is read once however many
// other positions compete for its place in the cache.
template <class V>
constexpr int groupsTogether = 64 / sizeof(V);

// The whole groups of a batch, so many together; returns up to which object that is.
template <class V, int N, bool FromZero, Kept KeptA, Kept KeptB, int Groups, class T>
KVLM_NOINLINE int productGroups(const T *const *a, const T *const *b, T *const *d, int first, int count)
{
    constexpr int objects = Groups * V::count;
    if (count - first < objects)
        return first;
    KeptFactor<V, N, KeptA, Groups> left(a);
    KeptFactor<V, N, KeptB, Groups> right(b);
    int i = first;
    for (; count - i >= objects; i += objects) {
        left.load(a, i);
        right.load(b, i);
        for (int r = 0; r < N; ++r)
            for (int g = 0; g < Groups; ++g) {
                const ptrdiff_t at = i + g * V::count;
                const V *const x = left.group(g), *const y = right.group(g);
                V row[N];
#pragma GCC unroll 6
                for (int k = 0; k < N; ++k)
                    row[k] = KeptA == Kept::nothing ? V::load(a[r * N + k] + at) : x[r * N + k];
#pragma GCC unroll 6
                for (int c = 0; c < N; ++c) {
                    V sum;
#pragma GCC unroll 6
                    for (int k = 0; k < N; ++k)
                        accumulate<FromZero>(k, sum, row[k] * y[k * N + c]);
                    sum.store(d[r * N + c] + at);
                }
            }
    }
    return i;
}

// As many objects as can be done in groups, from the first on. The sums of the orders in Begun begin with the first
// product. The operands are in planes.
template <int Begun, Kept KeptA, Kept KeptB, class T>
KVLM_NOINLINE int productsInPlanes(const Places<const T> &a, const Places<const T> &b, const Places<T> &d, int n,
                                   int count)
{
    const Objects<T> objects(d.table(int(sizeof(T))), n);
    const auto groups = [&](auto number, auto together, int done) KVLM_INLINED {
        using V = typename decltype(number)::Number;
        if (!GroupsApart<T, Whole, together * V::blocks>(objects, n, n)(0))
            return done;
        return bySmallOrder(
            n,
            [&](auto order) KVLM_INLINED {
                return productGroups<V, order, !(Begun >> order & 1), KeptA, KeptB, together>(a.entries, b.entries,
                                                                                              d.entries, done, count);
            },
            [&]() KVLM_INLINED { return done; });
    };
    const int done = groups(Of<Wide<T>>(), Fixed<groupsTogether<Wide<T>>>(), 0);
    return groups(Of<Lanes<T>>(), Fixed<1>(), done);
}

// The same of operands of order n, if they are in planes.
template <int Begun, class A, class B, class D>
KVLM_INLINE int productsInGroups(const A &a, const B &b, const D &d, int n, int count)
{
    using T = typename D::Element;
    if constexpr (!D::isSingle && !D::isList && !D::View::adjacentInRows)
        if (n >= 3 && n <= 6 && count >= Lanes<T>::count && inPlanes(a) && inPlanes(b) && inPlanes(d)) {
            // dst may be src1, whose rows are read before they are written, but not all of its columns.
            constexpr Kept keptA = A::isSingle ? Kept::single : isTransposed<A> ? Kept::groups : Kept::nothing;
            constexpr Kept keptB = B::isSingle ? Kept::single : Kept::groups;
            return productsInPlanes<Begun, keptA, keptB, T>({a, n, n}, {b, n, n}, {d, n, n}, n, count);
        }
    return 0;
}

} // namespace kvlm::mul

#endif
