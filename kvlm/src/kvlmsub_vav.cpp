// Sub: an array of vectors and one vector. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// Settled: vav checks its count after the strides and shifts.
// clang-format off
VECTORS_MEMBER(kvlmSub_vav_32f, VAV, float, overVectors<Minus>, CountAfterStrides, workOfArrayAndOne)
VECTORS_MEMBER(kvlmSub_vva_32f, VVA, float, overVectors<Minus>, UsualOrder, workOfArrayAndOne)
VECTORS_MEMBER(kvlmSub_vav_64f, VAV, double, overVectors<Minus>, CountAfterStrides, workOfArrayAndOne)

// Settled: in the pointer description this one never goes to its driver.
BATCH_KERNELS(kvlmSub_vva_64f, VVA, double, overVectors<Minus>)
BATCH_FUNCTION(kvlmSub_vva_64f, VVA, double, NCSTH, workOfArrayAndOne(len, count), vectorLimits<double>)
OBJECT_FUNCTION_P(kvlmSub_vva_64f, VVA, double, NCSTH)
BATCH_FUNCTION_L(kvlmSub_vva_64f, VVA, double, NCSTH, workOfArrayAndOne(len, count), vectorLimits<double>)
// clang-format on
