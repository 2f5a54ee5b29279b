// Determinant, inverse, decompositions with their solvers, eigenproblems.
#include "forms.h"

namespace {

constexpr Kind v = Kind::v, m = Kind::m, va = Kind::va, ma = Kind::ma;

template <Kind... K, class Reader>
int countOf(Reader &reader)
{
    return likeSources<K...>(m) == ma ? reader.number() : 1;
}

template <Kind A>
void checkDecompositions()
{
    check<A>("Det", [](auto &reader, auto) {
        const auto a = reader.template source<A>();
        const int n = reader.number();
        const auto buffer = reader.run(), dst = reader.run();
        return kvlm::determinant(a.matrix(n, n, countOf<A>(reader)), dst, buffer);
    });
    check<A>("Invert", [](auto &reader, auto) {
        const auto a = reader.template source<A>();
        const auto buffer = reader.run();
        const auto dst = reader.template result<A>();
        const int n = reader.number(), count = countOf<A>(reader);
        return kvlm::invert(a.matrix(n, n, count), dst.matrix(n, n, count), buffer);
    });
    check<A>("LUDecomp", [](auto &reader, auto) {
        const auto a = reader.template source<A>();
        const auto pivots = reader.template run<int>();
        const auto dst = reader.template result<A>();
        const int n = reader.number(), count = countOf<A>(reader);
        return kvlm::luDecompose(a.matrix(n, n, count), dst.matrix(n, n, count), pivots);
    });
    check<A>("CholeskyDecomp", [](auto &reader, auto) {
        const auto a = reader.template source<A>();
        const auto dst = reader.template result<A>();
        const int n = reader.number(), count = countOf<A>(reader);
        return kvlm::choleskyDecompose(a.matrix(n, n, count), dst.matrix(n, n, count));
    });
    check<A>("QRDecomp", [](auto &reader, auto) {
        const auto a = reader.template source<A>();
        const auto buffer = reader.run();
        const auto dst = reader.template result<A>();
        const int columns = reader.number(), rows = reader.number(), count = countOf<A>(reader);
        return kvlm::qrDecompose(a.matrix(rows, columns, count), dst.matrix(rows, columns, count), buffer);
    });
}

template <Kind A, Kind B>
void checkSolvers()
{
    check<A, B>("LUBackSubst", [](auto &reader, auto, auto) {
        const auto factors = reader.template source<A>();
        const auto pivots = reader.template run<const int>();
        const auto b = reader.template source<B>();
        const auto x = reader.template result<B>();
        const int n = reader.number(), count = countOf<B>(reader);
        return kvlm::luSolve(factors.matrix(n, n, count), pivots, b.vector(n, count), x.vector(n, count));
    });
    check<A, B>("CholeskyBackSubst", [](auto &reader, auto, auto) {
        const auto factor = reader.template source<A>();
        const auto b = reader.template source<B>();
        const auto x = reader.template result<B>();
        const int n = reader.number(), count = countOf<B>(reader);
        return kvlm::choleskySolve(factor.matrix(n, n, count), b.vector(n, count), x.vector(n, count));
    });
    check<A, B>("QRBackSubst", [](auto &reader, auto, auto) {
        const auto factors = reader.template source<A>();
        const auto buffer = reader.run();
        const auto b = reader.template source<B>();
        const auto x = reader.template result<B>();
        const int columns = reader.number(), rows = reader.number(), count = countOf<B>(reader);
        return kvlm::qrSolve(factors.matrix(rows, columns, count), b.vector(rows, count), x.vector(columns, count),
                             buffer);
    });
}

// One set of vectors of a general matrix: call(a, vectors, re, im, buffer).
template <Kind A, class Call>
void checkSide(const char *family, Call call)
{
    check<A>(family, [call](auto &reader, auto) {
        const auto a = reader.template source<A>();
        const auto vectors = reader.template result<A>();
        const auto re = reader.run(), im = reader.run();
        const int n = reader.number(), count = countOf<A>(reader);
        return call(a.matrix(n, n, count), vectors.matrix(n, n, count), re, im, reader.run());
    });
}
template <Kind A>
void checkEigenproblems()
{
    check<A>("EigenValuesSym", [](auto &reader, auto) {
        const auto a = reader.template source<A>();
        const auto buffer = reader.run(), values = reader.run();
        const int n = reader.number();
        return kvlm::eigenvaluesSym(a.matrix(n, n, countOf<A>(reader)), values, buffer);
    });
    check<A>("EigenValuesVectorsSym", [](auto &reader, auto) {
        const auto a = reader.template source<A>();
        const auto buffer = reader.run();
        const auto vectors = reader.template result<A>();
        const auto values = reader.run();
        const int n = reader.number(), count = countOf<A>(reader);
        return kvlm::eigenvectorsSym(a.matrix(n, n, count), vectors.matrix(n, n, count), values, buffer);
    });
    check<A>("EigenValues", [](auto &reader, auto) {
        const auto a = reader.template source<A>();
        const auto re = reader.run(), im = reader.run();
        const int n = reader.number(), count = countOf<A>(reader);
        return kvlm::eigenvalues(a.matrix(n, n, count), re, im, reader.run());
    });
    check<A>("EigenValuesVectors", [](auto &reader, auto) {
        const auto a = reader.template source<A>();
        const auto right = reader.template result<A>();
        const auto left = reader.template result<A>();
        const auto re = reader.run(), im = reader.run();
        const int n = reader.number(), count = countOf<A>(reader);
        return kvlm::eigenvectors(a.matrix(n, n, count), right.matrix(n, n, count), left.matrix(n, n, count), re, im,
                                  reader.run());
    });
    checkSide<A>("EigenValuesVectorsRight", [](const auto &a, const auto &vectors, auto re, auto im, auto buffer) {
        return kvlm::eigenvectorsRight(a, vectors, re, im, buffer);
    });
    checkSide<A>("EigenValuesVectorsLeft", [](const auto &a, const auto &vectors, auto re, auto im, auto buffer) {
        return kvlm::eigenvectorsLeft(a, vectors, re, im, buffer);
    });
}

} // namespace

void checkSystems()
{
    checkDecompositions<m>();
    checkDecompositions<ma>();
    checkSolvers<m, v>();
    checkSolvers<m, va>();
    checkSolvers<ma, va>();
    checkEigenproblems<m>();
    checkEigenproblems<ma>();
}
