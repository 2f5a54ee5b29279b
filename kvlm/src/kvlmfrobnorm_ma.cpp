// Frobenius norms of an array of matrices: kernels and public functions.
#include "kvlmfrobnorm.h"

using namespace kvlm;
using namespace kvlm::frobnorm;

#define ROW(name, T, plain)                                                                                            \
    KERNEL(own##name, FROBENIUS_MA, U, T, plain)                                                                       \
    KERNEL(own##name##_S2, FROBENIUS_MA, S, T, frobeniusNorms)                                                         \
    KERNEL(own##name##_P, FROBENIUS_MA, P, T, frobeniusNorms)                                                          \
    KERNEL(own##name##_L, FROBENIUS_MA, LU, T, frobeniusNorms)                                                         \
    KERNEL(own##name##_LS2, FROBENIUS_MA, LS, T, frobeniusNorms)                                                       \
    BATCH_FUNCTIONS(name, FROBENIUS_MA, T, UsualOrder, frobeniusWork(width, height, count), listApartLimits<T>)

ROW(kvlmFrobNorm_ma_32f, float, lanedNorms)
ROW(kvlmFrobNorm_ma_64f, double, frobeniusNorms)
