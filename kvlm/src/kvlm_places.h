// The operands of a move, and what lies where: whether elements of a destination coincide, whether operands overlap.
#ifndef KVLM_PLACES_H
#define KVLM_PLACES_H

#include "kvlm_table.h"

namespace kvlm {

// The standard and the list description, with strides as wide as the address space.
template <class T>
using Grid = Strided<T, ptrdiff_t, ptrdiff_t, ptrdiff_t>;
template <class T>
using Scattered = List<T, ptrdiff_t, ptrdiff_t>;

// The pointer description. The strides inside an object count entries of the table.
template <class T>
struct Positions : Table<T, ptrdiff_t> {
    struct View {
        T *const *table;
        Offset shift;
        ptrdiff_t rowStride, elemStride;

        KVLM_INLINE T *at(ptrdiff_t r, ptrdiff_t c) const
        {
            return moved(table[r * rowStride + c * elemStride], shift);
        }
    };
    ptrdiff_t rowStride, elemStride;

    template <class Obj>
    Positions(const Table<T, Obj> &x, int width)
        : Table<T, ptrdiff_t>(x.table, x.shift, int(x.objStride)), rowStride(width), elemStride(1)
    {
    }
    View view(ptrdiff_t i) const { return {this->table, static_cast<Offset>(this->shiftOf(i)), rowStride, elemStride}; }
};

// An operand of a call, with rows of `width` elements, as an operand of a move.
template <class T, class Obj, class Row, class Elem>
Grid<T> movable(const Strided<T, Obj, Row, Elem> &x, int)
{
    return {x.base, ptrdiff_t(x.objStride), ptrdiff_t(x.rowStride), ptrdiff_t(x.elemStride)};
}

template <class T, class Row, class Elem>
Scattered<T> movable(const List<T, Row, Elem> &x, int)
{
    return {x.list, x.shift, ptrdiff_t(x.rowStride), ptrdiff_t(x.elemStride)};
}

template <class T, class Obj>
Positions<T> movable(const Table<T, Obj> &x, int width)
{
    return {x, width};
}

template <class X>
X transposed(X x)
{
    std::swap(x.rowStride, x.elemStride);
    return x;
}

struct Extent {
    int width, height, count;
};

// Addresses from low to high - 1.
struct Range {
    uintptr_t low, high;

