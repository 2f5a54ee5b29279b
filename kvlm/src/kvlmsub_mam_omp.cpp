// Sub: an array of matrices minus one matrix. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmSub_mam_32f, MAM, float)
DRIVERS(kvlmSub_tam_32f, MAM, float)
DRIVERS(kvlmSub_mat_32f, MAM, float)
DRIVERS(kvlmSub_tat_32f, MAM, float)
DRIVERS(kvlmSub_mam_64f, MAM, double)
DRIVERS(kvlmSub_tam_64f, MAM, double)
DRIVERS(kvlmSub_mat_64f, MAM, double)
DRIVERS(kvlmSub_tat_64f, MAM, double)
// clang-format on
