// Products of one object as plain loops over its elements: where a sum begins and in which order it is formed, kernel
// by kernel, as tables of names.
#pragma once

#include "oracle.h"

#include <cstdint>
#include <string>
#include <vector>

namespace oracle {

inline bool isAmong(const std::string &name, std::initializer_list<const char *> names)
{
    for (const char *other : names)
        if (name == other)
            return true;
    return false;
}

// "mam", "S2" and 32f give "mam_32f_S2".
template <class T>
std::string kernelName(const std::string &letters, const std::string &kernel)
{
    return letters + (sizeof(T) == 4 ? "_32f" : "_64f") + (kernel.empty() ? "" : "_" + kernel);
}

// Whether the sums of a product of matrices, of square order n, begin with the first product rather than with +0.
template <class T>
bool beginsWithProduct(const std::string &letters, const std::string &kernel, int n)
{
    const std::string name = kernelName<T>(letters, kernel);
    if (isAmong(name, {"mta_32f_L", "tta_32f_L", "tta_64f_L"}))
        return false;
    if (isAmong(name, {"tam_32f_S2", "mat_32f_S2", "mam_32f_P", "tam_32f_P", "mat_32f_P", "mam_32f_LS2", "tam_32f_LS2",
                       "mat_32f_LS2", "tat_32f_LS2"}))
        return n == 3;
    if (isAmong(name, {"tm_32f", "mama_32f_S2"}))
        return n >= 3 && n <= 5;
    if (name == "mat_32f")
        return n == 3 || n == 5 || n == 6;
    return isUnrolled(n);
}

template <class T>
void multiply(const std::string &letters, const std::string &kernel, int rows, int inner, int columns, const T *a,
              const T *b, T *dst)
{
    const bool square = rows == inner && inner == columns;
    const bool fromProduct = square && beginsWithProduct<T>(letters, kernel, rows);
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j) {
            T sum = 0;
            for (int k = 0; k < inner; ++k) {
                const T p = a[i * inner + k] * b[k * columns + j];
                sum = k == 0 && fromProduct ? p : sum + p;
            }
            dst[i * columns + j] = sum;
        }
}

// The order of a sum, for n products of order n, as a formula: the numbers are products, each pair of parentheses a
// sum.
inline std::string orderOfSum(const std::string &family, const std::string &letters, const std::string &kernel,
                              bool is64, int n, int row)
{
    const std::string name = letters + (is64 ? "_64f" : "_32f") + (kernel.empty() ? "" : "_" + kernel);
    const std::string sequential[] = {"(((01)2)3)", "((((01)2)3)4)", "(((((01)2)3)4)5)"};
    const std::string pairs[] = {"((01)(23))", "(((01)(23))4)", "(((01)(23))(45))"};
    const std::string quads[] = {"((02)(13))", row < 4 ? "(((01)4)(23))" : "(((02)4)(13))", "(((02)4)((13)5))"};
    const std::string columns[] = {"((01)(23))", "(((01)4)(23))", "(((01)(23))(45))"};
    const bool adjacent = kernel.empty() || kernel == "L";
    if (n == 3)
        return "((01)2)";
    if (family == "Gaxpy")
        return !adjacent ? sequential[n - 4] : is64 ? pairs[n - 4] : quads[n - 4];
    if (isAmong(name,
                {"mv_64f", "mva_64f", "mva_64f_L", "mav_64f", "mav_64f_L", "tav_64f_L", "mava_64f", "mava_64f_L"}))
        return pairs[n - 4];
    if (isAmong(name, {"mva_32f", "mav_32f", "mav_32f_L", "mava_32f", "mava_32f_L"}))
        return quads[n - 4];
    if (isAmong(name, {"tav_32f", "tav_32f_L", "tava_32f", "tava_32f_L"}))
        return columns[n - 4];
    return sequential[n - 4];
}

template <class T>
ORACLE_RESULT T evaluated(const char *&formula, const std::vector<T> &p)
{
    if (*formula != '(')
        return p[*formula++ - '0'];
    ++formula;
    const T left = evaluated(formula, p), right = evaluated(formula, p);
    ++formula;
    return left + right;
}

template <class T>
ORACLE_RESULT T evaluated(const std::string &formula, const std::vector<T> &p)
{
    const char *at = formula.c_str();
    return evaluated(at, p);
}

template <class T>
ORACLE_RESULT T sumFromLeft(const std::vector<T> &p)
{
    T sum = 0;
    for (T term : p)
        sum += term;
    return sum;
}

// The sum of eight lanes.
template <class T>
ORACLE_RESULT T folded(const T (&l)[8])
{
    return ((l[0] + l[4]) + (l[2] + l[6])) + ((l[1] + l[5]) + (l[3] + l[7]));
}

// Where the vector of the object lies, and whether everything lies on multiples of 16 bytes.
struct Alignment {
    std::uintptr_t vector;
    bool throughout;
};

// Long sums in eight lanes, as far as there are groups of eight, from a length on.
template <class T>
ORACLE_RESULT T lanedSum(const std::vector<T> &p, Alignment where, int alignedFrom, int from)
{
    const int n = static_cast<int>(p.size()), off = static_cast<int>(where.vector % 16), size = sizeof(T);
    const bool lanes = n >= (where.throughout ? alignedFrom : from) && off % size == 0;
    T lead = 0;
    int k = 0;
    for (const int end = lanes && off ? (16 - off) / size : 0; k < end; ++k)
        lead += p[k];
    T l[8] = {lead};
    for (; lanes && k + 8 <= n; k += 8)
        for (int j = 0; j < 8; ++j)
            l[j] += p[k + j];
    T sum = lanes ? folded(l) : T(0);
    for (; k < n; ++k)
        sum += p[k];
    return sum;
}

template <class T>
void multiplyVector(const std::string &family, const std::string &letters, const std::string &kernel, int rows,
                    int inner, const T *a, const T *x, const T *b, Alignment where, T *dst)
{
    for (int i = 0; i < rows; ++i) {
        std::vector<T> p(inner);
        for (int k = 0; k < inner; ++k)
            p[k] = a[i * inner + k] * x[k];
        const bool isLong = family == "Mul" && letters == "mva" && kernel.empty() && sizeof(T) == 4;
        const T sum = rows == inner && isUnrolled(inner)
                          ? evaluated(orderOfSum(family, letters, kernel, sizeof(T) == 8, inner, i), p)
                      : isLong ? lanedSum(p, where, 8, 11)
                               : sumFromLeft(p);
        dst[i] = b ? sum + b[i] : sum;
    }
}

template <class T>
KvlStatus transformPoint(const T *a, const T *p, T *dst, bool adjacent)
{
    const auto sum = [&](int r) {
        const T x = a[r * 4] * p[0], y = a[r * 4 + 1] * p[1], z = a[r * 4 + 2] * p[2], t = a[r * 4 + 3];
        return adjacent ? (x + y) + (z + t) : ((x + t) + y) + z;
    };
    const T w = sum(3);
    if (std::fabs(w) <= T(1.1754944e-38f)) {
        dst[0] = dst[1] = dst[2] = T(3.4028235e38f);
        return kvlErrZeroDivisor;
    }
    const T q = 1 / w;
    for (int r = 0; r < 3; ++r)
        dst[r] = sum(r) * q;
    return kvlOk;
}

} // namespace oracle
