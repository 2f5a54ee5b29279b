/**
 * @file each_lanes.hpp
 * Numbers that are computed with at once: two registers of the widest kind that the compiler may use, so that one works
 * while the other waits. Eight floats or four doubles with SSE2.
 */
#ifndef KVLM_EACH_LANES_HPP
#define KVLM_EACH_LANES_HPP

#include <cmath>
#include <cstdint>
#include <cstring>
#include <type_traits>

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace kvlm {
namespace each {
namespace detail {

#define KVLM_EACH_INLINE __attribute__((always_inline)) inline

#if defined(__AVX512DQ__) // with the logical operations on numbers
inline constexpr int registerBytes = 64;
#elif defined(__AVX2__)
inline constexpr int registerBytes = 32;
#else
inline constexpr int registerBytes = 16;
#endif

template <class T>
struct Lanes {
    typedef T Register __attribute__((vector_size(registerBytes)));
    static constexpr int count = 2 * registerBytes / sizeof(T);

    Lanes() = default;
    KVLM_EACH_INLINE Lanes(T x) : half{x - Register{}, x - Register{}} {}

    T get(int lane) const { return half[lane / (count / 2)][lane % (count / 2)]; }
    void set(int lane, T x) { half[lane / (count / 2)][lane % (count / 2)] = x; }

    Register half[2];
};
/// True or false in each lane.
template <class T>
struct LaneMask {
    using Integer = std::conditional_t<sizeof(T) == 4, std::int32_t, std::int64_t>;
    typedef Integer Register __attribute__((vector_size(registerBytes)));

    Register half[2];
};

#define KVLM_EACH_LANES(Type, Result, operation)                                                                       \
    template <class T>                                                                                                 \
    KVLM_EACH_INLINE Result<T> operator operation(const Type<T> &a, const Type<T> &b)                                  \
    {                                                                                                                  \
        Result<T> result;                                                                                              \
        for (int k = 0; k < 2; ++k)                                                                                    \
            result.half[k] = a.half[k] operation b.half[k];                                                            \
        return result;                                                                                                 \
    }
KVLM_EACH_LANES(Lanes, Lanes, +)
KVLM_EACH_LANES(Lanes, Lanes, -)
KVLM_EACH_LANES(Lanes, Lanes, *)
KVLM_EACH_LANES(Lanes, Lanes, /)
KVLM_EACH_LANES(Lanes, LaneMask, >)
KVLM_EACH_LANES(LaneMask, LaneMask, &)
#undef KVLM_EACH_LANES

template <class T>
KVLM_EACH_INLINE LaneMask<T> operator!(const LaneMask<T> &mask)
{
    return {{~mask.half[0], ~mask.half[1]}};
}
/// a where the mask is true, else b.
template <class T>
KVLM_EACH_INLINE Lanes<T> select(const LaneMask<T> &mask, const Lanes<T> &a, const Lanes<T> &b)
{
    using Bits = typename LaneMask<T>::Register;
    Lanes<T> result;
    for (int k = 0; k < 2; ++k)
        result.half[k] = reinterpret_cast<typename Lanes<T>::Register>(
            (mask.half[k] & reinterpret_cast<Bits>(a.half[k])) | (~mask.half[k] & reinterpret_cast<Bits>(b.half[k])));
    return result;
}
template <class T>
KVLM_EACH_INLINE bool any(const LaneMask<T> &mask)
{
    typedef std::uint64_t Words __attribute__((vector_size(registerBytes)));
    const Words both = reinterpret_cast<Words>(mask.half[0] | mask.half[1]);
    std::uint64_t all = 0;
    for (int k = 0; k < registerBytes / 8; ++k)
        all |= both[k];
    return all != 0;
}
template <class T>
KVLM_EACH_INLINE Lanes<T> magnitude(const Lanes<T> &x)
{
    return select(x > Lanes<T>(0), x, Lanes<T>(0) - x);
}
#ifdef __SSE2__
inline __m128 rootOf(__m128 x)
{
    return _mm_sqrt_ps(x);
}
inline __m128d rootOf(__m128d x)
{
    return _mm_sqrt_pd(x);
}
#endif
#ifdef __AVX2__
inline __m256 rootOf(__m256 x)
{
    return _mm256_sqrt_ps(x);
}
inline __m256d rootOf(__m256d x)
{
    return _mm256_sqrt_pd(x);
}
#endif
#ifdef __AVX512DQ__ // zeros for no lane: the plain form warns of what gcc 12 leaves undefined
inline __m512 rootOf(__m512 x)
{
    return _mm512_maskz_sqrt_ps(0xffff, x);
}
inline __m512d rootOf(__m512d x)
{
    return _mm512_maskz_sqrt_pd(0xff, x);
}
#endif
template <class T>
KVLM_EACH_INLINE Lanes<T> root(const Lanes<T> &x)
{
    Lanes<T> result;
#ifdef __SSE2__
    for (int k = 0; k < 2; ++k)
        result.half[k] = rootOf(x.half[k]);
#else
    for (int lane = 0; lane < Lanes<T>::count; ++lane)
        result.set(lane, std::sqrt(x.get(lane)));
#endif
    return result;
}

} // namespace detail
} // namespace each
} // namespace kvlm

#endif
