// Groups of objects, one per lane: runs of adjacent elements, elements in planes and elements anywhere, between
// memory and registers.
#ifndef KVLM_LANES_GROUP_H
#define KVLM_LANES_GROUP_H

#include "frame/operand.h"
#include "lanes/shuffles.h"

namespace kvlm {

// A run of N adjacent elements of each object of a group: v[j] is element j of all of them.
template <int N, class V>
KVLM_INLINE void loadRuns(const float *const (&p)[4], V v)
{
    const auto half = [](const float *low, const float *high) {
        const __m128 x = Lanes<float>::loadFirst<2>(low).v;
        return _mm_loadh_pi(x, reinterpret_cast<const __m64 *>(high));
    };
    constexpr int blocks = N / 4 * 4;
#pragma GCC unroll 16
    for (int j = 0; j < blocks; j += 4) {
        Lanes<float> x[] = {Lanes<float>::load(p[0] + j), Lanes<float>::load(p[1] + j), Lanes<float>::load(p[2] + j),
                            Lanes<float>::load(p[3] + j)};
        transpose(x);
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k)
            v[j + k] = x[k];
    }
    if constexpr (N % 4 >= 2) {
        const __m128 first = half(p[0] + blocks, p[1] + blocks), second = half(p[2] + blocks, p[3] + blocks);
        v[blocks].v = _mm_shuffle_ps(first, second, _MM_SHUFFLE(2, 0, 2, 0));
        v[blocks + 1].v = _mm_shuffle_ps(first, second, _MM_SHUFFLE(3, 1, 3, 1));
    }
    if constexpr (N % 2 == 1)
        v[N - 1] = Lanes<float>::gather(p[0] + N - 1, p[1] + N - 1, p[2] + N - 1, p[3] + N - 1);
}

template <int N, class V>
KVLM_INLINE void loadRuns(const double *const (&p)[2], V v)
{
#pragma GCC unroll 18
    for (int j = 0; j + 1 < N; j += 2) {
        Lanes<double> x[] = {Lanes<double>::load(p[0] + j), Lanes<double>::load(p[1] + j)};
        transpose(x);
        v[j] = x[0];
        v[j + 1] = x[1];
    }
    if constexpr (N % 2 == 1)
        v[N - 1] = Lanes<double>::gather(p[0] + N - 1, p[1] + N - 1);
}

template <int N, class V>
KVLM_INLINE void storeRuns(float *const (&p)[4], V v)
{
    const auto half = [](float *low, float *high, __m128 x) {
        _mm_storel_pi(reinterpret_cast<__m64 *>(low), x);
        _mm_storeh_pi(reinterpret_cast<__m64 *>(high), x);
    };
    constexpr int blocks = N / 4 * 4;
#pragma GCC unroll 16
    for (int j = 0; j < blocks; j += 4) {
        Lanes<float> x[] = {v[j], v[j + 1], v[j + 2], v[j + 3]};
        transpose(x);
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k)
            x[k].store(p[k] + j);
    }
    if constexpr (N % 4 >= 2) {
        half(p[0] + blocks, p[1] + blocks, _mm_unpacklo_ps(v[blocks].v, v[blocks + 1].v));
        half(p[2] + blocks, p[3] + blocks, _mm_unpackhi_ps(v[blocks].v, v[blocks + 1].v));
    }
    if constexpr (N % 2 == 1)
        v[N - 1].scatter(p[0] + N - 1, p[1] + N - 1, p[2] + N - 1, p[3] + N - 1);
}

template <int N, class V>
KVLM_INLINE void storeRuns(double *const (&p)[2], V v)
{
#pragma GCC unroll 18
    for (int j = 0; j + 1 < N; j += 2) {
        Lanes<double> x[] = {v[j], v[j + 1]};
        transpose(x);
        x[0].store(p[0] + j);
        x[1].store(p[1] + j);
    }
    if constexpr (N % 2 == 1)
        v[N - 1].scatter(p[0] + N - 1, p[1] + N - 1);
}

