// Element-wise work on vectors: dst(i, j) = op(A, B), where A and B are each a vector, an array of vectors, a constant,
// or a constant for each object.
//
// Each element is op of two numbers, so the order of work is free, with two exceptions: single vectors are worked
// ascending where dst overlaps a source ahead of it, and of destination objects that overlap each other the later one
// is written last.
#ifndef KVLM_LOOPS_VECTORS_H
#define KVLM_LOOPS_VECTORS_H

#include "frame/work.h"
#include "lanes/batches.h"
#include "loops/table.h"

namespace kvlm {

// A constant for each object of a batch.
template <class X>
struct Each {
    X constants;

    KVLM_INLINE auto of(ptrdiff_t i) const { return get(constants.object(i)); }
};

// ---- What the operands are for the loops -------------------------------------------------------------------------

// Element j of object i.
template <class X>
KVLM_INLINE auto elementOf(const X &x, ptrdiff_t i, ptrdiff_t j)
{
    return get(viewOf(x, i, 1).at(0, j));
}

template <class T>
KVLM_INLINE T elementOf(const Constant<T> &x, ptrdiff_t, ptrdiff_t)
{
    return x.value;
}

template <class X>
KVLM_INLINE auto elementOf(const Each<X> &x, ptrdiff_t i, ptrdiff_t)
{
    return x.of(i);
}

// Object i as the source of a run.
template <class X>
KVLM_INLINE auto runOf(const X &x, ptrdiff_t i)
{
    return x.object(i);
}

template <class T>
KVLM_INLINE Same<T> runOf(const Constant<T> &x, ptrdiff_t)
{
    return {x.value};
}

template <class X>
KVLM_INLINE auto runOf(const Each<X> &x, ptrdiff_t i)
{
    return Same<decltype(x.of(i))>{x.of(i)};
}

// Element j of all objects as the source of a run, for objects in planes.
template <class X>
KVLM_INLINE auto planeAt(const X &x, ptrdiff_t j)
{
    return planeOf(x, viewOf(x, 0, 1).at(0, j));
}

template <class T>
KVLM_INLINE Same<T> planeAt(const Constant<T> &x, ptrdiff_t)
{
    return {x.value};
}

template <class X>
KVLM_INLINE auto planeAt(const Each<X> &x, ptrdiff_t)
{
    return x.constants.object(0);
}

template <class T>
KVLM_INLINE bool inPlanes(const Constant<T> &)
{
    return true;
}

template <class X>
KVLM_INLINE bool inPlanes(const Each<X> &x)
{
    return inPlanes(x.constants);
}

template <class T>
KVLM_INLINE bool objectsPacked(const Constant<T> &, int64_t)
{
    return true;
}

template <class X>
KVLM_INLINE bool objectsPacked(const Each<X> &, int64_t)
{
    return true;
}

template <class T>
KVLM_INLINE bool isAdjacent(const Constant<T> &, int, int)
{
    return true;
}

template <class X>
KVLM_INLINE bool isAdjacent(const Each<X> &, int, int)
{
    return true;
}

template <class Row, class T>
KVLM_INLINE Constant<T> asAdjacent(const Constant<T> &x, int)
{
    return x;
}

template <class Row, class X>
KVLM_INLINE Each<X> asAdjacent(const Each<X> &x, int)
{
    return x;
}

// Whether a packed batch is one run to an operand.
template <class X>
constexpr bool isRunWhenPacked = !X::isSingle;
template <class T>
constexpr bool isRunWhenPacked<Constant<T>> = true;
template <class X>
constexpr bool isRunWhenPacked<Each<X>> = false;

// ---- Packed objects of 3 to 6 elements ---------------------------------------------------------------------------

// The least number of objects of N elements that fills whole registers.
template <class T, int N>
struct PackedGroup {
    static constexpr int lanes = Lanes<T>::count;
    static constexpr int objects = N % lanes == 0 ? 1 : N % 2 == 0 ? 2 : lanes;
    static constexpr int registers = N * objects / lanes;
};

// What an operand contributes to a group: register r of the group from object i on is of(i).at(r).
template <class T, int N, class X>
struct PatternSource { // an array
    struct Group {
        const T *p;

