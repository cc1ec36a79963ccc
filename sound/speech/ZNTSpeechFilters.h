#pragma once

#include <string>

/// What is taken out of received text before it is spoken. Each switch works by itself; all are off at first.
/// Linear in the text.
struct ZNTSpeechFilters {
    /// Lines without a letter or digit of any script, such as frames and rules.
    bool skipsDecoration = false;
    /// Of a character that is no letter or digit and stands three or more times in a row, all but the first.
    bool shortensRuns = false;
    /// Escape sequences of ECMA-48, also the first part of one that is cut off.
    bool skipsControlSequences = false;

    [[nodiscard]] std::u16string applied(std::u16string text) const;
};
