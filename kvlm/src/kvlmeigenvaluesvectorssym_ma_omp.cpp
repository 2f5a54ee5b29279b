// Eigenvalues and vectors of an array of symmetric matrices: drivers.
#include "kvlmeigensym.h"

using namespace kvlm;
using namespace kvlm::eigensym;

DRIVERS(kvlmEigenValuesVectorsSym_ma_32f, SYM_VECTORS_MA, float)
DRIVERS(kvlmEigenValuesVectorsSym_ma_64f, SYM_VECTORS_MA, double)
