// Multiplication: two arrays of matrices. Kernels and public functions.
#include "kvlmmul_matrix.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, CLASS, T, A, B, plain, strided, pointer, list, listStrided)                                          \
    OBJECT_PRODUCTS(name, CLASS, T, A, B, plain, strided, pointer)                                                     \
    LIST_PRODUCTS(name, CLASS, T, A, B, list, listStrided)                                                             \
    BATCH_PRODUCT_FUNCTIONS(name, CLASS, T, A, B, true, true)
// The orders whose sums begin with the first product, kernel by kernel; all other sums begin with +0.
// clang-format off
//  member            class     element A    B    plain  _S2    _P     _L     _LS2
ROW(kvlmMul_mama_32f, MUL_MAMA, float,  'm', 'm', upTo6, upTo5, upTo6, upTo6, upTo6)
ROW(kvlmMul_tama_32f, MUL_TAMA, float,  't', 'm', upTo6, upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_mata_32f, MUL_MATA, float,  'm', 't', upTo6, upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_tata_32f, MUL_TATA, float,  't', 't', upTo6, upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_mama_64f, MUL_MAMA, double, 'm', 'm', upTo6, upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_tama_64f, MUL_TAMA, double, 't', 'm', upTo6, upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_mata_64f, MUL_MATA, double, 'm', 't', upTo6, upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_tata_64f, MUL_TATA, double, 't', 't', upTo6, upTo6, upTo6, upTo6, upTo6)
// clang-format on
