// Cholesky decomposition of an array of matrices: kernels and public functions.
#include "kvlmcholeskydecomp.h"

namespace kvlm::cholesky {

KVLM_FOR_ELEMENTS(CHOLESKY_DECOMPOSITIONS, )

} // namespace kvlm::cholesky

using namespace kvlm;
using namespace kvlm::cholesky;

#define ROW(name, T, limits)                                                                                           \
    BATCH_KERNELS(name, CHOLESKY_MA, T, choleskyDecomp)                                                                \
    BATCH_FUNCTIONS(name, CHOLESKY_MA, T, UsualOrder, squaresWork(widthHeight, count), limits)

ROW(kvlmCholeskyDecomp_ma_32f, float, choleskyLimits32f)
ROW(kvlmCholeskyDecomp_ma_64f, double, choleskyLimits64f)
