#include "ZNTConnectionRow.h"

#include "ZNTCaptionedField.h"
#include "ZNTFlowLayout.h"
#include "ZNTNamedWidget.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QStyleOptionButton>

namespace
{

/// Has the same width with either title, so that the row of fields does not move.
class ConnectionButton final : public QPushButton
{
public:
    [[nodiscard]] QSize sizeHint() const override
    {
        QStyleOptionButton option;
        initStyleOption(&option);
        option.text = QStringLiteral("Disconnect"); // the longer one
        const QSize words = fontMetrics().size(Qt::TextShowMnemonic, option.text);
        return style()->sizeFromContents(QStyle::CT_PushButton, &option, words, this);
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

/// Would like to be one line. In a narrow window it wraps; Qt's own label would wrap in a wide one, too.
class ConnectionLine final : public QLabel
{
public:
    ConnectionLine()
    {
        setTextFormat(Qt::PlainText);
        setWordWrap(true);
    }
    [[nodiscard]] QSize sizeHint() const override
    {
        const int wide = fontMetrics().horizontalAdvance(text()) + 1;
        return {wide, heightForWidth(wide)};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, fontMetrics().height()}; }
};

} // namespace

ZNTConnectionRow::ZNTConnectionRow()
{
    setObjectName(QStringLiteral("connectionRow"));
    makeParts();
    auto* row = new ZNTFlowLayout(this, znt::connectionGap);
    auto* name = new ZNTCaptionedField(QStringLiteral("&Name"), mudName, 14);
    fields = {name, new ZNTCaptionedField(QStringLiteral("&Address"), ipAddress, 22),
              new ZNTCaptionedField(QStringLiteral("&Port"), port, 8)};
    row->addShrinking(name, [name] { return name->leastWidthBeside(); });
    row->addStretching(fields[1]);
    row->addWidget(fields[2]);
    row->addStretching(connectionLine);
    row->addWidget(connectionButton);
    connectionLine->hide();
}

void ZNTConnectionRow::makeParts()
{
    mudName = znt::called(new QLineEdit, "mudName");
    ipAddress = znt::called(new QLineEdit, "ipAddress");
    port = znt::called(new QLineEdit, "port");
    // Every content is acceptable, because Return does nothing in a field whose content is not. Pasted text
    // brings blanks.
    port->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\s*[0-9]{0,5}\\s*")), port));
    connectionLine = znt::called(new ConnectionLine, "connectionLine");
    connectionButton = znt::called(new ConnectionButton, "connectionButton");
    connectionButton->setText(QStringLiteral("&Connect"));
    connectionButton->setAccessibleName(QStringLiteral("Connect"));
}

void ZNTConnectionRow::fold(const QString& line)
{
    connectionLine->setText(line);
    connectionLine->setAccessibleName(QStringLiteral("Connection: ") + line);
    if (!isFolded_)
        unfoldedDescription = connectionButton->accessibleDescription();
    connectionButton->setAccessibleDescription(line);
    setFolded(/*folded=*/true);
}

void ZNTConnectionRow::unfold()
{
    if (isFolded_)
        connectionButton->setAccessibleDescription(unfoldedDescription);
    setFolded(/*folded=*/false);
}

void ZNTConnectionRow::setFolded(bool folded)
{
    isFolded_ = folded;
    for (QWidget* field : fields)
        field->setVisible(!folded);
    connectionLine->setVisible(folded);
}
