// Public functions as values: an argument list of tagged words, and a call through it.
#pragma once

#include "kvlm.h"

#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// One argument. `check` is the class of check that it is subject to: N pointer, S size, C count, T stride, H shift,
// O object stride (T to most members); V is a constant passed by value. A size that must match another one is
// `matched`; `role` is e for a stride of elements, b for the buffer, which some kernels lack. `round` tells arguments
// apart whose class is checked twice (0: the first time).
struct Arg {
    char check;
    const void *pointer = nullptr;
    int number = 0;
    double value = 0;
    bool table = false, matched = false;
    char role = 0;
    int round = 0;

    static Arg base(const void *p) { return {'N', p}; }
    static Arg tableOf(const void *p) { return {'N', p, 0, 0, true}; }
    static Arg integer(char check, int n) { return {check, nullptr, n}; }
    static Arg size(int n, bool matched) { return {'S', nullptr, n, 0, false, matched}; }
    static Arg elemStride(int n) { return {'T', nullptr, n, 0, false, false, 'e'}; }
    static Arg constant(double v) { return {'V', nullptr, 0, v}; }
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

// What runs now, told on the way out when a call dies of a stray access.
inline std::string &running()
{
    static std::string text;
    return text;
}

inline const bool crashIsTold = [] {
    for (int number : {SIGSEGV, SIGBUS})
        std::signal(number, [](int caught) {
            if (write(2, running().data(), running().size()) < 0 || write(2, ": stray access\n", 15) < 0)
                _exit(2);
            std::signal(caught, SIG_DFL);
            std::raise(caught);
        });
    return true;
}();

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
    template <class... A, std::size_t... I>
    static KvlStatus expand(KvlStatus (*fn)(A...), const Arg *args, std::index_sequence<I...>)
    {
        return fn(convert<A>(args[I])...);
    }
    template <class... A>
    static KvlStatus invokeAs(void (*fn)(), const Arg *args)
    {
        return expand(reinterpret_cast<KvlStatus (*)(A...)>(fn), args, std::index_sequence_for<A...>());
    }

    KvlStatus (*invoke)(void (*)(), const Arg *) = nullptr;
    std::size_t arity = 0;
};

// The arguments that a value stands for: a number or pointer itself, anything else what it adds.
template <class A>
void append(Args &args, const A &x)
{
    if constexpr (std::is_same_v<A, Arg>)
        args.push_back(x);
    else if constexpr (std::is_same_v<A, Args>)
        args.insert(args.end(), x.begin(), x.end());
    else if constexpr (std::is_integral_v<A>)
        args.push_back(Arg::integer('S', x));
    else if constexpr (std::is_floating_point_v<A>)
        args.push_back(Arg::constant(x));
    else if constexpr (std::is_pointer_v<A>)
        args.push_back(std::is_pointer_v<std::remove_pointer_t<A>> ? Arg::tableOf(x) : Arg::base(x));
    else
        x.appendTo(args);
}

template <class... A>
Args argsOf(const A &...values)
{
    Args args;
    (append(args, values), ...);
    return args;
}

template <class... A>
KvlStatus call(const Function &function, const A &...values)
{
    return function(argsOf(values...));
}

// The function of this name for elements of type T.
#define KVLM_FUNCTION(T, name) forType<T>(kvlm##name##_32f, kvlm##name##_64f)
template <class T, class F, class D>
constexpr auto forType(F of32f, D of64f)
{
    if constexpr (sizeof(T) == 4)
        return of32f;
    else
        return of64f;
}
