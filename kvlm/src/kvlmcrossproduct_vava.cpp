// Cross products of an array of vectors and an array of vectors: kernels and public functions.
#include "kvlmcrossproduct.h"

using namespace kvlm;
using namespace kvlm::cross;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, CROSS_VAVA, T, crossProduct)                                                                   \
    BATCH_FUNCTIONS(name, CROSS_VAVA, T, UsualOrder, crossArraysWork(count), vectorLimits<T>)

ROW(kvlmCrossProduct_vava_32f, float)
ROW(kvlmCrossProduct_vava_64f, double)
