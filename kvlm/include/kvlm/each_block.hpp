/**
 * @file each_block.hpp
 * How the functions of each.hpp work through an array: a block of objects at a time is called, checked, and done again
 * one by one where that is needed.
 */
#ifndef KVLM_EACH_BLOCK_HPP
#define KVLM_EACH_BLOCK_HPP

#include "each_numbers.hpp"

#include <kvlcore.h>
#include <kvlm.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>

namespace kvlm {
namespace each {
namespace detail {

/// Whether a view shows vectors. Some views take any number of indices: they have a `kind`, 1 or 9 for vectors.
template <class V, class = void>
inline constexpr bool areVectors = !std::is_invocable_v<const V &, int, int, int>;
template <class V>
inline constexpr bool areVectors<V, std::void_t<decltype(V::kind)>> = (static_cast<unsigned>(V::kind) & 7u) == 1;

/// Element (r, c) of object i of matrices, element r of vectors.
template <class V>
constexpr decltype(auto) at(const V &view, int i, int r, int c)
{
    if constexpr (areVectors<V>)
        return (void)c, view(i, r);
    else
        return view(i, r, c);
}
template <class V>
using ElementOf = std::remove_cv_t<std::remove_reference_t<decltype(at(std::declval<const V &>(), 0, 0, 0))>>;

template <class V>
constexpr int rowsOf(const V &view)
{
    if constexpr (areVectors<V>)
        return view.size();
    else
        return view.rows();
}
template <class V>
constexpr int columnsOf(const V &view)
{
    if constexpr (areVectors<V>)
        return 1;
    else
        return view.columns();
}

/// Elements that lie as the standard description says; strides in bytes.
template <class T>
struct Strided {
    T *base = nullptr;
    int object = 0, row = 0, element = 0;

    T &operator()(int i, int r, int c) const { return *moved(static_cast<std::ptrdiff_t>(i) * object + offset(r, c)); }
    /// Column c as vectors.
    Strided column(int c) const { return {moved(offset(0, c)), object, row, element}; }
    Strided from(int i) const { return {moved(static_cast<std::ptrdiff_t>(i) * object), object, row, element}; }
    bool isPacked(int rows, int columns) const
    {
        constexpr int size = sizeof(T);
        return element == size && (row == columns * size || rows == 1) && object == rows * columns * size;
    }
    operator Strided<const T>() const { return {base, object, row, element}; }

private:
    using Byte = std::conditional_t<std::is_const_v<T>, const char, char>;
    std::ptrdiff_t offset(int r, int c) const
    {
        return static_cast<std::ptrdiff_t>(r) * row + static_cast<std::ptrdiff_t>(c) * element;
    }
    T *moved(std::ptrdiff_t by) const { return reinterpret_cast<T *>(reinterpret_cast<Byte *>(base) + by); }
};
template <class T>
Strided<T> packed(T *base, int rows, int columns)
{
    constexpr int size = sizeof(T);
    return {base, rows * columns * size, columns * size, size};
}

/// Whether a view says that it has a base and strides, not a table or a list of pointers.
template <class V, class = void>
inline constexpr bool isStandard = false;
template <class V>
inline constexpr bool isStandard<V, std::void_t<decltype(*std::declval<const V &>().base())>> =
    std::is_arithmetic_v<std::remove_reference_t<decltype(*std::declval<const V &>().base())>>;

/// Whether a view is one of the library's own lists (2) or tables (1) of matrices that are not transposed, which the C
/// functions copy fast; 0 if not.
template <class V, class = void>
inline constexpr int descriptionOf = 0;
template <class V>
inline constexpr int descriptionOf<V, std::void_t<decltype(V::kind), decltype(V::description)>> =
    (static_cast<unsigned>(V::kind) & 7u) == 2 ? static_cast<int>(V::description) : 0;

/// Whether a view has memory, as far as it tells.
template <class V>
bool isThere(const V &view)
{
    if constexpr (isStandard<V> || descriptionOf<V> != 0)
        return view.base() != nullptr;
    else
        return (void)view, true;
}

/// The C functions that copy.
template <class T>
struct Copies;
#define KVLM_EACH_COPIES(T, suffix)                                                                                    \
    template <>                                                                                                        \
    struct Copies<T> {                                                                                                 \
        static constexpr auto between = kvlmCopy_ma_##suffix##_SS;                                                     \
        static constexpr auto fromTable = kvlmCopy_ma_##suffix##_PS;                                                   \
        static constexpr auto fromList = kvlmCopy_ma_##suffix##_LS;                                                    \
        static constexpr auto toTable = kvlmCopy_ma_##suffix##_SP;                                                     \
        static constexpr auto toList = kvlmCopy_ma_##suffix##_SL;                                                      \
    };
KVLM_EACH_COPIES(float, 32f)
KVLM_EACH_COPIES(double, 64f)
#undef KVLM_EACH_COPIES

/// Bytes of a block: what is read twice stays in the cache of the first level.
inline constexpr int inCache = 16384;

/// Elements in place up to a number, on the heap beyond: long objects are rare.
template <class T, int InPlace = 1024>
class Room {
public:
    T *get(std::size_t elements)
    {
        if (elements <= numberOf(InPlace))
            return inPlace;
        if (elements > size) {
            heap.reset(new T[elements]);
            size = elements;
        }
        return heap.get();
    }
    static constexpr int capacity = InPlace;

private:
    alignas(std::max(alignof(T), std::size_t(16))) T inPlace[numberOf(InPlace)];
    std::unique_ptr<T[]> heap;
    std::size_t size = 0;
};

/// An operand, a block at a time: where it lies if the C functions can take it there, else in a packed copy.
template <class V>
class Block {
public:
    using T = ElementOf<V>;
    using Pointer = std::remove_reference_t<decltype(at(std::declval<const V &>(), 0, 0, 0))> *;

