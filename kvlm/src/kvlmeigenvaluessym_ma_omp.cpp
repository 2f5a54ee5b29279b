// Eigenvalues of an array of symmetric matrices: drivers.
#include "kvlmeigensym.h"

using namespace kvlm;
using namespace kvlm::eigensym;

DRIVERS(kvlmEigenValuesSym_ma_32f, SYM_VALUES_MA, float)
DRIVERS(kvlmEigenValuesSym_ma_64f, SYM_VALUES_MA, double)
