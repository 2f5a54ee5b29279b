// The members under test: what their table in members.cpp is made of, operands, work estimates and limits.
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

// The inner size of a product of matrices whose result has this shape.
inline int innerOf(int width, int height)
{
    return width == height ? width : 1 + (7 * width + 3 * height) % 8;
}

// Elements of the factors and of the result: those of a single operand count once.
inline int estimateArrayByOne(int w, int h, int count)
{
    const int k = innerOf(w, h);
    return static_cast<int>(mul32(k, w) + static_cast<unsigned>(mul32(mul32(h, w + k), count)));
}

inline int estimateOneByArray(int w, int h, int count)
{
    const int k = innerOf(w, h);
    return static_cast<int>(mul32(h, k) + static_cast<unsigned>(mul32(mul32(w, h + k), count)));
}

inline int estimateArrayByArray(int w, int h, int count)
{
    const int k = innerOf(w, h);
    return mul32(mul32(h, k) + mul32(k, w) + mul32(h, w), count);
}

// A matrix of h rows and w columns, a vector of length w, a result of length h.
inline int estimateMatrixByVectors(int w, int h, int count)
{
    return mul32(w, h) + mul32(w + h, count);
}

inline int estimateMatricesByVector(int w, int h, int count)
{
    return mul32(mul32(w, h) + h, count) + w;
}

inline int estimateMatricesByVectors(int w, int h, int count)
{
    return mul32(mul32(w, h) + w + h, count);
}

inline int estimateScaled(int w, int h, int count)
{
    return mul32(mul32(mul32(2, w), h), count);
}

inline int estimateScaledVectors(int n, int, int count)
{
    return mul32(mul32(2, n), count);
}

inline int estimateVectorByConstants(int n, int, int count)
{
    return mul32(n, count) + n + count;
}

inline int estimateVectorsByConstants(int n, int, int count)
{
    return mul32(mul32(2, n), count) + count;
}

inline int estimateGaxpyArrays(int w, int h, int count)
{
    return mul32(w + 2 * h, count);
}

inline int estimateGaxpyOne(int w, int h, int count)
{
    return mul32(w, count) + h + mul32(h, count);
}

inline int estimatePoints(int, int, int count)
{
    return mul32(2, count) + 16;
}

inline int estimateVectorArrayAndOne(int n, int, int count)
{
    return mul32(mul32(2, n), count) + n;
}

inline int estimateVectorArrays(int n, int, int count)
{
    return mul32(mul32(3, n), count);
}

inline int estimateCountOnly(int, int, int count)
{
    return mul32(2, count) + 1;
}

inline int estimateThreeCounts(int, int, int count)
{
    return mul32(3, count);
}

inline int estimateDotWithOne(int n, int, int count)
{
    return mul32(n, count) + n;
}

