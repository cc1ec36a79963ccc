#pragma once

#include "ZNTAttributedText.h"
#include "ZNTScreenElements.h"

/// Screen elements that are only remembered: what a front end without that element, or a test, hands in.

struct ZNTPlainTextField final : ZNTTextField {
    std::u16string content;
    bool isEnabled = true;
    bool caretIsAtEnd = false;
    int timesFocused = 0;

    [[nodiscard]] std::u16string text() const override { return content; }
    void setText(std::u16string_view text) override
    {
        content = text;
        caretIsAtEnd = false;
    }
    void setEnabled(bool enabled) override { isEnabled = enabled; }
    void takeFocus() override { ++timesFocused; }
    void placeCaretAtEnd() override { caretIsAtEnd = true; }
};

struct ZNTPlainTextArea final : ZNTTextArea {
    std::u16string content;
    [[nodiscard]] std::u16string text() const override { return content; }
    void setText(std::u16string_view text) override { content = text; }
};

struct ZNTPlainLabel final : ZNTLabel {
    std::u16string content;
    void setText(std::u16string_view text) override { content = text; }
};

struct ZNTPlainButton final : ZNTButton {
    std::u16string title;
    bool isEnabled = true;
    void setTitle(std::u16string_view newTitle) override { title = newTitle; }
    void setEnabled(bool enabled) override { isEnabled = enabled; }
};

struct ZNTPlainSpinner final : ZNTSpinner {
    bool isHidden = true;
    bool isAnimating = false;
    void setHidden(bool hidden) override { isHidden = hidden; }
    void startAnimation() override { isAnimating = true; }
    void stopAnimation() override { isAnimating = false; }
};

struct ZNTPlainTextView final : ZNTTextView {
    std::vector<ZNTAttributedText> pieces;
    bool isEditable = false;
    bool isAtEnd = false;

    [[nodiscard]] std::u16string text() const
    {
        std::u16string all;
        for (const auto& piece : pieces)
            all += piece.text;
        return all;
    }
    void append(const ZNTAttributedText& piece) override
    {
        pieces.push_back(piece);
        isAtEnd = false;
    }
    void scrollToEnd() override { isAtEnd = true; }
    void clear() override { pieces.clear(); }
    void setEditable(bool editable) override { isEditable = editable; }
};

struct ZNTPlainTableView final : ZNTTableView {
    long selected = -1;
    int timesReloaded = 0;
    int timesScrolledToEnd = 0;
    int timesEditingAborted = 0;
    void reloadData() override { ++timesReloaded; }
    [[nodiscard]] long selectedRow() const override { return selected; }
    void abortEditing() override { ++timesEditingAborted; }
    void scrollToEndOfTable() override { ++timesScrolledToEnd; }
};

struct ZNTPlainComboBox final : ZNTComboBox {
    std::u16string content;
    int timesReloaded = 0;
    [[nodiscard]] std::u16string text() const override { return content; }
    void setText(std::u16string_view text) override { content = text; }
    void reloadData() override { ++timesReloaded; }
};

struct ZNTPlainTabView final : ZNTTabView {
    int selected = -1;
    void selectTab(int index) override { selected = index; }
};

struct ZNTPlainPanel final : ZNTPanel {
    bool isShown = false;
    int timesShown = 0;
    void show() override
    {
        isShown = true;
        ++timesShown;
    }
    void close() override { isShown = false; }
};
