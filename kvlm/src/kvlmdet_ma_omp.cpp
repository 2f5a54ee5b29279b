// Determinants of an array of matrices: drivers.
#include "kvlmdet.h"

using namespace kvlm;
using namespace kvlm::det;

DRIVERS(kvlmDet_ma_32f, DET_MA, float)
DRIVERS(kvlmDet_ma_64f, DET_MA, double)
