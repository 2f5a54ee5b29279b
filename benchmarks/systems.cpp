// Benchmarks of determinant, LU decomposition and solver, and inverse, against Eigen and against plain loops.
#include "bench.h"
#include "elements.h"
#include "lu.h"
#include "peers.h"

#include <Eigen/LU>

#include <cmath>
#include <limits>

namespace {

using namespace bench;

// ---- Plain loops with fixed bounds, on a copy of the object.

/// The six minors of two neighbouring rows of a 4 x 4.
template <class T>
struct PairMinors {
    T m01, m02, m03, m12, m13, m23;
    BENCH_INLINE PairMinors(const T (&x)[4], const T (&y)[4])
        : m01(x[0] * y[1] - x[1] * y[0]), m02(x[0] * y[2] - x[2] * y[0]), m03(x[0] * y[3] - x[3] * y[0]),
          m12(x[1] * y[2] - x[2] * y[1]), m13(x[1] * y[3] - x[3] * y[1]), m23(x[2] * y[3] - x[3] * y[2])
    {
    }
};

template <class T, int N>
BENCH_INLINE T determinantLoop(T (&a)[N][N])
{
    if constexpr (N == 3)
        return a[0][0] * (a[1][1] * a[2][2] - a[1][2] * a[2][1]) - a[0][1] * (a[1][0] * a[2][2] - a[1][2] * a[2][0]) +
               a[0][2] * (a[1][0] * a[2][1] - a[1][1] * a[2][0]);
    else if constexpr (N == 4) {
        const PairMinors<T> s(a[0], a[1]), c(a[2], a[3]);
        return s.m01 * c.m23 - s.m02 * c.m13 + s.m03 * c.m12 + s.m12 * c.m03 - s.m13 * c.m02 + s.m23 * c.m01;
    } else {
        int p[N];
        T product = factorLoop(a, p);
        for (int k = 0; k < N; ++k)
            product *= a[k][k];
        return product;
    }
}

template <class T, int N>
BENCH_INLINE void invertLoop(T (&a)[N][N], T (&v)[N][N])
{
    if constexpr (N == 3) {
        for (int r = 0; r < 3; ++r)
            for (int c = 0; c < 3; ++c)
                v[c][r] = a[(r + 1) % 3][(c + 1) % 3] * a[(r + 2) % 3][(c + 2) % 3] -
                          a[(r + 1) % 3][(c + 2) % 3] * a[(r + 2) % 3][(c + 1) % 3];
    } else if constexpr (N == 4) {
        const PairMinors<T> s(a[0], a[1]), t(a[2], a[3]);
        const auto column = [&](int r, const PairMinors<T> &m, const T(&x)[4], T sign) {
            v[0][r] = sign * (x[1] * m.m23 - x[2] * m.m13 + x[3] * m.m12);
            v[1][r] = -sign * (x[0] * m.m23 - x[2] * m.m03 + x[3] * m.m02);
            v[2][r] = sign * (x[0] * m.m13 - x[1] * m.m03 + x[3] * m.m01);
            v[3][r] = -sign * (x[0] * m.m12 - x[1] * m.m02 + x[2] * m.m01);
        };
        column(0, t, a[1], 1);
        column(1, t, a[0], -1);
        column(2, s, a[3], 1);
        column(3, s, a[2], -1);
    } else {
        int p[N];
        factorLoop(a, p);
        for (int c = 0; c < N; ++c) {
            T x[N];
            for (int r = 0; r < N; ++r)
                x[r] = p[r] == c;
            solveLoop(a, x);
            for (int r = 0; r < N; ++r)
                v[r][c] = x[r];
        }
        return;
    }
    T d = 0;
    for (int k = 0; k < N; ++k)
        d += a[0][k] * v[k][0];
    const T reciprocal = 1 / d;
    for (int r = 0; r < N; ++r)
        for (int c = 0; c < N; ++c)
            v[r][c] *= reciprocal;
}

// ---- The cells.

template <class T, int N, Form F>
class Cells {
    static constexpr int description = descriptionOf(F), elem = sizeof(T);
    using Matrices = Element<T, N, N, F>;
    using Vectors = Element<T, 1, N, F>;
    using Works = std::vector<std::pair<std::string, Work>>;
    using EigenView = View<T, N, N, F, true>;
    using EigenVector = Eigen::Matrix<T, N, 1>;

public:
    Cells(Suite &suite, int count)
        : suite(suite), count(count), a(F, N, N, true, 0, count), d(F, N, N, true, 2, count),
          x(F, 1, N, true, 2, count), b(F, 1, N, true, 1, count)
    {
    }

