// Add: one matrix and one matrix. Kernels and public functions.
#include "kvlmaddsub.h"

using namespace kvlm;
using namespace kvlm::addsub;

#define ROW(name, T, A, B) OBJECT_MEMBER(name, T, Plus, A, B)

// clang-format off
//  member          element  A    B
ROW(kvlmAdd_mm_32f, float,  'm', 'm')
ROW(kvlmAdd_tm_32f, float,  't', 'm')
ROW(kvlmAdd_tt_32f, float,  't', 't')
ROW(kvlmAdd_mm_64f, double, 'm', 'm')
ROW(kvlmAdd_tm_64f, double, 't', 'm')
ROW(kvlmAdd_tt_64f, double, 't', 't')
// clang-format on
