// GLM, LIBXSMM, and the table of all; compiled for each level with the instructions that it has.
#include "peers.h"

#include <libxsmm.h>

#define GLM_FORCE_INTRINSICS
#include <glm/glm.hpp>
#include <glm/gtc/type_aligned.hpp>

namespace bench {

namespace {

// ---- GLM. What it reads by columns is the transposed matrix: factors change places.

template <class T, int N>
struct Glm {
    // In registers where it has code for them.
    static constexpr auto qualifier = sizeof(T) == 4 && N == 4 ? glm::aligned_highp : glm::packed_highp;
    using M = glm::mat<N, N, T, qualifier>;
    using V = glm::vec<N, T, qualifier>;

    static void add(Peers<T> &peers)
    {
        constexpr int matrix = N * N, vector = N;
        const auto row = [&](const char *member, Call<T> call) { peers.push_back({{"glm", member, N}, call}); };
#define GLM_ROW(member, a, b, d, A, B, D, expression)                                                                  \
    row(member, overObjects<a, b, d, T>([](const T *p, const T *q, T *r) __attribute__((always_inline)) {              \
            [[maybe_unused]] const A &x = *reinterpret_cast<const A *>(p);                                             \
            [[maybe_unused]] const B &y = *reinterpret_cast<const B *>(q);                                             \
            *reinterpret_cast<D *>(r) = expression;                                                                    \
        }))
        GLM_ROW("Mul_mama", matrix, matrix, matrix, M, M, M, y * x);
        GLM_ROW("Mul_mam", matrix, 0, matrix, M, M, M, y * x);
        GLM_ROW("Mul_mma", 0, matrix, matrix, M, M, M, y * x);
        GLM_ROW("Mul_tama", matrix, matrix, matrix, M, M, M, y * glm::transpose(x));
        GLM_ROW("Mul_mata", matrix, matrix, matrix, M, M, M, glm::transpose(y) * x);
        GLM_ROW("Mul_tata", matrix, matrix, matrix, M, M, M, glm::transpose(y) * glm::transpose(x));
        GLM_ROW("Mul_mava", matrix, vector, vector, M, V, V, y * x);
        GLM_ROW("Mul_mav", matrix, 0, vector, M, V, V, y * x);
        GLM_ROW("Mul_mva", 0, vector, vector, M, V, V, y * x);
        GLM_ROW("Mul_tava", matrix, vector, vector, M, V, V, x * y);
        GLM_ROW("Mul_tav", matrix, 0, vector, M, V, V, x * y);
        GLM_ROW("Mul_tva", 0, vector, vector, M, V, V, x * y);
        GLM_ROW("Mul_mac", matrix, 0, matrix, M, T, M, x * y);
        GLM_ROW("Mul_vac", vector, 0, vector, V, T, V, x * y);
        GLM_ROW("Mul_vaca", vector, 1, vector, V, T, V, x * y);
        GLM_ROW("Add_mama", matrix, matrix, matrix, M, M, M, x + y);
        GLM_ROW("Add_mam", matrix, 0, matrix, M, M, M, x + y);
        GLM_ROW("Add_tama", matrix, matrix, matrix, M, M, M, glm::transpose(x) + y);
        GLM_ROW("Sub_mam", matrix, 0, matrix, M, M, M, x - y);
        GLM_ROW("Sub_mama", matrix, matrix, matrix, M, M, M, x - y);
        GLM_ROW("Add_vava", vector, vector, vector, V, V, V, x + y);
        GLM_ROW("Add_vaca", vector, 1, vector, V, T, V, x + y);
        GLM_ROW("Sub_vav", vector, 0, vector, V, V, V, x - y);
        GLM_ROW("DotProduct_vava", vector, vector, 1, V, V, T, glm::dot(x, y));
        GLM_ROW("DotProduct_vav", vector, 0, 1, V, V, T, glm::dot(x, y));
        GLM_ROW("L2Norm_va", vector, 0, 1, V, V, T, glm::length(x));
        GLM_ROW("Transpose_ma", matrix, 0, matrix, M, M, M, glm::transpose(x));
        GLM_ROW("Extract_ta", matrix, 0, matrix, M, M, M, glm::transpose(x));
        GLM_ROW("Det_ma", matrix, 0, 1, M, M, T, glm::determinant(x));
        GLM_ROW("Invert_ma", matrix, 0, matrix, M, M, M, glm::inverse(x));
        if constexpr (N == 3) {
            GLM_ROW("CrossProduct_vava", vector, vector, vector, V, V, V, glm::cross(x, y));
            GLM_ROW("CrossProduct_vav", vector, 0, vector, V, V, V, glm::cross(x, y));
        }
    }
};

// ---- LIBXSMM makes its kernels when the program runs, in column order as well; a first factor it reads as it is.

auto kernelOf(float, int n, int flags)
{
    const float one = 1, zero = 0;
    return libxsmm_smmdispatch(n, n, n, nullptr, nullptr, nullptr, &one, &zero, &flags, nullptr);
}
auto kernelOf(double, int n, int flags)
{
    const double one = 1, zero = 0;
    return libxsmm_dmmdispatch(n, n, n, nullptr, nullptr, nullptr, &one, &zero, &flags, nullptr);
}

template <class T, int N>
void addXsmm(Peers<T> &peers)
{
#if defined __AVX512F__
    libxsmm_set_target_arch("skx");
#elif defined __AVX2__
    libxsmm_set_target_arch("hsw");
#else
    libxsmm_set_target_arch("sse3"); // the least that it knows
#endif
    constexpr int size = N * N;
    const auto row = [&](const char *member, auto overAll, int flags) {
        if (const auto kernel = kernelOf(T(), N, flags))
            peers.push_back(
                {{"xsmm", member, N}, overAll([kernel](const T *p, const T *q, T *r) { kernel(q, p, r); })});
    };
    const auto both = [](auto op) { return overObjects<size, size, size, T>(op); };
    row("Mul_mama", both, LIBXSMM_GEMM_FLAG_NONE);
    row("Mul_tama", both, LIBXSMM_GEMM_FLAG_TRANS_B);
    row(
        "Mul_mam", [](auto op) { return overObjects<size, 0, size, T>(op); }, LIBXSMM_GEMM_FLAG_NONE);
    row(
        "Mul_mma", [](auto op) { return overObjects<0, size, size, T>(op); }, LIBXSMM_GEMM_FLAG_NONE);
}

template <class T>
const Peers<T> &allPeers()
{
    static const Peers<T> all = [] {
        Peers<T> peers;
        Glm<T, 3>::add(peers);
        Glm<T, 4>::add(peers);
        if constexpr (sizeof(T) == 4)
            addCglm(peers);
        addXsmm<T, 3>(peers);
        addXsmm<T, 4>(peers);
        addXsmm<T, 5>(peers);
        addXsmm<T, 6>(peers);
        return peers;
    }();
    return all;
}

} // namespace

template <class T>
void addPeers(std::vector<std::pair<std::string, Work>> &works, const std::string &member, Form form, int order,
              const T *a, const T *b, T *d, int count)
{
    if (form != Form::packed)
        return;
    for (const auto &[key, call] : allPeers<T>())
        if (std::get<1>(key) == member && std::get<2>(key) == order)
            works.emplace_back(std::get<0>(key), [=, call = call] { return call(a, b, d, count); });
}

template void addPeers(std::vector<std::pair<std::string, Work>> &, const std::string &, Form, int, const float *,
                       const float *, float *, int);
template void addPeers(std::vector<std::pair<std::string, Work>> &, const std::string &, Form, int, const double *,
                       const double *, double *, int);

} // namespace bench
