// Dot products of an array of vectors and one vector: drivers.
#include "kvlmdotproduct.h"

using namespace kvlm;
using namespace kvlm::dot;

DRIVERS(kvlmDotProduct_vav_32f, DOT_VAV, float)
DRIVERS(kvlmDotProduct_vav_64f, DOT_VAV, double)
