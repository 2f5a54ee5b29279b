// General eigenproblems: residuals and lengths of both sets, spectra that are known, values of LAPACK, and the cases
// that are settled by agreement rather than by mathematics.
#include "residual.h"
#include "values.h"

#include <gtest/gtest.h>

#include <complex>

#ifdef KVLM_HAS_LAPACK
extern "C" {
void sgeev_(const char *, const char *, const int *, float *, const int *, float *, float *, float *, const int *,
            float *, const int *, float *, const int *, int *);
void dgeev_(const char *, const char *, const int *, double *, const int *, double *, double *, double *, const int *,
            double *, const int *, double *, const int *, int *);
}
#endif

namespace {

template <class T>
struct Functions;
template <>
struct Functions<float> {
    static constexpr auto values = kvlmEigenValues_m_32f;
    static constexpr auto both = kvlmEigenValuesVectors_m_32f;
    static constexpr auto right = kvlmEigenValuesVectorsRight_m_32f;
    static constexpr auto left = kvlmEigenValuesVectorsLeft_m_32f;
    static constexpr auto valuesSize = kvlmEigenValuesGetBufSize_32f;
    static constexpr auto vectorsSize = kvlmEigenValuesVectorsGetBufSize_32f;
#ifdef KVLM_HAS_LAPACK
    static constexpr auto geev = sgeev_;
#endif
};
template <>
struct Functions<double> {
    static constexpr auto values = kvlmEigenValues_m_64f;
    static constexpr auto both = kvlmEigenValuesVectors_m_64f;
    static constexpr auto right = kvlmEigenValuesVectorsRight_m_64f;
    static constexpr auto left = kvlmEigenValuesVectorsLeft_m_64f;
    static constexpr auto valuesSize = kvlmEigenValuesGetBufSize_64f;
    static constexpr auto vectorsSize = kvlmEigenValuesVectorsGetBufSize_64f;
#ifdef KVLM_HAS_LAPACK
    static constexpr auto geev = dgeev_;
#endif
};

using Complex = std::complex<Exact>;

template <class T>
class GeneralEigen : public testing::Test {
protected:
    static constexpr int elem = sizeof(T);
    static constexpr Exact unit = std::numeric_limits<T>::epsilon();

    struct Result {
        KvlStatus status;
        std::vector<T> re, im, right, left;

        Complex value(int j) const { return {re[j], im[j]}; }
        // Element r of the vector of value j: pairs are stored as real and imaginary part.
        Complex element(const std::vector<T> &v, int r, int j) const
        {
            const int n = static_cast<int>(re.size()), first = im[j] < 0 ? j - 1 : j;
            const Exact part = im[j] == 0 ? 0 : v[r * n + first + 1];
            return {v[r * n + first], im[j] < 0 ? -part : part};
        }
    };
    static Result values(const std::vector<T> &a)
    {
        const int n = orderOf(a);
        Result x = {0, std::vector<T>(n, 7), std::vector<T>(n, 7), {}, {}};
        std::vector<T> buffer(n * (n + 5));
        x.status = Functions<T>::values(a.data(), n * elem, elem, x.re.data(), x.im.data(), n, buffer.data());
        return x;
    }
    static Result vectors(const std::vector<T> &a)
    {
        const int n = orderOf(a), row = n * elem;
        Result x = {0, std::vector<T>(n, 7), std::vector<T>(n, 7), std::vector<T>(n * n, 7), std::vector<T>(n * n, 7)};
        std::vector<T> buffer(n * (3 * n + 5));
        x.status = Functions<T>::both(a.data(), row, elem, x.right.data(), row, elem, x.left.data(), row, elem,
                                      x.re.data(), x.im.data(), n, buffer.data());
        return x;
    }
    static int orderOf(const std::vector<T> &a)
    {
        return static_cast<int>(std::lround(std::sqrt(static_cast<double>(a.size()))));
    }

