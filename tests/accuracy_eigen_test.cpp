// General eigenproblems: residuals and lengths of both sets, spectra that are known, values of LAPACK, and the cases
// that are settled by agreement rather than by mathematics.
#include "residual.h"

#ifdef KVLM_HAS_LAPACK
#define GEEV(name, T)                                                                                                  \
    void name(const char *, const char *, const int *, T *, const int *, T *, T *, T *, const int *, T *, const int *, \
              T *, const int *, int *);
extern "C" {
GEEV(sgeev_, float)
GEEV(dgeev_, double)
}
#endif

namespace {

using Complex = std::complex<Exact>;
using ComplexMatrix = MatrixOf<Complex>;

template <class T>
class GeneralEigen : public testing::Test {
};
TYPED_TEST_SUITE(GeneralEigen, Types);

template <class T>
struct Result {
    Result(int n, bool hasVectors, T before = 7) : re(n, before), im(n, before), right(hasVectors ? n * n : 0, before)
    {
        left = right;
    }
    Complex value(int j) const { return {re[j], im[j]}; }
    // The vector of each value in a column: pairs are stored as real and imaginary part.
    ComplexMatrix complex(const std::vector<T> &v) const
    {
        const int n = static_cast<int>(re.size());
        return ComplexMatrix(n, n, [&](int r, int j) {
            const int first = im[j] < 0 ? j - 1 : j;
            const Exact part = im[j] == 0 ? 0 : v[r * n + first + 1];
            return Complex(v[r * n + first], im[j] < 0 ? -part : part);
        });
    }
    // The worst condition of a value, by the vectors of both sets.
    Exact condition() const
    {
        const ComplexMatrix products = complex(left).adjoint() * complex(right);
        Exact worst = 1;
        for (int j = 0; j < products.rows; ++j)
            worst = std::max(worst, 1 / std::abs(products(j, j)));
        return worst;
    }

