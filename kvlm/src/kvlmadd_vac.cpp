// Add: an array of vectors and a constant. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// clang-format off
VECTORS_MEMBER(kvlmAdd_vac_32f, VAC, float, overVectors<Plus>, UsualOrder, workOfArrayAndOne)
VECTORS_MEMBER(kvlmAdd_vac_64f, VAC, double, overVectors<Plus>, UsualOrder, workOfArrayAndOne)
// clang-format on
