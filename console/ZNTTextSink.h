#pragma once

#include <functional>
#include <string_view>

/// Takes the terminal client's text and writes it, in the order in which it was given. Belongs to the run
/// loop's thread.
class ZNTTextSink
{
public:
    enum class To { Output, Errors };

    virtual ~ZNTTextSink() = default;
    /// Takes `utf8`; it may be written later.
    virtual void write(std::string_view utf8, To to) = 0;
    [[nodiscard]] virtual bool hasWrittenAll() const = 0;
    /// Returns when everything is written, however long the terminal takes.
    virtual void waitUntilWritten() = 0;

    /// Called on a later turn of the run loop, when all that was given has been written. Optional.
    std::function<void()> writtenAll;
};
