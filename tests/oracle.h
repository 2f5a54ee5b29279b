// Determinant, LU, LU solver and inverse of one object, written as plain loops and recursions over its elements: every
// rounding in its order, what stands in memory after a failure, and the settled oddities.
#pragma once

#include "kvlm.h"

#include <xmmintrin.h>

#include <cfloat>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

// Results of i386 functions that do not pass an x87 register: some emulators round there as the control word says.
#ifdef __i386__
#define ORACLE_RESULT __attribute__((sseregparm))
#else
#define ORACLE_RESULT
#endif

namespace oracle {

template <class T>
constexpr T least = sizeof(T) == 4 ? T(FLT_MIN) : T(DBL_MIN);

inline bool isUnrolled(int n)
{
    return n >= 3 && n <= 6;
}

// An interchange of table entries: the first of the largest of column k, among the entries from k on.
template <class T, class At>
int pivotOf(int k, int n, At at)
{
    int found = k;
    for (int i = k + 1; i < n; ++i)
        if (std::fabs(at(i, k)) > std::fabs(at(found, k)))
            found = i;
    return found;
}

template <class T>
KvlStatus factor(int n, const T *a, T *dst, int *pivot, bool isTable)
{
    std::vector<T> w(a, a + n * n);
    const auto at = [&](int i, int j) -> T & { return w[pivot[i] * n + j]; };
    const auto reciprocalStep = [&](int k) {
        const T r = 1 / at(k, k);
        for (int i = k + 1; i < n; ++i) {
            at(i, k) *= r;
            for (int j = k + 1; j < n; ++j)
                at(i, j) -= at(i, k) * at(k, j);
        }
    };
    std::iota(pivot, pivot + n, 0);
    if (isUnrolled(n)) {
        int final = 0;
        for (; final < n; ++final) {
            const int k = final;
            std::swap(pivot[k], pivot[pivotOf<T>(k, n, at)]);
            if (k < n - 1 ? !(std::fabs(at(k, k)) >= 2 * least<T>) : std::fabs(w[n * n - 1]) < 2 * least<T>)
                break;
            if (k < n - 1)
                reciprocalStep(k);
        }
        for (int k = 0; k < final && (!isTable || final == n); ++k)
            for (int j = 0; j < n; ++j)
                dst[pivot[k] * n + j] = at(k, j);
        return final == n ? kvlOk : kvlErrSingular;
    }
    const T epsilon = sizeof(T) == 4 ? T(FLT_EPSILON) : T(DBL_EPSILON);
    KvlStatus status = kvlOk;
    for (int k = 0; k < n && status == kvlOk; ++k) {
        int found = pivotOf<T>(k, n, at);
        for (int i = k; i < n - 1 && sizeof(T) == 8; ++i) // at 64f a NaN is always taken
            if (std::isnan(at(i + 1, k)))
                found = i + 1;
        const T best = std::fabs(at(found, k));
        if (best <= epsilon || (sizeof(T) == 8 && k < n - 1 && std::isnan(best)))
            status = kvlErrSingular;
        else if (k < n - 1) {
            std::swap(pivot[k], pivot[found]);
            reciprocalStep(k);
        }
    }
    std::copy(w.begin(), w.end(), dst);
    return status;
}

template <class T>
void solve(int n, const T *lu, const int *pivot, const T *b, T *x)
{
    const auto at = [&](int i, int j) { return lu[pivot[i] * n + j]; };
    std::vector<T> y(n);
    for (int i = 0; i < n; ++i) {
        T sum = 0;
        y[i] = b[pivot[i]];
        for (int j = 1; j < i && isUnrolled(n); ++j)
            y[i] -= at(i, j) * y[j];
        if (i > 0 && isUnrolled(n))
            y[i] -= at(i, 0) * y[0];
        for (int j = 0; j < i && !isUnrolled(n); ++j)
            sum += at(i, j) * y[j];
        if (i > 0 && !isUnrolled(n))
            y[i] -= sum;
    }
    for (int i = n - 1; i >= 0; --i) {
        T sum = 0;
        for (int j = n - 1; j > i && isUnrolled(n); --j)
            y[i] -= at(i, j) * y[j];
        for (int j = i + 1; j < n && !isUnrolled(n); ++j)
            sum += at(i, j) * y[j];
        if (isUnrolled(n))
            y[i] *= 1 / at(i, i);
        else
            y[i] = (i < n - 1 ? y[i] - sum : y[i]) / at(i, i);
    }
    std::copy(y.begin(), y.end(), x);
}

// The minor of the first `rows` rows in a set of columns, along its last row from the right.
template <class T>
ORACLE_RESULT T leading(int n, const T *a, int rows, unsigned columns, bool ofDeterminant)
{
    T sum = 0;
    int turn = 0;
    for (int c = n - 1; c >= 0; --c)
        if (columns >> c & 1) {
            const T x = a[(rows - 1) * n + c];
            if (rows == 1)
                return x;
            const T rest = leading(n, a, rows - 1, columns & ~(1u << c), ofDeterminant);
            if (turn == rows - 1 && turn % 2 == 1 && rows > 2 && ofDeterminant)
                sum += (T(0) - x) * rest;
            else
                sum = turn == 0 ? x * rest : turn % 2 ? sum - x * rest : sum + x * rest;
            ++turn;
        }
    return sum;
}

// The minor of the last `rows` rows, along its first row from the left, computed in Wide. Minors of up to `rounded`
// rows are rounded to T.
template <class Wide, class T>
ORACLE_RESULT Wide trailing(int n, const T *a, int rows, unsigned columns, int rounded)
{
    Wide sum = 0;
    int turn = 0;
    for (int c = 0; c < n; ++c)
        if (columns >> c & 1) {
            const Wide x = a[(n - rows) * n + c];
            if (rows == 1)
                return x;
            const Wide term = x * trailing<Wide>(n, a, rows - 1, columns & ~(1u << c), rounded);
            sum = turn == 0 ? term : turn % 2 ? sum - term : sum + term;
            ++turn;
        }
    return rows <= rounded ? static_cast<T>(sum) : sum;
}

template <class T>
ORACLE_RESULT T extendedDeterminant(int n, const T *a)
{
    using E = long double;
    const auto at = [&](int r, int c) { return E(a[r * n + c]); };
    const auto two = [&](int r, int j, int k) { return at(r, j) * at(r + 1, k) - at(r + 1, j) * at(r, k); };
    if (n == 3 && sizeof(T) == 4)
        return static_cast<T>((at(0, 1) * (at(2, 0) * at(1, 2) - at(1, 0) * at(2, 2)) +
                               at(0, 2) * (at(2, 1) * at(1, 0) - at(2, 0) * at(1, 1))) +
                              at(0, 0) * (at(1, 1) * at(2, 2) - at(1, 2) * at(2, 1)));
    if (n == 3)
        return static_cast<T>((at(2, 0) * (at(1, 2) * at(0, 1) - at(1, 1) * at(0, 2)) +
                               at(0, 0) * (at(1, 1) * at(2, 2) - at(1, 2) * at(2, 1))) +
                              at(1, 0) * (at(2, 1) * at(0, 2) - at(2, 2) * at(0, 1)));
    if (n > 4)
        return static_cast<T>(trailing<E>(n, a, n, (1u << n) - 1, n - 2));
    const E m23 = two(2, 2, 3), m13 = two(2, 1, 3), m12 = two(2, 1, 2), m03 = two(2, 0, 3), m02 = two(2, 0, 2);
    const T m01 = static_cast<T>(two(2, 0, 1));
    return static_cast<T>(at(0, 0) * (at(1, 1) * m23 - at(1, 2) * m13 + at(1, 3) * m12) -
                          at(0, 1) * (at(1, 0) * m23 - at(1, 2) * m03 + at(1, 3) * m02) +
                          at(0, 2) * (at(1, 0) * m13 - at(1, 1) * m03 + at(1, 3) * m01) -
                          at(0, 3) * (at(1, 0) * m12 - at(1, 1) * m02 + at(1, 2) * m01));
}

// Elimination with interchanges of rows, which ends at a pivot below t: the product of the pivots before and the sign
// of the interchanges, and the last element as it stands then.
template <class T>
struct Eliminated {
    T product = 1, sign = 1, last = 0;
    bool failed = false;
};

// Maximum is the type of the running maximum in the search.
template <class Maximum, class T>
Eliminated<T> eliminate(int n, std::vector<T> w, T t, bool byReciprocal)
{
    Eliminated<T> done;
    std::vector<int> row(n);
    std::iota(row.begin(), row.end(), 0);
    const auto at = [&](int i, int j) -> T & { return w[row[i] * n + j]; };
    for (int k = 0; k < n - 1 && !done.failed; ++k) {
        int found = k;
        T best = Maximum(std::fabs(at(k, k)));
        for (int i = k + 1; i < n; ++i)
            if (std::fabs(at(i, k)) > best) {
                best = Maximum(std::fabs(at(i, k)));
                found = i;
            }
        done.sign = found == k ? done.sign : -done.sign;
        std::swap(row[k], row[found]);
        const T pivot = at(k, k), r = 1 / pivot;
        done.failed = std::fabs(pivot) < t;
        for (int i = k + 1; i < n && !done.failed; ++i) {
            const T m = byReciprocal ? at(i, k) * r : at(i, k) / pivot;
            for (int j = k + 1; j < n; ++j)
                at(i, j) -= at(k, j) * m;
        }
        done.product = done.failed ? done.product : pivot * done.product;
    }
    done.last = at(n - 1, n - 1);
    return done;
}

template <class Maximum, class T>
ORACLE_RESULT T eliminatedDeterminant(int n, const T *a, bool isArray)
{
    const T t = T(2 * n * n * n) * least<T>;
    const Eliminated<T> done = eliminate<Maximum>(n, std::vector<T>(a, a + n * n), t, false);
    if ((done.failed && !isArray) || std::fabs(done.last) <= t)
        return 0;
    return done.product * (done.last * (done.failed ? 0 : done.sign));
}

template <class T>
ORACLE_RESULT T determinant(int n, const T *a, bool isArray, bool isAdjacent)
{
    if (isUnrolled(n))
        return isArray || !isAdjacent ? leading(n, a, n, (1u << n) - 1, true) : extendedDeterminant(n, a);
    if (!isArray && isAdjacent)
        return eliminatedDeterminant<float>(n, a, isArray);
    return eliminatedDeterminant<T>(n, a, isArray);
}

// Without row i and column j, by minors of the rows before i and behind it.
template <class T>
ORACLE_RESULT T cofactor(int n, const T *a, int i, int j, bool fullProducts)
{
    const unsigned others = ((1u << n) - 1) & ~(1u << j);
    T sum = 0;
    bool begun = false;
    if (fullProducts) {
        const int c[] = {j == 0, 1 + (j <= 1), 2 + (j <= 2)}, r = i < 2 ? 2 : 0;
        for (int order = 0; order < 6; ++order) {
            const int even = order < 3, first = order % 3, second = (first + 1) % 3, third = (first + 2) % 3;
            const T x = a[(i ^ 1) * n + c[first]];
            const T pair = a[r * n + c[even ? second : third]] * a[(r + 1) * n + c[even ? third : second]];
            sum = order == 0 ? x * pair : even ? sum + x * pair : sum - x * pair;
        }
    } else if (i == 0)
        sum = trailing<T>(n, a, n - 1, others, 0);
    else if (i == n - 1)
        sum = leading(n, a, n - 1, others, false);
    else
        for (unsigned columns = 0; columns <= others; ++columns)
            if (__builtin_popcount(columns) == i && (columns & ~others) == 0) {
                int inversions = 0;
                for (int c = 0; c < n; ++c)
                    if (columns >> c & 1)
                        inversions += __builtin_popcount(others & ~columns & ((1u << c) - 1));
                const T x = leading(n, a, i, columns, false) * trailing<T>(n, a, n - 1 - i, others & ~columns, 0);
                sum = !begun ? x : inversions % 2 ? sum - x : sum + x;
                begun = true;
            }
    return sum;
}

inline ORACLE_RESULT float roughReciprocal(float d)
{
    const float r = _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(d)));
    return (r + r) - (d * r) * r;
}

