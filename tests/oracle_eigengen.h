// The quasi-triangular form of one general matrix and its eigenvalues, step by step with plain loops, counted from 1:
// every rounding in its order, the one block of scratch with all that lies in it.
#pragma once

#include "oracle_cholqr.h"

#include <algorithm>

namespace oracle {

// The products of n pairs, summed from the left.
template <class T>
ORACLE_RESULT T dot(int n, const T *a, int stepA, const T *b, int stepB)
{
    T sum = 0;
    for (int k = 0; k < n; ++k)
        sum += a[k * stepA] * b[k * stepB];
    return sum;
}

template <class T>
class SchurForm {
protected:
    SchurForm(int n, bool hasVectors) : n(n), hasVectors(hasVectors), scratch(3 * n * n + 5 * n), tau(n + 1) {}

    static constexpr T eps = sizeof(T) == 4 ? T(FLT_EPSILON) : T(DBL_EPSILON), tiny = least<T>;

    // False if the sweeps do not suffice.
    bool find(const T *src, T *re, T *im)
    {
        std::copy(src, src + n * n, scratch.begin());
        reduce();
        if (hasVectors)
            formQ();
        for (int j = 1; j <= n; ++j)
            for (int i = j + 2; i <= n; ++i)
                h(i, j) = 0;
        return iterate(re, im);
    }

    T &h(int i, int j) { return scratch[(j - 1) * n + i - 1]; }
    T &q(int i, int j) { return scratch[n * n + (j - 1) * n + i - 1]; }
    // The first only if it is larger: NaN is not.
    static ORACLE_RESULT T most(T a, T b) { return a > b ? a : b; }

    int n;
    bool hasVectors;
    std::vector<T> scratch;

private:
    static ORACLE_RESULT T pair(T a, T b)
    {
        T big = most(a, b), small = a > b ? b : a;
        if (small >= tiny) {
            const T ratio = (small * small) / (big * big);
            big = big * T(std::sqrt(1.0 + double(ratio)));
        }
        return big;
    }
    // x[0] is alpha.
    static ORACLE_RESULT T reflector(std::vector<T> &x)
    {
        const T *const rest = x.data() + 1;
        const T xnorm = std::sqrt(dot(static_cast<int>(x.size()) - 1, rest, 1, rest, 1));
        if (x.size() < 2 || !(xnorm >= tiny))
            return 0;
        const T norm = pair(std::fabs(x[0]), xnorm), alpha = x[0], beta = alpha >= 0 ? -norm : norm;
        const T s = 1 / (alpha - beta);
        for (T &element : x)
            element = s * element;
        x[0] = beta;
        return (beta - alpha) / beta;
    }
    // One row or column by I - t*x*x'.
    static void reflect(int m, T *line, int step, T t, const T *x, bool factorIsOfSum)
    {
        const T sum = dot(m, line, step, x, 1);
        for (int k = 0; k < m; ++k)
            line[k * step] -= factorIsOfSum ? (t * sum) * x[k] : (t * x[k]) * sum;
    }

    void reduce()
    {
        for (int k = 1; k < n; ++k) {
            const int m = n - k;
            std::vector<T> x(&h(k + 1, k), &h(k + 1, k) + m);
            const T t = tau[k - 1] = reflector(x), beta = x[0];
            x[0] = 1;
            if (std::fabs(t) > tiny) {
                for (int i = 1; i <= n; ++i)
                    reflect(m, &h(i, k + 1), n, t, &x[0], true);
                for (int j = k + 1; j <= n; ++j)
                    reflect(m, &h(k + 1, j), 1, t, &x[0], false);
            }
            x[0] = beta;
            std::copy(x.begin(), x.end(), &h(k + 1, k));
        }
    }

    void formQ()
    {
        for (int i = 1; i <= n; ++i)
            for (int j = 1; j <= n; ++j)
                q(i, j) = i == 1 || j == 1 ? T(i == j) : i > j ? h(i, j - 1) : T(0);
        if (n > 1)
            q(n, n) = 1 - tau[n - 2];
        for (int d = n - 1; d >= 2; --d) { // the diagonal position of a reflector
            const T t = tau[d - 2];
            q(d, d) = 1;
            for (int j = d + 1; j <= n && std::fabs(t) > tiny; ++j)
                reflect(n - d + 1, &q(d, j), 1, t, &q(d, d), false);
            for (int i = d + 1; i <= n; ++i)
                q(i, d) *= -t;
            q(d, d) = 1 - t;
            for (int i = 1; i < d; ++i)
                q(i, d) = 0;
        }
    }

