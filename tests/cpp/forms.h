// Every operation on every choice of operands: the call in C++ is made of the words of the C argument list, and what it
// leaves in memory is judged by the oracle of that member.
#pragma once

#include "call.h"
#include "kvlm.hpp"

#include <functional>
#include <string>

using kvlm::Description;
using kvlm::Kind;
using kvlm::Status;

// A call in C++ of what stands in an argument list; also tells whether all of that was read.
using Call = std::function<KvlStatus(const Args &, bool &isAtEnd)>;

// Makes it on the member of this name, in several layouts.
void checkCall(const std::string &name, const Call &call);

// What is read where the argument list tells of an operand: all but its shape.
template <class T, Kind K, Description D>
struct Place {
    typename kvlm::View<T, K, D>::Base base;
    kvlm::Strides strides;

    auto matrix(int rows, int columns, int count) const
    {
        return kvlm::View<T, K, D>(base, strides, {rows}, {columns}, kvlm::isArray(K) ? count : 1);
    }
    auto vector(int size, int count) const
    {
        return kvlm::View<T, K, D, kvlm::dynamic, 1>(base, strides, {size}, {}, kvlm::isArray(K) ? count : 1);
    }
    // A vector if it is one, of so many columns; constants have no shape.
    auto shaped(int rows, int columns, int count) const
    {
        if constexpr (kvlm::single(K) == Kind::v)
            return vector(columns, count);
        else if constexpr (K == Kind::ca)
            return kvlm::View<T, K, D, 1, 1>(base, strides, {}, {}, count);
        else
            return matrix(rows, columns, count);
    }
};
template <class T>
struct Number {
    T value;
    T shaped(int, int, int) const { return value; }
};

// Reads an argument list from left to right.
template <class Element, Description ofCall>
class Reader {
public:
    using T = Element;
    static constexpr Description description = ofCall;

    explicit Reader(const Args &list) : args(list) {}
    bool isAtEnd() const { return at == args.size(); }

    template <Kind K>
    auto source()
    {
        constexpr bool isConstant = kvlm::single(K) == Kind::c;
        constexpr bool staysStandard = ofCall == Description::list ? !kvlm::isArray(K) : isConstant;
        if constexpr (K == Kind::c)
            return Number<T>{static_cast<T>(next().value)};
        else
            return place < const T, K, staysStandard ? Description::standard : ofCall > ();
    }
    template <Kind K, Description D = ofCall>
    auto result()
    {
        return place<T, K, D>();
    }
    int number() { return next().number; }
    T constant() { return static_cast<T>(next().value); }
    template <class U = T>
    U *run()
    {
        return pointer<U *>();
    }

private:
    const Arg &next() { return args.at(at++); }
    template <class P>
    P pointer()
    {
        return static_cast<P>(const_cast<void *>(next().pointer));
    }
    template <class U, Kind K, Description D>
    Place<U, K, D> place()
    {
        constexpr bool isMatrix = kvlm::single(K) == Kind::m || kvlm::single(K) == Kind::t;
        Place<U, K, D> place{pointer<typename kvlm::View<U, K, D>::Base>(), {}};
        kvlm::Strides &s = place.strides;
        if (D != Description::standard)
            s.shift = number();
        if (kvlm::isArray(K) && D != Description::list)
            s.object = number();
        if (isMatrix && D != Description::table)
            s.row = number();
        if (kvlm::single(K) != Kind::c && D != Description::table)
            s.element = number();
        if (!isMatrix)
            s.row = s.element;
        return place;
    }

    const Args &args;
    std::size_t at = 0;
};

inline std::string lettersOf(Kind kind)
{
    return std::string(1, "-vmtc"[static_cast<unsigned>(kvlm::single(kind))]) + (kvlm::isArray(kind) ? "a" : "");
}

template <Kind K>
using Letter = std::integral_constant<Kind, K>;

// body(reader, letters...) for one element type and description.
template <class T, Description D, Kind... K, class Body>
void checkForm(std::string name, const Body &body)
{
    name += sizeof(T) == 4 ? "_32f" : "_64f";
    name += D == Description::standard ? "" : D == Description::table ? "_P" : "_L";
    checkCall(name, [&body](const Args &args, bool &isAtEnd) {
        Reader<T, D> reader(args);
        const Status status = body(reader, Letter<K>()...);
        isAtEnd = reader.isAtEnd();
        return status.value();
    });
}

// The same for all types and descriptions of kvlm<family>_<letters>.
template <Kind... K, class Body>
void check(const std::string &family, const Body &body)
{
    const std::string name = "kvlm" + family + "_" + (lettersOf(K) + ...);
    checkForm<float, Description::standard, K...>(name, body);
    checkForm<double, Description::standard, K...>(name, body);
    checkForm<float, Description::table, K...>(name, body);
    checkForm<double, Description::table, K...>(name, body);
    if constexpr ((kvlm::isArray(K) || ...)) {
        checkForm<float, Description::list, K...>(name, body);
        checkForm<double, Description::list, K...>(name, body);
    }
}

template <Kind K, Kind... More>
constexpr Kind likeSources(Kind one)
{
    return (kvlm::isArray(K) || ... || kvlm::isArray(More)) ? kvlm::arrayOf(one) : one;
}

// The rows, a source each: they call check() for all operands of some families.
void checkSums();
void checkProducts();
void checkVectorsAndMoves();
void checkSystems();