    template <class Functions>
    void factor(const Functions &functions) const
    {
        int *const p = lasting<int>(count * N);
        Works works = {{"kvlm", call(std::get<description>(functions),
                                     std::tuple_cat(arguments<description, true>(a), std::make_tuple(p),
                                                    arguments<description, true>(d), std::make_tuple(N, count)))}};
        if constexpr (!isTable(F))
            works.emplace_back("eigen", [=, a = a, d = d, count = count] {
                const EigenView source{a}, result{d};
                for (int i = 0; i < count; ++i) {
                    const Eigen::PartialPivLU<typename EigenView::Matrix> lu(source.map(i));
                    result.map(i) = lu.matrixLU();
                    for (int r = 0; r < N; ++r)
                        p[i * N + lu.permutationP().indices()[r]] = r;
                }
                return 0;
            });
        works.emplace_back("loop", [=, a = Matrices{a}, d = Matrices{d}, count = count] {
            for (int i = 0; i < count; ++i) {
                T w[N][N];
                int order[N];
                load(a, i, w);
                factorLoop(w, order);
                store(d, i, w);
                for (int r = 0; r < N; ++r)
                    p[i * N + r] = order[r];
            }
            return 0;
        });
        // The library leaves the rows where they are, its peers move them.
        const auto check = [=, a = Matrices{a}, d = Matrices{d}, count = count](const std::string &who) {
            double worst = 0;
            for (int i = 0; i < count; i += 1 + count / 1000)
                for (int r = 0; r < N; ++r)
                    for (int c = 0; c < N; ++c) {
                        const int *const pivot = p + i * N;
                        const auto row = [&](int k) { return who == "kvlm" ? pivot[k] : k; };
                        double sum = -a(i, pivot[r], c);
                        for (int k = 0; k <= r && k <= c; ++k)
                            sum += (k == r ? 1.0 : d(i, row(r), k)) * d(i, row(k), c);
                        worst = std::max(worst, std::abs(sum));
                    }
            return worst < 100 * std::numeric_limits<T>::epsilon();
        };
        suite.add(name("LUDecomp_ma"), d, works, check);
    }

    template <class Factor, class Functions>
    void solve(const Factor &factor, const Functions &functions, bool oneMatrix) const
    {
        const int matrices = oneMatrix ? 1 : count;
        T *const memory = lasting<T>(a.span);
        int *const p = lasting<int>(matrices * N);
        const Operand<T> source(F, N, N, !oneMatrix, 0, count), f(F, N, N, !oneMatrix, 0, count, memory);
        // The factors of single matrices are made by the array function, in its own form.
        const Operand<T> sources(F, N, N, true, 0, matrices), fs(F, N, N, true, 0, matrices, memory);
        std::apply(std::get<description>(factor),
                   std::tuple_cat(arguments<description, true>(sources), std::make_tuple(p),
                                  arguments<description, true>(fs), std::make_tuple(N, matrices)));
        const auto rest =
            std::tuple_cat(std::make_tuple(static_cast<const int *>(p)), vectorArguments<description, true>(b),
                           vectorArguments<description, true>(x), std::make_tuple(N, count));
        Works works;
        if (oneMatrix)
            works.emplace_back("kvlm", call(std::get<description>(std::get<0>(functions)),
                                            std::tuple_cat(arguments<description, false>(f), rest)));
        else
            works.emplace_back("kvlm", call(std::get<description>(std::get<1>(functions)),
                                            std::tuple_cat(arguments<description, true>(f), rest)));
        if constexpr (!isTable(F)) {
            using LU = Eigen::PartialPivLU<typename EigenView::Matrix>;
            const auto lus = std::make_shared<std::vector<LU, Eigen::aligned_allocator<LU>>>();
            for (int i = 0; i < matrices; ++i)
                lus->emplace_back(EigenView{sources}.map(i));
            works.emplace_back("eigen", [=, b = Vectors{b}, x = Vectors{x}, count = count] {
                for (int i = 0; i < count; ++i) {
                    EigenVector right;
                    for (int k = 0; k < N; ++k)
                        right[k] = b(i, 0, k);
                    const EigenVector solution = (*lus)[oneMatrix ? 0 : i].solve(right);
                    for (int k = 0; k < N; ++k)
                        x(i, 0, k) = solution[k];
                }
                return 0;
            });
        }
        works.emplace_back("loop", [=, f = Matrices{fs}, b = Vectors{b}, x = Vectors{x}, count = count] {
            for (int i = 0; i < count; ++i) {
                T lu[N][N], v[N];
                const int m = oneMatrix ? 0 : i;
                for (int r = 0; r < N; ++r) {
                    v[r] = b(i, 0, p[m * N + r]);
                    for (int c = 0; c < N; ++c)
                        lu[r][c] = f(m, p[m * N + r], c);
                }
                solveLoop(lu, v);
                for (int r = 0; r < N; ++r)
                    x(i, 0, r) = v[r];
            }
            return 0;
        });
        suite.add(name(oneMatrix ? "LUBackSubst_mva" : "LUBackSubst_mava"), x, works,
                  sameNumbers<T>(std::size_t(count) * N, [x = Vectors{x}](int k) { return x(k / N, 0, k % N); }));
    }

