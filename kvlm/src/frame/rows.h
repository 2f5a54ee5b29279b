// How argument lists and functions are spelled. A macro here spells a signature, what is made of its arguments, and one
// call; it holds no algorithm.
//
// Suffixes of the descriptions: U standard with adjacent elements, S standard, P pointer, LU list with adjacent
// elements, LS list. Of operand x in a description there are its arguments, ARG_<operand>_<description>(T, x), the
// object made of them, PART_..., the same arguments passed on to a kernel, PASS_..., and those of a chunk of a batch
// that begins at object `first`, CHUNK_.... A class of functions is one list of operands: CLASS(ARG, S, T) and so on.
#ifndef KVLM_FRAME_ROWS_H
#define KVLM_FRAME_ROWS_H

#include "frame/batch.h"
#include "frame/entry.h"

// One matrix
#define ARG_M_U(T, x)    T *x, int x##RowStride
#define ARG_M_S(T, x)    T *x, int x##RowStride, int x##ElemStride
#define ARG_M_P(T, x)    T *const *x, int x##Shift
#define ARG_M_LU(T, x)   ARG_M_U(T, x)
#define ARG_M_LS(T, x)   ARG_M_S(T, x)
#define PART_M_U(T, x)   (Strided<T, None, int, Unit<T>>(x, {}, x##RowStride, {}))
#define PART_M_S(T, x)   (Strided<T, None, int, int>(x, {}, x##RowStride, x##ElemStride))
#define PART_M_P(T, x)   (Table<T, None>(x, x##Shift, {}))
#define PART_M_LU(T, x)  PART_M_U(T, x)
#define PART_M_LS(T, x)  PART_M_S(T, x)
#define PASS_M_U(T, x)   x, x##RowStride
#define PASS_M_S(T, x)   x, x##RowStride, x##ElemStride
#define PASS_M_P(T, x)   x, x##Shift
#define PASS_M_LU(T, x)  PASS_M_U(T, x)
#define PASS_M_LS(T, x)  PASS_M_S(T, x)
#define CHUNK_M_U(T, x)  PASS_M_U(T, x)
#define CHUNK_M_S(T, x)  PASS_M_S(T, x)
#define CHUNK_M_P(T, x)  PASS_M_P(T, x)
#define CHUNK_M_LU(T, x) PASS_M_U(T, x)
#define CHUNK_M_LS(T, x) PASS_M_S(T, x)

// An array of matrices
#define ARG_MA_U(T, x)    T *x, int x##ObjStride, int x##RowStride
#define ARG_MA_S(T, x)    T *x, int x##ObjStride, int x##RowStride, int x##ElemStride
#define ARG_MA_P(T, x)    T *const *x, int x##Shift, int x##ObjStride
#define ARG_MA_LU(T, x)   T *const *x, int x##Shift, int x##RowStride
#define ARG_MA_LS(T, x)   T *const *x, int x##Shift, int x##RowStride, int x##ElemStride
#define PART_MA_U(T, x)   (Strided<T, int, int, Unit<T>>(x, x##ObjStride, x##RowStride, {}))
#define PART_MA_S(T, x)   (Strided<T, int, int, int>(x, x##ObjStride, x##RowStride, x##ElemStride))
#define PART_MA_P(T, x)   (Table<T, int>(x, x##Shift, x##ObjStride))
#define PART_MA_LU(T, x)  (List<T, int, Unit<T>>(x, x##Shift, x##RowStride, {}))
#define PART_MA_LS(T, x)  (List<T, int, int>(x, x##Shift, x##RowStride, x##ElemStride))
#define PASS_MA_U(T, x)   x, x##ObjStride, x##RowStride
#define PASS_MA_S(T, x)   x, x##ObjStride, x##RowStride, x##ElemStride
#define PASS_MA_P(T, x)   x, x##Shift, x##ObjStride
#define PASS_MA_LU(T, x)  x, x##Shift, x##RowStride
#define PASS_MA_LS(T, x)  x, x##Shift, x##RowStride, x##ElemStride
#define CHUNK_MA_U(T, x)  objectFrom(x, first, x##ObjStride), x##ObjStride, x##RowStride
#define CHUNK_MA_S(T, x)  CHUNK_MA_U(T, x), x##ElemStride
#define CHUNK_MA_P(T, x)  x, shiftFrom(x##Shift, first, x##ObjStride), x##ObjStride
#define CHUNK_MA_LU(T, x) x + first, x##Shift, x##RowStride
#define CHUNK_MA_LS(T, x) CHUNK_MA_LU(T, x), x##ElemStride

