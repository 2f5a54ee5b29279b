// Many at once: callers, gigabytes, objects.
#include "problem.h"

#include "kvlcore.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <climits>
#include <functional>
#include <future>
#include <thread>

namespace {

// A call with operands of its own, which may be made again, and what is wrong after it.
struct Caller {
    std::function<KvlStatus()> call;
    std::function<std::string(KvlStatus)> verdict;
    KvlStatus status = kvlOk;
    std::string wrong;
};

Caller callerOf(const Member &member, const Setting &setting, std::uint64_t seed)
{
    Caller caller;
    withType(member, [&](auto zero) {
        const auto problem = std::make_shared<Problem<decltype(zero)>>(member, setting, seed);
        const int count = member.isArray() ? setting.count : 1;
        caller.call = [&member, problem] { return member.call(problem->args); };
        caller.verdict = [problem, count](KvlStatus status) { return problem->verdict(status, 0, count); };
    });
    return caller;
}

// All of them at the same time, each several times.
void callTogether(std::vector<Caller> &callers, int turns)
{
    if (sizeof(void *) == 4) { // a thousand stacks of the usual size are more than the address space
        pthread_attr_t small;
        pthread_attr_init(&small);
        pthread_attr_setstacksize(&small, 1 << 18);
        pthread_setattr_default_np(&small);
    }
    std::promise<void> start;
    const std::shared_future<void> started = start.get_future().share();
    std::vector<std::thread> threads;
    for (Caller &caller : callers)
        threads.emplace_back([&caller, started, turns] {
            started.wait();
            for (int turn = 0; turn < turns; ++turn)
                caller.status = caller.call();
        });
    start.set_value();
    for (std::thread &thread : threads)
        thread.join();
    for (Caller &caller : callers)
        EXPECT_EQ(caller.verdict(caller.status), "");
}

#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr int threadsAtOnce = 100, turns = 3;
#else
constexpr int threadsAtOnce = 1000, turns = 20;
#endif

class Callers : public testing::Test {
protected:
    // The first thread that the runtime sees has to outlive all others: libomp 14 tells its tools of that one.
    static void SetUpTestSuite()
    {
        const auto driven =
            std::find_if(members().begin(), members().end(), [](const Member &member) { return member.driver; });
        if (driven == members().end())
            return;
        withType(*driven, [&](auto zero) {
            driven->driver(
                Problem<decltype(zero)>(*driven, {3, 3, 2, Layout::packed, Layout::packed, Layout::packed}, 1).args);
        });
    }
};

// One for each member, if there are enough, and some more.
TEST_F(Callers, AThousandAtOnce)
{
    std::vector<Caller> callers;
    for (int k = 0; k < threadsAtOnce; ++k) {
        const int order = 3 + k % 5;
        const Layout layout = k % 2 ? Layout::packed : Layout::strided;
        callers.push_back(callerOf(members()[7 * k % members().size()], {order, order, 9, layout, layout, layout}, k));
    }
    callTogether(callers, turns);
}

TEST_F(Callers, TeamsAtOnce)
{
    std::vector<Caller> callers;
    for (const Member &member : members())
        if (member.driver && callers.size() < 40) {
            int count = 10;
            while (member.estimate(3, 3, count) < member.contiguousLimit)
                count += 10;
            callers.push_back(callerOf(member, {3, 3, count, Layout::packed, Layout::packed, Layout::packed}, count));
        }
    kvlSetNumThreads(2);
    callTogether(callers, 5);
    kvlSetNumThreads(1);
}

#if defined(__x86_64__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// Address space without memory of its own yet.
unsigned char *reserve(std::size_t bytes)
{
    void *const map = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return map == MAP_FAILED ? nullptr : static_cast<unsigned char *>(map);
}

// The same call with the objects of strided operands and of tables a gigabyte apart.
template <class T>
std::string wrongOfFar(const Member &member, const Function &function, const Setting &setting, unsigned char *far)
{
    constexpr int stride = 1 << 30, region = 1 << 16;
    Problem<T> problem(member, setting, 1);
    Args args = problem.args;
    std::vector<std::vector<const unsigned char *>> tables;
    struct Element {
        unsigned char *here, *there;
    };
    std::vector<Element> elements;
    for (std::size_t k = 1; k < args.size(); ++k) {
        if (args[k].check != 'O')
            continue;
        Arg &first = args[args[k - 1].check == 'H' ? k - 2 : k - 1];
        for (const auto &operand : problem.allOperands()) {
            if (operand->argument() != first.pointer)
                continue;
            const std::vector<int> &places = operand->places();
            const std::size_t perObject = places.size() / setting.count;
            for (std::size_t e = 0; e < places.size(); ++e)
                elements.push_back(
                    {operand->data() + places[e], far + places[e % perObject] + e / perObject * std::size_t(stride)});
            first.pointer = far;
            if (first.table) {
                const auto *entries = static_cast<const unsigned char *const *>(operand->argument());
                tables.emplace_back(entries, entries + perObject);
                for (const unsigned char *&entry : tables.back())
                    entry = far + (entry - operand->data());
                first.pointer = tables.back().data();
            }
            args[k].number = stride;
            far += region;
            break;
        }
    }
    for (const Element &element : elements)
        std::memcpy(element.there, element.here, sizeof(T));
    running() = problem.name() + " with far objects";
    const KvlStatus status = function(args);
    for (const Element &element : elements)
        std::memcpy(element.here, element.there, sizeof(T));
    return problem.verdict(status, 0, setting.count);
}

TEST(Large, ObjectsAGigabyteApart)
{
    constexpr int count = 9;
    unsigned char *const far = reserve(std::size_t(count) << 30);
    ASSERT_NE(far, nullptr);
    for (const Member &member : members())
        for (int order = 3; order <= 7 && member.isArray(); ++order)
            for (Layout layout : {Layout::packed, Layout::strided})
                for (int threads : {0, 3}) { // 3 by the driver, whose last chunk begins 6 gigabytes behind the first
                    const Size size = member.hasFixedSize() ? Size{3, 3} : Size{order, order};
                    if (threads && (!member.driver || member.neverDriven))
                        continue;
                    kvlSetNumThreads(std::max(1, threads));
                    const Setting setting = {size.width, size.height, count, layout, layout, layout};
                    withType(member, [&](auto zero) {
                        EXPECT_EQ(
                            wrongOfFar<decltype(zero)>(member, threads ? member.driver : member.call, setting, far),
                            "");
                    });
                }
    kvlSetNumThreads(1);
    munmap(far, std::size_t(count) << 30);
}

// Address space in which every piece of so many elements is the same memory; from the middle piece on it is another
// one, and the middle piece has its own, so that two threads that share the whole write different bytes.
template <class T>
class Repeated {
public:
    Repeated(std::size_t pieces, std::size_t piece) : bytes(pieces * piece * sizeof(T)), space(reserve(bytes))
    {
        const std::size_t size = piece * sizeof(T);
        const int file = memfd_create("repeated", 0);
        require(space && file >= 0 && ftruncate(file, static_cast<off_t>(3 * size)) == 0, "memory for three pieces");
        for (std::size_t k = 0; k < pieces; ++k) {
            const std::size_t which = (k >= pieces / 2) + (k > pieces / 2);
            require(mmap(space + k * size, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file,
                         static_cast<off_t>(which * size)) != MAP_FAILED,
                    "one more piece");
        }
        close(file);
    }
    ~Repeated() { munmap(space, bytes); }
    T *data() const { return reinterpret_cast<T *>(space); }

private:
    std::size_t bytes;
    unsigned char *space;
};

// In place, so that each element tells how many of the objects that share it were worked.
TEST(Large, AsManyObjectsAsAnIntCounts)
{
    constexpr int pieces = 512, piece = 1 << 22; // but one element less than they have
    for (const Member &member : members())
        for (int threads = 1; threads <= 2 && member.name == "kvlmAdd_vac_32f"; ++threads) {
            const Repeated<float> memory(pieces, piece);
            float *const x = memory.data(), *const middle = x + std::size_t(pieces / 2) * piece;
            const Arg stride = Arg::integer('T', sizeof(float));
            kvlSetNumThreads(threads);
            EXPECT_EQ(call(member.driver, x, stride, stride, 1., x, stride, stride, 1, INT_MAX), kvlOk);
            for (int k = 0; k < piece; ++k) {
                const bool isLast = k == piece - 1;
                ASSERT_EQ(x[k], pieces / 2) << k;
                ASSERT_EQ(middle[k], 1) << k;
                ASSERT_EQ(middle[piece + k], pieces / 2 - 1 - isLast) << k;
            }
        }
    kvlSetNumThreads(1);
}

// Rows with gaps, of objects over six gigabytes.
TEST(Large, ObjectsOneByOne)
{
    constexpr int pieces = 256, objects = 1 << 19, object = 12, count = pieces * objects - 1;
    const Repeated<float> memory(pieces, objects * object);
    float *const x = memory.data(), *const last = x + std::size_t(pieces - 1) * objects * object;
    const std::vector<float> ones(9, 1);
    EXPECT_EQ(kvlmAdd_mam_32f(x, 48, 16, 4, ones.data(), 12, 4, x, 48, 16, 4, 3, 3, count), kvlOk);
    for (int k = 0; k < objects * object; ++k) {
        const bool isElement = k % 4 < 3, isLast = k >= (objects - 1) * object;
        ASSERT_EQ(x[k], isElement * (pieces / 2)) << k;
        ASSERT_EQ(last[k], isElement * (pieces / 2 - 1 - isLast)) << k;
    }
}

TEST(Large, LongestVectors)
{
    constexpr int pieces = 1 << 10, piece = 1 << 21;
    const Repeated<double> memory(pieces, piece);
    double *const x = memory.data(), *const middle = x + std::size_t(pieces / 2) * piece;
    for (double *one : {x, middle, middle + piece})
        std::fill_n(one, piece, 1);
    double sum = 0;
    EXPECT_EQ(kvlmDotProduct_vv_64f(x, 8, x, 8, &sum, INT_MAX), kvlOk);
    EXPECT_EQ(sum, INT_MAX);
}
#endif

} // namespace
