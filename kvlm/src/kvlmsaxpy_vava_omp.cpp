// Saxpy of an array of vectors and an array of vectors: drivers.
#include "kvlmlcomb.h"

using namespace kvlm;
using namespace kvlm::lcomb;

// clang-format off
DRIVERS(kvlmSaxpy_vava_32f, SAXPY_VAVA, float)
DRIVERS(kvlmSaxpy_vava_64f, SAXPY_VAVA, double)
// clang-format on
