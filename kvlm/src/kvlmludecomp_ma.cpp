// LU decomposition of an array of matrices: kernels and public functions.
#include "kvlmludecomp.h"

using namespace kvlm;

#define ROW(name, T, limits)                                                                                           \
    BATCH_KERNELS(name, LU_MA, T, luDecompBatch)                                                                       \
    BATCH_FUNCTIONS(name, LU_MA, T, UsualOrder, squaresWork(widthHeight, count), limits)

ROW(kvlmLUDecomp_ma_32f, float, luLimits32f)
ROW(kvlmLUDecomp_ma_64f, double, luLimits)
