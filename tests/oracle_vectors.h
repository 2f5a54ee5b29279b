// Vectors and measures of one object as plain loops: operations on elements, and in which order each kernel forms its
// sums, as tables of names.
#pragma once

#include "oracle_products.h"

namespace oracle {

// Element by element: `op` is the family, c and d its constants if it has any.
template <class T>
ORACLE_RESULT T combined(const std::string &op, T a, T b, T c, T d)
{
    if (op == "Mul")
        return a * b;
    if (op == "Saxpy")
        return a * c + b;
    if (op == "LComb")
        return a * c + b * d;
    return op == "Add" ? a + b : a - b;
}

template <class T>
void crossProduct(const T *a, const T *b, T *dst)
{
    for (int k = 0; k < 3; ++k) {
        const int next = (k + 1) % 3, last = (k + 2) % 3;
        dst[k] = a[next] * b[last] - a[last] * b[next];
    }
}

// The sum of n = 3 to 6 products in the notation of orderOfSum.
inline std::string orderOfShortSum(const std::string &kernel, int n)
{
    const std::string left[] = {"((01)2)", "(((01)2)3)", "((((01)2)3)4)", "(((((01)2)3)4)5)"};
    const std::string pairs[] = {"((01)2)", "((01)(23))", "(((01)(23))4)", "(((01)(23))(45))"};
    const std::string evenOdd[] = {"((02)1)", "((02)(13))", "(((02)(13))4)", "(((24)0)((35)1))"};
    if (isAmong(kernel, {"vv_64f", "vava_64f", "vava_64f_L", "v_64f", "va_64f", "va_64f_L"}))
        return evenOdd[n - 3];
    if (isAmong(kernel, {"vav_64f", "vav_64f_L"}))
        return n == 3 ? left[0] : evenOdd[n - 3];
    if (isAmong(kernel, {"v_32f", "va_32f", "va_32f_L"}))
        return pairs[n - 3];
    if (isAmong(kernel, {"vav_32f", "vav_32f_L"}))
        return n == 4 ? pairs[1] : left[n - 3];
    return left[n - 3];
}

// `where` is where the second vector lies, or the only one, and whether everything lies on multiples of 16 bytes.
template <class T>
ORACLE_RESULT T sumOfProducts(const std::string &letters, const std::string &kernel, const std::vector<T> &p,
                              Alignment where)
{
    const int n = static_cast<int>(p.size()), from = sizeof(T) == 4 ? 11 : 9;
    const std::string name = kernelName<T>(letters, kernel);
    if (isUnrolled(n))
        return evaluated(orderOfShortSum(name, n), p);
    if (n == 1 && letters == "vav" && kernel == "S2")
        return p[0];
    if ((kernel.empty() || kernel == "L") && letters != "vav")
        return lanedSum(p, where, letters == "vava" && kernel.empty() ? 8 : from, from);
    return sumFromLeft(p);
}

template <class T>
ORACLE_RESULT T roughRoot(T s)
{
    const float x = static_cast<float>(s), r = _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(x)));
    return x * (r * (0.5f * (3.0f - x * (r * r))));
}

template <class T>
ORACLE_RESULT T norm(const std::string &letters, const std::string &kernel, const std::vector<T> &squares,
                     Alignment where)
{
    const T sum = sumOfProducts(letters, kernel, squares, where);
    const bool rough =
        sizeof(T) == 4 && (kernel.empty() || kernel == "L") && isUnrolled(static_cast<int>(squares.size()));
    return rough ? roughRoot(sum) : std::sqrt(sum);
}

// In the kernels of 32f that sum in eight lanes a small sum is taken for 0.
template <class T>
ORACLE_RESULT T frobeniusNorm(const std::vector<T> &squares, bool inLanes)
{
    if (!inLanes)
        return std::sqrt(sumFromLeft(squares));
    T l[8] = {};
    for (std::size_t k = 0; k < squares.size(); ++k)
        l[k % 8] += squares[k];
    const T sum = folded(l);
    return sum > T(1.1920929e-07f) ? roughRoot(sum) : 0;
}

template <class T>
ORACLE_RESULT T trace(int n, const T *a)
{
    T sum = isUnrolled(n) ? a[0] : T(0) + a[0];
    for (int k = 1; k < n; ++k)
        sum += a[k * n + k];
    return sum;
}

} // namespace oracle
