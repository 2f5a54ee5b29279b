// QR solver, one matrix and an array of right-hand sides: kernels and public functions.
#include "kvlmqrbacksubst.h"

using namespace kvlm;
using namespace kvlm::qr;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, QR_MVA, T, qrSolve)                                                                            \
    BATCH_FUNCTIONS(name, QR_MVA, T, MatchLast, qrVectorsWork(width, height, count), qrSolveLimits)

ROW(kvlmQRBackSubst_mva_32f, float)
ROW(kvlmQRBackSubst_mva_64f, double)
