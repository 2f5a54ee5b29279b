// Matrix operands as their letters read them: view(i).at(r, c) is element (r, c) of op(object i), in every description.
#ifndef KVLM_READ_H
#define KVLM_READ_H

#include "kvlm_operand.h"

namespace kvlm {

// One object of a table: how many entries lie between neighbours in a column and in a row.
template <class T, class Row, class Column>
struct EntryView {
    static constexpr bool adjacentInRows = false, adjacentInColumns = false;

    T *const *table;
    Offset shift;
    Row rowStep;
    Column columnStep;

    KVLM_INLINE T *at(ptrdiff_t r, ptrdiff_t c) const { return moved(table[r * rowStep + c * columnStep], shift); }
};

template <class T, class Obj, class Row, class Column>
struct Entries : Table<T, Obj> {
    Row rowStep;
    Column columnStep;

    Entries(const Table<T, Obj> &x, Row rowStep, Column columnStep)
        : Table<T, Obj>(x), rowStep(rowStep), columnStep(columnStep)
    {
    }

    using View = EntryView<T, Row, Column>;
    KVLM_INLINE View view(ptrdiff_t i) const
    {
        return {this->table, static_cast<Offset>(this->shiftOf(i)), rowStep, columnStep};
    }
};

// `width` is that of the stored matrix.
template <char Letter, class X, class W>
KVLM_INLINE auto readAs(const X &x, W width)
{
    static_assert(Letter == 'm' || Letter == 't');
    if constexpr (X::isTable) {
        using Obj = decltype(x.objStride);
        if constexpr (Letter == 't')
            return Entries<typename X::Element, Obj, Fixed<1>, W>(x, {}, width);
        else
            return Entries<typename X::Element, Obj, W, Fixed<1>>(x, width, {});
    } else if constexpr (Letter == 't')
        return x.withSteps(x.elemStride, x.rowStride);
    else
        return x;
}

// Whether the type tells that columns are read as rows.
template <class X>
constexpr bool isTurned = false;
template <class T, class Obj, class W>
constexpr bool isTurned<Entries<T, Obj, Fixed<1>, W>> = true;

// The same without what the compiler knows of its steps: one instance of what reads it serves all.
template <class X>
KVLM_INLINE auto anySteps(const X &x)
{
    if constexpr (X::isTable) {
        using Obj = decltype(x.objStride);
        return Entries<typename X::Element, Obj, int, int>(x, x.rowStep, x.columnStep);
    } else
        return x.withSteps(int(x.rowStride), int(x.elemStride));
}

// The operand of order N with its stored rows packed behind each other, as the compiler then knows.
template <int N, class X>
KVLM_INLINE auto withPackedRows(const X &x)
{
    constexpr int bytes = N * sizeof(typename X::Element);
    if constexpr (X::View::adjacentInRows)
        return x.withSteps(Fixed<bytes>(), x.elemStride);
    else
        return x.withSteps(x.rowStride, Fixed<bytes>());
}

template <int N, class X>
KVLM_INLINE bool rowsPacked(const X &x)
{
    return (X::View::adjacentInRows ? int(x.rowStride) : int(x.elemStride)) == N * int(sizeof(typename X::Element));
}

} // namespace kvlm

#endif
