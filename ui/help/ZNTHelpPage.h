#pragma once

#include "ZNTHelpDialog.h"

#include <functional>

class QTextBrowser;
class QUrl;

/// A text that is read with the arrows.
class ZNTHelpPage final : public ZNTHelpDialog
{
public:
    enum class Format { Markdown, Html };

    /// `follow` is called for links out of the page.
    ZNTHelpPage(QWidget& window, const QString& title, const char* name, const QString& words, Format format,
                std::function<void(const QUrl&)> follow);
};

namespace znt
{

/// A text with a caret, so that the arrows read it, and with links that Tab reaches. Links into the text
/// scroll to their place; `follow` gets the others.
QTextBrowser* newHelpText(QWidget& parent, std::function<void(const QUrl&)> follow);

} // namespace znt
