// Multiplication: one matrix and one matrix. Kernels and public functions.
#include "kvlmmul_matrix.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, CLASS, T, A, B, plain, strided, pointer)                                                             \
    OBJECT_PRODUCTS(name, CLASS, T, A, B, plain, strided, pointer)                                                     \
    OBJECT_FUNCTIONS(name, CLASS, T, MatchAfterSizes)
// The orders whose sums begin with the first product, kernel by kernel; all other sums begin with +0.
// clang-format off
//  member          class   element A    B    plain  _S2    _P
ROW(kvlmMul_mm_32f, MUL_MM, float,  'm', 'm', upTo6, upTo6, upTo6 | threeByOr)
ROW(kvlmMul_tm_32f, MUL_TM, float,  't', 'm', upTo5, upTo6, upTo6)
ROW(kvlmMul_mt_32f, MUL_MT, float,  'm', 't', upTo6, upTo6, upTo6)
ROW(kvlmMul_tt_32f, MUL_TT, float,  't', 't', upTo6, upTo6, upTo6)
ROW(kvlmMul_mm_64f, MUL_MM, double, 'm', 'm', upTo6, upTo6, upTo6)
ROW(kvlmMul_tm_64f, MUL_TM, double, 't', 'm', upTo6, upTo6, upTo6)
ROW(kvlmMul_mt_64f, MUL_MT, double, 'm', 't', upTo6, upTo6, upTo6)
ROW(kvlmMul_tt_64f, MUL_TT, double, 't', 't', upTo6, upTo6, upTo6 | threeByOr)
// clang-format on
