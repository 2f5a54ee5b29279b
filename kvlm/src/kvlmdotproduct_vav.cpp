// Dot products of an array of vectors and one vector: kernels and public functions.
#include "kvlmdotproduct.h"

using namespace kvlm;
using namespace kvlm::dot;

DOT_ARRAYS(kvlmDotProduct_vav_32f, DOT_VAV, float, dotWithOne32f, sequentialOne, dotWithOneWork)
DOT_ARRAYS(kvlmDotProduct_vav_64f, DOT_VAV, double, dotWithOne64f, sequentialOne, dotWithOneWork)
