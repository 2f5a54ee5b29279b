// Eigenvalues of one symmetric matrix: kernels and public functions.
#include "kvlmeigensym.h"

using namespace kvlm;
using namespace kvlm::eigensym;

#define ROW(name, T)                                                                                                   \
    OBJECT_KERNELS(name, SYM_VALUES_M, T, eigenValuesSym)                                                              \
    OBJECT_FUNCTIONS(name, SYM_VALUES_M, T, SizesBeforeCount)

ROW(kvlmEigenValuesSym_m_32f, float)
ROW(kvlmEigenValuesSym_m_64f, double)
