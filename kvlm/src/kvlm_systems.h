// What families on square matrices share: work estimates, limits, the loop of the solvers.
#ifndef KVLM_SYSTEMS_H
#define KVLM_SYSTEMS_H

#include "kvlm_entry.h"
#include "kvlm_groups.h"

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

// Solutions of order N: solve(i, x) computes those of a group, one(i) computes and stores one.
template <int N, class D, class Solve, class One>
KVLM_INLINE KvlStatus solveInGroups(const D &d, int count, Solve solve, One one)
{
    using T = typename D::Element;
    const Apart<1, N, T> apart(d);
    return inGroups<T>(
        count,
        [&](ptrdiff_t i) KVLM_INLINED {
            if (!apart(d, i))
                return false;
            Lanes<T> x[1][N];
            solve(i, x);
            storeObjects(d, i, x);
            return true;
        },
        [&](ptrdiff_t i) KVLM_INLINED {
            one(i);
            return KvlStatus(kvlOk);
        });
}

} // namespace kvlm

#endif
