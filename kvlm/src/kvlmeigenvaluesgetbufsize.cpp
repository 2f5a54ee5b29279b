// The scratch that callers of the general eigenproblems must have.
#include "kvlmeigen.h"

using namespace kvlm;
using namespace kvlm::eigen;

namespace {

// The parts of the two arguments: null pointers are looked for first.
KVLM_INLINE KvlStatus scratchSize(int widthHeight, int *size, unsigned elements, unsigned bytes)
{
    if (const KvlStatus status = Order<'N', 'S'>::check(Length(widthHeight), PerObject<int>(size, 1)))
        return status;
    put(size, wrapped(static_cast<unsigned>(widthHeight) * elements * bytes));
    return kvlOk;
}

} // namespace

#define SIZE_FUNCTION(name, T, scratch)                                                                                \
    FUNCTION(name, int widthHeight, int *size)                                                                         \
    {                                                                                                                  \
        return scratchSize(widthHeight, size, scratch(widthHeight), sizeof(T));                                        \
    }

SIZE_FUNCTION(kvlmEigenValuesGetBufSize_32f, float, valuesScratch)
SIZE_FUNCTION(kvlmEigenValuesGetBufSize_64f, double, valuesScratch)
SIZE_FUNCTION(kvlmEigenValuesVectorsGetBufSize_32f, float, vectorsScratch)
SIZE_FUNCTION(kvlmEigenValuesVectorsGetBufSize_64f, double, vectorsScratch)
