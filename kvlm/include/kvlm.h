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
 * its table is that of the stored matrix, tbl[c*height + r]. `width` and `height` are those of the result.
 *
 * **Arguments** come in the order of the name: each source with its strides or shifts, the destination, the shape
 * (`width`, `height` or `len`), and `count` where there is an array.
 *
 * **Checks.** A stride must be a positive multiple of the element size, a shift a non-negative one; an object may
 * overlap the next, and nothing is asked of the alignment of a base pointer (16 bytes are faster). Arguments are
 * checked before any element is read or written, and the first check that fails decides the status. The order is:
 * pointers, `count`, sizes, strides, shifts, unless a group says otherwise. Entries of tables and lists are not
 * checked.
 *
 * **Aliasing.** The destination must not overlap a source, unless a group says otherwise. In which order the elements
 * of one destination object are written is not defined; of objects that overlap, the later one is written last.
 *
 * **Threads.** Every function may be called from any number of threads at once, on destinations that do not overlap.
 * The library makes threads only for large arrays, and as many as threads_omp_of_n_kvl of the core library says (1 at
 * first: see kvlcore.h). Which calls go to the team is a fixed estimate of the work, the same for every machine. A call
 * made inside an OpenMP parallel region gets a smaller team than it asked for and then leaves objects undone without
 * any status: keep threads_omp_of_n_kvl at 1 in a program that makes its own teams.
 */
#ifndef KVLM_H
#define KVLM_H

#if defined(__GNUC__)
#define KVLM_API __attribute__((visibility("default")))
#else
#define KVLM_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

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

/**
 * @name Add: vectors
 * dst(j) = src1(j) + src2(j), rounded once, j ascending.
 *
 * Checks: pointers, len, strides (_P: shifts). Always kvlOk after them. dst may be src1 or src2 with the same strides.
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
/** @} */

/**
 * @name Add: one matrix and one matrix
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
 * @name Add: an array of matrices and one matrix
 * dst(i, r, c) = A(i, r, c) + B(r, c), A being src1 and B src2, each read as its letter says. Rounded once.
 *
 * Checks: pointers, count, sizes, strides, shifts; in the standard mam forms pointers, count, strides, sizes. Always
 * kvlOk after them. dst may be src1 where that is ma, with the same strides (_P: the same table, shift and object
 * stride); it must not overlap src2. Destination objects that overlap each other hold what objects written one after
 * the other would leave.
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
 * @name Add: an array of matrices and an array of matrices
 * dst(i, r, c) = A(i, r, c) + B(i, r, c), A being src1 and B src2, each read as its letter says. Rounded once. There is
 * no mata form: exchange the operands of tama.
 *
 * Checks: pointers, count, sizes, strides, shifts. Always kvlOk after them. dst may be a source of letters ma with the
 * same strides (_P: the same table, shift and object stride).
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
 * @name Sub: one matrix minus one matrix
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
 * @name Sub: an array of matrices minus one matrix
 * dst(i, r, c) = A(i, r, c) - B(r, c), A being src1 and B src2, each read as its letter says. Rounded once.
 *
 * Checks (those of mam included), statuses and aliasing as in Add of an array of matrices and one matrix.
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
 * @name Sub: one matrix minus an array of matrices
 * dst(i, r, c) = A(r, c) - B(i, r, c), A being src1 and B src2, each read as its letter says. Rounded once: the
 * difference itself, not the negated difference of the mirror form (a zero keeps its sign).
 *
 * Checks: pointers, count, sizes, strides, shifts; in the standard mma forms pointers, count, strides, sizes. Statuses
 * and aliasing as in the mirror form, with src1 and src2 exchanged.
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
 * @name Sub: an array of matrices minus an array of matrices
 * dst(i, r, c) = A(i, r, c) - B(i, r, c), A being src1 and B src2, each read as its letter says. Rounded once.
 *
 * Checks, statuses and aliasing as in Add of an array and an array.
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

#ifdef __cplusplus
}
#endif

#endif
