// Eigenvalues of general matrices in float: compiled once for all members and descriptions.
#include "kvlmeigen.h"

namespace kvlm {

GENERAL_VALUES(, float)

} // namespace kvlm
