// Cross products of an array of vectors and an array of vectors: drivers.
#include "kvlmcrossproduct.h"

using namespace kvlm;
using namespace kvlm::cross;

DRIVERS(kvlmCrossProduct_vava_32f, CROSS_VAVA, float)
DRIVERS(kvlmCrossProduct_vava_64f, CROSS_VAVA, double)
