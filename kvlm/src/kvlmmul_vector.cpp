// Matrix by vector with one object per lane.
#include "kvlmmul_vector.h"

namespace kvlm {

KVLM_FOR_ELEMENTS(PRODUCTS_IN_LANES, )

} // namespace kvlm
