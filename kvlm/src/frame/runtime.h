// The entry points of the OpenMP runtime that the drivers call.
#ifndef KVLM_FRAME_RUNTIME_H
#define KVLM_FRAME_RUNTIME_H

#include <stddef.h>

extern "C" {

// What the runtime is told of the place of a call.
struct KmpIdent {
    int reserved1;
    int flags;
    int reserved2;
    int reserved3;
    const char *place;
};

typedef int KmpCriticalName[8];
typedef void (*KmpMicrotask)(int *gtid, int *btid, ...);

int __kmpc_global_thread_num(const KmpIdent *);
int __kmpc_ok_to_fork(const KmpIdent *);
void __kmpc_push_num_threads(const KmpIdent *, int gtid, int threads);
void __kmpc_fork_call(const KmpIdent *, int argumentCount, KmpMicrotask, ...);
void __kmpc_serialized_parallel(const KmpIdent *, int gtid);
void __kmpc_end_serialized_parallel(const KmpIdent *, int gtid);
void __kmpc_critical(const KmpIdent *, int gtid, KmpCriticalName *);
void __kmpc_end_critical(const KmpIdent *, int gtid, KmpCriticalName *);
int omp_get_thread_num_(void);
void *kmpc_malloc(size_t);
void kmpc_free(void *);
}

#endif
