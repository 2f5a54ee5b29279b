// The core library: the team size and the size of the largest cache.
#include "kvlcore.h"

#include <limits.h>
#include <unistd.h>

extern "C" {

int threads_omp_of_n_kvl = 1;

void kvlSetNumThreads(int n)
{
    threads_omp_of_n_kvl = n;
}

int kvlGetMaxCacheSizeB(int *size)
{
    long largest = 0;
    const int names[] = {_SC_LEVEL1_DCACHE_SIZE, _SC_LEVEL2_CACHE_SIZE, _SC_LEVEL3_CACHE_SIZE, _SC_LEVEL4_CACHE_SIZE};
    for (int name : names) {
        const long bytes = sysconf(name);
        if (bytes > largest && bytes <= INT_MAX)
            largest = bytes;
    }
    *size = static_cast<int>(largest);
    return 0;
}
}
