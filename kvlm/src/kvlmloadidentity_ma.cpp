// Arrays of identity matrices.
#include "frame/rows.h"
#include "loops/moves.h"

#include <algorithm>

using namespace kvlm;

// The order that counts: all elements of a row, then the one on the diagonal.
template <class D>
static KVLM_NOINLINE void identityInOrder(const D &givenD, Extent n)
{
    using T = typename D::Element;
    const D d = givenD;
    for (ptrdiff_t i = 0; i < n.count; ++i) {
        const auto to = d.view(i);
        for (ptrdiff_t r = 0; r < n.height; ++r) {
            if (adjacentInRows(d))
                memset(static_cast<void *>(to.at(r, 0)), 0, n.width * sizeof(T));
            else
                for (ptrdiff_t c = 0; c < n.width; ++c)
                    put(to.at(r, c), T(0));
            if (r < n.width)
                put(to.at(r, r), T(1));
        }
    }
}

// A small matrix is moved from one place to all objects. No element of a row may be another one of it.
template <class D>
static void identity(const D &d, Extent n)
{
    using T = typename D::Element;
    if (!isSmall(n.width, n.height))
        return identityInOrder(d, n);
    T one[smallObject];
    const int row = n.width * static_cast<int>(sizeof(T));
    identityInOrder(WideStrided<T>(one, 0, row, sizeof(T)), {n.width, n.height, 1});
    const WideStrided<const T> source(one, 0, row, sizeof(T));
    if constexpr (!D::isList && !D::isTable) {
        // The objects of a packed batch are repeated as a run that grows.
        const ptrdiff_t object = row * n.height;
        if (d.elemStride == sizeof(T) && d.rowStride == row && d.objStride == object) {
            move(source, d, {n.width, n.height, 1});
            for (ptrdiff_t i = 1, more; i < n.count; i += more) {
                more = std::min({i, 1 + 4096 / object, n.count - i});
                memcpy(d.object(i), d.base, more * object);
            }
            return;
        }
    }
    move(source, d, n);
}

template <class D>
static KvlStatus loadIdentity(const D &operand, Shape shape, Count count)
{
    const auto d = wide(operand, shape.width);
    const Extent n = {shape.width, shape.height, count.count};
    if constexpr (D::isTable) {
        WideStrided<typename D::Element> grid(nullptr, 0, 0, 0);
        if (n.count > 1 && isStrided(d, n, grid))
            identity(grid, n);
        else if (worthPlanesOf(d, n) && elementsApart(d, n))
            identity(d, n);
        else
            identityInOrder(d, n);
    } else
        identity(d, n);
    return kvlOk;
}

#define IDENTITY_MA(X, D, T) X##_MA_##D(T, dst), X##_SHAPE, X##_COUNT
#define ROW(name, T, orders)                                                                                           \
    WHOLE_FUNCTION(name, IDENTITY_MA, S, T, orders::Standard, loadIdentity)                                            \
    WHOLE_FUNCTION(name##_P, IDENTITY_MA, P, T, orders::Pointer, loadIdentity)                                         \
    WHOLE_FUNCTION(name##_L, IDENTITY_MA, LS, T, orders::List, loadIdentity)

// Settled: in the pointer description 32f checks the shift before the count.
ROW(kvlmLoadIdentity_ma_32f, float, CountAfterShifts)
ROW(kvlmLoadIdentity_ma_64f, double, ObjectStridesLast)
