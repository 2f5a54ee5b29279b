// Transpose of one matrix of 4-byte elements: blocks of rows, in the cache or past it.
#include "kvlmtranspose.h"

#include "kvlcore.h"

#include <algorithm>

using namespace kvlm;

int kvlm::cacheSize()
{
    int size = 0;
    kvlGetMaxCacheSizeB(&size);
    return size;
}

void owniTranspose_32s_asm(const void *src, int srcStride, void *dst, int dstStride, int width, int rows)
{
    const View<const float, Unit<const float>, int> s = {static_cast<const float *>(src), {}, srcStride};
    const View<float, int, Unit<float>> d = {static_cast<float *>(dst), dstStride, {}};
    blocks<float>(First(), s, s, d, rows, width);
}

// Past the cache: a row of the destination is written through to memory.
void owniTranspose_32s_NT(const void *src, int srcStride, void *dst, int dstStride, int width, int rows)
{
    const auto from = [&](int r, int c) { return moved(static_cast<const float *>(src), steps(r, srcStride)) + c; };
    const auto to = [&](int r, int c) { return moved(static_cast<float *>(dst), steps(r, dstStride)) + c; };
    const auto one = [&](int r, int c) KVLM_INLINED {
        int bits;
        memcpy(&bits, from(r, c), sizeof bits);
        _mm_stream_si32(reinterpret_cast<int *>(to(c, r)), bits);
    };
    const bool aligned = ((reinterpret_cast<uintptr_t>(dst) | unsigned(dstStride)) & 15) == 0;
    int c = 0;
    for (; aligned && c + 4 <= width; c += 4) {
        int r = 0;
        for (; r + 4 <= rows; r += 4) {
            Lanes<float> tile[] = {Lanes<float>::load(from(r, c)), Lanes<float>::load(from(r + 1, c)),
                                   Lanes<float>::load(from(r + 2, c)), Lanes<float>::load(from(r + 3, c))};
            transpose(tile);
            for (int k = 0; k < 4; ++k)
                _mm_stream_ps(to(c + k, r), tile[k].v);
        }
        for (; r < rows; ++r)
            for (int k = 0; k < 4; ++k)
                one(r, c + k);
    }
    for (; c < width; ++c)
        for (int r = 0; r < rows; ++r)
            one(r, c);
    _mm_sfence();
}

void ownm_Transpose_32s(const void *src, int srcStride, void *dst, int dstStride, int width, int height, int stream)
{
    if (!stream && std::min(width, height) > 128) {
        const int cache = cacheSize();
        stream = cache != 0 && cache < bytesMoved(width, height, 1);
    }
    int block = stream && width % 16 != 0 ? height : std::min(height, 64);
    for (int row = 0; row < height; row += block) {
        block = std::min(block, height - row);
        (stream ? owniTranspose_32s_NT
                : owniTranspose_32s_asm)(moved(static_cast<const char *>(src), steps(row, srcStride)), srcStride,
                                         static_cast<char *>(dst) + steps(row, 4), dstStride, width, block);
    }
}
