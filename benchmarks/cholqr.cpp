// Benchmarks of Cholesky and QR decompositions and their solvers, against plain loops and, packed, against Eigen:
// square matrices, and for QR packed ones with more rows.
#include "cholqr.h"
#include "elements.h"

namespace {

using namespace bench;

template <class T>
BENCH_NOINLINE std::vector<T> someMatrices(int height, int width, int count, bool positive)
{
    const std::size_t elements = std::size_t(height) * width;
    std::vector<T> all;
    for (int i = 0; i < count; ++i)
        for (int r = 0; r < height; ++r)
            for (int c = 0; c < width; ++c) {
                const T *const given = Memory<T>::place(3, elements * count) + elements * i;
                T sum = positive ? T(r == c) : given[r * width + c];
                for (int k = 0; positive && k < width; ++k)
                    sum += given[r * width + k] * given[c * width + k];
                all.push_back(sum);
            }
    return all;
}

/// Matrices of H rows and W columns.
template <class Family, class T, int H, int W, Form F>
class FactorCells {
    static constexpr int description = descriptionOf(F), count = 1000;
    using Matrices = Element<T, H, W, F>;
    using RightHandSides = Element<T, 1, H, F>;
    using Solutions = Element<T, 1, W, F>;
    using Works = std::vector<std::pair<std::string, Work>>;

public:
    FactorCells(Suite &suite)
        : suite(suite), a(F, H, W, true, 0, count, lasting<T>(Operand<T>(F, H, W, true, 0, count).span)),
          d(F, H, W, true, 2, count), x(F, 1, W, true, 2, count), b(F, 1, H, true, 1, count)
    {
        const std::vector<T> values = someMatrices<T>(H, W, count, Family::isPositive);
        const Matrices made{a};
        for (int k = 0; k < count * H * W; ++k)
            made(k / (H * W), k / W % H, k % W) = values[k];
    }

    template <class Functions>
    void factor(const Functions &functions) const
    {
        Works works = {{"kvlm", factorisation(functions, a, d, count)}};
        if constexpr (F == Form::packed)
            works.emplace_back("eigen",
                               [=, a = a, d = d] { return EigenPeer<Family, T, H, W>::factor(a.base, d.base, count); });
        works.emplace_back("loop", [=, a = Matrices{a}, d = Matrices{d}] {
            for (int i = 0; i < count; ++i) {
                T w[H][W];
                load(a, i, w);
                Family::factor(w);
                for (int r = 0; r < H; ++r)
                    for (int c = 0; c < W; ++c)
                        d(i, r, c) = w[r][c];
            }
            return 0;
        });
        const auto compared = [d = Matrices{d}](int k) {
            const int r = k / W % H, c = k % W;
            return Family::isCompared(r, c) ? std::abs(d(k / (W * H), r, c)) : T(0);
        };
        suite.add(name("Decomp_ma"), d, works, sameNumbers<T>(count * W * H, compared));
    }

