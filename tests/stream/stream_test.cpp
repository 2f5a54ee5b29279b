// Transpose past the cache, with a core library of our own in front of the real one: when the size of the cache is
// asked for, which matrices are streamed, and the elements of all blocks, tiles and remainders.
#include "../operand.h"

#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <ucontext.h>

extern "C" {
void owniTranspose_32s_asm(const void *src, int srcStride, void *dst, int dstStride, int width, int rows);
void owniTranspose_32s_NT(const void *src, int srcStride, void *dst, int dstStride, int width, int rows);
void ownm_iTranspose_16u_C4R_W7(const void *src, int srcStride, void *dst, int dstStride, int width, int height);
}

namespace {

int cacheSize = 0;
int questions = 0;

} // namespace

// Its declaration is the real core library's own business.
#pragma GCC diagnostic ignored "-Wmissing-declarations"
extern "C" __attribute__((visibility("default"))) int kvlGetMaxCacheSizeB(int *size)
{
    ++questions;
    EXPECT_EQ(*size, 0);
    *size = cacheSize;
    return -1; // not looked at
}

namespace {

// A batch whose objects are all the same memory, so that any size of it is small.
template <class T>
struct SharedBatch {
    SharedBatch(int width, int height, int count, bool isList = false, int elem = sizeof(T))
        : src(width * height * 2 + count), dst(src.size()), srcList(count, src.data()), dstList(count, dst.data()),
          call(isList ? Function(forType<T>(kvlmTranspose_ma_32f_L, kvlmTranspose_ma_64f_L))
                      : Function(KVLM_FUNCTION(T, Transpose_ma)))
    {
        const auto operand = [&](const std::vector<T> &memory, const std::vector<const T *> &list, int columns) {
            const int size = sizeof(T);
            return isList ? argsOf(list.data(), 0, columns * elem, elem)
                          : argsOf(memory.data(), size, columns * elem, elem);
        };
        args = argsOf(operand(src, srcList, width), width, height, operand(dst, dstList, height), count);
    }
    int ask(int cache)
    {
        cacheSize = cache;
        questions = 0;
        EXPECT_EQ(call(args), kvlOk);
        return questions;
    }

