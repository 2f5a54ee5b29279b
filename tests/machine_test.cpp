// The library's identity, and what a call leaves of the processor's state and asks of the stack.
#include "painted.h"
#include "problem.h"

#include "kvlcore.h"

#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <set>

namespace {

TEST(Identity, VersionRecord)
{
    const KvlLibraryVersion *version = kvlmGetLibVersion();
    ASSERT_NE(version, nullptr);
    EXPECT_EQ(version, kvlmGetLibVersion());
    EXPECT_EQ(version->versionMajor, 5);
    EXPECT_EQ(version->versionMinor, 2);
    EXPECT_EQ(version->buildSeries, 108);
    EXPECT_EQ(version->buildNumber, 345);
    EXPECT_EQ(std::memcmp(version->targetCode, "w7\0\0", 4), 0);
    EXPECT_STREQ(version->libraryName, "libkvlmw7.so.5.2");
    EXPECT_STREQ(version->versionText, "5.2");
    EXPECT_STREQ(version->buildDateText, "Jul 11 2007");
    EXPECT_EQ(sizeof(KvlLibraryVersion), sizeof(void *) == 4 ? 32u : 48u);
}

// No exported function is missing from the table that the tests go by; the version and the four sizes of scratch have
// no row.
TEST(Identity, EveryPublicFunctionIsAMember)
{
    std::set<std::string> names;
    for (const Member &member : members())
        names.insert(member.name);
    EXPECT_EQ(names.size() + 5, static_cast<std::size_t>(KVLM_PUBLIC_FUNCTIONS));
}

TEST(Core, CacheSizeAndTeam)
{
    int bytes = -1;
    kvlGetMaxCacheSizeB(&bytes);
    EXPECT_GE(bytes, 0);
    kvlSetNumThreads(7);
    EXPECT_EQ(threads_omp_of_n_kvl, 7);
    kvlSetNumThreads(1);
    EXPECT_EQ(threads_omp_of_n_kvl, 1);
}

unsigned short x87Control()
{
    unsigned short word;
    asm volatile("fnstcw %0" : "=m"(word));
    return word;
}

void setX87Control(unsigned short word)
{
    asm volatile("fldcw %0" : : "m"(word));
}

// Tag bits of registers in use: any left behind breaks the caller's x87 code.
unsigned x87Tags()
{
    unsigned environment[7];
    asm volatile("fnstenv %0\n\tfldenv %0" : "+m"(environment));
    return environment[2] & 0xffff;
}

// x87 in 24-bit precision: loads and stores of doubles are exact all the same, but under some emulators. There the
// precision stays, since constants reach functions of i386 that way.
unsigned short narrowestExactX87(unsigned short saved)
{
    const double value = 1. / 3;
    double moved;
    setX87Control(saved & ~0x300);
    asm volatile("fldl %1\n\tfstpl %0" : "=m"(moved) : "m"(value));
    setX87Control(saved);
    return moved == value ? saved & ~0x300 : saved;
}

TEST(Processor, ControlWordsAreHonouredAndLeft)
{
    constexpr unsigned flags = 0x3f;
    const unsigned modes[] = {0x1f80, 0x3f80, 0x5f80 | 0x8040, 0x7f80};
    const unsigned savedMode = _mm_getcsr();
    const unsigned short savedX87 = x87Control(), narrowX87 = narrowestExactX87(savedX87);
    for (const Member &member : members())
        for (unsigned mode : modes)
            for (int order = 3; order <= 6; ++order)
                withType(member, [&](auto zero) {
                    Setting setting = {order, order, 3, Layout::packed, Layout::packed, Layout::packed};
                    _mm_setcsr(mode);
                    setX87Control(narrowX87);
                    Problem<decltype(zero)> problem(member, setting, 9);
                    const unsigned short x87 = x87Control();
                    const std::string wrong = problem.run();
                    const unsigned after = _mm_getcsr();
                    const unsigned short x87After = x87Control();
                    const unsigned tags = x87Tags();
                    _mm_setcsr(savedMode);
                    setX87Control(savedX87);
                    EXPECT_EQ(wrong, "");
                    EXPECT_EQ(after & ~flags, mode & ~flags) << member.name;
                    EXPECT_EQ(x87After, x87) << member.name;
                    EXPECT_EQ(tags, 0xffffu) << member.name;
                });
}

#ifndef __SANITIZE_ADDRESS__
TEST(Processor, StackThatCallsUse)
{
    constexpr long most = 48 * 1024;
    const Size sizes[] = {{3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}, {12, 12}, {6, 64}, {6, 65}};
    for (const Member &member : members())
        for (const Size &size : sizes)
            for (Layout layout : {Layout::packed, Layout::strided})
                for (const Function &function : {member.call, member.driver}) {
                    const bool isSquare = size.width == size.height;
                    if (!function || (member.hasFixedSize() && size.width > 3) || (!isSquare && member.isSquare()))
                        continue;
                    withType(member, [&](auto zero) {
                        const Setting setting = {size.width, size.height, isSquare ? 19 : 33, layout, layout, layout};
                        const Problem<decltype(zero)> problem(member, setting, 1);
                        long used = 0;
                        running() = problem.name();
                        function(problem.args); // what is done once, such as to find the runtime
                        callPainted(function, problem.args, used);
                        EXPECT_LE(used, most) << problem.name();
                    });
                }
}
#endif

#ifdef __i386__
// Calls with the stack pointer at `misalignment` modulo 16 where the arguments start.
KvlStatus callWithStackAt(int misalignment, const Function &function, const Args &args, bool is64)
{
    std::vector<std::uint32_t> words;
    for (const Arg &arg : args) {
        if (arg.check == 'V') {
            const float value = static_cast<float>(arg.value);
            const void *bytes = is64 ? static_cast<const void *>(&arg.value) : &value;
            words.resize(words.size() + (is64 ? 2 : 1));
            std::memcpy(words.data() + words.size() - (is64 ? 2 : 1), bytes, is64 ? 8 : 4);
        } else
            words.push_back(arg.check == 'N' ? reinterpret_cast<std::uint32_t>(arg.pointer)
                                             : static_cast<std::uint32_t>(arg.number));
    }
    auto top = reinterpret_cast<std::uint32_t>(__builtin_frame_address(0));
    top = ((top - 8192) & ~15u) + misalignment;
    auto result = reinterpret_cast<std::uint32_t>(function.address);
    std::size_t n = words.size();
    const std::uint32_t *source = words.data();
    asm volatile("movl %%esp, %%ebx\n\t"
                 "movl %%edx, %%esp\n\t"
                 "movl %%esp, %%edi\n\t"
                 "rep movsl\n\t"
                 "call *%%eax\n\t"
                 "movl %%ebx, %%esp"
                 : "+a"(result), "+c"(n), "+S"(source), "+d"(top)
                 :
                 : "ebx", "edi", "memory", "cc", "xmm0", "xmm1", "xmm2", "xmm3", "xmm4", "xmm5", "xmm6", "xmm7");
    return static_cast<KvlStatus>(result);
}

TEST(Processor, StackOfFourByteAlignment)
{
    for (const Member &member : members())
        for (Layout layout : {Layout::packed, Layout::padded, Layout::strided})
            for (int order = 3; order <= 7; ++order)
                for (int misalignment : {0, 4, 8, 12})
                    withType(member, [&](auto zero) {
                        Problem<decltype(zero)> problem(member, {order, order, 3, layout, layout, layout}, 3);
                        running() = problem.name();
                        const KvlStatus status = callWithStackAt(misalignment, member.call, problem.args, member.is64);
                        EXPECT_EQ(problem.verdict(status, 0, member.isArray() ? 3 : 1), "") << misalignment;
                    });
}
#endif

} // namespace
