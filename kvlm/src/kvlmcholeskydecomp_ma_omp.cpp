// Cholesky decomposition of an array of matrices: drivers.
#include "kvlmcholeskydecomp.h"

using namespace kvlm;
using namespace kvlm::cholesky;

DRIVERS(kvlmCholeskyDecomp_ma_32f, CHOLESKY_MA, float)
DRIVERS(kvlmCholeskyDecomp_ma_64f, CHOLESKY_MA, double)
