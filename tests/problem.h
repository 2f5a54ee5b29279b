// One call of any member: operands, argument list, and what shall stand in memory afterwards.
#pragma once

#include "members.h"
#include "oracle_eigengen.h"
#include "oracle_eigensym.h"
#include "oracle_vectors.h"
#include "values.h"

#include <csignal>

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
    int width; // the order of square matrices
    int height;
    int count;
    Layout src1;
    Layout src2;
    Layout dst;
    Memory memory = Memory::heap;
    int inPlace = 0;        // 1 or 2: the destination is that source
    bool difficult = false; // matrices that fail or nearly fail are among the objects; sums of zeros
    int inner = 0;          // of a product of matrices, 0 for what follows from the shape
};

template <class T>
class Problem {
public:
    Problem(const Member &member, const Setting &s, std::uint64_t seed)
        : member(member), setting(s), n(s.width), count(member.isArray() ? s.count : 1), layoutRandom(seed)
    {
        // The values do not depend on the layouts, nor on the machine.
        height = member.isSquare() ? s.width : s.height;
        inner = !member.isMatrixProduct() ? n : s.inner ? s.inner : innerOf(n, height);
        Random random(static_cast<std::uint64_t>(s.width * 100 + height) * 100000 + s.count + s.difficult * seed);
        for (const std::string &token : member.operands)
            addArgument(token, random);
        if (member.has("p"))
            makeFactors(random);
        initial = target().get();
        initialPivots = pivots ? pivots->get() : std::vector<int>();
        for (const Operand<T> *other : others)
            initialOthers.push_back(other->get());
    }

    // Calls, and says what is wrong: nothing if `done` objects from `first` on hold the result, as far as none of them
    // fails, and all else is untouched.
    std::string run(const Function &function, int first, int done)
    {
        running() = name();
        return verdict(function(args), first, done);
    }
    std::string run() { return run(member.call, 0, count); }

    std::string verdict(KvlStatus status, int first, int done)
    {
        std::vector<T> result = initial;
        std::vector<int> pivotResult = initialPivots;
        std::vector<std::vector<T>> otherResults = initialOthers;
        KvlStatus expected = kvlOk;
        int written = 0;
        ended = false;
        while (written < done && !ended && (expected == kvlOk || member.family == "AffineTransform3DH")) {
            const KvlStatus ofObject = compute(first + written++, result.data(), pivotResult.data(), otherResults);
            expected = expected ? expected : ofObject;
        }
        if (status != expected)
            return name() + ": status " + std::to_string(status) + ", expected " + std::to_string(expected);
        if (member.isNumerical() || member.isProduct() || member.isVectorAlgebra())
            acceptAnyNan(target(), initial, result);
        const bool isLower = member.family == "CholeskyDecomp", isSolution = member.family == "QRBackSubst";
        target().expect(result, first, written, [&](int k) { return isLower ? k % n <= k / n : !isSolution || k < n; });
        for (std::size_t k = 0; k < others.size(); ++k) {
            acceptAnyNan(*others[k], initialOthers[k], otherResults[k]);
            others[k]->expect(otherResults[k], first, written);
        }
        std::string wrong;
        if (pivots && member.has("P"))
            pivots->expect(pivotResult, first, written);
        if (pivots && !pivots->difference().empty())
            wrong = "pivots: " + pivots->difference();
        if (buffer)
            buffer->expect(buffer->get(), 0, 1);
        for (const auto &operand : operands)
            if (wrong.empty() && !operand->difference().empty())
                wrong = "operand " + std::to_string(&operand - operands.data()) + ": " + operand->difference();
        return wrong.empty() ? wrong : name() + ": " + wrong;
    }

    std::string name() const
    {
        std::string text = member.name + " " + std::to_string(setting.width) + "x" + std::to_string(setting.height) +
                           " count " + std::to_string(setting.count) + " layouts";
        for (Layout layout : {setting.src1, setting.src2, setting.dst})
            text += " " + std::to_string(static_cast<int>(layout));
        return text;
    }
    Operand<T> &target() { return setting.inPlace ? *sources[setting.inPlace - 1] : *dst; }
    Operand<int> *pivotTable() { return pivots.get(); }
    const std::vector<Operand<T> *> &otherResults() const { return others; }

