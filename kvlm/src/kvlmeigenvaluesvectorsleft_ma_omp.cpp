// Eigenvalues and left eigenvectors of an array of general matrices: drivers.
#include "kvlmeigen.h"

using namespace kvlm;
using namespace kvlm::eigen;

EIGEN_DRIVERS(kvlmEigenValuesVectorsLeft_ma_32f, EIGEN_SET_MA, float)
EIGEN_DRIVERS(kvlmEigenValuesVectorsLeft_ma_64f, EIGEN_SET_MA, double)
