// One matrix by an array of vectors at 32f, adjacent elements: long rows in eight lanes. Which rows are long depends on
// where the operands lie, and so do the last bits: settled, this kernel alone.
#ifndef KVLMMUL_MVA_ROWS_H
#define KVLMMUL_MVA_ROWS_H

#include "kvlmmul_vector.h"

namespace kvlm::mul {

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
        const int lead = leadOf(x.object(i));
        if (lead < 0)
            multiplyVector<'m', Sum::quads>(a, shape, AdjacentVectors(x.object(i), x.objStride, {}, {}), length, match,
                                            AdjacentResults(d.object(i), d.objStride, {}, {}), Count(1));
        else
            for (int r = 0; r < height; ++r)
                Loose<float>::store(d.object(i) + r, lanedSum(a.view(0).at(r, 0), x.object(i), width, lead));
    }
    return kvlOk;
}

} // namespace kvlm::mul

#endif
