// Determinant of order 5 in extended precision.
#include "kvlmdet_extended.h"

using namespace kvlm;
using namespace kvlm::det;

DET_EXTENDED(float, 32f, 5)
{
    return extendedDeterminant<5>(src, srcRowStride, dst);
}

DET_EXTENDED(double, 64f, 5)
{
    return extendedDeterminant<5>(src, srcRowStride, dst);
}
