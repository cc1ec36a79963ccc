#include "ZNTFirstStart.h"

#include "ZNTCheckBox.h"
#include "ZNTFlowLayout.h"
#include "ZNTNamedWidget.h"
#include "ZNTPlainKeys.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{

constexpr int margin = 20;

QPushButton* button(const char* objectName, const QString& title)
{
    auto* made = znt::called(new QPushButton(title), objectName);
    new ZNTPlainKeys(*made, {Qt::Key_Return, Qt::Key_Enter}, [made] {
        made->click();
        return true;
    });
    return made;
}

QCheckBox* mark(const char* objectName, const QString& title)
{
    auto* made = znt::called(new ZNTCheckBox, objectName);
    made->setText(title);
    return made;
}

} // namespace

ZNTFirstStart::ZNTFirstStart()
    : firstStartWords(znt::called(new QLabel, "firstStartWords")),
      firstStartDemo(button("firstStartDemo", QStringLiteral("Pla&y the demo game"))),
      firstStartGames(button("firstStartGames", QStringLiteral("Choose a game"))),
      firstStartHelp(button("firstStartHelp", QStringLiteral("&First steps"))),
      firstStartRemember(mark("firstStartRemember", QStringLiteral("Remem&ber my settings"))),
      listeningBox(mark("listeningBox", QStringLiteral("Set up for listening (Ctrl+F8)")))
{
    setObjectName(QStringLiteral("firstStart"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    QFont bold = firstStartWords->font();
    bold.setBold(true);
    firstStartWords->setFont(bold);
    firstStartWords->setTextFormat(Qt::PlainText);
    firstStartWords->setWordWrap(true);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(znt::connectionGap);
    column->addWidget(firstStartWords);
    column->addSpacing(znt::connectionGap);
    auto* row = new QWidget;
    auto* flow = new ZNTFlowLayout(row, znt::connectionGap);
    for (QPushButton* each : {firstStartDemo, firstStartGames, firstStartHelp})
        flow->addStretching(each);
    column->addWidget(row);
    column->addSpacing(znt::connectionGap);
    column->addWidget(firstStartRemember);
    column->addWidget(listeningBox);
}

void ZNTFirstStart::setWords(const QString& words) { firstStartWords->setText(words); }

std::vector<QWidget*> ZNTFirstStart::parts() const
{
    return {firstStartDemo, firstStartGames, firstStartHelp, firstStartRemember, listeningBox};
}
