// One call of any member: operands, argument list, and what shall stand in memory afterwards.
#pragma once

#include "members.h"
#include "oracle_eigensym.h"
#include "oracle_eigenvectors.h"
#include "oracle_vectors.h"
#include "setting.h"
#include "values.h"

template <class T>
class Problem {
public:
    Problem(const Member &member, const Setting &s, std::uint64_t seed) : Problem(member, s, seed, Random(seed)) {}
    Problem(const Member &member, const Setting &s, std::uint64_t seed, const Random &layouts)
        : member(member), setting(s), n(s.width), count(member.isArray() ? s.count : 1),
          height(member.isSquare() ? s.width : s.height), inner(n), layoutRandom(layouts)
    {
        if (member.isMatrixProduct())
            inner = s.inner ? s.inner : innerOf(n, height);
        // The values do not depend on the layouts, nor on the machine.
        Random random(s.values
                          ? s.values
                          : static_cast<std::uint64_t>(s.width * 100 + height) * 100000 + s.count + s.difficult * seed);
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

    // A team does its parts each by itself, and reports one of their failures.
    std::string verdict(KvlStatus status, int first, int done, int threads = 1)
    {
        std::vector<T> result = initial;
        std::vector<int> pivotResult = initialPivots;
        std::vector<std::vector<T>> otherResults = initialOthers;
        const bool isLower = member.family == "CholeskyDecomp", isSolution = member.family == "QRBackSubst";
        std::vector<KvlStatus> failures;
        std::vector<std::pair<int, int>> parts;
        for (int thread = 0; thread < threads; ++thread) {
            const int part = done / threads + (thread < done % threads);
            KvlStatus expected = kvlOk;
            int written = 0;
            ended = false;
            while (written < part && !ended && (expected == kvlOk || member.family == "AffineTransform3DH")) {
                const KvlStatus ofObject = compute(first + written++, result.data(), pivotResult.data(), otherResults);
                expected = expected ? expected : ofObject;
            }
            if (expected)
                failures.push_back(expected);
            parts.emplace_back(first, written);
            first += part;
        }
        if (failures.empty() ? status != kvlOk : std::count(failures.begin(), failures.end(), status) == 0)
            return name() + ": status " + std::to_string(status) + ", expected " +
                   std::to_string(failures.empty() ? kvlOk : failures[0]);
        if (!keepsNan())
            acceptAnyNan(target(), initial, result);
        for (std::size_t k = 0; k < others.size(); ++k)
            acceptAnyNan(*others[k], initialOthers[k], otherResults[k]);
        for (const auto &[from, written] : parts) {
            target().expect(result, from, written,
                            [&](int k) { return isLower ? k % n <= k / n : !isSolution || k < n; });
            for (std::size_t k = 0; k < others.size(); ++k)
                others[k]->expect(otherResults[k], from, written);
            if (pivots && member.has("P"))
                pivots->expect(pivotResult, from, written);
        }
        if (pivots && !pivots->difference().empty())
            return name() + ": pivots: " + pivots->difference();
        if (buffer)
            buffer->expect(buffer->get(), 0, 1);
        for (std::size_t k = 0; k < operands.size(); ++k)
            if (!operands[k]->difference().empty())
                return name() + ": operand " + std::to_string(k) + ": " + operands[k]->difference();
        return "";
    }

    std::string name() const
    {
        std::string text = member.name + " " + std::to_string(setting.width) + "x" + std::to_string(setting.height) +
                           " count " + std::to_string(setting.count) + " layouts";
        for (Layout layout : {setting.src1, setting.src2, setting.dst})
            text += " " + std::to_string(static_cast<int>(layout));
        return text;
    }
    bool isAdjacent() const
    {
        return target().hasAdjacentElements() && std::all_of(sources.begin(), sources.end(), [](const auto *source) {
                   return source->hasAdjacentElements();
               });
    }
    Operand<T> &target() const { return setting.inPlace ? *sources[setting.inPlace - 1] : *dst; }
    Operand<int> *pivotTable() { return pivots.get(); }
    const std::vector<Operand<T> *> &otherResults() const { return others; }
    const std::vector<std::unique_ptr<Operand<T>>> &allOperands() const { return operands; }

    Args args;

private:
    // NaN is NaN, but for what was there before and is no source.
    void acceptAnyNan(const Operand<T> &operand, const std::vector<T> &before, std::vector<T> &result) const
    {
        const std::vector<T> actual = operand.get();
        for (std::size_t k = 0; k < result.size(); ++k)
            if (std::isnan(result[k]) && std::isnan(actual[k]) &&
                (setting.inPlace || std::memcmp(&result[k], &before[k], sizeof(T)) != 0))
                result[k] = actual[k];
    }
    // Moves, and sums and multiples of elements of which one at the most is NaN.
    bool keepsNan() const { return !member.isNumerical() && !member.isProduct() && !member.isVectorAlgebra(); }

    // The shape of a source, or of the destination, as the operation counts it.
    Shape shapeOf(char letter) const
    {
        const bool isFirst = sources.empty(), isSource = std::islower(letter) != 0;
        if (letter == 'c')
            return {1, 1, count};
        if (member.family == "CrossProduct")
            return {1, 3, count};
        if (member.family == "AffineTransform3DH")
            return isFirst && isSource ? Shape{4, 4, count} : Shape{1, 3, count};
        if (member.isProduct() && isFirst)
            return {height, inner, count};
        if (member.isMatrixProduct() && isSource)
            return {inner, n, count};
        if (member.isProduct() && !member.isMatrixProduct())
            return {1, isSource && sources.size() == 1 ? inner : height, count};
        if (letter == 'X')
            return {n, height, count};
        if (letter == 'v' && member.isTall())
            return {1, height, count};
        const bool isRow = std::strchr("evVD", letter) || (letter == 'E' && member.isVector());
        return {isRow ? 1 : height, letter == 'D' ? 1 : n, count};
    }
    void addArgument(const std::string &token, Random &random)
    {
        const char letter = token[0];
        if (std::strchr("mtvc", letter)) {
            const Shape shape = shapeOf(letter);
            sources.push_back(addOperand(token, shape, sources.empty() ? setting.src1 : setting.src2));
            stored = letter == 't' ? Shape{shape.columns, shape.rows, 0} : shape;
            sources.back()->set(valuesOf(token, sources.back()->elements(), random));
            sourceValues.push_back(sources.back()->get());
            append(args, *sources.back());
        } else if (std::strchr("xyz", letter)) {
            const bool ofFirst = sources.size() == 1, turned = member.operands[0][0] == 't';
            const bool secondTurned =
                sources.size() == 2 && member.isMatrixProduct() && stored.rows == n && member.operands[3][0] == 't';
            const bool isInner = ofFirst                    ? (letter == 'x') != turned
                                 : member.isMatrixProduct() ? (letter == 'y') != secondTurned
                                                            : true;
            append(args, Arg::size(letter == 'y' ? stored.rows : stored.columns, isInner));
        } else if (std::strchr("MXVDE", letter)) {
            const std::string lower = letter == 'M' || letter == 'X' ? "m" : letter == 'V' ? "v" : "d";
            addResult(addOperand(lower + token.substr(1), shapeOf(letter), dst ? setting.src2 : setting.dst,
                                 member.dstDescription));
        } else if (letter == 'e')
            addResult(addOperand("d", shapeOf(letter), Layout::packed));
        else if (letter == 'p' || letter == 'P') {
            pivotRuns = member.operands[0].size() > 1 ? count : 1;
            pivots.reset(new Operand<int>("d", 'S', {1, n, pivotRuns}, Layout::packed, layoutRandom, setting.memory));
            append(args, *pivots);
        } else if (letter == 'b') {
            const int size = sizeof(T), pivotWords = member.isEigen() ? 0 : (n * 4 + size - 1) / size;
            const int elements = member.isTall()           ? height
                                 : member.isGeneralEigen() ? n * ((others.size() > 1 ? 3 : 1) * n + 5)
                                                           : n * n + pivotWords;
            buffer = addOperand("d", {1, elements, 1}, Layout::packed);
            append(args, *buffer);
            args.back().role = 'b';
        } else if (letter == 'k')
            append(args, Arg::integer('C', setting.count));
        else
            append(args, letter == 'h' ? height : n);
    }
    // The destination, or with one before it another result. Where shifts and strides of the results are checked after
    // those of the sources, their arguments are told apart.
    void addResult(Operand<T> *result)
    {
        if (dst)
            others.push_back(result);
        else {
            dst = result;
            perObject = static_cast<int>(target().elements()) / count;
        }
        const std::size_t first = args.size();
        append(args, others.empty() ? target() : *result);
        for (std::size_t k = first; k < args.size(); ++k)
            args[k].round = args[k].check != 'N' && std::count(member.order.begin(), member.order.end(), 'H') > 1;
    }
    std::vector<T> valuesOf(const std::string &token, std::size_t size, Random &random)
    {
        const bool first = sources.size() == 1;
        if (setting.wild && !(member.isNumerical() && token[0] != 'v'))
            return someValues<T>(size, !keepsNan() || first, random);
        if (member.family == "AffineTransform3DH")
            return first ? someTransform<T>(setting.difficult, random) : somePoints<T>(size, setting.difficult, random);
        if (member.isProduct() || member.isVectorAlgebra())
            return someFactors<T>(size, setting.difficult, first && member.family != "Trace", random, setting.fine);
        if (member.isNumerical())
            return token[0] == 'v' ? vectors(static_cast<int>(size) / count, random)
                                   : matrices(token.size() > 1 ? count : 1, random);
        nanInFirst = first ? random.below(2) : !nanInFirst;
        return someValues<T>(size, nanInFirst || member.isMove(), random);
    }
    Operand<T> *addOperand(const std::string &letters, Shape shape, Layout layout, char description = 0)
    {
        operands.emplace_back(new Operand<T>(letters, description ? description : member.description, shape, layout,
                                             layoutRandom, setting.memory));
        return operands.back().get();
    }

    std::vector<T> matrices(int number, Random &random) const
    {
        std::vector<T> all;
        for (int i = 0; i < number; ++i) {
            const bool difficult = setting.difficult && random.below(4) == 0;
            const std::vector<T> a = matrixFor<T>(member, n, height, difficult, random);
            all.insert(all.end(), a.begin(), a.end());
        }
        return all;
    }
    // Difficult ones are zeros of either sign.
    std::vector<T> vectors(int length, Random &random) const
    {
        std::vector<T> all(length * count);
        bool zeros = false;
        eachElement(length, all, [&](int, int c, T &x) {
            zeros = c == 0 ? setting.difficult && random.below(4) == 0 : zeros;
            x = zeros ? T(random.below(4) ? -0.0 : 0.0) : inUnitInterval<T>(random);
        });
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
        std::vector<T> &factors = sourceValues[0];
        if (setting.difficult && random.below(3) == 0)
            factors[random.below(static_cast<int>(factors.size()))] = 0;
        sources[0]->set(factors);
        factors = sources[0]->get();
    }

    // Object i by the oracle, into the results of all.
    KvlStatus compute(int i, T *result, int *pivotResult, std::vector<std::vector<T>> &otherResults)
    {
        const std::string &family = member.family;
        T *const x = result + static_cast<std::size_t>(i) * perObject;
        const T *const a = sources.empty() ? nullptr : values(0, i);
        const T *const b = sources.size() > 1 ? values(1, i) : nullptr;
        int *const p = pivotResult + static_cast<std::size_t>(i % std::max(1, pivotRuns)) * n;
        const bool isArray = member.isArray(), isTable = member.description == 'P';
        const bool adjacent = !isTable && isAdjacent();
        if (member.isMove())
            moveElements(a, x);
        else if (family == "Det")
            *x = oracle::determinant(n, a, isArray, adjacent);
        else if (family == "LUDecomp")
            return oracle::factor(n, a, x, p, isTable);
        else if (family == "LUBackSubst")
            oracle::solve(n, a, p, b, x);
        else if (family == "Invert")
            return oracle::invert(n, a, x, isArray, adjacent);
        else if (member.isEigen())
            return computeEigen(i, a, x, otherResults);
        else if (family == "AffineTransform3DH")
            return oracle::transformPoint(a, b, x, adjacent);
        else if (member.isMatrixProduct())
            oracle::multiply(member.letters, kernelOf(adjacent), height, inner, n, a, b, x);
        else if (member.isProduct())
            oracle::multiplyVector(family, member.letters, kernelOf(adjacent), height, inner, a, b,
                                   family == "Gaxpy" ? values(2, i) : nullptr,
                                   {sources[1]->address(i), alignedThroughout()}, x);
        else if (family == "Trace")
            *x = oracle::trace(n, a);
        else if (member.isMeasure())
            *x = measure(i, kernelOf(adjacent));
        else if (family == "CrossProduct")
            oracle::crossProduct(a, b, x);
        else if (family == "CholeskyDecomp")
            return oracle::choleskyFactor(n, a, x,
                                          oracle::choleskyThreshold<T>(n, isArray, adjacent, member.description));
        else if (family == "CholeskyBackSubst")
            oracle::choleskySolve(n, a, b, x);
        else if (family == "QRDecomp")
            return oracle::qrFactor(n, height, a, x);
        else if (family == "QRBackSubst")
            oracle::qrSolve(n, height, a, b, x);
        else
            combineElements(i, x);
        return kvlOk;
    }
    KvlStatus computeEigen(int i, const T *a, T *x, std::vector<std::vector<T>> &otherResults)
    {
        const auto other = [&](std::size_t k) { return &otherResults[k][otherResults[k].size() / count * i]; };
        const bool isArray = member.isArray();
        if (member.isGeneralEigen()) {
            const bool hasVectors = others.size() > 1;
            const bool right = member.family.find("Left") == std::string::npos && hasVectors;
            const bool left = member.family.find("Right") == std::string::npos && hasVectors;
            oracle::EigenGeneral<T> problem(n, right, left);
            // The values are the last two results; alone the destination too.
            T *const re = hasVectors ? other(others.size() - 2) : x, *const im = other(others.size() - 1);
            T *const leftVectors = !left ? nullptr : right ? other(0) : x;
            const KvlStatus status = problem.solve(a, re, im, right ? x : nullptr, leftVectors);
            ended = problem.ended;
            return status;
        }
        const bool hasVectors = !others.empty();
        const bool zeroBound = member.name == "kvlmEigenValuesVectorsSym_m_32f" && !isAdjacent();
        T *const values = hasVectors ? other(0) : x, *const vectors = hasVectors ? x : nullptr;
        if (hasVectors && isArray)
            return oracle::EigenSym<T, double>(n, isArray, true, false).solve(a, values, vectors);
        return oracle::EigenSym<T, T>(n, isArray, hasVectors, zeroBound).solve(a, values, vectors);
    }
    // Object i of a source; a single one is the same for all.
    const T *values(int source, int i) const
    {
        const std::vector<T> &all = sourceValues[source];
        return sources[source]->isArray() ? &all[all.size() / count * i] : &all[0];
    }
    std::string kernelOf(bool adjacent) const
    {
        return member.description == 'P'   ? "P"
               : member.description == 'L' ? adjacent ? "L" : "LS2"
               : adjacent                  ? ""
                                           : "S2";
    }
    ORACLE_RESULT T measure(int i, const std::string &kernel) const
    {
        const bool isMatrix = member.family == "FrobNorm";
        const T *const a = values(0, i), *const b = values(member.family == "DotProduct", i);
        std::vector<T> products(isMatrix ? n * height : n);
        for (std::size_t k = 0; k < products.size(); ++k)
            products[k] = a[k] * b[k];
        if (isMatrix)
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
    void moveElements(const T *a, T *x) const
    {
        const int rows = perObject / n;
        for (int k = 0; k < perObject; ++k)
            if (member.family == "LoadIdentity")
                x[k] = k / n == k % n;
            else
                std::memcpy(&x[k], &a[member.family == "Transpose" ? k % rows * n + k / rows : k], sizeof(T));
    }
    // Whether all bases, row and object strides are multiples of 16 bytes.
    bool alignedThroughout() const
    {
        return sources[0]->isAligned(16) && sources.back()->isAligned(16) &&
               (member.isMeasure() ? dst->address(0) % 16 == 0 : target().isAligned(16));
    }

    const Member &member;
    Setting setting;
    int n, count, height, inner;
    Shape stored = {}; // the last source
    int perObject = 0, pivotRuns = 0;
    bool nanInFirst = false, ended = false;
    Random layoutRandom;
    std::vector<std::unique_ptr<Operand<T>>> operands;
    std::vector<Operand<T> *> sources, others; // results besides dst
    Operand<T> *dst = nullptr, *buffer = nullptr;
    std::unique_ptr<Operand<int>> pivots;
    std::vector<std::vector<T>> sourceValues, initialOthers;
    std::vector<T> initial;
    std::vector<int> initialPivots;
};
