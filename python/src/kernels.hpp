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

/// Calls with one matrix, or vector, where there is one beside many: the library has forms for these.
template <class T, class Call>
int withMatrix(const Batch &batch, int i, Call call)
{
    return batch.isSingle(i) ? call(matrix<T>(batch[i])) : call(matrices<T>(batch[i], batch.count));
}
template <class T, class Call>
int withVector(const Batch &batch, int i, Call call)
{
    return batch.isSingle(i) ? call(vector<T>(batch[i])) : call(vectors<T>(batch[i], batch.count));
}
/// a op b for all forms but that of two single objects.
template <class A, class B, class Call>
int unlessBothSingle(const A &a, const B &b, Call call)
{
    if constexpr (isArray(A::kind) || isArray(B::kind))
        return call(a, b).value();
    else
        return kvlErrCount;
}

template <class T>
int product(const Batch &batch)
{
    const auto dst = matrices<T>(batch[2], batch.count);
    return withMatrix<T>(batch, 0, [&](auto a) {
        return withMatrix<T>(batch, 1, [&](auto b) {
            return unlessBothSingle(a, b, [&](auto &x, auto &y) { return multiply(x, y, dst); });
        });
    });
}
template <class T>
int productByVector(const Batch &batch)
{
    const auto dst = vectors<T>(batch[2], batch.count);
    return withMatrix<T>(batch, 0, [&](auto a) {
        return withVector<T>(batch, 1, [&](auto x) {
            return unlessBothSingle(a, x, [&](auto &m, auto &v) { return multiply(m, v, dst); });
        });
    });
}
inline Operand transposed(Operand x)
{
    std::swap(x.row, x.column);
    std::swap(x.rows, x.columns);
    return x;
}
/// Matrices by matrices; a vector on the right is a column, one on the left a row, which takes the transposed way.
template <class T>
int matmul(const Batch &batch)
{
    if (batch[1].isVector)
        return productByVector<T>(batch);
    if (!batch[0].isVector)
        return product<T>(batch);
    Batch turned = batch;
    turned.operands[0] = transposed(batch[1]);
    turned.operands[1] = transposed(batch[0]);
    turned.operands[2] = transposed(batch[2]);
    return productByVector<T>(turned);
}

template <class T>
int cross(const Batch &batch)
{
    const auto dst = vectors<T>(batch[2], batch.count);
    return withVector<T>(batch, 0, [&](auto a) {
        return withVector<T>(batch, 1, [&](auto b) {
            return unlessBothSingle(a, b, [&](auto &x, auto &y) { return kvlm::cross(x, y, dst); });
        });
    });
}
template <class T>
int add(const Batch &batch)
{
    const auto dst = matrices<T>(batch[2], batch.count);
    return withMatrix<T>(batch, 0, [&](auto a) {
        return withMatrix<T>(batch, 1, [&](auto b) {
            return unlessBothSingle(a, b, [&](auto &x, auto &y) { return kvlm::add(x, y, dst); });
        });
    });
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
    return each::inverse(matrices<T>(batch[0], batch.count), matrices<T>(batch[1], batch.count), batch.statuses);
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
