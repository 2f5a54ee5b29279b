// The number type of the widest register that the build may use: of 16 bytes by default, of 32 with AVX2, of 64 with
// AVX-512. A wide register is blocks of 16 bytes; what shuffles elements does in each block what it does in a register
// of 16 bytes, so block b holds the objects that would come b-th. Bits are those of Lanes: no operation is fused, and
// the processor's approximations are those of narrow registers.
#ifndef KVLM_LANES_WIDE_H
#define KVLM_LANES_WIDE_H

#include "lanes/lanes.h"

#if defined(__AVX512F__) && defined(__AVX512DQ__)
#include <immintrin.h>
#define KVLM_WIDE(name) _mm512_##name
#elif defined(__AVX2__)
#include <immintrin.h>
#define KVLM_WIDE(name) _mm256_##name
#endif

namespace kvlm {

#ifdef KVLM_WIDE

template <class T>
struct WideLanes;

#ifdef __AVX512F__

using WideFloats = __m512;
using WideDoubles = __m512d;

// Masks are registers as in all other builds; the compiler keeps them in mask registers where that is all they are for.
template <int Predicate>
KVLM_INLINE WideFloats compared(WideFloats a, WideFloats b)
{
    return _mm512_castsi512_ps(_mm512_movm_epi32(_mm512_cmp_ps_mask(a, b, Predicate)));
}

template <int Predicate>
KVLM_INLINE WideDoubles compared(WideDoubles a, WideDoubles b)
{
    return _mm512_castsi512_pd(_mm512_movm_epi64(_mm512_cmp_pd_mask(a, b, Predicate)));
}

KVLM_INLINE unsigned bitsOf(WideFloats mask)
{
    return _mm512_movepi32_mask(_mm512_castps_si512(mask));
}

KVLM_INLINE unsigned bitsOf(WideDoubles mask)
{
    return _mm512_movepi64_mask(_mm512_castpd_si512(mask));
}

KVLM_INLINE WideFloats chosen(WideFloats mask, WideFloats x, WideFloats y)
{
    return _mm512_castsi512_ps(
        _mm512_ternarylogic_epi32(_mm512_castps_si512(mask), _mm512_castps_si512(x), _mm512_castps_si512(y), 0xca));
}

KVLM_INLINE WideDoubles chosen(WideDoubles mask, WideDoubles x, WideDoubles y)
{
    return _mm512_castsi512_pd(
        _mm512_ternarylogic_epi64(_mm512_castpd_si512(mask), _mm512_castpd_si512(x), _mm512_castpd_si512(y), 0xca));
}

template <int Block>
KVLM_INLINE __m128 blockOf(WideFloats v)
{
    return _mm512_extractf32x4_ps(v, Block);
}

template <int Block>
KVLM_INLINE __m128d blockOf(WideDoubles v)
{
    return _mm512_extractf64x2_pd(v, Block);
}

template <class BlockAt>
KVLM_INLINE WideFloats floatsOf(BlockAt at)
{
    const __m512 first = _mm512_castps128_ps512(at(Fixed<0>()).v), two = _mm512_insertf32x4(first, at(Fixed<1>()).v, 1);
    return _mm512_insertf32x4(_mm512_insertf32x4(two, at(Fixed<2>()).v, 2), at(Fixed<3>()).v, 3);
}

template <class BlockAt>
KVLM_INLINE WideDoubles doublesOf(BlockAt at)
{
    const __m512d first = _mm512_castpd128_pd512(at(Fixed<0>()).v),
                  two = _mm512_insertf64x2(first, at(Fixed<1>()).v, 1);
    return _mm512_insertf64x2(_mm512_insertf64x2(two, at(Fixed<2>()).v, 2), at(Fixed<3>()).v, 3);
}

KVLM_INLINE __m256 lowFloats(WideFloats v)
{
    return _mm512_castps512_ps256(v);
}

KVLM_INLINE __m256 highFloats(WideFloats v)
{
    return _mm512_extractf32x8_ps(v, 1);
}

KVLM_INLINE WideFloats joined(__m256 low, __m256 high)
{
    return _mm512_insertf32x8(_mm512_castps256_ps512(low), high, 1);
}

#else

using WideFloats = __m256;
using WideDoubles = __m256d;

template <int Predicate>
KVLM_INLINE WideFloats compared(WideFloats a, WideFloats b)
{
    return _mm256_cmp_ps(a, b, Predicate);
}

template <int Predicate>
KVLM_INLINE WideDoubles compared(WideDoubles a, WideDoubles b)
{
    return _mm256_cmp_pd(a, b, Predicate);
}

KVLM_INLINE unsigned bitsOf(WideFloats mask)
{
    return static_cast<unsigned>(_mm256_movemask_ps(mask));
}

KVLM_INLINE unsigned bitsOf(WideDoubles mask)
{
    return static_cast<unsigned>(_mm256_movemask_pd(mask));
}

KVLM_INLINE WideFloats chosen(WideFloats mask, WideFloats x, WideFloats y)
{
    return _mm256_blendv_ps(y, x, mask);
}

KVLM_INLINE WideDoubles chosen(WideDoubles mask, WideDoubles x, WideDoubles y)
{
    return _mm256_blendv_pd(y, x, mask);
}

template <int Block>
KVLM_INLINE __m128 blockOf(WideFloats v)
{
    return _mm256_extractf128_ps(v, Block);
}

template <int Block>
KVLM_INLINE __m128d blockOf(WideDoubles v)
{
    return _mm256_extractf128_pd(v, Block);
}

template <class BlockAt>
KVLM_INLINE WideFloats floatsOf(BlockAt at)
{
    return _mm256_insertf128_ps(_mm256_castps128_ps256(at(Fixed<0>()).v), at(Fixed<1>()).v, 1);
}

template <class BlockAt>
KVLM_INLINE WideDoubles doublesOf(BlockAt at)
{
    return _mm256_insertf128_pd(_mm256_castpd128_pd256(at(Fixed<0>()).v), at(Fixed<1>()).v, 1);
}

KVLM_INLINE __m128 lowFloats(WideFloats v)
{
    return _mm256_castps256_ps128(v);
}

KVLM_INLINE __m128 highFloats(WideFloats v)
{
    return _mm256_extractf128_ps(v, 1);
}

KVLM_INLINE WideFloats joined(__m128 low, __m128 high)
{
    return _mm256_insertf128_ps(_mm256_castps128_ps256(low), high, 1);
}

#endif

KVLM_INLINE __m128 rough(__m128 v)
{
    return _mm_rcp_ps(v);
}

KVLM_INLINE __m256 rough(__m256 v)
{
    return _mm256_rcp_ps(v);
}

KVLM_INLINE __m128 roughRoot(__m128 v)
{
    return _mm_rsqrt_ps(v);
}

KVLM_INLINE __m256 roughRoot(__m256 v)
{
    return _mm256_rsqrt_ps(v);
}

template <>
struct WideLanes<float> {
    static constexpr int count = sizeof(WideFloats) / sizeof(float), blocks = sizeof(WideFloats) / 16;
    WideFloats v;

