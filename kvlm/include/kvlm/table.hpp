/**
 * @file table.hpp
 * The C functions by operation, letters of the operands, element type and description: the one place where their names
 * stand.
 */
#ifndef KVLM_TABLE_HPP
#define KVLM_TABLE_HPP

#include "../kvlm.h"
#include "views.hpp"

#include <cstddef>
#include <type_traits>

namespace kvlm {
namespace detail {

/// The operations by their names in C.
enum class Operation {
    Add,
    Sub,
    Mul,
    Gaxpy,
    AffineTransform3DH,
    Saxpy,
    LComb,
    DotProduct,
    CrossProduct,
    L2Norm,
    FrobNorm,
    Trace,
    Det,
    Copy,
    Extract,
    LoadIdentity,
    Transpose,
    Invert,
    LUDecomp,
    LUBackSubst,
    CholeskyDecomp,
    CholeskyBackSubst,
    QRDecomp,
    QRBackSubst,
    EigenValuesSym,
    EigenValuesVectorsSym,
    EigenValues,
    EigenValuesVectors,
    EigenValuesVectorsRight,
    EigenValuesVectorsLeft
};

/// Letters as a number, four bits for each operand.
template <class... Kinds>
constexpr unsigned code(Kinds... kinds)
{
    unsigned all = 0;
    ((all = all * 16 + static_cast<unsigned>(kinds)), ...);
    return all;
}
constexpr unsigned code(const char *letters)
{
    unsigned all = 0;
    for (; *letters; ++letters)
        all = *letters == 'a'   ? all | 8u
              : *letters == 'v' ? all * 16 + code(Kind::v)
              : *letters == 'm' ? all * 16 + code(Kind::m)
              : *letters == 't' ? all * 16 + code(Kind::t)
                                : all * 16 + code(Kind::c);
    return all;
}

/// get<T, description>() is the C function, or nullptr.
template <Operation O, unsigned letters>
struct Functions {
    template <class T, Description D>
    static constexpr std::nullptr_t get()
    {
        return nullptr;
    }
};

template <class T, class F, class D>
constexpr auto forType(F of32f, D of64f)
{
    if constexpr (std::is_same_v<T, float>)
        return of32f;
    else
        return of64f;
}

template <>
struct Functions<Operation::AffineTransform3DH, code("mva")> {
    template <class T, Description D>
    static constexpr auto get()
    {
        if constexpr (D == Description::standard && std::is_same_v<T, float>)
            return kvlmAffineTransform3DH_mva_32f;
        else
            return nullptr;
    }
};

/// That of a list is given, the other two are by the name alone.
#define KVLM_FUNCTIONS(operation, letters, list)                                                                       \
    template <>                                                                                                        \
    struct Functions<Operation::operation, code(#letters)> {                                                           \
        template <class T, Description D>                                                                              \
        static constexpr auto get()                                                                                    \
        {                                                                                                              \
            if constexpr (D == Description::standard)                                                                  \
                return forType<T>(kvlm##operation##_##letters##_32f, kvlm##operation##_##letters##_64f);               \
            else if constexpr (D == Description::table)                                                                \
                return forType<T>(kvlm##operation##_##letters##_32f_P, kvlm##operation##_##letters##_64f_P);           \
            else                                                                                                       \
                return list;                                                                                           \
        }                                                                                                              \
    };
#define KVLM_OBJECT(operation, letters) KVLM_FUNCTIONS(operation, letters, nullptr)
#define KVLM_ARRAY(operation, letters)                                                                                 \
    KVLM_FUNCTIONS(operation, letters,                                                                                 \
                   forType<T>(kvlm##operation##_##letters##_32f_L, kvlm##operation##_##letters##_64f_L))

// clang-format off
KVLM_OBJECT(Add, vv)   KVLM_OBJECT(Add, vc)
KVLM_ARRAY(Add, vac)   KVLM_ARRAY(Add, vav)   KVLM_ARRAY(Add, vava)  KVLM_ARRAY(Add, vca)   KVLM_ARRAY(Add, vaca)
KVLM_OBJECT(Add, mm)   KVLM_OBJECT(Add, tm)   KVLM_OBJECT(Add, tt)
KVLM_ARRAY(Add, mam)   KVLM_ARRAY(Add, tam)   KVLM_ARRAY(Add, mat)   KVLM_ARRAY(Add, tat)
KVLM_ARRAY(Add, mama)  KVLM_ARRAY(Add, tama)  KVLM_ARRAY(Add, tata)

KVLM_OBJECT(Sub, vv)   KVLM_OBJECT(Sub, vc)   KVLM_OBJECT(Sub, cv)
KVLM_ARRAY(Sub, vac)   KVLM_ARRAY(Sub, cva)   KVLM_ARRAY(Sub, vav)   KVLM_ARRAY(Sub, vva)   KVLM_ARRAY(Sub, vava)
KVLM_ARRAY(Sub, vca)   KVLM_ARRAY(Sub, cav)   KVLM_ARRAY(Sub, vaca)  KVLM_ARRAY(Sub, cava)
KVLM_OBJECT(Sub, mm)   KVLM_OBJECT(Sub, tm)   KVLM_OBJECT(Sub, mt)   KVLM_OBJECT(Sub, tt)
KVLM_ARRAY(Sub, mam)   KVLM_ARRAY(Sub, tam)   KVLM_ARRAY(Sub, mat)   KVLM_ARRAY(Sub, tat)
KVLM_ARRAY(Sub, mma)   KVLM_ARRAY(Sub, tma)   KVLM_ARRAY(Sub, mta)   KVLM_ARRAY(Sub, tta)
KVLM_ARRAY(Sub, mama)  KVLM_ARRAY(Sub, tama)  KVLM_ARRAY(Sub, mata)  KVLM_ARRAY(Sub, tata)

KVLM_OBJECT(Mul, mc)   KVLM_OBJECT(Mul, tc)   KVLM_ARRAY(Mul, mac)   KVLM_ARRAY(Mul, tac)
KVLM_OBJECT(Mul, vc)   KVLM_ARRAY(Mul, vac)   KVLM_ARRAY(Mul, vca)   KVLM_ARRAY(Mul, vaca)
KVLM_OBJECT(Mul, mv)   KVLM_OBJECT(Mul, tv)   KVLM_ARRAY(Mul, mva)   KVLM_ARRAY(Mul, tva)
KVLM_ARRAY(Mul, mav)   KVLM_ARRAY(Mul, tav)   KVLM_ARRAY(Mul, mava)  KVLM_ARRAY(Mul, tava)
KVLM_OBJECT(Mul, mm)   KVLM_OBJECT(Mul, tm)   KVLM_OBJECT(Mul, mt)   KVLM_OBJECT(Mul, tt)
KVLM_ARRAY(Mul, mam)   KVLM_ARRAY(Mul, tam)   KVLM_ARRAY(Mul, mat)   KVLM_ARRAY(Mul, tat)
KVLM_ARRAY(Mul, mma)   KVLM_ARRAY(Mul, tma)   KVLM_ARRAY(Mul, mta)   KVLM_ARRAY(Mul, tta)
KVLM_ARRAY(Mul, mama)  KVLM_ARRAY(Mul, tama)  KVLM_ARRAY(Mul, mata)  KVLM_ARRAY(Mul, tata)
KVLM_OBJECT(Gaxpy, mv) KVLM_ARRAY(Gaxpy, mva) KVLM_ARRAY(Gaxpy, mvav)

KVLM_OBJECT(Saxpy, vv)        KVLM_ARRAY(Saxpy, vav)        KVLM_ARRAY(Saxpy, vva)        KVLM_ARRAY(Saxpy, vava)
KVLM_OBJECT(CrossProduct, vv) KVLM_ARRAY(CrossProduct, vav) KVLM_ARRAY(CrossProduct, vva) KVLM_ARRAY(CrossProduct, vava)
KVLM_OBJECT(LComb, vv)        KVLM_ARRAY(LComb, vav)        KVLM_ARRAY(LComb, vava)
KVLM_OBJECT(DotProduct, vv)   KVLM_ARRAY(DotProduct, vav)   KVLM_ARRAY(DotProduct, vava)
KVLM_OBJECT(L2Norm, v)        KVLM_ARRAY(L2Norm, va)
KVLM_OBJECT(FrobNorm, m)      KVLM_ARRAY(FrobNorm, ma)
KVLM_OBJECT(Trace, m)         KVLM_ARRAY(Trace, ma)
KVLM_OBJECT(Det, m)           KVLM_ARRAY(Det, ma)

KVLM_OBJECT(Extract, v)       KVLM_OBJECT(Extract, m)       KVLM_OBJECT(Extract, t)
KVLM_ARRAY(Extract, va)       KVLM_ARRAY(Extract, ma)       KVLM_ARRAY(Extract, ta)
KVLM_OBJECT(Transpose, m)     KVLM_ARRAY(Transpose, ma)     KVLM_ARRAY(LoadIdentity, ma)

KVLM_OBJECT(Invert, m)             KVLM_ARRAY(Invert, ma)
KVLM_OBJECT(LUDecomp, m)           KVLM_ARRAY(LUDecomp, ma)
KVLM_OBJECT(CholeskyDecomp, m)     KVLM_ARRAY(CholeskyDecomp, ma)
KVLM_OBJECT(QRDecomp, m)           KVLM_ARRAY(QRDecomp, ma)
KVLM_OBJECT(LUBackSubst, mv)       KVLM_ARRAY(LUBackSubst, mva)       KVLM_ARRAY(LUBackSubst, mava)
KVLM_OBJECT(CholeskyBackSubst, mv) KVLM_ARRAY(CholeskyBackSubst, mva) KVLM_ARRAY(CholeskyBackSubst, mava)
KVLM_OBJECT(QRBackSubst, mv)       KVLM_ARRAY(QRBackSubst, mva)       KVLM_ARRAY(QRBackSubst, mava)

KVLM_OBJECT(EigenValuesSym, m)          KVLM_ARRAY(EigenValuesSym, ma)
KVLM_OBJECT(EigenValuesVectorsSym, m)   KVLM_ARRAY(EigenValuesVectorsSym, ma)
KVLM_OBJECT(EigenValues, m)             KVLM_ARRAY(EigenValues, ma)
KVLM_OBJECT(EigenValuesVectors, m)      KVLM_ARRAY(EigenValuesVectors, ma)
KVLM_OBJECT(EigenValuesVectorsRight, m) KVLM_ARRAY(EigenValuesVectorsRight, ma)
KVLM_OBJECT(EigenValuesVectorsLeft, m)  KVLM_ARRAY(EigenValuesVectorsLeft, ma)

/// Copies are named by the descriptions of source and destination.
#define KVLM_COPY(letters, from, fromLetter, to, toLetter)                                                             \
    if constexpr (From == Description::from && To == Description::to)                                                  \
        return forType<T>(kvlmCopy_##letters##_32f_##fromLetter##toLetter,                                             \
                          kvlmCopy_##letters##_64f_##fromLetter##toLetter);
#define KVLM_COPIES(letters)                                                                                           \
    template <>                                                                                                        \
    struct Functions<Operation::Copy, code(#letters)> {                                                                \
        template <class T, Description From, Description To>                                                           \
        static constexpr auto get()                                                                                    \
        {                                                                                                              \
            KVLM_COPY(letters, standard, S, standard, S)                                                               \
            KVLM_COPY(letters, standard, S, table, P)                                                                  \
            KVLM_COPY(letters, standard, S, list, L)                                                                   \
            KVLM_COPY(letters, table, P, standard, S)                                                                  \
            KVLM_COPY(letters, table, P, table, P)                                                                     \
            KVLM_COPY(letters, table, P, list, L)                                                                      \
            KVLM_COPY(letters, list, L, standard, S)                                                                   \
            KVLM_COPY(letters, list, L, table, P)                                                                      \
            KVLM_COPY(letters, list, L, list, L)                                                                       \
        }                                                                                                              \
    };
KVLM_COPIES(va)
KVLM_COPIES(ma)
// clang-format on

#undef KVLM_COPIES
#undef KVLM_COPY
#undef KVLM_ARRAY
#undef KVLM_OBJECT
#undef KVLM_FUNCTIONS

} // namespace detail
} // namespace kvlm

#endif
