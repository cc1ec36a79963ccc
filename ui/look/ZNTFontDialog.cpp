#include "ZNTFontDialog.h"

#include "ZNTCaptionedField.h"
#include "ZNTColourTable.h"
#include "ZNTFilterField.h"
#include "ZNTOutputView.h"
#include "ZNTWindowFit.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <QSortFilterProxyModel>
#include <QSpinBox>
#include <QStringListModel>
#include <QVBoxLayout>
#include <array>
#include <cmath>
#include <string_view>

namespace
{

constexpr int fewestRowsOfList = 3, rowsOfList = 8;
constexpr int columnsOfFilter = 28;
constexpr int fewestColumnsOfSample = 24, fewestRowsOfSample = 3; // on the smallest screen
constexpr int columnsOfSample = 60, rowsOfSample = 6;

/// What is installed, and what the output really shows if that is of another kind.
QStringList familiesOfFixedWidth(const QString& shown)
{
    QStringList names;
    for (const QString& name : QFontDatabase::families())
        if (QFontDatabase::isFixedPitch(name) && !QFontDatabase::isPrivateFamily(name))
            names << name;
    if (!names.contains(shown))
        names << shown;
    names.sort(Qt::CaseInsensitive);
    return names;
}

void appendIn(ZNTAttributedText& text, std::u16string_view words, ZNTColour colour)
{
    text.runs.push_back(
        {static_cast<std::uint32_t>(text.text.size()), static_cast<std::uint32_t>(text.sets.size())});
    auto& set = text.sets.emplace_back();
    set.foreground = colour;
    if (colour == set.shownBackground())
        set.background = znt::colours::white; // else it is a hole in the row
    text.text += words;
}

/// Letters that fonts make alike, then the colours that games name.
ZNTAttributedText sampleText()
{
    constexpr std::array<std::u16string_view, znt::namedColours / 2> names{
        u"black", u"red", u"green", u"yellow", u"blue", u"magenta", u"cyan", u"white"};
    ZNTAttributedText text;
    appendIn(text, u"The lantern burns: 0O 1lI |!, \"`', {[()]}", znt::colours::white);
    const ZNTColour* colour = znt::colourTable.data();
    for (const auto row : {u"\nnormal", u"\nbright"}) {
        appendIn(text, row, znt::colours::white);
        for (const auto name : names) {
            appendIn(text, u" ", znt::colours::white);
            appendIn(text, name, *colour++);
        }
    }
    return text;
}

} // namespace

ZNTFontDialog::ZNTFontDialog(QWidget& window, const ZNTOutputView& output)
    : QDialog(&window),
      output(output),
      family(QFontInfo(output.textFont()).family())
{
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("fontPanel"));
    setWindowTitle(QStringLiteral("Font of the output"));
    setWhatsThis(QStringLiteral("The font of text that arrives from now on."));
    makeList();
    makeSize();
    makeSample();
    arrange();
    showSample();
    QObject::connect(this, &QDialog::finished, &window, &QWidget::activateWindow);
}

void ZNTFontDialog::makeList()
{
    list = new QListView(this);
    list->setObjectName(QStringLiteral("fontList"));
    list->setAccessibleName(QStringLiteral("Fonts"));
    list->setWhatsThis(
        QStringLiteral("The fonts whose letters all have the same width. Type the first letters of one."));
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setUniformItemSizes(true);
    families = new QSortFilterProxyModel(list);
    families->setFilterCaseSensitivity(Qt::CaseInsensitive);
    families->setSourceModel(new QStringListModel(familiesOfFixedWidth(family), families));
    list->setModel(families);
    const auto found = families->match(families->index(0, 0), Qt::DisplayRole, family, 1, Qt::MatchExactly);
    list->setCurrentIndex(found.value(0));
    QObject::connect(list->selectionModel(), &QItemSelectionModel::currentChanged, this,
                     [this](const QModelIndex& current) {
                         if (!current.isValid())
                             return;
                         family = current.data().toString();
                         showSample();
                     });

    auto* field = new ZNTFilterField(
        *list,
        [this](const QString& words) {
            families->setFilterFixedString(words);
            list->scrollTo(list->currentIndex());
        },
        [this] { return fontsInWords(); });
    field->setObjectName(QStringLiteral("fontFilter"));
    field->setPlaceholderText(QStringLiteral("Part of a name"));
    field->setWhatsThis(
        QStringLiteral("Type a part of a name to see only such fonts. Down goes to the list."));
    filter = field;
}

