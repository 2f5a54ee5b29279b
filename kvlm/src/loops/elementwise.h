// Element-wise work on a batch: dst(i, r, c) = op(A(i, r, c), B(i, r, c)), in whatever way its operands lie.
//
// Each element is op of two elements and nothing else, so the order of work is free as far as the destination overlaps
// nothing. Where destination objects overlap each other, they are written one after the other, ascending.
#ifndef KVLM_LOOPS_ELEMENTWISE_H
#define KVLM_LOOPS_ELEMENTWISE_H

#include "loops/table.h"

namespace kvlm {

// dst = op(A, B), A and B read as their letters say.
template <char LetterA, char LetterB, class Op, class A, class B, class D>
KVLM_INLINE KvlStatus elementwiseBy(Op op, const A &a, const B &b, const D &d, Shape shape, Count count)
{
    using T = typename D::Element;
    if constexpr (D::isTable)
        tables<T, LetterA, LetterB>(op, a, b, d, shape.width, shape.height, count.count);
    else if constexpr (D::View::adjacentInRows)
        contiguous<T>(op, readAs<LetterA>(a, shape.width), readAs<LetterB>(b, shape.width), d, shape.width,
                      shape.height, count.count);
    else
        strided<T>(op, readAs<LetterA>(a, shape.width), readAs<LetterB>(b, shape.width), d, shape.width, shape.height,
                   count.count);
    return kvlOk;
}

// The same of an operation that has no state.
template <class Op, char LetterA, char LetterB, class A, class B, class D>
KVLM_INLINE KvlStatus elementwise(const A &a, const B &b, const D &d, Shape shape, Count count = Count(1))
{
    return elementwiseBy<LetterA, LetterB>(Op(), a, b, d, shape, count);
}

} // namespace kvlm

#endif
