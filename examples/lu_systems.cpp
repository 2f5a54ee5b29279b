// The systems of lu_systems.c in C++: 100000 of order 6, factored in one call, solved for eight right-hand sides each.
#include "kvlm.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <random>
#include <vector>

constexpr int order = 6, count = 100000, sides = 8, repetitions = 5;

using Vector = std::array<double, order>;
using Matrix = std::array<Vector, order>;
using Vectors = std::array<Vector, sides>;

// ||b - A*x|| / (||A|| * ||x|| * n * epsilon), in maximum norms. A stable solver keeps it near 1.
static double residual(const Matrix &a, const Vector &b, const Vector &x)
{
    double largest = 0, normOfA = 0, normOfX = 0;
    for (int r = 0; r < order; ++r) {
        double rest = b[r], rowSum = 0;
        for (int c = 0; c < order; ++c) {
            rest -= a[r][c] * x[c];
            rowSum += std::fabs(a[r][c]);
        }
        largest = std::fabs(rest) <= largest ? largest : std::fabs(rest); // NaN too
        normOfA = std::max(normOfA, rowSum);
        normOfX = std::max(normOfX, std::fabs(x[r]));
    }
    return largest / (normOfA * normOfX * order * std::numeric_limits<double>::epsilon());
}

static void report(const char *title, const std::function<void()> &call, double times)
{
    double best = std::numeric_limits<double>::infinity();
    for (int k = 0; k < repetitions; ++k) {
        const auto start = std::chrono::steady_clock::now();
        call();
        best =
            std::min(best, std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count());
    }
    std::printf("%-50s %8.1f %10.1f\n", title, best / times, 1e3 * times / best);
}

int main()
{
    std::vector<Matrix> a(count), factors(count);
    std::vector<Vectors> b(count), x(count);
    std::vector<int> pivots(count * order);
    std::mt19937_64 generator;
    std::uniform_real_distribution<double> uniform(-1, 1);
    const auto fill = [&](auto &rows) {
        for (Vector &row : rows)
            std::generate(row.begin(), row.end(), [&] { return uniform(generator); });
    };
    std::for_each(a.begin(), a.end(), fill);
    std::for_each(b.begin(), b.end(), fill);
    const auto allFactors = kvlm::matrices(factors);
    double largest = 0;
    const auto takeResiduals = [&](int solved) {
        for (int i = 0; i < count; ++i)
            for (int k = 0; k < solved; ++k) {
                const double found = residual(a[i], b[i][k], x[i][k]);
                largest = found <= largest ? largest : found; // NaN too
            }
        std::fill(x.begin(), x.end(), Vectors());
    };

    std::printf("%-50s %8s %10s\n", "", "ns each", "million/s");
    report(
        "luDecompose: all systems in one call",
        [&] { kvlm::check(kvlm::luDecompose(kvlm::matrices(a), allFactors, pivots)); }, count);
    // The first side of each system, where it stands among the others.
    const auto firstB = kvlm::repeated(kvlm::vector(b[0][0]), sizeof(Vectors), count);
    const auto firstX = kvlm::repeated(kvlm::vector(x[0][0]), sizeof(Vectors), count);
    report(
        "luSolve: all systems in one call, one side",
        [&] { kvlm::check(kvlm::luSolve(allFactors, pivots, firstB, firstX)); }, count);
    takeResiduals(1);
    report(
        "luSolve: all sides of a system in one call",
        [&] {
            for (int i = 0; i < count; ++i)
                kvlm::check(kvlm::luSolve(allFactors[i], &pivots[i * order], kvlm::vectors(b[i]), kvlm::vectors(x[i])));
        },
        count * sides);
    takeResiduals(sides);
    std::printf("\nThe largest residual is %.2f units of order * epsilon * ||A|| * ||x||.\n", largest);
    return largest < 30 ? 0 : 1;
}