    Args args;

private:
    // NaN is NaN
    static void acceptAnyNan(const Operand<T> &operand, const std::vector<T> &before, std::vector<T> &result)
    {
        const std::vector<T> actual = operand.get();
        for (std::size_t k = 0; k < result.size(); ++k)
            if (std::isnan(result[k]) && std::isnan(actual[k]) && std::memcmp(&result[k], &before[k], sizeof(T)) != 0)
                result[k] = actual[k];
    }
    // The shape of a source, or of the destination, as the operation counts it.
    Shape shapeOf(char letter) const
    {
        const bool first = sources.empty(), isSource = std::islower(letter) != 0;
        if (letter == 'c')
            return {1, 1, count};
        if (member.family == "CrossProduct")
            return {1, 3, count};
        if (member.family == "AffineTransform3DH")
            return first && isSource ? Shape{4, 4, count} : Shape{1, 3, count};
        if (member.isProduct() && first)
            return {height, inner, count};
        if (member.isMatrixProduct() && isSource)
            return {inner, n, count};
        if (member.isProduct() && !member.isMatrixProduct())
            return {1, isSource && sources.size() == 1 ? inner : height, count};
        if (letter == 'X')
            return {n, height, count};
        if (letter == 'v' && member.isTall())
            return {1, height, count};
        if (letter == 'e')
            return {1, n, count};
        const bool isRow = letter == 'v' || letter == 'V' || letter == 'D' || (letter == 'E' && member.isVector());
        return {isRow ? 1 : height, letter == 'D' ? 1 : n, count};
    }
    void addArgument(const std::string &token, Random &random)
    {
        const char letter = token[0];
        if (letter == 'm' || letter == 't' || letter == 'v' || letter == 'c') {
            const Layout layout = sources.empty() ? setting.src1 : setting.src2;
            const Shape shape = shapeOf(letter);
            sources.push_back(addOperand(token, shape, layout));
            stored = letter == 't' ? Shape{shape.columns, shape.rows, 0} : shape;
            sources.back()->set(valuesOf(token, sources.back()->size(), random));
            sourceValues.push_back(sources.back()->get());
            sources.back()->appendTo(args);
        } else if (letter == 'x' || letter == 'y' || letter == 'z') {
            const bool ofFirst = sources.size() == 1, turned = member.operands[0][0] == 't';
            const bool second = sources.size() == 2, secondTurned = second && member.isMatrixProduct() &&
                                                                    stored.rows == n && member.operands[3][0] == 't';
            const bool isInner = ofFirst                    ? (letter == 'x') != turned
                                 : member.isMatrixProduct() ? (letter == 'y') != secondTurned
                                                            : true;
            args.push_back(Arg::size(letter == 'y' ? stored.rows : stored.columns, isInner));
        } else if (std::string("MXVDE").find(letter) != std::string::npos) {
            const std::string lower = letter == 'M' || letter == 'X' ? "m" : letter == 'V' ? "v" : "d";
            const Shape shape = shapeOf(letter);
            addResult(
                addOperand(lower + token.substr(1), shape, dst ? setting.src2 : setting.dst, member.dstDescription));
        } else if (letter == 'e')
            addResult(addOperand("d", shapeOf(letter), Layout::packed));
        else if (letter == 'p' || letter == 'P') {
            pivotRuns = member.operands[0].size() > 1 ? count : 1;
            pivots.reset(new Operand<int>("d", 'S', {1, n, pivotRuns}, Layout::packed, layoutRandom, setting.memory));
            pivots->appendTo(args);
        } else if (letter == 'b') {
            const int size = sizeof(T), pivots = member.isEigen() ? 0 : (n * 4 + size - 1) / size;
            const int elements = member.isTall()           ? height
                                 : member.isGeneralEigen() ? n * ((others.size() > 1 ? 3 : 1) * n + 5)
                                                           : n * n + pivots;
            buffer = addOperand("d", {1, elements, 1}, Layout::packed);
            buffer->appendTo(args);
        } else
            args.push_back(Arg::integer(letter == 'k' ? 'C' : 'S', letter == 'k'   ? setting.count
                                                                   : letter == 'h' ? height
                                                                                   : n));
    }
    // The destination, or with one before it another result. Where shifts and strides of the results are checked after
    // those of the sources, their arguments are told apart.
    void addResult(Operand<T> *result)
    {
        if (dst)
            others.push_back(result);
        else {
            dst = result;
            perObject = static_cast<int>(target().size()) / (member.isArray() ? count : 1);
        }
        const std::size_t first = args.size();
        (others.empty() ? target() : *result).appendTo(args);
        for (std::size_t k = first; k < args.size(); ++k)
            args[k].round = args[k].check != 'N' && std::count(member.order.begin(), member.order.end(), 'H') > 1;
    }
    std::vector<T> valuesOf(const std::string &token, std::size_t size, Random &random)
    {
        if (member.family == "AffineTransform3DH")
            return sources.size() == 1 ? someTransform<T>(setting.difficult, random)
                                       : somePoints<T>(size, setting.difficult, random);
        if (member.isProduct() || member.isVectorAlgebra())
            return someFactors<T>(size, setting.difficult, sources.size() == 1 && member.family != "Trace", random);
        if (member.isNumerical())
            return token[0] == 'v' ? vectors(static_cast<int>(size) / count, random)
                                   : matrices(token.size() > 1 ? count : 1, random);
        nanInFirst = sources.size() == 1 ? random.below(2) : !nanInFirst;
        return someValues<T>(size, nanInFirst || moves(), random);
    }
    Operand<T> *addOperand(const std::string &letters, Shape shape, Layout layout, char description = 0)
    {
        operands.emplace_back(new Operand<T>(letters, description ? description : member.description, shape, layout,
                                             layoutRandom, setting.memory));
        return operands.back().get();
    }

