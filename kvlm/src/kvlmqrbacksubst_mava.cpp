// QR solver, an array of matrices, each with a right-hand side: kernels and public functions.
#include "kvlmqrbacksubst.h"

namespace kvlm::qr {

KVLM_FOR_ELEMENTS(QR_SOLVERS, )

} // namespace kvlm::qr

using namespace kvlm;
using namespace kvlm::qr;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, QR_MAVA, T, qrSolve)                                                                           \
    BATCH_FUNCTIONS(name, QR_MAVA, T, MatchLast, qrSystemsWork(width, height, count), qrSolveLimits)

ROW(kvlmQRBackSubst_mava_32f, float)
ROW(kvlmQRBackSubst_mava_64f, double)
