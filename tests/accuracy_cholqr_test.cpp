// Cholesky, QR and their solvers: residuals in units of rounding, formed as the test programs of LAPACK form them, and
// least-squares solutions against those of a wider precision.
#include "residual.h"
#include "values.h"

#include <gtest/gtest.h>

namespace {

constexpr int batch = 5; // a group and a rest
constexpr Exact threshold = 30;

template <class T>
struct Functions;
template <>
struct Functions<float> {
    static constexpr auto cholesky = kvlmCholeskyDecomp_ma_32f;
    static constexpr auto choleskySolve = kvlmCholeskyBackSubst_mava_32f;
    static constexpr auto qr = kvlmQRDecomp_ma_32f;
    static constexpr auto qrSolve = kvlmQRBackSubst_mava_32f;
};
template <>
struct Functions<double> {
    static constexpr auto cholesky = kvlmCholeskyDecomp_ma_64f;
    static constexpr auto choleskySolve = kvlmCholeskyBackSubst_mava_64f;
    static constexpr auto qr = kvlmQRDecomp_ma_64f;
    static constexpr auto qrSolve = kvlmQRBackSubst_mava_64f;
};

template <class T>
class CholeskyAndQR : public testing::Test {
protected:
    static constexpr int elem = sizeof(T);
    static constexpr Exact unit = std::numeric_limits<T>::epsilon();