        KVLM_INLINE Lanes<T> at(int r) const { return Lanes<T>::load(p + r * Lanes<T>::count); }
    };
    const T *base;

    KVLM_INLINE explicit PatternSource(const X &x) : base(x.base) {}
    KVLM_INLINE Group of(ptrdiff_t i) const { return {base + i * N}; }
};

template <class T, int N, class U, class Elem>
struct PatternSource<T, N, Strided<U, None, None, Elem>> {
    Lanes<T> registers[PackedGroup<T, N>::registers];

    KVLM_INLINE explicit PatternSource(const Strided<U, None, None, Elem> &x)
    {
        constexpr int objects = PackedGroup<T, N>::objects;
        T pattern[N * objects];
        for (int k = 0; k < objects; ++k)
            memcpy(pattern + k * N, x.base, N * sizeof(T));
        memcpy(registers, pattern, sizeof registers);
    }
    KVLM_INLINE const PatternSource &of(ptrdiff_t) const { return *this; }
    KVLM_INLINE Lanes<T> at(int r) const { return registers[r]; }
};

template <class T, int N>
struct PatternSource<T, N, Constant<T>> {
    Lanes<T> all;

    KVLM_INLINE explicit PatternSource(const Constant<T> &x) : all(Lanes<T>::all(x.value)) {}
    KVLM_INLINE const PatternSource &of(ptrdiff_t) const { return *this; }
    KVLM_INLINE Lanes<T> at(int) const { return all; }
};

template <class T, int N, class X>
struct PatternSource<T, N, Each<X>> {
    struct Group {
        Lanes<T> constants;

        template <int R>
        KVLM_INLINE Lanes<T> at(Fixed<R>) const
        {
            return spread<N, R>(constants);
        }
    };
    X constants;

