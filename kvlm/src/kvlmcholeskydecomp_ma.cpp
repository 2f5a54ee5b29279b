// Cholesky decomposition of an array of matrices: kernels and public functions.
#include "kvlmcholeskydecomp.h"

using namespace kvlm;

#define ROW(name, T, limits)                                                                                           \
    BATCH_KERNELS(name, CHOLESKY_MA, T, choleskyDecompBatch)                                                           \
    BATCH_FUNCTIONS(name, CHOLESKY_MA, T, UsualOrder, squaresWork(widthHeight, count), limits)

ROW(kvlmCholeskyDecomp_ma_32f, float, choleskyLimits32f)
ROW(kvlmCholeskyDecomp_ma_64f, double, choleskyLimits64f)
