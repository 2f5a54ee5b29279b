// Cholesky solver, an array of matrices, each with a right-hand side: kernels and public functions.
#include "kvlmcholeskybacksubst.h"

namespace kvlm::cholesky {

KVLM_FOR_ELEMENTS(CHOLESKY_SOLVERS, )

} // namespace kvlm::cholesky

using namespace kvlm;
using namespace kvlm::cholesky;

#define ROW(name, T, limits)                                                                                           \
    BATCH_KERNELS(name, CHOLESKY_MAVA, T, choleskySolve)                                                               \
    BATCH_FUNCTIONS(name, CHOLESKY_MAVA, T, UsualOrder, systemsWork(widthHeight, count), limits)

ROW(kvlmCholeskyBackSubst_mava_32f, float, choleskySystemsLimits32f)
ROW(kvlmCholeskyBackSubst_mava_64f, double, choleskySystemsLimits64f)
