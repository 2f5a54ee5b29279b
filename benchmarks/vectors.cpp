// Benchmarks of vectors and measures against Eigen and against plain loops: sums, scaled sums, dot and cross products,
// norms, traces; batches of short vectors, and long ones.
#include "elements.h"
#include "peers.h"

#include <Eigen/Geometry>

namespace {

using namespace bench;

template <class T, int N, Form F>
class Cells {
    static constexpr int description = descriptionOf(F);

public:
    explicit Cells(Suite &suite, int count = 1000) : suite(suite), count(count) {}

    // dst(i) = op(src1(i), src2(i)); constants by value stand behind the source that they go with.
    template <bool ArrayB, class Functions, class First, class Second, class Op>
    void sums(const char *member, const Functions &functions, First first, Second second, Op op) const
    {
        const Operand<T> a(F, 1, N, true, 0, count), b(F, 1, N, ArrayB, 1, count), d(F, 1, N, true, 2, count);
        const View<T, 1, N, F, true> x{a}, z{d};
        const View<T, 1, N, F, ArrayB> y{b};
        add(
            member, a.base, b.base, d,
            call(std::get<description>(functions),
                 std::tuple_cat(vectorArguments<description, true>(a), first, vectorArguments<description, ArrayB>(b),
                                second, vectorArguments<description, true>(d), std::make_tuple(N, count))),
            [=](int i) { z.map(i) = op(x.map(i), y.map(i)); },
            [=](int i) {
                const T *__restrict const p = x.object(i), *__restrict const q = y.object(i);
                T *__restrict const r = z.object(i);
                for (int k = 0; k < N; ++k)
                    r[z.offset(0, k)] = op(p[x.offset(0, k)], q[y.offset(0, k)]);
            },
            [=, n = N * count] { // one loop over as many adjacent elements
                const T *__restrict const p = a.base, *__restrict const q = b.base;
                T *__restrict const r = d.base;
                for (int k = 0; k < n; ++k)
                    r[k] = op(p[k], q[ArrayB ? k : 0]);
                return 0;
            });
    }

    // dst(i) = op(src(i), val(i))
    template <class Functions, class Op>
    void withConstants(const char *member, const Functions &functions, Op op) const
    {
        const Operand<T> a(F, 1, N, true, 0, count), c(Form::packed, 1, 1, true, 1, count), d(F, 1, N, true, 2, count);
        const View<T, 1, N, F, true> x{a}, z{d};
        const T *const val = c.base;
        add(
            member, a.base, val, d,
            call(std::get<description>(functions),
                 std::tuple_cat(vectorArguments<description, true>(a), std::make_tuple(val, int(sizeof(T))),
                                vectorArguments<description, true>(d), std::make_tuple(N, count))),
            [=](int i) { z.map(i).array() = op(x.map(i).array(), val[i]); },
            [=](int i) {
                const T *__restrict const p = x.object(i);
                T *__restrict const r = z.object(i);
                const T constant = val[i];
                for (int k = 0; k < N; ++k)
                    r[z.offset(0, k)] = op(p[x.offset(0, k)], constant);
            },
            [=, n = N * count] {
                const T *__restrict const p = a.base;
                T *__restrict const r = d.base;
                for (int k = 0; k < n; ++k)
                    r[k] = op(p[k], val[0]);
                return 0;
            });
    }

    template <bool ArrayB, class Functions>
    void dot(const char *member, const Functions &functions) const
    {
        const Operand<T> a(F, 1, N, true, 0, count), b(F, 1, N, ArrayB, 1, count),
            d(Form::packed, 1, 1, true, 2, count);
        const View<T, 1, N, F, true> x{a};
        const View<T, 1, N, F, ArrayB> y{b};
        T *const dst = d.base;
        add(
            member, a.base, b.base, d,
            call(std::get<description>(functions),
                 std::tuple_cat(vectorArguments<description, true>(a), vectorArguments<description, ArrayB>(b),
                                std::make_tuple(dst, N, count))),
            [=](int i) { dst[i] = x.map(i).dot(y.map(i)); },
            [=](int i) {
                const T *const p = x.object(i), *const q = y.object(i);
                T sum = 0;
                for (int k = 0; k < N; ++k)
                    sum += p[x.offset(0, k)] * q[y.offset(0, k)];
                dst[i] = sum;
            });
    }

