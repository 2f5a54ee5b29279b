// One matrix by an array of vectors at 32f, adjacent elements: long rows in eight lanes. Which rows are long depends on
// where the operands lie, and so do the last bits: settled, this kernel alone.
#ifndef KVLMMUL_MVA_ROWS_H
#define KVLMMUL_MVA_ROWS_H

#include "kvlmmul_vector.h"

namespace kvlm {

// The sum of `length` products: `lead` of them first, from left to right, then groups of eight in two times four lanes,
// of which the first begins with what came before, then the rest.
KVLM_INLINE float lanedSum(const float *a, const float *x, int length, int lead)
{
    using V = Lanes<float>;
    const auto product = [&](int k) KVLM_INLINED { return Loose<float>::load(a + k) * Loose<float>::load(x + k); };
    float sum = 0;
    int k = 0;
    for (; k < lead; ++k)
        sum += product(k);
    V low = {_mm_set_ss(sum)}, high = V::all(0);
    for (; k + 8 <= length; k += 8) {
        low = low + V::load(a + k) * V::load(x + k);
        high = high + V::load(a + k + 4) * V::load(x + k + 4);
    }
    const __m128 lanes = (low + high).v, halves = _mm_add_ps(lanes, _mm_movehl_ps(lanes, lanes));
    sum = halves[0] + halves[1];
    for (; k < length; ++k)
        sum += product(k);
    return sum;
}

using AdjacentMatrix = Strided<const float, None, int, Unit<const float>>;
using AdjacentVectors = Strided<const float, int, None, Unit<const float>>;
using AdjacentResults = Strided<float, int, None, Unit<float>>;

inline KvlStatus multiplyVectorsByAlignment(const AdjacentMatrix &a, Shape shape, const AdjacentVectors &x,
                                            Length length, SizeMatch match, const AdjacentResults &d, Count count)
{
    const int width = shape.width, height = shape.height;
    const auto bits = [](auto value) KVLM_INLINED { return (uintptr_t)value; };
    const uintptr_t all =
        bits(a.base) | bits(a.rowStride) | bits(x.base) | bits(x.objStride) | bits(d.base) | bits(d.objStride);
    const bool aligned = all % 16 == 0, square = width == height && width >= 3 && width <= 6;
    if (square || width < (aligned ? 8 : 11))
        return multiplyVector<'m', Sum::quads>(a, shape, x, length, match, d, count);
    for (int i = 0; i < count.count; ++i) {
        const float *const vector = x.object(i);
        const int beyond = static_cast<int>(bits(vector) % 16);
        if (!aligned && beyond % 4 != 0)
            multiplyVector<'m', Sum::quads>(a, shape, x.from(i, 1, nullptr), length, match, d.from(i, 1, nullptr),
                                            Count(1));
        else
            for (int r = 0; r < height; ++r)
                Loose<float>::store(d.object(i) + r, lanedSum(a.view(0).at(r, 0), vector, width,
                                                              aligned || beyond == 0 ? 0 : (16 - beyond) / 4));
    }
    return kvlOk;
}

} // namespace kvlm

#endif
