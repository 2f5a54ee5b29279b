// LU solver, one matrix and an array of right-hand sides: drivers.
#include "kvlmlubacksubst.h"

using namespace kvlm;
using namespace kvlm::lu;

DRIVERS(kvlmLUBackSubst_mva_32f, LU_MVA, float)
DRIVERS(kvlmLUBackSubst_mva_64f, LU_MVA, double)
