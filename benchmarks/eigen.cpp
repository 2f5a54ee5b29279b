// Benchmarks of symmetric eigenproblems, on 10000 different matrices; packed also against Eigen and LAPACK.
#include "bench.h"
#include "elements.h"

#include <Eigen/Eigenvalues>

#include <cmath>

extern "C" {
void ssyev_(const char *, const char *, const int *, float *, const int *, float *, float *, const int *, int *,
            std::size_t, std::size_t);
void dsyev_(const char *, const char *, const int *, double *, const int *, double *, double *, const int *, int *,
            std::size_t, std::size_t);
}

namespace {

using namespace bench;

constexpr auto syev(float)
{
    return ssyev_;
}
constexpr auto syev(double)
{
    return dsyev_;
}

template <class T, int N, Form F>
class Cells {
    static constexpr int description = descriptionOf(F);
    using Matrices = Element<T, N, N, F>;
    using Packed = Eigen::Matrix<T, N, N, Eigen::RowMajor>;
    using Works = std::vector<std::pair<std::string, Work>>;

public:
    Cells(Suite &suite, int count)
        : suite(suite), count(count), a(F, N, N, true, 0, count, lasting<T>(Operand<T>(F, N, N, true, 0, count).span)),
          d(F, N, N, true, 2, count), values(lasting<T>(count * N)), buffer(lasting<T>(N * N))
    {
        const Matrices given{Operand<T>(F, N, N, true, 3, count)}, made{a};
        for (int i = 0; i < count; ++i) {
            Packed x;
            for (int r = 0; r < N; ++r)
                for (int c = 0; c <= r; ++c)
                    x(r, c) = x(c, r) = 2 * given(i, r, c);
            if (isRefused(x))
                for (int k = 0; k < N * N; ++k)
                    x.data()[k] = T(k % (N + 1) == 0) * T(1 + k / N);
            for (int k = 0; k < N * N; ++k)
                made(i, k / N, k % N) = x(k / N, k % N);
        }
    }

    template <class Functions>
    void eigenvalues(const Functions &functions) const
    {
        const Operand<T> result(Form::packed, 1, N, true, 1, count, values);
        Works works = {
            {"kvlm", call(std::get<description>(functions),
                          std::tuple_cat(arguments<description, true>(a), std::make_tuple(buffer, values, N, count)))}};
        if constexpr (F == Form::packed) {
            works.emplace_back("eigen", [a = a, values = values, count = count] {
                for (int i = 0; i < count; ++i) {
                    Eigen::SelfAdjointEigenSolver<Packed> solver;
                    solver.compute(loaded<Packed>(a.base + i * N * N), Eigen::EigenvaluesOnly);
                    descending(solver.eigenvalues(), values + i * N);
                }
                return 0;
            });
            works.emplace_back("Lapack", [a = a, values = values, count = count] {
                T w[N], work[8 * N * N];
                for (int i = 0; i < count; ++i) {
                    Packed x = loaded<Packed>(a.base + i * N * N);
                    solveByLapack("N", x.data(), w, work);
                    descending(w, values + i * N);
                }
                return 0;
            });
        }
        suite.add(name("EigenValuesSym_ma"), result, works,
                  sameNumbers<T>(std::size_t(count) * N, [values = values](int k) { return values[k]; }));
    }

    template <class Functions>
    void eigenvectors(const Functions &functions) const
    {
        Works works = {
            {"kvlm", call(std::get<description>(functions),
                          std::tuple_cat(arguments<description, true>(a), std::make_tuple(buffer),
                                         arguments<description, true>(d), std::make_tuple(values, N, count)))}};
        if constexpr (F == Form::packed) {
            works.emplace_back("eigen", [a = a, d = d, values = values, count = count] {
                for (int i = 0; i < count; ++i) {
                    Eigen::SelfAdjointEigenSolver<Packed> solver;
                    solver.compute(loaded<Packed>(a.base + i * N * N));
                    descending(solver.eigenvalues(), values + i * N);
                    for (int k = 0; k < N * N; ++k)
                        d.base[i * N * N + k] = solver.eigenvectors()(k / N, N - 1 - k % N);
                }
                return 0;
            });
            works.emplace_back("Lapack", [a = a, d = d, values = values, count = count] {
                T w[N], work[8 * N * N];
                for (int i = 0; i < count; ++i) {
                    Packed x = loaded<Packed>(a.base + i * N * N);
                    solveByLapack("V", x.data(), w, work);
                    descending(w, values + i * N);
                    for (int k = 0; k < N * N; ++k)
                        d.base[i * N * N + k] = x.data()[(N - 1 - k % N) * N + k / N];
                }
                return 0;
            });
        }
        const auto check = [a = Matrices{a}, d = Matrices{d}, values = values, count = count](const std::string &) {
            int wrong = 0;
            for (int i = 0; i < count; ++i) {
                double worst = 0;
                for (int r = 0; r < N; ++r)
                    for (int c = 0; c < N; ++c) {
                        double sum = -double(d(i, r, c)) * values[i * N + c];
                        for (int k = 0; k < N; ++k)
                            sum += double(a(i, r, k)) * d(i, k, c);
                        worst = std::max(worst, std::abs(sum));
                    }
                wrong += !(worst < 1e-3);
            }
            return wrong * 1000 <= count;
        };
        suite.add(name("EigenValuesVectorsSym_ma"), d, works, check);
    }

private:
    // The library refuses what is nearly singular, and a few others.
    static bool isRefused(const Packed &x)
    {
        Packed vectors;
        T values[N], buffer[N * N];
        const int elem = sizeof(T), row = N * elem;
        if constexpr (sizeof(T) == 4)
            return kvlmEigenValuesSym_ma_32f(x.data(), N * row, row, elem, buffer, values, N, 1) ||
                   kvlmEigenValuesVectorsSym_ma_32f(x.data(), N * row, row, elem, buffer, vectors.data(), N * row, row,
                                                    elem, values, N, 1);
        else
            return kvlmEigenValuesSym_ma_64f(x.data(), N * row, row, elem, buffer, values, N, 1) ||
                   kvlmEigenValuesVectorsSym_ma_64f(x.data(), N * row, row, elem, buffer, vectors.data(), N * row, row,
                                                    elem, values, N, 1);
    }
    static void solveByLapack(const char *what, T *a, T *w, T *work)
    {
        const int n = N, space = 8 * N * N;
        int info;
        syev(T())(what, "U", &n, a, &n, w, work, &space, &info, 1, 1);
    }
    template <class Ascending>
    BENCH_INLINE static void descending(const Ascending &ascending, T *values)
    {
        for (int k = 0; k < N; ++k)
            values[k] = ascending[N - 1 - k];
    }
    std::string name(const std::string &member) const { return nameOfCell<T>(member, F, N, count); }

    Suite &suite;
    int count;
    Operand<T> a, d;
    T *values, *buffer;
};

template <class T, int N, Form F>
struct Table {
    static void add(Suite &suite)
    {
        const Cells<T, N, F> cells(suite, 10000);
        if constexpr (sizeof(T) == 4) {
            cells.eigenvalues(ALL(kvlmEigenValuesSym_ma, 32f));
            cells.eigenvectors(ALL(kvlmEigenValuesVectorsSym_ma, 32f));
        } else {
            cells.eigenvalues(ALL(kvlmEigenValuesSym_ma, 64f));
            cells.eigenvectors(ALL(kvlmEigenValuesVectorsSym_ma, 64f));
        }
    }
};

} // namespace

int main(int argc, char **argv)
{
    return runTables<Table, Form::packed, Form::strided, Form::tablePlanes, Form::list>(argc, argv);
}
