// The number type of a whole register: four 32f or two 64f, one rounded operation on all of them at once.
//
// Loads and stores ask for no alignment. Intrinsics stand in this folder, and where products shuffle their factors.
#ifndef KVLM_LANES_LANES_H
#define KVLM_LANES_LANES_H

#include "frame/base.h"

#include <emmintrin.h>
#include <utility>

namespace kvlm {

template <class T>
struct Lanes;

// An element at any address, as a number: gcc would fetch what is copied by memcpy into an integer register first.
template <class T>
struct Loose {
    struct Place {
        T x;
    } __attribute__((packed, may_alias));

    static KVLM_INLINE T load(const T *p) { return reinterpret_cast<const Place *>(p)->x; }
    static KVLM_INLINE void store(T *p, T x) { reinterpret_cast<Place *>(p)->x = x; }
};

template <>
struct Lanes<float> {
    static constexpr int count = 4, blocks = 1;
    __m128 v;

    static KVLM_INLINE Lanes load(const float *p) { return {_mm_loadu_ps(p)}; }
    static KVLM_INLINE Lanes all(float x) { return {_mm_set1_ps(x)}; }
    KVLM_INLINE void store(float *p) const { _mm_storeu_ps(p, v); }

    // The first N of the four; a load clears the others.
    template <int N>
    static KVLM_INLINE Lanes loadFirst(const float *p)
    {
        static_assert(N == 2 || N == 4);
        if constexpr (N == 4)
            return load(p);
        else
            return {_mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i *>(p)))};
    }
    template <int N>
    KVLM_INLINE void storeFirst(float *p) const
    {
        static_assert(N == 2 || N == 4);
        if constexpr (N == 4)
            store(p);
        else
            _mm_storel_epi64(reinterpret_cast<__m128i *>(p), _mm_castps_si128(v));
    }

    // One element of each of four objects.
    static KVLM_INLINE Lanes gather(const float *p0, const float *p1, const float *p2, const float *p3)
    {
        using At = Loose<float>;
        return {_mm_setr_ps(At::load(p0), At::load(p1), At::load(p2), At::load(p3))};
    }
    KVLM_INLINE void scatter(float *p0, float *p1, float *p2, float *p3) const
    {
        using At = Loose<float>;
        At::store(p0, v[0]);
        At::store(p1, v[1]);
        At::store(p2, v[2]);
        At::store(p3, v[3]);
    }
    // Of the one block that this register is, and its elements in an order.
    template <class BlockAt>
    static KVLM_INLINE Lanes ofBlocks(BlockAt at)
    {
        return at(Fixed<0>());
    }
    template <int>
    KVLM_INLINE Lanes block() const
    {
        return *this;
    }
    template <int Order>
    static KVLM_INLINE Lanes shuffle(Lanes a, Lanes b)
    {
        return {_mm_shuffle_ps(a.v, b.v, Order)};
    }
    KVLM_INLINE void storeOne(float *p) const { Loose<float>::store(p, v[0]); }
    // Whole numbers.
    KVLM_INLINE void storeInts(int *p) const { _mm_storeu_si128(reinterpret_cast<__m128i *>(p), _mm_cvttps_epi32(v)); }

    friend KVLM_INLINE Lanes operator+(Lanes a, Lanes b) { return {_mm_add_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes operator-(Lanes a, Lanes b) { return {_mm_sub_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes operator*(Lanes a, Lanes b) { return {_mm_mul_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes operator/(Lanes a, Lanes b) { return {_mm_div_ps(a.v, b.v)}; }

    // Masks: all bits of a lane, or none.
    friend KVLM_INLINE Lanes operator&(Lanes a, Lanes b) { return {_mm_and_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes operator|(Lanes a, Lanes b) { return {_mm_or_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes operator^(Lanes a, Lanes b) { return {_mm_xor_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes without(Lanes a, Lanes mask) { return {_mm_andnot_ps(mask.v, a.v)}; }
    friend KVLM_INLINE Lanes greater(Lanes a, Lanes b) { return {_mm_cmpgt_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes notGreater(Lanes a, Lanes b) { return {_mm_cmpngt_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes less(Lanes a, Lanes b) { return {_mm_cmplt_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes atLeast(Lanes a, Lanes b) { return {_mm_cmpge_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes notAtLeast(Lanes a, Lanes b) { return {_mm_cmpnge_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes equal(Lanes a, Lanes b) { return {_mm_cmpeq_ps(a.v, b.v)}; }
    friend KVLM_INLINE unsigned laneBits(Lanes mask) { return static_cast<unsigned>(_mm_movemask_ps(mask.v)); }
    friend KVLM_INLINE Lanes larger(Lanes a, Lanes b) { return {_mm_max_ps(a.v, b.v)}; } // a > b ? a : b
    friend KVLM_INLINE Lanes magnitude(Lanes a) { return {_mm_andnot_ps(_mm_set1_ps(-0.0f), a.v)}; }
    friend KVLM_INLINE Lanes squareRoot(Lanes a) { return {_mm_sqrt_ps(a.v)}; }
    friend KVLM_INLINE Lanes unpackLow(Lanes a, Lanes b) { return {_mm_unpacklo_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes unpackHigh(Lanes a, Lanes b) { return {_mm_unpackhi_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes roughReciprocal(Lanes a) { return {_mm_rcp_ps(a.v)}; }
    friend KVLM_INLINE Lanes roughReciprocalRoot(Lanes a) { return {_mm_rsqrt_ps(a.v)}; }
};

template <>
struct Lanes<double> {
    static constexpr int count = 2, blocks = 1;
    __m128d v;

    static KVLM_INLINE Lanes load(const double *p) { return {_mm_loadu_pd(p)}; }
    static KVLM_INLINE Lanes all(double x) { return {_mm_set1_pd(x)}; }
    KVLM_INLINE void store(double *p) const { _mm_storeu_pd(p, v); }

    template <int N>
    static KVLM_INLINE Lanes loadFirst(const double *p)
    {
        static_assert(N == 2);
        return load(p);
    }
    template <int N>
    KVLM_INLINE void storeFirst(double *p) const
    {
        static_assert(N == 2);
        store(p);
    }

    static KVLM_INLINE Lanes gather(const double *p0, const double *p1)
    {
        return {_mm_setr_pd(Loose<double>::load(p0), Loose<double>::load(p1))};
    }
    KVLM_INLINE void scatter(double *p0, double *p1) const
    {
        Loose<double>::store(p0, v[0]);
        Loose<double>::store(p1, v[1]);
    }
    // Of the one block that this register is, and its elements in an order.
    template <class BlockAt>
    static KVLM_INLINE Lanes ofBlocks(BlockAt at)
    {
        return at(Fixed<0>());
    }
    template <int>
    KVLM_INLINE Lanes block() const
    {
        return *this;
    }
    template <int Order>
    static KVLM_INLINE Lanes shuffle(Lanes a, Lanes b)
    {
        return {_mm_shuffle_pd(a.v, b.v, Order)};
    }
    KVLM_INLINE void storeOne(double *p) const { Loose<double>::store(p, v[0]); }
    KVLM_INLINE void storeInts(int *p) const { _mm_storel_epi64(reinterpret_cast<__m128i *>(p), _mm_cvttpd_epi32(v)); }

    friend KVLM_INLINE Lanes operator+(Lanes a, Lanes b) { return {_mm_add_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes operator-(Lanes a, Lanes b) { return {_mm_sub_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes operator*(Lanes a, Lanes b) { return {_mm_mul_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes operator/(Lanes a, Lanes b) { return {_mm_div_pd(a.v, b.v)}; }

    friend KVLM_INLINE Lanes operator&(Lanes a, Lanes b) { return {_mm_and_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes operator|(Lanes a, Lanes b) { return {_mm_or_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes operator^(Lanes a, Lanes b) { return {_mm_xor_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes without(Lanes a, Lanes mask) { return {_mm_andnot_pd(mask.v, a.v)}; }
    friend KVLM_INLINE Lanes greater(Lanes a, Lanes b) { return {_mm_cmpgt_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes notGreater(Lanes a, Lanes b) { return {_mm_cmpngt_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes less(Lanes a, Lanes b) { return {_mm_cmplt_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes atLeast(Lanes a, Lanes b) { return {_mm_cmpge_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes notAtLeast(Lanes a, Lanes b) { return {_mm_cmpnge_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes equal(Lanes a, Lanes b) { return {_mm_cmpeq_pd(a.v, b.v)}; }
    friend KVLM_INLINE unsigned laneBits(Lanes mask) { return static_cast<unsigned>(_mm_movemask_pd(mask.v)); }
    friend KVLM_INLINE Lanes larger(Lanes a, Lanes b) { return {_mm_max_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes magnitude(Lanes a) { return {_mm_andnot_pd(_mm_set1_pd(-0.0), a.v)}; }
    friend KVLM_INLINE Lanes squareRoot(Lanes a) { return {_mm_sqrt_pd(a.v)}; }
    friend KVLM_INLINE Lanes unpackLow(Lanes a, Lanes b) { return {_mm_unpacklo_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes unpackHigh(Lanes a, Lanes b) { return {_mm_unpackhi_pd(a.v, b.v)}; }
};

template <class T>
KVLM_INLINE Lanes<T> choose(Lanes<T> mask, Lanes<T> x, Lanes<T> y)
{
    return (x & mask) | without(y, mask);
}

template <class T>
KVLM_INLINE bool any(Lanes<T> mask)
{
    return laneBits(mask) != 0;
}

template <class T>
KVLM_INLINE Lanes<T> negative(Lanes<T> a)
{
    return a ^ Lanes<T>::all(T(-0.0));
}

template <int Order, class V>
KVLM_INLINE V shuffled(V a, V b)
{
    return V::template shuffle<Order>(a, b);
}

// Four floats as two pairs of doubles, and back.
KVLM_INLINE void widen(Lanes<float> x, Lanes<double> &low, Lanes<double> &high)
{
    low.v = _mm_cvtps_pd(x.v);
    high.v = _mm_cvtps_pd(_mm_movehl_ps(x.v, x.v));
}

KVLM_INLINE Lanes<float> narrow(Lanes<double> low, Lanes<double> high)
{
    return {_mm_movelh_ps(_mm_cvtpd_ps(low.v), _mm_cvtpd_ps(high.v))};
}

// As an element of type T in memory would be rounded.
template <class T, class W>
KVLM_INLINE Lanes<W> roundedTo(Lanes<W> x)
{
    if constexpr (!std::is_same_v<T, W>)
        x.v = _mm_cvtps_pd(_mm_cvtpd_ps(x.v));
    return x;
}

// An algorithm's number is a Lanes<T>, one object per lane, or T itself, one object.
template <class V>
struct NumberTraits {
    using Element = V;
};

template <class T>
struct NumberTraits<Lanes<T>> {
    using Element = T;
    template <class Other>
    using With = Lanes<Other>;
    static constexpr int registers = 1;
};

// The register of the same width with elements of another type.
template <class V, class T>
using NumberWith = typename NumberTraits<V>::template With<T>;

// The same number for every object.
template <class V>
KVLM_INLINE V number(typename NumberTraits<V>::Element x)
{
    if constexpr (std::is_floating_point_v<V>)
        return x;
    else
        return V::all(x);
}

KVLM_INLINE float magnitude(float a)
{
    return __builtin_fabsf(a);
}

KVLM_INLINE double magnitude(double a)
{
    return __builtin_fabs(a);
}

KVLM_INLINE bool notGreater(float a, float b)
{
    return !(a > b);
}

KVLM_INLINE bool notGreater(double a, double b)
{
    return !(a > b);
}

KVLM_INLINE bool any(bool condition)
{
    return condition;
}

KVLM_INLINE float squareRoot(float a)
{
    return __builtin_sqrtf(a);
}

KVLM_INLINE double squareRoot(double a)
{
    return __builtin_sqrt(a);
}

KVLM_INLINE float roughReciprocalRoot(float a)
{
    return _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(a)));
}

} // namespace kvlm

#endif
