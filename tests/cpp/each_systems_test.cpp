// Decompositions, inverses, determinants and solutions, object by object, beside LAPACK's.
#ifdef KVLM_HAS_LAPACK

#include <gtest/gtest.h>

#include <cfloat>

#include "each_measure.h"

namespace eachtest {
namespace {

namespace each = kvlm::each;

const std::vector<Kind> kinds = {
    {"random", fillRandom, true},
    {"diagonal heavy", [](Random &random, int n, double *a) { fillRandom(random, n, a), addDiagonal(n, a); }},
    {"conditions up to 1e5",
     [](Random &random, int n, double *a) {
         std::vector<double> values(n);
         for (double &x : values)
             x = std::pow(10, uniform(random, -5, 0));
         fillWithValues(random, n, values, a);
     },
     true},
    {"columns of 1e-4",
     [](Random &random, int n, double *a) { fillRandom(random, n, a), addDiagonal(n, a), scaleAll(n, a, 1e-4); }},
    {"times 1e-30",
     [](Random &random, int n, double *a) { fillRandom(random, n, a), addDiagonal(n, a), scaleAll(n, a, 1e-30); }},
    {"times 1e30",
     [](Random &random, int n, double *a) { fillRandom(random, n, a), addDiagonal(n, a), scaleAll(n, a, 1e30); }},
    {"columns 1e-15 to 1e15",
     [](Random &random, int n, double *a) {
         fillRandom(random, n, a);
         for (int c = 0; c < n; ++c)
             for (double s = std::pow(10, uniform(random, -15, 15)), *x = a + c; x < a + n * n; x += n)
                 *x *= s;
     },
     true},
    {"permuted, integers",
     [](Random &random, int n, double *a) {
         std::fill_n(a, n * n, 0.0);
         const int shift = static_cast<int>(random() % n);
         for (int r = 0; r < n; ++r)
             a[r * n + (r + shift) % n] = 1 + static_cast<int>(random() % 4);
     }},
};

/// The norms that solutions of systems with columns of any size are measured in: |a| times |x|, row by row.
template <class T>
double backwardError(int rows, int columns, const T *a, const T *x, const T *b)
{
    double worst = 0;
    std::vector<double> part(rows), size(rows);
    double all = 0, residual = 0;
    for (int r = 0; r < rows; ++r) {
        double sum = -static_cast<double>(b[r]), absolute = std::fabs(static_cast<double>(b[r]));
        for (int c = 0; c < columns; ++c) {
            const double product = static_cast<double>(a[r * columns + c]) * x[c];
            sum += product;
            absolute += std::fabs(product);
        }
        all = std::hypot(all, absolute);
        residual = std::hypot(residual, sum);
    }
    worst = residual / (all > 0 ? all : 1) / (columns * epsilon<T>);
    return worst;
}

void worsen(double &worst, double x)
{
    worst = worse(worst, x);
}

/// LAPACK's inverse in double, of a matrix with columns brought to magnitudes near 1.
struct Exact {
    template <class T>
    Exact(int order, const T *a) : n(order), columns(n), inverse(n * n)
    {
        std::vector<double> t(n * n);
        for (int c = 0; c < n; ++c) {
            int exponent;
            double largest = 0;
            for (int r = 0; r < n; ++r)
                largest = std::max(largest, std::fabs(static_cast<double>(a[r * n + c])));
            std::frexp(largest, &exponent);
            columns[c] = std::ldexp(1, exponent);
            for (int r = 0; r < n; ++r) {
                t[c * n + r] = a[r * n + c] / columns[c];
                inverse[c * n + r] = r == c;
                norm = std::hypot(norm, t[c * n + r]);
            }
        }
        for (int r = 0; r < n; ++r) {
            double length = 0;
            for (int c = 0; c < n; ++c)
                length = std::hypot(length, t[c * n + r]);
            rows *= length;
        }
        std::vector<int> pivots(n);
        int info;
        dgesv_(&n, &n, t.data(), &n, pivots.data(), inverse.data(), &n, &info);
        for (int k = 0; k < n; ++k) {
            determinant *= t[k * n + k] * (pivots[k] != k + 1 ? -1 : 1);
            factor *= columns[k];
        }
    }
    /// Of a computed inverse, over norm and condition of the matrix with such columns, and its order.
    template <class T>
    double errorOf(const T *computed) const
    {
        double inverseNorm = 0, error = 0;
        for (int c = 0; c < n; ++c)
            for (int r = 0; r < n; ++r) {
                inverseNorm = std::hypot(inverseNorm, inverse[c * n + r]);
                error = std::hypot(error, inverse[c * n + r] - computed[r * n + c] * columns[r]);
            }
        return error / inverseNorm / (norm * inverseNorm) / n;
    }
    /// Reciprocal, in the 1-norm, of the matrix itself.
    template <class T>
    double condition(int order, const T *a) const
    {
        double most = 0, mostInverse = 0;
        for (int c = 0; c < order; ++c) {
            double sum = 0, inverseSum = 0;
            for (int r = 0; r < order; ++r) {
                sum += std::fabs(static_cast<double>(a[r * order + c]));
                inverseSum += std::fabs(inverse[c * order + r] / columns[r]);
            }
            most = std::max(most, sum);
            mostInverse = std::max(mostInverse, inverseSum);
        }
        return 1 / (most * mostInverse);
    }

