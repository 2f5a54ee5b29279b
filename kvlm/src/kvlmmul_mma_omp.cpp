// Multiplication: one matrix and an array of matrices. Drivers: standard, _P and _L of each member.
#include "kvlmmul_matrix.h"

using namespace kvlm;
using namespace kvlm::mul;

DRIVERS(kvlmMul_mma_32f, MUL_MMA, float)
DRIVERS(kvlmMul_tma_32f, MUL_TMA, float)
DRIVERS(kvlmMul_mta_32f, MUL_MTA, float)
DRIVERS(kvlmMul_tta_32f, MUL_TTA, float)
DRIVERS(kvlmMul_mma_64f, MUL_MMA, double)
DRIVERS(kvlmMul_tma_64f, MUL_TMA, double)
DRIVERS(kvlmMul_mta_64f, MUL_MTA, double)
DRIVERS(kvlmMul_tta_64f, MUL_TTA, double)