    // A matrix that is not exceptional to the settled tests.
    enum Kind { random, gradedRows, gradedColumns, companion, upper, lower, permuted, rotations, kinds };
    static std::vector<T> matrix(int kind, int n, Random &source)
    {
        std::vector<T> a = someMatrix<T>(n, source);
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < n; ++c) {
                T &x = a[r * n + c];
                const bool isTriangle = kind == upper || kind == lower || kind == permuted;
                if (kind == gradedRows || kind == gradedColumns)
                    x = std::ldexp(x, -(kind == gradedRows ? r : c));
                else if (kind == companion)
                    x = r == n - 1 ? x : T(c == r + 1);
                else if (isTriangle && r == c)
                    x = T(1 + r) / n;
                else if ((isTriangle && (kind == lower ? c > r : c < r)) || (kind == rotations && r / 2 > c / 2))
                    x = 0;
                else if (kind == rotations && r / 2 == c / 2)
                    x = r == c ? std::cos(T(r / 2 + 1)) : T(c - r) * std::sin(T(r / 2 + 1));
            }
        if (kind == permuted)
            for (int k = n - 1; k > 0; --k)
                std::swap_ranges(&a[k * n], &a[k * n] + n, &a[source.below(k) * n]);
        return a;
    }

    // A whole matrix with the values of a block diagonal of whole numbers, by whole similarities.
    static std::vector<T> wholeMatrix(int n, std::vector<Complex> &spectrum, Random &source)
    {
        std::vector<T> a(n * n);
        for (int k = 0; k < n; ++k) {
            const bool isPair = k + 1 < n && k % 3 == 0;
            a[k * n + k] = T(k + 1);
            spectrum.push_back({Exact(k + 1), isPair ? Exact(2) : Exact(0)});
            if (!isPair)
                continue;
            a[k * n + k + 1] = 2;
            a[(k + 1) * n + k] = -2;
            a[(k + 1) * n + k + 1] = T(k + 1);
            spectrum.push_back({Exact(k + 1), Exact(-2)});
            ++k;
        }
        for (int turn = 0; turn < n && n > 1; ++turn) { // row i plus row j, column j minus column i
            const int i = source.below(n), j = (i + 1 + source.below(n - 1)) % n;
            for (int c = 0; c < n; ++c)
                a[i * n + c] += a[j * n + c];
            for (int r = 0; r < n; ++r)
                a[r * n + j] -= a[r * n + i];
        }
        return a;
    }

    // The largest distance between the values and those expected, each matched with the nearest that is left.
    static Exact distance(const Result &x, std::vector<Complex> expected)
    {
        Exact largest = 0;
        for (std::size_t j = 0; j < x.re.size(); ++j) {
            const auto nearest = std::min_element(expected.begin(), expected.end(), [&](Complex u, Complex v) {
                return std::abs(u - x.value(j)) < std::abs(v - x.value(j));
            });
            largest = std::max(largest, std::abs(*nearest - x.value(j)));
            expected.erase(nearest);
        }
        return largest;
    }
};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(GeneralEigen, Types);

// A' * x = w * x for the right set; A * conj(y) = w * conj(y) for the left set.
TYPED_TEST(GeneralEigen, ResidualsAndLengthsOfBothSets)
{
    using T = TypeParam;
    for (int n = 1; n <= 16; ++n)
        for (int turn = 0; turn < 10 * this->kinds; ++turn) {
            SCOPED_TRACE("kind " + std::to_string(turn % this->kinds) + ", order " + std::to_string(n));
            Random source(n * 1000 + turn);
            const std::vector<T> a = this->matrix(turn % this->kinds, n, source);
            const auto x = this->vectors(a);
            ASSERT_EQ(x.status, kvlOk);
            const Exact bound = 20 * n * this->unit;
            for (int j = 0; j < n; ++j) {
                ASSERT_TRUE(x.im[j] <= 0 || (j + 1 < n && x.im[j + 1] == -x.im[j] && x.re[j + 1] == x.re[j]));
                Exact right = 0, left = 0, rightLength = 0, leftLength = 0;
                for (int r = 0; r < n; ++r) {
                    Complex sumRight = 0, sumLeft = 0;
                    for (int c = 0; c < n; ++c) {
                        sumRight += Exact(a[c * n + r]) * x.element(x.right, c, j);
                        sumLeft += Exact(a[r * n + c]) * std::conj(x.element(x.left, c, j));
                    }
                    right += std::norm(sumRight - x.value(j) * x.element(x.right, r, j));
                    left += std::norm(sumLeft - x.value(j) * std::conj(x.element(x.left, r, j)));
                    rightLength += std::norm(x.element(x.right, r, j));
                    leftLength += std::norm(x.element(x.left, r, j));
                }
                const Exact size = norm(n, n, a.data());
                EXPECT_LT(std::sqrt(right), bound * size);
                EXPECT_LT(std::sqrt(left), bound * size);
                EXPECT_NEAR(double(rightLength), 1, double(bound));
                EXPECT_NEAR(double(leftLength), 1, double(bound));
            }
        }
}

