// Sub: one vector and an array of constants. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// Settled: in the pointer description of cav, at 32f, shifts are not checked.
// clang-format off
VECTORS_MEMBER(kvlmSub_vca_32f, VCA, float, withEach<Minus>, UsualOrder, workOfOneAndConstants)
VECTORS_MEMBER(kvlmSub_cav_32f, VCA, float, eachFirst<Minus>, ShiftsUnchecked, workOfOneAndConstants)
VECTORS_MEMBER(kvlmSub_vca_64f, VCA, double, withEach<Minus>, UsualOrder, workOfOneAndConstants)
VECTORS_MEMBER(kvlmSub_cav_64f, VCA, double, eachFirst<Minus>, UsualOrder, workOfOneAndConstants)
// clang-format on
