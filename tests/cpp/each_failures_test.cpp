// What fails in an array: told object by object, wherever it lies; and whatever lies beside it is right.
#include <gtest/gtest.h>

#include <filesystem>

#include "each_measure.h"

namespace eachtest {
namespace {

namespace each = kvlm::each;

/// Matrices whose distance is no multiple of the size of an element where doubles are aligned by less.
template <class T>
struct Apart {
    T *base() const { return reinterpret_cast<T *>(start); }
    int count() const { return objects; }
    int rows() const { return order; }
    int columns() const { return order; }
    T &operator()(int i, int r, int c) const { return reinterpret_cast<T *>(start + i * bytes)[r * order + c]; }

    char *start;
    int objects, order, bytes;
};

template <class T>
class EachFailures : public testing::Test {
};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(EachFailures, Types);

/// Object by object what single calls say, whatever stands beside it: singular ones, not finite ones, tiny ones.
TYPED_TEST(EachFailures, FailuresStayAlone)
{
    using T = TypeParam;
    for (int n : {1, 2, 3, 4, 5, 6, 7, 12})
        for (int every : {1, 2, 7, 300}) {
            const int count = 700, square = n * n;
            Batch<T> batch(regular, n, count, true);
            std::vector<char> isBad(count);
            for (int i = every / 2; i < count; i += every) {
                T *const object = &batch.a[i * square];
                isBad[i] = 1;
                switch (i % 3) {
                case 0:
                    std::fill_n(object + (i % n) * n, n, T(0));
                    for (int r = 0; r < n; ++r)
                        object[r * n + i % n] = 0;
                    break;
                case 1:
                    std::fill_n(object, square, T(0));
                    break;
                default:
                    object[square - 1] = std::numeric_limits<T>::quiet_NaN();
                }
            }
            const int bad = static_cast<int>(std::count(isBad.begin(), isBad.end(), 1));
            std::vector<T> out(batch.a.size()), in = batch.a, x = batch.b, conditions(count);
            std::vector<int> pivots(count * n);
            const auto a = packed(batch.a, n, n);
            auto &st = batch.statuses;
            const auto check = [&](int failures, KvlStatus expected, const std::vector<T> &result, int size, int at) {
                EXPECT_EQ(failures, bad) << n << " " << every;
                for (int i = 0; i < count; ++i) {
                    ASSERT_EQ(st[i], isBad[i] ? expected : kvlOk) << n << " " << every << " " << i;
                    ASSERT_EQ(std::isnan(result[i * size + at]), isBad[i]) << n << " " << every << " " << i;
                }
            };
            check(each::luDecompose(a, packed(out, n, n), pivots.data(), st.data()), kvlErrSingular, out, square, 0);
            for (int i = 0; i < count; ++i) {
                std::vector<int> table(pivots.begin() + i * n, pivots.begin() + (i + 1) * n);
                std::sort(table.begin(), table.end());
                for (int k = 0; k < n; ++k)
                    ASSERT_EQ(table[k], k);
            }
            // In place gives the same.
            check(each::luDecompose(packed(in, n, n), packed(in, n, n), pivots.data(), st.data()), kvlErrSingular, in,
                  square, 0);
            const auto same = [](T p, T q) { return p == q || (std::isnan(p) && std::isnan(q)); };
            EXPECT_TRUE(std::equal(in.begin(), in.end(), out.begin(), same));
            check(each::qrDecompose(a, packed(out, n, n), st.data()), kvlErrSingular, out, square, 0);
            in = batch.a;
            each::qrDecompose(packed(in, n, n), packed(in, n, n), st.data());
            EXPECT_TRUE(std::equal(in.begin(), in.end(), out.begin(), same));
            check(each::invert(a, packed(out, n, n), st.data()), kvlErrSingular, out, square, square - 1);
            in = batch.a;
            each::invert(packed(in, n, n), packed(in, n, n), st.data());
            EXPECT_TRUE(std::equal(in.begin(), in.end(), out.begin(), same));
            out = batch.a;
            check(each::choleskyDecompose(a, packed(out, n, n), st.data()), kvlErrNotPositiveDefinite, out, square, 0);
            for (int i = 0; n > 1 && i < count; ++i)
                ASSERT_EQ(out[i * square + 1], batch.a[i * square + 1]) << "above the diagonal";
            check(each::solve(a, packed(batch.b, n), packed(batch.x, n), st.data()), kvlErrSingular, batch.x, n, n - 1);
            each::solve(a, packed(x, n), packed(x, n), st.data());
            EXPECT_TRUE(std::equal(x.begin(), x.end(), batch.x.begin(), same));
            check(each::solve(a, packed(batch.b, n), packed(batch.x, n), st.data(), conditions.data()), kvlErrSingular,
                  batch.x, n, 0);
            check(each::solvePositiveDefinite(a, packed(batch.b, n), packed(batch.x, n), st.data(), conditions.data()),
                  kvlErrNotPositiveDefinite, batch.x, n, 0);
            check(each::leastSquares(a, packed(batch.b, n), packed(batch.x, n), st.data(), conditions.data()),
                  kvlErrSingular, batch.x, n, 0);
            std::vector<T> values(count);
            each::determinant(a, values.data(), st.data());
            for (int i = 0; i < count; ++i) {
                const bool isNaN = isBad[i] && i % 3 == 2;
                EXPECT_EQ(st[i], isNaN ? kvlErrSingular : kvlOk);
                EXPECT_EQ(std::isnan(values[i]), isNaN);
                EXPECT_EQ(values[i] == 0, isBad[i] && !isNaN);
            }
        }
}

TYPED_TEST(EachFailures, AnyViewGivesTheSame)
{
    using T = TypeParam;
    const int n = 5, h = 8, count = 333;
    Random random(3);
    std::vector<T> a(count * h * n), b(count * h), x(count * n), planes(a.size()), bPlanes(b.size()), xPlanes(x.size());
    for (T &value : a)
        value = static_cast<T>(normal(random));
    for (T &value : b)
        value = static_cast<T>(normal(random));
    std::fill_n(a.begin() + 40 * h * n, h * n, T(1)); // rank one
    const Matrices<T> byPlanes{planes.data(), count, h, n, 1, n * count, count};
    const Vectors<T> right{bPlanes.data(), count, h, 1, count}, left{xPlanes.data(), count, n, 1, count};
    Listed<T> list{{}, h, n};
    for (int i = 0; i < count; ++i) {
        list.list.push_back(&a[i * h * n]);
        for (int r = 0; r < h; ++r) {
            bPlanes[r * count + i] = b[i * h + r];
            for (int c = 0; c < n; ++c)
                byPlanes(i, r, c) = a[(i * h + r) * n + c];
        }
    }
    std::vector<KvlStatus> st(count), other(count);
    EXPECT_LE(each::leastSquares(packed(a, h, n), packed(b, h), packed(x, n), st.data()), 1);
    EXPECT_LE(each::leastSquares(byPlanes, right, left, other.data()), 1);
    for (int i = 0; i < count; ++i)
        for (int c = 0; c < n; ++c)
            if (i != 40) {
                ASSERT_EQ(left(i, c), x[i * n + c]) << i;
            }
    std::fill(xPlanes.begin(), xPlanes.end(), T(0));
    EXPECT_LE(each::leastSquares(list, packed(b, h), left, other.data()), 1);
    for (int i = 0; i < count; ++i)
        if (i != 40) {
            ASSERT_EQ(left(i, 0), x[i * n]) << i;
        }
    // In place in a list, from planes to a list.
    each::qrDecompose(byPlanes, byPlanes, st.data());
    each::qrDecompose(list, list, other.data());
    EXPECT_EQ(st, other);
    for (int i = 0; i < count; ++i)
        if (i != 40) {
            ASSERT_EQ(byPlanes(i, h - 1, n - 1), list(i, h - 1, n - 1));
        }
}

TYPED_TEST(EachFailures, ListsAndTablesAreCopied)
{
    using T = TypeParam;
    constexpr int size = sizeof(T);
    const int n = 4, count = 300, square = n * n;
    Batch<T> batch(regular, n, count);
    std::fill_n(&batch.a[77 * square], square, T(0));
    std::vector<T> expected(batch.a.size()), rows(batch.a.size() + 1), planes(batch.a.size() + 1);
    std::vector<int> pivots(count * n), same(pivots);
    std::vector<KvlStatus> st(count), other(count);
    EXPECT_EQ(each::luDecompose(packed(batch.a, n, n), packed(expected, n, n), pivots.data(), st.data()), 1);
    // The list is turned around, both begin an element later.
    Described<T, 2> list{{}, {0, n * size, size, size}, count, n, n};
    Described<T, 1> table{{}, {size, 0, 0, size}, count, n, n};
    for (int i = 0; i < count; ++i)
        list.pointers.push_back(&rows[(count - 1 - i) * square]);
    for (int k = 0; k < square; ++k)
        table.pointers.push_back(&planes[k * count]);
    for (int i = 0; i < count; ++i)
        for (int k = 0; k < square; ++k)
            list(i, k / n, k % n) = table(i, k / n, k % n) = batch.a[i * square + k];
    EXPECT_EQ(each::luDecompose(list, list, same.data(), other.data()), 1);
    EXPECT_EQ(st, other);
    EXPECT_EQ(pivots, same);
    EXPECT_EQ(each::luDecompose(table, table, same.data(), other.data()), 1);
    EXPECT_EQ(st, other);
    for (int i = 0; i < count; ++i)
        for (int k = 0; i != 77 && k < square; ++k) {
            ASSERT_EQ(list(i, k / n, k % n), expected[i * square + k]) << i;
            ASSERT_EQ(table(i, k / n, k % n), expected[i * square + k]) << i;
        }
}

TYPED_TEST(EachFailures, OnlyTheLowerTriangleOfPositiveMatricesCounts)
{
    using T = TypeParam;
    for (const int n : {2, 3, 6, 7})
        for (const double size : {1.0, sizeof(T) == 4 ? 1e-36 : 1e-300, sizeof(T) == 4 ? 1e34 : 1e300}) {
            const int count = 20;
            Batch<T> batch(regular, n, count, true);
            std::vector<T> x(batch.b.size()), factors(batch.a.size(), T(7)), conditions(count), both(count);
            for (T &value : batch.a)
                value *= static_cast<T>(size);
            EXPECT_EQ(each::solve(packed(batch.a, n, n), packed(batch.b, n), packed(batch.x, n), batch.statuses.data(),
                                  conditions.data()),
                      0);
            for (int i = 0; i < count; ++i)
                batch.a[i * n * n + n - 1] = std::numeric_limits<T>::quiet_NaN();
            const auto a = packed(batch.a, n, n);
            EXPECT_EQ(
                each::solvePositiveDefinite(a, packed(batch.b, n), packed(x, n), batch.statuses.data(), both.data()),
                0);
            EXPECT_EQ(each::choleskyDecompose(a, packed(factors, n, n), batch.statuses.data()), 0);
            for (int i = 0; i < count; ++i) {
                EXPECT_NEAR(both[i], conditions[i], 1e-3 * conditions[i]);
                EXPECT_EQ(factors[i * n * n + n - 1], 7);
                for (int k = 0; k < n; ++k)
                    EXPECT_NEAR(x[i * n + k] / (1 + std::fabs(batch.x[i * n + k])),
                                batch.x[i * n + k] / (1 + std::fabs(batch.x[i * n + k])), 300 * epsilon<T>);
            }
            // No system at all, but a solution.
            std::fill(batch.b.begin(), batch.b.end(), T(0));
            EXPECT_EQ(each::solvePositiveDefinite(a, packed(batch.b, n), packed(x, n), batch.statuses.data()), 0);
            EXPECT_EQ(std::count(x.begin(), x.end(), T(0)), static_cast<int>(x.size()));
        }
}

TYPED_TEST(EachFailures, ArgumentsAreChecked)
{
    using T = TypeParam;
    std::vector<T> a(4 * 6), b(4 * 2), x(4 * 3);
    std::vector<KvlStatus> st(4, 1);
    const auto wide = packed(a, 2, 3);
    EXPECT_EQ(each::solve(wide, packed(b, 2), packed(x, 3), st.data()), kvlErrSizeMatch);
    EXPECT_EQ(each::leastSquares(wide, packed(b, 2), packed(x, 3), st.data()), kvlErrSizeMatch);
    EXPECT_EQ(each::qrDecompose(packed(a, 3, 2), packed(a, 2, 3), st.data()), kvlErrSizeMatch);
    EXPECT_EQ(each::qrDecompose(packed(a, 3, 2), packed(a, 3, 2), nullptr), kvlErrNullPointer);
    const Matrices<T> nowhere{nullptr, 4, 2, 2, 4, 2, 1};
    EXPECT_EQ(each::invert(nowhere, packed(a, 2, 2), st.data()), kvlErrNullPointer);
    EXPECT_EQ(each::eigenvalues(nowhere, x.data(), x.data(), st.data()), kvlErrNullPointer);
    Matrices<T> none = packed(a, 2, 2);
    none.objects = 0;
    EXPECT_EQ(each::determinant(none, x.data(), st.data()), kvlErrCount);
    EXPECT_EQ(st, std::vector<KvlStatus>(4, 1));
}

/// Of well-conditioned matrices whose products of n elements overflow or underflow.
TYPED_TEST(EachFailures, InversesHoldWhereProductsOfElementsDoNot)
{
    using T = TypeParam;
    for (const int n : {3, 4, 5, 6})
        for (const int exponent : {-30, -18, 31, 32, 33, 60}) {
            const int count = 5000;
            Batch<T> batch(regular, n, count);
            Random random(static_cast<unsigned>(n));
            for (T &value : batch.a)
                value = static_cast<T>(std::ldexp(uniform(random, -1, 1), sizeof(T) == 4 ? exponent : 8 * exponent));
            std::vector<T> found(batch.a.size()), expected(found), conditions(count);
            const auto a = packed(batch.a, n, n);
            EXPECT_EQ(each::invert(a, packed(found, n, n), batch.statuses.data()), 0);
            each::invert(a, packed(expected, n, n), batch.statuses.data(), conditions.data());
            for (int i = 0; i < count; ++i)
                for (int k = i * n * n; conditions[i] > 1e-2 && k < (i + 1) * n * n; ++k)
                    ASSERT_NEAR(found[k] / expected[i * n * n], expected[k] / expected[i * n * n],
                                1e4 * epsilon<T> * (1 + 100 * std::fabs(expected[k] / expected[i * n * n])))
                        << n << " " << exponent;
        }
}

/// An infinite pivot that isn't the last one vanishes from all that comes later.
TYPED_TEST(EachFailures, NothingInfiniteVanishes)
{
    using T = TypeParam;
    const T inf = std::numeric_limits<T>::infinity(), most = std::numeric_limits<T>::max() * T(0.9);
    std::vector<T> a{inf, 0, 0, 0, 1, 0, 0, 0, 1}, b{1, 1, 1}, x(3), f(9);
    std::vector<int> pivots(3);
    KvlStatus st;
    const auto matrix = packed(a, 3, 3);
    EXPECT_EQ(each::luDecompose(matrix, packed(f, 3, 3), pivots.data(), &st), 1);
    EXPECT_EQ(each::choleskyDecompose(matrix, packed(f, 3, 3), &st), 1);
    EXPECT_EQ(each::qrDecompose(matrix, packed(f, 3, 3), &st), 1);
    EXPECT_EQ(each::invert(matrix, packed(f, 3, 3), &st), 1);
    EXPECT_EQ(each::solve(matrix, packed(b, 3), packed(x, 3), &st), 1);
    EXPECT_EQ(each::solvePositiveDefinite(matrix, packed(b, 3), packed(x, 3), &st), 1);
    EXPECT_EQ(each::leastSquares(matrix, packed(b, 3), packed(x, 3), &st), 1);

    a = {most, most, 0, -most, most, 0, 0, 0, 1};
    b = {0, most, 1};
    EXPECT_EQ(each::luDecompose(matrix, packed(f, 3, 3), pivots.data(), &st), 1) << "2*most";
    EXPECT_EQ(each::solve(matrix, packed(b, 3), packed(x, 3), &st), 0);
    EXPECT_EQ(x, (std::vector<T>{T(-0.5), T(0.5), 1}));
    Random random(6);
    Batch<T> batch(regular, 6, 2000);
    for (T &value : batch.a)
        value = most * static_cast<T>(uniform(random, -1, 1));
    std::vector<T> factors(batch.a.size());
    pivots.resize(batch.b.size());
    each::luDecompose(packed(batch.a, 6, 6), packed(factors, 6, 6), pivots.data(), batch.statuses.data());
    for (int k = 0; k < static_cast<int>(factors.size()); ++k)
        ASSERT_EQ(std::isfinite(factors[k]), batch.statuses[k / 36] == kvlOk);
}

TYPED_TEST(EachFailures, StridesNeedNotBeMultiplesOfTheElement)
{
    using T = TypeParam;
    constexpr int n = 3, count = 5, size = sizeof(T);
    constexpr int apart = n * n * size + alignof(T); // i386: as after an int in a structure of doubles
    std::vector<char> memory(count * apart + 16);
    Apart<T> a{memory.data(), count, n, apart};
    for (int i = 0; i < count; ++i)
        for (int k = 0; k < n * n; ++k)
            a(i, k / n, k % n) = k % (n + 1) == 0 ? T(i + 2) : T(0);
    std::vector<T> values(count), b(count * n, T(1)), x(b.size()), factors(count * n * n);
    std::vector<int> pivots(count * n);
    std::vector<KvlStatus> st(count, 1);
    EXPECT_EQ(each::determinant(a, values.data(), st.data()), 0);
    EXPECT_EQ(each::solve(a, packed(b, n), packed(x, n), st.data()), 0);
    EXPECT_EQ(each::luDecompose(a, packed(factors, n, n), pivots.data(), st.data()), 0);
    EXPECT_EQ(each::invert(a, a, st.data()), 0);
    for (int i = 0; i < count; ++i) {
        EXPECT_EQ(values[i], T((i + 2) * (i + 2) * (i + 2)));
        EXPECT_EQ(x[i * n + 2], 1 / T(i + 2));
        EXPECT_EQ(factors[i * n * n + 8], T(i + 2));
        EXPECT_NEAR(a(i, 2, 2), 1 / T(i + 2), 2 * epsilon<T>);
    }
}

/// A row that is twice another one leaves a last pivot of zero, or nearly, wherever it stands in memory.
TYPED_TEST(EachFailures, LastPivotsOfZeroAreSingular)
{
    using T = TypeParam;
    for (int n = 2; n <= 8; ++n) {
        const int count = 500, square = n * n;
        Batch<T> batch({"random", fillRandom}, n, count);
        Random random(n);
        std::vector<char> isBad(count);
        for (int i = 0; i < count; i += 1 + static_cast<int>(random() % 4)) {
            T *const row = &batch.a[i * square];
            const int one = static_cast<int>(random() % n), step = 1 + static_cast<int>(random() % (n - 1));
            for (int c = 0; c < n; ++c)
                row[one * n + c] = 2 * row[(one + step) % n * n + c];
            isBad[i] = 1;
        }
        std::vector<T> factors(batch.a.size());
        std::vector<int> pivots(count * n);
        const auto a = packed(batch.a, n, n), f = packed(factors, n, n);
        EXPECT_GT(each::luDecompose(a, f, pivots.data(), batch.statuses.data()), 0);
        for (int i = 0; i < count; ++i) {
            EXPECT_TRUE(isBad[i] || batch.statuses[i] == kvlOk) << n << " " << i;
            for (int k = 0; k < n; ++k)
                ASSERT_NE(f(i, pivots[i * n + k], k), 0) << n << " " << i;
        }
        each::solve(a, packed(batch.b, n), packed(batch.x, n), batch.statuses.data());
        for (int i = 0; i < count; ++i)
            EXPECT_TRUE(batch.statuses[i] == kvlOk ? std::isfinite(batch.x[i * n]) : isBad[i]) << n << " " << i;
    }
}

/// Columns of right-hand sides have the solutions of each alone, in place too; an object has failed if one of them has.
TYPED_TEST(EachFailures, SidesAreColumns)
{
    using T = TypeParam;
    constexpr int sides = 3, count = 300;
    for (int n : {1, 2, 3, 5, 7}) {
        Batch<T> batch(regular, n, count, true);
        Random random(n);
        const auto a = packed(batch.a, n, n);
        std::vector<T> b(count * n * sides), x(b.size());
        for (T &value : b)
            value = static_cast<T>(normal(random));
        const T most = std::numeric_limits<T>::max();
        std::fill_n(&b[17 * n * sides], n * sides, most / 4); // the products of one overflow, the solution doesn't
        b[40 * n * sides + 1] = std::numeric_limits<T>::infinity();
        const auto right = packed(b, n, sides), solution = packed(x, n, sides);
        const auto compare = [&](auto solve) {
            std::vector<KvlStatus> st(count), one(count);
            EXPECT_EQ(solve(a, right, solution, st.data()), 1);
            std::vector<T> inPlace = b;
            solve(a, packed(inPlace, n, sides), packed(inPlace, n, sides), st.data());
            EXPECT_EQ(std::memcmp(inPlace.data(), x.data(), x.size() * sizeof(T)), 0);
            for (int k = 0; k < sides; ++k) {
                for (int i = 0; i < count; ++i)
                    for (int r = 0; r < n; ++r)
                        batch.b[i * n + r] = right(i, r, k);
                solve(a, packed(batch.b, n), packed(batch.x, n), one.data());
                for (int i = 0; i < count; ++i) {
                    EXPECT_EQ(st[i] == kvlOk, i != 40);
                    for (int r = 0; r < n; ++r)
                        if (i == 40)
                            ASSERT_TRUE(std::isnan(solution(i, r, k)));
                        else
                            ASSERT_EQ(solution(i, r, k), batch.x[i * n + r]) << n << " " << i << " " << r << " " << k;
                }
            }
        };
        compare([](auto &&...arguments) { return each::solve(arguments...); });
        compare([](auto &&...arguments) { return each::solvePositiveDefinite(arguments...); });
        compare([](auto &&...arguments) { return each::leastSquares(arguments...); });
        std::vector<KvlStatus> st(count);
        EXPECT_EQ(each::solve(a, right, packed(batch.x, n), st.data()), kvlErrSizeMatch);
    }
}

int threadsOfProcess()
{
    const std::filesystem::directory_iterator all("/proc/self/task");
    return static_cast<int>(std::distance(begin(all), end(all)));
}
/// A team is not made, whatever the number of threads.
TYPED_TEST(EachFailures, StaysInTheCallersThreadWithTeams)
{
    using T = TypeParam;
    const int n = 6, count = 3000;
    Batch<T> batch(regular, n, count);
    std::fill_n(batch.a.begin() + 1234 * n * n, n * n, T(0));
    std::vector<T> one(batch.a.size()), many(one), factors(one);
    std::vector<KvlStatus> st(count), other(count);
    EXPECT_EQ(each::invert(packed(batch.a, n, n), packed(one, n, n), st.data()), 1);
    const int threads = threadsOfProcess();
    kvlSetNumThreads(4);
    EXPECT_EQ(each::invert(packed(batch.a, n, n), packed(many, n, n), other.data()), 1);
    std::vector<KvlStatus> statuses(count);
    EXPECT_EQ(each::leastSquares(packed(batch.a, n, n), packed(batch.b, n), packed(batch.x, n), statuses.data()), 1);
    EXPECT_EQ(each::qrDecompose(packed(batch.a, n, n), packed(factors, n, n), statuses.data()), 1);
    std::vector<T> values(batch.b.size());
    std::vector<T> vectors(batch.a.size());
    EXPECT_EQ(each::eigenvectors(packed(batch.a, n, n), packed(vectors, n, n), values.data(), batch.x.data(),
                                 statuses.data()),
              0);
    EXPECT_EQ(threadsOfProcess(), threads);
    kvlSetNumThreads(1);
    EXPECT_EQ(st, other);
    EXPECT_TRUE(std::equal(one.begin(), one.end(), many.begin(),
                           [](T p, T q) { return p == q || (std::isnan(p) && std::isnan(q)); }));
}

} // namespace
} // namespace eachtest
