// The cells of the products of order ORDER.
#include "elements.h"
#include "mul.h"
#include "peers.h"

#include <Eigen/Geometry>

#include <cmath>

namespace bench {

namespace {

// The library adds in orders of its own: the last bits may differ from those of its peers.
template <class T, int Rows, int Cols, Form F>
Suite::Check nearly(const View<T, Rows, Cols, F, true> &x, int count)
{
    auto expected = std::make_shared<std::vector<T>>();
    return [=](const std::string &) {
        const bool first = expected->empty();
        for (int i = 0; i < count; ++i)
            for (int k = 0; k < Rows * Cols; ++k) {
                const T value = x.object(i)[x.offset(k / Cols, k % Cols)];
                if (first)
                    expected->push_back(value);
                else if (!(std::abs(value - (*expected)[std::size_t(i) * Rows * Cols + k]) < T(1e-5)))
                    return false;
            }
        return true;
    };
}

// Element (r, c) of what an operand's letter reads.
template <bool Turned, class V>
BENCH_INLINE int place(const V &x, int r, int c)
{
    return Turned ? x.offset(c, r) : x.offset(r, c);
}

template <bool Turned, class M>
BENCH_INLINE decltype(auto) read(const M &m)
{
    if constexpr (Turned)
        return m.transpose();
    else
        return (m);
}

template <class T, int N, Form F>
class Cells {
    static constexpr int description = descriptionOf(F), elem = sizeof(T);

public:
    explicit Cells(Suite &suite, int count = 1000) : suite(suite), count(count) {}

    template <bool TurnedA, bool TurnedB, bool ArrayA, bool ArrayB, class Functions>
    void matrices(const char *member, const Functions &functions) const
    {
        const Operand<T> a(F, N, N, ArrayA, 0, count), b(F, N, N, ArrayB, 1, count), d(F, N, N, true, 2, count);
        const auto shape = std::make_tuple(N, N);
        add(
            member, d,
            call(std::get<description>(functions),
                 std::tuple_cat(arguments<description, ArrayA>(a), shape, arguments<description, ArrayB>(b), shape,
                                arguments<description, true>(d), std::make_tuple(count))),
            View<T, N, N, F, ArrayA>{a}, View<T, N, N, F, ArrayB>{b}, View<T, N, N, F, true>{d},
            [](const auto &x, const auto &y, auto z)
                __attribute__((always_inline)) { z.noalias() = read<TurnedA>(x) * read<TurnedB>(y); },
            [](const auto &u, const T *__restrict x, const auto &v, const T *__restrict y, const auto &w,
               T *__restrict z) __attribute__((always_inline)) {
                for (int r = 0; r < N; ++r) {
                    T row[N] = {};
                    for (int k = 0; k < N; ++k)
                        for (int c = 0; c < N; ++c)
                            row[c] += x[place<TurnedA>(u, r, k)] * y[place<TurnedB>(v, k, c)];
                    for (int c = 0; c < N; ++c)
                        z[w.offset(r, c)] = row[c];
                }
            });
    }

    template <bool Turned, bool ArrayA, bool ArrayX, class Functions>
    void vectors(const char *member, const Functions &functions) const
    {
        const Operand<T> a(F, N, N, ArrayA, 0, count), x(F, N, 1, ArrayX, 1, count), y(F, N, 1, true, 2, count);
        add(
            member, y,
            call(std::get<description>(functions),
                 std::tuple_cat(arguments<description, ArrayA>(a), std::make_tuple(N, N), vectorOf<ArrayX>(x),
                                std::make_tuple(N), vectorOf<true>(y), std::make_tuple(count))),
            View<T, N, N, F, ArrayA>{a}, View<T, N, 1, F, ArrayX>{x}, View<T, N, 1, F, true>{y},
            [](const auto &m, const auto &v, auto z)
                __attribute__((always_inline)) { z.noalias() = read<Turned>(m) * v; },
            [](const auto &u, const T *__restrict m, const auto &v, const T *__restrict p, const auto &w,
               T *__restrict z) __attribute__((always_inline)) {
                for (int r = 0; r < N; ++r) {
                    T sum = 0;
                    for (int k = 0; k < N; ++k)
                        sum += m[place<Turned>(u, r, k)] * p[v.offset(k, 0)];
                    z[w.offset(r, 0)] = sum;
                }
            });
    }

