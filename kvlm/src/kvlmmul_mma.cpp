// Multiplication: one matrix and an array of matrices. Kernels and public functions.
#include "kvlmmul_matrix.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, CLASS, T, A, B, plain, strided, pointer, list, listStrided)                                          \
    OBJECT_PRODUCTS(name, CLASS, T, A, B, plain, strided, pointer)                                                     \
    LIST_PRODUCTS(name, CLASS, T, A, B, list, listStrided)                                                             \
    BATCH_PRODUCT_FUNCTIONS(name, CLASS, T, A, B, false, true)
// The orders whose sums begin with the first product, kernel by kernel; all other sums begin with +0.
// clang-format off
//  member           class    element A    B    plain  _S2    _P     _L     _LS2
ROW(kvlmMul_mma_32f, MUL_MMA, float,  'm', 'm', upTo6, upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_tma_32f, MUL_TMA, float,  't', 'm', upTo6, upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_mta_32f, MUL_MTA, float,  'm', 't', upTo6, upTo6, upTo6, none,  upTo6)
ROW(kvlmMul_tta_32f, MUL_TTA, float,  't', 't', upTo6, upTo6, upTo6, none,  upTo6)
ROW(kvlmMul_mma_64f, MUL_MMA, double, 'm', 'm', upTo6, upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_tma_64f, MUL_TMA, double, 't', 'm', upTo6, upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_mta_64f, MUL_MTA, double, 'm', 't', upTo6, upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_tta_64f, MUL_TTA, double, 't', 't', upTo6, upTo6, upTo6, none,  upTo6)
// clang-format on
