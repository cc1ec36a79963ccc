#include "ZNTMacroKeyRow.h"

#include "ZNTAnnouncement.h"
#include "ZNTKeyField.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int gapOfKeyRow = 8;
} // namespace

ZNTMacroKeyRow::ZNTMacroKeyRow(QVBoxLayout& sheet, QWidget& before)
    : field(new ZNTKeyField),
      clear(new QPushButton(QStringLiteral("C&lear"))),
      answer(new QLabel)
{
    field->setObjectName(QStringLiteral("macroKeyField"));
    field->setAccessibleName(QStringLiteral("Key"));
    clear->setObjectName(QStringLiteral("clearMacroKeyButton"));
    clear->setAccessibleName(QStringLiteral("Clear key"));
    clear->setAutoDefault(false);
    answer->setObjectName(QStringLiteral("macroKeyAnswer"));
    answer->setWordWrap(true);
    answer->hide();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gapOfKeyRow);
    auto* row = new QHBoxLayout;
    row->setSpacing(gapOfKeyRow);
    auto* caption = new QLabel(QStringLiteral("&Key"));
    caption->setBuddy(field);
    column->addWidget(caption); // above its field, as the text's is: all fields begin at one edge
    row->addWidget(field, 1);
    row->addWidget(clear);
    column->addLayout(row);
    column->addWidget(answer);
    sheet.insertWidget(sheet.count() - 1, this);
    setTabOrder(&before, field);
    setTabOrder(field, clear);

    field->refusal = [this](QKeyCombination key) { return refusal ? refusal(key) : QString(); };
    field->whenPressed = [this](const QString& refused) { pressed(refused); };
    connect(clear, &QPushButton::clicked, this, [this] {
        field->setKey({});
        pressed({});
        field->setFocus(Qt::OtherFocusReason);
    });
}

void ZNTMacroKeyRow::show(const QKeySequence& key)
{
    field->setKey(key);
    answer->hide();
}

QKeySequence ZNTMacroKeyRow::key() const { return field->key(); }

void ZNTMacroKeyRow::pressed(const QString& refused)
{
    answer->setText(refused);
    answer->setVisible(!refused.isEmpty());
    const QString taken = field->key().isEmpty() ? QStringLiteral("No key") : field->text();
    znt::announce(ZNTAnnouncement::Answer, {refused.isEmpty() ? taken : refused});
}
