// Traces of an array of matrices: drivers.
#include "kvlmtrace.h"

using namespace kvlm;
using namespace kvlm::traces;

DRIVERS(kvlmTrace_ma_32f, TRACE_MA, float)
DRIVERS(kvlmTrace_ma_64f, TRACE_MA, double)
