// The elements of the sources: numbers of all kinds for sums, regular and difficult matrices for the rest.
#pragma once

#include "members.h"
#include "operand.h"
#include "oracle_cholqr.h"

// Numbers of many magnitudes with a special one now and then; NaN only on request, since a sum of two keeps either.
template <class T>
std::vector<T> someValues(std::size_t n, bool withNan, Random &random)
{
    using Bits = std::conditional_t<sizeof(T) == 8, std::uint64_t, std::uint32_t>;
    constexpr int mantissa = sizeof(T) == 8 ? 52 : 23;
    constexpr int bias = sizeof(T) == 8 ? 1023 : 127;
    constexpr Bits one = 1, fraction = (one << mantissa) - 1, infinity = Bits(2 * bias + 1) << mantissa;
    const Bits special[] = {0, 1, fraction, one << mantissa, infinity - 1, infinity};
    std::vector<T> values(n);
    for (T &value : values) {
        const std::uint64_t draw = random.next();
        const Bits sign = Bits(draw & 1) << (8 * sizeof(T) - 1);
        const int kind = static_cast<int>(draw >> 1 & 31);
        Bits bits = Bits(draw >> 8) & fraction;
        if (kind < 6)
            bits = special[kind];
        else if (kind == 6 && withNan)
            bits |= infinity | (draw & 64 ? one << (mantissa - 1) : one);
        else
            bits |= Bits(bias - 3 + (draw >> 60) % 8) << mantissa;
        bits |= sign;
        std::memcpy(&value, &bits, sizeof value);
    }
    return values;
}

template <class T>
T inUnitInterval(Random &random)
{
    return static_cast<T>(static_cast<std::int64_t>(random.next() >> 40) - (1 << 23)) / T(1 << 23);
}

template <class T>
std::vector<T> someVector(std::size_t n, Random &random)
{
    std::vector<T> x(n);
    for (T &element : x)
        element = inUnitInterval<T>(random);
    return x;
}

template <class T>
std::vector<T> someMatrix(int n, Random &random)
{
    return someVector<T>(n * n, random);
}

// Calls f(row, column, element) for each element of a matrix, row by row.
template <class T, class F>
void eachElement(int columns, std::vector<T> &a, F f)
{
    for (int k = 0; k < static_cast<int>(a.size()); ++k)
        f(k / columns, k % columns, a[k]);
}

template <class T>
void permuteRows(int n, std::vector<T> &a, Random &random)
{
    for (int r = n - 1; r > 0; --r)
        std::swap_ranges(&a[r * n], &a[r * n] + n, &a[random.below(r) * n]);
}

template <class T>
T specialNumber(Random &random)
{
    using Limits = std::numeric_limits<T>;
    const T numbers[] = {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), T(-0.0), oracle::least<T> / 4};
    return numbers[random.below(5)];
}

// This number or a neighbour of it.
template <class T>
T atOrBeside(T exact, Random &random)
{
    const T numbers[] = {exact, std::nextafter(exact, T(-1)), std::nextafter(exact, T(1))};
    return numbers[random.below(3)];
}

template <class T>
T scaledWidely(T x, Random &random)
{
    return std::ldexp(x, (sizeof(T) == 4 ? 20 : 160) * (random.below(13) - 6));
}

