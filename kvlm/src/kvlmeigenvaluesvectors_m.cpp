// Eigenvalues and both sets of eigenvectors of one general matrix: kernels and public functions.
#include "kvlmeigen.h"

using namespace kvlm;
using namespace kvlm::eigen;

EIGEN_OBJECTS(kvlmEigenValuesVectors_m_32f, EIGEN_SETS_M, float, SourceBeforeResult, eigenVectors)
EIGEN_OBJECTS(kvlmEigenValuesVectors_m_64f, EIGEN_SETS_M, double, SourceBeforeResult, eigenVectors)
