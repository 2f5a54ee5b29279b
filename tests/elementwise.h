// One call of Add or Sub: operands, argument list and the result by a plain loop over logical elements.
#pragma once

#include "members.h"
#include "operand.h"

#include <csignal>

// Numbers of many magnitudes with a special one now and then; NaN only on request, since a sum of two keeps either.
template <class T>
std::vector<T> someValues(std::size_t n, bool withNan, Random &random)
{
    using Bits = std::conditional_t<sizeof(T) == 8, std::uint64_t, std::uint32_t>;
    constexpr int mantissa = sizeof(T) == 8 ? 52 : 23;
    constexpr int bias = sizeof(T) == 8 ? 1023 : 127;
    constexpr Bits one = 1, fraction = (one << mantissa) - 1, infinity = Bits(2 * bias + 1) << mantissa;
    const Bits special[] = {0, 1, fraction, one << mantissa, infinity - 1, infinity};
    std::vector<T> values(n);
    for (T &value : values) {
        const std::uint64_t draw = random.next();
        const Bits sign = Bits(draw & 1) << (8 * sizeof(T) - 1);
        const int kind = static_cast<int>(draw >> 1 & 31);
        Bits bits = Bits(draw >> 8) & fraction;
        if (kind < 6)
            bits = special[kind];
        else if (kind == 6 && withNan)
            bits |= infinity | (draw & 64 ? one << (mantissa - 1) : one);
        else
            bits |= Bits(bias - 3 + (draw >> 60) % 8) << mantissa;
        bits |= sign;
        std::memcpy(&value, &bits, sizeof value);
    }
    return values;
}

// The result in the order object, row, column. A source that is no array is the same for every object.
template <class T>
std::vector<T> elementwiseResult(const std::string &family, const std::vector<T> &a, const std::vector<T> &b,
                                 std::size_t perObject, int count)
{
    std::vector<T> result(perObject * count);
    for (std::size_t k = 0; k < result.size(); ++k) {
        const T &x = a[k % a.size()], &y = b[k % b.size()];
        result[k] = family == "Add" ? x + y : x - y;
    }
    return result;
}

// What runs now, told on the way out when a call dies of a stray access.
inline std::string &running()
{
    static std::string text;
    return text;
}

inline const bool crashIsTold = [] {
    for (int number : {SIGSEGV, SIGBUS})
        std::signal(number, [](int caught) {
            if (write(2, running().data(), running().size()) < 0 || write(2, ": stray access\n", 15) < 0)
                _exit(2);
            std::signal(caught, SIG_DFL);
            std::raise(caught);
        });
    return true;
}();

struct Setting {
    int width;
    int height;
    int count;
    Layout src1;
    Layout src2;
    Layout dst;
    Memory memory = Memory::heap;
    int inPlace = 0; // 1 or 2: the destination is that source
};

template <class T>
class Problem {
public:
    Problem(const Member &member, const Setting &s, std::uint64_t seed)
        : member(member), setting(s),
          layoutRandom(seed), shape{isVector(member) ? 1 : s.height, s.width, member.isArray() ? s.count : 1},
          src1(member.operands[0], member.description, shape, s.src1, layoutRandom, s.memory),
          src2(member.operands[1], member.description, shape, s.src2, layoutRandom, s.memory),
          dst(std::string(isVector(member) ? "v" : "m") + (member.isArray() ? "a" : ""), member.description, shape,
              s.dst, layoutRandom, s.memory)
    {
        // The values do not depend on the layouts, nor on the machine.
        Random random(static_cast<std::uint64_t>(s.width * 100 + s.height) * 100000 + s.count);
        const bool nanInFirst = random.below(2);
        src1.set(someValues<T>(src1.size(), nanInFirst, random));
        src2.set(someValues<T>(src2.size(), !nanInFirst, random));
        result = elementwiseResult(member.family, src1.get(), src2.get(), shape.rows * shape.columns, shape.count);
        src1.appendTo(args);
        src2.appendTo(args);
        target().appendTo(args);
        args.push_back(Arg::integer('S', s.width));
        if (!isVector(member))
            args.push_back(Arg::integer('S', s.height));
        if (member.isArray())
            args.push_back(Arg::integer('C', s.count));
    }

    // Calls, and says what is wrong: nothing if the objects from first on hold the result and all else is untouched.
    std::string run(const Function &function, int first, int count)
    {
        running() = name();
        const KvlStatus status = function(args);
        if (status != kvlOk)
            return name() + ": status " + std::to_string(status);
        target().expect(result, first, count);
        for (const Operand<T> *operand : {&src1, &src2, &dst}) {
            const std::string difference = operand->difference();
            if (!difference.empty())
                return name() +
                       (operand == &src1   ? ": src1: "
                        : operand == &src2 ? ": src2: "
                                           : ": dst: ") +
                       difference;
        }
        return "";
    }
    std::string run() { return run(member.call, 0, shape.count); }

    std::string name() const
    {
        std::string text = member.name + " " + std::to_string(setting.width) + "x" + std::to_string(setting.height) +
                           " count " + std::to_string(setting.count) + " layouts";
        for (Layout layout : {setting.src1, setting.src2, setting.dst})
            text += " " + std::to_string(static_cast<int>(layout));
        return text;
    }
    Operand<T> &target() { return setting.inPlace == 1 ? src1 : setting.inPlace == 2 ? src2 : dst; }
    const std::vector<T> &expectedResult() const { return result; }

    Args args;

private:
    static bool isVector(const Member &member) { return member.operands[0][0] == 'v'; }

    const Member &member;
    Setting setting;
    Random layoutRandom;
    Shape shape;
    Operand<T> src1, src2, dst;
    std::vector<T> result;
};
