// Inverses of an array of matrices: drivers.
#include "kvlminvert.h"

using namespace kvlm;
using namespace kvlm::inversion;

DRIVERS(kvlmInvert_ma_32f, INVERT_MA, float)
DRIVERS(kvlmInvert_ma_64f, INVERT_MA, double)
