// The table of the members under test.
#include "members.h"

// X(family, operands): one object in the standard and the pointer description.
// clang-format off
#define SINGLE_MEMBERS(X) \
    X(Add, vv) X(Add, mm) X(Add, tm) X(Add, tt) X(Sub, mm) X(Sub, tm) X(Sub, mt) X(Sub, tt) \
    X(Det, m) X(LUDecomp, m) X(LUBackSubst, mv) X(Invert, m) X(Transpose, m) X(CholeskyDecomp, m) \
    X(CholeskyBackSubst, mv) X(QRDecomp, m) X(QRBackSubst, mv) \
    X(Mul, mm) X(Mul, tm) X(Mul, mt) X(Mul, tt) X(Mul, mv) X(Mul, tv) X(Mul, mc) X(Mul, tc) X(Mul, vc) X(Gaxpy, mv) \
    X(EigenValuesSym, m) X(EigenValuesVectorsSym, m) X(EigenValues, m) X(EigenValuesVectors, m) \
    X(EigenValuesVectorsRight, m) X(EigenValuesVectorsLeft, m)
// clang-format on

// X(family, operands, orders of checks in S; in _P at 32f, at 64f).
#define ORDERED_SINGLE_MEMBERS(X)                                                                                      \
    X(Extract, v, "NST", "NSH", "SNH")                                                                                 \
    X(Extract, m, "NST", "SNH", "SNH")                                                                                 \
    X(Extract, t, "NST", "SNH", "SNH")

// X(family, operands, orders of checks, estimate, limits): arrays, in all three descriptions.
#define ARRAY_MEMBERS(X)                                                                                               \
    X(Add, mam, "NCTS", estimateOneFixed, sumLimits)                                                                   \
    X(Add, tam, "NCST", estimateOneFixed, sumLimits)                                                                   \
    X(Add, mat, "NCST", estimateOneFixed, sumLimits)                                                                   \
    X(Add, tat, "NCST", estimateOneFixed, sumLimits)                                                                   \
    X(Add, mama, "NCST", estimateAllArrays, sumLimits)                                                                 \
    X(Add, tama, "NCST", estimateAllArrays, sumLimits)                                                                 \
    X(Add, tata, "NCST", estimateAllArrays, sumLimits)                                                                 \
    X(Sub, mam, "NCTS", estimateOneFixed, sumLimits)                                                                   \
    X(Sub, tam, "NCST", estimateOneFixed, sumLimits)                                                                   \
    X(Sub, mat, "NCST", estimateOneFixed, sumLimits)                                                                   \
    X(Sub, tat, "NCST", estimateOneFixed, sumLimits)                                                                   \
    X(Sub, mma, "NCTS", estimateOneFixed, sumLimits)                                                                   \
    X(Sub, tma, "NCST", estimateOneFixed, sumLimits)                                                                   \
    X(Sub, mta, "NCST", estimateOneFixed, sumLimits)                                                                   \
    X(Sub, tta, "NCST", estimateOneFixed, sumLimits)                                                                   \
    X(Sub, mama, "NCST", estimateAllArrays, sumLimits)                                                                 \
    X(Sub, tama, "NCST", estimateAllArrays, sumLimits)                                                                 \
    X(Sub, mata, "NCST", estimateAllArrays, sumLimits)                                                                 \
    X(Sub, tata, "NCST", estimateAllArrays, sumLimits)                                                                 \
    X(Det, ma, "NCST", estimateByOrder, detLimits)                                                                     \
    X(LUDecomp, ma, "NCST", estimateBySquare, detLimits)                                                               \
    X(LUBackSubst, mva, "NCST", estimateVectors, solveLimits)                                                          \
    X(LUBackSubst, mava, "NCST", estimateSystems, solveLimits)                                                         \
    X(Invert, ma, "NCST", estimateTwice, detLimits)                                                                    \
    X(Mul, mam, "NCST", estimateArrayByOne, productLimits)                                                             \
    X(Mul, tam, "NCST", estimateArrayByOne, productLimits)                                                             \
    X(Mul, mat, "NCST", estimateArrayByOne, productLimits)                                                             \
    X(Mul, tat, "NCST", estimateArrayByOne, productLimits)                                                             \
    X(Mul, mma, "NCST", estimateOneByArray, productLimits)                                                             \
    X(Mul, tma, "NCST", estimateOneByArray, productLimits)                                                             \
    X(Mul, mta, "NCST", estimateOneByArray, productLimits)                                                             \
    X(Mul, tta, "NCST", estimateOneByArray, productLimits)                                                             \
    X(Mul, mama, "NCST", estimateArrayByArray, productLimits)                                                          \
    X(Mul, tama, "NCST", estimateArrayByArray, productLimits)                                                          \
    X(Mul, mata, "NCST", estimateArrayByArray, productLimits)                                                          \
    X(Mul, tata, "NCST", estimateArrayByArray, productLimits)                                                          \
    X(Mul, mva, "NCST", estimateMatrixByVectors, productLimits)                                                        \
    X(Mul, tva, "NCST", estimateMatrixByVectors, productLimits)                                                        \
    X(Mul, mav, "NCST", estimateMatricesByVector, productLimits)                                                       \
    X(Mul, tav, "NCST", estimateMatricesByVector, productLimits)                                                       \
    X(Mul, mava, "NCST", estimateMatricesByVectors, productLimits)                                                     \
    X(Mul, tava, "NCST", estimateMatricesByVectors, productLimits)                                                     \
    X(Mul, mac, "NCST", estimateScaled, scaleLimits)                                                                   \
    X(Mul, tac, "NCST", estimateScaled, scaleLimits)                                                                   \
    X(Mul, vac, "NCST", estimateScaledVectors, scaleVectorLimits)                                                      \
    X(Mul, vca, "NCST", estimateVectorByConstants, constantsLimits)                                                    \
    X(Mul, vaca, "NCST", estimateVectorsByConstants, constantsLimits)                                                  \
    X(Gaxpy, mva, "NCST", estimateGaxpyArrays, gaxpyLimits)                                                            \
    X(Gaxpy, mvav, "NCST", estimateGaxpyOne, gaxpyLimits)                                                              \
    X(CholeskyDecomp, ma, "NCST", estimateBySquare, choleskyLimits)                                                    \
    X(CholeskyBackSubst, mva, "NCST/NCSTH/NTHSC", estimateVectors, choleskyVectorsLimits)                              \
    X(CholeskyBackSubst, mava, "NCST", estimateSystems, choleskySystemsLimits)                                         \
    X(QRDecomp, ma, "NCSTM/NCSTHM/NCSTHM", estimateTall, qrLimits)                                                     \
    X(QRBackSubst, mva, "NCSTM/NCSTHM/NCSTHM", estimateTallVectors, qrLimits)                                          \
    X(QRBackSubst, mava, "NCSTM/NCSTHM/NCSTHM", estimateTallSystems, qrLimits)                                         \
    X(EigenValuesSym, ma, "NSCT/NSCHT/NSCHT", estimateSymmetricValues, detLimits)                                      \
    X(EigenValuesVectorsSym, ma, "NSCT/NSCHT/NSCHT", estimateSymmetricVectors, solveLimits)                            \
    X(EigenValues, ma, "NSCT/NSCHT/NSCHT", estimateSymmetricValues, generalValuesLimits)                               \
    X(EigenValuesVectors, ma, "NSCT/NSCHTHT/NSCHTHT", estimateGeneralVectors, generalVectorsLimits)                    \
    X(EigenValuesVectorsRight, ma, "NSCT/NSCHTHT/NSCHTHT", estimateGeneralVectors, generalVectorsLimits)               \
    X(EigenValuesVectorsLeft, ma, "NSCT/NSCHTHT/NSCHTHT", estimateGeneralVectors, generalVectorsLimits)

