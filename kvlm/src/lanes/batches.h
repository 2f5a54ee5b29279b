// Batches of small objects in groups, one object per lane: which orders, what lanes exchange, which objects are apart,
// the loop over the groups.
#ifndef KVLM_LANES_BATCHES_H
#define KVLM_LANES_BATCHES_H

#include "lanes/groups.h"

namespace kvlm {

// An interchange that each lane makes for itself: which of N candidates takes the place of candidate k.
template <class V, int N>
struct Choice {
    V taken[N]; // while searching: i is better than all from k to i - 1

    // The last that was taken is it.
    KVLM_INLINE void settle(int k)
    {
        V later = V::all(0);
#pragma GCC unroll 6
        for (int i = N - 1; i > k; --i) {
            const V here = taken[i];
            taken[i] = without(here, later);
            later = later | here;
        }
    }
    template <class Entry>
    KVLM_INLINE void exchange(int k, Entry x) const
    {
        V change = V::all(0);
#pragma GCC unroll 6
        for (int i = k + 1; i < N; ++i) {
            const V difference = (x(i) ^ x(k)) & taken[i];
            x(i) = x(i) ^ difference;
            change = change | difference;
        }
        x(k) = x(k) ^ change;
    }
};

// Whether no byte belongs to two objects of a group: what is written for one is then not written for another. Objects
// that overlap are written one after the other.
template <class T, class Elements = Whole, int Registers = 1>
class GroupsApart {
public:
    GroupsApart(const Objects<T> &x, int rows, int columns) : list(x.list), always(false)
    {
        const int64_t right = columns - 1, below = rows - 1, row = x.rowStride, elem = x.elemStride;
        if (x.table)
            always = positionsApart(x, rows, columns);
        else if (list)
            extent = below * row + right * elem + size;
        else {
            const int64_t obj = x.objStride, whole = below * row + right * elem + size, span = (lanes - 1) * obj + size;
            always = obj >= whole || (elem >= span && (below == 0 || row >= right * elem + span)) ||
                     (row >= span && elem >= below * row + span) ||
                     (obj >= right * elem + size && row >= (lanes - 1) * obj + right * elem + size);
        }
    }

    // The group from `first` on, of so many registers, or of all.
    KVLM_INLINE bool operator()(ptrdiff_t first, int parts = 0) const
    {
        if (!list)
            return always;
        const int objects = parts == 0 ? lanes : parts * Lanes<T>::count;
        bool apart = true;
#pragma GCC unroll 16
        for (int l = 1; l < objects; ++l)
            apart &= distance(list + first, l, l - 1) >= extent;
        return apart || pairsApart(list + first, objects, extent);
    }

private:
    static constexpr int lanes = Registers * Lanes<T>::count;
    static constexpr int64_t size = sizeof(T);

    static KVLM_INLINE int64_t distance(T *const *group, int l, int k)
    {
        return static_cast<int64_t>(reinterpret_cast<uintptr_t>(group[l])) -
               static_cast<int64_t>(reinterpret_cast<uintptr_t>(group[k]));
    }
    static KVLM_NOINLINE bool pairsApart(T *const *group, int objects, int64_t extent)
    {
        for (int l = 1; l < objects; ++l)
            for (int k = 0; k < l; ++k)
                if (distance(group, l, k) < extent && distance(group, k, l) < extent)
                    return false;
        return true;
    }
    // Each position of a table behind the one before it, or each object behind the one before it.
    static bool positionsApart(const Objects<T> &x, int rows, int columns)
    {
        const uintptr_t obj = static_cast<unsigned>(static_cast<int>(x.objStride));
        const auto place = [&](int k) KVLM_INLINED { return reinterpret_cast<uintptr_t>(x.table[k]); };
        uintptr_t low = place(0), high = low;
        bool apart = true;
        for (int r = 0; r < rows; ++r)
            for (int k = r * columns + (r == 0); k < r * columns + Elements::width(r, columns); ++k) {
                apart &= place(k) >= high && place(k) - high >= (lanes - 1) * obj + size;
                low = place(k) < low ? place(k) : low;
                high = place(k) > high ? place(k) : high;
            }
        return apart || obj >= high - low + size;
    }

    T *const *list;
    bool always;
    int64_t extent = 0;
};

// one(i) for each object, until one fails.
template <class One>
KVLM_INLINE KvlStatus untilOneFails(ptrdiff_t count, One one)
{
    for (ptrdiff_t i = 0; i < count; ++i)
        if (const KvlStatus status = one(i))
            return status;
    return kvlOk;
}

// The same from object i to `end`, in one copy for all loops over groups that leave some.
template <class One>
KVLM_NOINLINE KvlStatus oneByOne(ptrdiff_t i, ptrdiff_t end, const One &one)
{
    return untilOneFails(end - i, [&](ptrdiff_t k) KVLM_INLINED { return one(i + k); });
}

// The objects from `first` to `count` in groups of one register or up to several, then what is left one by one.
// group(i, parts) does that many registers of objects from i on, or nothing and returns false: then they are done in
// smaller parts, so that exactly the objects before a failing one are complete.
template <class V, int Registers, class GroupOf, class One>
KVLM_INLINE KvlStatus inSeveralGroups(int first, int count, GroupOf group, const One &one)
{
    constexpr int lanes = V::count;
    int i = first, most = Registers;
    while (i < count) {
        int end = count;
        if (count - i >= lanes) {
            const int parts = (count - i) / lanes < most ? (count - i) / lanes : most;
            if (group(i, parts)) {
                i += parts * lanes;
                most = Registers;
                continue;
            }
            if (parts > 1) {
                most = 1;
                continue;
            }
            end = i + lanes;
        }
        if (const KvlStatus status = oneByOne(i, end, one))
            return status;
        i = end;
    }
    return kvlOk;
}

// The number type of a group, as a value.
template <class V>
struct Of {
    using Number = V;
};

// Whether the objects of a group are apart, narrow or wide.
template <class T, class Elements = Whole, bool HasWide = hasWide<T>>
struct AnyGroupApart {
    GroupsApart<T, Elements> narrow;

