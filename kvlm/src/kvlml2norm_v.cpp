// Euclidean norm of one vector: kernels and public functions.
#include "kvlmdotproduct.h"

using namespace kvlm;
using namespace kvlm::dot;

// Settled: at 32f, lengths 3 to 6 of adjacent elements have the rough root.
#define ROW(name, T, plain, ShortRoot)                                                                                 \
    KERNEL(own##name, NORM_V, U, T, (norm<plain, ShortRoot>))                                                          \
    KERNEL(own##name##_S2, NORM_V, S, T, (norm<sequential, ExactRoot>))                                                \
    KERNEL(own##name##_P, NORM_V, P, T, (norm<sequential, ExactRoot>))                                                 \
    OBJECT_FUNCTIONS(name, NORM_V, T, UsualOrder)

ROW(kvlmL2Norm_v_32f, float, norm32f, RoughRoot)
ROW(kvlmL2Norm_v_64f, double, norm64f, ExactRoot)
