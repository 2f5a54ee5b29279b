// The checks of the arguments, by class, and the orders in which the public functions make them.
#ifndef KVLM_FRAME_CHECKS_H
#define KVLM_FRAME_CHECKS_H

#include "frame/operand.h"

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
    else if constexpr (Class == 'M')
        return (parts.matchFault() || ...) ? kvlErrSizeMatch : kvlOk;
    else if constexpr (Class == 'T')
        return (parts.strides() | ...).fault() ? kvlErrStride : kvlOk;
    else if constexpr (Class == 'H')
        return (parts.shifts() | ...).fault() ? kvlErrShift : kvlOk;
    else if constexpr (Class == 't')
        return ((parts.isSource ? parts.strides() : Bits()) | ...).fault() ? kvlErrStride : kvlOk;
    else if constexpr (Class == 'i')
        return (parts.innerStrides() | ...).fault() ? kvlErrStride : kvlOk;
    else if constexpr (Class == 'o')
        return (parts.moreThanOne() || ...) && (parts.objectStrides() | ...).fault() ? kvlErrStride : kvlOk;
    else {
        static_assert(Class == 'h');
        return ((parts.isSource ? parts.shifts() : Bits()) | ...).fault() ? kvlErrShift : kvlOk;
    }
}

// An order of classes: N null pointers, C count, S sizes, M sizes that must fit, T strides, H shifts; t and h those of
// the sources alone; i the strides inside objects, o the object strides, which a single object does not need. A class
// that finds nothing to check in a call (shifts in the standard description, count with one object) passes, so one
// order serves several descriptions.
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

using NCSTH = Order<'N', 'C', 'S', 'T', 'H'>;
using NCST = Order<'N', 'C', 'S', 'T'>;
using NCTS = Order<'N', 'C', 'T', 'S'>;
using NSTC = Order<'N', 'S', 'T', 'C'>;
using NSTCH = Order<'N', 'S', 'T', 'C', 'H'>;
using NSTHC = Order<'N', 'S', 'T', 'H', 'C'>;
using NTHSC = Order<'N', 'T', 'H', 'S', 'C'>;
using NCSMTH = Order<'N', 'C', 'S', 'M', 'T', 'H'>;
using NCSTHM = Order<'N', 'C', 'S', 'T', 'H', 'M'>;
using NSCHT = Order<'N', 'S', 'C', 'H', 'T'>;
using NSChtHT = Order<'N', 'S', 'C', 'h', 't', 'H', 'T'>;
using SNH = Order<'S', 'N', 'H'>;
using NSCiHo = Order<'N', 'S', 'C', 'i', 'H', 'o'>;
using NSCHio = Order<'N', 'S', 'C', 'H', 'i', 'o'>;
using NSHCo = Order<'N', 'S', 'H', 'C', 'o'>;

// The orders of a member in the three descriptions.
template <class StandardOrder, class PointerOrder = StandardOrder, class ListOrder = PointerOrder>
struct Orders {
    using Standard = StandardOrder;
    using Pointer = PointerOrder;
    using List = ListOrder;
};

// Every order that a family has. All but the first two are settled departures from the usual one.
using UsualOrder = Orders<NCSTH>;
using MatchAfterSizes = Orders<NCSMTH>;                // products, Gaxpy
using StridesBeforeSizes = Orders<NCTS, NCSTH>;        // mam, mma of add and subtract
using CountAfterStrides = Orders<NSTC, NSTCH, NSTHC>;  // vav of add, subtract and cross product
using SizesLastInList = Orders<NCSTH, NCSTH, NTHSC>;   // mva of the Cholesky solver
using ShiftsUnchecked = Orders<NCSTH, NCST, NCSTH>;    // vca of add at 64f, cav of subtract at 32f
using MatchLast = Orders<NCSTHM>;                      // QR
using SizesBeforeCount = Orders<NSCHT>;                // eigenvalues, symmetric eigenvectors, extract
using SourceBeforeResult = Orders<NSCHT, NSChtHT>;     // eigenvectors of general matrices
using SizesBeforePointers = Orders<NSCHT, SNH, NSCHT>; // extract from single objects, v in 32f apart

using ObjectStridesLast = Orders<NSCiHo>;               // copy, identity
using CountAfterShifts = Orders<NSCiHo, NSHCo, NSCiHo>; // identity in 32f

} // namespace kvlm

#endif
