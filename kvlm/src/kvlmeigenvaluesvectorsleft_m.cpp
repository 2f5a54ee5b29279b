// Eigenvalues and left eigenvectors of one general matrix: kernels and public functions.
#include "kvlmeigen.h"

using namespace kvlm;
using namespace kvlm::eigen;

EIGEN_OBJECTS(kvlmEigenValuesVectorsLeft_m_32f, EIGEN_SET_M, float, SourceBeforeResult, eigenVectorsLeft)
EIGEN_OBJECTS(kvlmEigenValuesVectorsLeft_m_64f, EIGEN_SET_M, double, SourceBeforeResult, eigenVectorsLeft)
