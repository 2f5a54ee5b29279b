// The homogeneous transform of points, one in each lane.
#ifndef KVLMAFFINETRANSFORM3DH_H
#define KVLMAFFINETRANSFORM3DH_H

#include "frame/rows.h"
#include "lanes/batches.h"

#include <float.h>

namespace kvlm::affine {

using Matrix = OfAllObjects<float, 4, 4>;

// Row r of the matrix times the point. Both orders are settled, one for adjacent elements, one for any.
template <bool Adjacent, class V>
KVLM_INLINE V homogeneous(const Matrix &matrix, int r, const V (&p)[3])
{
    const auto a = [&](int c) KVLM_INLINED { return matrix.at<V>(r, c); };
    if constexpr (Adjacent)
        return (a(0) * p[0] + a(1) * p[1]) + (a(2) * p[2] + a(3));
    else
        return ((a(0) * p[0] + a(3)) + a(1) * p[1]) + a(2) * p[2];
}

// Returns in which lanes w is zero to working precision. NaN is not.
template <bool Adjacent, class V>
KVLM_INLINE V transformed(const Matrix &a, const V (&p)[3], V (&out)[3])
{
    const V w = homogeneous<Adjacent>(a, 3, p), zero = atLeast(V::all(FLT_MIN), magnitude(w)), q = V::all(1) / w;
    for (int r = 0; r < 3; ++r)
        out[r] = without(homogeneous<Adjacent>(a, r, p) * q, zero) | (V::all(FLT_MAX) & zero);
    return zero;
}

template <bool Adjacent>
KVLM_NOINLINE KvlStatus transformObjects(const Objects<const float> &matrix, const Objects<const float> &points,
                                         const Objects<float> &d, int count)
{
    const Matrix a(matrix);
    bool hasZero = false;
    const auto one = [&](ptrdiff_t i) KVLM_INLINED {
        Lanes<float> p[1][3], out[1][3];
        loadObject(points, i, p);
        hasZero |= any(transformed<Adjacent>(a, p[0], out[0]));
        storeObject(d, i, out);
        return KvlStatus(kvlOk); // the points after it are transformed all the same
    };
    groupsByLayout(
        AnyGroupApart<float>(d, 1, 3), count,
        [&](ptrdiff_t i, auto number, const auto &source, const auto &result) KVLM_INLINED {
            using V = typename decltype(number)::Number;
            V p[3], out[3];
            source.move(i, p);
            hasZero |= any(transformed<Adjacent>(a, p, out));
            result.move(i, out);
            return true;
        },
        one, GroupSource<float, 1, 3>(points), GroupResult<float, 1, 3>(d));
    return hasZero ? kvlErrZeroDivisor : kvlOk;
}

template <class A, class P, class D>
KVLM_INLINE KvlStatus transformPoints(const A &src1, const P &src2, const D &dst, Count count)
{
    return transformObjects<hasAdjacentRows<D>()>(objectsOf(src1, 4), objectsOf(src2, 3), objectsOf(dst, 3),
                                                  count.count);
}

} // namespace kvlm::affine

#define AFFINE(X, D, T) X##_M_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_COUNT

#endif
