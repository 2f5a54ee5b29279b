// Sub: one vector and an array of constants. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmSub_vca_32f, VCA, float)
DRIVERS(kvlmSub_cav_32f, VCA, float)
DRIVERS(kvlmSub_vca_64f, VCA, double)
DRIVERS(kvlmSub_cav_64f, VCA, double)
// clang-format on
