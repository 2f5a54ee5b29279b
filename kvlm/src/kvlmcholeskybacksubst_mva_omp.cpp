// Cholesky solver, one matrix and an array of right-hand sides: drivers.
#include "kvlmcholeskybacksubst.h"

using namespace kvlm;
using namespace kvlm::cholesky;

DRIVERS(kvlmCholeskyBackSubst_mva_32f, CHOLESKY_MVA, float)
DRIVERS(kvlmCholeskyBackSubst_mva_64f, CHOLESKY_MVA, double)
