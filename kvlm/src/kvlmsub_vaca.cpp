// Sub: an array of vectors and an array of constants. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// clang-format off
VECTORS_MEMBER(kvlmSub_vaca_32f, VACA, float, withEach<Minus>, UsualOrder, workOfArrayAndConstants)
VECTORS_MEMBER(kvlmSub_cava_32f, VACA, float, eachFirst<Minus>, UsualOrder, workOfArrayAndConstants)
VECTORS_MEMBER(kvlmSub_vaca_64f, VACA, double, withEach<Minus>, UsualOrder, workOfArrayAndConstants)
VECTORS_MEMBER(kvlmSub_cava_64f, VACA, double, eachFirst<Minus>, UsualOrder, workOfArrayAndConstants)
// clang-format on