// A matrix on which pivoting, thresholds or special numbers tell: ties, exact zeros at some step, single elements at
// and beside every threshold, wide ranges, NaN and infinities.
template <class T>
std::vector<T> difficultMatrix(int n, Random &random)
{
    enum { whole, zeroColumn, zeroRow, threshold, graded, special, scaled, permutedDiagonal, nearTies, zeros };
    std::vector<T> a = someMatrix<T>(n, random);
    const int draw = random.below(13), kind = draw <= zeros ? draw : threshold;
    if (kind == zeroColumn || kind == zeroRow) {
        const int line = random.below(n);
        eachElement(n, a, [&](int r, int c, T &x) { x = (kind == zeroRow ? r : c) == line ? 0 : x; });
    }
    if (kind == zeroColumn || kind == scaled) {
        const T scale = scaledWidely(T(1), random);
        for (T &x : a)
            x *= scale;
    } else if (kind == threshold) { // all pivots but one are powers of two, one stands at a threshold
        const T small = oracle::least<T>, cube = static_cast<T>(n * n * n);
        const T thresholds[] = {std::numeric_limits<T>::epsilon(), 2 * small, 2 * cube * small, 4 * cube * small};
        const T exact = thresholds[random.below(4)];
        const int place = random.below(2) ? n - 1 : random.below(n);
        eachElement(n, a, [&](int r, int c, T &x) {
            x = r != c       ? T(random.below(4) == 0 && c > r)
                : r == place ? atOrBeside(exact, random)
                             : T(1 << random.below(3));
        });
    } else if (kind == special)
        for (int k = random.below(2); k >= 0; --k)
            a[random.below(n * n)] = specialNumber<T>(random);
    else
        eachElement(n, a, [&](int r, int c, T &x) {
            if (kind == whole)
                x = static_cast<T>(random.below(5) - 2);
            else if (kind == graded)
                x = std::ldexp(x, (sizeof(T) == 4 ? -5 : -40) * (r + c));
            else if (kind == permutedDiagonal)
                x = r == c ? static_cast<T>(r % 3 - 4) : random.below(2) ? T(-0.0) : T(0);
            else if (kind == nearTies)
                x = std::copysign(1 + random.below(4) * std::numeric_limits<T>::epsilon(), x);
            else if (kind == zeros)
                x = 0;
        });
    if (kind == permutedDiagonal || (kind == threshold && random.below(2)))
        permuteRows(n, a, random);
    return a;
}

template <class T>
std::vector<T> symmetric(int n, std::vector<T> a)
{
    eachElement(n, a, [&](int r, int c, T &x) { x = c < r ? a[c * n + r] : x; });
    return a;
}

// From a difficult matrix: symmetric, with small whole numbers and halves, or as it is.
template <class T>
std::vector<T> difficultSymmetric(int n, std::vector<T> a, Random &random)
{
    const int kind = random.below(4);
    if (kind == 0)
        return a;
    if (kind == 1)
        eachElement(n, a, [&](int r, int c, T &x) {
            if (c >= r)
                x = r == c ? T(random.below(7) - 3) * T(0.5) : T(random.below(3) - 1) * T(random.below(2));
        });
    return symmetric(n, a);
}

