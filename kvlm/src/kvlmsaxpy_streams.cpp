// Adjacent vectors as one stream of elements, beside a vector that repeats: `block` holds one period of it. No function
// of the library calls these.
#include "kvlmlcomb.h"
#include "loops/sums.h"

using namespace kvlm;
using namespace kvlm::lcomb;

namespace {

// Element k takes block[k mod Period]. Up to the first multiple of 16 bytes in dst the stream goes element by element,
// and all of it if there is none.
template <int Period, class Op, class T>
KVLM_INLINE void stream(Op op, const T *block, const T *src, T *dst, int length)
{
    using V = Lanes<T>;
    const int lead = leadOf(dst);
    int k = 0;
    const auto until = [&](int end) KVLM_INLINED {
        for (; k < end; ++k)
            put(dst + k, op(get(src + k), get(block + k % Period)));
    };
    until(lead < 0 || lead > length ? length : lead);
    T period[Period];
    for (int j = 0; j < Period; ++j)
        period[j] = get(block + (k + j) % Period);
    for (; k + Period <= length; k += Period)
#pragma GCC unroll 3
        for (int j = 0; j < Period; j += V::count)
            op(V::load(src + k + j), V::load(period + j)).store(dst + k + j);
    until(length);
}

} // namespace

// dst = src*val + block: the period is that of the single src2.
#define VAV_STREAM(T, type, period)                                                                                    \
    FUNCTION(ownkvlmSaxpy_vav_##type##_##period, const T *block, const T *src, T val, T *dst, int length)              \
    {                                                                                                                  \
        stream<period>(ScaledPlus<T>{val}, block, src, dst, length);                                                   \
        return kvlOk;                                                                                                  \
    }
// dst = block + src: the period is that of the finished products of the single src1.
#define VVA_STREAM(T, type, period)                                                                                    \
    FUNCTION(ownkvlmSaxpy_vva_##type##_##period, const T *block, const T *src, T *dst, int length)                     \
    {                                                                                                                  \
        stream<period>(Plus(), block, src, dst, length);                                                               \
        return kvlOk;                                                                                                  \
    }

VAV_STREAM(float, 32f, 4)
VAV_STREAM(float, 32f, 12)
VAV_STREAM(double, 64f, 6)
VVA_STREAM(float, 32f, 4)
VVA_STREAM(float, 32f, 12)
VVA_STREAM(double, 64f, 6)
