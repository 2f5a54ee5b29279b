// Benchmarks of Cholesky and QR decompositions and their solvers, against plain loops and, packed, against Eigen.
#include "bench.h"
#include "elements.h"

#include <Eigen/Cholesky>
#include <Eigen/QR>

#include <cmath>

namespace {

using namespace bench;

// ---- Plain loops with fixed bounds, on a copy of the object.

struct CholeskyLoop {
    template <class T, int N>
    BENCH_INLINE void operator()(T (&a)[N][N]) const
    {
        for (int i = 0; i < N; ++i) {
            for (int j = 0; j < i; ++j) {
                T s = a[i][j];
                for (int k = 0; k < j; ++k)
                    s -= a[i][k] * a[j][k];
                a[i][j] = s * a[j][j];
            }
            T s = a[i][i];
            for (int k = 0; k < i; ++k)
                s -= a[i][k] * a[i][k];
            a[i][i] = 1 / std::sqrt(s);
        }
    }
};

struct CholeskySolveLoop {
    template <class T, int N>
    BENCH_INLINE void operator()(const T (&l)[N][N], T (&x)[N]) const
    {
        for (int i = 0; i < N; ++i) {
            for (int j = 0; j < i; ++j)
                x[i] -= l[i][j] * x[j];
            x[i] *= l[i][i];
        }
        for (int i = N - 1; i >= 0; --i) {
            for (int j = i + 1; j < N; ++j)
                x[i] -= l[j][i] * x[j];
            x[i] *= l[i][i];
        }
    }
};

struct QRLoop {
    template <class T, int H, int W>
    BENCH_INLINE void operator()(T (&a)[H][W]) const
    {
        T v[H];
        for (int k = 0; k < (H > W ? W : W - 1); ++k) {
            T s = 0, q = 1;
            for (int i = k; i < H; ++i)
                s += a[i][k] * a[i][k];
            const T root = std::sqrt(s), f = 1 / (a[k][k] + (a[k][k] > 0 ? root : -root));
            v[k] = 1;
            for (int i = k + 1; i < H; ++i) {
                v[i] = a[i][k] * f;
                q += v[i] * v[i];
            }
            const T beta = -2 / q;
            for (int j = k; j < W; ++j) {
                T t = a[k][j];
                for (int i = k + 1; i < H; ++i)
                    t += a[i][j] * v[i];
                t *= beta;
                for (int i = k; i < H; ++i)
                    a[i][j] += v[i] * t;
            }
            for (int i = k + 1; i < H; ++i)
                a[i][k] = v[i];
        }
    }
};

struct QRSolveLoop {
    template <class T, int H, int W>
    BENCH_INLINE void operator()(const T (&a)[H][W], T (&b)[H]) const
    {
        for (int k = 0; k < (H > W ? W : W - 1); ++k) {
            T t = b[k], q = 1;
            for (int i = k + 1; i < H; ++i) {
                t += b[i] * a[i][k];
                q += a[i][k] * a[i][k];
            }
            t *= -2 / q;
            b[k] += t;
            for (int i = k + 1; i < H; ++i)
                b[i] += a[i][k] * t;
        }
        for (int i = W - 1; i >= 0; --i) {
            for (int j = i + 1; j < W; ++j)
                b[i] -= a[i][j] * b[j];
            b[i] /= a[i][i];
        }
    }
};

/// A loop in its place for the packed form, where it is the peer to beat; one copy of it for all other forms.
template <class Loop, class... Arrays>
BENCH_NOINLINE void outlined(Arrays &...arrays)
{
    Loop()(arrays...);
}

template <Form F, class Loop, class... Arrays>
BENCH_INLINE void run(Arrays &...arrays)
{
    if constexpr (F == Form::packed)
        Loop()(arrays...);
    else
        outlined<Loop>(arrays...);
}

// ---- The cells.

template <class T>
BENCH_NOINLINE std::vector<T> someMatrices(int height, int width, int count, bool positive)
{
    const std::size_t elements = std::size_t(height) * width;
    std::vector<T> all(elements * count);
    for (int i = 0; i < count; ++i)
        for (int r = 0; r < height; ++r)
            for (int c = 0; c < width; ++c) {
                const T *const given = Memory<T>::place(3, elements * count) + elements * i;
                T sum = positive ? T(r == c) : given[r * width + c];
                for (int k = 0; positive && k < width; ++k)
                    sum += given[r * width + k] * given[c * width + k];
                all[elements * i + r * width + c] = sum;
            }
    return all;
}

/// Matrices of H rows and W columns. For Cholesky they are positive definite.
template <class T, int H, int W, Form F>
class Cells {
    static constexpr int description = descriptionOf(F);
    using Matrices = Element<T, H, W, F>;
    using RightHandSides = Element<T, 1, H, F>;
    using Solutions = Element<T, 1, W, F>;
    using Works = std::vector<std::pair<std::string, Work>>;
    using EigenMatrix = Eigen::Matrix<T, H, W, Eigen::RowMajor>;

public:
    Cells(Suite &suite, int count, bool positive)
        : suite(suite), count(count), memory(new std::vector<T>(Operand<T>(F, H, W, true, 0, count).span)),
          a(F, H, W, true, 0, count, memory->data()), d(F, H, W, true, 2, count), x(F, 1, W, true, 2, count),
          b(F, 1, H, true, 1, count)
    {
        const std::vector<T> values = someMatrices<T>(H, W, count, positive);
        const Matrices made{a};
        for (int i = 0; i < count; ++i)
            for (int r = 0; r < H; ++r)
                for (int c = 0; c < W; ++c)
                    made(i, r, c) = values[(std::size_t(i) * H + r) * W + c];
    }

