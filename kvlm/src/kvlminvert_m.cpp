// Inverse of one matrix: the routines by order, the common routines, kernels and public functions.
#include "kvlminvert.h"

using namespace kvlm;
using namespace kvlm::inversion;

// The kernels of one order, for adjacent elements.
#define INVERT_FIXED(X, D, T)    X##_M_##D(const T, src), X##_M_##D(T, dst)
#define OF_ORDER(name, T, order) KERNEL(name, INVERT_FIXED, U, T, invertAdjacent<order>)

// The common routine of each description, for the orders that are not unrolled.
#define COMMON(name, T)                                                                                                \
    KERNEL(name##_com, INVERT_M, U, T, invertCommon)                                                                   \
    KERNEL(name##_S2_com, INVERT_M, S, T, invertCommon)                                                                \
    KERNEL(name##_P_com, INVERT_M, P, T, invertCommon)
#define ROW(name, T)                                                                                                   \
    OBJECT_KERNELS(name, INVERT_M, T, inverse)                                                                         \
    OBJECT_FUNCTIONS(name, INVERT_M, T, UsualOrder)

OF_ORDER(ownkvlmInvert_m_32f_3x3, float, 3)
OF_ORDER(ownkvlmInvert_m_32f_4x4, float, 4)
OF_ORDER(ownkvlmInvert_m_32f_5x5, float, 5)
OF_ORDER(ownkvlmInvert_m_32f_6x6, float, 6)
OF_ORDER(ownkvlmInvert_m_64f_3x3, double, 3)
OF_ORDER(ownkvlmInvert_m_64f_4x4, double, 4)
OF_ORDER(ownkvlmInvert_m_64f_5x5_PX, double, 5)
OF_ORDER(ownkvlmInvert_m_64f_6x6_PX, double, 6)
COMMON(ownkvlmInvert_m_32f, float)
COMMON(ownkvlmInvert_m_64f, double)
ROW(kvlmInvert_m_32f, float)
ROW(kvlmInvert_m_64f, double)
