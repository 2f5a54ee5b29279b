/**
 * @file status.hpp
 * The status of a call as an object, and as an exception for those who want one.
 */
#ifndef KVLM_STATUS_HPP
#define KVLM_STATUS_HPP

#include "../kvlm_status.h"

#include <stdexcept>
#include <string>

namespace kvlm {

/** Of C++ alone: a call on arrays inside a parallel region of OpenMP, while threads_omp_of_n_kvl is above 1. The team
 * that it could get there would leave objects undone, so nothing was read or written. kvlm::each works there. */
inline constexpr KvlStatus insideParallelRegion = -1000;

/** The result of a call: a KvlStatus, which must not be dropped. Compare it with the constants of kvlm.h. */
class [[nodiscard]] Status {
public:
    constexpr Status(KvlStatus value) noexcept : code(value) {}

    constexpr bool ok() const noexcept { return code == kvlOk; }
    constexpr KvlStatus value() const noexcept { return code; }
    /** "kvlErrSize" and the like. */
    const char *name() const noexcept
    {
        return code == insideParallelRegion ? "insideParallelRegion" : kvlmStatusName(code);
    }
    /** What it means, in a sentence. */
    const char *text() const noexcept
    {
        return code == insideParallelRegion ? "teams are allowed inside a parallel region" : kvlmStatusText(code);
    }

    friend constexpr bool operator==(Status a, Status b) noexcept { return a.code == b.code; }
    friend constexpr bool operator!=(Status a, Status b) noexcept { return a.code != b.code; }

private:
    KvlStatus code;
};

#ifdef __cpp_exceptions
/** What check() throws: its what() has the name and the text of the status. */
class Error : public std::runtime_error {
public:
    explicit Error(Status status)
        : std::runtime_error(std::string(status.name()) + ": " + status.text()), failure(status)
    {
    }
    Status status() const noexcept { return failure; }

private:
    Status failure;
};

/** Throws an Error unless the call succeeded: check(add(a, b, sum)). */
inline void check(Status status)
{
    if (!status.ok())
        throw Error(status);
}
#endif

} // namespace kvlm

#endif