    explicit Block(const V &operand) : view(operand), rows(rowsOf(operand)), columns(columnsOf(operand))
    {
        constexpr int size = sizeof(T);
        if constexpr (isStandard<V>) {
            whole = {&at(view, 0, 0, 0), distance(1, 0, 0, view.count() > 1, size), distance(0, 1, 0, rows > 1, size),
                     distance(0, 0, 1, columns > 1, size)};
            direct = isStrided = whole.object > 0 && whole.row > 0 && whole.element > 0;
        }
    }
    int count() const { return view.count(); }
    /// Works in a copy where the destination is written in the source's memory: no object is lost before it is done.
    template <class W>
    void avoid(const Block<W> &destination)
    {
        if (direct && destination.direct && overlap(whole, destination.whole, view.count(), rows, columns))
            direct = false;
    }
    /// The objects that fit a block.
    int most() const
    {
        constexpr int size = sizeof(T);
        return std::max(1, (direct ? inCache / size : Room<T>::capacity) / (rows * columns));
    }

    /// The objects from `first` on, to be written.
    auto open(int first, int count)
    {
        using E = std::remove_pointer_t<Pointer>;
        if (direct)
            return whole.from(first);
        const std::size_t elements = numberOf(count, rows, columns);
        return Strided<E>(packed<T>(room.get(elements), rows, columns));
    }
    /// The same, to be read.
    auto load(int first, int count)
    {
        auto block = open(first, count);
        if (direct)
            return block;
        T *to = room.get(numberOf(count, rows, columns));
        const Strided<T> copy = packed(to, rows, columns);
        KvlStatus status = kvlErrStride;
        if (const auto given = whole.from(first); isStrided)
            status = Copies<T>::between(given.base, given.object, given.row, given.element, to, copy.object, copy.row,
                                        copy.element, columns, rows, count);
        if constexpr (descriptionOf<V> == 1) {
            if (isInt(shiftTo(first)))
                status = Copies<T>::fromTable(view.base(), static_cast<int>(shiftTo(first)), view.strides().object, to,
                                              copy.object, copy.row, copy.element, columns, rows, count);
        } else if constexpr (descriptionOf<V> == 2)
            status = Copies<T>::fromList(view.base() + first, view.strides().shift, view.strides().row,
                                         view.strides().element, to, copy.object, copy.row, copy.element, columns, rows,
                                         count);
        for (int i = 0; status != kvlOk && i < count; ++i)
            for (int r = 0; r < rows; ++r)
                for (int c = 0; c < columns; ++c)
                    *to++ = at(view, first + i, r, c);
        return block;
    }
    /// Writes back what was opened.
    void store(int first, int count)
    {
        if (direct)
            return;
        const T *from = room.get(numberOf(count, rows, columns));
        const Strided<const T> copy = packed(from, rows, columns);
        KvlStatus status = kvlErrStride;
        if constexpr (descriptionOf<V> == 1) {
            if (isInt(shiftTo(first)))
                status =
                    Copies<T>::toTable(from, copy.object, copy.row, copy.element, view.base(),
                                       static_cast<int>(shiftTo(first)), view.strides().object, columns, rows, count);
        } else if constexpr (descriptionOf<V> == 2)
            status =
                Copies<T>::toList(from, copy.object, copy.row, copy.element, view.base() + first, view.strides().shift,
                                  view.strides().row, view.strides().element, columns, rows, count);
        for (int i = 0; status != kvlOk && i < count; ++i)
            for (int r = 0; r < rows; ++r)
                for (int c = 0; c < columns; ++c)
                    at(view, first + i, r, c) = *from++;
    }

private:
    template <class W>
    friend class Block;

