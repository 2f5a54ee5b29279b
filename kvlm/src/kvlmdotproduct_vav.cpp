// Dot products of an array of vectors and one vector: kernels and public functions.
#include "kvlmdotproduct.h"

using namespace kvlm;

#define ROW(name, T, plain)                                                                                            \
    KERNEL(own##name, DOT_VAV, U, T, dotProduct<plain>)                                                                \
    KERNEL(own##name##_S2, DOT_VAV, S, T, dotProduct<sequentialOne>)                                                   \
    KERNEL(own##name##_P, DOT_VAV, P, T, dotProduct<sequential>)                                                       \
    KERNEL(own##name##_L, DOT_VAV, LU, T, dotProduct<plain>)                                                           \
    KERNEL(own##name##_LS2, DOT_VAV, LS, T, dotProduct<sequential>)                                                    \
    BATCH_FUNCTIONS(name, DOT_VAV, T, UsualOrder, dotWithOneWork(len, count), dotLimits<T>)

ROW(kvlmDotProduct_vav_32f, float, dotWithOne32f)
ROW(kvlmDotProduct_vav_64f, double, dotWithOne64f)
