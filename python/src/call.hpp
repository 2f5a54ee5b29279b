/**
 * @file call.hpp
 * One call of a function of the table: from what Python gives to kernels, and back.
 */
#ifndef KVLM_PYTHON_CALL_HPP
#define KVLM_PYTHON_CALL_HPP

#include "arrays.hpp"
#include "functions.hpp"
#include "loops.hpp"

#include <array>
#include <atomic>
#include <future>
#include <stdexcept>
#include <string>
#include <vector>

namespace kvlm {
namespace python {

using Strides = std::array<std::ptrdiff_t, mostOperands>;
inline std::atomic<int> mostObjects{1 << 30}; // of one call of the library; tests have fewer

/// One call of a function.
class Call {
public:
    Call(const Function &f, const Signature &s) : function(f), signature(s) { sizes['3' & 15] = 3; }

    void addSources(const py::handle *given)
    {
        const int n = static_cast<int>(signature.sources.size());
        bool areShort = true;
        for (int i = 0; i < n; ++i) {
            operands[i].array = asArray(given[i]);
            if (!signature.sources[i].isInteger)
                areShort = isShort(operands[i].array) && areShort;
        }
        type = areShort ? Type::float32 : Type::float64;
        for (int i = 0; i < n; ++i)
            addSource(operands[i], signature.sources[i]);
        count = n;
        for (int i = 0; i < n; ++i)
            broadcast(operands[i]);
    }
    void addResults(const py::object &out)
    {
        const int n = static_cast<int>(signature.results.size());
        const bool isTuple = py::isinstance<py::tuple>(out);
        if (isTuple ? py::len(out) != static_cast<std::size_t>(n) : n > 1 && !out.is_none())
            throw py::value_error("The 'out' argument must be " +
                                  (n > 1 ? "a tuple of " + std::to_string(n) + " arrays" : std::string("an array")));
        for (int i = 0; i < n; ++i)
            addResult(signature.results[i], isTuple ? out.cast<py::tuple>()[i] : out);
        results = count;
    }
    void addStatuses()
    {
        Prepared &statuses = operands[results];
        statuses.type = Type::int32;
        statuses.array = allocate(dims, Type::int32);
        hasStatuses = true;
        count = results + 1;
    }

    void run()
    {
        if (std::any_of(operands.begin(), operands.begin() + count, [](auto &x) { return x.isEmpty(); })) {
            for (int i = static_cast<int>(signature.sources.size()); i < count; ++i)
                operands[i].array.attr("fill")(i < results ? function.empty : 0.);
            return;
        }
        Loops<mostOperands> loops;
        for (std::size_t k = 0; k < dims.size(); ++k) {
            Leading<mostOperands> next{dims[k], {}};
            for (int i = 0; i < count; ++i)
                next.strides[i] = strideOf(operands[i], k);
            loops.push(next);
        }
        const py::gil_scoped_release released;
        loops.run(mostObjects, [this](const Strides &offsets, const Strides &strides, int objects) {
            part(offsets, strides, objects);
        });
    }
    /// Raises what the statuses and the function say; arrays that were asked for get their results.
    py::object finish(bool hasInfo)
    {
        py::tuple all(static_cast<std::size_t>(hasInfo ? count : results) - signature.sources.size());
        std::size_t at = 0;
        for (int i = static_cast<int>(signature.sources.size()); i < count; ++i) {
            const Prepared &x = operands[i];
            if (x.given && !x.given.is(x.array))
                py::module_::import("numpy").attr("copyto")(x.given, x.array);
            if (at < all.size())
                all[at++] = x.given ? x.given : proxy(x.array).nd == 0 ? py::object(x.array[py::tuple()]) : x.array;
        }
        if (failed > 0 && !hasInfo)
            raise(function.error);
        return all.size() == 1 ? py::object(all[0]) : py::object(all);
    }

private:
    using Dims = std::vector<py::ssize_t>;

    int &sizeOfLetter(char letter) { return sizes[letter & 15]; }

    static py::object allocate(const Dims &dims, Type type)
    {
        const auto &api = py::detail::npy_api::get();
        return owned(api.PyArray_NewFromDescr_(api.PyArray_Type_, dtypeOf(type).release().ptr(),
                                               static_cast<int>(dims.size()), dims.data(), nullptr, nullptr, 0,
                                               nullptr));
    }