TYPED_TEST(GeneralEigen, WholeSpectra)
{
    using T = TypeParam;
    for (int n = 1; n <= 16; ++n)
        for (int turn = 0; turn < 20; ++turn) {
            SCOPED_TRACE("order " + std::to_string(n) + ", turn " + std::to_string(turn));
            Random source(n * 100 + turn);
            std::vector<Complex> spectrum;
            const std::vector<T> a = this->wholeMatrix(n, spectrum, source);
            const auto x = this->values(a), y = this->vectors(a);
            ASSERT_EQ(x.status, kvlOk);
            ASSERT_EQ(y.status, kvlOk);
            Exact worst = 1; // the condition of the values, by the vectors of both sets
            for (int j = 0; j < n; ++j) {
                Complex product = 0;
                for (int r = 0; r < n; ++r)
                    product += std::conj(y.element(y.left, r, j)) * y.element(y.right, r, j);
                worst = std::max(worst, 1 / std::abs(product));
            }
            const Exact bound = 20 * n * this->unit * worst * norm(n, n, a.data());
            EXPECT_LT(this->distance(x, spectrum), bound);
            EXPECT_LT(this->distance(y, spectrum), bound);
        }
}

// Jordan blocks too, whose values may come out far apart, but never lose the trace.
TYPED_TEST(GeneralEigen, TracesStay)
{
    using T = TypeParam;
    for (int n = 1; n <= 16; ++n)
        for (int turn = 0; turn < 60; ++turn) {
            SCOPED_TRACE("order " + std::to_string(n) + ", turn " + std::to_string(turn));
            Random source(n * 100 + turn);
            std::vector<T> a = this->matrix(turn % this->kinds, n, source);
            for (int k = 0; k + 1 < n && turn % 2; ++k) // a Jordan block
                for (int r = 0; r < n; ++r) {
                    a[r * n + k] = T(r == k);
                    a[r * n + k + 1] = r == k ? T(1) : T(r == k + 1);
                }
            for (const auto &x : {this->values(a), this->vectors(a)}) {
                ASSERT_EQ(x.status, kvlOk);
                Exact trace = 0;
                for (int k = 0; k < n; ++k)
                    trace += Exact(x.re[k]) - a[k * n + k];
                EXPECT_LT(std::fabs(trace), 20 * n * this->unit * std::max(Exact(1), norm(n, n, a.data())));
            }
        }
}

#ifdef KVLM_HAS_LAPACK
TYPED_TEST(GeneralEigen, ValuesOfLapack)
{
    using T = TypeParam;
    for (int n = 1; n <= 16; ++n)
        for (int turn = 0; turn < 10 * this->kinds; ++turn) {
            SCOPED_TRACE("kind " + std::to_string(turn % this->kinds) + ", order " + std::to_string(n));
            Random source(n * 1000 + turn);
            const std::vector<T> a = this->matrix(turn % this->kinds, n, source);
            std::vector<T> copy = a, re(n), im(n), left(n * n), right(n * n), work(40 * n);
            const int room = 40 * n;
            int info = 0;
            Functions<T>::geev("V", "V", &n, copy.data(), &n, re.data(), im.data(), left.data(), &n, right.data(), &n,
                               work.data(), &room, &info);
            ASSERT_EQ(info, 0);
            std::vector<Complex> expected;
            Exact worst = 1;
            for (int j = 0; j < n; ++j) {
                expected.push_back({re[j], im[j]});
                const int first = im[j] < 0 ? j - 1 : j;
                Complex product = 0;
                for (int r = 0; r < n; ++r) {
                    const auto element = [&](const std::vector<T> &v) {
                        return Complex(v[first * n + r], im[j] == 0 ? 0 : v[(first + 1) * n + r]);
                    };
                    product += std::conj(element(left)) * element(right);
                }
                worst = std::max(worst, 1 / std::abs(product));
            }
            const Exact size = std::max(Exact(1), norm(n, n, a.data())), bound = 20 * n * this->unit * worst * size;
            EXPECT_LT(this->distance(this->values(a), expected), bound);
            EXPECT_LT(this->distance(this->vectors(a), expected), bound);
        }
}
#endif

