// Symmetric eigenproblems whose spectra are known, judged by residuals and orthogonality in units of rounding, the
// status that each kind of matrix gets. Every matrix goes to all four functions of its type.
//
// Settled: the iteration may end early on a wrong value, or not end at all, mostly where values coincide. How often it
// may is part of each case; the matrices are the same in every run.
#include "residual.h"

#include <functional>

#ifdef KVLM_HAS_LAPACK
extern "C" void dsyev_(const char *job, const char *part, const int *n, double *a, const int *lda, double *values,
                       double *work, const int *elements, int *info, std::size_t, std::size_t);
#endif

namespace {

using Spectrum = std::vector<Exact>;

// What one function makes of one matrix. Arrays get it in all lanes of a group; the last object tells, or the first if
// it fails, as they stop there.
template <class T>
struct Solution {
    const char *name;
    KvlStatus status;
    std::vector<T> values, vectors; // no vectors from functions that have none
};

template <class T>
std::vector<Solution<T>> solutions(int n, const std::vector<T> &a)
{
    std::vector<Solution<T>> made;
    const auto solve = [&](const char *name, const Function &function, int count, bool hasVectors) {
        Packed<T> matrices(n, n, count, {}), vectors(n, n, count), values(0, n, count);
        for (int i = 0; i < std::max(1, count); ++i)
            matrices.elements.insert(matrices.elements.end(), a.begin(), a.end());
        std::vector<T> buffer(n * n);
        const KvlStatus status = call(function, matrices, buffer.data(), hasVectors ? argsOf(vectors) : Args(),
                                      values.elements.data(), n, count ? argsOf(count) : Args());
        const int i = count && status == kvlOk ? count - 1 : 0;
        const auto object = [&](Packed<T> &x) { return std::vector<T>(x.object(i), x.object(i) + x.size()); };
        made.push_back({name, status, object(values), hasVectors ? object(vectors) : std::vector<T>()});
    };
    solve("values", KVLM_FUNCTION(T, EigenValuesSym_m), 0, false);
    solve("vectors", KVLM_FUNCTION(T, EigenValuesVectorsSym_m), 0, true);
    solve("values of an array", KVLM_FUNCTION(T, EigenValuesSym_ma), 4, false);
    solve("vectors of an array", KVLM_FUNCTION(T, EigenValuesVectorsSym_ma), 4, true);
    return made;
}

// Q * diag(spectrum) * Q^T, rounded; Q is a product of n random reflections.
template <class T>
std::vector<T> withSpectrum(const Spectrum &spectrum, Random &random)
{
    const int n = static_cast<int>(spectrum.size());
    Matrix a(n, n, [&](int r, int c) { return r == c ? spectrum[r] : Exact(0); });
    for (int k = 0; k < n; ++k) {
        const Matrix u(n, 1, [&](int, int) { return Exact(inUnitInterval<double>(random)); });
        const Exact square = (u.adjoint() * u)(0, 0);
        const Matrix left = u.adjoint() * a;
        a = a - Matrix(n, n, [&](int r, int c) { return 2 / square * left(0, c) * u(r, 0); });
        const Matrix right = a * u;
        a = a - Matrix(n, n, [&](int r, int c) { return 2 / square * right(r, 0) * u(c, 0); });
    }
    std::vector<T> rounded(n * n);
    eachElement(n, rounded, [&](int r, int c, T &x) { x = static_cast<T>(a(r, c)); });
    return symmetric(n, rounded);
}

// The tests of the iteration are absolute: below 1 the unit counts as it is.
template <class T>
Exact scale(int n, const std::vector<T> &a)
{
    return n * std::max(exact(n, n, a.data()).norm(), Exact(1)) * unit<T>;
}

// The largest difference between the values, in any order, and those expected.
template <class T>
Exact difference(std::vector<T> values, Spectrum expected)
{
    std::sort(values.begin(), values.end());
    std::sort(expected.begin(), expected.end());
    Exact largest = 0;
    for (std::size_t i = 0; i < values.size(); ++i)
        largest = std::max(largest, std::fabs(values[i] - expected[i]));
    return largest;
}

template <class T>
void expectOrthogonal(int n, const Solution<T> &s)
{
    if (s.vectors.empty())
        return;
    const Matrix V = exact(n, n, s.vectors.data());
    EXPECT_LT((identity(n) - V.adjoint() * V).norm() / (n * unit<T>), threshold);
}

template <class T>
bool isRight(int n, const std::vector<T> &a, const Solution<T> &s, const Spectrum &expected)
{
    if (!(difference(s.values, expected) < threshold * scale(n, a)))
        return false;
    if (s.vectors.empty())
        return true;
    const Matrix V = exact(n, n, s.vectors.data());
    const Matrix scaled(n, n, [&](int r, int c) { return V(r, c) * s.values[c]; });
    return (scaled - exact(n, n, a.data()) * V).norm() < threshold * scale(n, a);
}

// How many calls of a thousand may give wrong values, or none.
struct Tally {
    void expectAtMost(int wrongOfThousand, int unfinishedOfThousand) const
    {
        EXPECT_LE(wrong * 1000, wrongOfThousand * calls) << wrong << " of " << calls;
        EXPECT_LE(unfinished * 1000, unfinishedOfThousand * calls) << unfinished << " of " << calls;
    }
    int calls = 0, wrong = 0, unfinished = 0;
};

std::string about(int n, int k)
{
    return "order " + std::to_string(n) + ", matrix " + std::to_string(k);
}

template <class T>
class SymmetricEigenproblems : public testing::Test {
};
TYPED_TEST_SUITE(SymmetricEigenproblems, Types);

TYPED_TEST(SymmetricEigenproblems, KnownSpectra)
{
    using T = TypeParam;
    constexpr bool is32f = sizeof(T) == 4;
    constexpr int few = is32f ? 5 : 0, some = is32f ? 20 : 0;
    const auto any = [](Random &random) { return (Exact(1.25) + inUnitInterval<double>(random)) * 2; };
    const auto power = [](int exponent) { return std::ldexp(Exact(1), exponent); };
    struct Case {
        const char *name;
        std::function<Exact(int i, int n, Random &random)> value;
        // Of a thousand calls on orders to 6, and beyond
        int wrong, wrongOfLong, unfinished;
    };
    const Case cases[] = {
        {"graded", [&](int i, int, Random &) { return power(i); }, 0, 0, 0},
        {"graded, of both signs", [&](int i, int n, Random &) { return (i % 3 ? 3 : -3) * power(n - i); }, 0, 0, 15},
        {"huge", [&](int i, int, Random &) { return power((is32f ? 45 : 490) + i); }, 0, 0, 0},
        {"positive", [&](int, int, Random &random) { return any(random); }, few, some, 0},
        {"indefinite", [&](int i, int, Random &random) { return i % 2 ? -any(random) : any(random); }, few, some, 0},
        {"nearly equal", [&](int i, int, Random &) { return 1 + 8 * i * unit<T>; }, 0, 0, 10},
        {"equal", [](int, int, Random &) { return Exact(-3); }, 0, 0, 0},
        {"multiple", [](int i, int, Random &) { return Exact(i % 3 ? 2 * (i % 3) - 1 : -2); }, 50, 300, 0},
    };
    for (const Case &given : cases)
        for (const bool isLong : {false, true}) {
            SCOPED_TRACE(given.name);
            Tally tally;
            for (int n = isLong ? 7 : 1; n <= (isLong ? mostOrder : 6); ++n)
                for (int k = 0; k < 50; ++k) {
                    SCOPED_TRACE(about(n, k));
                    Random random(n * 1000 + k);
                    Spectrum spectrum;
                    for (int i = 0; i < n; ++i)
                        spectrum.push_back(given.value(i, n, random));
                    const std::vector<T> a = withSpectrum<T>(spectrum, random);
                    for (const auto &s : solutions(n, a)) {
                        SCOPED_TRACE(s.name);
                        ++tally.calls;
                        expectOrthogonal(n, s);
                        if (s.status == kvlErrNoConvergence) {
                            ++tally.unfinished;
                            continue;
                        }
                        ASSERT_EQ(s.status, kvlOk);
                        EXPECT_TRUE(n <= 2 || std::is_sorted(s.values.rbegin(), s.values.rend()));
                        tally.wrong += !isRight(n, a, s, spectrum);
                    }
                }
            tally.expectAtMost(isLong ? given.wrongOfLong : given.wrong, given.unfinished);
        }
}

// Nothing is rounded on the way: the values are the elements, and the vectors unit vectors.
TYPED_TEST(SymmetricEigenproblems, DiagonalMatrices)
{
    using T = TypeParam;
    for (int n = 3; n <= mostOrder; ++n)
        for (int k = 0; k < 20; ++k) {
            SCOPED_TRACE(about(n, k));
            Random random(n * 1000 + k);
            std::vector<T> a(n * n), expected;
            Exact product = 1; // half of the least magnitude to the power 16 is small for 32f
            for (int i = 0; i < n; ++i) {
                expected.push_back(a[i * n + i] = T(1 + random.below(9)) * T(random.below(2) ? 0.5 : -0.5));
                product *= std::fabs(expected.back());
            }
            std::sort(expected.rbegin(), expected.rend());
            for (auto s : solutions(n, a)) {
                SCOPED_TRACE(s.name);
                ASSERT_EQ(s.status, product > unit<T> ? kvlOk : kvlErrSingular);
                if (s.status == kvlOk) {
                    EXPECT_EQ(s.values, expected);
                }
                eachElement(n, s.vectors, [&](int r, int c, T x) {
                    EXPECT_TRUE(x == 0 || (std::fabs(x) == 1 && a[r * n + r] == s.values[c])) << r << ", " << c;
                });
            }
        }
}

// A product of values up to eps is refused, whatever the values: they are right all the same above order 2.
TYPED_TEST(SymmetricEigenproblems, SingularMatrices)
{
    using T = TypeParam;
    Tally tally;
    for (int n = 2; n <= mostOrder; ++n)
        for (int kind = 0; kind < 3; ++kind) // regular but small, of rank 1 and n - 1
            for (int k = 0; k < 20; ++k) {
                SCOPED_TRACE("kind " + std::to_string(kind) + ", " + about(n, k));
                Random random(n * 1000 + k);
                Spectrum spectrum;
                for (int i = 0; i < n; ++i)
                    spectrum.push_back(kind == 0   ? std::pow(unit<T>, Exact(1) / n) / (2 + i % 2)
                                       : kind == 1 ? Exact(i == 0) / 2
                                       : i == 0    ? 0
                                                   : std::ldexp(Exact(1), -i));
                // Settled: arrays take columns of a squared length up to eps for zero.
                const Exact most = kind == 1 ? threshold * n * unit<T> : std::sqrt(unit<T>);
                for (const auto &s : solutions(n, withSpectrum<T>(spectrum, random))) {
                    SCOPED_TRACE(s.name);
                    ASSERT_NE(s.status, kvlOk);
                    ++tally.calls;
                    tally.unfinished += s.status == kvlErrNoConvergence;
                    if (s.status == kvlErrSingular && n > 2) {
                        tally.wrong += !(difference(s.values, spectrum) < most);
                        expectOrthogonal(n, s);
                    }
                }
            }
    tally.expectAtMost(sizeof(T) == 4 ? 2 : 0, 6);
}

// The limit of sweeps ends every call.
TYPED_TEST(SymmetricEigenproblems, ExtremeElementsEndToo)
{
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    for (int n = 1; n <= mostOrder; ++n)
        for (const T special : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::max()})
            for (int k = 0; k < n * n; ++k) {
                const int r = k / n, c = k % n;
                if (c > r)
                    continue;
                Random random(n);
                std::vector<T> a = symmetric(n, someMatrix<T>(n, random));
                a[r * n + c] = a[c * n + r] = special;
                for (const auto &s : solutions(n, a))
                    ASSERT_TRUE(s.status == kvlOk || s.status == kvlErrSingular || s.status == kvlErrNoConvergence)
                        << s.name << ": " << special << " at element " << k << ", order " << n;
            }
}

#ifdef KVLM_HAS_LAPACK
TYPED_TEST(SymmetricEigenproblems, ValuesOfLapack)
{
    using T = TypeParam;
    Tally tally;
    for (int n = 1; n <= mostOrder; ++n)
        for (int k = 0; k < 200; ++k) {
            SCOPED_TRACE(about(n, k));
            Random random(n * 1000 + k);
            const std::vector<T> a = symmetric(n, someMatrix<T>(n, random));
            std::vector<double> theirs(a.begin(), a.end()), values(n), work(mostOrder * mostOrder);
            const int elements = mostOrder * mostOrder;
            int info = 0;
            dsyev_("N", "U", &n, theirs.data(), &n, values.data(), work.data(), &elements, &info, 1, 1);
            ASSERT_EQ(info, 0);
            for (const auto &s : solutions(n, a)) {
                ++tally.calls;
                tally.unfinished += s.status != kvlOk;
                tally.wrong += s.status == kvlOk && !isRight(n, a, s, Spectrum(values.begin(), values.end()));
            }
        }
    tally.expectAtMost(sizeof(T) == 4 ? 1 : 0, 1);
}
#endif

} // namespace
