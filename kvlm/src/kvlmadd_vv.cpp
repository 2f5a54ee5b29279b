// Add: one vector and one vector. Kernels and public functions.
#include "kvlmaddsub.h"

using namespace kvlm;

namespace {

// Ascending, one element at a time: a destination that overlaps a source ahead of it sees the elements just written.
template <class A, class B, class D>
KvlStatus addAscending(const A &a, const B &b, const D &d, Length length)
{
    for (int j = 0; j < length.length; ++j)
        put(elementOf(d, j), get(elementOf(a, j)) + get(elementOf(b, j)));
    return kvlOk;
}

} // namespace

#define ROW(name, T)                                                                                                   \
    OBJECT_KERNELS(name, VV, T, addAscending)                                                                          \
    OBJECT_FUNCTIONS(name, VV, T, UsualOrder)

// clang-format off
ROW(kvlmAdd_vv_32f, float)
ROW(kvlmAdd_vv_64f, double)
// clang-format on
