// Trace of one matrix: kernels and public functions.
#include "kvlmtrace.h"

using namespace kvlm;
using namespace kvlm::traces;

#define ROW(name, T)                                                                                                   \
    OBJECT_KERNELS(name, TRACE_M, T, trace)                                                                            \
    OBJECT_FUNCTIONS(name, TRACE_M, T, UsualOrder)

ROW(kvlmTrace_m_32f, float)
ROW(kvlmTrace_m_64f, double)
