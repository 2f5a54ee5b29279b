// Determinant of order 6 in extended precision.
#include "kvlmdet_extended.h"

using namespace kvlm;
using namespace kvlm::det;

DET_EXTENDED(float, 32f, 6)
{
    return extendedDeterminant<6>(src, srcRowStride, dst);
}

DET_EXTENDED(double, 64f, 6)
{
    return extendedDeterminant<6>(src, srcRowStride, dst);
}