    bool apartFrom(Range x) const { return high <= x.low || x.high <= low; }
};

// From a first element to one so many bytes behind it. Where strides go around the address space, elements may lie
// anywhere.
template <class T>
KVLM_INLINE Range rangeFrom(const T *first, uint64_t span)
{
    const uintptr_t low = reinterpret_cast<uintptr_t>(first);
    if (span > UINTPTR_MAX - low - sizeof(T))
        return {0, UINTPTR_MAX};
    return {low, low + static_cast<uintptr_t>(span) + sizeof(T)};
}

KVLM_INLINE uint64_t spanOf(int count, ptrdiff_t stride)
{
    return static_cast<uint64_t>(count - 1) * static_cast<uint64_t>(stride);
}

template <class X>
KVLM_INLINE Range objectRange(const X &x, ptrdiff_t i, Extent n)
{
    return rangeFrom(x.object(i), spanOf(n.height, x.rowStride) + spanOf(n.width, x.elemStride));
}

// f(range) for ranges that hold all of an operand, until it returns false: one, or one for each entry of table or list.
template <class T, class F>
KVLM_INLINE bool forRanges(const Grid<T> &x, Extent n, F f)
{
    return f(rangeFrom(x.base,
                       spanOf(n.height, x.rowStride) + spanOf(n.width, x.elemStride) + spanOf(n.count, x.objStride)));
}

template <class T, class F>
KVLM_INLINE bool forRanges(const Scattered<T> &x, Extent n, F f)
{
    for (ptrdiff_t i = 0; i < n.count; ++i)
        if (!f(objectRange(x, i, n)))
            return false;
    return true;
}

template <class T, class F>
KVLM_INLINE bool forRanges(const Positions<T> &x, Extent n, F f)
{
    for (ptrdiff_t p = 0; p < static_cast<ptrdiff_t>(n.width) * n.height; ++p)
        if (!f(rangeFrom(x.at(p, 0), spanOf(n.count, x.objStride))))
            return false;
    return true;
}

template <class X, class Y>
KVLM_INLINE bool apartFromWhole(const X &x, const Y &y, Extent n)
{
    Range whole = {UINTPTR_MAX, 0};
    forRanges(y, n, [&](Range range) KVLM_INLINED {
        whole = {range.low < whole.low ? range.low : whole.low, range.high > whole.high ? range.high : whole.high};
        return true;
    });
    return forRanges(x, n, [&](Range range) KVLM_INLINED { return range.apartFrom(whole); });
}

// Whether source and destination share no byte; of two lists, whether equal objects share none.
template <class S, class D>
KVLM_INLINE bool apart(const S &s, const D &d, Extent n)
{
    if constexpr (S::isList && D::isList) {
        for (ptrdiff_t i = 0; i < n.count; ++i)
            if (!objectRange(s, i, n).apartFrom(objectRange(d, i, n)))
                return false;
        return true;
    } else if constexpr (S::isList || (S::isTable && !D::isList))
        return apartFromWhole(s, d, n);
    else
        return apartFromWhole(d, s, n);
}

struct Step {
    int64_t stride;
    int count;
};

// Whether no element lies in another: each stride steps over all that smaller ones reach.
template <size_t N>
inline bool nested(int64_t size, Step (&steps)[N])
{
    for (size_t k = 1; k < N; ++k)
        for (size_t j = k; j > 0 && steps[j].stride < steps[j - 1].stride; --j)
            std::swap(steps[j], steps[j - 1]);
    int64_t reach = size;
    for (const Step &step : steps)
        if (step.count > 1) {
            if (step.stride < reach)
                return false;
            reach += step.stride * (step.count - 1);
        }
    return true;
}

// Whether no element of a destination lies in another; in a list, of the same object; in a table, of objects that lie
// side by side.
template <class T>
inline bool distinct(const Grid<T> &x, Extent n)
{
    Step steps[] = {{x.elemStride, n.width}, {x.rowStride, n.height}, {x.objStride, n.count}};
    return nested(sizeof(T), steps);
}

template <class T>
inline bool distinct(const Scattered<T> &x, Extent n)
{
    Step steps[] = {{x.elemStride, n.width}, {x.rowStride, n.height}};
    return nested(sizeof(T), steps);
}

template <class T>
inline bool distinct(const Positions<T> &x, Extent n)
{
    return entriesDisjoint<T>(x, static_cast<ptrdiff_t>(n.width) * n.height, n.count);
}

// Whether each object of a distinct destination lies behind the one before it, or at least apart from all others.
template <class T>
inline bool objectsApart(const Grid<T> &, Extent)
{
    return true;
}

template <class T>
inline bool objectsApart(const Scattered<T> &x, Extent n)
{
    for (ptrdiff_t i = 1; i < n.count; ++i)
        if (objectRange(x, i, n).low < objectRange(x, i - 1, n).high)
            return false;
    return true;
}

// A table whose entries lie like the elements of a strided operand.
template <class T>
inline bool isGrid(const Positions<T> &x, Extent n, Grid<T> &grid)
{
    const auto place = [&](ptrdiff_t r, ptrdiff_t c)
                           KVLM_INLINED { return reinterpret_cast<uintptr_t>(x.view(0).at(r, c)); };
    const uintptr_t base = place(0, 0), elem = n.width > 1 ? place(0, 1) - base : sizeof(T),
                    row = n.height > 1 ? place(1, 0) - base : n.width * elem;
    if (static_cast<ptrdiff_t>(elem) < static_cast<ptrdiff_t>(sizeof(T)) || static_cast<ptrdiff_t>(row) <= 0)
        return false;
    for (ptrdiff_t r = 0; r < n.height; ++r)
        for (ptrdiff_t c = 0; c < n.width; ++c)
            if (place(r, c) != base + r * row + c * elem)
                return false;
    grid = {x.view(0).at(0, 0), x.objStride, static_cast<ptrdiff_t>(row), static_cast<ptrdiff_t>(elem)};
    return true;
}

} // namespace kvlm

#endif
