/**
 * @file arrays.hpp
 * numpy's arrays: what they are, and how the library can take them.
 */
#ifndef KVLM_PYTHON_ARRAYS_HPP
#define KVLM_PYTHON_ARRAYS_HPP

#include "batch.hpp"

#include <pybind11/numpy.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

namespace py = pybind11;

namespace kvlm {
namespace python {
constexpr int longest = std::numeric_limits<int>::max();
enum class Type { float32, float64, int32 };
inline int numberOf(Type type)
{
    using Api = py::detail::npy_api;
    return type == Type::float32 ? Api::NPY_FLOAT_ : type == Type::float64 ? Api::NPY_DOUBLE_ : Api::NPY_INT_;
}
inline int sizeOf(Type type)
{
    return type == Type::float64 ? 8 : 4;
}
inline py::dtype dtypeOf(Type type)
{
    return type == Type::float32   ? py::dtype::of<float>()
           : type == Type::float64 ? py::dtype::of<double>()
                                   : py::dtype::of<std::int32_t>();
}

/// Arrays are held as objects: an empty py::array is an array.
inline const py::detail::PyArray_Proxy &proxy(const py::handle &a)
{
    return *py::detail::array_proxy(a.ptr());
}
inline const py::detail::PyArrayDescr_Proxy &typeOf(const py::handle &a)
{
    return *py::detail::array_descriptor_proxy(proxy(a).descr);
}

[[noreturn]] inline void raise(const char *text)
{
    const py::object type = py::module_::import("numpy.linalg").attr("LinAlgError");
    PyErr_SetString(type.ptr(), text);
    throw py::error_already_set();
}

/// What a function of numpy's returned.
inline py::object owned(PyObject *array)
{
    if (!array)
        throw py::error_already_set();
    return py::reinterpret_steal<py::object>(array);
}
/// numpy.array of anything, with numpy's flags and, if given, of a type.
inline py::object converted(py::handle x, py::object dtype, int flags)
{
    return owned(py::detail::npy_api::get().PyArray_FromAny_(x.ptr(), dtype.release().ptr(), 0, 0, flags, nullptr));
}
inline py::object asArray(py::handle x)
{
    return py::isinstance<py::array>(x) ? py::reinterpret_borrow<py::object>(x) : converted(x, {}, 0);
}
/// float is computed in float if nothing else is there; integers and all else in double.
inline bool isShort(const py::handle &a)
{
    const auto &type = typeOf(a);
    if (!std::strchr("biufO", type.kind))
        throw py::type_error("kvlm works on real numbers: " + std::string(py::str(a.attr("dtype"))) +
                             " is unsupported");
    return type.kind == 'f' && type.elsize <= 4;
}
/// Whether the library can read, or write, the elements where they lie.
inline bool isUsable(const py::handle &a, Type type, int core)
{
    const auto &array = proxy(a);
    if (typeOf(a).type_num != numberOf(type) || typeOf(a).byteorder == '>' ||
        !(array.flags & py::detail::npy_api::NPY_ARRAY_ALIGNED_))
        return false;
    for (int k = 0; k < array.nd; ++k)
        if (array.dimensions[k] > 1 && (array.strides[k] <= 0 || (k >= array.nd - core && array.strides[k] > longest)))
            return false;
    return true;
}
inline py::object usable(py::object a, Type type, int core)
{
    if (isUsable(a, type, core))
        return a;
    using Api = py::detail::npy_api;
    return converted(a, dtypeOf(type),
                     Api::NPY_ARRAY_C_CONTIGUOUS_ | Api::NPY_ARRAY_ALIGNED_ | Api::NPY_ARRAY_FORCECAST_ |
                         Api::NPY_ARRAY_ENSUREARRAY_);
}

/// One operand of a call, as it was prepared.
struct Prepared {
    py::object array; // what is worked on
    py::object given; // what a result is to stand in
    Type type = Type::float64;
    int core = 0; // dimensions of an object
    Operand operand;

    char *begin() const { return proxy(array).data; }
    char *end() const
    {
        char *last = begin();
        for (int k = 0; k < proxy(array).nd; ++k)
            last += (proxy(array).dimensions[k] - 1) * (proxy(array).dimensions[k] > 1 ? proxy(array).strides[k] : 0);
        return last + sizeOf(type);
    }
    int leading() const { return proxy(array).nd - core; }
    bool isEmpty() const
    {
        const auto &a = proxy(array);
        return std::find(a.dimensions, a.dimensions + a.nd, 0) != a.dimensions + a.nd;
    }
};

} // namespace python
} // namespace kvlm

#endif
