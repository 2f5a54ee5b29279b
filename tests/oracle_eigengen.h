// General eigenproblems of one object, step by step with plain loops, counted from 1: every rounding in its order, the
// one block of scratch with all that lies in it, what stands in memory after a failure.
#pragma once

#include "oracle_cholqr.h"

#include <algorithm>

namespace oracle {

template <class T>
class EigenGeneral {
public:
    EigenGeneral(int n, bool hasRight, bool hasLeft)
        : n(n), hasRight(hasRight), hasLeft(hasLeft), scratch(3 * n * n + 5 * n), tau(n + 1), w(n + 1), cs(n + 1),
          xr(n + 1), xi(n + 1)
    {
    }

    // All but `src` hold what is in memory before. Vectors may be null where they are not wanted.
    KvlStatus solve(const T *src, T *re, T *im, T *right, T *left)
    {
        std::copy(src, src + n * n, scratch.begin());
        reduce();
        if (hasRight || hasLeft)
            formQ();
        for (int j = 1; j <= n; ++j)
            for (int i = j + 2; i <= n; ++i)
                h(i, j) = 0;
        if (!iterate(re, im))
            return kvlErrNoConvergence;
        if (hasRight || hasLeft) {
            std::vector<T> vectors[2];
            for (int side = 0; side < 2; ++side) {
                if (!(side == 0 ? hasRight : hasLeft))
                    continue;
                v.assign(scratch.begin() + n * n, scratch.begin() + 2 * n * n);
                sumColumns();
                if (n > 1) { // one vector of one element is 1 in either type
                    const KvlStatus status = side == 0 ? backward() : forward();
                    if (status != kvlOk || ended)
                        return status;
                    normalise(im);
                }
                vectors[side] = v;
            }
            for (int side = 0; side < 2; ++side)
                for (int k = 0; k < n * n && !vectors[side].empty(); ++k)
                    (side == 0 ? right : left)[k] = vectors[side][k % n * n + k / n];
        }
        return kvlOk;
    }
    // The call ends behind this object, though its status is 0.
    bool ended = false;

private:
    static constexpr T eps = sizeof(T) == 4 ? T(FLT_EPSILON) : T(DBL_EPSILON), tiny = least<T>;
    static constexpr T solverFloor = 2 * tiny, solverBig = 1 / solverFloor;

    T &h(int i, int j) { return scratch[(j - 1) * n + i - 1]; }
    T &q(int i, int j) { return scratch[n * n + (j - 1) * n + i - 1]; }
    T &y(int i, int j) { return v[(j - 1) * n + i - 1]; }

    // The first only if it is larger: NaN is not.
    static ORACLE_RESULT T most(T a, T b) { return a > b ? a : b; }
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
        T sum = 0;
        for (std::size_t k = 1; k < x.size(); ++k)
            sum += x[k] * x[k];
        const T xnorm = std::sqrt(sum);
        if (x.size() < 2 || !(xnorm >= tiny))
            return 0;
        const T norm = pair(std::fabs(x[0]), xnorm), alpha = x[0], beta = alpha >= 0 ? -norm : norm;
        const T s = 1 / (alpha - beta);
        for (T &element : x)
            element = s * element;
        x[0] = beta;
        return (beta - alpha) / beta;
    }

