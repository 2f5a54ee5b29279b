// QR decomposition of an array of matrices: kernels and public functions.
#include "kvlmqrdecomp.h"

namespace kvlm::qr {

KVLM_FOR_ELEMENTS(QR_DECOMPOSITIONS, )

} // namespace kvlm::qr

using namespace kvlm;
using namespace kvlm::qr;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, QR_MA, T, qrDecomp)                                                                            \
    BATCH_FUNCTIONS(name, QR_MA, T, MatchLast, qrWork(width, height, count), qrLimits)

ROW(kvlmQRDecomp_ma_32f, float)
ROW(kvlmQRDecomp_ma_64f, double)
