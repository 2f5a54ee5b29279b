// Multiplication: vectors and an array of constants. Kernels and public functions.
#include "kvlmmul_constant.h"

using namespace kvlm;

#define ROW(name, CLASS, T, work)                                                                                      \
    BATCH_KERNELS(name, CLASS, T, scaleByEach)                                                                         \
    BATCH_FUNCTIONS(name, CLASS, T, UsualOrder, work(len, count), constantsLimits)

ROW(kvlmMul_vca_32f, MUL_VCA, float, vectorByConstantsWork)
ROW(kvlmMul_vaca_32f, MUL_VACA, float, vectorsByConstantsWork)
ROW(kvlmMul_vca_64f, MUL_VCA, double, vectorByConstantsWork)
ROW(kvlmMul_vaca_64f, MUL_VACA, double, vectorsByConstantsWork)