    bool staysApart(int k, int l, int i)
    {
        if (!hasVectors)
            return std::fabs(h(k, k - 1)) > eps;
        T t = std::fabs(h(k - 1, k - 1)) + std::fabs(h(k, k));
        if (!(t > tiny)) {
            t = 0;
            for (int j = l - 1; j <= i - 1; ++j) {
                const T *const start = &h(l, l) + j * n;
                T sum = 0;
                for (int e = 0; e < std::min(j + 1, i); ++e)
                    sum += std::fabs(start[e]);
                if (sum > t)
                    t = sum;
            }
        }
        const T smlnum = n * (tiny / eps);
        return std::fabs(h(k, k - 1)) > most(t * eps, smlnum);
    }

    bool iterate(T *re, T *im)
    {
        int itn = 30 * n;
        for (int i = n; i >= 1;) {
            int l = 1, its = 0;
            for (;;) {
                int k = i;
                while (k > l && staysApart(k, l, i))
                    --k;
                l = k;
                if (l > 1)
                    h(l, l - 1) = 0;
                if (l >= i - 1)
                    break;
                sweep(l, i, its);
                if (++its >= itn)
                    break;
            }
            if (l < i - 1)
                return false;
            if (l == i) {
                re[i - 1] = h(i, i);
                im[i - 1] = 0;
            } else {
                const T m = standardise(i);
                re[i - 2] = h(i - 1, i - 1);
                im[i - 2] = m;
                re[i - 1] = h(i, i);
                im[i - 1] = -m;
            }
            itn -= its;
            i = l - 1;
        }
        return true;
    }

    void sweep(int l, int i, int its)
    {
        T h44 = h(i, i), h33 = h(i - 1, i - 1), p43;
        if (its == 10 || its == 20) {
            const T s = std::fabs(h(i, i - 1)) + std::fabs(h(i - 1, i - 2));
            h33 = h44 = T(0.75) * s + h44;
            p43 = (T(-0.4375) * s) * s;
        } else {
            p43 = h(i, i - 1) * h(i - 1, i);
            T d = T(0.5) * (h33 - h44);
            d = d * d + p43;
            if (d > 0) {
                const T r = std::sqrt(d), ave = T(0.5) * (h44 + h33), t = ave >= 0 ? ave + r : ave - r;
                h44 = double(std::fabs(h33)) - double(std::fabs(h44)) > 0 ? (h33 * h44 - p43) / t : t;
                h33 = h44;
                p43 = 0;
            }
        }
        T q1, q2, q3;
        int m = i - 2;
        for (;; --m) {
            const T h11 = h(m, m), h22 = h(m + 1, m + 1), a = h44 - h11, b = h33 - h11;
            q1 = (b * a - p43) / h(m + 1, m) + h(m, m + 1);
            q2 = ((h22 - h11) - a) - b;
            q3 = h(m + 2, m + 1);
            const T s = T(double(std::fabs(q1)) + double(std::fabs(q2)) + double(std::fabs(q3)));
            for (T *x : {&q1, &q2, &q3})
                *x /= s;
            if (m == l)
                break;
            const T sum = T(double(std::fabs(h11)) + double(std::fabs(h22)) + double(std::fabs(h(m - 1, m - 1))));
            const T bound = (std::fabs(q1) * sum) * eps;
            if (!(double(std::fabs(h(m, m - 1))) * (double(std::fabs(q2)) + double(std::fabs(q3))) > double(bound)))
                break;
        }
        for (int k = m; k <= i - 1; ++k) {
            const int r = std::min(3, i - k + 1);
            std::vector<T> x = {q1, q2, q3};
            for (int e = 0; e < r && k > m; ++e)
                x[e] = h(k + e, k - 1);
            x.resize(r);
            const T t1 = reflector(x);
            if (k > m) {
                h(k, k - 1) = x[0];
                for (int e = 1; e < r; ++e)
                    h(k + e, k - 1) = 0;
            } else if (m > l)
                h(k, k - 1) = -h(k, k - 1);
            const T v2 = x[1], v3 = r == 3 ? x[2] : 0, t2 = t1 * v2, t3 = t1 * v3;
            const auto turn = [&](T &x1, T &x2, T *x3) {
                T sum = v2 * x2 + x1;
                if (r == 3)
                    sum = sum + v3 * *x3;
                x1 = x1 - t1 * sum;
                x2 = x2 - t2 * sum;
                if (r == 3)
                    *x3 = *x3 - sum * t3;
            };
            for (int j = k; j <= (hasVectors ? n : i); ++j)
                turn(h(k, j), h(k + 1, j), r == 3 ? &h(k + 2, j) : nullptr);
            for (int j = hasVectors ? 1 : l; j <= std::min(k + 3, i); ++j)
                turn(h(j, k), h(j, k + 1), r == 3 ? &h(j, k + 2) : nullptr);
            for (int j = 1; j <= n && hasVectors; ++j)
                turn(q(j, k), q(j, k + 1), r == 3 ? &q(j, k + 2) : nullptr);
        }
    }

