// Products of matrices by matrices and vectors, Gaxpy, and the homogeneous transform.
#include "forms.h"

namespace {

constexpr Kind v = Kind::v, m = Kind::m, t = Kind::t, va = Kind::va, ma = Kind::ma, ta = Kind::ta;

constexpr bool isTurned(Kind kind)
{
    return kvlm::single(kind) == Kind::t;
}

// A shape that stands behind its operand, as it is stored, read as the operand is.
struct ReadShape {
    int rows, columns;
    template <class Reader>
    ReadShape(Reader &reader, Kind kind)
    {
        columns = reader.number();
        rows = reader.number();
        if (isTurned(kind))
            std::swap(rows, columns);
    }
};

template <Kind A, Kind B>
void checkProduct()
{
    check<A, B>("Mul", [](auto &reader, auto, auto) {
        const auto a = reader.template source<A>();
        const ReadShape s(reader, A);
        const auto b = reader.template source<B>();
        if constexpr (kvlm::single(B) == v) {
            const int size = reader.number();
            const auto dst = reader.template result<likeSources<A, B>(v)>();
            const int count = likeSources<A, B>(m) == ma ? reader.number() : 1;
            return kvlm::multiply(a.matrix(s.rows, s.columns, count), b.vector(size, count), dst.vector(s.rows, count));
        } else {
            const ReadShape u(reader, B);
            const auto dst = reader.template result<likeSources<A, B>(m)>();
            const int count = likeSources<A, B>(m) == ma ? reader.number() : 1;
            return kvlm::multiply(a.matrix(s.rows, s.columns, count), b.matrix(u.rows, u.columns, count),
                                  dst.matrix(s.rows, u.columns, count));
        }
    });
}
template <Kind A, Kind... B>
void checkProductsOf()
{
    (checkProduct<A, B>(), ...);
}

// B is the last letter of the name, or what it leaves out.
template <Kind X, Kind B, Kind... Letters>
void checkGaxpy()
{
    check<Letters...>("Gaxpy", [](auto &reader, auto...) {
        const auto a = reader.template source<m>();
        const ReadShape s(reader, m);
        const auto x = reader.template source<X>();
        const int xSize = reader.number();
        const auto b = reader.template source<B>();
        const int bSize = reader.number();
        const auto dst = reader.template result<X>();
        const int count = kvlm::isArray(X) ? reader.number() : 1;
        return kvlm::gaxpy(a.matrix(s.rows, s.columns, 1), x.vector(xSize, count), b.vector(bSize, count),
                           dst.vector(s.rows, count));
    });
}

} // namespace

void checkProducts()
{
    checkProductsOf<m, m, t, ma, ta, v, va>();
    checkProductsOf<t, m, t, ma, ta, v, va>();
    checkProductsOf<ma, m, t, ma, ta, v, va>();
    checkProductsOf<ta, m, t, ma, ta, v, va>();

    checkGaxpy<v, v, m, v>();
    checkGaxpy<va, va, m, va>();
    checkGaxpy<va, v, m, va, v>();

    checkForm<float, Description::standard, m, va>("kvlmAffineTransform3DH_mva", [](auto &reader, auto...) {
        const auto a = reader.template source<m>();
        const auto points = reader.template source<va>();
        const auto dst = reader.template result<va>();
        const int count = reader.number();
        return kvlm::affineTransform3DH(a.matrix(4, 4, 1), points.vector(3, count), dst.vector(3, count));
    });
}
