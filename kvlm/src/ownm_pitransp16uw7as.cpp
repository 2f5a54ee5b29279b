// Transpose of one matrix of 8-byte elements.
#include "kvlmtranspose.h"

using namespace kvlm;
using namespace kvlm::transposition;

void ownm_iTranspose_16u_C4R_W7(const void *src, int srcStride, void *dst, int dstStride, int width, int height)
{
    const Transposition<double> x(src, srcStride, dst, dstStride);
    for (int row = 0, rows; row < height; row += rows) {
        const auto rest = x.from(row, 0);
        rows = rowsTogether(rest, width, height - row);
        transposeInCache(rest, width, rows);
    }
}
