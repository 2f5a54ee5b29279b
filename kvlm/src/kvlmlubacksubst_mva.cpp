// LU solver, one matrix and an array of right-hand sides: kernels and public functions.
#include "kvlmlubacksubst.h"

using namespace kvlm;
using namespace kvlm::lu;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, LU_MVA, T, luSolve)                                                                            \
    BATCH_FUNCTIONS(name, LU_MVA, T, UsualOrder, vectorsWork(widthHeight, count), luSolveLimits)

ROW(kvlmLUBackSubst_mva_32f, float)
ROW(kvlmLUBackSubst_mva_64f, double)
