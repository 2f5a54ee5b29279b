// Elements moved as they are, from an operand in any description to one in any other: dst(i, r, c) = src(i, r, c).
//
// Operands may overlap: memory then holds what single elements moved in their order leave, objects, rows and columns
// ascending. Any other order is taken only where it can't be told from that one.
#ifndef KVLM_MOVES_H
#define KVLM_MOVES_H

#include "kvlm_strided.h"
#include "kvlm_table.h"

namespace kvlm {

// With it, what works element by element on two operands moves one.
struct First {
    template <class V>
    KVLM_INLINE V operator()(V a, V) const
    {
        return a;
    }
};

// ---- Operands ----------------------------------------------------------------------------------------------------

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

// ---- What lies where ---------------------------------------------------------------------------------------------

// Addresses from low to high - 1.
struct Range {
    uintptr_t low, high;

    bool apartFrom(Range x) const { return high <= x.low || x.high <= low; }
};

template <class T, class View>
KVLM_INLINE Range objectRange(const View &x, Extent n, ptrdiff_t beyond = 0)
{
    return {reinterpret_cast<uintptr_t>(x.at(0, 0)),
            reinterpret_cast<uintptr_t>(x.at(n.height - 1, n.width - 1)) + beyond + sizeof(T)};
}

// f(range) for ranges that hold all of an operand, until it returns false: one, or one for each entry of table or list.
template <class T, class F>
KVLM_INLINE bool forRanges(const Grid<T> &x, Extent n, F f)
{
    return f(objectRange<T>(x.view(0), n, static_cast<ptrdiff_t>(steps(n.count - 1, x.objStride))));
}

template <class T, class F>
KVLM_INLINE bool forRanges(const Scattered<T> &x, Extent n, F f)
{
    for (ptrdiff_t i = 0; i < n.count; ++i)
        if (!f(objectRange<T>(x.view(i), n)))
            return false;
    return true;
}

template <class T, class F>
KVLM_INLINE bool forRanges(const Positions<T> &x, Extent n, F f)
{
    for (ptrdiff_t p = 0; p < static_cast<ptrdiff_t>(n.width) * n.height; ++p) {
        const uintptr_t first = reinterpret_cast<uintptr_t>(x.at(p, 0));
        if (!f(Range{first, first + steps(n.count - 1, x.objStride) + sizeof(T)}))
            return false;
    }
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
    using T = typename D::Element;
    if constexpr (S::isList && D::isList) {
        for (ptrdiff_t i = 0; i < n.count; ++i)
            if (!objectRange<T>(s.view(i), n).apartFrom(objectRange<T>(d.view(i), n)))
                return false;
        return true;
    } else if constexpr (S::isList || (S::isTable && !D::isList))
        return apartFromWhole(s, d, n);
    else
        return apartFromWhole(d, s, n);
}

// Whether no element lies in another: each stride steps over all that smaller ones reach.
struct Step {
    int64_t stride;
    int count;
};

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

// Whether no element of a destination lies in another; in a list, of the same object.
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
        if (objectRange<T>(x.view(i), n).low < objectRange<T>(x.view(i - 1), n).high)
            return false;
    return true;
}

// ---- Loops -------------------------------------------------------------------------------------------------------

// The order that counts. Settled: `extract` from tables takes the positions one after the other, in all objects each.
template <bool PositionsFirst, class S, class D>
__attribute__((noinline)) void moveInOrder(const S &givenS, const D &givenD, Extent n)
{
    const S s = givenS;
    const D d = givenD;
    if constexpr (PositionsFirst)
        for (ptrdiff_t r = 0; r < n.height; ++r)
            for (ptrdiff_t c = 0; c < n.width; ++c)
                for (ptrdiff_t i = 0; i < n.count; ++i)
                    put(d.view(i).at(r, c), get(s.view(i).at(r, c)));
    else
        bySquareOrder(n.width, n.height, [&](auto width, auto height) KVLM_INLINED {
            for (ptrdiff_t i = 0; i < n.count; ++i) {
                const auto from = s.view(i);
                const auto to = d.view(i);
                for (ptrdiff_t r = 0; r < height; ++r)
                    for (ptrdiff_t c = 0; c < width; ++c)
                        put(to.at(r, c), get(from.at(r, c)));
            }
        });
}

// Long moves are the C library's.
constexpr ptrdiff_t longMove = 512;

template <class T, class N>
KVLM_INLINE void moveRun(const T *s, T *d, N n)
{
    if constexpr (std::is_integral_v<N>) {
        if (n * static_cast<ptrdiff_t>(sizeof(T)) >= longMove)
            memcpy(d, s, n * sizeof(T));
        else
            run<T>(First(), s, s, d, static_cast<ptrdiff_t>(n));
    } else
        run<T>(First(), s, s, d, n);
}

