// Determinant of order 4 in extended precision.
#include "kvlmdet_extended.h"

using namespace kvlm;
using namespace kvlm::det;

namespace {

template <class T>
KVLM_INLINE KvlStatus extended4x4(const T *src, int rowStride, T *dst)
{
    const Extended<T, 4> a(src, rowStride);
    // Settled: one of the six minors of the last two rows is kept in memory and so rounded.
    const long double m23 = a(2, 2) * a(3, 3) - a(3, 2) * a(2, 3), m13 = a(2, 1) * a(3, 3) - a(3, 1) * a(2, 3),
                      m12 = a(3, 2) * a(2, 1) - a(3, 1) * a(2, 2), m03 = a(2, 0) * a(3, 3) - a(3, 0) * a(2, 3),
                      m02 = a(2, 0) * a(3, 2) - a(2, 2) * a(3, 0);
    const T m01 = static_cast<T>(a(2, 0) * a(3, 1) - a(2, 1) * a(3, 0));
    put(dst, static_cast<T>(a(0, 0) * (a(1, 1) * m23 - a(1, 2) * m13 + a(1, 3) * m12) -
                            a(0, 1) * (a(1, 0) * m23 - a(1, 2) * m03 + a(1, 3) * m02) +
                            a(0, 2) * (a(1, 0) * m13 - a(1, 1) * m03 + a(1, 3) * m01) -
                            a(0, 3) * (a(1, 0) * m12 - a(1, 1) * m02 + a(1, 2) * m01)));
    return kvlOk;
}

} // namespace

DET_EXTENDED(float, 32f, 4)
{
    return extended4x4(src, srcRowStride, dst);
}

DET_EXTENDED(double, 64f, 4)
{
    return extended4x4(src, srcRowStride, dst);
}
