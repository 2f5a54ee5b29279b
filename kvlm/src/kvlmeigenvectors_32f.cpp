// Eigenvectors of general matrices in float: compiled once for all members and descriptions.
#include "kvlmeigen.h"

namespace kvlm::eigen {

GENERAL_VECTORS(, float)

} // namespace kvlm::eigen