// From a difficult matrix: as it is, or one on which reduction, sweeps, blocks or substitutions come to their turnings.
template <class T>
std::vector<T> difficultGeneral(int n, const std::vector<T> &difficult, Random &random)
{
    // clang-format off
    enum { asItIs, whole, triangle, emptyDiagonal, companion, equalDiagonals, unitDiagonal, jordan, tiny, special, tight };
    // clang-format on
    const int kind = random.below(tight + 1);
    if (kind == asItIs)
        return difficult;
    std::vector<T> a = someMatrix<T>(n, random);
    const auto at = [&](int r, int c) -> T & { return a[r * n + c]; };
    const T small = std::ldexp(T(1), sizeof(T) == 4 ? -100 : -900), huge = std::numeric_limits<T>::max();
    const T odd[] = {std::numeric_limits<T>::quiet_NaN(), std::numeric_limits<T>::infinity(), huge, small};
    const int chosen = random.below(n) / 2; // of the blocks of 1 or 2 along the diagonal
    // Tiny blocks, or some whose solutions would overflow while the squares of their elements don't vanish.
    const T low = chosen ? std::ldexp(T(1), sizeof(T) == 4 ? -58 : -500) : small;
    const T large = chosen ? std::ldexp(T(1), sizeof(T) == 4 ? 72 : 530) : T(16);
    eachElement(n, a, [&](int r, int c, T &x) {
        const bool isInBlock = r / 2 == c / 2, isBelow = c < r && !isInBlock;
        if (kind == whole)
            x = T(random.below(5) - 2) * T(random.below(3) > 0);
        else if (kind == triangle)
            x = c < r ? T(0) : T(random.below(5) - 2);
        else if (kind == emptyDiagonal)
            x = r == c ? T(0) : std::ldexp(x, -random.below(sizeof(T) == 4 ? 40 : 80));
        else if (kind == companion)
            x = r == n - 1 ? T(random.below(7) - 3) : T(c == r + 1);
        else if (kind == unitDiagonal)
            x = r == c ? T(1) : T(random.below(3) - 1) * T(random.below(2));
        else if (kind == jordan)
            x = r == c ? T(0.5) : T(c == r + 1);
        else if (isBelow || (!isInBlock && random.below(3) == 0))
            x = 0;
        else if (kind == equalDiagonals && r == c && r % 2 == 1)
            x = at(r - 1, c - 1);
        else if (kind == equalDiagonals && c == r - 1 && random.below(2)) // neighbours of either sign
            x = random.below(2) ? at(c, r) : -at(c, r);
        else if (kind == tiny && isInBlock && r / 2 == chosen)
            x *= small;
        else if (kind == special && isInBlock && r / 2 == chosen && random.below(3) == 0)
            x = odd[random.below(4)];
        else if (kind == tight && !isInBlock) // equal small blocks, coupled by large elements
            x *= large;
        else if (kind == tight)
            x = r == c ? low : c > r ? low * T(-0.5) : low * T(random.below(2) ? 0.5 : 0.25);
    });
    if (kind == jordan && n > 1)
        std::swap_ranges(&a[0], &a[0] + n, &a[random.below(n - 1) * n + n]);
    if (random.below(3) == 0) // what is upper becomes lower
        eachElement(n, a, [&](int r, int c, T &x) {
            if (c < r)
                std::swap(x, at(c, r));
        });
    return a;
}

// Factors of sums: numbers between -1 and 1 with zeros, infinities and the extremes of the exponent among them now and
// then. Of difficult ones the products are zeros, most of them negative. Fine ones have all bits of a double: without
// these no sum of a few products is rounded.
template <class T>
std::vector<T> someFactors(std::size_t n, bool difficult, bool first, Random &random, bool fine = false)
{
    const T huge = std::numeric_limits<T>::max(), special[] = {T(0), T(-0.0), oracle::least<T> / 4, huge, 2 * huge};
    const bool withSpecial = random.below(3) == 0;
    std::vector<T> values(n);
    for (T &x : values)
        if (difficult)
            x = first ? T(1 + random.below(2)) : random.below(20) ? T(-0.0) : T(0);
        else if (withSpecial && random.below(8) == 0)
            x = special[random.below(5)];
        else
            x = inUnitInterval<T>(random) + (fine ? inUnitInterval<T>(random) / (1 << 24) : 0);
    return values;
}

// A 4 x 4 matrix; a difficult one gives some points a last coordinate of zero, or at and beside the least normal
// number.
template <class T>
std::vector<T> someTransform(bool difficult, Random &random)
{
    std::vector<T> a = someMatrix<T>(4, random);
    const T least = oracle::least<T>, lastRows[][4] = {{1, -1, 0, 0},
                                                       {0, 0, 0, -least},
                                                       {0, 1, 0, 0},
                                                       {0, 0, 0, 2 * least},
                                                       {0, 0, least / 2, 0},
                                                       {0, 0, 0, least * T(1.5)},
                                                       {least, 0, -least / 2, 0},
                                                       {0, 0, 0, std::numeric_limits<T>::quiet_NaN()}};
    if (difficult)
        std::copy_n(lastRows[random.below(8)], 4, &a[12]);
    return a;
}

template <class T>
std::vector<T> somePoints(std::size_t n, bool difficult, Random &random)
{
    std::vector<T> points(n);
    for (T &x : points)
        x = difficult ? T(random.below(4) - 1) : inUnitInterval<T>(random);
    return points;
}

