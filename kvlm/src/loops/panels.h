// One matrix of an order above those that are unrolled, eliminated column by column in registers along its rows: the
// update of each element is as it was, only its neighbours' are made with it.
#ifndef KVLM_LOOPS_PANELS_H
#define KVLM_LOOPS_PANELS_H

#include "frame/operand.h"
#include "lanes/shuffles.h"

namespace kvlm {

// The lanes of x before `lane`, that of m there, those of y behind it.
template <int lane, class T>
KVLM_INLINE Lanes<T> joined(Lanes<T> x, Lanes<T> m, Lanes<T> y)
{
    const auto first = lane % 2 == 0 ? m : x, second = lane % 2 == 0 ? y : m;
    if constexpr (sizeof(T) == 8)
        return shuffled<2>(first, second);
    else if constexpr (lane < 2)
        return shuffled<_MM_SHUFFLE(3, 2, 3, 0)>(unpackLow(first, second), y);
    else
        return shuffled<_MM_SHUFFLE(2, 0, 1, 0)>(x, shuffled<_MM_SHUFFLE(3, 3, 2, 2)>(first, second));
}

// In registers where elements are adjacent in rows; the last of them begins within the one before.
template <class T, class S, class D>
KVLM_INLINE void copyMatrix(const S &s, const D &d, int rows, int columns)
{
    constexpr int lanes = Lanes<T>::count;
    if (S::adjacentInRows && D::adjacentInRows && columns >= lanes)
        for (int c = 0; c < columns; c += lanes) {
            const int from = c + lanes <= columns ? c : columns - lanes;
#pragma GCC unroll 1
            for (int r = 0; r < rows; ++r)
                Lanes<T>::load(s.at(r, from)).store(d.at(r, from));
        }
    else
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < columns; ++c)
                Loose<T>::store(d.at(r, c), Loose<T>::load(s.at(r, c)));
}

// A copy of a matrix, its rows filled up to whole registers.
template <class T>
struct Panels {
    static constexpr int most = 16, lanes = Lanes<T>::count;
    alignas(16) T a[most][most];

    template <class Source>
    KVLM_INLINE Panels(const Source &x, int rows, int columns)
    {
        if (columns % lanes != 0)
#pragma GCC unroll 1
            for (int r = 0; r < rows; ++r)
                Lanes<T>::all(0).store(a[r] + columns / lanes * lanes);
        copyMatrix<T>(x, all(), rows, columns);
    }
    template <class Result>
    KVLM_INLINE void store(const Result &x, int rows, int columns)
    {
        copyMatrix<T>(all(), x, rows, columns);
    }
    View<T, Fixed<most * sizeof(T)>, Unit<T>> all()
    {
        return {a[0], {}, {}};
    }
};

// step(k, lane, registers) for the columns before `end`, while it returns true: column k is in that lane of the first
// of so many registers that are left of each row.
template <class T, class Step>
KVLM_INLINE bool eachColumn(int end, int columns, Step step)
{
    constexpr int lanes = Lanes<T>::count, most = Panels<T>::most / lanes;
    const int registers = (columns + lanes - 1) / lanes;
    bool goesOn = true;
    eachIndex(Fixed<most>(), [&](auto done) KVLM_INLINED {
        constexpr int left = most - decltype(done){};
        if (left <= registers)
            eachIndex(Fixed<lanes>(), [&](auto lane) KVLM_INLINED {
                const int k = (registers - left) * lanes + lane;
                if (goesOn && k < end)
                    goesOn = step(k, lane, Fixed<left>());
            });
    });
    return goesOn;
}

} // namespace kvlm

#endif