void ZNTFontDialog::makeSize()
{
    size = new QSpinBox(this);
    size->setObjectName(QStringLiteral("fontSize"));
    size->setRange(static_cast<int>(ZNTOutputView::smallestPointSize),
                   static_cast<int>(ZNTOutputView::largestPointSize));
    size->setValue(static_cast<int>(std::lround(output.textFont().pointSizeF())));
    size->setWhatsThis(QStringLiteral("The size in points."));
    QObject::connect(size, &QSpinBox::valueChanged, this, [this] { showSample(); });
}

void ZNTFontDialog::makeSample()
{
    sample = new ZNTOutputView(this);
    sample->setObjectName(QStringLiteral("fontSample"));
    sample->setAccessibleName(QStringLiteral("Sample"));
    sample->setWhatsThis(QStringLiteral("The game's sixteen colours in this font."));
    sample->setFocusPolicy(Qt::NoFocus); // there is nothing to read
    sample->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    sample->setReadableColours(output.hasReadableColours());
    sample->setTextFont(output.textFont());
    sample->setMinimumSize(sample->sizeForGrid(fewestColumnsOfSample, fewestRowsOfSample));
}

void ZNTFontDialog::arrange()
{
    auto* all = new QVBoxLayout(this);
    auto* fields = new QHBoxLayout;
    fields->addWidget(new ZNTCaptionedField(QStringLiteral("&Filter"), filter, columnsOfFilter), 1);
    fields->addWidget(new ZNTCaptionedField(QStringLiteral("&Size"), size, 6));
    filter->setAccessibleName(QStringLiteral("Find a font"));
    all->addLayout(fields);
    list->setMinimumHeight(list->fontMetrics().height() * fewestRowsOfList);
    all->addWidget(list, 1);
    all->addWidget(sample, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    QObject::connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    all->addWidget(buttons);
    setTabOrder(filter, list);
    setTabOrder(list, size);
    setTabOrder(size, buttons->button(QDialogButtonBox::Ok));
    znt::shrinkFontToScreen(*this);
    resize(comfortableSize().boundedTo(screen()->availableSize()));
    list->setFocus();
    list->scrollTo(list->currentIndex(), QAbstractItemView::PositionAtCenter);
}

QSize ZNTFontDialog::comfortableSize() const
{
    const QMargins edges = layout()->contentsMargins();
    const QSize more = sample->sizeForGrid(columnsOfSample, rowsOfSample) - sample->minimumSize();
    const int rowsMore =
        (rowsOfList - fewestRowsOfList) * std::max(list->fontMetrics().height(), list->sizeHintForRow(0));
    return {sample->minimumWidth() + more.width() + edges.left() + edges.right(),
            minimumSizeHint().height() + more.height() + rowsMore};
}

QFont ZNTFontDialog::chosenFont() const
{
    const double before = output.textFont().pointSizeF();
    QFont font(family);
    font.setPointSizeF(std::lround(before) == size->value() ? before : size->value());
    return font;
}

/// With the zoom of the output, as the game's text will look.
void ZNTFontDialog::showSample()
{
    const QFont font = chosenFont();
    const double zoom = output.pointSize() / output.textFont().pointSizeF();
    sample->clear();
    sample->setTextFont(font);
    sample->setPointSize(font.pointSizeF() * zoom);
    sample->append(sampleText());
}

QString ZNTFontDialog::fontsInWords() const
{
    const int number = families->rowCount();
    return number == 1 ? QStringLiteral("1 font") : QStringLiteral("%1 fonts").arg(number);
}
