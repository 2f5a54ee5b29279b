// General eigenproblems of 64f: the parts that all members share.
#include "kvlmeigen.h"

namespace kvlm {

GENERAL_PARTS(, double)

} // namespace kvlm
