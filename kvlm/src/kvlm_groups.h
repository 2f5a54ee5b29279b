// Batches of small objects in groups, one object per lane: which orders, what lanes exchange, which objects are apart,
// the loop over the groups.
#ifndef KVLM_GROUPS_H
#define KVLM_GROUPS_H

#include "kvlm_group_objects.h"

namespace kvlm {

// The orders that are unrolled, and all others.
template <class Small, class General>
KVLM_INLINE KvlStatus bySmallOrder(int n, Small small, General general)
{
    switch (n) {
    case 3:
        return small(Fixed<3>());
    case 4:
        return small(Fixed<4>());
    case 5:
        return small(Fixed<5>());
    case 6:
        return small(Fixed<6>());
    default:
        return general();
    }
}

// Calls body(s, d), with row strides that the compiler knows if the objects of order N are packed in both.
template <int N, class S, class D, class Body>
KVLM_INLINE auto knowingPacked(const S &s, const D &d, Body body)
{
    if constexpr (!S::isTable)
        if constexpr (S::View::adjacentInRows) {
            constexpr int packed = N * sizeof(typename D::Element);
            if (s.rowStride == packed && d.rowStride == packed)
                return body(s.withSteps(Fixed<packed>(), s.elemStride), d.withSteps(Fixed<packed>(), d.elemStride));
        }
    return body(s, d);
}

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
class ObjectsApart {
public:
    template <class Obj, class Row, class Elem>
    ObjectsApart(const Strided<T, Obj, Row, Elem> &x, int rows, int columns)
    {
        const int64_t below = rows - 1, right = columns - 1;
        const int64_t obj = x.objStride, row = x.rowStride, elem = x.elemStride, size = sizeof(T);
        const int64_t whole = below * row + right * elem + size, span = (lanes - 1) * obj + size;
        always = obj >= whole || (elem >= span && (below == 0 || row >= right * elem + span)) ||
                 (row >= span && elem >= below * row + span) ||
                 (obj >= right * elem + size && row >= (lanes - 1) * obj + right * elem + size);
    }
    template <class Obj>
    ObjectsApart(const Table<T, Obj> &x, int rows, int columns)
    {
        const uintptr_t size = sizeof(T), obj = static_cast<unsigned>(int(x.objStride));
        const auto place = [&](int k) KVLM_INLINED { return reinterpret_cast<uintptr_t>(x.table[k]); };
        uintptr_t low = place(0), high = low;
        bool positionsApart = true;
        for (int r = 0; r < rows; ++r)
            for (int k = r * columns + (r == 0); k < r * columns + Elements::width(r, columns); ++k) {
                positionsApart &= place(k) >= high && place(k) - high >= (lanes - 1) * obj + size;
                low = place(k) < low ? place(k) : low;
                high = place(k) > high ? place(k) : high;
            }
        always = positionsApart || obj >= high - low + size;
    }
    template <class Row, class Elem>
    ObjectsApart(const List<T, Row, Elem> &x, int rows, int columns)
        : extent((rows - 1) * static_cast<int64_t>(int(x.rowStride)) +
                 (columns - 1) * static_cast<int64_t>(int(x.elemStride)) + static_cast<int64_t>(sizeof(T)))
    {
    }

    // For so many registers of objects.
    template <class X>
    KVLM_INLINE bool operator()(const X &x, ptrdiff_t first, int parts = 1) const
    {
        if constexpr (!X::isList)
            return always;
        else {
            const auto distance = [&](int l, int k) KVLM_INLINED {
                return static_cast<int64_t>(reinterpret_cast<uintptr_t>(x.list[first + l])) -
                       static_cast<int64_t>(reinterpret_cast<uintptr_t>(x.list[first + k]));
            };
            const int objects = Registers == 1 ? lanes : parts * Lanes<T>::count;
            bool apart = true;
#pragma GCC unroll 4
            for (int l = 1; l < objects; ++l)
                apart &= distance(l, l - 1) >= extent;
            for (int l = 1; !apart && l < objects; ++l)
                for (int k = 0; k < l; ++k)
                    if (distance(l, k) < extent && distance(k, l) < extent)
                        return false;
            return true;
        }
    }

private:
    static constexpr int lanes = Registers * Lanes<T>::count;
    bool always = true;
    int64_t extent = 0;
};

template <int R, int C, class T>
struct Apart : ObjectsApart<T> {
    template <class X>
    explicit Apart(const X &x) : ObjectsApart<T>(x, R, C)
    {
    }
};

// A batch in groups of one register or up to several, then what is left one by one. group(i, parts) does that many
// registers of objects from i on, or nothing and returns false: then they are done in smaller parts, so that exactly
// the objects before a failing one are complete.
template <class T, int Registers, class GroupOf, class One>
KVLM_INLINE KvlStatus inWideGroups(int count, GroupOf group, One one)
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
        for (; i < end; ++i)
            if (const KvlStatus status = one(i))
                return status;
    }
    return kvlOk;
}

template <class T, class GroupOf, class One>
KVLM_INLINE KvlStatus inGroups(int count, GroupOf group, One one)
{
    return inWideGroups<T, 1>(
        count, [&](ptrdiff_t i, int) KVLM_INLINED { return group(i); }, one);
}

} // namespace kvlm

#endif
