/**
 * @file kvlm_status.h
 * Names and texts of the statuses of kvlm.h, for C99 and C++. All of it is inline: there is nothing more to link.
 */
#ifndef KVLM_STATUS_H
#define KVLM_STATUS_H

#include "kvlm.h"

/** The name of a status as kvlm.h has it, "kvlOk" for 0; "unknown" for a value that no function returns. */
static inline const char *kvlmStatusName(KvlStatus status)
{
    switch (status) {
    case kvlOk:
        return "kvlOk";
    case kvlErrSmallPivot:
        return "kvlErrSmallPivot";
    case kvlErrSize:
        return "kvlErrSize";
    case kvlErrNullPointer:
        return "kvlErrNullPointer";
    case kvlErrZeroDivisor:
        return "kvlErrZeroDivisor";
    case kvlErrNotPositiveDefinite:
        return "kvlErrNotPositiveDefinite";
    case kvlErrStride:
        return "kvlErrStride";
    case kvlErrSingular:
        return "kvlErrSingular";
    case kvlErrShift:
        return "kvlErrShift";
    case kvlErrCount:
        return "kvlErrCount";
    case kvlErrSizeMatch:
        return "kvlErrSizeMatch";
    case kvlErrNoConvergence:
        return "kvlErrNoConvergence";
    default:
        return "unknown";
    }
}

/** What a status means, in a sentence without a full stop. The text is constant. */
static inline const char *kvlmStatusText(KvlStatus status)
{
    switch (status) {
    case kvlOk:
        return "success";
    case kvlErrSmallPivot:
        return "the pivot of a complex 2 x 2 block is too small";
    case kvlErrSize:
        return "a size is below 1";
    case kvlErrNullPointer:
        return "a pointer is null";
    case kvlErrZeroDivisor:
        return "a divisor is zero to working precision";
    case kvlErrNotPositiveDefinite:
        return "the matrix is not positive definite";
    case kvlErrStride:
        return "a stride is not a positive multiple of the element size";
    case kvlErrSingular:
        return "the matrix is singular to working precision";
    case kvlErrShift:
        return "a shift is negative or not a multiple of the element size";
    case kvlErrCount:
        return "the number of objects is below 1";
    case kvlErrSizeMatch:
        return "the sizes of the operands do not fit together";
    case kvlErrNoConvergence:
        return "an iteration reached its limit";
    default:
        return "unknown status";
    }
}

#endif
