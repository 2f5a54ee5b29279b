// kvlm._core: each function of the table on numpy arrays, called as f(sources..., out, info).
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
    using O = const py::object &;
    switch (signature->sources.size()) {
    case 1:
        module.def(f.name, [&f, signature](O a, O out, bool info) { return call(f, *signature, out, info, a); });
        break;
    case 2:
        module.def(f.name,
                   [&f, signature](O a, O b, O out, bool info) { return call(f, *signature, out, info, a, b); });
        break;
    default:
        module.def(f.name, [&f, signature](O a, O b, O c, O out, bool info) {
            return call(f, *signature, out, info, a, b, c);
        });
    }
}

} // namespace
} // namespace python
} // namespace kvlm

PYBIND11_MODULE(_core, module)
{
    using namespace kvlm::python;
    for (const Function &function : functions)
        define(module, function);
    module.attr("version") = kvlmGetLibVersion()->versionText;
    module.def("set_threads", &kvlSetNumThreads);
    module.def("get_threads", [] { return threads_omp_of_n_kvl; });
    module.def("status_text", [](int status) { return kvlm::Status(static_cast<KvlStatus>(status)).text(); });
    module.def("set_most_objects", [](int n) { mostObjects = n; });
}
