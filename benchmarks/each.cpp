// What kvlm::each costs: plain-OPERATION are the C functions on whole arrays, each-OPERATION the same arrays by each
// and by Eigen, failing-OPERATION arrays in which one object in a hundred fails. The plain calls of symmetric
// eigenproblems get matrices with a heavier diagonal, which they don't refuse.
#include "each.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

#include <kvlcore.h>

int main(int argc, char **argv)
{
    kvlSetNumThreads(1);
    benchmark::Initialize(&argc, argv);
    addEach3();
    addEach4();
    addEach5();
    addEach6();
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
