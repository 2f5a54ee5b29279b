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

inline int estimateTall(int width, int height, int count)
{
    return mul32(mul32(width, height), mul32(2, count));
}

inline int estimateTallVectors(int width, int height, int count)
{
    return mul32(width, height) + mul32(width + height, count);
}

inline int estimateTallSystems(int width, int height, int count)
{
    return mul32(mul32(width, height) + width + height, count);
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

inline LimitTable choleskyLimits(bool is64)
{
    return is64 ? LimitTable{2001, 2001, 2001, 721, 2001} : LimitTable{7501, 7501, 2001, 2001, 2001};
}

inline LimitTable choleskyVectorsLimits(bool is64)
{
    const int standard = is64 ? 721 : 1201;
    return {standard, standard, 721, 721, 721};
}

inline LimitTable choleskySystemsLimits(bool is64)
{
    return {is64 ? 1701 : 2051, 1701, is64 ? 2051 : 1701, 1701, 1701};
}

inline LimitTable qrLimits(bool)
{
    return {2801, 2801, 1801, 1801, 1801};
}

// The order of checks in a description: three are given, or that of the standard description alone.
inline std::string orderIn(char description, const std::string &orders)
{
    const std::size_t first = orders.find('/'), second = orders.rfind('/');
    if (first == std::string::npos)
        return description == 'S' ? orders : "NCSTH";
    return description == 'S'   ? orders.substr(0, first)
           : description == 'P' ? orders.substr(first + 1, second - first - 1)
                                : orders.substr(second + 1);
}

inline std::string objectOrder(char description, const std::string &family)
{
    return std::string(description == 'S' ? "NST" : "NSH") + (family.substr(0, 2) == "QR" ? "M" : "");
}

// The arguments of a member by its name.
inline std::vector<std::string> operandsOf(const std::string &family, const std::string &letters)
{
    std::vector<std::string> all = splitLetters(letters);
    const bool array = letters.find('a') != std::string::npos;
    const std::string a = array ? "a" : "";
    if (family == "Det")
        all.insert(all.end(), {"n", "b", "D"});
    else if (family == "Invert")
        all.insert(all.end(), {"b", "M" + a, "n"});
    else if (family == "LUDecomp")
        all.insert(all.end(), {"P", "M" + a, "n"});
    else if (family == "LUBackSubst") {
        all.insert(all.begin() + 1, "p");
        all.insert(all.end(), {"V" + a, "n"});
    } else if (family == "CholeskyDecomp")
        all.insert(all.end(), {"M" + a, "n"});
    else if (family == "CholeskyBackSubst")
        all.insert(all.end(), {"V" + a, "n"});
    else if (family == "QRDecomp" || family == "QRBackSubst") {
        all.insert(all.begin() + 1, "b");
        all.insert(all.end(), {(family == "QRDecomp" ? "M" : "V") + a, "w", "h"});
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
    X(Sub, mm)                                                                                                         \
    X(Sub, tm)                                                                                                         \
    X(Sub, mt)                                                                                                         \
    X(Sub, tt)                                                                                                         \
    X(Det, m)                                                                                                          \
    X(LUDecomp, m)                                                                                                     \
    X(LUBackSubst, mv)                                                                                                 \
    X(Invert, m)                                                                                                       \
    X(CholeskyDecomp, m)                                                                                               \
    X(CholeskyBackSubst, mv)                                                                                           \
    X(QRDecomp, m)                                                                                                     \
    X(QRBackSubst, mv)

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
    X(CholeskyDecomp, ma, "NCST", estimateBySquare, choleskyLimits)                                                    \
    X(CholeskyBackSubst, mva, "NCST/NCSTH/NTHSC", estimateVectors, choleskyVectorsLimits)                              \
    X(CholeskyBackSubst, mava, "NCST", estimateSystems, choleskySystemsLimits)                                         \
    X(QRDecomp, ma, "NCSTM/NCSTHM/NCSTHM", estimateTall, qrLimits)                                                     \
    X(QRBackSubst, mva, "NCSTM/NCSTHM/NCSTHM", estimateTallVectors, qrLimits)                                          \
    X(QRBackSubst, mava, "NCSTM/NCSTHM/NCSTHM", estimateTallSystems, qrLimits)

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

inline const std::vector<Member> &members()
{
#define ROW(name, driver, family, letters, is64, description, ...)                                                     \
    Member{"kvlm" #name, kvlm##name, driver, #family, operandsOf(#family, #letters), is64, description, __VA_ARGS__},
#define SINGLE_ROWS(family, letters)                                                                                   \
    ROW(family##_##letters##_32f, Function(), family, letters, false, 'S', objectOrder('S', #family), nullptr, 0, 0)   \
    ROW(family##_##letters##_32f_P, Function(), family, letters, false, 'P', objectOrder('P', #family), nullptr, 0, 0) \
    ROW(family##_##letters##_64f, Function(), family, letters, true, 'S', objectOrder('S', #family), nullptr, 0, 0)    \
    ROW(family##_##letters##_64f_P, Function(), family, letters, true, 'P', objectOrder('P', #family), nullptr, 0, 0)
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
    static const std::vector<Member> all = {SINGLE_MEMBERS(SINGLE_ROWS) ARRAY_MEMBERS(ARRAY_ROWS)};
    return all;
#undef ARRAY_ROWS
#undef ARRAY_TYPE
#undef ARRAY_ROW
#undef SINGLE_ROWS
#undef ROW
}
