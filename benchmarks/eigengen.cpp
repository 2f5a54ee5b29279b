// Benchmarks of general eigenproblems, on 100000 different matrices; packed also against LAPACK, and, but for both sets
// of vectors, which it has not, against Eigen.
#include "bench.h"
#include "elements.h"

#include <Eigen/Eigenvalues>

#include <complex>

extern "C" {
void sgeev_(const char *, const char *, const int *, float *, const int *, float *, float *, float *, const int *,
            float *, const int *, float *, const int *, int *, std::size_t, std::size_t);
void dgeev_(const char *, const char *, const int *, double *, const int *, double *, double *, double *, const int *,
            double *, const int *, double *, const int *, int *, std::size_t, std::size_t);
}

namespace {

using namespace bench;

constexpr auto geev(float)
{
    return sgeev_;
}
constexpr auto geev(double)
{
    return dgeev_;
}

// A set of vectors where it goes, or none.
template <class T>
using Sets = std::vector<Operand<T>>;

template <class T, int N, Form F>
class Cells {
    static constexpr int description = descriptionOf(F);
    using Matrices = Element<T, N, N, F>;
    using Packed = Eigen::Matrix<T, N, N, Eigen::RowMajor>;
    using Works = std::vector<std::pair<std::string, Work>>;

public:
    Cells(Suite &suite, int count)
        : suite(suite), count(count), a(F, N, N, true, 0, count), right(F, N, N, true, 1, count),
          left(F, N, N, true, 2, count), re(lasting<T>(count * N)), im(lasting<T>(count * N)),
          buffer(lasting<T>(N * (3 * N + 5)))
    {
    }

    template <class Functions>
    void values(const Functions &functions) const
    {
        add("Values", call(std::get<description>(functions), std::tuple_cat(source(), ends())), {}, {});
    }
    template <class Functions>
    void rightSet(const Functions &functions) const
    {
        add("VectorsRight",
            call(std::get<description>(functions),
                 std::tuple_cat(source(), arguments<description, true>(right), ends())),
            {right}, {});
    }
    template <class Functions>
    void leftSet(const Functions &functions) const
    {
        add("VectorsLeft",
            call(std::get<description>(functions),
                 std::tuple_cat(source(), arguments<description, true>(left), ends())),
            {}, {left});
    }
    template <class Functions>
    void bothSets(const Functions &functions) const
    {
        add("Vectors",
            call(std::get<description>(functions), std::tuple_cat(source(), arguments<description, true>(right),
                                                                  arguments<description, true>(left), ends())),
            {right}, {left});
    }

private:
    auto source() const { return arguments<description, true>(a); }
    auto ends() const { return std::make_tuple(re, im, N, count, buffer); }

    void add(const char *member, Work library, const Sets<T> &rights, const Sets<T> &lefts) const
    {
        Works works = {{"kvlm", library}};
        if constexpr (F == Form::packed) {
            const T *const a = this->a.base;
            T *const re = this->re, *const im = this->im;
            T *const r = rights.empty() ? nullptr : rights[0].base, *const l = lefts.empty() ? nullptr : lefts[0].base;
            const int count = this->count;
            if (!r || !l)
                works.emplace_back("eigen", [=] {
                    for (int i = 0; i < count; ++i)
                        solveByEigen(a + i * N * N, re + i * N, im + i * N, r ? r + i * N * N : nullptr,
                                     l ? l + i * N * N : nullptr);
                    return 0;
                });
            works.emplace_back("Lapack", [=] {
                for (int i = 0; i < count; ++i)
                    solveByLapack(a + i * N * N, re + i * N, im + i * N, r ? r + i * N * N : nullptr,
                                  l ? l + i * N * N : nullptr);
                return 0;
            });
        }
        const Operand<T> result(Form::packed, 1, N, true, 3, count, re);
        suite.add(std::string(member) + (sizeof(T) == 4 ? "/32f/" : "/64f/") + nameOf(F) + "/" + std::to_string(N) +
                      "/" + std::to_string(count),
                  result, works, [=, *this](const std::string &) { return isRight(rights, lefts); });
    }

