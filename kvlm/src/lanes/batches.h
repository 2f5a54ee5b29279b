// Batches of small objects in groups, one object per lane: which orders, what lanes exchange, which objects are apart,
// the loop over the groups.
#ifndef KVLM_LANES_BATCHES_H
#define KVLM_LANES_BATCHES_H

#include "lanes/objects.h"

namespace kvlm {

// An interchange that each lane makes for itself: which of N candidates takes the place of candidate k.
template <class T, int N>
struct Choice {
    Lanes<T> taken[N]; // while searching: i is better than all from k to i - 1

    // The last that was taken is it.
    KVLM_INLINE void settle(int k)
    {
        Lanes<T> later = Lanes<T>::all(0);
#pragma GCC unroll 6
        for (int i = N - 1; i > k; --i) {
            const Lanes<T> here = taken[i];
            taken[i] = without(here, later);
            later = later | here;
        }
    }
    template <class Entry>
    KVLM_INLINE void exchange(int k, Entry x) const
    {
        Lanes<T> change = Lanes<T>::all(0);
#pragma GCC unroll 6
        for (int i = k + 1; i < N; ++i) {
            const Lanes<T> difference = (x(i) ^ x(k)) & taken[i];
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

    // The group from `first` on, of so many registers.
    KVLM_INLINE bool operator()(ptrdiff_t first, int parts = 1) const
    {
        if (!list)
            return always;
        const int objects = Registers == 1 ? lanes : parts * Lanes<T>::count;
        bool apart = true;
#pragma GCC unroll 4
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

// A batch in groups of one register or up to several, then what is left one by one. group(i, parts) does that many
// registers of objects from i on, or nothing and returns false: then they are done in smaller parts, so that exactly
// the objects before a failing one are complete.
template <class T, int Registers, class GroupOf, class One>
KVLM_INLINE KvlStatus inWideGroups(int count, GroupOf group, const One &one)
{
    constexpr int lanes = Lanes<T>::count;
    int i = 0, most = Registers;
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

// The same in groups of one register: group(i).
template <class T, class GroupOf, class One>
KVLM_INLINE KvlStatus inGroups(int count, GroupOf group, const One &one)
{
    constexpr int lanes = Lanes<T>::count;
    ptrdiff_t i = 0;
    for (; count - i >= lanes; i += lanes)
        if (!group(i))
            if (const KvlStatus status = oneByOne(i, i + lanes, one))
                return status;
    return oneByOne(i, count, one);
}

// A batch whose groups lie in known layouts: group(i, groups...) does the objects of a group from i on, if they are
// apart, or gives up; one(i) does one object.
template <class T, class Elements, class GroupOf, class One, class... X>
KVLM_INLINE KvlStatus groupsByLayout(const GroupsApart<T, Elements> &apart, int count, GroupOf group, const One &one,
                                     const X &...groups)
{
    return byLayout(
        [=, &one](const auto &...known) KVLM_INLINED {
            return inGroups<T>(
                count, [&](ptrdiff_t i) KVLM_INLINED { return apart(i) && group(i, known...); }, one);
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
    const GroupsApart<T> apart(d, 1, N);
    const NeverFails<One> always{one};
    const auto loop = [=, &always](const auto &result, const auto &...known) KVLM_INLINED {
        return inGroups<T>(
            count,
            [&](ptrdiff_t i) KVLM_INLINED {
                if (!apart(i))
                    return false;
                Lanes<T> x[N];
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
