// The homogeneous transform of an array of points: driver.
#include "kvlmaffinetransform3dh.h"

using namespace kvlm;
using namespace kvlm::affine;

DRIVER(kvlmAffineTransform3DH_mva_32f, AFFINE, float)
