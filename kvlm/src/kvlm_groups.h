// Batches of small objects in groups, one object per lane: loading and storing whole objects in every description, and
// the loop over the groups.
#ifndef KVLM_GROUPS_H
#define KVLM_GROUPS_H

#include "kvlm_lanes.h"
#include "kvlm_operand.h"
#include "kvlm_several.h"

namespace kvlm {

// The orders that are unrolled, and all others.
template <class Small, class General>
KVLM_INLINE KvlStatus bySmallOrder(int n, Small small, General general)
{
    switch (n) {
    case 3:
        return small(Fixed<3>());
    case 4:
        return small(Fixed<4>());
    case 5:
        return small(Fixed<5>());
    case 6:
        return small(Fixed<6>());
    default:
        return general();
    }
}

// Calls body(s, d), with row strides that the compiler knows if the objects of order N are packed in both.
template <int N, class S, class D, class Body>
KVLM_INLINE auto knowingPacked(const S &s, const D &d, Body body)
{
    if constexpr (!S::isTable)
        if constexpr (S::View::adjacentInRows) {
            constexpr int packed = N * sizeof(typename D::Element);
            if (s.rowStride == packed && d.rowStride == packed)
                return body(s.withSteps(Fixed<packed>(), s.elemStride), d.withSteps(Fixed<packed>(), d.elemStride));
        }
    return body(s, d);
}

// A run of N adjacent elements of each object of a group: v[j] is element j of all of them.
template <int N, class V>
KVLM_INLINE void loadRuns(const float *const (&p)[4], V v)
{
    const auto half = [](const float *low, const float *high) {
        const __m128 x = Lanes<float>::loadFirst<2>(low).v;
        return _mm_loadh_pi(x, reinterpret_cast<const __m64 *>(high));
    };
    constexpr int blocks = N / 4 * 4;
#pragma GCC unroll 16
    for (int j = 0; j < blocks; j += 4) {
        Lanes<float> x[] = {Lanes<float>::load(p[0] + j), Lanes<float>::load(p[1] + j), Lanes<float>::load(p[2] + j),
                            Lanes<float>::load(p[3] + j)};
        transpose(x);
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k)
            v[j + k] = x[k];
    }
    if constexpr (N % 4 >= 2) {
        const __m128 first = half(p[0] + blocks, p[1] + blocks), second = half(p[2] + blocks, p[3] + blocks);
        v[blocks].v = _mm_shuffle_ps(first, second, _MM_SHUFFLE(2, 0, 2, 0));
        v[blocks + 1].v = _mm_shuffle_ps(first, second, _MM_SHUFFLE(3, 1, 3, 1));
    }
    if constexpr (N % 2 == 1)
        v[N - 1] = Lanes<float>::gather(p[0] + N - 1, p[1] + N - 1, p[2] + N - 1, p[3] + N - 1);
}

template <int N, class V>
KVLM_INLINE void loadRuns(const double *const (&p)[2], V v)
{
#pragma GCC unroll 18
    for (int j = 0; j + 1 < N; j += 2) {
        Lanes<double> x[] = {Lanes<double>::load(p[0] + j), Lanes<double>::load(p[1] + j)};
        transpose(x);
        v[j] = x[0];
        v[j + 1] = x[1];
    }
    if constexpr (N % 2 == 1)
        v[N - 1] = Lanes<double>::gather(p[0] + N - 1, p[1] + N - 1);
}

template <int N, class V>
KVLM_INLINE void storeRuns(float *const (&p)[4], V v)
{
    const auto half = [](float *low, float *high, __m128 x) {
        _mm_storel_pi(reinterpret_cast<__m64 *>(low), x);
        _mm_storeh_pi(reinterpret_cast<__m64 *>(high), x);
    };
    constexpr int blocks = N / 4 * 4;
#pragma GCC unroll 16
    for (int j = 0; j < blocks; j += 4) {
        Lanes<float> x[] = {v[j], v[j + 1], v[j + 2], v[j + 3]};
        transpose(x);
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k)
            x[k].store(p[k] + j);
    }
    if constexpr (N % 4 >= 2) {
        half(p[0] + blocks, p[1] + blocks, _mm_unpacklo_ps(v[blocks].v, v[blocks + 1].v));
        half(p[2] + blocks, p[3] + blocks, _mm_unpackhi_ps(v[blocks].v, v[blocks + 1].v));
    }
    if constexpr (N % 2 == 1)
        v[N - 1].scatter(p[0] + N - 1, p[1] + N - 1, p[2] + N - 1, p[3] + N - 1);
}