    int n;
    std::vector<double> columns, inverse;
    double norm = 0, rows = 1, determinant = 1, factor = 1;
};

template <class T>
void compare(const Kind &kind, int n, int count)
{
    const int square = n * n;
    Batch<T> batch(kind, n, count);
    const auto a = packed(batch.a, n, n);
    std::vector<T> conditions(count), inverses(batch.a.size()), asked(inverses), determinants(count),
        best(batch.x.size());
    const auto note = [&](const char *what, double value, double limit) {
        Table::all().note(std::string("Systems, ") + nameOf<T>() + ": " + what, kind.name, n, value);
        EXPECT_LE(value, limit) << kind.name << " " << n << " " << what;
    };
    double worst = 0, lapack = 0, squares = 0, inverse = 0, inverseAsked = 0, determinant = 0, condition = 0;
    ASSERT_EQ(each::solve(a, packed(batch.b, n), packed(batch.x, n), batch.statuses.data()), 0);
    ASSERT_EQ(each::leastSquares(a, packed(batch.b, n), packed(best, n), batch.statuses.data()), 0);
    ASSERT_EQ(each::invert(a, packed(inverses, n, n), batch.statuses.data()), 0);
    ASSERT_GE(each::invert(a, packed(asked, n, n), batch.statuses.data(), conditions.data()), 0);
    ASSERT_EQ(each::determinant(a, determinants.data(), std::vector<KvlStatus>(count).data()), 0);
    std::vector<T> t(square), y(n);
    std::vector<int> pivots(n);
    const int one = 1;
    int info;
    for (int i = 0; i < count; ++i) {
        const T *const object = &batch.a[static_cast<std::size_t>(i) * square];
        const T *const b = &batch.b[static_cast<std::size_t>(i) * n];
        worsen(worst, backwardError(n, n, object, &batch.x[static_cast<std::size_t>(i) * n], b));
        worsen(squares, backwardError(n, n, object, &best[static_cast<std::size_t>(i) * n], b));
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < n; ++c)
                t[c * n + r] = object[r * n + c];
        std::copy_n(b, n, y.begin());
        Lapack<T>::gesv(&n, &one, t.data(), &n, pivots.data(), y.data(), &n, &info);
        worsen(lapack, backwardError(n, n, object, y.data(), b));

        const Exact exact(n, object);
        worsen(inverse, exact.errorOf(&inverses[static_cast<std::size_t>(i) * square]) / epsilon<T>);
        ASSERT_EQ(batch.statuses[i] == kvlOk, conditions[i] >= epsilon<T>);
        if (batch.statuses[i] == kvlOk)
            worsen(inverseAsked, exact.errorOf(&asked[static_cast<std::size_t>(i) * square]) / epsilon<T>);
        const double expected = exact.determinant * exact.factor;
        if (std::fabs(expected) < std::numeric_limits<T>::max() && std::fabs(expected) > std::numeric_limits<T>::min())
            worsen(determinant, std::fabs(determinants[i] - expected) / exact.factor / exact.rows / (n * epsilon<T>));
        if (conditions[i] > 100 * epsilon<T>)
            worsen(condition, std::fabs(conditions[i] / exact.condition(n, object) - 1));
    }
    note("backward error of solve", worst, 10);
    note("backward error, LAPACK's gesv", lapack, 10);
    note("backward error of leastSquares, square", squares, 10);
    note("inverse without conditions, beside dgesv, over the condition", inverse, kind.isHard ? DBL_MAX : 10);
    note("inverse with conditions, likewise", inverseAsked, 1000); // rows are scaled, too
    note("determinant beside dgetrf, over the product of the lengths of the rows", determinant, 10);
    EXPECT_LE(condition, 0.01) << kind.name << " " << n;
}

template <class T>
void compareFactors(const Kind &kind, int n, int count)
{
    const int square = n * n;
    const auto note = [&](const char *what, double value) {
        Table::all().note(std::string("Systems, ") + nameOf<T>() + ": " + what, kind.name, n, value);
        EXPECT_LE(value, 10) << kind.name << " " << n << " " << what;
    };
    const auto element = [&](const std::vector<T> &x, int i, int r, int c) {
        return static_cast<double>(x[static_cast<std::size_t>(i) * square + r * n + c]);
    };
    Batch<T> batch(kind, n, count), positive(kind, n, count, true);
    std::vector<T> factors(batch.a.size());
    std::vector<int> pivots(batch.x.size());
    ASSERT_EQ(each::luDecompose(packed(batch.a, n, n), packed(factors, n, n), pivots.data(), batch.statuses.data()), 0);
    double worst = 0;
    for (int i = 0; i < count; ++i) {
        const int *const p = &pivots[static_cast<std::size_t>(i) * n];
        double error = 0, size = 0;
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < n; ++c) {
                double sum = -element(batch.a, i, p[r], c);
                size = std::hypot(size, sum);
                for (int k = 0; k <= std::min(r, c); ++k)
                    sum += (k == r ? 1 : element(factors, i, p[r], k)) * element(factors, i, p[k], c);
                error = std::hypot(error, sum);
            }
        worsen(worst, error / size / (n * epsilon<T>));
    }
    note("P\\*A - L\\*U", worst);

