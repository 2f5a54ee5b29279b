// QR solver, an array of matrices, each with a right-hand side: drivers.
#include "kvlmqrbacksubst.h"

using namespace kvlm;
using namespace kvlm::qr;

DRIVERS(kvlmQRBackSubst_mava_32f, QR_MAVA, float)
DRIVERS(kvlmQRBackSubst_mava_64f, QR_MAVA, double)
