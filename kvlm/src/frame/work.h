// Work estimates and limits that several families share.
#ifndef KVLM_FRAME_WORK_H
#define KVLM_FRAME_WORK_H

#include "frame/entry.h"

namespace kvlm {

// A factorisation of each object
KVLM_INLINE int squaresWork(unsigned n, unsigned count)
{
    return wrapped(n * n * count);
}

// One matrix, many right-hand sides
KVLM_INLINE int vectorsWork(unsigned n, unsigned count)
{
    return wrapped((n + 2 * count) * n);
}

// A matrix for each right-hand side
KVLM_INLINE int systemsWork(unsigned n, unsigned count)
{
    return wrapped((n * n + 2 * n) * count);
}

// Vectors: elements of an array count per object, those of a single operand once.

KVLM_INLINE int workOfArrayAndOne(unsigned len, unsigned count)
{
    return wrapped(2 * count * len + len);
}

KVLM_INLINE int workOfVectorArrays(unsigned len, unsigned count)
{
    return wrapped(3 * len * count);
}

KVLM_INLINE int workOfOneAndConstants(unsigned len, unsigned count)
{
    return wrapped(len * count + len + count);
}

KVLM_INLINE int workOfArrayAndConstants(unsigned len, unsigned count)
{
    return wrapped(2 * len * count + count);
}

// Of sums, differences and cross products.
template <class T>
constexpr Limits vectorLimits = {20000, 20000, 20000, sizeof(T) == 4 ? 40000 : 20000, sizeof(T) == 4 ? 40000 : 20000};

} // namespace kvlm

#endif