    static KVLM_INLINE WideLanes load(const float *p) { return {KVLM_WIDE(loadu_ps)(p)}; }
    static KVLM_INLINE WideLanes all(float x) { return {KVLM_WIDE(set1_ps)(x)}; }
    KVLM_INLINE void store(float *p) const { KVLM_WIDE(storeu_ps)(p, v); }
    KVLM_INLINE void storeOne(float *p) const { Loose<float>::store(p, v[0]); }
    template <class BlockAt>
    static KVLM_INLINE WideLanes ofBlocks(BlockAt at)
    {
        return {floatsOf(at)};
    }
    template <int Block>
    KVLM_INLINE Lanes<float> block() const
    {
        return {blockOf<Block>(v)};
    }
    KVLM_INLINE void storeInts(int *p) const
    {
        eachIndex(Fixed<blocks>(), [&](auto b) KVLM_INLINED { block<b>().storeInts(p + b * Lanes<float>::count); });
    }
    template <int Order>
    static KVLM_INLINE WideLanes shuffle(WideLanes a, WideLanes b)
    {
        return {KVLM_WIDE(shuffle_ps)(a.v, b.v, Order)};
    }

    friend KVLM_INLINE WideLanes operator+(WideLanes a, WideLanes b) { return {KVLM_WIDE(add_ps)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes operator-(WideLanes a, WideLanes b) { return {KVLM_WIDE(sub_ps)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes operator*(WideLanes a, WideLanes b) { return {KVLM_WIDE(mul_ps)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes operator/(WideLanes a, WideLanes b) { return {KVLM_WIDE(div_ps)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes operator&(WideLanes a, WideLanes b) { return {KVLM_WIDE(and_ps)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes operator|(WideLanes a, WideLanes b) { return {KVLM_WIDE(or_ps)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes operator^(WideLanes a, WideLanes b) { return {KVLM_WIDE(xor_ps)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes without(WideLanes a, WideLanes mask) { return {KVLM_WIDE(andnot_ps)(mask.v, a.v)}; }
    friend KVLM_INLINE WideLanes unpackLow(WideLanes a, WideLanes b) { return {KVLM_WIDE(unpacklo_ps)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes unpackHigh(WideLanes a, WideLanes b) { return {KVLM_WIDE(unpackhi_ps)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes larger(WideLanes a, WideLanes b) { return {KVLM_WIDE(max_ps)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes squareRoot(WideLanes a) { return {KVLM_WIDE(sqrt_ps)(a.v)}; }
    // The instruction of 64 bytes approximates otherwise than those of narrower registers.
    friend KVLM_INLINE WideLanes roughReciprocal(WideLanes a)
    {
        return {joined(rough(lowFloats(a.v)), rough(highFloats(a.v)))};
    }
    friend KVLM_INLINE WideLanes roughReciprocalRoot(WideLanes a)
    {
        return {joined(roughRoot(lowFloats(a.v)), roughRoot(highFloats(a.v)))};
    }
};

template <>
struct WideLanes<double> {
    static constexpr int count = sizeof(WideDoubles) / sizeof(double), blocks = sizeof(WideDoubles) / 16;
    WideDoubles v;

    static KVLM_INLINE WideLanes load(const double *p) { return {KVLM_WIDE(loadu_pd)(p)}; }
    static KVLM_INLINE WideLanes all(double x) { return {KVLM_WIDE(set1_pd)(x)}; }
    KVLM_INLINE void store(double *p) const { KVLM_WIDE(storeu_pd)(p, v); }
    KVLM_INLINE void storeOne(double *p) const { Loose<double>::store(p, v[0]); }
    template <class BlockAt>
    static KVLM_INLINE WideLanes ofBlocks(BlockAt at)
    {
        return {doublesOf(at)};
    }
    template <int Block>
    KVLM_INLINE Lanes<double> block() const
    {
        return {blockOf<Block>(v)};
    }
    KVLM_INLINE void storeInts(int *p) const
    {
        eachIndex(Fixed<blocks>(), [&](auto b) KVLM_INLINED { block<b>().storeInts(p + b * Lanes<double>::count); });
    }
    template <int Order>
    static KVLM_INLINE WideLanes shuffle(WideLanes a, WideLanes b)
    {
        constexpr int each = blocks == 4 ? 0x55 : 0x5; // the two bits of a block for all blocks
        return {KVLM_WIDE(shuffle_pd)(a.v, b.v, Order * each)};
    }

    friend KVLM_INLINE WideLanes operator+(WideLanes a, WideLanes b) { return {KVLM_WIDE(add_pd)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes operator-(WideLanes a, WideLanes b) { return {KVLM_WIDE(sub_pd)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes operator*(WideLanes a, WideLanes b) { return {KVLM_WIDE(mul_pd)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes operator/(WideLanes a, WideLanes b) { return {KVLM_WIDE(div_pd)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes operator&(WideLanes a, WideLanes b) { return {KVLM_WIDE(and_pd)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes operator|(WideLanes a, WideLanes b) { return {KVLM_WIDE(or_pd)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes operator^(WideLanes a, WideLanes b) { return {KVLM_WIDE(xor_pd)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes without(WideLanes a, WideLanes mask) { return {KVLM_WIDE(andnot_pd)(mask.v, a.v)}; }
    friend KVLM_INLINE WideLanes unpackLow(WideLanes a, WideLanes b) { return {KVLM_WIDE(unpacklo_pd)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes unpackHigh(WideLanes a, WideLanes b) { return {KVLM_WIDE(unpackhi_pd)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes larger(WideLanes a, WideLanes b) { return {KVLM_WIDE(max_pd)(a.v, b.v)}; }
    friend KVLM_INLINE WideLanes squareRoot(WideLanes a) { return {KVLM_WIDE(sqrt_pd)(a.v)}; }
};

template <class T>
using Wide = WideLanes<T>;

template <class T>
struct NumberTraits<WideLanes<T>> {
    using Element = T;
    template <class Other>
    using With = WideLanes<Other>;
    static constexpr int registers = 1;
};

template <class T>
KVLM_INLINE WideLanes<T> greater(WideLanes<T> a, WideLanes<T> b)
{
    return {compared<_CMP_GT_OS>(a.v, b.v)};
}

template <class T>
KVLM_INLINE WideLanes<T> notGreater(WideLanes<T> a, WideLanes<T> b)
{
    return {compared<_CMP_NGT_US>(a.v, b.v)};
}

template <class T>
KVLM_INLINE WideLanes<T> less(WideLanes<T> a, WideLanes<T> b)
{
    return {compared<_CMP_LT_OS>(a.v, b.v)};
}

template <class T>
KVLM_INLINE WideLanes<T> atLeast(WideLanes<T> a, WideLanes<T> b)
{
    return {compared<_CMP_GE_OS>(a.v, b.v)};
}

template <class T>
KVLM_INLINE WideLanes<T> notAtLeast(WideLanes<T> a, WideLanes<T> b)
{
    return {compared<_CMP_NGE_US>(a.v, b.v)};
}

template <class T>
KVLM_INLINE WideLanes<T> equal(WideLanes<T> a, WideLanes<T> b)
{
    return {compared<_CMP_EQ_OQ>(a.v, b.v)};
}

template <class T>
KVLM_INLINE unsigned laneBits(WideLanes<T> mask)
{
    return bitsOf(mask.v);
}

template <class T>
KVLM_INLINE bool any(WideLanes<T> mask)
{
    return laneBits(mask) != 0;
}

template <class T>
KVLM_INLINE WideLanes<T> choose(WideLanes<T> mask, WideLanes<T> x, WideLanes<T> y)
{
    return {chosen(mask.v, x.v, y.v)};
}

template <class T>
KVLM_INLINE WideLanes<T> magnitude(WideLanes<T> a)
{
    return without(a, WideLanes<T>::all(T(-0.0)));
}

template <class T>
KVLM_INLINE WideLanes<T> negative(WideLanes<T> a)
{
    return a ^ WideLanes<T>::all(T(-0.0));
}

KVLM_INLINE void widen(WideLanes<float> x, WideLanes<double> &low, WideLanes<double> &high)
{
    low.v = KVLM_WIDE(cvtps_pd)(lowFloats(x.v));
    high.v = KVLM_WIDE(cvtps_pd)(highFloats(x.v));
}

KVLM_INLINE WideLanes<float> narrow(WideLanes<double> low, WideLanes<double> high)
{
    return {joined(KVLM_WIDE(cvtpd_ps)(low.v), KVLM_WIDE(cvtpd_ps)(high.v))};
}

template <class T, class W>
KVLM_INLINE WideLanes<W> roundedTo(WideLanes<W> x)
{
    if constexpr (!std::is_same_v<T, W>)
        x.v = KVLM_WIDE(cvtps_pd)(KVLM_WIDE(cvtpd_ps)(x.v));
    return x;
}

#else

template <class T>
using Wide = Lanes<T>;

#endif

// Whether the build has a wider register than the narrow one.
template <class T>
constexpr bool hasWide = !std::is_same_v<Wide<T>, Lanes<T>>;

// What is in the lanes of a narrow register, in each block of a register of type V.
template <class V, class T>
KVLM_INLINE V inEachBlock(Lanes<T> x)
{
    return V::ofBlocks([&](auto) KVLM_INLINED { return x; });
}

// The numbers that an array or a pointer gives access to.
template <class Array>
using NumberOf = std::decay_t<decltype(std::declval<Array &>()[0])>;

} // namespace kvlm

#endif
