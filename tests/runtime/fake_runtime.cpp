// The runtime's entry points, in front of those of the real one.
#include "fake_runtime.h"

#include <cstdarg>
#include <cstdint>
#include <cstdlib>

namespace {

FakeRuntime runtime;
int teamSize = 0;
int threadNumber = 0;
const void *heldLock = nullptr;

void record(const std::string &word)
{
    runtime.trace += (runtime.trace.empty() ? "" : " ") + word;
}

void recordFrom(const std::string &word, int gtid, int expected)
{
    record(gtid == expected ? word : word + "(gtid " + std::to_string(gtid) + ")");
}

} // namespace

FakeRuntime &fakeRuntime()
{
    return runtime;
}

void resetFakeRuntime()
{
    const void *const lock = runtime.lock;
    runtime = FakeRuntime();
    runtime.lock = lock;
    teamSize = threadNumber = 0;
    heldLock = nullptr;
}

// Their declarations are the real runtime's own business.
#pragma GCC diagnostic ignored "-Wmissing-declarations"
#define ENTRY extern "C" __attribute__((visibility("default")))
using Microtask = void (*)(std::int32_t *, std::int32_t *, ...);

ENTRY std::int32_t __kmpc_global_thread_num(void *)
{
    record("gtid");
    return callerGtid;
}

ENTRY std::int32_t __kmpc_ok_to_fork(void *)
{
    record("ok?");
    if (runtime.onForkQuestion)
        runtime.onForkQuestion();
    return runtime.allowsFork;
}

ENTRY void __kmpc_push_num_threads(void *, std::int32_t gtid, std::int32_t threads)
{
    recordFrom("push" + std::to_string(threads), gtid, callerGtid);
    teamSize = threads < runtime.largestTeam ? threads : runtime.largestTeam;
}

ENTRY void __kmpc_fork_call(void *, std::int32_t argc, Microtask region, ...)
{
    va_list arguments;
    va_start(arguments, region);
    void *shared = va_arg(arguments, void *);
    va_end(arguments);
    record(argc == 1 ? "fork[" : "fork(argc " + std::to_string(argc) + ")[");
    for (int k = 0; k < teamSize; ++k) {
        threadNumber = runtime.lastThreadFirst ? teamSize - 1 - k : k;
        std::int32_t gtid = gtidOfThread(threadNumber), btid = threadNumber;
        region(&gtid, &btid, shared);
    }
    threadNumber = 0;
    record("]");
}

ENTRY void __kmpc_serialized_parallel(void *, std::int32_t gtid)
{
    recordFrom("serial[", gtid, callerGtid);
    threadNumber = 0;
}

ENTRY void __kmpc_end_serialized_parallel(void *, std::int32_t gtid)
{
    recordFrom("]", gtid, callerGtid);
}

ENTRY std::int32_t omp_get_thread_num_()
{
    record("t" + std::to_string(threadNumber));
    return threadNumber;
}

ENTRY void __kmpc_critical(void *, std::int32_t gtid, void *lock)
{
    recordFrom("lock", gtid, gtidOfThread(threadNumber));
    if (heldLock)
        record("(already held)");
    if (runtime.lock && lock != runtime.lock)
        record("(another lock)");
    heldLock = runtime.lock = lock;
}

ENTRY void __kmpc_end_critical(void *, std::int32_t gtid, void *lock)
{
    recordFrom("unlock", gtid, gtidOfThread(threadNumber));
    if (lock != heldLock)
        record("(not held)");
    heldLock = nullptr;
}

ENTRY void *kmpc_malloc(std::size_t bytes)
{
    record("malloc" + std::to_string(bytes));
    return std::malloc(bytes);
}

ENTRY void kmpc_free(void *block)
{
    record("free");
    std::free(block);
}
