// Elements moved as they are, from an operand in any description to one in any other: dst(i, r, c) = src(i, r, c).
//
// Operands may overlap: memory then holds what single elements moved in their order leave, objects, rows and columns
// ascending. Any other order is taken only where it can't be told from that one.
#ifndef KVLM_LOOPS_MOVES_H
#define KVLM_LOOPS_MOVES_H

#include "frame/layout.h"
#include "loops/strided.h"

namespace kvlm {

// With it, what works element by element on two operands moves one.
struct First {
    template <class V>
    KVLM_INLINE V operator()(V a, V) const
    {
        return a;
    }
};

// ---- Loops -------------------------------------------------------------------------------------------------------

// f(width), known to the compiler where it is that of a small vector or of all elements of a small matrix.
template <class F>
KVLM_INLINE void bySmallWidth(int width, F f)
{
    bySmallOrder(width, f, [&]() KVLM_INLINED {
        switch (width) {
        case 9:
            return f(Fixed<9>());
        case 16:
            return f(Fixed<16>());
        default:
            return f(width);
        }
    });
}

// The same, also where a row is all elements of a matrix of order 5 or 6: too many to be moved by strides without a
// loop.
template <class F>
KVLM_INLINE void byUsualWidth(int width, F f)
{
    switch (width) {
    case 25:
        return f(Fixed<25>());
    case 36:
        return f(Fixed<36>());
    default:
        return bySmallWidth(width, f);
    }
}

// A row of a view, one element after the other.
template <class S, class D, class W>
KVLM_INLINE void moveRow(const S &s, const D &d, ptrdiff_t r, W width)
{
    eachIndex(width, [&](ptrdiff_t c) KVLM_INLINED { put(d.at(r, c), get(s.at(r, c))); });
}

// Four elements off each place: gcc would keep an offset, or move a pointer, for each.
template <class T, class SRow, class SElem, class DRow, class DElem, class W>
KVLM_INLINE void moveRow(const View<const T, SRow, SElem> &s, const View<T, DRow, DElem> &d, ptrdiff_t r, W width)
{
    const T *from = s.at(r, 0);
    T *to = d.at(r, 0);
    const auto elements = [&](auto number) KVLM_INLINED {
        asm("" : "+r"(from), "+r"(to));
        eachIndex(number, [&](ptrdiff_t c) KVLM_INLINED {
            put(moved(to, steps(c, d.elemStride)), get(moved(from, steps(c, s.elemStride))));
        });
        from = moved(from, steps(number, s.elemStride));
        to = moved(to, steps(number, d.elemStride));
    };
    ptrdiff_t left = width;
    for (; left >= 4; left -= 4)
        elements(Fixed<4>());
    for (; left > 0; --left)
        elements(Fixed<1>());
}

// The order that counts. Settled: `extract` from tables takes the positions one after the other, in all objects each.
template <bool PositionsFirst, class S, class D>
KVLM_NOINLINE void moveInOrder(const S &givenS, const D &givenD, Extent n)
{
    const S s = givenS;
    const D d = givenD;
    if constexpr (PositionsFirst)
        for (ptrdiff_t r = 0; r < n.height; ++r)
            for (ptrdiff_t c = 0; c < n.width; ++c)
                for (ptrdiff_t i = 0; i < n.count; ++i)
                    put(d.view(i).at(r, c), get(s.view(i).at(r, c)));
    else
        bySmallWidth(n.width, [&](auto width) KVLM_INLINED {
            for (ptrdiff_t i = 0; i < n.count; ++i) {
                const auto from = s.view(i);
                const auto to = d.view(i);
                for (ptrdiff_t r = 0; r < n.height; ++r)
                    moveRow(from, to, r, width);
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
KVLM_NOINLINE void moveRows(const S &givenS, const D &givenD, W width, H height, int count)
{
    using T = typename D::Element;
    const S s = givenS;
    const D d = givenD;
    const auto bytesOf = [&](const auto &x) KVLM_INLINED { return spanOf(height, x.rowStride) + width * sizeof(T); };
    const uint64_t read = bytesOf(s), written = bytesOf(d);
    const bool anywhere = read + written > UINTPTR_MAX; // strides go around the address space
    for (ptrdiff_t i = 0; i < count; ++i) {
        const T *from = s.object(i);
        T *to = d.object(i);
        if constexpr (S::isList || D::isList)
            if (anywhere || reinterpret_cast<uintptr_t>(to) - reinterpret_cast<uintptr_t>(from) +
                                    static_cast<uintptr_t>(written) - 1 <
                                static_cast<uintptr_t>(read + written) - 1) {
                moveInOrder<false>(WideStrided<const T>(from, 0, s.rowStride, s.elemStride),
                                   WideStrided<T>(to, 0, d.rowStride, d.elemStride), {width, height, 1});
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
    byUsualWidth(n.width, [&](auto width) KVLM_INLINED { moveRows(s, d, width, Fixed<1>(), n.count); });
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
KVLM_INLINE void movePositions(const Object &object, const Run &run, int count)
{
    constexpr int lanes = Lanes<T>::count;
    int i = 0;
    if constexpr (P > 1)
        for (; i + lanes <= count; i += lanes) {
            if constexpr (ToObjects) {
                const RunsAsColumns<Run> s{run};
                blockAt<T, lanes, P>(First(), s, s, RunsAsRows<Object>{object}, i, 0);
            } else {
                const RunsAsColumns<Object> s{object};
                blockAt<T, P, lanes>(First(), s, s, RunsAsRows<Run>{run}, 0, i);
            }
        }
    for (; i < count; ++i)
        for (int k = 0; k < P; ++k) {
            if constexpr (ToObjects)
                put(object(i) + k, get(run(k) + i));
            else
                put(run(k) + i, get(object(i) + k));
        }
}

// From whole objects to runs over the objects, or the reverse: so many at a time that their cache lines stay at hand.
template <bool ToObjects, class S, class D>
KVLM_NOINLINE void moveAcross(const S &givenS, const D &givenD, Extent n)
{
    using T = typename D::Element;
    constexpr ptrdiff_t atOnce = 256 / sizeof(T);
    constexpr int lanes = Lanes<T>::count;
    const S s = givenS;
    const D d = givenD;
    for (ptrdiff_t first = 0; first < n.count; first += atOnce) {
        const int count = static_cast<int>(n.count - first < atOnce ? n.count - first : atOnce);
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
KVLM_INLINE bool worthPlanesOf(const X &x, Extent n)
{
    return n.count >= worthPlanes && inPlanes(x);
}

// One run from the first element to the last.
template <class X>
KVLM_INLINE bool isOneRun(const X &x, Extent n)
{
    return n.height == 1 && adjacentInRows(x) && (n.count == 1 || objectsPacked(x, n.width));
}

// Lines of adjacent elements in both, those of the destination being its rows.
template <class S, class D>
KVLM_INLINE void moveLines(const S &s, const D &d, Extent n)
{
    using T = typename D::Element;
    if (adjacentInRows(s))
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
            return operandsApart(s, d, n) && (moveRun(s.base, d.base, static_cast<ptrdiff_t>(n.width) * n.count), true);
    const auto free = [&]() KVLM_INLINED { return elementsApart(d, n) && operandsApart(s, d, n); };
    const bool sourcePlanes = worthPlanesOf(s, n), resultPlanes = worthPlanesOf(d, n);
    if constexpr (!S::isList && !D::isList)
        if (sourcePlanes && resultPlanes) {
            if (!free())
                return false;
            for (ptrdiff_t r = 0; r < n.height; ++r)
                for (ptrdiff_t c = 0; c < n.width; ++c)
                    moveRun(s.view(0).at(r, c), d.view(0).at(r, c), n.count);
            return true;
        }
    if constexpr (!S::isTable && !D::isList)
        if (adjacentInRows(s) && resultPlanes)
            return free() && (moveAcross<false>(s, d, n), true);
    if constexpr (!S::isList && !D::isTable)
        if (sourcePlanes && adjacentInRows(d))
            return free() && objectsApart(d, n) && (moveAcross<true>(s, d, n), true);
    if constexpr (!S::isTable && !D::isTable) {
        if (adjacentInRows(d) && adjacentInRows(s))
            return (S::isList || D::isList || operandsApart(s, d, n)) && (moveAdjacentRows(s, d, n), true);
        if ((adjacentInRows(d) || adjacentInColumns(d)) && (adjacentInRows(s) || adjacentInColumns(s)) && free()) {
            if (adjacentInRows(d))
                moveLines(s, d, n);
            else
                moveLines(transposed(s), transposed(d), Extent{n.height, n.width, n.count});
            return true;
        }
    }
    return false;
}

template <bool PositionsFirst = false, class S, class D>
KVLM_NOINLINE void move(const S &givenS, const D &givenD, Extent n)
{
    S s = givenS;
    D d = givenD;
    if constexpr (S::isTable) {
        WideStrided<typename S::Element> strided(nullptr, 0, 0, 0);
        if (n.count > 1 && isStrided(s, n, strided))
            return move<PositionsFirst>(strided, d, n);
    }
    if constexpr (D::isTable) {
        WideStrided<typename D::Element> strided(nullptr, 0, 0, 0);
        if (n.count > 1 && isStrided(d, n, strided))
            return move<PositionsFirst>(s, strided, n);
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
