/**
 * @file each.hpp
 * Decompositions, solutions and eigenproblems of arrays of small matrices in which each object has a status of its own,
 * and none stops the others: namespace kvlm::each.
 *
 * The C functions stop at the first object that fails, and have absolute tests: what is small counts as singular. Here
 * they are called on blocks of objects; what failed, and what is not good by a cheap check, is done again alone by
 * another way. Orders 3 to 6 are the fast case here, too.
 *
 * **Operands** are views, arrays of matrices or of vectors of float or double: any class with count(), rows(),
 * columns() and operator()(object, row, column) for matrices, count(), size() and operator()(object, element) for
 * vectors, which return references. Where base() is a pointer to the first element, the objects lie at fixed strides
 * and are passed to the C functions as they are, by rows or in planes; of all others the objects are copied to the
 * stack and back, block by block, lists and tables of the library's own views by kvlmCopy. Eigenproblems work on copies
 * always. A destination may be the source, object by object; any other overlap is not provided for.
 *
 * **Statuses.** `statuses` gets count() of them. kvlOk: the result is there. Else the destination of the object is full
 * of NaN, or what of it the operation writes:
 *
 * - kvlErrSingular: systems and inverses. A zero is where a divisor should be; or the condition number that was asked
 *   for is beyond the precision, or that of an inverse beyond double's; or an element is not finite, or would not be in
 *   the result.
 * - kvlErrNotPositiveDefinite: the same in Cholesky decompositions.
 * - kvlErrNoConvergence: eigenproblems with elements that are not finite, or with a value that the type can't hold.
 *
 * These replace whatever status a C function stopped with.
 *
 * **Returns** the number of objects that failed; or, if nothing was done as the arguments don't fit, the negative value
 * of kvlErrNullPointer (also of a view whose base() is null), kvlErrCount, kvlErrSize or kvlErrSizeMatch.
 *
 * **Sizes.** Results are as exact for elements of any size, 1e-30 and 1e30 in float, as long as the type can hold them.
 * An object is scaled by powers of two, which round nothing; invert() says where it is not. What is measured stands in
 * docs/accuracy.md.
 *
 * **Threads.** Each call works in the caller's thread, also where threads_omp_of_n_kvl allows for teams: its blocks are
 * smaller then than what goes to a team. Any number of threads may call at once, on parts of an array of their own.
 *
 * **Registers.** Symmetric eigenproblems are computed in these headers, and take 0.5 to 0.6 of the time where they are
 * compiled for AVX2, 0.35 to 0.5 for AVX-512, with the same bits if nothing is fused (-ffp-contract=off). As with all
 * templates, the sources of a program must be compiled for one processor.
 *
 * **Memory.** Less than a hundred kilobytes of stack. The heap serves what does not fit there: general eigenproblems
 * from order 8 on, symmetric ones from order 12 on, second attempts at systems and their conditions from about order 16
 * on, and copies of objects of more than 1024 elements. So std::bad_alloc can leave a call: objects of the blocks
 * before then have their results and statuses, all others are unspecified.
 */
#ifndef KVLM_EACH_HPP
#define KVLM_EACH_HPP

#include "each_general.hpp"
#include "each_inverse.hpp"
#include "each_symmetric.hpp"
#include "each_systems.hpp"

#endif
