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

    /// Whether so much waits that no more should be made for now.
    [[nodiscard]] virtual bool isFull() const = 0;

    // Called on a later turn of the run loop. Optional.
    std::function<void()> writtenAll; ///< all that was given has been written
    std::function<void()> roomAgain;  ///< it was full, and most of it has been written
};
