/**
 * @file kernels.hpp
 * The kernels of the Python module that are one call of the library. They return how many objects failed, or a negative
 * KvlStatus where the library refused the call.
 */
#ifndef KVLM_PYTHON_KERNELS_HPP
#define KVLM_PYTHON_KERNELS_HPP

#include "batch.hpp"

#include <cmath>

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
/// In float the library's approximate roots make zero of small norms, or NaN of zero.
template <class T, class A, class Norm>
int norms(const Batch &batch, const A &a, Norm norm)
{
    return numbers<T>(batch, 1, [&](T *values) {
        if (sizeof(T) == 8)
            return norm(a, values).value();
        for (int i = 0; i < batch.count; ++i) {
            double sum = 0;
            for (int r = 0; r < a.rows(); ++r)
                for (int c = 0; c < a.columns(); ++c)
                    sum += double(a.element(i, r, c)) * a.element(i, r, c);
            values[i] = static_cast<T>(std::sqrt(sum));
        }
        return int(kvlOk);
    });
}
template <class T>
int frobenius(const Batch &batch)
{
    return norms<T>(batch, matrices<T>(batch[0], batch.count),
                    [](auto a, T *values) { return frobeniusNorm(a, values); });
}
template <class T>
int length(const Batch &batch)
{
    return norms<T>(batch, vectors<T>(batch[0], batch.count), [](auto a, T *values) { return l2Norm(a, values); });
}

template <class T>
int determinant(const Batch &batch)
{
    return numbers<T>(batch, 1, [&](T *values) {
        return each::determinant(matrices<T>(batch[0], batch.count), values, batch.statuses);
    });
}
template <class T>
int inverse(const Batch &batch)
{
    return each::invert(matrices<T>(batch[0], batch.count), matrices<T>(batch[1], batch.count), batch.statuses);
}
template <class T>
int solve(const Batch &batch)
{
    return each::solve(matrices<T>(batch[0], batch.count), matrices<T>(batch[1], batch.count),
                       matrices<T>(batch[2], batch.count), batch.statuses);
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
