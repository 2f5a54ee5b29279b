// LU decomposition of an array of matrices: drivers.
#include "kvlmludecomp.h"

using namespace kvlm;
using namespace kvlm::lu;

DRIVERS(kvlmLUDecomp_ma_32f, LU_MA, float)
DRIVERS(kvlmLUDecomp_ma_64f, LU_MA, double)
