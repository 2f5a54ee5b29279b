// Traces of an array of matrices: kernels and public functions.
#include "kvlmtrace.h"

using namespace kvlm;
using namespace kvlm::traces;

#define ROW(name, T)                                                                                                   \
    BATCH_KERNELS(name, TRACE_MA, T, trace)                                                                            \
    BATCH_FUNCTIONS(name, TRACE_MA, T, UsualOrder, traceWork(widthHeight, count), listApartLimits<T>)

ROW(kvlmTrace_ma_32f, float)
ROW(kvlmTrace_ma_64f, double)
