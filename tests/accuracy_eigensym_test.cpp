// Symmetric eigenproblems: values against known spectra and those of LAPACK, vectors by residuals and orthogonality in
// units of rounding, the status that each kind of matrix gets. Every matrix goes to all four functions of its type.
//
// Settled: the iteration may end early on a wrong value, or not end at all, mostly where values coincide. How often it
// may is part of each case; the matrices are the same in every run.
#include "residual.h"
#include "values.h"

#include <gtest/gtest.h>

#include <functional>
#include <numeric>

namespace {

constexpr Exact threshold = 30;
constexpr int mostOrder = 16;

template <class T>
struct Functions;
template <>
struct Functions<float> {
    static constexpr auto values = kvlmEigenValuesSym_m_32f;
    static constexpr auto vectors = kvlmEigenValuesVectorsSym_m_32f;
    static constexpr auto valuesOfArray = kvlmEigenValuesSym_ma_32f;
    static constexpr auto vectorsOfArray = kvlmEigenValuesVectorsSym_ma_32f;
};
template <>
struct Functions<double> {
    static constexpr auto values = kvlmEigenValuesSym_m_64f;
    static constexpr auto vectors = kvlmEigenValuesVectorsSym_m_64f;
    static constexpr auto valuesOfArray = kvlmEigenValuesSym_ma_64f;
    static constexpr auto vectorsOfArray = kvlmEigenValuesVectorsSym_ma_64f;
};

using Spectrum = std::vector<Exact>;

// What one function makes of one matrix. Arrays get it in all lanes of a group; the last object tells.
template <class T>
struct Solution {
    std::string name;
    KvlStatus status;
    std::vector<T> values, vectors; // no vectors from functions that have none
};

template <class T>
std::vector<Solution<T>> solutions(int n, const std::vector<T> &a)
{
    using F = Functions<T>;
    constexpr int elem = sizeof(T), count = 4;
    const int row = n * elem, obj = n * row, last = count - 1;
    std::vector<T> all, buffer(n * n), values(n * count), vectors(n * n * count);
    for (int i = 0; i < count; ++i)
        all.insert(all.end(), a.begin(), a.end());
    std::vector<Solution<T>> made;
    const auto keep = [&](const char *name, KvlStatus status, bool hasVectors, int i) {
        const auto object = [&](const std::vector<T> &x, int size) {
            return std::vector<T>(&x[i * size], &x[i * size] + size);
        };
        // An array that fails stops at its first object.
        i = status == kvlOk ? i : 0;
        made.push_back({name, status, object(values, n), hasVectors ? object(vectors, n * n) : std::vector<T>()});
    };
    keep("values", F::values(a.data(), row, elem, buffer.data(), values.data(), n), false, 0);
    keep("vectors", F::vectors(a.data(), row, elem, buffer.data(), vectors.data(), row, elem, values.data(), n), true,
         0);
    keep("values of an array", F::valuesOfArray(all.data(), obj, row, elem, buffer.data(), values.data(), n, count),
         false, last);
    keep("vectors of an array",
         F::vectorsOfArray(all.data(), obj, row, elem, buffer.data(), vectors.data(), obj, row, elem, values.data(), n,
                           count),
         true, last);
    return made;
}

template <class T>
class SymmetricEigenproblems : public testing::Test {
protected:
    static constexpr Exact unit = std::numeric_limits<T>::epsilon();

    // Q * diag(spectrum) * Q^T, rounded; Q is a product of n random reflections.
    static std::vector<T> withSpectrum(const Spectrum &spectrum, Random &random)
    {
        const int n = static_cast<int>(spectrum.size());
        std::vector<Exact> a(n * n), u(n);
        for (int i = 0; i < n; ++i)
            a[i * n + i] = spectrum[i];
        for (int k = 0; k < n; ++k) {
            Exact square = 0;
            for (Exact &x : u) {
                x = inUnitInterval<double>(random);
                square += x * x;
            }
            for (const bool fromRight : {false, true})
                for (int i = 0; i < n; ++i) {
                    const auto at = [&](int j) -> Exact & { return fromRight ? a[i * n + j] : a[j * n + i]; };
                    Exact product = 0;
                    for (int j = 0; j < n; ++j)
                        product += at(j) * u[j];
                    for (int j = 0; j < n; ++j)
                        at(j) -= 2 / square * product * u[j];
                }
        }
        return symmetric(n, std::vector<T>(a.begin(), a.end()));
    }

    // The tests of the iteration are absolute: below 1 the unit counts as it is.
    static Exact scale(int n, const std::vector<T> &a) { return n * std::max(norm(n, n, a.data()), Exact(1)) * unit; }

    // The largest difference between the values, in any order, and those expected.
    static Exact difference(std::vector<T> values, Spectrum expected)
    {
        std::sort(values.begin(), values.end());
        std::sort(expected.begin(), expected.end());
        Exact largest = 0;
        for (std::size_t i = 0; i < values.size(); ++i)
            largest = std::max(largest, std::fabs(values[i] - expected[i]));
        return largest;
    }

