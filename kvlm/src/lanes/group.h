// Groups of objects, one per lane: runs of adjacent elements, elements in planes and elements anywhere, between
// memory and registers.
#ifndef KVLM_LANES_GROUP_H
#define KVLM_LANES_GROUP_H

#include "frame/operand.h"
#include "lanes/shuffles.h"

namespace kvlm {

// The objects of a group, or one row or element of each.
template <class T, int Count = Lanes<std::remove_const_t<T>>::count>
struct Group {
    static constexpr int count = Count;
    T *p[count];

    KVLM_INLINE Group at(Offset bytes) const
    {
        Group g;
#pragma GCC unroll 16
        for (int l = 0; l < count; ++l)
            g.p[l] = moved(p[l], bytes);
        return g;
    }
};

// Any element of each object, as f(lane) says where.
template <class T, int Count = Lanes<std::remove_const_t<T>>::count, class Place>
KVLM_INLINE Group<T, Count> groupOf(Place place)
{
    Group<T, Count> g;
#pragma GCC unroll 16
    for (int l = 0; l < Count; ++l)
        g.p[l] = place(l);
    return g;
}

// One element of each object.
KVLM_INLINE Lanes<float> gatherBlock(const float *const *p)
{
    return Lanes<float>::gather(p[0], p[1], p[2], p[3]);
}

KVLM_INLINE Lanes<double> gatherBlock(const double *const *p)
{
    return Lanes<double>::gather(p[0], p[1]);
}

template <class V = void, class T, int Count>
KVLM_INLINE auto gather(const Group<T, Count> &g)
{
    using Number = std::conditional_t<std::is_void_v<V>, Lanes<std::remove_const_t<T>>, V>;
    constexpr int lanes = Count / Number::blocks;
    return Number::ofBlocks([&](auto b) KVLM_INLINED { return gatherBlock(g.p + b * lanes); });
}

KVLM_INLINE void scatterBlock(Lanes<float> v, float *const *p)
{
    v.scatter(p[0], p[1], p[2], p[3]);
}

KVLM_INLINE void scatterBlock(Lanes<double> v, double *const *p)
{
    v.scatter(p[0], p[1]);
}

template <class V, class T, int Count>
KVLM_INLINE void scatter(V v, const Group<T, Count> &g)
{
    constexpr int lanes = Count / V::blocks;
    eachIndex(Fixed<V::blocks>(),
              [&](auto b) KVLM_INLINED { scatterBlock(v.template block<decltype(b){}>(), g.p + b * lanes); });
}

// A run of N adjacent elements of each object of a group: v[j] is element j of all of them.
template <int N, class Array>
KVLM_INLINE void loadRuns(const float *const *p, Array v)
{
    using V = NumberOf<Array>;
    using Block = Lanes<float>;
    const auto half = [](const float *low, const float *high) KVLM_INLINED {
        return Block{_mm_loadh_pi(Block::loadFirst<2>(low).v, reinterpret_cast<const __m64 *>(high))};
    };
    constexpr int whole = N / 4 * 4;
#pragma GCC unroll 16
    for (int j = 0; j < whole; j += 4) {
        V x[4];
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k)
            x[k] = V::ofBlocks([&](auto b) KVLM_INLINED { return Block::load(p[4 * b + k] + j); });
        transpose(x);
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k)
            v[j + k] = x[k];
    }
    if constexpr (N % 4 >= 2) {
        const auto pair = [&](int k) KVLM_INLINED {
            return V::ofBlocks([&](auto b)
                                   KVLM_INLINED { return half(p[4 * b + k] + whole, p[4 * b + k + 1] + whole); });
        };
        const V first = pair(0), second = pair(2);
        v[whole] = shuffled<_MM_SHUFFLE(2, 0, 2, 0)>(first, second);
        v[whole + 1] = shuffled<_MM_SHUFFLE(3, 1, 3, 1)>(first, second);
    }
    if constexpr (N % 2 == 1)
        v[N - 1] = V::ofBlocks([&](auto b) KVLM_INLINED {
            return Block::gather(p[4 * b] + N - 1, p[4 * b + 1] + N - 1, p[4 * b + 2] + N - 1, p[4 * b + 3] + N - 1);
        });
}

template <int N, class Array>
KVLM_INLINE void loadRuns(const double *const *p, Array v)
{
    using V = NumberOf<Array>;
    using Block = Lanes<double>;
#pragma GCC unroll 18
    for (int j = 0; j + 1 < N; j += 2) {
        V x[] = {V::ofBlocks([&](auto b) KVLM_INLINED { return Block::load(p[2 * b] + j); }),
                 V::ofBlocks([&](auto b) KVLM_INLINED { return Block::load(p[2 * b + 1] + j); })};
        transpose(x);
        v[j] = x[0];
        v[j + 1] = x[1];
    }
    if constexpr (N % 2 == 1)
        v[N - 1] =
            V::ofBlocks([&](auto b) KVLM_INLINED { return Block::gather(p[2 * b] + N - 1, p[2 * b + 1] + N - 1); });
}

