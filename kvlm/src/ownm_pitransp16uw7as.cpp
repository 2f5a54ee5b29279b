// Transpose of one matrix of 8-byte elements.
#include "kvlmtranspose.h"

using namespace kvlm;
using namespace kvlm::transposition;

void ownm_iTranspose_16u_C4R_W7(const void *src, int srcStride, void *dst, int dstStride, int width, int height)
{
    constexpr int block = 64;
    const Transposition<double> x(src, srcStride, dst, dstStride);
    for (int row = 0; row < height; row += block)
        transposeInCache(x.from(row, 0), width, height - row < block ? height - row : block);
}
