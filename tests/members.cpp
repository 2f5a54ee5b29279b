// The table of the members under test, and what it is made of: operands, orders of checks, work estimates and limits.
#include "members.h"

#include <array>
#include <cstring>
#include <map>
#include <sstream>

namespace {

using U = unsigned;
using Work = U (*)(U, U, U);

U inner(U w, U h)
{
    return innerOf(static_cast<int>(w), static_cast<int>(h));
}

// Estimates, which wrap in 32 bits, of the width and height of the result, or the order, or the length, and the count.
constexpr Work oneFixed = [](U w, U h, U count) { return w * h * (2 * count + 1); };
constexpr Work allArrays = [](U w, U h, U count) { return 3 * w * h * count; };
constexpr Work byOrder = [](U n, U, U count) { return n * count; };
constexpr Work bySquare = [](U n, U, U count) { return n * n * count; };
constexpr Work systemsOfOne = [](U n, U, U count) { return (n + 2 * count) * n; };
constexpr Work systems = [](U n, U, U count) { return n * (n + 2) * count; };
constexpr Work twiceAboveOne = [](U n, U, U count) { return n == 1 ? 0 : 2 * n * count; };
constexpr Work symmetricValues = [](U n, U, U count) { return n * (n + 1) * count; };
constexpr Work symmetricVectors = [](U n, U, U count) { return n * (2 * n + 1) * count; };
constexpr Work generalVectors = [](U n, U, U count) { return n * (3 * n + 1) * count; };
constexpr Work tall = [](U w, U h, U count) { return w * h * 2 * count; };
constexpr Work tallVectors = [](U w, U h, U count) { return w * h + (w + h) * count; };
constexpr Work tallSystems = [](U w, U h, U count) { return (w * h + w + h) * count; };
// Products: the elements of the factors and of the result, those of a single operand once. That of a matrix and a
// vector has a matrix of h rows and w columns.
constexpr Work arrayByOne = [](U w, U h, U count) { return inner(w, h) * w + h * (w + inner(w, h)) * count; };
constexpr Work oneByArray = [](U w, U h, U count) { return h * inner(w, h) + w * (h + inner(w, h)) * count; };
constexpr Work arrayByArray = [](U w, U h, U count) { return (inner(w, h) * (h + w) + h * w) * count; };
constexpr Work matrixByVectors = tallVectors;
constexpr Work matricesByVector = [](U w, U h, U count) { return (w * h + h) * count + w; };
constexpr Work matricesByVectors = tallSystems;
constexpr Work gaxpyArrays = [](U w, U h, U count) { return (w + 2 * h) * count; };
constexpr Work gaxpyOne = [](U w, U h, U count) { return w * count + h + h * count; };
constexpr Work points = [](U, U, U count) { return 2 * count + 16; };
constexpr Work scaled = tall;
constexpr Work scaledVectors = [](U n, U, U count) { return 2 * n * count; };
constexpr Work vectorByConstants = [](U n, U, U count) { return n * count + n + count; };
constexpr Work vectorsByConstants = [](U n, U, U count) { return 2 * n * count + count; };
constexpr Work vectorsAndOne = [](U n, U, U count) { return 2 * n * count + n; };
constexpr Work vectorArrays = [](U n, U, U count) { return 3 * n * count; };
constexpr Work dotWithOne = [](U n, U, U count) { return n * count + n; };
constexpr Work twoCounts = [](U, U, U count) { return 2 * count + 1; };
constexpr Work threeCounts = [](U, U, U count) { return 3 * count; };
constexpr Work elements = [](U w, U h, U count) { return w * h * count; };

// The least estimates of a driver by kernel, plain, _S2, _P, _L, _LS2, of 32f and of 64f.
enum Kernel { plain, strided, pointer, list, listStrided, kernels };
using Limits = std::array<std::array<int, kernels>, 2>;
constexpr Limits all(int limit)
{
    return {{{limit, limit, limit, limit, limit}, {limit, limit, limit, limit, limit}}};
}
constexpr Limits sumLimits = {{{36864, 18432, 9216, 18432, 18432}, {36864, 18432, 9216, 18432, 18432}}};
constexpr Limits detLimits = {{{20001, 20001, 20001, 40001, 20001}, {20001, 20001, 20001, 20001, 20001}}};
constexpr Limits vectorLimits = {{{20001, 20001, 20001, 40001, 40001}, {20001, 20001, 20001, 20001, 20001}}};
constexpr Limits dotLimits = {{{40001, 20001, 20001, 40001, 20001}, {40001, 20001, 40001, 40001, 20001}}};
constexpr Limits productLimits = {{{7, 7, 7, 7, 7}, {36865, 18433, 9217, 18433, 18433}}};
constexpr Limits scaleLimits = {{{35001, 35001, 17001, 35001, 15001}, {35001, 35001, 17001, 35001, 35001}}};
constexpr Limits constantsLimits = {{{36865, 36865, 9217, 18433, 18433}, {36865, 36865, 9217, 18433, 18433}}};
constexpr Limits choleskyLimits = {{{7501, 7501, 2001, 2001, 2001}, {2001, 2001, 2001, 721, 2001}}};
constexpr Limits choleskyVectorsLimits = {{{1201, 1201, 721, 721, 721}, {721, 721, 721, 721, 721}}};
constexpr Limits choleskySystemsLimits = {{{2051, 1701, 1701, 1701, 1701}, {1701, 1701, 2051, 1701, 1701}}};
constexpr Limits qrLimits = {{{2801, 2801, 1801, 1801, 1801}, {2801, 2801, 1801, 1801, 1801}}};

// Splits the letters of a name: "tama" gives "ta", "ma".
std::vector<std::string> splitLetters(const std::string &letters)
{
    std::vector<std::string> operands;
    for (char letter : letters)
        if (letter == 'a')
            operands.back() += 'a';
        else
            operands.emplace_back(1, letter);
    return operands;
}

// The arguments of a member by its name. In the patterns 1 and 2 are the operands in its letters, but a constant behind
// the vector in any case, and 3 is the last of them again; k is left away where there are no arrays.
std::vector<std::string> operandsOf(const std::string &family, const std::string &letters)
{
    // clang-format off
    static const std::map<std::string, std::string> patterns = {
        {"Extract of m", "1Ewhk"}, {"Extract of t", "1Ewhk"}, {"Extract of v", "1Elk"}, {"LoadIdentity", "Mwhk"},
        {"Transpose", "1whXk"}, {"AffineTransform3DH", "12Vk"}, {"CrossProduct", "12Vk"}, {"DotProduct", "12Dlk"},
        {"L2Norm", "1Dlk"}, {"FrobNorm", "1whDk"}, {"Trace", "1nDk"}, {"Saxpy", "1c2Vlk"}, {"LComb", "1c2cVlk"},
        {"Gaxpy", "1xy2z3zVk"}, {"Det", "1nbDk"}, {"Invert", "1bMnk"}, {"LUDecomp", "1PMnk"},
        {"LUBackSubst", "1p2Vnk"}, {"CholeskyDecomp", "1Mnk"}, {"CholeskyBackSubst", "12Vnk"},
        {"QRDecomp", "1bMwhk"}, {"QRBackSubst", "1b2Vwhk"}, {"EigenValuesSym", "1benk"},
        {"EigenValuesVectorsSym", "1bMenk"}, {"EigenValues", "1eenkb"}, {"EigenValuesVectors", "1MMeenkb"},
        {"EigenValuesVectorsLeft", "1Meenkb"}, {"EigenValuesVectorsRight", "1Meenkb"}};
    // clang-format on
    std::vector<std::string> sources = splitLetters(letters);
    if (letters[0] == 'c')
        std::swap(sources[0], sources[1]);
    const bool isArray = letters.find('a') != std::string::npos, isVector = sources[0] == "v" || sources[0] == "va";
    std::string pattern = isVector ? "12Vlk" : "12Mwhk";
    if (family == "Mul" && sources[1][0] != 'c')
        pattern = sources[1][0] == 'v' ? "1xy2zVk" : "1xy2xyMk";
    const auto found = patterns.find(family == "Extract" ? family + " of " + letters[0] : family);
    if (found != patterns.end())
        pattern = found->second;
    std::vector<std::string> operands;
    for (char letter : pattern)
        if (letter == '3')
            operands.push_back(sources.back());
        else if (letter == '1' || (letter == '2' && sources.size() > 1))
            operands.push_back(sources[letter - '1']);
        else if (letter != '2' && (letter != 'k' || isArray))
            operands.push_back(letter + std::string(isArray && std::strchr("MVX", letter) ? "a" : ""));
    return operands;
}

std::vector<std::string> split(const std::string &text, char at)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, at);)
        parts.push_back(part);
    return parts;
}

