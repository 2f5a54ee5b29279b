// Transpose of one matrix of 4-byte elements: blocks of rows, in the cache or past it.
#include "kvlmtranspose.h"

#include "kvlcore.h"

using namespace kvlm;
using namespace kvlm::transposition;

int kvlm::transposition::cacheSize()
{
    int size = 0;
    kvlGetMaxCacheSizeB(&size);
    return size;
}

void owniTranspose_32s_asm(const void *src, int srcStride, void *dst, int dstStride, int width, int rows)
{
    transposeInCache(Transposition<float>(src, srcStride, dst, dstStride), width, rows);
}

static KVLM_INLINE void streamOne(float *d, const float *s)
{
    int bits;
    memcpy(&bits, s, sizeof bits);
    _mm_stream_si32(reinterpret_cast<int *>(d), bits);
}

// Whole registers as soon as the destination is aligned, if it ever is.
static void streamRun(float *d, const float *s, int n)
{
    int k = 0;
    for (; k < n && reinterpret_cast<uintptr_t>(d + k) % 16 != 0; ++k)
        streamOne(d + k, s + k);
    for (; k + 4 <= n; k += 4)
        _mm_stream_ps(d + k, Lanes<float>::load(s + k).v);
    for (; k < n; ++k)
        streamOne(d + k, s + k);
}

// Lines that go past the cache are fast if they are written whole, at once: they are collected before.
void owniTranspose_32s_NT(const void *src, int srcStride, void *dst, int dstStride, int width, int rows)
{
    constexpr int columns = 16, most = 64;
    alignas(cacheLine) float lines[columns][most];
    const Transposition<float> x(src, srcStride, dst, dstStride);
    const int begun = static_cast<int>(reinterpret_cast<uintptr_t>(dst) % cacheLine / sizeof(float));
    for (int c = 0; c < width; c += columns) {
        const int n = std::min(columns, width - c);
        for (int r = 0, count; r < rows; r += count) {
            count = std::min(rows - r, r == 0 ? most - begun : most);
            transposeInStrips<columns, true>(Transposition<float>(x.src.at(c, r), srcStride, lines, sizeof lines[0]), n,
                                             count);
            for (int k = 0; k < n; ++k)
                streamRun(x.dst.at(c + k, r), lines[k], count);
        }
    }
    _mm_sfence();
}

void ownm_Transpose_32s(const void *src, int srcStride, void *dst, int dstStride, int width, int height, int stream)
{
    if (!stream && std::min(width, height) > 128) {
        const int cache = cacheSize();
        stream = cache != 0 && cache < bytesMoved(width, height, 1);
    }
    const Transposition<float> x(src, srcStride, dst, dstStride);
    for (int row = 0, rows; row < height; row += rows) {
        const auto rest = x.from(row, 0);
        rows = stream && width % 16 != 0 ? height : rowsTogether(rest, width, height - row);
        (stream ? owniTranspose_32s_NT : owniTranspose_32s_asm)(rest.src.base, srcStride, rest.dst.base, dstStride,
                                                                width, rows);
    }
}
