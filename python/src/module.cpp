// kvlm._core: each function of the table on numpy arrays.
#include "call.hpp"

#include <memory>

namespace py = pybind11;

namespace kvlm {
namespace python {
namespace {

template <class... Sources>
py::object call(const Function &function, const Signature &signature, const py::object &out, bool hasInfo,
                const Sources &...sources)
{
    const py::handle given[] = {sources...};
    Call call(function, signature);
    call.addSources(given);
    call.addResults(out);
    if (function.failure != Failure::none)
        call.addStatuses();
    call.run();
    return call.finish(hasInfo);
}

void define(py::module_ &module, const Function &f)
{
    const auto signature = std::make_shared<const Signature>(f.signature);
    const auto out = py::arg("out") = py::none();
    const auto info = py::arg("info") = false;
    const char *const doc = f.documentation ? f.documentation : f.signature;
    using O = const py::object &;
    switch (signature->sources.size()) {
    case 1:
        module.def(
            f.name, [&f, signature](O a, O o, bool i) { return call(f, *signature, o, i, a); }, py::arg("a"),
            py::kw_only(), out, info, doc);
        break;
    case 2:
        module.def(
            f.name, [&f, signature](O a, O b, O o, bool i) { return call(f, *signature, o, i, a, b); }, py::arg("a"),
            py::arg("b"), py::kw_only(), out, info, doc);
        break;
    default:
        module.def(
            f.name, [&f, signature](O a, O b, O c, O o, bool i) { return call(f, *signature, o, i, a, b, c); },
            py::arg("a"), py::arg("b"), py::arg("c"), py::kw_only(), out, info, doc);
    }
}

} // namespace
} // namespace python
} // namespace kvlm

PYBIND11_MODULE(_core, module)
{
    using namespace kvlm::python;
    py::options options;
    options.disable_function_signatures();
    for (const Function &function : functions)
        define(module, function);
    module.def(
        "set_threads", &kvlSetNumThreads, py::arg("n"),
        "set_threads(n)\n\n"
        "Threads that a call may use, for the whole process; 1 at first. Short stacks stay on the caller's thread.");
    module.def("_set_most_objects", [](int n) { mostObjects = n; });
    module.def(
        "get_threads", [] { return threads_omp_of_n_kvl; }, "get_threads()\n\nWhat set_threads() was given, or 1.");
    module.def(
        "status_text", [](int status) { return kvlm::Status(static_cast<KvlStatus>(status)).text(); },
        py::arg("status"), "status_text(status)\n\nWhat a status of info=True means, in a sentence.");
}