TYPED_TEST(GeneralEigen, OneSetIsTheSameAsInBoth)
{
    using T = TypeParam;
    const int elem = sizeof(T);
    for (int n = 1; n <= 16; ++n) {
        Random source(n);
        const int row = n * elem;
        const std::vector<T> a = someMatrix<T>(n, source);
        const auto x = this->vectors(a);
        for (bool isRight : {true, false}) {
            std::vector<T> re(n), im(n), v(n * n), buffer(n * (3 * n + 5));
            const auto call = isRight ? Functions<T>::right : Functions<T>::left;
            ASSERT_EQ(call(a.data(), row, elem, v.data(), row, elem, re.data(), im.data(), n, buffer.data()), kvlOk);
            EXPECT_EQ(re, x.re);
            EXPECT_EQ(im, x.im);
            EXPECT_EQ(v, isRight ? x.right : x.left);
        }
    }
}

TYPED_TEST(GeneralEigen, SettledCases)
{
    using T = TypeParam;
    using Row = std::vector<T>;
    const T nan = std::numeric_limits<T>::quiet_NaN(), unit = std::numeric_limits<T>::epsilon();
    const auto check = [&](const Row &a, const Row &re, const Row &im) {
        const auto x = this->values(a);
        EXPECT_EQ(x.status, kvlOk);
        EXPECT_EQ(x.re, re);
        EXPECT_EQ(x.im, im);
    };
    check({5}, {5}, {0});
    check({2, 1, 1, 2}, {2, 2}, {1, -1});                     // real in truth: 3 and 1
    check({1, 2, 0, 3}, {3, 1}, {0, 0});                      // the diagonal changes places
    check({1, 0, 2, 3}, {1, 3}, {0, 0});                      // lower triangular: it does not
    check({1, unit, 4, 3}, {1, 3}, {0, 0});                   // at the bound of deflation
    check({1, 0, 0, 7, 2, 0, 8, 9, 3}, {1, 2, 3}, {0, 0, 0}); // no sweep
    check({unit, unit, unit, unit}, {unit, unit}, {0, 0});    // too small to be seen

    const auto empty = this->values(Row(16, nan));
    EXPECT_EQ(empty.status, kvlOk);
    for (int k = 0; k < 4; ++k) {
        EXPECT_TRUE(std::isnan(empty.re[k]));
        EXPECT_EQ(empty.im[k], 0);
    }

    const auto one = this->vectors({T(-3)});
    EXPECT_EQ(one.right, Row{1});
    EXPECT_EQ(one.left, Row{1});

    const auto two = this->vectors({1, 2, 0, 3});
    EXPECT_EQ(two.re, (Row{3, 1}));
    const double root = std::sqrt(0.5);
    const double expected[] = {0, -root, 1, root};
    for (int k = 0; k < 4; ++k)
        EXPECT_NEAR(two.right[k], expected[k], 2 * unit);

    // The rotation of the block before is none: the vectors are lost.
    const auto stale = this->vectors({2, 1, 1, 2});
    EXPECT_EQ(stale.status, kvlOk);
    EXPECT_EQ(stale.re, (Row{2, 2}));
    EXPECT_EQ(stale.im, (Row{1, -1}));
    for (T x : stale.right)
        EXPECT_TRUE(std::isnan(x));
}

TYPED_TEST(GeneralEigen, SizesOfScratch)
{
    using T = TypeParam;
    using F = Functions<T>;
    const int elem = sizeof(T);
    int size = 77;
    for (auto call : {F::valuesSize, F::vectorsSize}) {
        EXPECT_EQ(call(0, nullptr), kvlErrNullPointer);
        EXPECT_EQ(call(3, nullptr), kvlErrNullPointer);
        for (int n : {0, -1, std::numeric_limits<int>::min()})
            EXPECT_EQ(call(n, &size), kvlErrSize);
        EXPECT_EQ(size, 77);
    }
    for (int n : {1, 2, 3, 6, 100, 20000, std::numeric_limits<int>::max()}) {
        const auto wrapped = [&](std::uint32_t factor) { return static_cast<int>(std::uint32_t(n) * factor * elem); };
        EXPECT_EQ(F::valuesSize(n, &size), kvlOk);
        EXPECT_EQ(size, wrapped(n + 5u));
        EXPECT_EQ(F::vectorsSize(n, &size), kvlOk);
        EXPECT_EQ(size, wrapped(3u * n + 5u));
    }
}

} // namespace
