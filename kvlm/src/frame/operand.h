// Operands: the arguments of one operand of a call, as an object that can be checked, passed on, moved and read.
//
// Every part of an argument list is such an object, the sizes and the count too. What the frame asks of a part:
//   null(), strides(), shifts(), sizeFault(), matchFault(), countFault()   for the checks
//   objectStrides(), innerStrides()   the strides apart, for families that check them apart; moreThanOne(): more than
//   one object adjacent()              whether its elements lie behind one another, true where that means nothing
//   lastStart()             the last object at which a chunk may begin, so that its arguments fit their types
//   scratchBytes()          what one thread of a team needs in place of the caller's buffer
#ifndef KVLM_FRAME_OPERAND_H
#define KVLM_FRAME_OPERAND_H

#include "frame/base.h"

#include <algorithm>
#include <limits.h>
#include <type_traits>

namespace kvlm {

constexpr unsigned signBit = 0x80000000u;

// What is to be known of some strides or shifts, joined by |: whether any is negative or no multiple of the element
// size (a power of two), or below the least value allowed. The whole set is tested at once.
struct Bits {
    unsigned any = 0, below = 0, mask = 0;

    KVLM_INLINE bool fault() const { return ((any & mask) | ((any | below) & signBit)) != 0; }
    friend KVLM_INLINE Bits operator|(Bits a, Bits b) { return {a.any | b.any, a.below | b.below, a.mask | b.mask}; }
};

template <class T>
KVLM_INLINE Bits strideBits(int stride)
{
    return {static_cast<unsigned>(stride), static_cast<unsigned>(stride) - 1, sizeof(T) - 1};
}

template <class T>
KVLM_INLINE Bits strideBits(None)
{
    return {};
}

template <class T>
KVLM_INLINE Bits shiftBits(int shift)
{
    return {static_cast<unsigned>(shift), 0, sizeof(T) - 1};
}

// The neutral answers.
struct Part {
    static constexpr bool isSingle = false, isTable = false, isList = false, isSource = false;

    bool null() const { return false; }
    Bits strides() const { return {}; }
    Bits objectStrides() const { return {}; }
    Bits innerStrides() const { return {}; }
    Bits shifts() const { return {}; }
    bool sizeFault() const { return false; }
    bool matchFault() const { return false; }
    bool countFault() const { return false; }
    bool moreThanOne() const { return false; }
    bool adjacent() const { return true; }
    int lastStart() const { return INT_MAX; }
    size_t scratchBytes() const { return 0; }
};

// One object while it is read or written. An operand that is read transposed has its two strides exchanged.
template <class T, class Row, class Elem>
struct View {
    static constexpr bool adjacentInRows = std::is_same_v<Elem, Unit<T>>;
    static constexpr bool adjacentInColumns = std::is_same_v<Row, Unit<T>>;

    T *base;
    Row rowStride;
    Elem elemStride;

    KVLM_INLINE T *at(ptrdiff_t r, ptrdiff_t c) const
    {
        return moved(base, steps(r, rowStride) + steps(c, elemStride));
    }
};

// The same of a table, whose strides count entries.
template <class T, class Row = int, class Elem = Fixed<1>>
struct TableView {
    static constexpr bool adjacentInRows = false, adjacentInColumns = false;

    T *const *table;
    Offset shift;
    Row rowStride;
    Elem elemStride;

    KVLM_INLINE T *at(ptrdiff_t r, ptrdiff_t c) const { return moved(table[r * rowStride + c * elemStride], shift); }
};

// Standard description: base pointer and byte strides. Obj and Row are int or None, Elem is int or Unit<T>.
template <class T, class Obj, class Row, class Elem>
struct Strided : Part {
    static_assert(!std::is_same_v<Elem, None>, "elements that have no stride are adjacent: Unit");
    static constexpr bool isSingle = std::is_same_v<Obj, None>, isSource = std::is_const_v<T>;
    using Element = T;
    using View = kvlm::View<T, Row, Elem>;
    T *base;
    Obj objStride;
    Row rowStride;
    Elem elemStride;

    Strided(T *base, Obj objStride, Row rowStride, Elem elemStride)
        : base(base), objStride(objStride), rowStride(rowStride), elemStride(elemStride)
    {
    }

    bool null() const { return base == nullptr; }
    Bits objectStrides() const { return strideBits<T>(objStride); }
    Bits innerStrides() const { return strideBits<T>(rowStride) | strideBits<T>(elemStride); }
    Bits strides() const { return objectStrides() | innerStrides(); }
    bool adjacent() const { return elemStride == static_cast<int>(sizeof(T)); }

    T *object(ptrdiff_t i) const { return moved(base, steps(i, objStride)); }
    View view(ptrdiff_t i) const { return {object(i), rowStride, elemStride}; }
    template <class R, class E>
    Strided<T, Obj, R, E> withSteps(R row, E elem) const
    {
        return {base, objStride, row, elem};
    }
};

// Pointer description: a table with one pointer per element position of object 0, a shift, and for arrays objStride.
template <class T, class Obj>
struct Table : Part {
    static constexpr bool isSingle = std::is_same_v<Obj, None>, isTable = true, isSource = std::is_const_v<T>;
    using Element = T;
    using View = TableView<T>;
    T *const *table;
    int shift;
    Obj objStride;

    Table(T *const *table, int shift, Obj objStride) : table(table), shift(shift), objStride(objStride) {}

