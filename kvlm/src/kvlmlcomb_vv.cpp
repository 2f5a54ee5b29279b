// Linear combination of one vector and one vector: kernels and public functions.
#include "kvlmlcomb.h"

using namespace kvlm;
using namespace kvlm::lcomb;

// clang-format off
SCALED_SUM_MEMBER(kvlmLComb_vv_32f, LCOMB_VV, float, linearCombination)
SCALED_SUM_MEMBER(kvlmLComb_vv_64f, LCOMB_VV, double, linearCombination)
// clang-format on
