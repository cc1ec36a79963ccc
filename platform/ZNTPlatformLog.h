#pragma once

#include <string>
#include <string_view>

/// The program's reports about itself, for the person who repairs it. Any thread may call.
class ZNTPlatformLog
{
public:
    virtual ~ZNTPlatformLog() = default;
    /// `text` is UTF-8 and becomes one line, its own line ends shown as blanks.
    virtual void log(std::string_view text) = 0;
};

/// The log of the running programs: stderr.
class ZNTStandardErrorLog final : public ZNTPlatformLog
{
public:
    void log(std::string_view text) override;
    /// `text` as its one line, with the line end.
    static std::string lineOf(std::string_view text);
};
