// Benchmarks of the products against Eigen and against plain loops: matrix by matrix, matrix by vector, Gaxpy, scaling.
#include "mul.h"

int main(int argc, char **argv)
{
    using namespace bench;
    return runTables<Products, Form::packed, Form::strided, Form::tableObjects, Form::tablePlanes, Form::list>(argc,
                                                                                                               argv);
}
