/**
 * @file systems.hpp
 * Kernels of systems: the factors of LAPACK's forms, which scipy has, and solutions from them.
 */
#ifndef KVLM_PYTHON_SYSTEMS_HPP
#define KVLM_PYTHON_SYSTEMS_HPP

#include "kernels.hpp"

#include <limits>
#include <numeric>
#include <stdexcept>

namespace kvlm {
namespace python {

template <class T>
MatricesView<T> packed(std::vector<T> &elements, int rows, int columns, int count)
{
    elements.resize(static_cast<std::size_t>(rows) * columns * count);
    return kvlm::matrices(elements.data(), rows, columns, count);
}
inline int failures(const Batch &batch)
{
    return batch.count - static_cast<int>(std::count(batch.statuses, batch.statuses + batch.count, kvlOk));
}

/// One side of some objects; of one side for all of them copies, as the library takes none.
template <class T>
VectorsView<T> sideOf(const Operand &b, int first, int column, int count, std::vector<T> &copies)
{
    const auto there = vectors<T>(from(b, first, column), count);
    if (b.object != 0)
        return there;
    copies.resize(static_cast<std::size_t>(count) * b.rows);
    const auto all = kvlm::vectors(copies.data(), b.rows, count);
    for (int i = 0; i < count; ++i)
        for (int r = 0; r < b.rows; ++r)
            all(i, r) = there(0, r);
    return all;
}

/// As LAPACK's getrf: rows in the order of the pivots, which are the rows to exchange, one after the other.
template <class T>
int luFactor(const Batch &batch)
{
    const int n = batch[0].rows;
    Adjacent<int> exchanges(batch[2], batch.count);
    const auto out = matrices<T>(batch[1], batch.count);
    std::vector<T> elements;
    std::vector<int> pivots, rows(n);
    inBlocks(batch.count, n * n, [&](int first, int count) {
        const auto factors = packed(elements, n, n, count);
        pivots.resize(static_cast<std::size_t>(count) * n);
        each::luDecompose(matrices<T>(from(batch[0], first), count), factors, pivots.data(), batch.statuses + first);
        for (int i = 0; i < count; ++i) {
            const int *const pivot = pivots.data() + i * n;
            int *const exchange = exchanges.data() + static_cast<std::ptrdiff_t>(first + i) * n;
            std::iota(rows.begin(), rows.end(), 0);
            for (int k = 0; k < n; ++k) {
                const auto at = std::find(rows.begin() + k, rows.end(), pivot[k]);
                exchange[k] = static_cast<int>(at - rows.begin());
                std::swap(rows[k], *at);
                for (int c = 0; c < n; ++c)
                    out(first + i, k, c) = factors(i, pivot[k], c);
            }
        }
    });
    exchanges.finish();
    return failures(batch);
}
template <class T>
int luSolve(const Batch &batch)
{
    const int n = batch[0].rows, sides = batch[2].columns;
    Adjacent<int> exchanges(batch[1], batch.count);
    exchanges.begin();
    std::vector<T> elements;
    std::vector<int> order, rows(n);
    int status = kvlOk;
    inBlocks(batch.count, n * std::max(n, sides), [&](int first, int count) {
        const auto right = packed(elements, sides, n, count);
        const auto b = matrices<T>(from(batch[2], first), count);
        order.resize(static_cast<std::size_t>(count) * n);
        for (int i = 0; i < count; ++i) {
            const int *const exchange = exchanges.data() + static_cast<std::ptrdiff_t>(first + i) * n;
            std::iota(rows.begin(), rows.end(), 0);
            std::iota(order.begin() + i * n, order.begin() + (i + 1) * n, 0);
            for (int k = 0; k < n; ++k) {
                if (exchange[k] < k || exchange[k] >= n)
                    throw std::invalid_argument("piv is not what lu_factor gives");
                std::swap(rows[k], rows[exchange[k]]);
            }
            for (int s = 0; s < sides; ++s)
                for (int r = 0; r < n; ++r)
                    right(i, s, r) = b(i, rows[r], s);
        }
        for (int s = 0; s < sides && status == kvlOk; ++s)
            status = with<T, false>({{from(batch[0], first)}, count}, 0, [&](auto factors) {
                return kvlm::luSolve(factors, order.data(),
                                     repeated(kvlm::vector(&right(0, s, 0), n), right.strides().object, count),
                                     vectors<T>(from(batch[3], first, s), count))
                    .value();
            });
    });
    return status;
}

/// L with its diagonal, and zeros above it.
template <class T>
int cholesky(const Batch &batch)
{
    const int n = batch[0].rows;
    inBlocks(batch.count, n * n, [&](int first, int count) {
        const auto l = matrices<T>(from(batch[1], first), count);
        const KvlStatus *const statuses = batch.statuses + first;
        each::choleskyDecompose(matrices<T>(from(batch[0], first), count), l, batch.statuses + first);
        for (int i = 0; i < count; ++i) {
            const T above = statuses[i] == kvlOk ? T(0) : std::numeric_limits<T>::quiet_NaN();
            for (int r = 0; r < n; ++r) {
                l(i, r, r) = 1 / l(i, r, r);
                for (int c = r + 1; c < n; ++c)
                    l(i, r, c) = above;
            }
        }
    });
    return failures(batch);
}
/// From L with its diagonal, of which only the lower triangle is read.
template <class T>
int choleskySolve(const Batch &batch)
{
    const int n = batch[0].rows;
    std::vector<T> elements, copies;
    KvlStatus status = kvlOk;
    inBlocks(batch.count, n * n, [&](int first, int count) {
        const auto factors = packed(elements, n, n, count);
        const auto l = matrices<T>(from(batch[0], first), count);
        for (int i = 0; i < count; ++i)
            for (int r = 0; r < n; ++r) {
                for (int c = 0; c < r; ++c)
                    factors(i, r, c) = l(i, r, c);
                factors(i, r, r) = 1 / l(i, r, r);
            }
        for (int k = 0; k < batch[1].columns && status == kvlOk; ++k)
            status = kvlm::choleskySolve(factors, sideOf(batch[1], first, k, count, copies),
                                         vectors<T>(from(batch[2], first, k), count))
                         .value();
    });
    return status;
}

} // namespace python
} // namespace kvlm

#endif
