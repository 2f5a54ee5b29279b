// Add: one vector and a constant. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// clang-format off
VECTOR_MEMBER(kvlmAdd_vc_32f, VC, float, overVectors<Plus>)
VECTOR_MEMBER(kvlmAdd_vc_64f, VC, double, overVectors<Plus>)
// clang-format on
