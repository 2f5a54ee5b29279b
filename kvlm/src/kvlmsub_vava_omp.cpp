// Sub: an array of vectors and an array of vectors. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmSub_vava_32f, VAVA, float)
DRIVERS(kvlmSub_vava_64f, VAVA, double)
// clang-format on