// The orders of checks are those of the descriptions S, P and L, or that of S alone.
Member row(const std::string &name, Function call, Function driver, const std::string &orders, Work work,
           const Limits &limits)
{
    const std::vector<std::string> parts = split(name, '_'), given = split(orders, '/');
    const std::string &family = parts[0], &letters = parts[1], kind = parts.size() > 3 ? parts[3] : "S";
    const bool is64 = parts[2] == "64f";
    const std::size_t description = std::string("SPL").find(kind[0]);
    std::string order = description == 0 || given.size() > 1 ? given.at(description) : "NCSTH";
    if ((family == "Mul" && letters.find('c') == std::string::npos) || family == "Gaxpy")
        order.insert(order.find('S') + 1, "M");
    const int contiguous[] = {limits[is64][plain], limits[is64][pointer], limits[is64][list]};
    const int apart[] = {limits[is64][strided], limits[is64][pointer], limits[is64][listStrided]};
    return {"kvlm" + name,
            call,
            driver,
            family,
            letters,
            operandsOf(family, letters),
            is64,
            kind[0],
            order,
            work,
            contiguous[description],
            apart[description],
            kind.back()};
}

// One without a driver.
Member serialRow(const std::string &name, Function call, const std::string &orders)
{
    return row(name, call, Function(), orders, nullptr, all(0));
}

