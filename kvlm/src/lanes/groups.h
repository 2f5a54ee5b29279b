// Groups of objects, one per lane, between memory and registers: whole objects or lower triangles, in whatever
// description they come, and the choice of the loop that knows how they lie.
#ifndef KVLM_LANES_GROUPS_H
#define KVLM_LANES_GROUPS_H

#include "lanes/objects.h"
#include "lanes/several.h"

namespace kvlm {

// How the elements of a group come: in planes, by tables of entries, in runs of a whole packed object, of its rows or
// of its columns, or one by one.
enum class GroupLayout { planes, entries, packed, rows, columns, single };

template <class Move, class Elements, class T>
KVLM_INLINE GroupLayout groupLayoutOf(const Objects<T> &x, int rows, int columns)
{
    constexpr int elem = sizeof(T);
    if (x.inPlanes())
        return GroupLayout::planes;
    if (x.table)
        return GroupLayout::entries;
    if (x.elemStride == elem) {
        // A packed object is all bytes from its first element to its last: those above the diagonal may be loaded with
        // the others. Packed vectors are sorted, whole registers of them.
        const bool packed = rows == 1 ? !x.list && x.objStride == columns * elem
                                      : x.rowStride == columns * elem && (Elements::all || std::is_const_v<T>);
        return packed ? GroupLayout::packed : GroupLayout::rows;
    }
    return x.rowStride == elem ? GroupLayout::columns : GroupLayout::single;
}

// Between the objects from `first` on and an array of registers, the elements row by row. place(k, r, c) is where an
// element of object `first` lies. Both sizes are known, or none.
template <class Move, class Elements, class T, class Rows, class Columns, class Place, class Array, class GroupOf>
KVLM_INLINE void moveBy(GroupLayout layout, const Objects<T> &x, ptrdiff_t first, Rows rows, Columns columns,
                        Place place, Array a, GroupOf group)
{
    constexpr int count = NumberOf<Array>::count;
    const auto each = [&](auto move) KVLM_INLINED { eachElement<Elements>(rows, columns, move); };
    if (layout == GroupLayout::planes)
        return each([&](int k, int r, int c) KVLM_INLINED { Move::plane(place(k, r, c), a[k]); });
    if (layout == GroupLayout::entries)
        return each([&](int k, int r, int c) KVLM_INLINED {
            T *const p = place(k, r, c);
            Move::anywhere(groupOf<T, count>([&](int l) KVLM_INLINED { return moved(p, steps(l, x.objStride)); }),
                           a[k]);
        });
    if constexpr (isOne<Rows> && isFixed<Columns>)
        if (layout == GroupLayout::packed)
            return Move::vectors(moved(x.base, steps(first, x.objStride)), columns, a);
    const auto g = group();
    const auto at = [&](int r, int c) KVLM_INLINED { return steps(r, x.rowStride) + steps(c, x.elemStride); };
    if (!isOne<Rows> && layout == GroupLayout::packed)
        moveRuns<Move>(g, product(rows, columns), a);
    else if (layout == GroupLayout::rows || layout == GroupLayout::packed)
        eachIndex(rows, [&](auto r) KVLM_INLINED {
            moveRuns<Move>(g.at(steps(r, x.rowStride)), Elements::width(r, columns), a + r * columns);
        });
    else if (!isOne<Rows> && layout == GroupLayout::columns)
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

// One copy for all families, for what is computed in memory.
template <class Move, class Elements, class T, class Rows, class Columns, class Array>
KVLM_NOINLINE void moveObjects(const Objects<T> &x, GroupLayout layout, ptrdiff_t first, Rows rows, Columns columns,
                               Array a)
{
    moveBy<Move, Elements>(
        layout, x, first, rows, columns, [&](int, int r, int c) KVLM_INLINED { return x.at(first, r, c); }, a,
        [&]() KVLM_INLINED { return x.template group<NumberOf<Array>::count>(first); });
}

template <class Move, class T, class Rows, class Columns>
struct SharedGroups {
    const Objects<T> &x;
    const Rows rows;
    const Columns columns;
    const GroupLayout layout;

    SharedGroups(const Objects<T> &x, Rows rows, Columns columns)
        : x(x), rows(rows), columns(columns), layout(groupLayoutOf<Move, Whole>(x, rows, columns))
    {
    }
    template <class Array>
    KVLM_INLINE void move(ptrdiff_t first, Array a) const
    {
        moveObjects<Move, Whole>(x, layout, first, rows, columns, a);
    }
};

// The objects of a batch, moved where the arithmetic is. Packed ones, those in planes and all others have classes of
// their own, between which byLayout() chooses: the loops that most calls need have nothing to ask on their way.
template <class Move, class T, int R, int C, class Elements>
struct PackedGroups {
    // Measured: all but triangles of three floats.
    static constexpr bool fillsWide = Elements::all || R > 3 || sizeof(T) > 4 ||
                                      sizeof(Wide<std::remove_const_t<T>>) < 64;
    T *base;
    ptrdiff_t objStride;

    template <class Array>
    KVLM_INLINE void move(ptrdiff_t first, Array a) const
    {
        if constexpr (R == 1)
            return Move::vectors(base + first * C, Fixed<C>(), a);
        T *const p = moved(base, steps(first, objStride));
        const auto g =
            groupOf<T, NumberOf<Array>::count>([&](int l) KVLM_INLINED { return moved(p, steps(l, objStride)); });
        if constexpr (Elements::all || std::is_const_v<T>)
            moveRuns<Move>(g, Fixed<R * C>(), a);
        else
            eachIndex(Fixed<R>(), [&](auto r) KVLM_INLINED {
                moveRuns<Move>(g.at(r * C * sizeof(T)), Elements::width(r, Fixed<C>()), a + r * C);
            });
    }
};

template <class Move, class T, int R, int C, class Elements>
struct PlaneGroups {
    static constexpr bool fillsWide = true;
    T *const *planes;

    template <class Array>
    KVLM_INLINE void move(ptrdiff_t first, Array a) const
    {
        eachElement<Elements>(Fixed<R>(), Fixed<C>(),
                              [&](int k, int, int) KVLM_INLINED { Move::plane(planes[k] + first, a[k]); });
    }
};

template <class X>
constexpr bool liesInPlanes = false;
template <class Move, class T, int R, int C, class Elements>
constexpr bool liesInPlanes<PlaneGroups<Move, T, R, C, Elements>> = true;

// All of one layout, in a list or not.
template <GroupLayout Layout, bool List, class Move, class T, int R, int C, class Elements>
struct KnownGroups {
    const Objects<T> x;
    T *const *const places;

    template <class Array>
    KVLM_INLINE void move(ptrdiff_t first, Array a) const
    {
        moveBy<Move, Elements>(
            Layout, x, first, Fixed<R>(), Fixed<C>(),
            [&](int k, int, int) KVLM_INLINED { return moved(places[k], steps(first, x.objStride)); }, a,
            [&]() KVLM_INLINED {
                constexpr int count = NumberOf<Array>::count;
                return List ? x.template listedGroup<count>(first) : x.template stridedGroup<count>(first);
            });
    }
};

template <class Move, class T, int R, int C, class Elements = Whole>
class Groups {
    const Objects<T> x;
    const GroupLayout layout;

public:
    // Measured: whether wide registers are filled fast enough to be worth it, which single elements and objects of
    // three rows never do.
    const bool fillsWide;

    explicit Groups(const Objects<T> &given)
        : x(given.table ? withStrides(given, R, C) : given), layout(groupLayoutOf<Move, Elements>(x, R, C)),
          fillsWide(x.inPlanes() || (R > 3 && (x.hasAdjacentRows() || x.hasAdjacentColumns())))
    {
        if (layout == GroupLayout::planes || layout == GroupLayout::entries)
            for (int r = 0; r < R; ++r)
                for (int c = 0; c < C; ++c)
                    places[r * C + c] = x.at(0, r, c);
    }

    // The objects from `first` on.
    template <class Array>
    KVLM_INLINE void move(ptrdiff_t first, Array a) const
    {
        if constexpr (NumberOf<Array>::blocks > 1)
            return moveWide(first, a);
        moveBy<Move, Elements>(
            layout, x, first, Fixed<R>(), Fixed<C>(),
            [&](int k, int, int) KVLM_INLINED { return moved(places[k], steps(first, x.objStride)); }, a,
            [&]() KVLM_INLINED { return x.template group<NumberOf<Array>::count>(first); });
    }

    bool inPlanes() const { return layout == GroupLayout::planes; }
    bool isPacked() const
    {
        return !x.list && (layout == GroupLayout::packed ||
                           (layout == GroupLayout::rows && R > 1 && x.rowStride == C * sizeof(T)));
    }
    template <GroupLayout Layout, bool List>
    bool is() const
    {
        return layout == Layout && List == (x.list != nullptr);
    }
    template <GroupLayout Layout, bool List>
    KnownGroups<Layout, List, Move, T, R, C, Elements> as() const
    {
        return {x, places};
    }
    PlaneGroups<Move, T, R, C, Elements> asPlanes() const { return {places}; }
    PackedGroups<Move, T, R, C, Elements> asPacked() const { return {x.base, x.objStride}; }

private:
    // In one copy for all orders, where the elements that are moved allow it.
    template <class Array>
    KVLM_INLINE void moveWide(ptrdiff_t first, Array a) const
    {
        if constexpr (Elements::all)
            moveObjects<Move, Elements>(x, layout, first, int(R), int(C), a);
        else
            moveObjects<Move, Elements>(x, layout, first, Fixed<R>(), Fixed<C>(), a);
    }

    T *places[R * C];
};

template <class T, int R, int C, class Elements = Whole>
using GroupSource = Groups<Load, const T, R, C, Elements>;
template <class T, int R, int C, class Elements = Whole>
using GroupResult = Groups<Store, T, R, C, Elements>;

// A single vector in all lanes, which is no obstacle to any layout.
template <class T, int N>
struct SingleVector {
    Lanes<T> elements[N];

    explicit SingleVector(const Objects<const T> &x) { loadObject(x, 0, Fixed<1>(), Fixed<N>(), elements); }
    template <class V>
    KVLM_INLINE void move(ptrdiff_t, V a) const
    {
#pragma GCC unroll 6
        for (int k = 0; k < N; ++k)
            a[k] = inEachBlock<NumberOf<V>>(elements[k]);
    }
    bool inPlanes() const
    {
        return true;
    }
    bool isPacked() const
    {
        return true;
    }
    template <GroupLayout, bool>
    bool is() const
    {
        return true;
    }
    const SingleVector &asPlanes() const
    {
        return *this;
    }
    const SingleVector &asPacked() const
    {
        return *this;
    }
    template <GroupLayout, bool>
    const SingleVector &as() const
    {
        return *this;
    }
};

// A single matrix for all objects: its elements as narrow numbers, or one by one for wide ones, which processors that
// have them put into all lanes as they read them.
template <class T, int R, int C>
struct OfAllObjects {
    Lanes<T> narrow[R][C];
    T elements[R][C];

    explicit OfAllObjects(const Objects<const T> &x)
    {
        loadObject(x, 0, narrow);
        for (int r = 0; r < R; ++r)
            for (int c = 0; c < C; ++c)
                narrow[r][c].storeOne(&elements[r][c]);
    }
    template <class V>
    KVLM_INLINE V at(int r, int c) const
    {
        if constexpr (V::blocks == 1)
            return narrow[r][c];
        else
            return V::all(elements[r][c]);
    }
};

template <class T, int N, bool Single>
using VectorSource = std::conditional_t<Single, SingleVector<T, N>, GroupSource<T, 1, N>>;

// A loop over groups as a function of its own: it has the registers for itself. Its copies of what says where the
// groups lie can't be changed by what it stores.
template <class F, class... X>
KVLM_NOINLINE auto loopOf(F f, X... groups)
{
    return f(groups...);
}

// f(groups...), as the compiler then knows them.
template <class F, class... X>
KVLM_INLINE auto byLayout(F f, const X &...groups)
{
    if ((groups.isPacked() && ...))
        return loopOf(f, groups.asPacked()...);
    if ((groups.inPlanes() && ...))
        return loopOf(f, groups.asPlanes()...);
    return loopOf(f, groups...);
}

// The same for short work: no group has anything to ask.
template <class F, class... X>
KVLM_INLINE auto byExactLayout(F f, const X &...groups)
{
    if ((groups.template is<GroupLayout::entries, false>() && ...))
        return loopOf(f, groups.template as<GroupLayout::entries, false>()...);
    if ((groups.template is<GroupLayout::rows, true>() && ...))
        return loopOf(f, groups.template as<GroupLayout::rows, true>()...);
    if ((groups.template is<GroupLayout::single, true>() && ...))
        return loopOf(f, groups.template as<GroupLayout::single, true>()...);
    if ((groups.template is<GroupLayout::single, false>() && ...))
        return loopOf(f, groups.template as<GroupLayout::single, false>()...);
    return byLayout(f, groups...);
}

// Numbers of several registers: only the first `parts` registers are those of objects; the others are filled with what
// the first one has.
template <class Source, class V>
KVLM_INLINE void loadParts(const Source &source, ptrdiff_t first, int parts, V *a)
{
    constexpr int lanes = Lanes<typename NumberTraits<V>::Element>::count;
#pragma GCC unroll 1
    for (int part = 0; part < NumberTraits<V>::registers; ++part)
        source.move(first + (part < parts ? part * lanes : 0), partOf(a, part));
}

template <class Result, class V>
KVLM_INLINE void storeParts(const Result &result, ptrdiff_t first, int parts, V *a)
{
    constexpr int lanes = Lanes<typename NumberTraits<V>::Element>::count;
#pragma GCC unroll 1
    for (int part = 0; part < parts; ++part)
        result.move(first + part * lanes, partOf(a, part));
}

} // namespace kvlm

#endif
