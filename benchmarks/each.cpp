// What kvlm::each costs over the plain calls of the C functions, with no object failing and with one in a hundred, and
// beside Eigen: each/OPERATION/TYPE/ORDER/WHO. "plain" is C on the same arrays, "each" without failures, "failing"
// with.
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
