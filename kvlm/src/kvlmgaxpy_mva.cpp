// Gaxpy: one matrix and arrays of vectors, the third operand an array or single. Kernels and public functions.
#include "kvlmgaxpy.h"

using namespace kvlm;
using namespace kvlm::mul;

#define ROW(name, CLASS, T, work)                                                                                      \
    GAXPY_BATCH_KERNELS(name, CLASS, T)                                                                                \
    BATCH_FUNCTIONS(name, CLASS, T, MatchAfterSizes, work(src2Len, src3Len, count), gaxpyLimits)

ROW(kvlmGaxpy_mva_32f, GAXPY_MVA, float, gaxpyWork)
ROW(kvlmGaxpy_mvav_32f, GAXPY_MVAV, float, gaxpyWorkWithOne)
ROW(kvlmGaxpy_mva_64f, GAXPY_MVA, double, gaxpyWork)
ROW(kvlmGaxpy_mvav_64f, GAXPY_MVAV, double, gaxpyWorkWithOne)
