// Determinant of order 3 in extended precision. The two types differ in the order of their terms: settled.
#include "kvlmdet_extended.h"

using namespace kvlm;
using namespace kvlm::det;

DET_EXTENDED(float, 32f, 3)
{
    const Extended<float, 3> a(src, srcRowStride);
    put(dst, static_cast<float>((a(0, 1) * (a(2, 0) * a(1, 2) - a(1, 0) * a(2, 2)) +
                                 a(0, 2) * (a(2, 1) * a(1, 0) - a(2, 0) * a(1, 1))) +
                                a(0, 0) * (a(1, 1) * a(2, 2) - a(1, 2) * a(2, 1))));
    return kvlOk;
}

DET_EXTENDED(double, 64f, 3)
{
    const Extended<double, 3> a(src, srcRowStride);
    put(dst, static_cast<double>((a(2, 0) * (a(1, 2) * a(0, 1) - a(1, 1) * a(0, 2)) +
                                  a(0, 0) * (a(1, 1) * a(2, 2) - a(1, 2) * a(2, 1))) +
                                 a(1, 0) * (a(2, 1) * a(0, 2) - a(2, 2) * a(0, 1))));
    return kvlOk;
}
