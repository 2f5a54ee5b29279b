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

template <class T>
auto functionOf(bool isList)
{
    if constexpr (sizeof(T) == 4)
        return isList ? Function(kvlmTranspose_ma_32f_L) : Function(kvlmTranspose_ma_32f);
    else
        return isList ? Function(kvlmTranspose_ma_64f_L) : Function(kvlmTranspose_ma_64f);
}

// A batch whose objects are all the same memory, so that any size of it is small.
template <class T>
struct SharedBatch {
    SharedBatch(int width, int height, int count, bool isList = false)
        : width(width), height(height), src(width * height + count), dst(src.size()), call(functionOf<T>(isList))
    {
        const int size = sizeof(T);
        for (std::size_t k = 0; k < src.size(); ++k)
            src[k] = static_cast<T>(k);
        for (std::vector<T> *side : {&src, &dst}) {
            const bool isSource = side == &src;
            if (isList) {
                std::vector<const T *> &list = isSource ? srcList : dstList;
                list.assign(count, side->data());
                args.push_back(Arg::tableOf(list.data()));
                args.push_back(Arg::integer('H', 0));
            } else {
                args.push_back(Arg::base(side->data()));
                args.push_back(Arg::integer('O', size));
            }
            args.push_back(Arg::integer('T', (isSource ? width : height) * size));
            args.push_back(Arg::integer('T', size));
            if (isSource) {
                args.push_back(Arg::integer('S', width));
                args.push_back(Arg::integer('S', height));
            }
        }
        args.push_back(Arg::integer('C', count));
    }
    int ask(int cache)
    {
        cacheSize = cache;
        questions = 0;
        EXPECT_EQ(call(args), kvlOk);
        return questions;
    }

    int width, height;
    std::vector<T> src, dst;
    std::vector<const T *> srcList, dstList;
    Args args;
    Function call;
};

int askedByOne(int width, int height, int cache)
{
    const std::vector<float> src(width * height);
    std::vector<float> dst(width * height);
    cacheSize = cache;
    questions = 0;
    EXPECT_EQ(kvlmTranspose_m_32f(src.data(), width * 4, 4, width, height, dst.data(), height * 4, 4), kvlOk);
    return questions;
}

