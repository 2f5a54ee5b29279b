// Saxpy of an array of vectors and an array of vectors: kernels and public functions.
#include "kvlmlcomb.h"

using namespace kvlm;
using namespace kvlm::lcomb;

// clang-format off
SCALED_SUMS_MEMBER(kvlmSaxpy_vava_32f, SAXPY_VAVA, float, saxpy, workOfVectorArrays, saxpyLimits)
SCALED_SUMS_MEMBER(kvlmSaxpy_vava_64f, SAXPY_VAVA, double, saxpy, workOfVectorArrays, saxpyLimits)
// clang-format on
