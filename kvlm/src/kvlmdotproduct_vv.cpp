// Dot product of one vector and one vector: kernels and public functions.
#include "kvlmdotproduct.h"

using namespace kvlm;
using namespace kvlm::dot;

#define ROW(name, T, plain)                                                                                            \
    KERNEL(own##name, DOT_VV, U, T, dotProduct<plain>)                                                                 \
    KERNEL(own##name##_S2, DOT_VV, S, T, dotProduct<sequential>)                                                       \
    KERNEL(own##name##_P, DOT_VV, P, T, dotProduct<sequential>)                                                        \
    OBJECT_FUNCTIONS(name, DOT_VV, T, UsualOrder)

ROW(kvlmDotProduct_vv_32f, float, dotVector32f)
ROW(kvlmDotProduct_vv_64f, double, dotVector64f)
