// What a call in C++ costs beside its C function, where it shows most: one object, and batches of four. Sizes are known
// to the compiler, or (-dynamic) only when the call is made.
#include "bench.h"

#include "kvlm.hpp"

namespace {

using namespace bench;

#define FUNCTION(name) kvlm::detail::forType<T>(kvlm##name##_32f, kvlm##name##_64f)

// Calls of order N. What is not known is an argument of them that the compiler can't follow.
template <class T, int N, bool isKnown>
class Calls {
public:
    explicit Calls(Suite &suite) : suite(suite)
    {
        for (int k = 0; k < count * N; ++k)
            pivots[k] = k % N;
    }

    void add()
    {
        const auto a = left.base, b = right.base, c = result.base, x = sides.base, y = solutions.base;
        const auto one = [](T *first, auto n) { return kvlm::matrix(first, n, n); };
        const auto all = [](T *first, auto n, int k) { return kvlm::matrices(first, n, n, k); };
        const int *const p = pivots;

        both(
            "Add_mm", 1, result, [=](auto n, int) { return kvlm::add(one(a, n), one(b, n), one(c, n)).value(); },
            [=](int n, int) {
                const int row = n * elem;
                return FUNCTION(Add_mm)(a, row, elem, b, row, elem, c, row, elem, n, n);
            });
        both(
            "Add_mama", count, result,
            [=](auto n, int k) { return kvlm::add(all(a, n, k), all(b, n, k), all(c, n, k)).value(); },
            [=](int n, int k) {
                const int row = n * elem, obj = n * row;
                return FUNCTION(Add_mama)(a, obj, row, elem, b, obj, row, elem, c, obj, row, elem, n, n, k);
            });
        both(
            "Mul_mm", 1, result, [=](auto n, int) { return kvlm::multiply(one(a, n), one(b, n), one(c, n)).value(); },
            [=](int n, int) {
                const int row = n * elem;
                return FUNCTION(Mul_mm)(a, row, elem, n, n, b, row, elem, n, n, c, row, elem);
            });
        both(
            "Mul_mama", count, result,
            [=](auto n, int k) { return kvlm::multiply(all(a, n, k), all(b, n, k), all(c, n, k)).value(); },
            [=](int n, int k) {
                const int row = n * elem, obj = n * row;
                return FUNCTION(Mul_mama)(a, obj, row, elem, n, n, b, obj, row, elem, n, n, c, obj, row, elem, k);
            });
        both(
            "LUBackSubst_mv", 1, solutions,
            [=](auto n, int) { return kvlm::luSolve(one(a, n), p, kvlm::vector(x, n), kvlm::vector(y, n)).value(); },
            [=](int n, int) { return FUNCTION(LUBackSubst_mv)(a, n * elem, elem, p, x, elem, y, elem, n); });
        both(
            "LUBackSubst_mava", count, solutions,
            [=](auto n, int k) {
                return kvlm::luSolve(all(a, n, k), p, kvlm::vectors(x, n, k), kvlm::vectors(y, n, k)).value();
            },
            [=](int n, int k) {
                const int row = n * elem;
                return FUNCTION(LUBackSubst_mava)(a, n * row, row, elem, p, x, row, elem, y, row, elem, n, k);
            });
    }

private:
    static constexpr int elem = sizeof(T), count = 4;
    static inline int pivots[count * N];

    template <class InCpp, class InC>
    void both(const char *member, int objects, const Operand<T> &dst, InCpp inCpp, InC inC)
    {
        const std::string name =
            nameOfCell<T>(std::string(member) + (isKnown ? "" : "-dynamic"), Form::packed, N, objects);
        if constexpr (isKnown)
            suite.add(name, dst,
                      {{"kvlm", [=] { return inCpp(kvlm::fixed<N>, count); }}, {"C", [=] { return inC(N, count); }}});
        else
            suite.add(name, dst,
                      {{"kvlm", [=, n = N, k = objects] { return inCpp(n, k); }},
                       {"C", [=, n = N, k = objects] { return inC(n, k); }}});
    }

    Suite &suite;
    const Operand<T> left{Form::packed, N, N, true, 0, count}, right{Form::packed, N, N, true, 1, count},
        result{Form::packed, N, N, true, 2, count}, sides{Form::packed, 1, N, true, 3, count},
        solutions{Form::packed, 1, N, true, 2, count};
};

template <class T, int... orders>
void addCalls(Suite &suite)
{
    (Calls<T, orders, true>(suite).add(), ...);
    (Calls<T, orders, false>(suite).add(), ...);
}

} // namespace

int main(int argc, char **argv)
{
    Suite suite;
    addCalls<float, 3, 4, 5, 6>(suite);
    addCalls<double, 3, 4, 5, 6>(suite);
    return suite.run(argc, argv);
}