// X(family, operands, orders of checks in S; in _P at 32f, at 64f; in _L): arrays without a driver.
#define SERIAL_ARRAY_MEMBERS(X)                                                                                        \
    X(Extract, va, "NSCT", "NSCHT", "NSCHT", "NSCHT")                                                                  \
    X(Extract, ma, "NSCT", "NSCHT", "NSCHT", "NSCHT")                                                                  \
    X(Extract, ta, "NSCT", "NSCHT", "NSCHT", "NSCHT")                                                                  \
    X(LoadIdentity, ma, "NSCTO", "NSHCO", "NSCHO", "NSCTH")                                                            \
    X(Transpose, ma, "NCST", "NCSTH", "NCSTH", "NCSTH")

// X(name behind kvlmCopy_, operands, 64f, description of the source, order of checks, description of the destination)
#define COPY_MEMBERS(X, letters, orderOfPairsToTables, type, is64)                                                     \
    X(letters##_##type##_SS, letters, is64, 'S', "NSCTO", 'S')                                                         \
    X(letters##_##type##_SP, letters, is64, 'S', orderOfPairsToTables, 'P')                                            \
    X(letters##_##type##_SL, letters, is64, 'S', "NSCTHO", 'L')                                                        \
    X(letters##_##type##_LS, letters, is64, 'L', "NSCTHO", 'S')                                                        \
    X(letters##_##type##_PS, letters, is64, 'P', "NSCTHO", 'S')                                                        \
    X(letters##_##type##_LP, letters, is64, 'L', orderOfPairsToTables, 'P')                                            \
    X(letters##_##type##_LL, letters, is64, 'L', "NSCTH", 'L')                                                         \
    X(letters##_##type##_PP, letters, is64, 'P', "NSCHO", 'P')                                                         \
    X(letters##_##type##_PL, letters, is64, 'P', "NSCTHO", 'L')

#define DECLARE_DRIVER(name) extern decltype(kvlm##name) ownOMP_kvlm##name;
#define DECLARE_DRIVERS(family, letters, order, estimate, limits)                                                      \
    DECLARE_DRIVER(family##_##letters##_32f)                                                                           \
    DECLARE_DRIVER(family##_##letters##_32f_P)                                                                         \
    DECLARE_DRIVER(family##_##letters##_32f_L)                                                                         \
    DECLARE_DRIVER(family##_##letters##_64f)                                                                           \
    DECLARE_DRIVER(family##_##letters##_64f_P)                                                                         \
    DECLARE_DRIVER(family##_##letters##_64f_L)
extern "C" {
ARRAY_MEMBERS(DECLARE_DRIVERS)
DECLARE_DRIVER(AffineTransform3DH_mva_32f)
}

static Member copyMember(const char *name, Function call, const char *letters, bool is64, char description,
                         const char *order, char dstDescription)
{
    return {name,  call,    {}, "Copy", letters,       operandsOf("Copy", letters), is64, description,
            order, nullptr, 0,  0,      dstDescription};
}

const std::vector<Member> &members()
{
#define ROW(name, driver, family, letters, is64, description, order, ...)                                              \
    Member{"kvlm" #name, kvlm##name,  driver,                                                                          \
           #family,      #letters,    operandsOf(#family, #letters),                                                   \
           is64,         description, withMatch(#family, #letters, order),                                             \
           __VA_ARGS__,  description},
#define SERIAL_ROW(name, family, letters, is64, description, order)                                                    \
    ROW(name, Function(), family, letters, is64, description, order, nullptr, 0, 0)
#define COPY_ROW(name, letters, is64, description, order, dstDescription)                                              \
    copyMember("kvlmCopy_" #name, kvlmCopy_##name, #letters, is64, description, order, dstDescription),
#define ORDERED_SINGLE_ROWS(family, letters, order, orderP32, orderP64)                                                \
    SERIAL_ROW(family##_##letters##_32f, family, letters, false, 'S', order)                                           \
    SERIAL_ROW(family##_##letters##_32f_P, family, letters, false, 'P', orderP32)                                      \
    SERIAL_ROW(family##_##letters##_64f, family, letters, true, 'S', order)                                            \
    SERIAL_ROW(family##_##letters##_64f_P, family, letters, true, 'P', orderP64)
#define SERIAL_ARRAY_ROWS(family, letters, order, orderP32, orderP64, orderL)                                          \
    ORDERED_SINGLE_ROWS(family, letters, order, orderP32, orderP64)                                                    \
    SERIAL_ROW(family##_##letters##_32f_L, family, letters, false, 'L', orderL)                                        \
    SERIAL_ROW(family##_##letters##_64f_L, family, letters, true, 'L', orderL)
#define SINGLE_ROWS(family, letters)                                                                                   \
    ORDERED_SINGLE_ROWS(family, letters, objectOrder('S', #family), objectOrder('P', #family),                         \
                        objectOrder('P', #family))
#define ARRAY_ROW(name, family, letters, is64, description, ...)                                                       \
    ROW(name, ownOMP_kvlm##name, family, letters, is64, description, __VA_ARGS__)
#define ARRAY_TYPE(name, family, letters, is64, order, estimate, limits)                                               \
    ARRAY_ROW(name, family, letters, is64, 'S', orderIn('S', order), estimate, limits(is64).plain,                     \
              limits(is64).strided)                                                                                    \
    ARRAY_ROW(name##_P, family, letters, is64, 'P', orderIn('P', order), estimate, limits(is64).pointer,               \
              limits(is64).pointer)                                                                                    \
    ARRAY_ROW(name##_L, family, letters, is64, 'L', orderIn('L', order), estimate, limits(is64).list,                  \
              limits(is64).listStrided)
#define ARRAY_ROWS(family, letters, order, estimate, limits)                                                           \
    ARRAY_TYPE(family##_##letters##_32f, family, letters, false, order, estimate, limits)                              \
    ARRAY_TYPE(family##_##letters##_64f, family, letters, true, order, estimate, limits)
    // clang-format off
    static const std::vector<Member> all = {
        SINGLE_MEMBERS(SINGLE_ROWS)
        ORDERED_SINGLE_MEMBERS(ORDERED_SINGLE_ROWS)
        ARRAY_MEMBERS(ARRAY_ROWS)
        SERIAL_ARRAY_MEMBERS(SERIAL_ARRAY_ROWS)
        COPY_MEMBERS(COPY_ROW, ma, "NSCTHO", 32f, false)
        COPY_MEMBERS(COPY_ROW, ma, "NSCTHO", 64f, true)
        COPY_MEMBERS(COPY_ROW, va, "NSCHTO", 32f, false)
        COPY_MEMBERS(COPY_ROW, va, "NSCTHO", 64f, true)
        ARRAY_ROW(AffineTransform3DH_mva_32f, AffineTransform3DH, mva, false, 'S', "NCT", estimatePoints, 2001, 2001)};
    // clang-format on
    return all;
#undef ARRAY_ROWS
#undef ARRAY_TYPE
#undef ARRAY_ROW
#undef SINGLE_ROWS
#undef SERIAL_ARRAY_ROWS
#undef ORDERED_SINGLE_ROWS
#undef COPY_ROW
#undef SERIAL_ROW
#undef ROW
}
