#include "ZNTQtAlert.h"

#include "ZNTAnnouncement.h"
#include "ZNTCommandLine.h"
#include "ZNTQtText.h"
#include "ZNTTypingGuard.h"

#include <QApplication>
#include <QGridLayout>
#include <QMessageBox>

namespace
{

constexpr int columnsOfText = 56;

void announce(ZNTAnnouncement what, const QMessageBox& box)
{
    QString title = box.text();
    if (!title.isEmpty() && title.back().isLetterOrNumber())
        title += QLatin1Char('.'); // a voice pauses there
    znt::announce(what, {title, box.informativeText()});
}

void open(QMessageBox& box)
{
    // Without this spacer the box is as narrow as its title, and a long text has one word a line. The box
    // lays itself out again with each part, so the spacer comes last.
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(box.fontMetrics().averageCharWidth() * columnsOfText, 0),
                      grid->rowCount(), 0, 1, grid->columnCount());
    box.open();
    box.activateWindow();
    announce(ZNTAnnouncement::Alert, box);
}

} // namespace

void ZNTQtAlert::setMainWindow(QWidget* window) { mainWindow = window; }

QMessageBox* ZNTQtAlert::newBox(std::u16string_view title, std::u16string_view text) const
{
    QWidget* owner = QApplication::activeWindow() ? QApplication::activeWindow() : mainWindow.data();
    auto* box = new QMessageBox(owner);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setObjectName(QStringLiteral("alert"));
    box->setTextFormat(Qt::PlainText);
    box->setIcon(QMessageBox::Warning);
    // The alert's own title is in the box. As the window's name it would be read twice.
    box->setWindowTitle(QStringLiteral("Zantor"));
    box->setText(znt::qtText(title));
    box->setInformativeText(znt::qtText(text));

    QWidget* focused = QApplication::focusWidget();
    QObject::connect(box, &QDialog::finished, box,
                     [opener = QPointer<QWidget>(focused), owner = QPointer<QWidget>(owner)] {
                         if (owner)
                             owner->activateWindow();
                         if (opener)
                             opener->setFocus(Qt::OtherFocusReason);
                     });
    return box;
}

void ZNTQtAlert::showMessage(std::u16string_view title, std::u16string_view text)
{
    show(News::Bad, title, text);
}

void ZNTQtAlert::showSuccess(std::u16string_view title, std::u16string_view text)
{
    show(News::Good, title, text);
}

void ZNTQtAlert::show(News news, std::u16string_view title, std::u16string_view text)
{
    if (lastMessage && lastMessage->isVisible() && lastMessage->text() == znt::qtText(title) &&
        lastMessage->informativeText() == znt::qtText(text)) {
        lastMessage->raise();
        lastMessage->activateWindow();
        return;
    }
    QMessageBox* box = newBox(title, text);
    if (news == News::Good)
        box->setIcon(QMessageBox::Information);
    box->setStandardButtons(QMessageBox::Ok);
    lastMessage = box;
    // The alert opens while the player types, so typing goes on in the line.
    if (auto* line = dynamic_cast<ZNTCommandLine*>(QApplication::focusWidget());
        line && !line->text().isEmpty())
        new ZNTTypingGuard(*box, *line, [box] { announce(ZNTAnnouncement::AlertAgain, *box); });
    open(*box);
}

void ZNTQtAlert::askForConfirmation(std::u16string_view title, std::u16string_view text,
                                    std::function<void(bool confirmed)> answered)
{
    QMessageBox* box = newBox(title, text);
    box->setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
    box->setDefaultButton(QMessageBox::Ok);
    box->setEscapeButton(QMessageBox::Cancel);
    QObject::connect(box, &QDialog::finished, box,
                     [answered = std::move(answered)](int button) { answered(button == QMessageBox::Ok); });
    open(*box);
}
