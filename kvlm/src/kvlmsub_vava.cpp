// Sub: an array of vectors and an array of vectors. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// clang-format off
VECTORS_MEMBER(kvlmSub_vava_32f, VAVA, float, overVectors<Minus>, UsualOrder, workOfVectorArrays)
VECTORS_MEMBER(kvlmSub_vava_64f, VAVA, double, overVectors<Minus>, UsualOrder, workOfVectorArrays)
// clang-format on
