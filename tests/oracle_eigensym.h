// Symmetric eigenproblems of one object, step by step with plain loops: every rounding in its order, what stands in
// memory after a failure.
#pragma once

#include "oracle.h"

#include <cfloat>
#include <cmath>
#include <utility>
#include <vector>

namespace oracle {

// Elements are kept in T; the vectors of arrays are computed in double.
template <class T, class W>
class EigenSym {
public:
    EigenSym(int n, bool isArray, bool hasVectors, bool zeroBound)
        : n(n), isArray(isArray), hasVectors(hasVectors), zeroBound(zeroBound), a(n * n), v(n * n)
    {
    }

    // `values` and `vectors` hold what is in memory before.
    KvlStatus solve(const T *src, T *values, T *vectors)
    {
        if (n == 1) {
            values[0] = src[0];
            v[0] = 1;
        } else if (n == 2) {
            if (!pair(src, values))
                return kvlErrSingular;
        } else
            status = general(src, values);
        if (hasVectors)
            std::copy(v.begin(), v.end(), vectors);
        return status;
    }

private:
    static constexpr W epsilon = sizeof(T) == 4 ? W(FLT_EPSILON) : W(DBL_EPSILON);

    bool pair(const T *src, T *values)
    {
        const W x = src[0], y = src[1], z = src[3], det = x * z - y * y, t = z + x, dd = x - z, b2 = y + y;
        const W r = std::sqrt(dd * dd + b2 * b2);
        if (epsilon >= std::fabs(det))
            return false;
        const W first = t > epsilon ? W(0.5) * (r + t) : t >= -epsilon ? W(0.5) * r : W(0.5) * (t - r);
        values[0] = T(first);
        values[1] = T(t > epsilon || !(t >= -epsilon) ? det / first : W(-0.5) * r);
        const int sign1 = t > epsilon || t >= -epsilon ? 1 : -1, sign2 = dd >= -epsilon ? 1 : -1;
        const W w = sign2 > 0 ? dd + r : dd - r;
        W cs = 1, sn = 0;
        if (std::fabs(w) > std::fabs(b2)) {
            const W q = -b2 / w;
            sn = 1 / std::sqrt(q * q + 1);
            cs = q * sn;
        } else if (!(epsilon >= std::fabs(b2))) {
            const W q = -w / b2;
            cs = 1 / std::sqrt(q * q + 1);
            sn = q * cs;
        }
        if (sign1 == sign2) {
            std::swap(cs, sn);
            cs = -cs;
        }
        v = {T(cs), T(-sn), T(sn), T(cs)};
        return true;
    }

    T &at(int r, int c) { return a[r * n + c]; }
    T &d(int i) { return a[i * n + i]; }
    T &e(int i) { return a[(i + 1) * n + i]; }

    void reduce(T *u)
    {
        for (int k = 1; k < n - 1; ++k) {
            W sum = 0;
            for (int r = k; r < n; ++r)
                sum += W(at(r, k - 1)) * at(r, k - 1);
            if (isArray && !(sum > epsilon))
                continue;
            const W norm = std::sqrt(sum), x = at(k, k - 1);
            for (int r = k + 1; r < n; ++r)
                u[r] = at(r, k - 1);
            if ((isArray || hasVectors) && epsilon >= std::fabs(norm - x))
                continue;
            W h;
            if (x > epsilon)
                h = (sum + norm * x) * 2, u[k] = T(x + norm);
            else if (epsilon >= std::fabs(x))
                h = sum + sum, u[k] = T(norm);
            else
                h = (sum - norm * x) * 2, u[k] = T(x - norm);
            if (!(h > epsilon))
                continue;
            const W f = 2 / h;
            for (int c = k - 1; c < n; ++c) {
                W s = 0;
                for (int r = k; r < n; ++r)
                    s += W(at(r, c)) * u[r];
                for (int r = k; r < n; ++r)
                    at(r, c) = T(at(r, c) - u[r] * (s * f));
            }
            for (int i = k - 1; i < n; ++i) {
                W s = 0;
                for (int c = k; c < n; ++c)
                    s += W(at(i, c)) * u[c];
                for (int c = k; c < n; ++c)
                    at(i, c) = T(at(i, c) - u[c] * (s * f));
            }
            for (int r = 1; r < n; ++r) {
                W s = 0;
                for (int c = k; c < n; ++c)
                    s += W(u[c]) * v[r * n + c];
                for (int c = k; c < n; ++c)
                    if (k > 1)
                        v[r * n + c] = T(v[r * n + c] - u[c] * (s * f));
                    else if (c == r)
                        v[r * n + r] = T(1 - f * u[r] * u[r]);
                    else // symmetric: formed from the smaller index
                        v[r * n + c] = T(u[std::min(r, c)] * -f * u[std::max(r, c)]);
            }
        }
    }

