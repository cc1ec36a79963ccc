#include "ZNTSidePanel.h"

#include "ZNTCompass.h"
#include "ZNTFlowLayout.h"
#include "ZNTHintedTable.h"
#include "ZNTQtText.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace
{

constexpr int panelGap = 8;
constexpr int panelWideGap = 16;
constexpr int snugMargin = 8;
constexpr int leastColumnsOfGroup = 6;
/// In characters of the window's font.
constexpr int pleasantColumns = 32;

template <typename Widget>
Widget* namedPart(Widget* widget, std::string_view objectName)
{
    widget->setObjectName(znt::latinText(objectName));
    return widget;
}

/// No wider than its word needs. A style would give it room for a longer one.
class SnugButton final : public QPushButton
{
public:
    using QPushButton::QPushButton;
    [[nodiscard]] QSize sizeHint() const override
    {
        const int word = fontMetrics().horizontalAdvance(QString(text()).remove(QLatin1Char('&')));
        const QSize usual = QPushButton::sizeHint();
        return {std::min(usual.width(), word + fontMetrics().height() + snugMargin), usual.height()};
    }
};

template <typename Button = QPushButton>
QPushButton* namedButton(std::string_view title, std::string_view objectName, std::string_view spokenName)
{
    auto* button = namedPart(new Button(znt::latinText(title)), objectName);
    button->setAccessibleName(znt::latinText(spokenName));
    return button;
}

QLabel* panelHeading(std::string_view words, QWidget* buddy = nullptr)
{
    auto* label = new QLabel(znt::latinText(words));
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    label->setBuddy(buddy);
    return label;
}

} // namespace

ZNTSidePanel::ZNTSidePanel()
{
    setObjectName(QStringLiteral("sidePanel"));
    auto* parts = new QWidget;
    auto* column = new QVBoxLayout(parts);
    // The panel scrolls, so it would cut off the focus ring of a widget at its edge.
    const int ring = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this);
    column->setContentsMargins(ring, 0, ring, ring);
    column->setSpacing(panelGap);
    addDirections(*column);
    addGroups(*column);
    addMacros(*column);

    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidget(parts);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, column, [column, ring](int, int most) {
        column->setContentsMargins(ring, 0, most > 0 ? panelGap : ring, ring);
    });
}

void ZNTSidePanel::addDirections(QVBoxLayout& column)
{
    column.addWidget(panelHeading("Directions"));
    compass = namedPart(new ZNTCompass, "compass");
    column.addWidget(compass);
    column.addSpacing(panelWideGap - panelGap);
}

void ZNTSidePanel::addGroups(QVBoxLayout& column)
{
    macroComboBoxGroup = namedPart(new QComboBox, "macroComboBoxGroup");
    macroComboBoxGroup->setEditable(true);
    macroComboBoxGroup->setAccessibleName(QStringLiteral("Macro group"));
    macroComboBoxGroup->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    macroComboBoxGroup->setMinimumContentsLength(leastColumnsOfGroup);
    createNewMacroGroup = namedButton<SnugButton>("Ne&w", "createNewMacroGroup", "New group");
    deleteMacroGroup = namedButton<SnugButton>("Delete", "deleteMacroGroup", "Delete group");
    auto* buttons = new QWidget; // which go to a row of their own together
    auto* pair = new QHBoxLayout(buttons);
    pair->setContentsMargins(0, 0, 0, 0);
    pair->setSpacing(panelGap);
    pair->addWidget(createNewMacroGroup, 1);
    pair->addWidget(deleteMacroGroup, 1);
    // Qt names a box for screen readers only by a caption with the same parent.
    auto* group = new QWidget;
    auto* rows = new QVBoxLayout(group);
    rows->setContentsMargins({});
    rows->setSpacing(panelGap);
    rows->addWidget(panelHeading("Macro gro&up", macroComboBoxGroup));
    auto* flow = new ZNTFlowLayout(nullptr, panelGap);
    rows->addLayout(flow);
    flow->addStretching(macroComboBoxGroup);
    flow->addStretching(buttons);
    column.addWidget(group);
    column.addSpacing(panelWideGap - panelGap);
}

void ZNTSidePanel::addMacros(QVBoxLayout& column)
{
    macroTable = namedPart(new ZNTHintedTable, "macroTable");
    macroTable->setAccessibleName(QStringLiteral("Macro list"));
    column.addWidget(panelHeading("Macro l&ist", macroTable));
    column.addWidget(macroTable, 1);
    runMacro = namedButton("Run", "runMacro", "Run macro");
    addMacro = namedButton("Add...", "addMacro", "Add macro");
    editMacro = namedButton("Edit...", "editMacro", "Edit macro");
    removeMacro = namedButton("Remove", "removeMacro", "Remove macro");
    addPairs(column, {runMacro, addMacro, editMacro, removeMacro});
}

void ZNTSidePanel::addPairs(QVBoxLayout& column, std::initializer_list<QPushButton*> buttons)
{
    auto* row = new QWidget;
    auto* flow = new ZNTFlowLayout(row, panelGap);
    flow->shareEvenly(2);
    for (QPushButton* button : buttons)
        flow->addWidget(button);
    column.addWidget(row);
}

std::vector<QWidget*> ZNTSidePanel::tabOrder() const
{
    std::vector<QWidget*> order;
    for (const ZNTDirectionRow& way : ZNTDirections)
        order.push_back(compass->button(way.direction));
    for (QWidget* widget :
         std::initializer_list<QWidget*>{macroComboBoxGroup, createNewMacroGroup, deleteMacroGroup,
                                         macroTable, runMacro, addMacro, editMacro, removeMacro})
        order.push_back(widget);
    return order;
}

int ZNTSidePanel::leastWidth() const { return widget()->minimumSizeHint().width() + barWidth(); }

int ZNTSidePanel::comfortableWidth() const
{
    const int pleasant =
        std::max(widget()->sizeHint().width(), fontMetrics().averageCharWidth() * pleasantColumns);
    return std::max(leastWidth(), pleasant + barWidth());
}

QSize ZNTSidePanel::sizeHint() const { return {comfortableWidth(), minimumSizeHint().height()}; }

QSize ZNTSidePanel::minimumSizeHint() const
{
    return {leastWidth(), isWhole ? widget()->sizeHint().height() : fontMetrics().height() * 5};
}

void ZNTSidePanel::showWhole(bool whole)
{
    if (isWhole == whole)
        return;
    isWhole = whole;
    updateGeometry();
}

int ZNTSidePanel::barWidth() const { return verticalScrollBar()->sizeHint().width(); }