    /// Finds which dimensions are there, and their sizes.
    void addSource(Prepared &x, const Shape &shape)
    {
        const int there = proxy(x.array).nd;
        const Dimension *const optional =
            std::find_if(shape.dimensions, shape.dimensions + shape.count, [](auto &d) { return d.isOptional; });
        x.core = shape.count;
        const bool isSolver = shape.count == 2 && signature.sources[0].dimensions[0].letter == 'n';
        if (optional < shape.dimensions + shape.count &&
            (there < shape.count || (isSolver && there == proxy(operands[0].array).nd - 1))) {
            missing |= 1u << (optional->letter & 15);
            x.operand.isVector = true;
            --x.core;
        }
        if (there < x.core) {
            const std::string text = std::to_string(there) + "-dimensional array given. Array must be at least " +
                                     (x.core == 1 ? "one" : "two") + "-dimensional";
            if (function.failure == Failure::none)
                throw py::value_error(text);
            raise(text.c_str());
        }
        x.type = shape.isInteger ? Type::int32 : type;
        x.array = usable(std::move(x.array), x.type, x.core);
        int k = there - x.core;
        for (int d = 0; d < shape.count; ++d) {
            const Dimension &dimension = shape.dimensions[d];
            if (isMissing(dimension))
                continue;
            const py::ssize_t size = proxy(x.array).dimensions[k++];
            int &known = sizeOfLetter(dimension.letter);
            if (size > longest)
                throw py::value_error("An object of more than 2**31 - 1 elements");
            if (known < 0)
                known = static_cast<int>(size);
            else if (known != size && d == 1 && dimension.letter == shape.dimensions[0].letter)
                raise("Last 2 dimensions of the array must be square");
            else if (known != size)
                throw py::value_error(std::string(function.name) + ": operands have the sizes " +
                                      std::to_string(known) + " and " + std::to_string(size) +
                                      " where they must be the same");
        }
        describe(x, shape);
    }
    bool isMissing(const Dimension &d) const { return d.isOptional && (missing >> (d.letter & 15) & 1); }

    /// Sizes and strides of an object.
    void describe(Prepared &x, const Shape &shape)
    {
        int *const extents[] = {&x.operand.rows, &x.operand.columns};
        int *const strides[] = {&x.operand.row, &x.operand.column};
        x.operand.row = x.operand.column = sizeOf(x.type);
        int k = proxy(x.array).nd - x.core;
        for (int d = 0; d < shape.count; ++d) {
            if (isMissing(shape.dimensions[d]))
                continue;
            *extents[d] = static_cast<int>(proxy(x.array).dimensions[k]);
            if (*extents[d] > 1)
                *strides[d] = static_cast<int>(proxy(x.array).strides[k]);
            ++k;
        }
    }
    void broadcast(const Prepared &x)
    {
        const auto more = static_cast<std::size_t>(x.leading());
        if (more > dims.size())
            dims.insert(dims.begin(), more - dims.size(), 1);
        for (std::size_t k = 0; k < more; ++k) {
            py::ssize_t &size = dims[dims.size() - more + k];
            const py::ssize_t other = proxy(x.array).dimensions[k];
            if (other != 1 && size != 1 && other != size)
                throw py::value_error(std::string(function.name) +
                                      ": operands could not be broadcast together, leading dimensions of " +
                                      std::to_string(size) + " and " + std::to_string(other));
            size = other == 1 ? size : other;
        }
    }
    void addResult(const Shape &shape, py::object out)
    {
        Prepared &x = operands[count];
        x.type = shape.isInteger ? Type::int32 : type;
        Dims all = dims;
        for (int d = 0; d < shape.count; ++d)
            if (!isMissing(shape.dimensions[d])) {
                const int known = sizeOfLetter(shape.dimensions[d].letter);
                all.push_back(known >= 0 ? known : std::min(sizeOfLetter('m'), sizeOfLetter('n')));
                ++x.core;
            }
        if (out.is_none()) {
            x.array = allocate(all, x.type);
        } else {
            if (!py::isinstance<py::array>(out))
                throw py::type_error("'out' must be an array");
            x.array = std::move(out);
            const auto &array = proxy(x.array);
            if (!(array.flags & py::detail::npy_api::NPY_ARRAY_WRITEABLE_))
                throw py::value_error("output array is read-only");
            if (!std::equal(all.begin(), all.end(), array.dimensions, array.dimensions + array.nd))
                throw py::value_error("The shape of 'out' is not that of the result");
            x.given = x.array;
            if (!isUsable(x.array, x.type, x.core) || overlaps(x))
                x.array = allocate(all, x.type);
        }
        describe(x, shape);
        ++count;
    }
    /// By the memory from first element to last, of all operands before it.
    bool overlaps(const Prepared &x) const
    {
        return std::any_of(operands.begin(), operands.begin() + count,
                           [&](auto &y) { return x.begin() < y.end() && y.begin() < x.end(); });
    }
    std::ptrdiff_t strideOf(const Prepared &x, std::size_t dimension) const
    {
        const auto own =
            static_cast<std::ptrdiff_t>(dimension) - static_cast<std::ptrdiff_t>(dims.size()) + x.leading();
        return own < 0 || proxy(x.array).dimensions[own] == 1 ? 0 : proxy(x.array).strides[own];
    }

