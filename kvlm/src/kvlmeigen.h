// General eigenproblems: what each family computes in its scratch, and its kernels. The working matrix H is the source
// by rows, read by columns: its transpose. So the right set belongs to the transposed source, and the left one to the
// source.
#ifndef KVLMEIGEN_H
#define KVLMEIGEN_H

#include "frame/rows.h"
#include "kvlmeigen_hessenberg.h"
#include "kvlmeigen_lanes.h"
#include "kvlmeigen_vectors.h"
#include "lanes/batches.h"

namespace kvlm::eigen {

// What a family adds to the eigenvalues.
template <class T, bool HasRight, bool HasLeft>
struct GeneralKind {
    using Element = T;
    static constexpr bool hasRight = HasRight, hasLeft = HasLeft, hasVectors = HasRight || HasLeft;
};

// The scratch of one object: H, then Q and, for both sets, the left vectors; behind them runs of n elements.
template <class Kind, class Order>
struct GeneralScratch {
    using T = typename Kind::Element;
    static constexpr int blocks = Kind::hasVectors ? 1 + Kind::hasRight + Kind::hasLeft : 1;

    T *base;
    Order n;

    KVLM_INLINE Columns<T, Order> block(int k) const { return {base + k * (static_cast<ptrdiff_t>(n) * n), n}; }
    KVLM_INLINE T *run(int k) const { return block(blocks).base + k * static_cast<ptrdiff_t>(n); }
    KVLM_INLINE Columns<T, Order> h() const { return block(0); }
    KVLM_INLINE Columns<T, Order> right() const { return block(1); }
    KVLM_INLINE Columns<T, Order> left() const { return block(blocks - 1); }
};

// The Schur form in h, its vectors in q. False without convergence. In one copy for all families with vectors.
template <class T, class Order>
KVLM_NOINLINE bool reduceToSchur(Columns<T, Order> h, Columns<T, Order> q, T *tau, T *re, T *im)
{
    reduceToHessenberg(h, tau);
    formReflections(h, tau, q);
    clearBelowHessenberg(h);
    return QRIteration<Columns<T, Order>, true>(h, q, re, im).run();
}

template <class T, class Order>
KVLM_NOINLINE Outcome makeRightSet(Columns<T, Order> t, Columns<T, Order> q, T *runs)
{
    return EigenvectorSet<T, Order>(t, q, runs, runs + t.n, runs + 2 * t.n).makeRight();
}

template <class T, class Order>
KVLM_NOINLINE Outcome makeLeftSet(Columns<T, Order> t, Columns<T, Order> q, T *runs)
{
    return EigenvectorSet<T, Order>(t, q, runs, runs + t.n, runs + 2 * t.n).makeLeft();
}

template <class T, class Order>
KVLM_NOINLINE void normalise(Columns<T, Order> q, const T *im)
{
    Normalisation<T, Order>(q, im).run();
}

// The sums of the magnitudes above the diagonal.
template <class T, class Order>
KVLM_INLINE void sumColumns(Columns<T, Order> t, T *sums)
{
    for (int j = 0; j < t.n; ++j) {
        sums[j] = 0;
        for (int i = 0; i < j; ++i)
            sums[j] += magnitude(t(i, j));
    }
}

// The sets of vectors from what is in H and Q.
template <class Kind, class Order>
KVLM_NOINLINE Outcome makeSets(GeneralScratch<Kind, Order> scratch, const typename Kind::Element *im)
{
    using T = typename Kind::Element;
    const auto h = scratch.h();
    const int n = h.n;
    T *const runs = scratch.run(0);
    if constexpr (Kind::hasRight && Kind::hasLeft)
        memcpy(scratch.left().base, scratch.right().base, sizeof(T) * n * n);
    // Order 1 has its 1 as it is, also where the rounded root would make less of it.
    if (n == 1)
        return {};
    sumColumns(h, runs);
    if constexpr (Kind::hasRight) {
        const Outcome outcome = makeRightSet(h, scratch.right(), runs);
        if (outcome.stops)
            return outcome;
        normalise(scratch.right(), im);
    }
    if constexpr (Kind::hasLeft) {
        const Outcome outcome = makeLeftSet(h, scratch.left(), runs);
        if (outcome.stops)
            return outcome;
        normalise(scratch.left(), im);
    }
    return {};
}

// From what is in the working matrix.
template <class Kind, class Order>
KVLM_NOINLINE Outcome solveOfOrder(Order n, typename Kind::Element *buffer, typename Kind::Element *re,
                                   typename Kind::Element *im)
{
    using T = typename Kind::Element;
    const GeneralScratch<Kind, Order> scratch = {buffer, n};
    const auto h = scratch.h();
    T *const runs = scratch.run(0);
    if constexpr (Kind::hasVectors) {
        if (!reduceToSchur(h, scratch.right(), runs, re, im))
            return {kvlErrNoConvergence, true};
        return makeSets(scratch, im);
    } else {
        reduceToHessenberg(h, runs);
        clearBelowHessenberg(h);
        if (!QRIteration<Columns<T, Order>, false>(h, h, re, im).run())
            return {kvlErrNoConvergence, true};
        return {};
    }
}

template <class Kind>
KVLM_NOINLINE Outcome solveGeneral(int n, typename Kind::Element *buffer, typename Kind::Element *re,
                                   typename Kind::Element *im)
{
    switch (n) {
    case 3:
        return solveOfOrder<Kind>(Fixed<3>(), buffer, re, im);
    case 4:
        return solveOfOrder<Kind>(Fixed<4>(), buffer, re, im);
    case 5:
        return solveOfOrder<Kind>(Fixed<5>(), buffer, re, im);
    case 6:
        return solveOfOrder<Kind>(Fixed<6>(), buffer, re, im);
    default:
        return solveOfOrder<Kind>(n, buffer, re, im);
    }
}

// The columns of a set, which lie behind one another, to object i, if the set is wanted.
template <class T>
KVLM_NOINLINE void storeSet(const Objects<T> *d, ptrdiff_t i, const T *vectors, int n)
{
    if (d)
        withViews(
            [&](const auto &dst) KVLM_INLINED {
                for (int r = 0; r < n; ++r)
                    for (int c = 0; c < n; ++c)
                        put(dst.at(r, c), vectors[static_cast<ptrdiff_t>(c) * n + r]);
            },
            i, *d);
}

// Two narrow registers of objects hide the latency of roots and divisions; a wide one, or the Schur form, fills the
// processor by itself.
template <class Kind>
using GroupNumber =
    std::conditional_t<Kind::hasVectors, Lanes<typename Kind::Element>, Several<typename Kind::Element, 2>>;
// One object of a group that has been solved.
template <class Kind, int N, class V>
KVLM_NOINLINE Outcome finishObject(const GeneralGroup<V, N, Kind::hasVectors> &group, int lane,
                                   typename Kind::Element *buffer, typename Kind::Element *re,
                                   typename Kind::Element *im)
{
    memcpy(re, group.re[lane], sizeof group.re[lane]);
    memcpy(im, group.im[lane], sizeof group.im[lane]);
    if constexpr (Kind::hasVectors) {
        const GeneralScratch<Kind, Fixed<N>> scratch = {buffer, {}};
        for (int block = 0; block < 2; ++block) {
            const auto from = group.object(lane, block);
            const auto to = scratch.block(block);
            for (int j = 0; j < N; ++j)
                for (int i = 0; i < N; ++i)
                    to(i, j) = from(i, j);
        }
        return makeSets(scratch, im);
    } else
        return {};
}

template <class T>
using ValuesKind = GeneralKind<T, false, false>;
template <class T>
using RightKind = GeneralKind<T, true, false>;
template <class T>
using LeftKind = GeneralKind<T, false, true>;
template <class T>
using BothKind = GeneralKind<T, true, true>;

// The objects of a call. Those that are solved in order are stored, until one ends the call. A set that is not wanted
// is null.
template <class Kind>
struct GeneralBatch {
    using T = typename Kind::Element;

