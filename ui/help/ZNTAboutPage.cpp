#include "ZNTAboutPage.h"

#include "ZNTHelpPage.h"
#include "ZNTVersion.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>
#include <utility>

namespace
{

constexpr int iconSize = 128;
constexpr int gap = 18;
constexpr QSize charactersOfText(52, 12), fewestCharacters(16, 6);

QLabel* newIcon(QWidget& parent)
{
    auto* icon = new QLabel(&parent);
    icon->setObjectName(QStringLiteral("aboutIcon"));
    icon->setAccessibleName(QStringLiteral("Icon of Zantor"));
    QPixmap picture(QStringLiteral(":/zantor.png"));
    const double density = parent.devicePixelRatioF();
    picture =
        picture.scaled(QSize(iconSize, iconSize) * density, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(density);
    icon->setPixmap(picture);
    return icon;
}

QString aboutText()
{
    const QString address = QString::fromStdString(znt::homePage());
    return QStringLiteral(
               "# Zantor\n\n"
               "Version %1\n\n"
               "A desktop client for MUDs that reads the game aloud.\n\n"
               "Free software under the MIT License, without any warranty. The file LICENSE has its "
               "text.\n\n"
               "Home page: [%2](%2)\n")
        .arg(QString::fromStdString(znt::version()), address);
}

} // namespace

ZNTAboutPage::ZNTAboutPage(QWidget& window, std::function<void(const QUrl&)> follow)
    : ZNTHelpDialog(window, QStringLiteral("About Zantor"), "aboutPage")
{
    setWhatsThis(QStringLiteral("The arrows read this page, Tab goes to the home page, Escape closes it."));
    QTextBrowser* reader = znt::newHelpText(*this, std::move(follow));
    reader->setAccessibleName(QStringLiteral("Page"));
    reader->setFrameShape(QFrame::NoFrame);
    reader->viewport()->setAutoFillBackground(false);
    reader->setMarkdown(aboutText());
    reader->ensurePolished();
    const QFontMetrics metrics(reader->font());
    const auto sizeOf = [&](QSize characters) {
        return QSize(metrics.averageCharWidth() * characters.width(), metrics.height() * characters.height());
    };
    reader->setMinimumSize(sizeOf(fewestCharacters));
    auto* row = new QHBoxLayout;
    row->setSpacing(gap);
    row->addWidget(newIcon(*this), 0, Qt::AlignTop);
    row->addWidget(reader, 1);
    content().addLayout(row);
    arrange(minimumSizeHint() + sizeOf(charactersOfText) - reader->minimumSize(), *reader,
            QStringLiteral("Version %1").arg(QString::fromStdString(znt::version())));
}
