// Products of matrices of any sizes: blocks of the result in registers. Every element is +0 + p0 + p1 + ..., from left
// to right, however the blocks are cut.
#ifndef KVLMMUL_GENERAL_H
#define KVLMMUL_GENERAL_H

#include "frame/read.h"
#include "lanes/lanes.h"
#include "loops/sums.h"

namespace kvlm::mul {

// C elements of row k, from column c on: whole registers, half of one, or a number.
template <class T, int C>
struct RowPart {
    using V = std::conditional_t<C == 1, T, Lanes<T>>;
    static constexpr int each = C < Lanes<T>::count ? C : Lanes<T>::count, registers = C / each;
    V v[registers];

    template <class View>
    KVLM_INLINE void load(const View &x, int k, int c)
    {
#pragma GCC unroll 2
        for (int g = 0; g < registers; ++g) {
            const auto at = [&](int j) KVLM_INLINED { return x.at(k, c + g * each + j); };
            if constexpr (C == 1)
                v[g] = Loose<T>::load(at(0));
            else if constexpr (View::adjacentInRows)
                v[g] = V::template loadFirst<each>(at(0));
            else if constexpr (sizeof(T) == 8)
                v[g] = V::gather(at(0), at(1));
            else if constexpr (each == 2)
                v[g] = V{_mm_setr_ps(Loose<T>::load(at(0)), Loose<T>::load(at(1)), 0, 0)};
            else
                v[g] = V::gather(at(0), at(1), at(2), at(3));
        }
    }
    template <class View>
    KVLM_INLINE void store(const View &x, int k, int c) const
    {
#pragma GCC unroll 2
        for (int g = 0; g < registers; ++g) {
            const auto at = [&](int j) KVLM_INLINED { return x.at(k, c + g * each + j); };
            if constexpr (C == 1)
                Loose<T>::store(at(0), v[g]);
            else if constexpr (View::adjacentInRows)
                v[g].template storeFirst<each>(at(0));
            else
#pragma GCC unroll 4
                for (int j = 0; j < each; ++j)
                    Loose<T>::store(at(j), v[g].v[j]);
        }
    }
};

// R x C elements from (r, c) on.
template <class T, int R, int C, class A, class B, class E, class D>
KVLM_INLINE void productBlock(const A &a, const B &b, const E &term, const D &d, int r, int c, int inner)
{
    using Part = RowPart<T, C>;
    using V = typename Part::V;
    constexpr int lanes = Lanes<T>::count;
    Part sum[R];
#pragma GCC unroll 4
    for (int i = 0; i < R; ++i)
#pragma GCC unroll 2
        for (int g = 0; g < Part::registers; ++g)
            sum[i].v[g] = number<V>(0);
    const auto step = [&](const Part &row, int k) KVLM_INLINED {
#pragma GCC unroll 4
        for (int i = 0; i < R; ++i) {
            const V x = number<V>(Loose<T>::load(a.at(r + i, k)));
#pragma GCC unroll 2
            for (int g = 0; g < Part::registers; ++g)
                sum[i].v[g] = sum[i].v[g] + x * row.v[g];
        }
    };
    int k = 0;
    if constexpr (B::adjacentInColumns && C >= lanes)
        for (; k + lanes <= inner; k += lanes) {
            Part rows[lanes];
#pragma GCC unroll 2
            for (int g = 0; g < Part::registers; ++g) {
                V v[lanes];
#pragma GCC unroll 4
                for (int j = 0; j < lanes; ++j)
                    v[j] = V::load(b.at(k, c + g * lanes + j));
                transpose(v);
#pragma GCC unroll 4
                for (int j = 0; j < lanes; ++j)
                    rows[j].v[g] = v[j];
            }
#pragma GCC unroll 4
            for (int j = 0; j < lanes; ++j)
                step(rows[j], k + j);
        }
    for (; k < inner; ++k) {
        Part row;
        row.load(b, k, c);
        step(row, k);
    }
    if constexpr (!std::is_same_v<E, NoTerm>) {
#pragma GCC unroll 4
        for (int i = 0; i < R; ++i) {
            Part last;
            last.load(term, r + i, c);
#pragma GCC unroll 2
            for (int g = 0; g < Part::registers; ++g)
                sum[i].v[g] = sum[i].v[g] + last.v[g];
        }
    }
#pragma GCC unroll 4
    for (int i = 0; i < R; ++i)
        sum[i].store(d, r + i, c);
}

template <class T, int R, class A, class B, class E, class D>
KVLM_INLINE int productBlocks(const A &a, const B &b, const E &term, const D &d, int r, int height, int inner,
                              int width)
{
    constexpr int lanes = Lanes<T>::count;
    for (; r + R <= height; r += R) {
        int c = 0;
        if constexpr (sizeof(void *) == 8 && D::adjacentInRows) // i386 has half the registers
            for (; c + 2 * lanes <= width; c += 2 * lanes)
                productBlock<T, R, 2 * lanes>(a, b, term, d, r, c, inner);
        for (; c + lanes <= width; c += lanes)
            productBlock<T, R, lanes>(a, b, term, d, r, c, inner);
        if constexpr (lanes == 4 && D::adjacentInRows)
            if (c + 2 <= width) {
                productBlock<T, R, 2>(a, b, term, d, r, c, inner);
                c += 2;
            }
        for (; c < width; ++c)
            productBlock<T, R, 1>(a, b, term, d, r, c, inner);
    }
    return r;
}

// d = a*b + term: `height` rows, `width` columns, sums of `inner` products. Views by value: they are few registers.
template <class T, class A, class B, class E, class D>
KVLM_NOINLINE void productGeneral(A a, B b, E term, D d, int height, int inner, int width)
{
    const int r = productBlocks<T, 4>(a, b, term, d, 0, height, inner, width);
    productBlocks<T, 1>(a, b, term, d, r, height, inner, width);
}

} // namespace kvlm::mul

#endif
