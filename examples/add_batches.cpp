// The sums of add_batches.c in C++: 100000 3 x 3 matrices per call in each of the three descriptions, checked and
// timed.
#include "kvlcore.h"
#include "kvlm.hpp"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

constexpr int order = 3, positions = order * order, count = 100000, repetitions = 15;

// Memory for an array of matrices, and pointers into it: to the runs of a table, or to the objects of a list, which lie
// in reverse order here.
struct Batch {
    std::vector<float> elements = std::vector<float>(count * positions);
    std::vector<float *> table, list;

    Batch()
    {
        for (int p = 0; p < positions; ++p)
            table.push_back(&elements[p * count]);
        for (int i = count; i-- > 0;)
            list.push_back(&elements[i * positions]);
    }
    // Behind one another, row by row; by a table, in runs of the elements at each position; by a list.
    auto standard() { return kvlm::matrices(elements.data(), kvlm::fixed<order>, kvlm::fixed<order>, count); }
    auto tables()
    {
        return kvlm::matricesByTable(table.data(), kvlm::fixed<order>, kvlm::fixed<order>, count, sizeof(float));
    }
    auto lists() { return kvlm::matricesByList(list.data(), kvlm::fixed<order>, kvlm::fixed<order>, count); }
};

static int failures;

// a + b, and a minus one matrix, in one description: compared, bit for bit, with plain arithmetic.
template <class Matrices, class One>
static void report(const char *title, Matrices a, Matrices b, Matrices result, One one)
{
    for (int i = 0; i < count; ++i)
        for (int r = 0; r < order; ++r)
            for (int c = 0; c < order; ++c) {
                const int e = i * positions + r * order + c;
                a(i, r, c) = static_cast<float>(e % 1009) * 0.37f - 150.0f;
                b(i, r, c) = static_cast<float>(e % 997) * 0.0113f + 3.0f;
                one(r, c) = static_cast<float>(r - c) * 0.25f + 0.1f;
            }
    const auto run = [&](const char *operation, const std::function<kvlm::Status()> &call, auto expected) {
        for (int threads : {1, 2}) {
            kvlSetNumThreads(threads);
            std::vector<double> times(repetitions);
            kvlm::check(call()); // warms up
            for (double &time : times) {
                const auto start = std::chrono::steady_clock::now();
                kvlm::check(call());
                time = std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
            }
            std::nth_element(times.begin(), times.begin() + repetitions / 2, times.end());
            int wrong = 0;
            for (int i = 0; i < count; ++i)
                for (int r = 0; r < order; ++r)
                    for (int c = 0; c < order; ++c) {
                        const float right = expected(i, r, c);
                        wrong += std::memcmp(&result(i, r, c), &right, sizeof right) != 0;
                        result(i, r, c) = 0; // must not pass for the next one's
                    }
            std::printf("%-10s %-9s %7d %10.2f   %d wrong\n", operation, title, threads, times[repetitions / 2] / count,
                        wrong);
            failures += wrong;
        }
    };
    run(
        "add", [&] { return kvlm::add(a, b, result); }, [&](int i, int r, int c) { return a(i, r, c) + b(i, r, c); });
    run(
        "subtract", [&] { return kvlm::subtract(a, one, result); },
        [&](int i, int r, int c) { return a(i, r, c) - one(r, c); });
}

int main()
{
    Batch a, b, result;
    float one[order][order], *entries[positions];
    for (int p = 0; p < positions; ++p)
        entries[p] = &one[0][0] + p;
    const auto matrix = kvlm::matrix(one);

    std::printf("%d matrices of %d x %d, median of %d calls\n\n", count, order, order, repetitions);
    std::printf("%-20s %7s %10s   %s\n", "", "threads", "ns/object", "elements");
    report("standard", a.standard(), b.standard(), result.standard(), matrix);
    report("tables", a.tables(), b.tables(), result.tables(),
           kvlm::matrixByTable(entries, kvlm::fixed<order>, kvlm::fixed<order>));
    report("lists", a.lists(), b.lists(), result.lists(), matrix); // a single matrix has no list
    return failures != 0;
}