Member singleRow(const std::string &name, Function call)
{
    const bool isTall = name.find("QR") == 0, isMatrix = name.find("Extract_v") != 0;
    return serialRow(name, call, isTall ? "NSTM/NSHM" : isMatrix && name.find("Extract") == 0 ? "NST/SNH" : "NST/NSH");
}

// What sets single members apart from their kind.
std::vector<Member> withExceptions(std::vector<Member> rows)
{
    const std::map<std::string, const char *> orders = {
        {"kvlmAdd_vca_64f_P", "NCST"}, // shifts are not checked
        {"kvlmSub_cav_32f_P", "NCST"},    {"kvlmExtract_v_64f_P", "SNH"},  {"kvlmLoadIdentity_ma_32f_P", "NSHCO"},
        {"kvlmCopy_va_32f_SP", "NSCHTO"}, {"kvlmCopy_va_32f_LP", "NSCHTO"}};
    // Those of families that were not built are null.
    rows.erase(std::remove_if(rows.begin(), rows.end(), [](const Member &member) { return !member.call; }), rows.end());
    for (Member &member : rows) {
        const auto found = orders.find(member.name);
        if (found != orders.end())
            member.order = found->second;
        member.neverDriven = member.name == "kvlmSub_vva_64f_P" || member.name == "kvlmCrossProduct_vva_64f_P";
    }
    return rows;
}

} // namespace

// Rows that differ in their operands alone.
#define OF2(X, family, a, b, ...)       X(family, a, __VA_ARGS__) X(family, b, __VA_ARGS__)
#define OF3(X, family, a, b, c, ...)    X(family, a, __VA_ARGS__) OF2(X, family, b, c, __VA_ARGS__)
#define OF4(X, family, a, b, c, d, ...) OF2(X, family, a, b, __VA_ARGS__) OF2(X, family, c, d, __VA_ARGS__)

