// Linear combination of an array of vectors and an array of vectors: drivers.
#include "kvlmlcomb.h"

using namespace kvlm;
using namespace kvlm::lcomb;

// clang-format off
DRIVERS(kvlmLComb_vava_32f, LCOMB_VAVA, float)
DRIVERS(kvlmLComb_vava_64f, LCOMB_VAVA, double)
// clang-format on
