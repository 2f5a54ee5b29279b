// The orders in which products by vectors are summed. They are settled, kernel by kernel: each says which lanes of a
// register once held the partial sums.
#ifndef KVLMMUL_SUMS_H
#define KVLMMUL_SUMS_H

#include "kvlm_lanes.h"

namespace kvlm {

enum class Sum {
    fromLeft, // ((p0 + p1) + p2) + ...
    pairs,    // two lanes a register
    quads,    // four lanes a register, folded half on half
    columns   // four columns a register
};

// What is added to each sum at its end: nothing, or, in its place, the elements of a view.
struct NoTerm {};

// The sum of N products, order 3 to 6, for row `row` of the result.
template <Sum Order, class V>
KVLM_INLINE V sumOf(const V (&p)[3], int)
{
    return (p[0] + p[1]) + p[2];
}

template <Sum Order, class V>
KVLM_INLINE V sumOf(const V (&p)[4], int)
{
    if constexpr (Order == Sum::fromLeft)
        return ((p[0] + p[1]) + p[2]) + p[3];
    else if constexpr (Order == Sum::quads)
        return (p[0] + p[2]) + (p[1] + p[3]);
    else
        return (p[0] + p[1]) + (p[2] + p[3]);
}

template <Sum Order, class V>
KVLM_INLINE V sumOf(const V (&p)[5], int row)
{
    if constexpr (Order == Sum::fromLeft)
        return (((p[0] + p[1]) + p[2]) + p[3]) + p[4];
    else if constexpr (Order == Sum::pairs)
        return ((p[0] + p[1]) + (p[2] + p[3])) + p[4];
    else if (Order == Sum::quads && row == 4)
        return ((p[0] + p[2]) + p[4]) + (p[1] + p[3]);
    else
        return ((p[0] + p[1]) + p[4]) + (p[2] + p[3]);
}

template <Sum Order, class V>
KVLM_INLINE V sumOf(const V (&p)[6], int)
{
    if constexpr (Order == Sum::fromLeft)
        return ((((p[0] + p[1]) + p[2]) + p[3]) + p[4]) + p[5];
    else if constexpr (Order == Sum::quads)
        return ((p[0] + p[2]) + p[4]) + ((p[1] + p[3]) + p[5]);
    else
        return ((p[0] + p[1]) + (p[2] + p[3])) + (p[4] + p[5]);
}

// The same as the products come, k = 0 to N - 1: two partial sums, of which the first is the result at the end.
template <Sum Order, int N, class V>
KVLM_INLINE void addProduct(int k, int row, V &first, V &second, V product)
{
    constexpr bool inPairs = Order == Sum::pairs || (Order == Sum::columns && N != 5);
    const bool evenFirst = Order == Sum::quads && (N != 5 || row == 4);
    if (k == 0)
        first = product;
    else if (Order == Sum::fromLeft || N == 3)
        first = first + product;
    else if (inPairs && k >= 4) { // a pair, or the last alone
        second = k == 4 ? product : second + product;
        if (k == N - 1)
            first = first + second;
    } else {
        const bool toFirst = k == 4 || (evenFirst ? k % 2 == 0 : k < 2);
        if (toFirst)
            first = first + product;
        else
            second = k == (evenFirst ? 1 : 2) ? product : second + product;
        if (k == (inPairs ? 3 : N - 1))
            first = first + second;
    }
}

} // namespace kvlm

#endif
