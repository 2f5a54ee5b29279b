// Sub: an array of matrices minus an array of matrices. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmSub_mama_32f, MAMA, float)
DRIVERS(kvlmSub_tama_32f, MAMA, float)
DRIVERS(kvlmSub_mata_32f, MAMA, float)
DRIVERS(kvlmSub_tata_32f, MAMA, float)
DRIVERS(kvlmSub_mama_64f, MAMA, double)
DRIVERS(kvlmSub_tama_64f, MAMA, double)
DRIVERS(kvlmSub_mata_64f, MAMA, double)
DRIVERS(kvlmSub_tata_64f, MAMA, double)
// clang-format on
