// Add: an array of matrices and one matrix. Drivers: standard, _P and _L of each member.
#include "frame/rows.h"

using namespace kvlm;

// clang-format off
DRIVERS(kvlmAdd_mam_32f, MAM, float)
DRIVERS(kvlmAdd_tam_32f, MAM, float)
DRIVERS(kvlmAdd_mat_32f, MAM, float)
DRIVERS(kvlmAdd_tat_32f, MAM, float)
DRIVERS(kvlmAdd_mam_64f, MAM, double)
DRIVERS(kvlmAdd_tam_64f, MAM, double)
DRIVERS(kvlmAdd_mat_64f, MAM, double)
DRIVERS(kvlmAdd_tat_64f, MAM, double)
// clang-format on
