// Frobenius norms of an array of matrices: drivers.
#include "kvlmfrobnorm.h"

using namespace kvlm;
using namespace kvlm::frobnorm;

DRIVERS(kvlmFrobNorm_ma_32f, FROBENIUS_MA, float)
DRIVERS(kvlmFrobNorm_ma_64f, FROBENIUS_MA, double)
