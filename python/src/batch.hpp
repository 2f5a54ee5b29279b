/**
 * @file batch.hpp
 * What a kernel of the Python module is given: operands at byte strides, and views and runs made of them.
 */
#ifndef KVLM_PYTHON_BATCH_HPP
#define KVLM_PYTHON_BATCH_HPP

#include <kvlm.hpp>
#include <kvlm/each.hpp>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace kvlm {
namespace python {

/// Strides in bytes. A vector is a column unless its kernel says otherwise; `isVector` if a dimension was left out.
struct Operand {
    char *base = nullptr;
    int object = 0, row = 0, column = 0; // object is 0 for one object beside many
    int rows = 1, columns = 1;
    bool isVector = false;
};

constexpr int mostOperands = 8;

/// Objects 0 to count - 1 of a call. Operands are in the order of the signature, results last.
struct Batch {
    Operand operands[mostOperands];
    int count = 1;
    KvlStatus *statuses = nullptr; // count of them, of functions that have any

    const Operand &operator[](int i) const { return operands[i]; }
    bool isSingle(int i) const { return operands[i].object == 0; }
};

template <class T>
MatricesView<T> matrices(const Operand &x, int count)
{
    return {reinterpret_cast<T *>(x.base), {x.object, x.row, x.column}, {x.rows}, {x.columns}, count};
}
template <class T>
MatrixView<T> matrix(const Operand &x)
{
    return {reinterpret_cast<T *>(x.base), {0, x.row, x.column}, {x.rows}, {x.columns}};
}
template <class T>
VectorsView<T> vectors(const Operand &x, int count)
{
    return {reinterpret_cast<T *>(x.base), {x.object, x.row, x.row}, {x.rows}, {}, count};
}
template <class T>
VectorView<T> vector(const Operand &x)
{
    return {reinterpret_cast<T *>(x.base), {0, x.row, x.row}, {x.rows}, {}};
}
/// Objects from `first` on; columns from `column` on.
inline Operand from(const Operand &x, int first, int column = 0)
{
    Operand moved = x;
    moved.base += static_cast<std::ptrdiff_t>(first) * x.object + static_cast<std::ptrdiff_t>(column) * x.column;
    return moved;
}

/// Adjacent elements, `rows` for each object: where the operand lies if it lies so, else apart, until finish() or, of
/// sources, begin().
template <class T>
class Adjacent {
public:
    Adjacent(const Operand &x, int count) : operand(x), objects(count)
    {
        constexpr int size = sizeof(T);
        const bool isThere = (x.rows == 1 || x.row == size) && (count == 1 || x.object == x.rows * size);
        if (!isThere)
            copy.resize(static_cast<std::size_t>(count) * x.rows);
        start = isThere ? reinterpret_cast<T *>(x.base) : copy.data();
    }
    T *data() { return start; }
    void begin()
    {
        move([](T &there, T &here) { here = there; });
    }
    void finish()
    {
        move([](T &there, T &here) { there = here; });
    }

private:
    template <class Move>
    void move(Move each)
    {
        if (copy.empty())
            return;
        const auto view = vectors<T>(operand, objects);
        T *here = start;
        for (int i = 0; i < objects; ++i)
            for (int r = 0; r < operand.rows; ++r)
                each(view(i, r), *here++);
    }

    const Operand &operand;
    const int objects;
    std::vector<T> copy;
    T *start;
};

/// Calls on(first, count) for parts of a batch that stay in the cache, and that no call sends to a team.
template <class On>
void inBlocks(int count, int elements, On on)
{
    constexpr int inCache = 4096;
    int most = inCache / elements;
    if (threads_omp_of_n_kvl > 1)
        most = std::min(most, each::detail::leastOfTeams / (8 * elements));
    most = std::max(most, 1);
    for (int first = 0; first < count; first += most)
        on(first, std::min(most, count - first));
}

} // namespace python
} // namespace kvlm

#endif
