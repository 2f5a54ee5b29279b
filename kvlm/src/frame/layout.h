// What lies where, in words that mean the same everywhere:
//   adjacent   without a gap, in memory and in this order: the elements of a row, or of a column
//   packed     likewise whole objects, or the rows or columns of one
//   in planes  equal elements of the objects are adjacent: they fill a register as they are
//   apart      no byte in common
#ifndef KVLM_FRAME_LAYOUT_H
#define KVLM_FRAME_LAYOUT_H

#include "frame/read.h"

namespace kvlm {

struct Extent {
    int width, height, count;
};

// ---- Adjacent, packed, in planes. A single object is no obstacle to a batch. -------------------------------------

template <class X>
KVLM_INLINE bool adjacentInRows(const X &x)
{
    return !X::isTable && x.elemStride == static_cast<ptrdiff_t>(sizeof(typename X::Element));
}

template <class X>
KVLM_INLINE bool adjacentInColumns(const X &x)
{
    return !X::isTable && x.rowStride == static_cast<ptrdiff_t>(sizeof(typename X::Element));
}

// Objects of so many elements.
template <class X>
KVLM_INLINE bool objectsPacked(const X &x, int64_t elements)
{
    if constexpr (X::isList || X::isTable)
        return false;
    else
        return X::isSingle || x.objStride == elements * static_cast<int64_t>(sizeof(typename X::Element));
}

// The rows, or where their type says so the columns, of each object.
template <class X>
KVLM_INLINE bool linesPacked(const X &x, int width, int height)
{
    constexpr int64_t size = sizeof(typename X::Element);
    return X::View::adjacentInRows ? height == 1 || x.rowStride == width * size
                                   : width == 1 || x.elemStride == height * size;
}

// The same operand of order N, as the compiler then knows it.
template <int N, class X>
KVLM_INLINE auto withPackedLines(const X &x)
{
    constexpr int bytes = N * sizeof(typename X::Element);
    if constexpr (X::View::adjacentInRows)
        return x.withSteps(Fixed<bytes>(), x.elemStride);
    else
        return x.withSteps(x.rowStride, Fixed<bytes>());
}

template <class X>
KVLM_INLINE bool inPlanes(const X &x)
{
    if constexpr (X::isList)
        return false;
    else
        return X::isSingle || x.objStride == static_cast<ptrdiff_t>(sizeof(typename X::Element));
}

// ---- Apart -------------------------------------------------------------------------------------------------------

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
template <class X, class F>
KVLM_INLINE bool forRanges(const X &x, Extent n, F f)
{
    if constexpr (X::isList) {
        for (ptrdiff_t i = 0; i < n.count; ++i)
            if (!f(objectRange(x, i, n)))
                return false;
        return true;
    } else if constexpr (X::isTable) {
        for (ptrdiff_t p = 0; p < static_cast<ptrdiff_t>(n.width) * n.height; ++p)
            if (!f(rangeFrom(x.at(p, 0), spanOf(n.count, x.objStride))))
                return false;
        return true;
    } else
        return f(rangeFrom(x.base, spanOf(n.height, x.rowStride) + spanOf(n.width, x.elemStride) +
                                       spanOf(n.count, x.objStride)));
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

// Source and destination; of two lists, equal objects.
template <class S, class D>
KVLM_INLINE bool operandsApart(const S &s, const D &d, Extent n)
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

// Each object of a destination whose elements are apart lies behind the one before it, or at least apart from it.
template <class X>
KVLM_INLINE bool objectsApart(const X &x, Extent n)
{
    if constexpr (X::isList)
        for (ptrdiff_t i = 1; i < n.count; ++i)
            if (objectRange(x, i, n).low < objectRange(x, i - 1, n).high)
                return false;
    return true;
}

struct Step {
    int64_t stride;
    int count;
};

// Pieces of so many bytes: each stride steps over all that smaller ones reach.
template <size_t N>
inline bool stepsApart(int64_t size, Step (&steps)[N])
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

// The planes that begin at the entries of a table. Tables in no order are looked into only where that costs less than
// the work.
template <class D>
inline bool entriesApart(const D &d, ptrdiff_t positions, int count)
{
    const uintptr_t plane = count * sizeof(typename D::Element);
    const auto behind = [&](ptrdiff_t p, ptrdiff_t q) KVLM_INLINED {
        const uintptr_t first = reinterpret_cast<uintptr_t>(d.at(q, 0)),
                        second = reinterpret_cast<uintptr_t>(d.at(p, 0));
        return second >= first && second - first >= plane;
    };
    ptrdiff_t ascending = 1;
    while (ascending < positions && behind(ascending, ascending - 1))
        ++ascending;
    if (ascending == positions)
        return true;
    if (positions > 2 * static_cast<ptrdiff_t>(count) + 1)
        return false;
    for (ptrdiff_t p = ascending; p < positions; ++p)
        for (ptrdiff_t q = 0; q < p; ++q)
            if (!behind(p, q) && !behind(q, p))
                return false;
    return true;
}

// The planes of objects that are in planes.
template <class D>
KVLM_INLINE bool planesApart(const D &d, Extent n)
{
    if constexpr (D::isTable)
        return entriesApart(d, static_cast<ptrdiff_t>(n.width) * n.height, n.count);
    else {
        Step steps[] = {{d.elemStride, n.width}, {d.rowStride, n.height}};
        return stepsApart(n.count * static_cast<int64_t>(sizeof(typename D::Element)), steps);
    }
}

// All elements of a destination; in a list, those of the same object; in a table, those of objects in planes.
template <class D>
KVLM_INLINE bool elementsApart(const D &d, Extent n)
{
    if constexpr (D::isTable)
        return planesApart(d, n);
    else {
        Step steps[] = {{d.elemStride, n.width}, {d.rowStride, n.height}, {0, 1}};
        if constexpr (!D::isList)
            steps[2] = {d.objStride, n.count};
        return stepsApart(sizeof(typename D::Element), steps);
    }
}

// ---- Tables whose entries tell more ------------------------------------------------------------------------------

// Whether the entries are those of packed objects, which asAdjacent() then describes as plain operands are: Row is int,
// or None of a vector. `width` and `height` are those of the stored matrix.
template <class T, class Obj>
inline bool isAdjacent(const Table<T, Obj> &x, int width, int height)
{
    const auto place = [&](ptrdiff_t k) KVLM_INLINED { return reinterpret_cast<uintptr_t>(x.table[k]); };
    if (width > INT_MAX / static_cast<int>(sizeof(T)))
        return false;
    const ptrdiff_t positions = static_cast<ptrdiff_t>(width) * height;
    for (ptrdiff_t k = 1; k < positions; ++k)
        if (place(k) != place(k - 1) + sizeof(T))
            return false;
    return true;
}

template <class Row, class T, class Obj>
KVLM_INLINE auto asAdjacent(const Table<T, Obj> &x, int width)
{
    Row row{};
    if constexpr (!std::is_same_v<Row, None>)
        row = width * static_cast<int>(sizeof(T));
    return Strided<T, Obj, Row, Unit<T>>(x.at(0, 0), x.objStride, row, {});
}

// A table whose entries lie like the elements of a strided operand.
template <class T>
inline bool isStrided(const WideTable<T> &x, Extent n, WideStrided<T> &strided)
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
    strided = {x.view(0).at(0, 0), x.objStride, static_cast<ptrdiff_t>(row), static_cast<ptrdiff_t>(elem)};
    return true;
}

} // namespace kvlm

#endif
