// Extract of one matrix.
#include "kvlmextract.h"

using namespace kvlm;
using namespace kvlm::extraction;

EXTRACT_OBJECT(kvlmExtract_m_32f, EXTRACT_M, float, SizesBeforePointers, extract, extractPositions)
EXTRACT_OBJECT(kvlmExtract_m_64f, EXTRACT_M, double, SizesBeforePointers, extract, extractPositions)
EXTRACT_OBJECT(kvlmExtract_t_32f, EXTRACT_M, float, SizesBeforePointers, extractTransposed, extractTransposed)
EXTRACT_OBJECT(kvlmExtract_t_64f, EXTRACT_M, double, SizesBeforePointers, extractTransposed, extractTransposed)
