// Add: an array of vectors and a constant. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmAdd_vac_32f, VAC, float)
DRIVERS(kvlmAdd_vac_64f, VAC, double)
// clang-format on
