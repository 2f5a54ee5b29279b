// Sub: one matrix minus one matrix. Kernels and public functions.
#include "kvlmaddsub.h"

using namespace kvlm;
using namespace kvlm::addsub;

#define ROW(name, T, A, B) OBJECT_MEMBER(name, T, Minus, A, B)

// clang-format off
//  member          element  A    B
ROW(kvlmSub_mm_32f, float,  'm', 'm')
ROW(kvlmSub_tm_32f, float,  't', 'm')
ROW(kvlmSub_mt_32f, float,  'm', 't')
ROW(kvlmSub_tt_32f, float,  't', 't')
ROW(kvlmSub_mm_64f, double, 'm', 'm')
ROW(kvlmSub_tm_64f, double, 't', 'm')
ROW(kvlmSub_mt_64f, double, 'm', 't')
ROW(kvlmSub_tt_64f, double, 't', 't')
// clang-format on
