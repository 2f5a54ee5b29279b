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
#define ARG_V_U(T, x)   T *x
#define ARG_V_S(T, x)   T *x, int x##ElemStride
#define ARG_V_P(T, x)   T *const *x, int x##Shift
#define ARG_V_LU(T, x)  ARG_V_U(T, x)
#define ARG_V_LS(T, x)  ARG_V_S(T, x)
#define PART_V_U(T, x)  (Strided<T, None, None, Unit<T>>(x, {}, {}, {}))
#define PART_V_S(T, x)  (Strided<T, None, None, int>(x, {}, {}, x##ElemStride))
#define PART_V_P(T, x)  (Table<T, None>(x, x##Shift, {}))
#define PART_V_LU(T, x) PART_V_U(T, x)
#define PART_V_LS(T, x) PART_V_S(T, x)

// An array of vectors
#define ARG_VA_U(T, x)   T *x, int x##ObjStride
#define ARG_VA_S(T, x)   T *x, int x##ObjStride, int x##ElemStride
#define ARG_VA_P(T, x)   T *const *x, int x##Shift, int x##ObjStride
#define ARG_VA_LU(T, x)  T *const *x, int x##Shift
#define ARG_VA_LS(T, x)  T *const *x, int x##Shift, int x##ElemStride
#define PART_VA_U(T, x)  (Strided<T, int, None, Unit<T>>(x, x##ObjStride, {}, {}))
#define PART_VA_S(T, x)  (Strided<T, int, None, int>(x, x##ObjStride, {}, x##ElemStride))
#define PART_VA_P(T, x)  (Table<T, int>(x, x##Shift, x##ObjStride))
#define PART_VA_LU(T, x) (List<T, None, Unit<T>>(x, x##Shift, {}, {}))
#define PART_VA_LS(T, x) (List<T, None, int>(x, x##Shift, {}, x##ElemStride))

// One constant, the same in every description, and an array of constants. These have a stride in _P too, and adjacency
// means nothing to them.
#define ARG_C(T, x)      T x
#define PART_C(T, x)     (Constant<T>(x))
#define ARG_CA_U(T, x)   T *x, int x##Stride
#define ARG_CA_S(T, x)   ARG_CA_U(T, x)
#define ARG_CA_P(T, x)   ARG_CA_U(T, x)
#define ARG_CA_LU(T, x)  T *const *x, int x##Shift
#define ARG_CA_LS(T, x)  ARG_CA_LU(T, x)
#define PART_CA_U(T, x)  (Strided<T, int, None, Unit<T>>(x, x##Stride, {}, {}))
#define PART_CA_S(T, x)  PART_CA_U(T, x)
#define PART_CA_P(T, x)  PART_CA_U(T, x)
#define PART_CA_LU(T, x) (List<T, None, Unit<T>>(x, x##Shift, {}, {}))
#define PART_CA_LS(T, x) PART_CA_LU(T, x)

// Plain arrays with a run of entries for each object, and the caller's scratch: the same in every description
#define ARG_RUNS(T, x, perObject)   T *x
#define PART_RUNS(T, x, perObject)  (Runs<T>(x, perObject))
#define ARG_BUFFER(T, x, elements)  T *x
#define PART_BUFFER(T, x, elements) (Buffer<T>(x, elements))

// Sizes, of the result or of an operand, with a condition on two of them, and count
#define ARG_SHAPE                       int width, int height
#define PART_SHAPE                      Shape(width, height)
#define ARG_SHAPE_OF(x)                 int x##Width, int x##Height
#define PART_SHAPE_OF(x)                Shape(x##Width, x##Height)
#define ARG_SHAPE_MATCHED(x, matched)   ARG_SHAPE_OF(x)
#define PART_SHAPE_MATCHED(x, matched)  PART_SHAPE_OF(x), SizeMatch(matched)
#define ARG_TALL                        ARG_SHAPE
#define PART_TALL                       TallShape(width, height)
#define ARG_LENGTH(x)                   int x
#define PART_LENGTH(x)                  Length(x)
#define ARG_LENGTH_MATCHED(x, matched)  ARG_LENGTH(x)
#define PART_LENGTH_MATCHED(x, matched) PART_LENGTH(x), SizeMatch(matched)
#define ARG_COUNT                       int count
#define PART_COUNT                      Count(count)

