#include "ZNTHelpWindow.h"

#include "ZNTMainMenu.h"
#include "ZNTWindowFit.h"

#include <QAction>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QMainWindow>
#include <QMenu>
#include <QScreen>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>
#include <utility>

namespace
{

constexpr int pageMargin = 12;
constexpr int columnsOfText = 68;
constexpr int rowsOfText = 28;
constexpr const char* linkToManual = "zantor:manual";

QString text(const char* latin) { return QString::fromLatin1(latin); }

QString resourceText(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString keysOf(const QAction& action)
{
    QStringList keys;
    for (const QKeySequence& key : action.shortcuts()) {
        QString name = key.toString(QKeySequence::NativeText);
        name.replace(text("Num+"), text("keypad "));
        keys << name;
    }
    return keys.join(text(" or "));
}

void listActions(const QMenu& menu, QString& lines)
{
    for (const QAction* action : menu.actions()) {
        if (action->menu()) {
            listActions(*action->menu(), lines);
        } else if (!action->isSeparator() && !action->shortcuts().isEmpty()) {
            QString title = action->text();
            title.remove(QLatin1Char('&')).remove(text("..."));
            lines += text("* ") + title + text(": **") + keysOf(*action) + text("**\n");
        }
    }
}

} // namespace

ZNTHelpWindow::ZNTHelpWindow(QMainWindow& window, const ZNTMainMenu& menu, QString manual)
    : window(window),
      menu(menu),
      manual(std::move(manual))
{
}

ZNTHelpWindow::~ZNTHelpWindow() = default;

void ZNTHelpWindow::show(QPointer<QDialog>& page, const QString& title, const char* objectName,
                         const QString& words, Format format)
{
    if (!page) {
        page = new QDialog(&window);
        page->setAttribute(Qt::WA_DeleteOnClose);
        page->setObjectName(text(objectName));
        page->setWindowTitle(title);
        auto* layout = new QVBoxLayout(page);
        layout->setContentsMargins(pageMargin, pageMargin, pageMargin, pageMargin);
        auto* reader = new QTextBrowser(page);
        reader->setObjectName(text("helpText"));
        reader->setAccessibleName(title);
        reader->setOpenLinks(false);
        QObject::connect(reader, &QTextBrowser::anchorClicked, page, [this, reader](const QUrl& link) {
            if (link.isRelative())
                reader->scrollToAnchor(link.fragment());
            else
                follow(link);
        });
        reader->setTabChangesFocus(true);
        // With a caret, so that the arrows read it.
        reader->setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
        if (format == Format::Html)
            reader->setHtml(words);
        else
            reader->setMarkdown(words);
        const QFontMetrics metrics(reader->font());
        reader->setMinimumSize(metrics.averageCharWidth() * 20, metrics.height() * 6);
        layout->addWidget(reader);
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, page);
        QObject::connect(buttons, &QDialogButtonBox::rejected, page, &QDialog::reject);
        QObject::connect(page, &QDialog::finished, &window, &QWidget::activateWindow);
        layout->addWidget(buttons);
        znt::fitToScreen(*page);
        page->resize(QSize(metrics.averageCharWidth() * columnsOfText, metrics.height() * rowsOfText)
                         .boundedTo(window.screen()->availableSize()));
        reader->setFocus();
        page->setWhatsThis(text("The arrows read this page, Escape closes it."));
    }
    page->show();
    page->raise();
    page->activateWindow();
}

void ZNTHelpWindow::showFirstSteps()
{
    show(firstStepsPage, text("First steps"), "firstStepsPage", resourceText(text(":/first-steps.md")));
}

void ZNTHelpWindow::showFirstHourByEar()
{
    show(listeningPage, text("First hour by ear"), "listeningPage", resourceText(text(":/listening.md")));
}

void ZNTHelpWindow::showManual()
{
    const QString title = text("Manual");
    const QString words = resourceText(manual);
    if (words.isEmpty())
        show(manualPage, title, "manualPage",
             text("# Manual\n\nThe manual is not installed. There is no ") + manual + text("."));
    else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(manual)))
        show(manualPage, title, "manualPage", words, Format::Html);
}

void ZNTHelpWindow::follow(const QUrl& link)
{
    if (link == QUrl(text(linkToManual)))
        showManual();
    else
        QDesktopServices::openUrl(link);
}

void ZNTHelpWindow::showKeyboardMap()
{
    show(keyboardPage, text("Keyboard map"), "keyboardPage", keyboardMap());
}

void ZNTHelpWindow::showAbout()
{
    show(aboutPage, text("About Zantor"), "aboutPage",
         text("# Zantor ") + QCoreApplication::applicationVersion() +
             text("\n\nA desktop client for MUDs that reads the game aloud.\n\n"
                  "Free software, without any warranty; the file LICENSE says the rest.\n"));
}

QString ZNTHelpWindow::keyboardMap() const
{
    QString page = text("# Keyboard map\n\nAll keys, by their menus. [The manual](") + text(linkToManual) +
                   text(") explains everything else.\n\n");
    for (const QMenu* each : menu.menus()) {
        QString lines;
        listActions(*each, lines);
        QString title = each->title();
        if (!lines.isEmpty())
            page += text("## ") + title.remove(QLatin1Char('&')) + text("\n\n") + lines + text("\n");
    }
    page +=
        text("## On the command line\n\n"
             "* Send the line: **Return**\n"
             "* Bring back the last command: **Up**\n"
             "* Page through the output: **Page Up** and **Page Down**\n\n"
             "## In the output\n\n"
             "* Move the caret: **arrows**, **Home**, **End**, **Page Up**, **Page Down**, with **Shift** to "
             "select\n"
             "* Go on typing: what you type goes to the command line\n\n"
             "## In lists\n\n"
             "* Go to a row: its first letters; edit a cell: **F2**; set a mark: **Space**; leave the list: "
             "**Tab**\n"
             "* Run the selected macro: **Return**\n\n"
             "## On buttons\n\n"
             "* Press: **Space** or **Return**\n\n"
             "## In dialogs\n\n"
             "* Leave: **Escape**\n");
    return page;
}
