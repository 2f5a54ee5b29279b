// Operands as they are read: letters exchange rows and columns, a table gets its rows, strides become as wide as the
// address space. view(i).at(r, c) is element (r, c) of op(object i), in every description.
#ifndef KVLM_FRAME_READ_H
#define KVLM_FRAME_READ_H

#include "frame/operand.h"

namespace kvlm {

// A table whose strides inside an object are known: they count entries.
template <class T, class Obj, class Row, class Elem>
struct Entries : Table<T, Obj> {
    using View = TableView<T, Row, Elem>;
    Row rowStride;
    Elem elemStride;

    Entries(const Table<T, Obj> &x, Row rowStride, Elem elemStride)
        : Table<T, Obj>(x), rowStride(rowStride), elemStride(elemStride)
    {
    }

    KVLM_INLINE View view(ptrdiff_t i) const
    {
        return {this->table, static_cast<Offset>(this->shiftOf(i)), rowStride, elemStride};
    }
    template <class R, class E>
    Entries<T, Obj, R, E> withSteps(R row, E elem) const
    {
        return {*this, row, elem};
    }
};

// `width` is that of the stored matrix.
template <class T, class Obj, class W>
KVLM_INLINE Entries<T, Obj, W, Fixed<1>> inRows(const Table<T, Obj> &x, W width)
{
    return {x, width, {}};
}

template <class X, class W>
KVLM_INLINE const X &inRows(const X &x, W)
{
    return x;
}

// Rows become columns.
template <class X>
KVLM_INLINE auto transposed(const X &x)
{
    return x.withSteps(x.elemStride, x.rowStride);
}

// op(x), `width` being that of the stored matrix.
template <char Letter, class X, class W>
KVLM_INLINE auto readAs(const X &x, W width)
{
    static_assert(Letter == 'm' || Letter == 't');
    if constexpr (Letter == 't')
        return transposed(inRows(x, width));
    else
        return inRows(x, width);
}

// Whether the type tells that columns are read as rows.
template <class X>
constexpr bool isTransposed = false;
template <class T, class Obj, class W>
constexpr bool isTransposed<Entries<T, Obj, Fixed<1>, W>> = true;

// Where the elements of a small object 0 are, in the order in which they are read: a table of its own.
template <class T>
struct Places {
    T *entries[smallObject];

    template <class X>
    KVLM_NOINLINE Places(const X &x, int width, int height)
    {
        const auto view = x.view(0);
        T **entry = entries;
        for (int r = 0; r < height; ++r)
            for (int c = 0; c < width; ++c)
                *entry++ = view.at(r, c);
    }
    template <class Obj>
    Table<T, Obj> table(Obj objStride) const
    {
        return {entries, 0, objStride};
    }
};

// The same without what the compiler knows of its steps: one instance of what reads it serves all.
template <class X>
KVLM_INLINE auto anySteps(const X &x)
{
    return x.withSteps(int(x.rowStride), int(x.elemStride));
}

// ---- Strides as wide as the address space ------------------------------------------------------------------------

template <class T>
using WideStrided = Strided<T, ptrdiff_t, ptrdiff_t, ptrdiff_t>;
template <class T>
using WideList = List<T, ptrdiff_t, ptrdiff_t>;
template <class T>
using WideTable = Entries<T, ptrdiff_t, ptrdiff_t, ptrdiff_t>;

// An operand with rows of `width` elements.
template <class T, class Obj, class Row, class Elem>
WideStrided<T> wide(const Strided<T, Obj, Row, Elem> &x, int)
{
    return {x.base, ptrdiff_t(x.objStride), ptrdiff_t(x.rowStride), ptrdiff_t(x.elemStride)};
}

template <class T, class Row, class Elem>
WideList<T> wide(const List<T, Row, Elem> &x, int)
{
    return {x.list, x.shift, ptrdiff_t(x.rowStride), ptrdiff_t(x.elemStride)};
}

template <class T, class Obj>
WideTable<T> wide(const Table<T, Obj> &x, int width)
{
    return {{x.table, x.shift, int(x.objStride)}, width, 1};
}

} // namespace kvlm

#endif
