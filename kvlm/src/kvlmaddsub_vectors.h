// Addition and subtraction of vectors and constants: the rows of their members.
#ifndef KVLMADDSUB_VECTORS_H
#define KVLMADDSUB_VECTORS_H

#include "frame/rows.h"
#include "loops/vectors.h"

namespace kvlm::addsub {

// Settled: an array subtracted from a constant is measured by its count alone, however long its vectors are.
KVLM_INLINE int workOfConstantAndArray(unsigned, unsigned count)
{
    return wrapped(2 * count + 1);
}

} // namespace kvlm::addsub

// `algorithm` says what takes the place of the vectors, and on which side.
#define VECTOR_MEMBER(name, CLASS, T, algorithm)                                                                       \
    OBJECT_KERNELS(name, CLASS, T, algorithm)                                                                          \
    OBJECT_FUNCTIONS(name, CLASS, T, UsualOrder)

#define VECTORS_MEMBER(name, CLASS, T, algorithm, orders, work)                                                        \
    BATCH_KERNELS(name, CLASS, T, algorithm)                                                                           \
    BATCH_FUNCTIONS(name, CLASS, T, orders, work(len, count), vectorLimits<T>)

#endif