    std::vector<T> matrices(int number, Random &random)
    {
        std::vector<T> all;
        for (int i = 0; i < number; ++i) {
            const bool difficult = setting.difficult && random.below(4) == 0;
            const std::vector<T> a = matrix(difficult, random);
            all.insert(all.end(), a.begin(), a.end());
        }
        return all;
    }
    std::vector<T> matrix(bool difficult, Random &random) const
    {
        if (member.family == "CholeskyDecomp")
            return somePositiveMatrix<T>(n, difficult, random);
        if (member.isTall())
            return someTallMatrix<T>(n, height, difficult, random);
        const std::vector<T> a = difficult ? difficultMatrix<T>(n, random) : someMatrix<T>(n, random);
        if (member.isGeneralEigen())
            return difficult ? difficultGeneral(n, a, random) : a;
        if (member.isEigen())
            return difficult ? difficultSymmetric(n, a, random) : symmetric(n, a);
        return member.family == "CholeskyBackSubst" ? lowerTriangle(n, a) : a;
    }
    // Difficult ones are zeros of either sign.
    std::vector<T> vectors(int length, Random &random) const
    {
        std::vector<T> all(length * count);
        bool zeros = false;
        for (std::size_t k = 0; k < all.size(); ++k) {
            if (k % length == 0)
                zeros = setting.difficult && random.below(4) == 0;
            all[k] = zeros ? T(random.below(4) ? -0.0 : 0.0) : inUnitInterval<T>(random);
        }
        return all;
    }
    // Any permutation will do as pivots of a solver; some diagonals are zero.
    void makeFactors(Random &random)
    {
        std::vector<int> order(n * pivotRuns);
        for (std::size_t k = 0; k < order.size(); ++k) {
            order[k] = static_cast<int>(k) % n;
            std::swap(order[k], order[k - random.below(order[k] + 1)]);
        }
        pivots->set(order);
        std::vector<T> factors = sourceValues[0];
        if (setting.difficult && random.below(3) == 0)
            factors[random.below(static_cast<int>(factors.size()))] = 0;
        sources[0]->set(factors);
        sourceValues[0] = factors;
    }