// Classes: vectors and constants, for a constant before its vector too
#define VV(X, D, T)  X##_V_##D(const T, src1), X##_V_##D(const T, src2), X##_V_##D(T, dst), X##_LENGTH(len)
#define VC(X, D, T)  X##_V_##D(const T, src), X##_C(T, val), X##_V_##D(T, dst), X##_LENGTH(len)
#define VAC(X, D, T) X##_VA_##D(const T, src), X##_C(T, val), X##_VA_##D(T, dst), X##_LENGTH(len), X##_COUNT
#define VAV(X, D, T) X##_VA_##D(const T, src1), X##_V_##D(const T, src2), X##_VA_##D(T, dst), X##_LENGTH(len), X##_COUNT
#define VVA(X, D, T) X##_V_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_LENGTH(len), X##_COUNT
#define VAVA(X, D, T)                                                                                                  \
    X##_VA_##D(const T, src1), X##_VA_##D(const T, src2), X##_VA_##D(T, dst), X##_LENGTH(len), X##_COUNT
#define VCA(X, D, T)  X##_V_##D(const T, src), X##_CA_##D(const T, val), X##_VA_##D(T, dst), X##_LENGTH(len), X##_COUNT
#define VACA(X, D, T) X##_VA_##D(const T, src), X##_CA_##D(const T, val), X##_VA_##D(T, dst), X##_LENGTH(len), X##_COUNT

// Classes: two sources and a destination
#define MM(X, D, T)   X##_M_##D(const T, src1), X##_M_##D(const T, src2), X##_M_##D(T, dst), X##_SHAPE
#define MAM(X, D, T)  X##_MA_##D(const T, src1), X##_M_##D(const T, src2), X##_MA_##D(T, dst), X##_SHAPE, X##_COUNT
#define MMA(X, D, T)  X##_M_##D(const T, src1), X##_MA_##D(const T, src2), X##_MA_##D(T, dst), X##_SHAPE, X##_COUNT
#define MAMA(X, D, T) X##_MA_##D(const T, src1), X##_MA_##D(const T, src2), X##_MA_##D(T, dst), X##_SHAPE, X##_COUNT

// An exported function: its declaration (which must agree with the public header) and the head of its definition.
#define FUNCTION(name, ...)                                                                                            \
    extern "C" KVLM_API KvlStatus name(__VA_ARGS__);                                                                   \
    extern "C" KvlStatus name(__VA_ARGS__)

// A public function without kernels: the checks, then `algorithm`, which takes the parts of the class.
#define WHOLE_FUNCTION(name, CLASS, D, T, Order, algorithm)                                                            \
    FUNCTION(name, CLASS(ARG, D, T))                                                                                   \
    {                                                                                                                  \
        const KvlStatus status = Order::check(CLASS(PART, D, T));                                                      \
        return status ? status : algorithm(CLASS(PART, D, T));                                                         \
    }

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

