// Multiplication: one object and a constant. Kernels and public functions.
#include "kvlmmul_constant.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, CLASS, T, algorithm)                                                                                 \
    OBJECT_KERNELS(name, CLASS, T, algorithm)                                                                          \
    OBJECT_FUNCTIONS(name, CLASS, T, UsualOrder)

ROW(kvlmMul_mc_32f, MUL_MC, float, scale<'m'>)
ROW(kvlmMul_tc_32f, MUL_MC, float, scale<'t'>)
ROW(kvlmMul_vc_32f, VC, float, overVectors<Times>)
ROW(kvlmMul_mc_64f, MUL_MC, double, scale<'m'>)
ROW(kvlmMul_tc_64f, MUL_MC, double, scale<'t'>)
ROW(kvlmMul_vc_64f, VC, double, overVectors<Times>)