    static void expectOrthogonal(int n, const std::vector<T> &vectors)
    {
        const auto V = [&](int r, int c) { return Exact(vectors[r * n + c]); };
        const auto transposed = [&](int r, int c) { return V(c, r); };
        EXPECT_LT(residual(n, n, transposed, V, [](int r, int c) { return Exact(r == c); }) / (n * unit), threshold);
    }

    static bool isRight(int n, const std::vector<T> &a, const Solution<T> &s, const Spectrum &expected)
    {
        const auto A = [&](int r, int c) { return Exact(a[r * n + c]); };
        const auto V = [&](int r, int c) { return Exact(s.vectors[r * n + c]); };
        const auto scaled = [&](int r, int c) { return V(r, c) * s.values[c]; };
        return difference(s.values, expected) < threshold * scale(n, a) &&
               (s.vectors.empty() || residual(n, n, A, V, scaled) < threshold * scale(n, a));
    }

    struct Case {
        const char *name;
        std::function<Exact(int i, int n, Random &random)> value;
        // Of a thousand calls on orders to 6, and beyond
        int wrong, wrongOfLong, unfinished;
    };
};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(SymmetricEigenproblems, Types);

TYPED_TEST(SymmetricEigenproblems, KnownSpectra)
{
    using T = TypeParam;
    constexpr bool is32f = sizeof(T) == 4;
    const auto any = [](Random &random) { return (Exact(1.25) + inUnitInterval<double>(random)) * 2; };
    const typename TestFixture::Case cases[] = {
        {"graded", [](int i, int, Random &) { return std::ldexp(Exact(1), i); }, 0, 0, 0},
        {"graded, of both signs", [](int i, int n, Random &) { return std::ldexp(Exact(i % 3 ? 3 : -3), n - i); }, 0, 0,
         15},
        {"huge", [](int i, int, Random &) { return std::ldexp(Exact(1), (is32f ? 45 : 490) + i); }, 0, 0, 0},
        {"positive", [&](int, int, Random &random) { return any(random); }, is32f ? 5 : 0, is32f ? 20 : 0, 0},
        {"indefinite", [&](int i, int, Random &random) { return i % 2 ? -any(random) : any(random); }, is32f ? 5 : 0,
         is32f ? 20 : 0, 0},
        {"nearly equal", [&](int i, int, Random &) { return 1 + 8 * i * TestFixture::unit; }, 0, 0, 10},
        {"equal", [](int, int, Random &) { return Exact(-3); }, 0, 0, 0},
        {"multiple", [](int i, int, Random &) { return Exact(i % 3 ? 2 * (i % 3) - 1 : -2); }, 50, 300, 0},
    };
    for (const auto &given : cases)
        for (const bool isLong : {false, true}) {
            SCOPED_TRACE(given.name);
            int calls = 0, wrong = 0, unfinished = 0;
            for (int n = isLong ? 7 : 1; n <= (isLong ? mostOrder : 6); ++n)
                for (int k = 0; k < 50; ++k) {
                    SCOPED_TRACE("order " + std::to_string(n) + ", matrix " + std::to_string(k));
                    Random random(n * 1000 + k);
                    Spectrum spectrum;
                    for (int i = 0; i < n; ++i)
                        spectrum.push_back(given.value(i, n, random));
                    const std::vector<T> a = this->withSpectrum(spectrum, random);
                    for (const auto &s : solutions(n, a)) {
                        SCOPED_TRACE(s.name);
                        ++calls;
                        if (!s.vectors.empty())
                            this->expectOrthogonal(n, s.vectors);
                        if (s.status == kvlErrNoConvergence) {
                            ++unfinished;
                            continue;
                        }
                        ASSERT_EQ(s.status, kvlOk);
                        if (n > 2) {
                            EXPECT_TRUE(std::is_sorted(s.values.rbegin(), s.values.rend()));
                        }
                        wrong += !this->isRight(n, a, s, spectrum);
                    }
                }
            EXPECT_LE(wrong * 1000, (isLong ? given.wrongOfLong : given.wrong) * calls) << wrong << " of " << calls;
            EXPECT_LE(unfinished * 1000, given.unfinished * calls) << unfinished << " of " << calls;
        }
}

// Nothing is rounded on the way: the values are the elements, and the vectors unit vectors.
TYPED_TEST(SymmetricEigenproblems, DiagonalMatrices)
{
    using T = TypeParam;
    for (int n = 3; n <= mostOrder; ++n)
        for (int k = 0; k < 20; ++k) {
            SCOPED_TRACE("order " + std::to_string(n) + ", matrix " + std::to_string(k));
            Random random(n * 1000 + k);
            std::vector<T> a(n * n), expected;
            for (int i = 0; i < n; ++i)
                expected.push_back(a[i * n + i] = T(1 + random.below(9)) * T(random.below(2) ? 0.5 : -0.5));
            std::sort(expected.rbegin(), expected.rend());
            for (const auto &s : solutions(n, a)) {
                SCOPED_TRACE(s.name);
                // Half of the least magnitude to the power 16 is small for 32f.
                const Exact product = std::fabs(
                    std::accumulate(expected.begin(), expected.end(), Exact(1), [](Exact x, T y) { return x * y; }));
                ASSERT_EQ(s.status, product > this->unit ? kvlOk : kvlErrSingular);
                if (s.status == kvlOk) {
                    EXPECT_EQ(s.values, expected);
                }
                for (std::size_t j = 0; j < s.vectors.size(); ++j) {
                    const int r = static_cast<int>(j) / n, c = static_cast<int>(j) % n;
                    if (s.vectors[j] != 0) {
                        EXPECT_EQ(std::fabs(s.vectors[j]), 1);
                        EXPECT_EQ(a[r * n + r], s.values[c]);
                    }
                }
            }
        }
}

// A product of values up to eps is refused, whatever the values: they are right all the same above order 2.
TYPED_TEST(SymmetricEigenproblems, SingularMatrices)
{
    using T = TypeParam;
    int calls = 0, wrong = 0, unfinished = 0;
    for (int n = 2; n <= mostOrder; ++n)
        for (int kind = 0; kind < 3; ++kind) // regular but small, of rank 1 and n - 1
            for (int k = 0; k < 20; ++k) {
                SCOPED_TRACE("kind " + std::to_string(kind) + ", order " + std::to_string(n) + ", matrix " +
                             std::to_string(k));
                Random random(n * 1000 + k);
                Spectrum spectrum;
                for (int i = 0; i < n; ++i)
                    spectrum.push_back(kind == 0   ? std::pow(this->unit, Exact(1) / n) / (2 + i % 2)
                                       : kind == 1 ? Exact(i == 0) / 2
                                       : i == 0    ? 0
                                                   : std::ldexp(Exact(1), -i));
                // Settled: arrays take columns of a squared length up to eps for zero.
                const Exact most = kind == 1 ? threshold * n * this->unit : std::sqrt(this->unit);
                const std::vector<T> a = this->withSpectrum(spectrum, random);
                for (const auto &s : solutions(n, a)) {
                    SCOPED_TRACE(s.name);
                    ASSERT_NE(s.status, kvlOk);
                    ++calls;
                    unfinished += s.status == kvlErrNoConvergence;
                    if (s.status == kvlErrSingular && n > 2) {
                        wrong += !(this->difference(s.values, spectrum) < most);
                        if (!s.vectors.empty())
                            this->expectOrthogonal(n, s.vectors);
                    }
                }
            }
    EXPECT_LE(wrong * 1000, (sizeof(T) == 4 ? 2 : 0) * calls) << wrong << " of " << calls;
    EXPECT_LE(unfinished * 1000, 6 * calls) << unfinished << " of " << calls;
}

// The limit of sweeps ends every call.
TYPED_TEST(SymmetricEigenproblems, ExtremeElementsEndToo)
{
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    for (int n = 1; n <= mostOrder; ++n)
        for (const T special : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::max()})
            for (int r = 0; r < n; ++r)
                for (int c = 0; c <= r; ++c) {
                    SCOPED_TRACE(std::to_string(special) + " at row " + std::to_string(r) + ", column " +
                                 std::to_string(c) + ", order " + std::to_string(n));
                    Random random(n);
                    std::vector<T> a = symmetric(n, someMatrix<T>(n, random));
                    a[r * n + c] = a[c * n + r] = special;
                    for (const auto &s : solutions(n, a)) {
                        SCOPED_TRACE(s.name);
                        ASSERT_TRUE(s.status == kvlOk || s.status == kvlErrSingular || s.status == kvlErrNoConvergence);
                    }
                }
}

