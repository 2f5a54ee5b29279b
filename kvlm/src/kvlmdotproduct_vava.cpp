// Dot products of an array of vectors and an array of vectors: kernels and public functions.
#include "kvlmdotproduct.h"

using namespace kvlm;

#define ROW(name, T, plain)                                                                                            \
    KERNEL(own##name, DOT_VAVA, U, T, dotProduct<plain>)                                                               \
    KERNEL(own##name##_S2, DOT_VAVA, S, T, dotProduct<sequential>)                                                     \
    KERNEL(own##name##_P, DOT_VAVA, P, T, dotProduct<sequential>)                                                      \
    KERNEL(own##name##_L, DOT_VAVA, LU, T, dotProduct<plain>)                                                          \
    KERNEL(own##name##_LS2, DOT_VAVA, LS, T, dotProduct<sequential>)                                                   \
    BATCH_FUNCTIONS(name, DOT_VAVA, T, UsualOrder, dotArraysWork(len, count), dotLimits<T>)

ROW(kvlmDotProduct_vava_32f, float, dotArrays32f)
ROW(kvlmDotProduct_vava_64f, double, dotArrays64f)