template <int N, class V>
KVLM_INLINE void storeRuns(double *const (&p)[2], V v)
{
#pragma GCC unroll 18
    for (int j = 0; j + 1 < N; j += 2) {
        Lanes<double> x[] = {v[j], v[j + 1]};
        transpose(x);
        x[0].store(p[0] + j);
        x[1].store(p[1] + j);
    }
    if constexpr (N % 2 == 1)
        v[N - 1].scatter(p[0] + N - 1, p[1] + N - 1);
}

// The objects of a group, or one row or element of each.
template <class T>
struct Group {
    static constexpr int count = Lanes<std::remove_const_t<T>>::count;
    T *p[count];

    KVLM_INLINE Group at(Offset bytes) const
    {
        Group g;
#pragma GCC unroll 4
        for (int l = 0; l < count; ++l)
            g.p[l] = moved(p[l], bytes);
        return g;
    }
};

// Any element of each object, as f(lane) says where.
template <class T, class Place>
KVLM_INLINE Group<T> groupOf(Place place)
{
    Group<T> g;
#pragma GCC unroll 4
    for (int l = 0; l < Group<T>::count; ++l)
        g.p[l] = place(l);
    return g;
}

KVLM_INLINE Lanes<float> gather(const Group<const float> &g)
{
    return Lanes<float>::gather(g.p[0], g.p[1], g.p[2], g.p[3]);
}

KVLM_INLINE Lanes<double> gather(const Group<const double> &g)
{
    return Lanes<double>::gather(g.p[0], g.p[1]);
}

KVLM_INLINE void scatter(Lanes<float> v, const Group<float> &g)
{
    v.scatter(g.p[0], g.p[1], g.p[2], g.p[3]);
}

KVLM_INLINE void scatter(Lanes<double> v, const Group<double> &g)
{
    v.scatter(g.p[0], g.p[1]);
}

// Whether equal elements of the objects are adjacent: then they fill a register as they are.
template <class X>
KVLM_INLINE bool sideBySide(const X &x)
{
    if constexpr (X::isList)
        return false;
    else
        return x.objStride == static_cast<int>(sizeof(typename X::Element));
}

// A column of an array of rows.
template <class Rows, class Columns>
struct ColumnOf {
    Rows first;
    Columns columns;

    KVLM_INLINE auto &operator[](int j) const { return first[j * columns]; }
    KVLM_INLINE ColumnOf operator+(int j) const { return {first + j * columns, columns}; }
};

// What loads a group, and what stores it: runs of elements, elements that fill a register, elements anywhere.
struct Load {
    template <int N, class T, class V>
    static KVLM_INLINE void runs(const Group<const T> &g, Fixed<N>, V v)
    {
        loadRuns<N>(g.p, v);
    }
    template <class T>
    static KVLM_INLINE void plane(const T *p, Lanes<T> &v)
    {
        v = Lanes<T>::load(p);
    }
    template <class T>
    static KVLM_INLINE void anywhere(const Group<const T> &g, Lanes<T> &v)
    {
        v = gather(g);
    }
};

struct Store {
    template <int N, class T, class V>
    static KVLM_INLINE void runs(const Group<T> &g, Fixed<N>, V v)
    {
        storeRuns<N>(g.p, v);
    }
    template <class T>
    static KVLM_INLINE void plane(T *p, Lanes<T> v)
    {
        v.store(p);
    }
    template <class T>
    static KVLM_INLINE void anywhere(const Group<T> &g, Lanes<T> v)
    {
        scatter(v, g);
    }
};

template <class Move, class T, class V, int N>
KVLM_INLINE void moveRuns(const Group<T> &g, Fixed<N> n, V v)
{
    Move::runs(g, n, v);
}

template <class Move, class T, class V>
KVLM_INLINE void moveRuns(const Group<T> &g, int n, V v)
{
    constexpr int step = Group<T>::count;
    int j = 0;
    for (; j + step <= n; j += step)
        Move::runs(g.at(steps(j, sizeof(T))), Fixed<step>(), v + j);
    for (; j < n; ++j)
        Move::anywhere(g.at(steps(j, sizeof(T))), v[j]);
}

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

// An interchange that each lane makes for itself: which of N candidates takes the place of candidate k.
template <class T, int N>
struct Choice {
    Lanes<T> taken[N]; // while searching: i is better than all from k to i - 1

    // The last that was taken is it.
    KVLM_INLINE void settle(int k)
    {
        Lanes<T> later = Lanes<T>::all(0);
#pragma GCC unroll 6
        for (int i = N - 1; i > k; --i) {
            const Lanes<T> here = taken[i];
            taken[i] = without(here, later);
            later = later | here;
        }
    }
    template <class Entry>
    KVLM_INLINE void exchange(int k, Entry x) const
    {
        Lanes<T> change = Lanes<T>::all(0);
#pragma GCC unroll 6
        for (int i = k + 1; i < N; ++i) {
            const Lanes<T> difference = (x(i) ^ x(k)) & taken[i];
            x(i) = x(i) ^ difference;
            change = change | difference;
        }
        x(k) = x(k) ^ change;
    }
};

