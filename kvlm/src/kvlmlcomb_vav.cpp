// Linear combination of an array of vectors and one vector: kernels and public functions.
#include "kvlmlcomb.h"

using namespace kvlm;
using namespace kvlm::lcomb;

// clang-format off
SCALED_SUMS_MEMBER(kvlmLComb_vav_32f, LCOMB_VAV, float, linearCombination, workOfArrayAndOne, listApartLimits<float>)
SCALED_SUMS_MEMBER(kvlmLComb_vav_64f, LCOMB_VAV, double, linearCombination, workOfArrayAndOne, listApartLimits<double>)
// clang-format on
