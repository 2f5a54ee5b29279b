// Transpose: the choice between the unrolled orders, the routines for adjacent elements and moves in any description.
//
// Width and height are those of the source.
#ifndef KVLMTRANSPOSE_H
#define KVLMTRANSPOSE_H

#include "frame/rows.h"
#include "lanes/batches.h"
#include "loops/moves.h"

#include <algorithm>

// Routines for one matrix of adjacent elements, strides in bytes: the first blocks it and chooses one of the next two,
// which transpose `rows` rows of the source, with ordinary stores or past the cache. The last is for 8-byte elements.
extern "C" {
KVLM_API void ownm_Transpose_32s(const void *src, int srcStride, void *dst, int dstStride, int width, int height,
                                 int stream);
KVLM_API void owniTranspose_32s_asm(const void *src, int srcStride, void *dst, int dstStride, int width, int rows);
KVLM_API void owniTranspose_32s_NT(const void *src, int srcStride, void *dst, int dstStride, int width, int rows);
KVLM_API void ownm_iTranspose_16u_C4R_W7(const void *src, int srcStride, void *dst, int dstStride, int width,
                                         int height);
}

namespace kvlm::transposition {

constexpr int cacheLine = 64;

// Adjacent elements of one matrix: the source by columns, which makes them the rows of the destination.
template <class T>
struct Transposition {
    View<const T, Unit<const T>, ptrdiff_t> src;
    View<T, ptrdiff_t, Unit<T>> dst;