template <int N, class Array>
KVLM_INLINE void storeRuns(float *const *p, Array v)
{
    using V = NumberOf<Array>;
    const auto eachBlock = [](auto store) KVLM_INLINED { eachIndex(Fixed<V::blocks>(), store); };
    const auto half = [](float *low, float *high, __m128 x) KVLM_INLINED {
        _mm_storel_pi(reinterpret_cast<__m64 *>(low), x);
        _mm_storeh_pi(reinterpret_cast<__m64 *>(high), x);
    };
    constexpr int whole = N / 4 * 4;
#pragma GCC unroll 16
    for (int j = 0; j < whole; j += 4) {
        V x[] = {v[j], v[j + 1], v[j + 2], v[j + 3]};
        transpose(x);
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k)
            eachBlock([&](auto b) KVLM_INLINED { x[k].template block<decltype(b){}>().store(p[4 * b + k] + j); });
    }
    if constexpr (N % 4 >= 2) {
        const V low = unpackLow(V(v[whole]), V(v[whole + 1])), high = unpackHigh(V(v[whole]), V(v[whole + 1]));
        eachBlock([&](auto b) KVLM_INLINED {
            half(p[4 * b] + whole, p[4 * b + 1] + whole, low.template block<decltype(b){}>().v);
            half(p[4 * b + 2] + whole, p[4 * b + 3] + whole, high.template block<decltype(b){}>().v);
        });
    }
    if constexpr (N % 2 == 1)
        eachBlock([&](auto b) KVLM_INLINED {
            const V last = v[N - 1];
            last.template block<decltype(b){}>().scatter(p[4 * b] + N - 1, p[4 * b + 1] + N - 1, p[4 * b + 2] + N - 1,
                                                         p[4 * b + 3] + N - 1);
        });
}

template <int N, class Array>
KVLM_INLINE void storeRuns(double *const *p, Array v)
{
    using V = NumberOf<Array>;
    const auto eachBlock = [](auto store) KVLM_INLINED { eachIndex(Fixed<V::blocks>(), store); };
#pragma GCC unroll 18
    for (int j = 0; j + 1 < N; j += 2) {
        V x[] = {v[j], v[j + 1]};
        transpose(x);
        eachBlock([&](auto b) KVLM_INLINED {
            x[0].template block<decltype(b){}>().store(p[2 * b] + j);
            x[1].template block<decltype(b){}>().store(p[2 * b + 1] + j);
        });
    }
    if constexpr (N % 2 == 1)
        eachBlock([&](auto b) KVLM_INLINED {
            const V last = v[N - 1];
            last.template block<decltype(b){}>().scatter(p[2 * b] + N - 1, p[2 * b + 1] + N - 1);
        });
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
    template <int N, class T, int Count, class Array>
    static KVLM_INLINE void runs(const Group<const T, Count> &g, Fixed<N>, Array v)
    {
        loadRuns<N>(g.p, v);
    }
    // Packed vectors.
    template <int N, class T, class Array>
    static KVLM_INLINE void vectors(const T *p, Fixed<N>, Array v)
    {
        NumberOf<Array> x[N];
        loadRegisters(p, x);
        sortElements(x);
#pragma GCC unroll 6
        for (int k = 0; k < N; ++k)
            v[k] = x[k];
    }
    template <class T, class V>
    static KVLM_INLINE void plane(const T *p, V &v)
    {
        v = V::load(p);
    }
    template <class T, int Count, class V>
    static KVLM_INLINE void anywhere(const Group<const T, Count> &g, V &v)
    {
        v = gather<V>(g);
    }
};

struct Store {
    template <int N, class T, int Count, class Array>
    static KVLM_INLINE void runs(const Group<T, Count> &g, Fixed<N>, Array v)
    {
        storeRuns<N>(g.p, v);
    }
    template <int N, class T, class Array>
    static KVLM_INLINE void vectors(T *p, Fixed<N>, Array v)
    {
        NumberOf<Array> x[N];
#pragma GCC unroll 6
        for (int k = 0; k < N; ++k)
            x[k] = v[k];
        packElements(x);
        storeRegisters(p, x);
    }
    template <class T, class V>
    static KVLM_INLINE void plane(T *p, const V &v)
    {
        v.store(p);
    }
    template <class T, int Count, class V>
    static KVLM_INLINE void anywhere(const Group<T, Count> &g, const V &v)
    {
        scatter(v, g);
    }
};

template <class Move, class T, int Count, class Array, int N>
KVLM_INLINE void moveRuns(const Group<T, Count> &g, Fixed<N> n, Array v)
{
    Move::runs(g, n, v);
}

template <class Move, class T, int Count, class Array>
KVLM_INLINE void moveRuns(const Group<T, Count> &g, int n, Array v)
{
    constexpr int step = Lanes<std::remove_const_t<T>>::count;
    int j = 0;
    for (; j + step <= n; j += step)
        Move::runs(g.at(steps(j, sizeof(T))), Fixed<step>(), v + j);
    for (; j < n; ++j)
        Move::anywhere(g.at(steps(j, sizeof(T))), v[j]);
}

} // namespace kvlm

#endif