    template <class Functions>
    void cholesky(const Functions &functions) const
    {
        Works works = {
            {"kvlm", keep(call(std::get<description>(functions),
                               std::tuple_cat(arguments<description, true>(a), arguments<description, true>(d),
                                              std::make_tuple(W, count))))}};
        peers<Eigen::LLT<EigenMatrix>, CholeskyLoop>(
            works, [](const auto &llt) -> const auto & { return llt.matrixLLT(); });
        const auto lower = [d = Matrices{d}](int k) {
            const int r = k / W % H, c = k % W;
            // Eigen has the diagonal itself: its square is that of the reciprocal's reciprocal.
            return r > c ? d(k / (W * H), r, c) : T(0);
        };
        suite.add(name("Cholesky"), d, works, sameNumbers<T>(std::size_t(count) * W * H, lower));
    }

    template <class Functions>
    void qr(const Functions &functions) const
    {
        Works works = {
            {"kvlm", keep(call(std::get<description>(functions),
                               std::tuple_cat(arguments<description, true>(a), std::make_tuple(x.base),
                                              arguments<description, true>(d), std::make_tuple(W, H, count))))}};
        peers<Eigen::HouseholderQR<EigenMatrix>, QRLoop>(
            works, [](const auto &qr) -> const auto & { return qr.matrixQR(); });
        const auto upper = [d = Matrices{d}](int k) {
            const int r = k / W % H, c = k % W;
            return r <= c ? std::abs(d(k / (W * H), r, c)) : T(0);
        };
        suite.add(name("QR"), d, works, sameNumbers<T>(std::size_t(count) * W * H, upper));
    }

    template <class Factor, class Functions>
    void choleskySolve(const Factor &factor, const Functions &functions, bool oneMatrix) const
    {
        solve<Eigen::LLT<EigenMatrix>, CholeskySolveLoop>("CholeskySolve", factor, functions, oneMatrix,
                                                          std::make_tuple(), std::make_tuple(W, count),
                                                          std::make_tuple(W, matrices(oneMatrix)));
    }

