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
    transposeInCache(Transposition<float>(src, srcStride, dst, dstStride), width, rows);
}

// Single elements, two rows of the destination at a time.
static KVLM_INLINE void streamSingles(const Transposition<float> &x, int width, int rows)
{
    const auto one = [&](int r, int c) KVLM_INLINED {
        int bits;
        memcpy(&bits, x.src.at(c, r), sizeof bits);
        _mm_stream_si32(reinterpret_cast<int *>(x.dst.at(c, r)), bits);
    };
    for (int c = 0; c < width; c += 2)
        for (int r = 0; r < rows; ++r) {
            one(r, c);
            if (c + 1 < width)
                one(r, c + 1);
        }
}

// Whole registers where the rows of the destination are aligned alike: eight lines at a time, as a processor has few
// buffers for lines that go past the cache.
void owniTranspose_32s_NT(const void *src, int srcStride, void *dst, int dstStride, int width, int rows)
{
    const Transposition<float> x(src, srcStride, dst, dstStride);
    const int misaligned = static_cast<int>(reinterpret_cast<uintptr_t>(dst) & 15);
    int first = rows;
    if (dstStride % 16 == 0 && misaligned % 4 == 0)
        first = std::min(rows, (16 - misaligned) % 16 / 4);
    streamSingles(x, width, first);
    const auto whole = x.from(first, 0);
    const auto [c, r] = transposeStrips<8, true>(whole, first < rows ? width : 0, rows - first,
                                                 [](float *d, Lanes<float> v) KVLM_INLINED { _mm_stream_ps(d, v.v); });
    streamSingles(whole.from(r, 0), c, rows - first - r);
    streamSingles(whole.from(0, c), width - c, rows - first);
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
