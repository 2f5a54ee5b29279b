// The driver tier: the objects of a batch spread over a team of threads.
#ifndef KVLM_FRAME_BATCH_H
#define KVLM_FRAME_BATCH_H

#include "frame/operand.h"

namespace kvlm {

// A callable by reference: what it captures is the caller's, as long as the call lasts.
template <class Signature>
class Reference;

template <class Result, class... Args>
class Reference<Result(Args...)> {
public:
    template <class Callable>
    Reference(const Callable &callable) : callable(&callable), invoke(invokeAs<Callable>)
    {
    }
    Result operator()(Args... args) const { return invoke(callable, args...); }

private:
    template <class Callable>
    static Result invokeAs(const void *callable, Args... args)
    {
        return (*static_cast<const Callable *>(callable))(args...);
    }

    const void *callable;
    Result (*invoke)(const void *, Args...);
};

// A call of one kernel that can be made for any chunk of its objects, with scratch for one thread or with none (null:
// the caller's own buffer serves). No chunk may begin behind object `lastStart`.
struct Batch {
    int count, lastStart;
    size_t scratchBytes;
    Reference<KvlStatus(int first, int chunk, void *scratch)> call;
};

// Runs the batch on a team of threads_omp_of_n_kvl, or whole on the caller's thread if that or `count` is too small.
KvlStatus runBatch(const Batch &batch);

// A driver with one kernel.
template <class Kernel, class... Parts>
KVLM_INLINE KvlStatus driveOneKernel(int count, const Kernel &kernel, const Parts &...parts)
{
    int lastStart = INT_MAX;
    ((lastStart = std::min(lastStart, parts.lastStart())), ...);
    return runBatch({count, lastStart, (parts.scratchBytes() + ... + 0), kernel});
}

// A driver with two kernels, for adjacent elements and for any.
template <class Plain, class General, class... Parts>
KVLM_INLINE KvlStatus drive(int count, const Plain &plain, const General &general, const Parts &...parts)
{
    return (parts.adjacent() && ...) ? driveOneKernel(count, plain, parts...)
                                     : driveOneKernel(count, general, parts...);
}

} // namespace kvlm

#endif