    std::vector<T> src, dst;
    std::vector<const T *> srcList, dstList;
    Function call;
    Args args;
};

template <class T>
int askedByOne(int width, int height, int cache)
{
    const std::vector<T> src(width * height);
    std::vector<T> dst(width * height);
    const int elem = sizeof(T);
    cacheSize = cache;
    questions = 0;
    EXPECT_EQ(call(KVLM_FUNCTION(T, Transpose_m), src.data(), width * elem, elem, width, height, dst.data(),
                   height * elem, elem),
              kvlOk);
    return questions;
}

TEST(CacheSize, AskedOnceForAMatrixWithBothSizesAbove128)
{
    for (int cache : {0, 1, 1 << 30}) {
        EXPECT_EQ(askedByOne<float>(129, 129, cache), 1);
        EXPECT_EQ(askedByOne<float>(128, 1000, cache), 0);
        EXPECT_EQ(askedByOne<float>(1000, 128, cache), 0);
        EXPECT_EQ(askedByOne<float>(130, 2000, cache), 1);
        EXPECT_EQ(askedByOne<float>(4, 4, cache), 0);
        EXPECT_EQ(askedByOne<double>(200, 200, cache), 0);
    }
}

TEST(CacheSize, AskedOnceForABatchAbove131072)
{
    for (bool isList : {false, true}) {
        for (int cache : {0, 1, 1 << 30}) {
            EXPECT_EQ(SharedBatch<float>(64, 64, 4, isList).ask(cache), 0); // exactly
            EXPECT_EQ(SharedBatch<float>(64, 64, 5, isList).ask(cache), 1);
            EXPECT_EQ(SharedBatch<float>(1, 16384, 1, isList).ask(cache), 0);
            EXPECT_EQ(SharedBatch<float>(1, 16385, 1, isList).ask(cache), 1);
            EXPECT_EQ(SharedBatch<float>(4, 4, 100000, isList).ask(cache), 0); // unrolled orders never ask
            EXPECT_EQ(SharedBatch<float>(6, 6, 5000, isList).ask(cache), 0);
            EXPECT_EQ(SharedBatch<double>(64, 64, 50, isList).ask(cache), 0);
        }
        EXPECT_EQ(SharedBatch<float>(64, 64, 5, isList, 8).ask(1), 0); // nor strided elements
    }
}

// A batch that is not streamed asks again for each matrix with both sizes above 128.
TEST(CacheSize, ThreeQuartersOfItDecide)
{
    const int bytes = 130 * 150 * 3 * 8;
    for (bool isList : {false, true}) {
        SharedBatch<float> batch(130, 150, 3, isList);
        EXPECT_EQ(batch.ask(0), 4);
        EXPECT_EQ(batch.ask(1), 1);
        EXPECT_EQ(batch.ask(INT_MAX), 4);
        int least = bytes; // the least cache in which the batch stays
        while (bytes > least - least / 4)
            ++least;
        EXPECT_EQ(batch.ask(least), 4);
        EXPECT_EQ(batch.ask(least - 1), 1);
    }
}

// The machine's way to tell: the destination can't be written, and the instruction that tries is looked at.
unsigned char *guarded = nullptr;
std::size_t guardedBytes = 0;
bool looked = false, streamed = false;

void lookAtStore(int, siginfo_t *, void *context)
{
#ifdef __x86_64__
    const auto at = static_cast<ucontext_t *>(context)->uc_mcontext.gregs[REG_RIP];
#else
    const auto at = static_cast<ucontext_t *>(context)->uc_mcontext.gregs[REG_EIP];
#endif
    looked = true;
    const auto *code = reinterpret_cast<const unsigned char *>(at);
    while (*code == 0x66 || (*code & 0xf0) == 0x40) // prefixes
        ++code;
    // The opcode stands behind 0f, or behind what variants for wider registers have instead.
    const int behind = *code == 0x0f ? 1 : *code == 0xc5 ? 2 : *code == 0xc4 ? 3 : *code == 0x62 ? 4 : 0;
    const int opcode = behind ? code[behind] : 0;
    streamed = opcode == 0x2b || opcode == 0xc3 || opcode == 0xe7; // movntps, movnti, movntdq
    mprotect(guarded, guardedBytes, PROT_READ | PROT_WRITE);
}

// Whether the first store of a call is past the cache.
template <class Call>
bool isStreamed(std::size_t bytes, int cache, Call call)
{
    guardedBytes = (bytes + 8191) / 4096 * 4096;
    void *map = mmap(nullptr, guardedBytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    EXPECT_NE(map, MAP_FAILED);
    guarded = static_cast<unsigned char *>(map);
    struct sigaction action = {}, before;
    action.sa_sigaction = lookAtStore;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSEGV, &action, &before);
    cacheSize = cache;
    streamed = looked = false;
    call(reinterpret_cast<float *>(guarded));
    EXPECT_TRUE(looked);
    sigaction(SIGSEGV, &before, nullptr);
    munmap(map, guardedBytes);
    return streamed;
}

TEST(Streaming, OfOneMatrix)
{
    const auto streams = [](int width, int height, int cache, int misalignment) {
        const std::vector<float> src(width * height);
        return isStreamed(src.size() * 4, cache, [&](float *dst) {
            kvlmTranspose_m_32f(src.data(), width * 4, 4, width, height, dst + misalignment, height * 4, 4);
        });
    };
    for (int misalignment : {0, 1}) {
        const int bytes = 144 * 160 * 8;
        EXPECT_FALSE(streams(144, 160, bytes, misalignment));
        EXPECT_TRUE(streams(144, 160, bytes - 1, misalignment));
        EXPECT_FALSE(streams(144, 160, 0, misalignment));
        EXPECT_TRUE(streams(131, 133, 131 * 133 * 8 - 1, misalignment));
        EXPECT_FALSE(streams(131, 133, 131 * 133 * 8, misalignment));
        EXPECT_FALSE(streams(128, 300, 1, misalignment));
        EXPECT_FALSE(streams(300, 128, 1, misalignment));
    }
}

// Of a batch; its objects lie one behind another, or are all the same.
bool streams(int width, int height, int count, int cache, bool isShared = false)
{
    const int object = isShared ? 4 : width * height * 4, row = isShared ? 4 : width * 4;
    const std::vector<float> src(isShared ? 1 << 15 : width * height * count);
    return isStreamed(src.size() * 4, cache, [&](float *dst) {
        kvlmTranspose_ma_32f(src.data(), object, row, 4, width, height, dst, object, isShared ? 4 : height * 4, 4,
                             count);
    });
}

TEST(Streaming, OfBatches)
{
    EXPECT_TRUE(streams(64, 64, 5, 1));
    EXPECT_FALSE(streams(64, 64, 4, 1));
    EXPECT_FALSE(streams(64, 64, 5, 0));
    EXPECT_TRUE(streams(64, 64, 5, 218452)); // 163840 bytes, and three quarters are 163839
    EXPECT_FALSE(streams(64, 64, 5, 218453));
    EXPECT_TRUE(streams(3, 4, 2000, 1));
    EXPECT_FALSE(streams(4, 4, 2000, 1));
}

#ifdef __x86_64__ // an emulator takes minutes for so many elements
// Products that wrap: to below 0, so that nothing is asked or streamed, and to small ones, which stay in the cache.
TEST(Streaming, SizesThatWrap)
{
    std::vector<float> src(1 << 15), dst(1 << 15);
    const auto asked = [&](int width, int height, int count, int cache) {
        cacheSize = cache;
        questions = 0;
        EXPECT_EQ(kvlmTranspose_ma_32f(src.data(), 4, 4, 4, width, height, dst.data(), 4, 4, 4, count), kvlOk);
        return questions;
    };
    EXPECT_EQ(asked(128, 8192, 256, 1), 0); // 2^31
    EXPECT_EQ(asked(128, 8192, 255, 1), 1);
    EXPECT_FALSE(streams(128, 8192, 513, 1 << 30, true)); // 2^32 + 2^23
    EXPECT_TRUE(streams(128, 8192, 513, 1 << 23, true));
    EXPECT_FALSE(isStreamed(dst.size() * 4, 1, [&](float *dst) { // 2^31
        kvlmTranspose_m_32f(src.data(), 4, 4, 16384, 16384, dst, 4, 4);
    }));
}
#endif

// Two places with random bytes; what is expected of the second are those of the first, transposed.
struct Places {
    Places(std::size_t srcBytes, int srcOffset, std::size_t dstBytes, int dstOffset, Memory memory, Random &random)
        : from(srcBytes, memory, srcOffset), to(dstBytes, memory, dstOffset)
    {
        for (Room *room : {&from, &to})
            room->fill([&](std::ptrdiff_t) { return random.next(); });
        expected = to.bytes();
    }
    void expectMatrix(int size, int src, int srcStride, int dst, int dstStride, int width, int rows)
    {
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < width; ++c)
                std::copy_n(from.data() + src + r * srcStride + c * size, size,
                            &expected[to.before() + dst + c * dstStride + r * size]);
    }
    Room from, to;
    std::vector<unsigned char> expected;
};