// X(family, operands): one object in the standard and the pointer description.
// clang-format off
#define SINGLE_MEMBERS(X) \
    X(Add, vv) X(Add, mm) X(Add, tm) X(Add, tt) X(Sub, mm) X(Sub, tm) X(Sub, mt) X(Sub, tt) \
    X(Det, m) X(LUDecomp, m) X(LUBackSubst, mv) X(Invert, m) X(Transpose, m) X(CholeskyDecomp, m) \
    X(CholeskyBackSubst, mv) X(QRDecomp, m) X(QRBackSubst, mv) \
    X(Mul, mm) X(Mul, tm) X(Mul, mt) X(Mul, tt) X(Mul, mv) X(Mul, tv) X(Mul, mc) X(Mul, tc) X(Mul, vc) X(Gaxpy, mv) \
    X(EigenValuesSym, m) X(EigenValuesVectorsSym, m) X(EigenValues, m) X(EigenValuesVectors, m) \
    X(EigenValuesVectorsRight, m) X(EigenValuesVectorsLeft, m) \
    X(Add, vc) X(Sub, vv) X(Sub, vc) X(Sub, cv) X(DotProduct, vv) X(L2Norm, v) X(CrossProduct, vv) X(Saxpy, vv) \
    X(LComb, vv) X(Trace, m) X(FrobNorm, m) X(Extract, v) X(Extract, m) X(Extract, t)
// clang-format on

