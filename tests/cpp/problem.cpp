// The problems of the other tests, for these.
#include "problem.h"
#include "forms.h"

#include <variant>

struct AnyProblem::Held {
    std::variant<std::monostate, std::unique_ptr<Problem<float>>, std::unique_ptr<Problem<double>>> problem;
    int count = 1;
};

namespace {

// Square where it must be, of sizes that can't stand for each other where it may. Lengths of products are told apart.
Setting settingOf(const Member &member, int layout)
{
    static constexpr Layout chosen[layouts] = {Layout::packed, Layout::gaps, Layout::strided, Layout::interleaved};
    Setting s = {4, 5, 7, chosen[layout], chosen[(layout + 1) % layouts], chosen[(layout + 2) % layouts]};
    s.inner = 3;
    if (member.hasFixedSize())
        s.width = 3;
    return s;
}

} // namespace

AnyProblem::AnyProblem(const std::string &name, int layout) : held(new Held)
{
    for (const Member &member : members())
        if (member.name == name)
            withType(member, [&](auto zero) {
                using T = decltype(zero);
                const Setting setting = settingOf(member, layout);
                held->count = member.isArray() ? setting.count : 1;
                held->problem = std::make_unique<Problem<T>>(member, setting, 1000 + layout);
            });
    if (held->problem.index() == 0)
        ADD_FAILURE() << "there is no " << name;
}

const Args &AnyProblem::args() const
{
    static const Args none;
    return std::visit(
        [](const auto &problem) -> const Args & {
            if constexpr (std::is_same_v<std::decay_t<decltype(problem)>, std::monostate>)
                return none;
            else
                return problem->args;
        },
        held->problem);
}

std::string AnyProblem::verdict(KvlStatus status)
{
    return std::visit(
        [&](auto &problem) {
            if constexpr (std::is_same_v<std::decay_t<decltype(problem)>, std::monostate>)
                return std::string("no problem");
            else
                return problem->verdict(status, 0, held->count);
        },
        held->problem);
}

std::set<std::string> &reached()
{
    static std::set<std::string> names;
    return names;
}

TEST(Cpp, EveryFunctionIsReached)
{
    checkSums();
    checkProducts();
    checkVectorsAndMoves();
    checkSystems();
    for (const Member &member : members())
        EXPECT_EQ(reached().count(member.name), 1u) << member.name;

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
    EXPECT_EQ(reached().size() + 5, std::size_t{KVLM_PUBLIC_FUNCTIONS});
}
