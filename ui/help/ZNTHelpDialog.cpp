#include "ZNTHelpDialog.h"

#include "ZNTAnnouncement.h"
#include "ZNTWindowFit.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

ZNTHelpDialog::ZNTHelpDialog(QWidget& window, const QString& title, const char* name) : QDialog(&window)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(title);
    auto* all = new QVBoxLayout(this);
    column = new QVBoxLayout;
    all->addLayout(column, 1);
    row = new QDialogButtonBox(QDialogButtonBox::Close, this);
    row->button(QDialogButtonBox::Close)->setWhatsThis(QStringLiteral("Closes this page, as Escape does."));
    all->addWidget(row);
    QObject::connect(row, &QDialogButtonBox::rejected, this, &QDialog::reject);
    QObject::connect(this, &QDialog::finished, &window, &QWidget::activateWindow);
}

void ZNTHelpDialog::arrange(QSize wanted, QWidget& first, const QString& line)
{
    firstLine = line;
    for (auto* button : findChildren<QPushButton*>())
        button->setAutoDefault(false); // Return belongs to what is read
    znt::fitToScreen(*this);
    resize(wanted.expandedTo(minimumSizeHint()).boundedTo(screen()->availableSize()));
    first.setFocus();
}

void ZNTHelpDialog::present()
{
    const bool opens = !isVisible();
    show();
    raise();
    activateWindow();
    if (opens)
        znt::announce(ZNTAnnouncement::HelpPage, {windowTitle(), firstLine});
}