    int distance(int i, int r, int c, bool there, int otherwise) const
    {
        if (!there)
            return otherwise;
        const std::ptrdiff_t bytes =
            reinterpret_cast<const char *>(&at(view, i, r, c)) - reinterpret_cast<const char *>(&at(view, 0, 0, 0));
        const bool isStride = bytes > 0 && bytes % static_cast<int>(sizeof(T)) == 0;
        return isStride && isInt(bytes) ? static_cast<int>(bytes) : 0;
    }
    static bool isInt(std::ptrdiff_t bytes) { return bytes == static_cast<int>(bytes); }
    /// Of a table, to an object.
    std::ptrdiff_t shiftTo(int i) const
    {
        return view.strides().shift + static_cast<std::ptrdiff_t>(i) * view.strides().object;
    }

    const V &view;
    const int rows, columns;
    bool direct = false, isStrided = false;
    Strided<std::remove_pointer_t<Pointer>> whole;
    Room<T> room;
};

/// Whether the memory from the first element of a to its last meets that of b.
template <class T, class U>
bool overlap(const Strided<T> &a, const Strided<U> &b, int count, int rows, int columns)
{
    const void *const aLast = &a(count - 1, rows - 1, columns - 1), *const bLast = &b(count - 1, rows - 1, columns - 1);
    return !(aLast < static_cast<const void *>(b.base) || bLast < static_cast<const void *>(a.base));
}

/// Whether `is` holds for all of n objects, without a branch for each.
template <class Is>
bool forAll(int n, Is is)
{
    bool all = true;
    for (int i = 0; i < n; ++i)
        all &= is(i);
    return all;
}

/// Calls op with the first of each run of adjacent elements of n objects, from object i on, and with how many they are.
template <class T, class Op>
void forRuns(const Strided<T> &x, int i, int n, int rows, int columns, Op op)
{
    if (x.isPacked(rows, columns))
        return op(&x(i, 0, 0), numberOf(n, rows, columns));
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < columns; ++c)
            if (x.object == sizeof(T))
                op(&x(i, r, c), numberOf(n));
            else
                for (int k = i; k < i + n; ++k)
                    op(&x(k, r, c), numberOf(1));
}
/// The sum of squares of their elements.
template <class T>
std::remove_const_t<T> sumOfSquares(const Strided<T> &x, int i, int n, int rows, int columns)
{
    std::remove_const_t<T> sum = 0;
    forRuns(x, i, n, rows, columns, [&](const T *first, std::size_t elements) { sum += squares(first, elements); });
    return sum;
}
/// Whether it is up to `limit`: then that of each object is.
template <class T, class Limit>
bool areBounded(const Strided<T> &x, int i, int n, int rows, int columns, Limit limit)
{
    return isWithin(sumOfSquares(x, i, n, rows, columns), Limit(0), limit);
}

/// areZeroOrNormal of all elements of n objects.
template <class T>
bool areZeroOrNormal(const Strided<const T> &x, int i, int n, int rows, int columns)
{
    bool all = true;
    forRuns(x, i, n, rows, columns,
            [&](const T *first, std::size_t elements) { all &= areZeroOrNormal(first, elements); });
    return all;
}

/// Calls op for n objects and goes on behind each one that stops it, until all were seen; those get the status. Where a
/// call stopped is told by marks in the destination. They are laid at once if that is expected, or else when first
/// needed, and the call is repeated. An object that fails has lost its mark (Op::lag 1) or kept it (0). False if any
/// failed.
template <class Op>
bool callAll(Op &op, int n, KvlStatus *status, bool areMarked)
{
    const auto markAll = [&] {
        for (int k = 0; k < n; ++k)
            op.mark(k);
    };
    if (areMarked)
        markAll();
    bool isWhole = true;
    for (int i = 0; i < n;) {
        const KvlStatus result = op.call(i, n - i);
        if (result == kvlOk)
            break;
        isWhole = false;
        if (!areMarked) {
            markAll();
            areMarked = true;
            continue;
        }
        int next = i;
        while (next < n && !op.isMarked(next))
            ++next;
        const int failed = std::min(n - 1, std::max(i, next - Op::lag));
        status[failed] = result;
        i = failed + 1;
    }
    return isWhole;
}

inline bool isOk(KvlStatus status)
{
    return status == kvlOk;
}

/// What goes to a team takes more work than this; a block is for the caller's thread.
inline constexpr int leastOfTeams = 1700;

/// A second attempt unless the object is good. Whether it failed.
template <class Op>
bool settleOne(Op &op, int i, bool isGood, KvlStatus &status)
{
    if (!isGood)
        status = op.again(i);
    op.finish(i, status);
    return status != kvlOk;
}
/// A second attempt for each of n objects from object i on that is not good, as a check of so many at once tells, then
/// of fewer, then of one; the status of an object doesn't depend on what stands beside it. Returns how many failed.
template <int AtOnce = 128, class Op>
int settle(Op &op, int i, int n, KvlStatus *status)
{
    int failures = 0;
    for (const int end = i + n; i < end; i += AtOnce) {
        const int part = std::min(AtOnce, end - i);
        if (AtOnce > 1 && op.isAsked()) {
            failures += settle<1>(op, i, part, status);
        } else if (const bool areGood = op.areGood(i, part); !areGood || op.isAsked()) {
            if constexpr (AtOnce > 1)
                failures += settle<std::max(1, AtOnce / 8)>(op, i, part, status);
            else
                failures += settleOne(op, i, areGood, status[i]);
        }
    }
    return failures;
}
/// A number of objects up to `most` that leaves nothing over when the C functions work several at once: what is left
/// they do one by one, which takes many times as long.
inline int inGroups(int most)
{
    int group = 32;
    while (group > 1 && 4 * group > most)
        group /= 2;
    return most - most % group;
}
/// Each block: load, call and complete, settle, store. Returns how many failed.
template <class Op>
int run(Op &&op, KvlStatus *statuses)
{
    int most = op.most();
    if (threads_omp_of_n_kvl > 1)
        most = std::max(1, std::min(most, leastOfTeams / op.work()));

    most = inGroups(most);

    int failures = 0;
    bool hasCompleted = true;
    const int count = op.count();
    for (int first = 0, n; first < count; first += n) {
        n = std::min(most, count - first);
        KvlStatus *const status = statuses + first;
        std::fill_n(status, n, kvlOk);
        op.load(first, n);
        hasCompleted = callAll(op, n, status, !hasCompleted);
        op.complete(n);
        // Those between two that failed, and the one that did.
        for (int i = 0; i < n; ++i) {
            const int end =
                hasCompleted ? n : static_cast<int>(std::find_if_not(status + i, status + n, isOk) - status);
            failures += settle(op, i, end - i, status);
            if (end < n)
                failures += settleOne(op, end, false, status[end]);
            i = end;
        }
        op.store(first, n);
    }
    return failures;
}

/// The status of arguments.
inline KvlStatus check(bool arePointers, int count, int rows, bool doFit)
{
    return !arePointers ? kvlErrNullPointer
           : count < 1  ? kvlErrCount
           : rows < 1   ? kvlErrSize
           : doFit      ? kvlOk
                        : kvlErrSizeMatch;
}

template <class A>
bool isSquare(const A &a)
{
    return a.rows() == a.columns();
}
template <class A, class B>
bool isAlike(const A &a, const B &b)
{
    return a.rows() == b.rows() && a.columns() == b.columns() && a.count() == b.count();
}
} // namespace detail
} // namespace each
} // namespace kvlm

#endif
