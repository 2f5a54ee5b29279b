// The one machine behind all drivers: it splits a batch, forks the team, and collects one status.
#include "frame/batch.h"

#include "frame/runtime.h"
#include "kvlcore.h"

namespace {

using kvlm::Batch;

constexpr int kmpcIdent = 2; // KMP_IDENT_KMPC: the call comes from a compiler's entry points
const KmpIdent place = {0, kmpcIdent, 0, 0, ";libkvlmw7;driver;0;0;;"};

// The only lock of the library, and its only writable data.
KmpCriticalName ___kmpc_global_lock;

// A batch on its way to a team.
struct Team {
    const Batch &batch;
    int quotient, rest;
    char *scratch;
    KvlStatus status;
};

// One plain load at each call, whatever the compiler knows of an earlier one.
int teamSize()
{
    return *const_cast<volatile int *>(&threads_omp_of_n_kvl);
}

int firstOf(const Team &team, int thread)
{
    return team.quotient * thread + (thread < team.rest ? thread : team.rest);
}

// The first non-zero status to arrive stays; the others are dropped.
void region(int *gtid, int *, Team *team)
{
    const int thread = omp_get_thread_num_();
    const int chunk = team->quotient + (thread < team->rest);
    const size_t piece = team->batch.scratchBytes;
    void *scratch = piece ? team->scratch + thread * piece : nullptr;
    const KvlStatus status = team->batch.call(firstOf(*team, thread), chunk, scratch);

    __kmpc_critical(&place, *gtid, &___kmpc_global_lock);
    if (team->status == kvlOk)
        team->status = status;
    __kmpc_end_critical(&place, *gtid, &___kmpc_global_lock);
}

} // namespace

// Settled: a team that turns out smaller than `threads`, or a refused fork, leaves the chunks of the missing threads
// undone and unreported, and the size of the team is read again after the batch was split.
KvlStatus kvlm::runBatch(const Batch &batch)
{
    int gtid = __kmpc_global_thread_num(&place);
    const int threads = teamSize();
    if (threads <= 1 || batch.count < threads)
        return batch.call(0, batch.count, nullptr);

    Team team = {batch, batch.count / threads, batch.count % threads, nullptr, kvlOk};
    if (firstOf(team, threads - 1) > batch.lastStart)
        return batch.call(0, batch.count, nullptr);
    if (batch.scratchBytes)
        team.scratch = static_cast<char *>(kmpc_malloc(threads * batch.scratchBytes));

    if (__kmpc_ok_to_fork(&place)) {
        __kmpc_push_num_threads(&place, gtid, teamSize());
        __kmpc_fork_call(&place, 1, reinterpret_cast<KmpMicrotask>(region), &team);
    } else {
        int btid = 0;
        __kmpc_serialized_parallel(&place, gtid);
        region(&gtid, &btid, &team);
        __kmpc_end_serialized_parallel(&place, gtid);
    }

    if (batch.scratchBytes)
        kmpc_free(team.scratch);
    return team.status;
}
