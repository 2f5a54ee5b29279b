// Scaling kernels of one order each, and one of tables whose objects are adjacent. No function of the library calls
// them.
#include "kvlmmul_constant.h"

using namespace kvlm;
using namespace kvlm::mul;

#define KERNEL_ARGS                                                                                                    \
    const float *src, int srcObjStride, int srcRowStride, float val, float *dst, int dstObjStride, int dstRowStride,   \
        int count

// Every row has adjacent elements, in both kernels of an order.
template <int N>
static KVLM_INLINE KvlStatus scaleSquares(KERNEL_ARGS)
{
    return scale<'m'>(PART_MA_U(const float, src), PART_C(float, val), PART_MA_U(float, dst), Shape(N, N), PART_COUNT);
}

#define ROW(name, N)                                                                                                   \
    FUNCTION(name, KERNEL_ARGS)                                                                                        \
    {                                                                                                                  \
        return scaleSquares<N>(src, srcObjStride, srcRowStride, val, dst, dstObjStride, dstRowStride, count);          \
    }

ROW(ownmMul_mac_32f_3x3_ASM, 3)
ROW(ownmMul_mac_32f_4x4_ASM, 4)
ROW(ownmMul_mac_32f_5x5_ASM, 5)
ROW(ownmMul_mac_32f_6x6_ASM, 6)
ROW(ownmMul_mac_32f_3x3_S2_ASM, 3)
ROW(ownmMul_mac_32f_4x4_S2_ASM, 4)
ROW(ownmMul_mac_32f_5x5_S2_ASM, 5)
ROW(ownmMul_mac_32f_6x6_S2_ASM, 6)

// Settled: the object strides are not looked at. Position by position, each a run of adjacent objects.
FUNCTION(ownkvlmMul_mac_32f_P_ASM, MUL_MAC(ARG, P, float))
{
    (void)srcObjStride;
    (void)dstObjStride;
    const Table<const float, None> from(src, srcShift, {});
    const Table<float, None> to(dst, dstShift, {});
    const ptrdiff_t positions = static_cast<ptrdiff_t>(width) * height;
    for (ptrdiff_t p = 0; p < positions; ++p)
        run<float>(Scale<float>{val}, from.at(p, 0), from.at(p, 0), to.at(p, 0), static_cast<ptrdiff_t>(count));
    return kvlOk;
}