// One vector
#define ARG_V_U(T, x)    T *x
#define ARG_V_S(T, x)    T *x, int x##ElemStride
#define ARG_V_P(T, x)    T *const *x, int x##Shift
#define ARG_V_LU(T, x)   ARG_V_U(T, x)
#define ARG_V_LS(T, x)   ARG_V_S(T, x)
#define PART_V_U(T, x)   (Strided<T, None, None, Unit<T>>(x, {}, {}, {}))
#define PART_V_S(T, x)   (Strided<T, None, None, int>(x, {}, {}, x##ElemStride))
#define PART_V_P(T, x)   (Table<T, None>(x, x##Shift, {}))
#define PART_V_LU(T, x)  PART_V_U(T, x)
#define PART_V_LS(T, x)  PART_V_S(T, x)
#define PASS_V_U(T, x)   x
#define PASS_V_S(T, x)   x, x##ElemStride
#define PASS_V_P(T, x)   x, x##Shift
#define PASS_V_LU(T, x)  PASS_V_U(T, x)
#define PASS_V_LS(T, x)  PASS_V_S(T, x)
#define CHUNK_V_U(T, x)  PASS_V_U(T, x)
#define CHUNK_V_S(T, x)  PASS_V_S(T, x)
#define CHUNK_V_P(T, x)  PASS_V_P(T, x)
#define CHUNK_V_LU(T, x) PASS_V_U(T, x)
#define CHUNK_V_LS(T, x) PASS_V_S(T, x)

// An array of vectors
#define ARG_VA_U(T, x)    T *x, int x##ObjStride
#define ARG_VA_S(T, x)    T *x, int x##ObjStride, int x##ElemStride
#define ARG_VA_P(T, x)    T *const *x, int x##Shift, int x##ObjStride
#define ARG_VA_LU(T, x)   T *const *x, int x##Shift
#define ARG_VA_LS(T, x)   T *const *x, int x##Shift, int x##ElemStride
#define PART_VA_U(T, x)   (Strided<T, int, None, Unit<T>>(x, x##ObjStride, {}, {}))
#define PART_VA_S(T, x)   (Strided<T, int, None, int>(x, x##ObjStride, {}, x##ElemStride))
#define PART_VA_P(T, x)   (Table<T, int>(x, x##Shift, x##ObjStride))
#define PART_VA_LU(T, x)  (List<T, None, Unit<T>>(x, x##Shift, {}, {}))
#define PART_VA_LS(T, x)  (List<T, None, int>(x, x##Shift, {}, x##ElemStride))
#define PASS_VA_U(T, x)   x, x##ObjStride
#define PASS_VA_S(T, x)   x, x##ObjStride, x##ElemStride
#define PASS_VA_P(T, x)   x, x##Shift, x##ObjStride
#define PASS_VA_LU(T, x)  x, x##Shift
#define PASS_VA_LS(T, x)  x, x##Shift, x##ElemStride
#define CHUNK_VA_U(T, x)  objectFrom(x, first, x##ObjStride), x##ObjStride
#define CHUNK_VA_S(T, x)  CHUNK_VA_U(T, x), x##ElemStride
#define CHUNK_VA_P(T, x)  CHUNK_MA_P(T, x)
#define CHUNK_VA_LU(T, x) x + first, x##Shift
#define CHUNK_VA_LS(T, x) CHUNK_VA_LU(T, x), x##ElemStride

// One constant, the same in every description, and an array of constants. These have a stride in _P too, and adjacency
// means nothing to them.
#define ARG_C(T, x)       T x
#define PART_C(T, x)      (Constant<T>(x))
#define PASS_C(T, x)      x
#define CHUNK_C(T, x)     x
#define ARG_CA_U(T, x)    T *x, int x##Stride
#define ARG_CA_S(T, x)    ARG_CA_U(T, x)
#define ARG_CA_P(T, x)    ARG_CA_U(T, x)
#define ARG_CA_LU(T, x)   T *const *x, int x##Shift
#define ARG_CA_LS(T, x)   ARG_CA_LU(T, x)
#define PART_CA_U(T, x)   (Strided<T, int, None, Unit<T>>(x, x##Stride, {}, {}))
#define PART_CA_S(T, x)   PART_CA_U(T, x)
#define PART_CA_P(T, x)   PART_CA_U(T, x)
#define PART_CA_LU(T, x)  (List<T, None, Unit<T>>(x, x##Shift, {}, {}))
#define PART_CA_LS(T, x)  PART_CA_LU(T, x)
#define PASS_CA_U(T, x)   x, x##Stride
#define PASS_CA_S(T, x)   PASS_CA_U(T, x)
#define PASS_CA_P(T, x)   PASS_CA_U(T, x)
#define PASS_CA_LU(T, x)  x, x##Shift
#define PASS_CA_LS(T, x)  PASS_CA_LU(T, x)
#define CHUNK_CA_U(T, x)  objectFrom(x, first, x##Stride), x##Stride
#define CHUNK_CA_S(T, x)  CHUNK_CA_U(T, x)
#define CHUNK_CA_P(T, x)  CHUNK_CA_U(T, x)
#define CHUNK_CA_LU(T, x) x + first, x##Shift
#define CHUNK_CA_LS(T, x) CHUNK_CA_LU(T, x)

