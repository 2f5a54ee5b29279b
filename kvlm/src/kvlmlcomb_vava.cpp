// Linear combination of an array of vectors and an array of vectors: kernels and public functions.
#include "kvlmlcomb.h"

using namespace kvlm;
using namespace kvlm::lcomb;

// clang-format off
SCALED_SUMS_MEMBER(kvlmLComb_vava_32f, LCOMB_VAVA, float, linearCombination, workOfVectorArrays, listApartLimits<float>)
SCALED_SUMS_MEMBER(kvlmLComb_vava_64f, LCOMB_VAVA, double, linearCombination, workOfVectorArrays, listApartLimits<double>)
// clang-format on
