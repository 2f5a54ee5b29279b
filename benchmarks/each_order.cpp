// The cases of each.cpp for one order, ORDER.
#include "each.h"

#include <Eigen/Dense>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <kvlm/each.hpp>

namespace {

namespace each = kvlm::each;

constexpr int count = 1024;

template <class T>
struct Matrices {
    T *base() const { return start; }
    int count() const { return ::count; }
    int rows() const { return order; }
    int columns() const { return order; }
    T &operator()(int i, int r, int c) const { return start[(i * order + r) * order + c]; }

    T *start;
    int order;
};
template <class T>
struct Vectors {
    T *base() const { return start; }
    int count() const { return ::count; }
    int size() const { return order; }
    T &operator()(int i, int j) const { return start[i * order + j]; }

    T *start;
    int order;
};

void add(const std::string &name, std::function<void()> work)
{
    benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State &state) {
        for (auto _ : state)
            work();
        state.SetItemsProcessed(state.iterations() * count);
    });
}

KvlStatus plainValues(const float *a, int order, float *scratch, float *values)
{
    const int row = order * 4;
    return kvlmEigenValuesSym_ma_32f(a, order * row, row, 4, scratch, values, order, count);
}
KvlStatus plainValues(const double *a, int order, double *scratch, double *values)
{
    const int row = order * 8;
    return kvlmEigenValuesSym_ma_64f(a, order * row, row, 8, scratch, values, order, count);
}
KvlStatus plainVectors(const float *a, int order, float *scratch, float *vectors, float *values)
{
    const int row = order * 4;
    return kvlmEigenValuesVectorsSym_ma_32f(a, order * row, row, 4, scratch, vectors, order * row, row, 4, values,
                                            order, count);
}
KvlStatus plainVectors(const double *a, int order, double *scratch, double *vectors, double *values)
{
    const int row = order * 8;
    return kvlmEigenValuesVectorsSym_ma_64f(a, order * row, row, 8, scratch, vectors, order * row, row, 8, values,
                                            order, count);
}

/// The arrays of all cases of a type and an order; general, symmetric and positive definite matrices.
template <class T, int N>
struct Case {
    Case()
        : general(size), symmetric(size), positive(size), out(size), b(count * N), x(count * N), y(count * N),
          scratch(4 * N * N + 5 * N), pivots(count * N), statuses(count)
    {
        std::mt19937 random(N);
        std::normal_distribution<double> normal;
        for (T &value : general)
            value = static_cast<T>(normal(random));
        for (T &value : b)
            value = static_cast<T>(normal(random));
        for (int i = 0; i < count; ++i)
            for (int r = 0; r < N; ++r)
                for (int c = 0; c < N; ++c) {
                    const T mean = (general[at(i, r, c)] + general[at(i, c, r)]) / 2;
                    symmetric[at(i, r, c)] = mean;
                    positive[at(i, r, c)] = mean + static_cast<T>(r == c ? 4 * N : 0);
                }
        generalFailing = general;
        symmetricFailing = symmetric;
        positiveFailing = positive;
        for (int i = 50; i < count; i += 100)
            for (int k = 0; k < N * N; ++k) {
                generalFailing[at(i, 0, k)] = positiveFailing[at(i, 0, k)] = 0;
                symmetricFailing[at(i, 0, k)] = std::numeric_limits<T>::infinity();
            }
    }
    static int at(int i, int r, int c) { return (i * N + r) * N + c; }

    /// The operation on a whole array by each; how many fail.
    using Each = std::function<int(const Matrices<T> &)>;

    void add(const char *operation, std::vector<T> &a, std::vector<T> &failing,
             std::function<KvlStatus(const T *)> plain, Each byEach, std::function<void(const T *)> byEigen)
    {
        const std::string cell = std::string(operation) + (sizeof(T) == 4 ? "/32f/packed/" : "/64f/packed/") +
                                 std::to_string(N) + "/" + std::to_string(count) + "/";
        const int failures = byEach({a.data(), N}), expected = byEach({failing.data(), N});
        const bool mayFail = std::string(operation) != "determinant" && std::string(operation) != "values" &&
                             std::string(operation) != "vectors";
        if (failures != 0 || (mayFail && expected != count / 100)) {
            std::fprintf(stderr, "%s: %d and %d objects fail\n", cell.c_str(), failures, expected);
            std::exit(EXIT_FAILURE);
        }
        T *const p = a.data(), *const q = failing.data();
        ::add("plain-" + cell + "kvlm", [=] { benchmark::DoNotOptimize(plain(p)); });
        ::add("each-" + cell + "kvlm", [=] { benchmark::DoNotOptimize(byEach({p, N})); });
        ::add("each-" + cell + "eigen", [=] { byEigen(p); });
        ::add("failing-" + cell + "kvlm", [=] { benchmark::DoNotOptimize(byEach({q, N})); });
    }
    template <class Function>
    static std::function<void(const T *)> forEachObject(Function function)
    {
        return [=](const T *a) {
            for (int i = 0; i < count; ++i)
                benchmark::DoNotOptimize(function(Matrix(Eigen::Map<const Matrix>(a + i * N * N)), i));
        };
    }

    using Matrix = Eigen::Matrix<T, N, N, Eigen::RowMajor>;
    using Vector = Eigen::Matrix<T, N, 1>;
    static constexpr int size = count * N * N, e = sizeof(T), row = N * e, object = N * row;

    void addAll();

    std::vector<T> general, symmetric, positive, generalFailing, symmetricFailing, positiveFailing;
    std::vector<T> out, b, x, y, scratch;
    std::vector<int> pivots;
    std::vector<KvlStatus> statuses;
};

