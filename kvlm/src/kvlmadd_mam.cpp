// Add: an array of matrices and one matrix. Kernels and public functions.
#include "kvlmaddsub.h"

using namespace kvlm;
using namespace kvlm::addsub;

#define ROW(name, T, A, B, orders) BATCH_MEMBER(name, MAM, T, Plus, A, B, orders, workWithOne)

// Settled: the standard forms of mam check strides before sizes, unlike their neighbours.
// clang-format off
//  member           element  A    B    order of checks
ROW(kvlmAdd_mam_32f, float,  'm', 'm', StridesBeforeSizes)
ROW(kvlmAdd_tam_32f, float,  't', 'm', UsualOrder)
ROW(kvlmAdd_mat_32f, float,  'm', 't', UsualOrder)
ROW(kvlmAdd_tat_32f, float,  't', 't', UsualOrder)
ROW(kvlmAdd_mam_64f, double, 'm', 'm', StridesBeforeSizes)
ROW(kvlmAdd_tam_64f, double, 't', 'm', UsualOrder)
ROW(kvlmAdd_mat_64f, double, 'm', 't', UsualOrder)
ROW(kvlmAdd_tat_64f, double, 't', 't', UsualOrder)
// clang-format on
