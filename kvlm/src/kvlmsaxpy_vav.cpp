// Saxpy of an array of vectors and one vector: kernels and public functions.
#include "kvlmlcomb.h"

using namespace kvlm;
using namespace kvlm::lcomb;

// clang-format off
SCALED_SUMS_MEMBER(kvlmSaxpy_vav_32f, SAXPY_VAV, float, saxpy, workOfArrayAndOne, saxpyLimits)
SCALED_SUMS_MEMBER(kvlmSaxpy_vva_32f, SAXPY_VVA, float, saxpy, workOfArrayAndOne, saxpyLimits)
SCALED_SUMS_MEMBER(kvlmSaxpy_vav_64f, SAXPY_VAV, double, saxpy, workOfArrayAndOne, saxpyLimits)
SCALED_SUMS_MEMBER(kvlmSaxpy_vva_64f, SAXPY_VVA, double, saxpy, workOfArrayAndOne, saxpyLimits)
// clang-format on
