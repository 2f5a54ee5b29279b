// QR decomposition of an array of matrices: drivers.
#include "kvlmqrdecomp.h"

using namespace kvlm;
using namespace kvlm::qr;

DRIVERS(kvlmQRDecomp_ma_32f, QR_MA, float)
DRIVERS(kvlmQRDecomp_ma_64f, QR_MA, double)
