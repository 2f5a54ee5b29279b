// What the benchmarks of all families share: memory, operands in every description, their peers' access, registration.
#ifndef BENCH_H
#define BENCH_H

#include <Eigen/Core>
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "kvlcore.h"
#include "kvlm.h"

namespace bench {

#define BENCH_INLINE   __attribute__((always_inline)) inline
#define BENCH_NOINLINE __attribute__((noinline))

enum class Form {
    packed,       // standard: whole objects behind one another, row by row
    strided,      // standard: every second element
    columns,      // standard: column by column
    tableObjects, // _P: whole objects behind one another
    tablePlanes,  // _P: the objects' elements adjacent at each position
    list,         // _L: rows of adjacent elements
    stridedList   // _L: every second element
};

constexpr const char *nameOf(Form form)
{
    constexpr const char *names[] = {"packed", "S2", "columns", "P-objects", "P-planes", "L", "LS2"};
    return names[static_cast<int>(form)];
}

constexpr bool isTable(Form form)
{
    return form == Form::tableObjects || form == Form::tablePlanes;
}
constexpr bool isList(Form form)
{
    return form == Form::list || form == Form::stridedList;
}
constexpr bool isStrided(Form form)
{
    return form == Form::strided || form == Form::stridedList;
}

// The library's function of a description: 0 standard, 1 _P, 2 _L.
constexpr int descriptionOf(Form form)
{
    return isTable(form) ? 1 : isList(form) ? 2 : 0;
}

/// Zeros in memory of a case's own, for as long as the program runs.
template <class T>
T *lasting(std::size_t elements)
{
    static std::deque<std::vector<T>> all;
    return all.emplace_back(elements).data();
}

/// One long array of numbers in (-1, 1) per operand place, shared by all cases: what is measured is the same memory.
template <class T>
class Memory {
public:
    static constexpr int places = 4;

    /// The start of a place: 16-byte aligned, and not at the same distance from a page as its neighbours.
    static T *place(int number, std::size_t elements)
    {
        auto &block = blocks()[number];
        if (!block) {
            block.reset(new T[capacity]);
            std::uint32_t random = 12345u + 7919u * number;
            for (std::size_t k = 0; k < capacity; ++k) {
                random = random * 1664525u + 1013904223u;
                block[k] = (static_cast<T>(random >> 9) + T(0.5)) / T(1 << 22) - T(1);
            }
        }
        const std::size_t skew = number * (1088 / sizeof(T));
        if (skew + elements > capacity) {
            std::fprintf(stderr, "place %d is too small for %zu elements\n", number, elements);
            std::exit(EXIT_FAILURE);
        }
        return block.get() + skew;
    }

    /// The pointers start, start + step, ... as a table or a list.
    static T **pointers(T *start, int step, int count)
    {
        static std::map<std::tuple<T *, int, int>, std::vector<T *>> known;
        auto &entries = known[{start, step, count}];
        for (int k = static_cast<int>(entries.size()); k < count; ++k)
            entries.push_back(start + static_cast<std::ptrdiff_t>(k) * step);
        return entries.data();
    }

private:
    static constexpr std::size_t capacity = 100000 * 2 * 36 + 4096;
    static std::unique_ptr<T[]> *blocks()
    {
        static std::unique_ptr<T[]> all[places];
        return all;
    }
};

/// An operand, one object or a batch, as a call describes it. Steps count elements.
template <class T>
struct Operand {
    using Element = T;

    /// `own` is memory for what must keep its contents, in place of a shared place.
    Operand(Form form, int rows, int cols, bool array, int place, int count, T *own = nullptr)
    {
        const int objects = array ? count : 1, positions = rows * cols, spread = isStrided(form) ? 2 : 1;
        const bool planes = form == Form::tablePlanes && array;
        elemStep = form == Form::columns ? rows : spread;
        rowStep = form == Form::columns ? 1 : spread * cols;
        objStep = planes ? 1 : spread * positions;
        span = static_cast<std::size_t>(objects) * positions * spread;
        base = own ? own : Memory<T>::place(place, span);
        if (isTable(form))
            entries = Memory<T>::pointers(base, planes ? count : 1, positions);
        else if (isList(form) && array)
            entries = Memory<T>::pointers(base, objStep, count);
    }

    T *base = nullptr;
    T **entries = nullptr; // the table, or the list
    int elemStep = 0, rowStep = 0, objStep = 0;
    std::size_t span = 0; // elements from the first to behind the last, gaps included
};

/// The library's arguments for an operand.
template <int Description, bool Array, class T>
auto arguments(const Operand<T> &x)
{
    constexpr int size = sizeof(T);
    if constexpr (Description == 1 && Array)
        return std::make_tuple(x.entries, 0, x.objStep * size);
    else if constexpr (Description == 1)
        return std::make_tuple(x.entries, 0);
    else if constexpr (Description == 2 && Array)
        return std::make_tuple(x.entries, 0, x.rowStep * size, x.elemStep * size);
    else if constexpr (Array)
        return std::make_tuple(x.base, x.objStep * size, x.rowStep * size, x.elemStep * size);
    else
        return std::make_tuple(x.base, x.rowStep * size, x.elemStep * size);
}

/// The same for a vector.
template <int Description, bool Array, class T>
auto vectorArguments(const Operand<T> &x)
{
    constexpr int size = sizeof(T);
    if constexpr (Description == 1)
        return arguments<Description, Array>(x);
    else if constexpr (Description == 2 && Array)
        return std::make_tuple(x.entries, 0, x.elemStep * size);
    else if constexpr (Array)
        return std::make_tuple(x.base, x.objStep * size, x.elemStep * size);
    else
        return std::make_tuple(x.base, x.elemStep * size);
}

/// An operand as a plain program sees it: its steps are known when compiling wherever the program's author knows them.
template <class T, int Rows, int Cols, Form F, bool Array>
struct View {
    // Eigen stores a single column by columns only.
    static constexpr int order = F == Form::columns || (Cols == 1 && Rows > 1) ? Eigen::ColMajor : Eigen::RowMajor;
    using Matrix = Eigen::Matrix<T, Rows, Cols, order>;
    using Steps = std::conditional_t<isStrided(F), Eigen::Stride<Eigen::Dynamic, Eigen::Dynamic>, Eigen::Stride<0, 0>>;
    using Map = Eigen::Map<Matrix, Eigen::Unaligned, Steps>;

