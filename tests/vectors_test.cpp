// What vectors do beyond their operands' usual places: overlap, misaligned elements, streams.
#include "problem.h"

#include "kvlcore.h"

#include <gtest/gtest.h>

#define STREAM(T, type, period)                                                                                        \
    KvlStatus ownkvlmSaxpy_vav_##type##_##period(const T *block, const T *src, T val, T *dst, int length);             \
    KvlStatus ownkvlmSaxpy_vva_##type##_##period(const T *block, const T *src, T *dst, int length);
extern "C" {
STREAM(float, 32f, 4)
STREAM(float, 32f, 12)
STREAM(double, 64f, 6)
}

namespace {

// One element after the other, ascending: a destination ahead of a source changes what is still to be read.
template <class T>
void overlap(const Member &member, int length, int step, int ahead, bool secondIsNear)
{
    Random random(length);
    const std::vector<T> before = someVector<T>(4 * length * step + 40, random);
    std::vector<T> memory = before;
    const int first = 20, far = first + 2 * length * step + 10, stride = step * static_cast<int>(sizeof(T));
    const bool isConstant = member.operands[1] == "c";
    const int begin[] = {secondIsNear && !isConstant ? far : first, secondIsNear ? first + 1 : far, first + ahead};
    std::vector<T *> tables[3];
    Args args;
    for (int k = 0; k < 3; ++k) {
        for (int j = 0; j < length; ++j)
            tables[k].push_back(&memory[begin[k] + j * step]);
        if (k == 1 && isConstant)
            append(args, 0.3);
        else if (member.description == 'P')
            append(args, argsOf(tables[k].data(), 0));
        else
            append(args, argsOf(tables[k][0], stride));
    }
    append(args, length);
    ASSERT_EQ(member.call(args), kvlOk);
    const std::vector<T> after = memory;
    memory = before;
    for (int j = 0; j < length; ++j) {
        const T x = *tables[0][j], y = isConstant ? static_cast<T>(0.3) : *tables[1][j];
        *tables[2][j] = member.family == "Add" ? x + y : member.isConstantFirst() ? y - x : x - y;
    }
    ASSERT_EQ(after, memory) << member.name << " length " << length << " step " << step << " ahead " << ahead;
}

TEST(Vectors, OverlapIsThatOfAscendingSteps)
{
    int tried = 0;
    for (const Member &member : members())
        if (member.isSum() && member.isVector() && !member.isArray() && ++tried)
            for (int length : {3, 4, 7, 16, 100})
                for (int step : {1, 2})
                    for (int ahead : {-17, -4, -1, 0, 1, 2, 3, 5, 12, 17})
                        for (bool secondIsNear : {false, true})
                            withType(member, [&](auto zero) {
                                overlap<decltype(zero)>(member, length, step, ahead, secondIsNear);
                            });
    EXPECT_EQ(tried, 20);
}

// Long sums begin their lanes at a multiple of 16 bytes of the second vector; where there is none, they have no lanes.
template <class T>
void sumAtAnyAddress(KvlStatus (*dot)(const T *, int, const T *, int, T *, int))
{
    constexpr int size = sizeof(T);
    Random random(1);
    for (int length : {8, 9, 10, 11, 12, 16, 29})
        for (int offset = 0; offset < 16; ++offset) {
            const std::vector<T> a = someFactors<T>(length, false, true, random), b = someMatrix<T>(6, random);
            alignas(16) char memory[32 * size + 16];
            std::memcpy(memory + offset, b.data(), length * size);
            std::vector<T> products(length);
            for (int k = 0; k < length; ++k)
                products[k] = a[k] * b[k];
            T result = 0;
            ASSERT_EQ(dot(a.data(), size, reinterpret_cast<const T *>(memory + offset), size, &result, length), kvlOk);
            const T expected =
                oracle::sumOfProducts("vv", "", products, {reinterpret_cast<std::uintptr_t>(memory) + offset, false});
            EXPECT_TRUE(std::memcmp(&result, &expected, size) == 0 || (std::isnan(result) && std::isnan(expected)))
                << length << " at " << offset << ": " << result << ", expected " << expected;
        }
}

TEST(Vectors, LongSumsAtAnyAddress)
{
    sumAtAnyAddress<float>(kvlmDotProduct_vv_32f);
    sumAtAnyAddress<double>(kvlmDotProduct_vv_64f);
}

// Bytes in which elements lie anywhere.
struct Bytes : std::vector<char> {
    using std::vector<char>::vector;
    template <class T>
    T get(std::ptrdiff_t place) const
    {
        T x;
        std::memcpy(&x, &at(place), sizeof x);
        return x;
    }
    template <class T>
    void set(std::ptrdiff_t place, T x)
    {
        std::memcpy(&at(place), &x, sizeof x);
    }
    template <class T>
    T *pointer(std::ptrdiff_t place)
    {
        return reinterpret_cast<T *>(&at(place));
    }
};

// Two members take shifts as they are: tables of two entries with shifts of 3 and -5 bytes, and `count` constants.
template <class T, class Op>
void shiftsAtAnyByte(const Function &member, int count, Op op)
{
    constexpr int size = sizeof(T), obj = 3 * size;
    Bytes src(64), dst(64 + static_cast<std::size_t>(count) * obj);
    std::vector<T> constants(count);
    const T *from[] = {src.pointer<T>(0), src.pointer<T>(20)};
    T *to[] = {dst.pointer<T>(8), dst.pointer<T>(8 + size + 1)};
    src.set<T>(3, T(1.5));
    src.set<T>(23, T(-2.25));
    for (int i = 0; i < count; ++i)
        constants[i] = T(i % 1000);
    ASSERT_EQ(call(member, &from[0], 3, constants.data(), size, &to[0], -5, obj, 2, count), kvlOk);
    for (int i = 0; i < count; ++i) {
        ASSERT_EQ(dst.get<T>(3 + std::ptrdiff_t(i) * obj), op(T(1.5), constants[i])) << i;
        ASSERT_EQ(dst.get<T>(4 + size + std::ptrdiff_t(i) * obj), op(T(-2.25), constants[i])) << i;
    }
}

TEST(Vectors, UncheckedShifts)
{
    for (int count : {1, 2, 7, 9000}) // a team takes the last
        for (int threads : {1, 2}) {
            kvlSetNumThreads(threads);
            shiftsAtAnyByte<double>(kvlmAdd_vca_64f_P, count, [](double x, double c) { return x + c; });
            shiftsAtAnyByte<float>(kvlmSub_cav_32f_P, count, [](float x, float c) { return c - x; });
        }
    kvlSetNumThreads(1);
}

TEST(Vectors, UncheckedObjectStride)
{
    constexpr int size = sizeof(float);
    for (int count : {1, 5, 6000})
        for (int stride : {-12, 0, 6, 7})
            for (int threads : {1, 3}) {
                Bytes src(2 * 12 * count + 64);
                const int first = 12 * count;
                const float *const from[] = {src.pointer<float>(first), src.pointer<float>(first + size)};
                std::vector<float> dst(2 * count), expected(2 * count), constants(count, 0.5f);
                float *const to[] = {&dst[0], &dst[1]};
                const auto place = [&](int k) { return first + k / 2 * stride + k % 2 * size; };
                for (int k = 0; k < 2 * count; ++k)
                    src.set<float>(place(k), static_cast<float>(k / 2 % 100 + k % 2 * 3));
                for (int k = 0; k < 2 * count; ++k)
                    expected[k] = src.get<float>(place(k)) + constants[0];
                kvlSetNumThreads(threads);
                ASSERT_EQ(kvlmAdd_vaca_32f_P(from, 0, stride, constants.data(), size, to, 0, 2 * size, 2, count),
                          kvlOk);
                ASSERT_EQ(std::memcmp(dst.data(), expected.data(), dst.size() * size), 0) << count << " " << stride;
            }
    kvlSetNumThreads(1);
}

// The streams that no function of the library calls: any length, any place of dst, nothing beside it touched.
template <class T>
void stream(const Function &scaled, const Function &plain, int period)
{
    constexpr int size = sizeof(T);
    Random random(period);
    const std::vector<T> block = someMatrix<T>(4, random), src = someMatrix<T>(7, random);
    for (const bool isScaled : {true, false})
        for (int length = 0; length <= 40; ++length)
            for (int offset = 0; offset < 16; ++offset) {
                Room memory(length * size, Memory::heap, offset);
                memory.fill([](std::ptrdiff_t) { return 0x55; });
                std::vector<unsigned char> expected = memory.bytes();
                for (int k = 0; k < length; ++k) {
                    const T x = isScaled ? src[k] * T(0.3) + block[k % period] : block[k % period] + src[k];
                    std::memcpy(&expected[memory.before() + k * size], &x, size);
                }
                const auto *const dst = reinterpret_cast<const T *>(memory.data());
                ASSERT_EQ(isScaled ? call(scaled, block.data(), src.data(), 0.3, dst, length)
                                   : call(plain, block.data(), src.data(), dst, length),
                          kvlOk);
                ASSERT_EQ(memory.bytes(), expected) << length << " at " << offset;
            }
}

TEST(Vectors, Streams)
{
    stream<float>(ownkvlmSaxpy_vav_32f_4, ownkvlmSaxpy_vva_32f_4, 4);
    stream<float>(ownkvlmSaxpy_vav_32f_12, ownkvlmSaxpy_vva_32f_12, 12);
    stream<double>(ownkvlmSaxpy_vav_64f_6, ownkvlmSaxpy_vva_64f_6, 6);
}

// Norms of what is 0, and of what is small: the rough root of 0 is NaN, sums of at most 2^-23 are taken for 0.
TEST(Vectors, SmallNorms)
{
    const float zeros[8] = {}, limit = 1.1920929e-07f;
    const auto norm = [&](int length, int stride) {
        float result = 1;
        EXPECT_EQ(kvlmL2Norm_v_32f(zeros, stride, &result, length), kvlOk);
        return result;
    };
    for (int length = 1; length <= 7; ++length)
        if (length >= 3 && length <= 6)
            EXPECT_TRUE(std::isnan(norm(length, 4))) << length;
        else
            EXPECT_EQ(norm(length, 4), 0) << length;
    EXPECT_EQ(norm(3, 8), 0);

    const auto frobenius = [](std::vector<float> a, int count) {
        std::vector<float> one(count, 1), all(count, 1);
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(kvlmFrobNorm_m_32f(&a[i], 4, 4, 1, 1, &one[i]), kvlOk);
        EXPECT_EQ(kvlmFrobNorm_ma_32f(a.data(), 4, 4, 4, 1, 1, all.data(), count), kvlOk);
        EXPECT_EQ(std::memcmp(one.data(), all.data(), count * sizeof(float)), 0);
        return one;
    };
    const float root = std::ldexp(1.0f, -12) * 1.41421354f; // its square is just below the limit
    const float above = std::nextafter(root, 1.0f), nan = std::numeric_limits<float>::quiet_NaN();
    ASSERT_LE(root * root, limit);
    ASSERT_GT(above * above, limit);
    std::vector<float> norms = frobenius({1e-4f, root, above, 0, nan}, 5);
    EXPECT_NEAR(norms[2], above, 1e-9f);
    norms[2] = 0;
    EXPECT_EQ(norms, std::vector<float>(5));
    const double small = 1e-4;
    double norm64 = 0;
    EXPECT_EQ(kvlmFrobNorm_m_64f(&small, 8, 8, 1, 1, &norm64), kvlOk);
    EXPECT_EQ(norm64, 1e-4);
}

} // namespace
