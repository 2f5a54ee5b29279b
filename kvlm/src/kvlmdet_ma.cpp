// Determinants of an array of matrices: kernels and public functions.
#include "kvlmdet.h"

using namespace kvlm;
using namespace kvlm::det;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, DET_MA, T, detBatch)                                                                           \
    BATCH_FUNCTIONS(name, DET_MA, T, UsualOrder, detWork(widthHeight, count), listApartLimits<T>)

ROW(kvlmDet_ma_32f, float)
ROW(kvlmDet_ma_64f, double)
