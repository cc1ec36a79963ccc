#pragma once

#include "ZNTScreenElements.h"

#include <QChar>
#include <QPointer>
#include <functional>

class QAbstractButton;
class QDialog;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QTabWidget;
class QWidget;

// Screen elements over plain widgets. Each holds its widget without owning it. When the widget is gone, as at
// the end of the window, the element does nothing.

class ZNTQtTextField final : public ZNTTextField
{
public:
    explicit ZNTQtTextField(QLineEdit* field);
    [[nodiscard]] std::u16string text() const override;
    void setText(std::u16string_view text) override;
    void setEnabled(bool enabled) override;
    void takeFocus() override;
    void placeCaretAtEnd() override;

private:
    QPointer<QLineEdit> field;
};

class ZNTQtTextArea final : public ZNTTextArea
{
public:
    explicit ZNTQtTextArea(QPlainTextEdit* area);
    [[nodiscard]] std::u16string text() const override;
    void setText(std::u16string_view text) override;

private:
    QPointer<QPlainTextEdit> area;
};

/// Shows its text as plain text. Markup from a game or a player is shown as it is.
class ZNTQtLabel final : public ZNTLabel
{
public:
    explicit ZNTQtLabel(QLabel* label);
    void setText(std::u16string_view text) override;

private:
    QPointer<QLabel> label;
};

class ZNTQtButton final : public ZNTButton
{
public:
    /// The first `mnemonic` (a small letter) in each title becomes the key that works with Alt; none where it
    /// is null. The button's accessible name is the title without the mark.
    explicit ZNTQtButton(QAbstractButton* button, QChar mnemonic = QChar());
    void setTitle(std::u16string_view title) override;
    void setEnabled(bool enabled) override;

private:
    QPointer<QAbstractButton> button;
    QChar mnemonic;
};

/// A bar without a known end.
class ZNTQtSpinner final : public ZNTSpinner
{
public:
    explicit ZNTQtSpinner(QProgressBar* bar);
    void setHidden(bool hidden) override;
    void startAnimation() override;
    void stopAnimation() override;

private:
    void apply();

    QPointer<QProgressBar> bar;
    bool isHidden = true;
    bool isAnimating = false;
};

class ZNTQtTabView final : public ZNTTabView
{
public:
    explicit ZNTQtTabView(QTabWidget* tabs);
    void selectTab(int index) override;

private:
    QPointer<QTabWidget> tabs;
};

/// A dialog that is a sheet of the window that opened it. It blocks that window alone, and gives the focus
/// back when it closes.
class ZNTQtSheet final : public ZNTPanel
{
public:
    explicit ZNTQtSheet(QDialog* dialog);
    void show() override;
    void close() override;

private:
    QPointer<QDialog> dialog;
    QPointer<QWidget> opener; ///< what had the focus
};
