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

// clang-format off
const std::vector<Function> functions = {
    // Products, and what moves elements.
    {"matmul", "m?n,nk?->m?k?", BOTH(matmul), Teams::ofLibrary, Failure::none, nullptr, 0,
     "matmul(a, b, *, out=None)\n\n"
     "Products of matrices, (..., m, n) by (..., n, k), as numpy.matmul: an a of one dimension is a row, a b of one\n"
     "dimension a column, and the result lacks that dimension."},
    {"matvec", "mn,n->m", BOTH(productByVector), Teams::ofLibrary, Failure::none, nullptr, 0,
     "matvec(a, x, *, out=None)\n\n"
     "Matrices (..., m, n) by vectors (..., n), to (..., m)."},
    {"cross", "3,3->3", BOTH(cross), Teams::ofLibrary, Failure::none, nullptr, 0,
     "cross(a, b, *, out=None)\n\n"
     "Cross products of vectors (..., 3)."},
    {"add", "mn,mn->mn", BOTH(add), Teams::ofLibrary, Failure::none, nullptr, 0,
     "add(a, b, *, out=None)\n\n"
     "Sums of matrices (..., m, n). Pays where they lie in structures or are transposed; else numpy.add is as fast."},
    {"transpose", "mn->nm", BOTH(transpose), Teams::ofModule, Failure::none, nullptr, 0,
     "transpose(a, *, out=None)\n\n"
     "A copy of matrices (..., m, n) with rows and columns exchanged, (..., n, m); no view, unlike numpy.transpose."},
    {"trace", "nn->", BOTH(trace), Teams::ofLibrary, Failure::none, nullptr, 0,
     "trace(a, *, out=None)\n\n"
     "Sums of the diagonals of matrices (..., n, n), to (...): of the last two axes, as numpy.linalg.trace, while\n"
     "numpy.trace takes the first two."},
    {"_length", "n->", BOTH(length), Teams::ofLibrary},
    {"_frobenius", "mn->", BOTH(frobenius), Teams::ofLibrary},

    // Systems.
    {"inv", "nn->nn", BOTH(inverse), Teams::ofModule, Failure::ifFinite, "Singular matrix", 0,
     "inv(a, *, out=None, info=False)\n\n"
     "Inverses of matrices (..., n, n), as numpy.linalg.inv. Orders 3 to 6 are by cofactors."},
    {"det", "nn->", BOTH(determinant), Teams::ofModule, Failure::silent, nullptr, 1,
     "det(a, *, out=None, info=False)\n\n"
     "Determinants of matrices (..., n, n), to (...), as numpy.linalg.det. A singular matrix is no failure."},
    {"solve", "nn,nk?->nk?", BOTH(solve), Teams::ofModule, Failure::ifFinite, "Singular matrix", 0,
     "solve(a, b, *, out=None, info=False)\n\n"
     "The x with a @ x = b, a (..., n, n), as numpy.linalg.solve: b is vectors (..., n) if it has one dimension, or one\n"
     "less than a; else matrices (..., n, k)."},
    {"cholesky", "nn->nn", BOTH(cholesky), Teams::ofModule, Failure::raises, "Matrix is not positive definite", 0,
     "cholesky(a, *, out=None, info=False)\n\n"
     "L with L @ L.T = a of positive definite matrices (..., n, n), as numpy.linalg.cholesky. Only the lower triangle is\n"
     "read; above that of L are zeros."},
    {"_cho_solve", "nn,nk?->nk?", BOTH(choleskySolve)},
    {"lu_factor", "nn->nn,in", BOTH(luFactor), Teams::ofModule, Failure::ifFinite, "Singular matrix", 0,
     "lu_factor(a, *, out=None, info=False)\n\n"
     "(lu, piv) of matrices (..., n, n), for lu_solve, in the form of scipy.linalg.lu_factor: unit L below the diagonal,\n"
     "U on and above it, and int32 piv (..., n), the row that was exchanged with row i."},
    {"_lu_solve", "nn,in,nk?->nk?", BOTH(luSolve)},
    {"_least_squares", "mn,m->n", BOTH(leastSquares), Teams::ofModule, Failure::silent},

    // QR decompositions and eigenproblems.
    {"_qr_reduced", "mn->mk,kn", BOTH_WITH(qr, true), Teams::ofModule, Failure::silent},
    {"_qr_complete", "mn->mm,mn", BOTH_WITH(qr, true), Teams::ofModule, Failure::silent},
    {"_qr_r", "mn->kn", BOTH_WITH(qr, false), Teams::ofModule, Failure::silent},
    {"_eigvalsh", "nn->n", BOTH(eigenvaluesSymmetric), Teams::ofModule, Failure::raises, "Eigenvalues did not converge"},
    {"_eigh", "nn->n,nn", BOTH(eigenvectorsSymmetric), Teams::ofModule, Failure::raises, "Eigenvalues did not converge"},
    {"_eigvals", "nn->n,n", BOTH_WITH(eigen, false), Teams::ofModule, Failure::raises, "Array must not contain infs or NaNs"},
    {"_eig", "nn->n,n,nn", BOTH_WITH(eigen, true), Teams::ofModule, Failure::raises, "Array must not contain infs or NaNs"},
    {"_complex_vectors", "n,nn->nn,nn", BOTH(complexVectors)},
};
// clang-format on

} // namespace python
} // namespace kvlm
