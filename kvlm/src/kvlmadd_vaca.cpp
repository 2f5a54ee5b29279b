// Add: an array of vectors and an array of constants. Kernels and public functions.
#include "kvlmaddsub_vectors.h"

using namespace kvlm;
using namespace kvlm::addsub;

// clang-format off
BATCH_KERNELS(kvlmAdd_vaca_32f, VACA, float, withEach<Plus>)
BATCH_FUNCTION(kvlmAdd_vaca_32f, VACA, float, NCSTH, workOfArrayAndConstants(len, count), vectorLimits<float>)
BATCH_FUNCTION_L(kvlmAdd_vaca_32f, VACA, float, NCSTH, workOfArrayAndConstants(len, count), vectorLimits<float>)
VECTORS_MEMBER(kvlmAdd_vaca_64f, VACA, double, withEach<Plus>, UsualOrder, workOfArrayAndConstants)
// clang-format on

// Settled: in the pointer description, at 32f, srcObjStride is not checked.
FUNCTION(ownOMP_kvlmAdd_vaca_32f_P, VACA(ARG, P, float));
FUNCTION(kvlmAdd_vaca_32f_P, VACA(ARG, P, float))
{
    return enterBatchOneKernel<NCSTH>(workOfArrayAndConstants(len, count), vectorLimits<float>.pointer,
                                      CALL(ownOMP_kvlmAdd_vaca_32f_P, VACA, P, float),
                                      CALL(ownkvlmAdd_vaca_32f_P, VACA, P, float),
                                      StridesUnchecked(PART_VA_P(const float, src)), PART_CA_P(const float, val),
                                      PART_VA_P(float, dst), PART_LENGTH(len), PART_COUNT);
}
