/**
 * @file loops.hpp
 * From leading dimensions to calls with one stride for each operand.
 */
#ifndef KVLM_PYTHON_LOOPS_HPP
#define KVLM_PYTHON_LOOPS_HPP

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace kvlm {
namespace python {

/// One leading dimension: its size, and the bytes that each operand moves by, 0 where it is broadcast.
template <std::size_t N>
struct Leading {
    std::ptrdiff_t size;
    std::array<std::ptrdiff_t, N> strides;
};

/// The leading dimensions of a call, outermost first.
template <std::size_t N>
class Loops {
public:
    static constexpr int most = 32;

    void push(const Leading<N> &next)
    {
        if (next.size == 1)
            return;
        if (count > 0 && continues(dimensions[count - 1], next)) {
            const std::ptrdiff_t outer = dimensions[count - 1].size;
            dimensions[count - 1] = next;
            dimensions[count - 1].size *= outer;
        } else {
            dimensions[count++] = next;
        }
    }

    /// Calls on(offsets, strides, objects): the longest dimension, whose strides fit an int, is that of the objects,
    /// the others are looped over. No call has more objects than `longest`.
    template <class On>
    void run(std::ptrdiff_t longest, On on)
    {
        Leading<N> objects{1, {}};
        int best = -1;
        for (int k = 0; k < count; ++k)
            if (fits(dimensions[k]) && dimensions[k].size >= objects.size) {
                objects = dimensions[k];
                best = k;
            }
        std::array<std::ptrdiff_t, most> index{};
        std::array<std::ptrdiff_t, N> offsets{};
        for (;;) {
            auto at = offsets;
            for (std::ptrdiff_t first = 0; first < objects.size; first += longest) {
                const auto part = std::min(longest, objects.size - first);
                on(at, objects.strides, static_cast<int>(part));
                for (std::size_t i = 0; i < N; ++i)
                    at[i] += part * objects.strides[i];
            }
            int k = count - 1;
            for (; k >= 0; --k) {
                if (k == best)
                    continue;
                const bool isLast = ++index[k] == dimensions[k].size;
                for (std::size_t i = 0; i < N; ++i)
                    offsets[i] += dimensions[k].strides[i] * (isLast ? 1 - dimensions[k].size : 1);
                if (!isLast)
                    break;
                index[k] = 0;
            }
            if (k < 0)
                return;
        }
    }

private:
    /// Whether one stride serves both.
    static bool continues(const Leading<N> &outer, const Leading<N> &inner)
    {
        for (std::size_t i = 0; i < N; ++i)
            if (outer.strides[i] != inner.strides[i] * inner.size)
                return false;
        return true;
    }
    static bool fits(const Leading<N> &dimension)
    {
        return *std::max_element(dimension.strides.begin(), dimension.strides.end()) <= std::numeric_limits<int>::max();
    }

    std::array<Leading<N>, most> dimensions;
    int count = 0;
};

} // namespace python
} // namespace kvlm

#endif
