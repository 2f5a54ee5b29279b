// Sub: an array of vectors and a constant. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmSub_vac_32f, VAC, float)
DRIVERS(kvlmSub_cva_32f, VAC, float)
DRIVERS(kvlmSub_vac_64f, VAC, double)
DRIVERS(kvlmSub_cva_64f, VAC, double)
// clang-format on
