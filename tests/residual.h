// What the tests of accuracy share: matrices in a precision beyond that of the results, batches of packed objects.
#pragma once

#include "values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>

using Exact = long double;
constexpr Exact threshold = 30; // of a residual, in units of rounding
constexpr int batch = 5;        // a group and a rest
constexpr int mostOrder = 16;

template <class T>
constexpr Exact unit = std::numeric_limits<T>::epsilon();

// The elements f(row, column).
template <class E>
class MatrixOf {
public:
    template <class F>
    MatrixOf(int rows, int columns, F f) : rows(rows), columns(columns)
    {
        for (int k = 0; k < rows * columns; ++k)
            elements.push_back(f(k / columns, k % columns));
    }
    const E &operator()(int r, int c) const { return elements[r * columns + c]; }
    MatrixOf operator*(const MatrixOf &other) const
    {
        return MatrixOf(rows, other.columns, [&](int r, int c) {
            E sum = 0;
            for (int k = 0; k < columns; ++k)
                sum += (*this)(r, k) * other(k, c);
            return sum;
        });
    }
    MatrixOf operator-(const MatrixOf &other) const
    {
        return MatrixOf(rows, columns, [&](int r, int c) { return (*this)(r, c) - other(r, c); });
    }
    // Transposed, with the other sign of imaginary parts.
    MatrixOf adjoint() const
    {
        return MatrixOf(columns, rows, [&](int r, int c) {
            if constexpr (std::is_same_v<E, Exact>)
                return (*this)(c, r);
            else
                return std::conj((*this)(c, r));
        });
    }
    // The largest sum of magnitudes of a column.
    Exact norm() const
    {
        Exact largest = 0;
        for (int c = 0; c < columns; ++c) {
            Exact sum = 0;
            for (int r = 0; r < rows; ++r)
                sum += std::abs((*this)(r, c));
            largest = sum > largest || sum != sum ? sum : largest;
        }
        return largest;
    }

    int rows, columns;

private:
    std::vector<E> elements;
};
using Matrix = MatrixOf<Exact>;

template <class T>
Matrix exact(int rows, int columns, const T *a)
{
    return Matrix(rows, columns, [&](int r, int c) { return Exact(a[r * columns + c]); });
}

inline Matrix identity(int n)
{
    return Matrix(n, n, [](int r, int c) { return Exact(r == c); });
}

// Matrices one behind another, or vectors: those have no rows. Without a count it is a single one.
template <class T>
struct Packed {
    Packed(int rows, int columns, int count) : rows(rows), columns(columns), count(count)
    {
        elements.resize(size() * std::max(1, count));
    }
    Packed(int rows, int columns, int count, std::vector<T> given)
        : rows(rows), columns(columns), count(count), elements(std::move(given))
    {
    }
    int size() const { return std::max(1, rows) * columns; }
    T *object(int i) { return &elements[i * size()]; }
    Matrix exactly(int i) const { return exact(rows ? rows : columns, rows ? columns : 1, &elements[i * size()]); }
    void appendTo(Args &args) const { append(args, from(0)); }
    // The arguments of the objects from this one on.
    Args from(int i) const
    {
        constexpr int elem = sizeof(T);
        Args args = argsOf(&elements[i * size()]);
        if (count > 0)
            append(args, size() * elem);
        if (rows > 0)
            append(args, columns * elem);
        append(args, elem);
        return args;
    }

    int rows, columns, count;
    std::vector<T> elements;
};

using Types = testing::Types<float, double>;
