// Benchmarks of Add and Sub on arrays of matrices, against Eigen and against plain loops.
#include "peers.h"

namespace {

using namespace bench;

struct Plus {
    template <class A, class B>
    BENCH_INLINE auto operator()(const A &a, const B &b) const
    {
        return a + b;
    }
};

struct Minus {
    template <class A, class B>
    BENCH_INLINE auto operator()(const A &a, const B &b) const
    {
        return a - b;
    }
};

/// How a member reads an operand: m, t, ma, ta.
template <bool Transposed, bool Array>
struct Reads {
    static constexpr bool transposed = Transposed, array = Array;
};
using M = Reads<false, false>;
using Tr = Reads<true, false>;
using Ma = Reads<false, true>;
using Ta = Reads<true, true>;

template <class T>
using Peer = void (*)(const Operand<T> &a, const Operand<T> &b, const Operand<T> &d, int count);

// ---- Peer: Eigen, one fixed-size map per object; the one matrix of a call is held in a matrix of its own.

template <class R, class View>
BENCH_INLINE auto hold(const View &x)
{
    if constexpr (R::array)
        return x;
    else
        return typename View::Matrix(x.map(0));
}

template <class R, class Held>
BENCH_INLINE decltype(auto) read(const Held &x, int i)
{
    if constexpr (R::array && R::transposed)
        return x.map(i).transpose();
    else if constexpr (R::array)
        return x.map(i);
    else if constexpr (R::transposed)
        return x.transpose();
    else
        return (x);
}

template <class Op, class RA, class RB, class T, int N, Form F>
void eigenLoop(const Operand<T> &a, const Operand<T> &b, const Operand<T> &d, int count)
{
    const auto heldA = hold<RA>(View<T, N, N, F, RA::array>{a});
    const auto heldB = hold<RB>(View<T, N, N, F, RB::array>{b});
    const View<T, N, N, F, true> result{d};
    for (int i = 0; i < count; ++i)
        result.map(i) = Op()(read<RA>(heldA, i), read<RB>(heldB, i));
}

// ---- Peer: plain loops with fixed bounds.

template <class Op, class T>
BENCH_NOINLINE void flatArrays(const T *__restrict a, const T *__restrict b, T *__restrict d, std::size_t n)
{
    for (std::size_t k = 0; k < n; ++k)
        d[k] = Op()(a[k], b[k]);
}

template <class T>
BENCH_NOINLINE void flatArray(const T *__restrict a, T b, T *__restrict d, std::size_t n)
{
    for (std::size_t k = 0; k < n; ++k)
        d[k] = a[k] + b;
}

template <class Op, class RA, class RB, int N, class T, class A, class B, class D>
BENCH_INLINE void oneObject(const A &a, const T *__restrict pa, const B &b, const T *__restrict pb, const D &d,
                            T *__restrict pd)
{
    for (int r = 0; r < N; ++r)
        for (int c = 0; c < N; ++c)
            pd[d.offset(r, c)] = Op()(pa[RA::transposed ? a.offset(c, r) : a.offset(r, c)],
                                      pb[RB::transposed ? b.offset(c, r) : b.offset(r, c)]);
}

template <class Op, class RA, class RB, class T, int N, Form F>
void objectLoop(const Operand<T> &a, const Operand<T> &b, const Operand<T> &d, int count)
{
    const View<T, N, N, F, RA::array> viewA{a};
    const View<T, N, N, F, RB::array> viewB{b};
    const View<T, N, N, F, true> result{d};
    if constexpr (RB::array) {
        for (int i = 0; i < count; ++i)
            oneObject<Op, RA, RB, N, T>(viewA, viewA.object(i), viewB, viewB.object(i), result, result.object(i));
    } else {
        T single[N * N * (isStrided(F) ? 2 : 1)];
        std::memcpy(single, b.base, sizeof single);
        for (int i = 0; i < count; ++i)
            oneObject<Op, RA, RB, N, T>(viewA, viewA.object(i), viewB, single, result, result.object(i));
    }
}

// Two batches without gaps in the same order are one long sum.
template <class Op, class T>
void wholeLoop(const Operand<T> &a, const Operand<T> &b, const Operand<T> &d, int)
{
    flatArrays<Op>(a.base, b.base, d.base, d.span);
}

// Whole objects: object by object. Planes: position by position, where the objects' elements are one run.
template <class Op, class RA, class RB, class T, int N, Form F>
void tableLoop(const Operand<T> &a, const Operand<T> &b, const Operand<T> &d, int count)
{
    const auto entry = [](bool transposed, int r, int c) { return transposed ? c * N + r : r * N + c; };
    if constexpr (F == Form::tablePlanes) {
        for (int r = 0; r < N; ++r)
            for (int c = 0; c < N; ++c) {
                const T *pa = a.entries[entry(RA::transposed, r, c)];
                const T *pb = b.entries[entry(RB::transposed, r, c)];
                T *pd = d.entries[entry(false, r, c)];
                if constexpr (RB::array)
                    flatArrays<Op>(pa, pb, pd, count);
                else
                    for (std::ptrdiff_t i = 0; i < count; ++i)
                        pd[i] = Op()(pa[i], *pb);
            }
    } else {
        T single[N * N];
        for (int p = 0; p < N * N; ++p)
            single[p] = *b.entries[p];
        for (std::ptrdiff_t i = 0; i < count; ++i)
            for (int r = 0; r < N; ++r)
                for (int c = 0; c < N; ++c) {
                    const int q = entry(RB::transposed, r, c);
                    const T x = a.entries[entry(RA::transposed, r, c)][i * a.objStep];
                    const T y = RB::array ? b.entries[q][i * b.objStep] : single[q];
                    d.entries[entry(false, r, c)][i * d.objStep] = Op()(x, y);
                }
    }
}

// ---- The cells.

template <class RA, class RB, class T, int Description, class Functions>
void addCell(Suite &suite, const std::string &name, const Functions &functions, Form form, int order, int count,
             Peer<T> eigen, Peer<T> loop)
{
    const Operand<T> a(form, order, order, RA::array, 0, count);
    const Operand<T> b(form, order, order, RB::array, 1, count);
    const Operand<T> d(form, order, order, true, 2, count);
    std::vector<std::pair<std::string, Work>> works;

    works.emplace_back("kvlm",
                       call(std::get<Description>(functions),
                            std::tuple_cat(arguments<Description, RA::array>(a), arguments<Description, RB::array>(b),
                                           arguments<Description, true>(d), std::make_tuple(order, order, count))));
    if (eigen)
        works.emplace_back("eigen", [=] { return eigen(a, b, d, count), 0; });
    works.emplace_back("loop", [=] { return loop(a, b, d, count), 0; });
    addPeers<T>(works, name, form, order, a.base, b.base, d.base, count);
    if (form == Form::packed && count >= 100000) {
        if (RB::array)
            works.emplace_back("flat", [=] { return flatArrays<Plus>(a.base, b.base, d.base, d.span), 0; });
        else
            works.emplace_back("flat", [=] { return flatArray(a.base, *b.base, d.base, d.span), 0; });
    }
    suite.add(nameOfCell<T>(name, form, order, count), d, works);
}

/// A member's name, functions, and whether every form gets every batch (packed objects always do).
template <class T, class Functions>
struct Member {
    std::string name;
    Functions functions;
    bool allBatches;
};

template <class Op, class RA, class RB, class T, int N, Form F, class Functions>
void addBatches(Suite &suite, const Member<T, Functions> &member)
{
    Peer<T> eigen = nullptr, loop;
    if constexpr (isTable(F))
        loop = tableLoop<Op, RA, RB, T, N, F>;
    else {
        eigen = eigenLoop<Op, RA, RB, T, N, F>;
        if constexpr ((F == Form::packed || F == Form::columns) && std::is_same_v<RA, Ma> && std::is_same_v<RB, Ma>)
            loop = wholeLoop<Op, T>;
        else
            loop = objectLoop<Op, RA, RB, T, N, F>;
    }
    for (int count : {1, 4, 16, 1000, 100000})
        if ((count == 1000 || F == Form::packed || (member.allBatches && count >= 16)) && (count < 100000 || N <= 6))
            addCell<RA, RB, T, descriptionOf(F)>(suite, member.name, member.functions, F, N, count, eigen, loop);
}

template <class Op, class RA, class RB, class T, int N, class Functions>
void addForms(Suite &suite, const Member<T, Functions> &member)
{
    addBatches<Op, RA, RB, T, N, Form::packed>(suite, member);
    addBatches<Op, RA, RB, T, N, Form::strided>(suite, member);
    addBatches<Op, RA, RB, T, N, Form::tableObjects>(suite, member);
    addBatches<Op, RA, RB, T, N, Form::list>(suite, member);
    if constexpr (N <= 6) {
        addBatches<Op, RA, RB, T, N, Form::columns>(suite, member);
        addBatches<Op, RA, RB, T, N, Form::tablePlanes>(suite, member);
        addBatches<Op, RA, RB, T, N, Form::stridedList>(suite, member);
    }
}

template <class Op, class RA, class RB, class T, class Functions>
void addOrders(Suite &suite, const std::string &name, const Functions &functions, bool allBatches)
{
    const Member<T, Functions> member{name, functions, allBatches};
    addForms<Op, RA, RB, T, 3>(suite, member);
    addForms<Op, RA, RB, T, 4>(suite, member);
    addForms<Op, RA, RB, T, 5>(suite, member);
    addForms<Op, RA, RB, T, 6>(suite, member);
    addForms<Op, RA, RB, T, 8>(suite, member); // the general path
}

#define MEMBER(stem, op, a, b, allBatches)                                                                             \
    addOrders<op, a, b, float>(suite, #stem + 4, std::make_tuple(stem##_32f, stem##_32f_P, stem##_32f_L), allBatches); \
    addOrders<op, a, b, double>(suite, #stem + 4, std::make_tuple(stem##_64f, stem##_64f_P, stem##_64f_L), allBatches);

} // namespace

int main(int argc, char **argv)
{
    // "--full" measures every cell: some four minutes.
    bool full = false;
    int kept = 1;
    for (int k = 1; k < argc; ++k)
        if (std::string_view(argv[k]) == "--full")
            full = true;
        else
            argv[kept++] = argv[k];

    Suite suite;
    //     member        op     A   B   every batch in every form
    MEMBER(kvlmAdd_mam, Plus, Ma, M, true)
    MEMBER(kvlmAdd_mama, Plus, Ma, Ma, true)
    MEMBER(kvlmAdd_tam, Plus, Ta, M, full)
    MEMBER(kvlmAdd_tama, Plus, Ta, Ma, full)
    MEMBER(kvlmAdd_tat, Plus, Ta, Tr, full)
    MEMBER(kvlmAdd_tata, Plus, Ta, Ta, full)
    MEMBER(kvlmAdd_mat, Plus, Ma, Tr, full)
    MEMBER(kvlmSub_mam, Minus, Ma, M, full)
    MEMBER(kvlmSub_mata, Minus, Ma, Ta, full)
    MEMBER(kvlmSub_mama, Minus, Ma, Ma, full)
    MEMBER(kvlmSub_tam, Minus, Ta, M, full)
    return suite.run(kept, argv);
}
