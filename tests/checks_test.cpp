// The order of the argument checks: every defect alone and every pair of defects, on memory that must not be touched.
#include "defects.h"
#include "problem.h"

#include <gtest/gtest.h>

namespace {

TEST(Checks, EveryDefectAndEveryPair)
{
    void *unreadable = mmap(nullptr, 1 << 16, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(unreadable, MAP_FAILED);
    for (const Member &member : members()) {
        Args sound;
        withType(member, [&](auto zero) {
            sound = Problem<decltype(zero)>(member, {3, 3, 2, Layout::packed, Layout::strided, Layout::gaps}, 1).args;
        });
        for (Arg &arg : sound)
            if (arg.check == 'N')
                arg.pointer = unreadable;
        const std::vector<Defect> defects = defectsOf(member, sound);
        const auto rankOf = [&](const Defect &defect) { return rank(member, sound[defect.position], defect.check); };
        int wrong = 0;
        for (auto one = defects.begin(); one != defects.end(); ++one)
            for (auto other = one; other != defects.end(); ++other) {
                if (other != one && other->position == one->position)
                    continue;
                Args args = sound;
                apply(*one, args);
                apply(*other, args);
                const int expected = statusOf((rankOf(*one) <= rankOf(*other) ? one : other)->check);
                running() = member.name + " with defects at arguments " + std::to_string(one->position) + " and " +
                            std::to_string(other->position);
                const KvlStatus status = member.call(args);
                if (status != expected && ++wrong <= 3)
                    ADD_FAILURE() << running() << ": " << status << ", expected " << expected;
            }
    }
    munmap(unreadable, 1 << 16);
}

} // namespace
