// The number type of a whole register: four 32f or two 64f, one rounded operation on all of them at once.
//
// The only place with processor intrinsics, hand-scheduled routines apart. Loads and stores ask for no alignment.
#ifndef KVLM_LANES_H
#define KVLM_LANES_H

#include "kvlm_base.h"

#include <emmintrin.h>
#include <utility>

namespace kvlm {

template <class T>
struct Lanes;

template <>
struct Lanes<float> {
    static constexpr int count = 4;
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

    friend KVLM_INLINE Lanes operator+(Lanes a, Lanes b) { return {_mm_add_ps(a.v, b.v)}; }
    friend KVLM_INLINE Lanes operator-(Lanes a, Lanes b) { return {_mm_sub_ps(a.v, b.v)}; }
};

template <>
struct Lanes<double> {
    static constexpr int count = 2;
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

    friend KVLM_INLINE Lanes operator+(Lanes a, Lanes b) { return {_mm_add_pd(a.v, b.v)}; }
    friend KVLM_INLINE Lanes operator-(Lanes a, Lanes b) { return {_mm_sub_pd(a.v, b.v)}; }
};

// Keeps what was loaded in registers: gcc would rather load the halves from memory a second time, at twice the cost.
template <int N>
KVLM_INLINE void wholeRegisters(Lanes<double> (&v)[N])
{
#pragma GCC unroll 16
    for (int k = 0; k < N; ++k)
        asm("" : "+x"(v[k].v));
}

// Rows become columns.
KVLM_INLINE void transpose(Lanes<float> (&row)[4])
{
    _MM_TRANSPOSE4_PS(row[0].v, row[1].v, row[2].v, row[3].v);
}

KVLM_INLINE void transpose(Lanes<double> (&row)[2])
{
    wholeRegisters(row);
    const __m128d first = row[0].v;
    row[0].v = _mm_unpacklo_pd(first, row[1].v);
    row[1].v = _mm_unpackhi_pd(first, row[1].v);
}

// A packed matrix of odd order N, its elements in registers one behind the other, rows become columns. The last element
// is in none of them: it stays where it is.
KVLM_INLINE void transposePacked(Lanes<float> (&v)[2], Fixed<3>)
{
    const __m128 first = v[0].v, second = v[1].v;
    const __m128 ends = _mm_shuffle_ps(second, first, _MM_SHUFFLE(0, 1, 0, 2));
    const __m128 starts = _mm_shuffle_ps(first, second, _MM_SHUFFLE(0, 1, 0, 2));
    v[0].v = _mm_shuffle_ps(first, ends, _MM_SHUFFLE(2, 0, 3, 0));
    v[1].v = _mm_shuffle_ps(second, starts, _MM_SHUFFLE(2, 0, 3, 0));
}

// In 64f also several matrices in a row.
template <int N, size_t... K>
KVLM_INLINE void transposePacked(Lanes<double> *v, std::index_sequence<K...>)
{
    constexpr auto source = [](int k) { return k - k % (N * N) + k % N * N + k % (N * N) / N; };
    const Lanes<double> x[] = {v[K]...};
    ((v[K].v = _mm_shuffle_pd(x[source(2 * K) / 2].v, x[source(2 * K + 1) / 2].v,
                              source(2 * K) % 2 | source(2 * K + 1) % 2 << 1)),
     ...);
}

template <int N, int Registers>
KVLM_INLINE void transposePacked(Lanes<double> (&v)[Registers], Fixed<N>)
{
    wholeRegisters(v);
    transposePacked<N>(v, std::make_index_sequence<Registers>());
}

} // namespace kvlm

#endif
