/**
 * @file each_factors.hpp
 * The decompositions behind each_systems.hpp: a C call, what tells that its result is good, and the second attempt.
 */
#ifndef KVLM_EACH_FACTORS_HPP
#define KVLM_EACH_FACTORS_HPP

#include "each_block.hpp"
#include "each_dense.hpp"
#include "each_two.hpp"

#include <tuple>

namespace kvlm {
namespace each {
namespace detail {

/// The C functions of an element type.
template <class T>
struct Systems;
#define KVLM_EACH_SYSTEMS(T, suffix)                                                                                   \
    template <>                                                                                                        \
    struct Systems<T> {                                                                                                \
        static constexpr auto lu = kvlmLUDecomp_ma_##suffix;                                                           \
        static constexpr auto cholesky = kvlmCholeskyDecomp_ma_##suffix;                                               \
        static constexpr auto qr = kvlmQRDecomp_ma_##suffix;                                                           \
        static constexpr auto invert = kvlmInvert_ma_##suffix;                                                         \
        static constexpr auto determinant = kvlmDet_ma_##suffix;                                                       \
        static constexpr auto solveLU = kvlmLUBackSubst_mava_##suffix;                                                 \
        static constexpr auto solveCholesky = kvlmCholeskyBackSubst_mava_##suffix;                                     \
        static constexpr auto solveQR = kvlmQRBackSubst_mava_##suffix;                                                 \
    };
KVLM_EACH_SYSTEMS(float, 32f)
KVLM_EACH_SYSTEMS(double, 64f)
#undef KVLM_EACH_SYSTEMS

/// Arguments of a C function for an array of matrices, and for one of vectors.
template <class T>
std::tuple<T *, int, int, int> matrices(const Strided<T> &x)
{
    return {x.base, x.object, x.row, x.element};
}
template <class T>
std::tuple<T *, int, int> vectors(const Strided<T> &x)
{
    return {x.base, x.object, x.row};
}
template <class Function, class... Parts>
KvlStatus callWith(Function *function, const Parts &...parts)
{
    return std::apply(function, std::tuple_cat(parts...));
}

/// A root from here on is that of a normal number; that of one far above the smallest ones.
template <class T>
constexpr T leastRoot = sizeof(T) == 4 ? T(0x1p-63) : T(0x1p-511);
template <class T>
constexpr T leastSafeRoot = sizeof(T) == 4 ? T(0x1p-50) : T(0x1p-480);
template <class T>
constexpr T greatest = std::numeric_limits<T>::max();

/// areMiddling of elements (k, k) of so many objects from object i on, for k in [begin, end).
template <class T>
bool isDiagonalMiddling(const Strided<T> &x, int i, int objects, int begin, int end, T low)
{
    const auto least = magnitudeBits(low);
    auto seen = least - least;
    for (int k = begin; k < end; ++k) {
        Strided<T> from = x.from(i);
        const auto add = [&](int at) {
            const auto bits = loaded<decltype(magnitudeBits(low))>(&from(at, k, k), 0) - least;
            seen |= bits + bits;
        };
        int rest = objects;
        for (; rest >= 4; rest -= 4, from = from.from(4)) {
            add(0);
            add(1);
            add(2);
            add(3);
        }
        for (int at = 0; at < rest; ++at)
            add(at);
    }
    return seen >> (8 * sizeof(T) - 1) == 0;
}

/// What all operations on matrices share: how the source is read, what stands where an object failed.
template <class A>
class Source {
public:
    using T = ElementOf<A>;

    explicit Source(const A &a) : source(a), height(a.rows()), width(a.columns()) {}

    int count() const { return source.count(); }
    int most() const { return source.most(); }
    /// At least the work that any of the C functions sees in an object.
    int work() const { return 4 * height * width + 2 * (height + width); }
    /// Whether all objects are to be finished, not only those of blocks with a failure.
    bool isAsked() const { return false; }
    void complete(int) {}
    void finish(int, KvlStatus) {}

protected:
    /// What the condition number is taken of, from what was read: square, at the start of a.
    void makeSquare(double *) {}

