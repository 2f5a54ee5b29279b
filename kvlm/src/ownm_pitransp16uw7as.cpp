// Transpose of one matrix of 8-byte elements.
#include "kvlmtranspose.h"

using namespace kvlm;

void ownm_iTranspose_16u_C4R_W7(const void *src, int srcStride, void *dst, int dstStride, int width, int height)
{
    const View<const double, Unit<const double>, int> s = {static_cast<const double *>(src), {}, srcStride};
    const View<double, int, Unit<double>> d = {static_cast<double *>(dst), dstStride, {}};
    blocks<double>(First(), s, s, d, height, width);
}