    template <bool ArrayB, class Functions>
    void gaxpy(const char *member, const Functions &functions) const
    {
        const Operand<T> a(F, N, N, false, 0, count), x(F, N, 1, true, 1, count), b(F, N, 1, ArrayB, 3, count),
            y(F, N, 1, true, 2, count);
        const auto length = std::make_tuple(N);
        const View<T, N, 1, F, ArrayB> third{b};
        add(
            member, y,
            call(std::get<description>(functions),
                 std::tuple_cat(arguments<description, false>(a), std::make_tuple(N, N), vectorOf<true>(x), length,
                                vectorOf<ArrayB>(b), length, vectorOf<true>(y), std::make_tuple(count))),
            View<T, N, N, F, false>{a}, View<T, N, 1, F, true>{x}, View<T, N, 1, F, true>{y},
            [third](const auto &m, const auto &v, auto z, int i)
                __attribute__((always_inline)) { z.noalias() = m * v + third.map(i); },
            [third](const auto &u, const T *__restrict m, const auto &v, const T *__restrict p, const auto &w,
                    T *__restrict z, int i) __attribute__((always_inline)) {
                const T *const q = third.object(i);
                for (int r = 0; r < N; ++r) {
                    T sum = 0;
                    for (int k = 0; k < N; ++k)
                        sum += m[u.offset(r, k)] * p[v.offset(k, 0)];
                    z[w.offset(r, 0)] = sum + q[third.offset(r, 0)];
                }
            });
    }

    // Points of three elements by a homogeneous matrix of order 4, with a divisor above 1.
    template <class Function>
    void transform(const char *member, Function *function) const
    {
        const Operand<T> a(F, 4, 4, false, 0, count, lasting<T>(32)), x(F, 3, 1, true, 1, count),
            y(F, 3, 1, true, 2, count);
        const View<T, 4, 4, F, false> matrix{a};
        for (int k = 0; k < 16; ++k)
            a.base[matrix.offset(k / 4, k % 4)] = k == 15 ? T(4) : T(k % 5 - 2) / 2;
        add(
            member, y,
            call(function, std::tuple_cat(arguments<description, false>(a), vectorOf<true>(x), vectorOf<true>(y),
                                          std::make_tuple(count))),
            matrix, View<T, 3, 1, F, true>{x}, View<T, 3, 1, F, true>{y},
            [](const auto &m, const auto &v, auto z)
                __attribute__((always_inline)) { z = (m * v.homogeneous()).hnormalized(); },
            [](const auto &u, const T *__restrict m, const auto &v, const T *__restrict p, const auto &w,
               T *__restrict z) __attribute__((always_inline)) {
                T sum[4];
                for (int r = 0; r < 4; ++r) {
                    sum[r] = m[u.offset(r, 3)];
                    for (int k = 0; k < 3; ++k)
                        sum[r] += m[u.offset(r, k)] * p[v.offset(k, 0)];
                }
                const T reciprocal = 1 / sum[3];
                for (int r = 0; r < 3; ++r)
                    z[w.offset(r, 0)] = sum[r] * reciprocal;
            });
    }

    template <int Rows, bool ByEach, bool Turned, class Functions>
    void scale(const char *member, const Functions &functions) const
    {
        const Operand<T> a(F, Rows, N, true, 0, count), d(F, Rows, N, true, 2, count);
        const Operand<T> factors(Form::packed, 1, 1, true, 1, count);
        const T *const val = factors.base;
        const auto source = [&] {
            if constexpr (Rows == 1)
                return vectorOf<true>(a);
            else
                return arguments<description, true>(a);
        }();
        const auto target = [&] {
            if constexpr (Rows == 1)
                return std::tuple_cat(vectorOf<true>(d), std::make_tuple(N, count));
            else
                return std::tuple_cat(arguments<description, true>(d), std::make_tuple(N, Rows, count));
        }();
        const auto constant = [&] {
            if constexpr (ByEach)
                return std::make_tuple(val, elem);
            else
                return std::make_tuple(val[0]);
        }();
        const View<T, Rows, N, F, true> from{a};
        add(
            member, d, call(std::get<description>(functions), std::tuple_cat(source, constant, target)), from,
            View<T, 1, 1, Form::packed, true>{factors}, View<T, Rows, N, F, true>{d},
            [val](const auto &x, const auto &, auto z, int i)
                __attribute__((always_inline)) { z = read<Turned>(x) * val[ByEach ? i : 0]; },
            [val](const auto &u, const T *__restrict x, const auto &, const T *, const auto &w, T *__restrict z, int i)
                __attribute__((always_inline)) {
                    const T factor = val[ByEach ? i : 0];
                    for (int r = 0; r < Rows; ++r)
                        for (int c = 0; c < N; ++c)
                            z[w.offset(r, c)] = x[place<Turned>(u, r, c)] * factor;
                });
    }

private:
    template <bool Array>
    static auto vectorOf(const Operand<T> &x)
    {
        return vectorArguments<description, Array>(x);
    }