    /// Object i in double, packed; `behind` it is room for `more` elements. False unless all are finite.
    bool read(int i, double *&a, double *&behind, int more)
    {
        const int positions = height * width;
        a = room.get(numberOf(positions + more));
        behind = a + positions;
        rowNumbers = integers.get(numberOf(height + width));
        columnNumbers = rowNumbers + height;
        for (int r = 0; r < height; ++r)
            for (int c = 0; c < width; ++c)
                a[r * width + c] = in(i, r, c);
        return areFinite(a, positions);
    }
    /// Writes values, rounded, unless something has failed already or one is not finite: then NaN, and false.
    template <class X, class Value>
    bool finishWrite(const Strided<X> &to, int i, bool isDone, Value value) const
    {
        for (int r = 0; r < height; ++r)
            for (int c = 0; isDone && c < width; ++c)
                isDone = isFinite(to(i, r, c) = static_cast<X>(value(r, c)));
        if (!isDone)
            writeNaN(to, i, height, width);
        return isDone;
    }
    template <class X>
    static void writeNaN(const Strided<X> &to, int i, int rows, int columns)
    {
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < columns; ++c)
                to(i, r, c) = notANumber<X>;
    }

    Block<A> source;
    Strided<const T> in;
    const int height, width;
    int *rowNumbers = nullptr, *columnNumbers = nullptr; // room for exponents, or a pivot table

private:
    Room<double, 512> room;
    Room<int, 64> integers;
};

/// Factors by elimination, in place in `out`, with the table `pivot`.
template <class A>
class LU : public Source<A> {
public:
    using typename Source<A>::T;
    static constexpr int lag = 1;
    static constexpr bool hasPivots = true, isTriangle = false;
    static constexpr KvlStatus failure = kvlErrSingular;

    using Source<A>::Source;

    KvlStatus call(int i, int objects)
    {
        if (n == 2)
            return factorTwo(this->in.from(i), pivot + 2 * i, out.from(i), objects), kvlOk;
        return callWith(Systems<T>::lu, matrices(this->in.from(i)), std::tuple(pivot + i * n), matrices(out.from(i)),
                        std::tuple(n, objects));
    }
    void mark(int i) { pivot[i * n] = -1; }
    bool isMarked(int i) const { return pivot[i * n] == -1; }
    /// What overflows, or is infinite, comes to a pivot, and can vanish there. What underflows is small beside the
    /// least pivot that the C functions accept; in place of the last one they test what stands last in memory.
    bool areGood(int i, int objects) const
    {
        const auto least = magnitudeBits(leastPivot);
        auto below = least - least; // its first bit
        const int *row = pivot + i * n + n - 1;
        Strided<T> column = out.from(i).column(n - 1);
        for (int k = 0; k < objects; ++k, row += n, column = column.from(1))
            below |= magnitudeBits(column(0, *row, 0)) - least;
        return below >> (8 * sizeof(T) - 1) == 0 &&
               (areBounded(out, i, objects, n, n, greatest<T>) ||
                (objects == 1 && forAll(n, [&](int k) { return isFinite(out(i, pivot[i * n + k], k)); })));
    }
    KvlStatus again(int i)
    {
        double *a, *behind;
        int *const table = pivot + i * n;
        bool isDone = this->read(i, a, behind, 0);
        if (isDone) {
            // As large as growth allows, since small pivots may stand beside large ones; down only where it must be.
            const int room = 960 - exponentOf(a, n * n);
            int up = std::max(room, 0);
            scale(a, n * n, up);
            isDone = factorLU(a, table, n);
            if (room < 0 && !areFinite(a, n * n)) {
                this->read(i, a, behind, 0);
                scale(a, n * n, up = room);
                isDone = factorLU(a, table, n);
            }
            for (int k = 0; isDone && k < n; ++k) {
                double *const top = a + table[k] * n + k;
                scale(top, n - k, -up);
                isDone = static_cast<T>(*top) != 0;
            }
        }
        isDone = this->finishWrite(out, i, isDone, [&](int r, int c) { return a[r * n + c]; });
        for (int k = 0; !isDone && k < n; ++k)
            table[k] = k;
        return isDone ? kvlOk : failure;
    }

protected:
    template <class B, class X>
    void substitute(const Strided<B> &b, const Strided<X> &x, int objects)
    {
        if (n == 2)
            substituteTwo(out, pivot, b, x, objects);
        else
            callWith(Systems<T>::solveLU, matrices(out), std::tuple(pivot), vectors(b), vectors(x),
                     std::tuple(n, objects));
    }
    /// From a, as read, and b, which the solution replaces; `behind` has room for `extra` elements.
    bool solveAgain(double *a, double *b, double *behind)
    {
        equilibrate(a, n, n, this->rowNumbers, this->columnNumbers);
        const int up = normalize(b, this->rowNumbers, n);
        if (!factorLU(a, this->rowNumbers, n))
            return false;
        solveLU(a, this->rowNumbers, n, b, behind);
        for (int c = 0; c < n; ++c)
            b[c] = shifted(behind[c], up - this->columnNumbers[c]);
        return true;
    }
    int extra() const { return n; }

