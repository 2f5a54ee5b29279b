// General eigenvectors of one object from its quasi-triangular form: substitution with every rounding in its order, and
// what stands in memory after a failure.
#pragma once

#include "oracle_eigengen.h"

namespace oracle {

template <class T>
class EigenGeneral : SchurForm<T> {
public:
    EigenGeneral(int order, bool hasRight, bool hasLeft)
        : Schur(order, hasRight || hasLeft), hasRight(hasRight), hasLeft(hasLeft), cs(n + 1), xr(cs), xi(cs)
    {
    }

    // All but `src` hold what is in memory before. Vectors may be null where they are not wanted.
    KvlStatus solve(const T *src, T *re, T *im, T *right, T *left)
    {
        if (!this->find(src, re, im))
            return kvlErrNoConvergence;
        std::vector<T> vectors[2];
        for (const bool isLeft : {false, true}) {
            if (!(isLeft ? hasLeft : hasRight))
                continue;
            v.assign(scratch.begin() + n * n, scratch.begin() + 2 * n * n);
            sumColumns();
            if (n > 1) { // one vector of one element is 1 in either type
                const KvlStatus status = isLeft ? forward() : backward();
                if (status != kvlOk || ended)
                    return status;
                normalise(im);
            }
            vectors[isLeft] = v;
        }
        for (const bool isLeft : {false, true})
            for (int k = 0; k < n * n && !vectors[isLeft].empty(); ++k)
                (isLeft ? left : right)[k] = vectors[isLeft][k % n * n + k / n];
        return kvlOk;
    }
    // The call ends behind this object, though its status is 0.
    bool ended = false;

private:
    using Schur = SchurForm<T>;
    using Schur::eps, Schur::h, Schur::most, Schur::n, Schur::scratch, Schur::tiny;
    static constexpr T solverFloor = 2 * tiny, solverBig = 1 / solverFloor;

    T &y(int i, int j) { return v[(j - 1) * n + i - 1]; }
    static void scale(T factor, int count, T *x)
    {
        for (int k = 0; k < count; ++k)
            x[k] *= factor;
    }

    // An eigenvalue, and the least magnitude of a pivot.
    struct Value {
        T re, im, least;
    };
    // The solution of a block, and what the solver tells of it.
    struct Solved {
        T re[2], im[2], scale, xn;
    };

    void sumColumns()
    {
        for (int j = 1; j <= n; ++j) {
            cs[j] = 0;
            for (int i = 1; i < j; ++i)
                cs[j] += std::fabs(h(i, j));
        }
    }
    bool isPairFrom(int j) { return j >= 1 && j < n && std::fabs(h(j + 1, j)) > tiny; }
    // That of row i, or of the pair of rows i and j.
    Value valueAt(int i, int j)
    {
        const T re = h(i, i), im = i == j ? T(0) : std::sqrt(std::fabs(h(i, j))) * std::sqrt(std::fabs(h(j, i)));
        return {re, im, most((std::fabs(re) + std::fabs(im)) * eps, smlnum)};
    }

    static void quotient(T br, T bi, T pr, T pi, T scale, T &re, T &im)
    {
        const T d = scale / (pr * pr + pi * pi);
        re = (br * pr + bi * pi) * d;
        im = (bi * pr - br * pi) * d;
    }
    static ORACLE_RESULT T size(T re, T im) { return std::fabs(re) + std::fabs(im); }

