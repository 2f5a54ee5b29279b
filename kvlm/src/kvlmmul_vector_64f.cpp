// Matrix by vector in double, with one object per lane: compiled once for all members and descriptions.
#include "kvlmmul_vector.h"

namespace kvlm::mul {

PRODUCTS_IN_LANES(, double)

} // namespace kvlm::mul
