// Gaxpy: one matrix and single vectors. Kernels and public functions.
#include "kvlmgaxpy.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, T)                                                                                                   \
    GAXPY_OBJECT_KERNELS(name, GAXPY_MV, T)                                                                            \
    OBJECT_FUNCTIONS(name, GAXPY_MV, T, MatchAfterSizes)

ROW(kvlmGaxpy_mv_32f, float)
ROW(kvlmGaxpy_mv_64f, double)
