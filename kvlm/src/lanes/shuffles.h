// Elements that change places between registers.
#ifndef KVLM_LANES_SHUFFLES_H
#define KVLM_LANES_SHUFFLES_H

#include "lanes/wide.h"

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

#ifdef KVLM_WIDE
KVLM_INLINE void transpose(WideLanes<float> (&row)[4])
{
    const auto a = unpackLow(row[0], row[1]), b = unpackLow(row[2], row[3]), c = unpackHigh(row[0], row[1]),
               d = unpackHigh(row[2], row[3]);
    row[0] = shuffled<_MM_SHUFFLE(1, 0, 1, 0)>(a, b);
    row[1] = shuffled<_MM_SHUFFLE(3, 2, 3, 2)>(a, b);
    row[2] = shuffled<_MM_SHUFFLE(1, 0, 1, 0)>(c, d);
    row[3] = shuffled<_MM_SHUFFLE(3, 2, 3, 2)>(c, d);
}

KVLM_INLINE void transpose(WideLanes<double> (&row)[2])
{
    const auto first = row[0];
    row[0] = unpackLow(first, row[1]);
    row[1] = unpackHigh(first, row[1]);
}
#endif

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
template <int A, int B, class V>
KVLM_INLINE V pairOf(const V *x)
{
    if constexpr (A / 4 == B / 4)
        return x[A / 4];
    else
        return shuffled<A % 4 | B % 4 << 4>(x[A / 4], x[B / 4]);
}

template <int A, int B, int C, int D, class V>
KVLM_INLINE V fourOf(const V *x)
{
    constexpr auto lanesOfPair = [](int a, int b) { return a / 4 == b / 4 ? a % 4 | b % 4 << 2 : 2 << 2; };
    return shuffled<(lanesOfPair(A, B) | lanesOfPair(C, D) << 4)>(pairOf<A, B>(x), pairOf<C, D>(x));
}