    template <bool OneMatrix, class Factor, class Functions>
    void solve(const Factor &factor, const Functions &functions) const
    {
        constexpr int matrices = OneMatrix ? 1 : count;
        T *const memory = lasting<T>(a.span);
        // The factors of single matrices are made by the array function, in its own form.
        const Operand<T> source(F, H, W, true, 0, matrices, a.base), f(F, H, W, true, 0, matrices, memory);
        factorisation(factor, source, f, matrices)();
        const auto rest = std::tuple_cat(Family::template scratch<T>(), vectorArguments<description, true>(b),
                                         vectorArguments<description, true>(x), Family::sizes(W, H),
                                         std::make_tuple(static_cast<int>(count)));
        const Operand<T> matrix(F, H, W, !OneMatrix, 0, count, memory);
        Works works = {{"kvlm", call(std::get<description>(functions),
                                     std::tuple_cat(arguments<description, !OneMatrix>(matrix), rest))}};
        if constexpr (F == Form::packed) {
            const auto solve = EigenPeer<Family, T, H, W>::solver(a.base, matrices);
            works.emplace_back("eigen", [=, b = b, x = x] { return solve(b.base, x.base, count); });
        }
        works.emplace_back("loop", [=, f = Matrices{f}, b = RightHandSides{b}, x = Solutions{x}] {
            for (int i = 0; i < count; ++i) {
                T w[H][W], v[H];
                load(f, OneMatrix ? 0 : i, w);
                for (int k = 0; k < H; ++k)
                    v[k] = b(i, 0, k);
                Family::solve(w, v);
                for (int k = 0; k < W; ++k)
                    x(i, 0, k) = v[k];
            }
            return 0;
        });
        suite.add(name(OneMatrix ? "BackSubst_mva" : "BackSubst_mava"), x, works,
                  sameNumbers<T>(count * W, [x = Solutions{x}](int k) { return x(k / W, 0, k % W); }));
    }

private:
    template <class Functions>
    static Work factorisation(const Functions &functions, const Operand<T> &from, const Operand<T> &to, int objects)
    {
        return call(std::get<description>(functions),
                    std::tuple_cat(arguments<description, true>(from), Family::template scratch<T>(),
                                   arguments<description, true>(to), Family::sizes(W, H), std::make_tuple(objects)));
    }
    BENCH_INLINE static void load(const Matrices &x, int i, T (&w)[H][W])
    {
        for (int r = 0; r < H; ++r)
            for (int c = 0; c < W; ++c)
                w[r][c] = x(i, r, c);
    }
    std::string name(const std::string &member) const
    {
        return nameOfCell<T>(Family::name + member + (H == W ? "" : "_" + std::to_string(H) + "rows"), F, W, count);
    }

    Suite &suite;
    Operand<T> a, d, x, b;
};

template <class T, int N, Form F>
void addCholesky(Suite &suite)
{
    const auto add = [&](auto factor, auto mva, auto mava) {
        const FactorCells<Cholesky, T, N, N, F> cells(suite);
        cells.factor(factor);
        cells.template solve<false>(factor, mava);
        cells.template solve<true>(factor, mva);
    };
    if constexpr (sizeof(T) == 4)
        add(ALL(kvlmCholeskyDecomp_ma, 32f), ALL(kvlmCholeskyBackSubst_mva, 32f), ALL(kvlmCholeskyBackSubst_mava, 32f));
    else
        add(ALL(kvlmCholeskyDecomp_ma, 64f), ALL(kvlmCholeskyBackSubst_mva, 64f), ALL(kvlmCholeskyBackSubst_mava, 64f));
}

template <class T, int H, int W, Form F>
void addQR(Suite &suite)
{
    const auto add = [&](auto factor, auto mva, auto mava) {
        const FactorCells<QR, T, H, W, F> cells(suite);
        cells.factor(factor);
        cells.template solve<false>(factor, mava);
        if constexpr (H == W)
            cells.template solve<true>(factor, mva);
    };
    if constexpr (sizeof(T) == 4)
        add(ALL(kvlmQRDecomp_ma, 32f), ALL(kvlmQRBackSubst_mva, 32f), ALL(kvlmQRBackSubst_mava, 32f));
    else
        add(ALL(kvlmQRDecomp_ma, 64f), ALL(kvlmQRBackSubst_mva, 64f), ALL(kvlmQRBackSubst_mava, 64f));
}

template <class T, int N, Form F>
struct Table {
    static void add(Suite &suite)
    {
        addCholesky<T, N, F>(suite);
        addQR<T, N, N, F>(suite);
        if constexpr (F == Form::packed) {
            addQR<T, 2 * N, N, F>(suite);
            if constexpr (N < 5)
                addQR<T, N == 3 ? 4 : 6, N, F>(suite);
        }
    }
};

} // namespace

int main(int argc, char **argv)
{
    return runTables<Table, Form::packed, Form::tablePlanes, Form::list>(argc, argv);
}
