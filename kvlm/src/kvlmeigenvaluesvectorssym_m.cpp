// Eigenvalues and vectors of one symmetric matrix: kernels and public functions.
#include "kvlmeigensym.h"

using namespace kvlm;
using namespace kvlm::eigensym;

// Settled: the kernel of 32f for elements that are not adjacent has a test of its own.
KERNEL(ownkvlmEigenValuesVectorsSym_m_32f, SYM_VECTORS_M, U, float, eigenVectorsSym)
KERNEL(ownkvlmEigenValuesVectorsSym_m_32f_S2, SYM_VECTORS_M, S, float, eigenVectorsSymOfKind<SignedShiftKind>)
KERNEL(ownkvlmEigenValuesVectorsSym_m_32f_P, SYM_VECTORS_M, P, float, eigenVectorsSym)
OBJECT_FUNCTIONS(kvlmEigenValuesVectorsSym_m_32f, SYM_VECTORS_M, float, SizesBeforeCount)

OBJECT_KERNELS(kvlmEigenValuesVectorsSym_m_64f, SYM_VECTORS_M, double, eigenVectorsSym)
OBJECT_FUNCTIONS(kvlmEigenValuesVectorsSym_m_64f, SYM_VECTORS_M, double, SizesBeforeCount)
