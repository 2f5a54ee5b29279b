// The objects of a batch or a call, in whatever description they come, and one of them between memory and elements or
// lanes.
#ifndef KVLM_LANES_OBJECTS_H
#define KVLM_LANES_OBJECTS_H

#include "lanes/group.h"

namespace kvlm {

// Which elements of an object are moved: all, or those on and below the diagonal.
struct Whole {
    static constexpr bool all = true;
    template <class Row, class Columns>
    static KVLM_INLINE constexpr Columns width(Row, Columns columns)
    {
        return columns;
    }
};

struct LowerTriangle {
    static constexpr bool all = false;
    template <int R, class Columns>
    static KVLM_INLINE constexpr Fixed<R + 1> width(Fixed<R>, Columns)
    {
        return {};
    }
    static KVLM_INLINE constexpr int width(int r, int) { return r + 1; }
};

// move(k, r, c) for each element that takes part, k being its place row by row.
template <class Elements, class Move, int R, int C>
KVLM_INLINE void eachElement(Fixed<R>, Fixed<C>, Move move)
{
#pragma GCC unroll 6
    for (int r = 0; r < R; ++r) {
        const int width = Elements::width(r, C);
#pragma GCC unroll 6
        for (int c = 0; c < width; ++c)
            move(r * C + c, r, c);
    }
}

template <class Elements, class Move>
KVLM_INLINE void eachElement(int rows, int columns, Move move)
{
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < Elements::width(r, columns); ++c)
            move(r * columns + c, r, c);
}

template <class Size>
constexpr bool isOne = std::is_same_v<Size, Fixed<1>>;

template <int A, int B>
KVLM_INLINE Fixed<A * B> product(Fixed<A>, Fixed<B>)
{
    return {};
}

KVLM_INLINE int product(int a, int b)
{
    return a * b;
}

// The objects of an operand, whatever describes it: one type for all descriptions, so that what computes on groups is
// compiled once. A vector is a matrix of one row. Strides inside an object count bytes, in tables entries.
template <class T>
struct Objects {
    T *base = nullptr;         // standard description
    T *const *list = nullptr;  // an entry for each object,
    T *const *table = nullptr; // or for each element
    Offset shift = 0;          // of list or table
    ptrdiff_t objStride = 0;   // 0 also for a single object, which serves all
    ptrdiff_t rowStride, elemStride;
    bool isSingle = false;

    template <class Obj, class Row, class Elem>
    Objects(const Strided<T, Obj, Row, Elem> &x, int)
        : base(x.base), objStride(int(x.objStride)), rowStride(int(x.rowStride)), elemStride(int(x.elemStride)),
          isSingle(x.isSingle)
    {
    }
    template <class Row, class Elem>
    Objects(const List<T, Row, Elem> &x, int)
        : list(x.list), shift(x.shift), rowStride(int(x.rowStride)), elemStride(int(x.elemStride))
    {
    }
    template <class Obj>
    Objects(const Table<T, Obj> &x, int width)
        : table(x.table), shift(x.shift), objStride(int(x.objStride)), rowStride(width), elemStride(1),
          isSingle(x.isSingle)
    {
    }

    KVLM_INLINE T *object(ptrdiff_t i) const { return list ? moved(list[i], shift) : moved(base, steps(i, objStride)); }
    // So many objects of the standard or the list description, from `first` on.
    template <int Count>
    KVLM_INLINE Group<T, Count> group(ptrdiff_t first) const
    {
        return list ? listedGroup<Count>(first) : stridedGroup<Count>(first);
    }
    template <int Count>
    KVLM_INLINE Group<T, Count> listedGroup(ptrdiff_t first) const
    {
        return groupOf<T, Count>([&](int l) KVLM_INLINED { return moved(list[first + l], shift); });
    }
    template <int Count>
    KVLM_INLINE Group<T, Count> stridedGroup(ptrdiff_t first) const
    {
        T *const p = moved(base, steps(first, objStride));
        return groupOf<T, Count>([&](int l) KVLM_INLINED { return moved(p, steps(l, objStride)); });
    }
    KVLM_INLINE T *at(ptrdiff_t i, ptrdiff_t r, ptrdiff_t c) const
    {
        return table ? moved(table[r * rowStride + c * elemStride], shift + steps(i, objStride))
                     : moved(object(i), steps(r, rowStride) + steps(c, elemStride));
    }
    KVLM_INLINE bool inPlanes() const { return !list && objStride == sizeof(T); }
    KVLM_INLINE bool hasAdjacentRows() const { return !table && elemStride == sizeof(T); }
    KVLM_INLINE bool hasAdjacentColumns() const { return !table && rowStride == sizeof(T); }
    // Object i of each description.
    KVLM_INLINE TableView<T, int, int> tableView(ptrdiff_t i) const
    {
        return {table, shift + steps(i, objStride), static_cast<int>(rowStride), static_cast<int>(elemStride)};
    }
    KVLM_INLINE View<T, int, Unit<T>> adjacentView(ptrdiff_t i) const { return adjacentView(object(i)); }
    KVLM_INLINE View<T, int, Unit<T>> adjacentView(T *object) const
    {
        return {object, static_cast<int>(rowStride), {}};
    }
    KVLM_INLINE View<T, int, int> view(ptrdiff_t i) const
    {
        return {object(i), static_cast<int>(rowStride), static_cast<int>(elemStride)};
    }
    // The same with rows and columns exchanged.
    Objects transposed() const
    {
        Objects x = *this;
        x.rowStride = elemStride;
        x.elemStride = rowStride;
        return x;
    }
};

