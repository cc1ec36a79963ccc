#include "ZNTStoreWaitSign.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

namespace
{

constexpr QLatin1String waitingWords("Waiting for the database: another program has locked it.");
constexpr QLatin1String opensByItself("Zantor goes on by itself as soon as the database is free. If another "
                                      "program works with the file, end it there.");

} // namespace

ZNTStoreWaitWindow::ZNTStoreWaitWindow(std::function<void()> quit) : quit(std::move(quit)) {}

ZNTStoreWaitWindow::~ZNTStoreWaitWindow() = default;

void ZNTStoreWaitWindow::keepAlive()
{
    if (!dialog) {
        dialog = std::make_unique<QDialog>();
        dialog->setObjectName(QStringLiteral("waitingForDatabase"));
        dialog->setWindowTitle(QStringLiteral("Zantor"));
        dialog->setAccessibleName(waitingWords); // a screen reader says it when the dialog opens
        dialog->setAttribute(Qt::WA_QuitOnClose, false);
        auto* layout = new QVBoxLayout(dialog.get());
        for (const auto& sentence : {waitingWords, opensByItself}) {
            auto* label = new QLabel(QString(sentence));
            label->setWordWrap(true);
            layout->addWidget(label);
        }
        auto* buttons = new QDialogButtonBox;
        auto* quitButton = buttons->addButton(QStringLiteral("&Quit"), QDialogButtonBox::RejectRole);
        layout->addWidget(buttons);
        QObject::connect(buttons, &QDialogButtonBox::rejected, dialog.get(), &QDialog::reject);
        QObject::connect(dialog.get(), &QDialog::rejected, dialog.get(), quit);
        dialog->show();
        dialog->activateWindow();
        quitButton->setFocus();
    }
    QCoreApplication::processEvents();
}

void ZNTStoreWaitStatus::show()
{
    if (!std::exchange(isShown, true)) {
        before = statusText.text();
        statusText.setText(waitingWords);
        statusText.setAccessibleName(waitingWords);
    }
    statusText.repaint();
}

void ZNTStoreWaitStatus::clear()
{
    if (!std::exchange(isShown, false))
        return;
    statusText.setText(before);
    statusText.setAccessibleName(QStringLiteral("Status: ") + before);
}
