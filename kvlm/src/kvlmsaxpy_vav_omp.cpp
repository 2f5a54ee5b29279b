// Saxpy of an array of vectors and one vector: drivers.
#include "kvlmlcomb.h"

using namespace kvlm;
using namespace kvlm::lcomb;

// clang-format off
DRIVERS(kvlmSaxpy_vav_32f, SAXPY_VAV, float)
DRIVERS(kvlmSaxpy_vva_32f, SAXPY_VVA, float)
DRIVERS(kvlmSaxpy_vav_64f, SAXPY_VAV, double)
DRIVERS(kvlmSaxpy_vva_64f, SAXPY_VVA, double)
// clang-format on
