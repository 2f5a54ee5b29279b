// Sub: one vector and a constant. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// clang-format off
VECTOR_MEMBER(kvlmSub_vc_32f, VC, float, overVectors<Minus>)
VECTOR_MEMBER(kvlmSub_cv_32f, VC, float, constantFirst<Minus>)
VECTOR_MEMBER(kvlmSub_vc_64f, VC, double, overVectors<Minus>)
VECTOR_MEMBER(kvlmSub_cv_64f, VC, double, constantFirst<Minus>)
// clang-format on
