// Multiplication: arrays and a constant. Kernels and public functions.
#include "kvlmmul_constant.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, CLASS, T, algorithm, work, limits)                                                                   \
    BATCH_KERNELS(name, CLASS, T, algorithm)                                                                           \
    BATCH_FUNCTIONS(name, CLASS, T, UsualOrder, work, limits<T>)

ROW(kvlmMul_mac_32f, MUL_MAC, float, scale<'m'>, scaleWork(width, height, count), scaleLimits)
ROW(kvlmMul_tac_32f, MUL_MAC, float, scale<'t'>, scaleWork(width, height, count), scaleLimits)
ROW(kvlmMul_vac_32f, VAC, float, overVectors<Times>, scaleWork(len, 1, count), scaleVectorLimits)
ROW(kvlmMul_mac_64f, MUL_MAC, double, scale<'m'>, scaleWork(width, height, count), scaleLimits)
ROW(kvlmMul_tac_64f, MUL_MAC, double, scale<'t'>, scaleWork(width, height, count), scaleLimits)
ROW(kvlmMul_vac_64f, VAC, double, overVectors<Times>, scaleWork(len, 1, count), scaleVectorLimits)
