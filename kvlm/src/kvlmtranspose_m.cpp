// Transpose of one matrix: kernels and public functions.
#include "kvlmtranspose.h"

using namespace kvlm;
using namespace kvlm::transposition;

TRANSPOSE_MEMBER(kvlmTranspose_m_32f, TRANSPOSE_M, float)
TRANSPOSE_MEMBER(kvlmTranspose_m_64f, TRANSPOSE_M, double)