    AnyGroupApart(const Objects<T> &x, int rows, int columns) : narrow(x, rows, columns) {}
    KVLM_INLINE bool operator()(ptrdiff_t first, Of<Lanes<T>>) const { return narrow(first); }
};

template <class T, class Elements>
struct AnyGroupApart<T, Elements, true> {
    GroupsApart<T, Elements> narrow;
    GroupsApart<T, Elements, Wide<T>::count / Lanes<T>::count> wide;

    AnyGroupApart(const Objects<T> &x, int rows, int columns) : narrow(x, rows, columns), wide(x, rows, columns) {}
    template <class V>
    KVLM_INLINE bool operator()(ptrdiff_t first, Of<V>) const
    {
        if constexpr (V::blocks == 1)
            return narrow(first);
        else
            return wide(first);
    }
};

// The same in groups of one register: group(i, Of<V>()), of which the first are wide if it takes them and they fill
// fast.
template <class T, bool TakesWide, class GroupOf, class One>
KVLM_INLINE KvlStatus inAnyGroups(int count, GroupOf group, const One &one, bool fillsWide = true)
{
    ptrdiff_t i = 0;
    const auto groups = [&](auto number) KVLM_INLINED {
        constexpr int lanes = decltype(number)::Number::count;
        for (; count - i >= lanes; i += lanes)
            if (!group(i, number))
                if (const KvlStatus status = oneByOne(i, i + lanes, one))
                    return status;
        return KvlStatus(kvlOk);
    };
    if constexpr (TakesWide && hasWide<T>)
        if (fillsWide)
            if (const KvlStatus status = groups(Of<Wide<T>>()))
                return status;
    if (const KvlStatus status = groups(Of<Lanes<T>>()))
        return status;
    return oneByOne(i, count, one);
}

// A batch whose groups are of several registers: f(Of<V>(), first, end) does what fills wide registers, if it takes
// them and they fill fast, then the rest.
template <class T, bool TakesWide = true, class F>
KVLM_INLINE KvlStatus wideThenNarrow(int count, F f, bool fillsWide = true)
{
    int done = 0;
    if constexpr (TakesWide && hasWide<T>) {
        done = fillsWide ? count - count % Wide<T>::count : 0;
        if (const KvlStatus status = f(Of<Wide<T>>(), 0, done))
            return status;
    }
    return f(Of<Lanes<T>>(), done, count);
}

// In narrow ones: group(i).
template <class T, class GroupOf, class One>
KVLM_INLINE KvlStatus inGroups(int count, GroupOf group, const One &one)
{
    return inAnyGroups<T, false>(
        count, [&](ptrdiff_t i, auto) KVLM_INLINED { return group(i); }, one);
}

// A batch whose groups lie in known layouts: group(i, Of<V>(), groups...) does the objects of a group from i on, if
// they are apart, or gives up; one(i) does one object.
template <class T, class Elements, class GroupOf, class One, class... X>
KVLM_INLINE KvlStatus groupsByLayout(const AnyGroupApart<T, Elements> &apart, int count, GroupOf group, const One &one,
                                     const X &...groups)
{
    return byLayout(
        [=, &one](const auto &...known) KVLM_INLINED {
            constexpr bool takesWide = std::is_invocable_v<GroupOf, ptrdiff_t, Of<Wide<T>>, decltype(known)...>;
            return inAnyGroups<T, takesWide>(
                count,
                [&](ptrdiff_t i, auto number) KVLM_INLINED { return apart(i, number) && group(i, number, known...); },
                one, (known.fillsWide && ...));
        },
        groups...);
}

// What makes one object and never fails, as inGroups asks for it.
template <class One>
struct NeverFails {
    const One one;

    KVLM_INLINE KvlStatus operator()(ptrdiff_t i) const
    {
        one(i);
        return kvlOk;
    }
};

// Vectors of N elements, a group at a time: compute(i, x, source...) makes those of a group, one(i) makes and stores
// one. Short work asks for exact layouts.
template <int N, bool Exact = false, class T, class Compute, class One, class... Sources>
KVLM_INLINE KvlStatus vectorsByLayout(const Objects<T> &d, int count, Compute compute, One one,
                                      const Sources &...sources)
{
    const AnyGroupApart<T> apart(d, 1, N);
    const NeverFails<One> always{one};
    const auto loop = [=, &always](const auto &result, const auto &...known) KVLM_INLINED {
        // Measured: vectors are worth wide registers where they are packed or in planes, and short work in planes only.
        using Result = std::decay_t<decltype(result)>;
        constexpr bool takesWide = std::is_invocable_v<Compute, ptrdiff_t, Wide<T>(&)[N], decltype(known)...> &&
                                   (Exact ? liesInPlanes<Result> : !std::is_same_v<Result, GroupResult<T, 1, N>>);
        return inAnyGroups<T, takesWide>(
            count,
            [&](ptrdiff_t i, auto number) KVLM_INLINED {
                if (!apart(i, number))
                    return false;
                typename decltype(number)::Number x[N];
                compute(i, x, known...);
                result.move(i, x);
                return true;
            },
            always);
    };
    if constexpr (Exact)
        return byExactLayout(loop, GroupResult<T, 1, N>(d), sources...);
    else
        return byLayout(loop, GroupResult<T, 1, N>(d), sources...);
}

} // namespace kvlm

#endif