    // Traces, which know of no order, and the equations A'*x = w*x and A*conj(y) = w*conj(y).
    bool isRight(const Sets<T> &rights, const Sets<T> &lefts) const
    {
        using Complex = std::complex<double>;
        const Matrices matrix{a};
        int wrong = 0;
        for (int i = 0; i < count; ++i) {
            double trace = 0, worst = 0;
            for (int j = 0; j < N; ++j) {
                trace += double(re[i * N + j]) - matrix(i, j, j);
                for (const Sets<T> *sets : {&rights, &lefts})
                    for (const Operand<T> &set : *sets) {
                        const Matrices v{set};
                        const double y = im[i * N + j];
                        const int first = y < 0 ? j - 1 : j;
                        const auto element = [&](int r) {
                            const double part = y == 0 ? 0 : v(i, r, first + 1);
                            return Complex(v(i, r, first), (y < 0) != (sets == &lefts) ? -part : part);
                        };
                        for (int r = 0; r < N; ++r) {
                            Complex sum = -Complex(re[i * N + j], y) * element(r);
                            for (int c = 0; c < N; ++c)
                                sum += double(sets == &lefts ? matrix(i, r, c) : matrix(i, c, r)) * element(c);
                            worst = std::max(worst, std::abs(sum));
                        }
                    }
            }
            wrong += !(std::abs(trace) < 1e-3 && worst < 1e-3);
        }
        return wrong * 1000 <= count;
    }

    BENCH_INLINE static void solveByEigen(const T *a, T *re, T *im, T *right, T *left)
    {
        const Eigen::Map<const Packed> x(a);
        const Eigen::EigenSolver<Packed> solver(left ? Packed(x) : Packed(x.transpose()), right || left);
        for (int j = 0; j < N; ++j) {
            re[j] = solver.eigenvalues()[j].real();
            im[j] = solver.eigenvalues()[j].imag();
        }
        if (!right && !left)
            return;
        const Eigen::Matrix<std::complex<T>, N, N> vectors = solver.eigenvectors();
        T *const v = right ? right : left;
        for (int j = 0; j < N; ++j)
            for (int r = 0; r < N; ++r) {
                v[r * N + j] = im[j] < 0 ? (right ? -1 : 1) * vectors(r, j).imag() : vectors(r, j).real();
            }
    }
    // The library's own view of a packed matrix: by columns it is the transposed one.
    BENCH_INLINE static void solveByLapack(const T *a, T *re, T *im, T *right, T *left)
    {
        const int n = N, space = 8 * N * N;
        T x[N * N], r[N * N], l[N * N], work[space];
        int info;
        std::copy(a, a + N * N, x);
        geev(T())(left ? "V" : "N", right ? "V" : "N", &n, x, &n, re, im, l, &n, r, &n, work, &space, &info, 1, 1);
        for (int k = 0; k < N * N && right; ++k)
            right[k % N * N + k / N] = r[k];
        for (int k = 0; k < N * N && left; ++k)
            left[k % N * N + k / N] = l[k];
    }

    Suite &suite;
    int count;
    Operand<T> a, right, left;
    T *re, *im, *buffer;
};

template <class T, int N, Form F>
void addForm(Suite &suite)
{
    const Cells<T, N, F> cells(suite, 100000);
    if constexpr (sizeof(T) == 4) {
        cells.values(ALL(kvlmEigenValues_ma, 32f));
        cells.rightSet(ALL(kvlmEigenValuesVectorsRight_ma, 32f));
        cells.leftSet(ALL(kvlmEigenValuesVectorsLeft_ma, 32f));
        cells.bothSets(ALL(kvlmEigenValuesVectors_ma, 32f));
    } else {
        cells.values(ALL(kvlmEigenValues_ma, 64f));
        cells.rightSet(ALL(kvlmEigenValuesVectorsRight_ma, 64f));
        cells.leftSet(ALL(kvlmEigenValuesVectorsLeft_ma, 64f));
        cells.bothSets(ALL(kvlmEigenValuesVectors_ma, 64f));
    }
}

template <class T, int N>
void addForms(Suite &suite)
{
    addForm<T, N, Form::packed>(suite);
    addForm<T, N, Form::strided>(suite);
    addForm<T, N, Form::tablePlanes>(suite);
    addForm<T, N, Form::list>(suite);
}

} // namespace

int main(int argc, char **argv)
{
    Suite suite;
    addForms<float, 3>(suite);
    addForms<float, 4>(suite);
    addForms<float, 5>(suite);
    addForms<float, 6>(suite);
    addForms<double, 3>(suite);
    addForms<double, 4>(suite);
    addForms<double, 5>(suite);
    addForms<double, 6>(suite);
    return suite.run(argc, argv);
}
