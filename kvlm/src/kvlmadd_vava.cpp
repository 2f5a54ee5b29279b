// Add: an array of vectors and an array of vectors. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// clang-format off
VECTORS_MEMBER(kvlmAdd_vava_32f, VAVA, float, overVectors<Plus>, UsualOrder, workOfVectorArrays)
VECTORS_MEMBER(kvlmAdd_vava_64f, VAVA, double, overVectors<Plus>, UsualOrder, workOfVectorArrays)
// clang-format on
