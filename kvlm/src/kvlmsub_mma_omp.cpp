// Sub: one matrix minus an array of matrices. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmSub_mma_32f, MMA, float)
DRIVERS(kvlmSub_tma_32f, MMA, float)
DRIVERS(kvlmSub_mta_32f, MMA, float)
DRIVERS(kvlmSub_tta_32f, MMA, float)
DRIVERS(kvlmSub_mma_64f, MMA, double)
DRIVERS(kvlmSub_tma_64f, MMA, double)
DRIVERS(kvlmSub_mta_64f, MMA, double)
DRIVERS(kvlmSub_tta_64f, MMA, double)
// clang-format on
