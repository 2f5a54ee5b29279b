// Multiplication: arrays of matrices and of vectors. Drivers: standard, _P and _L of each member.
#include "kvlmmul_vector.h"

using namespace kvlm;
using namespace kvlm::mul;

DRIVERS(kvlmMul_mava_32f, MUL_MAVA, float)
DRIVERS(kvlmMul_tava_32f, MUL_TAVA, float)
DRIVERS(kvlmMul_mava_64f, MUL_MAVA, double)
DRIVERS(kvlmMul_tava_64f, MUL_TAVA, double)
