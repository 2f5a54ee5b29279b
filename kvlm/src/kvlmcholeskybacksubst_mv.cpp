// Cholesky solver, one system: kernels and public functions.
#include "kvlmcholeskybacksubst.h"

using namespace kvlm;
using namespace kvlm::cholesky;

#define ROW(name, T)                                                                                                   \
    OBJECT_KERNELS(name, CHOLESKY_MV, T, choleskySolve)                                                                \
    OBJECT_FUNCTIONS(name, CHOLESKY_MV, T, UsualOrder)

ROW(kvlmCholeskyBackSubst_mv_32f, float)
ROW(kvlmCholeskyBackSubst_mv_64f, double)
