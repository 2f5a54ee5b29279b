// Addition and subtraction of matrices: the work estimates, the limits, and the rows of their members.
#ifndef KVLMADDSUB_H
#define KVLMADDSUB_H

#include "frame/rows.h"
#include "loops/elementwise.h"

namespace kvlm::addsub {

// Work of a batch of matrices: elements of an array count per object, those of a single operand once.
KVLM_INLINE int workWithOne(unsigned width, unsigned height, unsigned count)
{
    return wrapped(width * height * (2 * count + 1));
}

KVLM_INLINE int workOfArrays(unsigned width, unsigned height, unsigned count)
{
    return wrapped(3 * width * height * count);
}

constexpr Limits matrixLimits = beginsAt(36864, 18432, 9216, 18432, 18432);

} // namespace kvlm::addsub

// Kernels and public functions of a member on single matrices, Op(A, B), A and B read as their letters say.
#define OBJECT_MEMBER(name, T, Op, A, B)                                                                               \
    OBJECT_KERNELS(name, MM, T, (elementwise<Op, A, B>))                                                               \
    OBJECT_FUNCTIONS(name, MM, T, UsualOrder)

// The same of a member on arrays of matrices.
#define BATCH_MEMBER(name, CLASS, T, Op, A, B, orders, work)                                                           \
    BATCH_KERNELS(name, CLASS, T, (elementwise<Op, A, B>))                                                             \
    BATCH_FUNCTIONS(name, CLASS, T, orders, work(width, height, count), matrixLimits)

#endif
