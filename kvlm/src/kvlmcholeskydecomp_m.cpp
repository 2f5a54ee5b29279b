// Cholesky decomposition of one matrix: kernels and public functions.
#include "kvlmcholeskydecomp.h"

using namespace kvlm;
using namespace kvlm::cholesky;

#define ROW(name, T)                                                                                                   \
    OBJECT_KERNELS(name, CHOLESKY_M, T, choleskyDecomp)                                                                \
    OBJECT_FUNCTIONS(name, CHOLESKY_M, T, UsualOrder)

ROW(kvlmCholeskyDecomp_m_32f, float)
ROW(kvlmCholeskyDecomp_m_64f, double)
