// Norms and residuals in a precision beyond that of the results.
#pragma once

#include <cmath>
#include <vector>

using Exact = long double;

// The largest sum of magnitudes of a column.
template <class T>
Exact norm(int rows, int columns, const T *a)
{
    Exact largest = 0;
    for (int c = 0; c < columns; ++c) {
        Exact sum = 0;
        for (int r = 0; r < rows; ++r)
            sum += std::fabs(static_cast<Exact>(a[r * columns + c]));
        largest = sum > largest ? sum : largest;
    }
    return largest;
}

// The norm of Z - X*Y, for Z of `rows` x `columns` and X with `inner` columns.
template <class X, class Y, class Z>
Exact residual(int rows, int inner, int columns, X x, Y y, Z z)
{
    std::vector<Exact> difference(rows * columns);
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < columns; ++c) {
            Exact sum = z(r, c);
            for (int k = 0; k < inner; ++k)
                sum -= x(r, k) * y(k, c);
            difference[r * columns + c] = sum;
        }
    return norm(rows, columns, difference.data());
}

// The same for X of order n.
template <class X, class Y, class Z>
Exact residual(int n, int columns, X x, Y y, Z z)
{
    return residual(n, n, columns, x, y, z);
}