// X(family, operands, orders of checks, estimate, limits): arrays, in all three descriptions.
#define ARRAY_MEMBERS(X)                                                                                               \
    X(Add, mam, "NCTS", oneFixed, sumLimits)                                                                           \
    OF3(X, Add, tam, mat, tat, "NCST", oneFixed, sumLimits)                                                            \
    OF3(X, Add, mama, tama, tata, "NCST", allArrays, sumLimits)                                                        \
    X(Sub, mam, "NCTS", oneFixed, sumLimits)                                                                           \
    OF3(X, Sub, tam, mat, tat, "NCST", oneFixed, sumLimits)                                                            \
    X(Sub, mma, "NCTS", oneFixed, sumLimits)                                                                           \
    OF3(X, Sub, tma, mta, tta, "NCST", oneFixed, sumLimits)                                                            \
    OF4(X, Sub, mama, tama, mata, tata, "NCST", allArrays, sumLimits)                                                  \
    X(Det, ma, "NCST", byOrder, detLimits)                                                                             \
    X(LUDecomp, ma, "NCST", bySquare, detLimits)                                                                       \
    X(LUBackSubst, mva, "NCST", systemsOfOne, all(1701))                                                               \
    X(LUBackSubst, mava, "NCST", systems, all(1701))                                                                   \
    X(Invert, ma, "NCST", twiceAboveOne, detLimits)                                                                    \
    OF4(X, Mul, mam, tam, mat, tat, "NCST", arrayByOne, productLimits)                                                 \
    OF4(X, Mul, mma, tma, mta, tta, "NCST", oneByArray, productLimits)                                                 \
    OF4(X, Mul, mama, tama, mata, tata, "NCST", arrayByArray, productLimits)                                           \
    OF2(X, Mul, mva, tva, "NCST", matrixByVectors, productLimits)                                                      \
    OF2(X, Mul, mav, tav, "NCST", matricesByVector, productLimits)                                                     \
    OF2(X, Mul, mava, tava, "NCST", matricesByVectors, productLimits)                                                  \
    OF2(X, Mul, mac, tac, "NCST", scaled, scaleLimits)                                                                 \
    X(Mul, vac, "NCST", scaledVectors, productLimits)                                                                  \
    X(Mul, vca, "NCST", vectorByConstants, constantsLimits)                                                            \
    X(Mul, vaca, "NCST", vectorsByConstants, constantsLimits)                                                          \
    X(Gaxpy, mva, "NCST", gaxpyArrays, all(5001))                                                                      \
    X(Gaxpy, mvav, "NCST", gaxpyOne, all(5001))                                                                        \
    X(CholeskyDecomp, ma, "NCST", bySquare, choleskyLimits)                                                            \
    X(CholeskyBackSubst, mva, "NCST/NCSTH/NTHSC", systemsOfOne, choleskyVectorsLimits)                                 \
    X(CholeskyBackSubst, mava, "NCST", systems, choleskySystemsLimits)                                                 \
    X(QRDecomp, ma, "NCSTM/NCSTHM/NCSTHM", tall, qrLimits)                                                             \
    X(QRBackSubst, mva, "NCSTM/NCSTHM/NCSTHM", tallVectors, qrLimits)                                                  \
    X(QRBackSubst, mava, "NCSTM/NCSTHM/NCSTHM", tallSystems, qrLimits)                                                 \
    X(EigenValuesSym, ma, "NSCT/NSCHT/NSCHT", symmetricValues, detLimits)                                              \
    X(EigenValuesVectorsSym, ma, "NSCT/NSCHT/NSCHT", symmetricVectors, all(1701))                                      \
    X(Add, vac, "NCST", vectorsAndOne, vectorLimits)                                                                   \
    X(Add, vav, "NSTC/NSTCH/NSTHC", vectorsAndOne, vectorLimits)                                                       \
    X(Add, vava, "NCST", vectorArrays, vectorLimits)                                                                   \
    X(Add, vca, "NCST", vectorByConstants, vectorLimits)                                                               \
    X(Add, vaca, "NCST", vectorsByConstants, vectorLimits)                                                             \
    X(Sub, vac, "NCST", vectorsAndOne, vectorLimits)                                                                   \
    X(Sub, cva, "NCST", twoCounts, vectorLimits)                                                                       \
    X(Sub, vav, "NSTC/NSTCH/NSTHC", vectorsAndOne, vectorLimits)                                                       \
    X(Sub, vva, "NCST", vectorsAndOne, vectorLimits)                                                                   \
    X(Sub, vava, "NCST", vectorArrays, vectorLimits)                                                                   \
    OF2(X, Sub, vca, cav, "NCST", vectorByConstants, vectorLimits)                                                     \
    OF2(X, Sub, vaca, cava, "NCST", vectorsByConstants, vectorLimits)                                                  \
    X(DotProduct, vav, "NCST", dotWithOne, dotLimits)                                                                  \
    X(DotProduct, vava, "NCST", scaledVectors, dotLimits)                                                              \
    X(L2Norm, va, "NCST", byOrder, all(20001))                                                                         \
    X(CrossProduct, vav, "NTC/NTCH/NTHC", twoCounts, vectorLimits)                                                     \
    X(CrossProduct, vva, "NCT", twoCounts, vectorLimits)                                                               \
    X(CrossProduct, vava, "NCT", threeCounts, vectorLimits)                                                            \
    OF2(X, Saxpy, vav, vva, "NCST", vectorsAndOne, all(40001))                                                         \
    X(Saxpy, vava, "NCST", vectorArrays, all(40001))                                                                   \
    X(LComb, vav, "NCST", vectorsAndOne, detLimits)                                                                    \
    X(LComb, vava, "NCST", vectorArrays, detLimits)                                                                    \
    X(Trace, ma, "NCST", byOrder, detLimits)                                                                           \
    X(FrobNorm, ma, "NCST", elements, detLimits)                                                                       \
    X(EigenValues, ma, "NSCT/NSCHT/NSCHT", symmetricValues, all(10001))                                                \
    X(EigenValuesVectors, ma, "NSCT/NSCHTHT/NSCHTHT", generalVectors, all(7001))                                       \
    X(EigenValuesVectorsRight, ma, "NSCT/NSCHTHT/NSCHTHT", generalVectors, all(7001))                                  \
    X(EigenValuesVectorsLeft, ma, "NSCT/NSCHTHT/NSCHTHT", generalVectors, all(7001))

// X(family, operands, orders of checks): arrays without a driver.
#define SERIAL_ARRAY_MEMBERS(X)                                                                                        \
    OF3(X, Extract, va, ma, ta, "NSCT/NSCHT/NSCHT")                                                                    \
    X(LoadIdentity, ma, "NSCTO/NSCHO/NSCTH")                                                                           \
    X(Transpose, ma, "NCST")

