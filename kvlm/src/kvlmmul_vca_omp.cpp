// Multiplication: vectors and an array of constants. Drivers: standard, _P and _L of each member.
#include "kvlmmul_constant.h"

using namespace kvlm;

DRIVERS(kvlmMul_vca_32f, MUL_VCA, float)
DRIVERS(kvlmMul_vaca_32f, MUL_VACA, float)
DRIVERS(kvlmMul_vca_64f, MUL_VCA, double)
DRIVERS(kvlmMul_vaca_64f, MUL_VACA, double)
