/**
 * @file views.hpp
 * Views: where the elements of an operand lie, in the descriptions of kvlm.h. A view owns nothing and is copied freely.
 */
#ifndef KVLM_VIEWS_HPP
#define KVLM_VIEWS_HPP

#include <cstddef>
#include <type_traits>

namespace kvlm {

/** What a view shows, by the letters of the C names: a vector, a matrix, a matrix read transposed, a constant, and
 * arrays of them. */
enum class Kind : unsigned { v = 1, m, t, c, va = 9, ma, ta, ca };

/** How it is described: base and strides, `_P` a table of pointers, one per position, `_L` a list, one per object. */
enum class Description { standard, table, list };

constexpr bool isArray(Kind kind)
{
    return static_cast<unsigned>(kind) & 8u;
}
/** The same for one object. */
constexpr Kind single(Kind kind)
{
    return static_cast<Kind>(static_cast<unsigned>(kind) & 7u);
}
/** The same for an array. */
constexpr Kind arrayOf(Kind kind)
{
    return static_cast<Kind>(static_cast<unsigned>(kind) | 8u);
}

/** A size that is known only at run time. */
inline constexpr int dynamic = -1;

/** A size, in its type if it is known to the compiler. */
template <int N>
struct Size {
    int value = N;
    constexpr operator int() const { return N == dynamic ? value : N; }
};
/** Sizes for the compiler to check: matrices(pointer, fixed<3>, fixed<3>, count). */
template <int N>
inline constexpr Size<N> fixed{};

/** Bytes, `int` as in the C functions: what does not fit there can't be called. `shift` is of tables and lists. */
struct Strides {
    int object = 0;
    int row = 0;
    int element = 0;
    int shift = 0;
};

/**
 * An operand of elements T, `const` for a source, with R rows and C columns as it is read; a vector is a column. Its
 * element (r, c) of object i is view(i, r, c), without what it has no choice of: view(r, c) of one matrix, view(i, j)
 * of vectors, view(j) of one vector, view(i) of constants. No index is checked.
 *
 * Made by matrix(), matrices(), vector(), vectors(), constants() and their relatives in make.hpp.
 */
template <class T, Kind K, Description D = Description::standard, int R = dynamic, int C = dynamic>
class View {
public:
    using Element = T;
    static constexpr Kind kind = K;
    static constexpr Description description = D;
    static constexpr int fixedRows = R, fixedColumns = C;

    /** The first element, the table or the list. */
    using Base = std::conditional_t<D == Description::standard, T *, T *const *>;

    constexpr View() = default;
    constexpr View(Base base, Strides strides, Size<R> rows, Size<C> columns, int count = 1)
        : start(base), bytes(strides), height(rows), width(columns), objects(count)
    {
    }
    /** Of const elements from a view of others, of sizes at run time from sizes that are known. */
    template <class U, int R2, int C2,
              class = std::enable_if_t<std::is_convertible_v<U (*)[], T (*)[]> && (R == dynamic || R == R2) &&
                                       (C == dynamic || C == C2)>>
    constexpr View(const View<U, K, D, R2, C2> &other)
        : start(other.base()), bytes(other.strides()), height{other.rows()}, width{other.columns()},
          objects(other.count())
    {
    }

    constexpr int rows() const { return height; }
    constexpr int columns() const { return width; }
    /** The elements of one object: the length of a vector. */
    constexpr int size() const { return rows() * columns(); }
    /** The objects, 1 if it is no array. */
    constexpr int count() const { return objects; }

    constexpr Base base() const { return start; }
    constexpr const Strides &strides() const { return bytes; }

    template <class... Index>
    T &operator()(Index... index) const
    {
        constexpr int expected = isArray(K) + (single(K) == Kind::v ? 1 : single(K) == Kind::c ? 0 : 2);
        static_assert(sizeof...(Index) == expected,
                      "kvlm: an element has an index for the object, if it is of an array, "
                      "then row and column, or the place in a vector");
        const int at[] = {static_cast<int>(index)..., 0, 0};
        return isArray(K) ? element(at[0], at[1], at[2]) : element(0, at[0], at[1]);
    }
    /** The same with all three indices, for code that serves any kind. */
    T &element(int object, int row, int column) const
    {
        constexpr bool turned = single(K) == Kind::t;
        const std::ptrdiff_t r = turned ? column : row, c = turned ? row : column, i = object;
        if constexpr (D == Description::standard)
            return *moved(start, i * bytes.object + r * bytes.row + c * bytes.element);
        else if constexpr (D == Description::table)
            return *moved(start[r * (turned ? rows() : columns()) + c], bytes.shift + i * bytes.object);
        else
            return *moved(start[i], bytes.shift + r * bytes.row + c * bytes.element);
    }

    /** One object of an array: of a list in the standard description, else in the same. */
    auto operator[](int object) const
    {
        static_assert(isArray(K) && K != Kind::ca, "kvlm: only arrays of vectors or matrices have objects");
        constexpr Kind one = single(K);
        if constexpr (D == Description::table)
            return View<T, one, D, R, C>(start, {0, 0, 0, bytes.shift + object * bytes.object}, height, width);
        else
            return View<T, one, Description::standard, R, C>(firstOf(object), {0, bytes.row, bytes.element, 0}, height,
                                                             width);
    }

private:
    using Byte = std::conditional_t<std::is_const_v<T>, const char, char>;

    static T *moved(T *from, std::ptrdiff_t by) { return reinterpret_cast<T *>(reinterpret_cast<Byte *>(from) + by); }
    T *firstOf(int object) const
    {
        if constexpr (D == Description::list)
            return moved(start[object], bytes.shift);
        else
            return moved(start, static_cast<std::ptrdiff_t>(object) * bytes.object);
    }

    Base start = nullptr;
    Strides bytes;
    Size<R> height;
    Size<C> width;
    int objects = 0;
};

template <class T, int R = dynamic, int C = dynamic, Description D = Description::standard>
using MatrixView = View<T, Kind::m, D, R, C>;
template <class T, int R = dynamic, int C = dynamic, Description D = Description::standard>
using MatricesView = View<T, Kind::ma, D, R, C>;
template <class T, int N = dynamic, Description D = Description::standard>
using VectorView = View<T, Kind::v, D, N, 1>;
template <class T, int N = dynamic, Description D = Description::standard>
using VectorsView = View<T, Kind::va, D, N, 1>;
template <class T, Description D = Description::standard>
using ConstantsView = View<T, Kind::ca, D, 1, 1>;

/** The transposed matrix, or matrices: the same elements in the same description, read by columns. Of a transposed view
 * it is the original. */
template <class T, Kind K, Description D, int R, int C>
constexpr auto transposed(const View<T, K, D, R, C> &view)
{
    constexpr Kind one = single(K), other = one == Kind::m ? Kind::t : Kind::m;
    constexpr Kind kind = isArray(K) ? arrayOf(other) : other;
    static_assert(one == Kind::m || one == Kind::t, "kvlm: only matrices can be transposed");
    return View<T, kind, D, C, R>(view.base(), view.strides(), {view.columns()}, {view.rows()}, view.count());
}

} // namespace kvlm

#endif