#define IN_DESCRIPTIONS(X, stem, ...)                                                                                  \
    X(stem##_32f, __VA_ARGS__)                                                                                         \
    X(stem##_32f_P, __VA_ARGS__)                                                                                       \
    X(stem##_32f_L, __VA_ARGS__)                                                                                       \
    X(stem##_64f, __VA_ARGS__)                                                                                         \
    X(stem##_64f_P, __VA_ARGS__)                                                                                       \
    X(stem##_64f_L, __VA_ARGS__)
#define DECLARE_DRIVER(name, ...)             extern decltype(kvlm##name) ownOMP_kvlm##name;
#define DECLARE_DRIVERS(family, letters, ...) IN_DESCRIPTIONS(DECLARE_DRIVER, family##_##letters, __VA_ARGS__)
extern "C" {
ARRAY_MEMBERS(DECLARE_DRIVERS)
DECLARE_DRIVER(AffineTransform3DH_mva_32f)
}

const std::vector<Member> &members()
{
#define SERIAL_ROW(name, orders)         serialRow(#name, kvlm##name, orders),
#define DRIVEN_ROW(name, ...)            row(#name, kvlm##name, ownOMP_kvlm##name, __VA_ARGS__),
#define ARRAY_ROWS(family, letters, ...) IN_DESCRIPTIONS(DRIVEN_ROW, family##_##letters, __VA_ARGS__)
#define SERIAL_ARRAY_ROWS(family, letters, orders)                                                                     \
    SERIAL_ROW(family##_##letters##_32f, orders)                                                                       \
    SERIAL_ROW(family##_##letters##_32f_P, orders)                                                                     \
    SERIAL_ROW(family##_##letters##_64f, orders)                                                                       \
    SERIAL_ROW(family##_##letters##_64f_P, orders)                                                                     \
    SERIAL_ROW(family##_##letters##_32f_L, orders)                                                                     \
    SERIAL_ROW(family##_##letters##_64f_L, orders)
#define SINGLE_ROW(name) singleRow(#name, kvlm##name),
#define SINGLE_ROWS(family, letters)                                                                                   \
    SINGLE_ROW(family##_##letters##_32f)                                                                               \
    SINGLE_ROW(family##_##letters##_32f_P)                                                                             \
    SINGLE_ROW(family##_##letters##_64f)                                                                               \
    SINGLE_ROW(family##_##letters##_64f_P)
// From each description to each.
#define COPY_ROWS(stem)                                                                                                \
    SERIAL_ROW(stem##_SS, "NSCTO")                                                                                     \
    SERIAL_ROW(stem##_SP, "NSCTHO")                                                                                    \
    SERIAL_ROW(stem##_SL, "NSCTHO")                                                                                    \
    SERIAL_ROW(stem##_LS, "//NSCTHO")                                                                                  \
    SERIAL_ROW(stem##_PS, "/NSCTHO")                                                                                   \
    SERIAL_ROW(stem##_LP, "//NSCTHO")                                                                                  \
    SERIAL_ROW(stem##_LL, "//NSCTH")                                                                                   \
    SERIAL_ROW(stem##_PP, "/NSCHO")                                                                                    \
    SERIAL_ROW(stem##_PL, "/NSCTHO")
    // clang-format off
    static const std::vector<Member> rows = withExceptions({
        SINGLE_MEMBERS(SINGLE_ROWS)
        ARRAY_MEMBERS(ARRAY_ROWS)
        SERIAL_ARRAY_MEMBERS(SERIAL_ARRAY_ROWS)
        COPY_ROWS(Copy_ma_32f)
        COPY_ROWS(Copy_ma_64f)
        COPY_ROWS(Copy_va_32f)
        COPY_ROWS(Copy_va_64f)
        DRIVEN_ROW(AffineTransform3DH_mva_32f, "NCT", points, all(2001))});
    // clang-format on
    return rows;
}