    // The library's call, and the same work over all objects by Eigen and by a loop. Tables have no peers of their own:
    // theirs work on the same objects in the standard description.
    template <class A, class B, class D, class Eigen, class Loop>
    void add(const char *member, const Operand<T> &target, Work kvlm, const A &a, const B &b, const D &d, Eigen eigen,
             Loop loop) const
    {
        std::vector<std::pair<std::string, Work>> works = {{"kvlm", kvlm}};
        if constexpr (F != Form::tablePlanes) {
            works.emplace_back("eigen", [=, count = count] {
                for (int i = 0; i < count; ++i)
                    if constexpr (std::is_invocable_v<Eigen, decltype(a.map(i)), decltype(b.map(i)), decltype(d.map(i)),
                                                      int>)
                        eigen(a.map(i), b.map(i), d.map(i), i);
                    else
                        eigen(a.map(i), b.map(i), d.map(i));
                return 0;
            });
            works.emplace_back("loop", [=, count = count] {
                for (int i = 0; i < count; ++i)
                    if constexpr (std::is_invocable_v<Loop, A, T *, B, T *, D, T *, int>)
                        loop(a, a.object(i), b, b.object(i), d, d.object(i), i);
                    else
                        loop(a, a.object(i), b, b.object(i), d, d.object(i));
                return 0;
            });
        }
        addPeers<T>(works, member, F, N, a.x.base, b.x.base, d.x.base, count);
        suite.add(nameOfCell<T>(member, F, N, count), target, works,
                  F == Form::tablePlanes ? Suite::Check() : nearly<T>(d, count));
    }

    Suite &suite;
    int count;
};

#define MATRICES(letters, type, ...) cells.template matrices<__VA_ARGS__>("Mul_" #letters, ALL(kvlmMul_##letters, type))
#define VECTORS(letters, type, ...)  cells.template vectors<__VA_ARGS__>("Mul_" #letters, ALL(kvlmMul_##letters, type))
#define SCALE(letters, type, ...)    cells.template scale<__VA_ARGS__>("Mul_" #letters, ALL(kvlmMul_##letters, type))
#define GAXPY(letters, type, array)  cells.template gaxpy<array>("Gaxpy_" #letters, ALL(kvlmGaxpy_##letters, type))
#define PRODUCTS(type)                                                                                                 \
    MATRICES(mama, type, false, false, true, true);                                                                    \
    MATRICES(mam, type, false, false, true, false);                                                                    \
    MATRICES(mma, type, false, false, false, true);                                                                    \
    MATRICES(tama, type, true, false, true, true);                                                                     \
    MATRICES(mata, type, false, true, true, true);                                                                     \
    MATRICES(tata, type, true, true, true, true);                                                                      \
    if constexpr (F == Form::packed) {                                                                                 \
        MATRICES(mat, type, false, true, true, false);                                                                 \
        MATRICES(mta, type, false, true, false, true);                                                                 \
        MATRICES(tam, type, true, false, true, false);                                                                 \
        MATRICES(tma, type, true, false, false, true);                                                                 \
        MATRICES(tat, type, true, true, true, false);                                                                  \
        MATRICES(tta, type, true, true, false, true);                                                                  \
    }
#define OTHERS(type)                                                                                                   \
    VECTORS(mva, type, false, false, true);                                                                            \
    VECTORS(tva, type, true, false, true);                                                                             \
    VECTORS(mav, type, false, true, false);                                                                            \
    VECTORS(tav, type, true, true, false);                                                                             \
    VECTORS(mava, type, false, true, true);                                                                            \
    VECTORS(tava, type, true, true, true);                                                                             \
    GAXPY(mva, type, true);                                                                                            \
    GAXPY(mvav, type, false);                                                                                          \
    SCALE(mac, type, N, false, false);                                                                                 \
    SCALE(tac, type, N, false, true);                                                                                  \
    SCALE(vac, type, 1, false, false)

#define FEW(type)                                                                                                      \
    some.template matrices<false, false, true, true>("Mul_mama", ALL(kvlmMul_mama, type));                             \
    some.template vectors<false, true, true>("Mul_mava", ALL(kvlmMul_mava, type))

} // namespace

template <class T, int N, Form F>
void Products<T, N, F>::add(Suite &suite)
{
    const Cells<T, N, F> cells(suite);
    if constexpr (F == Form::packed)
        for (int few : {1, 4, 16}) {
            const Cells<T, N, F> some(suite, few);
            if constexpr (sizeof(T) == 4) {
                FEW(32f);
            } else {
                FEW(64f);
            }
        }
    if constexpr (sizeof(T) == 4) {
        PRODUCTS(32f);
        OTHERS(32f);
        if constexpr (N == 4 && descriptionOf(F) == 0)
            cells.transform("AffineTransform3DH_mva", kvlmAffineTransform3DH_mva_32f);
        if constexpr (!isList(F))
            SCALE(vaca, 32f, 1, true, false);
    } else {
        PRODUCTS(64f);
        OTHERS(64f);
        if constexpr (!isList(F))
            SCALE(vaca, 64f, 1, true, false);
    }
}

#define INSTANTIATE(form)                                                                                              \
    template struct Products<float, ORDER, Form::form>;                                                                \
    template struct Products<double, ORDER, Form::form>

INSTANTIATE(packed);
INSTANTIATE(strided);
INSTANTIATE(tableObjects);
INSTANTIATE(tablePlanes);
INSTANTIATE(list);

} // namespace bench
