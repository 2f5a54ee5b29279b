// Eigenvalues and both sets of eigenvectors of an array of general matrices: drivers.
#include "kvlmeigen.h"

using namespace kvlm;
using namespace kvlm::eigen;

EIGEN_DRIVERS(kvlmEigenValuesVectors_ma_32f, EIGEN_SETS_MA, float)
EIGEN_DRIVERS(kvlmEigenValuesVectors_ma_64f, EIGEN_SETS_MA, double)
