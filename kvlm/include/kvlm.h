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

/**
 * @name Determinant
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
 * @name LU decomposition
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
 * An array stops at the first object that fails: earlier ones are complete, dst and pivot of later ones untouched. In a
 * team this is so in the part of each thread.
 *
 * Checks: pointers, `count`, widthHeight, strides, shifts. dst may be src with the same strides. The residual P*A - L*U
 * is that of textbook partial pivoting, a small multiple of n times the unit roundoff times the norm of A.
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
 * @name LU solver
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
 * @name Inverse
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
 * is judged to be zero by the same test becomes 2n^3*m, so a zero of the inverse comes out as that over the
 * determinant. NaN passes.
 * - order 1: if the element is at most 2m in magnitude. NaN fails in the forms on one matrix and passes in those on
 *   arrays. Never goes to a team.
 *
 * After a failure dst is untouched, but where blocks were used: then row 0 (order 5) or rows 0 and 1 (order 6) hold
 * scratch. An array stops at the first object that fails: earlier ones are complete, later ones untouched. In a team
 * this is so in the part of each thread.
 *
 * Checks: pointers, `count`, widthHeight, strides, shifts. For orders 3 to 6 dst may be src with the same strides; for
 * others it must not overlap src.
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
 * @name Cholesky decomposition
 * A = L * L^T for symmetric positive definite A, of order widthHeight = n, without pivoting (Golub and Van Loan, Matrix
 * Computations, 4.2). Of src only the elements on and below the diagonal are read: symmetry is taken for granted. dst
 * gets L below the diagonal and the *reciprocals* of L's diagonal on it, as kvlmCholeskyBackSubst wants them; above it
 * dst is not written. In _P table entries above the diagonal are never followed.
 *
 * Row by row, each element from the left: a(i, j) minus the products of the rows i and j of L, one at a time,
 * ascending; times the reciprocal in row j. On the diagonal 1/sqrt(s), s being what is left of a(i, i): at 64f rounded
 * twice, at 32f the processor's approximate reciprocal root y and one Newton step, (y * (s*y*y - 3)) * -0.5, which may
 * differ from processor to processor in the last bits.
 *
 * kvlErrNotPositiveDefinite if some s is not above 0; NaN is not. Settled exceptions: 2^-23 takes the place of 0 at
 * order 3 in _P, at both types; 2^-52 in kvlmCholeskyDecomp_ma_64f with an element stride other than 8 at orders other
 * than 3, 4 and 5. After a failure in row i the rows before it stand in dst, and row i up to the diagonal. An array
 * stops at the first object that fails: earlier ones are complete, later ones untouched. In a team this is so in the
 * part of each thread.
 *
 * Work is n*n*`count`; the team takes calls with more than 7500 (standard, 32f), 720 (_L, 64f, adjacent elements), 2000
 * (all others).
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
 * @name Cholesky solver
 * A*x = b from the factor that kvlmCholeskyDecomp left in src1, of which nothing above the diagonal is read. src2 is b,
 * dst is x. mv is one system, mva one matrix and an array of vectors, mava an array of matrices with a vector each. In
 * kvlmCholeskyBackSubst_mva_..._L src1 is no list.
 *
 * Forward substitution with L and back substitution with its transpose (Golub and Van Loan, Matrix Computations, 3.1),
 * terms subtracted one by one, forward ascending and backward descending. Nothing divides: a plain L, with its true
 * diagonal, gives wrong results.
 *
 * The team takes more than this much work: (n + 2*`count`)*n of mva above 1200 (standard, 32f) or 720, n*(n +
 * 2)*`count` of mava above 2050 (standard, 32f, adjacent elements; _P, 64f) or 1700.
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
 * @name QR decomposition
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
 * the reflectors before k applied and stored. An array stops at the first object that fails: earlier ones are complete,
 * later ones untouched. In a team this is so in the part of each thread.
 *
 * `buffer` is scratch of `height` elements, one for all objects, and must not be null. Teams have their own.
 *
 * Work is 2*width*height*`count`; the team takes calls with more than 2800 (standard) or 1800 (_P, _L).
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
 * @name QR solver
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
 * The team takes more than 2800 (standard) or 1800 (_P, _L) of work: width*height + (width + height)*`count` of mva,
 * (width*height + width + height)*`count` of mava.
 *
 * Checks: pointers, `count`, width and height, strides, shifts, at last width <= height (kvlErrSizeMatch). Always kvlOk
 * after them: a zero on the diagonal of R gives infinities or NaN. dst may be src2 with the same strides; it must not
 * overlap src1.
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
