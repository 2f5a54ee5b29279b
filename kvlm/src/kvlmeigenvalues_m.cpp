// Eigenvalues of one general matrix: kernels and public functions.
#include "kvlmeigen.h"

using namespace kvlm;
using namespace kvlm::eigen;

EIGEN_OBJECTS(kvlmEigenValues_m_32f, EIGEN_VALUES_M, float, SizesBeforeCount, eigenValues)
EIGEN_OBJECTS(kvlmEigenValues_m_64f, EIGEN_VALUES_M, double, SizesBeforeCount, eigenValues)
