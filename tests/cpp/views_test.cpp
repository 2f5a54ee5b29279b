// Views: what they are made of, where they find their elements; runs, scratch, statuses.
#ifdef KVLM_HAS_EIGEN
#include <Eigen/Core>
#endif

#include "kvlm.hpp"

#include <gtest/gtest.h>

#if __has_include(<span>) && __cplusplus >= 202002L
#include <span>
#endif
#include <cstring>
#include <vector>

// In front of the runtime's.
static bool isInRegion = false;
extern "C" int omp_in_parallel(void);
int omp_in_parallel(void)
{
    return isInRegion;
}

namespace {

using namespace kvlm;

struct Body {
    double mass;
    float pose[3][4];
    std::array<float, 3> place;
    float weight;
};

// Each element of the view is the one at `where(object, row, column)`.
template <class V, class Where>
void expectElements(const V &view, Where where)
{
    ASSERT_GT(view.count(), 0);
    for (int i = 0; i < view.count(); ++i)
        for (int r = 0; r < view.rows(); ++r)
            for (int c = 0; c < view.columns(); ++c)
                EXPECT_EQ(&view.element(i, r, c), where(i, r, c)) << i << ' ' << r << ' ' << c;
}

template <class V>
constexpr bool hasShape(const V &view, int rows, int columns, int count)
{
    return view.rows() == rows && view.columns() == columns && view.count() == count;
}

TEST(Views, OfNestedArrays)
{
    float plain[5][2][3];
    std::array<std::array<std::array<float, 3>, 2>, 5> nested;
    std::vector<std::array<std::array<float, 3>, 2>> many(5);
    const auto a = matrices(plain), b = matrices(nested), c = matrices(many);
    static_assert(decltype(a)::fixedRows == 2 && decltype(a)::fixedColumns == 3);
    EXPECT_TRUE(hasShape(a, 2, 3, 5) && hasShape(b, 2, 3, 5) && hasShape(c, 2, 3, 5));
    expectElements(a, [&](int i, int r, int k) { return &plain[i][r][k]; });
    expectElements(b, [&](int i, int r, int k) { return &nested[i][r][k]; });
    expectElements(c, [&](int i, int r, int k) { return &many[i][r][k]; });
    EXPECT_EQ(&a(4, 1, 2), &plain[4][1][2]);

    const auto m = matrix(plain[1]);
    EXPECT_TRUE(hasShape(m, 2, 3, 1));
    EXPECT_EQ(&m(1, 2), &plain[1][1][2]);
    expectElements(vectors(plain[1]), [&](int i, int j, int) { return &plain[1][i][j]; });
    expectElements(vectors(nested[1]), [&](int i, int j, int) { return &nested[1][i][j]; });
    EXPECT_EQ(&vector(plain[1][1])(2), &plain[1][1][2]);

    const auto &fixedPlain = plain;
    const auto &fixedNested = nested;
    static_assert(std::is_same_v<decltype(matrices(fixedPlain))::Element, const float>);
    static_assert(std::is_same_v<decltype(matrices(fixedNested))::Element, const float>);
}

TEST(Views, OfMembers)
{
    std::vector<Body> bodies(4);
    Body few[4];
    const std::vector<Body> &fixedBodies = bodies;
    expectElements(matrices(bodies, &Body::pose), [&](int i, int r, int c) { return &bodies[i].pose[r][c]; });
    expectElements(matrices(few, &Body::pose), [&](int i, int r, int c) { return &few[i].pose[r][c]; });
    expectElements(vectors(fixedBodies, &Body::place), [&](int i, int j, int) { return &bodies[i].place[j]; });
    expectElements(constants(bodies, &Body::weight), [&](int i, int, int) { return &bodies[i].weight; });
    EXPECT_EQ(&constants(bodies, &Body::mass)(3), &bodies[3].mass);
    static_assert(std::is_same_v<decltype(matrices(fixedBodies, &Body::pose))::Element, const float>);
    expectElements(repeated(matrix(bodies[0].pose), sizeof(Body), 4),
                   [&](int i, int r, int c) { return &bodies[i].pose[r][c]; });

    std::vector<Body> none;
    EXPECT_EQ(matrices(none, &Body::pose).count(), 0);
    EXPECT_FALSE(multiply(2, matrices(none, &Body::pose), matrices(none, &Body::pose)).ok());
}

TEST(Views, OfPointers)
{
    std::vector<double> x(400);
    double *const p = x.data();
    const auto a = matrices(p, 3, fixed<4>, 5);
    static_assert(decltype(a)::fixedRows == dynamic && decltype(a)::fixedColumns == 4);
    expectElements(a, [&](int i, int r, int c) { return p + i * 12 + r * 4 + c; });
    expectElements(matrix(p, 3, 4, 80, 16), [&](int, int r, int c) { return p + r * 10 + c * 2; });
    expectElements(vectors(p, 3, 5), [&](int i, int j, int) { return p + i * 3 + j; });
    expectElements(vector(p, fixed<3>, 24), [&](int, int j, int) { return p + j * 3; });
    expectElements(vector(x), [&](int, int j, int) { return p + j; });
    expectElements(constants(p, 7, 16), [&](int i, int, int) { return p + 2 * i; });
    expectElements(constants(x), [&](int i, int, int) { return p + i; });
    expectElements(matricesInPlanes(p, 3, 4, 5), [&](int i, int r, int c) { return p + (r * 4 + c) * 5 + i; });
    expectElements(matricesInPlanes(p, 3, 4, 5, 56), [&](int i, int r, int c) { return p + (r * 4 + c) * 7 + i; });
    expectElements(vectorsInPlanes(p, 3, 5), [&](int i, int j, int) { return p + j * 5 + i; });

    // What an int can't hold is no stride, size or count.
    EXPECT_EQ(matrices(p, 1 << 16, (1 << 14) + 1, 1).strides().object, 0);
    const auto wide = matrix(p, 1, (1 << 29) + 1);
    EXPECT_EQ(wide.strides().row, 0);
    EXPECT_EQ(multiply(2, wide, wide), kvlErrStride);
}

TEST(Views, OfTablesAndLists)
{
    float x[100];
    float *table[6], *list[5];
    for (int k = 0; k < 6; ++k)
        table[k] = x + 90 - 10 * k;
    for (int i = 0; i < 5; ++i)
        list[i] = x + 80 - 15 * i;
    const auto planes = matricesByTable(table, 2, 3, 5, 4, 8);
    expectElements(planes, [&](int i, int r, int c) { return table[r * 3 + c] + 2 + i; });
    expectElements(transposed(planes), [&](int i, int r, int c) { return table[c * 3 + r] + 2 + i; });
    expectElements(planes[3], [&](int, int r, int c) { return table[r * 3 + c] + 2 + 3; });
    expectElements(matrixByTable(table, 2, 3, 4), [&](int, int r, int c) { return table[r * 3 + c] + 1; });
    expectElements(vectorsByTable(table, 6, 5, 8), [&](int i, int j, int) { return table[j] + 2 * i; });
    expectElements(vectorByTable(table, 6, 4), [&](int, int j, int) { return table[j] + 1; });

    const auto apart = matricesByList(list, 2, 3, 5, 8, 20, 4);
    expectElements(apart, [&](int i, int r, int c) { return list[i] + 2 + r * 5 + c; });
    expectElements(transposed(apart)[4], [&](int, int r, int c) { return list[4] + 2 + c * 5 + r; });
    expectElements(matricesByList(list, 2, 3, 5), [&](int i, int r, int c) { return list[i] + r * 3 + c; });
    expectElements(vectorsByList(list, 3, 5, 4, 8), [&](int i, int j, int) { return list[i] + 1 + 2 * j; });
    expectElements(vectorsByList(list, 3, 5)[2], [&](int, int j, int) { return list[2] + j; });
    expectElements(constantsByList(list, 5, 4), [&](int i, int, int) { return list[i] + 1; });
}

TEST(Views, Conversions)
{
    float x[4][2][3];
    const auto a = matrices(x);
    const MatricesView<const float> loose = a;
    EXPECT_TRUE(hasShape(loose, 2, 3, 4));
    expectElements(loose, [&](int i, int r, int c) { return &x[i][r][c]; });
    static_assert(!std::is_convertible_v<MatricesView<const float>, MatricesView<float>>);
    static_assert(!std::is_convertible_v<MatricesView<float>, MatricesView<float, 2, 3>>);
    static_assert(!std::is_convertible_v<MatricesView<float>, MatricesView<double>>);

    const auto t = transposed(a);
    static_assert(decltype(t)::fixedRows == 3 && decltype(t)::fixedColumns == 2);
    expectElements(t, [&](int i, int r, int c) { return &x[i][c][r]; });
    static_assert(std::is_same_v<decltype(transposed(t)), std::remove_const_t<decltype(a)>>);
    expectElements(a[3], [&](int, int r, int c) { return &x[3][r][c]; });
}

// An mdspan as std::mdspan is to be, where there is none.
template <class T, std::size_t... Extents>
struct Mdspan {
    using element_type = T;
    T *first;
    std::array<std::size_t, sizeof...(Extents)> sizes, steps;
    static constexpr std::size_t rank() { return sizeof...(Extents); }
    static constexpr std::size_t static_extent(std::size_t k)
    {
        const std::size_t all[] = {Extents...};
        return all[k];
    }
    std::size_t extent(std::size_t k) const { return sizes[k]; }
    std::size_t stride(std::size_t k) const { return steps[k]; }
    T *data_handle() const { return first; }
};

TEST(Views, OfMdspan)
{
    constexpr std::size_t unknown = -1;
    double x[100];
    const Mdspan<double, unknown, 2, 3> a = {x, {4, 2, 3}, {20, 7, 2}};
    const auto view = matrices(a);
    static_assert(decltype(view)::fixedRows == 2 && decltype(view)::fixedColumns == 3);
    EXPECT_EQ(view.count(), 4);
    expectElements(view, [&](int i, int r, int c) { return x + 20 * i + 7 * r + 2 * c; });
    const Mdspan<double, unknown, unknown> b = {x, {4, 3}, {20, 2}};
    expectElements(matrix(b), [&](int, int r, int c) { return x + 20 * r + 2 * c; });
    expectElements(vectors(b), [&](int i, int j, int) { return x + 20 * i + 2 * j; });
    const Mdspan<double, 5> v = {x, {5}, {3}};
    expectElements(vector(v), [&](int, int j, int) { return x + 3 * j; });
}

#ifdef __cpp_lib_span
TEST(Views, OfSpans)
{
    std::vector<Body> bodies(4);
    const std::span<Body> some(bodies.data() + 1, 2);
    expectElements(matrices(some, &Body::pose), [&](int i, int r, int c) { return &bodies[i + 1].pose[r][c]; });
    float x[6];
    expectElements(vector(std::span<const float>(x)), [&](int, int j, int) { return x + j; });
}
#endif

#ifdef KVLM_HAS_EIGEN
TEST(Views, OfEigen)
{
    using ByRows = Eigen::Matrix<float, 3, 4, Eigen::RowMajor>;
    using ByColumns = Eigen::Matrix<float, 3, 4>;
    std::vector<ByRows> rows(2);
    std::vector<ByColumns> columns(2);
    expectElements(matrices(rows), [&](int i, int r, int c) { return &rows[i](r, c); });
    expectElements(matrices(columns), [&](int i, int r, int c) { return &columns[i](r, c); });
    static_assert(decltype(matrices(rows))::fixedColumns == 4);
    EXPECT_TRUE(hasShape(matrix(columns[0]), 3, 4, 1));

    Eigen::MatrixXd large(7, 9);
    expectElements(matrix(large), [&](int, int r, int c) { return &large(r, c); });
    auto block = large.block(1, 2, 3, 4);
    expectElements(matrix(block), [&](int, int r, int c) { return &large(r + 1, c + 2); });
    expectElements(matrix(large.transpose()), [&](int, int r, int c) { return &large(c, r); });
    expectElements(vector(large.row(2)), [&](int, int j, int) { return &large(2, j); });
    float x[40];
    using Gaps = Eigen::Stride<10, 2>;
    Eigen::Map<ByColumns, 0, Gaps> gaps(x);
    expectElements(matrix(gaps), [&](int, int r, int c) { return x + 10 * c + 2 * r; });
    const Eigen::Map<const Eigen::Vector3f> read(x);
    static_assert(std::is_same_v<decltype(vector(read))::Element, const float>);

    // Eigen computes the same, in both orders of storage.
    std::vector<Eigen::Matrix3f> a(5), b(5), product(5);
    for (int i = 0; i < 5; ++i) {
        a[i].setRandom();
        b[i].setRandom();
    }
    ASSERT_TRUE(multiply(transposed(matrices(a)), matrices(b), matrices(product)).ok());
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(product[i].isApprox(a[i].transpose() * b[i]));
}
#endif

TEST(Calls, SizesOfTheRun)
{
    float x[200] = {};
    const auto a = matrices(x, 2, 3, 4), other = matrices(x, 3, 2, 4), fewer = matrices(x, 2, 3, 3);
    EXPECT_EQ(add(a, other, a), kvlErrSizeMatch);
    EXPECT_EQ(add(a, a, fewer), kvlErrSizeMatch);
    EXPECT_EQ(add(a, fewer, a), kvlErrSizeMatch);
    EXPECT_EQ(add(a, matrix(x, 2, 2), a), kvlErrSizeMatch);
    EXPECT_EQ(subtract(constants(x, 3), vectors(x, 3, 4), vectors(x, 3, 4)), kvlErrSizeMatch);
    EXPECT_EQ(multiply(a, other, a), kvlErrSizeMatch);
    EXPECT_EQ(multiply(a, vector(x, 3), vectors(x, 3, 4)), kvlErrSizeMatch);
    EXPECT_EQ(transpose(a, a), kvlErrSizeMatch);
    EXPECT_EQ(copy(a, other), kvlErrSizeMatch);
    EXPECT_EQ(trace(a, x), kvlErrSizeMatch);
    EXPECT_EQ(dot(vector(x, 3), vector(x, 4), x[0]), kvlErrSizeMatch);
    EXPECT_EQ(cross(vector(x, 3), vector(x, 4), vector(x, 3)), kvlErrSizeMatch);
    EXPECT_EQ(add(matrices(x, 0, 3, 4), matrices(x, 0, 3, 4), matrices(x, 0, 3, 4)), kvlErrSize);
    EXPECT_EQ(add(MatricesView<float>(), MatricesView<float>(), MatricesView<float>()), kvlErrNullPointer);
}

TEST(Calls, RunsAndScratch)
{
    double a[3][4][4] = {}, factors[3][4][4], det[3], few[2], re[3][4], im[3][4];
    for (auto &matrix : a)
        for (int k = 0; k < 4; ++k)
            matrix[k][k] = 1 + k;
    int pivots[3][4], tooFew[11];
    Workspace workspace;
    EXPECT_EQ(determinant(matrices(a), few, workspace), kvlErrSizeMatch);
    ASSERT_TRUE(determinant(matrices(a), det, workspace).ok());
    EXPECT_EQ(det[2], 24);
    EXPECT_EQ(workspace.size(), 4 * 4 * sizeof(double) + 4 * sizeof(int));
    void *const kept = workspace.atLeast(workspace.size());
    EXPECT_EQ(workspace.atLeast(1), kept);
    EXPECT_EQ(workspace.atLeast(workspace.size()), kept);
    double one;
    EXPECT_TRUE(determinant(matrix(a[0]), one, workspace).ok());
    EXPECT_EQ(one, 24);
    EXPECT_EQ(determinant(matrices(a), one, workspace), kvlErrSizeMatch);

    double scratch[18], tooSmall[17], *unknown = scratch;
    EXPECT_TRUE(invert(matrices(a), matrices(factors), scratch).ok());
    EXPECT_TRUE(invert(matrices(a), matrices(factors), unknown).ok());
    EXPECT_EQ(invert(matrices(a), matrices(factors), tooSmall), kvlErrSizeMatch);
    EXPECT_EQ(luDecompose(matrices(a), matrices(factors), tooFew), kvlErrSizeMatch);
    ASSERT_TRUE(luDecompose(matrices(a), matrices(factors), pivots).ok());
    EXPECT_EQ(luSolve(matrices(factors), tooFew, vectors(re), vectors(im)), kvlErrSizeMatch);
    const auto &made = pivots;
    EXPECT_EQ(luSolve(matrices(factors), made, vectors(a[0]), vectors(im)), kvlErrSizeMatch);

    ASSERT_TRUE(eigenvalues(matrices(a), re, im, workspace).ok());
    EXPECT_EQ(re[2][3], 4);
    EXPECT_EQ(workspace.size(), 4 * 9 * sizeof(double));
    EXPECT_EQ(eigenvalues(matrices(a), few, im, workspace), kvlErrSizeMatch);
    EXPECT_EQ(eigenvalues(matrices(a), re, im, tooSmall), kvlErrSizeMatch);
    std::vector<double> values(12);
    ASSERT_TRUE(eigenvaluesSym(matrices(a), values, workspace).ok());
    EXPECT_EQ(values[11], 1);
    EXPECT_EQ(qrDecompose(matrices(a), matrices(factors), few), kvlErrSizeMatch);
    EXPECT_EQ(extract(matrices(a), values), kvlErrSizeMatch);
}

TEST(Calls, Statuses)
{
    const KvlStatus all[] = {0, -2, -6, -8, -10, -179, -182, -195, -202, -203, -204, -205};
    for (KvlStatus status : all) {
        EXPECT_EQ(std::strncmp(Status(status).name(), "kvl", 3), 0) << status;
        EXPECT_STRNE(Status(status).text(), Status(1).text()) << status;
        for (KvlStatus other : all)
            EXPECT_EQ(std::strcmp(Status(status).text(), Status(other).text()) == 0, status == other);
    }
    EXPECT_STREQ(Status(kvlErrSizeMatch).name(), "kvlErrSizeMatch");
    EXPECT_NO_THROW(check(kvlOk));
    try {
        check(kvlErrSingular);
        FAIL();
    } catch (const Error &error) {
        EXPECT_EQ(error.status(), kvlErrSingular);
        EXPECT_STREQ(error.what(), "kvlErrSingular: the matrix is singular to working precision");
    }
}

TEST(Calls, AreRefusedInsideParallelRegions)
{
    float a[2][3][3] = {{{1}}}, dst[2][3][3] = {};
    for (const int threads : {1, 4})
        for (const bool isInside : {false, true}) {
            const bool isRefused = threads > 1 && isInside;
            kvlSetNumThreads(threads);
            isInRegion = isInside;
            dst[0][0][0] = 0;
            EXPECT_EQ(add(matrices(a), matrices(a), matrices(dst)), isRefused ? insideParallelRegion : kvlOk);
            EXPECT_EQ(dst[0][0][0], isRefused ? 0 : 2);
            EXPECT_TRUE(add(matrix(a[0]), matrix(a[0]), matrix(dst[0])).ok()); // no array
            EXPECT_TRUE(transpose(matrices(a), matrices(dst)).ok());           // never for teams
        }
    kvlSetNumThreads(1);
    isInRegion = false;
    EXPECT_STREQ(Status(insideParallelRegion).name(), "insideParallelRegion");
}

} // namespace
