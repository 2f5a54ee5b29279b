// Dot products of an array of vectors and an array of vectors: drivers.
#include "kvlmdotproduct.h"

using namespace kvlm;
using namespace kvlm::dot;

DRIVERS(kvlmDotProduct_vava_32f, DOT_VAVA, float)
DRIVERS(kvlmDotProduct_vava_64f, DOT_VAVA, double)
