#pragma once

#include "ZNTAnnouncement.h"

#include <QAbstractItemView>
#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>
#include <functional>
#include <utility>

/// A field that narrows a view as the player types. Down goes from the field into the view.
class ZNTFilterField final : public QLineEdit
{
public:
    /// `narrow` shows the rows that fit the words. `left` says how many rows are left, in words; it is
    /// announced with the current row when the player pauses. `view` lives in the same window.
    ZNTFilterField(QAbstractItemView& view, std::function<void(const QString& words)> narrow,
                   std::function<QString()> left)
        : view(view),
          narrow(std::move(narrow)),
          left(std::move(left))
    {
        constexpr int millisecondsOfRest = 300;
        setClearButtonEnabled(true);
        for (QAction* clearing : findChildren<QAction*>())
            clearing->setWhatsThis(QStringLiteral("Empties the field."));
        resting.setSingleShot(true);
        resting.setInterval(millisecondsOfRest);
        QObject::connect(&resting, &QTimer::timeout, this, [this] { announceWhatIsLeft(); });
        QObject::connect(this, &QLineEdit::textChanged, this, [this](const QString& words) {
            this->narrow(words.trimmed());
            selectSomething();
            resting.start();
        });
    }

    void goToView()
    {
        selectSomething();
        view.setFocus(Qt::TabFocusReason);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Down && event->modifiers() == Qt::NoModifier)
            goToView();
        else
            QLineEdit::keyPressEvent(event);
    }

private:
    void selectSomething()
    {
        if (view.model()->rowCount() > 0 && !view.currentIndex().isValid())
            view.setCurrentIndex(view.model()->index(0, 0));
    }

    void announceWhatIsLeft()
    {
        znt::announce(ZNTAnnouncement::LeftByFilter, {left(), view.currentIndex().data().toString()});
    }

    QAbstractItemView& view;
    std::function<void(const QString&)> narrow;
    std::function<QString()> left;
    QTimer resting;
};