// Whether no byte belongs to two objects of a group: what is written for one is then not written for another. Objects
// that overlap are written one after the other.
template <class T, class Elements = Whole, int Registers = 1>
class ObjectsApart {
public:
    template <class Obj, class Row, class Elem>
    ObjectsApart(const Strided<T, Obj, Row, Elem> &x, int rows, int columns)
    {
        const int64_t below = rows - 1, right = columns - 1;
        const int64_t obj = x.objStride, row = x.rowStride, elem = x.elemStride, size = sizeof(T);
        const int64_t whole = below * row + right * elem + size, span = (lanes - 1) * obj + size;
        always = obj >= whole || (elem >= span && (below == 0 || row >= right * elem + span)) ||
                 (row >= span && elem >= below * row + span) ||
                 (obj >= right * elem + size && row >= (lanes - 1) * obj + right * elem + size);
    }
    template <class Obj>
    ObjectsApart(const Table<T, Obj> &x, int rows, int columns)
    {
        const uintptr_t size = sizeof(T), obj = static_cast<unsigned>(int(x.objStride));
        const auto place = [&](int k) KVLM_INLINED { return reinterpret_cast<uintptr_t>(x.table[k]); };
        uintptr_t low = place(0), high = low;
        bool positionsApart = true;
        for (int r = 0; r < rows; ++r)
            for (int k = r * columns + (r == 0); k < r * columns + Elements::width(r, columns); ++k) {
                positionsApart &= place(k) >= high && place(k) - high >= (lanes - 1) * obj + size;
                low = place(k) < low ? place(k) : low;
                high = place(k) > high ? place(k) : high;
            }
        always = positionsApart || obj >= high - low + size;
    }
    template <class Row, class Elem>
    ObjectsApart(const List<T, Row, Elem> &x, int rows, int columns)
        : extent((rows - 1) * static_cast<int64_t>(int(x.rowStride)) +
                 (columns - 1) * static_cast<int64_t>(int(x.elemStride)) + static_cast<int64_t>(sizeof(T)))
    {
    }

    // For so many registers of objects.
    template <class X>
    KVLM_INLINE bool operator()(const X &x, ptrdiff_t first, int parts = 1) const
    {
        if constexpr (!X::isList)
            return always;
        else {
            const auto distance = [&](int l, int k) KVLM_INLINED {
                return static_cast<int64_t>(reinterpret_cast<uintptr_t>(x.list[first + l])) -
                       static_cast<int64_t>(reinterpret_cast<uintptr_t>(x.list[first + k]));
            };
            const int objects = Registers == 1 ? lanes : parts * Lanes<T>::count;
            bool apart = true;
#pragma GCC unroll 4
            for (int l = 1; l < objects; ++l)
                apart &= distance(l, l - 1) >= extent;
            for (int l = 1; !apart && l < objects; ++l)
                for (int k = 0; k < l; ++k)
                    if (distance(l, k) < extent && distance(k, l) < extent)
                        return false;
            return true;
        }
    }

private:
    static constexpr int lanes = Registers * Lanes<T>::count;
    bool always = true;
    int64_t extent = 0;
};

template <int R, int C, class T>
struct Apart : ObjectsApart<T> {
    template <class X>
    explicit Apart(const X &x) : ObjectsApart<T>(x, R, C)
    {
    }
};

// A batch in groups of one register or several, then what is left one by one. group(i, parts) does that many registers
// of objects from i on, or nothing and returns false: then they are done in smaller parts, so that exactly the objects
// before a failing one are complete.
template <class T, int Registers, class GroupOf, class One>
KVLM_INLINE KvlStatus inWideGroups(int count, GroupOf group, One one)
{
    constexpr int lanes = Lanes<T>::count;
    int i = 0, most = Registers;
    while (i < count) {
        int end = count;
        if (count - i >= lanes) {
            const int parts = count - i >= most * lanes ? most : 1;
            if (group(i, parts)) {
                i += parts * lanes;
                most = Registers;
                continue;
            }
            if (parts > 1) {
                most = 1;
                continue;
            }
            end = i + lanes;
        }
        for (; i < end; ++i)
            if (const KvlStatus status = one(i))
                return status;
    }
    return kvlOk;
}

template <class T, class GroupOf, class One>
KVLM_INLINE KvlStatus inGroups(int count, GroupOf group, One one)
{
    return inWideGroups<T, 1>(
        count, [&](ptrdiff_t i, int) KVLM_INLINED { return group(i); }, one);
}

} // namespace kvlm

#endif
