// The orders in which products are summed. They are settled, kernel by kernel: each says which lanes of a register once
// held the partial sums.
#ifndef KVLM_LOOPS_SUMS_H
#define KVLM_LOOPS_SUMS_H

#include "lanes/lanes.h"

namespace kvlm {

enum class Sum {
    fromLeft, // ((p0 + p1) + p2) + ...
    pairs,    // two lanes a register
    quads,    // four lanes a register, folded half on half
    columns,  // four columns a register
    evenOdd   // two lanes, which go along the products
};

// What is added to each sum at its end: nothing, or, in its place, the elements of a view.
struct NoTerm {};

// The sum of N products, order 3 to 6, for row `row` of the result.
template <Sum Order, class V>
KVLM_INLINE V sumOf(const V (&p)[3], int)
{
    return Order == Sum::evenOdd ? (p[0] + p[2]) + p[1] : (p[0] + p[1]) + p[2];
}

template <Sum Order, class V>
KVLM_INLINE V sumOf(const V (&p)[4], int)
{
    if constexpr (Order == Sum::fromLeft)
        return ((p[0] + p[1]) + p[2]) + p[3];
    else if constexpr (Order == Sum::quads || Order == Sum::evenOdd)
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
    else if constexpr (Order == Sum::evenOdd)
        return ((p[0] + p[2]) + (p[1] + p[3])) + p[4];
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
    else if constexpr (Order == Sum::evenOdd)
        return ((p[2] + p[4]) + p[0]) + ((p[3] + p[5]) + p[1]);
    else
        return ((p[0] + p[1]) + (p[2] + p[3])) + (p[4] + p[5]);
}

// The same as the products come, k = 0 to N - 1: two partial sums, of which the first is the result at the end.
template <Sum Order, int N, class V>
KVLM_INLINE void addProduct(int k, int row, V &first, V &second, V product)
{
    static_assert(Order != Sum::evenOdd);
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

// ---- Long sums ---------------------------------------------------------------------------------------------------

KVLM_INLINE float folded(Lanes<float> x)
{
    const __m128 halves = _mm_add_ps(x.v, _mm_movehl_ps(x.v, x.v));
    return halves[0] + halves[1];
}

KVLM_INLINE double folded(Lanes<double> x)
{
    return x.v[0] + x.v[1];
}

// The sum of `length` products: `lead` of them first, from left to right, then groups of eight in eight lanes, of which
// the first begins with what came before, then the rest.
template <class T>
KVLM_INLINE T lanedSum(const T *a, const T *x, int length, int lead)
{
    using V = Lanes<T>;
    constexpr int registers = 8 / V::count;
    const auto product = [&](int k) KVLM_INLINED { return Loose<T>::load(a + k) * Loose<T>::load(x + k); };
    T sum = 0;
    int k = 0;
    for (; k < lead; ++k)
        sum += product(k);
    V l[registers] = {};
    l[0].v[0] = sum;
    for (; length - k >= 8; k += 8)
#pragma GCC unroll 4
        for (int r = 0; r < registers; ++r)
            l[r] = l[r] + V::load(a + k + r * V::count) * V::load(x + k + r * V::count);
#pragma GCC unroll 2
    for (int half = registers / 2; half > 0; half /= 2)
#pragma GCC unroll 2
        for (int r = 0; r < half; ++r)
            l[r] = l[r] + l[r + half];
    sum = folded(l[0]);
    for (; k < length; ++k)
        sum += product(k);
    return sum;
}

// How many products come before the vector reaches a multiple of 16 bytes: negative if it never does.
template <class T>
KVLM_INLINE int leadOf(const T *x)
{
    const int beyond = static_cast<int>(reinterpret_cast<uintptr_t>(x) % 16);
    return beyond % sizeof(T) != 0 ? -1 : (16 - beyond) % 16 / static_cast<int>(sizeof(T));
}

} // namespace kvlm

#endif
