/**
 * @file decompositions.hpp
 * Kernels of QR decompositions and eigenproblems.
 */
#ifndef KVLM_PYTHON_DECOMPOSITIONS_HPP
#define KVLM_PYTHON_DECOMPOSITIONS_HPP

#include "systems.hpp"

namespace kvlm {
namespace python {

/// What has no factors in layer two: fewer rows than columns, or a column that is zero below the diagonal. In the same
/// form, in double on `a`, height x width, scaled to magnitudes near 1 by `exponent`: R may have zeros then, Q has not.
inline void factorAnyQR(double *a, int height, int width)
{
    for (int k = 0; k < std::min(width, height - 1); ++k) {
        double *const top = a + k * width;
        double s = 0, q = 1;
        for (int i = k; i < height; ++i)
            s += a[i * width + k] * a[i * width + k];
        const double root = top[k] > 0 ? std::sqrt(s) : -std::sqrt(s), first = top[k] + root;
        for (int i = k + 1; i < height; ++i) {
            const double v = a[i * width + k] = s == 0 ? 0 : a[i * width + k] / first;
            q += v * v;
        }
        top[k] = -root;
        each::detail::reflect(a, k, height, width, q);
    }
}

/// The first columns of Q from the tails of its reflectors, `height` rows of `width` elements: the reflectors applied
/// to the columns of the identity from the last one on (Golub and Van Loan, Matrix Computations, 5.1.6). H and W are
/// the sizes where they are known, else 0.
template <int H, int W, class T>
void makeQ(const T *factors, int width, MatrixView<T> q)
{
    const int height = H ? H : q.rows(), columns = W ? W : q.columns();
    width = W ? W : width;
    for (int r = 0; r < height; ++r)
        for (int c = 0; c < columns; ++c)
            q(r, c) = T(r == c);
    for (int k = std::min({width, height - 1, columns}) - 1; k >= 0; --k) {
        const T *const v = factors + k;
        T s = 1;
        for (int i = k + 1; i < height; ++i)
            s += v[i * width] * v[i * width];
        const T b = -2 / s;
        for (int c = k; c < columns; ++c) {
            T t = q(k, c);
            for (int i = k + 1; i < height; ++i)
                t += v[i * width] * q(i, c);
            t *= b;
            q(k, c) += t;
            for (int i = k + 1; i < height; ++i)
                q(i, c) += v[i * width] * t;
        }
    }
}

/// Q, if its operand is asked for, of height or min(height, width) columns; R has as many rows.
template <class T, bool hasQ>
int qr(const Batch &batch)
{
    const Operand &source = batch[0], &upper = batch[1 + hasQ];
    const int height = source.rows, width = source.columns;
    const auto make = height != width || !hasQ ? makeQ<0, 0, T>
                      : height == 3            ? makeQ<3, 3, T>
                      : height == 4            ? makeQ<4, 4, T>
                      : height == 5            ? makeQ<5, 5, T>
                      : height == 6            ? makeQ<6, 6, T>
                                               : makeQ<0, 0, T>;
    std::vector<T> elements;
    std::vector<double> copy(static_cast<std::size_t>(height) * width);
    inBlocks(batch.count, height * width, [&](int first, int count) {
        const auto factors = packed(elements, height, width, count);
        const auto a = matrices<T>(from(source, first), count);
        KvlStatus *const statuses = batch.statuses + first;
        if (width <= height)
            each::qrDecompose(a, factors, statuses);
        else
            std::fill_n(statuses, count, kvlErrSingular);
        for (int i = 0; i < count; ++i) {
            T *const object = &factors(i, 0, 0);
            if (statuses[i] != kvlOk) {
                for (int r = 0; r < height; ++r)
                    for (int c = 0; c < width; ++c)
                        copy[r * width + c] = a(i, r, c);
                const int positions = height * width;
                if (each::detail::areFinite(copy.data(), positions)) {
                    const int up = each::detail::exponentOf(copy.data(), positions);
                    each::detail::scale(copy.data(), positions, -up);
                    factorAnyQR(copy.data(), height, width);
                    for (int r = 0; r < height; ++r)
                        for (int c = r; c < width; ++c)
                            copy[r * width + c] = each::detail::shifted(copy[r * width + c], up);
                    std::copy(copy.begin(), copy.end(), object);
                    statuses[i] = kvlOk;
                }
            }
            const auto r = matrix<T>(from(upper, first + i));
            for (int k = 0; k < r.rows(); ++k)
                for (int c = 0; c < width; ++c)
                    r(k, c) = c < k ? T(0) * object[0] : object[k * width + c]; // of NaN everything is NaN
            if constexpr (hasQ)
                make(object, width, matrix<T>(from(batch[1], first + i)));
        }
    });
    return failures(batch);
}

/// Values ascend, as numpy has them.
template <class T>
void reverse(Adjacent<T> &values, int n, int count)
{
    for (int i = 0; i < count; ++i)
        std::reverse(values.data() + static_cast<std::ptrdiff_t>(i) * n,
                     values.data() + static_cast<std::ptrdiff_t>(i + 1) * n);
    values.finish();
}
template <class T>
int eigenvaluesSym(const Batch &batch)
{
    Adjacent<T> values(batch[1], batch.count);
    const int result = each::eigenvaluesSym(matrices<T>(batch[0], batch.count), values.data(), batch.statuses);
    reverse(values, batch[0].rows, batch.count);
    return result;
}
template <class T>
int eigenvectorsSym(const Batch &batch)
{
    const int n = batch[0].rows;
    Adjacent<T> values(batch[1], batch.count);
    Operand columns = from(batch[2], 0, n - 1);
    columns.column = -columns.column;
    const int result = each::eigenvectorsSym(matrices<T>(batch[0], batch.count), matrices<T>(columns, batch.count),
                                             values.data(), batch.statuses);
    reverse(values, n, batch.count);
    return result;
}

template <class T, bool hasVectors>
int eigen(const Batch &batch)
{
    Adjacent<T> re(batch[1], batch.count), im(batch[2], batch.count);
    const auto a = matrices<T>(batch[0], batch.count);
    int result;
    if constexpr (hasVectors)
        result = each::eigenvectors(a, matrices<T>(batch[3], batch.count), re.data(), im.data(), batch.statuses);
    else
        result = each::eigenvalues(a, re.data(), im.data(), batch.statuses);
    re.finish();
    im.finish();
    return result;
}
/// Imaginary parts of the values and columns as eigen() leaves them, to real and imaginary parts of all vectors.
template <class T>
int complexVectors(const Batch &batch)
{
    const int n = batch[1].rows;
    const auto imaginary = vectors<T>(batch[0], batch.count);
    const auto from = matrices<T>(batch[1], batch.count);
    const auto re = matrices<T>(batch[2], batch.count), im = matrices<T>(batch[3], batch.count);
    for (int i = 0; i < batch.count; ++i)
        for (int c = 0; c < n; ++c) {
            const T y = imaginary(i, c);
            const int first = y < 0 ? c - 1 : c;
            for (int r = 0; r < n; ++r) {
                re(i, r, c) = from(i, r, first);
                im(i, r, c) = y > 0 ? from(i, r, c + 1) : y < 0 ? -from(i, r, c) : T(0);
            }
        }
    return 0;
}

} // namespace python
} // namespace kvlm

#endif
