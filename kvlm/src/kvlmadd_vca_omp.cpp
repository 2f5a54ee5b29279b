// Add: one vector and an array of constants. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmAdd_vca_32f, VCA, float)
DRIVERS(kvlmAdd_vca_64f, VCA, double)
// clang-format on