    // Of vectors of N elements, or of matrices of N rows.
    template <int Rows, class Functions, class Sizes>
    void norm(const char *member, const Functions &functions, Sizes sizes) const
    {
        const Operand<T> a(F, Rows, N, true, 0, count), d(Form::packed, 1, 1, true, 2, count);
        const View<T, Rows, N, F, true> x{a};
        T *const dst = d.base;
        const auto source = [&] {
            if constexpr (Rows == 1)
                return std::tuple_cat(vectorArguments<description, true>(a), std::make_tuple(dst), sizes);
            else
                return std::tuple_cat(arguments<description, true>(a), sizes, std::make_tuple(dst));
        }();
        add(
            member, a.base, nullptr, d,
            call(std::get<description>(functions), std::tuple_cat(source, std::make_tuple(count))),
            [=](int i) { dst[i] = x.map(i).norm(); },
            [=](int i) {
                const T *const p = x.object(i);
                T sum = 0;
                for (int r = 0; r < Rows; ++r)
                    for (int c = 0; c < N; ++c)
                        sum += p[x.offset(r, c)] * p[x.offset(r, c)];
                dst[i] = std::sqrt(sum);
            });
    }

    template <class Functions>
    void trace(const char *member, const Functions &functions) const
    {
        const Operand<T> a(F, N, N, true, 0, count), d(Form::packed, 1, 1, true, 2, count);
        const View<T, N, N, F, true> x{a};
        T *const dst = d.base;
        add(
            member, a.base, nullptr, d,
            call(std::get<description>(functions),
                 std::tuple_cat(arguments<description, true>(a), std::make_tuple(N, dst, count))),
            [=](int i) { dst[i] = x.map(i).trace(); },
            [=](int i) {
                T sum = 0;
                for (int k = 0; k < N; ++k)
                    sum += x.object(i)[x.offset(k, k)];
                dst[i] = sum;
            });
    }

    template <bool ArrayB, class Functions>
    void cross(const char *member, const Functions &functions) const
    {
        const Operand<T> a(F, 1, 3, true, 0, count), b(F, 1, 3, ArrayB, 1, count), d(F, 1, 3, true, 2, count);
        const View<T, 1, 3, F, true> x{a}, z{d};
        const View<T, 1, 3, F, ArrayB> y{b};
        add(
            member, a.base, b.base, d,
            call(std::get<description>(functions),
                 std::tuple_cat(vectorArguments<description, true>(a), vectorArguments<description, ArrayB>(b),
                                vectorArguments<description, true>(d), std::make_tuple(count))),
            [=](int i) { z.map(i) = x.map(i).cross(y.map(i)); },
            [=](int i) {
                const T *__restrict const p = x.object(i), *__restrict const q = y.object(i);
                T *__restrict const r = z.object(i);
                for (int k = 0; k < 3; ++k) {
                    const int next = (k + 1) % 3, last = (k + 2) % 3;
                    r[z.offset(0, k)] =
                        p[x.offset(0, next)] * q[y.offset(0, last)] - p[x.offset(0, last)] * q[y.offset(0, next)];
                }
            });
    }

private:
    // Tables have no peers of their own: theirs work on the same objects in the standard description.
    template <class Eigen, class Loop>
    void add(const char *member, const T *a, const T *b, const Operand<T> &target, Work kvlm, Eigen eigen, Loop loop,
             Work flat = nullptr) const
    {
        const auto overAll = [n = count](auto one) {
            return [=] {
                for (int i = 0; i < n; ++i)
                    one(i);
                return 0;
            };
        };
        std::vector<std::pair<std::string, Work>> works = {{"kvlm", kvlm}};
        if constexpr (F != Form::tablePlanes) {
            works.emplace_back("eigen", overAll(eigen));
            works.emplace_back("loop", overAll(loop));
            if (flat && F == Form::packed)
                works.emplace_back("flat", flat);
        }
        addPeers<T>(works, member, F, N, a, b, target.base, count);
        suite.add(nameOfCell<T>(member, F, N, count), target, works,
                  sameNumbers<T>(target.span, [target](std::size_t k) { return target.base[k]; }));
    }

