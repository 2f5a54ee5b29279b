/**
 * @file kvlm.h
 * Linear algebra on small matrices and vectors, one object or a whole array of them per call.
 *
 * A function's name says which form it takes: kvlm, the operation, the operands, the element type, the description.
 * kvlmSub_mat_32f_P subtracts from an array of matrices (ma) one matrix that is read transposed (t), on 32-bit floats
 * (32f), with operands in the pointer description (_P).
 *
 * **Operands.** m one matrix, t one matrix that is read transposed, v one vector, c one constant; a letter followed by
 * `a` is an array of `count` such objects. The destination has no letter: it is never transposed, and it is an array as
 * soon as one source is.
 *
 * **Descriptions.** They say where element (r, c) of object i lies. Strides and shifts are always in bytes.
 *
 * - standard: base + i*objStride + r*rowStride + c*elemStride. Vectors have no rowStride, single objects no objStride.
 * - _P, a table with one pointer per element position: tbl[r*width + c] + shift + i*objStride, for vectors tbl[j] + ...
 * - _L, a list with one pointer per object: lst[i] + shift + r*rowStride + c*elemStride. The single operand of such a
 *   call has no list, it stays in the standard description.
 *
 * A t operand exchanges r and c on the right-hand side: its row stride goes with c and its element stride with r, and
 * its table is that of the stored matrix, tbl[c*height + r]. `width` and `height` are those of the result, unless a
 * group says otherwise.
 *
 * **Arguments** come in the order of the name: each source with its strides or shifts, the destination, the shape
 * (`width`, `height` or `len`), and `count` where there is an array. Where operands have shapes of their own, as in
 * products, each shape follows its operand; in the determinant, trace, Frobenius norm and transpose the shape precedes
 * the destination; `buffer` and `pivot` stand before dst, before src2, or last.
 *
 * **Checks.** A stride must be a positive multiple of the element size, a shift a non-negative one; an object may
 * overlap the next, and nothing is asked of the alignment of a base pointer (16 bytes are faster). Arguments are
 * checked before any element is read or written, and the first check that fails decides the status. The order is:
 * pointers, `count`, sizes, strides, shifts, unless a group says otherwise. Entries of tables and lists are not
 * checked. What a group calls settled is kept for compatibility with existing callers.
 *
 * **Aliasing.** The destination must not overlap a source, unless a group says otherwise. In which order the elements
 * of one destination object are written is not defined; of objects that overlap, the later one is written last, but for
 * objects that different threads of a team write. `buffer` and `pivot` overlap nothing.
 *
 * **Failures.** "Always kvlOk" in a group means: once the checks are passed. All others, on arrays, stop at the first
 * object that fails, unless a group says otherwise: earlier ones are complete, later ones untouched, and the group says
 * what stands in its own place. In a team this is so in the part of each thread, and the status is the first that
 * arrives.
 *
 * **Accuracy.** One operation, one rounding, in the element type. With u the unit roundoff, 2^-24 (32f) or 2^-53 (64f),
 * a sum of n products is off by n*u times the sum of their magnitudes at most, in whatever order it is formed (Golub
 * and Van Loan, Matrix Computations, 2.7). Nothing is scaled: what overflows is infinite, what underflows is denormal
 * or zero. A result has the same bits on both ABIs, in every description and number of threads, unless a group says
 * otherwise.
 *
 * **Threads.** Every function may be called from any number of threads at once, on destinations that do not overlap.
 * The library makes threads only for arrays, and as many as threads_omp_of_n_kvl of the core library says (1 at first:
 * see kvlcore.h). Such a team takes a call whose count is no less than its threads, if the work W of the call, a fixed
 * estimate, reaches what its group gives as *Team*: a number without a description is for the standard one with
 * adjacent elements, and for whatever is not named. W wraps at 32 bits; single operands count in it once. A call made
 * inside an OpenMP parallel region gets a smaller team than it asked for and then leaves objects undone without any
 * status: keep threads_omp_of_n_kvl at 1 in a program that makes its own teams.
 */
#ifndef KVLM_H
#define KVLM_H

/** The version of this header: major and minor are those of the library's soname, the patch counts what was mended. */
#define KVLM_VERSION_MAJOR  5
#define KVLM_VERSION_MINOR  2
#define KVLM_VERSION_PATCH  0
#define KVLM_VERSION_STRING "5.2.0"
/** The version as one number, for comparisons: 50200 */
#define KVLM_VERSION (KVLM_VERSION_MAJOR * 10000 + KVLM_VERSION_MINOR * 100 + KVLM_VERSION_PATCH)

#if defined(__GNUC__)
#define KVLM_API __attribute__((visibility("default")))
#else
#define KVLM_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup kvlm_library Statuses and version
 * What every call returns, and which library this is.
 * @{
 */
/** The result of a call: kvlOk or one of the negative values below. No function returns a positive value. */
typedef int KvlStatus;

/** The values of KvlStatus. They are fixed. */
enum {
    kvlOk = 0,                        /**< Success. */
    kvlErrSmallPivot = -2,            /**< The pivot of a complex 2 x 2 block is too small (general eigenvectors). */
    kvlErrSize = -6,                  /**< A size (width, height, len, widthHeight) is below 1. */
    kvlErrNullPointer = -8,           /**< A pointer argument is null; entries of tables and lists are not looked at. */
    kvlErrZeroDivisor = -10,          /**< A divisor is zero to working precision (QR, homogeneous points). */
    kvlErrNotPositiveDefinite = -179, /**< A pivot of the Cholesky factorisation is not positive. */
    kvlErrStride = -182,              /**< A stride is not a positive multiple of the element size. */
    kvlErrSingular = -195,            /**< The matrix is singular to working precision. */
    kvlErrShift = -202,               /**< A shift is negative or not a multiple of the element size. */
    kvlErrCount = -203,               /**< count is below 1. */
    kvlErrSizeMatch = -204,           /**< The sizes of two operands do not fit together. */
    kvlErrNoConvergence = -205        /**< An iteration reached its limit (eigenproblems). */
};

/** Which library this is. */
typedef struct KvlLibraryVersion {
    int versionMajor;          /**< 5 */
    int versionMinor;          /**< 2 */
    int buildSeries;           /**< first build number */
    int buildNumber;           /**< second build number */
    char targetCode[4];        /**< code of the processor target, "w7" */
    const char *libraryName;   /**< file name and soname of the library */
    const char *versionText;   /**< major and minor as text */
    const char *buildDateText; /**< date of the build as text */
} KvlLibraryVersion;

/** The constant version record: the same pointer at every call, from any thread. Its texts are not the caller's to
 * free. */
KVLM_API const KvlLibraryVersion *kvlmGetLibVersion(void);
/** @} */

/**
 * @defgroup kvlm_add_vectors Add: vectors
 * @ingroup kvlm_sums
 * dst(j) = src1(j) + src2(j), or src(j) + val, rounded once. vc adds one constant, passed by value.
 *
 * Checks: pointers, len, strides (_P: shifts). Always kvlOk after them. dst may overlap a source in any way, and then
 * holds what steps with ascending j leave: one element above src1, each step reads what the one before wrote.
 * @{
 */
KVLM_API KvlStatus kvlmAdd_vv_32f(const float *src1, int src1ElemStride, const float *src2, int src2ElemStride,
                                  float *dst, int dstElemStride, int len);
KVLM_API KvlStatus kvlmAdd_vv_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                    float *const *dst, int dstShift, int len);
KVLM_API KvlStatus kvlmAdd_vv_64f(const double *src1, int src1ElemStride, const double *src2, int src2ElemStride,
                                  double *dst, int dstElemStride, int len);
KVLM_API KvlStatus kvlmAdd_vv_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                    double *const *dst, int dstShift, int len);

KVLM_API KvlStatus kvlmAdd_vc_32f(const float *src, int srcElemStride, float val, float *dst, int dstElemStride,
                                  int len);
KVLM_API KvlStatus kvlmAdd_vc_32f_P(const float *const *src, int srcShift, float val, float *const *dst, int dstShift,
                                    int len);
KVLM_API KvlStatus kvlmAdd_vc_64f(const double *src, int srcElemStride, double val, double *dst, int dstElemStride,
                                  int len);
KVLM_API KvlStatus kvlmAdd_vc_64f_P(const double *const *src, int srcShift, double val, double *const *dst,
                                    int dstShift, int len);
/** @} */

/**
 * @defgroup kvlm_add_vector_arrays Add: arrays of vectors and constants
 * @ingroup kvlm_sums
 * dst(i, j) = A(i, j) + B(i, j), rounded once. Operand v is one vector and c one constant for all objects, va an array
 * of vectors, ca an array of `count` constants, one for each object: val points to them, valStride bytes from one to
 * the next, in the standard and the pointer description; in _L val is a list of pointers to them, with a shift.
 *
 * Checks: pointers (val too where it is one), `count`, len, strides (valStride too), shifts (valShift too); in vav
 * pointers, len, strides, shifts, `count`. Always kvlOk after them. Settled: kvlmAdd_vca_64f_P does not check its
 * shifts, kvlmAdd_vaca_32f_P not its srcObjStride.
 *
 * dst may be an array of vectors among the sources, with the same strides (_P: the same table, shift and object
 * stride); it must not overlap another source. Destination objects that overlap each other hold what objects written
 * one after the other would leave.
 *
 * Team: from 20001 on, 32f in _L 40001; W = len*(2*`count` + 1) of vac and vav, 3*len*`count` of vava, len*(`count` +
 * 1) + `count` of vca, (2*len + 1)*`count` of vaca.
 * @{
 */
