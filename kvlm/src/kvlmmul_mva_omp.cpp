// Multiplication: one matrix and an array of vectors. Drivers: standard, _P and _L of each member.
#include "kvlmmul_vector.h"

using namespace kvlm;
using namespace kvlm::mul;

DRIVERS(kvlmMul_mva_32f, MUL_MVA, float)
DRIVERS(kvlmMul_tva_32f, MUL_TVA, float)
DRIVERS(kvlmMul_mva_64f, MUL_MVA, double)
DRIVERS(kvlmMul_tva_64f, MUL_TVA, double)
