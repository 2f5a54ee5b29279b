// Inverses of an array of matrices: kernels and public functions.
#include "kvlminvert.h"

namespace kvlm::inversion {

KVLM_FOR_ELEMENTS(INVERSES, )

} // namespace kvlm::inversion

using namespace kvlm;
using namespace kvlm::inversion;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, INVERT_MA, T, inverse)                                                                         \
    BATCH_FUNCTIONS(name, INVERT_MA, T, UsualOrder, invertWork(widthHeight, count), listApartLimits<T>)

ROW(kvlmInvert_ma_32f, float)
ROW(kvlmInvert_ma_64f, double)
