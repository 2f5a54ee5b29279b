// Groups of objects, one per lane, between memory and registers: whole objects, lower triangles, or rows in an order of
// their own, in whatever description they come.
#ifndef KVLM_LANES_OBJECTS_H
#define KVLM_LANES_OBJECTS_H

#include "lanes/group.h"
#include "lanes/several.h"

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
    T *base = nullptr;              // standard description
    T *const *list = nullptr;       // an entry for each object,
    T *const *table = nullptr;      // or for each element
    Offset shift = 0;               // of list or table
    ptrdiff_t objStride = 0;        // 0 also for a single object, which serves all
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
    KVLM_INLINE T *at(ptrdiff_t i, ptrdiff_t r, ptrdiff_t c) const
    {
        return table ? moved(table[r * rowStride + c * elemStride], shift + steps(i, objStride))
                     : moved(object(i), steps(r, rowStride) + steps(c, elemStride));
    }
    KVLM_INLINE bool inPlanes() const { return !list && objStride == sizeof(T); }
    KVLM_INLINE bool hasAdjacentRows() const { return !table && elemStride == sizeof(T); }
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

// f(view...) of object i of each operand. All come in the same description.
template <class F, class... T>
KVLM_INLINE auto withViews(F f, ptrdiff_t i, const Objects<T> &...x)
{
    if ((x.table && ...))
        return f(TableView<T, int, int>{x.table, x.shift + steps(i, x.objStride), static_cast<int>(x.rowStride),
                                        static_cast<int>(x.elemStride)}...);
    return f(View<T, int, int>{x.object(i), static_cast<int>(x.rowStride), static_cast<int>(x.elemStride)}...);
}

// ---- One object

// Its elements row by row, and back.
template <class T>
KVLM_NOINLINE void readObject(const Objects<const T> &x, ptrdiff_t i, int rows, int columns, T *elements)
{
    withViews([&](const auto &view) KVLM_INLINED {
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < columns; ++c)
                Loose<T>::store(elements++, Loose<T>::load(view.at(r, c)));
    }, i, x);
}

template <class T>
KVLM_NOINLINE void writeObject(const Objects<T> &x, ptrdiff_t i, int rows, int columns, const T *elements)
{
    withViews([&](const auto &view) KVLM_INLINED {
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < columns; ++c)
                Loose<T>::store(view.at(r, c), Loose<T>::load(elements++));
    }, i, x);
}

// In all lanes, and from the first lane.
template <class T>
KVLM_INLINE void loadObject(const Objects<const T> &x, ptrdiff_t i, int rows, int columns, Lanes<T> *a)
{
    withViews([&](const auto &view) KVLM_INLINED {
        eachElement<Whole>(rows, columns,
                           [&](int k, int r, int c) KVLM_INLINED { a[k] = Lanes<T>::all(Loose<T>::load(view.at(r, c))); });
    }, i, x);
}

template <class T>
KVLM_INLINE void storeObject(const Objects<T> &x, ptrdiff_t i, int rows, int columns, const Lanes<T> *a)
{
    withViews([&](const auto &view) KVLM_INLINED {
        eachElement<Whole>(rows, columns, [&](int k, int r, int c) KVLM_INLINED { a[k].storeOne(view.at(r, c)); });
    }, i, x);
}

template <class T, int R, int C>
KVLM_INLINE void loadObject(const Objects<const T> &x, ptrdiff_t i, Lanes<T> (&a)[R][C])
{
    loadObject(x, i, R, C, a[0]);
}

template <class T, int R, int C>
KVLM_INLINE void storeObject(const Objects<T> &x, ptrdiff_t i, const Lanes<T> (&a)[R][C])
{
    storeObject(x, i, R, C, a[0]);
}

// ---- Groups of objects

