/**
 * @file functions.hpp
 * The functions of the Python module as a table.
 */
#ifndef KVLM_PYTHON_FUNCTIONS_HPP
#define KVLM_PYTHON_FUNCTIONS_HPP

#include "batch.hpp"

#include <vector>

namespace kvlm {
namespace python {

using Kernel = int (*)(const Batch &);

/// What a failure of an object means to Python.
enum class Failure {
    none,     ///< the library has no status for an object
    silent,   ///< never raises
    ifFinite, ///< raises, but not for what was not finite before: NaN there, as in numpy
    raises    ///< raises
};

/// Who spreads a long stack over threads: the library, in one call, or this module, in a call for each thread.
enum class Teams { ofLibrary, ofModule };

/**
 * A function. Its signature is `sources->results`, one letter for each dimension of an object; the same letter is the
 * same size, 3 is a size of 3. A letter with `?` may be left out, of vectors. `i` before an operand: int32. What only
 * results have, k of min(m, n), comes from the sources.
 */
struct Function {
    const char *name, *signature;
    Kernel kernels[2]; // of float, of double
    Teams teams = Teams::ofModule;
    Failure failure = Failure::none;
    const char *error = nullptr; // what is raised
    double empty = 0;            // the results where a size is 0
};

/// A dimension that an operand has in each object.
struct Dimension {
    char letter;
    bool isOptional;
};
struct Shape {
    Dimension dimensions[2];
    int count = 0;
    bool isInteger = false;
};
struct __attribute__((visibility("default"))) Signature {
    std::vector<Shape> sources, results;

    explicit Signature(const char *text);
};

extern const std::vector<Function> functions __attribute__((visibility("default")));

} // namespace python
} // namespace kvlm

#endif
