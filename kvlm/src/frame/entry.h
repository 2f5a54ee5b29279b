// The public tier: checks, then the choice between the driver and a kernel.
#ifndef KVLM_FRAME_ENTRY_H
#define KVLM_FRAME_ENTRY_H

#include "frame/checks.h"

namespace kvlm {

// The most work that a call keeps on the caller's thread, by the kernel that it would take.
struct Limits {
    int plain, strided, pointer, list, listStrided;
};

// The limits of a family whose driver begins at these amounts, for families that say "at least".
constexpr Limits beginsAt(int plain, int strided, int pointer, int list, int listStrided)
{
    return {plain - 1, strided - 1, pointer - 1, list - 1, listStrided - 1};
}

// Settled, in several families: lists of objects with adjacent elements have a limit of their own at 32f.
template <class T>
constexpr Limits listApartLimits = {20000, 20000, 20000, sizeof(T) == 4 ? 40000 : 20000, 20000};

// The ways on are calls that need no more arguments: of the kernels, of the driver.

// One object, or an array without a driver: no estimate.
template <class Order, class Plain, class General, class... Parts>
KVLM_INLINE KvlStatus enterObject(Plain plain, General general, const Parts &...parts)
{
    if (const KvlStatus status = Order::check(parts...))
        return status;
    return (parts.adjacent() && ...) ? plain() : general();
}

template <class Order, class Kernel, class... Parts>
KVLM_INLINE KvlStatus enterObjectOneKernel(Kernel kernel, const Parts &...parts)
{
    if (const KvlStatus status = Order::check(parts...))
        return status;
    return kernel();
}

// An array in the standard or the list description. `work` may be computed from unchecked sizes: it wraps.
template <class Order, class Driver, class Plain, class General, class... Parts>
KVLM_INLINE KvlStatus enterBatch(int work, int plainLimit, int generalLimit, Driver driver, Plain plain,
                                 General general, const Parts &...parts)
{
    if (const KvlStatus status = Order::check(parts...))
        return status;
    const bool adjacent = (parts.adjacent() && ...);
    if (work > (adjacent ? plainLimit : generalLimit))
        return driver();
    return adjacent ? plain() : general();
}

template <class Order, class Driver, class Kernel, class... Parts>
KVLM_INLINE KvlStatus enterBatchOneKernel(int work, int limit, Driver driver, Kernel kernel, const Parts &...parts)
{
    if (const KvlStatus status = Order::check(parts...))
        return status;
    return work > limit ? driver() : kernel();
}

} // namespace kvlm

#endif