// Plain arrays with so many entries for each object, and the caller's scratch, of which each thread of a team has its
// own: the same in every description
#define ARG_PER_OBJECT(T, x, perObject)   T *x
#define PART_PER_OBJECT(T, x, perObject)  (PerObject<T>(x, perObject))
#define PASS_PER_OBJECT(T, x, perObject)  x
#define CHUNK_PER_OBJECT(T, x, perObject) x + ptrdiff_t(first) * (perObject)
#define ARG_BUFFER(T, x, elements)        T *x
#define PART_BUFFER(T, x, elements)       (Buffer<T>(x, elements))
#define PASS_BUFFER(T, x, elements)       x
#define CHUNK_BUFFER(T, x, elements)      (scratch ? static_cast<T *>(scratch) : x)

// Sizes, of the result or of an operand, with a condition on two of them, and count
#define ARG_SHAPE                        int width, int height
#define PART_SHAPE                       Shape(width, height)
#define PASS_SHAPE                       width, height
#define CHUNK_SHAPE                      PASS_SHAPE
#define ARG_SHAPE_OF(x)                  int x##Width, int x##Height
#define PART_SHAPE_OF(x)                 Shape(x##Width, x##Height)
#define PASS_SHAPE_OF(x)                 x##Width, x##Height
#define CHUNK_SHAPE_OF(x)                PASS_SHAPE_OF(x)
#define ARG_SHAPE_MATCHED(x, matched)    ARG_SHAPE_OF(x)
#define PART_SHAPE_MATCHED(x, matched)   PART_SHAPE_OF(x), SizeMatch(matched)
#define PASS_SHAPE_MATCHED(x, matched)   PASS_SHAPE_OF(x)
#define CHUNK_SHAPE_MATCHED(x, matched)  PASS_SHAPE_OF(x)
#define ARG_TALL                         ARG_SHAPE
#define PART_TALL                        TallShape(width, height)
#define PASS_TALL                        PASS_SHAPE
#define CHUNK_TALL                       PASS_SHAPE
#define ARG_LENGTH(x)                    int x
#define PART_LENGTH(x)                   Length(x)
#define PASS_LENGTH(x)                   x
#define CHUNK_LENGTH(x)                  x
#define ARG_LENGTH_MATCHED(x, matched)   ARG_LENGTH(x)
#define PART_LENGTH_MATCHED(x, matched)  PART_LENGTH(x), SizeMatch(matched)
#define PASS_LENGTH_MATCHED(x, matched)  x
#define CHUNK_LENGTH_MATCHED(x, matched) x
#define ARG_COUNT                        int count
#define PART_COUNT                       Count(count)
#define PASS_COUNT                       count
#define CHUNK_COUNT                      chunk

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

