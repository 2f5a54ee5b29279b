// Multiplication: an array of matrices and one matrix. Drivers: standard, _P and _L of each member.
#include "kvlmmul_matrix.h"

using namespace kvlm;
using namespace kvlm::mul;

DRIVERS(kvlmMul_mam_32f, MUL_MAM, float)
DRIVERS(kvlmMul_tam_32f, MUL_TAM, float)
DRIVERS(kvlmMul_mat_32f, MUL_MAT, float)
DRIVERS(kvlmMul_tat_32f, MUL_TAT, float)
DRIVERS(kvlmMul_mam_64f, MUL_MAM, double)
DRIVERS(kvlmMul_tam_64f, MUL_TAM, double)
DRIVERS(kvlmMul_mat_64f, MUL_MAT, double)
DRIVERS(kvlmMul_tat_64f, MUL_TAT, double)
