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

// An operand of single vectors within one array: every `step` elements from `first` on.
template <class T>
struct Within {
    Within(const Member &member, std::vector<T> &memory, int first, int step, int length)
        : isTable(member.description == 'P')
    {
        for (int j = 0; j < length; ++j)
            table.push_back(&memory[first + j * step]);
        stride = step * static_cast<int>(sizeof(T));
    }
    void appendTo(Args &args) const
    {
        args.push_back(isTable ? Arg::tableOf(table.data()) : Arg::base(table[0]));
        args.push_back(Arg::integer(isTable ? 'H' : 'T', isTable ? 0 : stride));
    }
    bool isTable;
    std::vector<T *> table;
    int stride;
};

// One element after the other, ascending: a destination ahead of a source changes what is still to be read.
template <class T>
void overlap(const Member &member, int length, int step, int ahead, bool secondIsNear)
{
    Random random(length);
    std::vector<T> memory(4 * length * step + 40);
    for (T &x : memory)
        x = inUnitInterval<T>(random);
    const int first = 20, far = first + 2 * length * step + 10, second = secondIsNear ? first + 1 : far;
    const bool isConstant = member.operands[1] == "c";
    const Within<T> a(member, memory, secondIsNear && !isConstant ? far : first, step, length),
        b(member, memory, second, step, length), d(member, memory, first + ahead, step, length);
    Args args;
    a.appendTo(args);
    if (isConstant)
        args.push_back(Arg::constant(0.3));
    else
        b.appendTo(args);
    d.appendTo(args);
    args.push_back(Arg::integer('S', length));
    const std::vector<T> before = memory;
    ASSERT_EQ(member.call(args), kvlOk);
    const std::vector<T> after = memory;
    memory = before;
    for (int j = 0; j < length; ++j) {
        const T x = *a.table[j], y = isConstant ? static_cast<T>(0.3) : *b.table[j];
        *d.table[j] = member.family == "Add" ? x + y : member.isConstantFirst() ? y - x : x - y;
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
class Bytes {
public:
    explicit Bytes(std::size_t size) : memory(size) {}
    template <class T>
    T get(std::ptrdiff_t at) const
    {
        T x;
        std::memcpy(&x, &memory.at(at), sizeof x);
        return x;
    }
    template <class T>
    void set(std::ptrdiff_t at, T x)
    {
        std::memcpy(&memory.at(at), &x, sizeof x);
    }
    template <class T>
    T *at(std::ptrdiff_t at)
    {
        return reinterpret_cast<T *>(&memory.at(at));
    }

private:
    std::vector<char> memory;
};

// Two members take shifts as they are. `call` is given tables of two entries, shifts of 3 and -5 bytes, and `count`
// constants.
template <class T, class Op>
void shiftsAtAnyByte(KvlStatus (*member)(const T *const *, int, const T *, int, T *const *, int, int, int, int),
                     int count, Op op)
{
    constexpr int size = sizeof(T), obj = 3 * size;
    Bytes src(64), dst(64 + static_cast<std::size_t>(count) * obj);
    std::vector<T> constants(count);
    const T *from[] = {src.at<const T>(0), src.at<const T>(20)};
    T *to[] = {dst.at<T>(8), dst.at<T>(8 + size + 1)};
    src.set<T>(3, T(1.5));
    src.set<T>(23, T(-2.25));
    for (int i = 0; i < count; ++i)
        constants[i] = T(i % 1000);
    ASSERT_EQ(member(from, 3, constants.data(), size, to, -5, obj, 2, count), kvlOk);
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
                const float constant = 0.5f, *const from[] = {src.at<const float>(first),
                                                              src.at<const float>(first + size)};
                std::vector<float> dst(2 * count), expected(2 * count);
                float *const to[] = {&dst[0], &dst[1]};
                std::vector<float> constants(count, constant);
                for (int i = 0; i < count; ++i)
                    for (int j = 0; j < 2; ++j)
                        src.set<float>(first + i * stride + j * size, static_cast<float>(i % 100 + 3 * j));
                for (int i = 0; i < count; ++i)
                    for (int j = 0; j < 2; ++j)
                        expected[2 * i + j] = src.get<float>(first + i * stride + j * size) + constant;
                kvlSetNumThreads(threads);
                ASSERT_EQ(kvlmAdd_vaca_32f_P(from, 0, stride, constants.data(), size, to, 0, 2 * size, 2, count),
                          kvlOk);
                ASSERT_EQ(std::memcmp(dst.data(), expected.data(), dst.size() * size), 0) << count << " " << stride;
            }
    kvlSetNumThreads(1);
}

// The streams that no function of the library calls: any length, any place of dst, nothing beside it touched.
template <class T>
void stream(KvlStatus (*scaled)(const T *, const T *, T, T *, int), KvlStatus (*plain)(const T *, const T *, T *, int),
            int period)
{
    constexpr int size = sizeof(T);
    Random random(period);
    const std::vector<T> block = someMatrix<T>(4, random), src = someMatrix<T>(7, random);
    for (int length = 0; length <= 40; ++length)
        for (int offset = 0; offset < 16; ++offset) {
            alignas(16) char memory[2][48 * size + 32];
            std::memset(memory, 0x55, sizeof memory);
            T *const first = reinterpret_cast<T *>(memory[0] + offset), *const second =
                                                                            reinterpret_cast<T *>(memory[1] + offset);
            ASSERT_EQ(scaled(block.data(), src.data(), T(0.3), first, length), kvlOk);
            ASSERT_EQ(plain(block.data(), src.data(), second, length), kvlOk);
            std::vector<T> expected[2];
            for (std::vector<T> &values : expected)
                values.reserve(length + 1); // data() is no null pointer
            for (int k = 0; k < length; ++k) {
                expected[0].push_back(src[k] * T(0.3) + block[k % period]);
                expected[1].push_back(block[k % period] + src[k]);
            }
            for (int which : {0, 1}) {
                ASSERT_EQ(std::memcmp(memory[which] + offset, expected[which].data(), length * size), 0)
                    << length << " at " << offset;
                for (int byte = 0; byte < static_cast<int>(sizeof memory[0]); ++byte)
                    ASSERT_TRUE((byte >= offset && byte < offset + length * size) || memory[which][byte] == 0x55);
            }
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
    float result = 1;
    const auto isAsSettled = [&](int length, int stride, bool nan) {
        result = 1;
        EXPECT_EQ(kvlmL2Norm_v_32f(zeros, stride, &result, length), kvlOk);
        return nan ? std::isnan(result) : result == 0;
    };
    for (int length : {1, 2, 7})
        EXPECT_TRUE(isAsSettled(length, 4, false)) << length;
    for (int length : {3, 4, 5, 6})
        EXPECT_TRUE(isAsSettled(length, 4, true)) << length;
    EXPECT_TRUE(isAsSettled(3, 8, false));

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
    const std::vector<float> norms = frobenius({1e-4f, root, above, 0, nan}, 5);
    EXPECT_EQ(norms[0], 0);
    EXPECT_EQ(norms[1], 0);
    EXPECT_NEAR(norms[2], above, 1e-9f);
    EXPECT_EQ(norms[3], 0);
    EXPECT_EQ(norms[4], 0);
    const double small = 1e-4;
    double norm = 0;
    EXPECT_EQ(kvlmFrobNorm_m_64f(&small, 8, 8, 1, 1, &norm), kvlOk);
    EXPECT_EQ(norm, 1e-4);
}

} // namespace
