// Benchmarks of Transpose, Copy, Extract and LoadIdentity, against Eigen, plain loops and the C library's copy of as
// many elements ("flat").
#include "peers.h"

namespace {

using namespace bench;

/// Element (r, c) of object i as a plain program finds it.
template <class T, int N, Form F>
struct Elements {
    View<T, N, N, F, true> view;

    BENCH_INLINE T *object(int i) const { return isTable(F) ? nullptr : view.object(i); }
    BENCH_INLINE T *at(T *object, int i, int r, int c) const
    {
        if constexpr (isTable(F))
            return view.x.entries[r * N + c] + static_cast<std::ptrdiff_t>(i) * view.x.objStep;
        else
            return object + view.offset(r, c);
    }
};

/// One object after the other.
template <bool Transposed, class T, int N, Form S, Form D>
BENCH_NOINLINE void moveObjects(const Operand<T> &src, const Operand<T> &dst, int count)
{
    const Elements<T, N, S> from{{src}};
    const Elements<T, N, D> to{{dst}};
    for (int i = 0; i < count; ++i) {
        T *const __restrict a = from.object(i);
        T *const __restrict d = to.object(i);
        for (int r = 0; r < N; ++r)
            for (int c = 0; c < N; ++c)
                *to.at(d, i, r, c) = Transposed ? *from.at(a, i, c, r) : *from.at(a, i, r, c);
    }
}

/// One position after the other, for planes on both sides.
template <bool Transposed, class T, int N>
BENCH_NOINLINE void movePlanes(const Operand<T> &src, const Operand<T> &dst, int count)
{
    for (int r = 0; r < N; ++r)
        for (int c = 0; c < N; ++c)
            std::memcpy(dst.entries[r * N + c], src.entries[Transposed ? c * N + r : r * N + c], count * sizeof(T));
}

template <bool Transposed, class T, int N, Form S, Form D>
void moveLoop(const Operand<T> &src, const Operand<T> &dst, int count)
{
    if constexpr (S == Form::tablePlanes && D == Form::tablePlanes)
        movePlanes<Transposed, T, N>(src, dst, count);
    else
        moveObjects<Transposed, T, N, S, D>(src, dst, count);
}

template <bool Transposed, class T, int N, Form S, Form D>
BENCH_NOINLINE void moveEigen(const Operand<T> &src, const Operand<T> &dst, int count)
{
    const View<T, N, N, S, true> from{src};
    const View<T, N, N, D, true> to{dst};
    for (int i = 0; i < count; ++i)
        if constexpr (Transposed)
            to.map(i) = from.map(i).transpose();
        else
            to.map(i) = from.map(i);
}

using Works = std::vector<std::pair<std::string, Work>>;

/// The peers of a move from one batch to another, behind the library's work.
template <bool Transposed, class T, int N, Form S, Form D>
void addMove(Suite &suite, const std::string &member, Form form, const Operand<T> &src, const Operand<T> &dst,
             int count, Work work)
{
    Works works = {{"kvlm", work}};
    if constexpr (!isTable(S) && !isTable(D))
        works.emplace_back("eigen", [=] { return moveEigen<Transposed, T, N, S, D>(src, dst, count), 0; });
    works.emplace_back("loop", [=] { return moveLoop<Transposed, T, N, S, D>(src, dst, count), 0; });
    if (Transposed && form == Form::packed)
        addPeers<T>(works, member, form, N, src.base, nullptr, dst.base, count);
    if (form == Form::packed)
        works.emplace_back("flat", [=] { return std::memcpy(dst.base, src.base, src.span * sizeof(T)), 0; });
    suite.add(nameOfCell<T>(member, form, N, count), dst, works);
}

template <class T, int N, Form F, class Functions>
void addTranspose(Suite &suite, const Functions &functions, int count)
{
    constexpr int description = descriptionOf(F);
    const Operand<T> src(F, N, N, true, 0, count), dst(F, N, N, true, 1, count);
    addMove<true, T, N, F, F>(suite, "Transpose_ma", F, src, dst, count,
                              call(std::get<description>(functions),
                                   std::tuple_cat(arguments<description, true>(src), std::make_tuple(N, N),
                                                  arguments<description, true>(dst), std::make_tuple(count))));
}

template <class T, int N, class Functions>
void addTransposes(Suite &suite, const Functions &functions)
{
    for (int count : {16, 1000, 100000})
        addTranspose<T, N, Form::packed>(suite, functions, count);
    addTranspose<T, N, Form::strided>(suite, functions, 1000);
    addTranspose<T, N, Form::columns>(suite, functions, 1000);
    addTranspose<T, N, Form::tableObjects>(suite, functions, 1000);
    addTranspose<T, N, Form::tablePlanes>(suite, functions, 1000);
    addTranspose<T, N, Form::list>(suite, functions, 1000);
    addTranspose<T, N, Form::stridedList>(suite, functions, 1000);
}

/// One large matrix. Its memory is its own.
template <class T, class Function>
void addLarge(Suite &suite, Function *function, int n)
{
    static std::vector<T> memory[2];
    const std::size_t largest = std::size_t(4096) * 4096;
    for (std::vector<T> &side : memory)
        side.resize(largest, T(1));
    for (std::size_t k = 0; k < largest; k += 7)
        memory[0][k] = static_cast<T>(k % 1000);
    const Operand<T> src(Form::packed, n, n, false, 0, 1, memory[0].data()),
        dst(Form::packed, n, n, false, 1, 1, memory[1].data());
    Works works;
    works.emplace_back("kvlm", call(function, std::tuple_cat(arguments<0, false>(src), std::make_tuple(n, n),
                                                             arguments<0, false>(dst))));
    works.emplace_back("eigen", [=] {
        using Matrix = Eigen::Matrix<T, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
        Eigen::Map<Matrix> result(dst.base, n, n);
        result = Eigen::Map<const Matrix>(src.base, n, n).transpose();
        return 0;
    });
    works.emplace_back("loop", [=] {
        for (int c = 0; c < n; ++c)
            for (int r = 0; r < n; ++r)
                dst.base[std::size_t(c) * n + r] = src.base[std::size_t(r) * n + c];
        return 0;
    });
    works.emplace_back("flat", [=] { return std::memcpy(dst.base, src.base, src.span * sizeof(T)), 0; });
    suite.add(nameOfCell<T>("Transpose_m", Form::packed, n, 1), dst, works);
}

template <class T, int N, Form S, Form D, class Function>
void addCopy(Suite &suite, const std::string &pair, Function *function)
{
    // The cell's form is that of the side that is not packed.
    constexpr Form form = D == Form::packed ? S : D;
    for (int count : {16, 1000, 100000}) {
        if (count != 1000 && form != Form::packed)
            continue;
        const Operand<T> src(S, N, N, true, 0, count), dst(D, N, N, true, 1, count);
        addMove<false, T, N, S, D>(
            suite, "Copy_ma_" + pair, form, src, dst, count,
            call(function, std::tuple_cat(arguments<descriptionOf(S), true>(src),
                                          arguments<descriptionOf(D), true>(dst), std::make_tuple(N, N, count))));
    }
}

#define COPY(pair, S, D, type) addCopy<T, N, Form::S, Form::D>(suite, #pair, kvlmCopy_ma_##type##_##pair)
#define COPIES(type)                                                                                                   \
    COPY(SS, packed, packed, type);                                                                                    \
    COPY(SS, packed, strided, type);                                                                                   \
    COPY(SS, columns, packed, type);                                                                                   \
    COPY(SP, packed, tableObjects, type);                                                                              \
    COPY(SP, packed, tablePlanes, type);                                                                               \
    COPY(SL, packed, list, type);                                                                                      \
    COPY(LS, list, packed, type);                                                                                      \
    COPY(PS, tableObjects, packed, type);                                                                              \
    COPY(PS, tablePlanes, packed, type);                                                                               \
    COPY(LP, list, tablePlanes, type);                                                                                 \
    COPY(LL, list, list, type);                                                                                        \
    COPY(PP, tablePlanes, tablePlanes, type);                                                                          \
    COPY(PL, tablePlanes, list, type)

template <class T, int N>
void addCopies(Suite &suite)
{
    if constexpr (sizeof(T) == 4) {
        COPIES(32f);
    } else {
        COPIES(64f);
    }
}

/// Extract, and identities.
template <class T, int N, class Extract, class Identity>
void addOthers(Suite &suite, Extract *extract, Extract *extractTransposed, Identity *identity)
{
    constexpr int count = 1000;
    const Operand<T> src(Form::packed, N, N, true, 0, count), dst(Form::packed, N, N, true, 1, count);
    const auto into = std::tuple_cat(arguments<0, true>(src), std::make_tuple(dst.base, N, N, count));
    addMove<false, T, N, Form::packed, Form::packed>(suite, "Extract_ma", Form::packed, src, dst, count,
                                                     call(extract, into));
    addMove<true, T, N, Form::packed, Form::packed>(suite, "Extract_ta", Form::packed, src, dst, count,
                                                    call(extractTransposed, into));
    const Elements<T, N, Form::packed> to{{dst}};
    Works works;
    works.emplace_back("kvlm", call(identity, std::tuple_cat(arguments<0, true>(dst), std::make_tuple(N, N, count))));
    works.emplace_back("eigen", [=] {
        for (int i = 0; i < count; ++i)
            to.view.map(i).setIdentity();
        return 0;
    });
    works.emplace_back("loop", [=] {
        for (int i = 0; i < count; ++i)
            for (int k = 0; k < N * N; ++k)
                to.object(i)[k] = k % (N + 1) == 0;
        return 0;
    });
    works.emplace_back("flat", [=] { return std::memset(dst.base, 0, dst.span * sizeof(T)), 0; });
    suite.add(nameOfCell<T>("LoadIdentity_ma", Form::packed, N, count), dst, works);
}

template <int N>
void addOrder(Suite &suite)
{
    addTransposes<float, N>(suite,
                            std::make_tuple(kvlmTranspose_ma_32f, kvlmTranspose_ma_32f_P, kvlmTranspose_ma_32f_L));
    addTransposes<double, N>(suite,
                             std::make_tuple(kvlmTranspose_ma_64f, kvlmTranspose_ma_64f_P, kvlmTranspose_ma_64f_L));
    addCopies<float, N>(suite);
    addCopies<double, N>(suite);
    addOthers<float, N>(suite, kvlmExtract_ma_32f, kvlmExtract_ta_32f, kvlmLoadIdentity_ma_32f);
    addOthers<double, N>(suite, kvlmExtract_ma_64f, kvlmExtract_ta_64f, kvlmLoadIdentity_ma_64f);
}

} // namespace

int main(int argc, char **argv)
{
    Suite suite;
    addOrder<3>(suite);
    addOrder<4>(suite);
    addOrder<5>(suite);
    addOrder<6>(suite);
    for (int n : {16, 64, 100, 256, 500, 512, 1000, 1024, 2000, 4000, 4096}) {
        addLarge<float>(suite, kvlmTranspose_m_32f, n);
        addLarge<double>(suite, kvlmTranspose_m_64f, n);
    }
    return suite.run(argc, argv);
}
