// Cross products of an array of vectors and one vector: kernels and public functions.
#include "kvlmcrossproduct.h"

using namespace kvlm;
using namespace kvlm::cross;

#define ROW(name, CLASS, T, orders)                                                                                    \
    BATCH_KERNELS(name, CLASS, T, crossProduct)                                                                        \
    BATCH_FUNCTIONS(name, CLASS, T, orders, crossWithOneWork(count), vectorLimits<T>)

// Settled: vav checks its count after the strides and shifts.
ROW(kvlmCrossProduct_vav_32f, CROSS_VAV, float, CountAfterStrides)
ROW(kvlmCrossProduct_vva_32f, CROSS_VVA, float, UsualOrder)
ROW(kvlmCrossProduct_vav_64f, CROSS_VAV, double, CountAfterStrides)

// Settled: in the pointer description this one never goes to its driver.
BATCH_KERNELS(kvlmCrossProduct_vva_64f, CROSS_VVA, double, crossProduct)
BATCH_FUNCTION(kvlmCrossProduct_vva_64f, CROSS_VVA, double, NCSTH, crossWithOneWork(count), vectorLimits<double>)
OBJECT_FUNCTION_P(kvlmCrossProduct_vva_64f, CROSS_VVA, double, NCSTH)
BATCH_FUNCTION_L(kvlmCrossProduct_vva_64f, CROSS_VVA, double, NCSTH, crossWithOneWork(count), vectorLimits<double>)
