// Gaussian elimination on a copy of a matrix in the caller's buffer, for the orders that have no closed form.
#ifndef KVLM_LOOPS_ELIMINATION_H
#define KVLM_LOOPS_ELIMINATION_H

#include "frame/operand.h"
#include "lanes/lanes.h"

namespace kvlm {

// Twice the cube of the order, as many smallest normal numbers: what is below counts as zero.
template <class T>
KVLM_INLINE T zeroThreshold(unsigned n)
{
    return T(wrapped(2 * n * n * n)) * smallestNormal<T>;
}

// The elements that a caller's buffer holds for order n, counted as a team's threads get them: the table of n ints is
// behind the copy.
KVLM_INLINE size_t eliminationElements(int n)
{
    return static_cast<size_t>(n) * (static_cast<size_t>(n) + 1);
}

// Rows are never moved, interchanges are made in the table: (i, j) is in the i-th row of its order.
template <class T>
class Elimination {
public:
    Elimination(T *buffer, int rowLength)
        : copy(buffer), table(reinterpret_cast<int *>(buffer + steps(rowLength, rowLength))), rowLength(rowLength)
    {
    }

    // Begins anew with rows x columns elements.
    template <class Element>
    KVLM_INLINE void load(int rows, Element element)
    {
        for (int i = 0; i < rows; ++i) {
            table[i] = i;
            for (int j = 0; j < rows; ++j)
                at(i, j) = element(i, j);
        }
    }
    KVLM_INLINE T &at(int i, int j) { return copy[static_cast<ptrdiff_t>(table[i]) * rowLength + j]; }

    // Brings the first of the largest elements of column k to row k; whether that was an interchange. `Maximum` is the
    // type in which the largest is remembered.
    template <class Maximum = T>
    KVLM_INLINE bool bringPivot(int k, int rows)
    {
        Maximum best = static_cast<Maximum>(magnitude(at(k, k)));
        int found = k;
        for (int i = k + 1; i < rows; ++i) {
            const T candidate = magnitude(at(i, k));
            if (candidate > best) {
                best = static_cast<Maximum>(candidate);
                found = i;
            }
        }
        const int row = table[found];
        table[found] = table[k];
        table[k] = row;
        return found != k;
    }

    // Row k times a multiple is taken from those behind it, right of column k. `multiple` makes it of their element k.
    template <class Multiple>
    KVLM_INLINE void eliminate(int k, int rows, Multiple multiple)
    {
        for (int i = k + 1; i < rows; ++i) {
            const T m = multiple(at(i, k));
            for (int j = k + 1; j < rows; ++j)
                at(i, j) -= at(k, j) * m;
        }
    }

private:
    T *copy;
    int *table;
    int rowLength;
};

} // namespace kvlm

#endif
