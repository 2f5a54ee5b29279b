// Dot products of an array of vectors and an array of vectors: kernels and public functions.
#include "kvlmdotproduct.h"

using namespace kvlm;
using namespace kvlm::dot;

DOT_ARRAYS(kvlmDotProduct_vava_32f, DOT_VAVA, float, dotArrays32f, sequential, dotArraysWork)
DOT_ARRAYS(kvlmDotProduct_vava_64f, DOT_VAVA, double, dotArrays64f, sequential, dotArraysWork)
