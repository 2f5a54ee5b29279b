/**
 * @file kernels.hpp
 * The kernels of the Python module that are one call of the library. They return how many objects failed, or a negative
 * KvlStatus where the library refused the call.
 */
#ifndef KVLM_PYTHON_KERNELS_HPP
#define KVLM_PYTHON_KERNELS_HPP

#include "batch.hpp"

namespace kvlm {
namespace python {

/// Calls with one object where there is one beside many: the library has forms for these.
template <class T, bool isVector, class Call>
int with(const Batch &batch, int i, Call call)
{
    if constexpr (isVector)
        return batch.isSingle(i) ? call(vector<T>(batch[i])) : call(vectors<T>(batch[i], batch.count));
    else
        return batch.isSingle(i) ? call(matrix<T>(batch[i])) : call(matrices<T>(batch[i], batch.count));
}
/// operation(a, b, dst) in the form that the operands ask for; dst is of the kind of b.
template <class T, bool isVectorA, bool isVectorB, class Operation>
int inItsForm(const Batch &batch, Operation operation)
{
    return with<T, isVectorA>(batch, 0, [&](auto a) {
        return with<T, isVectorB>(batch, 1, [&](auto b) {
            if constexpr (!isArray(std::decay_t<decltype(a)>::kind) && !isArray(std::decay_t<decltype(b)>::kind))
                return int(kvlErrCount); // of two single objects there is no array
            else if constexpr (isVectorB)
                return operation(a, b, vectors<T>(batch[2], batch.count)).value();
            else
                return operation(a, b, matrices<T>(batch[2], batch.count)).value();
        });
    });
}

template <class T>
int productByVector(const Batch &batch)
{
    return inItsForm<T, false, true>(batch, [](auto a, auto x, auto dst) { return multiply(a, x, dst); });
}
inline Operand transposed(Operand x)
{
    std::swap(x.row, x.column);
    std::swap(x.rows, x.columns);
    return x;
}
/// Order 2, for which the library has no fast way.
template <class T>
int productsOfTwo(const Batch &batch)
{
    const auto a = matrices<T>(batch[0], batch.count), b = matrices<T>(batch[1], batch.count);
    const auto dst = matrices<T>(batch[2], batch.count);
    for (int i = 0; i < batch.count; ++i)
        for (int r = 0; r < 2; ++r)
            for (int c = 0; c < 2; ++c)
                dst(i, r, c) = a(i, r, 0) * b(i, 0, c) + a(i, r, 1) * b(i, 1, c);
    return kvlOk;
}
/// Matrices by matrices; a vector on the right is a column, one on the left a row, which takes the transposed way.
template <class T>
int matmul(const Batch &batch)
{
    if (batch[1].isVector)
        return productByVector<T>(batch);
    if (batch[0].rows == 2 && batch[0].columns == 2 && batch[1].columns == 2 && !batch[0].isVector)
        return productsOfTwo<T>(batch);
    if (!batch[0].isVector)
        return inItsForm<T, false, false>(batch, [](auto a, auto b, auto dst) { return multiply(a, b, dst); });
    Batch turned = batch;
    turned.operands[0] = transposed(batch[1]);
    turned.operands[1] = transposed(batch[0]);
    turned.operands[2] = transposed(batch[2]);
    return productByVector<T>(turned);
}

template <class T>
int cross(const Batch &batch)
{
    return inItsForm<T, true, true>(batch, [](auto a, auto b, auto dst) { return kvlm::cross(a, b, dst); });
}
template <class T>
int add(const Batch &batch)
{
    return inItsForm<T, false, false>(batch, [](auto a, auto b, auto dst) { return kvlm::add(a, b, dst); });
}
template <class T>
int transpose(const Batch &batch)
{
    return copy(matrices<T>(transposed(batch[0]), batch.count), matrices<T>(batch[1], batch.count)).value();
}

/// One number for each object.
template <class T, class Call>
int numbers(const Batch &batch, int i, Call call)
{
    Adjacent<T> values(batch[i], batch.count);
    const int result = call(values.data());
    values.finish();
    return result;
}
template <class T>
int trace(const Batch &batch)
{
    return numbers<T>(batch, 1, [&](T *values) { //
        return kvlm::trace(matrices<T>(batch[0], batch.count), values).value();
    });
}
template <class T>
int frobenius(const Batch &batch)
{
    return numbers<T>(batch, 1,
                      [&](T *values) { return frobeniusNorm(matrices<T>(batch[0], batch.count), values).value(); });
}
template <class T>
int length(const Batch &batch)
{
    return numbers<T>(batch, 1, [&](T *values) { //
        return l2Norm(vectors<T>(batch[0], batch.count), values).value();
    });
}

/// Order 2 by formulas in double, which layer two has for orders 3 to 6 alone: formula(i), and other(i), one object by
/// layer two, where the formula says no.
template <class Formula, class Other>
int orderTwo(const Batch &batch, Formula formula, Other other)
{
    int failures = 0;
    for (int i = 0; i < batch.count; ++i) {
        batch.statuses[i] = kvlOk;
        if (!formula(i))
            failures += other(i);
    }
    return failures;
}
/// Whether a number is so far from the limits that nothing can have been lost.
inline bool isSafe(double x)
{
    return each::detail::isWithin(x, 0x1p-500, 0x1p500);
}
template <class T>
double determinantOfTwo(const MatricesView<T> &a, int i)
{
    return double(a(i, 0, 0)) * a(i, 1, 1) - double(a(i, 0, 1)) * a(i, 1, 0);
}
template <class T>
int determinant(const Batch &batch)
{
    const auto a = matrices<T>(batch[0], batch.count);
    return numbers<T>(batch, 1, [&](T *values) {
        if (batch[0].rows != 2)
            return each::determinant(a, values, batch.statuses);
        return orderTwo(
            batch, [&](int i) { return each::detail::isFinite(values[i] = static_cast<T>(determinantOfTwo(a, i))); },
            [&](int i) {
                return each::determinant(matrices<T>(from(batch[0], i), 1), values + i, batch.statuses + i);
            });
    });
}
template <class T>
int inverse(const Batch &batch)
{
    const auto a = matrices<T>(batch[0], batch.count), x = matrices<T>(batch[1], batch.count);
    if (batch[0].rows != 2)
        return each::inverse(a, x, batch.statuses);
    return orderTwo(
        batch,
        [&](int i) {
            const double det = determinantOfTwo(a, i), factor = 1 / det;
            x(i, 0, 0) = static_cast<T>(a(i, 1, 1) * factor);
            x(i, 0, 1) = static_cast<T>(0 - a(i, 0, 1) * factor);
            x(i, 1, 0) = static_cast<T>(0 - a(i, 1, 0) * factor);
            x(i, 1, 1) = static_cast<T>(a(i, 0, 0) * factor);
            using each::detail::isFinite;
            return isSafe(det) && isFinite(x(i, 0, 0)) && isFinite(x(i, 0, 1)) && isFinite(x(i, 1, 0)) &&
                   isFinite(x(i, 1, 1));
        },
        [&](int i) {
            return each::inverse(matrices<T>(from(batch[0], i), 1), matrices<T>(from(batch[1], i), 1),
                                 batch.statuses + i);
        });
}
template <class T>
int leastSquares(const Batch &batch)
{
    return each::leastSquares(matrices<T>(batch[0], batch.count), vectors<T>(batch[1], batch.count),
                              vectors<T>(batch[2], batch.count), batch.statuses);
}

} // namespace python
} // namespace kvlm

#endif
