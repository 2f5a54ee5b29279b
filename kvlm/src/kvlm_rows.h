// How argument lists and rows are spelled. A macro here spells a signature, the parts made from its arguments, and one
// call; it holds no algorithm.
//
// Suffixes of the descriptions: U standard with adjacent elements, S standard, P pointer, LU list with adjacent
// elements, LS list. ARG_<operand>_<description>(T, x) is the arguments of operand x, PART_... the object made of them.
// A class of functions is one list of operands, CLASS(ARG, S, T) or CLASS(PART, S, T).
#ifndef KVLM_ROWS_H
#define KVLM_ROWS_H

#include "kvlm_batch.h"
#include "kvlm_entry.h"

// One matrix
#define ARG_M_U(T, x)   T *x, int x##RowStride
#define ARG_M_S(T, x)   T *x, int x##RowStride, int x##ElemStride
#define ARG_M_P(T, x)   T *const *x, int x##Shift
#define ARG_M_LU(T, x)  ARG_M_U(T, x)
#define ARG_M_LS(T, x)  ARG_M_S(T, x)
#define PART_M_U(T, x)  (Strided<T, None, int, Unit<T>>(x, {}, x##RowStride, {}))
#define PART_M_S(T, x)  (Strided<T, None, int, int>(x, {}, x##RowStride, x##ElemStride))
#define PART_M_P(T, x)  (Table<T, None>(x, x##Shift, {}))
#define PART_M_LU(T, x) PART_M_U(T, x)
#define PART_M_LS(T, x) PART_M_S(T, x)

// An array of matrices
#define ARG_MA_U(T, x)   T *x, int x##ObjStride, int x##RowStride
#define ARG_MA_S(T, x)   T *x, int x##ObjStride, int x##RowStride, int x##ElemStride
#define ARG_MA_P(T, x)   T *const *x, int x##Shift, int x##ObjStride
#define ARG_MA_LU(T, x)  T *const *x, int x##Shift, int x##RowStride
#define ARG_MA_LS(T, x)  T *const *x, int x##Shift, int x##RowStride, int x##ElemStride
#define PART_MA_U(T, x)  (Strided<T, int, int, Unit<T>>(x, x##ObjStride, x##RowStride, {}))
#define PART_MA_S(T, x)  (Strided<T, int, int, int>(x, x##ObjStride, x##RowStride, x##ElemStride))
#define PART_MA_P(T, x)  (Table<T, int>(x, x##Shift, x##ObjStride))
#define PART_MA_LU(T, x) (List<T, int, Unit<T>>(x, x##Shift, x##RowStride, {}))
#define PART_MA_LS(T, x) (List<T, int, int>(x, x##Shift, x##RowStride, x##ElemStride))

// One vector
#define ARG_V_U(T, x)  T *x
#define ARG_V_S(T, x)  T *x, int x##ElemStride
#define ARG_V_P(T, x)  T *const *x, int x##Shift
#define PART_V_U(T, x) (Strided<T, None, None, Unit<T>>(x, {}, {}, {}))
#define PART_V_S(T, x) (Strided<T, None, None, int>(x, {}, {}, x##ElemStride))
#define PART_V_P(T, x) (Table<T, None>(x, x##Shift, {}))

// Sizes and count
#define ARG_SHAPE  int width, int height
#define PART_SHAPE Shape(width, height)
#define ARG_LEN    int len
#define PART_LEN   Length(len)
#define ARG_COUNT  int count
#define PART_COUNT Count(count)

// Classes: two sources and a destination
#define VV(X, D, T)   X##_V_##D(const T, src1), X##_V_##D(const T, src2), X##_V_##D(T, dst), X##_LEN
#define MM(X, D, T)   X##_M_##D(const T, src1), X##_M_##D(const T, src2), X##_M_##D(T, dst), X##_SHAPE
#define MAM(X, D, T)  X##_MA_##D(const T, src1), X##_M_##D(const T, src2), X##_MA_##D(T, dst), X##_SHAPE, X##_COUNT
#define MMA(X, D, T)  X##_M_##D(const T, src1), X##_MA_##D(const T, src2), X##_MA_##D(T, dst), X##_SHAPE, X##_COUNT
#define MAMA(X, D, T) X##_MA_##D(const T, src1), X##_MA_##D(const T, src2), X##_MA_##D(T, dst), X##_SHAPE, X##_COUNT