    Suite &suite;
    int count;
};

#define VECTORS(cells, type)                                                                                           \
    cells.template sums<true>("Add_vava", ALL(kvlmAdd_vava, type), none, none, plus);                                  \
    cells.template sums<false>("Sub_vav", ALL(kvlmSub_vav, type), none, none, minus);                                  \
    if constexpr (!isList(F)) {                                                                                        \
        cells.withConstants("Add_vaca", ALL(kvlmAdd_vaca, type), plus);                                                \
        cells.withConstants("Sub_vaca", ALL(kvlmSub_vaca, type), minus);                                               \
        cells.withConstants("Sub_cava", ALL(kvlmSub_cava, type), reversed);                                            \
    }                                                                                                                  \
    cells.template sums<true>("Sub_vava", ALL(kvlmSub_vava, type), none, none, minus);                                 \
    cells.template sums<true>("Saxpy_vava", ALL(kvlmSaxpy_vava, type), std::make_tuple(T(0.3)), none, saxpy);          \
    cells.template sums<false>("Saxpy_vav", ALL(kvlmSaxpy_vav, type), std::make_tuple(T(0.3)), none, saxpy);           \
    cells.template sums<true>("LComb_vava", ALL(kvlmLComb_vava, type), std::make_tuple(T(0.3)),                        \
                              std::make_tuple(T(0.7)), lcomb);                                                         \
    cells.template sums<false>("LComb_vav", ALL(kvlmLComb_vav, type), std::make_tuple(T(0.3)),                         \
                               std::make_tuple(T(0.7)), lcomb);                                                        \
    cells.template dot<true>("DotProduct_vava", ALL(kvlmDotProduct_vava, type));                                       \
    cells.template dot<false>("DotProduct_vav", ALL(kvlmDotProduct_vav, type));                                        \
    cells.template norm<1>("L2Norm_va", ALL(kvlmL2Norm_va, type), std::make_tuple(N))
#define SHORT(cells, type)                                                                                             \
    cells.template norm<N>("FrobNorm_ma", ALL(kvlmFrobNorm_ma, type), std::make_tuple(N, N));                          \
    cells.trace("Trace_ma", ALL(kvlmTrace_ma, type));                                                                  \
    if constexpr (N == 3) {                                                                                            \
        cells.template cross<true>("CrossProduct_vava", ALL(kvlmCrossProduct_vava, type));                             \
        cells.template cross<false>("CrossProduct_vav", ALL(kvlmCrossProduct_vav, type));                              \
    }

template <class T, int N, Form F>
struct Table {
    static void add(Suite &suite, int count = 1000)
    {
        const Cells<T, N, F> cells(suite, count);
        const std::tuple<> none;
        const auto plus = [](const auto &x, const auto &y) { return x + y; };
        const auto minus = [](const auto &x, const auto &y) { return x - y; };
        const auto reversed = [](const auto &x, const auto &y) { return y - x; };
        const auto lcomb = [](const auto &x, const auto &y) { return x * T(0.3) + y * T(0.7); };
        const auto saxpy = [](const auto &x, const auto &y) { return x * T(0.3) + y; };
        if constexpr (sizeof(T) == 4) {
            VECTORS(cells, 32f);
            if constexpr (N < 100) {
                SHORT(cells, 32f);
            }
        } else {
            VECTORS(cells, 64f);
            if constexpr (N < 100) {
                SHORT(cells, 64f);
            }
        }
    }
};

} // namespace

int main(int argc, char **argv)
{
    Suite suite;
    addTables<Table, Form::packed, Form::strided, Form::tableObjects, Form::tablePlanes, Form::list>(suite);
    Table<float, 1000, Form::packed>::add(suite, 10);
    Table<double, 1000, Form::packed>::add(suite, 10);
    return suite.run(argc, argv);
}
