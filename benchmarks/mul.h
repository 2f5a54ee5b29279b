// The benchmarks of the products, which are compiled order by order, as they take long.
#ifndef KVLM_BENCHMARKS_MUL_H
#define KVLM_BENCHMARKS_MUL_H

#include "bench.h"

namespace bench {

template <class T, int N, Form F>
struct Products {
    static void add(Suite &suite);
};

} // namespace bench

#endif
