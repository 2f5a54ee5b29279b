// Determinant of one matrix: kernels and public functions.
#include "kvlmdet.h"

using namespace kvlm;
using namespace kvlm::det;

#define DECLARE_EXTENDED(T, type, order)                                                                               \
    extern "C" KVLM_API KvlStatus a6_Det_m_##type##_##order##x##order(const T *src, int srcRowStride, T *dst);
#define EXTENDED(T, type)                                                                                              \
    DECLARE_EXTENDED(T, type, 3)                                                                                       \
    DECLARE_EXTENDED(T, type, 4)                                                                                       \
    DECLARE_EXTENDED(T, type, 5)                                                                                       \
    DECLARE_EXTENDED(T, type, 6)                                                                                       \
    static constexpr KvlStatus (*extended_##type[])(const T *, int, T *) = {                                           \
        a6_Det_m_##type##_3x3, a6_Det_m_##type##_4x4, a6_Det_m_##type##_5x5, a6_Det_m_##type##_6x6};

EXTENDED(float, 32f)
EXTENDED(double, 64f)

// Settled: with adjacent elements orders 3 to 6 are computed in extended precision, and at 64f the search for a pivot
// remembers the largest magnitude as a float.
#define ROW(name, T, type)                                                                                             \
    FUNCTION(own##name, DET_M(ARG, U, T))                                                                              \
    {                                                                                                                  \
        return bySmallOrder(                                                                                           \
            widthHeight, [&](auto order) KVLM_INLINED { return extended_##type[order - 3](src, srcRowStride, dst); },  \
            [&]() KVLM_INLINED {                                                                                       \
                determinantGeneral<true, float>(objectsOf(PART_M_U(const T, src), 0), buffer, dst, widthHeight, 0);    \
                return KvlStatus(kvlOk);                                                                               \
            });                                                                                                        \
    }                                                                                                                  \
    KERNEL(own##name##_S2, DET_M, S, T, detOne)                                                                        \
    KERNEL(own##name##_P, DET_M, P, T, detOne)                                                                         \
    OBJECT_FUNCTIONS(name, DET_M, T, UsualOrder)

ROW(kvlmDet_m_32f, float, 32f)
ROW(kvlmDet_m_64f, double, 64f)
