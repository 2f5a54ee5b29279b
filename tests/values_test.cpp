// Values of every member against a plain loop, bit for bit, in every layout and shape, with all gaps unchanged.
#include "problem.h"

#include "kvlcore.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

const Size sizes[] = {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}, {8, 8}, {9, 9}, {1, 5},
                      {6, 1}, {3, 4}, {4, 3}, {5, 3}, {3, 6}, {2, 7}, {9, 4}, {7, 6}, {37, 1}};
// For members that want at least as many rows as columns, besides those of the others; in fewer counts.
const Size tallSizes[] = {{1, 2}, {4, 8}, {6, 9}, {7, 9}, {6, 64}, {3, 65}};
const int fewCounts[] = {1, 5, 9};
const int counts[] = {1, 2, 3, 4, 5, 7, 8, 9, 17};

// Runs one problem; false after the first failure, which it reports.
bool holds(const Member &member, const Setting &setting, std::uint64_t seed)
{
    std::string wrong;
    withType(member, [&](auto zero) { wrong = Problem<decltype(zero)>(member, setting, seed).run(); });
    EXPECT_EQ(wrong, "");
    return wrong.empty();
}

// Calls body(size, count, seed) for every size and count of the member until it returns false.
template <class Body>
void forEachCase(const Member &member, Body body)
{
    std::uint64_t seed = 1;
    const auto withCounts = [&](const Size &size, const auto &all, int mostRows) {
        const bool isFitting = !member.hasFixedSize() || (size.width == 3 && size.height == 3);
        for (int count : all) {
            if (!isFitting || member.isOddAt(size.width, size.height, innerOf(size.width, size.height)) ||
                (!member.isArray() && count > 3) || (member.isNumerical() && size.height * count > mostRows))
                return true;
            if (!body(size, count, ++seed * 7919))
                return false;
        }
        return true;
    };
    for (const Size &size : sizes)
        if (size.width == size.height || !(member.isSquare() || (member.isTall() && size.width > size.height)))
            if (!withCounts(size, counts, 54))
                return;
    for (const Size &size : tallSizes)
        if (member.isTall() && !withCounts(size, fewCounts, 320))
            return;
}

// The same for every member, but settingOf(member, size, count, layout) for each of these layouts is what is run.
template <class Layouts, class SettingOf>
void runLayouts(const Layouts &layouts, SettingOf settingOf)
{
    for (const Member &member : members())
        forEachCase(member, [&](Size size, int count, std::uint64_t seed) {
            return std::all_of(std::begin(layouts), std::end(layouts), [&](Layout layout) {
                const Setting setting = settingOf(member, size, count, layout);
                return setting.count == 0 || holds(member, setting, seed);
            });
        });
}

TEST(Values, SameLayoutForAllOperands)
{
    const Layout layouts[] = {Layout::packed,  Layout::padded,      Layout::paddedRows,  Layout::gaps,
                              Layout::strided, Layout::columnMajor, Layout::interleaved, Layout::rowsInterleaved};
    static_assert(std::size(layouts) == disjointLayouts);
    runLayouts(layouts, [](const Member &, Size size, int count, Layout layout) {
        return Setting{size.width, size.height, count, layout, layout, layout};
    });
}

TEST(Values, MixedLayouts)
{
    for (const Member &member : members())
        forEachCase(member, [&](Size size, int count, std::uint64_t seed) {
            Random random(seed);
            for (int k = 0; k < 4; ++k) {
                Layout layouts[3];
                for (Layout &layout : layouts)
                    layout = static_cast<Layout>(random.below(disjointLayouts + (&layout != &layouts[2])));
                if (!holds(member, {size.width, size.height, count, layouts[0], layouts[1], layouts[2]}, seed + k))
                    return false;
            }
            return true;
        });
}

// Elements of one object may coincide too: general orders compute where they are, and not all move elements row by row.
TEST(Values, OverlappingDestinationObjects)
{
    const Layout layouts[] = {Layout::packed, Layout::strided, Layout::interleaved};
    runLayouts(layouts, [](const Member &member, Size size, int count, Layout sources) {
        const bool isTold = mayOverlap(member, size, count);
        return Setting{size.width, size.height, isTold ? count : 0, sources, sources, Layout::overlapping};
    });
}

TEST(Values, InPlace)
{
    const Layout layouts[] = {Layout::packed, Layout::padded, Layout::strided, Layout::interleaved};
    for (int source = 1; source <= 3; ++source)
        runLayouts(layouts, [&](const Member &member, Size size, int count, Layout layout) {
            std::vector<std::string> sources;
            for (const std::string &token : member.operands)
                if (std::strchr("mtvc", token[0]))
                    sources.push_back(token);
            const bool isTold =
                source <= static_cast<int>(sources.size()) && mayBeInPlace(member, sources[source - 1], source, size);
            return Setting{size.width, size.height, isTold ? count : 0, layout, layout, layout, Memory::heap, source};
        });
}