    static constexpr T leastPivot = 2 * std::numeric_limits<T>::min();
    /// Where the factors go, n*n elements and n ints an object.
    Strided<T> out;
    int *pivot = nullptr;
    const int n = this->width;
};

template <class A>
class Cholesky : public Source<A> {
public:
    using typename Source<A>::T;
    static constexpr int lag = 0;
    static constexpr bool hasPivots = false, isTriangle = true;
    static constexpr KvlStatus failure = kvlErrNotPositiveDefinite;

    using Source<A>::Source;

    KvlStatus call(int i, int objects)
    {
        if (n == 2)
            return factorPositiveTwo(this->in.from(i), out.from(i), objects), kvlOk;
        return callWith(Systems<T>::cholesky, matrices(this->in.from(i)), matrices(out.from(i)),
                        std::tuple(n, objects));
    }
    void mark(int i) { out(i, n - 1, n - 1) = markOf<T>(); }
    bool isMarked(int i) const { return isMark(out(i, n - 1, n - 1)); }
    /// The diagonal has reciprocal roots of pivots, which are no denormal numbers; what overflows beside one makes it
    /// negative.
    bool areGood(int i, int objects) const { return isDiagonalMiddling(out, i, objects, 0, n, leastRoot<T>); }
    KvlStatus again(int i)
    {
        double *a, *behind;
        const bool isDone = read(i, a, behind, 0) && balance(a) && factorCholesky(a, n);
        const int *const half = this->rowNumbers;
        for (int r = 0; r < n; ++r)
            for (int c = 0; c <= r; ++c)
                out(i, r, c) =
                    isDone ? static_cast<T>(shifted(a[r * n + c], r == c ? -half[r] : half[r])) : notANumber<T>;
        return isDone ? kvlOk : failure;
    }

protected:
    template <class B, class X>
    void substitute(const Strided<B> &b, const Strided<X> &x, int objects)
    {
        callWith(Systems<T>::solveCholesky, matrices(out), vectors(b), vectors(x), std::tuple(n, objects));
    }
    bool solveAgain(double *a, double *b, double *)
    {
        const int *const half = this->rowNumbers;
        if (!balance(a) || !factorCholesky(a, n))
            return false;
        const int up = normalize(b, half, n);
        solveCholesky(a, n, b);
        for (int r = 0; r < n; ++r)
            b[r] = shifted(b[r], up - half[r]);
        return true;
    }
    /// As that of the base, which it hides: above the diagonal may stand anything.
    bool read(int i, double *&a, double *&behind, int more)
    {
        Source<A>::read(i, a, behind, more);
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < r; ++c)
                a[c * n + r] = a[r * n + c];
        return areFinite(a, n * n);
    }
    int extra() const { return 0; }

    Strided<T> out;
    const int n = this->width;

private:
    /// The lower triangle in D^-1*A*D^-1, with powers of two that bring the diagonal near 1. False for what is not
    /// positive there.
    bool balance(double *a)
    {
        int *const half = this->rowNumbers;
        for (int r = 0; r < n; ++r) {
            if (!(a[r * n + r] > 0))
                return false;
            half[r] = exponentOf(a + r * n + r, 1) >> 1;
            for (int c = 0; c <= r; ++c)
                a[r * n + c] = shifted(a[r * n + c], -half[r] - half[c]);
        }
        return true;
    }
};

template <class A>
class QR : public Source<A> {
public:
    using typename Source<A>::T;
    static constexpr int lag = 1;
    static constexpr bool hasPivots = false, isTriangle = false;
    static constexpr KvlStatus failure = kvlErrSingular;

