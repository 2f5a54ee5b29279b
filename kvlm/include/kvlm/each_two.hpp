/**
 * @file each_two.hpp
 * Order 2, for which the C functions have no kernels of their own. What they would refuse is left as NaN, or infinite.
 */
#ifndef KVLM_EACH_TWO_HPP
#define KVLM_EACH_TWO_HPP

#include "each_block.hpp"

#include <cmath>

namespace kvlm {
namespace each {
namespace detail {

/// In double: of floats it is rounded once.
template <class T>
double determinantOfTwo(const Strided<const T> &a, int i)
{
    return rounded(double(a(i, 0, 0)) * a(i, 1, 1)) - rounded(double(a(i, 0, 1)) * a(i, 1, 0));
}
template <class T>
void invertTwo(const Strided<const T> &a, const Strided<T> &inverse, int objects)
{
    for (int i = 0; i < objects; ++i) {
        const double factor = 1 / determinantOfTwo(a, i);
        const T x = a(i, 0, 0), y = a(i, 0, 1), z = a(i, 1, 0), w = a(i, 1, 1);
        inverse(i, 0, 0) = static_cast<T>(w * factor);
        inverse(i, 0, 1) = static_cast<T>(-y * factor);
        inverse(i, 1, 0) = static_cast<T>(-z * factor);
        inverse(i, 1, 1) = static_cast<T>(x * factor);
    }
}

/// In the form of kvlmCholeskyDecomp.
template <class T>
void factorPositiveTwo(const Strided<const T> &a, const Strided<T> &factors, int objects)
{
    for (int i = 0; i < objects; ++i) {
        const double first = 1 / std::sqrt(double(a(i, 0, 0))), below = a(i, 1, 0) * first;
        const double last = 1 / std::sqrt(a(i, 1, 1) - below * below);
        factors(i, 0, 0) = static_cast<T>(first);
        factors(i, 1, 0) = static_cast<T>(below);
        factors(i, 1, 1) = static_cast<T>(last);
    }
}

/// In the form of kvlmLUDecomp.
template <class T>
void factorTwo(const Strided<const T> &a, int *pivot, const Strided<T> &factors, int objects)
{
    constexpr T least = 2 * std::numeric_limits<T>::min();
    for (int i = 0; i < objects; ++i) {
        const int first = std::fabs(a(i, 1, 0)) > std::fabs(a(i, 0, 0)), last = 1 - first;
        const T top = a(i, first, 0), beside = a(i, first, 1), factor = a(i, last, 0) / top;
        const T corner = a(i, last, 1) - rounded(factor * beside);
        const bool isRegular = std::fabs(top) >= least && std::fabs(corner) >= least;
        pivot[2 * i] = first;
        pivot[2 * i + 1] = last;
        factors(i, first, 0) = top;
        factors(i, first, 1) = beside;
        factors(i, last, 0) = factor;
        factors(i, last, 1) = isRegular ? corner : notANumber<T>;
    }
}
template <class T, class B, class X>
void substituteTwo(const Strided<T> &factors, const int *pivot, const Strided<B> &b, const Strided<X> &x, int objects)
{
    for (int i = 0; i < objects; ++i) {
        const int first = pivot[2 * i], last = pivot[2 * i + 1];
        const T top = b(i, first, 0), rest = b(i, last, 0) - factors(i, last, 0) * top;
        x(i, 1, 0) = rest / factors(i, last, 1);
        x(i, 0, 0) = (top - factors(i, first, 1) * x(i, 1, 0)) / factors(i, first, 0);
    }
}

} // namespace detail
} // namespace each
} // namespace kvlm

#endif
