// Elements that change places between registers.
#ifndef KVLM_LANES_SHUFFLES_H
#define KVLM_LANES_SHUFFLES_H

#include "lanes/lanes.h"

namespace kvlm {

// Keeps what was loaded in registers: gcc would rather load the halves from memory a second time, at twice the cost.
template <int N>
KVLM_INLINE void wholeRegisters(Lanes<double> (&v)[N])
{
#pragma GCC unroll 16
    for (int k = 0; k < N; ++k)
        asm("" : "+x"(v[k].v));
}

// Register R of a run of objects of N elements each, every element the number of its object, which x has lane by lane.
template <int N, int R>
KVLM_INLINE Lanes<float> spread(Lanes<float> x)
{
    constexpr auto object = [](int lane) { return (R * 4 + lane) / N; };
    constexpr int objects = _MM_SHUFFLE(object(3), object(2), object(1), object(0));
    return {_mm_shuffle_ps(x.v, x.v, objects)};
}

template <int N, int R>
KVLM_INLINE Lanes<double> spread(Lanes<double> x)
{
    return {_mm_shuffle_pd(x.v, x.v, (R * 2) / N | (R * 2 + 1) / N << 1)};
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

// Four elements of a run of registers, by their places in it: two pairs, each of which may be in one register.
template <int A, int B>
KVLM_INLINE __m128 pairOf(const Lanes<float> *x)
{
    if constexpr (A / 4 == B / 4)
        return x[A / 4].v;
    else
        return _mm_shuffle_ps(x[A / 4].v, x[B / 4].v, A % 4 | B % 4 << 4);
}

template <int A, int B, int C, int D>
KVLM_INLINE Lanes<float> fourOf(const Lanes<float> *x)
{
    constexpr auto lanesOfPair = [](int a, int b) { return a / 4 == b / 4 ? a % 4 | b % 4 << 2 : 2 << 2; };
    constexpr int lanes = lanesOfPair(A, B) | lanesOfPair(C, D) << 4;
    const __m128 first = pairOf<A, B>(x), second = pairOf<C, D>(x);
    return {_mm_shuffle_ps(first, second, lanes)};
}

// Two elements likewise.
template <int A, int B>
KVLM_INLINE Lanes<double> twoOf(const Lanes<double> *x)
{
    return {_mm_shuffle_pd(x[A / 2].v, x[B / 2].v, A % 2 | B % 2 << 1)};
}

// The same of several packed matrices in a row.
template <int N, size_t... K>
KVLM_INLINE void transposePacked(Lanes<double> *v, std::index_sequence<K...>)
{
    constexpr auto source = [](int k) { return k - k % (N * N) + k % N * N + k % (N * N) / N; };
    const Lanes<double> x[] = {v[K]...};
    ((v[K] = twoOf<source(2 * K), source(2 * K + 1)>(x)), ...);
}

template <int N, size_t... K>
KVLM_INLINE void transposePacked(Lanes<float> *v, std::index_sequence<K...>)
{
    constexpr auto source = [](int k) { return k - k % (N * N) + k % N * N + k % (N * N) / N; };
    const Lanes<float> x[] = {v[K]...};
    ((v[K] = fourOf<source(4 * K), source(4 * K + 1), source(4 * K + 2), source(4 * K + 3)>(x)), ...);
}

template <class T, int N, int Registers>
KVLM_INLINE void transposePacked(Lanes<T> (&v)[Registers], Fixed<N>)
{
    if constexpr (sizeof(T) == 8)
        wholeRegisters(v);
    transposePacked<N>(v, std::make_index_sequence<Registers>());
}

// ---- Packed vectors of N elements, as many as a register has lanes, in N registers

// Element j of each object, from registers that hold the objects one behind the other.
template <int N, int J>
KVLM_INLINE Lanes<double> elementOfEach(const Lanes<double> (&x)[N])
{
    return {_mm_shuffle_pd(x[J / 2].v, x[(N + J) / 2].v, J % 2 | (N + J) % 2 << 1)};
}

template <int N, int J>
KVLM_INLINE Lanes<float> elementOfEach(const Lanes<float> (&x)[N])
{
    return fourOf<J, N + J, 2 * N + J, 3 * N + J>(x);
}

template <class T, int N>
KVLM_INLINE void sortElements(Lanes<T> (&x)[N])
{
    Lanes<T> sorted[N];
    eachIndex(Fixed<N>(), [&](auto j) KVLM_INLINED { sorted[j] = elementOfEach<N, decltype(j){}>(x); });
#pragma GCC unroll 6
    for (int j = 0; j < N; ++j)
        x[j] = sorted[j];
}

KVLM_INLINE void sortElements(Lanes<float> (&x)[3])
{
    const __m128 middle = _mm_shuffle_ps(x[0].v, x[1].v, _MM_SHUFFLE(1, 0, 2, 1)),
                 ends = _mm_shuffle_ps(x[1].v, x[2].v, _MM_SHUFFLE(2, 1, 3, 2));
    x[0].v = _mm_shuffle_ps(x[0].v, ends, _MM_SHUFFLE(2, 0, 3, 0));
    x[1].v = _mm_shuffle_ps(middle, ends, _MM_SHUFFLE(3, 1, 2, 0));
    x[2].v = _mm_shuffle_ps(middle, x[2].v, _MM_SHUFFLE(3, 0, 3, 1));
}

KVLM_INLINE void sortElements(Lanes<float> (&x)[4])
{
    transpose(x);
}

// The lower (0) or the upper (1) half of a, then of b.
template <int A, int B>
KVLM_INLINE __m128 halves(Lanes<float> a, Lanes<float> b)
{
    return _mm_shuffle_ps(a.v, b.v, (A ? 0xe : 0x4) | (B ? 0xe0 : 0x40));
}

// Two neighbouring elements of an object are in one half of a register.
KVLM_INLINE void sortElements(Lanes<float> (&x)[6])
{
    const __m128 first[] = {halves<0, 1>(x[0], x[1]), halves<1, 0>(x[0], x[2]), halves<0, 1>(x[1], x[2])},
                 last[] = {halves<0, 1>(x[3], x[4]), halves<1, 0>(x[3], x[5]), halves<0, 1>(x[4], x[5])};
#pragma GCC unroll 3
    for (int j = 0; j < 3; ++j) {
        x[2 * j].v = _mm_shuffle_ps(first[j], last[j], _MM_SHUFFLE(2, 0, 2, 0));
        x[2 * j + 1].v = _mm_shuffle_ps(first[j], last[j], _MM_SHUFFLE(3, 1, 3, 1));
    }
}

// The way back, of three elements.
KVLM_INLINE void packElements(Lanes<float> (&x)[3])
{
    const __m128 xy = _mm_shuffle_ps(x[0].v, x[1].v, _MM_SHUFFLE(2, 0, 2, 0)),
                 yz = _mm_shuffle_ps(x[1].v, x[2].v, _MM_SHUFFLE(3, 1, 3, 1)),
                 zx = _mm_shuffle_ps(x[2].v, x[0].v, _MM_SHUFFLE(3, 1, 2, 0));
    x[0].v = _mm_shuffle_ps(xy, zx, _MM_SHUFFLE(2, 0, 2, 0));
    x[1].v = _mm_shuffle_ps(yz, xy, _MM_SHUFFLE(3, 1, 2, 0));
    x[2].v = _mm_shuffle_ps(zx, yz, _MM_SHUFFLE(3, 1, 3, 1));
}

// Pairs of neighbouring elements come together first, of two objects at a time.
KVLM_INLINE void packElements(Lanes<float> (&x)[6])
{
    Lanes<float> low[3], high[3];
#pragma GCC unroll 3
    for (int j = 0; j < 3; ++j) {
        low[j].v = _mm_unpacklo_ps(x[2 * j].v, x[2 * j + 1].v);
        high[j].v = _mm_unpackhi_ps(x[2 * j].v, x[2 * j + 1].v);
    }
    x[0].v = halves<0, 0>(low[0], low[1]);
    x[1].v = halves<0, 1>(low[2], low[0]);
    x[2].v = halves<1, 1>(low[1], low[2]);
    x[3].v = halves<0, 0>(high[0], high[1]);
    x[4].v = halves<0, 1>(high[2], high[0]);
    x[5].v = halves<1, 1>(high[1], high[2]);
}

template <int N, int First>
KVLM_INLINE Lanes<float> packedFrom(const Lanes<float> (&x)[N])
{
    constexpr auto place = [](int e) { return e % N * 4 + e / N; };
    return fourOf<place(First), place(First + 1), place(First + 2), place(First + 3)>(x);
}

template <int N, int First>
KVLM_INLINE Lanes<double> packedFrom(const Lanes<double> (&x)[N])
{
    constexpr int next = First + 1;
    return {_mm_shuffle_pd(x[First % N].v, x[next % N].v, First / N | next / N << 1)};
}

template <class T, int N>
KVLM_INLINE void packElements(Lanes<T> (&x)[N])
{
    Lanes<T> packed[N];
    eachIndex(Fixed<N>(), [&](auto r) KVLM_INLINED { packed[r] = packedFrom<N, decltype(r){} * Lanes<T>::count>(x); });
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r)
        x[r] = packed[r];
}

template <class T, int N>
KVLM_INLINE void loadRegisters(const T *p, Lanes<T> (&v)[N])
{
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r)
        v[r] = Lanes<T>::load(p + r * Lanes<T>::count);
}

template <class T, int N>
KVLM_INLINE void storeRegisters(T *p, const Lanes<T> (&v)[N])
{
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r)
        v[r].store(p + r * Lanes<T>::count);
}

} // namespace kvlm

#endif
