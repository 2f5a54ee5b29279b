// LU solver, one system: kernels and public functions.
#include "kvlmlubacksubst.h"

using namespace kvlm;
using namespace kvlm::lu;

#define ROW(name, T)                                                                                                   \
    OBJECT_KERNELS(name, LU_MV, T, luSolve)                                                                            \
    OBJECT_FUNCTIONS(name, LU_MV, T, UsualOrder)

ROW(kvlmLUBackSubst_mv_32f, float)
ROW(kvlmLUBackSubst_mv_64f, double)
