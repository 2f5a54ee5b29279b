#include "call.h"

#include "../tests/defects.h"
#include "../tests/painted.h"
#include "../tests/problem.h"

#include "kvlcore.h"

#include <dlfcn.h>
#include <xmmintrin.h>

namespace fuzz {

volatile unsigned long heapCalls = 0;

namespace {

// Those without a row: what they say is all that they do.
struct Other {
    const char *name;
    KvlStatus (*bufferSize)(int, int *);
    int perOrder, size;
};
const Other others[] = {{"kvlmGetLibVersion", nullptr, 0, 0},
                        {"kvlmEigenValuesGetBufSize_32f", kvlmEigenValuesGetBufSize_32f, 1, 4},
                        {"kvlmEigenValuesGetBufSize_64f", kvlmEigenValuesGetBufSize_64f, 1, 8},
                        {"kvlmEigenValuesVectorsGetBufSize_32f", kvlmEigenValuesVectorsGetBufSize_32f, 3, 4},
                        {"kvlmEigenValuesVectorsGetBufSize_64f", kvlmEigenValuesVectorsGetBufSize_64f, 3, 8}};

std::string wrongOf(const Other &other, Random &draw)
{
    if (!other.bufferSize) {
        const KvlLibraryVersion *version = kvlmGetLibVersion();
        return version && version->versionMajor == 5 && version->versionMinor == 2 ? "" : "the version";
    }
    const int order = draw.below(4) ? draw.below(100) - 20 : static_cast<int>(draw.next());
    const bool isNull = draw.below(8) == 1;
    int bytes = -1;
    const unsigned n = static_cast<unsigned>(order), product = n * (other.perOrder * n + 5) * other.size;
    const KvlStatus expected = isNull ? kvlErrNullPointer : order < 1 ? kvlErrSize : kvlOk;
    const KvlStatus status = other.bufferSize(order, isNull ? nullptr : &bytes);
    return status != expected                                     ? "status " + std::to_string(status)
           : bytes != (expected ? -1 : static_cast<int>(product)) ? "size " + std::to_string(bytes)
                                                                  : "";
}

// What is drawn before the operands lie anywhere.
struct Plan {
    Setting setting;
    bool isDriven, isRough;
    int threads;
    unsigned mode; // of the processor
    struct {
        int which, value;
    } defects[3];
    int defectCount;
};

int someLength(Random &draw)
{
    const int kind = draw.below(16);
    return kind < 8 ? 3 + kind % 4 : kind < 15 ? 1 + draw.below(9) : 1 + draw.below(40);
}

int someCount(Random &draw)
{
    const int beside[] = {7, 8, 9, 15, 16, 17, 31, 32, 33, 63, 64, 65};
    const int kind = draw.below(32);
    return kind < 24 ? 1 + kind % 6 : beside[draw.below(kind < 30 ? 6 : 12)];
}

Layout someLayout(Random &draw, Layout other)
{
    const int kind = draw.below(8);
    return kind < 2    ? Layout::packed
           : kind == 2 ? Layout::padded
           : kind == 3 ? static_cast<Layout>(draw.below(disjointLayouts))
           : kind < 7  ? Layout::nested
                       : other;
}

// No more objects, and no larger ones, than a plain loop works in a moment.
void limitWork(const Member &member, Setting &s)
{
    if (member.isSquare())
        s.height = s.width;
    if (member.isTall() && s.height < s.width)
        std::swap(s.width, s.height);
    if (member.hasFixedSize())
        s.width = s.height = 3;
    const bool isByMinors = member.isOf({"Invert"});
    while (isByMinors && s.width > 10 && !oracle::isUnrolled(s.width))
        s.width = s.height = s.width / 2;
    const int longest = std::max(s.width, s.height), cube = s.width * longest * longest;
    const int work = !member.isNumerical()       ? (member.isVector() ? s.width : s.width * s.height)
                     : member.isEigen()          ? 6 * cube
                     : isByMinors && longest > 6 ? cube * s.width
                                                 : cube;
    s.count = std::max(1, std::min(s.count, (member.isNumerical() ? 9000 : 2300) / work));
    if (member.isMatrixProduct())
        s.count = std::max(1, std::min(s.count, 9000 / (s.width * s.height * s.inner)));
}

// As many objects as a driver begins at, or one less or more.
void goToLimit(const Member &member, Setting &s, bool isStrided, int beside)
{
    const int limit = isStrided ? member.stridedLimit : member.contiguousLimit;
    const int one = member.estimate(s.width, s.height, 1), two = member.estimate(s.width, s.height, 2);
    if (two > one)
        s.count = std::max(1, (limit - one) / (two - one) + beside);
}

Plan planOf(const Member &member, Random &draw)
{
    Plan plan = {};
    Setting &s = plan.setting;
    s.width = someLength(draw);
    s.height = draw.below(2) ? s.width : someLength(draw);
    s.inner = draw.below(2) ? s.width : someLength(draw);
    s.count = someCount(draw);
    limitWork(member, s);
    const int memory = draw.below(8);
    const bool isSmall = std::max({s.width * s.height, s.width * s.inner, s.height * s.inner}) * s.count <= 1000;
    s.memory = memory < 6 || !isSmall ? Memory::heap : memory == 6 ? Memory::beforePage : Memory::behindPage;
    s.difficult = draw.below(3) == 1;
    s.fine = draw.below(2);
    s.wild = draw.below(4) == 1;
    s.src1 = someLayout(draw, Layout::anyhow);
    s.src2 = draw.below(2) ? s.src1 : someLayout(draw, Layout::anyhow);
    s.dst = draw.below(2) && s.src1 < Layout::overlapping ? s.src1 : someLayout(draw, Layout::overlapping);
    const bool isOverlapping = s.dst == Layout::overlapping;
    if (isOverlapping && !mayOverlap(member, {s.width, s.height}, s.count))
        s.dst = Layout::nested;
    if (s.dst == Layout::overlapping && member.isNumerical()) { // what failures leave is not told there
        s.difficult = false;
        s.src1 = s.src1 == Layout::anyhow ? Layout::nested : s.src1;
    }
    if (member.isEigen() && (s.src2 == Layout::anyhow || s.dst == Layout::overlapping)) // has several results
        s.src2 = s.dst = Layout::nested;
    if (s.dst == Layout::overlapping)
        s.memory = Memory::heap;
    if (draw.below(8) == 1) {
        int number = 0;
        const int chosen = 1 + draw.below(3);
        for (const std::string &token : member.operands)
            if (std::strchr("mtvc", token[0]) && ++number == chosen &&
                mayBeInPlace(member, token, number, {s.width, s.height}) &&
                (!member.isMatrixProduct() || s.inner == s.width)) {
                s.inPlace = number;
                Layout &layout = number == 1 ? s.src1 : s.src2;
                layout = layout == Layout::anyhow ? Layout::nested : layout;
            }
    }
    if (member.isOddAt(s.width, s.height, s.inner))
        s.height = s.inner = s.width;
    plan.threads = draw.below(32) == 31 ? 1 + draw.below(4) : 1;
    plan.isDriven = draw.below(8) == 7 && member.driver && !member.neverDriven;
    const bool isAtLimit = draw.below(1000) == 999;
    const int limitKind = draw.below(6);
    if (isAtLimit && member.driver && s.dst != Layout::overlapping) {
        goToLimit(member, s, limitKind % 2, limitKind / 2);
        s.memory = Memory::heap;
    }
    const unsigned modes[] = {0x1f80, 0x3f80, 0x5f80 | 0x8040, 0x7f80};
    plan.mode = plan.threads == 1 && draw.below(16) == 15 ? modes[draw.below(4)] : modes[0];
    if (member.isEigen() && plan.mode != modes[3]) // open: docs/trust.md tells what differs in the other two
        plan.mode = modes[0];
    plan.defectCount = std::max(0, draw.below(16) - 12);
    for (int k = 0; k < plan.defectCount; ++k)
        plan.defects[k] = {draw.below(1 << 16), draw.below(1 << 16) - (1 << 15)};
    s.values = 1 + draw.below(1 << 16);
    // Where each part of a team begins decides the order of some sums.
    if (member.isMeasure() && member.isVector() && s.width >= 8 && s.width <= 10)
        plan.threads = 1;
    if (s.dst == Layout::overlapping || s.src1 >= Layout::overlapping) // threads write what others do
        plan.threads = s.dst == Layout::overlapping || s.inPlace ? 1 : plan.threads;
    return plan;
}

// The argument lists of defective calls keep the sound operands. Returns the status, kvlOk if nothing is refused.
KvlStatus spoil(const Member &member, const Plan &plan, Args &args)
{
    if (plan.defectCount == 0)
        return kvlOk;
    const Args sound = args;
    const std::vector<Defect> all = defectsOf(member, sound);
    std::vector<Defect> chosen;
    for (int k = 0; k < plan.defectCount; ++k) {
        Defect defect = all[plan.defects[k].which % all.size()];
        const int size = member.elementSize(), value = plan.defects[k].value;
        const bool isStride = defect.check == 'T' || defect.check == 'O';
        if ((isStride && (value <= 0 || value % size)) || (std::strchr("SCH", defect.check) && value < 0))
            defect.value = value;
        const bool isAlone = !(defect.check == 'O' && plan.setting.count == 1 &&
                               member.order.find('O') != std::string::npos); // of one object it is not looked at
        const bool isNew = std::none_of(chosen.begin(), chosen.end(),
                                        [&](const Defect &other) { return other.position == defect.position; });
        if (isAlone && isNew)
            chosen.push_back(defect);
    }
    if (chosen.empty())
        return kvlOk;
    const auto rankOf = [&](const Defect &defect) { return rank(member, sound[defect.position], defect.check); };
    const auto first = std::min_element(chosen.begin(), chosen.end(), [&](const Defect &one, const Defect &other) {
        return rankOf(one) < rankOf(other);
    });
    for (const Defect &defect : chosen)
        apply(defect, args);
    return statusOf(first->check);
}

// The exported kernel behind the member that takes the same arguments, if there is one for these.
Function kernelOf(const Member &member, bool isAdjacent)
{
    std::string name = "own" + member.name;
    if (member.description == 'S')
        name += "_S2";
    else if (member.description == 'L')
        name += "S2";
    Function kernel = member.call;
    kernel.address = member.description != 'P' && isAdjacent
                         ? nullptr
                         : reinterpret_cast<void (*)()>(dlsym(RTLD_DEFAULT, name.c_str()));
    return kernel;
}

template <class T>
void runMember(const Member &member, const Plan &plan, Random &draw, Call &call)
{
    const Setting &s = plan.setting;
    const unsigned savedMode = _mm_getcsr();
    _mm_setcsr(plan.mode);
    Problem<T> problem(member, s, s.values, draw);
    call.what = problem.name() + (plan.mode == 0x1f80 ? "" : " MXCSR " + std::to_string(plan.mode));
    Args args = problem.args;
    Function function = plan.isDriven ? member.driver : member.call;
    if (!plan.isDriven && s.values % 8 == 5 && plan.threads == 1)
        if (const Function kernel = kernelOf(member, problem.isAdjacent())) {
            function = kernel;
            call.isKernel = true;
        }
    const KvlStatus refusal = plan.isDriven || call.isKernel ? kvlOk : spoil(member, plan, args);
    call.isDefective = refusal != kvlOk;
    call.isDriven = plan.isDriven;
    call.threads = plan.threads;
    const bool isMeasured = s.values % 64 == 0;
    if (plan.threads > 1)
        kvlSetNumThreads(plan.threads);
    const unsigned long heapBefore = heapCalls;
    const KvlStatus status = isMeasured ? callPainted(function, args, call.stackBytes) : function(args);
    const unsigned long heapAfter = heapCalls;
    const unsigned mode = _mm_getcsr();
    if (plan.threads > 1)
        kvlSetNumThreads(1);

    // Whether a driver was called or, between the limits and with an inner size that the estimates do not know, may
    // have been.
    const int count = member.isArray() ? s.count : 1;
    const bool isEstimated = member.driver && (!member.isMatrixProduct() || s.inner == innerOf(s.width, s.height));
    const int estimate = isEstimated ? member.estimate(s.width, s.height, count) : 0;
    const bool isDriven =
        plan.isDriven || (isEstimated && estimate >= std::max(member.contiguousLimit, member.stridedLimit));
    const bool mayBeDriven = isDriven || (member.driver && !isEstimated) ||
                             (isEstimated && estimate >= std::min(member.contiguousLimit, member.stridedLimit));
    const bool isTeam = mayBeDriven && !member.neverDriven && count >= plan.threads;
    if (call.isDefective)
        call.wrong = status == refusal ? problem.verdict(kvlOk, 0, 0)
                                       : "status " + std::to_string(status) + ", expected " + std::to_string(refusal);
    else if (!isTeam || isDriven || plan.threads == 1 || !member.isNumerical())
        call.wrong = problem.verdict(status, 0, count, isTeam ? plan.threads : 1);
    _mm_setcsr(savedMode);
    if (call.wrong.empty() && (mode ^ plan.mode) & ~0x3fu)
        call.wrong = "MXCSR was changed";
    if (call.wrong.empty() && heapAfter != heapBefore && !mayBeDriven)
        call.wrong = "the heap was used";
}

} // namespace

int functionCount()
{
    return static_cast<int>(members().size() + std::size(others));
}

std::string functionName(int function)
{
    const int rows = static_cast<int>(members().size());
    return function < rows ? members()[function].name : others[function - rows].name;
}

Call callOf(const unsigned char *bytes, std::size_t size, void (*beforeCall)(int))
{
    Random draw(bytes, size);
    Call call;
    const int rows = static_cast<int>(members().size());
    call.function = draw.below(functionCount());
    if (beforeCall)
        beforeCall(call.function);
    if (call.function >= rows)
        call.wrong = wrongOf(others[call.function - rows], draw);
    else {
        const Member &member = members()[call.function];
        const Plan plan = planOf(member, draw);
        withType(member, [&](auto zero) { runMember<decltype(zero)>(member, plan, draw, call); });
    }
    return call;
}

} // namespace fuzz
