// Euclidean norms of an array of vectors: kernels and public functions.
#include "kvlmdotproduct.h"

using namespace kvlm;
using namespace kvlm::dot;

// Settled: at 32f, lengths 3 to 6 of adjacent elements have the rough root.
#define ROW(name, T, plain, ShortRoot)                                                                                 \
    KERNEL(own##name, NORM_VA, U, T, (norm<plain, ShortRoot>))                                                         \
    KERNEL(own##name##_S2, NORM_VA, S, T, (norm<sequential, ExactRoot>))                                               \
    KERNEL(own##name##_P, NORM_VA, P, T, (norm<sequential, ExactRoot>))                                                \
    KERNEL(own##name##_L, NORM_VA, LU, T, (norm<plain, ShortRoot>))                                                    \
    KERNEL(own##name##_LS2, NORM_VA, LS, T, (norm<sequential, ExactRoot>))                                             \
    BATCH_FUNCTIONS(name, NORM_VA, T, UsualOrder, normWork(len, count), normLimits)

ROW(kvlmL2Norm_va_32f, float, norm32f, RoughRoot)
ROW(kvlmL2Norm_va_64f, double, norm64f, ExactRoot)