    Transposition(const void *src, int srcStride, void *dst, int dstStride)
        : src{static_cast<const T *>(src), {}, srcStride}, dst{static_cast<T *>(dst), dstStride, {}}
    {
    }
    Transposition from(ptrdiff_t row, ptrdiff_t column) const
    {
        Transposition rest = *this;
        rest.src.base = src.at(column, row);
        rest.dst.base = dst.at(column, row);
        return rest;
    }
    KVLM_INLINE void byBlocks(int width, int height) const { blocks<T>(First(), src, src, dst, height, width); }
};

// Whole tiles in strips of so many columns. With `fetch` meanwhile the cache lines are fetched that the next tiles will
// write, and those of the next strip. Returns the numbers of columns and rows that were done.
template <int columns, bool fetch, class T>
KVLM_INLINE std::pair<int, int> transposeStrips(const Transposition<T> &x, int width, int rows)
{
    using V = Lanes<T>;
    constexpr int lanes = V::count, line = cacheLine / sizeof(T), tiles = line / lanes, fetched = columns / tiles;
    const ptrdiff_t srcStride = x.src.elemStride, dstStride = x.dst.rowStride;
    int c = 0, r = 0;
    for (; c + columns <= width; c += columns) {
        const T *s = x.src.at(c, 0);
        T *d = x.dst.at(c, 0);
        for (r = 0; r + lanes <= rows; r += lanes) {
            T *to = d + r;
            if constexpr (fetch) {
                T *const later = r + line < rows ? to + line : x.dst.at(c + columns, r % line);
#pragma GCC unroll 8
                for (int k = 0; k < fetched; ++k)
                    __builtin_prefetch(moved(later, steps(r / lanes % tiles * fetched + k, dstStride)));
#pragma GCC unroll 4
                for (int l = 0; l < lanes; ++l)
                    __builtin_prefetch(moved(s, steps(l, srcStride) + cacheLine));
            }
#pragma GCC unroll 8
            for (int k = 0; k < columns; k += lanes) {
                V tile[lanes];
#pragma GCC unroll 4
                for (int l = 0; l < lanes; ++l)
                    tile[l] = V::load(moved(s, steps(l, srcStride)) + k);
                transpose(tile);
#pragma GCC unroll 4
                for (int l = 0; l < lanes; ++l) {
                    tile[l].store(to);
                    to = moved(to, dstStride);
                }
            }
            s = moved(s, steps(lanes, srcStride));
        }
    }
    return {c, r};
}

// Measured: results that reach farther are worth whole lines, and, of 4-byte elements, lines that are fetched.
constexpr int64_t nearReach = 1 << 14, farReach = 3 << 19;

// From where to where the result reaches, in bytes.
template <class T>
KVLM_INLINE int64_t reach(const Transposition<T> &x, int width)
{
    const ptrdiff_t stride = x.dst.rowStride;
    return static_cast<int64_t>(width) * (stride < 0 ? -stride : stride);
}

template <class T>
KVLM_INLINE bool isWorthLines(const Transposition<T> &x, int width)
{
    return reach(x, width) > (sizeof(T) == 4 ? nearReach : farReach);
}

// So many elements are before the next cache line, if all rows have lines at the same place.
template <class T>
KVLM_INLINE int untilLine(const T *row, ptrdiff_t stride)
{
    return stride % cacheLine == 0 ? int(-reinterpret_cast<uintptr_t>(row) % cacheLine / sizeof(T)) : 0;
}

// So many rows of the source are done before the next ones: whole lines of the result, if it is large.
template <class T>
KVLM_INLINE int rowsTogether(const Transposition<T> &x, int width, int rows)
{
    constexpr int most = 64;
    const int begun = isWorthLines(x, width) ? untilLine(x.dst.base, x.dst.rowStride) : 0;
    return std::min(rows, begun > 0 ? begun : most);
}

template <int columns, bool fetch, class T>
KVLM_NOINLINE void transposeInStrips(const Transposition<T> &x, int width, int rows)
{
    const auto [c, r] = transposeStrips<columns, fetch>(x, width, rows);
    if (r < rows)
        x.from(r, 0).byBlocks(c, rows - r);
    if (c < width)
        x.from(0, c).byBlocks(width - c, rows);
}

// Whole lines of the source are best, unless lines of the destination can't stay in the cache until they are complete:
// where a stride makes them all fall into one set of it, there is room for eight.
template <class T>
KVLM_INLINE void transposeInCache(const Transposition<T> &given, int givenWidth, int rows)
{
    constexpr int line = cacheLine / sizeof(T);
    const auto oneSet = [](ptrdiff_t stride) KVLM_INLINED { return (stride + 16) % 4096 < 32; };
    const ptrdiff_t stride = given.src.elemStride;
    const int begun = isWorthLines(given, givenWidth) ? std::min(untilLine(given.src.base, stride), givenWidth) : 0;
    if (begun > 0)
        given.byBlocks(begun, rows);
    const Transposition<T> x = given.from(0, begun);
    const int width = givenWidth - begun;
    if (oneSet(stride) || oneSet(x.dst.rowStride))
        transposeInStrips<8, true>(x, width, rows);
    else if (sizeof(T) == 8 || reach(x, width) > farReach)
        transposeInStrips<line, true>(x, width, rows);
    else
        transposeInStrips<line, false>(x, width, rows);
}

// What a matrix or a batch takes in the cache, read and written once: 8 bytes for each of its 32f elements.
KVLM_INLINE int bytesMoved(int width, int height, int count)
{
    return wrapped(unsigned(width) * unsigned(height) * unsigned(count) * 8);
}

// The size of the cache, 0 where it is not known.
int cacheSize();

// Whether a batch is written past the cache.
KVLM_INLINE bool streams(int bytes)
{
    if (bytes <= 131072)
        return false;
    const int cache = cacheSize();
    return cache != 0 && bytes > cache - cache / 4;
}

template <class T, class S, class D>
KVLM_INLINE void transposeByRoutine(const S &s, const D &d, int width, int height, int count)
{
    constexpr bool canStream = sizeof(T) == 4;
    const bool stream = canStream && !D::isSingle && streams(bytesMoved(width, height, count));
    for (ptrdiff_t i = 0; i < count; ++i)
        if constexpr (canStream)
            ownm_Transpose_32s(s.view(i).base, s.rowStride, d.view(i).base, d.rowStride, width, height, stream);
        else
            ownm_iTranspose_16u_C4R_W7(s.view(i).base, s.rowStride, d.view(i).base, d.rowStride, width, height);
}

// Adjacent elements.
template <class S, class D>
KVLM_INLINE KvlStatus transposeAdjacent(const S &s, Shape n, const D &d, Count count = Count(1))
{
    using T = typename D::Element;
    return bySmallOrder(
        n.width == n.height ? n.width : 0,
        [&](auto order) KVLM_INLINED {
            const auto columns = s.withSteps(Unit<const T>(), s.rowStride);
            constexpr int line = order * sizeof(T);
            if (s.rowStride == line && d.rowStride == line)
                objects<T>(First(), withPackedLines<order>(columns), withPackedLines<order>(columns),
                           withPackedLines<order>(d), order, order, count.count);
            else
                objects<T>(First(), columns, columns, d, order, order, count.count);
            return KvlStatus(kvlOk);
        },
        [&]() KVLM_INLINED {
            transposeByRoutine<T>(s, d, n.width, n.height, count.count);
            return KvlStatus(kvlOk);
        });
}

// Any strides: the rows of the destination one after the other. In tables only orders 3 to 6 are done so, all others by
// the rows of the source: settled.
template <class S, class D>
KVLM_INLINE KvlStatus transposeAny(const S &s, Shape n, const D &d, Count count = Count(1))
{
    const auto source = wide(s, n.width);
    const auto result = wide(d, n.height);
    if (!D::isTable || (n.width == n.height && n.width >= 3 && n.width <= 6))
        move(transposed(source), result, {n.height, n.width, count.count});
    else
        move(source, transposed(result), {n.width, n.height, count.count});
    return kvlOk;
}

} // namespace kvlm::transposition

#define TRANSPOSE_M(X, D, T)  X##_M_##D(const T, src), X##_SHAPE, X##_M_##D(T, dst)
#define TRANSPOSE_MA(X, D, T) X##_MA_##D(const T, src), X##_SHAPE, X##_MA_##D(T, dst), X##_COUNT

#define TRANSPOSE_MEMBER(name, CLASS, T)                                                                               \
    KERNEL(own##name, CLASS, U, T, transposeAdjacent)                                                                  \
    KERNEL(own##name##_S2, CLASS, S, T, transposeAny)                                                                  \
    KERNEL(own##name##_P, CLASS, P, T, transposeAny)                                                                   \
    OBJECT_FUNCTIONS(name, CLASS, T, UsualOrder)
#define TRANSPOSE_MEMBER_L(name, CLASS, T)                                                                             \
    KERNEL(own##name##_L, CLASS, LU, T, transposeAdjacent)                                                             \
    KERNEL(own##name##_LS2, CLASS, LS, T, transposeAny)                                                                \
    OBJECT_FUNCTION_L(name, CLASS, T, UsualOrder::List)

#endif