inline int estimateElements(int w, int h, int count)
{
    return mul32(mul32(w, h), count);
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

inline int estimateSymmetricValues(int n, int, int count)
{
    return mul32(mul32(n, n + 1), count);
}

inline int estimateSymmetricVectors(int n, int, int count)
{
    return mul32(mul32(n, 2 * n + 1), count);
}

inline int estimateGeneralVectors(int n, int, int count)
{
    return mul32(mul32(n, 3 * n + 1), count);
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

inline LimitTable vectorLimits(bool is64)
{
    const int list = is64 ? 20001 : 40001;
    return {20001, 20001, 20001, list, list};
}

inline LimitTable dotLimits(bool is64)
{
    return {40001, 20001, is64 ? 40001 : 20001, 40001, 20001};
}

inline LimitTable normLimits(bool)
{
    return {20001, 20001, 20001, 20001, 20001};
}

inline LimitTable saxpyLimits(bool)
{
    return {40001, 40001, 40001, 40001, 40001};
}

inline LimitTable solveLimits(bool)
{
    return {1701, 1701, 1701, 1701, 1701};
}

inline LimitTable productLimits(bool is64)
{
    return is64 ? LimitTable{36865, 18433, 9217, 18433, 18433} : LimitTable{7, 7, 7, 7, 7};
}

inline LimitTable scaleLimits(bool is64)
{
    return {35001, 35001, 17001, 35001, is64 ? 35001 : 15001};
}

inline LimitTable scaleVectorLimits(bool is64)
{
    return productLimits(is64);
}

inline LimitTable constantsLimits(bool)
{
    return {36865, 36865, 9217, 18433, 18433};
}

inline LimitTable gaxpyLimits(bool)
{
    return {5001, 5001, 5001, 5001, 5001};
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

inline LimitTable generalValuesLimits(bool)
{
    return {10001, 10001, 10001, 10001, 10001};
}

inline LimitTable generalVectorsLimits(bool)
{
    return {7001, 7001, 7001, 7001, 7001};
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
    if (all[0][0] == 'c') // the vector stands before the constant in any case
        std::swap(all[0], all[1]);
    const bool array = letters.find('a') != std::string::npos;
    const std::string a = array ? "a" : "";
    const std::vector<std::string> vectorEnd = {"V" + a, "l"}, matrixEnd = {"M" + a, "w", "h"};
    if (family == "Mul" && all[1][0] == 'c')
        all.insert(all.end(), (all[0][0] == 'v' ? vectorEnd : matrixEnd).begin(),
                   (all[0][0] == 'v' ? vectorEnd : matrixEnd).end());
    else if (family == "Mul" && all[1][0] == 'v') {
        all.insert(all.begin() + 1, {"x", "y"});
        all.insert(all.end(), {"z", "V" + a});
    } else if (family == "Mul") {
        all.insert(all.begin() + 1, {"x", "y"});
        all.insert(all.end(), {"x", "y", "M" + a});
    } else if (family == "Gaxpy")
        all = {"m", "x", "y", array ? "va" : "v", "z", letters == "mva" ? "va" : "v", "z", "V" + a};
    else if (family == "AffineTransform3DH")
        all = {"m", "va", "Va"};
    else if (family == "EigenValuesSym")
        all.insert(all.end(), {"b", "e", "n"});
    else if (family == "EigenValuesVectorsSym")
        all.insert(all.end(), {"b", "M" + a, "e", "n"});
    else if (family.find("EigenValues") == 0) {
        if (family != "EigenValues")
            all.insert(all.end(), family == "EigenValuesVectors" ? 2 : 1, "M" + a);
        all.insert(all.end(), {"e", "e", "n"});
        all.insert(all.end(), array ? 1 : 0, "k");
        all.push_back("b");
        return all;
    } else if (family == "CrossProduct")
        all.push_back("V" + a);
    else if (family == "Saxpy" || family == "LComb") {
        all.insert(all.begin() + 1, "c");
        if (family == "LComb")
            all.push_back("c");
        all.insert(all.end(), vectorEnd.begin(), vectorEnd.end());
    } else if (family == "DotProduct" || family == "L2Norm")
        all.insert(all.end(), {"D", "l"});
    else if (family == "Trace")
        all.insert(all.end(), {"n", "D"});
    else if (family == "FrobNorm")
        all.insert(all.end(), {"w", "h", "D"});
    else if (family == "Det")
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
    } else if (family == "CholeskyDecomp")
        all.insert(all.end(), {"M" + a, "n"});
    else if (family == "CholeskyBackSubst")
        all.insert(all.end(), {"V" + a, "n"});
    else if (family == "QRDecomp" || family == "QRBackSubst") {
        all.insert(all.begin() + 1, "b");
        all.insert(all.end(), {(family == "QRDecomp" ? "M" : "V") + a, "w", "h"});
    } else if (all[0][0] == 'v')
        all.insert(all.end(), {"V" + a, "l"});
    else
        all.insert(all.end(), {"M" + a, "w", "h"});
    if (array)
        all.push_back("k");
    return all;
}

// The order of checks of a member whose sizes must match: after the sizes alone.
inline std::string withMatch(const std::string &family, const std::string &letters, std::string order)
{
    if ((family == "Mul" && letters.find('c') == std::string::npos) || family == "Gaxpy")
        order.insert(order.find('S') + 1, "M");
    return order;
}

const std::vector<Member> &members();
