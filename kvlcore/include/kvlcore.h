/**
 * @file kvlcore.h
 * The core library: what the libraries of the kvl family share, the team size and the size of the cache.
 */
#ifndef KVLCORE_H
#define KVLCORE_H

#if defined(__GNUC__)
#define KVLCORE_API __attribute__((visibility("default")))
#else
#define KVLCORE_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * The number of threads that a batch may use; 1 or less means the caller's thread alone. It starts at 1: a call made
 * inside a parallel region must not lose objects unless its program asked for teams. Plain memory without any
 * synchronisation, read twice in a call: set it before the calls that it is meant for, and never during one.
 */
extern KVLCORE_API int threads_omp_of_n_kvl;

/** Sets threads_omp_of_n_kvl. */
KVLCORE_API void kvlSetNumThreads(int n);

/** Stores the size in bytes of this processor's largest cache, 0 where it is unknown. Returns 0. */
KVLCORE_API int kvlGetMaxCacheSizeB(int *size);

#ifdef __cplusplus
}
#endif

#endif