// Every alignment of the destination, and of its stride, in single matrices and batches: blocks of 64 rows and what is
// left of them, tiles, streamed and not.
template <class T>
void compareSizes(bool stream)
{
    const std::pair<int, int> sizes[] = {{4, 3},    {3, 4},     {1, 70},    {70, 1},    {2, 2},    {7, 9},
                                         {16, 64},  {16, 65},   {48, 130},  {19, 67},   {17, 128}, {128, 17},
                                         {33, 200}, {144, 150}, {150, 144}, {131, 193}, {8, 4}};
    constexpr int size = sizeof(T);
    cacheSize = stream ? 1 : 0;
    Random random(3);
    for (const auto &[width, height] : sizes)
        for (int turn = 0; turn < 12; ++turn) {
            const int count = turn % 3 ? 1 : 3, pad = turn % 4 ? 16 / size : 1;
            const auto stride = [&](int n) { return (n + random.below(2) + pad - 1) / pad * pad * size; };
            const int srcRow = stride(width), dstRow = stride(height);
            const int srcObject = srcRow * height + random.below(3) * size;
            const int dstObject = dstRow * width + random.below(3) * size;
            // A double may begin at any multiple of 4.
            Places places(srcObject * (count - 1) + srcRow * (height - 1) + width * size, 4 * random.below(4),
                          dstObject * (count - 1) + dstRow * (width - 1) + height * size, turn < 8 ? 4 * (turn / 2) : 0,
                          Memory::heap, random);
            for (int i = 0; i < count; ++i)
                places.expectMatrix(size, i * srcObject, srcRow, i * dstObject, dstRow, width, height);
            EXPECT_EQ(call(KVLM_FUNCTION(T, Transpose_ma), places.from.data(), srcObject, srcRow, size, width, height,
                           places.to.data(), dstObject, dstRow, size, count),
                      kvlOk);
            EXPECT_EQ(places.to.bytes(), places.expected)
                << width << "x" << height << " turn " << turn << (stream ? " streamed" : "");
        }
}

TEST(Streaming, ElementsOfAllShapes)
{
    compareSizes<float>(false);
    compareSizes<float>(true);
    compareSizes<double>(false);
}

// The routines themselves, also where the choice would not take them: small sizes past the cache, odd addresses, and
// nothing touched beside the elements.
TEST(Routines, AnyShapeAtAnyAddress)
{
    using Routine = void(const void *, int, void *, int, int, int);
    const std::pair<Routine *, int> routines[] = {
        {owniTranspose_32s_asm, 4}, {owniTranspose_32s_NT, 4}, {ownm_iTranspose_16u_C4R_W7, 8}};
    Random random(7);
    for (const auto &[routine, size] : routines)
        for (int turn = 0; turn < 3000; ++turn) {
            const Memory memory = turn % 2 ? Memory::heap : turn % 4 ? Memory::beforePage : Memory::behindPage;
            const auto length = [&] { return 1 + random.below(turn % 3 ? 12 : memory == Memory::heap ? 150 : 50); };
            const int width = length(), rows = length(), unit = random.below(3) ? size : 1;
            const auto offset = [&] { return unit * random.below(16 / unit); };
            const int srcStride = width * size + random.below(3) * size;
            int dstStride = rows * size + random.below(4) * size;
            if (random.below(2))
                dstStride = (dstStride + 15) / 16 * 16;
            Places places((rows - 1) * srcStride + width * size, offset(), (width - 1) * dstStride + rows * size,
                          offset(), memory, random);
            places.expectMatrix(size, 0, srcStride, 0, dstStride, width, rows);
            routine(places.from.data(), srcStride, places.to.data(), dstStride, width, rows);
            ASSERT_EQ(places.to.bytes(), places.expected)
                << size << " bytes, " << width << "x" << rows << " turn " << turn;
        }
}

} // namespace
