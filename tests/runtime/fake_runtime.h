// An OpenMP runtime for tests: it records every call, and runs a region's threads one by one in a chosen order.
#pragma once

#include <functional>
#include <string>

struct FakeRuntime {
    bool allowsFork = true;
    int largestTeam = 1000;
    bool lastThreadFirst = false;
    std::function<void()> onForkQuestion;
    std::string trace;          // the calls since the last reset, one word each
    const void *lock = nullptr; // the only one, as soon as it is known
};

FakeRuntime &fakeRuntime();

// Forgets the trace and all settings, but not the lock.
void resetFakeRuntime();

// The global thread numbers that the runtime gives: the caller's, and thread t's of a team.
constexpr int callerGtid = 41;
constexpr int gtidOfThread(int t)
{
    return t == 0 ? callerGtid : 70 + t;
}
