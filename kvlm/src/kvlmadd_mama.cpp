// Add: an array of matrices and an array of matrices. Kernels and public functions.
#include "kvlmaddsub.h"

using namespace kvlm;
using namespace kvlm::addsub;

#define ROW(name, T, A, B, orders) BATCH_MEMBER(name, MAMA, T, Plus, A, B, orders, workOfArrays)

// clang-format off
//  member            element  A    B    order of checks
ROW(kvlmAdd_mama_32f, float,  'm', 'm', UsualOrder)
ROW(kvlmAdd_tama_32f, float,  't', 'm', UsualOrder)
ROW(kvlmAdd_tata_32f, float,  't', 't', UsualOrder)
ROW(kvlmAdd_mama_64f, double, 'm', 'm', UsualOrder)
ROW(kvlmAdd_tama_64f, double, 't', 'm', UsualOrder)
ROW(kvlmAdd_tata_64f, double, 't', 't', UsualOrder)
// clang-format on