// Rows of adjacent elements in both. Where a list is involved, each pair of objects is looked at on its way.
template <class S, class D, class W, class H>
__attribute__((noinline)) void moveRows(const S &givenS, const D &givenD, W width, H height, int count)
{
    using T = typename D::Element;
    const S s = givenS;
    const D d = givenD;
    const auto bytesOf = [&](const auto &x) KVLM_INLINED { return steps(height - 1, x.rowStride) + width * sizeof(T); };
    const uintptr_t read = bytesOf(s), written = bytesOf(d);
    for (ptrdiff_t i = 0; i < count; ++i) {
        const T *from = s.object(i);
        T *to = d.object(i);
        if constexpr (S::isList || D::isList)
            if (reinterpret_cast<uintptr_t>(to) - reinterpret_cast<uintptr_t>(from) + written - 1 <
                read + written - 1) {
                moveInOrder<false>(Grid<const T>(from, 0, s.rowStride, s.elemStride),
                                   Grid<T>(to, 0, d.rowStride, d.elemStride), {width, height, 1});
                continue;
            }
        for (ptrdiff_t r = 0; r < height; ++r)
            moveRun(moved(from, steps(r, s.rowStride)), moved(to, steps(r, d.rowStride)), width);
    }
}

template <class S, class D>
KVLM_INLINE void moveAdjacentRows(const S &s, const D &d, Extent n)
{
    if (n.height > 1)
        return moveRows(s, d, n.width, n.height, n.count);
    const auto known = [&](auto width) KVLM_INLINED { moveRows(s, d, width, Fixed<1>(), n.count); };
    switch (n.width) {
    case 3:
        return known(Fixed<3>());
    case 4:
        return known(Fixed<4>());
    case 5:
        return known(Fixed<5>());
    case 6:
        return known(Fixed<6>());
    case 9:
        return known(Fixed<9>());
    case 16:
        return known(Fixed<16>());
    case 25:
        return known(Fixed<25>());
    case 36:
        return known(Fixed<36>());
    default:
        return known(n.width);
    }
}

// Runs of adjacent elements as the rows, or the columns, of a matrix.
template <class Runs>
struct RunsAsRows {
    static constexpr bool adjacentInRows = true, adjacentInColumns = false;
    const Runs &run;

    KVLM_INLINE auto at(ptrdiff_t r, ptrdiff_t c) const { return run(r) + c; }
};

template <class Runs>
struct RunsAsColumns {
    static constexpr bool adjacentInRows = false, adjacentInColumns = true;
    const Runs &run;

    KVLM_INLINE auto at(ptrdiff_t r, ptrdiff_t c) const { return run(c) + r; }
};

// P adjacent elements of each object, object(i) being the first of them, and as many runs over the objects.
template <bool ToObjects, int P, class T, class Object, class Run>
KVLM_INLINE void movePositions(Object object, Run run, int count)
{
    constexpr int lanes = Lanes<T>::count;
    const RunsAsRows<std::conditional_t<ToObjects, Object, Run>> rows{
        [&]() -> const auto &{if constexpr (ToObjects) return object;
    else return run;
}
()
}; // namespace kvlm
const RunsAsColumns<std::conditional_t<ToObjects, Run, Object>> columns{
    [&]() -> const auto &{if constexpr (ToObjects) return run;
else return object;
}
()
}
;
int i = 0;
if constexpr (P > 1)
    for (; i + lanes <= count; i += lanes) {
        if constexpr (ToObjects)
            blockAt<T, lanes, P>(First(), columns, columns, rows, i, 0);
        else
            blockAt<T, P, lanes>(First(), columns, columns, rows, 0, i);
    }
for (; i < count; ++i)
    for (int k = 0; k < P; ++k) {
        if constexpr (ToObjects)
            put(rows.at(i, k), get(columns.at(i, k)));
        else
            put(rows.at(k, i), get(columns.at(k, i)));
    }
}

// From whole objects to runs over the objects, or the reverse: so many at a time that their cache lines stay at hand.
template <bool ToObjects, class S, class D>
__attribute__((noinline)) void moveAcross(const S &givenS, const D &givenD, Extent n)
{
    using T = typename D::Element;
    constexpr int atOnce = 256 / sizeof(T), lanes = Lanes<T>::count;
    const S s = givenS;
    const D d = givenD;
    for (int first = 0; first < n.count; first += atOnce) {
        const int count = n.count - first < atOnce ? n.count - first : atOnce;
        for (int r = 0; r < n.height; ++r) {
            int c = 0;
            const auto positions = [&](auto number) KVLM_INLINED {
                constexpr int P = number;
                const auto go = [&](const auto &objects, const auto &positions) KVLM_INLINED {
                    decltype(positions.view(0).at(0, 0)) runs[P];
                    for (int k = 0; k < P; ++k)
                        runs[k] = positions.view(first).at(r, c + k);
                    movePositions<ToObjects, P, T>([&, c](ptrdiff_t i)
                                                       KVLM_INLINED { return objects.view(first + i).at(r, c); },
                                                   [runs](ptrdiff_t k) KVLM_INLINED { return runs[k]; }, count);
                };
                if constexpr (ToObjects)
                    go(d, s);
                else
                    go(s, d);
                c += P;
            };
            while (c + lanes <= n.width)
                positions(Fixed<lanes>());
            if (lanes == 4 && c + 2 <= n.width)
                positions(Fixed<2>());
            if (c < n.width)
                positions(Fixed<1>());
        }
    }
}

