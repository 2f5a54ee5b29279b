// Eigen's decompositions of ORDER columns.
#include "cholqr.h"
#include "elements.h"

#include <Eigen/Cholesky>
#include <Eigen/QR>

namespace bench {

namespace {

template <class T, int H, int W>
using RowMajor = Eigen::Matrix<T, H, W, W == 1 ? Eigen::ColMajor : Eigen::RowMajor>;

template <class Matrix>
Eigen::LLT<Matrix> decompose(Cholesky, const Matrix &a)
{
    return Eigen::LLT<Matrix>(a);
}

template <class Matrix>
Eigen::HouseholderQR<Matrix> decompose(QR, const Matrix &a)
{
    return Eigen::HouseholderQR<Matrix>(a);
}

template <class Matrix>
const Matrix &packed(const Eigen::LLT<Matrix> &llt)
{
    return llt.matrixLLT();
}

template <class Matrix>
const Matrix &packed(const Eigen::HouseholderQR<Matrix> &qr)
{
    return qr.matrixQR();
}

} // namespace

template <class Family, class T, int H, int W>
int EigenPeer<Family, T, H, W>::factor(const T *a, T *d, int count)
{
    using Matrix = RowMajor<T, H, W>;
    for (int i = 0; i < count; ++i)
        std::memcpy(d + i * H * W, packed(decompose(Family(), loaded<Matrix>(a + i * H * W))).data(), sizeof(Matrix));
    return 0;
}

template <class Family, class T, int H, int W>
std::function<int(const T *, T *, int)> EigenPeer<Family, T, H, W>::solver(const T *a, int matrices)
{
    using Matrix = RowMajor<T, H, W>;
    using Decomposition = decltype(decompose(Family(), Matrix()));
    const auto all = std::make_shared<std::vector<Decomposition, Eigen::aligned_allocator<Decomposition>>>();
    for (int i = 0; i < matrices; ++i)
        all->push_back(decompose(Family(), loaded<Matrix>(a + i * H * W)));
    return [=](const T *b, T *x, int count) {
        for (int i = 0; i < count; ++i) {
            const RowMajor<T, W, 1> solution =
                (*all)[matrices == 1 ? 0 : i].solve(loaded<RowMajor<T, H, 1>>(b + i * H));
            std::memcpy(x + i * W, solution.data(), sizeof solution);
        }
        return 0;
    };
}

template struct EigenPeer<Cholesky, float, ORDER, ORDER>;
template struct EigenPeer<Cholesky, double, ORDER, ORDER>;
template struct EigenPeer<QR, float, ORDER, ORDER>;
template struct EigenPeer<QR, double, ORDER, ORDER>;
template struct EigenPeer<QR, float, 2 * ORDER, ORDER>;
template struct EigenPeer<QR, double, 2 * ORDER, ORDER>;
#if ORDER < 5
template struct EigenPeer<QR, float, ORDER == 3 ? 4 : 6, ORDER>;
template struct EigenPeer<QR, double, ORDER == 3 ? 4 : 6, ORDER>;
#endif

} // namespace bench
