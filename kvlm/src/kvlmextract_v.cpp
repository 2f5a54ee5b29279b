// Extract of vectors, one and arrays.
#include "kvlmextract.h"

using namespace kvlm;
using namespace kvlm::extraction;

// Settled: of the forms on one object in the pointer description, v in 32f alone checks pointers before sizes.
EXTRACT_OBJECT(kvlmExtract_v_32f, EXTRACT_V, float, SizesBeforeCount, extract, extractPositions)
EXTRACT_OBJECT(kvlmExtract_v_64f, EXTRACT_V, double, SizesBeforePointers, extract, extractPositions)
EXTRACT_ARRAY(kvlmExtract_va_32f, EXTRACT_VA, float, extract, extractPositions)
EXTRACT_ARRAY(kvlmExtract_va_64f, EXTRACT_VA, double, extract, extractPositions)
