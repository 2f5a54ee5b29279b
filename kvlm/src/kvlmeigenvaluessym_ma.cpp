// Eigenvalues of an array of symmetric matrices: kernels and public functions.
#include "kvlmeigensym_lanes.h"

using namespace kvlm;
using namespace kvlm::eigensym;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, SYM_VALUES_MA, T, eigenValuesSymBatch)                                                         \
    BATCH_FUNCTIONS(name, SYM_VALUES_MA, T, SizesBeforeCount, symmetricValuesWork(widthHeight, count),                 \
                    listApartLimits<T>)

ROW(kvlmEigenValuesSym_ma_32f, float)
ROW(kvlmEigenValuesSym_ma_64f, double)