    const Objects<const T> s;
    const Objects<T> *const right, *const left;
    T *const re, *const im;
    const int n;
    T *const buffer;

    Outcome solveOne(ptrdiff_t i) const
    {
        readObject(s, i, n, n, buffer);
        return stored(i, solveGeneral<Kind>(n, buffer, re + i * n, im + i * n));
    }

    // So many registers of objects.
    template <int N, class V>
    KVLM_NOINLINE Outcome solveGroupAt(ptrdiff_t i, int parts) const
    {
        GeneralGroup<V, N, Kind::hasVectors> group;
        const SharedGroups<Load, const T, Fixed<N>, Fixed<N>> source(s, {}, {});
        loadParts(source, i, parts, group.source());
        const bool solved = eigen::solveGroup(group);
        for (int lane = 0; lane < parts * lanesOf<V> / NumberTraits<V>::registers; ++lane) {
            const ptrdiff_t k = i + lane;
            const Outcome outcome =
                solved ? stored(k, finishObject<Kind>(group, lane, buffer, re + k * N, im + k * N)) : solveOne(k);
            if (outcome.stops)
                return outcome;
        }
        return {};
    }

    // As many groups of V as there are, of several registers or of one, from object `i` on.
    template <class V>
    Outcome solveGroups(ptrdiff_t &i, ptrdiff_t count) const
    {
        constexpr int most = NumberTraits<V>::registers, lanes = lanesOf<V> / most;
        Outcome outcome = {};
        while (!outcome.stops && count - i >= lanes) {
            const int parts = count - i < most * lanes ? 1 : most;
            outcome = bySmallOrder(
                n, [&](auto order) KVLM_INLINED { return solveGroupAt<order, V>(i, parts); },
                []() KVLM_INLINED { return Outcome(); });
            i += parts * lanes;
        }
        return outcome;
    }