    KVLM_INLINE explicit PatternSource(const Each<X> &x) : constants(x.constants) {}
    KVLM_INLINE Group of(ptrdiff_t i) const
    {
        constexpr int objects = PackedGroup<T, N>::objects;
        if constexpr (objects == 1)
            return {Lanes<T>::all(get(constants.object(i)))};
        else if (inPlanes(constants))
            return {Lanes<T>::template loadFirst<objects>(constants.object(i))};
        else
            return {gather(groupOf<const T>([&](int l) KVLM_INLINED { return constants.object(i + l % objects); }))};
    }
};

template <int N, class Op, class A, class B, class D>
KVLM_NOINLINE void packedVectors(Op op, const A &givenA, const B &givenB, const D &givenD, int count)
{
    using T = typename D::Element;
    using Group = PackedGroup<T, N>;
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    const PatternSource<T, N, A> sourceA(a);
    const PatternSource<T, N, B> sourceB(b);
    ptrdiff_t i = 0;
#pragma GCC unroll 2
    for (; i + Group::objects <= count; i += Group::objects) {
        const auto &x = sourceA.of(i);
        const auto &y = sourceB.of(i);
        eachIndex(Fixed<Group::registers>(),
                  [&](auto r) KVLM_INLINED { op(x.at(r), y.at(r)).store(d.base + i * N + r * Group::lanes); });
    }
    for (; i < count; ++i)
        run<T>(op, runOf(a, i), runOf(b, i), d.object(i), Fixed<N>());
}

// ---- The choice --------------------------------------------------------------------------------------------------

// Whether ascending steps would read from x what they wrote to d before.
template <class T, class X>
KVLM_INLINE bool readsWhatIsWritten(const X &x, const T *d, int n)
{
    const uintptr_t ahead = reinterpret_cast<uintptr_t>(d) - reinterpret_cast<uintptr_t>(x.base);
    return ahead - 1 < n * sizeof(T) - 1;
}

template <class T>
KVLM_INLINE bool readsWhatIsWritten(const Constant<T> &, const T *, int)
{
    return false;
}

template <class Op, class A, class B, class D>
KVLM_INLINE void ascending(Op op, const A &a, const B &b, const D &d, ptrdiff_t i, int n)
{
    const auto view = viewOf(d, i, 1);
    for (int j = 0; j < n; ++j)
        put(view.at(0, j), op(elementOf(a, i, j), elementOf(b, i, j)));
}

// The objects one after the other.
template <class Op, class A, class B, class D, class N>
KVLM_NOINLINE void eachVector(Op op, const A &givenA, const B &givenB, const D &givenD, N n, int count)
{
    const A a = givenA;
    const B b = givenB;
    const D d = givenD;
    for (ptrdiff_t i = 0; i < count; ++i)
        if constexpr (hasAdjacentRows<D>())
            run<typename D::Element>(op, runOf(a, i), runOf(b, i), d.object(i), n);
        else
            ascending(op, a, b, d, i, n);
}

template <class Op, class A, class B, class D>
KVLM_INLINE KvlStatus vectorwise(Op op, const A &a, const B &b, const D &d, Length length, Count objects)
{
    using T = typename D::Element;
    const int n = length.length, count = objects.count;
    if constexpr (D::isSingle) {
        if constexpr (hasAdjacentRows<D>()) {
            if (!readsWhatIsWritten(a, d.base, n) && !readsWhatIsWritten(b, d.base, n))
                return run<T>(op, runOf(a, 0), runOf(b, 0), d.base, n), kvlOk;
        }
        return ascending(op, a, b, d, 0, n), kvlOk;
    } else {
        constexpr bool adjacent = hasAdjacentRows<D>();
        if constexpr (!adjacent && !D::isList)
            if (count >= worthPlanes && inPlanes(a) && inPlanes(b) && inPlanes(d) && planesApart(d, {n, 1, count})) {
                for (int j = 0; j < n; ++j)
                    run<T>(op, planeAt(a, j), planeAt(b, j), viewOf(d, 0, 1).at(0, j), count);
                return kvlOk;
            }
        if constexpr (D::isTable)
            if (isAdjacent(a, n, 1) && isAdjacent(b, n, 1) && isAdjacent(d, n, 1))
                return vectorwise(op, asAdjacent<None>(a, n), asAdjacent<None>(b, n), asAdjacent<None>(d, n), length,
                                  objects);
        constexpr bool groups = adjacent && !D::isList, whole = groups && isRunWhenPacked<A> && isRunWhenPacked<B>;
        bool packed = false;
        if constexpr (groups)
            packed = objectsPacked(a, n) && objectsPacked(b, n) && objectsPacked(d, n);
        if constexpr (whole)
            if (packed)
                return run<T>(op, runOf(a, 0), runOf(b, 0), d.base, static_cast<ptrdiff_t>(n) * count), kvlOk;
        return bySmallOrder(
            n,
            [&](auto known) KVLM_INLINED {
                if constexpr (groups && !whole)
                    if (packed)
                        return packedVectors<known>(op, a, b, d, count), kvlOk;
                return eachVector(op, a, b, d, known, count), kvlOk;
            },
            [&]() KVLM_INLINED { return eachVector(op, a, b, d, n, count), kvlOk; });
    }
}

// op(vector, vector) and op(vector, constant).
template <class Op, class A, class B, class D>
KVLM_INLINE KvlStatus overVectors(const A &a, const B &b, const D &d, Length length, Count count = Count(1))
{
    return vectorwise(Op(), a, b, d, length, count);
}

// op(constant, vector): the vector stands first in the arguments all the same.
template <class Op, class A, class C, class D>
KVLM_INLINE KvlStatus constantFirst(const A &a, const C &c, const D &d, Length length, Count count = Count(1))
{
    return vectorwise(Op(), c, a, d, length, count);
}

// op(vector, its constant).
template <class Op, class A, class C, class D>
KVLM_INLINE KvlStatus withEach(const A &a, const C &constants, const D &d, Length length, Count count)
{
    return vectorwise(Op(), a, Each<C>{constants}, d, length, count);
}

// op(its constant, vector).
template <class Op, class A, class C, class D>
KVLM_INLINE KvlStatus eachFirst(const A &a, const C &constants, const D &d, Length length, Count count)
{
    return vectorwise(Op(), Each<C>{constants}, a, d, length, count);
}

} // namespace kvlm

#endif
