/**
 * @file make.hpp
 * Views of what programs have: pointers, nested arrays, containers of objects, members of structures, planes, tables
 * and lists, Eigen's matrices and maps, mdspan.
 *
 * Sizes are numbers, or fixed<3> for what the compiler shall know; those of nested arrays, of Eigen's types of fixed
 * size and of mdspan's static extents it knows anyway. Strides and shifts are in bytes. A view of a temporary lives no
 * longer than that.
 */
#ifndef KVLM_MAKE_HPP
#define KVLM_MAKE_HPP

#include "views.hpp"

#include <array>
#include <climits>
#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>

namespace kvlm {
namespace detail {

/// What an int can't hold becomes 0, which every call refuses as a size, a stride or a number of objects.
constexpr int asInt(long long n)
{
    return n > INT_MAX || n < INT_MIN ? 0 : static_cast<int>(n);
}
constexpr Size<dynamic> asSize(long long n)
{
    return {asInt(n)};
}
template <int N>
constexpr Size<N> asSize(Size<N> n)
{
    return n;
}
/// The bytes of so many adjacent elements.
template <class T>
constexpr int bytes(long long elements)
{
    return asInt(elements * static_cast<long long>(sizeof(T)));
}

/// Arrays nested in each other, T[N] and std::array<T, N>: how deep, and of what.
template <class X>
struct Nest {
    using Element = X;
    static constexpr int depth = 0;
};
template <class X, std::size_t N>
struct Nest<X[N]> {
    using Element = typename Nest<std::remove_const_t<X>>::Element;
    static constexpr int depth = Nest<std::remove_const_t<X>>::depth + 1;
    static constexpr Size<static_cast<int>(N)> size{};
};
template <class X, std::size_t N>
struct Nest<std::array<X, N>> : Nest<X[N]> {
};
template <class X>
struct Nest<const X> : Nest<X> {
};
template <class X, std::size_t N>
struct Nest<const X[N]> : Nest<X[N]> {
};

/// std::vector, span and their like, of elements.
template <class X, class = void>
inline constexpr bool isContainer = false;
template <class X>
inline constexpr bool
    isContainer<X, std::void_t<decltype(std::data(std::declval<X &>()), std::size(std::declval<X &>()))>> =
        std::is_floating_point_v<std::remove_const_t<std::remove_pointer_t<decltype(std::data(std::declval<X &>()))>>>;

/// Dense objects of Eigen, known by what they offer: whether its headers come before or behind these is all the same.
template <class X, class = void>
inline constexpr bool isEigen = false;
template <class X>
inline constexpr bool isEigen<X, std::void_t<decltype(X::IsRowMajor), decltype(std::declval<X &>().outerStride())>> =
    true;

/// std::mdspan and its like: the rank, 0 for all else.
template <class X, class = void>
inline constexpr int rank = 0;
template <class X>
inline constexpr int rank<X, std::void_t<decltype(std::declval<X &>().data_handle())>> = static_cast<int>(X::rank());
template <int K, class X>
constexpr auto extent(const X &x)
{
    return Size<static_cast<int>(X::static_extent(K))>{asInt(static_cast<long long>(x.extent(K)))};
}
/// The bytes of an mdspan's stride.
template <class X>
constexpr int stride(const X &x, std::size_t k)
{
    return bytes<typename X::element_type>(static_cast<long long>(x.stride(k)));
}

template <Kind K, Description D, class T, class Base, int R, int C>
constexpr auto view(Base base, Strides strides, Size<R> rows, Size<C> columns, int count)
{
    return View<T, K, D, R, C>(base, strides, rows, columns, count);
}
template <Kind K, class T, int R, int C>
constexpr auto standard(T *base, Strides strides, Size<R> rows, Size<C> columns, int count = 1)
{
    return view<K, Description::standard, T>(base, strides, rows, columns, count);
}

/// One matrix, or vector, of what holds its elements.
template <class X>
constexpr auto matrixOf(X &x)
{
    if constexpr (isEigen<X>) {
        using T = typename X::Scalar;
        const int inner = bytes<T>(x.innerStride()), outer = bytes<T>(x.outerStride());
        return standard<Kind::m>(x.data(), {0, X::IsRowMajor ? outer : inner, X::IsRowMajor ? inner : outer},
                                 Size<static_cast<int>(X::RowsAtCompileTime)>{asInt(x.rows())},
                                 Size<static_cast<int>(X::ColsAtCompileTime)>{asInt(x.cols())});
    } else if constexpr (rank<X> == 2) {
        return standard<Kind::m>(x.data_handle(), {0, stride(x, 0), stride(x, 1)}, extent<0>(x), extent<1>(x));
    } else if constexpr (Nest<X>::depth == 2) {
        using Row = std::remove_reference_t<decltype(x[0])>;
        auto *const first = &x[0][0];
        return standard<Kind::m>(first, {0, sizeof(Row), sizeof(*first)}, Nest<X>::size, Nest<Row>::size);
    } else {
        static_assert(Nest<X>::depth == 2, "kvlm: no matrix: give a pointer and sizes, an array of arrays, an Eigen "
                                           "matrix or an mdspan of rank 2");
    }
}
template <class X>
constexpr auto vectorOf(X &x)
{
    if constexpr (isEigen<X>) {
        static_assert(X::IsVectorAtCompileTime, "kvlm: a matrix of Eigen's is no vector: use matrix()");
        const int elem = bytes<typename X::Scalar>(x.innerStride());
        return standard<Kind::v>(x.data(), {0, elem, elem},
                                 Size<static_cast<int>(X::SizeAtCompileTime)>{asInt(x.size())}, fixed<1>);
    } else if constexpr (rank<X> == 1) {
        return standard<Kind::v>(x.data_handle(), {0, stride(x, 0), stride(x, 0)}, extent<0>(x), fixed<1>);
    } else if constexpr (Nest<X>::depth == 1) {
        constexpr int elem = sizeof(x[0]);
        return standard<Kind::v>(&x[0], {0, elem, elem}, Nest<X>::size, fixed<1>);
    } else if constexpr (isContainer<X>) {
        constexpr int elem = sizeof(*std::data(x));
        return standard<Kind::v>(std::data(x), {0, elem, elem}, asSize(static_cast<long long>(std::size(x))), fixed<1>);
    } else {
        static_assert(Nest<X>::depth == 1, "kvlm: no vector: give a pointer and a size, an array, a container of "
                                           "elements, an Eigen vector or an mdspan of rank 1");
    }
}
template <class T>
constexpr auto constantOf(T &x)
{
    static_assert(std::is_floating_point_v<std::remove_const_t<T>>, "kvlm: constants are numbers, float or double");
    return standard<Kind::c>(&x, {}, fixed<1>, fixed<1>);
}

/// Whether the elements are in the object itself, as those of the next are in the next.
template <class X>
constexpr bool holdsElements()
{
    if constexpr (isEigen<X>)
        return X::SizeAtCompileTime != dynamic && std::is_same_v<typename X::PlainObject, std::remove_const_t<X>>;
    else
        return Nest<X>::depth > 0 || std::is_floating_point_v<std::remove_const_t<X>>;
}

/// The objects of a container, `of(part(x))` being the view of one.
template <class X, class Of, class Part>
constexpr auto batchOf(X &x, Of of, Part part)
{
    auto *const first = std::data(x);
    using Held = std::remove_reference_t<decltype(part(*first))>;
    static_assert(holdsElements<Held>(), "kvlm: the objects must hold their elements, in a number that their type "
                                         "tells: for others make a list of pointers");
    using One = decltype(of(part(*first)));
    const int count = asInt(static_cast<long long>(std::size(x))); // of an empty container there is no first object
    const One one = count == 0 ? One() : of(part(*first));
    return standard<arrayOf(One::kind)>(one.base(), {sizeof(*first), one.strides().row, one.strides().element},
                                        Size<One::fixedRows>{}, Size<One::fixedColumns>{}, count);
}
inline constexpr auto asMatrix = [](auto &x) { return matrixOf(x); };
inline constexpr auto asVector = [](auto &x) { return vectorOf(x); };
inline constexpr auto asConstant = [](auto &x) { return constantOf(x); };
inline constexpr auto whole = [](auto &x) -> auto &
{
    return x;
};
template <class M, class S>
constexpr auto memberOf(M S::*member)
{
    return [member](auto &x) -> auto &
    {
        return x.*member;
    };
}

} // namespace detail

/**
 * @name One object
 * Of an array (for matrices an array of arrays, C's or std::array), of an Eigen matrix, map or block, of an mdspan; a
 * vector of a std::vector or span too. Or of a pointer and sizes, packed row by row, unless strides say otherwise.
 * @{
 */
template <class X>
constexpr auto matrix(X &&x)
{
    return detail::matrixOf(x);
}
template <class T, class Rows, class Columns>
constexpr auto matrix(T *first, Rows rows, Columns columns)
{
    return detail::standard<Kind::m>(first, {0, detail::bytes<T>(columns), sizeof(T)}, detail::asSize(rows),
                                     detail::asSize(columns));
}
template <class T, class Rows, class Columns>
constexpr auto matrix(T *first, Rows rows, Columns columns, int rowStride, int elemStride = sizeof(T))
{
    return detail::standard<Kind::m>(first, {0, rowStride, elemStride}, detail::asSize(rows), detail::asSize(columns));
}
template <class X>
constexpr auto vector(X &&x)
{
    return detail::vectorOf(x);
}
template <class T, class N>
constexpr auto vector(T *first, N size, int elemStride = sizeof(T))
{
    return detail::standard<Kind::v>(first, {0, elemStride, elemStride}, detail::asSize(size), fixed<1>);
}
/** @} */

/**
 * @name Arrays of objects
 * Of an array, a std::vector, a span of objects that hold their elements: matrices(poses), or of a member of theirs:
 * matrices(bodies, &Body::pose). Of a pointer to packed objects. Of an mdspan, whose first index is the object.
 * @{
 */
template <class X>
constexpr auto matrices(X &&x)
{
    if constexpr (detail::rank<std::remove_reference_t<X>> == 3)
        return detail::standard<Kind::ma>(x.data_handle(),
                                          {detail::stride(x, 0), detail::stride(x, 1), detail::stride(x, 2)},
                                          detail::extent<1>(x), detail::extent<2>(x), detail::extent<0>(x));
    else
        return detail::batchOf(x, detail::asMatrix, detail::whole);
}
template <class X, class M, class S>
constexpr auto matrices(X &&x, M S::*member)
{
    return detail::batchOf(x, detail::asMatrix, detail::memberOf(member));
}
template <class X>
constexpr auto vectors(X &&x)
{
    if constexpr (detail::rank<std::remove_reference_t<X>> == 2)
        return detail::standard<Kind::va>(x.data_handle(),
                                          {detail::stride(x, 0), detail::stride(x, 1), detail::stride(x, 1)},
                                          detail::extent<1>(x), fixed<1>, detail::extent<0>(x));
    else
        return detail::batchOf(x, detail::asVector, detail::whole);
}
template <class X, class M, class S>
constexpr auto vectors(X &&x, M S::*member)
{
    return detail::batchOf(x, detail::asVector, detail::memberOf(member));
}
/** A constant for each object. */
template <class X>
constexpr auto constants(X &&x)
{
    return detail::batchOf(x, detail::asConstant, detail::whole);
}
template <class X, class M, class S>
constexpr auto constants(X &&x, M S::*member)
{
    return detail::batchOf(x, detail::asConstant, detail::memberOf(member));
}
template <class T>
constexpr auto constants(T *first, int count, int stride = sizeof(T))
{
    return detail::standard<Kind::ca>(first, {stride}, fixed<1>, fixed<1>, count);
}

/** `count` objects like this one, each objStride bytes behind the one before, of the same description. */
template <class T, Kind K, Description D, int R, int C>
constexpr auto repeated(View<T, K, D, R, C> one, int objStride, int count)
{
    static_assert(!isArray(K) && D != Description::list, "kvlm: one object can be repeated");
    const Strides &s = one.strides();
    return detail::view<arrayOf(K), D, T>(one.base(), {objStride, s.row, s.element, s.shift}, Size<R>{one.rows()},
                                          Size<C>{one.columns()}, count);
}
template <class T, class Rows, class Columns>
constexpr auto matrices(T *first, Rows rows, Columns columns, int count)
{
    return repeated(matrix(first, rows, columns), detail::bytes<T>(static_cast<long long>(rows) * columns), count);
}
template <class T, class N>
constexpr auto vectors(T *first, N size, int count)
{
    return repeated(vector(first, size), detail::bytes<T>(size), count);
}
/** @} */

/**
 * @name Planes
 * One run of objects per position, planeStride bytes from one run to the next, row by row: next to an element stands
 * that of the next object. Without planeStride the runs are adjacent.
 * @{
 */
template <class T, class Rows, class Columns>
constexpr auto matricesInPlanes(T *first, Rows rows, Columns columns, int count, int planeStride = 0)
{
    if (planeStride == 0)
        planeStride = detail::bytes<T>(count);
    return repeated(
        matrix(first, rows, columns, detail::asInt(static_cast<long long>(planeStride) * columns), planeStride),
        sizeof(T), count);
}
template <class T, class N>
constexpr auto vectorsInPlanes(T *first, N size, int count, int planeStride = 0)
{
    if (planeStride == 0)
        planeStride = detail::bytes<T>(count);
    return repeated(vector(first, size, planeStride), sizeof(T), count);
}
/** @} */

/**
 * @name Tables (_P)
 * A pointer per element position of the first object, row by row; of arrays the bytes from each object to the next. The
 * table is the caller's, and must outlive the view.
 * @{
 */
template <class T, class Rows, class Columns>
constexpr auto matrixByTable(T *const *table, Rows rows, Columns columns, int shift = 0)
{
    return detail::view<Kind::m, Description::table, T>(table, {0, 0, 0, shift}, detail::asSize(rows),
                                                        detail::asSize(columns), 1);
}
template <class T, class Rows, class Columns>
constexpr auto matricesByTable(T *const *table, Rows rows, Columns columns, int count, int objStride, int shift = 0)
{
    return repeated(matrixByTable(table, rows, columns, shift), objStride, count);
}
template <class T, class N>
constexpr auto vectorByTable(T *const *table, N size, int shift = 0)
{
    return detail::view<Kind::v, Description::table, T>(table, {0, 0, 0, shift}, detail::asSize(size), fixed<1>, 1);
}
template <class T, class N>
constexpr auto vectorsByTable(T *const *table, N size, int count, int objStride, int shift = 0)
{
    return repeated(vectorByTable(table, size, shift), objStride, count);
}
/** @} */

/**
 * @name Lists (_L)
 * A pointer per object, which lies packed behind it unless strides say otherwise. The list is the caller's, and must
 * outlive the view.
 * @{
 */
template <class T, class Rows, class Columns>
constexpr auto matricesByList(T *const *list, Rows rows, Columns columns, int count, int shift, int rowStride,
                              int elemStride = sizeof(T))
{
    return detail::view<Kind::ma, Description::list, T>(list, {0, rowStride, elemStride, shift}, detail::asSize(rows),
                                                        detail::asSize(columns), count);
}
template <class T, class Rows, class Columns>
constexpr auto matricesByList(T *const *list, Rows rows, Columns columns, int count)
{
    return matricesByList(list, rows, columns, count, 0, detail::bytes<T>(columns));
}
template <class T, class N>
constexpr auto vectorsByList(T *const *list, N size, int count, int shift = 0, int elemStride = sizeof(T))
{
    return detail::view<Kind::va, Description::list, T>(list, {0, elemStride, elemStride, shift}, detail::asSize(size),
                                                        fixed<1>, count);
}
template <class T>
constexpr auto constantsByList(T *const *list, int count, int shift = 0)
{
    return detail::view<Kind::ca, Description::list, T>(list, {0, 0, 0, shift}, fixed<1>, fixed<1>, count);
}
/** @} */

} // namespace kvlm

#endif