    template <class Functions>
    void det(const Functions &functions) const
    {
        const Operand<T> result(Form::packed, 1, 1, true, 2, count), buffer(Form::packed, N, N + 1, false, 3, 1);
        T *const out = result.base;
        Works works = {{"kvlm", call(std::get<description>(functions),
                                     std::tuple_cat(arguments<description, true>(a),
                                                    std::make_tuple(N, buffer.base, out, count)))}};
        if constexpr (!isTable(F))
            works.emplace_back("eigen", [=, a = a, count = count] {
                for (int i = 0; i < count; ++i)
                    out[i] = EigenView{a}.map(i).determinant();
                return 0;
            });
        works.emplace_back("loop", [=, a = Matrices{a}, count = count] {
            for (int i = 0; i < count; ++i) {
                T w[N][N];
                load(a, i, w);
                out[i] = determinantLoop(w);
            }
            return 0;
        });
        addPeers<T>(works, "Det_ma", F, N, a.base, nullptr, out, count);
        suite.add(name("Det_ma"), result, works, sameNumbers<T>(count, [=](int k) { return out[k]; }));
    }

    template <class Functions>
    void invert(const Functions &functions) const
    {
        const Operand<T> buffer(Form::packed, N, N + 1, false, 3, 1);
        Works works = {{"kvlm", call(std::get<description>(functions),
                                     std::tuple_cat(arguments<description, true>(a), std::make_tuple(buffer.base),
                                                    arguments<description, true>(d), std::make_tuple(N, count)))}};
        if constexpr (!isTable(F))
            works.emplace_back("eigen", [=, a = a, d = d, count = count] {
                for (int i = 0; i < count; ++i) {
                    // Between matrices of its own: its inverse of order 4 takes no note of strides.
                    const typename EigenView::Matrix source = EigenView{a}.map(i), inverse = source.inverse();
                    EigenView{d}.map(i) = inverse;
                }
                return 0;
            });
        works.emplace_back("loop", [=, a = Matrices{a}, d = Matrices{d}, count = count] {
            for (int i = 0; i < count; ++i) {
                T w[N][N], v[N][N];
                load(a, i, w);
                invertLoop(w, v);
                store(d, i, v);
            }
            return 0;
        });
        addPeers<T>(works, "Invert_ma", F, N, a.base, nullptr, d.base, count);
        suite.add(name("Invert_ma"), d, works, sameNumbers<T>(std::size_t(count) * N * N, [d = Matrices{d}](int k) {
                      return d(k / (N * N), k / N % N, k % N);
                  }));
    }

private:
    BENCH_INLINE static void load(const Matrices &x, int i, T (&w)[N][N])
    {
        for (int r = 0; r < N; ++r)
            for (int c = 0; c < N; ++c)
                w[r][c] = x(i, r, c);
    }
    BENCH_INLINE static void store(const Matrices &x, int i, const T (&w)[N][N])
    {
        for (int r = 0; r < N; ++r)
            for (int c = 0; c < N; ++c)
                x(i, r, c) = w[r][c];
    }
    std::string name(const std::string &member) const { return nameOfCell<T>(member, F, N, count); }

    Suite &suite;
    int count;
    Operand<T> a, d, x, b;
};

template <class T, int N, Form F>
struct Table {
    static void add(Suite &suite)
    {
        const auto add = [&](auto det, auto lu, auto mva, auto mava, auto invert) {
            // A predictor learns the pivots of a batch that is small and repeated.
            Cells<T, N, F>(suite, 10000).factor(lu);
            const Cells<T, N, F> cells(suite, 1000);
            cells.det(det);
            cells.solve(lu, std::make_tuple(mva, mava), false);
            cells.solve(lu, std::make_tuple(mva, mava), true);
            cells.invert(invert);
            if constexpr (F == Form::packed)
                for (int few : {1, 4, 16}) {
                    Cells<T, N, F>(suite, few).det(det);
                    Cells<T, N, F>(suite, few).invert(invert);
                }
        };
        if constexpr (sizeof(T) == 4)
            add(ALL(kvlmDet_ma, 32f), ALL(kvlmLUDecomp_ma, 32f), ALL(kvlmLUBackSubst_mva, 32f),
                ALL(kvlmLUBackSubst_mava, 32f), ALL(kvlmInvert_ma, 32f));
        else
            add(ALL(kvlmDet_ma, 64f), ALL(kvlmLUDecomp_ma, 64f), ALL(kvlmLUBackSubst_mva, 64f),
                ALL(kvlmLUBackSubst_mava, 64f), ALL(kvlmInvert_ma, 64f));
    }
};

} // namespace

int main(int argc, char **argv)
{
    return runTables<Table, Form::packed, Form::strided, Form::columns, Form::tableObjects, Form::tablePlanes,
                     Form::list, Form::stridedList>(argc, argv);
}
