// Extract into one packed buffer: the forms and the rows of their members.
#ifndef KVLMEXTRACT_H
#define KVLMEXTRACT_H

#include "frame/rows.h"
#include "loops/moves.h"

namespace kvlm::extraction {

template <bool PositionsFirst, class S, class T>
KVLM_INLINE KvlStatus intoBuffer(const S &s, T *dst, Extent n)
{
    const auto row = static_cast<ptrdiff_t>(steps(n.width, sizeof(T)));
    move<PositionsFirst>(s, WideStrided<T>(dst, static_cast<ptrdiff_t>(steps(n.height, row)), row, sizeof(T)), n);
    return kvlOk;
}

template <class S, class T>
KVLM_INLINE KvlStatus extract(const S &s, PerObject<T> dst, Shape n, Count count = Count(1))
{
    return intoBuffer<false>(wide(s, n.width), dst.base, {n.width, n.height, count.count});
}

template <class S, class T>
KVLM_INLINE KvlStatus extract(const S &s, PerObject<T> dst, Length n, Count count = Count(1))
{
    return extract(s, dst, Shape(n.length, 1), count);
}

template <class S, class T>
KVLM_INLINE KvlStatus extractTransposed(const S &s, PerObject<T> dst, Shape n, Count count = Count(1))
{
    return intoBuffer<false>(transposed(wide(s, n.height)), dst.base, {n.width, n.height, count.count});
}

// Settled: the positions of a table that is not read transposed are counted in 32 bits, and none are moved where the
// number wraps to 0 or below.
template <class S, class T>
KVLM_INLINE KvlStatus extractPositions(const S &s, PerObject<T> dst, Shape n, Count count = Count(1))
{
    const int positions = wrapped(unsigned(n.width) * unsigned(n.height));
    return positions > 0 ? intoBuffer<true>(wide(s, positions), dst.base, {positions, 1, count.count}) : kvlOk;
}

template <class S, class T>
KVLM_INLINE KvlStatus extractPositions(const S &s, PerObject<T> dst, Length n, Count count = Count(1))
{
    return extractPositions(s, dst, Shape(n.length, 1), count);
}

} // namespace kvlm::extraction

#define EXTRACT_V(X, D, T)  X##_V_##D(const T, src), X##_PER_OBJECT(T, dst, len), X##_LENGTH(len)
#define EXTRACT_VA(X, D, T) X##_VA_##D(const T, src), X##_PER_OBJECT(T, dst, len), X##_LENGTH(len), X##_COUNT
#define EXTRACT_M(X, D, T)  X##_M_##D(const T, src), X##_PER_OBJECT(T, dst, 0), X##_SHAPE
#define EXTRACT_MA(X, D, T) X##_MA_##D(const T, src), X##_PER_OBJECT(T, dst, 0), X##_SHAPE, X##_COUNT

// The members of one and of an array of objects; the algorithm, and the one of tables.
#define EXTRACT_OBJECT(name, CLASS, T, orders, algorithm, ofTables)                                                    \
    WHOLE_FUNCTION(name, CLASS, S, T, orders::Standard, algorithm)                                                     \
    WHOLE_FUNCTION(name##_P, CLASS, P, T, orders::Pointer, ofTables)
#define EXTRACT_ARRAY(name, CLASS, T, algorithm, ofTables)                                                             \
    EXTRACT_OBJECT(name, CLASS, T, SizesBeforeCount, algorithm, ofTables)                                              \
    WHOLE_FUNCTION(name##_L, CLASS, LS, T, SizesBeforeCount::List, algorithm)

#endif
