// Eigenvalues of general matrices in double: compiled once for all members and descriptions.
#include "kvlmeigen.h"

namespace kvlm::eigen {

GENERAL_VALUES(, double)

} // namespace kvlm::eigen
