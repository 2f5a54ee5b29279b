// The limits of the products.
#ifndef KVLMMUL_LIMITS_H
#define KVLMMUL_LIMITS_H

#include "frame/entry.h"

namespace kvlm::mul {

// Matrices by matrices and by vectors. Settled: at 32f nearly every batch goes to the driver.
template <class T>
constexpr Limits productLimits = sizeof(T) == 4 ? Limits{6, 6, 6, 6, 6} : Limits{36864, 18432, 9216, 18432, 18432};

} // namespace kvlm::mul

#endif