    // The block whose first position is j; the right side stands in xr and xi. False where the block vanishes.
    bool solveBlock(int j, int order, bool complex, bool transposed, const Value &w, Solved &x)
    {
        const T smini = most(w.least, solverFloor);
        x = {{}, {}, 1, 0};
        if (order == 1) {
            T pr = h(j, j) - w.re, pi = -w.im, c = size(pr, pi);
            if (!(c >= smini)) {
                pr = c = smini;
                pi = 0;
            }
            const T given = complex ? size(xi[j], xr[j]) : std::fabs(xr[j]);
            if (given > 1 && !(c >= 1) && given > (complex ? bignum : solverBig) * c)
                x.scale = 1 / given;
            if (complex)
                quotient(xr[j], xi[j], pr, pi, x.scale, x.re[0], x.im[0]);
            else
                x.re[0] = (xr[j] * x.scale) / pr;
            x.xn = size(x.re[0], x.im[0]);
            return true;
        }
        const T right = h(j, j + 1), below = h(j + 1, j);
        const T re[] = {h(j, j) - w.re, transposed ? right : below, transposed ? below : right, h(j + 1, j + 1) - w.re};
        const T im[] = {-w.im, 0, 0, -w.im};
        int p = 0;
        for (int k = 1; k < 4; ++k)
            if (size(re[k], im[k]) > size(re[p], im[p]))
                p = k;
        const T cmax = size(re[p], im[p]);
        if (!(cmax >= smini))
            return false;
        const int first = p % 2 ? j + 1 : j, second = p % 2 ? j : j + 1; // by an exchange of the rows
        if (complex)
            solveTwo(p, re, im, smini, xr[first], xi[first], xr[second], xi[second], x);
        else
            solveTwo(p, re, smini, xr[first], xr[second], x);
        if (p >= 2) {
            std::swap(x.re[0], x.re[1]);
            std::swap(x.im[0], x.im[1]);
        }
        x.xn = most(size(x.re[0], x.im[0]), size(x.re[1], x.im[1]));
        if (cmax > 1 && x.xn > 1 && x.xn > solverBig / cmax)
            for (T *part : {&x.re[0], &x.re[1], &x.im[0], &x.im[1], &x.scale, &x.xn})
                *part *= cmax / solverBig;
        return true;
    }
    // By pivot p of the elements, counted column by column.
    static void solveTwo(int p, const T *re, T smini, T b1, T b2, Solved &x)
    {
        const T ur = 1 / re[p], l = re[p ^ 1] * ur;
        T u22 = re[p ^ 3] - re[p ^ 2] * l;
        if (std::fabs(u22) < smini)
            u22 = smini;
        b2 = b2 - l * b1;
        const T bound = most(std::fabs(b1 * (u22 * ur)), std::fabs(b2));
        if (std::fabs(u22) < 1 && bound > 1 && bound > solverBig * std::fabs(u22))
            x.scale = 1 / bound;
        x.re[1] = (b2 * x.scale) / u22;
        x.re[0] = (x.scale * b1) * ur - (ur * re[p ^ 2]) * x.re[1];
    }
    static void solveTwo(int p, const T *re, const T *im, T smini, T b1r, T b1i, T b2r, T b2i, Solved &x)
    {
        const T below = re[p ^ 1], beside = re[p ^ 2], across = re[p ^ 3];
        T ur, ui, lr, li, sr, si, u22r, u22i;
        if (p == 1 || p == 2) {
            ur = 1 / re[p];
            ui = 0;
            lr = below * ur;
            li = im[p ^ 1] * ur;
            sr = beside * ur;
            si = im[p ^ 2] * ur;
            u22r = across - beside * lr + im[p ^ 2] * li;
            u22i = -beside * li - im[p ^ 2] * lr;
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
            lr = below * ur;
            li = below * ui;
            sr = beside * ur;
            si = beside * ui;
            u22r = across - beside * lr;
            u22i = im[p ^ 3] - beside * li;
        }
        T a = size(u22r, u22i);
        if (a < smini) {
            u22r = a = smini;
            u22i = 0;
        }
        b2r = b2r - lr * b1r + li * b1i;
        b2i = b2i - li * b1r - lr * b1i;
        const T bound = most(size(b1r, b1i) * (a * size(ur, ui)), size(b2r, b2i));
        if (a < 1 && bound > 1 && bound > solverBig * a) {
            x.scale = 1 / bound;
            for (T *part : {&b1r, &b1i, &b2r, &b2i})
                *part *= x.scale;
        }
        quotient(b2r, b2i, u22r, u22i, 1, x.re[1], x.im[1]);
        x.re[0] = ur * b1r - ui * b1i - sr * x.re[1] + si * x.im[1];
        x.im[0] = ui * b1r + ur * b1i - si * x.re[1] - sr * x.im[1];
    }

    KvlStatus atVanishedBlock(bool complex)
    {
        ended = !complex;
        return complex ? kvlErrSmallPivot : kvlOk;
    }
    // The vector so far, in rows `from` to `to`, takes part in a scaling.
    void scaleRows(int from, int to, T factor)
    {
        scale(factor, to - from + 1, &xr[from]);
        scale(factor, to - from + 1, &xi[from]);
    }