// Between the objects from `first` on and an array of registers, the elements row by row. Both sizes are known, or
// none.
template <class Move, class Elements, class T, class Rows, class Columns, class Array>
KVLM_NOINLINE void moveObjects(const Objects<T> &given, ptrdiff_t first, Rows rows, Columns columns,
                                           Array a)
{
    constexpr int elem = sizeof(T);
    const Objects<T> x = given;
    // Row by row in a loop: unrolled, this would be the greater part of the library.
    const auto each = [&](auto move) KVLM_INLINED {
#pragma GCC unroll 1
        for (int r = 0, height = rows; r < height; ++r) {
            const int width = Elements::width(r, columns);
#pragma GCC unroll 6
            for (int c = 0; c < width; ++c)
                move(r * columns + c, r, c);
        }
    };
    if (x.inPlanes())
        return each([&](int k, int r, int c) KVLM_INLINED { Move::plane(x.at(first, r, c), a[k]); });
    if (x.table)
        return each([&](int k, int r, int c) KVLM_INLINED {
            T *const place = x.at(first, r, c);
            Move::anywhere(groupOf<T>([&](int l) KVLM_INLINED { return moved(place, steps(l, x.objStride)); }), a[k]);
        });
    const auto g = groupOf<T>([&](int l) KVLM_INLINED { return x.object(first + l); });
    const auto at = [&](int r, int c) KVLM_INLINED { return steps(r, x.rowStride) + steps(c, x.elemStride); };
    if (x.elemStride == elem) {
        // A packed object is all bytes from its first element to its last: those above the diagonal may be loaded with
        // the others.
        if (x.rowStride == columns * elem && (Elements::all || std::is_const_v<T>))
            moveRuns<Move>(g, product(rows, columns), a);
        else
            eachIndex(rows, [&](auto r) KVLM_INLINED {
                moveRuns<Move>(g.at(steps(r, x.rowStride)), Elements::width(r, columns), a + r * columns);
            });
    } else if (x.rowStride == elem)
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

// How the objects of a batch are moved: packed ones and those in planes where the arithmetic is, since that is what
// most calls have; all others by a function that all families share.
template <class Move, class T, int R, int C, class Elements = Whole>
class Groups {
    using V = Lanes<std::remove_const_t<T>>;

public:
    explicit Groups(const Objects<T> &x) : x(x)
    {
        constexpr int elem = sizeof(T);
        // What is stored of a packed object of which only a part belongs to the operand goes row by row.
        constexpr bool byRows = !Elements::all && !std::is_const_v<T>;
        if (x.inPlanes()) {
            way = Way::planes;
            for (int r = 0; r < R; ++r)
                for (int c = 0; c < C; ++c)
                    planes[r * C + c] = x.at(0, r, c);
        } else if (!x.list && x.hasAdjacentRows() && (R == 1 ? x.objStride == C * elem : byRows || x.rowStride == C * elem))
            way = Way::packed;
    }

    bool arePacked() const { return way == Way::packed; }
    // The objects from `first` on.
    template <class Array>
    KVLM_INLINE void move(ptrdiff_t first, Array a) const
    {
        if (way == Way::packed) {
            T *const base = moved(x.base, steps(first, x.objStride));
            if constexpr (R == 1)
                return Move::vectors(base, Fixed<C>(), a);
            const auto g = groupOf<T>([&](int l) KVLM_INLINED { return moved(base, steps(l, x.objStride)); });
            if constexpr (Elements::all || std::is_const_v<T>)
                moveRuns<Move>(g, Fixed<R * C>(), a);
            else
                eachIndex(Fixed<R>(), [&](auto r) KVLM_INLINED {
                    moveRuns<Move>(g.at(steps(r, x.rowStride)), Elements::width(r, Fixed<C>()), a + r * C);
                });
        } else if (way == Way::planes)
            eachElement<Elements>(Fixed<R>(), Fixed<C>(),
                                  [&](int k, int, int) KVLM_INLINED { Move::plane(planes[k] + first, a[k]); });
        else
            moveObjects<Move, Elements>(x, first, Fixed<R>(), Fixed<C>(), a);
    }

private:
    enum class Way { packed, planes, other };

    const Objects<T> &x;
    Way way = Way::other;
    T *planes[R * C];
};

template <class T, int R, int C, class Elements = Whole>
struct GroupSource : Groups<Load, const T, R, C, Elements> {
    using Groups<Load, const T, R, C, Elements>::Groups;

    KVLM_INLINE void load(ptrdiff_t first, Lanes<T> (&a)[R][C]) const { this->move(first, a[0]); }
};

template <class T, int R, int C, class Elements = Whole>
struct GroupResult : Groups<Store, T, R, C, Elements> {
    using Groups<Store, T, R, C, Elements>::Groups;

    KVLM_INLINE void store(ptrdiff_t first, const Lanes<T> (&a)[R][C]) const { this->move(first, a[0]); }
};

// The vectors of a batch, or a single one in all lanes.
template <class T, int N>
class VectorSource {
public:
    explicit VectorSource(const Objects<const T> &x) : each(x), isSingle(x.isSingle)
    {
        if (isSingle)
            loadObject(x, 0, same);
    }
    bool arePacked() const { return each.arePacked(); }
    KVLM_INLINE void load(ptrdiff_t first, Lanes<T> (&v)[1][N]) const
    {
        if (isSingle)
#pragma GCC unroll 6
            for (int k = 0; k < N; ++k)
                v[0][k] = same[0][k];
        else
            each.load(first, v);
    }

private:
    GroupSource<T, 1, N> each;
    bool isSingle;
    Lanes<T> same[1][N];
};

// Numbers of several registers: only the first `parts` registers are those of objects; the others are filled with what
// the first one has.
template <class T, class Rows, class Columns, class V>
KVLM_INLINE void loadParts(const Objects<const T> &x, ptrdiff_t first, int parts, Rows rows, Columns columns, V *a)
{
#pragma GCC unroll 1
    for (int part = 0; part < NumberTraits<V>::registers; ++part)
        moveObjects<Load, Whole>(x, first + (part < parts ? part * Lanes<T>::count : 0), rows, columns,
                                 partOf(a, part));
}

template <class T, class Rows, class Columns, class V>
KVLM_INLINE void storeParts(const Objects<T> &x, ptrdiff_t first, int parts, Rows rows, Columns columns, V *a)
{
#pragma GCC unroll 1
    for (int part = 0; part < parts; ++part)
        moveObjects<Store, Whole>(x, first + part * Lanes<T>::count, rows, columns, partOf(a, part));
}

// ---- Rows of each object in an order of its own: a[r] is row rows[l][r] of the object in lane l

template <class Move, class T, int R, int C, class V>
KVLM_NOINLINE void moveRows(const Objects<T> &given, ptrdiff_t first, const int (*rows)[R], V (*a)[C])
{
    const Objects<T> x = given;
#pragma GCC unroll 1
    for (int r = 0; r < R; ++r)
        if (x.hasAdjacentRows())
            Move::runs(groupOf<T>([&](int l) KVLM_INLINED { return x.at(first + l, rows[l][r], 0); }), Fixed<C>(),
                       a[r]);
        else
#pragma GCC unroll 1
            for (int c = 0; c < C; ++c)
                Move::anywhere(groupOf<T>([&](int l) KVLM_INLINED { return x.at(first + l, rows[l][r], c); }),
                               a[r][c]);
}

} // namespace kvlm

#endif