    static std::vector<T> someVector(int n, Random &random)
    {
        std::vector<T> x(n);
        for (T &element : x)
            element = inUnitInterval<T>(random);
        return x;
    }
    // Rows and columns that differ in magnitude by powers of two, and for the last kind columns that nearly coincide.
    static std::vector<T> tall(int kind, int width, int height, Random &random)
    {
        std::vector<T> a = someVector(width * height, random);
        for (int r = 0; r < height; ++r)
            for (int c = 0; c < width; ++c) {
                T &x = a[r * width + c];
                if (kind == 1)
                    x = std::ldexp(x, c);
                else if (kind == 2)
                    x = std::ldexp(x, -(r % 4));
                else if (kind == 3 && c > 0)
                    x = a[r * width] + x / 16;
            }
        return a;
    }
};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(CholeskyAndQR, Types);

TYPED_TEST(CholeskyAndQR, CholeskyResidualsAreSmall)
{
    using T = TypeParam;
    using F = Functions<T>;
    for (int n = 1; n <= 16; ++n)
        for (int kind = 0; kind < 4; ++kind) {
            SCOPED_TRACE("kind " + std::to_string(kind) + ", order " + std::to_string(n));
            Random random(n * 10 + kind);
            const int elem = sizeof(T), row = n * elem, obj = n * row;
            std::vector<T> a, l(n * n * batch), b = this->someVector(n * batch, random), x(n * batch);
            for (int i = 0; i < batch; ++i) {
                const std::vector<T> factor = this->tall(kind, n, n, random);
                for (int r = 0; r < n; ++r)
                    for (int c = 0; c < n; ++c) {
                        Exact sum = 0;
                        for (int k = 0; k < n; ++k)
                            sum += Exact(factor[k * n + r]) * factor[k * n + c];
                        a.push_back(static_cast<T>(r == c ? sum * Exact(1.01) + Exact(0.001) : sum));
                    }
            }
            ASSERT_EQ(F::cholesky(a.data(), obj, row, elem, l.data(), obj, row, elem, n, batch), kvlOk);
            ASSERT_EQ(F::choleskySolve(l.data(), obj, row, elem, b.data(), row, elem, x.data(), row, elem, n, batch),
                      kvlOk);
            for (int i = 0; i < batch; ++i) {
                const T *const ai = &a[i * n * n], *const li = &l[i * n * n], *const xi = &x[i * n];
                const auto A = [&](int r, int c) { return Exact(ai[r * n + c]); };
                const auto lower = [&](int r, int c) {
                    const Exact e = li[r * n + c];
                    return c < r ? e : c == r ? 1 / e : 0;
                };
                const Exact size = norm(n, n, ai);
                EXPECT_LT(residual(
                              n, n, lower, [&](int r, int c) { return lower(c, r); }, A) /
                              (n * size * this->unit),
                          threshold);
                const auto X = [&](int r, int) { return Exact(xi[r]); };
                const auto B = [&](int r, int) { return Exact(b[i * n + r]); };
                EXPECT_LT(residual(n, 1, A, X, B) / (n * size * norm(n, 1, xi) * this->unit), threshold);
            }
        }
}

// What the packed form means: H(K-1) ... H(0) applied to a column of `height` elements.
template <class T>
void applyReflectors(int width, int height, const T *qr, std::vector<Exact> &column)
{
    for (int k = 0; k < oracle::reflectors(width, height); ++k) {
        const auto v = [&](int i) { return i == k ? Exact(1) : Exact(qr[i * width + k]); };
        Exact square = 0, product = 0;
        for (int i = k; i < height; ++i) {
            square += v(i) * v(i);
            product += v(i) * column[i];
        }
        for (int i = k; i < height; ++i)
            column[i] -= 2 / square * product * v(i);
    }
}

TYPED_TEST(CholeskyAndQR, QRResidualsAreSmall)
{
    using T = TypeParam;
    using F = Functions<T>;
    for (int width = 1; width <= 9; ++width)
        for (int height : {width, width + 1, 2 * width, 20, 70})
            for (int kind = 0; kind < 4; ++kind) {
                SCOPED_TRACE("kind " + std::to_string(kind) + ", " + std::to_string(height) + " x " +
                             std::to_string(width));
                Random random(width * 1000 + height * 10 + kind);
                const int elem = sizeof(T), row = width * elem, obj = height * row, elements = width * height;
                std::vector<T> a, qr(elements * batch), b = this->someVector(height * batch, random);
                std::vector<T> x(width * batch), buffer(height);
                for (int i = 0; i < batch; ++i) {
                    const std::vector<T> matrix = this->tall(kind, width, height, random);
                    a.insert(a.end(), matrix.begin(), matrix.end());
                }
                ASSERT_EQ(
                    F::qr(a.data(), obj, row, elem, buffer.data(), qr.data(), obj, row, elem, width, height, batch),
                    kvlOk);
                ASSERT_EQ(F::qrSolve(qr.data(), obj, row, elem, buffer.data(), b.data(), height * elem, elem, x.data(),
                                     row, elem, width, height, batch),
                          kvlOk);
                for (int i = 0; i < batch; ++i) {
                    const T *const ai = &a[i * elements], *const qi = &qr[i * elements], *const bi = &b[i * height];
                    const T *const xi = &x[i * width];
                    const Exact size = norm(height, width, ai), roundings = height * this->unit;
                    // Q^T * A - R
                    std::vector<Exact> difference(elements);
                    for (int c = 0; c < width; ++c) {
                        std::vector<Exact> column(height);
                        for (int r = 0; r < height; ++r)
                            column[r] = ai[r * width + c];
                        applyReflectors(width, height, qi, column);
                        for (int r = 0; r < height; ++r)
                            difference[r * width + c] = column[r] - (r <= c ? Exact(qi[r * width + c]) : 0);
                    }
                    EXPECT_LT(norm(height, width, difference.data()) / (size * roundings), threshold);
                    // The residual of a least-squares solution is orthogonal to the columns of A.
                    const auto A = [&](int r, int c) { return Exact(ai[r * width + c]); };
                    std::vector<Exact> rest(height), product(width);
                    for (int r = 0; r < height; ++r) {
                        rest[r] = bi[r];
                        for (int c = 0; c < width; ++c)
                            rest[r] -= A(r, c) * xi[c];
                    }
                    for (int c = 0; c < width; ++c)
                        for (int r = 0; r < height; ++r)
                            product[c] += A(r, c) * rest[r];
                    const Exact scale = size * norm(width, 1, xi) + norm(height, 1, bi);
                    EXPECT_LT(norm(width, 1, product.data()) / (size * scale * roundings), threshold);
                }
            }
}

// Solutions of well-conditioned problems, by normal equations in the wider precision.
TYPED_TEST(CholeskyAndQR, LeastSquaresSolutions)
{
    using T = TypeParam;
    using F = Functions<T>;
    for (int width = 1; width <= 8; ++width)
        for (int height : {3 * width, 40, 80}) {
            SCOPED_TRACE(std::to_string(height) + " x " + std::to_string(width));
            Random random(width * 100 + height);
            const int elem = sizeof(T), row = width * elem, obj = height * row, elements = width * height;
            std::vector<T> a = this->someVector(elements * batch, random), b = this->someVector(height * batch, random);
            std::vector<T> qr(elements * batch), x(width * batch), buffer(height);
            for (int k = 0; k < elements * batch; ++k) // a diagonal that keeps the columns apart
                a[k] += k % elements / width == k % width ? T(2) : T(0);
            ASSERT_EQ(F::qr(a.data(), obj, row, elem, buffer.data(), qr.data(), obj, row, elem, width, height, batch),
                      kvlOk);
            ASSERT_EQ(F::qrSolve(qr.data(), obj, row, elem, buffer.data(), b.data(), height * elem, elem, x.data(), row,
                                 elem, width, height, batch),
                      kvlOk);
            for (int i = 0; i < batch; ++i) {
                std::vector<Exact> normal(width * width), solution(width);
                for (int r = 0; r < height; ++r)
                    for (int j = 0; j < width; ++j) {
                        const Exact e = a[i * elements + r * width + j];
                        solution[j] += e * b[i * height + r];
                        for (int k = 0; k < width; ++k)
                            normal[j * width + k] += e * a[i * elements + r * width + k];
                    }
                for (int k = 0; k < width; ++k)
                    for (int j = k + 1; j < width; ++j) {
                        const Exact m = normal[j * width + k] / normal[k * width + k];
                        for (int c = k; c < width; ++c)
                            normal[j * width + c] -= m * normal[k * width + c];
                        solution[j] -= m * solution[k];
                    }
                Exact error = 0, size = 0;
                for (int k = width - 1; k >= 0; --k) {
                    for (int c = k + 1; c < width; ++c)
                        solution[k] -= normal[k * width + c] * solution[c];
                    solution[k] /= normal[k * width + k];
                    error += std::fabs(solution[k] - x[i * width + k]);
                    size += std::fabs(solution[k]);
                }
                EXPECT_LT(error / ((1 + size) * height * this->unit), threshold);
            }
        }
}

} // namespace
