#include "ZNTFindBar.h"

#include "ZNTAnnouncement.h"
#include "ZNTCaptionedField.h"
#include "ZNTFlowLayout.h"
#include "ZNTOutputView.h"
#include "ZNTQtText.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <utility>

namespace
{

constexpr int gap = 8;
/// While the player types, each letter finds something else. What is found in the end is announced.
constexpr int millisecondsOfRest = 300;

QString text(const char* latin) { return QString::fromLatin1(latin); }

QString inWords(const ZNTOutputFind::Status& status)
{
    if (status.isCounting)
        return text("Counting ...");
    if (status.count == 0)
        return text("No match");
    QString words = QString::number(status.current) + text(" of ") + QString::number(status.count);
    if (status.hasWrapped)
        words += text(", wrapped around");
    return words;
}

} // namespace

ZNTFindBar::ZNTFindBar(ZNTOutputView& output, const QString& nameOfField) : output(output)
{
    const auto button = [this](const char* title, const char* objectName, const char* says) {
        auto* made = new QPushButton(text(title), this);
        made->setObjectName(text(objectName));
        made->setAccessibleName(text(says));
        return made;
    };
    wanted = new QLineEdit(this);
    wanted->setObjectName(text("findText"));
    previous = button("Previous", "findPrevious", "Previous match");
    next = button("Next", "findNext", "Next match");
    done = button("Close find", "findClose", "Close find");
    found = new QLabel(this);
    found->setObjectName(text("findStatus"));

    auto* row = new ZNTFlowLayout(this, gap);
    row->addStretching(new ZNTCaptionedField(text("Find"), wanted, 20));
    wanted->setAccessibleName(nameOfField);
    // The words come and go, and what they need comes off the field: the buttons stay where they are.
    row->addWidget(found);
    row->addWidget(previous);
    row->addWidget(next);
    row->addWidget(done);
    found->hide();

    QObject::connect(wanted, &QLineEdit::textChanged, this, [this](const QString& what) {
        isAsked = true;
        this->output.find(what);
        if (what.isEmpty())
            found->hide();
    });
    QObject::connect(previous, &QPushButton::clicked, this, [this] { findPrevious(); });
    QObject::connect(next, &QPushButton::clicked, this, [this] { findNext(); });
    QObject::connect(done, &QPushButton::clicked, this, [this] { close(); });
    QObject::connect(&output, &ZNTOutputView::findStatusChanged, this, [this](const auto& status) {
        if (!wanted->text().isEmpty()) {
            found->setText(inWords(status));
            found->show();
            if (!status.isCounting)
                resting.start();
        }
    });
    resting.setSingleShot(true);
    resting.setInterval(millisecondsOfRest);
    QObject::connect(&resting, &QTimer::timeout, this, [this] { announceFound(); });
}

void ZNTFindBar::announceFound()
{
    // New lines of the game are counted, too, and say nothing of the match on which the player stands.
    if (isHidden() || wanted->text().isEmpty() || !std::exchange(isAsked, false))
        return;
    const auto status = output.findStatus();
    if (status.count == 0) {
        znt::announce(ZNTAnnouncement::NotFound, {inWords(status)});
        return;
    }
    const auto& store = output.store();
    const auto line = store.line(store.lineAt(output.selectionStart()));
    znt::announce(ZNTAnnouncement::Found, {inWords(status), znt::qtText(line.text)});
}

void ZNTFindBar::open()
{
    if (!isVisible())
        opener = QApplication::focusWidget();
    isAsked = true;
    show();
    wanted->setFocus(Qt::ShortcutFocusReason);
    wanted->selectAll();
    if (!wanted->text().isEmpty())
        output.find(wanted->text());
}

void ZNTFindBar::close()
{
    resting.stop();
    output.endFind();
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    hide();
    if (hadFocus && opener && opener->isVisible() && opener->isEnabled())
        opener->setFocus(Qt::OtherFocusReason);
    else if (hadFocus)
        output.setFocus(Qt::OtherFocusReason);
    opener.clear();
}

void ZNTFindBar::findNext()
{
    if (isHidden())
        return open();
    isAsked = true;
    output.findNext();
}

void ZNTFindBar::findPrevious()
{
    if (isHidden())
        return open();
    isAsked = true;
    output.findPrevious();
}

std::vector<QWidget*> ZNTFindBar::parts() const { return {wanted, previous, next, done}; }

void ZNTFindBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // The newest text is at the end, so the search goes backwards.
        if (event->modifiers().testFlag(Qt::ShiftModifier))
            findNext();
        else
            findPrevious();
    } else {
        QWidget::keyPressEvent(event);
    }
}
