// Cross products of an array of vectors and one vector: drivers.
#include "kvlmcrossproduct.h"

using namespace kvlm;
using namespace kvlm::cross;

DRIVERS(kvlmCrossProduct_vav_32f, CROSS_VAV, float)
DRIVERS(kvlmCrossProduct_vva_32f, CROSS_VVA, float)
DRIVERS(kvlmCrossProduct_vav_64f, CROSS_VAV, double)
DRIVERS(kvlmCrossProduct_vva_64f, CROSS_VVA, double)
