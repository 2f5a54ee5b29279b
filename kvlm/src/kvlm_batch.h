// The driver tier: the objects of a batch spread over a team of threads.
#ifndef KVLM_BATCH_H
#define KVLM_BATCH_H

#include "kvlm_operand.h"

namespace kvlm {

// A call of one kernel that can be made for any run of its objects, with scratch for one thread or with none (null: the
// caller's own buffer serves).
struct Batch {
    int count;
    size_t scratchBytes;
    bool (*fits)(const Batch &, int first);
    KvlStatus (*run)(const Batch &, int first, int count, void *scratch);
};

// Runs the batch on a team of threads_omp_of_n_kvl, or whole on the caller's thread if that or `count` is too small.
KvlStatus runBatch(const Batch &batch);

template <bool PlainKernel, class Kernel, class... Parts>
struct KernelBatch : Batch {
    Kernel *kernel;
    std::tuple<Parts...> parts;

    KernelBatch(int count, Kernel *kernel, const Parts &...parts)
        : Batch{count, (parts.scratchBytes() + ... + 0), fitsFrom, runChunk}, kernel(kernel), parts(parts...)
    {
    }

    static bool fitsFrom(const Batch &batch, int first)
    {
        return std::apply([&](const Parts &...part) KVLM_INLINED { return (part.fits(first) && ...); },
                          static_cast<const KernelBatch &>(batch).parts);
    }

    static KvlStatus runChunk(const Batch &batch, int first, int chunk, void *scratch)
    {
        const KernelBatch &self = static_cast<const KernelBatch &>(batch);
        return std::apply(
            [&](const Parts &...part) KVLM_INLINED {
                if constexpr (PlainKernel)
                    return callPlain(self.kernel, part.from(first, chunk, scratch)...);
                else
                    return callWithAll(self.kernel, part.from(first, chunk, scratch)...);
            },
            self.parts);
    }
};

// A driver with two kernels, for adjacent elements and for any.
template <class Plain, class General, class... Parts>
inline KvlStatus drive(int count, Plain *plain, General *general, const Parts &...parts)
{
    if ((parts.adjacent() && ...))
        return runBatch(KernelBatch<true, Plain, Parts...>(count, plain, parts...));
    return runBatch(KernelBatch<false, General, Parts...>(count, general, parts...));
}

// A driver with one kernel.
template <class Kernel, class... Parts>
inline KvlStatus driveOneKernel(int count, Kernel *kernel, const Parts &...parts)
{
    return runBatch(KernelBatch<false, Kernel, Parts...>(count, kernel, parts...));
}

} // namespace kvlm

#endif
