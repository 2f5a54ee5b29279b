// Cross product of one vector and one vector: kernels and public functions.
#include "kvlmcrossproduct.h"

using namespace kvlm;
using namespace kvlm::cross;

#define ROW(name, T)                                                                                                   \
    OBJECT_KERNELS(name, CROSS_VV, T, crossProduct)                                                                    \
    OBJECT_FUNCTIONS(name, CROSS_VV, T, UsualOrder)

ROW(kvlmCrossProduct_vv_32f, float)
ROW(kvlmCrossProduct_vv_64f, double)
