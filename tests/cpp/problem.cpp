// The problems of the other tests, for these.
#include "problem.h"
#include "forms.h"

#include <gtest/gtest.h>

#include <set>

namespace {

constexpr Layout layouts[] = {Layout::packed, Layout::gaps, Layout::strided, Layout::interleaved};
constexpr int layoutCount = sizeof layouts / sizeof *layouts;

// The names of the C functions that were called from C++.
std::set<std::string> reached;

// Sizes that can't stand for each other, unless they must be equal.
Setting settingOf(const Member &member, int number)
{
    const auto layout = [number](int k) { return layouts[(number + k) % layoutCount]; };
    Setting s = {member.hasFixedSize() ? 3 : 4, 5, 7, layout(0), layout(1), layout(2)};
    s.inner = 3;
    return s;
}

template <class T>
void checkIn(int layout, const Member &member, const Call &call)
{
    Problem<T> problem(member, settingOf(member, layout), 1000 + layout);
    bool isAtEnd = false;
    const KvlStatus status = call(problem.args, isAtEnd);
    EXPECT_TRUE(isAtEnd) << member.name;
    EXPECT_EQ(problem.verdict(status, 0, member.isArray() ? 7 : 1), "");
}

} // namespace

void checkCall(const std::string &name, const Call &call)
{
    for (const Member &member : members())
        if (member.name == name) {
            for (int layout = 0; layout < layoutCount; ++layout)
                withType(member, [&](auto zero) { checkIn<decltype(zero)>(layout, member, call); });
            reached.insert(name);
            return;
        }
    ADD_FAILURE() << "there is no " << name;
}

TEST(Cpp, EveryFunctionIsReached)
{
    checkSums();
    checkProducts();
    checkVectorsAndMoves();
    checkSystems();
    for (const Member &member : members())
        EXPECT_EQ(reached.count(member.name), 1u) << member.name;

    EXPECT_EQ(kvlm::version().versionMajor, 5);
    int bytes = 0;
    EXPECT_TRUE(kvlm::eigenvaluesScratch<float>(4, bytes).ok());
    EXPECT_EQ(bytes, 4 * 9 * 4);
    EXPECT_TRUE(kvlm::eigenvaluesScratch<double>(4, bytes).ok());
    EXPECT_EQ(bytes, 4 * 9 * 8);
    EXPECT_TRUE(kvlm::eigenvectorsScratch<float>(4, bytes).ok());
    EXPECT_EQ(bytes, 4 * 17 * 4);
    EXPECT_TRUE(kvlm::eigenvectorsScratch<double>(4, bytes).ok());
    EXPECT_EQ(bytes, 4 * 17 * 8);
    EXPECT_EQ(reached.size() + 5, std::size_t{KVLM_PUBLIC_FUNCTIONS});
}
