// Calls from a seed, on any machine that runs the library: the calls are made in a child, so that none of them ends
// the rest, and what fails is made as short as it gets.
//     fuzz_plain SECONDS [SEED] | replay HEX... | corpus FILE
#include "call.h"

#include "../tests/operand.h"

#include <sys/wait.h>

#include <chrono>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>

#ifndef __SANITIZE_ADDRESS__ // which has a heap of its own
extern "C" {
void *__libc_malloc(std::size_t);
void *malloc(std::size_t size)
{
    fuzz::heapCalls = fuzz::heapCalls + 1;
    return __libc_malloc(size);
}
}
#endif

namespace {

using Bytes = std::vector<unsigned char>;
using Clock = std::chrono::steady_clock;
constexpr int mostBytes = 160, mostFunctions = 1024, hangSeconds = 20, corpusSeconds = 600, mostFindings = 20;

// What a child leaves for its parent to see, however it ends.
struct Shared {
    volatile unsigned long calls;
    unsigned char bytes[mostBytes];
    std::size_t size;
    unsigned long perFunction[mostFunctions], stack[mostFunctions], driven, kernels, refused, teams;
    char text[500];
};
Shared &shared()
{
    static void *const memory =
        mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return *static_cast<Shared *>(memory);
}

void tell(const std::string &text)
{
    std::snprintf(shared().text, sizeof shared().text, "%s", text.c_str());
}

std::string hex(const Bytes &bytes)
{
    std::string text;
    char digits[3];
    for (unsigned char byte : bytes) {
        std::snprintf(digits, sizeof digits, "%02x", byte);
        text += digits;
    }
    return text.empty() ? "00" : text;
}

Bytes bytesOf(const std::string &text)
{
    Bytes bytes;
    for (std::size_t k = 0; k + 1 < text.size(); k += 2)
        bytes.push_back(static_cast<unsigned char>(std::stoi(text.substr(k, 2), nullptr, 16)));
    return bytes;
}

// Runs body in a child; empty if it told nothing and ended by itself, else what it told or died of. A call is given
// so many seconds.
template <class Body>
std::string inChild(Body body, int seconds)
{
    tell("");
    std::fflush(nullptr);
    const pid_t child = fork();
    require(child >= 0, "fork");
    if (child == 0) {
        body();
        _exit(0);
    }
    int state = 0;
    unsigned long seen = shared().calls;
    auto since = Clock::now();
    for (useconds_t pause = 50; waitpid(child, &state, WNOHANG) == 0; pause = std::min<useconds_t>(2 * pause, 50000)) {
        usleep(pause);
        if (seen != shared().calls) {
            seen = shared().calls;
            since = Clock::now();
        } else if (Clock::now() - since > std::chrono::seconds(seconds)) {
            kill(child, SIGKILL);
            waitpid(child, &state, 0);
            return "hang";
        }
    }
    if (WIFSIGNALED(state))
        return std::string("signal ") + std::to_string(WTERMSIG(state));
    return shared().text[0] || WEXITSTATUS(state) == 0 ? shared().text : "it ended the program";
}

std::string wrongOf(const Bytes &bytes)
{
    return inChild(
        [&] {
            const fuzz::Call call = fuzz::callOf(bytes.data(), bytes.size());
            if (!call.wrong.empty())
                tell(fuzz::functionName(call.function) +
                     (call.isDriven   ? ", its driver"
                      : call.isKernel ? ", its kernel"
                                      : "") +
                     ": " + call.what + ": " + call.wrong);
        },
        hangSeconds);
}

// Shorter, and with as many zeros, as still fails.
Bytes shrunk(Bytes bytes)
{
    const auto fails = [](const Bytes &other) { return !wrongOf(other).empty(); };
    for (std::size_t cut = bytes.size(); cut > 0; cut /= 2)
        while (bytes.size() >= cut && fails({bytes.begin(), bytes.end() - static_cast<std::ptrdiff_t>(cut)}))
            bytes.resize(bytes.size() - cut);
    for (std::size_t k = 3; k < bytes.size(); ++k) // the function stays
        for (const int smaller : {0, 1, bytes[k] / 2, bytes[k] - 1}) {
            Bytes other = bytes;
            other[k] = static_cast<unsigned char>(smaller);
            if (smaller < bytes[k] && smaller >= 0 && fails(other)) {
                bytes = other;
                break;
            }
        }
    return bytes;
}

void report(const Bytes &bytes, const std::string &wrong)
{
    std::cout << "FOUND " << wrong << "\n  ./fuzz replay " << hex(bytes) << std::endl;
}

// Each function once, of which some may have had their turn, then any.
void makeCalls(std::uint64_t seed, unsigned long done, unsigned most, Clock::time_point end)
{
    Shared &told = shared();
    Random random(seed);
    const unsigned long functions = fuzz::functionCount();
    for (unsigned turn = 0; turn < most && (turn % 64 || Clock::now() < end); ++turn) {
        told.size = 24 + random.below(mostBytes - 24);
        for (std::size_t k = 0; k < told.size; ++k)
            told.bytes[k] = static_cast<unsigned char>(random.next() >> 56);
        for (int k = 0; k < 3 && done + turn < functions; ++k)
            told.bytes[k] = static_cast<unsigned char>((done + turn) >> (16 - 8 * k));
        const fuzz::Call call =
            fuzz::callOf(told.bytes, told.size, [](int function) { ++shared().perFunction[function]; });
        told.driven += call.isDriven;
        told.kernels += call.isKernel;
        told.refused += call.isDefective;
        told.teams += call.threads > 1;
        unsigned long &stack = told.stack[call.function];
        stack = std::max(stack, static_cast<unsigned long>(call.stackBytes));
        told.calls = told.calls + 1;
        if (!call.wrong.empty())
            return tell(call.what + ": " + call.wrong);
    }
}

// Until then, or so many.
int run(std::uint64_t seed, unsigned most, int seconds)
{
    const auto start = Clock::now(), end = start + std::chrono::seconds(seconds);
    const unsigned long before = shared().calls;
    std::map<int, int> findings; // of a function the first is told
    int found = 0;
    for (std::uint64_t turn = 0; Clock::now() < end && found < mostFindings && shared().calls - before < most; ++turn) {
        const unsigned long done = shared().calls - before;
        const unsigned rest = most - static_cast<unsigned>(done);
        const std::string wrong = inChild([&] { makeCalls(seed + turn * 1000003, done, rest, end); }, hangSeconds);
        const Bytes bytes(shared().bytes, shared().bytes + shared().size);
        if (wrong.empty() || ++findings[Random(bytes.data(), bytes.size()).below(fuzz::functionCount())] > 1)
            continue;
        ++found;
        const std::string again = wrongOf(bytes);
        const Bytes less = again.empty() || again == "hang" ? bytes : shrunk(bytes); // each try would take its time
        report(less, (again.empty() ? "not twice: " + wrong : wrongOf(less)) + ", after " +
                         std::to_string(shared().calls) + " calls");
    }
    const double passed = std::chrono::duration<double>(Clock::now() - start).count();
    int reached = 0;
    unsigned long deepest = 0;
    std::string deepestName;
    for (int k = 0; k < fuzz::functionCount(); ++k) {
        reached += shared().perFunction[k] > 0;
        if (shared().stack[k] > deepest) {
            deepest = shared().stack[k];
            deepestName = fuzz::functionName(k);
        }
    }
    std::printf(
        "%lu calls, %.0f per second, %d of %d functions, %lu of drivers, %lu of kernels, %lu refused, %lu with teams, "
        "stack at most %lu bytes (%s), %d findings, seed %llu\n",
        shared().calls, shared().calls / passed, reached, fuzz::functionCount(), shared().driven, shared().kernels,
        shared().refused, shared().teams, deepest, deepestName.c_str(), found, static_cast<unsigned long long>(seed));
    return found > 0;
}

int replay(const std::vector<std::string> &texts)
{
    int failed = 0;
    for (const std::string &text : texts) {
        const std::string wrong = wrongOf(bytesOf(text));
        if (!wrong.empty())
            report(bytesOf(text), wrong);
        failed += !wrong.empty();
    }
    std::cout << texts.size() << " calls, " << failed << " findings\n";
    return failed > 0 || texts.empty();
}

} // namespace

int main(int argc, char **argv)
{
    for (int number : {SIGSEGV, SIGBUS}) // the parent tells
        std::signal(number, SIG_DFL);
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() > 1 && arguments[0] == "replay")
        return replay({arguments.begin() + 1, arguments.end()});
    if (arguments.size() == 2 && arguments[0] == "corpus") { // a call a line, what follows it is a comment; or a seed
        std::vector<std::string> texts;
        std::ifstream file(arguments[1]);
        int failed = 0;
        for (std::string line; std::getline(file, line);) {
            std::istringstream words(line);
            std::string word;
            unsigned seed = 0, calls = 0;
            if (words >> word && word == "seed" && words >> seed >> calls)
                failed |= run(seed, calls, corpusSeconds);
            else if (!word.empty() && word[0] != '#')
                texts.push_back(word);
        }
        return replay(texts) | failed;
    }
    if (arguments.size() == 1 || arguments.size() == 2)
        return run(arguments.size() == 2 ? std::stoull(arguments[1]) : 1, -1u, std::stoi(arguments[0]));
    std::cerr << "usage: fuzz_plain SECONDS [SEED] | replay HEX... | corpus FILE\n";
    return 2;
}
