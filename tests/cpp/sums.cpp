// Element by element: sums, differences, and products with constants.
#include "forms.h"

namespace {

constexpr Kind v = Kind::v, m = Kind::m, t = Kind::t, c = Kind::c, va = Kind::va, ma = Kind::ma, ta = Kind::ta,
               ca = Kind::ca;

// The C functions take a constant last, where it stands first too.
template <Kind A, Kind B, class Call>
void checkRow(const char *family, Call call)
{
    check<A, B>(family, [call](auto &reader, auto, auto) {
        constexpr bool isSwapped = kvlm::single(A) == Kind::c;
        constexpr bool isVector = kvlm::single(A) == Kind::v || kvlm::single(B) == Kind::v;
        const auto x = reader.template source < isSwapped ? B : A > ();
        const auto y = reader.template source < isSwapped ? A : B > ();
        const auto z = reader.template result<likeSources<A, B>(isVector ? Kind::v : Kind::m)>();
        const int columns = reader.number(), rows = isVector ? 1 : reader.number();
        const int count = likeSources<A, B>(m) == ma ? reader.number() : 1;
        const auto first = x.shaped(rows, columns, count);
        const auto second = y.shaped(rows, columns, count);
        if constexpr (isSwapped)
            return call(second, first, z.shaped(rows, columns, count));
        else
            return call(first, second, z.shaped(rows, columns, count));
    });
}
template <Kind B, class Call, Kind... A>
void checkRows(const char *family, Call call, std::integer_sequence<Kind, A...>)
{
    (checkRow<A, B>(family, call), ...);
}
template <Kind... A>
using Kinds = std::integer_sequence<Kind, A...>;

const auto sum = [](const auto &a, const auto &b, const auto &dst) { return kvlm::add(a, b, dst); };
const auto exchanged = [](const auto &a, const auto &b, const auto &dst) { return kvlm::add(b, a, dst); };
const auto difference = [](const auto &a, const auto &b, const auto &dst) { return kvlm::subtract(a, b, dst); };
const auto scaled = [](const auto &a, const auto &b, const auto &dst) { return kvlm::multiply(a, b, dst); };
const auto scaledFromLeft = [](const auto &a, const auto &b, const auto &dst) { return kvlm::multiply(b, a, dst); };

} // namespace

void checkSums()
{
    checkRows<v>("Add", sum, Kinds<v, va>());
    checkRows<va>("Add", sum, Kinds<va>());
    checkRows<c>("Add", sum, Kinds<v, va>());
    checkRows<ca>("Add", sum, Kinds<v, va>());
    checkRows<m>("Add", sum, Kinds<m, t, ma, ta>());
    checkRows<t>("Add", sum, Kinds<t, ma, ta>());
    checkRows<ma>("Add", sum, Kinds<ma, ta>());
    checkRows<ta>("Add", sum, Kinds<ta>());
    checkRows<c>("Add", exchanged, Kinds<va>());
    checkRows<ca>("Add", exchanged, Kinds<v>());
    checkRows<m>("Add", exchanged, Kinds<t, ta>());
    checkRows<v>("Add", exchanged, Kinds<va>());

    checkRows<v>("Sub", difference, Kinds<v, va, c, ca>());
    checkRows<va>("Sub", difference, Kinds<v, va, c, ca>());
    checkRows<c>("Sub", difference, Kinds<v, va>());
    checkRows<ca>("Sub", difference, Kinds<v, va>());
    checkRows<m>("Sub", difference, Kinds<m, t, ma, ta>());
    checkRows<t>("Sub", difference, Kinds<m, t, ma, ta>());
    checkRows<ma>("Sub", difference, Kinds<m, t, ma, ta>());
    checkRows<ta>("Sub", difference, Kinds<m, t, ma, ta>());

    checkRows<c>("Mul", scaled, Kinds<m, t, ma, ta, v, va>());
    checkRows<ca>("Mul", scaled, Kinds<v, va>());
    checkRows<c>("Mul", scaledFromLeft, Kinds<t, ma>());
    checkRows<ca>("Mul", scaledFromLeft, Kinds<va>());
}
