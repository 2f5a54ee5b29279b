// Residuals in units of rounding, formed as the test programs of LAPACK form them, on random, graded, ill-conditioned
// and permuted matrices of orders 1 to 16, and on tall ones.
#include "residual.h"

namespace {

template <class T>
class Accuracy : public testing::Test {
};
TYPED_TEST_SUITE(Accuracy, Types);

const char *const kinds[] = {"random", "graded rows", "graded columns", "ill-conditioned", "permuted triangle"};

template <class T>
std::vector<T> matrixOfKind(int kind, int n, Random &random)
{
    std::vector<T> a = someMatrix<T>(n, random);
    eachElement(n, a, [&](int r, int c, T &x) {
        if (kind == 1 || kind == 2)
            x = std::ldexp(x, (kind == 1 ? r : c) / 2);
        else if (kind == 4)
            x = r == c ? 1 : r < c ? x : 0;
    });
    if (kind == 3 && n > 1) // the last row is that of the others' sum, but for a little
        for (int c = 0; c < n; ++c) {
            Exact sum = 0;
            for (int r = 0; r < n - 1; ++r)
                sum += a[r * n + c];
            T &last = a[(n - 1) * n + c];
            last = static_cast<T>(sum + last / (sizeof(T) == 4 ? 256 : 1 << 24));
        }
    if (kind == 4)
        permuteRows(n, a, random);
    return a;
}

// A batch of what make() gives.
template <class T, class Make>
Packed<T> packed(int rows, int columns, Make make)
{
    Packed<T> all(rows, columns, batch, {});
    for (int i = 0; i < batch; ++i) {
        const std::vector<T> one = make();
        all.elements.insert(all.elements.end(), one.begin(), one.end());
    }
    return all;
}

template <class T>
Packed<T> someVectors(int length, Random &random)
{
    return {0, length, batch, someVector<T>(length * batch, random)};
}

TYPED_TEST(Accuracy, DeterminantsFactorsSolutionsAndInverses)
{
    using T = TypeParam;
    for (int n = 1; n <= mostOrder; ++n)
        for (int kind = 0; kind < 5; ++kind) {
            SCOPED_TRACE(std::string(kinds[kind]) + ", order " + std::to_string(n));
            Random random(n * 10 + kind);
            const auto a = packed<T>(n, n, [&] { return matrixOfKind<T>(kind, n, random); });
            const auto b = someVectors<T>(n, random);
            Packed<T> lu(n, n, batch), inverse(n, n, batch), x(0, n, batch);
            std::vector<T> buffer(n * n + n), det(batch);
            std::vector<int> pivots(n * batch);
            ASSERT_EQ(call(KVLM_FUNCTION(T, LUDecomp_ma), a, pivots.data(), lu, n, batch), kvlOk);
            ASSERT_EQ(call(KVLM_FUNCTION(T, LUBackSubst_mava), lu, pivots.data(), b, x, n, batch), kvlOk);
            ASSERT_EQ(call(KVLM_FUNCTION(T, Det_ma), a, n, buffer.data(), det.data(), batch), kvlOk);
            ASSERT_EQ(call(KVLM_FUNCTION(T, Invert_ma), a, buffer.data(), inverse, n, batch), kvlOk);
            for (int i = 0; i < batch; ++i) {
                const int *const p = &pivots[i * n];
                const Matrix A = a.exactly(i), X = x.exactly(i), inverted = inverse.exactly(i), stored = lu.exactly(i);
                const Matrix lower(n, n, [&](int r, int c) { return c < r ? stored(p[r], c) : Exact(r == c); });
                const Matrix upper(n, n, [&](int r, int c) { return c >= r ? stored(p[r], c) : Exact(0); });
                const Matrix permuted(n, n, [&](int r, int c) { return A(p[r], c); });
                const Exact roundings = n * unit<T> * A.norm();
                EXPECT_LT((permuted - lower * upper).norm() / roundings, threshold);
                EXPECT_LT((b.exactly(i) - A * X).norm() / (roundings * X.norm()), threshold);
                EXPECT_LT((identity(n) - A * inverted).norm() / (roundings * inverted.norm()), threshold);
                Exact product = 1, bound = 1;
                for (int r = 0; r < n; ++r) {
                    const auto inversions = std::count_if(p, p + r, [&](int before) { return before > p[r]; });
                    product *= inversions % 2 ? -upper(r, r) : upper(r, r);
                    bound *= Matrix(n, 1, [&](int c, int) { return A(r, c); }).norm();
                }
                EXPECT_LT(std::fabs(det[i] - product) / (n * bound * unit<T>), threshold);
            }
        }
}

// Rows and columns that differ in magnitude by powers of two, columns that nearly coincide, and a diagonal that keeps
// them apart.
template <class T>
std::vector<T> tall(int kind, int width, int height, Random &random)
{
    std::vector<T> a = someVector<T>(width * height, random);
    eachElement(width, a, [&](int r, int c, T &x) {
        if (kind == 1 || kind == 2)
            x = std::ldexp(x, kind == 1 ? c : -(r % 4));
        else if (kind == 3 && c > 0)
            x = a[r * width] + x / 16;
        else if (kind == 4 && r == c)
            x += 2;
    });
    return a;
}

TYPED_TEST(Accuracy, CholeskyFactorsAndSolutions)
{
    using T = TypeParam;
    for (int n = 1; n <= mostOrder; ++n)
        for (int kind = 0; kind < 4; ++kind) {
            SCOPED_TRACE("kind " + std::to_string(kind) + ", order " + std::to_string(n));
            Random random(n * 10 + kind);
            const auto b = someVectors<T>(n, random);
            const auto a = packed<T>(n, n, [&] {
                const Matrix factor = exact(n, n, tall<T>(kind, n, n, random).data());
                const Matrix square = factor.adjoint() * factor;
                std::vector<T> made(n * n);
                eachElement(n, made, [&](int r, int c, T &x) {
                    x = static_cast<T>(r == c ? square(r, c) * Exact(1.01) + Exact(0.001) : square(r, c));
                });
                return made;
            });
            Packed<T> l(n, n, batch), x(0, n, batch);
            ASSERT_EQ(call(KVLM_FUNCTION(T, CholeskyDecomp_ma), a, l, n, batch), kvlOk);
            ASSERT_EQ(call(KVLM_FUNCTION(T, CholeskyBackSubst_mava), l, b, x, n, batch), kvlOk);
            for (int i = 0; i < batch; ++i) {
                const Matrix A = a.exactly(i), X = x.exactly(i), stored = l.exactly(i);
                const Matrix lower(n, n, [&](int r, int c) {
                    return c < r ? stored(r, c) : c == r ? 1 / stored(r, r) : Exact(0);
                });
                const Exact roundings = n * unit<T> * A.norm();
                EXPECT_LT((A - lower * lower.adjoint()).norm() / roundings, threshold);
                EXPECT_LT((b.exactly(i) - A * X).norm() / (roundings * X.norm()), threshold);
            }
        }
}

// What the packed form means: H(K-1) ... H(0) applied to the columns of a.
Matrix reflected(const Matrix &qr, Matrix a)
{
    const int height = qr.rows;
    for (int k = 0; k < oracle::reflectors(qr.columns, height); ++k) {
        const Matrix v(height, 1, [&](int r, int) { return r < k ? Exact(0) : r == k ? Exact(1) : qr(r, k); });
        const Matrix square = v.adjoint() * v, products = v.adjoint() * a;
        a = a - Matrix(height, a.columns, [&](int r, int c) { return 2 / square(0, 0) * products(0, c) * v(r, 0); });
    }
    return a;
}

TYPED_TEST(Accuracy, QRFactorsAndLeastSquaresSolutions)
{
    using T = TypeParam;
    for (int width = 1; width <= 9; ++width)
        for (int height : {width, width + 1, 2 * width, 3 * width, 20, 40, 70, 80})
            for (int kind = 0; kind < 5; ++kind) {
                SCOPED_TRACE("kind " + std::to_string(kind) + ", " + std::to_string(height) + " x " +
                             std::to_string(width));
                Random random(width * 1000 + height * 10 + kind);
                const auto b = someVectors<T>(height, random);
                const auto a = packed<T>(height, width, [&] { return tall<T>(kind, width, height, random); });
                Packed<T> qr(height, width, batch), x(0, width, batch);
                std::vector<T> buffer(height);
                ASSERT_EQ(call(KVLM_FUNCTION(T, QRDecomp_ma), a, buffer.data(), qr, width, height, batch), kvlOk);
                ASSERT_EQ(call(KVLM_FUNCTION(T, QRBackSubst_mava), qr, buffer.data(), b, x, width, height, batch),
                          kvlOk);
                for (int i = 0; i < batch; ++i) {
                    const Matrix A = a.exactly(i), stored = qr.exactly(i), X = x.exactly(i), B = b.exactly(i);
                    const Matrix R(height, width, [&](int r, int c) { return r <= c ? stored(r, c) : Exact(0); });
                    const Exact size = A.norm(), roundings = height * unit<T> * size;
                    EXPECT_LT((reflected(stored, A) - R).norm() / roundings, threshold);
                    // The residual of a least-squares solution is orthogonal to the columns of A.
                    const Matrix product = A.adjoint() * (B - A * X);
                    EXPECT_LT(product.norm() / (roundings * (size * X.norm() + B.norm())), threshold);
                }
            }
}

} // namespace
