// General eigenproblems of any finite input, beside LAPACK's.
#ifdef KVLM_HAS_LAPACK

#include <gtest/gtest.h>

#include <complex>

#include "each_measure.h"

namespace eachtest {
namespace {

using Complex = std::complex<double>;

void fillCompanion(int n, const std::vector<double> &coefficients, double *a)
{
    std::fill_n(a, n * n, 0.0);
    for (int k = 0; k + 1 < n; ++k)
        a[(k + 1) * n + k] = 1;
    for (int k = 0; k < n; ++k)
        a[k * n + n - 1] = -coefficients[k];
}
/// S*J*S^-1 with an S that is easily inverted: a unit triangle of integers.
void transform(Random &random, int n, double *a)
{
    for (int r = 1; r < n; ++r)
        for (int c = 0; c < r; ++c) {
            const int x = static_cast<int>(random() % 3) - 1;
            for (int k = 0; k < n; ++k)
                a[r * n + k] += x * a[c * n + k];
            for (int k = 0; k < n; ++k)
                a[k * n + c] -= x * a[k * n + r];
        }
}

const std::vector<Kind> kinds = {
    {"random", fillRandom},
    {"symmetric", [](Random &random, int n, double *a) { fillRandom(random, n, a), makeSymmetric(n, a); }},
    {"symmetric Toeplitz", fillToeplitz},
    {"adjacency", fillAdjacency},
    {"directed adjacency",
     [](Random &random, int n, double *a) {
         for (int k = 0; k < n * n; ++k)
             a[k] = k % (n + 1) && random() % 2;
     }},
    {"companion",
     [](Random &random, int n, double *a) {
         std::vector<double> c(n);
         for (double &x : c)
             x = normal(random);
         fillCompanion(n, c, a);
     }},
    {"companion of x^n - 1",
     [](Random &random, int n, double *a) {
         std::vector<double> c(n);
         c[0] = random() % 2 ? -1 : 1;
         fillCompanion(n, c, a);
     }},
    {"companion, roots 1 to n",
     [](Random &, int n, double *a) {
         std::vector<double> c(n + 1);
         c[0] = 1;
         for (int root = 1; root <= n; ++root)
             for (int k = root; k >= 0; --k)
                 c[k] = (k ? c[k - 1] : 0) - root * c[k];
         fillCompanion(n, c, a);
     }},
    {"pairs that nearly meet",
     [](Random &random, int n, double *a) {
         std::fill_n(a, n * n, 0.0);
         for (int k = 0; k < n; ++k)
             a[k * n + k] = 2;
         for (int k = 0; k + 1 < n; k += 2) {
             const double small = std::pow(10, uniform(random, -10, 0));
             a[k * n + k + 1] = small;
             a[(k + 1) * n + k] = random() % 3 ? small : -small;
             a[k * n + k] += random() % 2 ? 0 : small * normal(random);
         }
     }},
    {"Jordan blocks",
     [](Random &random, int n, double *a) {
         std::fill_n(a, n * n, 0.0);
         for (int k = 0; k < n; ++k) {
             a[k * n + k] = 1 + k / 3;
             if (k + 1 < n && k % 3 < 2)
                 a[k * n + k + 1] = 1;
         }
         transform(random, n, a);
     }},
    {"integers",
     [](Random &random, int n, double *a) {
         for (int k = 0; k < n * n; ++k)
             a[k] = static_cast<int>(random() % 5) - 2;
     }},
    {"triangles, zeros",
     [](Random &random, int n, double *a) {
         const bool isUpper = random() % 2;
         for (int r = 0; r < n; ++r)
             for (int c = 0; c < n; ++c)
                 a[r * n + c] = (isUpper ? r <= c : r >= c) ? static_cast<int>(random() % 3) - 1 : 0;
     }},
    {"graded", [](Random &random, int n, double *a) { fillGraded(random, n, 2, a); }},
    {"times 1e-30", [](Random &random, int n, double *a) { fillRandom(random, n, a), scaleAll(n, a, 1e-30); }},
    {"times 1e30", [](Random &random, int n, double *a) { fillRandom(random, n, a), scaleAll(n, a, 1e30); }},
};

/// Column k of vectors in the storage of pairs; element r at v[r*row + k*column].
template <class T>
std::vector<Complex> columnOf(int n, const T *v, int row, int column, const T *im, int k)
{
    std::vector<Complex> x(n);
    const int first = im[k] < 0 ? k - 1 : k;
    for (int r = 0; r < n; ++r)
        x[r] = Complex(v[r * row + first * column],
                       im[k] == 0 ? 0 : (im[k] < 0 ? -1 : 1) * static_cast<double>(v[r * row + (first + 1) * column]));
    return x;
}
/// |A*x - w*x|, or |y^H*A - w*y^H|, in units of n*epsilon*|A|; not a number unless x has length 1.
template <class T>
double residualOf(int n, const T *a, const std::vector<Complex> &x, Complex w, bool isLeft, double norm)
{
    double squares = 0, length = 0;
    for (int r = 0; r < n; ++r) {
        Complex sum = 0;
        for (int c = 0; c < n; ++c)
            sum +=
                isLeft ? std::conj(x[c]) * static_cast<double>(a[c * n + r]) : static_cast<double>(a[r * n + c]) * x[c];
        squares += std::norm((sum - w * (isLeft ? std::conj(x[r]) : x[r])) / (norm > 0 ? norm : 1));
        length += std::norm(x[r]);
    }
    return std::fabs(length - 1) < 0.01 ? std::sqrt(squares) / (n * epsilon<T>) : std::nan("");
}

/// LAPACK's answer to one matrix.
template <class T>
struct Peer {
    explicit Peer(int n) : re(n), im(n), left(n * n), right(n * n), t(n * n), work(60 * n) {}
    template <class U>
    void solve(int n, const U *a)
    {
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < n; ++c)
                t[c * n + r] = static_cast<T>(a[r * n + c]);
        int info, size = static_cast<int>(work.size());
        Lapack<T>::geev("V", "V", &n, t.data(), &n, re.data(), im.data(), left.data(), &n, right.data(), &n,
                        work.data(), &size, &info);
    }
    std::vector<T> re, im, left, right, t, work;
};

/// The largest distance of a value to LAPACK's of the same number, over its condition, in units of n*epsilon*|A|.
/// Values whose condition says nothing at this precision are passed over: those of large condition, or with near
/// neighbours.
template <class T>
double valueError(int n, const T *re, const T *im, const Peer<double> &peer, double norm)
{
    std::vector<char> isTaken(n);
    double worst = 0;
    for (int k = 0; k < n; ++k) {
        int best = -1;
        double distance = 0;
        for (int j = 0; j < n; ++j) {
            const double d = std::abs(Complex(peer.re[j] - re[k], peer.im[j] - im[k]));
            if (!isTaken[j] && (best < 0 || d < distance || std::isnan(d))) {
                best = j;
                distance = d;
            }
        }
        isTaken[best] = 1;
        bool isAlone = true;
        for (int j = 0; j < n; ++j)
            isAlone &= j == best || std::abs(Complex(peer.re[j] - peer.re[best], peer.im[j] - peer.im[best])) >
                                        30 * std::sqrt(n * epsilon<T>) * norm;
        Complex product = 0;
        const auto x = columnOf(n, peer.right.data(), 1, n, peer.im.data(), best);
        const auto y = columnOf(n, peer.left.data(), 1, n, peer.im.data(), best);
        for (int r = 0; r < n; ++r)
            product += std::conj(y[r]) * x[r];
        if ((isAlone && std::abs(product) > 10 * std::sqrt(n * epsilon<T>)) || std::isnan(distance))
            worst = std::max(worst, distance * std::abs(product) / (n * epsilon<T> * (norm > 0 ? norm : 1)));
        if (std::isnan(distance))
            return distance;
    }
    return worst;
}

template <class T>
void compare(const Kind &kind, int n, int count)
{
    Random random = randomOf(kind, n);
    const int square = n * n;
    std::vector<T> a = matricesOf<T>(kind, random, n, count), right(a.size()), left(a.size());
    std::vector<T> re(static_cast<std::size_t>(count) * n), im(re.size()), re2(re.size()), im2(re.size());
    std::vector<KvlStatus> statuses(count, 1);
    const auto source = packed(a, n, n);
    ASSERT_EQ(kvlm::each::eigenvectors(source, packed(right, n, n), packed(left, n, n), re.data(), im.data(),
                                       statuses.data()),
              0);
    ASSERT_EQ(std::count(statuses.begin(), statuses.end(), kvlOk), count);
    ASSERT_EQ(kvlm::each::eigenvalues(source, re2.data(), im2.data(), statuses.data()), 0);

    double residual = 0, peerResidual = 0, values = 0;
    Peer<double> exact(n);
    Peer<T> peer(n);
    for (int i = 0; i < count; ++i) {
        const std::size_t at = static_cast<std::size_t>(i) * n;
        const T *const object = a.data() + at * n;
        double norm = 0;
        for (int k = 0; k < square; ++k)
            norm = std::hypot(norm, static_cast<double>(object[k]));
        const auto worst = [](double x, double &of) { of = worse(of, x); };
        for (int k = 0; k < n; ++k) {
            const Complex w(re[at + k], im[at + k]);
            worst(residualOf(n, object, columnOf(n, &right[at * n], n, 1, &im[at], k), w, false, norm), residual);
            worst(residualOf(n, object, columnOf(n, &left[at * n], n, 1, &im[at], k), w, true, norm), residual);
        }
        if (i % 8 == 0) {
            exact.solve(n, object);
            worst(valueError(n, &re2[at], &im2[at], exact, norm), values);
            worst(valueError(n, &re[at], &im[at], exact, norm), values);
            peer.solve(n, object);
            for (int k = 0; k < n; ++k) {
                const Complex w(peer.re[k], peer.im[k]);
                worst(residualOf(n, object, columnOf(n, peer.right.data(), 1, n, peer.im.data(), k), w, false, norm),
                      peerResidual);
                worst(residualOf(n, object, columnOf(n, peer.left.data(), 1, n, peer.im.data(), k), w, true, norm),
                      peerResidual);
            }
        }
    }
    EXPECT_LE(residual, 8) << kind.name << " " << n;
    EXPECT_LE(values, 20) << kind.name << " " << n;
    const std::string title = std::string("General, ") + nameOf<T>() + ": ";
    Table::all().note(title + "residual of right and left vectors", kind.name, n, residual);
    Table::all().note(title + "residual, LAPACK's geev", kind.name, n, peerResidual);
    Table::all().note(title + "values beside dgeev, over their condition", kind.name, n, values);
}

template <class T>
class EachGeneral : public testing::Test {
};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(EachGeneral, Types);

TYPED_TEST(EachGeneral, HoldsForAllKinds)
{
    for (const Kind &kind : kinds)
        for (int n = 1; n <= 16; n += n < 8 ? 1 : 4)
            compare<TypeParam>(kind, n, (n <= 6 ? 4000 : 400) * scaleOfCounts());
}

TYPED_TEST(EachGeneral, RealPairsAreReal)
{
    using T = TypeParam;
    std::vector<T> a = {2, 1, 1, 2, 0, 1, 1, 0, 1, 4, 1, 1}, v(12), re(6), im(6);
    std::vector<KvlStatus> statuses(3);
    for (const bool withVectors : {false, true}) {
        const int failures =
            withVectors
                ? kvlm::each::eigenvectors(packed(a, 2, 2), packed(v, 2, 2), re.data(), im.data(), statuses.data())
                : kvlm::each::eigenvalues(packed(a, 2, 2), re.data(), im.data(), statuses.data());
        EXPECT_EQ(failures, 0);
        for (int i = 0; i < 3; ++i) {
            std::sort(re.begin() + 2 * i, re.begin() + 2 * i + 2);
            EXPECT_EQ(im[2 * i], 0);
            EXPECT_EQ(im[2 * i + 1], 0);
        }
        const double expected[] = {1, 3, -1, 1, -1, 3};
        for (int k = 0; k < 6; ++k)
            EXPECT_NEAR(re[k], expected[k], 8 * epsilon<T>);
    }
}

/// No sum of values or of their squares tells a pair of this kind from a complex one.
TYPED_TEST(EachGeneral, RealPairsThatNearlyMeetAreReal)
{
    using T = TypeParam;
    for (T apart = T(0.1); apart > 100 * epsilon<T>; apart /= 3) {
        std::vector<T> a = {2, apart, 0, apart, 2, 0, 0, 0, -1}, re(3), im(3);
        KvlStatus status;
        ASSERT_EQ(kvlm::each::eigenvalues(packed(a, 3, 3), re.data(), im.data(), &status), 0);
        std::sort(re.begin(), re.end());
        const double expected[] = {-1, 2 - apart, 2 + apart};
        for (int k = 0; k < 3; ++k) {
            EXPECT_EQ(im[k], 0) << apart;
            EXPECT_NEAR(re[k], expected[k], 10 * epsilon<T>) << apart;
        }
    }
}

TYPED_TEST(EachGeneral, OneSideIsThatOfBothAndFailuresStayAlone)
{
    using T = TypeParam;
    for (int n : {2, 3, 6, 9}) {
        const int count = 50, square = n * n;
        Random random(n);
        std::vector<T> a(count * square), both(a.size()), left(a.size()), alone(a.size());
        std::vector<T> re(count * n), im(re.size());
        for (T &x : a)
            x = static_cast<T>(normal(random));
        a[7 * square + 1] = std::numeric_limits<T>::infinity();
        a[49 * square] = std::numeric_limits<T>::quiet_NaN();
        std::vector<KvlStatus> statuses(count);
        const auto source = packed(a, n, n);
        EXPECT_EQ(kvlm::each::eigenvectors(source, packed(both, n, n), packed(left, n, n), re.data(), im.data(),
                                           statuses.data()),
                  2);
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ(statuses[i], i == 7 || i == 49 ? kvlErrNoConvergence : kvlOk);
            EXPECT_EQ(std::isnan(re[i * n + n - 1]), i == 7 || i == 49);
            EXPECT_EQ(std::isnan(left[i * square + n - 1]), i == 7 || i == 49);
        }
        const auto same = [](T x, T y) { return x == y || (std::isnan(x) && std::isnan(y)); };
        EXPECT_EQ(kvlm::each::eigenvectors(source, packed(alone, n, n), re.data(), im.data(), statuses.data()), 2);
        EXPECT_TRUE(std::equal(both.begin(), both.end(), alone.begin(), same));
        // In place, and without a base.
        Listed<T> list{{}, n, n};
        for (int i = 0; i < count; ++i)
            list.list.push_back(&a[i * square]);
        EXPECT_EQ(kvlm::each::leftEigenvectors(list, list, re.data(), im.data(), statuses.data()), 2);
        EXPECT_TRUE(std::equal(left.begin(), left.end(), a.begin(), same));
    }
}

} // namespace
} // namespace eachtest

#endif
