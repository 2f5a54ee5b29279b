// Benchmarks of functions on one matrix of an order above those that are worked in registers, against Eigen's of
// dynamic size and plain loops that know the order.
#include "cholqr.h"
#include "elements.h"
#include "lu.h"

#include <Eigen/Cholesky>
#include <Eigen/LU>
#include <Eigen/QR>

namespace {

using namespace bench;

template <class T>
struct Functions;
#define FUNCTIONS(T, type)                                                                                             \
    template <>                                                                                                        \
    struct Functions<T> {                                                                                              \
        static constexpr auto multiply = kvlmMul_mm_##type;                                                            \
        static constexpr auto multiplyVector = kvlmMul_mv_##type;                                                      \
        static constexpr auto lu = kvlmLUDecomp_m_##type;                                                              \
        static constexpr auto luSolve = kvlmLUBackSubst_mv_##type;                                                     \
        static constexpr auto cholesky = kvlmCholeskyDecomp_m_##type;                                                  \
        static constexpr auto choleskySolve = kvlmCholeskyBackSubst_mv_##type;                                         \
        static constexpr auto qr = kvlmQRDecomp_m_##type;                                                              \
        static constexpr auto qrSolve = kvlmQRBackSubst_mv_##type;                                                     \
    }
FUNCTIONS(float, 32f);
FUNCTIONS(double, 64f);

template <class T, int N>
class Cells {
    using Library = Functions<T>;
    using Matrix = Eigen::Matrix<T, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
    using Vector = Eigen::Matrix<T, Eigen::Dynamic, 1>;
    static constexpr int elem = sizeof(T), row = N * elem;

    Suite &suite;
    T *const given = Memory<T>::place(1, N *N); // right-hand sides too
    T *const a = lasting<T>(N * N);             // symmetric and positive definite
    T *const factors = lasting<T>(N * N), *const loopFactors = lasting<T>(N * N);
    T *const buffer = lasting<T>(4 * N);
    int *const pivots = lasting<int>(N), *const loopPivots = lasting<int>(N);
    Operand<T> d{Form::packed, N, N, false, 2, 1}, x{Form::packed, 1, N, false, 2, 1};

public:
    explicit Cells(Suite &suite) : suite(suite)
    {
        for (int r = 0; r < N; ++r)
            for (int c = 0; c < N; ++c)
                for (int k = 0; k <= N; ++k)
                    a[r * N + c] += k < N ? given[r * N + k] * given[c * N + k] : T(r == c);
    }

    void products() const
    {
        const T *const p = a, *const q = given;
        T *const z = d.base;
        add(
            "Mul_mm", d, [=] { return Library::multiply(p, row, elem, N, N, q, row, elem, N, N, z, row, elem); },
            [=] { matrixOf(z).noalias() = matrixOf(p) * matrixOf(q); },
            [=] {
                for (int r = 0; r < N; ++r) {
                    T sums[N] = {};
                    for (int k = 0; k < N; ++k)
                        for (int c = 0; c < N; ++c)
                            sums[c] += p[r * N + k] * q[k * N + c];
                    std::memcpy(z + r * N, sums, sizeof sums);
                }
            });
        add(
            "Mul_mv", x, [=] { return Library::multiplyVector(p, row, elem, N, N, q, elem, N, z, elem); },
            [=] { vectorOf(z).noalias() = matrixOf(p) * vectorOf(q); },
            [=] {
                for (int r = 0; r < N; ++r) {
                    T sum = 0;
                    for (int k = 0; k < N; ++k)
                        sum += p[r * N + k] * q[k];
                    z[r] = sum;
                }
            });
    }

    void luDecomposition() const
    {
        const auto lu = std::make_shared<Eigen::PartialPivLU<Matrix>>(N);
        // The library leaves the rows where they are, its peers move them.
        const auto expected = std::make_shared<std::vector<T>>();
        const auto check = [=, d = d, pivots = pivots](const std::string &who) {
            bool right = true;
            for (int k = 0; k < N; ++k) {
                const T pivot = d.base[(who == "kvlm" ? pivots[k] : k) * N + k];
                if (who == "kvlm")
                    expected->push_back(pivot);
                right = right && std::abs(pivot - (*expected)[k]) <= T(1e-3) * std::abs(pivot);
            }
            return right;
        };
        add(
            "LUDecomp_m", d, [=, *this] { return Library::lu(a, row, elem, pivots, d.base, row, elem, N); },
            [=, *this] { matrixOf(d.base) = lu->compute(matrixOf(a)).matrixLU(); },
            [=, *this] { factorInto(d.base, [=](auto &w) { factorLoop(w, loopPivots); }); }, check);
        Library::lu(a, row, elem, pivots, factors, row, elem, N);
        factorInto(loopFactors, [=](auto &w) { factorLoop(w, loopPivots); });
        add(
            "LUBackSubst_mv", x,
            [=, *this] { return Library::luSolve(factors, row, elem, pivots, given, elem, x.base, elem, N); },
            [=, *this] { vectorOf(x.base) = lu->solve(vectorOf(given)); },
            [=, *this] {
                T v[N];
                for (int k = 0; k < N; ++k)
                    v[k] = given[loopPivots[k]];
                solveLoop(asMatrix(loopFactors), v);
                std::memcpy(x.base, v, sizeof v);
            });
    }

