// The checks of the arguments, by class, and the orders in which the public functions make them.
#ifndef KVLM_CHECKS_H
#define KVLM_CHECKS_H

#include "kvlm_operand.h"

namespace kvlm {

// One class of checks over all parts of a call. Within a class the order does not show.
template <char Class, class... Parts>
KVLM_INLINE KvlStatus checkClass(const Parts &...parts)
{
    if constexpr (Class == 'N')
        return (parts.null() || ...) ? kvlErrNullPointer : kvlOk;
    else if constexpr (Class == 'C')
        return (parts.countFault() || ...) ? kvlErrCount : kvlOk;
    else if constexpr (Class == 'S')
        return (parts.sizeFault() || ...) ? kvlErrSize : kvlOk;
    else if constexpr (Class == 'T')
        return (parts.strides() | ...).fault() ? kvlErrStride : kvlOk;
    else {
        static_assert(Class == 'H');
        return (parts.shifts() | ...).fault() ? kvlErrShift : kvlOk;
    }
}

// An order of classes: N null pointers, C count, S sizes, T strides, H shifts. A class that finds nothing to check in a
// call (shifts in the standard description, count with one object) passes, so one order serves several descriptions.
template <char... Classes>
struct Order {
    template <class... Parts>
    static KVLM_INLINE KvlStatus check(const Parts &...parts)
    {
        KvlStatus status = kvlOk;
        (void)((status = checkClass<Classes>(parts...)) || ...);
        return status;
    }
};

// The orders of a member in the three descriptions.
template <class StandardOrder, class PointerOrder = StandardOrder, class ListOrder = PointerOrder>
struct Orders {
    using Standard = StandardOrder;
    using Pointer = PointerOrder;
    using List = ListOrder;
};

using NCSTH = Order<'N', 'C', 'S', 'T', 'H'>;
using NCTS = Order<'N', 'C', 'T', 'S'>;

using UsualOrder = Orders<NCSTH>;

} // namespace kvlm

#endif