template <class T, int N>
void Case<T, N>::addAll()
{
    using Systems = each::detail::Systems<T>;
    using General = each::detail::Eigen<T>;
    T *const o = out.data(), *const s = scratch.data(), *const xs = x.data();
    T *const ys = y.data(), *const bs = b.data();
    int *const p = pivots.data();
    KvlStatus *const st = statuses.data();
    const Matrices<T> to{o, N};
    const Vectors<T> right{bs, N}, solution{xs, N};
    using A = const Matrices<T> &;

    add(
        "lu", general, generalFailing,
        [=](const T *a) { return Systems::lu(a, object, row, e, p, o, object, row, e, N, count); },
        [=](A a) { return each::luDecompose(a, to, p, st); },
        forEachObject([](const Matrix &a, int) { return Eigen::PartialPivLU<Matrix>(a).matrixLU().eval(); }));
    add(
        "cholesky", positive, positiveFailing,
        [=](const T *a) { return Systems::cholesky(a, object, row, e, o, object, row, e, N, count); },
        [=](A a) { return each::choleskyDecompose(a, to, st); },
        forEachObject([](const Matrix &a, int) { return Eigen::LLT<Matrix>(a).matrixLLT().eval(); }));
    add(
        "qr", general, generalFailing,
        [=](const T *a) { return Systems::qr(a, object, row, e, s, o, object, row, e, N, N, count); },
        [=](A a) { return each::qrDecompose(a, to, st); },
        forEachObject([](const Matrix &a, int) { return Eigen::HouseholderQR<Matrix>(a).matrixQR().eval(); }));
    add(
        "inverse", general, generalFailing,
        [=](const T *a) { return Systems::invert(a, object, row, e, s, o, object, row, e, N, count); },
        [=](A a) { return each::invert(a, to, st); },
        forEachObject([](const Matrix &a, int) { return a.inverse().eval(); }));
    add(
        "determinant", general, generalFailing,
        [=](const T *a) { return Systems::determinant(a, object, row, e, N, s, xs, count); },
        [=](A a) { return each::determinant(a, xs, st); },
        forEachObject([](const Matrix &a, int) { return a.determinant(); }));
    add(
        "solve", general, generalFailing,
        [=](const T *a) {
            return Systems::lu(a, object, row, e, p, o, object, row, e, N, count) +
                   Systems::solveLU(o, object, row, e, p, bs, row, e, xs, row, e, N, count);
        },
        [=](A a) { return each::solve(a, right, solution, st); }, forEachObject([=](const Matrix &a, int i) {
            return Vector(Eigen::PartialPivLU<Matrix>(a).solve(Eigen::Map<const Vector>(bs + i * N)));
        }));
    add(
        "solve-positive", positive, positiveFailing,
        [=](const T *a) {
            return Systems::cholesky(a, object, row, e, o, object, row, e, N, count) +
                   Systems::solveCholesky(o, object, row, e, bs, row, e, xs, row, e, N, count);
        },
        [=](A a) { return each::solvePositiveDefinite(a, right, solution, st); },
        forEachObject([=](const Matrix &a, int i) {
            return Vector(Eigen::LLT<Matrix>(a).solve(Eigen::Map<const Vector>(bs + i * N)));
        }));
    add(
        "least-squares", general, generalFailing,
        [=](const T *a) {
            return Systems::qr(a, object, row, e, s, o, object, row, e, N, N, count) +
                   Systems::solveQR(o, object, row, e, s, bs, row, e, xs, row, e, N, N, count);
        },
        [=](A a) { return each::leastSquares(a, right, solution, st); }, forEachObject([=](const Matrix &a, int i) {
            return Vector(Eigen::HouseholderQR<Matrix>(a).solve(Eigen::Map<const Vector>(bs + i * N)));
        }));

    // The plain calls on matrices that they don't refuse.
    using Solver = Eigen::SelfAdjointEigenSolver<Matrix>;
    const T *const shifted = positive.data();
    add(
        "symmetric-values", symmetric, symmetricFailing, [=](const T *) { return plainValues(shifted, N, s, xs); },
        [=](A a) { return each::eigenvaluesSym(a, xs, st); },
        forEachObject([](const Matrix &a, int) { return Solver(a, Eigen::EigenvaluesOnly).eigenvalues().eval(); }));
    add(
        "symmetric-vectors", symmetric, symmetricFailing, [=](const T *) { return plainVectors(shifted, N, s, o, xs); },
        [=](A a) { return each::eigenvectorsSym(a, to, xs, st); },
        forEachObject([](const Matrix &a, int) { return Solver(a).eigenvectors().eval(); }));
    using Unsymmetric = Eigen::EigenSolver<Matrix>;
    add(
        "values", general, generalFailing,
        [=](const T *a) { return General::values(a, object, row, e, xs, ys, N, count, s); },
        [=](A a) { return each::eigenvalues(a, xs, ys, st); },
        forEachObject([](const Matrix &a, int) { return Unsymmetric(a, false).eigenvalues().eval(); }));
    add(
        "vectors", general, generalFailing,
        [=](const T *a) { return General::right(a, object, row, e, o, object, row, e, xs, ys, N, count, s); },
        [=](A a) { return each::eigenvectors(a, to, xs, ys, st); },
        forEachObject([](const Matrix &a, int) { return Unsymmetric(a).eigenvectors().eval(); }));
}

} // namespace

#define EACH_ADD(order)  EACH_ADD_(order)
#define EACH_ADD_(order) addEach##order

void EACH_ADD(ORDER)()
{
    static Case<float, ORDER> floats;
    static Case<double, ORDER> doubles;
    floats.addAll();
    doubles.addAll();
}
