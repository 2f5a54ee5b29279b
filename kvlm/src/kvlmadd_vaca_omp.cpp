// Add: an array of vectors and an array of constants. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmAdd_vaca_32f, VACA, float)
DRIVERS(kvlmAdd_vaca_64f, VACA, double)
// clang-format on
