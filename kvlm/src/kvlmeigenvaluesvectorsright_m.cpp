// Eigenvalues and right eigenvectors of one general matrix: kernels and public functions.
#include "kvlmeigen.h"

using namespace kvlm;
using namespace kvlm::eigen;

EIGEN_OBJECTS(kvlmEigenValuesVectorsRight_m_32f, EIGEN_SET_M, float, SourceBeforeResult, eigenVectorsRight)
EIGEN_OBJECTS(kvlmEigenValuesVectorsRight_m_64f, EIGEN_SET_M, double, SourceBeforeResult, eigenVectorsRight)