    bool null() const { return table == nullptr; }
    Bits objectStrides() const { return strideBits<T>(objStride); }
    Bits strides() const { return objectStrides(); }
    Bits shifts() const { return shiftBits<T>(shift); }
    int lastStart() const
    {
        if (sizeof(ptrdiff_t) == sizeof(int) || objStride == 0)
            return INT_MAX;
        const int64_t room = int64_t(objStride > 0 ? INT_MAX : INT_MIN) - shift;
        return static_cast<int>(std::min<int64_t>(room / objStride, INT_MAX));
    }

    ptrdiff_t shiftOf(ptrdiff_t i) const
    {
        return static_cast<ptrdiff_t>(static_cast<Offset>(shift) + steps(i, objStride));
    }
    T *at(ptrdiff_t position, ptrdiff_t i) const { return moved(table[position], static_cast<Offset>(shiftOf(i))); }
};

// List description of an array: one pointer per object, a shift, and the strides inside an object.
template <class T, class Row, class Elem>
struct List : Part {
    static_assert(!std::is_same_v<Elem, None>, "elements that have no stride are adjacent: Unit");
    static constexpr bool isList = true, isSource = std::is_const_v<T>;
    using Element = T;
    using View = kvlm::View<T, Row, Elem>;
    T *const *list;
    int shift;
    Row rowStride;
    Elem elemStride;

    List(T *const *list, int shift, Row rowStride, Elem elemStride)
        : list(list), shift(shift), rowStride(rowStride), elemStride(elemStride)
    {
    }

    bool null() const { return list == nullptr; }
    Bits innerStrides() const { return strideBits<T>(rowStride) | strideBits<T>(elemStride); }
    Bits strides() const { return innerStrides(); }
    Bits shifts() const { return shiftBits<T>(shift); }
    bool adjacent() const { return elemStride == static_cast<int>(sizeof(T)); }

    T *object(ptrdiff_t i) const { return moved(list[i], static_cast<Offset>(shift)); }
    View view(ptrdiff_t i) const { return {object(i), rowStride, elemStride}; }
    template <class R, class E>
    List<T, R, E> withSteps(R row, E elem) const
    {
        return {list, shift, row, elem};
    }
};

// An operand whose strides one member does not check.
template <class X>
struct StridesUnchecked : X {
    explicit StridesUnchecked(const X &x) : X(x) {}

    Bits strides() const { return {}; }
};

// Object i of a matrix operand: at(r, c) is where an element lies.
template <class X>
KVLM_INLINE auto viewOf(const X &x, ptrdiff_t i, int width)
{
    if constexpr (X::isTable)
        return TableView<typename X::Element>{x.table, static_cast<Offset>(x.shiftOf(i)), width, {}};
    else
        return x.view(i);
}

// Element j of a single vector.
template <class T, class Elem>
KVLM_INLINE T *elementOf(const Strided<T, None, None, Elem> &x, ptrdiff_t j)
{
    return moved(x.base, steps(j, x.elemStride));
}

template <class T>
KVLM_INLINE T *elementOf(const Table<T, None> &x, ptrdiff_t j)
{
    return x.at(j, 0);
}

// Whether an operand's kernel is one for adjacent elements.
template <class X>
constexpr bool hasAdjacentRows()
{
    if constexpr (X::isTable)
        return false;
    else
        return X::View::adjacentInRows;
}

// The sizes of a matrix, or the length of a vector.
struct Shape : Part {
    int width, height;

    Shape(int width, int height) : width(width), height(height) {}

    bool sizeFault() const { return width < 1 || height < 1; }
};

// The sizes of a matrix that must have at least as many rows as columns.
struct TallShape : Shape {
    using Shape::Shape;

    bool matchFault() const { return width > height; }
};

struct Length : Part {
    int length;

    explicit Length(int length) : length(length) {}

    bool sizeFault() const { return length < 1; }
};

// No argument of its own: whether the sizes of two operands fit together.
struct SizeMatch : Part {
    bool matched;

    explicit SizeMatch(bool matched) : matched(matched) {}

    bool matchFault() const { return !matched; }
};

// A constant, passed by value. An array of constants needs no class of its own: it is an array of vectors of one
// adjacent element.
template <class T>
struct Constant : Part {
    T value;

    explicit Constant(T value) : value(value) {}
};

struct Count : Part {
    int count;

    explicit Count(int count) : count(count) {}

    bool countFault() const { return count < 1; }
    bool moreThanOne() const { return count > 1; }
};

// A plain array with `perObject` entries for each object: scalar results, eigenvalues, pivots.
template <class T>
struct PerObject : Part {
    T *base;
    int perObject;

    PerObject(T *base, int perObject) : base(base), perObject(perObject) {}

    bool null() const { return base == nullptr; }
};

// The caller's scratch, which every thread of a team replaces by a piece of its own.
template <class T>
struct Buffer : Part {
    T *base;
    size_t elements;

    Buffer(T *base, size_t elements) : base(base), elements(elements) {}

    bool null() const { return base == nullptr; }
    size_t scratchBytes() const { return elements * sizeof(T); }
};

// Object `first` of an array, and the shift of the table or list from it on.
template <class T>
KVLM_INLINE T *objectFrom(T *base, int first, int objStride)
{
    return moved(base, steps(first, objStride));
}

KVLM_INLINE int shiftFrom(int shift, int first, int objStride)
{
    return wrapped(unsigned(shift) + unsigned(first) * unsigned(objStride));
}

} // namespace kvlm

#endif
