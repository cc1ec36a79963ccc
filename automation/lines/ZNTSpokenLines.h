#pragma once

#include "ZNTLinePatterns.h"

#include <string>
#include <string_view>
#include <vector>

/// Parts the lines of a chunk by how they are spoken. The player has two lists of patterns: a line that
/// matches an urgent one is spoken at once, a line that matches a quiet one is not spoken. Urgent wins.
class ZNTSpokenLines
{
public:
    struct Parts {
        std::vector<std::u16string> atOnce; ///< urgent lines, without their line ends
        std::u16string inTurn;              ///< all that is left, as it came; empty if nothing is
    };

    /// Both outlive this.
    ZNTSpokenLines(const RunLoop& runLoop, ZNTPlatformLog& log) : urgent(runLoop, log), quiet(runLoop, log) {}

    /// UTF-8. Answers a sentence for each pattern that cannot be used. Lists that are as before change
    /// nothing.
    std::vector<std::u16string> setPatterns(const std::vector<std::string>& urgentLines,
                                            const std::vector<std::string>& quietLines);

    [[nodiscard]] Parts parted(const std::u16string& chunk);

private:
    std::vector<std::string> urgentLines, quietLines;
    ZNTLinePatterns urgent, quiet;
};
