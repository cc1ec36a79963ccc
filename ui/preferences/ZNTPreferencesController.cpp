#include "ZNTPreferencesController.h"

#include "ZNTAnnouncement.h"
#include "ZNTControlHelp.h"
#include "ZNTMarks.h"
#include "ZNTPreferencesForm.h"
#include "ZNTServerConnectController.h"
#include "ZNTSettingsKeeper.h"
#include "ZNTWindowFit.h"
#include "ui_PreferencesView.h"

#include <QApplication>
#include <QDialog>
#include <QPainter>
#include <QScreen>
#include <QTabBar>
#include <QTimer>
#include <QWindow>

namespace
{

/// Calls `task` before each event of that type that `window` gets, as long as `life` lasts.
template <typename Task>
void whenEvent(QDialog& window, QEvent::Type type, QObject& life, Task task)
{
    class Watch final : public QObject
    {
    public:
        Watch(QDialog& window, QEvent::Type type, QObject& life, Task task)
            : QObject(&life),
              type(type),
              task(std::move(task))
        {
            window.installEventFilter(this);
        }
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == type)
                task();
            return false;
        }

    private:
        QEvent::Type type;
        Task task;
    };
    new Watch(window, type, life, std::move(task));
}

} // namespace

ZNTPreferencesController::ZNTPreferencesController(QWidget& window, ZNTPreferencesHost& mudAppController)
    : dialog(new QDialog(&window, Qt::Window)),
      layout(std::make_unique<Ui::PreferencesView>()),
      mudAppController(mudAppController),
      tabView((layout->setupUi(dialog), layout->tabView)),
      triggers(*layout, mudAppController),
      macros(*layout, mudAppController),
      encoding(*layout, mudAppController),
      speech(*layout, mudAppController),
      sound(*layout, mudAppController)
{
    finishForm();
    showSettings();
    wireWindow(window);
    refresh();
    selectTriggerTab();
    // Later, when the focus has found its place.
    QObject::connect(layout->tabView, &QTabWidget::currentChanged, dialog,
                     [this] { QTimer::singleShot(0, dialog, [this] { announceTab(); }); });
    standBeside(window);
}

ZNTPreferencesController::~ZNTPreferencesController() = default;

void ZNTPreferencesController::finishForm()
{
    znt::letButtonsWrap(*dialog);
    const auto pageOf = [this](ZNTSettingTab tab) -> QWidget& {
        return *static_cast<QScrollArea*>(layout->tabView->widget(static_cast<int>(tab)))->widget();
    };
    madeControls.make(mudAppController, pageOf);
    znt::explainControls(*dialog);
    znt::describeControls(*dialog);
    QWidget* last = layout->tabView;
    for (int tab = 0; tab < layout->tabView->count(); ++tab) {
        const auto title = znt::titleOf(static_cast<ZNTSettingTab>(tab));
        layout->tabView->setTabText(tab,
                                    QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
        last = znt::tabThrough(pageOf(static_cast<ZNTSettingTab>(tab)), *last);
    }
    QWidget::setTabOrder(last, layout->rememberBox);
    QWidget::setTabOrder(layout->rememberBox, layout->closeButton);
}

void ZNTPreferencesController::wireWindow(QWidget& window)
{
    showRemembering();
    znt::whenMarked(*layout->rememberBox, [this](bool on) { mudAppController.setRemembering(on); });
    whenEvent(*dialog, QEvent::WindowActivate, life, [this] { refresh(); });
    whenEvent(*dialog, QEvent::Polish, life, [this] { znt::alignLabelColumns(*dialog); });
    whenEvent(*dialog, QEvent::FontChange, life, [this] { takeFont(); });
    whenEvent(*dialog, QEvent::Hide, life, [this] { place = QRect(dialog->pos(), dialog->size()); });
    whenEvent(*dialog, QEvent::Paint, life, [this] { drawEndOfPage(); });
    QObject::connect(layout->closeButton, &QPushButton::clicked, dialog, &QDialog::close);
    QObject::connect(dialog, &QDialog::finished, &window, &QWidget::activateWindow);
}

/// A page that scrolls cuts words off in the middle. A line says that it is the page's end that does so. It
/// is drawn, since a screen reader would name a widget.
void ZNTPreferencesController::drawEndOfPage()
{
    const int end = layout->tabView->geometry().bottom() + 1;
    QPainter(dialog).fillRect(0, end, dialog->width(), 1, dialog->palette().color(QPalette::Mid));
}

/// A window manager keeps a window of another window in front of it. This one shall not hide the game.
void ZNTPreferencesController::standBeside(QWidget& window)
{
    znt::fitToScreen(*dialog);
    dialog->winId(); // makes the window of the screen
    dialog->windowHandle()->setTransientParent(nullptr);
    const QRect game = window.frameGeometry(), screen = window.screen()->availableGeometry();
    const int left = game.right() + 1;
    if (left + dialog->width() <= screen.right() + 1)
        place = QRect(QPoint(left, game.top()), dialog->size());
}

void ZNTPreferencesController::takeFont()
{
    znt::alignLabelColumns(*dialog);
    if (dialog->isVisible() || place.isEmpty())
        return;
    znt::fitToScreen(*dialog);
    place.setSize(dialog->size());
}

void ZNTPreferencesController::showWindow()
{
    // It opens as it did first: a control of the page that was left would have the focus, or one beside it.
    if (!dialog->isVisible())
        layout->tabView->tabBar()->setFocus(Qt::OtherFocusReason);
    selectTriggerTab();
    // A screen may be gone.
    if (!dialog->isVisible() && !place.isEmpty() && QApplication::screenAt(place.center())) {
        dialog->resize(place.size());
        dialog->move(place.topLeft());
    }
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

void ZNTPreferencesController::sessionChanged(ZNTSessionChange what)
{
    switch (what) {
    case ZNTSessionChange::Speech:
        speech.show();
        break;
    case ZNTSessionChange::Encoding:
        encoding.show();
        break;
    case ZNTSessionChange::Compression: // its switch decides on the sounds, too
    case ZNTSessionChange::Sounds:
        sound.show();
        break;
    default: // nothing of the rest is shown here
        break;
    }
}

void ZNTPreferencesController::refresh()
{
    speech.show();
    encoding.show();
    sound.show();
}

void ZNTPreferencesController::showSettings()
{
    const auto now = mudAppController.serverConnectController().settings();
    encoding.showSettings(now);
    speech.showSettings(now);
    sound.showSettings(now);
    showMadeControls();
}

void ZNTPreferencesController::showRemembering()
{
    znt::showMark(*layout->rememberBox, mudAppController.settings().isRemembering());
}

/// If the focus goes into the page, a reader says where it goes, but not in which tab that is. The row of
/// tabs says it itself.
void ZNTPreferencesController::announceTab()
{
    if (dialog->isVisible())
        znt::announce(layout->tabView->tabBar()->hasFocus() ? ZNTAnnouncement::TabWithFocus
                                                            : ZNTAnnouncement::Tab,
                      {layout->tabView->tabText(layout->tabView->currentIndex())});
}