// The public functions of a member, by description. Those without a driver are the same for arrays. `work` is an
// expression in the arguments of the class.
#define OBJECT_FUNCTION(name, CLASS, T, Order)                                                                         \
    FUNCTION(name, CLASS(ARG, S, T))                                                                                   \
    {                                                                                                                  \
        return enterObject<Order>(own##name, own##name##_S2, CLASS(PART, S, T));                                       \
    }
#define OBJECT_FUNCTION_P(name, CLASS, T, Order)                                                                       \
    FUNCTION(name##_P, CLASS(ARG, P, T))                                                                               \
    {                                                                                                                  \
        return enterObjectOneKernel<Order>(own##name##_P, CLASS(PART, P, T));                                          \
    }
#define OBJECT_FUNCTION_L(name, CLASS, T, Order)                                                                       \
    FUNCTION(name##_L, CLASS(ARG, LS, T))                                                                              \
    {                                                                                                                  \
        return enterObject<Order>(own##name##_L, own##name##_LS2, CLASS(PART, LS, T));                                 \
    }
#define OBJECT_FUNCTIONS(name, CLASS, T, orders)                                                                       \
    OBJECT_FUNCTION(name, CLASS, T, orders::Standard)                                                                  \
    OBJECT_FUNCTION_P(name, CLASS, T, orders::Pointer)

#define BATCH_FUNCTION(name, CLASS, T, Order, work, limits)                                                            \
    FUNCTION(ownOMP_##name, CLASS(ARG, S, T));                                                                         \
    FUNCTION(name, CLASS(ARG, S, T))                                                                                   \
    {                                                                                                                  \
        return enterBatch<Order>(work, limits.plain, limits.strided, ownOMP_##name, own##name, own##name##_S2,         \
                                 CLASS(PART, S, T));                                                                   \
    }
#define BATCH_FUNCTION_P(name, CLASS, T, Order, work, limits)                                                          \
    FUNCTION(ownOMP_##name##_P, CLASS(ARG, P, T));                                                                     \
    FUNCTION(name##_P, CLASS(ARG, P, T))                                                                               \
    {                                                                                                                  \
        return enterBatchOneKernel<Order>(work, limits.pointer, ownOMP_##name##_P, own##name##_P, CLASS(PART, P, T));  \
    }
#define BATCH_FUNCTION_L(name, CLASS, T, Order, work, limits)                                                          \
    FUNCTION(ownOMP_##name##_L, CLASS(ARG, LS, T));                                                                    \
    FUNCTION(name##_L, CLASS(ARG, LS, T))                                                                              \
    {                                                                                                                  \
        return enterBatch<Order>(work, limits.list, limits.listStrided, ownOMP_##name##_L, own##name##_L,              \
                                 own##name##_LS2, CLASS(PART, LS, T));                                                 \
    }
#define BATCH_FUNCTIONS(name, CLASS, T, orders, work, limits)                                                          \
    BATCH_FUNCTION(name, CLASS, T, orders::Standard, work, limits)                                                     \
    BATCH_FUNCTION_P(name, CLASS, T, orders::Pointer, work, limits)                                                    \
    BATCH_FUNCTION_L(name, CLASS, T, orders::List, work, limits)

// The drivers of a member: standard, _P, _L.
#define DRIVER(name, CLASS, T)                                                                                         \
    FUNCTION(own##name, CLASS(ARG, U, T));                                                                             \
    FUNCTION(own##name##_S2, CLASS(ARG, S, T));                                                                        \
    FUNCTION(ownOMP_##name, CLASS(ARG, S, T))                                                                          \
    {                                                                                                                  \
        return drive(count, own##name, own##name##_S2, CLASS(PART, S, T));                                             \
    }
#define DRIVER_P(name, CLASS, T)                                                                                       \
    FUNCTION(own##name##_P, CLASS(ARG, P, T));                                                                         \
    FUNCTION(ownOMP_##name##_P, CLASS(ARG, P, T))                                                                      \
    {                                                                                                                  \
        return driveOneKernel(count, own##name##_P, CLASS(PART, P, T));                                                \
    }
#define DRIVER_L(name, CLASS, T)                                                                                       \
    FUNCTION(own##name##_L, CLASS(ARG, LU, T));                                                                        \
    FUNCTION(own##name##_LS2, CLASS(ARG, LS, T));                                                                      \
    FUNCTION(ownOMP_##name##_L, CLASS(ARG, LS, T))                                                                     \
    {                                                                                                                  \
        return drive(count, own##name##_L, own##name##_LS2, CLASS(PART, LS, T));                                       \
    }
#define DRIVERS(name, CLASS, T)                                                                                        \
    DRIVER(name, CLASS, T)                                                                                             \
    DRIVER_P(name, CLASS, T)                                                                                           \
    DRIVER_L(name, CLASS, T)

#endif
