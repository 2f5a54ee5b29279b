// Transpose of an array of matrices: kernels and public functions.
#include "kvlmtranspose.h"

using namespace kvlm;
using namespace kvlm::transposition;

#define ROW(name, T)                                                                                                   \
    TRANSPOSE_MEMBER(name, TRANSPOSE_MA, T)                                                                            \
    TRANSPOSE_MEMBER_L(name, TRANSPOSE_MA, T)

ROW(kvlmTranspose_ma_32f, float)
ROW(kvlmTranspose_ma_64f, double)