    KvlStatus backward()
    {
        for (int j = n; j >= 1; --j) {
            const bool complex = isPairFrom(j - 1);
            const int top = complex ? j - 1 : j;
            const Value w = valueAt(j, top);
            if (complex) {
                const bool above = std::fabs(h(top, j)) > std::fabs(h(j, top));
                xr[top] = above ? 1 : -w.im / h(j, top);
                xi[j] = above ? w.im / h(top, j) : 1;
                xr[j] = xi[top] = 0;
            } else
                xr[j] = 1;
            for (int k = 1; k < top; ++k) {
                xr[k] = complex ? -xr[top] * h(k, top) : -h(k, j);
                xi[k] = -xi[j] * h(k, j);
            }
            for (int k = top - 1; k >= 1; --k) {
                const int order = isPairFrom(k - 1) ? 2 : 1, first = k - order + 1;
                Solved x;
                if (!solveBlock(first, order, complex, false, w, x))
                    return atVanishedBlock(complex);
                if (!(tiny >= std::fabs(x.scale - 1)))
                    scaleRows(1, j, x.scale);
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
            combine(top, xr, 1, top - 1);
            if (complex) {
                combine(j, xi, 1, top - 1);
                scale(1 / largestOfPair(top), 2 * n, &y(1, top));
            }
            j = top;
        }
        return kvlOk;
    }

    KvlStatus forward()
    {
        for (int j = 1; j <= n; ++j) {
            const bool complex = isPairFrom(j);
            const int end = complex ? j + 1 : j;
            Value w = valueAt(j, end);
            if (complex) {
                const bool above = std::fabs(h(j, end)) >= std::fabs(h(end, j));
                xr[j] = above ? w.im / h(j, end) : 1;
                xi[end] = above ? 1 : -w.im / h(end, j);
                xr[end] = xi[j] = 0;
            } else
                xr[j] = 1;
            for (int k = end + 1; k <= n; ++k) {
                xr[k] = complex ? -xr[j] * h(j, k) : -h(j, k);
                xi[k] = -xi[end] * h(end, k);
            }
            w.im = -w.im;
            T vmax = 1, vcrit = bignum;
            for (int k = end + 1; k <= n; ++k) {
                const int order = isPairFrom(k) ? 2 : 1;
                if ((order == 2 ? most(cs[k], cs[k + 1]) : cs[k]) > vcrit) {
                    scaleRows(j, n, 1 / vmax);
                    vmax = 1;
                    vcrit = bignum;
                }
                for (int e = k; e < k + order && k > end + 1; ++e) {
                    xr[e] -= dot(k - end - 1, &h(end + 1, e), 1, &xr[end + 1], 1);
                    xi[e] -= dot(k - end - 1, &h(end + 1, e), 1, &xi[end + 1], 1);
                }
                Solved x;
                if (!solveBlock(k, order, complex, true, w, x))
                    return atVanishedBlock(complex);
                if (!(tiny >= std::fabs(x.scale - 1)))
                    scaleRows(j, n, x.scale);
                for (int e = 0; e < order; ++e) {
                    xr[k + e] = x.re[e];
                    xi[k + e] = x.im[e];
                    for (T part : {x.re[e], x.im[e]})
                        vmax = most(std::fabs(part), vmax);
                }
                vcrit = bignum / vmax;
                k += order - 1;
            }
            combine(j, xr, end + 1, n);
            if (complex)
                combine(end, xi, end + 1, n);
            T largest = complex ? largestOfPair(j) : 0;
            for (int r = 1; r <= n && !complex; ++r)
                largest = most(std::fabs(y(r, j)), largest);
            if (largest > tiny)
                scale(1 / largest, (end - j + 1) * n, &y(1, j));
            j = end;
        }
        return kvlOk;
    }

    void combine(int j, const std::vector<T> &x, int from, int to)
    {
        for (int r = 1; r <= n; ++r) {
            const T own = x[j] * y(r, j);
            y(r, j) = from <= to ? own + dot(to - from + 1, &x[from], 1, &y(r, from), n) : own;
        }
    }
    ORACLE_RESULT T largestOfPair(int j)
    {
        T emax = 0;
        for (int r = 1; r <= n; ++r)
            emax = most(size(y(r, j), y(r, j + 1)), emax);
        return emax;
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
    void normalise(const T *im)
    {
        for (int j = 1; j <= n; ++j) {
            T *const u = &y(1, j), *const z = u + n;
            if (!(std::fabs(im[j - 1]) >= tiny)) {
                const T s = dot(n, u, 1, u, 1);
                if (!(tiny >= std::fabs(s)))
                    scale(reciprocalOfRoot(s), n, u);
                continue;
            }
            scale(reciprocalOfRoot(dot(n, u, 1, u, 1) + dot(n, z, 1, z, 1)), 2 * n, u);
            const auto square = [&](int r) ORACLE_RESULT { return u[r] * u[r] + z[r] * z[r]; };
            int best = 0;
            for (int r = 1; r < n; ++r)
                if (square(r) > square(best))
                    best = r;
            const T f = u[best], g = z[best], root = std::sqrt(f * f + g * g);
            T c = f / root, s = g / root;
            if (c < 0 && std::fabs(f) > std::fabs(g)) {
                c = -c;
                s = -s;
            }
            for (int r = 0; r < n; ++r) {
                const T first = c * u[r] + s * z[r];
                z[r] = c * z[r] - s * u[r];
                u[r] = first;
            }
            ++j;
        }
    }

    bool hasRight, hasLeft;
    std::vector<T> cs, xr, xi, v;
    const T smlnum = n * (tiny / eps), bignum = (1 - eps) / smlnum;
};

} // namespace oracle
