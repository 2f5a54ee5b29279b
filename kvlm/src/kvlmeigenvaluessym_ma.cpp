// Eigenvalues of an array of symmetric matrices: kernels and public functions.
#include "kvlmeigensym_lanes.h"

using namespace kvlm;

#define ROW(name, T, limits)                                                                                           \
    BATCH_KERNELS(name, SYM_VALUES_MA, T, eigenValuesSymBatch)                                                         \
    BATCH_FUNCTIONS(name, SYM_VALUES_MA, T, SizesBeforeCount, symmetricValuesWork(widthHeight, count), limits)

ROW(kvlmEigenValuesSym_ma_32f, float, symmetricValuesLimits32f)
ROW(kvlmEigenValuesSym_ma_64f, double, symmetricValuesLimits)