    // The imaginary part of the block that ends at i, which becomes triangular or gets equal diagonal elements.
    ORACLE_RESULT T standardise(int i)
    {
        T a = h(i - 1, i - 1), b = h(i - 1, i), g = h(i, i - 1), d = h(i, i);
        const auto rotate = [&](T cosine, T sine) {
            rotation[0] = cosine;
            rotation[1] = sine;
        };
        const bool sameSign = (b >= 0) == (g >= 0);
        const T t = a - d;
        if (!(std::fabs(g) > tiny))
            rotate(1, 0);
        else if (!(std::fabs(b) > tiny)) {
            std::swap(a, d);
            b = -g;
            g = 0;
            rotate(0, 1);
        } else if (!(std::fabs(t) > tiny)) {
            if (!sameSign)
                rotate(1, 0);
        } else {
            const T p = T(0.5) * t, bcmax = most(std::fabs(b), std::fabs(g)),
                    bcmis = std::fabs(b) > std::fabs(g) ? std::fabs(g) : std::fabs(b),
                    scale = most(std::fabs(p), bcmax), bs = sameSign ? bcmis : -bcmis,
                    z0 = (p / scale) * p + (bcmax / scale) * bs;
            if (z0 >= 4 * eps) {
                const T r = T(std::sqrt(double(scale)) * std::sqrt(double(z0))), z = p > 0 ? p + r : p - r;
                const T tau2 = pair(std::fabs(z), std::fabs(g));
                rotate(z / tau2, g / tau2);
                a = d + z;
                d = d - bs * (bcmax / z);
                b = b - g;
                g = 0;
            } else
                equalise(t, p, a, b, g, d);
        }
        h(i - 1, i - 1) = a;
        h(i - 1, i) = b;
        h(i, i - 1) = g;
        h(i, i) = d;
        const T c = rotation[0], s = rotation[1];
        const auto turn = [&](T &x, T &z) {
            const T first = c * x + s * z;
            z = c * z - s * x;
            x = first;
        };
        for (int j = i + 1; j <= n && hasVectors; ++j)
            turn(h(i - 1, j), h(i, j));
        for (int j = 1; j <= i - 2 && hasVectors; ++j)
            turn(h(j, i - 1), h(j, i));
        for (int j = 1; j <= n && hasVectors; ++j)
            turn(q(j, i - 1), q(j, i));
        return std::fabs(g) > tiny ? T(std::sqrt(double(std::fabs(b))) * std::sqrt(double(std::fabs(g)))) : 0;
    }
    void equalise(T t, T p, T &a, T &b, T &g, T &d)
    {
        const T sigma = b + g, norm = pair(std::fabs(t), std::fabs(sigma)), ratio = std::fabs(sigma) / norm;
        const T c = T(std::sqrt((double(ratio) + 1) * 0.5)), quotient = (-p) / (norm * c);
        const T s = sigma < 0 ? -quotient : quotient;
        const T aa = a * c + b * s, bb = b * c - a * s, cc = g * c + d * s, dd = d * c - g * s;
        const T a1 = aa * c + cc * s, b1 = bb * c + dd * s, g1 = cc * c - aa * s;
        a = d = T(0.5) * ((a1 - bb * s) + dd * c);
        b = b1;
        g = g1;
        rotation[0] = c;
        rotation[1] = s;
        if (!(std::fabs(b1) > tiny && std::fabs(g1) > tiny)) {
            b = -g1;
            g = 0;
            rotation[0] = -s;
            rotation[1] = c;
        } else if ((b1 >= 0) == (g1 >= 0)) {
            a = g1 >= 0 ? a + p : a - p;
            d = g1 >= 0 ? d - p : d + p;
            b = b1 - g1;
            g = 0;
            const T sab = std::sqrt(std::fabs(b1)), sac = std::sqrt(std::fabs(g1)),
                    tau3 = 1 / std::sqrt(std::fabs(b1 + g1));
            rotation[0] = (c * sab - s * sac) * tau3;
            rotation[1] = (c * sab + s * sac) * tau3;
        }
    }

    std::vector<T> tau;
    T rotation[2] = {0, 0};
};

} // namespace oracle
