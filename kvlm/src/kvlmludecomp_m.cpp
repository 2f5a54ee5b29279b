// LU decomposition of one matrix: the common routines, kernels and public functions.
#include "kvlmludecomp.h"

using namespace kvlm;
using namespace kvlm::lu;

// The common routine of each description, for the orders that are not unrolled.
#define COMMON(name, T)                                                                                                \
    KERNEL(name##_S_com, LU_M, U, T, factorCommon)                                                                     \
    KERNEL(name##_S2_com, LU_M, S, T, factorCommon)                                                                    \
    KERNEL(name##_P_com, LU_M, P, T, factorCommon)
#define ROW(name, T)                                                                                                   \
    OBJECT_KERNELS(name, LU_M, T, luDecomp)                                                                            \
    OBJECT_FUNCTIONS(name, LU_M, T, UsualOrder)

COMMON(ownkvlmLUDecomp_m_32f, float)
COMMON(ownkvlmLUDecomp_m_64f, double)
ROW(kvlmLUDecomp_m_32f, float)
ROW(kvlmLUDecomp_m_64f, double)
