// Multiplication: an array of matrices and one vector. Drivers: standard, _P and _L of each member.
#include "kvlmmul_vector.h"

using namespace kvlm;
using namespace kvlm::mul;

DRIVERS(kvlmMul_mav_32f, MUL_MAV, float)
DRIVERS(kvlmMul_tav_32f, MUL_TAV, float)
DRIVERS(kvlmMul_mav_64f, MUL_MAV, double)
DRIVERS(kvlmMul_tav_64f, MUL_TAV, double)
