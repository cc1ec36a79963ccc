#include "ZNTAboutPage.h"

#include "ZNTHelpPage.h"
#include "ZNTVersion.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace
{

constexpr int iconSize = 128;
constexpr int gap = 18;
constexpr int columnsOfText = 60;
constexpr QSize fewestCharacters(16, 6);

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
    // As high as the text, which nothing is left out of and nothing empty follows.
    const int columns = sizeOf({columnsOfText, 1}).width();
    const std::unique_ptr<QTextDocument> measured(reader->document()->clone()); // the reader wraps its own
    measured->setTextWidth(columns);
    const QSize text(columns, static_cast<int>(std::ceil(measured->size().height())));
    const QSize now(reader->minimumWidth(), std::max(reader->minimumHeight(), iconSize));
    arrange(minimumSizeHint() + (text - now).expandedTo({0, 0}), *reader,
            QStringLiteral("Version %1").arg(QString::fromStdString(znt::version())));
}
