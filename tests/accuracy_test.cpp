// Residuals in units of rounding, formed as the test programs of LAPACK form them, on random, graded, ill-conditioned
// and permuted matrices of orders 1 to 16.
#include "residual.h"
#include "values.h"

#include <gtest/gtest.h>

namespace {

constexpr int batch = 5; // a group and a rest

template <class T>
struct Functions;
template <>
struct Functions<float> {
    static constexpr auto det = kvlmDet_ma_32f;
    static constexpr auto factor = kvlmLUDecomp_ma_32f;
    static constexpr auto solve = kvlmLUBackSubst_mava_32f;
    static constexpr auto invert = kvlmInvert_ma_32f;
};
template <>
struct Functions<double> {
    static constexpr auto det = kvlmDet_ma_64f;
    static constexpr auto factor = kvlmLUDecomp_ma_64f;
    static constexpr auto solve = kvlmLUBackSubst_mava_64f;
    static constexpr auto invert = kvlmInvert_ma_64f;
};

const char *const kinds[] = {"random", "graded rows", "graded columns", "ill-conditioned", "permuted triangle"};

template <class T>
std::vector<T> matrixOfKind(int kind, int n, Random &random)
{
    std::vector<T> a = someMatrix<T>(n, random);
    const auto at = [&](int r, int c) -> T & { return a[r * n + c]; };
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c) {
            if (kind == 1)
                at(r, c) = std::ldexp(at(r, c), r / 2);
            else if (kind == 2)
                at(r, c) = std::ldexp(at(r, c), c / 2);
            else if (kind == 4)
                at(r, c) = r == c ? 1 : r < c ? at(r, c) : 0;
        }
    if (kind == 3 && n > 1) // the last row is that of the others' sum, but for a little
        for (int c = 0; c < n; ++c) {
            Exact sum = 0;
            for (int r = 0; r < n - 1; ++r)
                sum += at(r, c);
            at(n - 1, c) = static_cast<T>(sum + at(n - 1, c) / (sizeof(T) == 4 ? 256 : 1 << 24));
        }
    for (int r = n - 1; kind == 4 && r > 0; --r)
        std::swap_ranges(&a[r * n], &a[r * n] + n, &a[random.below(r) * n]);
    return a;
}

template <class T>
class Accuracy : public testing::Test {
};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(Accuracy, Types);

TYPED_TEST(Accuracy, ResidualsAreSmall)
{
    using T = TypeParam;
    using F = Functions<T>;
    constexpr Exact unit = std::numeric_limits<T>::epsilon();
    constexpr Exact threshold = 30;
    for (int n = 1; n <= 16; ++n)
        for (int kind = 0; kind < 5; ++kind) {
            SCOPED_TRACE(std::string(kinds[kind]) + ", order " + std::to_string(n));
            Random random(n * 10 + kind);
            const int elem = sizeof(T), row = n * elem, obj = n * row;
            std::vector<T> a, b(n * batch), lu(n * n * batch), x(n * batch), inverse(n * n * batch), det(batch);
            std::vector<T> buffer(n * n + n);
            std::vector<int> pivot(n * batch);
            for (int i = 0; i < batch; ++i) {
                const std::vector<T> matrix = matrixOfKind<T>(kind, n, random);
                a.insert(a.end(), matrix.begin(), matrix.end());
            }
            for (T &element : b)
                element = inUnitInterval<T>(random);
            ASSERT_EQ(F::factor(a.data(), obj, row, elem, pivot.data(), lu.data(), obj, row, elem, n, batch), kvlOk);
            ASSERT_EQ(
                F::solve(lu.data(), obj, row, elem, pivot.data(), b.data(), row, elem, x.data(), row, elem, n, batch),
                kvlOk);
            ASSERT_EQ(F::det(a.data(), obj, row, elem, n, buffer.data(), det.data(), batch), kvlOk);
            ASSERT_EQ(F::invert(a.data(), obj, row, elem, buffer.data(), inverse.data(), obj, row, elem, n, batch),
                      kvlOk);
            for (int i = 0; i < batch; ++i) {
                const T *const ai = &a[i * n * n], *const xi = &x[i * n], *const bi = &b[i * n];
                const T *const vi = &inverse[i * n * n];
                const int *const p = &pivot[i * n];
                const auto A = [&](int r, int c) { return Exact(ai[r * n + c]); };
                const auto factors = [&](int r, int c) { return Exact(lu[i * n * n + p[r] * n + c]); };
                const auto lower = [&](int r, int c) { return c < r ? factors(r, c) : Exact(r == c); };
                const auto upper = [&](int r, int c) { return c >= r ? factors(r, c) : Exact(0); };
                const Exact size = norm(n, n, ai);
                EXPECT_LT(residual(n, n, lower, upper, [&](int r, int c) { return A(p[r], c); }) / (n * size * unit),
                          threshold);
                EXPECT_LT(
                    residual(
                        n, 1, A, [&](int r, int) { return Exact(xi[r]); }, [&](int r, int) { return Exact(bi[r]); }) /
                        (n * size * norm(n, 1, xi) * unit),
                    threshold);
                const Exact condition = size * norm(n, n, vi);
                EXPECT_LT(residual(
                              n, n, A, [&](int r, int c) { return Exact(vi[r * n + c]); },
                              [&](int r, int c) { return Exact(r == c); }) /
                              (n * condition * unit),
                          threshold);
                Exact product = 1, bound = 1;
                for (int r = 0; r < n; ++r) {
                    int inversions = 0;
                    for (int q = 0; q < r; ++q)
                        inversions += p[q] > p[r];
                    product *= inversions % 2 ? -factors(r, r) : factors(r, r);
                    bound *= norm(n, 1, ai + r * n);
                }
                EXPECT_LT(std::fabs(det[i] - product) / (n * bound * unit), threshold);
            }
        }
}

} // namespace