// A positive definite matrix whose elements above the diagonal are NaN, as nobody may read them. Difficult ones fail at
// some row, or have a diagonal at or beside a threshold.
template <class T>
std::vector<T> somePositiveMatrix(int n, bool difficult, Random &random)
{
    enum { negative, threshold, special, scaled, equalRows, zeros, kinds = 8 };
    const std::vector<T> factor = someMatrix<T>(n, random);
    std::vector<T> a(n * n, std::numeric_limits<T>::quiet_NaN());
    eachElement(n, a, [&](int r, int c, T &x) {
        if (c > r)
            return;
        x = r == c ? T(0.25) : 0;
        for (int k = 0; k < n; ++k)
            x += factor[r * n + k] * factor[c * n + k];
    });
    if (!difficult)
        return a;
    const int row = random.below(n), kind = random.below(kinds);
    if (kind == special)
        a[row * n + random.below(row + 1)] = specialNumber<T>(random);
    eachElement(n, a, [&](int r, int c, T &x) {
        if (kind == negative && r == row && c == row)
            x = -x;
        else if ((kind == threshold || kind > zeros) && r == row && c <= row) { // the rest at this row is exact
            const T thresholds[] = {0, T(FLT_EPSILON), T(DBL_EPSILON), oracle::least<T>};
            const T exact = thresholds[random.below(4)];
            x = c < row ? T(random.below(2) - 1) * T(0) : atOrBeside(exact, random);
        } else if (kind == scaled)
            x = scaledWidely(x, random);
        else if (kind == equalRows && c <= r) // two of them, with integers that leave exactly 0
            x = r != c ? T(4 * (c % 2 == 0 && r == c + 1)) : r % 2 == 0 ? T(4) : T(4 * random.below(2));
        else if (kind == zeros)
            x = 0;
    });
    return a;
}

// Nothing above the diagonal is to be read.
template <class T>
std::vector<T> lowerTriangle(int n, std::vector<T> a)
{
    eachElement(n, a, [](int r, int c, T &x) { x = c > r ? std::numeric_limits<T>::quiet_NaN() : x; });
    return a;
}

// A matrix with at least as many rows as columns. Difficult ones have columns that vanish at some step, at or beside
// the threshold, and what difficult square matrices have.
template <class T>
std::vector<T> someTallMatrix(int width, int height, bool difficult, Random &random)
{
    const std::vector<T> square =
        difficult && random.below(2) ? difficultMatrix<T>(height, random) : someMatrix<T>(height, random);
    std::vector<T> a(width * height);
    eachElement(width, a, [&](int r, int c, T &x) { x = square[r * height + c]; });
    if (!difficult || random.below(2))
        return a;
    const int column = random.below(width);
    eachElement(width, a, [&](int r, int c, T &x) {
        if (c < column) // the steps before leave the column as it is
            x = r == c ? T(random.below(2) ? 2 : -2) : T(0);
        else if (c == column)
            x = 0;
    });
    const T root = std::ldexp(T(1), sizeof(T) == 4 ? -12 : -26);
    const int kind = random.below(4);
    const auto below = [&]() -> T & { return a[std::min(height - 1, column + random.below(3)) * width + column]; };
    if (kind > 0) // the squared length is exactly the threshold, beside it, or more
        below() = random.below(2) ? root : -root;
    if (kind > 1 && sizeof(T) == 4)
        below() = root;
    if (kind > 2)
        below() = std::nextafter(root, T(random.below(2)));
    return a;
}

// A matrix that the member is meant for.
template <class T>
std::vector<T> matrixFor(const Member &member, int width, int height, bool difficult, Random &random)
{
    if (member.family == "CholeskyDecomp")
        return somePositiveMatrix<T>(width, difficult, random);
    if (member.isTall())
        return someTallMatrix<T>(width, height, difficult, random);
    const std::vector<T> a = difficult ? difficultMatrix<T>(width, random) : someMatrix<T>(width, random);
    if (member.isGeneralEigen())
        return difficult ? difficultGeneral(width, a, random) : a;
    if (member.isEigen())
        return difficult ? difficultSymmetric(width, a, random) : symmetric(width, a);
    return member.family == "CholeskyBackSubst" ? lowerTriangle(width, a) : a;
}
