// Cholesky solver, one matrix and an array of right-hand sides: kernels and public functions.
#include "kvlmcholeskybacksubst.h"

using namespace kvlm;
using namespace kvlm::cholesky;

#define ROW(name, T, limits)                                                                                           \
    BATCH_KERNELS(name, CHOLESKY_MVA, T, choleskySolve)                                                                \
    BATCH_FUNCTIONS(name, CHOLESKY_MVA, T, SizesLastInList, vectorsWork(widthHeight, count), limits)

ROW(kvlmCholeskyBackSubst_mva_32f, float, choleskyVectorsLimits32f)
ROW(kvlmCholeskyBackSubst_mva_64f, double, choleskyVectorsLimits64f)
