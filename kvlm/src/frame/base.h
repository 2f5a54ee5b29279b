// What every source of the library starts from: the public types, inlining, sizes known to the compiler, addresses.
#ifndef KVLM_FRAME_BASE_H
#define KVLM_FRAME_BASE_H

#include "kvlm.h"

#include <float.h>
#include <stddef.h>
#include <stdint.h>
#include <string.h>
#include <type_traits>
#include <utility>

#define KVLM_INLINE   inline __attribute__((always_inline))
#define KVLM_NOINLINE __attribute__((noinline))      // one copy for all callers
#define KVLM_INLINED  __attribute__((always_inline)) // behind the parameters of a lambda

namespace kvlm {

template <class T>
constexpr T unitRoundoff = sizeof(T) == 4 ? T(FLT_EPSILON) : T(DBL_EPSILON);

template <class T>
constexpr T smallestNormal = sizeof(T) == 4 ? T(FLT_MIN) : T(DBL_MIN);

// A size that the compiler knows: a loop over it unrolls.
template <int N>
struct Fixed {
    constexpr operator int() const { return N; }
};

template <class Size>
constexpr bool isFixed = !std::is_same_v<Size, int>;

// body(0) to body(n - 1): where n is known each index is a type of its own, and nothing of the loop is left.
template <class Body, int... I>
KVLM_INLINE void eachIndex(std::integer_sequence<int, I...>, Body body)
{
    (body(Fixed<I>()), ...);
}

template <int N, class Body>
KVLM_INLINE void eachIndex(Fixed<N>, Body body)
{
    eachIndex(std::make_integer_sequence<int, N>(), body);
}

template <class Body>
KVLM_INLINE void eachIndex(int n, Body body)
{
    for (int i = 0; i < n; ++i)
        body(i);
}

// So many elements are worth a local copy of what says where they lie, or of themselves.
constexpr int smallObject = 36;

KVLM_INLINE constexpr bool isSmall(int width, int height)
{
    return static_cast<int64_t>(width) * height <= smallObject;
}

// small(n) for the orders that are unrolled, general() for all others.
template <class Small, class General>
KVLM_INLINE auto bySmallOrder(int n, Small small, General general)
{
    switch (n) {
    case 3:
        return small(Fixed<3>());
    case 4:
        return small(Fixed<4>());
    case 5:
        return small(Fixed<5>());
    case 6:
        return small(Fixed<6>());
    default:
        return general();
    }
}

// Templates that are compiled once for all members: INSTANCES(linkage, T) declares those of an element type, in the
// family's header with `extern`, in one of its sources without linkage.
#define KVLM_FOR_ELEMENTS(INSTANCES, linkage) INSTANCES(linkage, float) INSTANCES(linkage, double)

// The stride of adjacent elements.
template <class T>
struct Unit {
    constexpr operator int() const { return sizeof(T); }
};

// A stride that an operand does not have: single objects have no objStride, vectors no rowStride.
struct None {
    constexpr operator int() const { return 0; }
};

// Sizes, estimates and offsets wrap at 32 bits. That is settled: unsigned arithmetic does it, int carries it.
KVLM_INLINE constexpr int wrapped(unsigned value)
{
    return static_cast<int>(value);
}

// Offsets in bytes: exact where a pointer has 64 bits, wrapping where it has 32.
using Offset = std::conditional_t<sizeof(void *) == 8, ptrdiff_t, uintptr_t>;

KVLM_INLINE constexpr Offset steps(ptrdiff_t count, ptrdiff_t stride)
{
    return static_cast<Offset>(count) * static_cast<Offset>(stride);
}

template <class T>
KVLM_INLINE T *moved(T *p, Offset bytes)
{
    using Byte = std::conditional_t<std::is_const_v<T>, const char, char>;
    return reinterpret_cast<T *>(reinterpret_cast<Byte *>(p) + bytes);
}

// Elements may lie at any address: no alignment is asked of the caller.
template <class T>
KVLM_INLINE T get(const T *p)
{
    T value;
    memcpy(&value, p, sizeof value);
    return value;
}

template <class T>
KVLM_INLINE void put(T *p, T value)
{
    memcpy(p, &value, sizeof value);
}

} // namespace kvlm

#endif
