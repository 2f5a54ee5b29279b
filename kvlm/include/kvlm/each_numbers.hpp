/**
 * @file each_numbers.hpp
 * Numbers by their bits: magnitudes, marks, powers of two, sums of squares.
 */
#ifndef KVLM_EACH_NUMBERS_HPP
#define KVLM_EACH_NUMBERS_HPP

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace kvlm {
namespace each {
namespace detail {

/// A product of sizes.
constexpr std::size_t numberOf(int a, int b = 1, int c = 1)
{
    return static_cast<std::size_t>(a) * static_cast<std::size_t>(b) * static_cast<std::size_t>(c);
}

/// The bits of a magnitude: in the order of the magnitudes, infinities and NaN last, also with -ffast-math.
inline std::uint32_t magnitudeBits(float x)
{
    std::uint32_t bits;
    std::memcpy(&bits, &x, sizeof(bits));
    return bits & 0x7fffffffu;
}
inline std::uint64_t magnitudeBits(double x)
{
    std::uint64_t bits;
    std::memcpy(&bits, &x, sizeof(bits));
    return bits & 0x7fffffffffffffffu;
}
template <class T>
bool isFinite(T x)
{
    return magnitudeBits(x) <= magnitudeBits(std::numeric_limits<T>::max());
}
/// Whether the magnitude is in [low, high].
template <class T>
bool isWithin(T x, T low, T high)
{
    return magnitudeBits(x) - magnitudeBits(low) <= magnitudeBits(high) - magnitudeBits(low);
}
template <class T>
constexpr T notANumber = std::numeric_limits<T>::quiet_NaN();

/// x as it was rounded: a compiler that fuses products and sums has to stop here. Equal products then cancel.
template <class T>
T rounded(T x)
{
#ifdef __SSE2__
    __asm__("" : "+x"(x));
    return x;
#else
    volatile T stored = x;
    return stored;
#endif
}

/// A NaN that no arithmetic makes: what still holds it was not written.
template <class T>
T markOf()
{
    using Bits = decltype(magnitudeBits(T()));
    const Bits bits = magnitudeBits(notANumber<T>) | 0x2c0de;
    T mark;
    std::memcpy(&mark, &bits, sizeof(mark));
    return mark;
}
template <class T>
bool isMark(T x)
{
    return magnitudeBits(x) == magnitudeBits(markOf<T>());
}

/// A power of two, factor, that brings a magnitude to about 1, and its reciprocal; both are normal numbers.
template <class T>
struct Power {
    Power() = default;
    explicit Power(T largest)
    {
        using Bits = decltype(magnitudeBits(largest));
        constexpr int shift = std::numeric_limits<T>::digits - 1;
        constexpr Bits bias = std::numeric_limits<T>::max_exponent - 1;
        const Bits exponent = std::clamp<Bits>(magnitudeBits(largest) >> shift, 1, 2 * bias - 1);
        const Bits up = (2 * bias - exponent) << shift, down = exponent << shift;
        std::memcpy(&factor, &up, sizeof(up));
        std::memcpy(&reciprocal, &down, sizeof(down));
    }
    T factor = 1, reciprocal = 1;
};

/// Element k of x and those behind it that fill a register, wherever they lie.
template <class Vector, class T>
Vector loaded(const T *x, std::size_t k)
{
    Vector result;
    std::memcpy(&result, x + k, sizeof(result));
    return result;
}

/// The sum of squares of so many elements, which overflows as soon as one does.
template <class T>
T squares(const T *x, std::size_t elements)
{
    typedef T Vector __attribute__((vector_size(16)));
    constexpr std::size_t lanes = 16 / sizeof(T);
    const auto squareOf = [x](std::size_t k) {
        const Vector v = loaded<Vector>(x, k);
        return v * v;
    };
    Vector a = {}, b = {}, c = {}, d = {};
    std::size_t k = 0;
    for (; k + 8 * lanes <= elements; k += 8 * lanes) {
        a += squareOf(k) + squareOf(k + lanes);
        b += squareOf(k + 2 * lanes) + squareOf(k + 3 * lanes);
        c += squareOf(k + 4 * lanes) + squareOf(k + 5 * lanes);
        d += squareOf(k + 6 * lanes) + squareOf(k + 7 * lanes);
    }
    for (; k + lanes <= elements; k += lanes)
        b += squareOf(k);
    a += b + (c + d);
    T sum = 0;
    for (; k < elements; ++k)
        sum += x[k] * x[k];
    for (std::size_t lane = 0; lane < lanes; ++lane)
        sum += a[lane];
    return sum;
}

/// Whether mark(x), of the bits of x, has a first bit of 0 for all elements.
template <class T, class Mark>
bool areUnmarked(const T *x, std::size_t elements, Mark mark)
{
    using Word = decltype(magnitudeBits(T()));
    typedef Word Vector __attribute__((vector_size(16)));
    constexpr std::size_t lanes = 16 / sizeof(T);
    const auto markAt = [&](std::size_t k) { return mark(loaded<Vector>(x, k)); };
    Vector seen = {};
    std::size_t k = 0;
    for (; k + 4 * lanes <= elements; k += 4 * lanes)
        seen |= (markAt(k) | markAt(k + lanes)) | (markAt(k + 2 * lanes) | markAt(k + 3 * lanes));
    for (; k + lanes <= elements; k += lanes)
        seen |= markAt(k);
    Word all = 0;
    for (; k < elements; ++k)
        all |= mark(loaded<Word>(x, k));
    for (std::size_t lane = 0; lane < lanes; ++lane)
        all |= seen[lane];
    return all >> (8 * sizeof(T) - 1) == 0;
}
/// Whether no magnitude is so small that products with it have lost digits; zeros have none to lose.
template <class T>
bool areZeroOrNormal(const T *x, std::size_t elements)
{
    using Word = decltype(magnitudeBits(T()));
    const Word least = magnitudeBits(std::numeric_limits<T>::min() / std::numeric_limits<T>::epsilon());
    // One less than its magnitude, zero is the largest of all.
    return areUnmarked(x, elements, [least](auto bits) { return ((bits - 1) & (~Word(0) >> 1)) - (least - 1); });
}
/// Whether magnitudes are at least `low`, at most 1, and not far above it, by less than half of all exponents.
template <class T>
bool areMiddling(const T *x, std::size_t elements, T low)
{
    const auto least = magnitudeBits(low);
    return areUnmarked(x, elements, [least](auto bits) {
        bits -= least;
        return bits + bits;
    });
}
} // namespace detail
} // namespace each
} // namespace kvlm

#endif
