// LU decomposition of an array of matrices: kernels and public functions.
#include "kvlmludecomp.h"

namespace kvlm::lu {

KVLM_FOR_ELEMENTS(LU_DECOMPOSITIONS, )

} // namespace kvlm::lu

using namespace kvlm;
using namespace kvlm::lu;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, LU_MA, T, luDecomp)                                                                            \
    BATCH_FUNCTIONS(name, LU_MA, T, UsualOrder, squaresWork(widthHeight, count), listApartLimits<T>)

ROW(kvlmLUDecomp_ma_32f, float)
ROW(kvlmLUDecomp_ma_64f, double)
