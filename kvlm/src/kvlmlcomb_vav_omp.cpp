// Linear combination of an array of vectors and one vector: drivers.
#include "kvlmlcomb.h"

using namespace kvlm;
using namespace kvlm::lcomb;

// clang-format off
DRIVERS(kvlmLComb_vav_32f, LCOMB_VAV, float)
DRIVERS(kvlmLComb_vav_64f, LCOMB_VAV, double)
// clang-format on
