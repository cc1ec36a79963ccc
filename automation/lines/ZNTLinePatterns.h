#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class RunLoop;
class ZNTPlatformLog;

/// The patterns of one list. A pattern means what the check of a trigger means, but it is tried on single
/// lines.
///
/// A text is announced before its lines are asked about: if no pattern can match in it, nobody need look at
/// the lines. Patterns that only ICU understands have an allowance of time for each text. One that exceeds it
/// matches no further line of that text.
class ZNTLinePatterns
{
public:
    /// The log gets a line when a pattern was too slow for a text; the loop's clock times its rest. Both
    /// outlive this.
    ZNTLinePatterns(const RunLoop& runLoop, ZNTPlatformLog& log);
    ~ZNTLinePatterns();
    ZNTLinePatterns(const ZNTLinePatterns&) = delete;
    ZNTLinePatterns& operator=(const ZNTLinePatterns&) = delete;

    /// Replaces the list. Answers a sentence for each pattern that cannot be used; it matches no line.
    std::vector<std::u16string> setPatterns(const std::vector<std::u16string>& patterns);

    /// Whether any line of `text` may match. The allowances begin anew.
    bool begin(std::u16string_view text);
    /// The places in the list, in ascending order, of the patterns that match `line`, a line of the text
    /// begun last. Valid until the next call.
    const std::vector<std::size_t>& matchesIn(std::u16string_view line);

private:
    struct State;
    struct Pattern;

    bool isIn(Pattern& pattern, std::u16string_view line);
    void noteFailure(Pattern& pattern);
    bool isFoundByIcu(Pattern& pattern, std::u16string_view line);

    const RunLoop& runLoop;
    ZNTPlatformLog& log;
    std::unique_ptr<State> state;
};
