// Add: an array of vectors and one vector. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// Settled: vav checks its count after the strides and shifts.
// clang-format off
VECTORS_MEMBER(kvlmAdd_vav_32f, VAV, float, overVectors<Plus>, CountAfterStrides, workOfArrayAndOne)
VECTORS_MEMBER(kvlmAdd_vav_64f, VAV, double, overVectors<Plus>, CountAfterStrides, workOfArrayAndOne)
// clang-format on
