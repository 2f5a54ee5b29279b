// QR decomposition of one matrix: kernels and public functions.
#include "kvlmqrdecomp.h"

using namespace kvlm;
using namespace kvlm::qr;

#define ROW(name, T)                                                                                                   \
    OBJECT_KERNELS(name, QR_M, T, qrDecomp)                                                                            \
    OBJECT_FUNCTIONS(name, QR_M, T, MatchLast)

ROW(kvlmQRDecomp_m_32f, float)
ROW(kvlmQRDecomp_m_64f, double)
