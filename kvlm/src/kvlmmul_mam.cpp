// Multiplication: an array of matrices and one matrix. Kernels and public functions.
#include "kvlmmul_matrix.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, CLASS, T, A, B, plain, strided, pointer, list, listStrided)                                          \
    OBJECT_PRODUCTS(name, CLASS, T, A, B, plain, strided, pointer)                                                     \
    LIST_PRODUCTS(name, CLASS, T, A, B, list, listStrided)                                                             \
    BATCH_PRODUCT_FUNCTIONS(name, CLASS, T, A, B, true, false)
// The orders whose sums begin with the first product, kernel by kernel; all other sums begin with +0.
// clang-format off
//  member           class    element A    B    plain                    _S2    _P     _L     _LS2
ROW(kvlmMul_mam_32f, MUL_MAM, float,  'm', 'm', upTo6,                   upTo6, three, upTo6, three)
ROW(kvlmMul_tam_32f, MUL_TAM, float,  't', 'm', upTo6,                   three, three, upTo6, three)
ROW(kvlmMul_mat_32f, MUL_MAT, float,  'm', 't', upTo6But4 | fourByThree, three, three, upTo6, three)
ROW(kvlmMul_tat_32f, MUL_TAT, float,  't', 't', upTo6,                   upTo6, upTo6, upTo6, three)
ROW(kvlmMul_mam_64f, MUL_MAM, double, 'm', 'm', upTo6,                   upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_tam_64f, MUL_TAM, double, 't', 'm', upTo6,                   upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_mat_64f, MUL_MAT, double, 'm', 't', upTo6,                   upTo6, upTo6, upTo6, upTo6)
ROW(kvlmMul_tat_64f, MUL_TAT, double, 't', 't', upTo6,                   upTo6, upTo6, upTo6, upTo6)
// clang-format on