    KvlStatus status = kvlOk;
    std::vector<T> re, im, right, left;
};

template <class T>
int orderOf(const std::vector<T> &a)
{
    return static_cast<int>(std::lround(std::sqrt(static_cast<double>(a.size()))));
}

template <class T>
Result<T> valuesOf(const std::vector<T> &a)
{
    const int n = orderOf(a);
    Result<T> x(n, false);
    std::vector<T> buffer(n * (n + 5));
    x.status = call(KVLM_FUNCTION(T, EigenValues_m), Packed<T>(n, n, 0, a), x.re.data(), x.im.data(), n, buffer.data());
    return x;
}

template <class T>
Result<T> vectorsOf(const std::vector<T> &a)
{
    const int n = orderOf(a);
    Packed<T> right(n, n, 0), left = right;
    Result<T> x(n, true);
    std::vector<T> buffer(n * (3 * n + 5));
    x.status = call(KVLM_FUNCTION(T, EigenValuesVectors_m), Packed<T>(n, n, 0, a), right, left, x.re.data(),
                    x.im.data(), n, buffer.data());
    x.right = right.elements;
    x.left = left.elements;
    return x;
}

// A matrix that is not exceptional to the settled tests.
enum Kind { random, gradedRows, gradedColumns, companion, upper, lower, permuted, rotations, kinds };
template <class T>
std::vector<T> matrixOfKind(int kind, int n, Random &source)
{
    std::vector<T> a = someMatrix<T>(n, source);
    eachElement(n, a, [&](int r, int c, T &x) {
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
    });
    if (kind == permuted)
        permuteRows(n, a, source);
    return a;
}

// A whole matrix with the values of a block diagonal of whole numbers, by whole similarities.
template <class T>
std::vector<T> wholeMatrix(int n, std::vector<Complex> &spectrum, Random &source)
{
    std::vector<T> a(n * n);
    for (int k = 0; k < n; ++k) {
        const bool isPair = k + 1 < n && k % 3 == 0;
        for (int j = k; j <= k + isPair; ++j) {
            a[j * n + j] = T(k + 1);
            spectrum.push_back({Exact(k + 1), Exact(isPair ? j == k ? 2 : -2 : 0)});
        }
        if (isPair) {
            a[k * n + k + 1] = 2;
            a[(k + 1) * n + k] = -2;
            ++k;
        }
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
template <class T>
Exact distance(const Result<T> &x, std::vector<Complex> expected)
{
    Exact largest = 0;
    for (int j = 0; j < static_cast<int>(x.re.size()); ++j) {
        const auto nearest = std::min_element(expected.begin(), expected.end(), [&](Complex u, Complex v) {
            return std::abs(u - x.value(j)) < std::abs(v - x.value(j));
        });
        largest = std::max(largest, std::abs(*nearest - x.value(j)));
        expected.erase(nearest);
    }
    return largest;
}

// Calls body(a, order, turn) with matrices of all kinds and orders.
template <class T, class Body>
void eachMatrix(int turns, int seed, Body body)
{
    for (int n = 1; n <= mostOrder; ++n)
        for (int turn = 0; turn < turns; ++turn) {
            SCOPED_TRACE("kind " + std::to_string(turn % kinds) + ", order " + std::to_string(n));
            Random source(n * seed + turn);
            body(matrixOfKind<T>(turn % kinds, n, source), n, turn);
        }
}

// A' * x = w * x for the right set; A * conj(y) = w * conj(y) for the left set.
TYPED_TEST(GeneralEigen, ResidualsAndLengthsOfBothSets)
{
    using T = TypeParam;
    eachMatrix<T>(10 * kinds, 1000, [](const std::vector<T> &a, int n, int) {
        const auto x = vectorsOf(a);
        ASSERT_EQ(x.status, kvlOk);
        const Exact bound = 20 * n * unit<T>, size = exact(n, n, a.data()).norm();
        const ComplexMatrix values(n, n, [&](int r, int c) { return r == c ? x.value(r) : Complex(0); });
        for (const bool isLeft : {false, true}) {
            const ComplexMatrix given = x.complex(isLeft ? x.left : x.right);
            const ComplexMatrix A(n, n, [&](int r, int c) { return Complex(a[isLeft ? r * n + c : c * n + r]); });
            const ComplexMatrix V(n, n, [&](int r, int c) { return isLeft ? std::conj(given(r, c)) : given(r, c); });
            const ComplexMatrix rest = A * V - V * values;
            for (int j = 0; j < n; ++j) {
                ASSERT_TRUE(x.im[j] <= 0 || (j + 1 < n && x.im[j + 1] == -x.im[j] && x.re[j + 1] == x.re[j]));
                Exact square = 0, length = 0;
                for (int r = 0; r < n; ++r) {
                    square += std::norm(rest(r, j));
                    length += std::norm(V(r, j));
                }
                EXPECT_LT(std::sqrt(square), bound * size);
                EXPECT_NEAR(double(length), 1, double(bound));
            }
        }
    });
}

TYPED_TEST(GeneralEigen, WholeSpectra)
{
    using T = TypeParam;
    for (int n = 1; n <= mostOrder; ++n)
        for (int turn = 0; turn < 20; ++turn) {
            SCOPED_TRACE("order " + std::to_string(n) + ", turn " + std::to_string(turn));
            Random source(n * 100 + turn);
            std::vector<Complex> spectrum;
            const std::vector<T> a = wholeMatrix<T>(n, spectrum, source);
            const auto x = valuesOf(a), y = vectorsOf(a);
            ASSERT_EQ(x.status, kvlOk);
            ASSERT_EQ(y.status, kvlOk);
            const Exact bound = 20 * n * unit<T> * y.condition() * exact(n, n, a.data()).norm();
            EXPECT_LT(distance(x, spectrum), bound);
            EXPECT_LT(distance(y, spectrum), bound);
        }
}

// Jordan blocks too, whose values may come out far apart, but never lose the trace.
TYPED_TEST(GeneralEigen, TracesStay)
{
    using T = TypeParam;
    eachMatrix<T>(60, 100, [](std::vector<T> a, int n, int turn) {
        if (turn % 2 && n > 1) // a Jordan block at the end
            eachElement(n, a, [&](int r, int c, T &x) { x = T(r == c || (r == n - 2 && c == n - 1)); });
        for (const auto &x : {valuesOf(a), vectorsOf(a)}) {
            ASSERT_EQ(x.status, kvlOk);
            Exact trace = 0;
            for (int k = 0; k < n; ++k)
                trace += Exact(x.re[k]) - a[k * n + k];
            EXPECT_LT(std::fabs(trace), 20 * n * unit<T> * std::max(Exact(1), exact(n, n, a.data()).norm()));
        }
    });
}

#ifdef KVLM_HAS_LAPACK
TYPED_TEST(GeneralEigen, ValuesOfLapack)
{
    using T = TypeParam;
    eachMatrix<T>(10 * kinds, 1000, [](const std::vector<T> &a, int n, int) {
        std::vector<T> copy = a, work(40 * n), right(n * n), left(n * n);
        Result<T> theirs(n, true);
        const int room = 40 * n;
        int info = 0;
        forType<T>(sgeev_, dgeev_)("V", "V", &n, copy.data(), &n, theirs.re.data(), theirs.im.data(), left.data(), &n,
                                   right.data(), &n, work.data(), &room, &info);
        ASSERT_EQ(info, 0);
        eachElement(n, theirs.right, [&](int r, int c, T &x) { x = right[c * n + r]; });
        eachElement(n, theirs.left, [&](int r, int c, T &x) { x = left[c * n + r]; });
        std::vector<Complex> expected;
        for (int j = 0; j < n; ++j)
            expected.push_back(theirs.value(j));
        const Exact size = std::max(Exact(1), exact(n, n, a.data()).norm());
        const Exact bound = 20 * n * unit<T> * theirs.condition() * size;
        EXPECT_LT(distance(valuesOf(a), expected), bound);
        EXPECT_LT(distance(vectorsOf(a), expected), bound);
    });
}
#endif

TYPED_TEST(GeneralEigen, SettledCases)
{
    using T = TypeParam;
    using Row = std::vector<T>;
    const T nan = std::numeric_limits<T>::quiet_NaN(), unit = std::numeric_limits<T>::epsilon();
    const struct {
        Row a, re, im;
    } cases[] = {
        {{5}, {5}, {0}},
        {{2, 1, 1, 2}, {2, 2}, {1, -1}},                     // real in truth: 3 and 1
        {{1, 2, 0, 3}, {3, 1}, {0, 0}},                      // the diagonal changes places
        {{1, 0, 2, 3}, {1, 3}, {0, 0}},                      // lower triangular: it does not
        {{1, unit, 4, 3}, {1, 3}, {0, 0}},                   // at the bound of deflation
        {{1, 0, 0, 7, 2, 0, 8, 9, 3}, {1, 2, 3}, {0, 0, 0}}, // no sweep
        {{unit, unit, unit, unit}, {unit, unit}, {0, 0}},    // too small to be seen
    };
    for (const auto &given : cases) {
        const auto x = valuesOf(given.a);
        EXPECT_EQ(x.status, kvlOk);
        EXPECT_EQ(x.re, given.re);
        EXPECT_EQ(x.im, given.im);
    }

    const auto empty = valuesOf(Row(16, nan));
    EXPECT_EQ(empty.status, kvlOk);
    EXPECT_TRUE(std::all_of(empty.re.begin(), empty.re.end(), [](T x) { return std::isnan(x); }));
    EXPECT_EQ(empty.im, Row(4));

    const auto one = vectorsOf(Row{-3});
    EXPECT_EQ(one.right, Row{1});
    EXPECT_EQ(one.left, Row{1});

    const auto two = vectorsOf(Row{1, 2, 0, 3});
    EXPECT_EQ(two.re, (Row{3, 1}));
    const double root = std::sqrt(0.5);
    const double expected[] = {0, -root, 1, root};
    for (int k = 0; k < 4; ++k)
        EXPECT_NEAR(two.right[k], expected[k], 2 * unit);

    // The rotation of the block before is none: the vectors are lost.
    const auto stale = vectorsOf(Row{2, 1, 1, 2});
    EXPECT_EQ(stale.status, kvlOk);
    EXPECT_EQ(stale.re, (Row{2, 2}));
    EXPECT_EQ(stale.im, (Row{1, -1}));
    EXPECT_TRUE(std::all_of(stale.right.begin(), stale.right.end(), [](T x) { return std::isnan(x); }));
}

TYPED_TEST(GeneralEigen, SizesOfScratch)
{
    using T = TypeParam;
    for (const bool hasVectors : {false, true}) {
        const auto ask =
            hasVectors ? KVLM_FUNCTION(T, EigenValuesVectorsGetBufSize) : KVLM_FUNCTION(T, EigenValuesGetBufSize);
        int size = 77;
        EXPECT_EQ(ask(0, nullptr), kvlErrNullPointer);
        EXPECT_EQ(ask(3, nullptr), kvlErrNullPointer);
        for (int n : {0, -1, std::numeric_limits<int>::min()})
            EXPECT_EQ(ask(n, &size), kvlErrSize);
        EXPECT_EQ(size, 77);
        for (int n : {1, 2, 3, 6, 100, 20000, std::numeric_limits<int>::max()}) {
            const std::uint32_t factor = (hasVectors ? 3u : 1u) * n + 5u, bytes = sizeof(T);
            EXPECT_EQ(ask(n, &size), kvlOk);
            EXPECT_EQ(size, static_cast<int>(std::uint32_t(n) * factor * bytes));
        }
    }
}

} // namespace