// A call of a kernel or a driver with the arguments of its class: all of them, or those of a chunk.
#define CALL(name, CLASS, D, T) [&]() KVLM_INLINED { return name(CLASS(PASS, D, T)); }
#define CALL_CHUNK(name, CLASS, D, T)                                                                                  \
    [&](int first, int chunk, void *scratch) {                                                                         \
        (void)first, (void)scratch;                                                                                    \
        return name(CLASS(CHUNK, D, T));                                                                               \
    }

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
        return enterObject<Order>(CALL(own##name, CLASS, U, T), CALL(own##name##_S2, CLASS, S, T), CLASS(PART, S, T)); \
    }
#define OBJECT_FUNCTION_P(name, CLASS, T, Order) OBJECT_FUNCTION_ONE_KERNEL(name##_P, own##name##_P, CLASS, P, T, Order)
#define OBJECT_FUNCTION_L(name, CLASS, T, Order)                                                                       \
    FUNCTION(name##_L, CLASS(ARG, LS, T))                                                                              \
    {                                                                                                                  \
        return enterObject<Order>(CALL(own##name##_L, CLASS, LU, T), CALL(own##name##_LS2, CLASS, LS, T),              \
                                  CLASS(PART, LS, T));                                                                 \
    }
#define OBJECT_FUNCTION_ONE_KERNEL(name, kernel, CLASS, D, T, Order)                                                   \
    FUNCTION(name, CLASS(ARG, D, T))                                                                                   \
    {                                                                                                                  \
        return enterObjectOneKernel<Order>(CALL(kernel, CLASS, D, T), CLASS(PART, D, T));                              \
    }
#define OBJECT_FUNCTIONS(name, CLASS, T, orders)                                                                       \
    OBJECT_FUNCTION(name, CLASS, T, orders::Standard)                                                                  \
    OBJECT_FUNCTION_P(name, CLASS, T, orders::Pointer)

#define BATCH_FUNCTION(name, CLASS, T, Order, work, limits)                                                            \
    FUNCTION(ownOMP_##name, CLASS(ARG, S, T));                                                                         \
    FUNCTION(name, CLASS(ARG, S, T))                                                                                   \
    {                                                                                                                  \
        return enterBatch<Order>(work, limits.plain, limits.strided, CALL(ownOMP_##name, CLASS, S, T),                 \
                                 CALL(own##name, CLASS, U, T), CALL(own##name##_S2, CLASS, S, T), CLASS(PART, S, T));  \
    }
#define BATCH_FUNCTION_P(name, CLASS, T, Order, work, limits)                                                          \
    BATCH_FUNCTION_ONE_KERNEL(name##_P, CLASS, P, T, Order, work, limits.pointer)
#define BATCH_FUNCTION_L(name, CLASS, T, Order, work, limits)                                                          \
    FUNCTION(ownOMP_##name##_L, CLASS(ARG, LS, T));                                                                    \
    FUNCTION(name##_L, CLASS(ARG, LS, T))                                                                              \
    {                                                                                                                  \
        return enterBatch<Order>(work, limits.list, limits.listStrided, CALL(ownOMP_##name##_L, CLASS, LS, T),         \
                                 CALL(own##name##_L, CLASS, LU, T), CALL(own##name##_LS2, CLASS, LS, T),               \
                                 CLASS(PART, LS, T));                                                                  \
    }
#define BATCH_FUNCTION_ONE_KERNEL(name, CLASS, D, T, Order, work, limit)                                               \
    FUNCTION(ownOMP_##name, CLASS(ARG, D, T));                                                                         \
    FUNCTION(name, CLASS(ARG, D, T))                                                                                   \
    {                                                                                                                  \
        return enterBatchOneKernel<Order>(work, limit, CALL(ownOMP_##name, CLASS, D, T), CALL(own##name, CLASS, D, T), \
                                          CLASS(PART, D, T));                                                          \
    }
#define BATCH_FUNCTIONS(name, CLASS, T, orders, work, limits)                                                          \
    BATCH_FUNCTION(name, CLASS, T, orders::Standard, work, limits)                                                     \
    BATCH_FUNCTION_P(name, CLASS, T, orders::Pointer, work, limits)                                                    \
    BATCH_FUNCTION_L(name, CLASS, T, orders::List, work, limits)

// The drivers of a member: standard, _P, _L.
#define DRIVER_TWO_KERNELS(name, plain, general, CLASS, U, S, T)                                                       \
    FUNCTION(plain, CLASS(ARG, U, T));                                                                                 \
    FUNCTION(general, CLASS(ARG, S, T));                                                                               \
    FUNCTION(name, CLASS(ARG, S, T))                                                                                   \
    {                                                                                                                  \
        return drive(count, CALL_CHUNK(plain, CLASS, U, T), CALL_CHUNK(general, CLASS, S, T), CLASS(PART, S, T));      \
    }
#define DRIVER_ONE_KERNEL(name, kernel, CLASS, D, T)                                                                   \
    FUNCTION(kernel, CLASS(ARG, D, T));                                                                                \
    FUNCTION(name, CLASS(ARG, D, T))                                                                                   \
    {                                                                                                                  \
        return driveOneKernel(count, CALL_CHUNK(kernel, CLASS, D, T), CLASS(PART, D, T));                              \
    }
#define DRIVER(name, CLASS, T)   DRIVER_TWO_KERNELS(ownOMP_##name, own##name, own##name##_S2, CLASS, U, S, T)
#define DRIVER_P(name, CLASS, T) DRIVER_ONE_KERNEL(ownOMP_##name##_P, own##name##_P, CLASS, P, T)
#define DRIVER_L(name, CLASS, T) DRIVER_TWO_KERNELS(ownOMP_##name##_L, own##name##_L, own##name##_LS2, CLASS, LU, LS, T)
#define DRIVERS(name, CLASS, T)                                                                                        \
    DRIVER(name, CLASS, T)                                                                                             \
    DRIVER_P(name, CLASS, T)                                                                                           \
    DRIVER_L(name, CLASS, T)

#endif
