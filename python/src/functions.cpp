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
    {"matmul", "m?n,nk?->m?k?", BOTH(matmul), Teams::ofLibrary},
    {"matvec", "mn,n->m", BOTH(productByVector), Teams::ofLibrary},
    {"cross", "3,3->3", BOTH(cross), Teams::ofLibrary},
    {"add", "mn,mn->mn", BOTH(add), Teams::ofLibrary},
    {"transpose", "mn->nm", BOTH(transpose)},
    {"trace", "nn->", BOTH(trace), Teams::ofLibrary},
    {"length", "n->", BOTH(length), Teams::ofLibrary},
    {"frobenius", "mn->", BOTH(frobenius), Teams::ofLibrary},

    // Systems.
    {"inv", "nn->nn", BOTH(inverse), Teams::ofModule, Failure::ifFinite, isSingular},
    {"det", "nn->", BOTH(determinant), Teams::ofModule, Failure::silent, nullptr, 1},
    {"solve", "nn,nk?->nk?", BOTH(solve), Teams::ofModule, Failure::ifFinite, isSingular},
    {"cholesky", "nn->nn", BOTH(cholesky), Teams::ofModule, Failure::raises, isNotPositive},
    {"cho_solve", "nn,nk?->nk?", BOTH(choleskySolve)},
    {"lu_factor", "nn->nn,in", BOTH(luFactor), Teams::ofModule, Failure::ifFinite, isSingular},
    {"lu_solve", "nn,in,nk?->nk?", BOTH(luSolve)},
    {"least_squares", "mn,m->n", BOTH(leastSquares), Teams::ofModule, Failure::silent},

    // QR decompositions and eigenproblems.
    {"qr_reduced", "mn->mk,kn", BOTH_WITH(qr, true), Teams::ofModule, Failure::silent},
    {"qr_complete", "mn->mm,mn", BOTH_WITH(qr, true), Teams::ofModule, Failure::silent},
    {"qr_r", "mn->kn", BOTH_WITH(qr, false), Teams::ofModule, Failure::silent},
    {"eigvalsh", "nn->n", BOTH(eigenvaluesSym), Teams::ofModule, Failure::raises, hasNotConverged},
    {"eigh", "nn->n,nn", BOTH(eigenvectorsSym), Teams::ofModule, Failure::raises, hasNotConverged},
    {"eigvals", "nn->n,n", BOTH_WITH(eigen, false), Teams::ofModule, Failure::raises, isNotFinite},
    {"eig", "nn->n,n,nn", BOTH_WITH(eigen, true), Teams::ofModule, Failure::raises, isNotFinite},
    {"complex_vectors", "n,nn->nn,nn", BOTH(complexVectors)},
};
// clang-format on

} // namespace python
} // namespace kvlm