    /// Some objects, by threads where the library makes no team.
    void part(const Strides &offsets, const Strides &strides, int objects)
    {
        constexpr std::int64_t leastOfThread = 1 << 15; // elements
        const std::int64_t elements =
            std::int64_t(1) * objects * operands[0].operand.rows * operands[0].operand.columns;
        const std::int64_t most = function.teams == Teams::ofLibrary ? 1 : std::max(threads_omp_of_n_kvl, 1);
        const auto threads = static_cast<int>(std::clamp<std::int64_t>(elements / leastOfThread, 1, most));
        std::vector<std::future<void>> others;
        int first = 0;
        for (int k = 0; k < threads; ++k) {
            const int end = static_cast<int>(static_cast<std::int64_t>(objects) * (k + 1) / threads);
            Strides at = offsets;
            for (int i = 0; i < count; ++i)
                at[i] += first * strides[i];
            const auto share = [this, at, &strides, first, end] { serial(at, strides, end - first); };
            if (k + 1 < threads)
                others.push_back(std::async(std::launch::async, share));
            else
                share();
            first = end;
        }
        for (auto &other : others)
            other.get();
    }
    void serial(const Strides &offsets, const Strides &strides, int objects)
    {
        Batch batch;
        batch.count = objects;
        for (int i = 0; i < results; ++i) {
            Operand &operand = batch.operands[i] = operands[i].operand;
            operand.base = operands[i].begin() + offsets[i];
            operand.object = objects > 1 ? static_cast<int>(strides[i]) : sizeOf(operands[i].type);
        }
        if (!hasStatuses) {
            check(function.kernels[type == Type::float64](batch));
            return;
        }
        Operand statuses;
        statuses.base = operands[results].begin() + offsets[results];
        statuses.object = static_cast<int>(strides[results]);
        Adjacent<KvlStatus> run(statuses, objects);
        batch.statuses = run.data();
        if (check(function.kernels[type == Type::float64](batch)) > 0)
            for (int i = 0; i < objects; ++i)
                if (batch.statuses[i] != kvlOk && isFailure(batch, i))
                    ++failed;
        run.finish();
    }
    static int check(int result)
    {
        if (result < 0)
            throw std::invalid_argument(Status(static_cast<KvlStatus>(result)).text());
        return result;
    }
    bool isFailure(const Batch &batch, int i) const
    {
        if (function.failure != Failure::ifFinite)
            return function.failure == Failure::raises;
        for (std::size_t k = 0; k < signature.sources.size(); ++k) {
            const Operand at = from(batch[static_cast<int>(k)], i);
            if (!(type == Type::float64 ? isFinite(matrix<double>(at)) : isFinite(matrix<float>(at))))
                return false;
        }
        return true;
    }
    template <class T>
    static bool isFinite(const MatrixView<T> &a)
    {
        for (int r = 0; r < a.rows(); ++r)
            for (int c = 0; c < a.columns(); ++c)
                if (!each::detail::isFinite(a(r, c)))
                    return false;
        return true;
    }

    const Function &function;
    const Signature &signature;
    std::array<Prepared, mostOperands> operands;
    int count = 0, results = 0; // operands; those without the statuses
    bool hasStatuses = false;
    Type type = Type::float64;
    std::array<int, 16> sizes = {-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
    unsigned missing = 0; // letters of dimensions that were left out
    Dims dims;            // leading ones
    std::atomic<int> failed{0};
};

} // namespace python
} // namespace kvlm

#endif
