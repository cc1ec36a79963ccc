#pragma once

#include "ZNTResult.h"

#include <cstddef>
#include <memory>

/// Runs look-ups, which may hang for as long as a name server does not answer, on a few threads of their own.
/// If all of these are busy, the next look-up waits for one of them; so a player who tries again and again
/// does not fill the process with threads. A thread ends when no look-up waits.
///
/// Neither this object's destructor nor the end of the program waits for a thread.
class AsyncHostLookupThreads
{
public:
    static constexpr std::size_t mostThreads = 4;

    class Job
    {
    public:
        virtual ~Job() = default;
        /// Called on one of the threads.
        virtual void run() = 0;
    };

    AsyncHostLookupThreads();
    static AsyncHostLookupThreads& ofThisProcess();

    /// A job that is destroyed before its turn is left out. Fails if the system has no thread to spare and
    /// none runs that would take the job later.
    [[nodiscard]] ZNTResult<void> add(const std::shared_ptr<Job>& job);
    [[nodiscard]] std::size_t running() const;

private:
    struct State;
    std::shared_ptr<State> state; // the threads hold it, too
};
