// cglm, which reads matrices as GLM does, and multiplies a vector only by what we read transposed.
#include "peers.h"

// Matrices are aligned as the library's are: to 16 bytes.
#define CGLM_ALL_UNALIGNED
#include <cglm/cglm.h>

namespace bench {

namespace {

template <int N>
using Rows = float (*)[N];

template <int N>
Rows<N> rowsOf(const float *p)
{
    return reinterpret_cast<Rows<N>>(const_cast<float *>(p));
}
float *elementsOf(const float *p)
{
    return const_cast<float *>(p);
}

} // namespace

void addCglm(Peers<float> &peers)
{
#define CGLM_ROW(N, member, a, b, d, expression)                                                                       \
    peers.push_back({{"cglm", member, N}, overObjects<a, b, d, float>([                                                \
                     ](const float *p, const float *q, float *r) __attribute__((always_inline)) {                      \
                         [[maybe_unused]] const auto x = rowsOf<N>(p), y = rowsOf<N>(q), z = rowsOf<N>(r);             \
                         [[maybe_unused]] const auto u = elementsOf(p), v = elementsOf(q);                             \
                         expression;                                                                                   \
                     })})
#define CGLM_ROWS(N)                                                                                                   \
    CGLM_ROW(N, "Mul_mama", N *N, N *N, N *N, glm_mat##N##_mul(y, x, z));                                              \
    CGLM_ROW(N, "Mul_mam", N *N, 0, N *N, glm_mat##N##_mul(y, x, z));                                                  \
    CGLM_ROW(N, "Mul_mma", 0, N *N, N *N, glm_mat##N##_mul(y, x, z));                                                  \
    CGLM_ROW(N, "Mul_tava", N *N, N, N, glm_mat##N##_mulv(x, v, r));                                                   \
    CGLM_ROW(N, "Mul_tav", N *N, 0, N, glm_mat##N##_mulv(x, v, r));                                                    \
    CGLM_ROW(N, "Mul_tva", 0, N, N, glm_mat##N##_mulv(x, v, r));                                                       \
    CGLM_ROW(N, "Transpose_ma", N *N, 0, N *N, glm_mat##N##_transpose_to(x, z));                                       \
    CGLM_ROW(N, "Extract_ta", N *N, 0, N *N, glm_mat##N##_transpose_to(x, z));                                         \
    CGLM_ROW(N, "Det_ma", N *N, 0, 1, *r = glm_mat##N##_det(x));                                                       \
    CGLM_ROW(N, "Invert_ma", N *N, 0, N *N, glm_mat##N##_inv(x, z));                                                   \
    CGLM_ROW(N, "Add_vava", N, N, N, glm_vec##N##_add(u, v, r));                                                       \
    CGLM_ROW(N, "Sub_vav", N, 0, N, glm_vec##N##_sub(u, v, r));                                                        \
    CGLM_ROW(N, "DotProduct_vava", N, N, 1, *r = glm_vec##N##_dot(u, v));                                              \
    CGLM_ROW(N, "DotProduct_vav", N, 0, 1, *r = glm_vec##N##_dot(u, v));                                               \
    CGLM_ROW(N, "L2Norm_va", N, 0, 1, *r = glm_vec##N##_norm(u))
    CGLM_ROWS(3);
    CGLM_ROWS(4);
    CGLM_ROW(3, "CrossProduct_vava", 3, 3, 3, glm_vec3_cross(u, v, r));
    CGLM_ROW(3, "CrossProduct_vav", 3, 0, 3, glm_vec3_cross(u, v, r));
}

} // namespace bench
