// QR solver, one system: kernels and public functions.
#include "kvlmqrbacksubst.h"

using namespace kvlm;
using namespace kvlm::qr;

#define ROW(name, T)                                                                                                   \
    OBJECT_KERNELS(name, QR_MV, T, qrSolve)                                                                            \
    OBJECT_FUNCTIONS(name, QR_MV, T, MatchLast)

ROW(kvlmQRBackSubst_mv_32f, float)
ROW(kvlmQRBackSubst_mv_64f, double)
