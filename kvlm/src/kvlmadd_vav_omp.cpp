// Add: an array of vectors and one vector. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmAdd_vav_32f, VAV, float)
DRIVERS(kvlmAdd_vav_64f, VAV, double)
// clang-format on
