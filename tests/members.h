// The members under test, typed by hand: names, operands, order of checks, work estimate and limits.
#pragma once

#include "call.h"

inline int mul32(int a, int b)
{
    return static_cast<int>(static_cast<unsigned>(a) * static_cast<unsigned>(b));
}

inline int estimateOneFixed(int width, int height, int count)
{
    return mul32(mul32(width, height), static_cast<int>(2u * count + 1u));
}

inline int estimateAllArrays(int width, int height, int count)
{
    return mul32(mul32(mul32(3, width), height), count);
}

inline int estimateByOrder(int n, int, int count)
{
    return mul32(n, count);
}

inline int estimateBySquare(int n, int, int count)
{
    return mul32(mul32(n, n), count);
}

inline int estimateVectors(int n, int, int count)
{
    return mul32(static_cast<int>(n + 2u * count), n);
}

inline int estimateSystems(int n, int, int count)
{
    return mul32(mul32(n, n + 2), count);
}

// Order 1 never goes to a driver.
inline int estimateTwice(int n, int, int count)
{
    return n == 1 ? 0 : mul32(mul32(2, n), count);
}

// The least estimates of a driver, by kernel: plain, _S2, _P, _L, _LS2.
struct LimitTable {
    int plain, strided, pointer, list, listStrided;
};

inline LimitTable sumLimits(bool)
{
    return {36864, 18432, 9216, 18432, 18432};
}

inline LimitTable detLimits(bool is64)
{
    return {20001, 20001, 20001, is64 ? 20001 : 40001, 20001};
}

inline LimitTable solveLimits(bool)
{
    return {1701, 1701, 1701, 1701, 1701};
}

// The arguments of a member by its name.
inline std::vector<std::string> operandsOf(const std::string &family, const std::string &letters)
{
    std::vector<std::string> all = splitLetters(letters);
    const bool array = letters.find('a') != std::string::npos;
    const std::string a = array ? "a" : "";
    if (family == "Det")
        all.insert(all.end(), {"n", "b", "D"});
    else if (family == "Extract" && letters[0] == 'v')
        all.insert(all.end(), {"E", "l"});
    else if (family == "Extract")
        all.insert(all.end(), {"E", "w", "h"});
    else if (family == "LoadIdentity")
        all = {"Ma", "w", "h"};
    else if (family == "Transpose")
        all.insert(all.end(), {"w", "h", "X" + a});
    else if (family == "Invert")
        all.insert(all.end(), {"b", "M" + a, "n"});
    else if (family == "LUDecomp")
        all.insert(all.end(), {"P", "M" + a, "n"});
    else if (family == "LUBackSubst") {
        all.insert(all.begin() + 1, "p");
        all.insert(all.end(), {"V" + a, "n"});
    } else if (letters[0] == 'v')
        all.insert(all.end(), {"V" + a, "l"});
    else
        all.insert(all.end(), {"M" + a, "w", "h"});
    if (array)
        all.push_back("k");
    return all;
}

// X(family, operands): one object in the standard and the pointer description.
#define SINGLE_MEMBERS(X)                                                                                              \
    X(Add, vv)                                                                                                         \
    X(Add, mm)                                                                                                         \
    X(Add, tm)                                                                                                         \
    X(Add, tt)                                                                                                         \
    X(Sub, mm) X(Sub, tm) X(Sub, mt) X(Sub, tt) X(Det, m) X(LUDecomp, m) X(LUBackSubst, mv) X(Invert, m) X(Transpose, m)

// X(family, operands, orders of checks in S; in _P at 32f, at 64f).
#define ORDERED_SINGLE_MEMBERS(X)                                                                                      \
    X(Extract, v, "NST", "NSH", "SNH")                                                                                 \
    X(Extract, m, "NST", "SNH", "SNH")                                                                                 \
    X(Extract, t, "NST", "SNH", "SNH")

// X(family, operands, order of checks in the standard description, estimate, limits): arrays, in all three
// descriptions.
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
    X(Invert, ma, "NCST", estimateTwice, detLimits)

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
}

inline Member copyMember(const char *name, Function call, const char *letters, bool is64, char description,
                         const char *order, char dstDescription)
{
    return {name,    call, {}, "Copy",        operandsOf("Copy", letters), is64, description, order,
            nullptr, 0,    0,  dstDescription};
}

inline const std::vector<Member> &members()
{
#define ROW(name, driver, family, letters, is64, description, ...)                                                     \
    Member{"kvlm" #name, kvlm##name,  driver,      #family,    operandsOf(#family, #letters),                          \
           is64,         description, __VA_ARGS__, description},
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
#define SINGLE_ROWS(family, letters) ORDERED_SINGLE_ROWS(family, letters, "NST", "NSH", "NSH")
#define ARRAY_ROW(name, family, letters, is64, description, ...)                                                       \
    ROW(name, ownOMP_kvlm##name, family, letters, is64, description, __VA_ARGS__)
#define ARRAY_TYPE(name, family, letters, is64, order, estimate, limits)                                               \
    ARRAY_ROW(name, family, letters, is64, 'S', order, estimate, limits(is64).plain, limits(is64).strided)             \
    ARRAY_ROW(name##_P, family, letters, is64, 'P', "NCSTH", estimate, limits(is64).pointer, limits(is64).pointer)     \
    ARRAY_ROW(name##_L, family, letters, is64, 'L', "NCSTH", estimate, limits(is64).list, limits(is64).listStrided)
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
        COPY_MEMBERS(COPY_ROW, va, "NSCTHO", 64f, true)};
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
