// Gaxpy: one matrix and arrays of vectors. Drivers: standard, _P and _L of each member.
#include "kvlmgaxpy.h"

using namespace kvlm;
using namespace kvlm::mul;

DRIVERS(kvlmGaxpy_mva_32f, GAXPY_MVA, float)
DRIVERS(kvlmGaxpy_mvav_32f, GAXPY_MVAV, float)
DRIVERS(kvlmGaxpy_mva_64f, GAXPY_MVA, double)
DRIVERS(kvlmGaxpy_mvav_64f, GAXPY_MVAV, double)