template <class X>
KVLM_INLINE auto objectsOf(const X &x, int width)
{
    return Objects<typename X::Element>(x, width);
}

// A table whose entries lie like the elements of packed objects, as the strides that say so.
template <class T>
KVLM_NOINLINE Objects<T> withStrides(const Objects<T> &x, int rows, int columns)
{
    Objects<T> y = x;
    y.base = x.at(0, 0, 0);
    y.table = nullptr;
    y.rowStride *= sizeof(T);
    y.elemStride *= sizeof(T);
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < columns; ++c)
            if (x.at(0, r, c) != y.at(0, r, c))
                return x;
    return y;
}

// f(view...) of object i of each operand. All come in the same description.
template <class F, class... T>
KVLM_INLINE auto withViews(F f, ptrdiff_t i, const Objects<T> &...x)
{
    if ((x.table && ...))
        return f(x.tableView(i)...);
    if ((x.hasAdjacentRows() && ...))
        return f(x.adjacentView(i)...);
    return f(x.view(i)...);
}

// f(i, view...) for each object.
template <class F, class... T>
KVLM_INLINE void eachObject(ptrdiff_t count, F f, const Objects<T> &...x)
{
    const auto all = [&](auto viewOf) KVLM_INLINED {
        for (ptrdiff_t i = 0; i < count; ++i)
            f(i, viewOf(x, i)...);
    };
    if ((x.table && ...))
        return all([](const auto &y, ptrdiff_t i) KVLM_INLINED { return y.tableView(i); });
    if (((x.hasAdjacentRows() && !x.list) && ...))
        return all([](const auto &y, ptrdiff_t i)
                       KVLM_INLINED { return y.adjacentView(moved(y.base, steps(i, y.objStride))); });
    if ((x.hasAdjacentRows() && ...))
        return all([](const auto &y, ptrdiff_t i) KVLM_INLINED { return y.adjacentView(i); });
    all([](const auto &y, ptrdiff_t i) KVLM_INLINED { return y.view(i); });
}

// ---- One object

// Its elements row by row, and back.
template <class T>
KVLM_NOINLINE void readObject(const Objects<const T> &x, ptrdiff_t i, int rows, int columns, T *elements)
{
    withViews(
        [&](const auto &view) KVLM_INLINED {
            for (int r = 0; r < rows; ++r)
                for (int c = 0; c < columns; ++c)
                    Loose<T>::store(elements++, Loose<T>::load(view.at(r, c)));
        },
        i, x);
}

template <class T>
KVLM_NOINLINE void writeObject(const Objects<T> &x, ptrdiff_t i, int rows, int columns, const T *elements)
{
    withViews(
        [&](const auto &view) KVLM_INLINED {
            for (int r = 0; r < rows; ++r)
                for (int c = 0; c < columns; ++c)
                    Loose<T>::store(view.at(r, c), Loose<T>::load(elements++));
        },
        i, x);
}

// In all lanes, and from the first lane.
template <class T, class Rows, class Columns, class V>
KVLM_INLINE void loadObject(const Objects<const T> &x, ptrdiff_t i, Rows rows, Columns columns, V *a)
{
    withViews(
        [&](const auto &view) KVLM_INLINED {
            eachElement<Whole>(rows, columns,
                               [&](int k, int r, int c) KVLM_INLINED { a[k] = V::all(Loose<T>::load(view.at(r, c))); });
        },
        i, x);
}

template <class T, class Rows, class Columns, class V>
KVLM_INLINE void storeObject(const Objects<T> &x, ptrdiff_t i, Rows rows, Columns columns, const V *a)
{
    withViews(
        [&](const auto &view) KVLM_INLINED {
            eachElement<Whole>(rows, columns, [&](int k, int r, int c) KVLM_INLINED { a[k].storeOne(view.at(r, c)); });
        },
        i, x);
}

template <class T, int R, int C>
KVLM_INLINE void loadObject(const Objects<const T> &x, ptrdiff_t i, Lanes<T> (&a)[R][C])
{
    loadObject(x, i, Fixed<R>(), Fixed<C>(), a[0]);
}

template <class T, int R, int C>
KVLM_INLINE void storeObject(const Objects<T> &x, ptrdiff_t i, const Lanes<T> (&a)[R][C])
{
    storeObject(x, i, Fixed<R>(), Fixed<C>(), a[0]);
}

} // namespace kvlm

#endif
