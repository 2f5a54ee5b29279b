// Public functions as values: an argument list of tagged words, a call through it, and the table row of a member.
#pragma once

#include "kvlm.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// One argument. `check` is the class of check that it is subject to: N pointer, S size, C count, T stride, H shift,
// O object stride (T to most members); V is a constant passed by value. `round` tells arguments apart whose class is
// checked twice (0: the first time). A size that must match another one is `matched`.
struct Arg {
    char check;
    bool table;
    const void *pointer;
    int number;
    double value;
    int round;
    bool matched = false;

    static Arg base(const void *p) { return {'N', false, p, 0, 0, 0}; }
    static Arg tableOf(const void *p) { return {'N', true, p, 0, 0, 0}; }
    static Arg integer(char check, int n) { return {check, false, nullptr, n, 0, 0}; }
    static Arg size(int n, bool matched) { return {'S', false, nullptr, n, 0, 0, matched}; }
    static Arg constant(double v) { return {'V', false, nullptr, 0, v, 0}; }
};
using Args = std::vector<Arg>;

// A mistake in a test's own argument list, not a fault of the library.
inline void require(bool ok, const char *what)
{
    if (!ok) {
        std::fprintf(stderr, "test kit: %s\n", what);
        std::abort();
    }
}

// Any function that returns a KvlStatus; a call compares the argument list with the prototype.
class Function {
public:
    Function() = default;
    template <class... A>
    Function(KvlStatus (*fn)(A...))
        : address(reinterpret_cast<void (*)()>(fn)), invoke(invokeAs<A...>), arity(sizeof...(A))
    {
    }
    KvlStatus operator()(const Args &args) const
    {
        require(args.size() == arity, "number of arguments");
        return invoke(address, args.data());
    }
    explicit operator bool() const { return address != nullptr; }

    void (*address)() = nullptr;

private:
    template <class A>
    static A convert(const Arg &arg)
    {
        if constexpr (std::is_pointer_v<A>) {
            require(arg.check == 'N' && arg.table == std::is_pointer_v<std::remove_pointer_t<A>>, "a pointer's depth");
            return static_cast<A>(const_cast<void *>(arg.pointer));
        } else if constexpr (std::is_integral_v<A>) {
            require(arg.check != 'N' && arg.check != 'V', "an integer");
            return arg.number;
        } else {
            require(arg.check == 'V', "a constant");
            return static_cast<A>(arg.value);
        }
    }
    template <class... A>
    static KvlStatus invokeAs(void (*fn)(), const Arg *args)
    {
        return expand<A...>(reinterpret_cast<KvlStatus (*)(A...)>(fn), args, std::index_sequence_for<A...>());
    }
    template <class... A, std::size_t... I>
    static KvlStatus expand(KvlStatus (*fn)(A...), const Arg *args, std::index_sequence<I...>)
    {
        return fn(convert<A>(args[I])...);
    }

    KvlStatus (*invoke)(void (*)(), const Arg *) = nullptr;
    std::size_t arity = 0;
};

// A public function and what is expected of its frame. Its arguments, one entry each: m, t, v or c a source, M or V the
// destination, X one with the source's columns as rows, each with `a` for an array; E a destination packed without
// strides; p pivots that are read, P that are written; b the buffer; D a plain result for each object, e a run of n of
// them; w, h, l, n sizes of the result, x, y, z the width, height or length of the source before; k the count.
// Estimates at or above the limit go to the driver.
struct Member {
    std::string name;
    Function call;
    Function driver;
    std::string family;
    std::string letters;
    std::vector<std::string> operands;
    bool is64;
    char description; // S, P or L
    std::string order;
    int (*estimate)(int width, int height, int count);
    int contiguousLimit;
    int stridedLimit;
    char dstDescription;
    bool neverDriven = false; // settled of a few: their driver is not called

    int elementSize() const { return is64 ? 8 : 4; }
    bool isArray() const { return has("k"); }
    bool has(const std::string &operand) const
    {
        return std::find(operands.begin(), operands.end(), operand) != operands.end();
    }
    bool isSum() const { return family == "Add" || family == "Sub"; }
    bool isSquare() const { return has("n"); }
    bool isTall() const { return family.find("QR") == 0; } // width is at most height
    bool isNumerical() const { return (isSquare() && family != "Trace") || isTall(); }
    bool isEigen() const { return family.find("Eigen") == 0; }
    bool isGeneralEigen() const { return isEigen() && family.find("Sym") == std::string::npos; }
    // Sums of products: the sizes of the sources are arguments of their own.
    bool isProduct() const { return has("x") || family == "AffineTransform3DH"; }
    bool isMatrixProduct() const { return has("x") && !has("z"); }
    bool isVector() const { return has("l"); }
    // A constant before a vector, and what is computed of vectors or of all elements of a matrix.
    bool isConstantFirst() const { return letters[0] == 'c'; }
    bool isMeasure() const
    {
        return family == "DotProduct" || family == "L2Norm" || family == "FrobNorm" || family == "Trace";
    }
    bool isVectorAlgebra() const
    {
        return isMeasure() || family == "CrossProduct" || family == "Saxpy" || family == "LComb";
    }
    bool hasFixedSize() const { return family == "CrossProduct" || family == "AffineTransform3DH"; }
    // Shapes that make a settled oddity touch more than the operands: these have tests of their own.
    bool isOddAt(int width, int height, int inner) const
    {
        if (name == "kvlmMul_mm_32f_P" || name == "kvlmMul_tt_64f_P")
            return (width | height | inner) == 3 && (width != 3 || height != 3 || inner != 3);
        return name == "kvlmMul_mat_32f" && height == 4 && inner == 4 && width == 3;
    }
};

// Splits the letters of a name: "tama" gives "ta", "ma".
inline std::vector<std::string> splitLetters(const std::string &letters)
{
    std::vector<std::string> operands;
    for (char letter : letters) {
        if (letter == 'a')
            operands.back() += 'a';
        else
            operands.emplace_back(1, letter);
    }
    return operands;
}

// Calls body with a zero of the member's element type.
template <class Body>
void withType(const Member &member, Body body)
{
    if (member.is64)
        body(double());
    else
        body(float());
}