// Two elements likewise.
template <int A, int B, class V>
KVLM_INLINE V twoOf(const V *x)
{
    return shuffled<(A % 2 | B % 2 << 1)>(x[A / 2], x[B / 2]);
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

// ---- Packed vectors of N elements, as many as a register has lanes, in N registers: in each block those of its lanes

// Element j of each object, from registers that hold the objects one behind the other.
template <int N, int J, class V>
KVLM_INLINE V elementOfEach(const V (&x)[N])
{
    if constexpr (sizeof(typename NumberTraits<V>::Element) == 8)
        return twoOf<J, N + J>(x);
    else
        return fourOf<J, N + J, 2 * N + J, 3 * N + J>(x);
}

// The lower (0) or the upper (1) half of a, then of b.
template <int A, int B, class V>
KVLM_INLINE V halves(V a, V b)
{
    return shuffled<(A ? 0xe : 0x4) | (B ? 0xe0 : 0x40)>(a, b);
}

template <class V>
KVLM_INLINE void sortThree(V (&x)[3])
{
    const V middle = shuffled<_MM_SHUFFLE(1, 0, 2, 1)>(x[0], x[1]),
            ends = shuffled<_MM_SHUFFLE(2, 1, 3, 2)>(x[1], x[2]);
    x[0] = shuffled<_MM_SHUFFLE(2, 0, 3, 0)>(x[0], ends);
    x[1] = shuffled<_MM_SHUFFLE(3, 1, 2, 0)>(middle, ends);
    x[2] = shuffled<_MM_SHUFFLE(3, 0, 3, 1)>(middle, x[2]);
}

// Two neighbouring elements of an object are in one half of a block.
template <class V>
KVLM_INLINE void sortSix(V (&x)[6])
{
    const V first[] = {halves<0, 1>(x[0], x[1]), halves<1, 0>(x[0], x[2]), halves<0, 1>(x[1], x[2])},
            last[] = {halves<0, 1>(x[3], x[4]), halves<1, 0>(x[3], x[5]), halves<0, 1>(x[4], x[5])};
#pragma GCC unroll 3
    for (int j = 0; j < 3; ++j) {
        x[2 * j] = shuffled<_MM_SHUFFLE(2, 0, 2, 0)>(first[j], last[j]);
        x[2 * j + 1] = shuffled<_MM_SHUFFLE(3, 1, 3, 1)>(first[j], last[j]);
    }
}

template <class V, int N>
KVLM_INLINE void sortElements(V (&x)[N])
{
    constexpr bool inFours = sizeof(typename NumberTraits<V>::Element) == 4;
    if constexpr (inFours && N == 3)
        sortThree(x);
    else if constexpr (inFours && N == 4)
        transpose(x);
    else if constexpr (inFours && N == 6)
        sortSix(x);
    else {
        V sorted[N];
        eachIndex(Fixed<N>(), [&](auto j) KVLM_INLINED { sorted[j] = elementOfEach<N, decltype(j){}>(x); });
#pragma GCC unroll 6
        for (int j = 0; j < N; ++j)
            x[j] = sorted[j];
    }
}

// The way back.
template <class V>
KVLM_INLINE void packThree(V (&x)[3])
{
    const V xy = shuffled<_MM_SHUFFLE(2, 0, 2, 0)>(x[0], x[1]), yz = shuffled<_MM_SHUFFLE(3, 1, 3, 1)>(x[1], x[2]),
            zx = shuffled<_MM_SHUFFLE(3, 1, 2, 0)>(x[2], x[0]);
    x[0] = shuffled<_MM_SHUFFLE(2, 0, 2, 0)>(xy, zx);
    x[1] = shuffled<_MM_SHUFFLE(3, 1, 2, 0)>(yz, xy);
    x[2] = shuffled<_MM_SHUFFLE(3, 1, 3, 1)>(zx, yz);
}

// Pairs of neighbouring elements come together first, of two objects at a time.
template <class V>
KVLM_INLINE void packSix(V (&x)[6])
{
    V low[3], high[3];
#pragma GCC unroll 3
    for (int j = 0; j < 3; ++j) {
        low[j] = unpackLow(x[2 * j], x[2 * j + 1]);
        high[j] = unpackHigh(x[2 * j], x[2 * j + 1]);
    }
    x[0] = halves<0, 0>(low[0], low[1]);
    x[1] = halves<0, 1>(low[2], low[0]);
    x[2] = halves<1, 1>(low[1], low[2]);
    x[3] = halves<0, 0>(high[0], high[1]);
    x[4] = halves<0, 1>(high[2], high[0]);
    x[5] = halves<1, 1>(high[1], high[2]);
}

template <int N, int R, class V>
KVLM_INLINE V packedFrom(const V (&x)[N])
{
    constexpr int lanes = V::count / V::blocks, first = R * lanes;
    constexpr auto place = [](int e) { return e % N * lanes + e / N; };
    if constexpr (lanes == 2)
        return twoOf<place(first), place(first + 1)>(x);
    else
        return fourOf<place(first), place(first + 1), place(first + 2), place(first + 3)>(x);
}

template <class V, int N>
KVLM_INLINE void packElements(V (&x)[N])
{
    constexpr bool inFours = sizeof(typename NumberTraits<V>::Element) == 4;
    if constexpr (inFours && N == 3)
        packThree(x);
    else if constexpr (inFours && N == 6)
        packSix(x);
    else {
        V packed[N];
        eachIndex(Fixed<N>(), [&](auto r) KVLM_INLINED { packed[r] = packedFrom<N, decltype(r){}>(x); });
#pragma GCC unroll 6
        for (int r = 0; r < N; ++r)
            x[r] = packed[r];
    }
}

// Between memory and N registers: each block has its objects one behind the other.
template <class T, class V, int N>
KVLM_INLINE void loadRegisters(const T *p, V (&v)[N])
{
    constexpr int lanes = Lanes<T>::count;
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r)
        v[r] = V::ofBlocks([&](auto b) KVLM_INLINED { return Lanes<T>::load(p + (b * N + r) * lanes); });
}

template <class T, class V, int N>
KVLM_INLINE void storeRegisters(T *p, const V (&v)[N])
{
    constexpr int lanes = Lanes<T>::count;
#pragma GCC unroll 6
    for (int r = 0; r < N; ++r)
        eachIndex(Fixed<V::blocks>(),
                  [&](auto b) KVLM_INLINED { v[r].template block<decltype(b){}>().store(p + (b * N + r) * lanes); });
}

} // namespace kvlm

#endif
