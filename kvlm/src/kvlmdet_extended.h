// What the hand-scheduled determinants share: they compute on the 80-bit format of the x86 floating-point unit, at the
// precision that the caller's control word gives, and round once at the end. The only code of the library that does.
#ifndef KVLMDET_EXTENDED_H
#define KVLMDET_EXTENDED_H

#include "kvlmdet.h"

namespace kvlm::det {

static_assert(__LDBL_MANT_DIG__ == 64, "long double must be the 80-bit format");

template <class T, int N>
class Extended {
public:
    Extended(const T *src, int rowStride) : src(src), rowStride(rowStride) {}

    KVLM_INLINE long double operator()(int r, int c) const { return get(moved(src, steps(r, rowStride)) + c); }

private:
    const T *src;
    int rowStride;
};

// Orders 5 and 6: minors of the last two rows, of the last three and so on, by the set of their columns. Those of up to
// N - 2 rows are kept in memory and so rounded.
template <int N, class T>
KVLM_INLINE KvlStatus extendedDeterminant(const T *src, int rowStride, T *dst)
{
    const Extended<T, N> a(src, rowStride);
    T minor[1 << N];
    long double largeMinor[N];
#pragma GCC unroll 6
    for (int c = 0; c < N; ++c)
        minor[1 << c] = static_cast<T>(a(N - 1, c));
    // Along row r, from the left.
    const auto expand = [&](int r, int columns) KVLM_INLINED {
        long double sum = 0;
        int term = 0;
#pragma GCC unroll 6
        for (int c = 0; c < N; ++c)
            if (columns >> c & 1) {
                const long double x = a(r, c) * minor[columns & ~(1 << c)];
                sum = term == 0 ? x : term % 2 ? sum - x : sum + x;
                ++term;
            }
        return sum;
    };
#pragma GCC unroll 6
    for (int r = N - 2; r >= 2; --r)
#pragma GCC unroll 64
        for (int columns = 0; columns < 1 << N; ++columns)
            if (__builtin_popcount(columns) == N - r)
                minor[columns] = static_cast<T>(expand(r, columns));
#pragma GCC unroll 6
    for (int c = 0; c < N; ++c)
        largeMinor[c] = expand(1, ((1 << N) - 1) & ~(1 << c));
    long double sum = a(0, 0) * largeMinor[0];
#pragma GCC unroll 6
    for (int c = 1; c < N; ++c)
        sum = c % 2 ? sum - a(0, c) * largeMinor[c] : sum + a(0, c) * largeMinor[c];
    put(dst, static_cast<T>(sum));
    return kvlOk;
}

} // namespace kvlm::det

#endif
