// The elements of the sources: numbers of all kinds for sums, regular and difficult matrices for the rest.
#pragma once

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
std::vector<T> someMatrix(int n, Random &random)
{
    std::vector<T> a(n * n);
    for (T &x : a)
        x = inUnitInterval<T>(random);
    return a;
}

// A matrix on which pivoting, thresholds or special numbers tell: ties, exact zeros at some step, single elements at
// and beside every threshold, wide ranges, NaN and infinities.
template <class T>
std::vector<T> difficultMatrix(int n, Random &random)
{
    std::vector<T> a = someMatrix<T>(n, random);
    const auto anywhere = [&]() -> T & { return a[random.below(n * n)]; };
    const auto permuteRows = [&] {
        for (int r = n - 1; r > 0; --r)
            std::swap_ranges(&a[r * n], &a[r * n] + n, &a[random.below(r) * n]);
    };
    const auto scale = [&] {
        const int exponent = (sizeof(T) == 4 ? 20 : 160) * (random.below(13) - 6);
        for (T &x : a)
            x = std::ldexp(x, exponent);
    };
    const int draw = random.below(13), kind = draw < 10 ? draw : 3; // many at thresholds
    if (kind == 0)
        for (T &x : a)
            x = static_cast<T>(random.below(5) - 2);
    else if (kind == 1) {
        for (int r = 0, column = random.below(n); r < n; ++r)
            a[r * n + column] = 0;
        scale();
    } else if (kind == 2)
        for (int c = 0, row = random.below(n); c < n; ++c)
            a[row * n + c] = 0;
    else if (kind == 3) { // all pivots but one are powers of two, one stands at a threshold
        const T small = oracle::least<T>, cube = static_cast<T>(n * n * n);
        const T thresholds[] = {sizeof(T) == 4 ? T(FLT_EPSILON) : T(DBL_EPSILON), 2 * small, 2 * cube * small,
                                4 * cube * small};
        const T exact = thresholds[random.below(4)];
        const T chosen[] = {exact, std::nextafter(exact, T(0)), std::nextafter(exact, T(1))};
        const int place = random.below(2) ? n - 1 : random.below(n);
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < n; ++c)
                a[r * n + c] = r != c       ? T(random.below(4) == 0 && c > r)
                               : r == place ? chosen[random.below(3)]
                                            : T(1 << random.below(3));
        if (random.below(2))
            permuteRows();
    } else if (kind == 4)
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < n; ++c)
                a[r * n + c] = std::ldexp(a[r * n + c], (sizeof(T) == 4 ? -5 : -40) * (r + c));
    else if (kind == 5) {
        const T special[] = {std::numeric_limits<T>::quiet_NaN(), std::numeric_limits<T>::infinity(),
                             -std::numeric_limits<T>::infinity(), T(-0.0), oracle::least<T> / 4};
        for (int k = random.below(2); k >= 0; --k)
            anywhere() = special[random.below(5)];
    } else if (kind == 6)
        scale();
    else if (kind == 7) { // a permuted diagonal
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < n; ++c)
                a[r * n + c] = r == c ? static_cast<T>(r % 3 - 4) : random.below(2) ? T(-0.0) : T(0);
        permuteRows();
    } else if (kind == 8) // ties, but for the last bits
        for (T &x : a)
            x = std::copysign(1 + random.below(4) * std::numeric_limits<T>::epsilon(), x);
    else
        std::fill(a.begin(), a.end(), T(0));
    return a;
}

template <class T>
std::vector<T> symmetric(int n, std::vector<T> a)
{
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < i; ++j)
            a[i * n + j] = a[j * n + i];
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
        for (int i = 0; i < n; ++i)
            for (int j = i; j < n; ++j)
                a[i * n + j] = i == j ? T(random.below(7) - 3) * T(0.5) : T(random.below(3) - 1) * T(random.below(2));
    return symmetric(n, a);
}

// From a difficult matrix: as it is, or one on which reduction, sweeps, blocks or substitutions come to their turnings.
template <class T>
std::vector<T> difficultGeneral(int n, const std::vector<T> &difficult, Random &random)
{
    enum {
        asItIs,
        whole,
        triangle,
        emptyDiagonal,
        companion,
        equalDiagonals,
        unitDiagonal,
        jordan,
        tiny,
        special,
        tight
    };
    const int kind = random.below(tight + 1);
    if (kind == asItIs)
        return difficult;
    std::vector<T> a = someMatrix<T>(n, random);
    const auto at = [&](int r, int c) -> T & { return a[r * n + c]; };
    const T small = std::ldexp(T(1), sizeof(T) == 4 ? -100 : -900), huge = std::numeric_limits<T>::max();
    const T odd[] = {std::numeric_limits<T>::quiet_NaN(), std::numeric_limits<T>::infinity(), huge, small};
    const int chosen = random.below(n) / 2; // of the blocks of 1 or 2 along the diagonal
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c) {
            const bool isInBlock = r / 2 == c / 2, isBelow = c < r && !isInBlock;
            T &x = at(r, c);
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
            else if (kind == tight && !isInBlock) // equal tiny blocks, coupled by large elements
                x *= 16;
            else if (kind == tight)
                x = r == c ? small : c > r ? small * T(-0.5) : small * T(random.below(2) ? 0.5 : 0.25);
        }
    if (kind == jordan && n > 1)
        std::swap_ranges(&a[0], &a[0] + n, &a[random.below(n - 1) * n + n]);
    if (random.below(3) == 0) // what is upper becomes lower
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < r; ++c)
                std::swap(at(r, c), at(c, r));
    return a;
}

