// Eigenvalues of an array of general matrices: drivers.
#include "kvlmeigen.h"

using namespace kvlm;
using namespace kvlm::eigen;

EIGEN_DRIVERS(kvlmEigenValues_ma_32f, EIGEN_VALUES_MA, float)
EIGEN_DRIVERS(kvlmEigenValues_ma_64f, EIGEN_VALUES_MA, double)
