#pragma once

#include "ZNTWordCompletion.h"

#include <QPointer>
#include <functional>
#include <string>
#include <vector>

class QDialog;
class QWidget;
class ZNTCommandLine;
class ZNTOutputView;

/// Fills the command line from what was sent before, and completes words from the output. It sends nothing,
/// and does nothing to a line that hides what is typed.
class ZNTTypingHelp
{
public:
    /// The caller owns what it passes; all of it outlives this. `names` can be completed beside the words of
    /// the output.
    ZNTTypingHelp(QWidget& window, ZNTCommandLine& line, const ZNTOutputView& output,
                  std::function<std::vector<std::u16string>()> names);

    /// Opens the dialog "Lines I have sent". The line that is picked takes the place of what is typed.
    void showSentLines();
    /// Completes the word before the caret; called again, takes the next word that fits. Announces the word.
    void completeWord();

private:
    [[nodiscard]] bool isTypingHidden() const;

    QWidget& window;
    ZNTCommandLine& line;
    const ZNTOutputView& output;
    const std::function<std::vector<std::u16string>()> names;
    ZNTWordCompletion completion;
    QPointer<QDialog> picker;
};
