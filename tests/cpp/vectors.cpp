// Vector algebra, numbers of vectors and matrices, and what moves elements.
#include "forms.h"

namespace {

constexpr Kind v = Kind::v, m = Kind::m, t = Kind::t, va = Kind::va, ma = Kind::ma, ta = Kind::ta;

template <Kind... K, class Reader>
int countOf(Reader &reader)
{
    return likeSources<K...>(m) == ma ? reader.number() : 1;
}

// Two vectors with constants behind them, as many as are asked for: call(x, y, dst, constants).
template <Kind A, Kind B, class Call>
void checkPair(const char *family, int constants, bool hasSize, Call call)
{
    check<A, B>(family, [=](auto &reader, auto, auto) {
        using T = typename std::decay_t<decltype(reader)>::T;
        T value[2] = {};
        const auto x = reader.template source<A>();
        if (constants > 0)
            value[0] = reader.constant();
        const auto y = reader.template source<B>();
        if (constants > 1)
            value[1] = reader.constant();
        const auto dst = reader.template result<likeSources<A, B>(v)>();
        const int size = hasSize ? reader.number() : 3, count = countOf<A, B>(reader);
        return call(x.vector(size, count), y.vector(size, count), dst.vector(size, count), value);
    });
}
template <Kind A, Kind B>
void checkPairs()
{
    checkPair<A, B>("Saxpy", 1, true, [](const auto &x, const auto &y, const auto &dst, const auto *c) {
        return kvlm::saxpy(x, c[0], y, dst);
    });
    checkPair<A, B>("CrossProduct", 0, false,
                    [](const auto &x, const auto &y, const auto &dst, const auto *) { return kvlm::cross(x, y, dst); });
}
template <Kind A, Kind B>
void checkLinearCombination()
{
    checkPair<A, B>("LComb", 2, true, [](const auto &x, const auto &y, const auto &dst, const auto *c) {
        return kvlm::linearCombination(x, c[0], y, c[1], dst);
    });
    checkPair<A, B>("LComb", 2, true, [](const auto &x, const auto &y, const auto &dst, const auto *c) {
        return kvlm::linearCombination(y, c[1], x, c[0], dst);
    });
}
template <Kind A, Kind B>
void checkDot()
{
    check<A, B>("DotProduct", [](auto &reader, auto, auto) {
        const auto x = reader.template source<A>();
        const auto y = reader.template source<B>();
        const auto dst = reader.run();
        const int size = reader.number(), count = countOf<A, B>(reader);
        if constexpr (A == va && B == v)
            return kvlm::dot(y.vector(size, count), x.vector(size, count), dst); // as exchanged
        else
            return kvlm::dot(x.vector(size, count), y.vector(size, count), dst);
    });
}

template <Kind A, Kind Source>
void checkOne()
{
    check<Source>("Transpose", [](auto &reader, auto) {
        const auto a = reader.template source<Source>();
        const int columns = reader.number(), rows = reader.number();
        const auto dst = reader.template result<Source>();
        const int count = countOf<Source>(reader);
        return kvlm::transpose(a.matrix(rows, columns, count), dst.matrix(columns, rows, count));
    });
    check<Source>("FrobNorm", [](auto &reader, auto) {
        const auto a = reader.template source<Source>();
        const int columns = reader.number(), rows = reader.number();
        const auto dst = reader.run();
        return kvlm::frobeniusNorm(a.matrix(rows, columns, countOf<Source>(reader)), dst);
    });
    check<Source>("Trace", [](auto &reader, auto) {
        const auto a = reader.template source<Source>();
        const int n = reader.number();
        const auto dst = reader.run();
        return kvlm::trace(a.matrix(n, n, countOf<Source>(reader)), dst);
    });
    check<A>("L2Norm", [](auto &reader, auto) {
        const auto a = reader.template source<A>();
        const auto dst = reader.run();
        const int size = reader.number();
        return kvlm::l2Norm(a.vector(size, countOf<A>(reader)), dst);
    });
}
template <Kind K>
void checkExtract()
{
    check<K>("Extract", [](auto &reader, auto) {
        const auto a = reader.template source<K>();
        const auto dst = reader.run();
        const int columns = reader.number(), rows = kvlm::single(K) == v ? 1 : reader.number();
        return kvlm::extract(a.shaped(rows, columns, countOf<K>(reader)), dst);
    });
}

template <class T, Kind K, Description From, Description To>
void checkCopy(const char *descriptions)
{
    checkCall("kvlmCopy_" + lettersOf(K) + (sizeof(T) == 4 ? "_32f_" : "_64f_") + descriptions,
              [](const Args &args, bool &isAtEnd) {
                  Reader<T, From> reader(args);
                  const auto a = reader.template source<K>();
                  const auto dst = reader.template result<K, To>();
                  const int columns = reader.number(), rows = K == va ? 1 : reader.number(), count = reader.number();
                  isAtEnd = reader.isAtEnd();
                  return kvlm::copy(a.shaped(rows, columns, count), dst.shaped(rows, columns, count)).value();
              });
}
template <class T, Kind K>
void checkCopies()
{
    constexpr Description S = Description::standard, P = Description::table, L = Description::list;
    checkCopy<T, K, S, S>("SS");
    checkCopy<T, K, S, P>("SP");
    checkCopy<T, K, S, L>("SL");
    checkCopy<T, K, P, S>("PS");
    checkCopy<T, K, P, P>("PP");
    checkCopy<T, K, P, L>("PL");
    checkCopy<T, K, L, S>("LS");
    checkCopy<T, K, L, P>("LP");
    checkCopy<T, K, L, L>("LL");
}

} // namespace

void checkVectorsAndMoves()
{
    checkPairs<v, v>();
    checkPairs<va, v>();
    checkPairs<v, va>();
    checkPairs<va, va>();
    checkLinearCombination<v, v>();
    checkLinearCombination<va, v>();
    checkLinearCombination<va, va>();
    checkDot<v, v>();
    checkDot<va, v>();
    checkDot<va, va>();

    checkOne<v, m>();
    checkOne<va, ma>();
    checkExtract<v>();
    checkExtract<m>();
    checkExtract<t>();
    checkExtract<va>();
    checkExtract<ma>();
    checkExtract<ta>();
    check<ma>("LoadIdentity", [](auto &reader, auto) {
        const auto dst = reader.template result<ma>();
        const int columns = reader.number(), rows = reader.number();
        return kvlm::loadIdentity(dst.matrix(rows, columns, reader.number()));
    });
    checkCopies<float, va>();
    checkCopies<double, va>();
    checkCopies<float, ma>();
    checkCopies<double, ma>();
}