    // The iteration goes down from the top, or by the same steps up from the bottom: i is counted from where it begins.
    int place(int i) const { return down ? i : n - 1 - i; }
    T &di(int i) { return d(place(i)); }
    T &ei(int i) { return e(down ? i : n - 2 - i); }

    ORACLE_RESULT W shift(int l, int m)
    {
        const W coupling = ei(l);
        W g = (W(di(l + 1)) - di(l)) / (2 * coupling);
        const W r =
            hasVectors && !isArray && sizeof(T) == 4 ? W(std::sqrt(double(W(g * g)) + 1)) : std::sqrt(g * g + 1);
        const W bound = zeroBound && down ? W(0) : epsilon;
        return (W(di(m)) - di(l)) + coupling / (g > bound ? g + r : g - r);
    }

    // s and c for f and g; turns columns i and i + 1 of the vectors.
    void rotation(int i, W f, W g, W r, W &s, W &c)
    {
        const W inverse = 1 / r;
        const bool byInverse = hasVectors && isArray;
        s = byInverse ? f * inverse : f / r;
        c = byInverse ? inverse * g : g / r;
        for (int row = 0; hasVectors && row < n; ++row) {
            T &near = v[row * n + place(i)], &far = v[row * n + place(i + 1)];
            const W x = byInverse ? near * inverse : W(near), y = byInverse ? far * inverse : W(far);
            const W cs = byInverse ? g : c, sn = byInverse ? f : s;
            near = T(cs * x - sn * y);
            far = T(sn * x + cs * y);
        }
    }

    bool iterate(T *values, W &product)
    {
        for (int l = 0; l < n; ++l)
            for (int iter = 0;; ++iter) {
                int m = l, i;
                while (m < n - 1 && std::fabs(W(0.5) * ei(m)) > epsilon)
                    ++m;
                if (!down && !hasVectors && m < n - 1) { // wherever a search stops
                    values[place(m)] = di(m);
                    product *= di(m);
                }
                if (m == l)
                    break;
                if (iter == 30)
                    return false;
                W g = shift(l, m), s = 1, c = 1, p = 0, q = 0;
                for (i = m - 1; i >= l; --i) {
                    const W f = s * ei(i), b = c * ei(i), r = std::sqrt(f * f + g * g);
                    if (i != m - 1)
                        ei(i + 1) = T(r);
                    if (!(std::fabs(r) > epsilon)) {
                        di(i + 1) = T(di(i + 1) - p);
                        ei(m - 1) = 0;
                        break;
                    }
                    rotation(i, f, g, r, s, c);
                    g = di(i + 1) - p;
                    q = (di(i) - g) * s + (c + c) * b;
                    p = q * s;
                    di(i + 1) = T(g + p);
                    g = q * c - b;
                }
                if (i < l && (std::fabs(q) > epsilon || (down && l == 0))) {
                    di(l) = T(di(l) - p);
                    ei(l) = T(g);
                }
            }
        return true;
    }

    KvlStatus general(const T *src, T *values)
    {
        std::copy(src, src + n * n, a.begin());
        for (int i = 0; i < n; ++i)
            v[i * n + i] = 1;
        reduce(values);
        W product = 1;
        down = std::fabs(d(n - 1)) > std::fabs(d(0));
        if (!iterate(values, product))
            return kvlErrNoConvergence;
        if (!down && !hasVectors) {
            values[0] = d(0);
            product *= d(0);
        } else
            for (int i = 0; i < n; ++i)
                product *= values[i] = d(i);
        if (epsilon >= std::fabs(product))
            return kvlErrSingular;
        for (int i = 0; i < n - 1; ++i) {
            int most = i;
            for (int k = i + 1; k < n; ++k)
                if (values[k] > values[most])
                    most = k;
            std::swap(values[i], values[most]);
            for (int r = 0; r < n && most != i; ++r)
                std::swap(v[r * n + i], v[r * n + most]);
        }
        return kvlOk;
    }

    int n;
    bool isArray, hasVectors, zeroBound, down = true;
    std::vector<T> a, v;
    KvlStatus status = kvlOk;
};

} // namespace oracle
