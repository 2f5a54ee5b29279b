// Frobenius norm of one matrix: kernels and public functions.
#include "kvlmfrobnorm.h"

using namespace kvlm;
using namespace kvlm::frobnorm;

// Settled: one kernel for any element stride.
#define ROW(name, T, plain)                                                                                            \
    KERNEL(own##name, FROBENIUS_M, S, T, plain)                                                                        \
    KERNEL(own##name##_P, FROBENIUS_M, P, T, frobeniusNorm)                                                            \
    OBJECT_FUNCTION_ONE_KERNEL(name, own##name, FROBENIUS_M, S, T, UsualOrder::Standard)                               \
    OBJECT_FUNCTION_P(name, FROBENIUS_M, T, UsualOrder::Pointer)

ROW(kvlmFrobNorm_m_32f, float, lanedNorm)
ROW(kvlmFrobNorm_m_64f, double, frobeniusNorm)