// An exported function: its declaration (which must agree with the public header) and the head of its definition.
#define FUNCTION(name, ...)                                                                                            \
    extern "C" KVLM_API KvlStatus name(__VA_ARGS__);                                                                   \
    extern "C" KvlStatus name(__VA_ARGS__)

// The kernels of a member: `algorithm` takes the parts of the class.
#define KERNEL(name, CLASS, D, T, algorithm)                                                                           \
    FUNCTION(name, CLASS(ARG, D, T))                                                                                   \
    {                                                                                                                  \
        return algorithm(CLASS(PART, D, T));                                                                           \
    }
#define OBJECT_KERNELS(name, CLASS, T, algorithm)                                                                      \
    KERNEL(own##name, CLASS, U, T, algorithm)                                                                          \
    KERNEL(own##name##_S2, CLASS, S, T, algorithm)                                                                     \
    KERNEL(own##name##_P, CLASS, P, T, algorithm)
#define BATCH_KERNELS(name, CLASS, T, algorithm)                                                                       \
    OBJECT_KERNELS(name, CLASS, T, algorithm)                                                                          \
    KERNEL(own##name##_L, CLASS, LU, T, algorithm)                                                                     \
    KERNEL(own##name##_LS2, CLASS, LS, T, algorithm)

// The public functions of a member. `work` is an expression in the arguments of the class.
#define OBJECT_FUNCTIONS(name, CLASS, T, orders)                                                                       \
    FUNCTION(name, CLASS(ARG, S, T))                                                                                   \
    {                                                                                                                  \
        return enterObject<orders::Standard>(own##name, own##name##_S2, CLASS(PART, S, T));                            \
    }                                                                                                                  \
    FUNCTION(name##_P, CLASS(ARG, P, T))                                                                               \
    {                                                                                                                  \
        return enterObjectTable<orders::Pointer>(own##name##_P, CLASS(PART, P, T));                                    \
    }
#define BATCH_FUNCTIONS(name, CLASS, T, orders, work, limits)                                                          \
    FUNCTION(ownOMP_##name, CLASS(ARG, S, T));                                                                         \
    FUNCTION(ownOMP_##name##_P, CLASS(ARG, P, T));                                                                     \
    FUNCTION(ownOMP_##name##_L, CLASS(ARG, LS, T));                                                                    \
    FUNCTION(name, CLASS(ARG, S, T))                                                                                   \
    {                                                                                                                  \
        return enterBatch<orders::Standard>(work, limits.plain, limits.strided, ownOMP_##name, own##name,              \
                                            own##name##_S2, CLASS(PART, S, T));                                        \
    }                                                                                                                  \
    FUNCTION(name##_P, CLASS(ARG, P, T))                                                                               \
    {                                                                                                                  \
        return enterBatchTable<orders::Pointer>(work, limits.pointer, ownOMP_##name##_P, own##name##_P,                \
                                                CLASS(PART, P, T));                                                    \
    }                                                                                                                  \
    FUNCTION(name##_L, CLASS(ARG, LS, T))                                                                              \
    {                                                                                                                  \
        return enterBatch<orders::List>(work, limits.list, limits.listStrided, ownOMP_##name##_L, own##name##_L,       \
                                        own##name##_LS2, CLASS(PART, LS, T));                                          \
    }

// The drivers of a member: standard, _P, _L.
#define DRIVERS(name, CLASS, T)                                                                                        \
    FUNCTION(own##name, CLASS(ARG, U, T));                                                                             \
    FUNCTION(own##name##_S2, CLASS(ARG, S, T));                                                                        \
    FUNCTION(own##name##_P, CLASS(ARG, P, T));                                                                         \
    FUNCTION(own##name##_L, CLASS(ARG, LU, T));                                                                        \
    FUNCTION(own##name##_LS2, CLASS(ARG, LS, T));                                                                      \
    FUNCTION(ownOMP_##name, CLASS(ARG, S, T))                                                                          \
    {                                                                                                                  \
        return drive(count, own##name, own##name##_S2, CLASS(PART, S, T));                                             \
    }                                                                                                                  \
    FUNCTION(ownOMP_##name##_P, CLASS(ARG, P, T))                                                                      \
    {                                                                                                                  \
        return driveTable(count, own##name##_P, CLASS(PART, P, T));                                                    \
    }                                                                                                                  \
    FUNCTION(ownOMP_##name##_L, CLASS(ARG, LS, T))                                                                     \
    {                                                                                                                  \
        return drive(count, own##name##_L, own##name##_LS2, CLASS(PART, LS, T));                                       \
    }

#endif
