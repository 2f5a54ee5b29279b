// Multiplication: arrays of matrices and of vectors. Kernels and public functions.
#include "kvlmmul_vector.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, CLASS, T, letter, plain, list)                                                                       \
    BATCH_BY_VECTOR(name, CLASS, T, letter, true, true, (multiplyVector<letter, Sum::plain>), list)

// The orders of the sums of adjacent elements; all others are formed from the left.
// clang-format off
//  member            class     element A    plain     _L
ROW(kvlmMul_mava_32f, MUL_MAVA, float,  'm', quads,    quads)
ROW(kvlmMul_tava_32f, MUL_TAVA, float,  't', columns,  columns)
ROW(kvlmMul_mava_64f, MUL_MAVA, double, 'm', pairs,    pairs)
ROW(kvlmMul_tava_64f, MUL_TAVA, double, 't', fromLeft, fromLeft)
// clang-format on
