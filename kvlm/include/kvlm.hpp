/**
 * @file kvlm.hpp
 * The C++17 interface of kvlm: views that say where operands lie, and one name for each operation, whose C function is
 * chosen by the compiler. All of it is inline; a call costs what the C call costs.
 *
 * @code
 * std::vector<Body> bodies = ...;         // each with float pose[4][4]
 * float points[1000][4], moved[1000][4];  // a point for each body
 * kvlm::check(kvlm::multiply(kvlm::transposed(kvlm::matrices(bodies, &Body::pose)), kvlm::vectors(points),
 *                            kvlm::vectors(moved)));
 * @endcode
 *
 * **Views** (views.hpp, make.hpp) are one object or an array of them, in one of the three descriptions of kvlm.h. They
 * own nothing. Sizes that the compiler knows are part of a view's type.
 *
 * **Operations** take sources, then destinations, then scratch. By the kinds of the sources, m a matrix, t
 * transposed(), v a vector, c a number, each also as an array (a):
 *
 * | Operation (functions.hpp)            | C name          | Sources                                                  |
 * |--------------------------------------|-----------------|----------------------------------------------------------|
 * | add(a, b, dst)                       | Add             | m or t with m or t; v with v or c; ca with v             |
 * | subtract(a, b, dst)                  | Sub             | the same                                                 |
 * | multiply(a, b, dst)                  | Mul             | m or t by m, t, v; m, t, v by c; v by ca; either way   |
 * | gaxpy(a, x, b, dst)                  | Gaxpy           | m v v, m va va, m va v                                   |
 * | saxpy(x, val, y, dst)                | Saxpy           | v and v                                                  |
 * | linearCombination(x, a, y, b, dst)   | LComb           | v and v                                                  |
 * | cross(a, b, dst)                     | CrossProduct    | v and v                                                  |
 * | affineTransform3DH(a, points, dst)   | AffineTransform3DH | m va, of float, standard                              |
 * | dot(a, b, run)                       | DotProduct      | v and v                                                  |
 * | l2Norm(a, run)                       | L2Norm          | v                                                        |
 * | frobeniusNorm(a, run), trace(a, run) | FrobNorm, Trace | m                                                        |
 * | copy(a, dst)                         | Copy            | va or ma, from any description to any                    |
 * | extract(a, run)                      | Extract         | v, m, t                                                  |
 * | loadIdentity(dst)                    | LoadIdentity    | ma, the destination                                      |
 * | transpose(a, dst)                    | Transpose       | m                                                        |
 *
 * | Operation (systems.hpp)                                       | C name                  | Sources               |
 * |---------------------------------------------------------------|-------------------------|-----------------------|
 * | determinant(a, run, scratch)                                  | Det                     | m                     |
 * | invert(a, dst, scratch)                                       | Invert                  | m                     |
 * | luDecompose(a, factors, pivots)                               | LUDecomp                | m                     |
 * | luSolve(factors, pivots, b, x)                                | LUBackSubst             | m v, m va, ma va      |
 * | choleskyDecompose(a, factor)                                  | CholeskyDecomp          | m                     |
 * | choleskySolve(factor, b, x)                                   | CholeskyBackSubst       | m v, m va, ma va      |
 * | qrDecompose(a, factors, scratch)                              | QRDecomp                | m                     |
 * | qrSolve(factors, b, x, scratch)                               | QRBackSubst             | m v, m va, ma va      |
 * | eigenvaluesSym(a, values, scratch)                            | EigenValuesSym          | m                     |
 * | eigenvectorsSym(a, vectors, values, scratch)                  | EigenValuesVectorsSym   | m                     |
 * | eigenvalues(a, re, im, scratch)                               | EigenValues             | m                     |
 * | eigenvectors(a, right, left, re, im, scratch)                 | EigenValuesVectors      | m                     |
 * | eigenvectorsRight, eigenvectorsLeft(a, vectors, re, im, scratch) | EigenValuesVectors... | m                    |
 * | eigenvaluesScratch, eigenvectorsScratch<T>(order, bytes)      | EigenValues...GetBufSize | -                    |
 *
 * What has no C function (a sum of a matrix and a constant, lists of single objects) does not compile, and a line of
 * the error says so. Where C has one order of a sum or product, the other is the same call with operands exchanged: the
 * bits are the same, but for the payload where both operands are NaN.
 *
 * **Checks.** Sizes that the compiler knows are compared when compiling. Others, the numbers of objects and the lengths
 * of runs are compared before the call, and give kvlErrSizeMatch; then come the checks of the C function. Ints hold
 * sizes, counts, strides and shifts, as in C.
 *
 * **Memory.** Nothing is allocated but by a Workspace, which may stand where scratch is asked for.
 *
 * **Failures.** An operation stops at the first object that fails, as in C. kvlm/each.hpp has decompositions, solvers
 * and eigenproblems with a status for each object, whose answers hold for elements of any size.
 *
 * **Threads.** As in C, but that a call on arrays inside a parallel region of OpenMP, while kvlSetNumThreads allows for
 * teams, is refused with insideParallelRegion, where a call in C can leave objects undone and return kvlOk. The region
 * is the one that the program's OpenMP runtime tells of.
 */
#ifndef KVLM_HPP
#define KVLM_HPP

#include "kvlm/make.hpp"
#include "kvlm/systems.hpp"

namespace kvlm {

/** Which library this is. */
inline const KvlLibraryVersion &version()
{
    return *kvlmGetLibVersion();
}

} // namespace kvlm

#endif
