// Saxpy of one vector and one vector: kernels and public functions.
#include "kvlmlcomb.h"

using namespace kvlm;
using namespace kvlm::lcomb;

// clang-format off
SCALED_SUM_MEMBER(kvlmSaxpy_vv_32f, SAXPY_VV, float, saxpy)
SCALED_SUM_MEMBER(kvlmSaxpy_vv_64f, SAXPY_VV, double, saxpy)
// clang-format on
