// What other libraries make of packed batches, one object after the other: GLM, cglm and LIBXSMM.
#ifndef KVLM_BENCHMARKS_PEERS_H
#define KVLM_BENCHMARKS_PEERS_H

#include "bench.h"

namespace bench {

template <class T>
using Call = std::function<int(const T *a, const T *b, T *d, int count)>;

/// Who, member and order.
using Key = std::tuple<const char *, std::string, int>;

template <class T>
using Peers = std::vector<std::pair<Key, Call<T>>>;

/// A batch by an operation on objects at a, b and d; steps count elements, and are 0 for an operand that is no array.
template <int StepA, int StepB, int StepD, class T, class Op>
Call<T> overObjects(Op op)
{
    return [op](const T *__restrict a, const T *__restrict b, T *__restrict d, int count) {
        for (std::ptrdiff_t i = 0; i < count; ++i)
            op(a + i * StepA, b + i * StepB, d + i * StepD);
        return 0;
    };
}

/// Those of cglm, whose header goes with no other one of them.
void addCglm(Peers<float> &peers);

/// Adds to the works of a cell those of the libraries that have its member, which is named as the C function is. The
/// sources are a and b, of which the latter may be without use; there is none if the cell is not packed.
template <class T>
void addPeers(std::vector<std::pair<std::string, Work>> &works, const std::string &member, Form form, int order,
              const T *a, const T *b, T *d, int count);

} // namespace bench

#endif