    // Object i by the oracle, into the results of all.
    KvlStatus compute(int i, T *result, int *pivotResult, std::vector<std::vector<T>> &otherResults)
    {
        if (moves()) {
            for (int k = 0; k < perObject; ++k)
                moveElement(static_cast<std::size_t>(i) * perObject, k, result);
            return kvlOk;
        }
        const std::vector<T> &a = sourceValues[0], &b = sourceValues.back();
        const T *const a0 = &a[static_cast<std::size_t>(i) * n * height % a.size()];
        const T *const b0 = &b[static_cast<std::size_t>(i) * height % b.size()];
        T *const x = result + static_cast<std::size_t>(i) * perObject;
        int *const p = pivotResult + static_cast<std::size_t>(i % std::max(1, pivotRuns)) * n;
        const bool isArray = member.isArray(), isTable = member.description == 'P';
        const bool adjacent = !isTable && isAdjacent();
        if (member.family == "Det")
            *x = oracle::determinant(n, a0, isArray, adjacent);
        else if (member.family == "LUDecomp")
            return oracle::factor(n, a0, x, p, isTable);
        else if (member.family == "LUBackSubst")
            oracle::solve(n, a0, p, b0, x);
        else if (member.family == "Invert")
            return oracle::invert(n, a0, x, isArray, adjacent);
        else if (member.isEigen())
            return computeEigen(i, a0, x, otherResults);
        else if (member.isProduct())
            return computeProduct(i, x, adjacent);
        else if (member.isMeasure())
            *x = measure(i, adjacent);
        else if (member.family == "CrossProduct")
            oracle::crossProduct(values(0, i), values(1, i), x);
        else if (member.isVector() || member.operands[1][0] == 'c')
            combineElements(i, x);
        else if (member.family == "CholeskyDecomp")
            return oracle::choleskyFactor(n, a0, x,
                                          oracle::choleskyThreshold<T>(n, isArray, adjacent, member.description));
        else if (member.family == "CholeskyBackSubst")
            oracle::choleskySolve(n, a0, b0, x);
        else if (member.family == "QRDecomp")
            return oracle::qrFactor(n, height, a0, x);
        else if (member.family == "QRBackSubst")
            oracle::qrSolve(n, height, a0, b0, x);
        else
            for (int k = 0; k < perObject; ++k)
                x[k] = sumOf(member.family, a, b, static_cast<std::size_t>(i) * perObject + k);
        return kvlOk;
    }
    KvlStatus computeEigen(int i, const T *a, T *x, std::vector<std::vector<T>> &otherResults)
    {
        const auto other = [&](std::size_t k) {
            return otherResults[k].data() + otherResults[k].size() / (member.isArray() ? count : 1) * i;
        };
        if (member.isGeneralEigen()) {
            const bool right = member.family.find("Left") == std::string::npos && others.size() > 1;
            const bool left = member.family.find("Right") == std::string::npos && others.size() > 1;
            oracle::EigenGeneral<T> problem(n, right, left);
            const std::size_t re = others.size() - 2; // of the last two; of the values alone it is the destination
            const KvlStatus status =
                problem.solve(a, others.size() > 1 ? other(re) : x, other(others.size() - 1), right ? x : nullptr,
                              !left   ? nullptr
                              : right ? other(0)
                                      : x);
            ended = problem.ended;
            return status;
        }
        const bool isArray = member.isArray(), hasVectors = !others.empty();
        const bool zeroBound = member.name == "kvlmEigenValuesVectorsSym_m_32f" && !isAdjacent();
        T *const values = hasVectors ? other(0) : x, *const vectors = hasVectors ? x : nullptr;
        if (hasVectors && isArray)
            return oracle::EigenSym<T, double>(n, isArray, true, false).solve(a, values, vectors);
        return oracle::EigenSym<T, T>(n, isArray, hasVectors, zeroBound).solve(a, values, vectors);
    }
    // Element k of object i of a source; a single one is the same for all.
    const T *values(int source, int i) const
    {
        const std::vector<T> &all = sourceValues[source];
        return &all[all.size() / (sources[source]->isArray() ? count : 1) * (sources[source]->isArray() ? i : 0)];
    }
    std::string kernelOf(bool adjacent) const
    {
        return member.description == 'P'   ? "P"
               : member.description == 'L' ? adjacent ? "L" : "LS2"
               : adjacent                  ? ""
                                           : "S2";
    }
    ORACLE_RESULT T measure(int i, bool adjacent) const
    {
        const std::string kernel = kernelOf(adjacent);
        const T *const a = values(0, i), *const b = values(member.family == "DotProduct", i);
        if (member.family == "Trace")
            return oracle::trace(n, a);
        std::vector<T> products(member.family == "FrobNorm" ? n * height : n);
        for (std::size_t k = 0; k < products.size(); ++k)
            products[k] = a[k] * b[k];
        if (member.family == "FrobNorm")
            return oracle::frobeniusNorm(products,
                                         sizeof(T) == 4 && (kernel.empty() || (kernel == "S2" && !member.isArray())));
        const oracle::Alignment where = {sources.back()->address(i), alignedThroughout()};
        return member.family == "L2Norm" ? oracle::norm(member.letters, kernel, products, where)
                                         : oracle::sumOfProducts(member.letters, kernel, products, where);
    }
    void combineElements(int i, T *x) const
    {
        const int last = static_cast<int>(sources.size()) - 1, second = last == 1 ? 1 : 2;
        const auto at = [&](int source, int k) { return values(source, i) + (sources[source]->isConstant() ? 0 : k); };
        for (int k = 0; k < perObject; ++k) {
            const T *const a = at(member.isConstantFirst() ? second : 0, k);
            const T *const b = at(member.isConstantFirst() ? 0 : second, k);
            x[k] = oracle::combined(member.family, *a, *b, *values(1, i), *values(last, i));
        }
    }
    KvlStatus computeProduct(int i, T *x, bool adjacent) const
    {
        const std::string kernel = kernelOf(adjacent);
        const T *const a = values(0, i), *const b = values(1, i);
        if (member.family == "AffineTransform3DH")
            return oracle::transformPoint(a, b, x, adjacent);
        else if (member.isMatrixProduct())
            oracle::multiply(member.letters, kernel, height, inner, n, a, b, x);
        else {
            const T *const c = member.family == "Gaxpy" ? values(2, i) : nullptr;
            const oracle::Alignment where = {sources[1]->address(i), alignedThroughout()};
            oracle::multiplyVector(member.family, member.letters, kernel, height, inner, a, b, c, where, x);
        }
        return kvlOk;
    }
    // Whether all bases, row and object strides are multiples of 16 bytes.
    bool alignedThroughout() const
    {
        return sources[0]->isAligned(16) && sources.back()->isAligned(16) &&
               (member.isMeasure() ? dst->address(0) % 16 == 0
                : setting.inPlace  ? sources[setting.inPlace - 1]->isAligned(16)
                                   : dst->isAligned(16));
    }
    bool moves() const
    {
        return member.family == "Copy" || member.family == "Extract" || member.family == "LoadIdentity" ||
               member.family == "Transpose";
    }
    void moveElement(std::size_t object, int k, T *result) const
    {
        const int height = perObject / n;
        if (member.family == "LoadIdentity")
            result[object + k] = k / n == k % n;
        else
            std::memcpy(
                &result[object + k],
                &sourceValues[0][object + (member.has("X") || member.has("Xa") ? k % height * n + k / height : k)],
                sizeof(T));
    }
    bool isAdjacent() const
    {
        for (const Operand<T> *operand : sources)
            if (!operand->hasAdjacentElements())
                return false;
        return (setting.inPlace ? sources[setting.inPlace - 1] : dst)->hasAdjacentElements();
    }

    const Member &member;
    Setting setting;
    int n, count, height = 0, inner = 0;
    Shape stored = {}; // the last source
    int perObject = 0, pivotRuns = 0;
    bool nanInFirst = false, ended = false;
    Random layoutRandom;
    std::vector<std::unique_ptr<Operand<T>>> operands;
    std::vector<Operand<T> *> sources;
    Operand<T> *dst = nullptr, *buffer = nullptr;
    std::vector<Operand<T> *> others; // results besides dst
    std::unique_ptr<Operand<int>> pivots;
    std::vector<std::vector<T>> sourceValues;
    std::vector<T> initial;
    std::vector<std::vector<T>> initialOthers;
    std::vector<int> initialPivots;
};