#ifdef KVLM_HAS_LAPACK
extern "C" void dsyev_(const char *job, const char *part, const int *n, double *a, const int *lda, double *values,
                       double *work, const int *elements, int *info, std::size_t, std::size_t);

TYPED_TEST(SymmetricEigenproblems, ValuesOfLapack)
{
    using T = TypeParam;
    int calls = 0, wrong = 0, unfinished = 0;
    for (int n = 1; n <= mostOrder; ++n)
        for (int k = 0; k < 200; ++k) {
            SCOPED_TRACE("order " + std::to_string(n) + ", matrix " + std::to_string(k));
            Random random(n * 1000 + k);
            const std::vector<T> a = symmetric(n, someMatrix<T>(n, random));
            std::vector<double> theirs(a.begin(), a.end()), values(n), work(mostOrder * mostOrder);
            const int elements = mostOrder * mostOrder;
            int info = 0;
            dsyev_("N", "U", &n, theirs.data(), &n, values.data(), work.data(), &elements, &info, 1, 1);
            ASSERT_EQ(info, 0);
            for (const auto &s : solutions(n, a)) {
                ++calls;
                unfinished += s.status != kvlOk;
                wrong += s.status == kvlOk && !this->isRight(n, a, s, Spectrum(values.begin(), values.end()));
            }
        }
    EXPECT_LE(wrong * 1000, (sizeof(T) == 4 ? 1 : 0) * calls) << wrong << " of " << calls;
    EXPECT_LE(unfinished * 1000, calls) << unfinished << " of " << calls;
}
#endif

} // namespace
