// Sub: one matrix minus an array of matrices. Kernels and public functions.
#include "kvlmaddsub.h"

using namespace kvlm;
using namespace kvlm::addsub;

#define ROW(name, T, A, B, orders) BATCH_MEMBER(name, MMA, T, Minus, A, B, orders, workWithOne)

// Settled: the standard forms of mma check strides before sizes, unlike their neighbours.
// clang-format off
//  member           element  A    B    order of checks
ROW(kvlmSub_mma_32f, float,  'm', 'm', StridesBeforeSizes)
ROW(kvlmSub_tma_32f, float,  't', 'm', UsualOrder)
ROW(kvlmSub_mta_32f, float,  'm', 't', UsualOrder)
ROW(kvlmSub_tta_32f, float,  't', 't', UsualOrder)
ROW(kvlmSub_mma_64f, double, 'm', 'm', StridesBeforeSizes)
ROW(kvlmSub_tma_64f, double, 't', 'm', UsualOrder)
ROW(kvlmSub_mta_64f, double, 'm', 't', UsualOrder)
ROW(kvlmSub_tta_64f, double, 't', 't', UsualOrder)
// clang-format on
