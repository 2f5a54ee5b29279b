// Multiplication: one matrix and an array of vectors. Kernels and public functions.
#include "kvlmmul_mva_rows.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, CLASS, T, letter, plain, list)                                                                       \
    BATCH_BY_VECTOR(name, CLASS, T, letter, false, true, (multiplyVector<letter, Sum::plain>), list)

// quads for squares, rows in lanes for the rest; the _L kernel from the left
BATCH_BY_VECTOR(kvlmMul_mva_32f, MUL_MVA, float, 'm', false, true, multiplyVectorsByAlignment, fromLeft)

// The orders of the sums of adjacent elements; all others are formed from the left.
// clang-format off
//  member           class    element A    plain     _L
ROW(kvlmMul_tva_32f, MUL_TVA, float,  't', fromLeft, fromLeft)
ROW(kvlmMul_mva_64f, MUL_MVA, double, 'm', pairs,    pairs)
ROW(kvlmMul_tva_64f, MUL_TVA, double, 't', fromLeft, fromLeft)
// clang-format on