    void reduce()
    {
        for (int k = 1; k < n; ++k) {
            const int m = n - k;
            std::vector<T> x(&h(k + 1, k), &h(k + 1, k) + m);
            const T t = tau[k - 1] = reflector(x);
            const T beta = x[0];
            x[0] = 1;
            if (std::fabs(t) > tiny) {
                for (int i = 1; i <= n; ++i) {
                    w[i] = 0;
                    for (int c = 0; c < m; ++c)
                        w[i] += h(i, k + 1 + c) * x[c];
                }
                for (int c = 0; c < m; ++c)
                    for (int i = 1; i <= n; ++i)
                        h(i, k + 1 + c) -= (t * w[i]) * x[c];
                for (int j = 0; j < m; ++j) {
                    w[j] = 0;
                    for (int r = 0; r < m; ++r)
                        w[j] += h(k + 1 + r, k + 1 + j) * x[r];
                }
                for (int j = 0; j < m; ++j)
                    for (int r = 0; r < m; ++r)
                        h(k + 1 + r, k + 1 + j) -= (t * x[r]) * w[j];
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
        for (int k = n - 2; k >= 1; --k) {
            const int d = k + 1; // the diagonal position of reflector k
            const T t = tau[k - 1];
            q(d, d) = 1;
            if (std::fabs(t) > tiny)
                for (int j = d + 1; j <= n; ++j) {
                    w[j] = 0;
                    for (int i = d; i <= n; ++i)
                        w[j] += q(i, d) * q(i, j);
                    for (int i = d; i <= n; ++i)
                        q(i, j) -= (t * q(i, d)) * w[j];
                }
            for (int i = d + 1; i <= n; ++i)
                q(i, d) *= -t;
            q(d, d) = 1 - t;
            for (int i = 1; i < d; ++i)
                q(i, d) = 0;
        }
    }

    bool staysApart(int k, int l, int i)
    {
        if (!hasRight && !hasLeft)
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
        const bool vectors = hasRight || hasLeft;
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
            q1 /= s;
            q2 /= s;
            q3 /= s;
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
            for (int j = k; j <= (vectors ? n : i); ++j)
                turn(h(k, j), h(k + 1, j), r == 3 ? &h(k + 2, j) : nullptr);
            for (int j = vectors ? 1 : l; j <= std::min(k + 3, i); ++j)
                turn(h(j, k), h(j, k + 1), r == 3 ? &h(j, k + 2) : nullptr);
            for (int j = 1; j <= n && vectors; ++j)
                turn(q(j, k), q(j, k + 1), r == 3 ? &q(j, k + 2) : nullptr);
        }
    }

    ORACLE_RESULT T standardise(int i)
    {
        const bool vectors = hasRight || hasLeft;
        T a = h(i - 1, i - 1), b = h(i - 1, i), g = h(i, i - 1), d = h(i, i);
        const bool sameSign = (b >= 0) == (g >= 0);
        const T t = a - d;
        if (!(std::fabs(g) > tiny)) {
            rotation[0] = 1;
            rotation[1] = 0;
        } else if (!(std::fabs(b) > tiny)) {
            std::swap(a, d);
            b = -g;
            g = 0;
            rotation[0] = 0;
            rotation[1] = 1;
        } else if (!(std::fabs(t) > tiny)) {
            if (!sameSign) {
                rotation[0] = 1;
                rotation[1] = 0;
            }
        } else {
            const T p = T(0.5) * t, bcmax = most(std::fabs(b), std::fabs(g)),
                    bcmis = std::fabs(b) > std::fabs(g) ? std::fabs(g) : std::fabs(b),
                    scale = most(std::fabs(p), bcmax), bs = sameSign ? bcmis : -bcmis,
                    z0 = (p / scale) * p + (bcmax / scale) * bs;
            if (z0 >= 4 * eps) {
                const T r = T(std::sqrt(double(scale)) * std::sqrt(double(z0))), z = p > 0 ? p + r : p - r;
                const T tau2 = pair(std::fabs(z), std::fabs(g));
                rotation[0] = z / tau2;
                rotation[1] = g / tau2;
                a = d + z;
                d = d - bs * (bcmax / z);
                b = b - g;
                g = 0;
            } else {
                const T sigma = b + g, norm = pair(std::fabs(t), std::fabs(sigma));
                const T ratio = std::fabs(sigma) / norm;
                const T c = T(std::sqrt((double(ratio) + 1) * 0.5));
                T s = (-p) / (norm * c);
                if (sigma < 0)
                    s = -s;
                const T aa = a * c + b * s, bb = b * c - a * s, cc = g * c + d * s, dd = d * c - g * s;
                const T a1 = aa * c + cc * s, b1 = bb * c + dd * s, g1 = cc * c - aa * s;
                const T mean = T(0.5) * ((a1 - bb * s) + dd * c);
                a = d = mean;
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
                    a = g1 >= 0 ? mean + p : mean - p;
                    d = g1 >= 0 ? mean - p : mean + p;
                    b = b1 - g1;
                    g = 0;
                    const T sab = std::sqrt(std::fabs(b1)), sac = std::sqrt(std::fabs(g1)),
                            tau3 = 1 / std::sqrt(std::fabs(b1 + g1));
                    rotation[0] = (c * sab - s * sac) * tau3;
                    rotation[1] = (c * sab + s * sac) * tau3;
                }
            }
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
        for (int j = i + 1; j <= n && vectors; ++j)
            turn(h(i - 1, j), h(i, j));
        for (int j = 1; j <= i - 2 && vectors; ++j)
            turn(h(j, i - 1), h(j, i));
        for (int j = 1; j <= n && vectors; ++j)
            turn(q(j, i - 1), q(j, i));
        return std::fabs(g) > tiny ? T(std::sqrt(double(std::fabs(b))) * std::sqrt(double(std::fabs(g)))) : 0;
    }

    void sumColumns()
    {
        for (int j = 1; j <= n; ++j) {
            cs[j] = 0;
            for (int i = 1; i < j; ++i)
                cs[j] += std::fabs(h(i, j));
        }
    }

    // The solution of a block whose first position is j, and what the solver tells of it.
    struct Solved {
        T re[2], im[2], scale, xn;
    };

    // The right side stands in xr and xi. False where the block vanishes.
    bool solveBlock(int j, int order, bool complex, bool transposed, T wr, T wi, T smin, Solved &x)
    {
        const T smini = most(smin, solverFloor);
        T bound = 0;
        x.scale = 1;
        x.im[0] = x.im[1] = x.re[1] = 0;
        if (order == 1) {
            T pr = h(j, j) - wr, pi = complex ? -wi : 0, c = std::fabs(pr) + std::fabs(pi);
            if (!(c >= smini)) {
                pr = c = smini;
                pi = 0;
            }
            const T size = complex ? std::fabs(xi[j]) + std::fabs(xr[j]) : std::fabs(xr[j]);
            if (size > 1 && !(c >= 1) && size > (complex ? bignum : solverBig) * c)
                x.scale = 1 / size;
            if (!complex)
                x.re[0] = (xr[j] * x.scale) / pr;
            else
                quotient(xr[j], xi[j], pr, pi, x.scale, x.re[0], x.im[0]);
            x.xn = complex ? std::fabs(x.re[0]) + std::fabs(x.im[0]) : std::fabs(x.re[0]);
            return true;
        }
        const T re[] = {h(j, j) - wr, transposed ? h(j, j + 1) : h(j + 1, j), transposed ? h(j + 1, j) : h(j, j + 1),
                        h(j + 1, j + 1) - wr};
        const T im[] = {complex ? -wi : 0, 0, 0, complex ? -wi : 0};
        static const int iPivot[4][4] = {{0, 1, 2, 3}, {1, 0, 3, 2}, {2, 3, 0, 1}, {3, 2, 1, 0}};
        int p = 0;
        T cmax = std::fabs(re[0]) + std::fabs(im[0]);
        for (int k = 1; k < 4; ++k)
            if (std::fabs(re[k]) + std::fabs(im[k]) > cmax) {
                cmax = std::fabs(re[k]) + std::fabs(im[k]);
                p = k;
            }
        if (!(cmax >= smini))
            return false;
        const int below = iPivot[p][1], beside = iPivot[p][2], across = iPivot[p][3];
        T b1r = xr[j], b2r = xr[j + 1], b1i = complex ? xi[j] : 0, b2i = complex ? xi[j + 1] : 0;
        if (p == 1 || p == 3) {
            std::swap(b1r, b2r);
            std::swap(b1i, b2i);
        }
        if (!complex) {
            const T ur = 1 / re[p], l = re[below] * ur;
            T u22 = re[across] - re[beside] * l;
            if (std::fabs(u22) < smini)
                u22 = smini;
            b2r = b2r - l * b1r;
            bound = most(std::fabs(b1r * (u22 * ur)), std::fabs(b2r));
            if (std::fabs(u22) < 1 && bound > 1 && bound > solverBig * std::fabs(u22))
                x.scale = 1 / bound;
            x.re[1] = (b2r * x.scale) / u22;
            x.re[0] = (x.scale * b1r) * ur - (ur * re[beside]) * x.re[1];
        } else {
            T ur, ui, lr, li, sr, si, u22r, u22i;
            if (p == 1 || p == 2) {
                ur = 1 / re[p];
                ui = 0;
                lr = re[below] * ur;
                li = im[below] * ur;
                sr = re[beside] * ur;
                si = im[beside] * ur;
                u22r = re[across] - re[beside] * lr + im[beside] * li;
                u22i = -re[beside] * li - im[beside] * lr;
            } else {
                if (std::fabs(re[p]) > std::fabs(im[p])) {
                    const T t = im[p] / re[p];
                    ur = 1 / (re[p] * (1 + t * t));
                    ui = -t * ur;
                } else {
                    const T t = re[p] / im[p];
                    ui = -1 / (im[p] * (1 + t * t));
                    ur = -t * ui;
                }
                lr = re[below] * ur;
                li = re[below] * ui;
                sr = re[beside] * ur;
                si = re[beside] * ui;
                u22r = re[across] - re[beside] * lr;
                u22i = im[across] - re[beside] * li;
            }
            T a = std::fabs(u22r) + std::fabs(u22i);
            if (a < smini) {
                u22r = a = smini;
                u22i = 0;
            }
            b2r = b2r - lr * b1r + li * b1i;
            b2i = b2i - li * b1r - lr * b1i;
            bound = most((std::fabs(b1r) + std::fabs(b1i)) * (a * (std::fabs(ur) + std::fabs(ui))),
                         std::fabs(b2r) + std::fabs(b2i));
            if (a < 1 && bound > 1 && bound > solverBig * a) {
                x.scale = 1 / bound;
                b1r *= x.scale;
                b1i *= x.scale;
                b2r *= x.scale;
                b2i *= x.scale;
            }
            quotient(b2r, b2i, u22r, u22i, 1, x.re[1], x.im[1]);
            x.re[0] = ur * b1r - ui * b1i - sr * x.re[1] + si * x.im[1];
            x.im[0] = ui * b1r + ur * b1i - si * x.re[1] - sr * x.im[1];
        }
        if (p == 2 || p == 3) {
            std::swap(x.re[0], x.re[1]);
            std::swap(x.im[0], x.im[1]);
        }
        x.xn = most(std::fabs(x.re[0]) + std::fabs(x.im[0]), std::fabs(x.re[1]) + std::fabs(x.im[1]));
        if (cmax > 1 && x.xn > 1 && x.xn > solverBig / cmax) {
            const T t = cmax / solverBig;
            for (T *part : {&x.re[0], &x.re[1], &x.im[0], &x.im[1], &x.scale, &x.xn})
                *part *= t;
        }
        return true;
    }
    static void quotient(T br, T bi, T pr, T pi, T scale, T &re, T &im)
    {
        const T d = scale / (pr * pr + pi * pi);
        re = (br * pr + bi * pi) * d;
        im = (bi * pr - br * pi) * d;
    }

    bool isPairFrom(int j) { return j >= 1 && j < n && std::fabs(h(j + 1, j)) > tiny; }
    static KvlStatus atVanishedBlock(bool complex) { return complex ? kvlErrSmallPivot : kvlOk; }

    KvlStatus backward()
    {
        const T smlnum = n * (tiny / eps);
        bignum = (1 - eps) / smlnum;
        for (int j = n; j >= 1; --j) {
            const bool complex = isPairFrom(j - 1);
            const T wr = h(j, j),
                    wi = complex ? std::sqrt(std::fabs(h(j - 1, j))) * std::sqrt(std::fabs(h(j, j - 1))) : 0;
            const T smin = most((std::fabs(wr) + std::fabs(wi)) * eps, smlnum);
            const int top = complex ? j - 1 : j;
            if (!complex) {
                xr[j] = 1;
                for (int k = 1; k < j; ++k)
                    xr[k] = -h(k, j);
            } else {
                if (std::fabs(h(j - 1, j)) > std::fabs(h(j, j - 1))) {
                    xr[j - 1] = 1;
                    xi[j] = wi / h(j - 1, j);
                } else {
                    xr[j - 1] = -wi / h(j, j - 1);
                    xi[j] = 1;
                }
                xr[j] = xi[j - 1] = 0;
                for (int k = 1; k < j - 1; ++k) {
                    xr[k] = -xr[j - 1] * h(k, j - 1);
                    xi[k] = -xi[j] * h(k, j);
                }
            }
            for (int k = top - 1; k >= 1; --k) {
                const int order = isPairFrom(k - 1) ? 2 : 1, first = k - order + 1;
                Solved x;
                if (!solveBlock(first, order, complex, false, wr, wi, smin, x)) {
                    ended = !complex;
                    return atVanishedBlock(complex);
                }
                if (!(tiny >= std::fabs(x.scale - 1)))
                    for (int r = 1; r <= j; ++r) {
                        xr[r] *= x.scale;
                        xi[r] *= x.scale;
                    }
                if (x.xn > 1 && (order == 2 ? most(cs[first], cs[k]) : cs[k]) > bignum / x.xn)
                    for (T *part : {&x.re[0], &x.re[1], &x.im[0], &x.im[1]})
                        *part /= x.xn;
                for (int e = 0; e < order; ++e) {
                    xr[first + e] = x.re[e];
                    xi[first + e] = x.im[e];
                    for (int r = 1; r < first; ++r) {
                        xr[r] -= x.re[e] * h(r, first + e);
                        xi[r] -= x.im[e] * h(r, first + e);
                    }
                }
                k = first;
            }
            if (!complex && j > 1)
                combine(j, xr, 1, j - 1);
            if (complex) {
                combine(j - 1, xr, 1, j - 2);
                combine(j, xi, 1, j - 2);
                const T emax = largestOfPair(j - 1);
                for (int r = 1; r <= n; ++r) {
                    y(r, j - 1) *= 1 / emax;
                    y(r, j) *= 1 / emax;
                }
                --j;
            }
        }
        return kvlOk;
    }

    KvlStatus forward()
    {
        const T smlnum = n * (tiny / eps);
        bignum = (1 - eps) / smlnum;
        for (int j = 1; j <= n; ++j) {
            const bool complex = isPairFrom(j);
            const T wr = h(j, j),
                    wi = complex ? std::sqrt(std::fabs(h(j + 1, j))) * std::sqrt(std::fabs(h(j, j + 1))) : 0;
            const T smin = most((std::fabs(wr) + std::fabs(wi)) * eps, smlnum);
            const int end = complex ? j + 1 : j;
            if (!complex) {
                xr[j] = 1;
                for (int k = j + 1; k <= n; ++k)
                    xr[k] = -h(j, k);
            } else {
                if (std::fabs(h(j, j + 1)) >= std::fabs(h(j + 1, j))) {
                    xr[j] = wi / h(j, j + 1);
                    xi[j + 1] = 1;
                } else {
                    xr[j] = 1;
                    xi[j + 1] = -wi / h(j + 1, j);
                }
                xr[j + 1] = xi[j] = 0;
                for (int k = j + 2; k <= n; ++k) {
                    xr[k] = -xr[j] * h(j, k);
                    xi[k] = -xi[j + 1] * h(j + 1, k);
                }
            }
            T vmax = 1, vcrit = bignum;
            for (int k = end + 1; k <= n; ++k) {
                const int order = isPairFrom(k) ? 2 : 1;
                if ((order == 2 ? most(cs[k], cs[k + 1]) : cs[k]) > vcrit) {
                    for (int r = j; r <= n; ++r) {
                        xr[r] *= 1 / vmax;
                        xi[r] *= 1 / vmax;
                    }
                    vmax = 1;
                    vcrit = bignum;
                }
                for (int e = k; e < k + order; ++e) {
                    T sumRe = 0, sumIm = 0;
                    for (int r = end + 1; r < k; ++r) {
                        sumRe += h(r, e) * xr[r];
                        sumIm += h(r, e) * xi[r];
                    }
                    xr[e] -= sumRe;
                    xi[e] -= sumIm;
                }
                Solved x;
                if (!solveBlock(k, order, complex, true, wr, -wi, smin, x)) {
                    ended = !complex;
                    return atVanishedBlock(complex);
                }
                if (!(tiny >= std::fabs(x.scale - 1)))
                    for (int r = j; r <= n; ++r) {
                        xr[r] *= x.scale;
                        xi[r] *= x.scale;
                    }
                for (int e = 0; e < order; ++e) {
                    xr[k + e] = x.re[e];
                    xi[k + e] = x.im[e];
                    for (T part : {x.re[e], complex ? x.im[e] : 0})
                        if (std::fabs(part) > vmax)
                            vmax = std::fabs(part);
                }
                vcrit = bignum / vmax;
                k += order - 1;
            }
            if (complex) {
                combine(j, xr, j + 2, n);
                combine(j + 1, xi, j + 2, n);
                scaleIfAlive(j, 2, largestOfPair(j));
                ++j;
            } else {
                if (j < n)
                    combine(j, xr, j + 1, n);
                T largest = 0;
                for (int r = 1; r <= n; ++r)
                    largest = most(std::fabs(y(r, j)), largest);
                scaleIfAlive(j, 1, largest);
            }
        }
        return kvlOk;
    }

    void combine(int j, const std::vector<T> &x, int from, int to)
    {
        for (int r = 1; r <= n; ++r) {
            T sum = 0;
            for (int k = from; k <= to; ++k)
                sum += x[k] * y(r, k);
            y(r, j) = x[j] * y(r, j);
            if (from <= to)
                y(r, j) += sum;
        }
    }
    ORACLE_RESULT T largestOfPair(int j)
    {
        T emax = 0;
        for (int r = 1; r <= n; ++r)
            if (std::fabs(y(r, j)) + std::fabs(y(r, j + 1)) > emax)
                emax = std::fabs(y(r, j)) + std::fabs(y(r, j + 1));
        return emax;
    }
    void scaleIfAlive(int j, int columns, T size)
    {
        for (int c = j; c < j + columns && size > tiny; ++c)
            for (int r = 1; r <= n; ++r)
                y(r, c) *= 1 / size;
    }

    static ORACLE_RESULT double reciprocalOfRoot(double s) { return 1 / std::sqrt(s); }
    static ORACLE_RESULT float reciprocalOfRoot(float s)
    {
        const float root = _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(s)));
        float x = s * root;
        x = x * root;
        x = x - 3;
        return (-0.5f * root) * x;
    }
    ORACLE_RESULT T squares(int j)
    {
        T sum = 0;
        for (int r = 1; r <= n; ++r)
            sum += y(r, j) * y(r, j);
        return sum;
    }
    void normalise(const T *im)
    {
        for (int j = 1; j <= n; ++j) {
            if (!(std::fabs(im[j - 1]) >= tiny)) {
                const T s = squares(j);
                if (!(tiny >= std::fabs(s))) {
                    const T inv = reciprocalOfRoot(s);
                    for (int r = 1; r <= n; ++r)
                        y(r, j) *= inv;
                }
                continue;
            }
            const T su = squares(j), sv = squares(j + 1), inv = reciprocalOfRoot(su + sv);
            for (int r = 1; r <= n; ++r) {
                y(r, j) *= inv;
                y(r, j + 1) *= inv;
            }
            const auto size = [&](int r) {
                return std::pair<T, int>(y(r, j) * y(r, j) + y(r, j + 1) * y(r, j + 1), r);
            };
            auto best = size(1);
            for (int r = 2; r <= n; ++r)
                if (size(r).first > best.first)
                    best = size(r);
            const T f = y(best.second, j), g = y(best.second, j + 1), root = std::sqrt(f * f + g * g);
            T c = f / root, s = g / root;
            if (c < 0 && std::fabs(f) > std::fabs(g)) {
                c = -c;
                s = -s;
            }
            for (int r = 1; r <= n; ++r) {
                const T u = y(r, j), z = y(r, j + 1);
                y(r, j) = c * u + s * z;
                y(r, j + 1) = c * z - s * u;
            }
            ++j;
        }
    }

    int n;
    bool hasRight, hasLeft;
    std::vector<T> scratch, tau, w, cs, xr, xi, v;
    T bignum = 0, rotation[2] = {0, 0};
};

} // namespace oracle
