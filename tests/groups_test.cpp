// Long batches of tall matrices: many groups at a time make the bits of one object after the other, and stop where one
// fails.
#include "residual.h"

namespace {

template <class T>
class LongBatches : public testing::Test {
};
TYPED_TEST_SUITE(LongBatches, Types);

TYPED_TEST(LongBatches, BitsOfSingleObjects)
{
    using T = TypeParam;
    constexpr int most = 75;
    const T untouched = 7;
    const Function factor = KVLM_FUNCTION(T, QRDecomp_ma), solve = KVLM_FUNCTION(T, QRBackSubst_mava);
    const std::pair<int, int> shapes[] = {{3, 3}, {4, 4}, {5, 5}, {6, 6}, {4, 7}};
    for (const auto &[width, height] : shapes)
        // The last places are those of a second, smaller lot of groups, of one group, of no group.
        for (const int failing : {most, 0, 21, 40, 68, 73, 74}) {
            SCOPED_TRACE(std::to_string(height) + " x " + std::to_string(width) + ", object " +
                         std::to_string(failing) + " fails");
            Random random(width * 100 + failing);
            const int elements = width * height;
            Packed<T> a(height, width, most, someVector<T>(elements * most, random));
            const Packed<T> b(0, height, most, someVector<T>(height * most, random));
            for (int r = 0; r < height && failing < most; ++r)
                a.object(failing)[r * width + 1] = 0;

            Packed<T> made(height, width, most, std::vector<T>(elements * most, untouched)), single = made;
            Packed<T> x(0, width, most, std::vector<T>(width * most, untouched)), singleX = x;
            std::vector<T> buffer(height);
            EXPECT_EQ(call(factor, a, buffer.data(), made, width, height, most),
                      failing < most ? kvlErrZeroDivisor : kvlOk);
            for (int i = 0; i < most && i <= failing; ++i)
                EXPECT_EQ(call(factor, a.from(i), buffer.data(), single.from(i), width, height, 1),
                          i == failing ? kvlErrZeroDivisor : kvlOk);
            ASSERT_EQ(std::memcmp(made.object(0), single.object(0), elements * most * sizeof(T)), 0);
            if (failing < most)
                continue;
            ASSERT_EQ(call(solve, made, buffer.data(), b, x, width, height, most), kvlOk);
            for (int i = 0; i < most; ++i)
                ASSERT_EQ(call(solve, made.from(i), buffer.data(), b.from(i), singleX.from(i), width, height, 1),
                          kvlOk);
            ASSERT_EQ(std::memcmp(x.object(0), singleX.object(0), width * most * sizeof(T)), 0);
        }
}

// In place, with elements of objects 9 places apart in common: each object reads what those before it have left.
TYPED_TEST(LongBatches, ObjectsInOneAnother)
{
    using T = TypeParam;
    constexpr int elem = sizeof(T), count = 60, n = 4, step = 9 * elem;
    const Function factor = KVLM_FUNCTION(T, QRDecomp_ma);
    Random random(3);
    std::vector<T> made = someVector<T>(count + 9 * n * n, random), expected = made, buffer(n);
    const auto matrices = [&](std::vector<T> &all, int i) { return argsOf(&all[i], elem, n * step, step); };
    EXPECT_EQ(call(factor, matrices(made, 0), buffer.data(), matrices(made, 0), n, n, count), kvlOk);
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(call(factor, matrices(expected, i), buffer.data(), matrices(expected, i), n, n, 1), kvlOk);
    EXPECT_EQ(std::memcmp(made.data(), expected.data(), made.size() * elem), 0);
}

} // namespace
