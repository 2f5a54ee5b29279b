// Eigenvalues and right eigenvectors of an array of general matrices: kernels and public functions.
#include "kvlmeigen.h"

using namespace kvlm;
using namespace kvlm::eigen;

#define ROW(name, T)                                                                                                   \
    EIGEN_ARRAYS(name, EIGEN_SET_MA, T, SourceBeforeResult, eigenVectorsRight, generalVectorsWork, generalVectorsLimit)

ROW(kvlmEigenValuesVectorsRight_ma_32f, float)
ROW(kvlmEigenValuesVectorsRight_ma_64f, double)