// Factors of sums: numbers between -1 and 1 with zeros, infinities and the extremes of the exponent among them now and
// then. Of difficult ones the products are zeros, most of them negative.
template <class T>
std::vector<T> someFactors(std::size_t n, bool difficult, bool first, Random &random)
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
            x = inUnitInterval<T>(random);
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
    const std::vector<T> factor = someMatrix<T>(n, random);
    std::vector<T> a(n * n, std::numeric_limits<T>::quiet_NaN());
    const auto at = [&](int i, int j) -> T & { return a[i * n + j]; };
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) {
            T sum = i == j ? T(0.25) : 0;
            for (int k = 0; k < n; ++k)
                sum += factor[i * n + k] * factor[j * n + k];
            at(i, j) = sum;
        }
    if (!difficult)
        return a;
    const int row = random.below(n), kind = random.below(8);
    if (kind == 0)
        at(row, row) = -at(row, row);
    else if (kind == 1 || kind > 5) // the rest at this row is exact
        for (int j = 0; j <= row; ++j) {
            const T thresholds[] = {0, T(FLT_EPSILON), T(DBL_EPSILON), oracle::least<T>};
            const T exact = thresholds[random.below(4)];
            const T chosen[] = {exact, std::nextafter(exact, T(-1)), std::nextafter(exact, T(1))};
            at(row, j) = j < row ? T(random.below(2) - 1) * T(0) : chosen[random.below(3)];
        }
    else if (kind == 2) {
        const T special[] = {std::numeric_limits<T>::quiet_NaN(), std::numeric_limits<T>::infinity(),
                             -std::numeric_limits<T>::infinity(), T(-0.0), oracle::least<T> / 4};
        at(row, random.below(row + 1)) = special[random.below(5)];
    } else if (kind == 3)
        for (T &x : a)
            x = std::ldexp(x, (sizeof(T) == 4 ? 20 : 160) * (random.below(13) - 6));
    else if (kind == 4) // two equal rows, with integers that leave exactly 0
        for (int i = 0; i < n; ++i)
            for (int j = 0; j <= i; ++j)
                at(i, j) = i == j && i % 2 == 0 ? T(4)
                           : i == j             ? T(4 * random.below(2))
                                                : T(4 * (j % 2 == 0 && i == j + 1));
    else
        std::fill(a.begin(), a.end(), T(0));
    return a;
}

// Nothing above the diagonal is to be read.
template <class T>
std::vector<T> lowerTriangle(int n, std::vector<T> a)
{
    for (int i = 0; i < n; ++i)
        std::fill(&a[i * n] + i + 1, &a[i * n] + n, std::numeric_limits<T>::quiet_NaN());
    return a;
}

// A matrix with at least as many rows as columns. Difficult ones have columns that vanish at some step, at or beside
// the threshold, and what difficult square matrices have.
template <class T>
std::vector<T> someTallMatrix(int width, int height, bool difficult, Random &random)
{
    std::vector<T> square =
        difficult && random.below(2) ? difficultMatrix<T>(height, random) : someMatrix<T>(height, random);
    std::vector<T> a;
    for (int i = 0; i < height; ++i)
        a.insert(a.end(), &square[i * height], &square[i * height] + width);
    if (!difficult || random.below(2))
        return a;
    const int column = random.below(width);
    const T root = sizeof(T) == 4 ? std::ldexp(T(1), -12) : std::ldexp(T(1), -26);
    for (int i = 0; i < height; ++i) {
        for (int j = 0; j < column; ++j) // the steps before leave the column as it is
            a[i * width + j] = i == j ? T(random.below(2) ? 2 : -2) : T(0);
        a[i * width + column] = 0;
    }
    const int kind = random.below(4);
    const auto below = [&] { return std::min(height - 1, column + random.below(3)); };
    if (kind > 0) // the squared length is exactly the threshold, beside it, or more
        a[below() * width + column] = random.below(2) ? root : -root;
    if (kind > 1 && sizeof(T) == 4)
        a[below() * width + column] = root;
    if (kind > 2)
        a[below() * width + column] = std::nextafter(root, T(random.below(2)));
    return a;
}

// Element k of a sum or difference, in the order object, row, column. A source that is no array is the same for every
// object.
template <class T>
T sumOf(const std::string &family, const std::vector<T> &a, const std::vector<T> &b, std::size_t k)
{
    const T &x = a[k % a.size()], &y = b[k % b.size()];
    return family == "Add" ? x + y : x - y;
}