    template <class Family, template <class> class Peer, class Decompose, class Solve>
    void decomposition(Decompose decompose, Solve solve) const
    {
        const auto peer = std::make_shared<Peer<Matrix>>(matrixOf(a));
        const std::string name = Family::name;
        add(
            name + "Decomp_m", d, [=, *this] { return decompose(*this, d.base); },
            [=, *this] { matrixOf(d.base) = packed(peer->compute(matrixOf(a))); },
            [=, *this] { factorInto(d.base, [](auto &w) { Family::factor(w); }); },
            sameNumbers<T>(N * N,
                           [d = d](int k) { return Family::isCompared(k / N, k % N) ? std::abs(d.base[k]) : T(0); }));
        T *const own = lasting<T>(N * N);
        decompose(*this, own);
        add(
            name + "BackSubst_mv", x, [=, *this] { return solve(*this, own); },
            [=, *this] { vectorOf(x.base) = peer->solve(vectorOf(given)); },
            [=, *this] {
                T v[N];
                std::memcpy(v, given, sizeof v);
                Family::solve(asMatrix(own), v);
                std::memcpy(x.base, v, sizeof v);
            });
    }

    void all() const
    {
        products();
        luDecomposition();
        decomposition<Cholesky, Llt>(
            [](const Cells &c, T *to) { return Library::cholesky(c.a, row, elem, to, row, elem, N); },
            [](const Cells &c, const T *l) {
                return Library::choleskySolve(l, row, elem, c.given, elem, c.x.base, elem, N);
            });
        decomposition<QR, Eigen::HouseholderQR>(
            [](const Cells &c, T *to) { return Library::qr(c.a, row, elem, c.buffer, to, row, elem, N, N); },
            [](const Cells &c, const T *qr) {
                return Library::qrSolve(qr, row, elem, c.buffer, c.given, elem, c.x.base, elem, N, N);
            });
    }

private:
    template <class M>
    using Llt = Eigen::LLT<M>;

    static Eigen::Map<Matrix> matrixOf(const T *p) { return {const_cast<T *>(p), size(), size()}; }
    static Eigen::Map<Vector> vectorOf(const T *p) { return {const_cast<T *>(p), size()}; }
    // Not to be known when it is compiled.
    BENCH_NOINLINE static int size()
    {
        int n = N;
        benchmark::DoNotOptimize(n);
        return n;
    }
    static const T (&asMatrix(const T *p))[N][N] { return *reinterpret_cast<const T(*)[N][N]>(p); }
    static const Matrix &packed(const Eigen::LLT<Matrix> &llt) { return llt.matrixLLT(); }
    static const Matrix &packed(const Eigen::HouseholderQR<Matrix> &qr) { return qr.matrixQR(); }

    template <class Factor>
    BENCH_INLINE void factorInto(T *to, Factor factor) const
    {
        T w[N][N];
        std::memcpy(w, a, sizeof w);
        factor(w);
        std::memcpy(to, w, sizeof w);
    }

    template <class Kvlm, class Eigen, class Loop>
    void add(const std::string &member, const Operand<T> &target, Kvlm kvlm, Eigen eigen, Loop loop,
             Suite::Check check = nullptr) const
    {
        if (!check)
            check = sameNumbers<T>(target.span, [target](std::size_t k) { return target.base[k]; });
        suite.add(nameOfCell<T>(member, Form::packed, N, 1), target,
                  {{"kvlm", kvlm}, {"eigen", [=] { return eigen(), 0; }}, {"loop", [=] { return loop(), 0; }}}, check);
    }
};

template <class T>
void addAll(Suite &suite)
{
    Cells<T, 7>(suite).all();
    Cells<T, 8>(suite).all();
    Cells<T, 10>(suite).all();
    Cells<T, 12>(suite).all();
    Cells<T, 16>(suite).all();
}

} // namespace

int main(int argc, char **argv)
{
    Suite suite;
    addAll<float>(suite);
    addAll<double>(suite);
    return suite.run(argc, argv);
}
