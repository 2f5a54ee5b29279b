// Drivers on a runtime of our own: exact calls, chunks, partial batches, and which calls reach a driver at all.
#include "../problem.h"
#include "fake_runtime.h"

#include "kvlcore.h"

#include <gtest/gtest.h>

namespace {

std::vector<Member> arrayMembers()
{
    std::vector<Member> arrays;
    for (const Member &member : members())
        if (member.driver)
            arrays.push_back(member);
    return arrays;
}

// What is wrong when the driver runs `count` objects while objects [0, done) shall hold results afterwards.
std::string runDriver(const Member &member, const Layout (&layouts)[3], int threads, int count, int done)
{
    std::string wrong;
    withType(member, [&](auto zero) {
        Problem<decltype(zero)> problem(member, {3, 4, count, layouts[0], layouts[1], layouts[2]}, count);
        kvlSetNumThreads(threads);
        wrong = problem.run(member.driver, 0, done);
    });
    return wrong;
}

struct Scenario {
    const char *what;
    int threads, count, objectsDone;
    std::string trace;
    void (*prepare)(FakeRuntime &);
};

// The trace of a member whose threads get scratch: one block for all that were asked for.
std::string withScratch(const Member &member, int threads, std::string trace)
{
    const std::size_t at = trace.find(" ok?");
    if (!member.has("b") || at == std::string::npos)
        return trace;
    const int width = 3, height = 4;
    const int elements = member.isTall()           ? height
                         : member.isGeneralEigen() ? width * (3 * width + 5)
                         : member.isEigen()        ? width * width
                                                   : width * (width + 1);
    const int bytes = elements * threads * member.elementSize();
    return trace.insert(at, " malloc" + std::to_string(bytes)) + " free";
}

std::string team(int pushed, std::initializer_list<int> order)
{
    std::string trace = "gtid ok? push" + std::to_string(pushed) + " fork[";
    for (int t : order)
        trace += " t" + std::to_string(t) + " lock unlock";
    return trace + " ]";
}

const Scenario scenarios[] = {
    {"no threads", 0, 10, 10, "gtid", nullptr},
    {"negative threads", -3, 10, 10, "gtid", nullptr},
    {"one thread", 1, 10, 10, "gtid", nullptr},
    {"fewer objects than threads", 4, 3, 3, "gtid", nullptr},
    {"as many objects as threads", 4, 4, 4, team(4, {0, 1, 2, 3}), nullptr},
    {"ten over four", 4, 10, 10, team(4, {0, 1, 2, 3}), nullptr},
    {"ten over four, last first", 4, 10, 10, team(4, {3, 2, 1, 0}), [](FakeRuntime &r) { r.lastThreadFirst = true; }},
    {"refused with a rest", 4, 10, 3, "gtid ok? serial[ t0 lock unlock ]",
     [](FakeRuntime &r) { r.allowsFork = false; }},
    {"refused without a rest", 4, 8, 2, "gtid ok? serial[ t0 lock unlock ]",
     [](FakeRuntime &r) { r.allowsFork = false; }},
    {"team of two", 4, 10, 6, team(4, {0, 1}), [](FakeRuntime &r) { r.largestTeam = 2; }},
    {"team of three", 4, 10, 8, team(4, {0, 1, 2}), [](FakeRuntime &r) { r.largestTeam = 3; }},
    {"fewer threads at the second read", 4, 10, 6, team(2, {0, 1}),
     [](FakeRuntime &r) { r.onForkQuestion = [] { kvlSetNumThreads(2); }; }},
};

TEST(Driver, CallsOfTheRuntimeAndObjectsDone)
{
    for (const Member &member : arrayMembers())
        for (Layout layout : {Layout::packed, Layout::strided})
            for (const Scenario &scenario : scenarios) {
                resetFakeRuntime();
                if (scenario.prepare)
                    scenario.prepare(fakeRuntime());
                EXPECT_EQ(
                    runDriver(member, {layout, layout, layout}, scenario.threads, scenario.count, scenario.objectsDone),
                    "")
                    << scenario.what;
                EXPECT_EQ(fakeRuntime().trace, withScratch(member, scenario.threads, scenario.trace))
                    << member.name << ": " << scenario.what;
            }
    kvlSetNumThreads(1);
}

TEST(Driver, ChunksMoveEveryOperand)
{
    Random random(1);
    const auto anyLayout = [&] { return static_cast<Layout>(random.below(disjointLayouts)); };
    for (const Member &member : arrayMembers())
        for (int threads : {2, 3, 7})
            for (int count : {7, 8, 22})
                for (int turn = 0; turn < 12; ++turn) {
                    const Layout same = anyLayout(), src1 = anyLayout(), src2 = anyLayout(), dst = anyLayout();
                    resetFakeRuntime();
                    fakeRuntime().lastThreadFirst = true;
                    const Layout layouts[] = {turn % 2 ? same : src1, turn % 2 ? same : src2, turn % 2 ? same : dst};
                    EXPECT_EQ(runDriver(member, layouts, threads, count, count), "") << threads << " threads";
                }
    kvlSetNumThreads(1);
}

// Arguments of a batch of any shape in little memory: all elements of an operand are one, or lie `elem` bytes apart.
// Matrices are singular then, or their order is 1.
struct SharedElements {
    SharedElements(const Member &member, int width, int height, int count, bool strided)
        : memory((width + height + count + 8) * 2),
          plain(member.isNumerical() || member.isMeasure() ? width * (height + count) : 0),
          scratch(member.has("b") ? plain.size() + 3 * (width + 1) * (width + 1) : 0),
          table(member.description == 'P'   ? (width + 8) * (height + 8)
                : member.description == 'L' ? count
                                            : 0,
                &memory[0])
    {
        // Those of a small batch, whose sizes tell what they are.
        Setting small = {2, 3, 2, Layout::packed, Layout::packed, Layout::packed};
        small.inner = 5;
        withType(member, [&](auto zero) { args = Problem<decltype(zero)>(member, small, 1).args; });
        const auto hasPointer = [](const std::string &token) {
            return token != "c" && !std::strchr("xyzwhlnk", token[0]);
        };
        auto token = member.operands.begin();
        for (Arg &arg : args)
            if (arg.check == 'N') {
                token = std::find_if(token, member.operands.end(), hasPointer);
                const char letter = (token++)->front();
                arg.pointer = letter == 'b'                 ? scratch.data()
                              : std::strchr("pPDe", letter) ? plain.data()
                              : arg.table                   ? static_cast<const void *>(table.data())
                                                            : memory.data();
            } else if (arg.check == 'S')
                arg.number = arg.number == 2 ? width : arg.number == 3 ? height : innerOf(width, height);
            else if (arg.check == 'C')
                arg.number = count;
            else if (arg.check == 'H')
                arg.number = 0;
            else if (arg.check == 'T' || arg.check == 'O') {
                arg.check = 'T';
                arg.number = member.elementSize() * (strided ? 2 : 1);
            }
    }
    std::vector<double> memory, plain, scratch;
    std::vector<void *> table;
    Args args;
};

bool reachesDriver(const Member &member, int width, int height, int count, bool strided)
{
    SharedElements call(member, width, height, count, strided);
    running() = member.name;
    resetFakeRuntime();
    const KvlStatus status = member.call(call.args);
    const bool failed = status == kvlErrSmallPivot || status == kvlErrSingular || status == kvlErrNotPositiveDefinite ||
                        status == kvlErrZeroDivisor;
    EXPECT_TRUE(status == kvlOk || (failed && (member.isNumerical() || member.family == "AffineTransform3DH")))
        << member.name << " " << status;
    EXPECT_TRUE(fakeRuntime().trace.empty() || fakeRuntime().trace == "gtid") << fakeRuntime().trace;
    return !fakeRuntime().trace.empty();
}

struct Extent {
    int width, height, count;
};

// A shape of exactly this estimate, count 0 if there is none; rather several columns and rows than one.
Extent shapeOfEstimate(const Member &member, int target)
{
    if (member.isSquare()) {
        for (int order : {7, 5, 4, 3, 2, 1})
            for (int count = 1; member.estimate(order, order, count) <= target && count <= target; ++count)
                if (member.estimate(order, order, count) == target)
                    return {order, order, count};
        return {0, 0, 0};
    }
    for (int least : {2, 1})
        for (int width = 70; width >= least; --width)
            for (int height = 70; height >= (member.isTall() ? width : least); --height) {
                const int one = member.estimate(width, height, 1), more = member.estimate(width, height, 2) - one;
                if (target >= one && (target - one) % more == 0)
                    return {width, height, 1 + (target - one) / more};
            }
    return {0, 0, 0};
}

TEST(Routing, ExactlyAtTheLimit)
{
    kvlSetNumThreads(1);
    for (const Member &member : arrayMembers())
        for (bool strided : {false, true}) {
            const int limit = strided ? member.stridedLimit : member.contiguousLimit;
            int tried = 0;
            for (int estimate = limit - 3; estimate <= limit + 3; ++estimate) {
                const Extent shape = shapeOfEstimate(member, estimate);
                if (shape.count == 0)
                    continue;
                ++tried;
                EXPECT_EQ(reachesDriver(member, shape.width, shape.height, shape.count, strided),
                          estimate >= limit && !member.neverDriven)
                    << member.name << (strided ? " strided" : " contiguous") << ", estimate " << estimate;
            }
            EXPECT_GE(tried, 2) << member.name;
            // Of order 1 any number of objects may be little work.
            constexpr int count = 50000;
            EXPECT_EQ(reachesDriver(member, 1, 1, count, strided),
                      member.estimate(1, 1, count) >= limit && !member.neverDriven)
                << member.name << (strided ? " strided" : " contiguous") << ", order 1";
        }
}

// One stride that is not the element size makes a call strided, whichever operand has it.
TEST(Routing, EveryElementStrideCounts)
{
    kvlSetNumThreads(1);
    for (const Member &member : arrayMembers()) {
        if (member.description == 'P' || member.stridedLimit == member.contiguousLimit)
            continue;
        Extent shape = {0, 0, 0};
        for (int estimate = member.stridedLimit; shape.count == 0; ++estimate)
            shape = shapeOfEstimate(member, estimate);
        SharedElements sound(member, shape.width, shape.height, shape.count, false);
        for (std::size_t k = 0; k < sound.args.size(); ++k)
            if (sound.args[k].check == 'T' && sound.args[k + 1].check != 'T') {
                Args args = sound.args;
                args[k].number *= 2;
                resetFakeRuntime();
                member.call(args);
                EXPECT_EQ(fakeRuntime().trace, "gtid") << member.name << " argument " << k;
            }
    }
}

#ifdef __x86_64__
// The estimate wraps: 3 * 26755 * 26755 is above 2^31 and therefore negative, and the call stays with the caller.
TEST(Routing, EstimateWrapsInThirtyTwoBits)
{
    kvlSetNumThreads(1);
    for (const Member &member : arrayMembers())
        if (member.name == "kvlmAdd_mama_32f" || member.name == "kvlmSub_mam_32f") {
            ASSERT_LT(member.estimate(26755, 26755, 1), 0);
            EXPECT_FALSE(reachesDriver(member, 26755, 26755, 1, false)) << member.name;
        }
}
#endif

} // namespace
