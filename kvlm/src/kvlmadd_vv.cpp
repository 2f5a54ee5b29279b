// Add: one vector and one vector. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// clang-format off
VECTOR_MEMBER(kvlmAdd_vv_32f, VV, float, overVectors<Plus>)
VECTOR_MEMBER(kvlmAdd_vv_64f, VV, double, overVectors<Plus>)
// clang-format on
