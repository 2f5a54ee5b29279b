// Eigenvalues of an array of general matrices: kernels and public functions.
#include "kvlmeigen.h"

using namespace kvlm;
using namespace kvlm::eigen;

#define ROW(name, T)                                                                                                   \
    EIGEN_ARRAYS(name, EIGEN_VALUES_MA, T, SizesBeforeCount, eigenValues, generalValuesWork, generalValuesLimit)

ROW(kvlmEigenValues_ma_32f, float)
ROW(kvlmEigenValues_ma_64f, double)