KVLM_API KvlStatus kvlmAdd_vac_32f(const float *src, int srcObjStride, int srcElemStride, float val, float *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vac_32f_P(const float *const *src, int srcShift, int srcObjStride, float val,
                                     float *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vac_32f_L(const float *const *src, int srcShift, int srcElemStride, float val,
                                     float *const *dst, int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vac_64f(const double *src, int srcObjStride, int srcElemStride, double val, double *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vac_64f_P(const double *const *src, int srcShift, int srcObjStride, double val,
                                     double *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vac_64f_L(const double *const *src, int srcShift, int srcElemStride, double val,
                                     double *const *dst, int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmAdd_vav_32f(const float *src1, int src1ObjStride, int src1ElemStride, const float *src2,
                                   int src2ElemStride, float *dst, int dstObjStride, int dstElemStride, int len,
                                   int count);
KVLM_API KvlStatus kvlmAdd_vav_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                     const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                     int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vav_32f_L(const float *const *src1, int src1Shift, int src1ElemStride, const float *src2,
                                     int src2ElemStride, float *const *dst, int dstShift, int dstElemStride, int len,
                                     int count);
KVLM_API KvlStatus kvlmAdd_vav_64f(const double *src1, int src1ObjStride, int src1ElemStride, const double *src2,
                                   int src2ElemStride, double *dst, int dstObjStride, int dstElemStride, int len,
                                   int count);
KVLM_API KvlStatus kvlmAdd_vav_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                     const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                     int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vav_64f_L(const double *const *src1, int src1Shift, int src1ElemStride, const double *src2,
                                     int src2ElemStride, double *const *dst, int dstShift, int dstElemStride, int len,
                                     int count);

KVLM_API KvlStatus kvlmAdd_vava_32f(const float *src1, int src1ObjStride, int src1ElemStride, const float *src2,
                                    int src2ObjStride, int src2ElemStride, float *dst, int dstObjStride,
                                    int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vava_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                      const float *const *src2, int src2Shift, int src2ObjStride, float *const *dst,
                                      int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vava_32f_L(const float *const *src1, int src1Shift, int src1ElemStride,
                                      const float *const *src2, int src2Shift, int src2ElemStride, float *const *dst,
                                      int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vava_64f(const double *src1, int src1ObjStride, int src1ElemStride, const double *src2,
                                    int src2ObjStride, int src2ElemStride, double *dst, int dstObjStride,
                                    int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vava_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                      const double *const *src2, int src2Shift, int src2ObjStride, double *const *dst,
                                      int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vava_64f_L(const double *const *src1, int src1Shift, int src1ElemStride,
                                      const double *const *src2, int src2Shift, int src2ElemStride, double *const *dst,
                                      int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmAdd_vca_32f(const float *src, int srcElemStride, const float *val, int valStride, float *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vca_32f_P(const float *const *src, int srcShift, const float *val, int valStride,
                                     float *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vca_32f_L(const float *src, int srcElemStride, const float *const *val, int valShift,
                                     float *const *dst, int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vca_64f(const double *src, int srcElemStride, const double *val, int valStride, double *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vca_64f_P(const double *const *src, int srcShift, const double *val, int valStride,
                                     double *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vca_64f_L(const double *src, int srcElemStride, const double *const *val, int valShift,
                                     double *const *dst, int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmAdd_vaca_32f(const float *src, int srcObjStride, int srcElemStride, const float *val,
                                    int valStride, float *dst, int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmAdd_vaca_32f_P(const float *const *src, int srcShift, int srcObjStride, const float *val,
                                      int valStride, float *const *dst, int dstShift, int dstObjStride, int len,
                                      int count);
KVLM_API KvlStatus kvlmAdd_vaca_32f_L(const float *const *src, int srcShift, int srcElemStride, const float *const *val,
                                      int valShift, float *const *dst, int dstShift, int dstElemStride, int len,
                                      int count);
KVLM_API KvlStatus kvlmAdd_vaca_64f(const double *src, int srcObjStride, int srcElemStride, const double *val,
                                    int valStride, double *dst, int dstObjStride, int dstElemStride, int len,
                                    int count);
KVLM_API KvlStatus kvlmAdd_vaca_64f_P(const double *const *src, int srcShift, int srcObjStride, const double *val,
                                      int valStride, double *const *dst, int dstShift, int dstObjStride, int len,
                                      int count);
KVLM_API KvlStatus kvlmAdd_vaca_64f_L(const double *const *src, int srcShift, int srcElemStride,
                                      const double *const *val, int valShift, double *const *dst, int dstShift,
                                      int dstElemStride, int len, int count);
/** @} */

/**
 * @defgroup kvlm_add_matrices Add: one matrix and one matrix
 * @ingroup kvlm_sums
 * dst(r, c) = A(r, c) + B(r, c), A being src1 and B src2, each read as its letter says. Rounded once. There is no mt
 * form: exchange the operands of tm.
 *
 * Checks: pointers, sizes, strides (_P: shifts). Always kvlOk after them: nothing is refused, infinities and NaN are
 * ordinary elements. dst may be a source of letter m with the same strides.
 * @{
 */
KVLM_API KvlStatus kvlmAdd_mm_32f(const float *src1, int src1RowStride, int src1ElemStride, const float *src2,
                                  int src2RowStride, int src2ElemStride, float *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmAdd_mm_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                    float *const *dst, int dstShift, int width, int height);
KVLM_API KvlStatus kvlmAdd_mm_64f(const double *src1, int src1RowStride, int src1ElemStride, const double *src2,
                                  int src2RowStride, int src2ElemStride, double *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmAdd_mm_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                    double *const *dst, int dstShift, int width, int height);

KVLM_API KvlStatus kvlmAdd_tm_32f(const float *src1, int src1RowStride, int src1ElemStride, const float *src2,
                                  int src2RowStride, int src2ElemStride, float *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmAdd_tm_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                    float *const *dst, int dstShift, int width, int height);
KVLM_API KvlStatus kvlmAdd_tm_64f(const double *src1, int src1RowStride, int src1ElemStride, const double *src2,
                                  int src2RowStride, int src2ElemStride, double *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmAdd_tm_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                    double *const *dst, int dstShift, int width, int height);

KVLM_API KvlStatus kvlmAdd_tt_32f(const float *src1, int src1RowStride, int src1ElemStride, const float *src2,
                                  int src2RowStride, int src2ElemStride, float *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmAdd_tt_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                    float *const *dst, int dstShift, int width, int height);
KVLM_API KvlStatus kvlmAdd_tt_64f(const double *src1, int src1RowStride, int src1ElemStride, const double *src2,
                                  int src2RowStride, int src2ElemStride, double *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmAdd_tt_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                    double *const *dst, int dstShift, int width, int height);
/** @} */

/**
 * @defgroup kvlm_add_array_matrix Add: an array of matrices and one matrix
 * @ingroup kvlm_sums
 * dst(i, r, c) = A(i, r, c) + B(r, c), A being src1 and B src2, each read as its letter says. Rounded once.
 *
 * Checks: pointers, count, sizes, strides, shifts; in the standard mam forms pointers, count, strides, sizes. Always
 * kvlOk after them. dst may be src1 where that is ma, with the same strides (_P: the same table, shift and object
 * stride); it must not overlap src2. Destination objects that overlap each other hold what objects written one after
 * the other would leave.
 *
 * Team: from 36864 on, other strides and _L 18432, _P 9216; W = width*height*(2*`count` + 1).
 * @{
 */
KVLM_API KvlStatus kvlmAdd_mam_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const float *src2, int src2RowStride, int src2ElemStride, float *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmAdd_mam_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                     const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_mam_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const float *src2, int src2RowStride, int src2ElemStride, float *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmAdd_mam_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const double *src2, int src2RowStride, int src2ElemStride, double *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmAdd_mam_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                     const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_mam_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const double *src2, int src2RowStride, int src2ElemStride, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);

KVLM_API KvlStatus kvlmAdd_tam_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const float *src2, int src2RowStride, int src2ElemStride, float *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmAdd_tam_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                     const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_tam_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const float *src2, int src2RowStride, int src2ElemStride, float *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmAdd_tam_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const double *src2, int src2RowStride, int src2ElemStride, double *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmAdd_tam_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                     const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_tam_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const double *src2, int src2RowStride, int src2ElemStride, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);

KVLM_API KvlStatus kvlmAdd_mat_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const float *src2, int src2RowStride, int src2ElemStride, float *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmAdd_mat_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                     const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_mat_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const float *src2, int src2RowStride, int src2ElemStride, float *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmAdd_mat_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const double *src2, int src2RowStride, int src2ElemStride, double *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmAdd_mat_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                     const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_mat_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const double *src2, int src2RowStride, int src2ElemStride, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);

KVLM_API KvlStatus kvlmAdd_tat_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const float *src2, int src2RowStride, int src2ElemStride, float *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmAdd_tat_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                     const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_tat_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const float *src2, int src2RowStride, int src2ElemStride, float *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmAdd_tat_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const double *src2, int src2RowStride, int src2ElemStride, double *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmAdd_tat_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                     const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_tat_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const double *src2, int src2RowStride, int src2ElemStride, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
/** @} */

/**
 * @defgroup kvlm_add_arrays Add: an array of matrices and an array of matrices
 * @ingroup kvlm_sums
 * dst(i, r, c) = A(i, r, c) + B(i, r, c), A being src1 and B src2, each read as its letter says. Rounded once. There is
 * no mata form: exchange the operands of tama.
 *
 * Checks: pointers, count, sizes, strides, shifts. Always kvlOk after them. dst may be a source of letters ma with the
 * same strides (_P: the same table, shift and object stride).
 *
 * Team: from 36864 on, other strides and _L 18432, _P 9216; W = 3*width*height*`count`.
 * @{
 */
KVLM_API KvlStatus kvlmAdd_mama_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const float *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    float *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmAdd_mama_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                      const float *const *src2, int src2Shift, int src2ObjStride, float *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_mama_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const float *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmAdd_mama_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const double *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    double *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmAdd_mama_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                      const double *const *src2, int src2Shift, int src2ObjStride, double *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_mama_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const double *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);

KVLM_API KvlStatus kvlmAdd_tama_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const float *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    float *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmAdd_tama_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                      const float *const *src2, int src2Shift, int src2ObjStride, float *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_tama_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const float *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmAdd_tama_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const double *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    double *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmAdd_tama_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                      const double *const *src2, int src2Shift, int src2ObjStride, double *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_tama_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const double *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);

KVLM_API KvlStatus kvlmAdd_tata_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const float *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    float *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmAdd_tata_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                      const float *const *src2, int src2Shift, int src2ObjStride, float *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_tata_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const float *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmAdd_tata_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const double *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    double *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmAdd_tata_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                      const double *const *src2, int src2Shift, int src2ObjStride, double *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmAdd_tata_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const double *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
/** @} */

/**
 * @defgroup kvlm_sub_vectors Sub: vectors
 * @ingroup kvlm_sums
 * dst(j) = src1(j) - src2(j), src(j) - val (vc) or val - src(j) (cv), rounded once. In cv the vector stands before the
 * constant all the same; it is the difference itself, not that of vc negated (a zero keeps its sign).
 *
 * Checks, statuses and overlap as in Add of vectors.
 * @{
 */
KVLM_API KvlStatus kvlmSub_vv_32f(const float *src1, int src1ElemStride, const float *src2, int src2ElemStride,
                                  float *dst, int dstElemStride, int len);
KVLM_API KvlStatus kvlmSub_vv_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                    float *const *dst, int dstShift, int len);
KVLM_API KvlStatus kvlmSub_vv_64f(const double *src1, int src1ElemStride, const double *src2, int src2ElemStride,
                                  double *dst, int dstElemStride, int len);
KVLM_API KvlStatus kvlmSub_vv_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                    double *const *dst, int dstShift, int len);

KVLM_API KvlStatus kvlmSub_vc_32f(const float *src, int srcElemStride, float val, float *dst, int dstElemStride,
                                  int len);
KVLM_API KvlStatus kvlmSub_vc_32f_P(const float *const *src, int srcShift, float val, float *const *dst, int dstShift,
                                    int len);
KVLM_API KvlStatus kvlmSub_vc_64f(const double *src, int srcElemStride, double val, double *dst, int dstElemStride,
                                  int len);
KVLM_API KvlStatus kvlmSub_vc_64f_P(const double *const *src, int srcShift, double val, double *const *dst,
                                    int dstShift, int len);

KVLM_API KvlStatus kvlmSub_cv_32f(const float *src, int srcElemStride, float val, float *dst, int dstElemStride,
                                  int len);
KVLM_API KvlStatus kvlmSub_cv_32f_P(const float *const *src, int srcShift, float val, float *const *dst, int dstShift,
                                    int len);
KVLM_API KvlStatus kvlmSub_cv_64f(const double *src, int srcElemStride, double val, double *dst, int dstElemStride,
                                  int len);
KVLM_API KvlStatus kvlmSub_cv_64f_P(const double *const *src, int srcShift, double val, double *const *dst,
                                    int dstShift, int len);
/** @} */

/**
 * @defgroup kvlm_sub_vector_arrays Sub: arrays of vectors and constants
 * @ingroup kvlm_sums
 * dst(i, j) = A(i, j) - B(i, j), rounded once, the operands in the order of the letters and each as in Add of arrays of
 * vectors and constants. In the arguments a vector always stands before the constants: in cva, cav and cava it is the
 * second operand all the same.
 *
 * Checks as there, vav included. Settled: kvlmSub_cav_32f_P does not check its shifts; kvlmSub_vva_64f_P stays on the
 * caller's thread; cva goes to the team by its count alone, however long the vectors are. Statuses and aliasing as
 * there.
 *
 * Team: from 20001 on, 32f in _L 40001; W = len*(2*`count` + 1) of vac and vav, 3*len*`count` of vava, len*(`count` +
 * 1) + `count` of vca, (2*len + 1)*`count` of vaca, likewise with the operands in the other order, but settled:
 * 2*`count` + 1 of cva, and kvlmSub_vva_64f_P never.
 * @{
 */
KVLM_API KvlStatus kvlmSub_vac_32f(const float *src, int srcObjStride, int srcElemStride, float val, float *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vac_32f_P(const float *const *src, int srcShift, int srcObjStride, float val,
                                     float *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vac_32f_L(const float *const *src, int srcShift, int srcElemStride, float val,
                                     float *const *dst, int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vac_64f(const double *src, int srcObjStride, int srcElemStride, double val, double *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vac_64f_P(const double *const *src, int srcShift, int srcObjStride, double val,
                                     double *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vac_64f_L(const double *const *src, int srcShift, int srcElemStride, double val,
                                     double *const *dst, int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmSub_cva_32f(const float *src, int srcObjStride, int srcElemStride, float val, float *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_cva_32f_P(const float *const *src, int srcShift, int srcObjStride, float val,
                                     float *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSub_cva_32f_L(const float *const *src, int srcShift, int srcElemStride, float val,
                                     float *const *dst, int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_cva_64f(const double *src, int srcObjStride, int srcElemStride, double val, double *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_cva_64f_P(const double *const *src, int srcShift, int srcObjStride, double val,
                                     double *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSub_cva_64f_L(const double *const *src, int srcShift, int srcElemStride, double val,
                                     double *const *dst, int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmSub_vav_32f(const float *src1, int src1ObjStride, int src1ElemStride, const float *src2,
                                   int src2ElemStride, float *dst, int dstObjStride, int dstElemStride, int len,
                                   int count);
KVLM_API KvlStatus kvlmSub_vav_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                     const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                     int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vav_32f_L(const float *const *src1, int src1Shift, int src1ElemStride, const float *src2,
                                     int src2ElemStride, float *const *dst, int dstShift, int dstElemStride, int len,
                                     int count);
KVLM_API KvlStatus kvlmSub_vav_64f(const double *src1, int src1ObjStride, int src1ElemStride, const double *src2,
                                   int src2ElemStride, double *dst, int dstObjStride, int dstElemStride, int len,
                                   int count);
KVLM_API KvlStatus kvlmSub_vav_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                     const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                     int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vav_64f_L(const double *const *src1, int src1Shift, int src1ElemStride, const double *src2,
                                     int src2ElemStride, double *const *dst, int dstShift, int dstElemStride, int len,
                                     int count);

KVLM_API KvlStatus kvlmSub_vva_32f(const float *src1, int src1ElemStride, const float *src2, int src2ObjStride,
                                   int src2ElemStride, float *dst, int dstObjStride, int dstElemStride, int len,
                                   int count);
KVLM_API KvlStatus kvlmSub_vva_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                     int src2ObjStride, float *const *dst, int dstShift, int dstObjStride, int len,
                                     int count);
KVLM_API KvlStatus kvlmSub_vva_32f_L(const float *src1, int src1ElemStride, const float *const *src2, int src2Shift,
                                     int src2ElemStride, float *const *dst, int dstShift, int dstElemStride, int len,
                                     int count);
KVLM_API KvlStatus kvlmSub_vva_64f(const double *src1, int src1ElemStride, const double *src2, int src2ObjStride,
                                   int src2ElemStride, double *dst, int dstObjStride, int dstElemStride, int len,
                                   int count);
KVLM_API KvlStatus kvlmSub_vva_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                     int src2ObjStride, double *const *dst, int dstShift, int dstObjStride, int len,
                                     int count);
KVLM_API KvlStatus kvlmSub_vva_64f_L(const double *src1, int src1ElemStride, const double *const *src2, int src2Shift,
                                     int src2ElemStride, double *const *dst, int dstShift, int dstElemStride, int len,
                                     int count);

KVLM_API KvlStatus kvlmSub_vava_32f(const float *src1, int src1ObjStride, int src1ElemStride, const float *src2,
                                    int src2ObjStride, int src2ElemStride, float *dst, int dstObjStride,
                                    int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vava_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                      const float *const *src2, int src2Shift, int src2ObjStride, float *const *dst,
                                      int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vava_32f_L(const float *const *src1, int src1Shift, int src1ElemStride,
                                      const float *const *src2, int src2Shift, int src2ElemStride, float *const *dst,
                                      int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vava_64f(const double *src1, int src1ObjStride, int src1ElemStride, const double *src2,
                                    int src2ObjStride, int src2ElemStride, double *dst, int dstObjStride,
                                    int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vava_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                      const double *const *src2, int src2Shift, int src2ObjStride, double *const *dst,
                                      int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vava_64f_L(const double *const *src1, int src1Shift, int src1ElemStride,
                                      const double *const *src2, int src2Shift, int src2ElemStride, double *const *dst,
                                      int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmSub_vca_32f(const float *src, int srcElemStride, const float *val, int valStride, float *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vca_32f_P(const float *const *src, int srcShift, const float *val, int valStride,
                                     float *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vca_32f_L(const float *src, int srcElemStride, const float *const *val, int valShift,
                                     float *const *dst, int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vca_64f(const double *src, int srcElemStride, const double *val, int valStride, double *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vca_64f_P(const double *const *src, int srcShift, const double *val, int valStride,
                                     double *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vca_64f_L(const double *src, int srcElemStride, const double *const *val, int valShift,
                                     double *const *dst, int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmSub_cav_32f(const float *src, int srcElemStride, const float *val, int valStride, float *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_cav_32f_P(const float *const *src, int srcShift, const float *val, int valStride,
                                     float *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSub_cav_32f_L(const float *src, int srcElemStride, const float *const *val, int valShift,
                                     float *const *dst, int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_cav_64f(const double *src, int srcElemStride, const double *val, int valStride, double *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_cav_64f_P(const double *const *src, int srcShift, const double *val, int valStride,
                                     double *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSub_cav_64f_L(const double *src, int srcElemStride, const double *const *val, int valShift,
                                     double *const *dst, int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmSub_vaca_32f(const float *src, int srcObjStride, int srcElemStride, const float *val,
                                    int valStride, float *dst, int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_vaca_32f_P(const float *const *src, int srcShift, int srcObjStride, const float *val,
                                      int valStride, float *const *dst, int dstShift, int dstObjStride, int len,
                                      int count);
KVLM_API KvlStatus kvlmSub_vaca_32f_L(const float *const *src, int srcShift, int srcElemStride, const float *const *val,
                                      int valShift, float *const *dst, int dstShift, int dstElemStride, int len,
                                      int count);
KVLM_API KvlStatus kvlmSub_vaca_64f(const double *src, int srcObjStride, int srcElemStride, const double *val,
                                    int valStride, double *dst, int dstObjStride, int dstElemStride, int len,
                                    int count);
KVLM_API KvlStatus kvlmSub_vaca_64f_P(const double *const *src, int srcShift, int srcObjStride, const double *val,
                                      int valStride, double *const *dst, int dstShift, int dstObjStride, int len,
                                      int count);
KVLM_API KvlStatus kvlmSub_vaca_64f_L(const double *const *src, int srcShift, int srcElemStride,
                                      const double *const *val, int valShift, double *const *dst, int dstShift,
                                      int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmSub_cava_32f(const float *src, int srcObjStride, int srcElemStride, const float *val,
                                    int valStride, float *dst, int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSub_cava_32f_P(const float *const *src, int srcShift, int srcObjStride, const float *val,
                                      int valStride, float *const *dst, int dstShift, int dstObjStride, int len,
                                      int count);
KVLM_API KvlStatus kvlmSub_cava_32f_L(const float *const *src, int srcShift, int srcElemStride, const float *const *val,
                                      int valShift, float *const *dst, int dstShift, int dstElemStride, int len,
                                      int count);
KVLM_API KvlStatus kvlmSub_cava_64f(const double *src, int srcObjStride, int srcElemStride, const double *val,
                                    int valStride, double *dst, int dstObjStride, int dstElemStride, int len,
                                    int count);
KVLM_API KvlStatus kvlmSub_cava_64f_P(const double *const *src, int srcShift, int srcObjStride, const double *val,
                                      int valStride, double *const *dst, int dstShift, int dstObjStride, int len,
                                      int count);
KVLM_API KvlStatus kvlmSub_cava_64f_L(const double *const *src, int srcShift, int srcElemStride,
                                      const double *const *val, int valShift, double *const *dst, int dstShift,
                                      int dstElemStride, int len, int count);
/** @} */

/**
 * @defgroup kvlm_sub_matrices Sub: one matrix minus one matrix
 * @ingroup kvlm_sums
 * dst(r, c) = A(r, c) - B(r, c), A being src1 and B src2, each read as its letter says. Rounded once.
 *
 * Checks, statuses and aliasing as in Add of one matrix and one matrix.
 * @{
 */
KVLM_API KvlStatus kvlmSub_mm_32f(const float *src1, int src1RowStride, int src1ElemStride, const float *src2,
                                  int src2RowStride, int src2ElemStride, float *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmSub_mm_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                    float *const *dst, int dstShift, int width, int height);
KVLM_API KvlStatus kvlmSub_mm_64f(const double *src1, int src1RowStride, int src1ElemStride, const double *src2,
                                  int src2RowStride, int src2ElemStride, double *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmSub_mm_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                    double *const *dst, int dstShift, int width, int height);

KVLM_API KvlStatus kvlmSub_tm_32f(const float *src1, int src1RowStride, int src1ElemStride, const float *src2,
                                  int src2RowStride, int src2ElemStride, float *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmSub_tm_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                    float *const *dst, int dstShift, int width, int height);
KVLM_API KvlStatus kvlmSub_tm_64f(const double *src1, int src1RowStride, int src1ElemStride, const double *src2,
                                  int src2RowStride, int src2ElemStride, double *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmSub_tm_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                    double *const *dst, int dstShift, int width, int height);

KVLM_API KvlStatus kvlmSub_mt_32f(const float *src1, int src1RowStride, int src1ElemStride, const float *src2,
                                  int src2RowStride, int src2ElemStride, float *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmSub_mt_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                    float *const *dst, int dstShift, int width, int height);
KVLM_API KvlStatus kvlmSub_mt_64f(const double *src1, int src1RowStride, int src1ElemStride, const double *src2,
                                  int src2RowStride, int src2ElemStride, double *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmSub_mt_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                    double *const *dst, int dstShift, int width, int height);

KVLM_API KvlStatus kvlmSub_tt_32f(const float *src1, int src1RowStride, int src1ElemStride, const float *src2,
                                  int src2RowStride, int src2ElemStride, float *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmSub_tt_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                    float *const *dst, int dstShift, int width, int height);
KVLM_API KvlStatus kvlmSub_tt_64f(const double *src1, int src1RowStride, int src1ElemStride, const double *src2,
                                  int src2RowStride, int src2ElemStride, double *dst, int dstRowStride,
                                  int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmSub_tt_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                    double *const *dst, int dstShift, int width, int height);
/** @} */

/**
 * @defgroup kvlm_sub_array_matrix Sub: an array of matrices minus one matrix
 * @ingroup kvlm_sums
 * dst(i, r, c) = A(i, r, c) - B(r, c), A being src1 and B src2, each read as its letter says. Rounded once.
 *
 * Checks (those of mam included), statuses and aliasing as in Add of an array of matrices and one matrix.
 *
 * Team: from 36864 on, other strides and _L 18432, _P 9216; W = width*height*(2*`count` + 1).
 * @{
 */
KVLM_API KvlStatus kvlmSub_mam_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const float *src2, int src2RowStride, int src2ElemStride, float *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_mam_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                     const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_mam_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const float *src2, int src2RowStride, int src2ElemStride, float *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmSub_mam_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const double *src2, int src2RowStride, int src2ElemStride, double *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_mam_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                     const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_mam_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const double *src2, int src2RowStride, int src2ElemStride, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);

KVLM_API KvlStatus kvlmSub_tam_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const float *src2, int src2RowStride, int src2ElemStride, float *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_tam_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                     const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_tam_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const float *src2, int src2RowStride, int src2ElemStride, float *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmSub_tam_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const double *src2, int src2RowStride, int src2ElemStride, double *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_tam_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                     const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_tam_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const double *src2, int src2RowStride, int src2ElemStride, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);

KVLM_API KvlStatus kvlmSub_mat_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const float *src2, int src2RowStride, int src2ElemStride, float *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_mat_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                     const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_mat_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const float *src2, int src2RowStride, int src2ElemStride, float *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmSub_mat_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const double *src2, int src2RowStride, int src2ElemStride, double *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_mat_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                     const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_mat_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const double *src2, int src2RowStride, int src2ElemStride, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);

KVLM_API KvlStatus kvlmSub_tat_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const float *src2, int src2RowStride, int src2ElemStride, float *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_tat_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                     const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_tat_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const float *src2, int src2RowStride, int src2ElemStride, float *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmSub_tat_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   const double *src2, int src2RowStride, int src2ElemStride, double *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_tat_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                     const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                     int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_tat_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     const double *src2, int src2RowStride, int src2ElemStride, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
/** @} */

/**
 * @defgroup kvlm_sub_matrix_array Sub: one matrix minus an array of matrices
 * @ingroup kvlm_sums
 * dst(i, r, c) = A(r, c) - B(i, r, c), A being src1 and B src2, each read as its letter says. Rounded once: the
 * difference itself, not the negated difference of the mirror form (a zero keeps its sign).
 *
 * Checks: pointers, count, sizes, strides, shifts; in the standard mma forms pointers, count, strides, sizes. Statuses
 * and aliasing as in the mirror form, with src1 and src2 exchanged.
 *
 * Team: from 36864 on, other strides and _L 18432, _P 9216; W = width*height*(2*`count` + 1).
 * @{
 */
KVLM_API KvlStatus kvlmSub_mma_32f(const float *src1, int src1RowStride, int src1ElemStride, const float *src2,
                                   int src2ObjStride, int src2RowStride, int src2ElemStride, float *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_mma_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                     int src2ObjStride, float *const *dst, int dstShift, int dstObjStride, int width,
                                     int height, int count);
KVLM_API KvlStatus kvlmSub_mma_32f_L(const float *src1, int src1RowStride, int src1ElemStride, const float *const *src2,
                                     int src2Shift, int src2RowStride, int src2ElemStride, float *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmSub_mma_64f(const double *src1, int src1RowStride, int src1ElemStride, const double *src2,
                                   int src2ObjStride, int src2RowStride, int src2ElemStride, double *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_mma_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                     int src2ObjStride, double *const *dst, int dstShift, int dstObjStride, int width,
                                     int height, int count);
KVLM_API KvlStatus kvlmSub_mma_64f_L(const double *src1, int src1RowStride, int src1ElemStride,
                                     const double *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                     double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                     int height, int count);

KVLM_API KvlStatus kvlmSub_tma_32f(const float *src1, int src1RowStride, int src1ElemStride, const float *src2,
                                   int src2ObjStride, int src2RowStride, int src2ElemStride, float *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_tma_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                     int src2ObjStride, float *const *dst, int dstShift, int dstObjStride, int width,
                                     int height, int count);
KVLM_API KvlStatus kvlmSub_tma_32f_L(const float *src1, int src1RowStride, int src1ElemStride, const float *const *src2,
                                     int src2Shift, int src2RowStride, int src2ElemStride, float *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmSub_tma_64f(const double *src1, int src1RowStride, int src1ElemStride, const double *src2,
                                   int src2ObjStride, int src2RowStride, int src2ElemStride, double *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_tma_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                     int src2ObjStride, double *const *dst, int dstShift, int dstObjStride, int width,
                                     int height, int count);
KVLM_API KvlStatus kvlmSub_tma_64f_L(const double *src1, int src1RowStride, int src1ElemStride,
                                     const double *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                     double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                     int height, int count);

KVLM_API KvlStatus kvlmSub_mta_32f(const float *src1, int src1RowStride, int src1ElemStride, const float *src2,
                                   int src2ObjStride, int src2RowStride, int src2ElemStride, float *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_mta_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                     int src2ObjStride, float *const *dst, int dstShift, int dstObjStride, int width,
                                     int height, int count);
KVLM_API KvlStatus kvlmSub_mta_32f_L(const float *src1, int src1RowStride, int src1ElemStride, const float *const *src2,
                                     int src2Shift, int src2RowStride, int src2ElemStride, float *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmSub_mta_64f(const double *src1, int src1RowStride, int src1ElemStride, const double *src2,
                                   int src2ObjStride, int src2RowStride, int src2ElemStride, double *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_mta_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                     int src2ObjStride, double *const *dst, int dstShift, int dstObjStride, int width,
                                     int height, int count);
KVLM_API KvlStatus kvlmSub_mta_64f_L(const double *src1, int src1RowStride, int src1ElemStride,
                                     const double *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                     double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                     int height, int count);

KVLM_API KvlStatus kvlmSub_tta_32f(const float *src1, int src1RowStride, int src1ElemStride, const float *src2,
                                   int src2ObjStride, int src2RowStride, int src2ElemStride, float *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_tta_32f_P(const float *const *src1, int src1Shift, const float *const *src2, int src2Shift,
                                     int src2ObjStride, float *const *dst, int dstShift, int dstObjStride, int width,
                                     int height, int count);
KVLM_API KvlStatus kvlmSub_tta_32f_L(const float *src1, int src1RowStride, int src1ElemStride, const float *const *src2,
                                     int src2Shift, int src2RowStride, int src2ElemStride, float *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmSub_tta_64f(const double *src1, int src1RowStride, int src1ElemStride, const double *src2,
                                   int src2ObjStride, int src2RowStride, int src2ElemStride, double *dst,
                                   int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                   int count);
KVLM_API KvlStatus kvlmSub_tta_64f_P(const double *const *src1, int src1Shift, const double *const *src2, int src2Shift,
                                     int src2ObjStride, double *const *dst, int dstShift, int dstObjStride, int width,
                                     int height, int count);
KVLM_API KvlStatus kvlmSub_tta_64f_L(const double *src1, int src1RowStride, int src1ElemStride,
                                     const double *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                     double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                     int height, int count);
/** @} */

/**
 * @defgroup kvlm_sub_arrays Sub: an array of matrices minus an array of matrices
 * @ingroup kvlm_sums
 * dst(i, r, c) = A(i, r, c) - B(i, r, c), A being src1 and B src2, each read as its letter says. Rounded once.
 *
 * Checks, statuses and aliasing as in Add of an array and an array.
 *
 * Team: from 36864 on, other strides and _L 18432, _P 9216; W = 3*width*height*`count`.
 * @{
 */
KVLM_API KvlStatus kvlmSub_mama_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const float *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    float *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmSub_mama_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                      const float *const *src2, int src2Shift, int src2ObjStride, float *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_mama_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const float *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmSub_mama_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const double *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    double *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmSub_mama_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                      const double *const *src2, int src2Shift, int src2ObjStride, double *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_mama_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const double *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);

KVLM_API KvlStatus kvlmSub_tama_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const float *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    float *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmSub_tama_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                      const float *const *src2, int src2Shift, int src2ObjStride, float *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_tama_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const float *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmSub_tama_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const double *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    double *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmSub_tama_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                      const double *const *src2, int src2Shift, int src2ObjStride, double *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_tama_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const double *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);

KVLM_API KvlStatus kvlmSub_mata_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const float *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    float *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmSub_mata_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                      const float *const *src2, int src2Shift, int src2ObjStride, float *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_mata_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const float *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmSub_mata_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const double *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    double *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmSub_mata_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                      const double *const *src2, int src2Shift, int src2ObjStride, double *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_mata_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const double *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);

KVLM_API KvlStatus kvlmSub_tata_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const float *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    float *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmSub_tata_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                      const float *const *src2, int src2Shift, int src2ObjStride, float *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_tata_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const float *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmSub_tata_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    const double *src2, int src2ObjStride, int src2RowStride, int src2ElemStride,
                                    double *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                    int height, int count);
KVLM_API KvlStatus kvlmSub_tata_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                      const double *const *src2, int src2Shift, int src2ObjStride, double *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmSub_tata_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      const double *const *src2, int src2Shift, int src2RowStride, int src2ElemStride,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
/** @} */

/**
 * @defgroup kvlm_mul_matrix_constant Mul: matrices by a constant
 * @ingroup kvlm_products
 * dst(r, c) = A(r, c)*val, A being src read as its letter says; one rounded product per element. val is a constant of
 * the element type, passed by value. `width` and `height` are those of dst: a t source has `height` columns and `width`
 * rows.
 *
 * Checks: pointers, `count`, sizes, strides, shifts. Always kvlOk after them. dst may be src, of letter m, with the
 * same strides.
 *
 * Team: from 35001 on, _P 17001, 32f in _L with other strides 15001; W = 2*width*height*`count`.
 * @{
 */
KVLM_API KvlStatus kvlmMul_mc_32f(const float *src, int srcRowStride, int srcElemStride, float val, float *dst,
                                  int dstRowStride, int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmMul_mc_32f_P(const float *const *src, int srcShift, float val, float *const *dst, int dstShift,
                                    int width, int height);
KVLM_API KvlStatus kvlmMul_mc_64f(const double *src, int srcRowStride, int srcElemStride, double val, double *dst,
                                  int dstRowStride, int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmMul_mc_64f_P(const double *const *src, int srcShift, double val, double *const *dst,
                                    int dstShift, int width, int height);

KVLM_API KvlStatus kvlmMul_tc_32f(const float *src, int srcRowStride, int srcElemStride, float val, float *dst,
                                  int dstRowStride, int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmMul_tc_32f_P(const float *const *src, int srcShift, float val, float *const *dst, int dstShift,
                                    int width, int height);
KVLM_API KvlStatus kvlmMul_tc_64f(const double *src, int srcRowStride, int srcElemStride, double val, double *dst,
                                  int dstRowStride, int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmMul_tc_64f_P(const double *const *src, int srcShift, double val, double *const *dst,
                                    int dstShift, int width, int height);

KVLM_API KvlStatus kvlmMul_mac_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride, float val,
                                   float *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                   int height, int count);
KVLM_API KvlStatus kvlmMul_mac_32f_P(const float *const *src, int srcShift, int srcObjStride, float val,
                                     float *const *dst, int dstShift, int dstObjStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmMul_mac_32f_L(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                     float val, float *const *dst, int dstShift, int dstRowStride, int dstElemStride,
                                     int width, int height, int count);
KVLM_API KvlStatus kvlmMul_mac_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride, double val,
                                   double *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                   int height, int count);
KVLM_API KvlStatus kvlmMul_mac_64f_P(const double *const *src, int srcShift, int srcObjStride, double val,
                                     double *const *dst, int dstShift, int dstObjStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmMul_mac_64f_L(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                     double val, double *const *dst, int dstShift, int dstRowStride, int dstElemStride,
                                     int width, int height, int count);

KVLM_API KvlStatus kvlmMul_tac_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride, float val,
                                   float *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                   int height, int count);
KVLM_API KvlStatus kvlmMul_tac_32f_P(const float *const *src, int srcShift, int srcObjStride, float val,
                                     float *const *dst, int dstShift, int dstObjStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmMul_tac_32f_L(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                     float val, float *const *dst, int dstShift, int dstRowStride, int dstElemStride,
                                     int width, int height, int count);
KVLM_API KvlStatus kvlmMul_tac_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride, double val,
                                   double *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                   int height, int count);
KVLM_API KvlStatus kvlmMul_tac_64f_P(const double *const *src, int srcShift, int srcObjStride, double val,
                                     double *const *dst, int dstShift, int dstObjStride, int width, int height,
                                     int count);
KVLM_API KvlStatus kvlmMul_tac_64f_L(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                     double val, double *const *dst, int dstShift, int dstRowStride, int dstElemStride,
                                     int width, int height, int count);
/** @} */

/**
 * @defgroup kvlm_mul_vector_constant Mul: vectors by constants
 * @ingroup kvlm_products
 * dst(j) = src(j)*val, or dst[i](j) = src[i](j)*val[i]: c is one constant by value, ca an array of `count` constants.
 * val is then a pointer to them with valStride bytes from one to the next, in the standard and the pointer description;
 * in _L a list of pointers to them with a shift. One rounded product per element.
 *
 * Checks: pointers (val too where it is one), `count`, len, strides (valStride too), shifts (valShift too). Always
 * kvlOk after them. dst may be src, an array if dst is one, with the same strides.
 *
 * Team: from 36865 on, _L 18433, _P 9217, vac with other strides 18433; settled: vac at 32f from 7 on, nearly always. W
 * = the elements of src and dst, and of val where it is an array.
 * @{
 */
KVLM_API KvlStatus kvlmMul_vc_32f(const float *src, int srcElemStride, float val, float *dst, int dstElemStride,
                                  int len);
KVLM_API KvlStatus kvlmMul_vc_32f_P(const float *const *src, int srcShift, float val, float *const *dst, int dstShift,
                                    int len);
KVLM_API KvlStatus kvlmMul_vc_64f(const double *src, int srcElemStride, double val, double *dst, int dstElemStride,
                                  int len);
KVLM_API KvlStatus kvlmMul_vc_64f_P(const double *const *src, int srcShift, double val, double *const *dst,
                                    int dstShift, int len);

KVLM_API KvlStatus kvlmMul_vac_32f(const float *src, int srcObjStride, int srcElemStride, float val, float *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmMul_vac_32f_P(const float *const *src, int srcShift, int srcObjStride, float val,
                                     float *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmMul_vac_32f_L(const float *const *src, int srcShift, int srcElemStride, float val,
                                     float *const *dst, int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmMul_vac_64f(const double *src, int srcObjStride, int srcElemStride, double val, double *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmMul_vac_64f_P(const double *const *src, int srcShift, int srcObjStride, double val,
                                     double *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmMul_vac_64f_L(const double *const *src, int srcShift, int srcElemStride, double val,
                                     double *const *dst, int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmMul_vca_32f(const float *src, int srcElemStride, const float *val, int valStride, float *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmMul_vca_32f_P(const float *const *src, int srcShift, const float *val, int valStride,
                                     float *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmMul_vca_32f_L(const float *src, int srcElemStride, const float *const *val, int valShift,
                                     float *const *dst, int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmMul_vca_64f(const double *src, int srcElemStride, const double *val, int valStride, double *dst,
                                   int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmMul_vca_64f_P(const double *const *src, int srcShift, const double *val, int valStride,
                                     double *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmMul_vca_64f_L(const double *src, int srcElemStride, const double *const *val, int valShift,
                                     double *const *dst, int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmMul_vaca_32f(const float *src, int srcObjStride, int srcElemStride, const float *val,
                                    int valStride, float *dst, int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmMul_vaca_32f_P(const float *const *src, int srcShift, int srcObjStride, const float *val,
                                      int valStride, float *const *dst, int dstShift, int dstObjStride, int len,
                                      int count);
KVLM_API KvlStatus kvlmMul_vaca_32f_L(const float *const *src, int srcShift, int srcElemStride, const float *const *val,
                                      int valShift, float *const *dst, int dstShift, int dstElemStride, int len,
                                      int count);
KVLM_API KvlStatus kvlmMul_vaca_64f(const double *src, int srcObjStride, int srcElemStride, const double *val,
                                    int valStride, double *dst, int dstObjStride, int dstElemStride, int len,
                                    int count);
KVLM_API KvlStatus kvlmMul_vaca_64f_P(const double *const *src, int srcShift, int srcObjStride, const double *val,
                                      int valStride, double *const *dst, int dstShift, int dstObjStride, int len,
                                      int count);
KVLM_API KvlStatus kvlmMul_vaca_64f_L(const double *const *src, int srcShift, int srcElemStride,
                                      const double *const *val, int valShift, double *const *dst, int dstShift,
                                      int dstElemStride, int len, int count);
/** @} */

/**
 * @defgroup kvlm_mul_matrix_vector Mul: matrices by vectors
 * @ingroup kvlm_products
 * dst(i) = sum over k of A(i, k)*x(k), A being src1 read as its letter says and x being src2. `width` and `height` are
 * the columns and rows of src1 as it is stored; `len` is the length of src2, which must be `width` for m and `height`
 * for t. dst has the other length.
 *
 * Products are rounded, then added in a fixed order. It is ((p0 + p1) + p2) + ... from left to right, beginning with +0
 * but in square matrices of order 3 to 6, with these exceptions for adjacent elements (standard and _L) of square
 * matrices of order 4, 5, 6:
 *
 * - mv, mva, mav, mava at 64f, and tav at 64f in _L: (p0+p1)+(p2+p3); ((p0+p1)+(p2+p3))+p4; ((p0+p1)+(p2+p3))+(p4+p5).
 * - mva (not in _L), mav, mava at 32f: (p0+p2)+(p1+p3); ((p0+p1)+p4)+(p2+p3) in the first four rows and
 *   ((p0+p2)+p4)+(p1+p3) in the fifth; ((p0+p2)+p4)+((p1+p3)+p5).
 * - tav, tava at 32f: (p0+p1)+(p2+p3); ((p0+p1)+p4)+(p2+p3); ((p0+p1)+(p2+p3))+(p4+p5).
 *
 * Settled: mava at 32f in _L is among the second of these, mva at 32f in _L is not. And kvlmMul_mva_32f with adjacent
 * elements has, for all other sizes, sums in eight lanes of long rows: of 8 elements or more where both vectors, the
 * matrix and their strides are multiples of 16 bytes, else of 11 or more, begun where the vector reaches a multiple of
 * 16 bytes. Results may then depend on the alignment of the operands. For the same bits everywhere use another form.
 *
 * Checks: pointers, `count`, sizes, that they match (kvlErrSizeMatch), strides, shifts. Always kvlOk after them. dst
 * must overlap neither source.
 *
 * Team: 32f from 7 on, nearly always; 64f from 36865 on, other strides and _L 18433, _P 9217; W = the elements of both
 * sources and of dst. Source: Golub and Van Loan, Matrix Computations, 1.1.
 * @{
 */
KVLM_API KvlStatus kvlmMul_mv_32f(const float *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                  const float *src2, int src2ElemStride, int len, float *dst, int dstElemStride);
KVLM_API KvlStatus kvlmMul_mv_32f_P(const float *const *src1, int src1Shift, int width, int height,
                                    const float *const *src2, int src2Shift, int len, float *const *dst, int dstShift);
KVLM_API KvlStatus kvlmMul_mv_64f(const double *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                  const double *src2, int src2ElemStride, int len, double *dst, int dstElemStride);
KVLM_API KvlStatus kvlmMul_mv_64f_P(const double *const *src1, int src1Shift, int width, int height,
                                    const double *const *src2, int src2Shift, int len, double *const *dst,
                                    int dstShift);

KVLM_API KvlStatus kvlmMul_tv_32f(const float *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                  const float *src2, int src2ElemStride, int len, float *dst, int dstElemStride);
KVLM_API KvlStatus kvlmMul_tv_32f_P(const float *const *src1, int src1Shift, int width, int height,
                                    const float *const *src2, int src2Shift, int len, float *const *dst, int dstShift);
KVLM_API KvlStatus kvlmMul_tv_64f(const double *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                  const double *src2, int src2ElemStride, int len, double *dst, int dstElemStride);
KVLM_API KvlStatus kvlmMul_tv_64f_P(const double *const *src1, int src1Shift, int width, int height,
                                    const double *const *src2, int src2Shift, int len, double *const *dst,
                                    int dstShift);

KVLM_API KvlStatus kvlmMul_mva_32f(const float *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                   const float *src2, int src2ObjStride, int src2ElemStride, int len, float *dst,
                                   int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mva_32f_P(const float *const *src1, int src1Shift, int width, int height,
                                     const float *const *src2, int src2Shift, int src2ObjStride, int len,
                                     float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mva_32f_L(const float *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                     const float *const *src2, int src2Shift, int src2ElemStride, int len,
                                     float *const *dst, int dstShift, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mva_64f(const double *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                   const double *src2, int src2ObjStride, int src2ElemStride, int len, double *dst,
                                   int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mva_64f_P(const double *const *src1, int src1Shift, int width, int height,
                                     const double *const *src2, int src2Shift, int src2ObjStride, int len,
                                     double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mva_64f_L(const double *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                     const double *const *src2, int src2Shift, int src2ElemStride, int len,
                                     double *const *dst, int dstShift, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_tva_32f(const float *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                   const float *src2, int src2ObjStride, int src2ElemStride, int len, float *dst,
                                   int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tva_32f_P(const float *const *src1, int src1Shift, int width, int height,
                                     const float *const *src2, int src2Shift, int src2ObjStride, int len,
                                     float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tva_32f_L(const float *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                     const float *const *src2, int src2Shift, int src2ElemStride, int len,
                                     float *const *dst, int dstShift, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tva_64f(const double *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                   const double *src2, int src2ObjStride, int src2ElemStride, int len, double *dst,
                                   int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tva_64f_P(const double *const *src1, int src1Shift, int width, int height,
                                     const double *const *src2, int src2Shift, int src2ObjStride, int len,
                                     double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tva_64f_L(const double *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                     const double *const *src2, int src2Shift, int src2ElemStride, int len,
                                     double *const *dst, int dstShift, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_mav_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   int width, int height, const float *src2, int src2ElemStride, int len, float *dst,
                                   int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mav_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, int width, int height,
                                     const float *const *src2, int src2Shift, int len, float *const *dst, int dstShift,
                                     int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mav_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     int width, int height, const float *src2, int src2ElemStride, int len,
                                     float *const *dst, int dstShift, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mav_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   int width, int height, const double *src2, int src2ElemStride, int len, double *dst,
                                   int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mav_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, int width, int height,
                                     const double *const *src2, int src2Shift, int len, double *const *dst,
                                     int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mav_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     int width, int height, const double *src2, int src2ElemStride, int len,
                                     double *const *dst, int dstShift, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_tav_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   int width, int height, const float *src2, int src2ElemStride, int len, float *dst,
                                   int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tav_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, int width, int height,
                                     const float *const *src2, int src2Shift, int len, float *const *dst, int dstShift,
                                     int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tav_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     int width, int height, const float *src2, int src2ElemStride, int len,
                                     float *const *dst, int dstShift, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tav_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   int width, int height, const double *src2, int src2ElemStride, int len, double *dst,
                                   int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tav_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, int width, int height,
                                     const double *const *src2, int src2Shift, int len, double *const *dst,
                                     int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tav_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     int width, int height, const double *src2, int src2ElemStride, int len,
                                     double *const *dst, int dstShift, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_mava_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    int width, int height, const float *src2, int src2ObjStride, int src2ElemStride,
                                    int len, float *dst, int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mava_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, int width, int height,
                                      const float *const *src2, int src2Shift, int src2ObjStride, int len,
                                      float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mava_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      int width, int height, const float *const *src2, int src2Shift,
                                      int src2ElemStride, int len, float *const *dst, int dstShift, int dstElemStride,
                                      int count);
KVLM_API KvlStatus kvlmMul_mava_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    int width, int height, const double *src2, int src2ObjStride, int src2ElemStride,
                                    int len, double *dst, int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mava_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, int width,
                                      int height, const double *const *src2, int src2Shift, int src2ObjStride, int len,
                                      double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mava_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      int width, int height, const double *const *src2, int src2Shift,
                                      int src2ElemStride, int len, double *const *dst, int dstShift, int dstElemStride,
                                      int count);

KVLM_API KvlStatus kvlmMul_tava_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    int width, int height, const float *src2, int src2ObjStride, int src2ElemStride,
                                    int len, float *dst, int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tava_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, int width, int height,
                                      const float *const *src2, int src2Shift, int src2ObjStride, int len,
                                      float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tava_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      int width, int height, const float *const *src2, int src2Shift,
                                      int src2ElemStride, int len, float *const *dst, int dstShift, int dstElemStride,
                                      int count);
KVLM_API KvlStatus kvlmMul_tava_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    int width, int height, const double *src2, int src2ObjStride, int src2ElemStride,
                                    int len, double *dst, int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tava_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, int width,
                                      int height, const double *const *src2, int src2Shift, int src2ObjStride, int len,
                                      double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tava_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      int width, int height, const double *const *src2, int src2Shift,
                                      int src2ElemStride, int len, double *const *dst, int dstShift, int dstElemStride,
                                      int count);
/** @} */

/**
 * @defgroup kvlm_mul_matrices Mul: matrices by matrices
 * @ingroup kvlm_products
 * dst = A*B, A being src1 and B src2, each read as its letter says. Each operand has its own shape, as it is stored:
 * src1Width columns and src1Height rows. The inner sizes must match: src1Width or, for t, src1Height on the left, and
 * src2Height or, for t, src2Width on the right.
 *
 * dst(i, j) is ((p0 + p1) + p2) + ... with p(k) = A(i, k)*B(k, j), each product and each sum rounded, from left to
 * right, in every form. The sum begins with p0 where all four sizes are equal and 3, 4, 5 or 6, otherwise with +0,
 * which makes of a sum of negative zeros a positive one. Settled: these begin with +0 all the same ("standard" means
 * adjacent elements, S2 and LS2 any others):
 *
 * - order 4: kvlmMul_mat_32f standard;
 * - order 6: kvlmMul_tm_32f standard, kvlmMul_mama_32f S2;
 * - orders 4 to 6: kvlmMul_tam_32f and kvlmMul_mat_32f S2, kvlmMul_mam_32f_P, kvlmMul_tam_32f_P, kvlmMul_mat_32f_P,
 *   kvlmMul_mam_32f_L, kvlmMul_tam_32f_L, kvlmMul_mat_32f_L, kvlmMul_tat_32f_L in LS2;
 * - orders 3 to 6: kvlmMul_mta_32f_L, kvlmMul_tta_32f_L and kvlmMul_tta_64f_L with adjacent elements.
 *
 * Settled, too:
 * - kvlmMul_mat_32f with adjacent elements, src1 of 4 x 4 and src2 of height 3: a fourth element is stored in each row
 * of dst, behind the three of the product. It is the product with the row that would follow in src2, which is read. In
 * a packed dst the next row overwrites it; behind the last row it is a store beyond the object, and where a team works,
 * into what another thread writes. Leave room for it between the objects.
 * - kvlmMul_mm_32f_P and kvlmMul_tt_64f_P: sizes of 1, 2 and 3 whose bitwise OR is 3 make a product of order 3. All
 * three tables must then have nine entries.
 *
 * Checks: pointers, `count`, sizes, that they match (kvlErrSizeMatch), strides, shifts. Always kvlOk after them. dst
 * must overlap no source; in _P, where all four sizes are equal and 3 to 6, each object of dst may be that of a source,
 * position by position.
 *
 * Team: 32f from 7 on, nearly always; 64f from 36865 on, other strides and _L 18433, _P 9217; W = the elements of both
 * sources and of dst. Source: Golub and Van Loan, Matrix Computations, 1.1.
 * @{
 */
KVLM_API KvlStatus kvlmMul_mm_32f(const float *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                  int src1Height, const float *src2, int src2RowStride, int src2ElemStride,
                                  int src2Width, int src2Height, float *dst, int dstRowStride, int dstElemStride);
KVLM_API KvlStatus kvlmMul_mm_32f_P(const float *const *src1, int src1Shift, int src1Width, int src1Height,
                                    const float *const *src2, int src2Shift, int src2Width, int src2Height,
                                    float *const *dst, int dstShift);
KVLM_API KvlStatus kvlmMul_mm_64f(const double *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                  int src1Height, const double *src2, int src2RowStride, int src2ElemStride,
                                  int src2Width, int src2Height, double *dst, int dstRowStride, int dstElemStride);
KVLM_API KvlStatus kvlmMul_mm_64f_P(const double *const *src1, int src1Shift, int src1Width, int src1Height,
                                    const double *const *src2, int src2Shift, int src2Width, int src2Height,
                                    double *const *dst, int dstShift);

KVLM_API KvlStatus kvlmMul_tm_32f(const float *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                  int src1Height, const float *src2, int src2RowStride, int src2ElemStride,
                                  int src2Width, int src2Height, float *dst, int dstRowStride, int dstElemStride);
KVLM_API KvlStatus kvlmMul_tm_32f_P(const float *const *src1, int src1Shift, int src1Width, int src1Height,
                                    const float *const *src2, int src2Shift, int src2Width, int src2Height,
                                    float *const *dst, int dstShift);
KVLM_API KvlStatus kvlmMul_tm_64f(const double *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                  int src1Height, const double *src2, int src2RowStride, int src2ElemStride,
                                  int src2Width, int src2Height, double *dst, int dstRowStride, int dstElemStride);
KVLM_API KvlStatus kvlmMul_tm_64f_P(const double *const *src1, int src1Shift, int src1Width, int src1Height,
                                    const double *const *src2, int src2Shift, int src2Width, int src2Height,
                                    double *const *dst, int dstShift);

KVLM_API KvlStatus kvlmMul_mt_32f(const float *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                  int src1Height, const float *src2, int src2RowStride, int src2ElemStride,
                                  int src2Width, int src2Height, float *dst, int dstRowStride, int dstElemStride);
KVLM_API KvlStatus kvlmMul_mt_32f_P(const float *const *src1, int src1Shift, int src1Width, int src1Height,
                                    const float *const *src2, int src2Shift, int src2Width, int src2Height,
                                    float *const *dst, int dstShift);
KVLM_API KvlStatus kvlmMul_mt_64f(const double *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                  int src1Height, const double *src2, int src2RowStride, int src2ElemStride,
                                  int src2Width, int src2Height, double *dst, int dstRowStride, int dstElemStride);
KVLM_API KvlStatus kvlmMul_mt_64f_P(const double *const *src1, int src1Shift, int src1Width, int src1Height,
                                    const double *const *src2, int src2Shift, int src2Width, int src2Height,
                                    double *const *dst, int dstShift);

KVLM_API KvlStatus kvlmMul_tt_32f(const float *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                  int src1Height, const float *src2, int src2RowStride, int src2ElemStride,
                                  int src2Width, int src2Height, float *dst, int dstRowStride, int dstElemStride);
KVLM_API KvlStatus kvlmMul_tt_32f_P(const float *const *src1, int src1Shift, int src1Width, int src1Height,
                                    const float *const *src2, int src2Shift, int src2Width, int src2Height,
                                    float *const *dst, int dstShift);
KVLM_API KvlStatus kvlmMul_tt_64f(const double *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                  int src1Height, const double *src2, int src2RowStride, int src2ElemStride,
                                  int src2Width, int src2Height, double *dst, int dstRowStride, int dstElemStride);
KVLM_API KvlStatus kvlmMul_tt_64f_P(const double *const *src1, int src1Shift, int src1Width, int src1Height,
                                    const double *const *src2, int src2Shift, int src2Width, int src2Height,
                                    double *const *dst, int dstShift);

KVLM_API KvlStatus kvlmMul_mam_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   int src1Width, int src1Height, const float *src2, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, float *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mam_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                     int src1Height, const float *const *src2, int src2Shift, int src2Width,
                                     int src2Height, float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mam_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     int src1Width, int src1Height, const float *src2, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, float *const *dst, int dstShift,
                                     int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mam_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   int src1Width, int src1Height, const double *src2, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, double *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mam_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                     int src1Height, const double *const *src2, int src2Shift, int src2Width,
                                     int src2Height, double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mam_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     int src1Width, int src1Height, const double *src2, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_tam_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   int src1Width, int src1Height, const float *src2, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, float *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tam_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                     int src1Height, const float *const *src2, int src2Shift, int src2Width,
                                     int src2Height, float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tam_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     int src1Width, int src1Height, const float *src2, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, float *const *dst, int dstShift,
                                     int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tam_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   int src1Width, int src1Height, const double *src2, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, double *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tam_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                     int src1Height, const double *const *src2, int src2Shift, int src2Width,
                                     int src2Height, double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tam_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     int src1Width, int src1Height, const double *src2, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_mat_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   int src1Width, int src1Height, const float *src2, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, float *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mat_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                     int src1Height, const float *const *src2, int src2Shift, int src2Width,
                                     int src2Height, float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mat_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     int src1Width, int src1Height, const float *src2, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, float *const *dst, int dstShift,
                                     int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mat_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   int src1Width, int src1Height, const double *src2, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, double *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mat_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                     int src1Height, const double *const *src2, int src2Shift, int src2Width,
                                     int src2Height, double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mat_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     int src1Width, int src1Height, const double *src2, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_tat_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   int src1Width, int src1Height, const float *src2, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, float *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tat_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                     int src1Height, const float *const *src2, int src2Shift, int src2Width,
                                     int src2Height, float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tat_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     int src1Width, int src1Height, const float *src2, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, float *const *dst, int dstShift,
                                     int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tat_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                   int src1Width, int src1Height, const double *src2, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, double *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tat_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                     int src1Height, const double *const *src2, int src2Shift, int src2Width,
                                     int src2Height, double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tat_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                     int src1Width, int src1Height, const double *src2, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_mma_32f(const float *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                   int src1Height, const float *src2, int src2ObjStride, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, float *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mma_32f_P(const float *const *src1, int src1Shift, int src1Width, int src1Height,
                                     const float *const *src2, int src2Shift, int src2ObjStride, int src2Width,
                                     int src2Height, float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mma_32f_L(const float *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                     int src1Height, const float *const *src2, int src2Shift, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, float *const *dst, int dstShift,
                                     int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mma_64f(const double *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                   int src1Height, const double *src2, int src2ObjStride, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, double *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mma_64f_P(const double *const *src1, int src1Shift, int src1Width, int src1Height,
                                     const double *const *src2, int src2Shift, int src2ObjStride, int src2Width,
                                     int src2Height, double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mma_64f_L(const double *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                     int src1Height, const double *const *src2, int src2Shift, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_tma_32f(const float *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                   int src1Height, const float *src2, int src2ObjStride, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, float *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tma_32f_P(const float *const *src1, int src1Shift, int src1Width, int src1Height,
                                     const float *const *src2, int src2Shift, int src2ObjStride, int src2Width,
                                     int src2Height, float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tma_32f_L(const float *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                     int src1Height, const float *const *src2, int src2Shift, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, float *const *dst, int dstShift,
                                     int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tma_64f(const double *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                   int src1Height, const double *src2, int src2ObjStride, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, double *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tma_64f_P(const double *const *src1, int src1Shift, int src1Width, int src1Height,
                                     const double *const *src2, int src2Shift, int src2ObjStride, int src2Width,
                                     int src2Height, double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tma_64f_L(const double *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                     int src1Height, const double *const *src2, int src2Shift, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_mta_32f(const float *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                   int src1Height, const float *src2, int src2ObjStride, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, float *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mta_32f_P(const float *const *src1, int src1Shift, int src1Width, int src1Height,
                                     const float *const *src2, int src2Shift, int src2ObjStride, int src2Width,
                                     int src2Height, float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mta_32f_L(const float *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                     int src1Height, const float *const *src2, int src2Shift, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, float *const *dst, int dstShift,
                                     int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mta_64f(const double *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                   int src1Height, const double *src2, int src2ObjStride, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, double *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mta_64f_P(const double *const *src1, int src1Shift, int src1Width, int src1Height,
                                     const double *const *src2, int src2Shift, int src2ObjStride, int src2Width,
                                     int src2Height, double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_mta_64f_L(const double *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                     int src1Height, const double *const *src2, int src2Shift, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_tta_32f(const float *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                   int src1Height, const float *src2, int src2ObjStride, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, float *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tta_32f_P(const float *const *src1, int src1Shift, int src1Width, int src1Height,
                                     const float *const *src2, int src2Shift, int src2ObjStride, int src2Width,
                                     int src2Height, float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tta_32f_L(const float *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                     int src1Height, const float *const *src2, int src2Shift, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, float *const *dst, int dstShift,
                                     int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tta_64f(const double *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                   int src1Height, const double *src2, int src2ObjStride, int src2RowStride,
                                   int src2ElemStride, int src2Width, int src2Height, double *dst, int dstObjStride,
                                   int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tta_64f_P(const double *const *src1, int src1Shift, int src1Width, int src1Height,
                                     const double *const *src2, int src2Shift, int src2ObjStride, int src2Width,
                                     int src2Height, double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmMul_tta_64f_L(const double *src1, int src1RowStride, int src1ElemStride, int src1Width,
                                     int src1Height, const double *const *src2, int src2Shift, int src2RowStride,
                                     int src2ElemStride, int src2Width, int src2Height, double *const *dst,
                                     int dstShift, int dstRowStride, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_mama_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    int src1Width, int src1Height, const float *src2, int src2ObjStride,
                                    int src2RowStride, int src2ElemStride, int src2Width, int src2Height, float *dst,
                                    int dstObjStride, int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mama_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                      int src1Height, const float *const *src2, int src2Shift, int src2ObjStride,
                                      int src2Width, int src2Height, float *const *dst, int dstShift, int dstObjStride,
                                      int count);
KVLM_API KvlStatus kvlmMul_mama_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      int src1Width, int src1Height, const float *const *src2, int src2Shift,
                                      int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mama_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    int src1Width, int src1Height, const double *src2, int src2ObjStride,
                                    int src2RowStride, int src2ElemStride, int src2Width, int src2Height, double *dst,
                                    int dstObjStride, int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mama_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                      int src1Height, const double *const *src2, int src2Shift, int src2ObjStride,
                                      int src2Width, int src2Height, double *const *dst, int dstShift, int dstObjStride,
                                      int count);
KVLM_API KvlStatus kvlmMul_mama_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      int src1Width, int src1Height, const double *const *src2, int src2Shift,
                                      int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_tama_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    int src1Width, int src1Height, const float *src2, int src2ObjStride,
                                    int src2RowStride, int src2ElemStride, int src2Width, int src2Height, float *dst,
                                    int dstObjStride, int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tama_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                      int src1Height, const float *const *src2, int src2Shift, int src2ObjStride,
                                      int src2Width, int src2Height, float *const *dst, int dstShift, int dstObjStride,
                                      int count);
KVLM_API KvlStatus kvlmMul_tama_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      int src1Width, int src1Height, const float *const *src2, int src2Shift,
                                      int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tama_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    int src1Width, int src1Height, const double *src2, int src2ObjStride,
                                    int src2RowStride, int src2ElemStride, int src2Width, int src2Height, double *dst,
                                    int dstObjStride, int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tama_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                      int src1Height, const double *const *src2, int src2Shift, int src2ObjStride,
                                      int src2Width, int src2Height, double *const *dst, int dstShift, int dstObjStride,
                                      int count);
KVLM_API KvlStatus kvlmMul_tama_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      int src1Width, int src1Height, const double *const *src2, int src2Shift,
                                      int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_mata_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    int src1Width, int src1Height, const float *src2, int src2ObjStride,
                                    int src2RowStride, int src2ElemStride, int src2Width, int src2Height, float *dst,
                                    int dstObjStride, int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mata_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                      int src1Height, const float *const *src2, int src2Shift, int src2ObjStride,
                                      int src2Width, int src2Height, float *const *dst, int dstShift, int dstObjStride,
                                      int count);
KVLM_API KvlStatus kvlmMul_mata_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      int src1Width, int src1Height, const float *const *src2, int src2Shift,
                                      int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mata_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    int src1Width, int src1Height, const double *src2, int src2ObjStride,
                                    int src2RowStride, int src2ElemStride, int src2Width, int src2Height, double *dst,
                                    int dstObjStride, int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_mata_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                      int src1Height, const double *const *src2, int src2Shift, int src2ObjStride,
                                      int src2Width, int src2Height, double *const *dst, int dstShift, int dstObjStride,
                                      int count);
KVLM_API KvlStatus kvlmMul_mata_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      int src1Width, int src1Height, const double *const *src2, int src2Shift,
                                      int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int count);

KVLM_API KvlStatus kvlmMul_tata_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    int src1Width, int src1Height, const float *src2, int src2ObjStride,
                                    int src2RowStride, int src2ElemStride, int src2Width, int src2Height, float *dst,
                                    int dstObjStride, int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tata_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                      int src1Height, const float *const *src2, int src2Shift, int src2ObjStride,
                                      int src2Width, int src2Height, float *const *dst, int dstShift, int dstObjStride,
                                      int count);
KVLM_API KvlStatus kvlmMul_tata_32f_L(const float *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      int src1Width, int src1Height, const float *const *src2, int src2Shift,
                                      int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tata_64f(const double *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                    int src1Width, int src1Height, const double *src2, int src2ObjStride,
                                    int src2RowStride, int src2ElemStride, int src2Width, int src2Height, double *dst,
                                    int dstObjStride, int dstRowStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmMul_tata_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, int src1Width,
                                      int src1Height, const double *const *src2, int src2Shift, int src2ObjStride,
                                      int src2Width, int src2Height, double *const *dst, int dstShift, int dstObjStride,
                                      int count);
KVLM_API KvlStatus kvlmMul_tata_64f_L(const double *const *src1, int src1Shift, int src1RowStride, int src1ElemStride,
                                      int src1Width, int src1Height, const double *const *src2, int src2Shift,
                                      int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int count);
/** @} */

/**
 * @defgroup kvlm_gaxpy Gaxpy
 * @ingroup kvlm_products
 * dst = A*x + b: A is src1, of `width` columns and `height` rows, x is src2 of length src2Len = `width`, b is src3 of
 * length src3Len = `height`. In mva both vectors are arrays, in mvav src3 is single.
 *
 * dst(i) is the sum of the products A(i, k)*x(k), from left to right, plus b(i) at the end. It begins with +0 but in
 * square matrices of order 3 to 6. With adjacent elements, standard and _L, square matrices of order 4, 5 and 6 have
 * these sums:
 *
 * - 32f: (p0+p2)+(p1+p3); ((p0+p1)+p4)+(p2+p3) in the first four rows and ((p0+p2)+p4)+(p1+p3) in the fifth;
 *   ((p0+p2)+p4)+((p1+p3)+p5).
 * - 64f: (p0+p1)+(p2+p3); ((p0+p1)+(p2+p3))+p4; ((p0+p1)+(p2+p3))+(p4+p5).
 *
 * Checks: pointers, `count`, sizes, that they match (kvlErrSizeMatch), strides, shifts. Always kvlOk after them. dst
 * may be src3, an array in mva, with the same strides; it must not overlap src1 or src2. Source of the name: Golub and
 * Van Loan, Matrix Computations, 1.1.
 *
 * Team: from 5001 on; W = the elements of x, b and dst. Settled: those of A do not count.
 * @{
 */
KVLM_API KvlStatus kvlmGaxpy_mv_32f(const float *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                    const float *src2, int src2ElemStride, int src2Len, const float *src3,
                                    int src3ElemStride, int src3Len, float *dst, int dstElemStride);
KVLM_API KvlStatus kvlmGaxpy_mv_32f_P(const float *const *src1, int src1Shift, int width, int height,
                                      const float *const *src2, int src2Shift, int src2Len, const float *const *src3,
                                      int src3Shift, int src3Len, float *const *dst, int dstShift);
KVLM_API KvlStatus kvlmGaxpy_mv_64f(const double *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                    const double *src2, int src2ElemStride, int src2Len, const double *src3,
                                    int src3ElemStride, int src3Len, double *dst, int dstElemStride);
KVLM_API KvlStatus kvlmGaxpy_mv_64f_P(const double *const *src1, int src1Shift, int width, int height,
                                      const double *const *src2, int src2Shift, int src2Len, const double *const *src3,
                                      int src3Shift, int src3Len, double *const *dst, int dstShift);

KVLM_API KvlStatus kvlmGaxpy_mva_32f(const float *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                     const float *src2, int src2ObjStride, int src2ElemStride, int src2Len,
                                     const float *src3, int src3ObjStride, int src3ElemStride, int src3Len, float *dst,
                                     int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmGaxpy_mva_32f_P(const float *const *src1, int src1Shift, int width, int height,
                                       const float *const *src2, int src2Shift, int src2ObjStride, int src2Len,
                                       const float *const *src3, int src3Shift, int src3ObjStride, int src3Len,
                                       float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmGaxpy_mva_32f_L(const float *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                       const float *const *src2, int src2Shift, int src2ElemStride, int src2Len,
                                       const float *const *src3, int src3Shift, int src3ElemStride, int src3Len,
                                       float *const *dst, int dstShift, int dstElemStride, int count);
KVLM_API KvlStatus kvlmGaxpy_mva_64f(const double *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                     const double *src2, int src2ObjStride, int src2ElemStride, int src2Len,
                                     const double *src3, int src3ObjStride, int src3ElemStride, int src3Len,
                                     double *dst, int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmGaxpy_mva_64f_P(const double *const *src1, int src1Shift, int width, int height,
                                       const double *const *src2, int src2Shift, int src2ObjStride, int src2Len,
                                       const double *const *src3, int src3Shift, int src3ObjStride, int src3Len,
                                       double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmGaxpy_mva_64f_L(const double *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                       const double *const *src2, int src2Shift, int src2ElemStride, int src2Len,
                                       const double *const *src3, int src3Shift, int src3ElemStride, int src3Len,
                                       double *const *dst, int dstShift, int dstElemStride, int count);

KVLM_API KvlStatus kvlmGaxpy_mvav_32f(const float *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                      const float *src2, int src2ObjStride, int src2ElemStride, int src2Len,
                                      const float *src3, int src3ElemStride, int src3Len, float *dst, int dstObjStride,
                                      int dstElemStride, int count);
KVLM_API KvlStatus kvlmGaxpy_mvav_32f_P(const float *const *src1, int src1Shift, int width, int height,
                                        const float *const *src2, int src2Shift, int src2ObjStride, int src2Len,
                                        const float *const *src3, int src3Shift, int src3Len, float *const *dst,
                                        int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmGaxpy_mvav_32f_L(const float *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                        const float *const *src2, int src2Shift, int src2ElemStride, int src2Len,
                                        const float *src3, int src3ElemStride, int src3Len, float *const *dst,
                                        int dstShift, int dstElemStride, int count);
KVLM_API KvlStatus kvlmGaxpy_mvav_64f(const double *src1, int src1RowStride, int src1ElemStride, int width, int height,
                                      const double *src2, int src2ObjStride, int src2ElemStride, int src2Len,
                                      const double *src3, int src3ElemStride, int src3Len, double *dst,
                                      int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmGaxpy_mvav_64f_P(const double *const *src1, int src1Shift, int width, int height,
                                        const double *const *src2, int src2Shift, int src2ObjStride, int src2Len,
                                        const double *const *src3, int src3Shift, int src3Len, double *const *dst,
                                        int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmGaxpy_mvav_64f_L(const double *src1, int src1RowStride, int src1ElemStride, int width,
                                        int height, const double *const *src2, int src2Shift, int src2ElemStride,
                                        int src2Len, const double *src3, int src3ElemStride, int src3Len,
                                        double *const *dst, int dstShift, int dstElemStride, int count);
/** @} */

/**
 * @defgroup kvlm_transform Homogeneous transform of points
 * @ingroup kvlm_products
 * Maps points by a homogeneous transform with perspective division. src1 is a 4 x 4 matrix a whose fourth column is the
 * translation, src2 an array of points of three elements, dst an array of the same.
 *
 * w = a(3,0)x + a(3,1)y + a(3,2)z + a(3,3), q = 1/w, dst(r) = (a(r,0)x + a(r,1)y + a(r,2)z + a(r,3))*q. Each sum is
 * (a(r,0)x + a(r,1)y) + (a(r,2)z + a(r,3)) where all elements are adjacent, otherwise
 * ((a(r,0)x + a(r,3)) + a(r,1)y) + a(r,2)z: the two may differ in the last bit.
 *
 * Where w is at most 1.1754944e-38 in magnitude, all three elements become 3.4028235e38, the status kvlErrZeroDivisor,
 * and the next point follows: every point is worked in any case. A NaN in w is no zero divisor.
 *
 * Checks: pointers, `count`, strides. dst may be src2 with the same strides.
 *
 * Accuracy: the reciprocal of w is rounded, then each product with it. Team: from 2001 on; W = 2*`count` + 16. Source:
 * Foley, van Dam, Feiner and Hughes, Computer Graphics, 5.
 * @{
 */
KVLM_API KvlStatus kvlmAffineTransform3DH_mva_32f(const float *src1, int src1RowStride, int src1ElemStride,
                                                  const float *src2, int src2ObjStride, int src2ElemStride, float *dst,
                                                  int dstObjStride, int dstElemStride, int count);
/** @} */

/**
 * @defgroup kvlm_dot Dot product
 * @ingroup kvlm_measures
 * dst[i] is the sum of the products p(k) = src1(i, k)*src2(i, k), each product and each sum rounded in the element
 * type. dst is one element, in the array forms a plain array of `count` elements, in every description.
 *
 * The sum is ((p0 + p1) + p2) + ... from left to right, beginning with +0 but at lengths 3 to 6 (and at length 1 of vav
 * with strided elements), with these exceptions for adjacent elements, standard and _L:
 *
 * - vv and vava at 64f, and vav at 64f from length 4 on: (p0+p2)+p1; (p0+p2)+(p1+p3); ((p0+p2)+(p1+p3))+p4;
 *   ((p2+p4)+p0)+((p3+p5)+p1) at lengths 3, 4, 5, 6.
 * - vav at 32f, length 4: (p0+p1)+(p2+p3).
 * - vv and vava from length 11 (32f) or 9 (64f) on: eight lanes. First the products up to the first multiple of 16
 * bytes in src2, from left to right; their sum is where lane 0 begins. Then groups of eight, product k of a group to
 * lane k; the lanes l are folded to ((l0+l4)+(l2+l6))+((l1+l5)+(l3+l7)), and the rest is added one by one. Where src2
 * lies at no multiple of the element size the sum goes from left to right.
 * - vava (not in _L) from length 8 on, if src1, src2, dst and both object strides are multiples of 16 bytes.
 *
 * So the last bits may depend on the alignment of long vectors, and in a team on where the part of a thread begins. For
 * the same bits everywhere use another description.
 *
 * Checks: pointers, `count`, len, strides, shifts. Always kvlOk after them: sums that overflow are infinite. dst must
 * overlap no source.
 *
 * Team: from 40001 on, other strides, and _P at 32f, 20001; W = the elements of both sources. Source: Golub and Van
 * Loan, Matrix Computations, 1.1 and 2.7.
 * @{
 */
KVLM_API KvlStatus kvlmDotProduct_vv_32f(const float *src1, int src1ElemStride, const float *src2, int src2ElemStride,
                                         float *dst, int len);
KVLM_API KvlStatus kvlmDotProduct_vv_32f_P(const float *const *src1, int src1Shift, const float *const *src2,
                                           int src2Shift, float *dst, int len);
KVLM_API KvlStatus kvlmDotProduct_vv_64f(const double *src1, int src1ElemStride, const double *src2, int src2ElemStride,
                                         double *dst, int len);
KVLM_API KvlStatus kvlmDotProduct_vv_64f_P(const double *const *src1, int src1Shift, const double *const *src2,
                                           int src2Shift, double *dst, int len);

KVLM_API KvlStatus kvlmDotProduct_vav_32f(const float *src1, int src1ObjStride, int src1ElemStride, const float *src2,
                                          int src2ElemStride, float *dst, int len, int count);
KVLM_API KvlStatus kvlmDotProduct_vav_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                            const float *const *src2, int src2Shift, float *dst, int len, int count);
KVLM_API KvlStatus kvlmDotProduct_vav_32f_L(const float *const *src1, int src1Shift, int src1ElemStride,
                                            const float *src2, int src2ElemStride, float *dst, int len, int count);
KVLM_API KvlStatus kvlmDotProduct_vav_64f(const double *src1, int src1ObjStride, int src1ElemStride, const double *src2,
                                          int src2ElemStride, double *dst, int len, int count);
KVLM_API KvlStatus kvlmDotProduct_vav_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                            const double *const *src2, int src2Shift, double *dst, int len, int count);
KVLM_API KvlStatus kvlmDotProduct_vav_64f_L(const double *const *src1, int src1Shift, int src1ElemStride,
                                            const double *src2, int src2ElemStride, double *dst, int len, int count);

KVLM_API KvlStatus kvlmDotProduct_vava_32f(const float *src1, int src1ObjStride, int src1ElemStride, const float *src2,
                                           int src2ObjStride, int src2ElemStride, float *dst, int len, int count);
KVLM_API KvlStatus kvlmDotProduct_vava_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                             const float *const *src2, int src2Shift, int src2ObjStride, float *dst,
                                             int len, int count);
KVLM_API KvlStatus kvlmDotProduct_vava_32f_L(const float *const *src1, int src1Shift, int src1ElemStride,
                                             const float *const *src2, int src2Shift, int src2ElemStride, float *dst,
                                             int len, int count);
KVLM_API KvlStatus kvlmDotProduct_vava_64f(const double *src1, int src1ObjStride, int src1ElemStride,
                                           const double *src2, int src2ObjStride, int src2ElemStride, double *dst,
                                           int len, int count);
KVLM_API KvlStatus kvlmDotProduct_vava_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                             const double *const *src2, int src2Shift, int src2ObjStride, double *dst,
                                             int len, int count);
KVLM_API KvlStatus kvlmDotProduct_vava_64f_L(const double *const *src1, int src1Shift, int src1ElemStride,
                                             const double *const *src2, int src2Shift, int src2ElemStride, double *dst,
                                             int len, int count);
/** @} */

/**
 * @defgroup kvlm_l2norm Euclidean norm
 * @ingroup kvlm_measures
 * dst[i] is the square root of the sum of src(i, k)*src(i, k), in the element type and without scaling: squares
 * overflow and underflow as they do. dst is one element, in the array forms a plain array of `count` elements.
 *
 * The sum is from left to right, and with adjacent elements, standard and _L: at 64f as the dot product of two vectors;
 * at 32f (p0+p1)+(p2+p3), ((p0+p1)+(p2+p3))+p4, ((p0+p1)+(p2+p3))+(p4+p5) at lengths 4, 5, 6 and eight lanes from 11
 * on, begun where src reaches a multiple of 16 bytes.
 *
 * The root is rounded once. Settled exception: adjacent elements at 32f, lengths 3 to 6, standard and _L, have
 * s*(r*(0.5*(3 - s*(r*r)))) with the processor's approximate reciprocal root r of s: the last bits may differ from
 * processor to processor, and a zero vector has the norm NaN.
 *
 * Checks: pointers, `count`, len, strides, shifts. Always kvlOk after them. dst must not overlap src.
 *
 * Accuracy: (len/2 + 1)*u relative, short vectors at 32f with the approximate root some 4*u where squares neither
 * overflow nor underflow. Team: from 20001 on; W = len*`count`. Source: Golub and Van Loan, Matrix Computations, 2.2.
 * @{
 */
KVLM_API KvlStatus kvlmL2Norm_v_32f(const float *src, int srcElemStride, float *dst, int len);
KVLM_API KvlStatus kvlmL2Norm_v_32f_P(const float *const *src, int srcShift, float *dst, int len);
KVLM_API KvlStatus kvlmL2Norm_v_64f(const double *src, int srcElemStride, double *dst, int len);
KVLM_API KvlStatus kvlmL2Norm_v_64f_P(const double *const *src, int srcShift, double *dst, int len);

KVLM_API KvlStatus kvlmL2Norm_va_32f(const float *src, int srcObjStride, int srcElemStride, float *dst, int len,
                                     int count);
KVLM_API KvlStatus kvlmL2Norm_va_32f_P(const float *const *src, int srcShift, int srcObjStride, float *dst, int len,
                                       int count);
KVLM_API KvlStatus kvlmL2Norm_va_32f_L(const float *const *src, int srcShift, int srcElemStride, float *dst, int len,
                                       int count);
KVLM_API KvlStatus kvlmL2Norm_va_64f(const double *src, int srcObjStride, int srcElemStride, double *dst, int len,
                                     int count);
KVLM_API KvlStatus kvlmL2Norm_va_64f_P(const double *const *src, int srcShift, int srcObjStride, double *dst, int len,
                                       int count);
KVLM_API KvlStatus kvlmL2Norm_va_64f_L(const double *const *src, int srcShift, int srcElemStride, double *dst, int len,
                                       int count);
/** @} */

/**
 * @defgroup kvlm_cross Cross product
 * @ingroup kvlm_products
 * dst = src1 x src2, of vectors of three elements: dst(0) = src1(1)*src2(2) - src1(2)*src2(1), and so on around; each
 * product rounded, then the difference.
 *
 * Checks: pointers, `count`, strides, shifts; in vav pointers, strides, shifts, `count`. Always kvlOk after them. dst
 * must overlap no source. Destination objects that overlap each other hold what objects written one after the other
 * would leave.
 *
 * Accuracy: each element within 2*u times the sum of the magnitudes of its two products. Team: from 20001 on, 32f in _L
 * 40001; W = 3*`count`, with a single vector 2*`count` + 1. Settled: kvlmCrossProduct_vva_64f_P never.
 * @{
 */
KVLM_API KvlStatus kvlmCrossProduct_vv_32f(const float *src1, int src1ElemStride, const float *src2, int src2ElemStride,
                                           float *dst, int dstElemStride);
KVLM_API KvlStatus kvlmCrossProduct_vv_32f_P(const float *const *src1, int src1Shift, const float *const *src2,
                                             int src2Shift, float *const *dst, int dstShift);
KVLM_API KvlStatus kvlmCrossProduct_vv_64f(const double *src1, int src1ElemStride, const double *src2,
                                           int src2ElemStride, double *dst, int dstElemStride);
KVLM_API KvlStatus kvlmCrossProduct_vv_64f_P(const double *const *src1, int src1Shift, const double *const *src2,
                                             int src2Shift, double *const *dst, int dstShift);

KVLM_API KvlStatus kvlmCrossProduct_vav_32f(const float *src1, int src1ObjStride, int src1ElemStride, const float *src2,
                                            int src2ElemStride, float *dst, int dstObjStride, int dstElemStride,
                                            int count);
KVLM_API KvlStatus kvlmCrossProduct_vav_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                              const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                              int dstObjStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vav_32f_L(const float *const *src1, int src1Shift, int src1ElemStride,
                                              const float *src2, int src2ElemStride, float *const *dst, int dstShift,
                                              int dstElemStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vav_64f(const double *src1, int src1ObjStride, int src1ElemStride,
                                            const double *src2, int src2ElemStride, double *dst, int dstObjStride,
                                            int dstElemStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vav_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                              const double *const *src2, int src2Shift, double *const *dst,
                                              int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vav_64f_L(const double *const *src1, int src1Shift, int src1ElemStride,
                                              const double *src2, int src2ElemStride, double *const *dst, int dstShift,
                                              int dstElemStride, int count);

KVLM_API KvlStatus kvlmCrossProduct_vva_32f(const float *src1, int src1ElemStride, const float *src2, int src2ObjStride,
                                            int src2ElemStride, float *dst, int dstObjStride, int dstElemStride,
                                            int count);
KVLM_API KvlStatus kvlmCrossProduct_vva_32f_P(const float *const *src1, int src1Shift, const float *const *src2,
                                              int src2Shift, int src2ObjStride, float *const *dst, int dstShift,
                                              int dstObjStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vva_32f_L(const float *src1, int src1ElemStride, const float *const *src2,
                                              int src2Shift, int src2ElemStride, float *const *dst, int dstShift,
                                              int dstElemStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vva_64f(const double *src1, int src1ElemStride, const double *src2,
                                            int src2ObjStride, int src2ElemStride, double *dst, int dstObjStride,
                                            int dstElemStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vva_64f_P(const double *const *src1, int src1Shift, const double *const *src2,
                                              int src2Shift, int src2ObjStride, double *const *dst, int dstShift,
                                              int dstObjStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vva_64f_L(const double *src1, int src1ElemStride, const double *const *src2,
                                              int src2Shift, int src2ElemStride, double *const *dst, int dstShift,
                                              int dstElemStride, int count);

KVLM_API KvlStatus kvlmCrossProduct_vava_32f(const float *src1, int src1ObjStride, int src1ElemStride,
                                             const float *src2, int src2ObjStride, int src2ElemStride, float *dst,
                                             int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vava_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                               const float *const *src2, int src2Shift, int src2ObjStride,
                                               float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vava_32f_L(const float *const *src1, int src1Shift, int src1ElemStride,
                                               const float *const *src2, int src2Shift, int src2ElemStride,
                                               float *const *dst, int dstShift, int dstElemStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vava_64f(const double *src1, int src1ObjStride, int src1ElemStride,
                                             const double *src2, int src2ObjStride, int src2ElemStride, double *dst,
                                             int dstObjStride, int dstElemStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vava_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                               const double *const *src2, int src2Shift, int src2ObjStride,
                                               double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmCrossProduct_vava_64f_L(const double *const *src1, int src1Shift, int src1ElemStride,
                                               const double *const *src2, int src2Shift, int src2ElemStride,
                                               double *const *dst, int dstShift, int dstElemStride, int count);
/** @} */

/**
 * @defgroup kvlm_saxpy Saxpy
 * @ingroup kvlm_sums
 * dst(i, j) = src1(i, j)*val + src2(i, j): the product is rounded, then the sum. val is passed by value. Nothing is
 * left out where val is 0: an infinite element then gives NaN.
 *
 * Checks: pointers, `count`, len, strides, shifts. Always kvlOk after them. dst may be a source, an array if dst is
 * one, with the same strides; it must not overlap one otherwise. Source of the name: Golub and Van Loan, Matrix
 * Computations, 1.1.
 *
 * Team: from 40001 on; W = 3*len*`count`, with a single vector len*(2*`count` + 1).
 * @{
 */
KVLM_API KvlStatus kvlmSaxpy_vv_32f(const float *src1, int src1ElemStride, float val, const float *src2,
                                    int src2ElemStride, float *dst, int dstElemStride, int len);
KVLM_API KvlStatus kvlmSaxpy_vv_32f_P(const float *const *src1, int src1Shift, float val, const float *const *src2,
                                      int src2Shift, float *const *dst, int dstShift, int len);
KVLM_API KvlStatus kvlmSaxpy_vv_64f(const double *src1, int src1ElemStride, double val, const double *src2,
                                    int src2ElemStride, double *dst, int dstElemStride, int len);
KVLM_API KvlStatus kvlmSaxpy_vv_64f_P(const double *const *src1, int src1Shift, double val, const double *const *src2,
                                      int src2Shift, double *const *dst, int dstShift, int len);

KVLM_API KvlStatus kvlmSaxpy_vav_32f(const float *src1, int src1ObjStride, int src1ElemStride, float val,
                                     const float *src2, int src2ElemStride, float *dst, int dstObjStride,
                                     int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vav_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, float val,
                                       const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                       int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vav_32f_L(const float *const *src1, int src1Shift, int src1ElemStride, float val,
                                       const float *src2, int src2ElemStride, float *const *dst, int dstShift,
                                       int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vav_64f(const double *src1, int src1ObjStride, int src1ElemStride, double val,
                                     const double *src2, int src2ElemStride, double *dst, int dstObjStride,
                                     int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vav_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, double val,
                                       const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                       int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vav_64f_L(const double *const *src1, int src1Shift, int src1ElemStride, double val,
                                       const double *src2, int src2ElemStride, double *const *dst, int dstShift,
                                       int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmSaxpy_vva_32f(const float *src1, int src1ElemStride, float val, const float *src2,
                                     int src2ObjStride, int src2ElemStride, float *dst, int dstObjStride,
                                     int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vva_32f_P(const float *const *src1, int src1Shift, float val, const float *const *src2,
                                       int src2Shift, int src2ObjStride, float *const *dst, int dstShift,
                                       int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vva_32f_L(const float *src1, int src1ElemStride, float val, const float *const *src2,
                                       int src2Shift, int src2ElemStride, float *const *dst, int dstShift,
                                       int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vva_64f(const double *src1, int src1ElemStride, double val, const double *src2,
                                     int src2ObjStride, int src2ElemStride, double *dst, int dstObjStride,
                                     int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vva_64f_P(const double *const *src1, int src1Shift, double val, const double *const *src2,
                                       int src2Shift, int src2ObjStride, double *const *dst, int dstShift,
                                       int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vva_64f_L(const double *src1, int src1ElemStride, double val, const double *const *src2,
                                       int src2Shift, int src2ElemStride, double *const *dst, int dstShift,
                                       int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmSaxpy_vava_32f(const float *src1, int src1ObjStride, int src1ElemStride, float val,
                                      const float *src2, int src2ObjStride, int src2ElemStride, float *dst,
                                      int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vava_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, float val,
                                        const float *const *src2, int src2Shift, int src2ObjStride, float *const *dst,
                                        int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vava_32f_L(const float *const *src1, int src1Shift, int src1ElemStride, float val,
                                        const float *const *src2, int src2Shift, int src2ElemStride, float *const *dst,
                                        int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vava_64f(const double *src1, int src1ObjStride, int src1ElemStride, double val,
                                      const double *src2, int src2ObjStride, int src2ElemStride, double *dst,
                                      int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vava_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, double val,
                                        const double *const *src2, int src2Shift, int src2ObjStride, double *const *dst,
                                        int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmSaxpy_vava_64f_L(const double *const *src1, int src1Shift, int src1ElemStride, double val,
                                        const double *const *src2, int src2Shift, int src2ElemStride,
                                        double *const *dst, int dstShift, int dstElemStride, int len, int count);
/** @} */

/**
 * @defgroup kvlm_lcomb Linear combination
 * @ingroup kvlm_sums
 * dst(i, j) = src1(i, j)*val1 + src2(i, j)*val2: the products are rounded, then the sum. There is no vva form: exchange
 * the operands of vav.
 *
 * Checks, statuses and aliasing as in Saxpy.
 *
 * Team: from 20001 on, 32f in _L with adjacent elements 40001; W as in Saxpy.
 * @{
 */
KVLM_API KvlStatus kvlmLComb_vv_32f(const float *src1, int src1ElemStride, float val1, const float *src2,
                                    int src2ElemStride, float val2, float *dst, int dstElemStride, int len);
KVLM_API KvlStatus kvlmLComb_vv_32f_P(const float *const *src1, int src1Shift, float val1, const float *const *src2,
                                      int src2Shift, float val2, float *const *dst, int dstShift, int len);
KVLM_API KvlStatus kvlmLComb_vv_64f(const double *src1, int src1ElemStride, double val1, const double *src2,
                                    int src2ElemStride, double val2, double *dst, int dstElemStride, int len);
KVLM_API KvlStatus kvlmLComb_vv_64f_P(const double *const *src1, int src1Shift, double val1, const double *const *src2,
                                      int src2Shift, double val2, double *const *dst, int dstShift, int len);

KVLM_API KvlStatus kvlmLComb_vav_32f(const float *src1, int src1ObjStride, int src1ElemStride, float val1,
                                     const float *src2, int src2ElemStride, float val2, float *dst, int dstObjStride,
                                     int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmLComb_vav_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, float val1,
                                       const float *const *src2, int src2Shift, float val2, float *const *dst,
                                       int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmLComb_vav_32f_L(const float *const *src1, int src1Shift, int src1ElemStride, float val1,
                                       const float *src2, int src2ElemStride, float val2, float *const *dst,
                                       int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmLComb_vav_64f(const double *src1, int src1ObjStride, int src1ElemStride, double val1,
                                     const double *src2, int src2ElemStride, double val2, double *dst, int dstObjStride,
                                     int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmLComb_vav_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, double val1,
                                       const double *const *src2, int src2Shift, double val2, double *const *dst,
                                       int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmLComb_vav_64f_L(const double *const *src1, int src1Shift, int src1ElemStride, double val1,
                                       const double *src2, int src2ElemStride, double val2, double *const *dst,
                                       int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmLComb_vava_32f(const float *src1, int src1ObjStride, int src1ElemStride, float val1,
                                      const float *src2, int src2ObjStride, int src2ElemStride, float val2, float *dst,
                                      int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmLComb_vava_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, float val1,
                                        const float *const *src2, int src2Shift, int src2ObjStride, float val2,
                                        float *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmLComb_vava_32f_L(const float *const *src1, int src1Shift, int src1ElemStride, float val1,
                                        const float *const *src2, int src2Shift, int src2ElemStride, float val2,
                                        float *const *dst, int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmLComb_vava_64f(const double *src1, int src1ObjStride, int src1ElemStride, double val1,
                                      const double *src2, int src2ObjStride, int src2ElemStride, double val2,
                                      double *dst, int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmLComb_vava_64f_P(const double *const *src1, int src1Shift, int src1ObjStride, double val1,
                                        const double *const *src2, int src2Shift, int src2ObjStride, double val2,
                                        double *const *dst, int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmLComb_vava_64f_L(const double *const *src1, int src1Shift, int src1ElemStride, double val1,
                                        const double *const *src2, int src2Shift, int src2ElemStride, double val2,
                                        double *const *dst, int dstShift, int dstElemStride, int len, int count);
/** @} */

/**
 * @defgroup kvlm_trace Trace
 * @ingroup kvlm_measures
 * dst[i] = a(0, 0) + a(1, 1) + ... of the square matrix i of src, of order widthHeight, from left to right; the sum
 * begins with +0 but at orders 3 to 6. dst is one element, in the array forms a plain array of `count` elements.
 *
 * Checks: pointers, `count`, widthHeight, strides, shifts. Always kvlOk after them. dst must not overlap src.
 *
 * Team: from 20001 on, 32f in _L with adjacent elements 40001; W = widthHeight*`count`.
 * @{
 */
KVLM_API KvlStatus kvlmTrace_m_32f(const float *src, int srcRowStride, int srcElemStride, int widthHeight, float *dst);
KVLM_API KvlStatus kvlmTrace_m_32f_P(const float *const *src, int srcShift, int widthHeight, float *dst);
KVLM_API KvlStatus kvlmTrace_m_64f(const double *src, int srcRowStride, int srcElemStride, int widthHeight,
                                   double *dst);
KVLM_API KvlStatus kvlmTrace_m_64f_P(const double *const *src, int srcShift, int widthHeight, double *dst);

KVLM_API KvlStatus kvlmTrace_ma_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                    int widthHeight, float *dst, int count);
KVLM_API KvlStatus kvlmTrace_ma_32f_P(const float *const *src, int srcShift, int srcObjStride, int widthHeight,
                                      float *dst, int count);
KVLM_API KvlStatus kvlmTrace_ma_32f_L(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                      int widthHeight, float *dst, int count);
KVLM_API KvlStatus kvlmTrace_ma_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                    int widthHeight, double *dst, int count);
KVLM_API KvlStatus kvlmTrace_ma_64f_P(const double *const *src, int srcShift, int srcObjStride, int widthHeight,
                                      double *dst, int count);
KVLM_API KvlStatus kvlmTrace_ma_64f_L(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                      int widthHeight, double *dst, int count);
/** @} */

/**
 * @defgroup kvlm_frobnorm Frobenius norm
 * @ingroup kvlm_measures
 * dst[i] is the square root of the sum of the squares of all elements of matrix i of src, in the element type and
 * without scaling. dst is one element, in the array forms a plain array of `count` elements.
 *
 * The sum goes from left to right, row by row, and its root is rounded once. Settled exceptions: kvlmFrobNorm_m_32f, at
 * any strides, and kvlmFrobNorm_ma_32f with adjacent elements sum in eight lanes, element k of the matrix, counted row
 * by row, in lane k mod 8; they fold the lanes l to ((l0+l4)+(l2+l6))+((l1+l5)+(l3+l7)), and take the root of a sum s
 * as the Euclidean norm of short vectors does, by the processor's approximate reciprocal root. A sum of at most 2^-23
 * gives 0 there: norms below 3.45e-4 are lost. So does NaN.
 *
 * Checks: pointers, `count`, width and height, strides, shifts. Always kvlOk after them. dst must not overlap src.
 *
 * Accuracy: (width*height/2 + 1)*u relative, with the approximate root some 4*u for orders up to 6, above the bound.
 * Team: from 20001 on, 32f in _L with adjacent elements 40001; W = width*height*`count`. Source: Golub and Van Loan,
 * Matrix Computations, 2.3.
 * @{
 */
KVLM_API KvlStatus kvlmFrobNorm_m_32f(const float *src, int srcRowStride, int srcElemStride, int width, int height,
                                      float *dst);
KVLM_API KvlStatus kvlmFrobNorm_m_32f_P(const float *const *src, int srcShift, int width, int height, float *dst);
KVLM_API KvlStatus kvlmFrobNorm_m_64f(const double *src, int srcRowStride, int srcElemStride, int width, int height,
                                      double *dst);
KVLM_API KvlStatus kvlmFrobNorm_m_64f_P(const double *const *src, int srcShift, int width, int height, double *dst);

KVLM_API KvlStatus kvlmFrobNorm_ma_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                       int width, int height, float *dst, int count);
KVLM_API KvlStatus kvlmFrobNorm_ma_32f_P(const float *const *src, int srcShift, int srcObjStride, int width, int height,
                                         float *dst, int count);
KVLM_API KvlStatus kvlmFrobNorm_ma_32f_L(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                         int width, int height, float *dst, int count);
KVLM_API KvlStatus kvlmFrobNorm_ma_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                       int width, int height, double *dst, int count);
KVLM_API KvlStatus kvlmFrobNorm_ma_64f_P(const double *const *src, int srcShift, int srcObjStride, int width,
                                         int height, double *dst, int count);
KVLM_API KvlStatus kvlmFrobNorm_ma_64f_L(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                         int width, int height, double *dst, int count);
/** @} */

/**
 * @defgroup kvlm_det Determinant
 * @ingroup kvlm_systems
 * dst[i] is the determinant of matrix i of src, of order widthHeight = n. dst is one element, in the array forms a
 * plain array of `count` elements, in every description.
 *
 * `buffer` is scratch for n*n elements followed by n ints: n*n*4 + n*4 bytes at 32f, n*n*8 + n*4 at 64f. It must not be
 * null for any order, though orders 3 to 6 leave it alone; its contents mean nothing before or after. The threads of a
 * team have scratch of their own instead.
 *
 * Orders 3 to 6 are closed formulas by minors, with no pivoting and no test (Laplace expansion). Each operation is
 * rounded in the element type, except in kvlmDet_m_32f and kvlmDet_m_64f with adjacent elements: these compute on the
 * 80-bit format of the x86 floating-point unit, at the precision that its control word gives, in another order. The
 * last bits of the same determinant may therefore differ between the forms.
 *
 * All other orders are by Gaussian elimination with partial pivoting (Golub and Van Loan, Matrix Computations, 3.4).
 * With t = 2n^3 times the smallest normal number, a pivot below t, or a last pivot of at most t, makes the determinant
 * 0. The forms on one matrix then store +0. Those on arrays store 0 for a last pivot of at most t, and else a product
 * with 0: its sign is that of the product, and it is NaN where the last pivot is not finite. Settled: kvlmDet_m_64f
 * with adjacent elements looks for the largest candidate with a magnitude that is rounded to float.
 *
 * Checks: pointers, `count`, widthHeight, strides, shifts. Always kvlOk after them: a singular matrix has the
 * determinant 0 and is no error. dst must overlap neither src nor buffer.
 *
 * Accuracy: the error is a small multiple of n*u times the product of the lengths of the rows. Team: from 20001 on, 32f
 * in _L with adjacent elements 40001; W = n*`count`.
 * @{
 */
KVLM_API KvlStatus kvlmDet_m_32f(const float *src, int srcRowStride, int srcElemStride, int widthHeight, float *buffer,
                                 float *dst);
KVLM_API KvlStatus kvlmDet_m_32f_P(const float *const *src, int srcShift, int widthHeight, float *buffer, float *dst);
KVLM_API KvlStatus kvlmDet_m_64f(const double *src, int srcRowStride, int srcElemStride, int widthHeight,
                                 double *buffer, double *dst);
KVLM_API KvlStatus kvlmDet_m_64f_P(const double *const *src, int srcShift, int widthHeight, double *buffer,
                                   double *dst);

KVLM_API KvlStatus kvlmDet_ma_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                  int widthHeight, float *buffer, float *dst, int count);
KVLM_API KvlStatus kvlmDet_ma_32f_P(const float *const *src, int srcShift, int srcObjStride, int widthHeight,
                                    float *buffer, float *dst, int count);
KVLM_API KvlStatus kvlmDet_ma_32f_L(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                    int widthHeight, float *buffer, float *dst, int count);
KVLM_API KvlStatus kvlmDet_ma_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                  int widthHeight, double *buffer, double *dst, int count);
KVLM_API KvlStatus kvlmDet_ma_64f_P(const double *const *src, int srcShift, int srcObjStride, int widthHeight,
                                    double *buffer, double *dst, int count);
KVLM_API KvlStatus kvlmDet_ma_64f_L(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                    int widthHeight, double *buffer, double *dst, int count);
/** @} */

/**
 * @defgroup kvlm_lu LU decomposition
 * @ingroup kvlm_systems
 * P*A = L*U by Gaussian elimination with partial pivoting (Golub and Van Loan, Matrix Computations, 3.4), for square
 * matrices of order widthHeight = n. No row is moved: `pivot` holds n ints per object, a run for each behind one
 * another in every description, and pivot[k] is the number of the row of dst that step k took as pivot row, from 0.
 * Element j of row pivot[i] of dst is L(i, j) for j < i and U(i, j) for j >= i; the diagonal of L is 1 and not stored.
 * Row pivot[i] of A is row i of L*U. Of equal candidates the first in the order of the table is taken. Multipliers are
 * products with the reciprocal of the pivot.
 *
 * Two designs, by order, with absolute tests of single elements and kvlErrSingular where one fails:
 *
 * - orders 3 to 6: a pivot of magnitude below 2^-125 (32f) or 2^-1021 (64f) fails, and so does NaN. Settled: the final
 *   test looks at row n-1, column n-1 of memory, whichever row the last pivot is in, and lets NaN pass; a zero last
 *   pivot may therefore go unseen.
 * - all others: a pivot of magnitude at most 2^-23 (32f) or 2^-52 (64f) fails, the last one too. At 32f a NaN is never
 *   preferred and passes where it stands; at 64f it is always taken and fails before the last step.
 *
 * After a failure in step k, the last test being step n-1, pivot is a permutation, and
 *
 * - orders 3 to 6: dst holds the k rows pivot[0] to pivot[k-1], the others are untouched; in _P all are untouched.
 *   The interchange of step k stands in pivot.
 * - all others: dst holds what the steps before k made of src; the interchange of step k is not in pivot.
 *
 * Checks: pointers, `count`, widthHeight, strides, shifts. dst may be src with the same strides. The residual P*A - L*U
 * is that of textbook partial pivoting, a small multiple of n times the unit roundoff times the norm of A.
 *
 * Team: from 20001 on, 32f in _L with adjacent elements 40001; W = n*n*`count`.
 * @{
 */
KVLM_API KvlStatus kvlmLUDecomp_m_32f(const float *src, int srcRowStride, int srcElemStride, int *pivot, float *dst,
                                      int dstRowStride, int dstElemStride, int widthHeight);
KVLM_API KvlStatus kvlmLUDecomp_m_32f_P(const float *const *src, int srcShift, int *pivot, float *const *dst,
                                        int dstShift, int widthHeight);
KVLM_API KvlStatus kvlmLUDecomp_m_64f(const double *src, int srcRowStride, int srcElemStride, int *pivot, double *dst,
                                      int dstRowStride, int dstElemStride, int widthHeight);
KVLM_API KvlStatus kvlmLUDecomp_m_64f_P(const double *const *src, int srcShift, int *pivot, double *const *dst,
                                        int dstShift, int widthHeight);

KVLM_API KvlStatus kvlmLUDecomp_ma_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                       int *pivot, float *dst, int dstObjStride, int dstRowStride, int dstElemStride,
                                       int widthHeight, int count);
KVLM_API KvlStatus kvlmLUDecomp_ma_32f_P(const float *const *src, int srcShift, int srcObjStride, int *pivot,
                                         float *const *dst, int dstShift, int dstObjStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmLUDecomp_ma_32f_L(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                         int *pivot, float *const *dst, int dstShift, int dstRowStride,
                                         int dstElemStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmLUDecomp_ma_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                       int *pivot, double *dst, int dstObjStride, int dstRowStride, int dstElemStride,
                                       int widthHeight, int count);
KVLM_API KvlStatus kvlmLUDecomp_ma_64f_P(const double *const *src, int srcShift, int srcObjStride, int *pivot,
                                         double *const *dst, int dstShift, int dstObjStride, int widthHeight,
                                         int count);
KVLM_API KvlStatus kvlmLUDecomp_ma_64f_L(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                         int *pivot, double *const *dst, int dstShift, int dstRowStride,
                                         int dstElemStride, int widthHeight, int count);
/** @} */

/**
 * @defgroup kvlm_lu_solve LU solver
 * @ingroup kvlm_systems
 * A*x = b from the factors and pivots that kvlmLUDecomp left: src1 and `pivot`, n ints per matrix. src2 is b in the
 * order of the rows of A, dst is x in natural order. mv is one system, mva one matrix and an array of vectors, mava an
 * array of matrices with a vector each. In kvlmLUBackSubst_mva_..._L src1 is no list.
 *
 * Forward and back substitution (Golub and Van Loan, Matrix Computations, 3.1 and 3.2). Orders 3 to 6 multiply by
 * reciprocals of the diagonal and subtract the terms one by one, in the forward pass that of the first column last;
 * all other orders divide, and subtract the sum of the terms.
 *
 * Checks: pointers, `count`, widthHeight, strides, shifts. Always kvlOk after them: a zero on the diagonal gives
 * infinities or NaN. Entries of pivot are not checked. For orders 3 to 6 dst may be src2 with the same strides, for
 * others it must not overlap src2; it must never overlap src1.
 *
 * Accuracy: (A + E)*x = b with E a small multiple of n*u times the norm of L times that of U. Team: from 1701 on; W =
 * n*(n + 2*`count`) of mva, n*(n + 2)*`count` of mava.
 * @{
 */
KVLM_API KvlStatus kvlmLUBackSubst_mv_32f(const float *src1, int src1RowStride, int src1ElemStride, const int *pivot,
                                          const float *src2, int src2ElemStride, float *dst, int dstElemStride,
                                          int widthHeight);
KVLM_API KvlStatus kvlmLUBackSubst_mv_32f_P(const float *const *src1, int src1Shift, const int *pivot,
                                            const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                            int widthHeight);
KVLM_API KvlStatus kvlmLUBackSubst_mv_64f(const double *src1, int src1RowStride, int src1ElemStride, const int *pivot,
                                          const double *src2, int src2ElemStride, double *dst, int dstElemStride,
                                          int widthHeight);
KVLM_API KvlStatus kvlmLUBackSubst_mv_64f_P(const double *const *src1, int src1Shift, const int *pivot,
                                            const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                            int widthHeight);

KVLM_API KvlStatus kvlmLUBackSubst_mva_32f(const float *src1, int src1RowStride, int src1ElemStride, const int *pivot,
                                           const float *src2, int src2ObjStride, int src2ElemStride, float *dst,
                                           int dstObjStride, int dstElemStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmLUBackSubst_mva_32f_P(const float *const *src1, int src1Shift, const int *pivot,
                                             const float *const *src2, int src2Shift, int src2ObjStride,
                                             float *const *dst, int dstShift, int dstObjStride, int widthHeight,
                                             int count);
KVLM_API KvlStatus kvlmLUBackSubst_mva_32f_L(const float *src1, int src1RowStride, int src1ElemStride, const int *pivot,
                                             const float *const *src2, int src2Shift, int src2ElemStride,
                                             float *const *dst, int dstShift, int dstElemStride, int widthHeight,
                                             int count);
KVLM_API KvlStatus kvlmLUBackSubst_mva_64f(const double *src1, int src1RowStride, int src1ElemStride, const int *pivot,
                                           const double *src2, int src2ObjStride, int src2ElemStride, double *dst,
                                           int dstObjStride, int dstElemStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmLUBackSubst_mva_64f_P(const double *const *src1, int src1Shift, const int *pivot,
                                             const double *const *src2, int src2Shift, int src2ObjStride,
                                             double *const *dst, int dstShift, int dstObjStride, int widthHeight,
                                             int count);
KVLM_API KvlStatus kvlmLUBackSubst_mva_64f_L(const double *src1, int src1RowStride, int src1ElemStride,
                                             const int *pivot, const double *const *src2, int src2Shift,
                                             int src2ElemStride, double *const *dst, int dstShift, int dstElemStride,
                                             int widthHeight, int count);

KVLM_API KvlStatus kvlmLUBackSubst_mava_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                            const int *pivot, const float *src2, int src2ObjStride, int src2ElemStride,
                                            float *dst, int dstObjStride, int dstElemStride, int widthHeight,
                                            int count);
KVLM_API KvlStatus kvlmLUBackSubst_mava_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                              const int *pivot, const float *const *src2, int src2Shift,
                                              int src2ObjStride, float *const *dst, int dstShift, int dstObjStride,
                                              int widthHeight, int count);
KVLM_API KvlStatus kvlmLUBackSubst_mava_32f_L(const float *const *src1, int src1Shift, int src1RowStride,
                                              int src1ElemStride, const int *pivot, const float *const *src2,
                                              int src2Shift, int src2ElemStride, float *const *dst, int dstShift,
                                              int dstElemStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmLUBackSubst_mava_64f(const double *src1, int src1ObjStride, int src1RowStride,
                                            int src1ElemStride, const int *pivot, const double *src2, int src2ObjStride,
                                            int src2ElemStride, double *dst, int dstObjStride, int dstElemStride,
                                            int widthHeight, int count);
KVLM_API KvlStatus kvlmLUBackSubst_mava_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                              const int *pivot, const double *const *src2, int src2Shift,
                                              int src2ObjStride, double *const *dst, int dstShift, int dstObjStride,
                                              int widthHeight, int count);
KVLM_API KvlStatus kvlmLUBackSubst_mava_64f_L(const double *const *src1, int src1Shift, int src1RowStride,
                                              int src1ElemStride, const int *pivot, const double *const *src2,
                                              int src2Shift, int src2ElemStride, double *const *dst, int dstShift,
                                              int dstElemStride, int widthHeight, int count);
/** @} */

/**
 * @defgroup kvlm_invert Inverse
 * @ingroup kvlm_systems
 * dst is the inverse of src, of order widthHeight = n, by determinants: cofactors at orders 3 to 6 (Cramer's rule); at
 * all others, the determinant and each of the n*n minors by an elimination with partial pivoting, order n^5. At 32f,
 * with adjacent elements, orders 5 and 6 go by blocks: one or two pivots and the Schur complement of order 4 (Golub and
 * Van Loan, Matrix Computations, 3.2), and orders 3 to 6 multiply by an approximate reciprocal after one Newton step,
 * which may differ from processor to processor in the last bits. All else divides.
 *
 * `buffer` is scratch as for the determinant, for orders other than 3 to 6, and must not be null for any.
 *
 * kvlErrSingular, with m the smallest normal number of the type:
 *
 * - orders 3 to 6: unless the determinant has a magnitude of at least 2n^3*m; by blocks, each pivot and the determinant
 *   of the complement. Settled: 4n^3*m at 64f with adjacent elements at orders 3 and 4. NaN fails.
 * - all others but 1: if a pivot is below 2n^3*m in magnitude, or the determinant at most that. Settled: a minor that
 *   is judged to be zero by the same test becomes 2n^3*m, so a zero of the inverse comes out as that over the
 *   determinant. NaN passes.
 * - order 1: if the element is at most 2m in magnitude. NaN fails in the forms on one matrix and passes in those on
 *   arrays.
 *
 * After a failure dst is untouched, but where blocks were used: then row 0 (order 5) or rows 0 and 1 (order 6) hold
 * scratch.
 *
 * Checks: pointers, `count`, widthHeight, strides, shifts. For orders 3 to 6 dst may be src with the same strides; for
 * others it must not overlap src.
 *
 * Accuracy: for orders 3 to 6 the error of the inverse, beside its norm, is a small multiple of n*u times the condition
 * number where that is small, and grows with its square; the reciprocal at 32f is within 4*u. Team: from 20001 on, 32f
 * in _L with adjacent elements 40001, order 1 never; W = 2*n*`count`.
 * @{
 */
KVLM_API KvlStatus kvlmInvert_m_32f(const float *src, int srcRowStride, int srcElemStride, float *buffer, float *dst,
                                    int dstRowStride, int dstElemStride, int widthHeight);
KVLM_API KvlStatus kvlmInvert_m_32f_P(const float *const *src, int srcShift, float *buffer, float *const *dst,
                                      int dstShift, int widthHeight);
KVLM_API KvlStatus kvlmInvert_m_64f(const double *src, int srcRowStride, int srcElemStride, double *buffer, double *dst,
                                    int dstRowStride, int dstElemStride, int widthHeight);
KVLM_API KvlStatus kvlmInvert_m_64f_P(const double *const *src, int srcShift, double *buffer, double *const *dst,
                                      int dstShift, int widthHeight);

KVLM_API KvlStatus kvlmInvert_ma_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                     float *buffer, float *dst, int dstObjStride, int dstRowStride, int dstElemStride,
                                     int widthHeight, int count);
KVLM_API KvlStatus kvlmInvert_ma_32f_P(const float *const *src, int srcShift, int srcObjStride, float *buffer,
                                       float *const *dst, int dstShift, int dstObjStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmInvert_ma_32f_L(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                       float *buffer, float *const *dst, int dstShift, int dstRowStride,
                                       int dstElemStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmInvert_ma_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                     double *buffer, double *dst, int dstObjStride, int dstRowStride, int dstElemStride,
                                     int widthHeight, int count);
KVLM_API KvlStatus kvlmInvert_ma_64f_P(const double *const *src, int srcShift, int srcObjStride, double *buffer,
                                       double *const *dst, int dstShift, int dstObjStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmInvert_ma_64f_L(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                       double *buffer, double *const *dst, int dstShift, int dstRowStride,
                                       int dstElemStride, int widthHeight, int count);
/** @} */

/**
 * @defgroup kvlm_copy Copy: an array from one description into another
 * @ingroup kvlm_moves
 * dst(i, j) = src(i, j), or dst(i, r, c) = src(i, r, c). The two letters at the end of a name are the descriptions of
 * source and destination: S standard, P pointers (as _P elsewhere), L list (as _L).
 *
 * Elements move as bits: signalling NaNs and payloads stay. Operands may overlap, or one object of the destination its
 * others: memory then holds what copying single elements leaves, objects ascending, in each rows, in each columns.
 * Apart from each other they are moved in whatever order is fast. Always on the caller's thread.
 *
 * Checks: pointers, sizes, `count`, row and element strides, shifts, object strides; the va forms of 32f from S or L to
 * P check shifts before element strides. Object strides are looked at only if `count` is above 1. Always kvlOk after
 * them.
 * @{
 */
KVLM_API KvlStatus kvlmCopy_va_32f_SS(const float *src, int srcObjStride, int srcElemStride, float *dst,
                                      int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_32f_SP(const float *src, int srcObjStride, int srcElemStride, float *const *dst,
                                      int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_32f_SL(const float *src, int srcObjStride, int srcElemStride, float *const *dst,
                                      int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_32f_LS(const float *const *src, int srcShift, int srcElemStride, float *dst,
                                      int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_32f_PS(const float *const *src, int srcShift, int srcObjStride, float *dst,
                                      int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_32f_LP(const float *const *src, int srcShift, int srcElemStride, float *const *dst,
                                      int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_32f_LL(const float *const *src, int srcShift, int srcElemStride, float *const *dst,
                                      int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_32f_PP(const float *const *src, int srcShift, int srcObjStride, float *const *dst,
                                      int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_32f_PL(const float *const *src, int srcShift, int srcObjStride, float *const *dst,
                                      int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmCopy_va_64f_SS(const double *src, int srcObjStride, int srcElemStride, double *dst,
                                      int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_64f_SP(const double *src, int srcObjStride, int srcElemStride, double *const *dst,
                                      int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_64f_SL(const double *src, int srcObjStride, int srcElemStride, double *const *dst,
                                      int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_64f_LS(const double *const *src, int srcShift, int srcElemStride, double *dst,
                                      int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_64f_PS(const double *const *src, int srcShift, int srcObjStride, double *dst,
                                      int dstObjStride, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_64f_LP(const double *const *src, int srcShift, int srcElemStride, double *const *dst,
                                      int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_64f_LL(const double *const *src, int srcShift, int srcElemStride, double *const *dst,
                                      int dstShift, int dstElemStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_64f_PP(const double *const *src, int srcShift, int srcObjStride, double *const *dst,
                                      int dstShift, int dstObjStride, int len, int count);
KVLM_API KvlStatus kvlmCopy_va_64f_PL(const double *const *src, int srcShift, int srcObjStride, double *const *dst,
                                      int dstShift, int dstElemStride, int len, int count);

KVLM_API KvlStatus kvlmCopy_ma_32f_SS(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                      float *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmCopy_ma_32f_SP(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                      float *const *dst, int dstShift, int dstObjStride, int width, int height,
                                      int count);
KVLM_API KvlStatus kvlmCopy_ma_32f_SL(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmCopy_ma_32f_LS(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                      float *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmCopy_ma_32f_PS(const float *const *src, int srcShift, int srcObjStride, float *dst,
                                      int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                      int count);
KVLM_API KvlStatus kvlmCopy_ma_32f_LP(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                      float *const *dst, int dstShift, int dstObjStride, int width, int height,
                                      int count);
KVLM_API KvlStatus kvlmCopy_ma_32f_LL(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                      float *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmCopy_ma_32f_PP(const float *const *src, int srcShift, int srcObjStride, float *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmCopy_ma_32f_PL(const float *const *src, int srcShift, int srcObjStride, float *const *dst,
                                      int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                      int count);

KVLM_API KvlStatus kvlmCopy_ma_64f_SS(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                      double *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmCopy_ma_64f_SP(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                      double *const *dst, int dstShift, int dstObjStride, int width, int height,
                                      int count);
KVLM_API KvlStatus kvlmCopy_ma_64f_SL(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmCopy_ma_64f_LS(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                      double *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmCopy_ma_64f_PS(const double *const *src, int srcShift, int srcObjStride, double *dst,
                                      int dstObjStride, int dstRowStride, int dstElemStride, int width, int height,
                                      int count);
KVLM_API KvlStatus kvlmCopy_ma_64f_LP(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                      double *const *dst, int dstShift, int dstObjStride, int width, int height,
                                      int count);
KVLM_API KvlStatus kvlmCopy_ma_64f_LL(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                      double *const *dst, int dstShift, int dstRowStride, int dstElemStride, int width,
                                      int height, int count);
KVLM_API KvlStatus kvlmCopy_ma_64f_PP(const double *const *src, int srcShift, int srcObjStride, double *const *dst,
                                      int dstShift, int dstObjStride, int width, int height, int count);
KVLM_API KvlStatus kvlmCopy_ma_64f_PL(const double *const *src, int srcShift, int srcObjStride, double *const *dst,
                                      int dstShift, int dstRowStride, int dstElemStride, int width, int height,
                                      int count);
/** @} */

/**
 * @defgroup kvlm_extract Extract: into one packed buffer
 * @ingroup kvlm_moves
 * dst is a plain array of the element type without gaps: the elements of a vector, or of a matrix row by row, object
 * after object, in every description. t is read transposed; `width` and `height` are those of the result.
 *
 * Elements move as bits. A source that overlaps dst is read as single elements would be, objects ascending, in each
 * rows, in each columns; in the va and ma forms of _P position after position, at each the objects ascending. Always on
 * the caller's thread.
 *
 * Checks: pointers, sizes, `count`, shifts, strides; in the m and t forms of _P and in kvlmExtract_v_64f_P sizes before
 * pointers. Object strides are looked at whatever `count` is. Always kvlOk after them. Settled: kvlmExtract_m_..._P and
 * kvlmExtract_ma_..._P count positions in 32 bits: where width*height wraps to 0 or below they do nothing, and where it
 * wraps to another number, that many positions are moved, and so far apart do the objects lie in dst.
 * @{
 */
KVLM_API KvlStatus kvlmExtract_v_32f(const float *src, int srcElemStride, float *dst, int len);
KVLM_API KvlStatus kvlmExtract_v_32f_P(const float *const *src, int srcShift, float *dst, int len);
KVLM_API KvlStatus kvlmExtract_v_64f(const double *src, int srcElemStride, double *dst, int len);
KVLM_API KvlStatus kvlmExtract_v_64f_P(const double *const *src, int srcShift, double *dst, int len);

KVLM_API KvlStatus kvlmExtract_va_32f(const float *src, int srcObjStride, int srcElemStride, float *dst, int len,
                                      int count);
KVLM_API KvlStatus kvlmExtract_va_32f_P(const float *const *src, int srcShift, int srcObjStride, float *dst, int len,
                                        int count);
KVLM_API KvlStatus kvlmExtract_va_32f_L(const float *const *src, int srcShift, int srcElemStride, float *dst, int len,
                                        int count);
KVLM_API KvlStatus kvlmExtract_va_64f(const double *src, int srcObjStride, int srcElemStride, double *dst, int len,
                                      int count);
KVLM_API KvlStatus kvlmExtract_va_64f_P(const double *const *src, int srcShift, int srcObjStride, double *dst, int len,
                                        int count);
KVLM_API KvlStatus kvlmExtract_va_64f_L(const double *const *src, int srcShift, int srcElemStride, double *dst, int len,
                                        int count);

KVLM_API KvlStatus kvlmExtract_m_32f(const float *src, int srcRowStride, int srcElemStride, float *dst, int width,
                                     int height);
KVLM_API KvlStatus kvlmExtract_m_32f_P(const float *const *src, int srcShift, float *dst, int width, int height);
KVLM_API KvlStatus kvlmExtract_m_64f(const double *src, int srcRowStride, int srcElemStride, double *dst, int width,
                                     int height);
KVLM_API KvlStatus kvlmExtract_m_64f_P(const double *const *src, int srcShift, double *dst, int width, int height);

KVLM_API KvlStatus kvlmExtract_t_32f(const float *src, int srcRowStride, int srcElemStride, float *dst, int width,
                                     int height);
KVLM_API KvlStatus kvlmExtract_t_32f_P(const float *const *src, int srcShift, float *dst, int width, int height);
KVLM_API KvlStatus kvlmExtract_t_64f(const double *src, int srcRowStride, int srcElemStride, double *dst, int width,
                                     int height);
KVLM_API KvlStatus kvlmExtract_t_64f_P(const double *const *src, int srcShift, double *dst, int width, int height);

KVLM_API KvlStatus kvlmExtract_ma_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                      float *dst, int width, int height, int count);
KVLM_API KvlStatus kvlmExtract_ma_32f_P(const float *const *src, int srcShift, int srcObjStride, float *dst, int width,
                                        int height, int count);
KVLM_API KvlStatus kvlmExtract_ma_32f_L(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                        float *dst, int width, int height, int count);
KVLM_API KvlStatus kvlmExtract_ma_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                      double *dst, int width, int height, int count);
KVLM_API KvlStatus kvlmExtract_ma_64f_P(const double *const *src, int srcShift, int srcObjStride, double *dst,
                                        int width, int height, int count);
KVLM_API KvlStatus kvlmExtract_ma_64f_L(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                        double *dst, int width, int height, int count);

KVLM_API KvlStatus kvlmExtract_ta_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                      float *dst, int width, int height, int count);
KVLM_API KvlStatus kvlmExtract_ta_32f_P(const float *const *src, int srcShift, int srcObjStride, float *dst, int width,
                                        int height, int count);
KVLM_API KvlStatus kvlmExtract_ta_32f_L(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                        float *dst, int width, int height, int count);
KVLM_API KvlStatus kvlmExtract_ta_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                      double *dst, int width, int height, int count);
KVLM_API KvlStatus kvlmExtract_ta_64f_P(const double *const *src, int srcShift, int srcObjStride, double *dst,
                                        int width, int height, int count);
KVLM_API KvlStatus kvlmExtract_ta_64f_L(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                        double *dst, int width, int height, int count);
/** @} */

/**
 * @defgroup kvlm_identity LoadIdentity: an array of identity matrices
 * @ingroup kvlm_moves
 * dst(i, r, c) = 1 where r = c, else +0. Matrices need not be square: a tall one has zero rows below, a wide one zero
 * columns at its right.
 *
 * In each row all elements are set to 0 and then the diagonal one to 1, rows and objects ascending: this decides where
 * elements of dst coincide. Always on the caller's thread.
 *
 * Checks: pointers, sizes, `count`, row and element strides, shifts, object stride; kvlmLoadIdentity_ma_32f_P checks
 * its shift before `count`. The object stride is looked at only if `count` is above 1. Always kvlOk after them.
 * @{
 */
KVLM_API KvlStatus kvlmLoadIdentity_ma_32f(float *dst, int dstObjStride, int dstRowStride, int dstElemStride, int width,
                                           int height, int count);
KVLM_API KvlStatus kvlmLoadIdentity_ma_32f_P(float *const *dst, int dstShift, int dstObjStride, int width, int height,
                                             int count);
KVLM_API KvlStatus kvlmLoadIdentity_ma_32f_L(float *const *dst, int dstShift, int dstRowStride, int dstElemStride,
                                             int width, int height, int count);
KVLM_API KvlStatus kvlmLoadIdentity_ma_64f(double *dst, int dstObjStride, int dstRowStride, int dstElemStride,
                                           int width, int height, int count);
KVLM_API KvlStatus kvlmLoadIdentity_ma_64f_P(double *const *dst, int dstShift, int dstObjStride, int width, int height,
                                             int count);
KVLM_API KvlStatus kvlmLoadIdentity_ma_64f_L(double *const *dst, int dstShift, int dstRowStride, int dstElemStride,
                                             int width, int height, int count);
/** @} */

/**
 * @defgroup kvlm_transpose Transpose
 * @ingroup kvlm_moves
 * dst(c, r) = src(r, c), of one matrix or of each matrix of an array. `width` and `height` are here the columns and
 * rows of src, and stand before dst: the result has `width` rows and `height` columns. In _P the table of src is
 * indexed r*width + c, that of dst c*height + r.
 *
 * Elements move as bits. Always on the caller's thread. Large 32f matrices with adjacent elements in src and dst, but
 * for square ones of order 3 to 6, are written past the cache, fenced before return: in arrays if 8*width*height*count
 * is above three quarters of the cache (and above 131072), else a matrix if 8*width*height is above the cache and both
 * sizes are above 128. Settled: both products wrap at 32 bits. The size of the cache is asked of the core library: once
 * for an array whose product is above 131072, and once for each matrix with both sizes above 128 that is not streamed
 * with its array; 0 means never.
 *
 * Checks: pointers, `count`, sizes, strides, shifts. Always kvlOk after them. dst must not overlap src, nor be src.
 * Where elements of one object of dst coincide, what they hold in the end is defined with strided elements and in _P
 * (the rows of dst one after the other; in _P of any order but square 3 to 6 those of src), not with adjacent ones.
 * @{
 */
KVLM_API KvlStatus kvlmTranspose_m_32f(const float *src, int srcRowStride, int srcElemStride, int width, int height,
                                       float *dst, int dstRowStride, int dstElemStride);
KVLM_API KvlStatus kvlmTranspose_m_32f_P(const float *const *src, int srcShift, int width, int height,
                                         float *const *dst, int dstShift);
KVLM_API KvlStatus kvlmTranspose_m_64f(const double *src, int srcRowStride, int srcElemStride, int width, int height,
                                       double *dst, int dstRowStride, int dstElemStride);
KVLM_API KvlStatus kvlmTranspose_m_64f_P(const double *const *src, int srcShift, int width, int height,
                                         double *const *dst, int dstShift);

KVLM_API KvlStatus kvlmTranspose_ma_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                        int width, int height, float *dst, int dstObjStride, int dstRowStride,
                                        int dstElemStride, int count);
KVLM_API KvlStatus kvlmTranspose_ma_32f_P(const float *const *src, int srcShift, int srcObjStride, int width,
                                          int height, float *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmTranspose_ma_32f_L(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                          int width, int height, float *const *dst, int dstShift, int dstRowStride,
                                          int dstElemStride, int count);
KVLM_API KvlStatus kvlmTranspose_ma_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                        int width, int height, double *dst, int dstObjStride, int dstRowStride,
                                        int dstElemStride, int count);
KVLM_API KvlStatus kvlmTranspose_ma_64f_P(const double *const *src, int srcShift, int srcObjStride, int width,
                                          int height, double *const *dst, int dstShift, int dstObjStride, int count);
KVLM_API KvlStatus kvlmTranspose_ma_64f_L(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                          int width, int height, double *const *dst, int dstShift, int dstRowStride,
                                          int dstElemStride, int count);
/** @} */

/**
 * @defgroup kvlm_eigenvalues_sym Eigenvalues of symmetric matrices
 * @ingroup kvlm_eigen
 * dst holds the eigenvalues of src, of order widthHeight = n: n adjacent elements per object, the objects' runs behind
 * one another, in every description. They descend; settled: at order 2 with a negative trace they ascend. That src is
 * symmetric is not tested; order 2 reads the element right of the diagonal only.
 *
 * `buffer` is scratch for n*n elements, whatever the count, and must not be null for any order. Orders up to 6 leave it
 * alone. The threads of a team have scratch of their own instead.
 *
 * Orders 1 and 2 are closed formulas. All others: Householder's reduction to tridiagonal form, then implicit QL or QR
 * sweeps with Wilkinson's shift, from the end of the diagonal with the smaller magnitude (Golub and Van Loan, Matrix
 * Computations, 8.3). All tests are against eps = 2^-23 (32f) or 2^-52 (64f), whatever the size of the elements: scale
 * matrices that are small.
 *
 * kvlErrSingular if the product of the values is at most eps in magnitude (order 2: the determinant, and then dst is
 * untouched; order 1: never); above order 2 dst then holds the values in no order. Settled: where the iteration goes
 * from the bottom, the product takes the current value of the diagonal again at each split that a search meets, and so
 * may differ from the determinant. kvlErrNoConvergence if 30 sweeps do not find an eigenvalue; dst then means nothing.
 *
 * Values are within a small multiple of n times the unit roundoff times the norm of src, but not below eps. Settled
 * exceptions: a sweep that ends with a tiny change may leave its last elements as they were. Of random matrices less
 * than one in a thousand then ends with kvlErrNoConvergence, or with values that are wrong though the status is kvlOk;
 * where values coincide or are close neighbours, wrong ones are common: from one matrix in twenty to one in two. Arrays
 * take what stands below the sub-diagonal of a column for zero if its squares add up to eps or less: values of small
 * matrices are off by up to the root of eps. Squares must not overflow. NaN may pass unseen; the limit of sweeps ends
 * every call.
 *
 * Checks: pointers, widthHeight, `count`, shifts, strides. dst and buffer must overlap neither src nor each other.
 *
 * Team: from 20001 on, 32f in _L with adjacent elements 40001; W = n*(n + 1)*`count`.
 * @{
 */
KVLM_API KvlStatus kvlmEigenValuesSym_m_32f(const float *src, int srcRowStride, int srcElemStride, float *buffer,
                                            float *dst, int widthHeight);
KVLM_API KvlStatus kvlmEigenValuesSym_m_32f_P(const float *const *src, int srcShift, float *buffer, float *dst,
                                              int widthHeight);
KVLM_API KvlStatus kvlmEigenValuesSym_m_64f(const double *src, int srcRowStride, int srcElemStride, double *buffer,
                                            double *dst, int widthHeight);
KVLM_API KvlStatus kvlmEigenValuesSym_m_64f_P(const double *const *src, int srcShift, double *buffer, double *dst,
                                              int widthHeight);

KVLM_API KvlStatus kvlmEigenValuesSym_ma_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                             float *buffer, float *dst, int widthHeight, int count);
KVLM_API KvlStatus kvlmEigenValuesSym_ma_32f_P(const float *const *src, int srcShift, int srcObjStride, float *buffer,
                                               float *dst, int widthHeight, int count);
KVLM_API KvlStatus kvlmEigenValuesSym_ma_32f_L(const float *const *src, int srcShift, int srcRowStride,
                                               int srcElemStride, float *buffer, float *dst, int widthHeight,
                                               int count);
KVLM_API KvlStatus kvlmEigenValuesSym_ma_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                             double *buffer, double *dst, int widthHeight, int count);
KVLM_API KvlStatus kvlmEigenValuesSym_ma_64f_P(const double *const *src, int srcShift, int srcObjStride, double *buffer,
                                               double *dst, int widthHeight, int count);
KVLM_API KvlStatus kvlmEigenValuesSym_ma_64f_L(const double *const *src, int srcShift, int srcRowStride,
                                               int srcElemStride, double *buffer, double *dst, int widthHeight,
                                               int count);
/** @} */

/**
 * @defgroup kvlm_eigenvectors_sym Eigenvalues and eigenvectors of symmetric matrices
 * @ingroup kvlm_eigen
 * dstValues as dst of the eigenvalues alone, and dstVectors, a matrix of order n in the description of the call: column
 * i, elements (0, i) to (n-1, i), is the vector of value i. The columns are orthonormal up to rounding; their signs are
 * as the rotations leave them.
 *
 * Method, `buffer`, tests, order of the values and statuses are those of the eigenvalues alone, with these differences,
 * all settled: the product is that of the values; after kvlErrSingular above order 2 the vectors stand beside the
 * values, both in no order; after kvlErrNoConvergence dstVectors holds the rotations so far and dstValues means
 * nothing. The forms on arrays compute in 64f at 32f too, and round what they store; those on one matrix compute in
 * 32f, so the last bits of the two differ.
 *
 * Checks: pointers, widthHeight, `count`, shifts, strides. No destination may overlap src, buffer or another.
 *
 * Accuracy: the columns are orthonormal within a small multiple of n*u; A*v - w*v is as small as the errors of the
 * values are. Team: from 1701 on; W = n*(2*n + 1)*`count`.
 * @{
 */
KVLM_API KvlStatus kvlmEigenValuesVectorsSym_m_32f(const float *src, int srcRowStride, int srcElemStride, float *buffer,
                                                   float *dstVectors, int dstRowStride, int dstElemStride,
                                                   float *dstValues, int widthHeight);
KVLM_API KvlStatus kvlmEigenValuesVectorsSym_m_32f_P(const float *const *src, int srcShift, float *buffer,
                                                     float *const *dstVectors, int dstShift, float *dstValues,
                                                     int widthHeight);
KVLM_API KvlStatus kvlmEigenValuesVectorsSym_m_64f(const double *src, int srcRowStride, int srcElemStride,
                                                   double *buffer, double *dstVectors, int dstRowStride,
                                                   int dstElemStride, double *dstValues, int widthHeight);
KVLM_API KvlStatus kvlmEigenValuesVectorsSym_m_64f_P(const double *const *src, int srcShift, double *buffer,
                                                     double *const *dstVectors, int dstShift, double *dstValues,
                                                     int widthHeight);

KVLM_API KvlStatus kvlmEigenValuesVectorsSym_ma_32f(const float *src, int srcObjStride, int srcRowStride,
                                                    int srcElemStride, float *buffer, float *dstVectors,
                                                    int dstObjStride, int dstRowStride, int dstElemStride,
                                                    float *dstValues, int widthHeight, int count);
KVLM_API KvlStatus kvlmEigenValuesVectorsSym_ma_32f_P(const float *const *src, int srcShift, int srcObjStride,
                                                      float *buffer, float *const *dstVectors, int dstShift,
                                                      int dstObjStride, float *dstValues, int widthHeight, int count);
KVLM_API KvlStatus kvlmEigenValuesVectorsSym_ma_32f_L(const float *const *src, int srcShift, int srcRowStride,
                                                      int srcElemStride, float *buffer, float *const *dstVectors,
                                                      int dstShift, int dstRowStride, int dstElemStride,
                                                      float *dstValues, int widthHeight, int count);
KVLM_API KvlStatus kvlmEigenValuesVectorsSym_ma_64f(const double *src, int srcObjStride, int srcRowStride,
                                                    int srcElemStride, double *buffer, double *dstVectors,
                                                    int dstObjStride, int dstRowStride, int dstElemStride,
                                                    double *dstValues, int widthHeight, int count);
KVLM_API KvlStatus kvlmEigenValuesVectorsSym_ma_64f_P(const double *const *src, int srcShift, int srcObjStride,
                                                      double *buffer, double *const *dstVectors, int dstShift,
                                                      int dstObjStride, double *dstValues, int widthHeight, int count);
KVLM_API KvlStatus kvlmEigenValuesVectorsSym_ma_64f_L(const double *const *src, int srcShift, int srcRowStride,
                                                      int srcElemStride, double *buffer, double *const *dstVectors,
                                                      int dstShift, int dstRowStride, int dstElemStride,
                                                      double *dstValues, int widthHeight, int count);
/** @} */

/**
 * @defgroup kvlm_eigen_scratch Scratch of general eigenproblems
 * @ingroup kvlm_eigen
 * *size gets the bytes that `buffer` must have for matrices of order widthHeight = n, for a single object and for an
 * array alike: n*(n + 5) elements for the eigenvalues alone, n*(3*n + 5) for eigenvalues and vectors. The product wraps
 * at 32 bits, as n reaches ten thousands.
 *
 * Checks: size, widthHeight.
 * @{
 */
KVLM_API KvlStatus kvlmEigenValuesGetBufSize_32f(int widthHeight, int *size);
KVLM_API KvlStatus kvlmEigenValuesGetBufSize_64f(int widthHeight, int *size);
KVLM_API KvlStatus kvlmEigenValuesVectorsGetBufSize_32f(int widthHeight, int *size);
KVLM_API KvlStatus kvlmEigenValuesVectorsGetBufSize_64f(int widthHeight, int *size);
/** @} */

/**
 * @defgroup kvlm_eigenvalues Eigenvalues of general matrices
 * @ingroup kvlm_eigen
 * dstRe and dstIm hold the real and imaginary parts of the eigenvalues of src, of order widthHeight = n: n adjacent
 * elements each per object, the objects' runs behind one another, in every description. Complex pairs stand side by
 * side, the value with the positive imaginary part first. There is no other order: the values come as the diagonal
 * blocks of the transposed matrix's Schur form do.
 *
 * `buffer` is scratch of kvlmEigenValuesGetBufSize bytes, whatever the count; no alignment is asked of it. The threads
 * of a team have scratch of their own instead.
 *
 * Method: Householder's reduction to Hessenberg form, then double-step QR sweeps with implicit shifts and exceptional
 * ones after 10 and 20 (Golub and Van Loan, Matrix Computations, 7.4 and 7.5; LAPACK's hqr), on the transpose of src,
 * without balancing or scaling. Settled: an off-diagonal element of the Hessenberg form counts as zero if it is at most
 * eps = 2^-23 (32f) or 2^-52 (64f), whatever stands beside it, so the error is up to a small multiple of n times eps
 * times the larger of 1 and the norm of src, and more for values that are ill-conditioned: scale matrices that are
 * small. Settled, too: a 2 x 2 block with equal diagonal elements is a complex pair, also where its values are real, so
 * that the rows (2, 1) and (1, 2) have the values 2 + i and 2 - i in place of 3 and 1; and where two real values of a
 * block nearly meet, they may come out as far apart as its diagonal elements were.
 *
 * A diagonal or lower triangular src has its diagonal as values, in order. Zeros, infinities and NaN are ordinary
 * elements: every call ends.
 *
 * kvlErrNoConvergence if 30*n sweeps in all do not suffice: the values that were found stand at the end of the object's
 * runs, the elements before them are untouched.
 *
 * Checks: pointers, widthHeight, `count`, shifts, strides. dstRe, dstIm and buffer must overlap neither src nor each
 * other.
 *
 * Team: from 10001 on; W = n*(n + 1)*`count`.
 * @{
 */
KVLM_API KvlStatus kvlmEigenValues_m_32f(const float *src, int srcRowStride, int srcElemStride, float *dstRe,
                                         float *dstIm, int widthHeight, float *buffer);
KVLM_API KvlStatus kvlmEigenValues_m_32f_P(const float *const *src, int srcShift, float *dstRe, float *dstIm,
                                           int widthHeight, float *buffer);
KVLM_API KvlStatus kvlmEigenValues_m_64f(const double *src, int srcRowStride, int srcElemStride, double *dstRe,
                                         double *dstIm, int widthHeight, double *buffer);
KVLM_API KvlStatus kvlmEigenValues_m_64f_P(const double *const *src, int srcShift, double *dstRe, double *dstIm,
                                           int widthHeight, double *buffer);

KVLM_API KvlStatus kvlmEigenValues_ma_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                          float *dstRe, float *dstIm, int widthHeight, int count, float *buffer);
KVLM_API KvlStatus kvlmEigenValues_ma_32f_P(const float *const *src, int srcShift, int srcObjStride, float *dstRe,
                                            float *dstIm, int widthHeight, int count, float *buffer);
KVLM_API KvlStatus kvlmEigenValues_ma_32f_L(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                            float *dstRe, float *dstIm, int widthHeight, int count, float *buffer);
KVLM_API KvlStatus kvlmEigenValues_ma_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                          double *dstRe, double *dstIm, int widthHeight, int count, double *buffer);
KVLM_API KvlStatus kvlmEigenValues_ma_64f_P(const double *const *src, int srcShift, int srcObjStride, double *dstRe,
                                            double *dstIm, int widthHeight, int count, double *buffer);
KVLM_API KvlStatus kvlmEigenValues_ma_64f_L(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                            double *dstRe, double *dstIm, int widthHeight, int count, double *buffer);
/** @} */

/**
 * @defgroup kvlm_eigenvectors Eigenvalues and both sets of eigenvectors of general matrices
 * @ingroup kvlm_eigen
 * dstRe and dstIm as in the eigenvalues alone, and two matrices of order n in the description of the call,
 * dstVectorsRight and dstVectorsLeft. Their columns are vectors of Euclidean length 1, up to rounding:
 *
 * - of a real value w at position j, column j. With x of the right set and y of the left set and A = src,
 *   A^T * x = w * x and A * y = w * y. The sides are those of the transposed matrix: what is usually called a right
 *   eigenvector of src is found in dstVectorsLeft;
 * - of a pair at positions j and j + 1, column j is the real part u and column j + 1 the imaginary part v. With w the
 *   value at position j, A^T * (u + i*v) = w * (u + i*v) for the right set, and A * (u - i*v) = w * (u - i*v) for the
 *   left set. The conjugates belong to the value at j + 1. A pair is turned so that its largest element is real, up to
 *   rounding; the signs are free.
 *
 * `buffer` is scratch of kvlmEigenValuesVectorsGetBufSize bytes, otherwise as above.
 *
 * Method: that of the eigenvalues alone, on the whole matrix and accumulating the transformations; then substitution in
 * the Schur form, product, normalisation (Golub and Van Loan, Matrix Computations, 7.6.4; LAPACK's hqr2, trevc). An
 * off-diagonal element counts as zero if it is at most eps times the sum of its neighbours on the diagonal, or, where
 * both vanish, a norm of the active block: so small matrices need no scaling here, and the values may differ from those
 * of the eigenvalues alone. At 32f lengths are made 1 by the processor's approximate reciprocal root and one Newton
 * step, which may differ from processor to processor in the last bits.
 *
 * Residuals are within a small multiple of n times eps times the norm of src. Defective values have vectors that are
 * parallel up to rounding. Settled exceptions: in a 2 x 2 block with equal diagonal elements and neighbours of the same
 * sign the rotation of an earlier block is applied, or, in the first block, one that is zero, which makes the vectors
 * NaN; and where two real values of a block nearly meet, the Schur form is not exact.
 *
 * kvlErrNoConvergence as in the eigenvalues alone. kvlErrSmallPivot if a 2 x 2 block vanishes in the substitution for a
 * complex pair, as happens with infinities and NaN: dstRe and dstIm are then complete. Settled: if that happens in the
 * substitution for a real value the call ends with kvlOk. In all these cases neither vectors of the object nor any
 * later object is written (in a team: of the thread's part).
 *
 * Checks: pointers, widthHeight, `count`, srcShift, strides of src, shifts of the destinations, their strides; in the
 * standard description: pointers, widthHeight, `count`, strides. No destination may overlap src, buffer or another.
 *
 * Team: from 7001 on; W = n*(3*n + 1)*`count`.
 * @{
 */
KVLM_API KvlStatus kvlmEigenValuesVectors_m_32f(const float *src, int srcRowStride, int srcElemStride,
                                                float *dstVectorsRight, int dstRightRowStride, int dstRightElemStride,
                                                float *dstVectorsLeft, int dstLeftRowStride, int dstLeftElemStride,
                                                float *dstRe, float *dstIm, int widthHeight, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectors_m_32f_P(const float *const *src, int srcShift, float *const *dstVectorsRight,
                                                  int dstRightShift, float *const *dstVectorsLeft, int dstLeftShift,
                                                  float *dstRe, float *dstIm, int widthHeight, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectors_m_64f(const double *src, int srcRowStride, int srcElemStride,
                                                double *dstVectorsRight, int dstRightRowStride, int dstRightElemStride,
                                                double *dstVectorsLeft, int dstLeftRowStride, int dstLeftElemStride,
                                                double *dstRe, double *dstIm, int widthHeight, double *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectors_m_64f_P(const double *const *src, int srcShift,
                                                  double *const *dstVectorsRight, int dstRightShift,
                                                  double *const *dstVectorsLeft, int dstLeftShift, double *dstRe,
                                                  double *dstIm, int widthHeight, double *buffer);

KVLM_API KvlStatus kvlmEigenValuesVectors_ma_32f(const float *src, int srcObjStride, int srcRowStride,
                                                 int srcElemStride, float *dstVectorsRight, int dstRightObjStride,
                                                 int dstRightRowStride, int dstRightElemStride, float *dstVectorsLeft,
                                                 int dstLeftObjStride, int dstLeftRowStride, int dstLeftElemStride,
                                                 float *dstRe, float *dstIm, int widthHeight, int count, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectors_ma_32f_P(const float *const *src, int srcShift, int srcObjStride,
                                                   float *const *dstVectorsRight, int dstRightShift,
                                                   int dstRightObjStride, float *const *dstVectorsLeft,
                                                   int dstLeftShift, int dstLeftObjStride, float *dstRe, float *dstIm,
                                                   int widthHeight, int count, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectors_ma_32f_L(const float *const *src, int srcShift, int srcRowStride,
                                                   int srcElemStride, float *const *dstVectorsRight, int dstRightShift,
                                                   int dstRightRowStride, int dstRightElemStride,
                                                   float *const *dstVectorsLeft, int dstLeftShift, int dstLeftRowStride,
                                                   int dstLeftElemStride, float *dstRe, float *dstIm, int widthHeight,
                                                   int count, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectors_ma_64f(const double *src, int srcObjStride, int srcRowStride,
                                                 int srcElemStride, double *dstVectorsRight, int dstRightObjStride,
                                                 int dstRightRowStride, int dstRightElemStride, double *dstVectorsLeft,
                                                 int dstLeftObjStride, int dstLeftRowStride, int dstLeftElemStride,
                                                 double *dstRe, double *dstIm, int widthHeight, int count,
                                                 double *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectors_ma_64f_P(const double *const *src, int srcShift, int srcObjStride,
                                                   double *const *dstVectorsRight, int dstRightShift,
                                                   int dstRightObjStride, double *const *dstVectorsLeft,
                                                   int dstLeftShift, int dstLeftObjStride, double *dstRe, double *dstIm,
                                                   int widthHeight, int count, double *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectors_ma_64f_L(const double *const *src, int srcShift, int srcRowStride,
                                                   int srcElemStride, double *const *dstVectorsRight, int dstRightShift,
                                                   int dstRightRowStride, int dstRightElemStride,
                                                   double *const *dstVectorsLeft, int dstLeftShift,
                                                   int dstLeftRowStride, int dstLeftElemStride, double *dstRe,
                                                   double *dstIm, int widthHeight, int count, double *buffer);
/** @} */

/**
 * @defgroup kvlm_eigenvectors_side Eigenvalues and one set of eigenvectors of general matrices
 * @ingroup kvlm_eigen
 * dst gets the columns of dstVectorsRight or those of dstVectorsLeft above, bit for bit, dstRe and dstIm the same
 * values. `buffer`, method, statuses and accuracy are those of both sets; kvlErrSmallPivot and the silent end come from
 * the one substitution that is made.
 *
 * Checks: as for both sets.
 *
 * Team: from 7001 on; W = n*(3*n + 1)*`count`.
 * @{
 */
KVLM_API KvlStatus kvlmEigenValuesVectorsRight_m_32f(const float *src, int srcRowStride, int srcElemStride, float *dst,
                                                     int dstRowStride, int dstElemStride, float *dstRe, float *dstIm,
                                                     int widthHeight, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsRight_m_32f_P(const float *const *src, int srcShift, float *const *dst,
                                                       int dstShift, float *dstRe, float *dstIm, int widthHeight,
                                                       float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsRight_m_64f(const double *src, int srcRowStride, int srcElemStride,
                                                     double *dst, int dstRowStride, int dstElemStride, double *dstRe,
                                                     double *dstIm, int widthHeight, double *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsRight_m_64f_P(const double *const *src, int srcShift, double *const *dst,
                                                       int dstShift, double *dstRe, double *dstIm, int widthHeight,
                                                       double *buffer);

KVLM_API KvlStatus kvlmEigenValuesVectorsRight_ma_32f(const float *src, int srcObjStride, int srcRowStride,
                                                      int srcElemStride, float *dst, int dstObjStride, int dstRowStride,
                                                      int dstElemStride, float *dstRe, float *dstIm, int widthHeight,
                                                      int count, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsRight_ma_32f_P(const float *const *src, int srcShift, int srcObjStride,
                                                        float *const *dst, int dstShift, int dstObjStride, float *dstRe,
                                                        float *dstIm, int widthHeight, int count, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsRight_ma_32f_L(const float *const *src, int srcShift, int srcRowStride,
                                                        int srcElemStride, float *const *dst, int dstShift,
                                                        int dstRowStride, int dstElemStride, float *dstRe, float *dstIm,
                                                        int widthHeight, int count, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsRight_ma_64f(const double *src, int srcObjStride, int srcRowStride,
                                                      int srcElemStride, double *dst, int dstObjStride,
                                                      int dstRowStride, int dstElemStride, double *dstRe, double *dstIm,
                                                      int widthHeight, int count, double *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsRight_ma_64f_P(const double *const *src, int srcShift, int srcObjStride,
                                                        double *const *dst, int dstShift, int dstObjStride,
                                                        double *dstRe, double *dstIm, int widthHeight, int count,
                                                        double *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsRight_ma_64f_L(const double *const *src, int srcShift, int srcRowStride,
                                                        int srcElemStride, double *const *dst, int dstShift,
                                                        int dstRowStride, int dstElemStride, double *dstRe,
                                                        double *dstIm, int widthHeight, int count, double *buffer);

KVLM_API KvlStatus kvlmEigenValuesVectorsLeft_m_32f(const float *src, int srcRowStride, int srcElemStride, float *dst,
                                                    int dstRowStride, int dstElemStride, float *dstRe, float *dstIm,
                                                    int widthHeight, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsLeft_m_32f_P(const float *const *src, int srcShift, float *const *dst,
                                                      int dstShift, float *dstRe, float *dstIm, int widthHeight,
                                                      float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsLeft_m_64f(const double *src, int srcRowStride, int srcElemStride, double *dst,
                                                    int dstRowStride, int dstElemStride, double *dstRe, double *dstIm,
                                                    int widthHeight, double *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsLeft_m_64f_P(const double *const *src, int srcShift, double *const *dst,
                                                      int dstShift, double *dstRe, double *dstIm, int widthHeight,
                                                      double *buffer);

KVLM_API KvlStatus kvlmEigenValuesVectorsLeft_ma_32f(const float *src, int srcObjStride, int srcRowStride,
                                                     int srcElemStride, float *dst, int dstObjStride, int dstRowStride,
                                                     int dstElemStride, float *dstRe, float *dstIm, int widthHeight,
                                                     int count, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsLeft_ma_32f_P(const float *const *src, int srcShift, int srcObjStride,
                                                       float *const *dst, int dstShift, int dstObjStride, float *dstRe,
                                                       float *dstIm, int widthHeight, int count, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsLeft_ma_32f_L(const float *const *src, int srcShift, int srcRowStride,
                                                       int srcElemStride, float *const *dst, int dstShift,
                                                       int dstRowStride, int dstElemStride, float *dstRe, float *dstIm,
                                                       int widthHeight, int count, float *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsLeft_ma_64f(const double *src, int srcObjStride, int srcRowStride,
                                                     int srcElemStride, double *dst, int dstObjStride, int dstRowStride,
                                                     int dstElemStride, double *dstRe, double *dstIm, int widthHeight,
                                                     int count, double *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsLeft_ma_64f_P(const double *const *src, int srcShift, int srcObjStride,
                                                       double *const *dst, int dstShift, int dstObjStride,
                                                       double *dstRe, double *dstIm, int widthHeight, int count,
                                                       double *buffer);
KVLM_API KvlStatus kvlmEigenValuesVectorsLeft_ma_64f_L(const double *const *src, int srcShift, int srcRowStride,
                                                       int srcElemStride, double *const *dst, int dstShift,
                                                       int dstRowStride, int dstElemStride, double *dstRe,
                                                       double *dstIm, int widthHeight, int count, double *buffer);
/** @} */

/**
 * @defgroup kvlm_cholesky Cholesky decomposition
 * @ingroup kvlm_systems
 * A = L * L^T for symmetric positive definite A, of order widthHeight = n, without pivoting (Golub and Van Loan, Matrix
 * Computations, 4.2). Of src only the elements on and below the diagonal are read: symmetry is taken for granted. dst
 * gets L below the diagonal and the *reciprocals* of L's diagonal on it, as kvlmCholeskyBackSubst wants them; above it
 * dst is not written. In _P table entries above the diagonal are never followed.
 *
 * Row by row, each element from the left: a(i, j) minus the products of the rows i and j of L, one at a time,
 * ascending; times the reciprocal in row j. On the diagonal 1/sqrt(s), s being what is left of a(i, i): at 64f rounded
 * twice, at 32f the processor's approximate reciprocal root y and one Newton step, (y * (s*y*y - 3)) * -0.5, which is
 * within 4*u and may differ from processor to processor in the last bits.
 *
 * kvlErrNotPositiveDefinite if some s is not above 0; NaN is not. Settled exceptions: 2^-23 takes the place of 0 at
 * order 3 in _P, at both types; 2^-52 in kvlmCholeskyDecomp_ma_64f with an element stride other than 8 at orders other
 * than 3, 4 and 5. After a failure in row i the rows before it stand in dst, and row i up to the diagonal.
 *
 * Team: 32f standard from 7501 on; 64f in _L with adjacent elements 721; all others 2001; W = n*n*`count`.
 *
 * Checks: pointers, `count`, widthHeight, strides, shifts. dst may be src with the same strides. The residual
 * A - L*L^T is a small multiple of n times the unit roundoff times the norm of A.
 * @{
 */
KVLM_API KvlStatus kvlmCholeskyDecomp_m_32f(const float *src, int srcRowStride, int srcElemStride, float *dst,
                                            int dstRowStride, int dstElemStride, int widthHeight);
KVLM_API KvlStatus kvlmCholeskyDecomp_m_32f_P(const float *const *src, int srcShift, float *const *dst, int dstShift,
                                              int widthHeight);
KVLM_API KvlStatus kvlmCholeskyDecomp_m_64f(const double *src, int srcRowStride, int srcElemStride, double *dst,
                                            int dstRowStride, int dstElemStride, int widthHeight);
KVLM_API KvlStatus kvlmCholeskyDecomp_m_64f_P(const double *const *src, int srcShift, double *const *dst, int dstShift,
                                              int widthHeight);

KVLM_API KvlStatus kvlmCholeskyDecomp_ma_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                             float *dst, int dstObjStride, int dstRowStride, int dstElemStride,
                                             int widthHeight, int count);
KVLM_API KvlStatus kvlmCholeskyDecomp_ma_32f_P(const float *const *src, int srcShift, int srcObjStride,
                                               float *const *dst, int dstShift, int dstObjStride, int widthHeight,
                                               int count);
KVLM_API KvlStatus kvlmCholeskyDecomp_ma_32f_L(const float *const *src, int srcShift, int srcRowStride,
                                               int srcElemStride, float *const *dst, int dstShift, int dstRowStride,
                                               int dstElemStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmCholeskyDecomp_ma_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                             double *dst, int dstObjStride, int dstRowStride, int dstElemStride,
                                             int widthHeight, int count);
KVLM_API KvlStatus kvlmCholeskyDecomp_ma_64f_P(const double *const *src, int srcShift, int srcObjStride,
                                               double *const *dst, int dstShift, int dstObjStride, int widthHeight,
                                               int count);
KVLM_API KvlStatus kvlmCholeskyDecomp_ma_64f_L(const double *const *src, int srcShift, int srcRowStride,
                                               int srcElemStride, double *const *dst, int dstShift, int dstRowStride,
                                               int dstElemStride, int widthHeight, int count);
/** @} */

/**
 * @defgroup kvlm_cholesky_solve Cholesky solver
 * @ingroup kvlm_systems
 * A*x = b from the factor that kvlmCholeskyDecomp left in src1, of which nothing above the diagonal is read. src2 is b,
 * dst is x. mv is one system, mva one matrix and an array of vectors, mava an array of matrices with a vector each. In
 * kvlmCholeskyBackSubst_mva_..._L src1 is no list.
 *
 * Forward substitution with L and back substitution with its transpose (Golub and Van Loan, Matrix Computations, 3.1),
 * terms subtracted one by one, forward ascending and backward descending. Nothing divides: a plain L, with its true
 * diagonal, gives wrong results.
 *
 * Accuracy: (A + E)*x = b with E a small multiple of n*u times the norm of A. Team: mva from 721 on, 32f standard 1201,
 * W = n*(n + 2*`count`); mava from 1701 on, 32f standard with adjacent elements and 64f in _P 2051, W = n*(n +
 * 2)*`count`.
 *
 * Checks: pointers, `count`, widthHeight, strides, shifts; settled in kvlmCholeskyBackSubst_mva_..._L: pointers,
 * strides, shifts, widthHeight, `count`. Always kvlOk after them. dst may be src2 with the same strides; it must not
 * overlap src1.
 * @{
 */
KVLM_API KvlStatus kvlmCholeskyBackSubst_mv_32f(const float *src1, int src1RowStride, int src1ElemStride,
                                                const float *src2, int src2ElemStride, float *dst, int dstElemStride,
                                                int widthHeight);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mv_32f_P(const float *const *src1, int src1Shift, const float *const *src2,
                                                  int src2Shift, float *const *dst, int dstShift, int widthHeight);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mv_64f(const double *src1, int src1RowStride, int src1ElemStride,
                                                const double *src2, int src2ElemStride, double *dst, int dstElemStride,
                                                int widthHeight);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mv_64f_P(const double *const *src1, int src1Shift, const double *const *src2,
                                                  int src2Shift, double *const *dst, int dstShift, int widthHeight);

KVLM_API KvlStatus kvlmCholeskyBackSubst_mva_32f(const float *src1, int src1RowStride, int src1ElemStride,
                                                 const float *src2, int src2ObjStride, int src2ElemStride, float *dst,
                                                 int dstObjStride, int dstElemStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mva_32f_P(const float *const *src1, int src1Shift, const float *const *src2,
                                                   int src2Shift, int src2ObjStride, float *const *dst, int dstShift,
                                                   int dstObjStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mva_32f_L(const float *src1, int src1RowStride, int src1ElemStride,
                                                   const float *const *src2, int src2Shift, int src2ElemStride,
                                                   float *const *dst, int dstShift, int dstElemStride, int widthHeight,
                                                   int count);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mva_64f(const double *src1, int src1RowStride, int src1ElemStride,
                                                 const double *src2, int src2ObjStride, int src2ElemStride, double *dst,
                                                 int dstObjStride, int dstElemStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mva_64f_P(const double *const *src1, int src1Shift, const double *const *src2,
                                                   int src2Shift, int src2ObjStride, double *const *dst, int dstShift,
                                                   int dstObjStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mva_64f_L(const double *src1, int src1RowStride, int src1ElemStride,
                                                   const double *const *src2, int src2Shift, int src2ElemStride,
                                                   double *const *dst, int dstShift, int dstElemStride, int widthHeight,
                                                   int count);

KVLM_API KvlStatus kvlmCholeskyBackSubst_mava_32f(const float *src1, int src1ObjStride, int src1RowStride,
                                                  int src1ElemStride, const float *src2, int src2ObjStride,
                                                  int src2ElemStride, float *dst, int dstObjStride, int dstElemStride,
                                                  int widthHeight, int count);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mava_32f_P(const float *const *src1, int src1Shift, int src1ObjStride,
                                                    const float *const *src2, int src2Shift, int src2ObjStride,
                                                    float *const *dst, int dstShift, int dstObjStride, int widthHeight,
                                                    int count);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mava_32f_L(const float *const *src1, int src1Shift, int src1RowStride,
                                                    int src1ElemStride, const float *const *src2, int src2Shift,
                                                    int src2ElemStride, float *const *dst, int dstShift,
                                                    int dstElemStride, int widthHeight, int count);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mava_64f(const double *src1, int src1ObjStride, int src1RowStride,
                                                  int src1ElemStride, const double *src2, int src2ObjStride,
                                                  int src2ElemStride, double *dst, int dstObjStride, int dstElemStride,
                                                  int widthHeight, int count);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mava_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                                    const double *const *src2, int src2Shift, int src2ObjStride,
                                                    double *const *dst, int dstShift, int dstObjStride, int widthHeight,
                                                    int count);
KVLM_API KvlStatus kvlmCholeskyBackSubst_mava_64f_L(const double *const *src1, int src1Shift, int src1RowStride,
                                                    int src1ElemStride, const double *const *src2, int src2Shift,
                                                    int src2ElemStride, double *const *dst, int dstShift,
                                                    int dstElemStride, int widthHeight, int count);
/** @} */

/**
 * @defgroup kvlm_qr QR decomposition
 * @ingroup kvlm_systems
 * A = Q*R for matrices of `height` rows and `width` columns, width <= height, by Householder reflections (Golub and Van
 * Loan, Matrix Computations, 5.2), all shapes by the same steps. dst gets R on and above the diagonal; below it column
 * k holds v_k(i), i > k, of the reflector I + b*v*v^T with v_k(k) = 1 and b = -2/(v, v). A square matrix has no
 * reflector for its last column. Q is never formed: kvlmQRBackSubst reads this packed form.
 *
 * For each column k: s, the squared length from the diagonal down, summed ascending; r = sqrt(s), negated unless the
 * diagonal element is above 0, so that a positive one gives a negative R(k, k); v(i) = a(i, k) * (1/(a(k, k) + r)).
 * Then for each column j from k on t = b * (a(k, j) + the products with v, ascending), and a(i, j) += v(i)*t.
 *
 * kvlErrZeroDivisor if s is below 2^-23 (32f) or 2^-52 (64f): the squared length itself, not scaled by the matrix. The
 * last column of a square matrix is not tested; NaN passes. After a failure in column k dst holds the whole matrix with
 * the reflectors before k applied and stored.
 *
 * `buffer` is scratch of `height` elements, one for all objects, and must not be null. Teams have their own.
 *
 * Team: from 2801 on, _P and _L 1801; W = 2*width*height*`count`.
 *
 * Checks: pointers, `count`, width and height, strides, shifts, at last width <= height (kvlErrSizeMatch). dst may be
 * src with the same strides. The residual A - Q*R and the departure of Q from orthogonality are small multiples of
 * `height` times the unit roundoff (times the norm of A).
 * @{
 */
KVLM_API KvlStatus kvlmQRDecomp_m_32f(const float *src, int srcRowStride, int srcElemStride, float *buffer, float *dst,
                                      int dstRowStride, int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmQRDecomp_m_32f_P(const float *const *src, int srcShift, float *buffer, float *const *dst,
                                        int dstShift, int width, int height);
KVLM_API KvlStatus kvlmQRDecomp_m_64f(const double *src, int srcRowStride, int srcElemStride, double *buffer,
                                      double *dst, int dstRowStride, int dstElemStride, int width, int height);
KVLM_API KvlStatus kvlmQRDecomp_m_64f_P(const double *const *src, int srcShift, double *buffer, double *const *dst,
                                        int dstShift, int width, int height);

KVLM_API KvlStatus kvlmQRDecomp_ma_32f(const float *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                       float *buffer, float *dst, int dstObjStride, int dstRowStride, int dstElemStride,
                                       int width, int height, int count);
KVLM_API KvlStatus kvlmQRDecomp_ma_32f_P(const float *const *src, int srcShift, int srcObjStride, float *buffer,
                                         float *const *dst, int dstShift, int dstObjStride, int width, int height,
                                         int count);
KVLM_API KvlStatus kvlmQRDecomp_ma_32f_L(const float *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                         float *buffer, float *const *dst, int dstShift, int dstRowStride,
                                         int dstElemStride, int width, int height, int count);
KVLM_API KvlStatus kvlmQRDecomp_ma_64f(const double *src, int srcObjStride, int srcRowStride, int srcElemStride,
                                       double *buffer, double *dst, int dstObjStride, int dstRowStride,
                                       int dstElemStride, int width, int height, int count);
KVLM_API KvlStatus kvlmQRDecomp_ma_64f_P(const double *const *src, int srcShift, int srcObjStride, double *buffer,
                                         double *const *dst, int dstShift, int dstObjStride, int width, int height,
                                         int count);
KVLM_API KvlStatus kvlmQRDecomp_ma_64f_L(const double *const *src, int srcShift, int srcRowStride, int srcElemStride,
                                         double *buffer, double *const *dst, int dstShift, int dstRowStride,
                                         int dstElemStride, int width, int height, int count);
/** @} */

/**
 * @defgroup kvlm_qr_solve QR solver
 * @ingroup kvlm_systems
 * A*x = b, for height > width in the sense of least squares, from what kvlmQRDecomp left in src1: src2 is b with
 * `height` elements, dst is x with `width`. mv is one system, mva one matrix and an array of vectors, mava an array of
 * matrices with a vector each. In kvlmQRBackSubst_mva_..._L src1 is no list.
 *
 * The reflectors are applied to b in turn, each with b = -2/(v, v) anew from its tail, then R is solved for by back
 * substitution with true divisions (Golub and Van Loan, Matrix Computations, 5.1 and 3.1). The order of its terms
 * differs, settled: for the square orders 3 to 6 they are subtracted one by one from the last column on, in row 0
 * summed from the last column on and subtracted at once; for all other shapes summed ascending, from +0, and subtracted
 * at once.
 *
 * `buffer` is scratch of `height` elements, one for all objects, and must not be null. Teams have their own.
 *
 * Accuracy: x is the least squares solution for some A + E and b + e, beside which E and e are a small multiple of
 * `height`*`width`*u, as Golub and Van Loan, 5.3.
 *
 * Checks: pointers, `count`, width and height, strides, shifts, at last width <= height (kvlErrSizeMatch). Always kvlOk
 * after them: a zero on the diagonal of R gives infinities or NaN. dst may be src2 with the same strides; it must not
 * overlap src1.
 *
 * Team: from 2801 on, _P and _L 1801; W = width*height + (width + height)*`count` of mva, (width*height + width +
 * height)*`count` of mava.
 * @{
 */
KVLM_API KvlStatus kvlmQRBackSubst_mv_32f(const float *src1, int src1RowStride, int src1ElemStride, float *buffer,
                                          const float *src2, int src2ElemStride, float *dst, int dstElemStride,
                                          int width, int height);
KVLM_API KvlStatus kvlmQRBackSubst_mv_32f_P(const float *const *src1, int src1Shift, float *buffer,
                                            const float *const *src2, int src2Shift, float *const *dst, int dstShift,
                                            int width, int height);
KVLM_API KvlStatus kvlmQRBackSubst_mv_64f(const double *src1, int src1RowStride, int src1ElemStride, double *buffer,
                                          const double *src2, int src2ElemStride, double *dst, int dstElemStride,
                                          int width, int height);
KVLM_API KvlStatus kvlmQRBackSubst_mv_64f_P(const double *const *src1, int src1Shift, double *buffer,
                                            const double *const *src2, int src2Shift, double *const *dst, int dstShift,
                                            int width, int height);

KVLM_API KvlStatus kvlmQRBackSubst_mva_32f(const float *src1, int src1RowStride, int src1ElemStride, float *buffer,
                                           const float *src2, int src2ObjStride, int src2ElemStride, float *dst,
                                           int dstObjStride, int dstElemStride, int width, int height, int count);
KVLM_API KvlStatus kvlmQRBackSubst_mva_32f_P(const float *const *src1, int src1Shift, float *buffer,
                                             const float *const *src2, int src2Shift, int src2ObjStride,
                                             float *const *dst, int dstShift, int dstObjStride, int width, int height,
                                             int count);
KVLM_API KvlStatus kvlmQRBackSubst_mva_32f_L(const float *src1, int src1RowStride, int src1ElemStride, float *buffer,
                                             const float *const *src2, int src2Shift, int src2ElemStride,
                                             float *const *dst, int dstShift, int dstElemStride, int width, int height,
                                             int count);
KVLM_API KvlStatus kvlmQRBackSubst_mva_64f(const double *src1, int src1RowStride, int src1ElemStride, double *buffer,
                                           const double *src2, int src2ObjStride, int src2ElemStride, double *dst,
                                           int dstObjStride, int dstElemStride, int width, int height, int count);
KVLM_API KvlStatus kvlmQRBackSubst_mva_64f_P(const double *const *src1, int src1Shift, double *buffer,
                                             const double *const *src2, int src2Shift, int src2ObjStride,
                                             double *const *dst, int dstShift, int dstObjStride, int width, int height,
                                             int count);
KVLM_API KvlStatus kvlmQRBackSubst_mva_64f_L(const double *src1, int src1RowStride, int src1ElemStride, double *buffer,
                                             const double *const *src2, int src2Shift, int src2ElemStride,
                                             double *const *dst, int dstShift, int dstElemStride, int width, int height,
                                             int count);

KVLM_API KvlStatus kvlmQRBackSubst_mava_32f(const float *src1, int src1ObjStride, int src1RowStride, int src1ElemStride,
                                            float *buffer, const float *src2, int src2ObjStride, int src2ElemStride,
                                            float *dst, int dstObjStride, int dstElemStride, int width, int height,
                                            int count);
KVLM_API KvlStatus kvlmQRBackSubst_mava_32f_P(const float *const *src1, int src1Shift, int src1ObjStride, float *buffer,
                                              const float *const *src2, int src2Shift, int src2ObjStride,
                                              float *const *dst, int dstShift, int dstObjStride, int width, int height,
                                              int count);
KVLM_API KvlStatus kvlmQRBackSubst_mava_32f_L(const float *const *src1, int src1Shift, int src1RowStride,
                                              int src1ElemStride, float *buffer, const float *const *src2,
                                              int src2Shift, int src2ElemStride, float *const *dst, int dstShift,
                                              int dstElemStride, int width, int height, int count);
KVLM_API KvlStatus kvlmQRBackSubst_mava_64f(const double *src1, int src1ObjStride, int src1RowStride,
                                            int src1ElemStride, double *buffer, const double *src2, int src2ObjStride,
                                            int src2ElemStride, double *dst, int dstObjStride, int dstElemStride,
                                            int width, int height, int count);
KVLM_API KvlStatus kvlmQRBackSubst_mava_64f_P(const double *const *src1, int src1Shift, int src1ObjStride,
                                              double *buffer, const double *const *src2, int src2Shift,
                                              int src2ObjStride, double *const *dst, int dstShift, int dstObjStride,
                                              int width, int height, int count);
KVLM_API KvlStatus kvlmQRBackSubst_mava_64f_L(const double *const *src1, int src1Shift, int src1RowStride,
                                              int src1ElemStride, double *buffer, const double *const *src2,
                                              int src2Shift, int src2ElemStride, double *const *dst, int dstShift,
                                              int dstElemStride, int width, int height, int count);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
