// What products do beyond their operands, settled oddities all.
#include "problem.h"

#include <gtest/gtest.h>

extern "C" KvlStatus ownkvlmMul_mac_32f_P_ASM(const float *const *, int, int, float, float *const *, int, int, int, int,
                                              int);

namespace {

template <class T>
bool sameBits(const std::vector<T> &x, const std::vector<T> &y)
{
    return std::equal(x.begin(), x.end(), y.begin(), y.end(),
                      [](T a, T b) { return std::memcmp(&a, &b, sizeof(T)) == 0 || (std::isnan(a) && std::isnan(b)); });
}

// Objects lie adjacent, whatever the object strides say; the shifts count.
TEST(Products, ScalingKernelOfTables)
{
    constexpr int positions = 6, count = 11, size = sizeof(float);
    std::vector<float> a(positions * 16, 3), d(positions * 16 + 1, 7), expected = d;
    const float *from[positions];
    float *to[positions];
    for (int p = 0; p < positions; ++p) {
        from[p] = &a[(positions - 1 - p) * 16];
        to[p] = &d[p * 16];
        for (int i = 0; i < count; ++i) {
            a[(positions - 1 - p) * 16 + 2 + i] = static_cast<float>(p + i);
            expected[p * 16 + 1 + i] = static_cast<float>(p + i) * 0.3f;
        }
    }
    EXPECT_EQ(ownkvlmMul_mac_32f_P_ASM(from, 2 * size, 40, 0.3f, to, size, 400, 3, 2, count), kvlOk);
    EXPECT_EQ(d, expected);
}

// A vector at an address that no lanes begin at: the sums of long rows are formed from the left.
TEST(Products, VectorAtOddAddress)
{
    constexpr int width = 29, size = sizeof(float), row = width * size;
    Random random(1);
    const std::vector<float> a = someMatrix<float>(6, random), x = someMatrix<float>(6, random);
    std::vector<char> memory(row + 4);
    for (int offset = 0; offset < 4; ++offset) {
        std::vector<float> result(1), expected(1);
        std::memcpy(&memory[offset], x.data(), row);
        ASSERT_EQ(call(kvlmMul_mva_32f, a.data(), row, size, width, 1, &memory[offset], row, size, width, result.data(),
                       size, size, 1),
                  kvlOk);
        const oracle::Alignment where = {reinterpret_cast<std::uintptr_t>(&memory[offset]), false};
        oracle::multiplyVector("Mul", "mva", "", 1, width, a.data(), x.data(), static_cast<const float *>(nullptr),
                               where, expected.data());
        EXPECT_TRUE(sameBits(result, expected)) << offset;
    }
}

// A height of 3 beside a src1 of 4 x 4: a fourth element in each row of dst, made with the row behind src2.
TEST(Products, FourthElementOfFourByThree)
{
    for (int count : {1, 2, 5})
        for (int gap : {0, 1, 2}) { // elements between the rows of dst
            const int row = 3 + gap, size = sizeof(float);
            Random random(count);
            const std::vector<float> a = someFactors<float>(16 * count, false, true, random);
            const std::vector<float> b = someFactors<float>(16, false, false, random);
            std::vector<float> dst(count * 4 * row + 1, 7), expected = dst;
            for (int k = 0; k < 16 * count; ++k) {
                const float *const x = &a[k / 4 * 4], *const y = &b[k % 4 * 4];
                expected[k / 4 * row + k % 4] = ((x[0] * y[0] + x[1] * y[1]) + x[2] * y[2]) + x[3] * y[3];
            }
            ASSERT_EQ(kvlmMul_mat_32f(a.data(), 16 * size, 4 * size, size, 4, 4, b.data(), 4 * size, size, 4, 3,
                                      dst.data(), 4 * row * size, row * size, size, count),
                      kvlOk);
            ASSERT_TRUE(sameBits(dst, expected)) << count << " " << gap;
        }
}

// The other forms of the same product keep to their three columns.
TEST(Products, NoFourthElementElsewhere)
{
    for (const Member &member : members())
        for (Layout layout : {Layout::packed, Layout::strided})
            if (member.letters == "mat" && member.name != "kvlmMul_mat_32f")
                withType(member, [&](auto zero) {
                    Setting setting = {3, 4, 3, Layout::packed, Layout::packed, layout};
                    setting.inner = 4;
                    EXPECT_EQ(Problem<decltype(zero)>(member, setting, 1).run(), "");
                });
}

// Sizes of 1, 2 and 3 whose OR is 3 make a product of order 3 from nine entries of each table.
template <class T>
void multiplyNine(const Function &function, bool turned, int w1, int h1, int w2, int h2)
{
    Random random(w1 + 4 * h1 + 16 * w2);
    std::vector<T> a = someFactors<T>(9, false, true, random), b = someFactors<T>(9, false, false, random);
    std::vector<T> dst(9), expected(9), left(9), right(9);
    T *tables[3][9];
    for (int k = 0; k < 9; ++k) {
        tables[0][k] = &a[k];
        tables[1][k] = &b[k];
        tables[2][k] = &dst[k];
        left[k] = a[turned ? k % 3 * 3 + k / 3 : k];
        right[k] = b[turned ? k % 3 * 3 + k / 3 : k];
    }
    oracle::multiply("mm", "P", 3, 3, 3, left.data(), right.data(), expected.data());
    ASSERT_EQ(call(function, &tables[0][0], 0, w1, h1, &tables[1][0], 0, w2, h2, &tables[2][0], 0), kvlOk);
    ASSERT_TRUE(sameBits(dst, expected)) << w1 << " " << h1 << " " << w2 << " " << h2;
}

TEST(Products, OrderThreeByOr)
{
    int shapes = 0;
    for (int k = 0; k < 81; ++k) {
        const int w1 = 1 + k / 27, h1 = 1 + k / 9 % 3, w2 = 1 + k / 3 % 3, h2 = 1 + k % 3;
        if ((w1 | h1 | w2 | h2) != 3)
            continue;
        if (w1 == h2)
            multiplyNine<float>(kvlmMul_mm_32f_P, false, w1, h1, w2, h2);
        if (h1 == w2)
            multiplyNine<double>(kvlmMul_tt_64f_P, true, w1, h1, w2, h2);
        ++shapes;
    }
    EXPECT_EQ(shapes, 79);
}

// In tables each object of dst may be that of a source, which may be read transposed.
template <class T>
void multiplyInPlace(const Function &multiply, int n, int objStride)
{
    const int elements = n * n, count = 19, size = sizeof(T);
    std::vector<T> x[3];
    T *tables[3][36];
    const auto run = [&](int target) {
        for (int operand = 0; operand < 3; ++operand) {
            x[operand].resize(elements * count);
            for (int k = 0; k < elements * count; ++k)
                x[operand][k] = T(k * (operand + 3) % 17 - 8);
            for (int k = 0; k < elements; ++k)
                tables[operand][k] = &x[operand][objStride == 1 ? k * count : k];
        }
        const auto source = [&](int operand) { return argsOf(&tables[operand][0], 0, objStride * size, n, n); };
        EXPECT_EQ(call(multiply, source(0), source(1), &tables[target][0], 0, objStride * size, count), kvlOk);
        return x[target];
    };
    const std::vector<T> expected = run(2);
    EXPECT_EQ(run(0), expected) << "order " << n;
    EXPECT_EQ(run(1), expected) << "order " << n;
}

TEST(Products, InPlaceInTables)
{
    for (const Member &member : members())
        if (member.family == "Mul" && member.isMatrixProduct() && member.description == 'P' &&
            std::count(member.letters.begin(), member.letters.end(), 'a') == 2)
            for (int n = 3; n <= 6; ++n)
                for (int objStride : {1, n * n})
                    withType(member, [&](auto zero) { multiplyInPlace<decltype(zero)>(member.call, n, objStride); });
}

} // namespace
