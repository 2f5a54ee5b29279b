// Euclidean norms of an array of vectors: drivers.
#include "kvlmdotproduct.h"

using namespace kvlm;
using namespace kvlm::dot;

DRIVERS(kvlmL2Norm_va_32f, NORM_VA, float)
DRIVERS(kvlmL2Norm_va_64f, NORM_VA, double)
