// The driver machine alone, with what no member on matrices needs: scratch of each thread, runs of results, failing
// kernels.
#include "fake_runtime.h"

#include "frame/rows.h"

#include "kvlcore.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace kvlm;

// A family of every kind of part: an array, a pivot table, a buffer, scalar results.
#define TOY(X, D, T)                                                                                                   \
    X##_MA_##D(const T, src), X##_PER_OBJECT(int, pivot, widthHeight),                                                 \
        X##_BUFFER(T, buffer, unsigned(widthHeight) * (widthHeight + 1u)), X##_PER_OBJECT(T, dst, 1),                  \
        X##_LENGTH(widthHeight), X##_COUNT

struct Call {
    const double *src;
    int *pivot;
    double *buffer, *dst;
    int count;
};
std::vector<Call> calls;
std::vector<KvlStatus> statuses; // of the calls to come, kvlOk where there are no more

KvlStatus toyKernel(TOY(ARG, U, double))
{
    EXPECT_EQ(srcObjStride, 72);
    EXPECT_EQ(srcRowStride, 24);
    EXPECT_EQ(widthHeight, 3);
    calls.push_back({src, pivot, buffer, dst, count});
    return calls.size() <= statuses.size() ? statuses[calls.size() - 1] : kvlOk;
}

KvlStatus toyStrided(TOY(ARG, S, double))
{
    EXPECT_EQ(srcElemStride, 16);
    return toyKernel(src, srcObjStride, srcRowStride, pivot, buffer, dst, widthHeight, count);
}

KvlStatus toyDriver(TOY(ARG, S, double))
{
    return drive(count, CALL_CHUNK(toyKernel, TOY, U, double), CALL_CHUNK(toyStrided, TOY, S, double),
                 TOY(PART, S, double));
}

class Frame : public testing::Test {
protected:
    // Ten objects; the operands are never looked into.
    KvlStatus run(int threads, int elemStride = 8)
    {
        calls.clear();
        kvlSetNumThreads(threads);
        const KvlStatus status = toyDriver(src, 72, 24, elemStride, pivot, buffer, dst, 3, 10);
        kvlSetNumThreads(1);
        return status;
    }
    void SetUp() override
    {
        resetFakeRuntime();
        statuses.clear();
    }
    // This program's copy of the machine has a lock of its own.
    Frame() { fakeRuntime().lock = nullptr; }
    ~Frame() override { fakeRuntime().lock = nullptr; }

    double src[90], buffer[12], dst[10];
    int pivot[30];
};

TEST_F(Frame, EachThreadHasItsPieceOfScratchAndItsRuns)
{
    for (int elemStride : {8, 16}) {
        resetFakeRuntime();
        EXPECT_EQ(run(4, elemStride), kvlOk);
        EXPECT_EQ(fakeRuntime().trace, "gtid malloc384 ok? push4 fork[ t0 lock unlock t1 lock unlock t2 lock unlock "
                                       "t3 lock unlock ] free");
        const int first[] = {0, 3, 6, 8}, count[] = {3, 3, 2, 2};
        ASSERT_EQ(calls.size(), 4u);
        for (int t = 0; t < 4; ++t) {
            EXPECT_EQ(calls[t].src, src + 9 * first[t]);
            EXPECT_EQ(calls[t].pivot, pivot + 3 * first[t]);
            EXPECT_EQ(calls[t].dst, dst + first[t]);
            EXPECT_EQ(calls[t].count, count[t]);
            EXPECT_EQ(calls[t].buffer, calls[0].buffer + 12 * t);
            EXPECT_NE(calls[t].buffer, buffer);
        }
    }
}

TEST_F(Frame, TheCallersBufferServesOneThread)
{
    EXPECT_EQ(run(1), kvlOk);
    EXPECT_EQ(run(11), kvlOk);
    EXPECT_EQ(fakeRuntime().trace, "gtid gtid");
    EXPECT_EQ(calls[0].buffer, buffer);
    EXPECT_EQ(calls[0].count, 10);
}

TEST_F(Frame, ARefusedForkFreesItsScratch)
{
    fakeRuntime().allowsFork = false;
    EXPECT_EQ(run(2), kvlOk);
    EXPECT_EQ(fakeRuntime().trace, "gtid malloc192 ok? serial[ t0 lock unlock ] free");
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].count, 5);
    EXPECT_NE(calls[0].buffer, buffer);
}

TEST_F(Frame, TheFirstFailureToArriveIsReported)
{
    statuses = {kvlOk, kvlErrSingular, kvlErrNoConvergence};
    EXPECT_EQ(run(3), kvlErrSingular);
    EXPECT_EQ(calls.size(), 3u);
    statuses = {kvlErrSingular};
    EXPECT_EQ(run(1), kvlErrSingular);
}

// As settled, the split goes by the first reading of the thread count and the team by the second.
TEST_F(Frame, ALargerTeamRunsBeyondTheBatch)
{
    fakeRuntime().onForkQuestion = [] { kvlSetNumThreads(6); };
    EXPECT_EQ(run(4), kvlOk);
    ASSERT_EQ(calls.size(), 6u);
    EXPECT_EQ(calls[5].src, src + 9 * 12);
    EXPECT_EQ(calls[5].count, 2);
}

} // namespace