    ASSERT_EQ(each::qrDecompose(packed(batch.a, n, n), packed(factors, n, n), batch.statuses.data()), 0);
    worst = 0;
    for (int i = 0; i < count; ++i)
        for (int c = 0; c < n; ++c) { // Q*R, column by column, whatever their sizes
            std::vector<double> x(n);
            for (int r = 0; r <= c; ++r)
                x[r] = element(factors, i, r, c);
            for (int k = n - 2; k >= 0; --k) {
                double t = x[k], q = 1;
                for (int r = k + 1; r < n; ++r) {
                    t += x[r] * element(factors, i, r, k);
                    q += element(factors, i, r, k) * element(factors, i, r, k);
                }
                x[k] -= 2 / q * t;
                for (int r = k + 1; r < n; ++r)
                    x[r] -= 2 / q * t * element(factors, i, r, k);
            }
            double error = 0, size = 0;
            for (int r = 0; r < n; ++r) {
                error = std::hypot(error, x[r] - element(batch.a, i, r, c));
                size = std::hypot(size, element(batch.a, i, r, c));
            }
            worsen(worst, error / size / (n * epsilon<T>));
        }
    note("A - Q\\*R by columns", worst);

    // Squares of 1e30 are no floats.
    if (std::string(kind.name).find("1e30") == std::string::npos &&
        std::string(kind.name).find("1e-") == std::string::npos) {
        worst = 0;
        int failures =
            each::choleskyDecompose(packed(positive.a, n, n), packed(factors, n, n), positive.statuses.data());
        int isFound = 0;
        for (int i = 0; i < count; ++i) {
            if (positive.statuses[i] != kvlOk) {
                ++isFound;
                continue;
            }
            double error = 0, size = 0;
            const auto lower = [&](int r, int c) {
                return r == c ? 1 / element(factors, i, r, r) : element(factors, i, r, c);
            };
            for (int r = 0; r < n; ++r)
                for (int c = 0; c <= r; ++c) {
                    double sum = -element(positive.a, i, r, c);
                    size = std::hypot(size, sum);
                    for (int k = 0; k <= c; ++k)
                        sum += lower(r, k) * lower(c, k);
                    error = std::hypot(error, sum);
                }
            worsen(worst, error / size / (n * epsilon<T>));
        }
        EXPECT_EQ(failures, isFound);
        if (std::string(kind.name) == "diagonal heavy") {
            EXPECT_LE(failures, count / 100);
        }
        note("A - L\\*L'", worst);
    }
}

