#pragma once

#include <QPlainTextEdit>
#include <functional>
#include <string>
#include <vector>

/// A small field for a list of texts, one a line. Tab leaves it. What was changed is taken when the player
/// leaves the field or its window closes, so that no half-typed pattern comes into force.
class ZNTTextListEditor final : public QPlainTextEdit
{
public:
    explicit ZNTTextListEditor(QWidget* parent = nullptr);

    /// Called when the player is done with a change.
    std::function<void()> whenEdited;

    /// UTF-8, one for each line.
    [[nodiscard]] std::vector<std::string> texts() const;
    /// A change that the player is still at stays.
    void show(const std::vector<std::string>& texts);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] QSize sizeOf(int columns) const;
    void takeChange();
};
