#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

/// Why an ordinary operation failed. `domain` names the family that `code` belongs to (for example the POSIX
/// errors); `description` is a sentence in English for a log, not for the player.
struct ZNTError {
    std::string domain;
    long code = 0;
    std::string description;

    friend bool operator==(const ZNTError&, const ZNTError&) = default;
};

/// The domain of errors whose code is an `errno`.
inline constexpr const char* ZNTPOSIXErrorDomain = "NSPOSIXErrorDomain";

/// The error for an `errno` value, described by the C library.
ZNTError posixError(int errorNumber);

/// A value, or the error because of which there is none. The caller checks which one it is before it asks for
/// it.
template <typename Value>
class [[nodiscard]] ZNTResult
{
public:
    ZNTResult(Value value) : content(std::in_place_index<0>, std::move(value)) {}
    ZNTResult(ZNTError error) : content(std::in_place_index<1>, std::move(error)) {}

    [[nodiscard]] bool succeeded() const { return content.index() == 0; }
    explicit operator bool() const { return succeeded(); }

    [[nodiscard]] const Value& value() const&
    {
        assert(succeeded());
        return *std::get_if<0>(&content);
    }
    [[nodiscard]] Value&& value() &&
    {
        assert(succeeded());
        return std::move(*std::get_if<0>(&content));
    }
    [[nodiscard]] const ZNTError& error() const
    {
        assert(!succeeded());
        return *std::get_if<1>(&content);
    }

private:
    std::variant<Value, ZNTError> content;
};

/// The result of an operation that has nothing to return.
template <>
class [[nodiscard]] ZNTResult<void>
{
public:
    ZNTResult() = default;
    ZNTResult(ZNTError error) : failure(std::move(error)), failed(true) {}

    [[nodiscard]] bool succeeded() const { return !failed; }
    explicit operator bool() const { return succeeded(); }
    [[nodiscard]] const ZNTError& error() const
    {
        assert(failed);
        return failure;
    }

private:
    ZNTError failure;
    bool failed = false;
};