template <class T>
KvlStatus invertByCofactors(int n, const T *a, T *dst, bool isAdjacent, T t)
{
    std::vector<T> c(n * n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            c[i * n + j] = cofactor(n, a, i, j, isAdjacent && sizeof(T) == 8 && n == 4);
    const auto term = [&](int i) { return a[i * n] * c[i * n]; };
    T d = (n % 2 ? a[(n - 1) * n] : T(0) - a[(n - 1) * n]) * c[(n - 1) * n];
    for (int i = n - 2; i >= 0; --i)
        d = i % 2 ? d - term(i) : d + term(i);
    if (isAdjacent && n <= 4)
        d = (term(0) + term(2)) - (n == 3 ? term(1) : term(1) + term(3));
    if (!(std::fabs(d) >= t))
        return kvlErrSingular;
    const T r = isAdjacent && sizeof(T) == 4 ? T(roughReciprocal(static_cast<float>(d))) : 1 / d;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            dst[j * n + i] = ((i + j) % 2 ? T(0) - c[i * n + j] : c[i * n + j]) * r;
    return kvlOk;
}

// Orders 5 and 6 of 32f: a pivot among the columns of the first row, the inverse of its Schur complement, both put
// together. What it leaves in `a` after a failure is scratch.
inline bool invertByBlocks(int n, int whole, std::vector<float> &a)
{
    const float t = 2.0f * whole * whole * whole * least<float>;
    std::vector<float> inner, copy = a, w(n), u(n), row(n);
    if (n == 4)
        return invertByCofactors(4, copy.data(), a.data(), true, t) == kvlOk;
    int p = 0;
    for (int j = 1; j < n; ++j)
        if (std::fabs(a[j]) > std::fabs(a[p]) || (std::fabs(a[j]) == std::fabs(a[p]) && (whole == 6 || j < 4)))
            p = j;
    if (!(std::fabs(a[p]) >= t))
        return false;
    for (int i = 0; i < n; ++i)
        std::swap(a[i * n], a[i * n + p]);
    const float r = a[0] = roughReciprocal(a[0]);
    for (int i = 1; i < n; ++i) {
        w[i] = r * a[i * n];
        for (int j = 1; j < n; ++j)
            inner.push_back(a[i * n + j] -= a[j] * w[i]);
    }
    const bool regular = invertByBlocks(n - 1, whole, inner);
    const auto g = [&](int i, int j) { return inner[(i - 1) * (n - 1) + j - 1]; };
    for (int i = 1; i < n; ++i)
        for (int j = 1; j < n && !regular; ++j)
            a[i * n + j] = g(i, j);
    if (!regular)
        return false;
    for (int i = 1; i < n; ++i) {
        u[i] = g(i, 1) * (0 - w[1]);
        row[i] = a[1] * g(1, i);
        for (int j = 2; j < n; ++j) {
            u[i] += g(i, j) * (0 - w[j]);
            row[i] += a[j] * g(j, i);
        }
    }
    float corner = a[1] * u[1];
    for (int i = 2; i < n; ++i)
        corner += a[i] * u[i];
    a[0] = r - r * corner;
    for (int i = 1; i < n; ++i) {
        a[i * n] = u[i];
        a[i] = (0 - r) * row[i];
        for (int j = 1; j < n; ++j)
            a[i * n + j] = g(i, j);
    }
    for (int j = 0; j < n && p > 0; ++j)
        std::swap(a[j], a[p * n + j]);
    return true;
}

template <class T>
KvlStatus invert(int n, const T *a, T *dst, bool isArray, bool isAdjacent)
{
    const T t = T(2 * n * n * n) * least<T>;
    if (n == 1) {
        if (isArray ? std::fabs(*a) <= t : !(std::fabs(*a) > t))
            return kvlErrSingular;
        *dst = 1 / *a;
        return kvlOk;
    }
    if (isUnrolled(n)) {
        if (!isAdjacent || sizeof(T) == 8 || n < 5)
            return invertByCofactors(n, a, dst, isAdjacent, isAdjacent && sizeof(T) == 8 && n < 5 ? 2 * t : t);
        std::vector<float> w(a, a + n * n);
        const bool regular = invertByBlocks(n, n, w);
        std::copy(w.begin(), regular ? w.end() : w.begin() + (n - 4) * n, dst);
        return regular ? kvlOk : kvlErrSingular;
    }
    const Eliminated<T> whole = eliminate<T>(n, std::vector<T>(a, a + n * n), t, true);
    const T determinant = whole.product * (whole.sign * whole.last), d = 1 / determinant;
    if (whole.failed || std::fabs(determinant) <= t)
        return kvlErrSingular;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            std::vector<T> rest;
            for (int k = 0; k < n * n; ++k)
                if (k / n != i && k % n != j)
                    rest.push_back(a[k]);
            // One that is judged to be zero is t.
            const Eliminated<T> minor = eliminate<T>(n - 1, rest, t, true);
            const bool isZero = minor.failed || std::fabs(minor.last) <= t;
            const T value = isZero ? t : minor.product * (minor.last * minor.sign);
            dst[j * n + i] = value * d * T((i + j) % 2 ? -1 : 1);
        }
    return kvlOk;
}

} // namespace oracle
