// Cholesky solver, an array of matrices, each with a right-hand side: drivers.
#include "kvlmcholeskybacksubst.h"

using namespace kvlm;
using namespace kvlm::cholesky;

DRIVERS(kvlmCholeskyBackSubst_mava_32f, CHOLESKY_MAVA, float)
DRIVERS(kvlmCholeskyBackSubst_mava_64f, CHOLESKY_MAVA, double)
