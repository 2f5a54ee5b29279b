// QR solver, an array of matrices, each with a right-hand side: kernels and public functions.
#include "kvlmqrbacksubst.h"

using namespace kvlm;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, QR_MAVA, T, qrSolveBatch)                                                                      \
    BATCH_FUNCTIONS(name, QR_MAVA, T, MatchLast, qrSystemsWork(width, height, count), qrSolveLimits)

ROW(kvlmQRBackSubst_mava_32f, float)
ROW(kvlmQRBackSubst_mava_64f, double)