    template <class Factor, class Functions>
    void qrSolve(const Factor &factor, const Functions &functions, bool oneMatrix) const
    {
        solve<Eigen::HouseholderQR<EigenMatrix>, QRSolveLoop>(
            "QRSolve", factor, functions, oneMatrix, std::make_tuple(Memory<T>::place(3, H)),
            std::make_tuple(W, H, count), std::make_tuple(W, H, matrices(oneMatrix)));
    }

private:
    int matrices(bool oneMatrix) const { return oneMatrix ? 1 : count; }
    Work keep(Work work) const
    {
        return [memory = memory, work] { return work(); };
    }

    template <class Decomposition, class Loop, class Packed>
    void peers(Works &works, Packed packed) const
    {
        if constexpr (F == Form::packed)
            works.emplace_back("eigen", [=, a = a, d = d, count = count] {
                const View<T, H, W, F, true> source{a}, result{d};
                for (int i = 0; i < count; ++i) {
                    const Decomposition decomposition(source.map(i));
                    result.map(i) = packed(decomposition);
                }
                return 0;
            });
        works.emplace_back("loop", [=, a = Matrices{a}, d = Matrices{d}, count = count] {
            for (int i = 0; i < count; ++i) {
                T w[H][W];
                load(a, i, w);
                run<F, Loop>(w);
                for (int r = 0; r < H; ++r)
                    for (int c = 0; c < W; ++c)
                        d(i, r, c) = w[r][c];
            }
            return 0;
        });
    }

    template <class Decomposition, class Loop, class Factor, class Functions, class Scratch, class Sizes,
              class FactorSizes>
    void solve(const std::string &member, const Factor &factor, const Functions &functions, bool oneMatrix,
               const Scratch &scratch, const Sizes &sizes, const FactorSizes &factorSizes) const
    {
        const auto factors = std::make_shared<std::vector<T>>(a.span);
        const Operand<T> one(F, H, W, false, 0, count, factors->data());
        // The factors of single matrices are made by the array function, in its own form.
        const Operand<T> source(F, H, W, true, 0, matrices(oneMatrix), memory->data());
        const Operand<T> all(F, H, W, true, 0, matrices(oneMatrix), factors->data());
        std::apply(std::get<description>(factor), std::tuple_cat(arguments<description, true>(source), scratch,
                                                                 arguments<description, true>(all), factorSizes));
        const auto rest = std::tuple_cat(scratch, vectorArguments<description, true>(b),
                                         vectorArguments<description, true>(x), sizes);
        const Work library = oneMatrix ? call(std::get<description>(std::get<0>(functions)),
                                              std::tuple_cat(arguments<description, false>(one), rest))
                                       : call(std::get<description>(std::get<1>(functions)),
                                              std::tuple_cat(arguments<description, true>(all), rest));
        Works works = {{"kvlm", [factors, library] { return library(); }}};
        if constexpr (F == Form::packed) {
            const auto decompositions =
                std::make_shared<std::vector<Decomposition, Eigen::aligned_allocator<Decomposition>>>();
            for (int i = 0; i < matrices(oneMatrix); ++i)
                decompositions->emplace_back(View<T, H, W, F, true>{source}.map(i));
            works.emplace_back("eigen", [=, b = RightHandSides{b}, x = Solutions{x}, count = count] {
                for (int i = 0; i < count; ++i) {
                    Eigen::Matrix<T, H, 1> right;
                    for (int k = 0; k < H; ++k)
                        right[k] = b(i, 0, k);
                    const Eigen::Matrix<T, W, 1> solution = (*decompositions)[oneMatrix ? 0 : i].solve(right);
                    for (int k = 0; k < W; ++k)
                        x(i, 0, k) = solution[k];
                }
                return 0;
            });
        }
        works.emplace_back("loop", [=, f = Matrices{all}, b = RightHandSides{b}, x = Solutions{x}, count = count] {
            for (int i = 0; i < count; ++i) {
                T w[H][W], v[H];
                load(f, oneMatrix ? 0 : i, w);
                for (int k = 0; k < H; ++k)
                    v[k] = b(i, 0, k);
                run<F, Loop>(w, v);
                for (int k = 0; k < W; ++k)
                    x(i, 0, k) = v[k];
            }
            return 0;
        });
        suite.add(name(member + (oneMatrix ? "_mva" : "_mava")), x, works,
                  sameNumbers<T>(std::size_t(count) * W, [x = Solutions{x}](int k) { return x(k / W, 0, k % W); }));
    }

