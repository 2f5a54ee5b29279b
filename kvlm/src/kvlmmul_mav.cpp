// Multiplication: an array of matrices and one vector. Kernels and public functions.
#include "kvlmmul_vector.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, CLASS, T, letter, plain, list)                                                                       \
    BATCH_BY_VECTOR(name, CLASS, T, letter, true, false, (multiplyVector<letter, Sum::plain>), list)

// The orders of the sums of adjacent elements; all others are formed from the left.
// clang-format off
//  member           class    element A    plain     _L
ROW(kvlmMul_mav_32f, MUL_MAV, float,  'm', quads,    quads)
ROW(kvlmMul_tav_32f, MUL_TAV, float,  't', columns,  columns)
ROW(kvlmMul_mav_64f, MUL_MAV, double, 'm', pairs,    pairs)
ROW(kvlmMul_tav_64f, MUL_TAV, double, 't', fromLeft, pairs)
// clang-format on
