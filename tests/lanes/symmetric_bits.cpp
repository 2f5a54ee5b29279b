// A digest of symmetric eigenproblems by kvlm::each, which the compiler's widest registers must not change: built for
// each processor that tests run on.
#include <kvlm/each.hpp>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <vector>

namespace {

template <class T>
struct Matrices {
    T *base() const { return start; }
    int count() const { return objects; }
    int rows() const { return order; }
    int columns() const { return order; }
    T &operator()(int i, int r, int c) const { return start[(i * order + r) * order + c]; }

    T *start;
    int objects, order;
};

template <class T>
void add(std::uint64_t &digest, const std::vector<T> &values)
{
    for (const T value : values) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof(value));
        digest = (digest ^ bits) * 0x100000001b3u;
    }
}

template <class T>
void solve(std::uint64_t &digest)
{
    std::mt19937 random(1);
    for (int n = 1; n <= 8; ++n)
        for (const int count : {1, 3, 37}) { // groups that are not full
            std::vector<T> a(count * n * n), vectors(a.size()), values(count * n);
            std::vector<KvlStatus> statuses(count);
            for (T &value : a) // small integers: clusters, many zeros, blocks that split
                value = random() % 2
                            ? T(0)
                            : static_cast<T>(static_cast<int>(random() % 5) - 2) * (random() % 7 ? T(1) : T(1e-5));
            const Matrices<T> source{a.data(), count, n};
            kvlm::each::eigenvectorsSym(source, Matrices<T>{vectors.data(), count, n}, values.data(), statuses.data());
            add(digest, vectors);
            add(digest, values);
            kvlm::each::eigenvaluesSym(source, values.data(), statuses.data());
            add(digest, values);
        }
}

} // namespace

int main()
{
    std::uint64_t digest = 0xcbf29ce484222325u;
    solve<float>(digest);
    solve<double>(digest);
    std::printf("%016llx\n", static_cast<unsigned long long>(digest));
}
