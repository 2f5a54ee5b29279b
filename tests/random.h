// What the tests draw from.
#pragma once

#include <cstddef>
#include <cstdint>

// A generator with the same sequence everywhere, or draws that a string of bytes decides: zeros behind its end.
class Random {
public:
    explicit Random(std::uint64_t seed) : state(seed) {}
    Random(const unsigned char *bytes, std::size_t size) : given(bytes), end(bytes + size) {}
    std::uint64_t next()
    {
        if (given)
            return take(8);
        std::uint64_t z = state += 0x9e3779b97f4a7c15u;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }
    int below(int n) { return static_cast<int>((given ? take(n <= 256 ? 1 : 3) : next()) % static_cast<unsigned>(n)); }

private:
    std::uint64_t take(int bytes)
    {
        std::uint64_t value = 0;
        for (int k = 0; k < bytes; ++k)
            value = value << 8 | (given < end ? *given++ : 0u);
        return value;
    }

    std::uint64_t state = 0;
    const unsigned char *given = nullptr, *end = nullptr;
};
