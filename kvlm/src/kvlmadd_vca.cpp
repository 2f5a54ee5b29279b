// Add: one vector and an array of constants. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// Settled: in the pointer description, at 64f, shifts are not checked.
// clang-format off
VECTORS_MEMBER(kvlmAdd_vca_32f, VCA, float, withEach<Plus>, UsualOrder, workOfOneAndConstants)
VECTORS_MEMBER(kvlmAdd_vca_64f, VCA, double, withEach<Plus>, ShiftsUnchecked, workOfOneAndConstants)
// clang-format on
