#include "ZNTConnectionRow.h"

#include "ZNTCaptionedField.h"
#include "ZNTFlowLayout.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <algorithm>

namespace
{

constexpr int gapOfFields = 10;
constexpr int gapOfButton = 8;

template <typename Widget>
Widget* called(Widget* widget, const char* objectName)
{
    widget->setObjectName(QString::fromLatin1(objectName));
    return widget;
}

/// Has the same width with either title, so that the row of fields does not move.
class ConnectionButton final : public QPushButton
{
public:
    [[nodiscard]] QSize sizeHint() const override
    {
        const int longer = fontMetrics().horizontalAdvance(QStringLiteral("Disconnect"));
        const int shown =
            fontMetrics().horizontalAdvance(QString(QPushButton::text()).remove(QLatin1Char('&')));
        const QSize size = QPushButton::sizeHint();
        return {size.width() + std::max(0, longer - shown), size.height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

} // namespace

ZNTConnectionRow::ZNTConnectionRow()
{
    setObjectName(QStringLiteral("connectionRow"));
    makeParts();

    auto* row = new ZNTFlowLayout(this, gapOfFields);
    auto* name = new ZNTCaptionedField(QStringLiteral("&Name"), mudName, 14);
    row->addShrinking(name, [name] { return name->leastWidthBeside(); });
    row->addStretching(new ZNTCaptionedField(QStringLiteral("&Address"), ipAddress, 22));
    row->addWidget(new ZNTCaptionedField(QStringLiteral("&Port"), port, 8));
    auto* ends = new QWidget;
    auto* pair = new QHBoxLayout(ends);
    pair->setContentsMargins(0, 0, 0, 0);
    pair->setSpacing(gapOfButton);
    pair->addWidget(connectionButton);
    pair->addWidget(myProgressIndicator);
    row->addWidget(ends);
}

void ZNTConnectionRow::makeParts()
{
    mudName = called(new QLineEdit, "mudName");
    ipAddress = called(new QLineEdit, "ipAddress");
    port = called(new QLineEdit, "port");
    // Every content is acceptable, because Return does nothing in a field whose content is not. Pasted text
    // brings blanks.
    port->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\s*[0-9]{0,5}\\s*")), port));
    connectionButton = called(new ConnectionButton, "connectionButton");
    connectionButton->setText(QStringLiteral("&Connect"));
    connectionButton->setAccessibleName(QStringLiteral("Connect"));
    myProgressIndicator = called(new QProgressBar, "myProgressIndicator");
    myProgressIndicator->setAccessibleName(QStringLiteral("Connecting"));
    myProgressIndicator->setMaximumWidth(connectionButton->fontMetrics().averageCharWidth() * 10);
}
