/**
 * @file call.hpp
 * From operands to the argument list of a C function: what all operations share.
 */
#ifndef KVLM_CALL_HPP
#define KVLM_CALL_HPP

#include "scratch.hpp"
#include "status.hpp"
#include "table.hpp"

#include <kvlcore.h>

#include <tuple>
#include <type_traits>

/** Views live in registers as long as no function takes them by reference: operations are always inlined. */
#ifdef __GNUC__
#define KVLM_HPP_INLINE __attribute__((always_inline)) inline
#else
#define KVLM_HPP_INLINE inline
#endif

namespace kvlm {
namespace detail {

/// What an operand is: a view, or a number that stands for a constant.
template <class X, class = void>
struct Operand {
    using Element = float; // so that what is no operand is told of by a text of ours alone
    static constexpr bool isOperand = false, isWritable = false;
    static constexpr Kind kind = Kind::c;
    static constexpr Description description = Description::standard;
};
template <class X>
struct Operand<X, std::enable_if_t<std::is_arithmetic_v<X>>> : Operand<void> {
    using Element = void; // any
    static constexpr bool isOperand = true;
};
template <class T, Kind K, Description D, int R, int C>
struct Operand<View<T, K, D, R, C>> {
    using Element = std::remove_const_t<T>;
    static constexpr bool isOperand = true, isWritable = !std::is_const_v<T>;
    static constexpr Kind kind = K;
    static constexpr Description description = D;
};

template <class X>
inline constexpr Kind kindOf = Operand<X>::kind;
template <class X>
inline constexpr bool isConstant = single(kindOf<X>) == Kind::c;
template <class X>
inline constexpr bool isMatrix = single(kindOf<X>) == Kind::m || single(kindOf<X>) == Kind::t;
template <class X>
inline constexpr bool isVector = single(kindOf<X>) == Kind::v;

/// The element type of the first operand that has one.
template <class... X>
struct ElementOfFirst {
    using Element = float;
};
template <class X, class... More>
struct ElementOfFirst<X, More...>
    : std::conditional_t<std::is_void_v<typename Operand<X>::Element>, ElementOfFirst<More...>, Operand<X>> {
};
template <class... X>
using ElementOf = typename ElementOfFirst<X...>::Element;

/// The description of a call: that of its arrays, or of its objects where there is no array.
template <class... X>
constexpr Description descriptionOf()
{
    constexpr Kind kinds[] = {kindOf<X>...};
    constexpr Description descriptions[] = {Operand<X>::description...};
    Description ofObject = Description::standard;
    for (std::size_t k = 0; k < sizeof...(X); ++k)
        if (single(kinds[k]) != Kind::c) {
            if (isArray(kinds[k]))
                return descriptions[k];
            ofObject = descriptions[k];
        }
    return ofObject;
}
/// Single objects and constants stay in the standard description in calls of some others.
template <class X>
constexpr bool isDescribed(Description ofCall)
{
    const bool staysStandard = ofCall == Description::list ? !isArray(kindOf<X>) : isConstant<X>;
    return Operand<X>::description == (staysStandard ? Description::standard : ofCall);
}

template <bool there>
constexpr auto only(int argument)
{
    if constexpr (there)
        return std::tuple<int>(argument);
    else
        return std::tuple<>();
}

/// An operand's part of the list: its pointer and its shift and strides, or the constant.
template <class T, class X>
constexpr auto described(const X &x)
{
    if constexpr (std::is_arithmetic_v<X>) {
        return std::tuple<T>(static_cast<T>(x));
    } else {
        constexpr bool isTable = X::description == Description::table, isList = X::description == Description::list;
        constexpr bool hasShift = isTable || isList, hasObjects = isArray(X::kind) && !isList;
        constexpr bool hasRows = !isTable && isMatrix<X>, hasElements = !isTable && !isConstant<X>;
        const Strides &s = x.strides();
        return std::tuple_cat(std::tuple<typename X::Base>(x.base()), only<hasShift>(s.shift),
                              only<hasObjects>(s.object), only<hasRows>(s.row), only<hasElements>(s.element));
    }
}
template <class T, class U>
constexpr std::tuple<U *> described(const Run<U> &run)
{
    return std::tuple<U *>(run.data());
}
template <class T, class U>
constexpr std::tuple<U *> described(const Scratch<U> &scratch)
{
    return std::tuple<U *>(scratch.data());
}
template <class T, int N>
constexpr std::tuple<int> described(Size<N> size)
{
    return std::tuple<int>(size);
}
template <class T, class... Arguments>
constexpr std::tuple<Arguments...> described(const std::tuple<Arguments...> &arguments)
{
    return arguments;
}

template <class T, Kind K, Description D, int R, int C>
constexpr Size<R> rowsOf(const View<T, K, D, R, C> &x)
{
    return {x.rows()};
}
template <class T, Kind K, Description D, int R, int C>
constexpr Size<C> columnsOf(const View<T, K, D, R, C> &x)
{
    return {x.columns()};
}
/// What is no view is refused elsewhere.
template <class X>
constexpr Size<dynamic> rowsOf(const X &)
{
    return {0};
}
template <class X>
constexpr Size<dynamic> columnsOf(const X &)
{
    return {0};
}
/// The shape as it is read: columns and rows, or the length.
template <class X>
constexpr auto shape(const X &x)
{
    if constexpr (isVector<X>)
        return std::tuple<int>(rowsOf(x));
    else
        return std::tuple<int, int>(columnsOf(x), rowsOf(x));
}
/// The shape as the elements are stored.
template <class X>
constexpr auto stored(const X &x)
{
    if constexpr (single(kindOf<X>) == Kind::t)
        return std::tuple<int, int>(rowsOf(x), columnsOf(x));
    else
        return shape(x);
}

template <class... X>
inline constexpr bool anyArray = (isArray(kindOf<X>) || ...);
/// The number of objects of the first array.
template <class X, class... More>
constexpr int firstCount(const X &x, const More &...more)
{
    if constexpr (isArray(kindOf<X>))
        return x.count();
    else
        return firstCount(more...);
}
/// The argument `count`, where there is an array.
template <class... X>
constexpr auto countOf(const X &...x)
{
    if constexpr (anyArray<X...>)
        return std::tuple<int>(firstCount(x...));
    else
        return std::tuple<>();
}
/// Whether all arrays have as many objects.
template <class... X>
constexpr bool sameCount(const X &...x)
{
    if constexpr (anyArray<X...>) {
        const int count = firstCount(x...);
        const auto agrees = [count](const auto &operand) {
            if constexpr (isArray(kindOf<std::decay_t<decltype(operand)>>))
                return operand.count() == count;
            else
                return true;
        };
        return (agrees(x) && ...);
    } else {
        return true;
    }
}
/// So many elements for each object, in what is no view.
template <class... X>
constexpr std::ptrdiff_t forAll(std::ptrdiff_t perObject, const X &...x)
{
    if constexpr (anyArray<X...>)
        return perObject * firstCount(x...);
    else
        return perObject;
}

/// The letters of the C name; Gaxpy's leave out that the last vector is like the one before.
template <Operation O, class... Sources>
constexpr unsigned lettersOf()
{
    constexpr unsigned all = code(kindOf<Sources>...);
    return O == Operation::Gaxpy && all % 16 == all / 16 % 16 ? all / 16 : all;
}

/// The C function of an operation on these sources, or nullptr.
template <Operation O, class Dst, class... Sources>
inline constexpr auto
    functionOf = Functions<O, lettersOf<O, Sources...>()>::template get<ElementOf<Sources..., Dst>,
                                                                        descriptionOf<Dst, Sources...>()>();
template <Operation O, class Dst, class... Sources>
inline constexpr bool hasFunction = !std::is_same_v<decltype(functionOf<O, Dst, Sources...>), const std::nullptr_t>;

/// No destination that is a view: the results are a Run.
struct Plain {};
template <>
struct Operand<Plain> : Operand<float> {
    static constexpr bool isWritable = true;
};

/// Comparisons of sizes, of those that are known when compiling: unless something else is wrong with the operands.
template <bool mustFit>
struct Sizes {
    template <int N, int M>
    static constexpr bool same(Size<N> a, Size<M> b)
    {
        static_assert(!mustFit || N == M || N == dynamic || M == dynamic,
                      "kvlm: the sizes of the operands do not fit together");
        return a == b;
    }
    /// Constants have no shape.
    template <class X, class Y>
    static constexpr bool sameShape(const X &x, const Y &y)
    {
        if constexpr (isConstant<X>)
            return true;
        else
            return same(rowsOf(x), rowsOf(y)) && same(columnsOf(x), columnsOf(y));
    }
    template <class X>
    static constexpr bool isSquare(const X &x)
    {
        return same(rowsOf(x), columnsOf(x));
    }
    /// dst is of the shape of a, which is square.
    template <class A, class Dst>
    static constexpr bool fitsSquare(const A &a, const Dst &dst)
    {
        return isSquare(a) && sameShape(a, dst) && sameCount(a, dst);
    }
};

/// What is wrong with the operands of an operation.
enum class Fault { none, noView, isConst, types, descriptions, destination, noFunction };

template <Operation O, Kind DstKind, class Dst, class... Sources>
constexpr Fault faultOf()
{
    constexpr Description description = descriptionOf<Dst, Sources...>();
    constexpr auto hasType = [](auto operand) {
        using X = typename decltype(operand)::Element;
        return std::is_void_v<X> || std::is_same_v<X, ElementOf<Sources..., Dst>>;
    };
    if (!(Operand<Dst>::isOperand && (Operand<Sources>::isOperand && ...)))
        return Fault::noView;
    if (!Operand<Dst>::isWritable)
        return Fault::isConst;
    if (!(hasType(Operand<Dst>()) && (hasType(Operand<Sources>()) && ...)))
        return Fault::types;
    if (!(isDescribed<Dst>(description) && (isDescribed<Sources>(description) && ...)))
        return Fault::descriptions;
    if (!std::is_same_v<Dst, Plain> && kindOf<Dst> != (anyArray<Sources...> ? arrayOf(DstKind) : DstKind))
        return Fault::destination;
    return hasFunction<O, Dst, Sources...> ? Fault::none : Fault::noFunction;
}

/// What a program's OpenMP runtime says, if it has one that this library knows.
extern "C" int kvlmOmpInParallel(void) __asm__("omp_in_parallel") __attribute__((weak));

/// Whether a team would be smaller than what a call is split for.
KVLM_HPP_INLINE bool mayLoseObjects()
{
    return threads_omp_of_n_kvl > 1 && kvlmOmpInParallel && kvlmOmpInParallel();
}
template <Operation O>
inline constexpr bool isForTeams =
    !(O == Operation::Copy || O == Operation::Extract || O == Operation::LoadIdentity || O == Operation::Transpose);

/// An operation on operands: tells at compile time what is wrong with them, then calls. The destination is one vector
/// (Kind::v) or matrix (Kind::m), or an array of them as soon as a source is one.
template <Operation O, Kind DstKind, class Dst, class... Sources>
struct Form : Sizes<faultOf<O, DstKind, Dst, Sources...>() == Fault::none> {
    using T = ElementOf<Sources..., Dst>;
    static constexpr Fault fault = faultOf<O, DstKind, Dst, Sources...>();
    static_assert(fault != Fault::noView, "kvlm: an operand is no view: make one by matrix(), matrices(), vector(), "
                                          "vectors(), constants() and the like");
    static_assert(fault != Fault::isConst, "kvlm: the elements of the destination are const");
    static_assert(fault != Fault::types, "kvlm: the elements of the operands are of different types");
    static_assert(fault != Fault::descriptions,
                  "kvlm: the operands of a call have one description; single objects beside lists are standard, "
                  "constants beside tables too. copy() moves arrays between descriptions");
    static_assert(fault != Fault::destination,
                  "kvlm: the destination must be of the result's kind, matrices or vectors, "
                  "never transposed, and an array exactly if a source is one");
    static_assert(fault != Fault::noFunction, "kvlm: there is no C function for this operation on these operands, "
                                              "elements and description; kvlm.hpp lists what there is");

    /// The parts are those of the C function's argument list, in its order.
    template <class... Parts>
    KVLM_HPP_INLINE static Status call([[maybe_unused]] bool fits, const Parts &...parts)
    {
        if constexpr (fault == Fault::none) {
            if (isForTeams<O> && anyArray<Sources...> && mayLoseObjects())
                return insideParallelRegion;
            return fits ? Status(std::apply(functionOf<O, Dst, Sources...>, std::tuple_cat(described<T>(parts)...)))
                        : Status(kvlErrSizeMatch);
        } else
            return kvlOk;
    }
};

} // namespace detail
} // namespace kvlm

#endif
