// Eigenvalues and vectors of an array of symmetric matrices: kernels and public functions.
#include "kvlmeigensym_lanes.h"

using namespace kvlm;
using namespace kvlm::eigensym;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, SYM_VECTORS_MA, T, eigenVectorsSymBatch)                                                       \
    BATCH_FUNCTIONS(name, SYM_VECTORS_MA, T, SizesBeforeCount, symmetricVectorsWork(widthHeight, count),               \
                    symmetricVectorsLimits)

ROW(kvlmEigenValuesVectorsSym_ma_32f, float)
ROW(kvlmEigenValuesVectorsSym_ma_64f, double)
