// What the benchmarks of factorisations and solvers share: their peers' access to single elements, the comparison of
// results, the library's functions of a member.
#ifndef ELEMENTS_H
#define ELEMENTS_H

#include "bench.h"

#include <cmath>

namespace bench {

/// Element (r, c) of object i of an array in any form, as a plain program reaches it.
template <class T, int Rows, int Cols, Form F>
struct Element {
    Operand<T> x;

    BENCH_INLINE T &operator()(int i, int r, int c) const
    {
        if constexpr (isTable(F))
            return x.entries[r * Cols + c][static_cast<std::ptrdiff_t>(i) * x.objStep];
        else {
            const View<T, Rows, Cols, F, true> view{x};
            return view.object(i)[view.offset(r, c)];
        }
    }
};

/// A packed object as a matrix of Eigen's, copied as bytes: each kind of its expressions costs the compiler some
/// hundred megabytes over all orders.
template <class Matrix>
BENCH_INLINE Matrix loaded(const typename Matrix::Scalar *from)
{
    Matrix x;
    std::memcpy(x.data(), from, sizeof x);
    return x;
}

/// Whether what a work leaves is what the library left: nearly all elements to a part in a thousand, as there are
/// ill-conditioned matrices among random ones.
template <class T, class At>
Suite::Check sameNumbers(std::size_t elements, At at)
{
    auto expected = std::make_shared<std::vector<T>>();
    return [=](const std::string &) {
        std::size_t wrong = 0;
        for (std::size_t k = 0; k < elements; ++k) {
            const T x = at(k);
            if (expected->size() < elements)
                expected->push_back(x);
            const T y = (*expected)[k];
            wrong += !(std::abs(x - y) <= T(1e-3) * (1 + std::abs(y)));
        }
        return wrong * 50 <= elements;
    };
}

/// The functions of a member by description.
#define ALL(stem, type) std::make_tuple(stem##_##type, stem##_##type##_P, stem##_##type##_L)

} // namespace bench

#endif
