// Multiplication: arrays and a constant. Drivers: standard, _P and _L of each member.
#include "kvlmmul_constant.h"

using namespace kvlm;
using namespace kvlm::mul;

DRIVERS(kvlmMul_mac_32f, MUL_MAC, float)
DRIVERS(kvlmMul_tac_32f, MUL_MAC, float)
DRIVERS(kvlmMul_vac_32f, VAC, float)
DRIVERS(kvlmMul_mac_64f, MUL_MAC, double)
DRIVERS(kvlmMul_tac_64f, MUL_MAC, double)
DRIVERS(kvlmMul_vac_64f, VAC, double)