    KvlStatus solve(ptrdiff_t count) const
    {
        ptrdiff_t i = 0;
        Outcome outcome = {};
        if (n >= 3 && n <= 6) {
            if constexpr (hasWide<T>)
                outcome = solveGroups<Wide<T>>(i, count);
            if (!outcome.stops)
                outcome = solveGroups<GroupNumber<Kind>>(i, count);
        }
        for (; !outcome.stops && i < count; ++i)
            outcome = solveOne(i);
        return outcome.stops ? outcome.status : KvlStatus(kvlOk);
    }

private:
    Outcome stored(ptrdiff_t i, Outcome outcome) const
    {
        const GeneralScratch<Kind, int> scratch = {buffer, n};
        if (!outcome.stops) {
            storeSet(right, i, scratch.right().base, n);
            storeSet(left, i, scratch.left().base, n);
        }
        return outcome;
    }
};

template <class Kind>
KVLM_NOINLINE KvlStatus solveBatch(const GeneralBatch<Kind> &batch, ptrdiff_t count)
{
    return batch.solve(count);
}

// Compiled once: in kvlmeigenvalues_32f.cpp and its like, in kvlmeigenvectors_32f.cpp and its like.
#define GENERAL_VALUES(linkage, T)                                                                                     \
    linkage template KvlStatus solveBatch(const GeneralBatch<ValuesKind<T>> &, ptrdiff_t);
#define GENERAL_VECTORS(linkage, T)                                                                                    \
    linkage template KvlStatus solveBatch(const GeneralBatch<RightKind<T>> &, ptrdiff_t);                              \
    linkage template KvlStatus solveBatch(const GeneralBatch<LeftKind<T>> &, ptrdiff_t);                               \
    linkage template KvlStatus solveBatch(const GeneralBatch<BothKind<T>> &, ptrdiff_t);
KVLM_FOR_ELEMENTS(GENERAL_VALUES, extern)
KVLM_FOR_ELEMENTS(GENERAL_VECTORS, extern)

// The algorithms of the members; those of one object have no count.
template <class S, class T>
KVLM_INLINE KvlStatus eigenValues(const S &s, PerObject<T> re, PerObject<T> im, Length n, Count count, Buffer<T> buffer)
{
    return solveBatch(
        GeneralBatch<ValuesKind<T>>{objectsOf(s, n.length), nullptr, nullptr, re.base, im.base, n.length, buffer.base},
        count.count);
}

template <class S, class T>
KVLM_INLINE KvlStatus eigenValues(const S &s, PerObject<T> re, PerObject<T> im, Length n, Buffer<T> buffer)
{
    return eigenValues(s, re, im, n, Count(1), buffer);
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus eigenVectors(const S &s, const D &right, const D &left, PerObject<T> re, PerObject<T> im,
                                   Length n, Count count, Buffer<T> buffer)
{
    const auto r = objectsOf(right, n.length), l = objectsOf(left, n.length);
    return solveBatch(
        GeneralBatch<BothKind<T>>{objectsOf(s, n.length), &r, &l, re.base, im.base, n.length, buffer.base},
        count.count);
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus eigenVectors(const S &s, const D &right, const D &left, PerObject<T> re, PerObject<T> im,
                                   Length n, Buffer<T> buffer)
{
    return eigenVectors(s, right, left, re, im, n, Count(1), buffer);
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus eigenVectorsRight(const S &s, const D &d, PerObject<T> re, PerObject<T> im, Length n, Count count,
                                        Buffer<T> buffer)
{
    const auto right = objectsOf(d, n.length);
    return solveBatch(
        GeneralBatch<RightKind<T>>{objectsOf(s, n.length), &right, nullptr, re.base, im.base, n.length, buffer.base},
        count.count);
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus eigenVectorsRight(const S &s, const D &d, PerObject<T> re, PerObject<T> im, Length n,
                                        Buffer<T> buffer)
{
    return eigenVectorsRight(s, d, re, im, n, Count(1), buffer);
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus eigenVectorsLeft(const S &s, const D &d, PerObject<T> re, PerObject<T> im, Length n, Count count,
                                       Buffer<T> buffer)
{
    const auto left = objectsOf(d, n.length);
    return solveBatch(
        GeneralBatch<LeftKind<T>>{objectsOf(s, n.length), nullptr, &left, re.base, im.base, n.length, buffer.base},
        count.count);
}

template <class S, class D, class T>
KVLM_INLINE KvlStatus eigenVectorsLeft(const S &s, const D &d, PerObject<T> re, PerObject<T> im, Length n,
                                       Buffer<T> buffer)
{
    return eigenVectorsLeft(s, d, re, im, n, Count(1), buffer);
}

KVLM_INLINE int generalValuesWork(unsigned n, unsigned count)
{
    return wrapped(n * (n + 1) * count);
}

// Settled: that of both sets for one set too.
KVLM_INLINE int generalVectorsWork(unsigned n, unsigned count)
{
    return wrapped(n * (3 * n + 1) * count);
}

constexpr int generalValuesLimit = 10000, generalVectorsLimit = 7000;

// The elements of scratch that callers are told to have, per element of a row.
KVLM_INLINE unsigned valuesScratch(unsigned n)
{
    return n + 5;
}

KVLM_INLINE unsigned vectorsScratch(unsigned n)
{
    return 3 * n + 5;
}

// Settled: the threads of a team have the larger scratch, for the eigenvalues alone too.
KVLM_INLINE size_t teamScratch(int n)
{
    return static_cast<size_t>(n) * (3 * static_cast<size_t>(n) + 5);
}

} // namespace kvlm::eigen

#define EIGEN_RUNS(X, T)                                                                                               \
    X##_PER_OBJECT(T, dstRe, widthHeight), X##_PER_OBJECT(T, dstIm, widthHeight), X##_LENGTH(widthHeight)
#define EIGEN_BUFFER(X, T) X##_BUFFER(T, buffer, teamScratch(widthHeight))

#define EIGEN_VALUES_M(X, D, T)  X##_M_##D(const T, src), EIGEN_RUNS(X, T), EIGEN_BUFFER(X, T)
#define EIGEN_VALUES_MA(X, D, T) X##_MA_##D(const T, src), EIGEN_RUNS(X, T), X##_COUNT, EIGEN_BUFFER(X, T)
#define EIGEN_SET_M(X, D, T)     X##_M_##D(const T, src), X##_M_##D(T, dst), EIGEN_RUNS(X, T), EIGEN_BUFFER(X, T)
#define EIGEN_SET_MA(X, D, T)                                                                                          \
    X##_MA_##D(const T, src), X##_MA_##D(T, dst), EIGEN_RUNS(X, T), X##_COUNT, EIGEN_BUFFER(X, T)

// Both sets: the strides of each are named after its side.
#define ARG_SIDE_M_S(T, side)  T *dstVectors##side, int dst##side##RowStride, int dst##side##ElemStride
#define ARG_SIDE_M_P(T, side)  T *const *dstVectors##side, int dst##side##Shift
#define PASS_SIDE_M_S(T, side) dstVectors##side, dst##side##RowStride, dst##side##ElemStride
#define PASS_SIDE_M_P(T, side) dstVectors##side, dst##side##Shift
#define PART_SIDE_M_S(T, side)                                                                                         \
    (Strided<T, None, int, int>(dstVectors##side, {}, dst##side##RowStride, dst##side##ElemStride))
#define PART_SIDE_M_P(T, side) (Table<T, None>(dstVectors##side, dst##side##Shift, {}))

#define ARG_SIDE_MA_S(T, side)                                                                                         \
    T *dstVectors##side, int dst##side##ObjStride, int dst##side##RowStride, int dst##side##ElemStride
#define ARG_SIDE_MA_P(T, side) T *const *dstVectors##side, int dst##side##Shift, int dst##side##ObjStride
#define ARG_SIDE_MA_LS(T, side)                                                                                        \
    T *const *dstVectors##side, int dst##side##Shift, int dst##side##RowStride, int dst##side##ElemStride
#define PASS_SIDE_MA_S(T, side)  dstVectors##side, dst##side##ObjStride, dst##side##RowStride, dst##side##ElemStride
#define PASS_SIDE_MA_P(T, side)  dstVectors##side, dst##side##Shift, dst##side##ObjStride
#define PASS_SIDE_MA_LS(T, side) dstVectors##side, dst##side##Shift, dst##side##RowStride, dst##side##ElemStride
#define CHUNK_SIDE_MA_S(T, side)                                                                                       \
    objectFrom(dstVectors##side, first, dst##side##ObjStride), dst##side##ObjStride, dst##side##RowStride,             \
        dst##side##ElemStride
#define CHUNK_SIDE_MA_P(T, side)                                                                                       \
    dstVectors##side, shiftFrom(dst##side##Shift, first, dst##side##ObjStride), dst##side##ObjStride
#define CHUNK_SIDE_MA_LS(T, side)                                                                                      \
    dstVectors##side + first, dst##side##Shift, dst##side##RowStride, dst##side##ElemStride
#define PART_SIDE_MA_S(T, side)                                                                                        \
    (Strided<T, int, int, int>(dstVectors##side, dst##side##ObjStride, dst##side##RowStride, dst##side##ElemStride))
#define PART_SIDE_MA_P(T, side) (Table<T, int>(dstVectors##side, dst##side##Shift, dst##side##ObjStride))
#define PART_SIDE_MA_LS(T, side)                                                                                       \
    (List<T, int, int>(dstVectors##side, dst##side##Shift, dst##side##RowStride, dst##side##ElemStride))

#define EIGEN_SETS_M(X, D, T)                                                                                          \
    X##_M_##D(const T, src), X##_SIDE_M_##D(T, Right), X##_SIDE_M_##D(T, Left), EIGEN_RUNS(X, T), EIGEN_BUFFER(X, T)
#define EIGEN_SETS_MA(X, D, T)                                                                                         \
    X##_MA_##D(const T, src), X##_SIDE_MA_##D(T, Right), X##_SIDE_MA_##D(T, Left), EIGEN_RUNS(X, T), X##_COUNT,        \
        EIGEN_BUFFER(X, T)

// Members, in one description each: one kernel takes any element strides.
#define EIGEN_OBJECT(name, CLASS, D, T, Order, algorithm)                                                              \
    KERNEL(own##name, CLASS, D, T, algorithm)                                                                          \
    OBJECT_FUNCTION_ONE_KERNEL(name, own##name, CLASS, D, T, Order)
#define EIGEN_ARRAY(name, CLASS, D, T, Order, algorithm, work, limit)                                                  \
    KERNEL(own##name, CLASS, D, T, algorithm)                                                                          \
    BATCH_FUNCTION_ONE_KERNEL(name, CLASS, D, T, Order, work(widthHeight, count), limit)
#define EIGEN_DRIVER(name, CLASS, D, T) DRIVER_ONE_KERNEL(ownOMP_##name, own##name, CLASS, D, T)

// In the descriptions that they have.
#define EIGEN_OBJECTS(name, CLASS, T, orders, algorithm)                                                               \
    EIGEN_OBJECT(name, CLASS, S, T, orders::Standard, algorithm)                                                       \
    EIGEN_OBJECT(name##_P, CLASS, P, T, orders::Pointer, algorithm)
#define EIGEN_ARRAYS(name, CLASS, T, orders, algorithm, work, limit)                                                   \
    EIGEN_ARRAY(name, CLASS, S, T, orders::Standard, algorithm, work, limit)                                           \
    EIGEN_ARRAY(name##_P, CLASS, P, T, orders::Pointer, algorithm, work, limit)                                        \
    EIGEN_ARRAY(name##_L, CLASS, LS, T, orders::List, algorithm, work, limit)
#define EIGEN_DRIVERS(name, CLASS, T)                                                                                  \
    EIGEN_DRIVER(name, CLASS, S, T)                                                                                    \
    EIGEN_DRIVER(name##_P, CLASS, P, T)                                                                                \
    EIGEN_DRIVER(name##_L, CLASS, LS, T)

#endif
