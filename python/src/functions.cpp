#include "functions.hpp"

#include "decompositions.hpp"

namespace kvlm {
namespace python {

Signature::Signature(const char *text)
{
    auto *shapes = &sources;
    shapes->emplace_back();
    for (; *text; ++text) {
        if (*text == '-') {
            shapes = &results;
            shapes->emplace_back();
            ++text;
        } else if (*text == ',') {
            shapes->emplace_back();
        } else if (*text == 'i') {
            shapes->back().isInteger = true;
        } else {
            Shape &shape = shapes->back();
            const bool isOptional = text[1] == '?';
            shape.dimensions[shape.count++] = {*text, isOptional};
            text += isOptional;
        }
    }
}

#define BOTH(kernel)                                                                                                   \
    {                                                                                                                  \
        kernel<float>, kernel<double>                                                                                  \
    }
#define BOTH_WITH(kernel, flag)                                                                                        \
    {                                                                                                                  \
        kernel<float, flag>, kernel<double, flag>                                                                      \
    }

constexpr const char *isSingular = "Singular matrix";
constexpr const char *isNotPositive = "Matrix is not positive definite";
constexpr const char *hasNotConverged = "Eigenvalues did not converge";
constexpr const char *isNotFinite = "Array must not contain infs or NaNs";

// clang-format off
const std::vector<Function> functions = {
    // Products, and what moves elements.
    {"matmul", "m?n,nk?->m?k?", BOTH(matmul),
     "matmul(a, b, *, out=None)\n\n"
     "Products of matrices, (..., m, n) by (..., n, k), as numpy.matmul: an a of one dimension is a row, a b of one\n"
     "dimension a column, and the result lacks that dimension.",
     Teams::ofLibrary},
    {"matvec", "mn,n->m", BOTH(productByVector),
     "matvec(a, b, *, out=None)\n\n"
     "Matrices (..., m, n) by vectors (..., n), to (..., m).",
     Teams::ofLibrary},
    {"cross", "3,3->3", BOTH(cross),
     "cross(a, b, *, out=None)\n\n"
     "Cross products of vectors (..., 3).",
     Teams::ofLibrary},
    {"add", "mn,mn->mn", BOTH(add),
     "add(a, b, *, out=None)\n\n"
     "Sums of matrices (..., m, n). Pays where they lie in structures or are transposed; else numpy.add is as fast.",
     Teams::ofLibrary},
    {"transpose", "mn->nm", BOTH(transpose),
     "transpose(a, *, out=None)\n\n"
     "A copy of matrices (..., m, n) with rows and columns exchanged, (..., n, m); no view, unlike numpy.transpose."},
    {"trace", "nn->", BOTH(trace),
     "trace(a, *, out=None)\n\n"
     "Sums of the diagonals of matrices (..., n, n), to (...): of the last two axes, as numpy.linalg.trace, while\n"
     "numpy.trace takes the first two.",
     Teams::ofLibrary},
    {"_length", "n->", BOTH(length), nullptr, Teams::ofLibrary},
    {"_frobenius", "mn->", BOTH(frobenius), nullptr, Teams::ofLibrary},

    // Systems.
    {"inv", "nn->nn", BOTH(inverse),
     "inv(a, *, out=None, info=False)\n\n"
     "Inverses of matrices (..., n, n), as numpy.linalg.inv. Orders 3 to 6 are by cofactors.",
     Teams::ofModule, Failure::ifFinite, isSingular},
    {"det", "nn->", BOTH(determinant),
     "det(a, *, out=None, info=False)\n\n"
     "Determinants of matrices (..., n, n), to (...), as numpy.linalg.det. A singular matrix is no failure.",
     Teams::ofModule, Failure::silent, nullptr, 1},
    {"solve", "nn,nk?->nk?", BOTH(solve),
     "solve(a, b, *, out=None, info=False)\n\n"
     "The x with a @ x = b, a (..., n, n), as numpy.linalg.solve: b is vectors (..., n) if it has one dimension, or\n"
     "one less than a; else matrices (..., n, k).",
     Teams::ofModule, Failure::ifFinite, isSingular},
    {"cholesky", "nn->nn", BOTH(cholesky),
     "cholesky(a, *, out=None, info=False)\n\n"
     "L with L @ L.T = a of positive definite matrices (..., n, n), as numpy.linalg.cholesky. Only the lower triangle\n"
     "is read; above that of L are zeros.",
     Teams::ofModule, Failure::raises, isNotPositive},
    {"_cho_solve", "nn,nk?->nk?", BOTH(choleskySolve), nullptr},
    {"lu_factor", "nn->nn,in", BOTH(luFactor),
     "lu_factor(a, *, out=None, info=False)\n\n"
     "(lu, piv) of matrices (..., n, n), for lu_solve, in the form of scipy.linalg.lu_factor: unit L below the\n"
     "diagonal, U on and above it, and int32 piv (..., n), the row that was exchanged with row i.",
     Teams::ofModule, Failure::ifFinite, isSingular},
    {"_lu_solve", "nn,in,nk?->nk?", BOTH(luSolve), nullptr},
    {"_least_squares", "mn,m->n", BOTH(leastSquares), nullptr, Teams::ofModule, Failure::silent},

    // QR decompositions and eigenproblems.
    {"_qr_reduced", "mn->mk,kn", BOTH_WITH(qr, true), nullptr, Teams::ofModule, Failure::silent},
    {"_qr_complete", "mn->mm,mn", BOTH_WITH(qr, true), nullptr, Teams::ofModule, Failure::silent},
    {"_qr_r", "mn->kn", BOTH_WITH(qr, false), nullptr, Teams::ofModule, Failure::silent},
    {"_eigvalsh", "nn->n", BOTH(eigenvaluesSymmetric), nullptr, Teams::ofModule, Failure::raises, hasNotConverged},
    {"_eigh", "nn->n,nn", BOTH(eigenvectorsSymmetric), nullptr, Teams::ofModule, Failure::raises, hasNotConverged},
    {"_eigvals", "nn->n,n", BOTH_WITH(eigen, false), nullptr, Teams::ofModule, Failure::raises, isNotFinite},
    {"_eig", "nn->n,n,nn", BOTH_WITH(eigen, true), nullptr, Teams::ofModule, Failure::raises, isNotFinite},
    {"_complex_vectors", "n,nn->nn,nn", BOTH(complexVectors), nullptr},
};
// clang-format on

} // namespace python
} // namespace kvlm
