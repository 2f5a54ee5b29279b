// The homogeneous transform of an array of points: kernels and public function.
#include "kvlmaffinetransform3dh.h"

using namespace kvlm;
using namespace kvlm::affine;

constexpr Limits limits = {2000, 2000, 2000, 2000, 2000};

KERNEL(ownkvlmAffineTransform3DH_mva_32f, AFFINE, U, float, transformPoints)
KERNEL(ownkvlmAffineTransform3DH_mva_32f_S2, AFFINE, S, float, transformPoints)
BATCH_FUNCTION(kvlmAffineTransform3DH_mva_32f, AFFINE, float, NCSTH, wrapped(2u * count + 16), limits)