// The objects of a group, or one row or element of each.
template <class T>
struct Group {
    static constexpr int count = Lanes<std::remove_const_t<T>>::count;
    T *p[count];

    KVLM_INLINE Group at(Offset bytes) const
    {
        Group g;
#pragma GCC unroll 4
        for (int l = 0; l < count; ++l)
            g.p[l] = moved(p[l], bytes);
        return g;
    }
};

// Any element of each object, as f(lane) says where.
template <class T, class Place>
KVLM_INLINE Group<T> groupOf(Place place)
{
    Group<T> g;
#pragma GCC unroll 4
    for (int l = 0; l < Group<T>::count; ++l)
        g.p[l] = place(l);
    return g;
}

KVLM_INLINE Lanes<float> gather(const Group<const float> &g)
{
    return Lanes<float>::gather(g.p[0], g.p[1], g.p[2], g.p[3]);
}

KVLM_INLINE Lanes<double> gather(const Group<const double> &g)
{
    return Lanes<double>::gather(g.p[0], g.p[1]);
}

KVLM_INLINE void scatter(Lanes<float> v, const Group<float> &g)
{
    v.scatter(g.p[0], g.p[1], g.p[2], g.p[3]);
}

KVLM_INLINE void scatter(Lanes<double> v, const Group<double> &g)
{
    v.scatter(g.p[0], g.p[1]);
}

// A column of an array of rows.
template <class Rows, class Columns>
struct ColumnOf {
    Rows first;
    Columns columns;

    KVLM_INLINE auto &operator[](int j) const { return first[j * columns]; }
    KVLM_INLINE ColumnOf operator+(int j) const { return {first + j * columns, columns}; }
};

// What loads a group, and what stores it: runs of elements, elements that fill a register, elements anywhere.
struct Load {
    template <int N, class T, class V>
    static KVLM_INLINE void runs(const Group<const T> &g, Fixed<N>, V v)
    {
        loadRuns<N>(g.p, v);
    }
    // Packed vectors.
    template <int N, class T, class V>
    static KVLM_INLINE void vectors(const T *p, Fixed<N>, V v)
    {
        Lanes<T> x[N];
        loadRegisters(p, x);
        sortElements(x);
#pragma GCC unroll 6
        for (int k = 0; k < N; ++k)
            v[k] = x[k];
    }
    template <class T>
    static KVLM_INLINE void plane(const T *p, Lanes<T> &v)
    {
        v = Lanes<T>::load(p);
    }
    template <class T>
    static KVLM_INLINE void anywhere(const Group<const T> &g, Lanes<T> &v)
    {
        v = gather(g);
    }
};

struct Store {
    template <int N, class T, class V>
    static KVLM_INLINE void runs(const Group<T> &g, Fixed<N>, V v)
    {
        storeRuns<N>(g.p, v);
    }
    template <int N, class T, class V>
    static KVLM_INLINE void vectors(T *p, Fixed<N>, V v)
    {
        Lanes<T> x[N];
#pragma GCC unroll 6
        for (int k = 0; k < N; ++k)
            x[k] = v[k];
        packElements(x);
        storeRegisters(p, x);
    }
    template <class T>
    static KVLM_INLINE void plane(T *p, Lanes<T> v)
    {
        v.store(p);
    }
    template <class T>
    static KVLM_INLINE void anywhere(const Group<T> &g, Lanes<T> v)
    {
        scatter(v, g);
    }
};

template <class Move, class T, class V, int N>
KVLM_INLINE void moveRuns(const Group<T> &g, Fixed<N> n, V v)
{
    Move::runs(g, n, v);
}

template <class Move, class T, class V>
KVLM_INLINE void moveRuns(const Group<T> &g, int n, V v)
{
    constexpr int step = Group<T>::count;
    int j = 0;
    for (; j + step <= n; j += step)
        Move::runs(g.at(steps(j, sizeof(T))), Fixed<step>(), v + j);
    for (; j < n; ++j)
        Move::anywhere(g.at(steps(j, sizeof(T))), v[j]);
}

} // namespace kvlm

#endif
