// QR solver, one matrix and an array of right-hand sides: drivers.
#include "kvlmqrbacksubst.h"

using namespace kvlm;
using namespace kvlm::qr;

DRIVERS(kvlmQRBackSubst_mva_32f, QR_MVA, float)
DRIVERS(kvlmQRBackSubst_mva_64f, QR_MVA, double)
