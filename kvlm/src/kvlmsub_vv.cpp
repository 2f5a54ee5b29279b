// Sub: one vector and one vector. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// clang-format off
VECTOR_MEMBER(kvlmSub_vv_32f, VV, float, overVectors<Minus>)
VECTOR_MEMBER(kvlmSub_vv_64f, VV, double, overVectors<Minus>)
// clang-format on
