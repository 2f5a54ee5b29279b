// Multiplication: one matrix and one vector. Kernels and public functions.
#include "kvlmmul_vector.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, CLASS, T, letter, plain) OBJECT_BY_VECTOR(name, CLASS, T, letter, plain)

// The orders of the sums of adjacent elements; all others are formed from the left.
// clang-format off
//  member          class   element A    plain
ROW(kvlmMul_mv_32f, MUL_MV, float,  'm', fromLeft)
ROW(kvlmMul_tv_32f, MUL_TV, float,  't', fromLeft)
ROW(kvlmMul_mv_64f, MUL_MV, double, 'm', pairs)
ROW(kvlmMul_tv_64f, MUL_TV, double, 't', fromLeft)
// clang-format on
