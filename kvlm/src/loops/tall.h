// What the QR decomposition and its solver share: matrices with at least as many rows as columns, worked in lanes as
// far as they are small.
#ifndef KVLM_LOOPS_TALL_H
#define KVLM_LOOPS_TALL_H

#include "frame/rows.h"
#include "lanes/batches.h"

namespace kvlm {

// A square matrix has no reflector for its last column.
KVLM_INLINE constexpr int reflectorsOf(int width, int height)
{
    return height > width ? width : width - 1;
}

// The largest objects that are worked in lanes: their array stays in the first level of cache.
constexpr int lanesWidth = 6, lanesHeight = 64;

template <class Rows, class Columns>
constexpr int capacity = lanesHeight *lanesWidth;
template <int R, int C>
constexpr int capacity<Fixed<R>, Fixed<C>> = R *C;
template <int C>
constexpr int capacity<int, Fixed<C>> = lanesHeight *C;

// Measured: small objects do not fill the processor with less, larger ones have no room for more.
template <class Height>
constexpr int registersFor = 2;
template <>
inline constexpr int registersFor<Fixed<3>> = 4;
template <>
inline constexpr int registersFor<Fixed<4>> = 3;

// A vector is moved as a row, of a length that is known or not.
struct One {
    operator int() const { return 1; }
};
template <class Length>
using OneRow = std::conditional_t<isFixed<Length>, Fixed<1>, One>;

// The objects of a batch: moved where the arithmetic is, if their size is known.
template <class Move, class T, class Rows, class Columns>
struct SizedGroups : SharedGroups<Move, T, Rows, Columns> {
    using SharedGroups<Move, T, Rows, Columns>::SharedGroups;
};

template <class Move, class T, int R, int C>
struct SizedGroups<Move, T, Fixed<R>, Fixed<C>> : Groups<Move, T, R, C> {
    SizedGroups(const Objects<T> &x, Fixed<R>, Fixed<C>) : Groups<Move, T, R, C>(x) {}
};

// small(width, height) for those, both known for the square orders 3 to 6 and none for others; general() for the rest.
template <class Small, class General>
KVLM_INLINE KvlStatus byTallShape(TallShape shape, Small small, General general)
{
    const auto any = [&]() KVLM_INLINED {
        return shape.width <= lanesWidth && shape.height <= lanesHeight ? small(shape.width, shape.height) : general();
    };
    if (shape.width != shape.height)
        return any();
    return bySmallOrder(
        shape.width, [&](auto order) KVLM_INLINED { return small(order, order); }, any);
}

// body(width), with a width that is known.
template <int W, class Body>
KVLM_INLINE auto knowingWidth(Fixed<W> width, Body body)
{
    return body(width);
}

template <class Body>
KVLM_INLINE auto knowingWidth(int width, Body body)
{
    switch (width) {
    case 1:
        return body(Fixed<1>());
    case 2:
        return body(Fixed<2>());
    case 3:
        return body(Fixed<3>());
    case 4:
        return body(Fixed<4>());
    case 5:
        return body(Fixed<5>());
    default:
        static_assert(lanesWidth == 6);
        return body(Fixed<6>());
    }
}

} // namespace kvlm

#endif