    BENCH_INLINE static void load(const Matrices &x, int i, T (&w)[H][W])
    {
        for (int r = 0; r < H; ++r)
            for (int c = 0; c < W; ++c)
                w[r][c] = x(i, r, c);
    }
    std::string name(const std::string &member) const
    {
        return member + (H == W ? "" : "_" + std::to_string(H) + "rows") + (sizeof(T) == 4 ? "/32f/" : "/64f/") +
               nameOf(F) + "/" + std::to_string(W) + "/" + std::to_string(count);
    }

    Suite &suite;
    int count;
    std::shared_ptr<std::vector<T>> memory;
    Operand<T> a, d, x, b;
};

template <class T, int H, int W, Form F>
void addForm(Suite &suite)
{
    const auto add = [&](auto cholesky, auto choleskySolve, auto qr, auto qrSolve) {
        for (int count : {16, 1000}) {
            const Cells<T, H, W, F> tall(suite, count, false);
            tall.qr(qr);
            if constexpr (H == W) {
                const Cells<T, H, W, F> positive(suite, count, true);
                positive.cholesky(cholesky);
                positive.choleskySolve(cholesky, choleskySolve, false);
                positive.choleskySolve(cholesky, choleskySolve, true);
            }
            tall.qrSolve(qr, qrSolve, false);
            tall.qrSolve(qr, qrSolve, true);
        }
    };
    if constexpr (sizeof(T) == 4)
        add(ALL(kvlmCholeskyDecomp_ma, 32f),
            std::make_tuple(ALL(kvlmCholeskyBackSubst_mva, 32f), ALL(kvlmCholeskyBackSubst_mava, 32f)),
            ALL(kvlmQRDecomp_ma, 32f), std::make_tuple(ALL(kvlmQRBackSubst_mva, 32f), ALL(kvlmQRBackSubst_mava, 32f)));
    else
        add(ALL(kvlmCholeskyDecomp_ma, 64f),
            std::make_tuple(ALL(kvlmCholeskyBackSubst_mva, 64f), ALL(kvlmCholeskyBackSubst_mava, 64f)),
            ALL(kvlmQRDecomp_ma, 64f), std::make_tuple(ALL(kvlmQRBackSubst_mva, 64f), ALL(kvlmQRBackSubst_mava, 64f)));
}

template <class T, int N>
void addForms(Suite &suite)
{
    addForm<T, N, N, Form::packed>(suite);
    addForm<T, N, N, Form::strided>(suite);
    addForm<T, N, N, Form::tableObjects>(suite);
    addForm<T, N, N, Form::tablePlanes>(suite);
    addForm<T, N, N, Form::list>(suite);
}

template <class T>
void addShapes(Suite &suite)
{
    addForms<T, 3>(suite);
    addForms<T, 4>(suite);
    addForms<T, 5>(suite);
    addForms<T, 6>(suite);
    addForm<T, 4, 3, Form::packed>(suite);
    addForm<T, 6, 3, Form::packed>(suite);
    addForm<T, 6, 4, Form::packed>(suite);
    addForm<T, 8, 4, Form::packed>(suite);
}

} // namespace

int main(int argc, char **argv)
{
    Suite suite;
    addShapes<float>(suite);
    addShapes<double>(suite);
    return suite.run(argc, argv);
}
