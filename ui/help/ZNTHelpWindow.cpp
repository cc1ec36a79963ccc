#include "ZNTHelpWindow.h"

#include "ZNTAboutPage.h"
#include "ZNTHelpPage.h"
#include "ZNTKeyboardMap.h"

#include <QDesktopServices>
#include <QFile>
#include <QMainWindow>
#include <QUrl>
#include <utility>

namespace
{

QString resourceText(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

ZNTHelpWindow::ZNTHelpWindow(QMainWindow& window, const ZNTMainMenu& menu, QString manual,
                             std::function<void(const QString& address)> askToOpen)
    : window(window),
      menu(menu),
      manual(std::move(manual)),
      askToOpen(std::move(askToOpen))
{
}

ZNTHelpWindow::~ZNTHelpWindow() = default;

void ZNTHelpWindow::showText(Page& page, const QString& title, const char* name, const QString& words)
{
    if (!page)
        page = new ZNTHelpPage(window, title, name, words, ZNTHelpPage::Format::Markdown,
                               [this](const QUrl& link) { follow(link); });
    page->present();
}

void ZNTHelpWindow::showFirstSteps()
{
    showText(firstStepsPage, QStringLiteral("First steps"), "firstStepsPage",
             resourceText(QStringLiteral(":/first-steps.md")));
}

void ZNTHelpWindow::showFirstHourByEar()
{
    showText(listeningPage, QStringLiteral("First hour by ear"), "listeningPage",
             resourceText(QStringLiteral(":/listening.md")));
}

void ZNTHelpWindow::showManual()
{
    const QString title = QStringLiteral("Manual");
    const QString words = resourceText(manual);
    if (words.isEmpty()) {
        showText(manualPage, title, "manualPage",
                 QStringLiteral("# Manual\n\nThe manual is not installed. There is no %1.").arg(manual));
        return;
    }
    if (QDesktopServices::openUrl(QUrl::fromLocalFile(manual)))
        return;
    if (!manualPage)
        manualPage = new ZNTHelpPage(window, title, "manualPage", words, ZNTHelpPage::Format::Html,
                                     [this](const QUrl& link) { follow(link); });
    manualPage->present();
}

void ZNTHelpWindow::follow(const QUrl& link)
{
    if (link.isLocalFile())
        QDesktopServices::openUrl(link);
    else
        askToOpen(QString::fromLatin1(link.toEncoded()));
}

void ZNTHelpWindow::showKeyboardMap()
{
    if (!keyboardPage)
        keyboardPage = new ZNTKeyboardMap(window, menu, [this] { showManual(); });
    keyboardPage->present();
}

void ZNTHelpWindow::showAbout()
{
    if (!aboutPage)
        aboutPage = new ZNTAboutPage(window, [this](const QUrl& link) { follow(link); });
    aboutPage->present();
}
