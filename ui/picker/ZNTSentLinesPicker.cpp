#include "ZNTSentLinesPicker.h"

#include "ZNTAnnouncement.h"
#include "ZNTWindowFit.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace
{

/// A reader says the dialog and each letter first.
constexpr int millisecondsOfPickerRest = 400;

QString pickerText(const char* latin) { return QString::fromLatin1(latin); }

} // namespace

ZNTSentLinesPicker::ZNTSentLinesPicker(QWidget& window, QStringList givenLines,
                                       std::function<void(const QString&)> picked)
    : QDialog(&window),
      lines(std::move(givenLines)),
      picked(std::move(picked)),
      filter(new QLineEdit(this)),
      words(new QLabel(this)),
      list(new ZNTHintedList<QListView>(this)),
      put(new QPushButton(pickerText("&Use this line"), this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(pickerText("sentLinesPicker"));
    setWindowTitle(pickerText("Lines I have sent"));

    auto* caption = new QLabel(pickerText("&Filter"), this);
    caption->setBuddy(filter);
    filter->setObjectName(pickerText("sentLinesFilter"));
    filter->setAccessibleName(pickerText("Filter"));
    filter->setPlaceholderText(pickerText("Part of a line"));
    filter->setClearButtonEnabled(true);
    filter->setWhatsThis(
        pickerText("Only lines with these letters are listed. Up and Down go through them."));
    filter->installEventFilter(this);

    list->setObjectName(pickerText("sentLines"));
    list->setAccessibleName(pickerText("Lines I have sent"));
    list->setWhatsThis(pickerText("The newest line is first. Return puts one into the command line."));
    list->setModel(&shown);
    list->setUniformItemSizes(true);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setTextElideMode(Qt::ElideRight);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    words->setTextFormat(Qt::PlainText);
    words->setObjectName(pickerText("words"));

    put->setObjectName(pickerText("putSentLine"));
    put->setWhatsThis(
        pickerText("Puts the line into the command line. It is not sent. You can change it first."));
    put->setDefault(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->addButton(put, QDialogButtonBox::AcceptRole);

    auto* narrow = new QHBoxLayout;
    narrow->addWidget(caption);
    narrow->addWidget(filter);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(narrow);
    layout->addWidget(words);
    layout->addWidget(list);
    layout->addWidget(buttons);

    resting.setSingleShot(true);
    resting.setInterval(millisecondsOfPickerRest);
    connect(&resting, &QTimer::timeout, this, [this] { announceFound(); });
    connect(filter, &QLineEdit::textChanged, this, [this] { narrowDown(); });
    connect(list, &QListView::doubleClicked, this, [this] { pick(); });
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { pick(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(this, &QDialog::finished, &window, &QWidget::activateWindow);

    narrowDown();
    znt::shrinkFontToScreen(*this);
    znt::fitToScreen(*this);
    resize(std::max(width(), window.width() / 2), std::max(height(), window.height() / 2));
    filter->setFocus();
}

/// Lists what is looked for, with the newest line selected.
void ZNTSentLinesPicker::narrowDown()
{
    shown.setStringList(lines.filter(filter->text(), Qt::CaseInsensitive));
    const int count = shown.rowCount();
    words->setText(lines.isEmpty() ? pickerText("You have sent no line yet.")
                   : count == 0    ? pickerText("No line has these letters.")
                   : count == 1    ? pickerText("1 line")
                                   : pickerText("%1 lines, the newest first").arg(QLocale().toString(count)));
    words->setVisible(count > 0); // else they stand in the place of the rows
    list->setEmptyHint(words->text());
    list->setCurrentIndex(shown.index(0));
    put->setEnabled(count > 0);
    resting.start();
}

QString ZNTSentLinesPicker::standingOn() const { return list->currentIndex().data().toString(); }

void ZNTSentLinesPicker::announceFound()
{
    if (shown.rowCount() == 0)
        znt::announce(ZNTAnnouncement::NotFound, {words->text()});
    else
        znt::announce(ZNTAnnouncement::LinesFound, {QString::number(shown.rowCount()), standingOn()});
}

bool ZNTSentLinesPicker::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != filter || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        resting.stop();
        QApplication::sendEvent(list, event);
        // A reader says the list's lines by itself only if the list has the focus.
        if (shown.rowCount() > 0)
            znt::announce(ZNTAnnouncement::Line, {standingOn()});
        return true;
    default:
        return QDialog::eventFilter(watched, event);
    }
}

void ZNTSentLinesPicker::pick()
{
    const QString line = standingOn();
    if (shown.rowCount() == 0)
        return;
    accept();
    picked(line);
}
