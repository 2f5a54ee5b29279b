// LU solver, an array of matrices, each with a right-hand side: drivers.
#include "kvlmlubacksubst.h"

using namespace kvlm;
using namespace kvlm::lu;

DRIVERS(kvlmLUBackSubst_mava_32f, LU_MAVA, float)
DRIVERS(kvlmLUBackSubst_mava_64f, LU_MAVA, double)