// Batches in which objects fail, each at its own place, and matrices on which thresholds and ties tell.
TEST(Values, DifficultMatrices)
{
    std::uint64_t seed = 0;
    for (const Member &member : members())
        for (int turn = 0; (member.isNumerical() || member.family == "AffineTransform3DH") && turn < 1000; ++turn) {
            Random random(++seed);
            const int order = 1 + turn % 8, count = 1 + random.below(order > 6 ? 4 : turn % 5 ? 14 : 40);
            Layout layouts[3];
            for (Layout &layout : layouts)
                layout = random.below(2) ? Layout::packed : static_cast<Layout>(random.below(disjointLayouts));
            const int height = member.isTall() ? order + random.below(3) : order;
            Setting setting = {order, height, count, layouts[0], layouts[1], layouts[2]};
            setting.difficult = true;
            if (!holds(member, setting, seed))
                break;
        }
}

// Products of all shapes from 1 to 8 and some longer ones, and sums of zeros, whose sign shows where a sum begins.
TEST(Values, ProductsOfAllShapes)
{
    const int lengths[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 19, 24};
    for (const Member &member : members())
        for (int turn = 0; (member.isProduct() || member.isVectorAlgebra()) && turn < 300; ++turn) {
            Random random(turn);
            const int square = turn % 3 == 0 ? 3 + turn / 3 % 4 : 0;
            const auto length = [&] { return square ? square : lengths[random.below(std::size(lengths))]; };
            const auto layout = [&] {
                return random.below(2) ? static_cast<Layout>(turn % 2)
                                       : static_cast<Layout>(random.below(disjointLayouts));
            };
            Setting setting = {length(), length(), 1 + random.below(6), layout(), layout(), layout()};
            setting.inner = length();
            setting.difficult = turn % 5 == 0;
            setting.fine = turn % 2;
            if (!member.isOddAt(setting.width, setting.height, setting.inner) && !holds(member, setting, turn))
                break;
        }
}

// Every operand, table and list ends at, or starts behind, an unreadable page.
TEST(Memory, NothingOutsideTheElementsIsTouched)
{
    const Layout layouts[] = {Layout::packed, Layout::gaps, Layout::strided, Layout::columnMajor};
    for (Memory memory : {Memory::beforePage, Memory::behindPage})
        runLayouts(layouts, [&](const Member &, Size size, int count, Layout layout) {
            // Of many objects, which several registers hold, in two layouts.
            const bool isMany =
                count == 17 && size.width <= 9 && layout != Layout::gaps && layout != Layout::columnMajor;
            const bool isTried = count <= 5 || isMany;
            return Setting{size.width, size.height, isTried ? count : 0, layout, layout, layout, memory};
        });
}

// What the processor makes of a reciprocal differs between models.
bool hasRoughReciprocal(const Member &member)
{
    return !member.is64 && (member.family == "CholeskyDecomp" || member.family == "L2Norm" ||
                            member.family == "FrobNorm" || (member.family == "Invert" && member.description != 'P') ||
                            (member.isGeneralEigen() && member.family != "EigenValues"));
}

// The same bits from every description, layout and number of threads. digest.txt lets two builds be compared, whose
// operands lie alike: where a vector begins decides the order of some long sums.
TEST(Values, SameBitsFromEveryDescriptionAndTeam)
{
    const Size batchSizes[] = {{3, 3}, {4, 4}, {5, 5}, {6, 6}};
    std::ofstream digests("digest.txt");
    int turn = 0;
    for (const Member &member : members()) {
        if (!member.isArray())
            continue;
        std::uint64_t digest = 0xcbf29ce484222325u;
        const auto add = [&](const auto &values) {
            const auto *bytes = reinterpret_cast<const unsigned char *>(values.data());
            for (std::size_t k = 0; k < values.size() * sizeof values[0]; ++k)
                digest = (digest ^ bytes[k]) * 0x100000001b3u;
        };
        withType(member, [&](auto zero) {
            using T = decltype(zero);
            const Size other = member.isSquare() ? Size{2, 2} : member.isTall() ? Size{4, 7} : Size{13, 4};
            for (const Size &size : {batchSizes[turn % 4], other}) {
                for (Layout layout : {Layout::packed, Layout::strided}) {
                    int count = 10;
                    while (member.driver && member.estimate(size.width, size.height, count) < member.contiguousLimit)
                        count += 10;
                    Problem<T> problem(member,
                                       {size.width, size.height, count, layout, layout, layout, Memory::heapBySize}, 5);
                    const std::vector<unsigned char> untouched = problem.target().expected();
                    for (int threads = 1; threads <= 4; ++threads) {
                        kvlSetNumThreads(threads);
                        problem.target().restore(untouched);
                        EXPECT_EQ(problem.run(), "") << threads << " threads";
                    }
                    kvlSetNumThreads(1);
                    add(problem.target().get());
                    if (problem.pivotTable())
                        add(problem.pivotTable()->get());
                    for (const auto *other : problem.otherResults())
                        add(other->get());
                }
            }
        });
        if (!hasRoughReciprocal(member))
            digests << member.name << " " << std::hex << digest << std::dec << "\n";
        turn += member.name.back() == 'L';
    }
    EXPECT_TRUE(digests.flush().good());
}

} // namespace
