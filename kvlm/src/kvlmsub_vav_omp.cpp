// Sub: an array of vectors and one vector. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmSub_vav_32f, VAV, float)
DRIVERS(kvlmSub_vva_32f, VVA, float)
DRIVERS(kvlmSub_vav_64f, VAV, double)
DRIVERS(kvlmSub_vva_64f, VVA, double)
// clang-format on
