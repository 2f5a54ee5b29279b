// Add: an array of matrices and an array of matrices. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmAdd_mama_32f, MAMA, float)
DRIVERS(kvlmAdd_tama_32f, MAMA, float)
DRIVERS(kvlmAdd_tata_32f, MAMA, float)
DRIVERS(kvlmAdd_mama_64f, MAMA, double)
DRIVERS(kvlmAdd_tama_64f, MAMA, double)
DRIVERS(kvlmAdd_tata_64f, MAMA, double)
// clang-format on
