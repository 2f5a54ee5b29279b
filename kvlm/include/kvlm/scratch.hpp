/**
 * @file scratch.hpp
 * Runs of adjacent elements, which the C functions take without strides (scalar results, pivots), and their scratch.
 */
#ifndef KVLM_SCRATCH_HPP
#define KVLM_SCRATCH_HPP

#include "make.hpp"

#include <cstddef>
#include <iterator>
#include <memory>
#include <type_traits>

namespace kvlm {
namespace detail {

/// What a Run<T> can be made of: T &, a pointer, or what has data() and size() of T, or of arrays of T.
template <class X, class T, class = void>
inline constexpr bool isRun = std::is_same_v<X, T &> ||
                              (std::is_pointer_v<std::remove_reference_t<X>> && std::is_convertible_v<X, T *>);
template <class X, class T>
inline constexpr bool
    isRun<X, T, std::void_t<decltype(std::data(std::declval<X &>())), decltype(std::size(std::declval<X &>()))>> =
        std::is_same_v<typename Nest<std::remove_reference_t<decltype(*std::data(std::declval<X &>()))>>::Element,
                       std::remove_const_t<T>> &&
        (std::is_const_v<T> || !std::is_const_v<std::remove_reference_t<decltype(*std::data(std::declval<X &>()))>>);

} // namespace detail

/** Adjacent elements: of a pointer, whose elements are as many as the call needs; of one element; or of what knows its
 * size, which is compared: an array, a std::vector, a span, of elements or of arrays of them. */
template <class T>
class Run {
public:
    template <class X, class = std::enable_if_t<detail::isRun<X, T>>>
    Run(X &&x)
    {
        if constexpr (std::is_pointer_v<std::remove_reference_t<X>>) {
            start = x;
        } else if constexpr (std::is_same_v<X, T &>) {
            start = &x;
            length = 1;
        } else {
            start = reinterpret_cast<T *>(std::data(x));
            length = static_cast<std::ptrdiff_t>(std::size(x)) *
                     static_cast<std::ptrdiff_t>(sizeof(*std::data(x)) / sizeof(T));
        }
    }

    T *data() const { return start; }
    /** -1 if only the caller knows. */
    std::ptrdiff_t size() const { return length; }
    bool holds(std::ptrdiff_t elements) const { return length < 0 || length >= elements; }

private:
    T *start = nullptr;
    std::ptrdiff_t length = -1;
};

/** Scratch that the program owns: it grows to what a call asks for, and stays. One call may use it at a time. */
class Workspace {
public:
    Workspace() = default;
    /** So large from the beginning. */
    explicit Workspace(std::size_t bytes) { atLeast(bytes); }

    std::size_t size() const { return length; }
    void *atLeast(std::size_t bytes)
    {
        if (bytes > length) {
            memory.reset(new unsigned char[bytes]);
            length = bytes;
        }
        return memory.get();
    }

private:
    std::unique_ptr<unsigned char[]> memory;
    std::size_t length = 0;
};

/** The scratch of a call: a Workspace, or what makes a Run; kvlm.h says how much a function needs. */
template <class T>
class Scratch {
public:
    Scratch(Workspace &workspace) : owner(&workspace) {}
    template <class X, class = std::enable_if_t<detail::isRun<X, T>>>
    Scratch(X &&x) : run(x)
    {
    }

    /** Whether there are so many bytes: of a Workspace there are, unless memory runs out. */
    bool holds(std::size_t bytes)
    {
        if (owner)
            run = static_cast<T *>(owner->atLeast(bytes));
        return run.size() < 0 || static_cast<std::size_t>(run.size()) * sizeof(T) >= bytes;
    }
    T *data() const { return run.data(); }

private:
    Workspace *owner = nullptr;
    Run<T> run = static_cast<T *>(nullptr);
};

} // namespace kvlm

#endif
