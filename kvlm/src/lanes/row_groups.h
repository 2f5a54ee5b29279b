// Groups of objects whose rows come in an order of their own: a[r] is row rows[l][r] of the object in lane l.
#ifndef KVLM_LANES_ROW_GROUPS_H
#define KVLM_LANES_ROW_GROUPS_H

#include "lanes/objects.h"

namespace kvlm {

// `Packed` is the standard description with packed rows of C elements.
template <class Move, class T, int C, bool Packed = false>
class RowGroups {
public:
    static constexpr bool hasPackedRows = Packed;
    const bool fillsWide;

    explicit RowGroups(const Objects<T> &x) : fillsWide(x.inPlanes() || x.hasAdjacentRows()), x(x) {}

    template <int R, class V>
    KVLM_INLINE void move(ptrdiff_t first, const int (*rows)[R], V (*a)[C]) const
    {
        constexpr bool isWide = std::remove_const_t<V>::blocks > 1;
        if constexpr (!Packed && isWide)
            return moveWide(first, rows, a);
        if constexpr (Packed && isWide && !std::is_const_v<T> && R * C * sizeof(T) > 128)
            if (x.objStride == R * C * sizeof(T))
                return writeWhole(first, rows, a);
        moveRows<true>(first, rows, a);
    }

    bool inPlanes() const { return x.inPlanes(); }
    // A vector read as a column has one element a row.
    bool isPacked() const
    {
        return !x.list && !x.table && x.rowStride == C * sizeof(T) && (C == 1 || x.elemStride == sizeof(T));
    }
    RowGroups asPlanes() const { return *this; }
    RowGroups<Move, T, C, true> asPacked() const { return RowGroups<Move, T, C, true>(x); }

private:
    template <bool Unrolled, int R, class V>
    KVLM_INLINE void moveRows(ptrdiff_t first, const int (*rows)[R], V (*a)[C]) const
    {
        constexpr int count = std::remove_const_t<V>::count;
        const auto each = [&](auto row) KVLM_INLINED {
            if constexpr (Unrolled) {
#pragma GCC unroll 6
                for (int r = 0; r < R; ++r)
                    row(r);
            } else {
#pragma GCC unroll 1
                for (int r = 0; r < R; ++r)
                    row(r);
            }
        };
        if (!Packed && x.table)
            return each([&](int r) KVLM_INLINED {
#pragma GCC unroll 6
                for (int c = 0; c < C; ++c)
                    Move::anywhere(
                        groupOf<T, count>([&](int l) KVLM_INLINED { return x.at(first + l, rows[l][r], c); }), a[r][c]);
            });
        const auto g = Packed ? x.template stridedGroup<count>(first) : x.template group<count>(first);
        const auto rowsAt = [&](int r) KVLM_INLINED {
            return groupOf<T, count>([&](int l) KVLM_INLINED {
                return moved(g.p[l], steps(rows[l][r], Packed ? ptrdiff_t(C * sizeof(T)) : x.rowStride));
            });
        };
        if (C > 1 && (Packed || x.elemStride == sizeof(T)))
            return each([&](int r) KVLM_INLINED { Move::runs(rowsAt(r), Fixed<C>(), a[r]); });
        each([&](int r) KVLM_INLINED {
            const auto row = rowsAt(r);
#pragma GCC unroll 6
            for (int c = 0; c < C; ++c)
                Move::anywhere(row.at(steps(c, x.elemStride)), a[r][c]);
        });
    }
    template <int R, class V>
    KVLM_NOINLINE void moveWide(ptrdiff_t first, const int (*rows)[R], V (*a)[C]) const
    {
        moveRows<false>(first, rows, a);
    }
    // Memory takes whole lines one behind the other faster than rows of many large objects.
    template <int R, class V>
    KVLM_INLINE void writeWhole(ptrdiff_t first, const int (*rows)[R], V (*a)[C]) const
    {
        T objects[V::count][R][C];
#pragma GCC unroll 6
        for (int r = 0; r < R; ++r)
            Move::runs(groupOf<T, V::count>([&](int l) KVLM_INLINED { return objects[l][rows[l][r]]; }), Fixed<C>(),
                       a[r]);
        T *const to = x.object(first);
#pragma GCC unroll 4
        for (int k = 0; k < R * C; ++k)
            std::remove_const_t<V>::load(objects[0][0] + k * V::count).store(to + k * V::count);
    }

    const Objects<T> x;
};

} // namespace kvlm

#endif
