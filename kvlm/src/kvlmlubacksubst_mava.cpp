// LU solver, an array of matrices, each with a right-hand side: kernels and public functions.
#include "kvlmlubacksubst.h"

namespace kvlm::lu {

KVLM_FOR_ELEMENTS(LU_SOLVERS, )

} // namespace kvlm::lu

using namespace kvlm;
using namespace kvlm::lu;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, LU_MAVA, T, luSolve)                                                                           \
    BATCH_FUNCTIONS(name, LU_MAVA, T, UsualOrder, systemsWork(widthHeight, count), luSolveLimits)

ROW(kvlmLUBackSubst_mava_32f, float)
ROW(kvlmLUBackSubst_mava_64f, double)
