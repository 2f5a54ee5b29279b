// Sub: an array of vectors and a constant. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// clang-format off
VECTORS_MEMBER(kvlmSub_vac_32f, VAC, float, overVectors<Minus>, UsualOrder, workOfArrayAndOne)
VECTORS_MEMBER(kvlmSub_cva_32f, VAC, float, constantFirst<Minus>, UsualOrder, workOfConstantAndArray)
VECTORS_MEMBER(kvlmSub_vac_64f, VAC, double, overVectors<Minus>, UsualOrder, workOfArrayAndOne)
VECTORS_MEMBER(kvlmSub_cva_64f, VAC, double, constantFirst<Minus>, UsualOrder, workOfConstantAndArray)
// clang-format on
