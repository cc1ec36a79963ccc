#include "ZNTWebAddressDialogs.h"

#include "ZNTEmptyHint.h"
#include "ZNTOutputView.h"
#include "ZNTQtText.h"
#include "ZNTWebAddresses.h"
#include "ZNTWindowFit.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

namespace
{

QString webText(const char* latin) { return QString::fromLatin1(latin); }

/// Empty if it is no address that a browser could open.
QUrl urlOf(const QString& address)
{
    const QUrl asSent(address, QUrl::TolerantMode);
    const QUrl url = QUrl::fromEncoded(asSent.toEncoded(), QUrl::StrictMode);
    const bool isWeb = url.scheme() == webText("http") || url.scheme() == webText("https");
    return url.isValid() && isWeb && !url.host().isEmpty() ? url : QUrl();
}

/// Exactly what goes to the browser.
QString asOpened(const QUrl& url) { return QString::fromLatin1(url.toEncoded()); }

QPlainTextEdit* addressField(const QString& address, QDialog& dialog)
{
    auto* field = new QPlainTextEdit(address, &dialog);
    field->setObjectName(webText("webAddress"));
    field->setAccessibleName(webText("Web address"));
    field->setReadOnly(true);
    field->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    field->setTabChangesFocus(true);
    field->setWordWrapMode(QTextOption::WrapAnywhere);
    return field;
}

} // namespace

ZNTWebAddressDialogs::ZNTWebAddressDialogs(QWidget& window, const ZNTOutputView& output)
    : window(window),
      output(output)
{
}

QDialog* ZNTWebAddressDialogs::makeDialog(const char* name, const QString& words)
{
    // Over the page whose link was followed; a list that was left is hidden by then.
    QWidget* owner = QApplication::activeWindow();
    auto* dialog = new QDialog(owner && owner->isVisible() ? owner : &window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(webText(name));
    dialog->setWindowTitle(webText("Open a web address"));
    auto* layout = new QVBoxLayout(dialog);
    auto* label = new QLabel(words, dialog);
    label->setObjectName(webText("words"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    layout->addWidget(label);
    return dialog;
}

void ZNTWebAddressDialogs::show(QDialog& dialog, QWidget& focused, std::function<void()> whenAccepted)
{
    auto& words = *dialog.findChild<QLabel*>(webText("words"));
    words.setBuddy(&focused);
    focused.setAccessibleDescription(words.text());
    znt::shrinkFontToScreen(dialog);
    znt::fitToScreen(dialog);
    dialog.resize(std::max(dialog.width(), window.width() / 2), dialog.height());
    focused.setFocus();
    QWidget* owner = dialog.parentWidget();
    QObject::connect(&dialog, &QDialog::finished, owner, [owner, whenAccepted](int result) {
        owner->activateWindow();
        if (result == QDialog::Accepted && whenAccepted)
            whenAccepted();
    });
    dialog.open();
    dialog.activateWindow();
}

void ZNTWebAddressDialogs::showList()
{
    QStringList shown;
    for (const auto& address : znt::newestWebAddresses(output.store(), lastLines))
        if (const QUrl url = urlOf(znt::qtText(address)); !url.isEmpty())
            shown << asOpened(url);
    shown.removeDuplicates();
    auto* dialog = makeDialog("webAddresses",
                              webText("Web addresses in the last %1 lines, the newest first").arg(lastLines));
    auto* list = new ZNTHintedList<QListWidget>(dialog);
    list->setObjectName(webText("addresses"));
    list->setAccessibleName(webText("Web addresses"));
    list->addItems(shown);
    list->setCurrentRow(0);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Close, dialog);
    buttons->button(QDialogButtonBox::Open)->setText(webText("&Open..."));
    buttons->button(QDialogButtonBox::Open)->setEnabled(!shown.isEmpty());
    dialog->layout()->addWidget(list);
    dialog->layout()->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    QObject::connect(list, &QListWidget::itemDoubleClicked, dialog, &QDialog::accept);
    QWidget* closeButton = buttons->button(QDialogButtonBox::Close);
    if (shown.isEmpty()) { // the words stand in the place of the rows
        auto& caption = *dialog->findChild<QLabel*>(webText("words"));
        caption.setText(webText("There is no web address in the last %1 lines.").arg(lastLines));
        caption.hide();
        list->setEmptyHint(caption.text());
    }
    show(*dialog, shown.isEmpty() ? *closeButton : *list, [this, list] {
        if (const auto* chosen = list->currentItem())
            ask(chosen->text());
    });
}

void ZNTWebAddressDialogs::ask(const QString& address)
{
    const QUrl url = urlOf(address);
    auto* dialog = makeDialog(
        "webAddressQuestion",
        url.isEmpty() ? webText("No browser can open this address.")
                      : webText("Open this address of %1 in the browser?").arg(url.host(QUrl::FullyEncoded)));
    auto* field = addressField(url.isEmpty() ? address : asOpened(url), *dialog);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, dialog);
    if (!url.isEmpty())
        buttons->addButton(QDialogButtonBox::Open)->setDefault(true);
    dialog->layout()->addWidget(field);
    dialog->layout()->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    show(*dialog, *field, [this, url] { openInBrowser(url); });
}

void ZNTWebAddressDialogs::openInBrowser(const QUrl& address)
{
    if (QDesktopServices::openUrl(address))
        return;
    auto* dialog = makeDialog("webAddressNotOpened", webText("No browser could be started. The address is:"));
    auto* field = addressField(asOpened(address), *dialog);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    dialog->layout()->addWidget(field);
    dialog->layout()->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    show(*dialog, *field);
}
