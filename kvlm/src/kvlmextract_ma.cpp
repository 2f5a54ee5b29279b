// Extract of arrays of matrices.
#include "kvlmextract.h"

using namespace kvlm;
using namespace kvlm::extraction;

EXTRACT_ARRAY(kvlmExtract_ma_32f, EXTRACT_MA, float, extract, extractPositions)
EXTRACT_ARRAY(kvlmExtract_ma_64f, EXTRACT_MA, double, extract, extractPositions)
EXTRACT_ARRAY(kvlmExtract_ta_32f, EXTRACT_MA, float, extractTransposed, extractTransposed)
EXTRACT_ARRAY(kvlmExtract_ta_64f, EXTRACT_MA, double, extractTransposed, extractTransposed)
