// Eigenvalues and right eigenvectors of an array of general matrices: drivers.
#include "kvlmeigen.h"

using namespace kvlm;
using namespace kvlm::eigen;

EIGEN_DRIVERS(kvlmEigenValuesVectorsRight_ma_32f, EIGEN_SET_MA, float)
EIGEN_DRIVERS(kvlmEigenValuesVectorsRight_ma_64f, EIGEN_SET_MA, double)