template <class T>
class EachSystems : public testing::Test {
};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(EachSystems, Types);

TYPED_TEST(EachSystems, HoldForAllKinds)
{
    for (const Kind &kind : kinds)
        for (int n = 1; n <= 16; n += n < 8 ? 1 : 4) {
            const int count = (n <= 6 ? 2000 : 200) * scaleOfCounts();
            compare<TypeParam>(kind, n, count);
            compareFactors<TypeParam>(kind, n, count);
        }
}

/// The least squares solution beside that of LAPACK in double.
TYPED_TEST(EachSystems, LeastSquaresAreThoseOfLapack)
{
    using T = TypeParam;
    for (const int height : {2, 4, 7, 12})
        for (int width = 1; width <= height; width += 2)
            for (const double size : {1.0, 1e-4, sizeof(T) == 4 ? 1e-25 : 1e-250, sizeof(T) == 4 ? 1e25 : 1e250}) {
                const int count = 200;
                Random random(height);
                std::vector<T> a(count * height * width), b(count * height), x(count * width);
                for (T &value : a)
                    value = static_cast<T>(size * normal(random));
                for (T &value : b)
                    value = static_cast<T>(size * normal(random));
                std::vector<KvlStatus> st(count);
                ASSERT_EQ(each::leastSquares(packed(a, height, width), packed(b, height), packed(x, width), st.data()),
                          0);
                double worst = 0;
                for (int i = 0; i < count; ++i) {
                    std::vector<double> t(height * width), y(height), work(1000);
                    for (int r = 0; r < height; ++r) {
                        y[r] = b[i * height + r] / size;
                        for (int c = 0; c < width; ++c)
                            t[c * height + r] = a[(i * height + r) * width + c] / size;
                    }
                    const int one = 1, length = 1000;
                    int info;
                    dgels_("N", &height, &width, &one, t.data(), &height, y.data(), &height, work.data(), &length,
                           &info);
                    double least = DBL_MAX, most = 0, error = 0, norm = 1;
                    for (int c = 0; c < width; ++c) {
                        least = std::min(least, std::fabs(t[c * height + c]));
                        most = std::max(most, std::fabs(t[c * height + c]));
                        error = std::hypot(error, x[i * width + c] - y[c]);
                        norm = std::hypot(norm, y[c]);
                    }
                    worst = std::max(worst, error / norm / (height * epsilon<T>)*std::pow(least / most, 2));
                }
                EXPECT_LE(worst, 10) << height << " " << width << " " << size;
            }
}

} // namespace
} // namespace eachtest

#endif
