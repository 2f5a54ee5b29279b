// The number type of several registers: that many times as many objects, one per lane, whose latencies overlap. It pays
// where each object is a long chain of roots, divisions and sums.
#ifndef KVLM_LANES_SEVERAL_H
#define KVLM_LANES_SEVERAL_H

#include "lanes/lanes.h"

namespace kvlm {

template <class T, int Registers>
struct Several {
    Lanes<T> part[Registers];

    template <class PartOf>
    static KVLM_INLINE Several of(PartOf partOf)
    {
        Several x;
#pragma GCC unroll 4
        for (int p = 0; p < Registers; ++p)
            x.part[p] = partOf(p);
        return x;
    }
    static KVLM_INLINE Several all(T x)
    {
        return of([&](int) KVLM_INLINED { return Lanes<T>::all(x); });
    }

    static KVLM_INLINE Several load(const T *x)
    {
        return of([&](int p) KVLM_INLINED { return Lanes<T>::load(x + p * Lanes<T>::count); });
    }

    KVLM_INLINE void store(T *x) const
    {
#pragma GCC unroll 4
        for (int p = 0; p < Registers; ++p)
            part[p].store(x + p * Lanes<T>::count);
    }

    friend KVLM_INLINE Several operator+(const Several &a, const Several &b)
    {
        return of([&](int p) KVLM_INLINED { return a.part[p] + b.part[p]; });
    }
    friend KVLM_INLINE Several operator-(const Several &a, const Several &b)
    {
        return of([&](int p) KVLM_INLINED { return a.part[p] - b.part[p]; });
    }
    friend KVLM_INLINE Several operator*(const Several &a, const Several &b)
    {
        return of([&](int p) KVLM_INLINED { return a.part[p] * b.part[p]; });
    }
    friend KVLM_INLINE Several operator/(const Several &a, const Several &b)
    {
        return of([&](int p) KVLM_INLINED { return a.part[p] / b.part[p]; });
    }
    friend KVLM_INLINE Several operator^(const Several &a, const Several &b)
    {
        return of([&](int p) KVLM_INLINED { return a.part[p] ^ b.part[p]; });
    }
    friend KVLM_INLINE Several operator&(const Several &a, const Several &b)
    {
        return of([&](int p) KVLM_INLINED { return a.part[p] & b.part[p]; });
    }
    friend KVLM_INLINE Several operator|(const Several &a, const Several &b)
    {
        return of([&](int p) KVLM_INLINED { return a.part[p] | b.part[p]; });
    }
    friend KVLM_INLINE Several equal(const Several &a, const Several &b)
    {
        return of([&](int p) KVLM_INLINED { return equal(a.part[p], b.part[p]); });
    }
    friend KVLM_INLINE Several atLeast(const Several &a, const Several &b)
    {
        return of([&](int p) KVLM_INLINED { return atLeast(a.part[p], b.part[p]); });
    }
    friend KVLM_INLINE Several choose(const Several &mask, const Several &x, const Several &y)
    {
        return of([&](int p) KVLM_INLINED { return choose(mask.part[p], x.part[p], y.part[p]); });
    }
    friend KVLM_INLINE Several without(const Several &a, const Several &mask)
    {
        return of([&](int p) KVLM_INLINED { return without(a.part[p], mask.part[p]); });
    }
    friend KVLM_INLINE Several greater(const Several &a, const Several &b)
    {
        return of([&](int p) KVLM_INLINED { return greater(a.part[p], b.part[p]); });
    }
    friend KVLM_INLINE Several notGreater(const Several &a, const Several &b)
    {
        return of([&](int p) KVLM_INLINED { return notGreater(a.part[p], b.part[p]); });
    }
    friend KVLM_INLINE unsigned laneBits(const Several &mask)
    {
        unsigned bits = 0;
#pragma GCC unroll 4
        for (int p = 0; p < Registers; ++p)
            bits |= laneBits(mask.part[p]) << p * Lanes<T>::count;
        return bits;
    }
    friend KVLM_INLINE bool any(const Several &mask)
    {
        Lanes<T> one = mask.part[0];
#pragma GCC unroll 4
        for (int p = 1; p < Registers; ++p)
            one = one | mask.part[p];
        return any(one);
    }
    friend KVLM_INLINE Several magnitude(const Several &a)
    {
        return of([&](int p) KVLM_INLINED { return magnitude(a.part[p]); });
    }
    friend KVLM_INLINE Several squareRoot(const Several &a)
    {
        return of([&](int p) KVLM_INLINED { return squareRoot(a.part[p]); });
    }
    friend KVLM_INLINE Several roughReciprocalRoot(const Several &a)
    {
        return of([&](int p) KVLM_INLINED { return roughReciprocalRoot(a.part[p]); });
    }
};

template <class T, int Registers>
struct NumberTraits<Several<T, Registers>> {
    using Element = T;
    static constexpr int registers = Registers;
};

// One register of each number of an array.
template <class V>
struct PartOf {
    V *first;
    int part;

    KVLM_INLINE auto &operator[](int k) const { return first[k].part[part]; }
    KVLM_INLINE PartOf operator+(int k) const { return {first + k, part}; }
};

template <class V>
KVLM_INLINE V *partOf(V *a, int)
{
    return a;
}

template <class T, int Registers>
KVLM_INLINE PartOf<Several<T, Registers>> partOf(Several<T, Registers> *a, int part)
{
    return {a, part};
}

} // namespace kvlm

#endif
