#include "ZNTHelpPage.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>
#include <utility>

namespace
{

/// As wide as lines are pleasant to read. Letters have widths of their own, so it is measured.
const QString lineOfPage =
    QStringLiteral("A line of a page that has about as many letters as are pleasant to read, no more");
constexpr int rowsOfPage = 34;
constexpr int fewestColumns = 20, fewestRows = 6;

/// The first line of the text itself. Its heading says what the window's title says, which readers have said
/// by then.
QTextBlock firstLineOf(const QTextDocument& document)
{
    QTextBlock block = document.firstBlock();
    while (block.next().isValid() &&
           (block.text().trimmed().isEmpty() || block.blockFormat().headingLevel() == 1))
        block = block.next();
    return block;
}

} // namespace

QTextBrowser* znt::newHelpText(QWidget& parent, std::function<void(const QUrl&)> follow)
{
    auto* reader = new QTextBrowser(&parent);
    reader->setObjectName(QStringLiteral("helpText"));
    reader->setOpenLinks(false);
    QObject::connect(reader, &QTextBrowser::anchorClicked, reader,
                     [reader, follow = std::move(follow)](const QUrl& link) {
                         if (link.isRelative())
                             reader->scrollToAnchor(link.fragment());
                         else
                             follow(link);
                     });
    reader->setTabChangesFocus(true);
    reader->setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
    return reader;
}

ZNTHelpPage::ZNTHelpPage(QWidget& window, const QString& title, const char* name, const QString& words,
                         Format format, std::function<void(const QUrl&)> follow)
    : ZNTHelpDialog(window, title, name)
{
    QTextBrowser* reader = znt::newHelpText(*this, std::move(follow));
    reader->setAccessibleName(QStringLiteral("Page"));
    setWhatsThis(QStringLiteral("The arrows read this page, Escape closes it."));
    if (format == Format::Html)
        reader->setHtml(words);
    else
        reader->setMarkdown(words);
    const QTextBlock first = firstLineOf(*reader->document());
    reader->setTextCursor(QTextCursor(first));
    const QFontMetrics metrics(reader->font());
    reader->setMinimumSize(metrics.averageCharWidth() * fewestColumns, metrics.height() * fewestRows);
    content().addWidget(reader);
    const int around = minimumSizeHint().width() - reader->minimumWidth() + 2 * reader->frameWidth() +
                       reader->verticalScrollBar()->sizeHint().width() +
                       static_cast<int>(2 * reader->document()->documentMargin());
    arrange(QSize(metrics.horizontalAdvance(lineOfPage) + around, metrics.height() * rowsOfPage), *reader,
            first.text());
}