// ---- The choice --------------------------------------------------------------------------------------------------

template <class X>
KVLM_INLINE bool runsOverObjects(const X &x, Extent n)
{
    if constexpr (X::isList)
        return false;
    else
        return n.count >= worthLines && x.objStride == static_cast<ptrdiff_t>(sizeof(typename X::Element));
}

template <class X>
KVLM_INLINE bool runsInRows(const X &x)
{
    return !X::isTable && x.elemStride == static_cast<ptrdiff_t>(sizeof(typename X::Element));
}

template <class X>
KVLM_INLINE bool runsInColumns(const X &x)
{
    return !X::isTable && x.rowStride == static_cast<ptrdiff_t>(sizeof(typename X::Element));
}

// One run from the first element to the last.
template <class X>
KVLM_INLINE bool isOneRun(const X &x, Extent n)
{
    if constexpr (X::isList || X::isTable)
        return false;
    else
        return n.height == 1 && runsInRows(x) &&
               (n.count == 1 || x.objStride == static_cast<ptrdiff_t>(steps(n.width, sizeof(typename X::Element))));
}

// Lines of adjacent elements in both, those of the destination being its rows.
template <class S, class D>
KVLM_INLINE void moveLines(const S &s, const D &d, Extent n)
{
    using T = typename D::Element;
    if (runsInRows(s))
        return moveAdjacentRows(s, d, n);
    const auto columns = s.withSteps(Unit<const T>(), s.elemStride);
    contiguous<T>(First(), columns, columns, d.withSteps(d.rowStride, Unit<T>()), n.width, n.height, n.count);
}

// Moves in an order that suits the memory, if no one can tell; false, and nothing is done, otherwise.
template <class S, class D>
KVLM_INLINE bool moveReordered(const S &s, const D &d, Extent n)
{
    if constexpr (!S::isList && !S::isTable && !D::isList && !D::isTable)
        if (isOneRun(s, n) && isOneRun(d, n))
            return apart(s, d, n) && (moveRun(s.base, d.base, static_cast<ptrdiff_t>(n.width) * n.count), true);
    const auto free = [&]() KVLM_INLINED { return distinct(d, n) && apart(s, d, n); };
    const bool sourceRuns = runsOverObjects(s, n), resultRuns = runsOverObjects(d, n);
    if constexpr (!S::isList && !D::isList)
        if (sourceRuns && resultRuns) {
            if (!free())
                return false;
            for (ptrdiff_t r = 0; r < n.height; ++r)
                for (ptrdiff_t c = 0; c < n.width; ++c)
                    moveRun(s.view(0).at(r, c), d.view(0).at(r, c), n.count);
            return true;
        }
    if constexpr (!S::isTable && !D::isList)
        if (runsInRows(s) && resultRuns)
            return free() && (moveAcross<false>(s, d, n), true);
    if constexpr (!S::isList && !D::isTable)
        if (sourceRuns && runsInRows(d))
            return free() && objectsApart(d, n) && (moveAcross<true>(s, d, n), true);
    if constexpr (!S::isTable && !D::isTable) {
        if (runsInRows(d) && runsInRows(s))
            return distinct(d, n) && (S::isList || D::isList || apart(s, d, n)) && (moveAdjacentRows(s, d, n), true);
        if ((runsInRows(d) || runsInColumns(d)) && (runsInRows(s) || runsInColumns(s)) && free()) {
            if (runsInRows(d))
                moveLines(s, d, n);
            else
                moveLines(transposed(s), transposed(d), Extent{n.height, n.width, n.count});
            return true;
        }
    }
    return false;
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

template <bool PositionsFirst = false, class S, class D>
__attribute__((noinline)) void move(const S &givenS, const D &givenD, Extent n)
{
    S s = givenS;
    D d = givenD;
    if constexpr (S::isTable) {
        Grid<typename S::Element> grid(nullptr, 0, 0, 0);
        if (n.count > 1 && isGrid(s, n, grid))
            return move<PositionsFirst>(grid, d, n);
    }
    if constexpr (D::isTable) {
        Grid<typename D::Element> grid(nullptr, 0, 0, 0);
        if (n.count > 1 && isGrid(d, n, grid))
            return move<PositionsFirst>(s, grid, n);
    }
    // One row, where the elements of both continue in the next as within one.
    if (n.width == 1) {
        s = transposed(s);
        d = transposed(d);
        std::swap(n.width, n.height);
    }
    const auto rowOf = [](const auto &x, int width)
                           KVLM_INLINED { return static_cast<ptrdiff_t>(steps(width, x.elemStride)); };
    const int64_t elements = static_cast<int64_t>(n.width) * n.height;
    if (s.rowStride == rowOf(s, n.width) && d.rowStride == rowOf(d, n.width) && elements <= INT_MAX)
        n = {static_cast<int>(elements), 1, n.count};
    if (n.height == 1) {
        s.rowStride = rowOf(s, n.width);
        d.rowStride = rowOf(d, n.width);
    }
    if (!moveReordered(s, d, n))
        moveInOrder<PositionsFirst>(s, d, n);
}

} // namespace kvlm

#endif
