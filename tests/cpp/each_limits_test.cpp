// What is nearly singular, nearly zero or near the limits of the type. Also compiled with fused products and sums.
#include <gtest/gtest.h>

#include "each_measure.h"

namespace eachtest {
namespace {

namespace each = kvlm::each;

template <class T>
class EachLimits : public testing::Test {
};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(EachLimits, Types);

/// Any magnitudes that the type has, but for its largest ones.
template <class T>
T ofAnySize(Random &random)
{
    using Limits = std::numeric_limits<T>;
    const int range = Limits::max_exponent - Limits::min_exponent + Limits::digits - 20;
    const int exponent =
        Limits::min_exponent - Limits::digits + static_cast<int>(random() % static_cast<unsigned>(range));
    return static_cast<T>(std::ldexp(uniform(random, -1, 1), exponent));
}

/// Equal rows have no inverse, whatever the order and the layout: by cofactors their determinant is a rounding error.
TYPED_TEST(EachLimits, EqualRowsAreSingular)
{
    using T = TypeParam;
    for (const int n : {2, 3, 4, 5, 6, 9}) {
        const int count = 600;
        Batch<T> batch({"random", fillRandom}, n, count);
        for (int i = 0; i < count; ++i)
            std::copy_n(&batch.a[i * n * n], n, &batch.a[(i * n + n - 1) * n]);
        std::vector<T> out(batch.a.size());
        std::vector<int> pivots(count * n);
        const auto a = packed(batch.a, n, n);
        auto &st = batch.statuses;
        if (n == 2) { // elsewhere factors come from reciprocals of pivots
            EXPECT_EQ(each::luDecompose(a, packed(out, n, n), pivots.data(), st.data()), count);
            EXPECT_EQ(each::solve(a, packed(batch.b, n), packed(batch.x, n), st.data()), count);
            std::vector<T> zeros(count), columns{T(.1), T(.1), T(.3), T(.3)}, factors(4);
            EXPECT_EQ(each::determinant(a, zeros.data(), st.data()), 0);
            EXPECT_EQ(std::count(zeros.begin(), zeros.end(), T(0)), count);
            EXPECT_EQ(each::luDecompose(packed(columns, n, n), packed(factors, n, n), pivots.data(), st.data()), 1);
        }
        EXPECT_EQ(each::invert(a, packed(out, n, n), st.data()), count) << n;
        Matrices<T> transposed = a;
        std::swap(transposed.row, transposed.element);
        const Matrices<T> planes{out.data(), count, n, n, 1, n * count, count};
        EXPECT_EQ(each::invert(a, planes, st.data()), count) << n;
        each::invert(transposed, planes, st.data());
        for (int i = 0; i < count; ++i) { // equal columns leave no exact zero
            T largest = 0;
            for (int k = 0; k < n * n; ++k)
                largest = std::max(largest, std::fabs(planes(i, k / n, k % n)));
            ASSERT_TRUE(st[i] != kvlOk || largest > T(0.01) / epsilon<T>) << n << " " << i << " " << largest;
        }
    }
}

TYPED_TEST(EachLimits, SmallRightSidesKeepTheirDigits)
{
    using T = TypeParam;
    const double small = std::ldexp(1.0, sizeof(T) == 4 ? -147 : -1071);
    for (const int n : {1, 2, 3, 4, 5, 6})
        for (const bool arePlanes : {false, true}) {
            const int count = 90;
            Batch<T> batch(regular, n, count, true);
            for (T &value : batch.a)
                value *= T(0x1p-60);
            // Every third side is all small, every third in one element, which only its own row knows.
            for (int i = 0; i < count; ++i)
                for (int k = 0; k < n; ++k)
                    if (i % 3 == 0 || (i % 3 == 1 && k == n - 1 && n > 1))
                        batch.b[i * n + k] = static_cast<T>((k + 3) * small);
            for (int i = 1; i < count; i += 3)
                for (int k = 0; k + 1 < n; ++k)
                    batch.a[(i * n + n - 1) * n + k] = batch.a[(i * n + k) * n + n - 1] = 0;
            std::vector<T> planes(batch.b.size());
            const Vectors<T> b{arePlanes ? planes.data() : batch.b.data(), count, n, arePlanes ? 1 : n,
                               arePlanes ? count : 1};
            const std::vector<T> sides = batch.b;
            for (int k = 0; k < count * n; ++k)
                b(k / n, k % n) = sides[k];
            const auto a = packed(batch.a, n, n);
            const auto check = [&](int failures) {
                EXPECT_EQ(failures, 0);
                for (int i = 0; i < count; ++i)
                    for (int r = 0; r < n; ++r) {
                        long double rest = -static_cast<long double>(b(i, r)), size = std::fabs(rest);
                        for (int c = 0; c < n; ++c) {
                            rest += static_cast<long double>(a(i, r, c)) * batch.x[i * n + c];
                            size += std::fabs(static_cast<long double>(a(i, r, c)) * batch.x[i * n + c]);
                        }
                        ASSERT_LE(std::fabs(rest), 20 * epsilon<T> * size) << n << " " << i;
                    }
            };
            check(each::solve(a, b, packed(batch.x, n), batch.statuses.data()));
            check(each::solvePositiveDefinite(a, b, packed(batch.x, n), batch.statuses.data()));
            check(each::leastSquares(a, b, packed(batch.x, n), batch.statuses.data()));
        }
}

/// What is left of a column is so small that its squares vanish, or their reciprocals overflow.
TYPED_TEST(EachLimits, EigenproblemsOfAnyMagnitudes)
{
    using T = TypeParam;
    KvlStatus st;
    std::vector<T> vectors(9), re(3), im(3);
    for (int exponent = -1; static_cast<T>(std::ldexp(1.0, exponent)) > 0; exponent -= 3) {
        const T x = static_cast<T>(std::ldexp(1.0, exponent));
        std::vector<T> a{1, 0, 1, x, 1, 0, x, 0, 1};
        ASSERT_EQ(each::eigenvectors(packed(a, 3, 3), packed(vectors, 3, 3), re.data(), im.data(), &st), 0) << x;
        ASSERT_EQ(each::eigenvalues(packed(a, 3, 3), re.data(), im.data(), &st), 0) << x;
        for (const T value : re)
            ASSERT_LE(std::fabs(value - 1), 2 * std::sqrt(x) + 3 * std::cbrt(epsilon<T>)) << x;
    }
    Random random(5);
    for (const int n : {2, 3, 4, 5, 6, 7}) {
        const int count = 1500;
        std::vector<T> a(count * n * n), all(a.size()), r(count * n), i(count * n);
        std::vector<KvlStatus> statuses(count);
        for (T &value : a)
            value = ofAnySize<T>(random);
        EXPECT_EQ(each::eigenvectors(packed(a, n, n), packed(all, n, n), r.data(), i.data(), statuses.data()), 0);
        EXPECT_EQ(each::eigenvalues(packed(a, n, n), r.data(), i.data(), statuses.data()), 0);
        for (int k = 0; k < count * n; ++k)
            if (i[k] > 0) {
                ASSERT_EQ(r[k], r[k + 1]);
                ASSERT_EQ(i[k], -i[k + 1]);
            }
    }
}

/// Also the signs of zeros.
TYPED_TEST(EachLimits, NeighboursLeaveSymmetricBitsAlone)
{
    using T = TypeParam;
    Random random(7);
    for (const int n : {2, 3, 4, 5, 6, 7}) {
        const int count = 40;
        std::vector<T> a(count * n * n), vectors(a.size()), values(count * n), alone(n * n), one(n);
        for (T &value : a)
            value = random() % 3 ? T(0) : static_cast<T>(static_cast<int>(random() % 5) - 2);
        std::vector<KvlStatus> statuses(count);
        each::eigenvectorsSym(packed(a, n, n), packed(vectors, n, n), values.data(), statuses.data());
        for (int i = 0; i < count; ++i) {
            std::vector<T> matrix(&a[i * n * n], &a[i * n * n] + n * n);
            each::eigenvectorsSym(packed(matrix, n, n), packed(alone, n, n), one.data(), statuses.data());
            ASSERT_EQ(std::memcmp(alone.data(), &vectors[i * n * n], alone.size() * sizeof(T)), 0) << n << " " << i;
            ASSERT_EQ(std::memcmp(one.data(), &values[i * n], one.size() * sizeof(T)), 0);
        }
    }
}

/// Values are named if the type can't hold them; R isn't singular for what is small beside the rest of its column.
TYPED_TEST(EachLimits, LimitsOfTheTypeAreTold)
{
    using T = TypeParam;
    const T most = std::numeric_limits<T>::max() * T(0.9), tiny = static_cast<T>(sizeof(T) == 4 ? 1e-44 : 1e-200);
    KvlStatus st;
    for (const T factor : {T(1), T(0.25)}) { // the value is 2.7 and 0.68 times the largest number
        std::vector<T> a(9, most * factor), vectors(9), re(3), im(3);
        const int failures = factor == 1;
        const auto check = [&](int result) {
            EXPECT_EQ(result, failures);
            EXPECT_EQ(st, failures ? kvlErrNoConvergence : kvlOk);
            for (const T value : re)
                EXPECT_EQ(std::isnan(value), failures == 1);
        };
        check(each::eigenvaluesSym(packed(a, 3, 3), re.data(), &st));
        check(each::eigenvectorsSym(packed(a, 3, 3), packed(vectors, 3, 3), re.data(), &st));
        check(each::eigenvalues(packed(a, 3, 3), re.data(), im.data(), &st));
        check(each::eigenvectors(packed(a, 3, 3), packed(vectors, 3, 3), re.data(), im.data(), &st));
    }
    std::vector<T> a{1, 1, 0, 0, tiny, 0, 0, 0, 1}, b{1, tiny, 1}, x(3), factors(9);
    EXPECT_EQ(each::qrDecompose(packed(a, 3, 3), packed(factors, 3, 3), &st), 0);
    EXPECT_EQ(std::fabs(factors[4]), tiny);
    EXPECT_EQ(each::leastSquares(packed(a, 3, 3), packed(b, 3), packed(x, 3), &st), 0);
    EXPECT_EQ(x, (std::vector<T>{0, 1, 1}));
}

/// Columns whose sizes differ by more than a double's exponent can hold beside a row's.
TYPED_TEST(EachLimits, ColumnsMayLieFarApart)
{
    using T = TypeParam;
    const T small = sizeof(T) == 4 ? T(0x1p-100) : static_cast<T>(0x1p-900), large = 1 / small;
    for (const int n : {2, 3, 6, 8}) {
        const int count = 20;
        Batch<T> batch(regular, n, count);
        const auto sizeOf = [&](int column) { return column == 0 ? small : column == 1 ? large : T(1); };
        for (int k = 0; k < count * n * n; ++k)
            batch.a[k] *= sizeOf(k % n);
        const auto a = packed(batch.a, n, n);
        std::vector<T> inverses(batch.a.size()), values(count);
        EXPECT_EQ(each::solve(a, packed(batch.b, n), packed(batch.x, n), batch.statuses.data()), 0);
        EXPECT_EQ(each::invert(a, packed(inverses, n, n), batch.statuses.data()), 0);
        EXPECT_EQ(each::determinant(a, values.data(), batch.statuses.data()), 0);
        for (int i = 0; i < count; ++i) {
            EXPECT_TRUE(std::isnormal(values[i]));
            for (int r = 0; r < n; ++r) {
                long double rest = -batch.b[i * n + r];
                for (int c = 0; c < n; ++c) {
                    rest += static_cast<long double>(a(i, r, c)) * batch.x[i * n + c];
                    long double right = -(r == c), left = right;
                    for (int k = 0; k < n; ++k) {
                        right += static_cast<long double>(a(i, r, k)) * inverses[(i * n + k) * n + c];
                        left += static_cast<long double>(inverses[(i * n + r) * n + k]) * a(i, k, c);
                    }
                    EXPECT_LE(std::fabs(right), 200 * n * epsilon<T>) << n << " " << i;
                    EXPECT_LE(std::fabs(left * sizeOf(r) / sizeOf(c)), 200 * n * epsilon<T>) << n << " " << i;
                }
                EXPECT_LE(std::fabs(rest), 200 * n * epsilon<T>) << n << " " << i;
            }
        }
    }
}

/// What divides must not be zero in the type, either; what can be held is held.
TYPED_TEST(EachLimits, PivotsThatVanishAreSingular)
{
    using T = TypeParam;
    const T tiny = std::numeric_limits<T>::min(), large = std::numeric_limits<T>::max() / 4;
    const T least = std::numeric_limits<T>::denorm_min();
    std::vector<T> a{tiny, 0, large, 1}, b{3 * least, 2 * least, 5 * least, 3 * least};
    std::vector<T> c{large, 0, 0, tiny * T(1.25)}, factors(4);
    int pivots[2];
    KvlStatus st;
    for (auto *matrix : {&a, &b}) {
        EXPECT_EQ(each::luDecompose(packed(*matrix, 2, 2), packed(factors, 2, 2), pivots, &st), 1);
        EXPECT_EQ(st, kvlErrSingular);
        EXPECT_TRUE(std::isnan(factors[3]));
        EXPECT_EQ(each::qrDecompose(packed(*matrix, 2, 2), packed(factors, 2, 2), &st), 1);
        EXPECT_EQ(st, kvlErrSingular);
    }
    EXPECT_EQ(each::luDecompose(packed(c, 2, 2), packed(factors, 2, 2), pivots, &st), 0);
    EXPECT_EQ(factors, c);
}

/// Pivots of singular matrices are rounding errors, even of integers.
TYPED_TEST(EachLimits, CombinedRowsHaveNoInverse)
{
    using T = TypeParam;
    for (const int n : {3, 4, 5, 6, 9}) {
        const int count = 1000;
        Batch<T> batch(regular, n, count);
        Random random(n);
        for (T &value : batch.a)
            value = static_cast<T>(static_cast<int>(random() % 19) - 9);
        for (int i = 0; i < count; ++i)
            for (int c = 0; c < n; ++c) {
                T *const column = &batch.a[i * n * n + c];
                column[i % n * n] = 2 * column[(i + 1) % n * n] - 3 * column[(i + 2) % n * n];
            }
        std::vector<T> out(batch.a.size());
        EXPECT_GE(each::invert(packed(batch.a, n, n), packed(out, n, n), batch.statuses.data()), count - count / 200);
    }
}

} // namespace
} // namespace eachtest
