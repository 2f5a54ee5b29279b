// Multiplication: two arrays of matrices. Drivers: standard, _P and _L of each member.
#include "kvlmmul_matrix.h"

using namespace kvlm;
using namespace kvlm::mul;

DRIVERS(kvlmMul_mama_32f, MUL_MAMA, float)
DRIVERS(kvlmMul_tama_32f, MUL_TAMA, float)
DRIVERS(kvlmMul_mata_32f, MUL_MATA, float)
DRIVERS(kvlmMul_tata_32f, MUL_TATA, float)
DRIVERS(kvlmMul_mama_64f, MUL_MAMA, double)
DRIVERS(kvlmMul_tama_64f, MUL_TAMA, double)
DRIVERS(kvlmMul_mata_64f, MUL_MATA, double)
DRIVERS(kvlmMul_tata_64f, MUL_TATA, double)
