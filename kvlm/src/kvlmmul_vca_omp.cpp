// Multiplication: vectors and an array of constants. Drivers: standard, _P and _L of each member.
#include "kvlmmul_constant.h"

using namespace kvlm;
using namespace kvlm::mul;

DRIVERS(kvlmMul_vca_32f, VCA, float)
DRIVERS(kvlmMul_vaca_32f, VACA, float)
DRIVERS(kvlmMul_vca_64f, VCA, double)
DRIVERS(kvlmMul_vaca_64f, VACA, double)
