// General eigenproblems of 32f: the parts that all members share.
#include "kvlmeigen.h"

namespace kvlm {

GENERAL_PARTS(, float)

} // namespace kvlm
