// What families on square matrices share: work estimates.
#ifndef KVLM_SYSTEMS_H
#define KVLM_SYSTEMS_H

#include "kvlm_entry.h"

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

} // namespace kvlm

#endif
