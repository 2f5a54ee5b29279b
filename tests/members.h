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

// X(family, operands): one object in the standard and the pointer description.
#define SINGLE_MEMBERS(X) X(Add, vv) X(Add, mm) X(Add, tm) X(Add, tt) X(Sub, mm) X(Sub, tm) X(Sub, mt) X(Sub, tt)

// X(family, operands, order of checks in the standard description, estimate): arrays, in all three descriptions.
#define ARRAY_MEMBERS(X)                                                                                               \
    X(Add, mam, "NCTS", estimateOneFixed)                                                                              \
    X(Add, tam, "NCST", estimateOneFixed)                                                                              \
    X(Add, mat, "NCST", estimateOneFixed)                                                                              \
    X(Add, tat, "NCST", estimateOneFixed)                                                                              \
    X(Add, mama, "NCST", estimateAllArrays)                                                                            \
    X(Add, tama, "NCST", estimateAllArrays)                                                                            \
    X(Add, tata, "NCST", estimateAllArrays)                                                                            \
    X(Sub, mam, "NCTS", estimateOneFixed)                                                                              \
    X(Sub, tam, "NCST", estimateOneFixed)                                                                              \
    X(Sub, mat, "NCST", estimateOneFixed)                                                                              \
    X(Sub, tat, "NCST", estimateOneFixed)                                                                              \
    X(Sub, mma, "NCTS", estimateOneFixed)                                                                              \
    X(Sub, tma, "NCST", estimateOneFixed)                                                                              \
    X(Sub, mta, "NCST", estimateOneFixed)                                                                              \
    X(Sub, tta, "NCST", estimateOneFixed)                                                                              \
    X(Sub, mama, "NCST", estimateAllArrays)                                                                            \
    X(Sub, tama, "NCST", estimateAllArrays)                                                                            \
    X(Sub, mata, "NCST", estimateAllArrays)                                                                            \
    X(Sub, tata, "NCST", estimateAllArrays)

#define DECLARE_DRIVER(name) extern decltype(kvlm##name) ownOMP_kvlm##name;
#define DECLARE_DRIVERS(family, letters, order, estimate)                                                              \
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
    Member{"kvlm" #name, kvlm##name, driver, #family, operandsOf(#letters), is64, description, __VA_ARGS__},
#define SINGLE_ROWS(family, letters)                                                                                   \
    ROW(family##_##letters##_32f, Function(), family, letters, false, 'S', "NST", nullptr, 0, 0)                       \
    ROW(family##_##letters##_32f_P, Function(), family, letters, false, 'P', "NSH", nullptr, 0, 0)                     \
    ROW(family##_##letters##_64f, Function(), family, letters, true, 'S', "NST", nullptr, 0, 0)                        \
    ROW(family##_##letters##_64f_P, Function(), family, letters, true, 'P', "NSH", nullptr, 0, 0)
#define ARRAY_ROW(name, family, letters, is64, description, ...)                                                       \
    ROW(name, ownOMP_kvlm##name, family, letters, is64, description, __VA_ARGS__)
#define ARRAY_ROWS(family, letters, order, estimate)                                                                   \
    ARRAY_ROW(family##_##letters##_32f, family, letters, false, 'S', order, estimate, 36864, 18432)                    \
    ARRAY_ROW(family##_##letters##_32f_P, family, letters, false, 'P', "NCSTH", estimate, 9216, 9216)                  \
    ARRAY_ROW(family##_##letters##_32f_L, family, letters, false, 'L', "NCSTH", estimate, 18432, 18432)                \
    ARRAY_ROW(family##_##letters##_64f, family, letters, true, 'S', order, estimate, 36864, 18432)                     \
    ARRAY_ROW(family##_##letters##_64f_P, family, letters, true, 'P', "NCSTH", estimate, 9216, 9216)                   \
    ARRAY_ROW(family##_##letters##_64f_L, family, letters, true, 'L', "NCSTH", estimate, 18432, 18432)
    static const std::vector<Member> all = {SINGLE_MEMBERS(SINGLE_ROWS) ARRAY_MEMBERS(ARRAY_ROWS)};
    return all;
#undef ARRAY_ROWS
#undef ARRAY_ROW
#undef SINGLE_ROWS
#undef ROW
}
