// Multiplication: vectors and an array of constants. Kernels and public functions.
#include "kvlmmul_constant.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, CLASS, T, work)                                                                                      \
    BATCH_KERNELS(name, CLASS, T, withEach<Times>)                                                                     \
    BATCH_FUNCTIONS(name, CLASS, T, UsualOrder, work(len, count), constantsLimits)

ROW(kvlmMul_vca_32f, VCA, float, workOfOneAndConstants)
ROW(kvlmMul_vaca_32f, VACA, float, workOfArrayAndConstants)
ROW(kvlmMul_vca_64f, VCA, double, workOfOneAndConstants)
ROW(kvlmMul_vaca_64f, VACA, double, workOfArrayAndConstants)
