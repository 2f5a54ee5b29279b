// Benchmarks of general eigenproblems, on 10000 different matrices; packed also against LAPACK, and, but for both sets
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

// The peers, and what is asked of all results; matrices and vectors are packed. Null stands for a set not wanted.
template <class T, int N>
struct Packed {
    using Matrix = Eigen::Matrix<T, N, N, Eigen::RowMajor>;

    BENCH_NOINLINE static void solveByEigen(const T *a, T *re, T *im, T *right, T *left)
    {
        const Eigen::Map<const Matrix> x(a);
        const Eigen::EigenSolver<Matrix> solver(left ? Matrix(x) : Matrix(x.transpose()), right || left);
        for (int j = 0; j < N; ++j) {
            re[j] = solver.eigenvalues()[j].real();
            im[j] = solver.eigenvalues()[j].imag();
        }
        if (!right && !left)
            return;
        const Eigen::Matrix<std::complex<T>, N, N> vectors = solver.eigenvectors();
        for (int j = 0; j < N; ++j)
            for (int r = 0; r < N; ++r) // a pair has its real part and its imaginary part
                (right ? right : left)[r * N + j] =
                    im[j] < 0 ? (right ? -1 : 1) * vectors(r, j).imag() : vectors(r, j).real();
    }

    // By columns the source is the library's own working matrix.
    BENCH_NOINLINE static void solveByLapack(const T *a, T *re, T *im, T *right, T *left)
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

    // The trace, which knows of no order, and A'*x = w*x or A*conj(y) = w*conj(y).
    BENCH_NOINLINE static bool isRight(const T *a, const T *re, const T *im, const T *right, const T *left)
    {
        double trace = 0, worst = 0;
        for (int j = 0; j < N; ++j)
            trace += double(re[j]) - a[j * N + j];
        for (int j = 0; j < N; ++j)
            for (const T *v : {right, left})
                for (int r = 0; r < N && v; ++r) {
                    const int first = im[j] < 0 ? j - 1 : j;
                    const double y = (im[j] < 0) == (v == left) ? 1 : -1;
                    const auto element = [&](int k) {
                        return std::complex<double>(v[k * N + first], im[j] == 0 ? 0 : y * v[k * N + first + 1]);
                    };
                    double sumRe = 0, sumIm = 0;
                    for (int c = 0; c < N; ++c) {
                        const double factor = v == left ? a[r * N + c] : a[c * N + r];
                        sumRe += factor * element(c).real();
                        sumIm += factor * element(c).imag();
                    }
                    sumRe -= re[j] * element(r).real() - im[j] * element(r).imag();
                    sumIm -= re[j] * element(r).imag() + im[j] * element(r).real();
                    worst = std::max(worst, std::abs(sumRe) + std::abs(sumIm));
                }
        return std::abs(trace) < 1e-3 && worst < 1e-3;
    }
};

template <class T, int N, Form F>
class Cells {
    static constexpr int description = descriptionOf(F);
    using Peers = Packed<T, N>;
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
        add("EigenValues_ma", functions, std::tuple<>(), false, false);
    }
    template <class Functions>
    void rightSet(const Functions &functions) const
    {
        add("EigenValuesVectorsRight_ma", functions, arguments<description, true>(right), true, false);
    }
    template <class Functions>
    void leftSet(const Functions &functions) const
    {
        add("EigenValuesVectorsLeft_ma", functions, arguments<description, true>(left), false, true);
    }
    template <class Functions>
    void bothSets(const Functions &functions) const
    {
        add("EigenValuesVectors_ma", functions,
            std::tuple_cat(arguments<description, true>(right), arguments<description, true>(left)), true, true);
    }

private:
    template <class Functions, class Results>
    void add(const char *member, const Functions &functions, const Results &results, bool hasRight, bool hasLeft) const
    {
        Works works = {{"kvlm", call(std::get<description>(functions),
                                     std::tuple_cat(arguments<description, true>(a), results,
                                                    std::make_tuple(re, im, N, count, buffer)))}};
        if constexpr (F == Form::packed) {
            const auto peer = [&](auto solve) {
                return [=, a = a.base, right = hasRight ? right.base : nullptr, left = hasLeft ? left.base : nullptr,
                        re = re, im = im, count = count] {
                    for (int i = 0; i < count; ++i)
                        solve(a + i * N * N, re + i * N, im + i * N, right ? right + i * N * N : nullptr,
                              left ? left + i * N * N : nullptr);
                    return 0;
                };
            };
            if (!hasRight || !hasLeft)
                works.emplace_back("eigen", peer(Peers::solveByEigen));
            works.emplace_back("Lapack", peer(Peers::solveByLapack));
        }
        const Operand<T> result(Form::packed, 1, N, true, 3, count, re);
        suite.add(nameOfCell<T>(member, F, N, count), result, works,
                  [*this, hasRight, hasLeft](const std::string &) { return isRight(hasRight, hasLeft); });
    }

    // There are ill-conditioned matrices among random ones.
    bool isRight(bool hasRight, bool hasLeft) const
    {
        int wrong = 0;
        T x[N * N], r[N * N], l[N * N];
        const Element<T, N, N, F> elements[] = {{a}, {right}, {left}};
        for (int i = 0; i < count; ++i) {
            for (int k = 0; k < N * N; ++k) {
                x[k] = elements[0](i, k / N, k % N);
                r[k] = elements[1](i, k / N, k % N);
                l[k] = elements[2](i, k / N, k % N);
            }
            wrong += !Peers::isRight(x, re + i * N, im + i * N, hasRight ? r : nullptr, hasLeft ? l : nullptr);
        }
        return wrong * 1000 <= count;
    }

    Suite &suite;
    int count;
    Operand<T> a, right, left;
    T *re, *im, *buffer;
};

template <class T, int N, Form F>
void addForm(Suite &suite)
{
    const Cells<T, N, F> cells(suite, 10000);
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
