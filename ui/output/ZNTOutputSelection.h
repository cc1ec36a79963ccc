#pragma once

#include "ZNTOutputStore.h"

#include <algorithm>

/// The caret, and what is selected: all from the anchor to the caret.
///
/// A caret at the end of the text stays at the end when more text comes.
class ZNTOutputSelection
{
public:
    using Position = ZNTOutputStore::Position;

    [[nodiscard]] Position anchor() const { return anchor_; }
    [[nodiscard]] Position caret() const { return caret_; }
    [[nodiscard]] Position start() const { return std::min(anchor_, caret_); }
    [[nodiscard]] Position end() const { return std::max(anchor_, caret_); }
    [[nodiscard]] bool isEmpty() const { return anchor_ == caret_; }

    void set(Position anchor, Position caret, Position textEnd)
    {
        anchor_ = anchor;
        caret_ = caret;
        staysAtEnd = isEmpty() && caret_ == textEnd;
    }
    void textAdded(Position textEnd)
    {
        if (staysAtEnd)
            anchor_ = caret_ = textEnd;
    }
    /// What stood in text that is gone now stands at the first that is left.
    void textDropped(Position textStart)
    {
        anchor_ = std::max(anchor_, textStart);
        caret_ = std::max(caret_, textStart);
    }

private:
    Position anchor_ = 0, caret_ = 0;
    bool staysAtEnd = true;
};