    BENCH_INLINE T *object(int i) const
    {
        if constexpr (!Array)
            return x.base;
        else if constexpr (isList(F))
            return x.entries[i];
        else
            return x.base + static_cast<std::ptrdiff_t>(i) * (isStrided(F) ? x.objStep : Rows * Cols);
    }
    BENCH_INLINE int offset(int r, int c) const
    {
        if constexpr (F == Form::columns)
            return c * Rows + r;
        else if constexpr (isStrided(F))
            return r * x.rowStep + c * x.elemStep;
        else
            return r * Cols + c;
    }
    BENCH_INLINE Map map(int i) const
    {
        if constexpr (isStrided(F))
            return Map(object(i), Steps(x.rowStep, x.elemStep));
        else
            return Map(object(i));
    }

    Operand<T> x;
};

/// A repeatable piece of work; returns the library's status, 0 for peers.
using Work = std::function<int()>;

/// The work of a library function: its operands' arguments in order, then the shape and the count.
template <class Function, class Arguments>
Work call(Function *function, const Arguments &arguments)
{
    return [=] { return std::apply(function, arguments); };
}

template <class T>
std::string nameOfCell(const std::string &member, Form form, int order, int count)
{
    return member + (sizeof(T) == 4 ? "/32f/" : "/64f/") + nameOf(form) + "/" + std::to_string(order) + "/" +
           std::to_string(count);
}

/// The cells of a family's table. Each has the library's work first, then its peers', all on the same memory.
class Suite {
public:
    /// Says whether what a work has just left is right; called for the library's work first.
    using Check = std::function<bool(const std::string &who)>;

    /// A case is one cell; `name` is member/type/form/order/batch. Without a check all works must leave the same bits.
    template <class T>
    void add(const std::string &name, const Operand<T> &destination, std::vector<std::pair<std::string, Work>> works,
             Check check = nullptr)
    {
        cells.push_back({name, reinterpret_cast<char *>(destination.base), destination.span * sizeof(T), works, check});
    }

    /// Checks what all works of a cell leave, measures the selected ones; returns the exit status.
    int run(int argc, char **argv)
    {
        for (const Cell &cell : cells)
            for (const auto &[who, work] : cell.works)
                benchmark::RegisterBenchmark((cell.name + "/" + who).c_str(), [&run = work](benchmark::State &state) {
                    for (auto _ : state)
                        benchmark::DoNotOptimize(run());
                });
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv))
            return EXIT_FAILURE;
        kvlSetNumThreads(1);
        int wrong = 0;
        for (const Cell &cell : cells)
            wrong += !agrees(cell);
        std::fprintf(stderr, "%zu cells checked, %d wrong\n", cells.size(), wrong);
        if (wrong)
            return EXIT_FAILURE;
        benchmark::RunSpecifiedBenchmarks();
        return EXIT_SUCCESS;
    }

private:
    struct Cell {
        std::string name;
        char *destination;
        std::size_t bytes;
        std::vector<std::pair<std::string, Work>> works;
        Check check;
    };

    // Every byte of the destination counts: what a work does not write keeps the pattern laid before.
    static bool agrees(const Cell &cell)
    {
        std::vector<char> expected;
        for (const auto &[who, work] : cell.works) {
            if (who == "flat") // a reference for bandwidth, not the same sum
                continue;
            std::memset(cell.destination, 0xa5, cell.bytes);
            const int status = work();
            if (status != kvlOk) {
                std::fprintf(stderr, "%s/%s: status %d\n", cell.name.c_str(), who.c_str(), status);
                return false;
            }
            if (cell.check) {
                if (!cell.check(who)) {
                    std::fprintf(stderr, "%s: %s is wrong\n", cell.name.c_str(), who.c_str());
                    return false;
                }
            } else if (expected.empty())
                expected.assign(cell.destination, cell.destination + cell.bytes);
            else if (std::memcmp(expected.data(), cell.destination, cell.bytes) != 0) {
                std::fprintf(stderr, "%s: %s gives other bits\n", cell.name.c_str(), who.c_str());
                return false;
            }
        }
        return true;
    }

    std::vector<Cell> cells;
};

/// Table<T, N, F>::add(suite) for both types, orders 3 to 6 and the given forms.
template <template <class, int, Form> class Table, Form... forms>
void addTables(Suite &suite)
{
    const auto add = [&](auto zero) {
        using T = decltype(zero);
        (Table<T, 3, forms>::add(suite), ...);
        (Table<T, 4, forms>::add(suite), ...);
        (Table<T, 5, forms>::add(suite), ...);
        (Table<T, 6, forms>::add(suite), ...);
    };
    add(0.0f);
    add(0.0);
}

/// The main program of families on small matrices.
template <template <class, int, Form> class Table, Form... forms>
int runTables(int argc, char **argv)
{
    Suite suite;
    addTables<Table, forms...>(suite);
    return suite.run(argc, argv);
}

} // namespace bench

#endif