    explicit QR(const A &a) : Source<A>(a), scratch(buffer.get(numberOf(this->height))) {}

    KvlStatus call(int i, int objects)
    {
        return callWith(Systems<T>::qr, matrices(this->in.from(i)), std::tuple(scratch), matrices(out.from(i)),
                        std::tuple(w, h, objects));
    }
    void mark(int i) { out(i, h - 1, w - 1) = markOf<T>(); }
    bool isMarked(int i) const { return isMark(out(i, h - 1, w - 1)); }
    /// Squares of what is too long may have overflowed unseen. The C functions test the squares of all columns that are
    /// reflected, not what is left of the last one of a square matrix.
    bool areGood(int i, int objects) const
    {
        return areBounded(this->in, i, objects, h, w, greatest<T>) &&
               isDiagonalMiddling(out, i, objects, reflectors, w, leastSafeRoot<T>);
    }
    KvlStatus again(int i)
    {
        double *a, *behind;
        const auto value = [&](int r, int c) { return shifted(a[r * w + c], r <= c ? this->columnNumbers[c] : 0); };
        const bool isDone = this->read(i, a, behind, 0) && factor(a) &&
                            forAll(w, [&](int k) { return static_cast<T>(value(k, k)) != 0; });
        return this->finishWrite(out, i, isDone, value) ? kvlOk : failure;
    }

protected:
    template <class B, class X>
    void substitute(const Strided<B> &b, const Strided<X> &x, int objects)
    {
        callWith(Systems<T>::solveQR, matrices(out), std::tuple(scratch), vectors(b), vectors(x),
                 std::tuple(w, h, objects));
    }
    bool solveAgain(double *a, double *b, double *)
    {
        const int up = exponentOf(b, h) - exponentOfSides;
        scale(b, h, -up);
        if (!factor(a))
            return false;
        solveQR(a, h, w, b);
        for (int c = 0; c < w; ++c)
            b[c] = shifted(b[c], up - this->columnNumbers[c]);
        return true;
    }
    /// R, which has the condition of A up to a factor of the order.
    void makeSquare(double *a)
    {
        scale(a, h * w, -exponentOf(a, h * w));
        factorQR(a, h, w);
        for (int r = 1; r < w; ++r)
            std::fill_n(a + r * w, r, 0.0);
    }
    int extra() const { return 0; }

    Strided<T> out;
    const int w = this->width, h = this->height, reflectors = h > w ? w : w - 1;

private:
    /// Of columns of magnitudes near 1: reflectors don't know the length of their column, R is scaled with it.
    bool factor(double *a)
    {
        for (int c = 0; c < w; ++c)
            scale(a + c, h, -(this->columnNumbers[c] = exponentOf(a + c, h, w)), w);
        return factorQR(a, h, w);
    }

    Room<T, 64> buffer;
    T *const scratch;
};

/// Reciprocal condition numbers, where a caller asks for them.
template <class Factor>
class Conditioned : public Factor {
public:
    using typename Factor::T;

    template <class A>
    Conditioned(const A &a, T *numbers) : Factor(a), conditions(numbers)
    {
    }
    bool isAsked() const { return conditions; }

protected:
    /// Notes that of object i, the first one of the block being `first`. Singular to working precision is singular.
    bool isRegular(int first, int i)
    {
        if (!conditions)
            return true;
        const int order = this->width;
        double *a, *behind;
        double condition = notANumber<double>;
        if (this->read(i, a, behind, order * order + 2 * order)) {
            this->makeSquare(a);
            scale(a, order * order, -exponentOf(a, order * order));
            condition = reciprocalCondition(a, this->rowNumbers, order, behind);
        }
        conditions[first + i] = static_cast<T>(condition);
        return condition >= std::numeric_limits<T>::epsilon();
    }
    T *const conditions;
};

} // namespace detail
} // namespace each
} // namespace kvlm

#endif
