// Copy between descriptions: the rows of its members.
#ifndef KVLMCOPY_H
#define KVLMCOPY_H

#include "frame/rows.h"
#include "loops/moves.h"

namespace kvlm::copying {

template <class S, class D>
KVLM_INLINE KvlStatus copy(const S &s, const D &d, Shape shape, Count count)
{
    move(wide(s, shape.width), wide(d, shape.width), {shape.width, shape.height, count.count});
    return kvlOk;
}

template <class S, class D>
KVLM_INLINE KvlStatus copy(const S &s, const D &d, Length length, Count count)
{
    return copy(s, d, Shape(length.length, 1), count);
}

} // namespace kvlm::copying

// The two letters of a pair are descriptions.
#define COPY_VA(X, S, D, T) X##_VA_##S(const T, src), X##_VA_##D(T, dst), X##_LENGTH(len), X##_COUNT
#define COPY_MA(X, S, D, T) X##_MA_##S(const T, src), X##_MA_##D(T, dst), X##_SHAPE, X##_COUNT

#define COPY_FUNCTION(name, CLASS, S, D, T, Order)                                                                     \
    FUNCTION(name, CLASS(ARG, S, D, T))                                                                                \
    {                                                                                                                  \
        const KvlStatus status = Order::check(CLASS(PART, S, D, T));                                                   \
        return status ? status : copy(CLASS(PART, S, D, T));                                                           \
    }

#endif
