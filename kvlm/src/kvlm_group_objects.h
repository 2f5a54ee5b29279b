// Groups of objects, one per lane: whole objects, lower triangles, or rows in an order of their own, between every
// description and arrays of registers.
#ifndef KVLM_GROUP_OBJECTS_H
#define KVLM_GROUP_OBJECTS_H

#include "kvlm_group_runs.h"
#include "kvlm_several.h"

namespace kvlm {

// A vector as a matrix of one column.
template <class X>
KVLM_INLINE auto asColumn(const X &x)
{
    if constexpr (X::isTable)
        return x;
    else if constexpr (X::View::adjacentInRows)
        return x.withSteps(x.elemStride, x.elemStride);
    else
        return x.withSteps(x.elemStride, 0);
}

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

template <int A, int B>
KVLM_INLINE Fixed<A * B> product(Fixed<A>, Fixed<B>)
{
    return {};
}

KVLM_INLINE int product(int a, int b)
{
    return a * b;
}

// Between the objects from `first` on and an array of registers, the elements row by row. Both sizes are known, or
// none.
template <class Move, class Elements, class X, class Rows, class Columns, class Array>
KVLM_INLINE void moveObjects(const X &x, ptrdiff_t first, Rows rows, Columns columns, Array a)
{
    using E = typename X::Element;
    constexpr int elem = sizeof(E);
    const auto each = [&](auto move) KVLM_INLINED { eachElement<Elements>(rows, columns, move); };
    if constexpr (X::isTable) {
        if (sideBySide(x))
            each([&](int k, int, int) KVLM_INLINED { Move::plane(x.at(k, first), a[k]); });
        else
            each([&](int k, int, int) KVLM_INLINED {
                Move::anywhere(groupOf<E>([&](int l) KVLM_INLINED { return x.at(k, first + l); }), a[k]);
            });
    } else {
        const auto g = groupOf<E>([&](int l) KVLM_INLINED { return x.object(first + l); });
        const auto at = [&](int r, int c) KVLM_INLINED { return steps(r, x.rowStride) + steps(c, x.elemStride); };
        if constexpr (X::View::adjacentInRows) {
            // A packed object is all bytes from its first element to its last: those above the diagonal may be loaded
            // with the others.
            if (x.rowStride == columns * elem && (Elements::all || std::is_const_v<E>))
                moveRuns<Move>(g, product(rows, columns), a);
            else
                eachIndex(rows, [&](auto r) KVLM_INLINED {
                    moveRuns<Move>(g.at(steps(r, x.rowStride)), Elements::width(r, columns), a + r * columns);
                });
        } else if (sideBySide(x))
            each([&](int k, int r, int c) KVLM_INLINED { Move::plane(moved(g.p[0], at(r, c)), a[k]); });
        else if (x.rowStride == elem)
            eachIndex(columns, [&](auto c) KVLM_INLINED {
                if constexpr (Elements::all)
                    moveRuns<Move>(g.at(at(0, c)), rows, ColumnOf<Array, Columns>{a + c, columns});
                else
                    moveRuns<Move>(g.at(at(c, c)), Fixed<rows - c>(),
                                   ColumnOf<Array, Columns>{a + c * columns + c, columns});
            });
        else
            each([&](int k, int r, int c) KVLM_INLINED { Move::anywhere(g.at(at(r, c)), a[k]); });
    }
}

// The same for numbers of one or several registers. Of these only the first `parts` are those of objects; the others
// are filled with what the first one has.
template <class Elements, class X, class Rows, class Columns, class V>
KVLM_INLINE void loadParts(const X &x, ptrdiff_t first, int parts, Rows rows, Columns columns, V *a)
{
    constexpr int step = Group<typename X::Element>::count;
#pragma GCC unroll 1
    for (int part = 0; part < NumberTraits<V>::registers; ++part)
        moveObjects<Load, Elements>(x, first + (part < parts ? part * step : 0), rows, columns, partOf(a, part));
}

template <class Elements, class X, class Rows, class Columns, class V>
KVLM_INLINE void storeParts(const X &x, ptrdiff_t first, int parts, Rows rows, Columns columns, V *a)
{
    constexpr int step = Group<typename X::Element>::count;
#pragma GCC unroll 1
    for (int part = 0; part < parts; ++part)
        moveObjects<Store, Elements>(x, first + part * step, rows, columns, partOf(a, part));
}

template <class Elements = Whole, class X, class T, int R, int C>
KVLM_INLINE void loadObjects(const X &x, ptrdiff_t first, Lanes<T> (&a)[R][C])
{
    moveObjects<Load, Elements>(x, first, Fixed<R>(), Fixed<C>(), a[0]);
}

template <class Elements = Whole, class X, class T, int R, int C>
KVLM_INLINE void storeObjects(const X &x, ptrdiff_t first, const Lanes<T> (&a)[R][C])
{
    moveObjects<Store, Elements>(x, first, Fixed<R>(), Fixed<C>(), a[0]);
}

// One object, in all lanes.
template <class X, class T, class Rows, class Columns>
KVLM_INLINE void loadObject(const X &x, ptrdiff_t i, Rows rows, Columns columns, Lanes<T> *a)
{
    const auto view = viewOf(x, i, columns);
    eachElement<Whole>(rows, columns,
                       [&](int k, int r, int c) KVLM_INLINED { a[k] = Lanes<T>::all(get(view.at(r, c))); });
}

template <class X, class T, class Rows, class Columns>
KVLM_INLINE void storeObject(const X &x, ptrdiff_t i, Rows rows, Columns columns, const Lanes<T> *a)
{
    const auto view = viewOf(x, i, columns);
    eachElement<Whole>(rows, columns, [&](int k, int r, int c) KVLM_INLINED { a[k].storeOne(view.at(r, c)); });
}

template <class X, class T, int R, int C>
KVLM_INLINE void loadObject(const X &x, ptrdiff_t i, Lanes<T> (&a)[R][C])
{
    loadObject(x, i, Fixed<R>(), Fixed<C>(), a[0]);
}

template <class X, class T, int R, int C>
KVLM_INLINE void storeObject(const X &x, ptrdiff_t i, const Lanes<T> (&a)[R][C])
{
    storeObject(x, i, Fixed<R>(), Fixed<C>(), a[0]);
}

// The same with the rows of each object in an order of its own: a[r] is row rows[l][r] of the object in lane l.
template <class X, class T, int R, int C>
KVLM_INLINE void loadRows(const X &x, ptrdiff_t first, const int (&rows)[Lanes<T>::count][R], Lanes<T> (&a)[R][C])
{
#pragma GCC unroll 6
    for (int r = 0; r < R; ++r) {
        if constexpr (X::isTable) {
#pragma GCC unroll 6
            for (int c = 0; c < C; ++c)
                a[r][c] = gather(groupOf<const T>(
                    [&](int l) KVLM_INLINED { return x.at(ptrdiff_t(rows[l][r]) * C + c, first + l); }));
        } else {
            const auto g = groupOf<const T>(
                [&](int l) KVLM_INLINED { return moved(x.object(first + l), steps(rows[l][r], x.rowStride)); });
            if constexpr (X::View::adjacentInRows)
                loadRuns<C>(g.p, a[r]);
            else {
#pragma GCC unroll 6
                for (int c = 0; c < C; ++c)
                    a[r][c] = gather(g.at(steps(c, x.elemStride)));
            }
        }
    }
}

template <class X, class T, int R, int C>
KVLM_INLINE void storeRows(const X &x, ptrdiff_t first, const int (&rows)[Lanes<T>::count][R],
                           const Lanes<T> (&a)[R][C])
{
#pragma GCC unroll 6
    for (int r = 0; r < R; ++r) {
        if constexpr (X::isTable) {
#pragma GCC unroll 6
            for (int c = 0; c < C; ++c)
                scatter(a[r][c],
                        groupOf<T>([&](int l) KVLM_INLINED { return x.at(ptrdiff_t(rows[l][r]) * C + c, first + l); }));
        } else {
            const auto g = groupOf<T>(
                [&](int l) KVLM_INLINED { return moved(x.object(first + l), steps(rows[l][r], x.rowStride)); });
            if constexpr (X::View::adjacentInRows)
                storeRuns<C>(g.p, a[r]);
            else {
#pragma GCC unroll 6
                for (int c = 0; c < C; ++c)
                    scatter(a[r][c], g.at(steps(c, x.elemStride)));
            }
        }
    }
}

} // namespace kvlm

#endif
