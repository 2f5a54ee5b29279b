// Eigenvalues and both sets of eigenvectors of an array of general matrices: kernels and public functions.
#include "kvlmeigen.h"

using namespace kvlm;
using namespace kvlm::eigen;

#define ROW(name, T)                                                                                                   \
    EIGEN_ARRAYS(name, EIGEN_SETS_MA, T, SourceBeforeResult, eigenVectors, generalVectorsWork, generalVectorsLimit)

ROW(kvlmEigenValuesVectors_ma_32f, float)
ROW(kvlmEigenValuesVectors_ma_64f, double)
