// Sub: an array of matrices minus an array of matrices. Kernels and public functions.
#include "kvlmaddsub.h"

using namespace kvlm;
using namespace kvlm::addsub;

#define ROW(name, T, A, B, orders) BATCH_MEMBER(name, MAMA, T, Minus, A, B, orders, workOfArrays)

// clang-format off
//  member            element  A    B    order of checks
ROW(kvlmSub_mama_32f, float,  'm', 'm', UsualOrder)
ROW(kvlmSub_tama_32f, float,  't', 'm', UsualOrder)
ROW(kvlmSub_mata_32f, float,  'm', 't', UsualOrder)
ROW(kvlmSub_tata_32f, float,  't', 't', UsualOrder)
ROW(kvlmSub_mama_64f, double, 'm', 'm', UsualOrder)
ROW(kvlmSub_tama_64f, double, 't', 'm', UsualOrder)
ROW(kvlmSub_mata_64f, double, 'm', 't', UsualOrder)
ROW(kvlmSub_tata_64f, double, 't', 't', UsualOrder)
// clang-format on