TEST(CacheSize, AskedOnceForAMatrixWithBothSizesAbove128)
{
    for (int cache : {0, 1, 1 << 30}) {
        EXPECT_EQ(askedByOne(129, 129, cache), 1);
        EXPECT_EQ(askedByOne(128, 1000, cache), 0);
        EXPECT_EQ(askedByOne(1000, 128, cache), 0);
        EXPECT_EQ(askedByOne(130, 2000, cache), 1);
        EXPECT_EQ(askedByOne(4, 4, cache), 0);
    }
    std::vector<double> wide(200 * 200), result(wide.size());
    questions = 0;
    EXPECT_EQ(kvlmTranspose_m_64f(wide.data(), 1600, 8, 200, 200, result.data(), 1600, 8), kvlOk);
    EXPECT_EQ(questions, 0);
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
        // Strided elements never ask.
        SharedBatch<float> strided(64, 64, 5, isList);
        for (Arg &arg : strided.args)
            if (arg.check == 'T')
                arg.number = 8;
        EXPECT_EQ(strided.ask(1), 0);
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
        while (bytes <= least - least / 4)
            --least;
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
    streamed = code[0] == 0x0f && (code[1] == 0x2b || code[1] == 0xc3 || code[1] == 0xe7); // movntps, movnti, movntdq
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

TEST(Streaming, OfBatches)
{
    const auto streams = [](int width, int height, int count, int cache) {
        const std::vector<float> src(width * height * count);
        const int object = width * height * 4;
        return isStreamed(src.size() * 4, cache, [&](float *dst) {
            kvlmTranspose_ma_32f(src.data(), object, width * 4, 4, width, height, dst, object, height * 4, 4, count);
        });
    };
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
    const auto streams = [&](int width, int height, int count, int cache) {
        return isStreamed(dst.size() * 4, cache, [&](float *dst) {
            kvlmTranspose_ma_32f(src.data(), 4, 4, 4, width, height, dst, 4, 4, 4, count);
        });
    };
    EXPECT_FALSE(streams(128, 8192, 513, 1 << 30)); // 2^32 + 2^23
    EXPECT_TRUE(streams(128, 8192, 513, 1 << 23));
    EXPECT_FALSE(isStreamed(dst.size() * 4, 1, [&](float *dst) { // 2^31
        kvlmTranspose_m_32f(src.data(), 4, 4, 16384, 16384, dst, 4, 4);
    }));
}
#endif

// Every alignment of the destination, and of its stride, in single matrices and batches: blocks of 64 rows and what is
// left of them, tiles, streamed and not.
template <class T>
void compareSizes(bool stream)
{
    struct Size {
        int width, height;
    };
    const Size sizes[] = {{4, 3},    {3, 4},     {1, 70},    {70, 1},    {2, 2},    {7, 9},
                          {16, 64},  {16, 65},   {48, 130},  {19, 67},   {17, 128}, {128, 17},
                          {33, 200}, {144, 150}, {150, 144}, {131, 193}, {8, 4}};
    Random random(3);
    for (const Size &size : sizes)
        for (int turn = 0; turn < 12; ++turn) {
            const int count = turn % 3 ? 1 : 3, pad = turn % 4 ? 16 / sizeof(T) : 1;
            const auto stride = [&](int n) { return (n + random.below(2) + pad - 1) / pad * pad; };
            const int srcRow = stride(size.width), dstRow = stride(size.height);
            const int srcObject = srcRow * size.height + random.below(3),
                      dstObject = dstRow * size.width + random.below(3);
            // A double may begin at any multiple of 4.
            const int bytes = sizeof(T);
            Room from(bytes * (srcObject * (count - 1) + srcRow * (size.height - 1) + size.width), Memory::heap,
                      4 * random.below(4));
            Room to(bytes * (dstObject * (count - 1) + dstRow * (size.width - 1) + size.height), Memory::heap,
                    turn < 8 ? 4 * (turn / 2) : 0);
            for (std::size_t k = 0; k < from.size(); ++k)
                from.low()[k] = static_cast<unsigned char>(random.next());
            std::vector<unsigned char> expected(to.size());
            for (std::size_t k = 0; k < to.size(); ++k)
                expected[k] = to.low()[k] = static_cast<unsigned char>(random.next());
            for (int i = 0; i < count; ++i)
                for (int r = 0; r < size.height; ++r)
                    for (int c = 0; c < size.width; ++c)
                        std::copy_n(from.data() + bytes * (i * srcObject + r * srcRow + c), bytes,
                                    &expected[to.data() - to.low() + bytes * (i * dstObject + c * dstRow + r)]);
            cacheSize = stream ? 1 : 0;
            Args args = {Arg::base(from.data()),
                         Arg::integer('O', srcObject * bytes),
                         Arg::integer('T', srcRow * bytes),
                         Arg::integer('T', bytes),
                         Arg::integer('S', size.width),
                         Arg::integer('S', size.height),
                         Arg::base(to.data()),
                         Arg::integer('O', dstObject * bytes),
                         Arg::integer('T', dstRow * bytes),
                         Arg::integer('T', bytes),
                         Arg::integer('C', count)};
            EXPECT_EQ(functionOf<T>(false)(args), kvlOk);
            EXPECT_TRUE(std::equal(expected.begin(), expected.end(), to.low()))
                << size.width << "x" << size.height << " turn " << turn << (stream ? " streamed" : "");
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
            Room from((rows - 1) * srcStride + width * size, memory, offset());
            Room to((width - 1) * dstStride + rows * size, memory, offset());
            for (Room *room : {&from, &to})
                for (std::size_t k = 0; k < room->size(); ++k)
                    room->low()[k] = static_cast<unsigned char>(random.next());
            std::vector<unsigned char> expected(to.low(), to.low() + to.size());
            for (int r = 0; r < rows; ++r)
                for (int c = 0; c < width; ++c)
                    std::copy_n(from.data() + r * srcStride + c * size, size,
                                &expected[to.data() - to.low() + c * dstStride + r * size]);
            routine(from.data(), srcStride, to.data(), dstStride, width, rows);
            ASSERT_TRUE(std::equal(expected.begin(), expected.end(), to.low()))
                << size << " bytes, " << width << "x" << rows << " turn " << turn;
        }
}

} // namespace
