// Symmetric eigenproblems of any finite input, beside LAPACK's.
#ifdef KVLM_HAS_LAPACK

#include <gtest/gtest.h>

#include "each_measure.h"

namespace eachtest {
namespace {

/// Elements of any size down to a power of two.
void fillWithExponents(Random &random, int n, double least, double *a)
{
    for (int k = 0; k < n * n; ++k)
        a[k] = (random() % 2 ? 1 : -1) * std::exp2(uniform(random, least, 0));
    makeSymmetric(n, a);
}

const std::vector<Kind> kinds = {
    {"random", [](Random &random, int n, double *a) { fillRandom(random, n, a), makeSymmetric(n, a); }},
    {"plane of 10 cm",
     [](Random &random, int n, double *a) {
         std::vector<double> values(n);
         for (int k = 0; k + 1 < n; ++k)
             values[k] = uniform(random, 1e-4, 1e-2);
         fillWithValues(random, n, values, a);
     }},
    {"clusters",
     [](Random &random, int n, double *a) {
         std::vector<double> values(n);
         for (int k = 0; k < n; ++k)
             values[k] = k % 2 + std::pow(10, uniform(random, -9, -3));
         fillWithValues(random, n, values, a);
     }},
    {"rank one",
     [](Random &random, int n, double *a) {
         std::vector<double> values(n);
         values[0] = normal(random);
         fillWithValues(random, n, values, a);
     }},
    {"graded", [](Random &random, int n, double *a) { fillGraded(random, n, 3, a), makeSymmetric(n, a); }},
    {"times 1e-30",
     [](Random &random, int n, double *a) { fillRandom(random, n, a), makeSymmetric(n, a), scaleAll(n, a, 1e-30); }},
    {"times 1e30",
     [](Random &random, int n, double *a) { fillRandom(random, n, a), makeSymmetric(n, a), scaleAll(n, a, 1e30); }},
    {"Toeplitz", fillToeplitz},
    {"adjacency", fillAdjacency},
    {"diagonal, zeros",
     [](Random &random, int n, double *a) {
         std::fill_n(a, n * n, 0.0);
         for (int k = 0; k < n; ++k)
             a[k * n + k] = static_cast<int>(random() % 4) - 1;
     }},
    {"nearly diagonal",
     [](Random &random, int n, double *a) {
         fillRandom(random, n, a);
         const double small = std::pow(10, uniform(random, -170, 0));
         for (int r = 0; r < n; ++r)
             for (int c = 0; c < n; ++c)
                 if (r != c)
                     a[r * n + c] *= small;
         makeSymmetric(n, a);
     }},
    {"elements 1e-38 to 1", [](Random &random, int n, double *a) { fillWithExponents(random, n, -124, a); }},
    {"elements 1e-300 to 1", [](Random &random, int n, double *a) { fillWithExponents(random, n, -1000, a); }},
};

struct Errors {
    double residual = 0, orthogonality = 0, value = 0;
    void add(const Errors &other)
    {
        residual = worse(residual, other.residual);
        orthogonality = worse(orthogonality, other.orthogonality);
        value = worse(value, other.value);
    }
};

/// In units of n*epsilon (times the norm). Element r of vector k is v[r*row + k*column].
template <class T>
Errors errorsOf(int n, const T *a, const T *v, int row, int column, const T *values, const double *expected)
{
    double norm = 0;
    for (int k = 0; k < n * n; ++k)
        norm = std::hypot(norm, static_cast<double>(a[k]));
    // What is denormal has an absolute error of its own.
    const double unit = n * epsilon<T> * norm + n * std::numeric_limits<T>::denorm_min(), one = n * epsilon<T>;
    Errors errors;
    for (int k = 0; k < n; ++k) {
        double squares = 0;
        for (int r = 0; r < n; ++r) {
            double sum = -static_cast<double>(values[k]) * v[r * row + k * column];
            for (int c = 0; c < n; ++c)
                sum += static_cast<double>(a[r * n + c]) * v[c * row + k * column];
            squares = std::hypot(squares, sum);
        }
        errors.add({squares / unit, 0, std::fabs(values[k] - expected[k]) / unit});
        for (int j = 0; j <= k; ++j) {
            double product = -(j == k);
            for (int r = 0; r < n; ++r)
                product += static_cast<double>(v[r * row + k * column]) * v[r * row + j * column];
            errors.add({0, std::fabs(product) / one, 0});
        }
    }
    return errors;
}

template <class T>
void compare(const Kind &kind, int n, int count)
{
    Random random = randomOf(kind, n);
    const int square = n * n;
    std::vector<T> a = matricesOf<T>(kind, random, n, count), v(a.size()), values(static_cast<std::size_t>(count) * n);
    std::vector<T> alone(values.size());
    std::vector<KvlStatus> statuses(count, 1);
    const auto source = packed(a, n, n);
    ASSERT_EQ(kvlm::each::eigenvectorsSym(source, packed(v, n, n), values.data(), statuses.data()), 0);
    ASSERT_EQ(std::count(statuses.begin(), statuses.end(), kvlOk), count);
    ASSERT_EQ(kvlm::each::eigenvaluesSym(source, alone.data(), statuses.data()), 0);

    Errors worst, lapack;
    std::vector<double> expected(n), doubles(square), doubleWork(40 * n);
    std::vector<T> peer(square), peerValues(n), work(40 * n);
    const int size = 40 * n;
    int info;
    for (int i = 0; i < count; ++i) {
        const T *const object = a.data() + static_cast<std::ptrdiff_t>(i) * square;
        std::copy_n(object, square, doubles.begin());
        dsyev_("V", "U", &n, doubles.data(), &n, expected.data(), doubleWork.data(), &size, &info);
        std::reverse(expected.begin(), expected.end());
        const T *const found = values.data() + static_cast<std::ptrdiff_t>(i) * n;
        ASSERT_TRUE(std::is_sorted(found, found + n, std::greater<T>()));
        worst.add(
            errorsOf(n, object, v.data() + static_cast<std::ptrdiff_t>(i) * square, n, 1, found, expected.data()));
        Errors ofAlone = errorsOf(n, object, v.data() + static_cast<std::ptrdiff_t>(i) * square, n, 1,
                                  alone.data() + static_cast<std::ptrdiff_t>(i) * n, expected.data());
        worst.add({0, 0, ofAlone.value});
        if (i % 16 == 0) {
            std::copy_n(object, square, peer.begin());
            Lapack<T>::syev("V", "U", &n, peer.data(), &n, peerValues.data(), work.data(), &size, &info);
            std::reverse(expected.begin(), expected.end());
            lapack.add(errorsOf(n, object, peer.data(), 1, n, peerValues.data(), expected.data()));
        }
    }
    EXPECT_LE(worst.residual, 10) << kind.name << " " << n;
    EXPECT_LE(worst.orthogonality, 10) << kind.name << " " << n;
    EXPECT_LE(worst.value, 10) << kind.name << " " << n;
    const std::string title = std::string("Symmetric, ") + nameOf<T>() + ": ";
    Table::all().note(title + "residual A\\*v - w\\*v", kind.name, n, worst.residual);
    Table::all().note(title + "residual, LAPACK's syev", kind.name, n, lapack.residual);
    Table::all().note(title + "orthogonality", kind.name, n, worst.orthogonality);
    Table::all().note(title + "values beside dsyev", kind.name, n, worst.value);
}

template <class T>
class EachSymmetric : public testing::Test {
};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(EachSymmetric, Types);

TYPED_TEST(EachSymmetric, HoldsForAllKinds)
{
    for (const Kind &kind : kinds)
        for (int n = 1; n <= 16; n += n < 8 ? 1 : 4)
            compare<TypeParam>(kind, n, (n <= 6 ? 20000 : 1000) * scaleOfCounts());
}

TYPED_TEST(EachSymmetric, NamesWhatIsNotFiniteAndGoesOn)
{
    using T = TypeParam;
    for (int n : {1, 2, 3, 6, 8}) {
        const int count = 37, square = n * n;
        Random random(n);
        std::vector<T> a = matricesOf<T>(kinds[0], random, n, count), values(count * n);
        const T inf = std::numeric_limits<T>::infinity();
        a[5 * square] = inf;
        a[20 * square + (n - 1) * n] = -inf;
        a[36 * square + square - 1] = std::numeric_limits<T>::quiet_NaN();
        std::vector<KvlStatus> statuses(count);
        // In place.
        const std::vector<T> original = a;
        EXPECT_EQ(kvlm::each::eigenvectorsSym(packed(a, n, n), packed(a, n, n), values.data(), statuses.data()), 3);
        for (int i = 0; i < count; ++i) {
            const bool isBad = i == 5 || i == 20 || i == 36;
            EXPECT_EQ(statuses[i], isBad ? kvlErrNoConvergence : kvlOk);
            double trace = 0, sum = 0;
            for (int k = 0; k < n; ++k) {
                trace += original[i * square + k * n + k];
                sum += values[i * n + k];
                EXPECT_EQ(std::isnan(values[i * n + k]), isBad);
                EXPECT_EQ(std::isnan(a[i * square + k * n]), isBad);
            }
            if (!isBad) {
                EXPECT_NEAR(sum, trace, 50 * epsilon<T> * n);
            }
        }
    }
}

} // namespace
} // namespace eachtest

#endif
