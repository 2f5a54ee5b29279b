// Long batches of tall matrices: many groups at a time make the bits of one object after the other, and stop where one
// fails.
#include "values.h"

#include <gtest/gtest.h>

namespace {

template <class T>
struct Functions;
template <>
struct Functions<float> {
    static constexpr auto factor = kvlmQRDecomp_ma_32f;
    static constexpr auto solve = kvlmQRBackSubst_mava_32f;
};
template <>
struct Functions<double> {
    static constexpr auto factor = kvlmQRDecomp_ma_64f;
    static constexpr auto solve = kvlmQRBackSubst_mava_64f;
};

template <class T>
class LongBatches : public testing::Test {
};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(LongBatches, Types);

TYPED_TEST(LongBatches, BitsOfSingleObjects)
{
    using T = TypeParam;
    using F = Functions<T>;
    constexpr int elem = sizeof(T), most = 75;
    const std::pair<int, int> shapes[] = {{3, 3}, {4, 4}, {5, 5}, {6, 6}, {4, 7}};
    for (const auto &[width, height] : shapes)
        // The last places are those of a second, smaller lot of groups, of one group, of no group.
        for (const int failing : {most, 0, 21, 40, 68, 73, 74}) {
            SCOPED_TRACE(std::to_string(height) + " x " + std::to_string(width) + ", object " +
                         std::to_string(failing) + " fails");
            Random random(width * 100 + failing);
            const int row = width * elem, obj = height * row, elements = width * height;
            std::vector<T> a(elements * most), b(height * most), buffer(height);
            for (T &x : a)
                x = inUnitInterval<T>(random);
            for (T &x : b)
                x = inUnitInterval<T>(random);
            for (int r = 0; r < height && failing < most; ++r)
                a[failing * elements + r * width + 1] = 0;

            const T untouched = 7;
            std::vector<T> made(a.size(), untouched), expected(a.size(), untouched);
            std::vector<T> x(width * most, untouched), expectedX(x);
            const KvlStatus status =
                F::factor(a.data(), obj, row, elem, buffer.data(), made.data(), obj, row, elem, width, height, most);
            EXPECT_EQ(status, failing < most ? kvlErrZeroDivisor : kvlOk);
            for (int i = 0; i < most && i <= failing; ++i)
                EXPECT_EQ(F::factor(&a[i * elements], obj, row, elem, buffer.data(), &expected[i * elements], obj, row,
                                    elem, width, height, 1),
                          i == failing ? kvlErrZeroDivisor : kvlOk);
            ASSERT_EQ(std::memcmp(made.data(), expected.data(), made.size() * elem), 0);
            if (failing < most)
                continue;
            ASSERT_EQ(F::solve(made.data(), obj, row, elem, buffer.data(), b.data(), height * elem, elem, x.data(), row,
                               elem, width, height, most),
                      kvlOk);
            for (int i = 0; i < most; ++i)
                ASSERT_EQ(F::solve(&made[i * elements], obj, row, elem, buffer.data(), &b[i * height], height * elem,
                                   elem, &expectedX[i * width], row, elem, width, height, 1),
                          kvlOk);
            ASSERT_EQ(std::memcmp(x.data(), expectedX.data(), x.size() * elem), 0);
        }
}

// In place, with elements of objects 9 places apart in common: each object reads what those before it have left.
TYPED_TEST(LongBatches, ObjectsInOneAnother)
{
    using T = TypeParam;
    using F = Functions<T>;
    constexpr int elem = sizeof(T), count = 60, n = 4, step = 9 * elem, row = n * step;
    Random random(3);
    std::vector<T> made(count + 9 * n * n), buffer(n);
    for (T &x : made)
        x = inUnitInterval<T>(random);
    std::vector<T> expected = made;
    EXPECT_EQ(F::factor(made.data(), elem, row, step, buffer.data(), made.data(), elem, row, step, n, n, count), kvlOk);
    for (T *x = expected.data(); x < expected.data() + count; ++x)
        EXPECT_EQ(F::factor(x, elem, row, step, buffer.data(), x, elem, row, step, n, n, 1), kvlOk);
    EXPECT_EQ(std::memcmp(made.data(), expected.data(), made.size() * elem), 0);
}

} // namespace
